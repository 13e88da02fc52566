// SPDX-License-Identifier: MIT
// A program of the installed package.
#include <QuollFoundation/core/Core.h>

int main() {
  const quoll::NSRange shared = quoll::QFIntersectionRange({2, 6}, {4, 10}, false);
  return shared == quoll::NSMakeRange(4, 4) && quoll::QFCeil(1.5) == 2 ? 0 : 1;
}
