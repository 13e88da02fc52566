// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Rounding.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>

namespace {

using quoll::QFAbs;
using quoll::QFCeil;
using quoll::QFFloor;
using quoll::QFRoundToNearestHalfInteger;
using quoll::QFRoundToNearestInteger;
using quoll::QFTrunc;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

class RoundingMode {
 public:
  explicit RoundingMode(int mode) { std::fesetround(mode); }
  ~RoundingMode() { std::fesetround(before_); }

 private:
  int before_ = std::fegetround();
};

// Equal, and of one sign also where both are zero.
void expectSame(double actual, double expected) {
  EXPECT_EQ(actual, expected);
  EXPECT_EQ(std::signbit(actual), std::signbit(expected)) << actual << " and " << expected;
}

TEST(Rounding, AbsoluteValueDropsTheSign) {
  expectSame(quoll::QFAbs(-2.5), 2.5);
  expectSame(QFAbs(2.5), 2.5);
  expectSame(QFAbs(-0.0), 0.0);
  expectSame(QFAbs(-infinity), infinity);
  EXPECT_TRUE(std::isnan(QFAbs(std::nan(""))));
}

TEST(Rounding, NearestIntegerTakesTheEvenOneOfATie) {
  expectSame(QFRoundToNearestInteger(2.5), 2);
  expectSame(QFRoundToNearestInteger(3.5), 4);
  expectSame(QFRoundToNearestInteger(-2.5), -2);
  expectSame(QFRoundToNearestInteger(-3.5), -4);
  expectSame(QFRoundToNearestInteger(0.5), 0);
  expectSame(QFRoundToNearestInteger(-0.5), -0.0);
  expectSame(QFRoundToNearestInteger(2.4), 2);
  expectSame(QFRoundToNearestInteger(2.6), 3);
  expectSame(QFRoundToNearestInteger(0.49999999999999994), 0);
  expectSame(QFRoundToNearestInteger(4503599627370497.5), 4503599627370498);
}

TEST(Rounding, NearestIntegerFollowsTheRoundingModeOfTheThread) {
  {
    const RoundingMode up(FE_UPWARD);
    expectSame(QFRoundToNearestInteger(2.1), 3);
    expectSame(QFRoundToNearestInteger(-2.9), -2);
  }
  {
    const RoundingMode down(FE_DOWNWARD);
    expectSame(QFRoundToNearestInteger(2.9), 2);
    expectSame(QFRoundToNearestInteger(-2.1), -3);
  }
  {
    const RoundingMode towardZero(FE_TOWARDZERO);
    expectSame(QFRoundToNearestInteger(3.5), 3);
    expectSame(QFRoundToNearestInteger(-3.5), -3);
  }
  expectSame(QFRoundToNearestInteger(3.5), 4);
}

TEST(Rounding, CeilFloorAndTruncGoTheirWays) {
  struct Row {
    double value;
    double ceil;
    double floor;
    double trunc;
  };
  constexpr Row rows[] = {{1.5, 2, 1, 1},
                          {-1.5, -1, -2, -1},
                          {2, 2, 2, 2},
                          {-2, -2, -2, -2},
                          {0.1, 1, 0, 0},
                          {-0.1, -0.0, -1, -0.0},
                          {0.0, 0.0, 0.0, 0.0},
                          {-0.0, -0.0, -0.0, -0.0},
                          {1e300, 1e300, 1e300, 1e300},
                          {5e-324, 1, 0, 0},
                          {-5e-324, -0.0, -1, -0.0},
                          {infinity, infinity, infinity, infinity},
                          {-infinity, -infinity, -infinity, -infinity}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.value);
    expectSame(QFCeil(row.value), row.ceil);
    expectSame(QFFloor(row.value), row.floor);
    expectSame(QFTrunc(row.value), row.trunc);
  }
}

TEST(Rounding, NotANumberStaysOne) {
  for (auto* function : {&QFRoundToNearestInteger, &QFCeil, &QFFloor, &QFTrunc, &QFRoundToNearestHalfInteger})
    EXPECT_TRUE(std::isnan(function(std::nan(""))));
}

TEST(Rounding, HalvesOfPositiveValuesAreTheNearestAndTiesGoUp) {
  expectSame(QFRoundToNearestHalfInteger(1.2), 1);
  expectSame(QFRoundToNearestHalfInteger(1.25), 1.5);
  expectSame(QFRoundToNearestHalfInteger(1.3), 1.5);
  expectSame(QFRoundToNearestHalfInteger(2.74), 2.5);
  expectSame(QFRoundToNearestHalfInteger(2.75), 3);
  expectSame(QFRoundToNearestHalfInteger(0.24), 0);
  expectSame(QFRoundToNearestHalfInteger(0.25), 0.5);
  expectSame(QFRoundToNearestHalfInteger(0.0), 0);
}

TEST(Rounding, HalvesOfNegativeValuesLandNearerToZero) {
  expectSame(QFRoundToNearestHalfInteger(-1.2), -0.5);
  expectSame(QFRoundToNearestHalfInteger(-1.25), -1);
  expectSame(QFRoundToNearestHalfInteger(-1), -0.5);
  expectSame(QFRoundToNearestHalfInteger(-0.6), -0.0);
  expectSame(QFRoundToNearestHalfInteger(-0.75), -0.5);
  expectSame(QFRoundToNearestHalfInteger(-0.25), 0.0);
  expectSame(QFRoundToNearestHalfInteger(-0.0), 0.0);
}

TEST(Rounding, HalvesOfTheLargestValuesAreInfinite) {
  expectSame(QFRoundToNearestHalfInteger(largest), infinity);
  expectSame(QFRoundToNearestHalfInteger(-largest), -infinity);
  expectSame(QFRoundToNearestHalfInteger(largest / 2), largest / 2);
  expectSame(QFRoundToNearestHalfInteger(infinity), infinity);
}

// Values of which twice and one half more is exact.
double exactValue(int64_t lowest, int64_t highest) {
  return static_cast<double>(*rc::gen::inRange<int64_t>(lowest, highest)) / 1024;
}

RC_GTEST_PROP(RoundingProperty, AHalfOfAPositiveValueIsWithinAQuarter, ()) {
  const double value = exactValue(0, int64_t{1} << 32);
  const double half = QFRoundToNearestHalfInteger(value);
  RC_ASSERT(QFTrunc(half * 2) == half * 2);
  RC_ASSERT(half - value <= 0.25);
  RC_ASSERT(value - half < 0.25);
}

RC_GTEST_PROP(RoundingProperty, AHalfOfANegativeValueIsLessThanThreeQuartersNearerToZero, ()) {
  const double value = exactValue(-(int64_t{1} << 32), 0);
  const double half = QFRoundToNearestHalfInteger(value);
  RC_ASSERT(QFTrunc(half * 2) == half * 2);
  RC_ASSERT(half <= 0);
  RC_ASSERT(half >= value);
  RC_ASSERT(half - value < 0.75);
}

RC_GTEST_PROP(RoundingProperty, TruncIsFloorAboveZeroAndCeilBelow, (double value)) {
  expectSame(QFTrunc(value), std::signbit(value) ? QFCeil(value) : QFFloor(value));
  RC_ASSERT(!::testing::Test::HasFailure());
}

}  // namespace
