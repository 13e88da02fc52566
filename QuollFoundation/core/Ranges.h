/* SPDX-License-Identifier: MIT */
#ifndef QUOLL_CORE_RANGES_H
#define QUOLL_CORE_RANGES_H

#include <stdbool.h>

#include "QuollFoundation/platform/basics/Export.h"
#include "QuollFoundation/platform/basics/Ranges.h"

QF_C_BEGIN

/// Ranges of indices: two constants, intersection and equality. Compiles as C and as C++.
///
///     NSRange shared = QFIntersectionRange(selection, line, false);
///     if (shared.location != NSNotFound) { ... }
///
/// An end is `location + length` in unsigned 64-bit arithmetic with wrap, so a range that runs past 2^64 has a small
/// end; no combination of values is an error. Threads: immutable.

/// (0, 0).
QF_EXPORT extern const NSRange QFZeroRange;
/// (NSNotFound, 0): what a search answers that found nothing.
QF_EXPORT extern const NSRange QFNotFoundRange;

/// What `a` and `b` have in common; `QFNotFoundRange` where that is nothing.
///
/// Unlike an ordinary intersection it gives empty ranges a place:
///
/// - Two empty ranges meet only at the same location; the result is that location with length 0.
/// - An empty range inside another (behind its start and before its end) gives its own location with length 0.
/// - With `touching`, so does an empty range at the other's start or end, and two ranges of which one begins where the
///   other ends give that place with length 0.
/// - Two ranges that are not empty and have no place in common give `QFNotFoundRange`, never an empty range somewhere.
QF_EXPORT NSRange QFIntersectionRange(NSRange a, NSRange b, bool touching);

/// Whether both locations and both lengths are equal.
QF_EXPORT bool QFEqualCFRanges(CFRange a, CFRange b);

QF_C_END

#endif
