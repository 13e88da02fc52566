// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Export.h"
#include "QuollFoundation/platform/basics/Geometry.h"

QF_C_BEGIN

/// Rounding of 64-bit floating-point values. What is rounded to zero keeps its sign, not-a-number stays what it is, and
/// an infinity is its own integer. Threads: immutable.

/// The value without its sign.
QF_EXPORT CGFloat QFAbs(CGFloat value);
/// An integer, by the calling thread's rounding mode; by default the nearest, ties to even: 2.5 gives 2, 3.5 gives 4.
QF_EXPORT CGFloat QFRoundToNearestInteger(CGFloat value);
/// The smallest integer that is not smaller.
QF_EXPORT CGFloat QFCeil(CGFloat value);
/// The largest integer that is not larger.
QF_EXPORT CGFloat QFFloor(CGFloat value);
/// The integer part: rounded toward zero.
QF_EXPORT CGFloat QFTrunc(CGFloat value);

/// A multiple of one half: `trunc(2 * value + 0.5) / 2`.
///
/// That is the nearest one for a positive value, ties going up: 1.2 gives 1, 1.25 gives 1.5. A negative value goes by
/// the same formula and so often lands one half nearer to zero: -1.2 gives -0.5, -1.25 gives -1, -0.6 gives -0, and
/// from -0.25 on zero is positive. Use it where values are not negative, or where that asymmetry is wanted. A value
/// beyond half of the largest gives an infinity.
QF_EXPORT CGFloat QFRoundToNearestHalfInteger(CGFloat value);

QF_C_END
