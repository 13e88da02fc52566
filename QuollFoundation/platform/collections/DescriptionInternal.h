// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1::detail {

/// The text of an array, a dictionary, a set or an ordered set and of what is in it. Nested ones are set in by four
/// blanks; one that is inside itself, or deeper than 64, is written as "(...)". Never messages a proxy.
Ref<NSString> describeCollection(const NSObject* collection);

}  // namespace quoll::inline v1::detail
