// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Texts taken apart. Additions to NSString that give arrays.
///
///     Ref<NSArray> parts = componentsSeparatedByString("a, b, , c"_ns, ", "_ns);     // "a", "b", "", "c"
namespace quoll::inline v1 {

/// The parts between the occurrences of a separator, one more than there are; empty ones too. A text without any, or an
/// empty separator, gives the text alone. A null separator raises NSInvalidArgumentException.
QF_EXPORT Ref<NSArray> componentsSeparatedByString(const NSString* receiver, const NSString* separator);

}  // namespace quoll::inline v1
