// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The three answers of a comparison, and its options.
namespace quoll::inline v1 {

enum NSComparisonResult : int64_t { NSOrderedAscending = -1, NSOrderedSame = 0, NSOrderedDescending = 1 };

/// How texts are compared and searched. Bits; combine with `|`.
enum NSStringCompareOptions : uint64_t {
  NSCaseInsensitiveSearch = 1,
  NSLiteralSearch = 2,    ///< Unit by unit, without regard to canonical equivalence.
  NSBackwardsSearch = 4,  ///< From the end.
  NSAnchoredSearch = 8,   ///< Only at the start, or at the end when backwards.
  NSNumericSearch = 64,   ///< Runs of digits compare by their value: a2 before a10.
  NSDiacriticInsensitiveSearch = 128,
  NSWidthInsensitiveSearch = 256,  ///< Full-width and half-width forms are equal.
  NSForcedOrderingSearch = 512,    ///< Never the same unless literally equal.
  NSRegularExpressionSearch = 1024,
};
constexpr NSStringCompareOptions operator|(NSStringCompareOptions a, NSStringCompareOptions b) {
  return static_cast<NSStringCompareOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

template <class T> constexpr NSComparisonResult compareValues(const T& a, const T& b) {
  return a < b ? NSOrderedAscending : b < a ? NSOrderedDescending : NSOrderedSame;
}

}  // namespace quoll::inline v1
