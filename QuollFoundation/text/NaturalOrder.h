// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Orders in which a file 2 stands before a file 10. Additions to NSString.
///
///     names->sortUsingSelector("finderCompare:"_sel);
///
/// An array that sorts by the selector looks at each name once; by a comparator it compares them again and again, which
/// takes several times as long.
///
/// Threads: as the strings'.
namespace quoll::inline v1 {

/// As a file browser lists names in the current locale: numbers by value, without regard to case and width unless all
/// else is the same. A strict order: different texts are never the same. A number of more than 254 digits goes in parts
/// of so many.
QF_EXPORT NSComparisonResult finderCompare(const NSString* receiver, const NSString* other);
/// The same order, spelled out.
QF_EXPORT NSComparisonResult _10_5_finderCompare(const NSString* receiver, const NSString* other);
/// By units, but runs of digits by their value: A0 and A00 are the same. The locale makes no difference.
QF_EXPORT NSComparisonResult numericalCompare(const NSString* receiver, const NSString* other);

}  // namespace quoll::inline v1
