// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Rectangles.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using quoll::CGRect;
using quoll::QFRectIsZeroOrNull;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

static_assert(std::is_same_v<decltype(quoll::QFPaddingZero), const quoll::QFPadding>);
static_assert(sizeof(quoll::QFPadding) == 32);

TEST(Rectangles, TheZeroPaddingHasNoDistanceAtAnyEdge) {
  EXPECT_EQ(quoll::QFPaddingZero.top, 0.0);
  EXPECT_EQ(quoll::QFPaddingZero.left, 0.0);
  EXPECT_EQ(quoll::QFPaddingZero.bottom, 0.0);
  EXPECT_EQ(quoll::QFPaddingZero.right, 0.0);
}

TEST(Rectangles, AreZeroOrNullByTheirExactComponents) {
  struct Row {
    const char* claim;
    CGRect rect;
    bool zeroOrNull;
  };
  const Row rows[] = {
      {"the zero rectangle", quoll::CGRectZero, true},
      {"zeros of either sign", {{-0.0, 0.0}, {0.0, -0.0}}, true},
      {"the null rectangle", quoll::CGRectNull, true},
      {"null by one component, whatever the rest", {{infinity, 3}, {4, 5}}, true},
      {"null by the other", {{3, infinity}, {4, 5}}, true},
      {"no size at another origin", {{1, 0}, {0, 0}}, false},
      {"no size, origin a hair from zero", {{0, smallest}, {0, 0}}, false},
      {"a width at the origin", {{0, 0}, {1, 0}}, false},
      {"a height at the origin", {{0, 0}, {0, smallest}}, false},
      {"negative infinity is a place", {{-infinity, -infinity}, {0, 0}}, false},
      {"infinite size is not null", {{0, 0}, {infinity, infinity}}, false},
      {"not a number equals nothing", {{nan, nan}, {nan, nan}}, false},
      {"not a number beside infinity", {{nan, infinity}, {nan, nan}}, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(QFRectIsZeroOrNull(row.rect), row.zeroOrNull);
  }
}

}  // namespace
