// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Export.h"
#include "QuollFoundation/platform/basics/Geometry.h"

QF_C_BEGIN

/// Rectangles and paddings. Threads: immutable.

/// No distance at any edge.
QF_EXPORT extern const QFPadding QFPaddingZero;

/// Whether there is no rectangle: the null rectangle, or all four components zero (of either sign, compared exactly).
/// A rectangle without size at any other origin is one.
QF_EXPORT bool QFRectIsZeroOrNull(CGRect rect);

QF_C_END
