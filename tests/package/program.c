/* SPDX-License-Identifier: MIT */
/* A C program of the installed package. */
#include <QuollFoundation/core/Ranges.h>

int main(void) {
  const NSRange one = {2, 6};
  const NSRange other = {4, 10};
  const NSRange shared = QFIntersectionRange(one, other, false);
  return shared.location == 4 && shared.length == 4 ? 0 : 1;
}
