// SPDX-License-Identifier: MIT
#pragma once

/// Ranges, rounding, rectangles and plain arrays.
#include "QuollFoundation/core/PlainArrays.h"
#include "QuollFoundation/core/Ranges.h"
#include "QuollFoundation/core/Rectangles.h"
#include "QuollFoundation/core/Rounding.h"
