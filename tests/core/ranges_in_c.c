/* SPDX-License-Identifier: MIT */
#include "QuollFoundation/core/Ranges.h"

#include <stdio.h>

static int failures = 0;

static void expectRange(const char* claim, NSRange actual, NSRange expected) {
  if (actual.location == expected.location && actual.length == expected.length) return;
  printf("%s: {%llu, %llu}\n", claim, (unsigned long long)actual.location, (unsigned long long)actual.length);
  ++failures;
}

static void expectTrue(const char* claim, bool actual) {
  if (actual) return;
  printf("not true: %s\n", claim);
  ++failures;
}

int main(void) {
  const NSRange line = {3, 4};
  const NSRange selection = {0, 5};
  const NSRange shared = {3, 2};
  const NSRange neighbour = {5, 3};
  const NSRange place = {5, 0};
  const CFRange none = {kCFNotFound, 0};
  const CFRange first = {0, 1};

  expectRange("common part", QFIntersectionRange(selection, line, false), shared);
  expectRange("touching", QFIntersectionRange(selection, neighbour, true), place);
  expectRange("not touching", QFIntersectionRange(selection, neighbour, false), QFNotFoundRange);
  expectRange("zero", QFIntersectionRange(QFZeroRange, QFZeroRange, false), QFZeroRange);
  expectTrue("not found is a location", QFNotFoundRange.location == NSNotFound);
  expectTrue("equal", QFEqualCFRanges(none, none));
  expectTrue("not equal", !QFEqualCFRanges(none, first));
  return failures;
}
