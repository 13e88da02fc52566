// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/basics/Comparison.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

static_assert(quoll::NSOrderedAscending == -1 && quoll::NSOrderedSame == 0 && quoll::NSOrderedDescending == 1);
static_assert(quoll::NSCaseInsensitiveSearch == 1 && quoll::NSLiteralSearch == 2 && quoll::NSBackwardsSearch == 4);
static_assert(quoll::NSAnchoredSearch == 8 && quoll::NSNumericSearch == 64);
static_assert(quoll::NSDiacriticInsensitiveSearch == 128 && quoll::NSWidthInsensitiveSearch == 256);
static_assert(quoll::NSForcedOrderingSearch == 512 && quoll::NSRegularExpressionSearch == 1024);

TEST(Comparison, AnswersByTheOrderOfItsValues) {
  EXPECT_EQ(quoll::compareValues(1, 2), quoll::NSOrderedAscending);
  EXPECT_EQ(quoll::compareValues(2, 2), quoll::NSOrderedSame);
  EXPECT_EQ(quoll::compareValues(3, 2), quoll::NSOrderedDescending);
  EXPECT_EQ(quoll::compareValues<std::string>("a", "b"), quoll::NSOrderedAscending);
}

TEST(Comparison, TakesWhatCannotBeOrderedForTheSame) {
  EXPECT_EQ(quoll::compareValues(std::numeric_limits<double>::quiet_NaN(), 1.0), quoll::NSOrderedSame);
}

TEST(Comparison, OptionsCombine) {
  constexpr quoll::NSStringCompareOptions options = quoll::NSCaseInsensitiveSearch | quoll::NSNumericSearch;
  EXPECT_EQ(options, 65u);
}

}  // namespace
