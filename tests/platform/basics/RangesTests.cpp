// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/basics/Ranges.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using quoll::NSLocationInRange;
using quoll::NSMakeRange;
using quoll::NSMaxRange;
using quoll::NSNotFound;
using quoll::NSRange;

constexpr uint64_t last = std::numeric_limits<uint64_t>::max();

static_assert(NSNotFound == 0x7fffffffffffffff);
static_assert(quoll::kCFNotFound == -1);
static_assert(sizeof(NSRange) == 16 && std::is_trivial_v<NSRange>);
static_assert(sizeof(quoll::CFRange) == 16 && std::is_signed_v<decltype(quoll::CFRange::location)>);
static_assert(std::is_same_v<quoll::NSUInteger, uint64_t> && std::is_same_v<quoll::NSInteger, int64_t>);

TEST(Ranges, AreMadeOfLocationAndLength) {
  constexpr quoll::NSRange range = quoll::NSMakeRange(3, 4);
  EXPECT_EQ(range.location, 3u);
  EXPECT_EQ(range.length, 4u);
  EXPECT_EQ(quoll::NSMaxRange(range), 7u);
  EXPECT_EQ(quoll::CFRangeMake(-1, 2), (quoll::CFRange{-1, 2}));
}

TEST(Ranges, HoldTheirFirstPlaceAndNotTheOneBehindTheirLast) {
  constexpr NSRange range = {3, 4};
  EXPECT_FALSE(NSLocationInRange(2, range));
  EXPECT_TRUE(NSLocationInRange(3, range));
  EXPECT_TRUE(NSLocationInRange(6, range));
  EXPECT_FALSE(NSLocationInRange(7, range));
}

TEST(Ranges, WithoutLengthHoldNoPlace) { EXPECT_FALSE(NSLocationInRange(3, {3, 0})); }

TEST(Ranges, ThatRunPastTheLargestIndexHaveASmallEnd) {
  EXPECT_EQ(NSMaxRange({last, 2}), 1u);
  EXPECT_TRUE(NSLocationInRange(last, {last, 2}));
  EXPECT_FALSE(NSLocationInRange(0, {last, 2}));
}

TEST(Ranges, AreEqualWhenBothFieldsAre) {
  EXPECT_TRUE(quoll::NSEqualRanges({1, 2}, {1, 2}));
  EXPECT_FALSE(quoll::NSEqualRanges({1, 2}, {1, 3}));
  EXPECT_FALSE(quoll::NSEqualRanges({1, 2}, {2, 2}));
  EXPECT_FALSE(quoll::NSEqualRanges({1, 0}, {2, 0}));
}

TEST(Ranges, FitWithinALengthUpToItsEnd) {
  struct Row {
    const char* claim;
    NSRange range;
    uint64_t length;
    bool fits;
  };
  constexpr Row rows[] = {
      {"all of it", {0, 5}, 5, true},
      {"nothing, at its end", {5, 0}, 5, true},
      {"nothing, behind its end", {6, 0}, 5, false},
      {"one too many", {1, 5}, 5, false},
      {"a sum that wraps", {2, last}, 5, false},
      {"the largest of all", {0, last}, last, true},
      {"nothing in nothing", {0, 0}, 0, true},
      {"not found", {NSNotFound, 0}, 5, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(quoll::rangeFits(row.range, row.length), row.fits);
  }
}

RC_GTEST_PROP(Ranges, FitExactlyWhenEachOfTheirPlacesDoes, (uint8_t location, uint8_t count, uint8_t length)) {
  const NSRange range = NSMakeRange(location, count);
  RC_ASSERT(quoll::rangeFits(range, length) == (uint64_t{location} + count <= length));
}

}  // namespace
