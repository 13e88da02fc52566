// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/StructTexts.h"

#include <gtest/gtest.h>

#include "QuollFoundation/testing.h"

TEST(StructTexts, RangeIsTwoNumbersInBraces) { EXPECT_THAT(quoll::NSStringFromRange({1, 2}), quoll::equals("{1, 2}")); }

using namespace quoll;

TEST(StructTexts, RangeIsUnsigned) {
  EXPECT_THAT(NSStringFromRange({UINT64_MAX, NSNotFound}), equals("{18446744073709551615, 9223372036854775807}"));
}

TEST(StructTexts, GeometryHasShortestDecimals) {
  EXPECT_THAT(NSStringFromPoint({1, -2.5}), equals("{1, -2.5}"));
  EXPECT_THAT(NSStringFromSize({0.1, 1e20}), equals("{0.1, 1e+20}"));
  EXPECT_THAT(NSStringFromRect({{0, 0}, {1, 2}}), equals("{{0, 0}, {1, 2}}"));
}
