// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "QuollFoundation/platform/object/Ref.h"

/// Booleans as text. Threads: immutable.
namespace quoll::inline v1 {

class NSString;

/// "YES" for any value but zero, "NO" for zero.
QF_EXPORT Ref<NSString> QFStringFromBOOL(bool value);

}  // namespace quoll::inline v1
