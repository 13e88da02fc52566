// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Ranges.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <type_traits>

namespace {

using quoll::CFRange;
using quoll::NSMaxRange;
using quoll::NSNotFound;
using quoll::NSRange;
using quoll::QFEqualCFRanges;
using quoll::QFIntersectionRange;
using quoll::QFNotFoundRange;
using quoll::QFZeroRange;

static_assert(std::is_same_v<decltype(quoll::QFZeroRange), const NSRange>);
static_assert(std::is_same_v<decltype(quoll::QFNotFoundRange), const NSRange>);

constexpr uint64_t last = UINT64_MAX;
constexpr NSRange notFound = {NSNotFound, 0};

struct Row {
  const char* claim;
  NSRange a;
  NSRange b;
  NSRange apart;     // without touching
  NSRange touching;  // with it
};

void check(const Row& row) {
  SCOPED_TRACE(row.claim);
  EXPECT_EQ(QFIntersectionRange(row.a, row.b, false), row.apart);
  EXPECT_EQ(QFIntersectionRange(row.a, row.b, true), row.touching);
}

void checkBothWays(const Row& row) {
  check(row);
  check({row.claim, row.b, row.a, row.apart, row.touching});
}

TEST(Ranges, AnIntersectionIsFoundOrNot) {
  const quoll::NSRange selection = {0, 5};
  const quoll::NSRange line = {3, 4};
  const quoll::NSRange shared = quoll::QFIntersectionRange(selection, line, false);
  ASSERT_NE(shared.location, quoll::NSNotFound);
  EXPECT_EQ(shared, (quoll::NSRange{3, 2}));
}

TEST(Ranges, ConstantsHaveTheirValues) {
  EXPECT_EQ(QFZeroRange.location, 0u);
  EXPECT_EQ(QFZeroRange.length, 0u);
  EXPECT_EQ(QFNotFoundRange.location, 0x7FFFFFFFFFFFFFFFu);
  EXPECT_EQ(QFNotFoundRange.length, 0u);
}

TEST(Ranges, EmptyRangesMeetOnlyAtTheSameLocation) {
  checkBothWays({"same location", {5, 0}, {5, 0}, {5, 0}, {5, 0}});
  checkBothWays({"neighbours", {5, 0}, {6, 0}, notFound, notFound});
  checkBothWays({"both at zero", QFZeroRange, QFZeroRange, QFZeroRange, QFZeroRange});
  checkBothWays({"both not found", notFound, notFound, notFound, notFound});
  checkBothWays({"zero and not found", QFZeroRange, notFound, notFound, notFound});
}

TEST(Ranges, RangesWithLengthsShareTheirCommonPart) {
  checkBothWays({"overlapping", {0, 5}, {3, 4}, {3, 2}, {3, 2}});
  checkBothWays({"one in the other", {0, 10}, {3, 4}, {3, 4}, {3, 4}});
  checkBothWays({"equal", {3, 4}, {3, 4}, {3, 4}, {3, 4}});
  checkBothWays({"same start", {3, 4}, {3, 1}, {3, 1}, {3, 1}});
  checkBothWays({"same end", {3, 4}, {6, 1}, {6, 1}, {6, 1}});
  checkBothWays({"a gap between", {0, 5}, {6, 3}, notFound, notFound});
}

TEST(Ranges, AbuttingRangesMeetOnlyWhenTouching) {
  checkBothWays({"abutting at 5", {0, 5}, {5, 3}, notFound, {5, 0}});
  checkBothWays({"of length one", {4, 1}, {5, 1}, notFound, {5, 0}});
}

TEST(Ranges, AnEmptyRangeInsideAnotherKeepsItsLocation) {
  checkBothWays({"strictly inside", {0, 10}, {4, 0}, {4, 0}, {4, 0}});
  checkBothWays({"behind the start", {0, 10}, {1, 0}, {1, 0}, {1, 0}});
  checkBothWays({"before the end", {0, 10}, {9, 0}, {9, 0}, {9, 0}});
  checkBothWays({"at the start", {0, 10}, {0, 0}, notFound, {0, 0}});
  checkBothWays({"at the end", {0, 10}, {10, 0}, notFound, {10, 0}});
  checkBothWays({"past the end", {0, 10}, {11, 0}, notFound, notFound});
  checkBothWays({"before the start", {3, 10}, {2, 0}, notFound, notFound});
  checkBothWays({"length one has no inside", {3, 1}, {3, 0}, notFound, {3, 0}});
}

TEST(Ranges, EndsUpToTheLastIndexAreExact) {
  checkBothWays({"largest range", {0, last}, {last - 1, 1}, {last - 1, 1}, {last - 1, 1}});
  checkBothWays({"its end", {0, last}, {last, 0}, notFound, {last, 0}});
  checkBothWays({"across the signed limit",
                 {NSNotFound, NSNotFound},
                 {NSNotFound + 1, 2},
                 {NSNotFound + 1, 2},
                 {NSNotFound + 1, 2}});
  checkBothWays({"two at the last index", {last, 0}, {last, 0}, {last, 0}, {last, 0}});
}

TEST(Ranges, ARangePastTheLastIndexHasASmallEnd) {
  checkBothWays({"its end is zero", {last, 1}, {0, 5}, notFound, {0, 0}});
  checkBothWays({"its end is three", {last - 1, 5}, {1, 4}, notFound, notFound});
  checkBothWays({"it abuts where it wrapped to", {last - 1, 5}, {3, 4}, notFound, {3, 0}});
  checkBothWays({"not even in itself", {last - 1, 5}, {last - 1, 5}, notFound, notFound});
  checkBothWays({"nothing is inside it, above", {last - 1, 5}, {last, 0}, notFound, notFound});
  checkBothWays({"nothing is inside it, below", {last - 1, 5}, {1, 0}, notFound, notFound});
  checkBothWays({"its start can be touched", {last - 1, 5}, {last - 1, 0}, notFound, {last - 1, 0}});
  checkBothWays({"an empty range at its end", {1, last}, {0, 0}, notFound, {0, 0}});
  checkBothWays({"two that wrap to one end", {last, 4}, {last - 1, 5}, notFound, notFound});
}

TEST(Ranges, WhereEachBeginsAtTheOthersEndTheFirstsEndDecides) {
  check({"all but one index, then that one", {5, last}, {4, 1}, notFound, {4, 0}});
  check({"the other way round", {4, 1}, {5, last}, notFound, {5, 0}});
}

TEST(Ranges, SignedRangesAreEqualByBothFields) {
  EXPECT_TRUE(QFEqualCFRanges({1, 2}, {1, 2}));
  EXPECT_TRUE(QFEqualCFRanges({-1, -3}, {-1, -3}));
  EXPECT_TRUE(QFEqualCFRanges({INT64_MIN, INT64_MAX}, {INT64_MIN, INT64_MAX}));
  EXPECT_FALSE(QFEqualCFRanges({1, 2}, {1, 3}));
  EXPECT_FALSE(QFEqualCFRanges({1, 2}, {0, 2}));
  EXPECT_FALSE(QFEqualCFRanges({1, 2}, {2, 1}));
  EXPECT_FALSE(QFEqualCFRanges({-1, 0}, {1, 0}));
}

// Small numbers, so that ranges often meet, abut and hold each other.
NSRange smallRange() { return {*rc::gen::inRange<uint64_t>(0, 12), *rc::gen::inRange<uint64_t>(0, 8)}; }

bool holds(NSRange range, uint64_t place) { return place >= range.location && place < NSMaxRange(range); }

RC_GTEST_PROP(RangesProperty, IntersectionIsSymmetricForRangesThatDoNotWrap, (bool touching)) {
  const NSRange a = smallRange();
  const NSRange b = smallRange();
  RC_ASSERT(QFIntersectionRange(a, b, touching) == QFIntersectionRange(b, a, touching));
}

RC_GTEST_PROP(RangesProperty, IntersectionIsSymmetricUnlessEachBeginsAtTheOthersEnd,
              (uint64_t location, uint64_t length, uint64_t other, uint64_t otherLength, bool touching)) {
  const NSRange a = {location, length};
  const NSRange b = {other, otherLength};
  RC_PRE(NSMaxRange(a) != b.location || NSMaxRange(b) != a.location);
  RC_ASSERT(QFIntersectionRange(a, b, touching) == QFIntersectionRange(b, a, touching));
}

RC_GTEST_PROP(RangesProperty, IntersectionHoldsExactlyThePlacesThatBothHold, (bool touching)) {
  const NSRange a = smallRange();
  const NSRange b = smallRange();
  const NSRange shared = QFIntersectionRange(a, b, touching);
  for (uint64_t place = 0; place < 24; ++place) {
    RC_ASSERT(holds(shared, place) == (holds(a, place) && holds(b, place)));
  }
}

RC_GTEST_PROP(RangesProperty, IntersectionLiesBetweenTheEndsOfBoth, (bool touching)) {
  const NSRange a = smallRange();
  const NSRange b = smallRange();
  const NSRange shared = QFIntersectionRange(a, b, touching);
  RC_PRE(shared.location != NSNotFound);
  for (const NSRange& range : {a, b}) {
    RC_ASSERT(range.location <= shared.location);
    RC_ASSERT(NSMaxRange(shared) <= NSMaxRange(range));
  }
}

RC_GTEST_PROP(RangesProperty, IntersectionWithItselfChangesNothing, (bool touching)) {
  const NSRange range = smallRange();
  RC_ASSERT(QFIntersectionRange(range, range, touching) == range);
}

RC_GTEST_PROP(RangesProperty, TouchingOnlyAddsMeetings, ()) {
  const NSRange a = smallRange();
  const NSRange b = smallRange();
  const NSRange apart = QFIntersectionRange(a, b, false);
  const NSRange touching = QFIntersectionRange(a, b, true);
  if (apart != notFound) RC_ASSERT(touching == apart);
  if (touching != apart) RC_ASSERT(touching.length == 0u);
}

RC_GTEST_PROP(RangesProperty, TouchingFindsAPlaceExactlyWhenNoGapParts, ()) {
  const NSRange a = smallRange();
  const NSRange b = smallRange();
  const bool gap = NSMaxRange(a) < b.location || NSMaxRange(b) < a.location;
  RC_ASSERT((QFIntersectionRange(a, b, true) == notFound) == gap);
}

RC_GTEST_PROP(RangesProperty, WhatIsNotFoundIsTheConstantWhateverTheRanges,
              (uint64_t location, uint64_t length, uint64_t other, uint64_t otherLength, bool touching)) {
  const NSRange shared = QFIntersectionRange({location, length}, {other, otherLength}, touching);
  if (shared.length != 0) {
    RC_ASSERT(shared.location == std::max(location, other));
    RC_ASSERT(shared.length <= std::min(length, otherLength));
  } else {
    RC_ASSERT(shared.location == location || shared.location == other || shared == QFNotFoundRange);
  }
}

}  // namespace
