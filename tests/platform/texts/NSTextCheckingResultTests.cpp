// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSTextCheckingResult.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

constexpr NSRange ranges[] = {{3, 4}, {4, 1}, {NSNotFound, 0}};

TEST(NSTextCheckingResult, TellsTheRangeOfTheWholeAndOfEachGroup) {
  const auto result = NSTextCheckingResult::resultWithRanges(ranges);
  EXPECT_EQ(result->numberOfRanges(), 3u);
  EXPECT_EQ(result->range(), ranges[0]);
  for (uint64_t i = 0; i < 3; ++i) EXPECT_EQ(result->rangeAtIndex(i), ranges[i]);
  EXPECT_EQ(send<NSRange>(result, "rangeAtIndex:"_sel, 1), ranges[1]);
}

TEST(NSTextCheckingResult, RefusesAnIndexPastItsRangesAndNoRanges) {
  const auto result = NSTextCheckingResult::resultWithRanges(ranges);
  EXPECT_THAT([&] { (void)result->rangeAtIndex(3); },
              raises(NSRangeException, "-[NSTextCheckingResult rangeAtIndex:]: index 3 beyond bounds [0 .. 2]"));
  EXPECT_THAT([] { (void)NSTextCheckingResult::resultWithRanges({}); },
              raises(NSInvalidArgumentException, "no ranges"));
}

TEST(NSTextCheckingResult, IsEqualByItsRangesAndItsOwnCopy) {
  const auto result = NSTextCheckingResult::resultWithRanges(ranges);
  const auto same = NSTextCheckingResult::resultWithRanges(ranges);
  EXPECT_THAT(result, equals(same));
  EXPECT_EQ(result->hash(), same->hash());
  EXPECT_FALSE(result->isEqual(NSTextCheckingResult::resultWithRanges({ranges, 2})));
  EXPECT_FALSE(result->isEqual("x"_ns));
  EXPECT_EQ(result->copy().get(), result.get());
  EXPECT_THAT(result->description()->utf8(), ::testing::HasSubstr("{3, 4}"));
}

}  // namespace
