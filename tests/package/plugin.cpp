// SPDX-License-Identifier: MIT
// A plug-in that uses the library.
#include <QuollFoundation/core/Ranges.h>

extern "C" __attribute__((visibility("default"))) int answer() {
  return static_cast<int>(quoll::QFIntersectionRange({0, 50}, {8, 50}, false).length);
}
