// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/basics/Geometry.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using quoll::CGRect;

constexpr double infinity = std::numeric_limits<double>::infinity();

static_assert(std::is_same_v<quoll::CGFloat, double>);
static_assert(std::is_trivial_v<CGRect> && sizeof(CGRect) == 32 && sizeof(quoll::QFPadding) == 32);

TEST(Geometry, MakersFillTheFieldsInOrder) {
  constexpr quoll::CGRect rect = quoll::CGRectMake(1, 2, 3, 4);
  EXPECT_EQ(rect.origin, quoll::CGPointMake(1, 2));
  EXPECT_EQ(rect.size, quoll::CGSizeMake(3, 4));
  EXPECT_EQ(rect.origin.y, 2);
  EXPECT_EQ(rect.size.width, 3);
}

TEST(Geometry, TheZeroRectangleIsNotTheNullRectangle) {
  EXPECT_EQ(quoll::CGRectZero, quoll::CGRectMake(0, 0, 0, 0));
  EXPECT_FALSE(quoll::CGRectIsNull(quoll::CGRectZero));
  EXPECT_TRUE(quoll::CGRectIsNull(quoll::CGRectNull));
}

TEST(Geometry, ARectangleIsNullWhenItsOriginIsAtPositiveInfinity) {
  EXPECT_TRUE(quoll::CGRectIsNull({{infinity, 0}, {1, 1}}));
  EXPECT_TRUE(quoll::CGRectIsNull({{0, infinity}, {1, 1}}));
  EXPECT_FALSE(quoll::CGRectIsNull({{-infinity, -infinity}, {1, 1}}));
  EXPECT_FALSE(quoll::CGRectIsNull({{0, 0}, {infinity, infinity}}));
}

TEST(Geometry, PaddingsAreEqualWhenAllFourEdgesAre) {
  EXPECT_EQ((quoll::QFPadding{1, 2, 3, 4}), (quoll::QFPadding{1, 2, 3, 4}));
  EXPECT_NE((quoll::QFPadding{1, 2, 3, 4}), (quoll::QFPadding{1, 2, 3, 5}));
}

}  // namespace
