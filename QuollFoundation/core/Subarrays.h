// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/CFArray.h"

/// Part of an array of any callbacks, with a removal that skips.
///
///     Ref<CFArray> rest = QFArrayCreateSubarrayWithRange(nullptr, array, 1, 2);        // of a b c d: b c
///
/// For locations 0 and 1 the result is the plain subarray. From 2 on it is not: the elements before it are taken out at
/// a rising index of the shrinking array, which skips every other one, so that location 2 and length 3 of a b c d e
/// give b d e. Callers rely on it; whoever wants the plain part asks `subarrayWithRange:`.
///
/// Threads: as the array's.
namespace quoll::inline v1 {

/// A new immutable array with the same callbacks; where the part reaches past the end, up to the end.
///
/// Raises NSRangeException where an element that is to be taken out is not there (a location beyond half of what is
/// there), and for a negative location or length; NSInvalidArgumentException for a null array.
[[nodiscard]] QF_EXPORT Ref<CFArray> QFArrayCreateSubarrayWithRange(CFAllocatorRef allocator, CFArrayRef array,
                                                                    CFIndex location, CFIndex length);

}  // namespace quoll::inline v1
