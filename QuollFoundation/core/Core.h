// SPDX-License-Identifier: MIT
#pragma once

/// Plain values: ranges, rounding, rectangles, numbers, their texts and boxes, growing arrays of them, and the names of
/// keys that everybody shares.
#include "QuollFoundation/core/Booleans.h"
#include "QuollFoundation/core/BoxedGeometry.h"
#include "QuollFoundation/core/CommonRuns.h"
#include "QuollFoundation/core/IndexPaths.h"
#include "QuollFoundation/core/KeyConstants.h"
#include "QuollFoundation/core/Numbers.h"
#include "QuollFoundation/core/PlainArrays.h"
#include "QuollFoundation/core/RangeTexts.h"
#include "QuollFoundation/core/Ranges.h"
#include "QuollFoundation/core/Rectangles.h"
#include "QuollFoundation/core/Rounding.h"
#include "QuollFoundation/core/SortDescriptors.h"
#include "QuollFoundation/core/StructPointerFunctions.h"
#include "QuollFoundation/core/Subarrays.h"
#include "QuollFoundation/core/ValueCallbacks.h"
#include "QuollFoundation/core/ValuePointerArrays.h"
