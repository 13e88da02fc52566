// SPDX-License-Identifier: MIT
#pragma once

#include <limits>

#include "QuollFoundation/platform/basics/Export.h"

/// Points, sizes and rectangles of 64-bit floating-point components. Plain data.
namespace quoll::inline v1 {

using CGFloat = double;

struct CGPoint {
  CGFloat x;
  CGFloat y;
  friend constexpr bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
  CGFloat width;
  CGFloat height;
  friend constexpr bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
  friend constexpr bool operator==(const CGRect&, const CGRect&) = default;
};

/// Distances from the four edges.
struct QFPadding {
  CGFloat top;
  CGFloat left;
  CGFloat bottom;
  CGFloat right;
  friend constexpr bool operator==(const QFPadding&, const QFPadding&) = default;
};

constexpr CGPoint CGPointMake(CGFloat x, CGFloat y) { return {x, y}; }
constexpr CGSize CGSizeMake(CGFloat width, CGFloat height) { return {width, height}; }
constexpr CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { return {{x, y}, {width, height}}; }

inline constexpr CGRect CGRectZero{};
/// "No rectangle", which is not the same as an empty one.
inline constexpr CGRect CGRectNull{{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()},
                                   {0, 0}};

/// Whether either component of the origin is positive infinity.
constexpr bool CGRectIsNull(const CGRect& rect) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  return rect.origin.x == infinity || rect.origin.y == infinity;
}

}  // namespace quoll::inline v1
