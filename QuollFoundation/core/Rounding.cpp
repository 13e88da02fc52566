// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Rounding.h"

#include <cmath>

namespace quoll::inline v1 {

CGFloat QFAbs(CGFloat value) { return std::fabs(value); }
// Not rint: what g++ makes of that inline rounds a negative value the wrong way in the directed modes.
CGFloat QFRoundToNearestInteger(CGFloat value) { return std::nearbyint(value); }
CGFloat QFCeil(CGFloat value) { return std::ceil(value); }
CGFloat QFFloor(CGFloat value) { return std::floor(value); }
CGFloat QFTrunc(CGFloat value) { return std::trunc(value); }
CGFloat QFRoundToNearestHalfInteger(CGFloat value) { return std::trunc(2 * value + 0.5) / 2; }

}  // namespace quoll::inline v1
