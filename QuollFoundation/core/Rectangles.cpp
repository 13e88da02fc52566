// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Rectangles.h"

namespace quoll::inline v1 {

extern "C" {
constexpr QFPadding QFPaddingZero = {0, 0, 0, 0};
}

bool QFRectIsZeroOrNull(CGRect rect) { return CGRectIsNull(rect) || rect == CGRectZero; }

}  // namespace quoll::inline v1
