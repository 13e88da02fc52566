// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Ref.h"

/// Signed ranges as text. Threads: immutable.
namespace quoll::inline v1 {

class NSString;

/// "{location, length}", as the unsigned range that it stands for: a negative location becomes NSNotFound, a negative
/// length 0. So (-1, -3) gives "{9223372036854775807, 0}".
QF_EXPORT Ref<NSString> QFNSStringFromCFRange(CFRange range);

}  // namespace quoll::inline v1
