/* SPDX-License-Identifier: MIT */
#ifndef QUOLL_PLATFORM_BASICS_RANGES_H
#define QUOLL_PLATFORM_BASICS_RANGES_H

/* Ranges of indices. Plain data; compiles as C and as C++. */

#include <stdbool.h>
#include <stdint.h>

#include "QuollFoundation/platform/basics/Export.h"

QF_C_BEGIN

typedef int64_t NSInteger;
typedef uint64_t NSUInteger;
typedef int64_t CFIndex;
typedef uint64_t CFHashCode;
typedef uint64_t CFOptionFlags;

/* `length` places from `location` on. Arithmetic on ranges is unsigned, with wrap. */
typedef struct NSRange {
  uint64_t location;
  uint64_t length;
} NSRange;

/* The same with signed fields; a negative location says that there is none. */
typedef struct CFRange {
  int64_t location;
  int64_t length;
} CFRange;

QF_C_END

#ifndef __cplusplus
/* "There is none", as an unsigned and as a signed index. */
static const uint64_t NSNotFound = INT64_MAX;
static const int64_t kCFNotFound = -1;
#else
namespace quoll::inline v1 {

/// "There is none", as an unsigned index: the largest signed 64-bit integer.
inline constexpr uint64_t NSNotFound = INT64_MAX;
/// "There is none", as a signed index.
inline constexpr int64_t kCFNotFound = -1;

constexpr NSRange NSMakeRange(uint64_t location, uint64_t length) { return {location, length}; }
constexpr CFRange CFRangeMake(int64_t location, int64_t length) { return {location, length}; }
/// The first index behind the range; wraps past 2^64.
constexpr uint64_t NSMaxRange(NSRange range) { return range.location + range.length; }
constexpr bool NSLocationInRange(uint64_t location, NSRange range) {
  return location >= range.location && location - range.location < range.length;
}
constexpr bool NSEqualRanges(NSRange a, NSRange b) { return a.location == b.location && a.length == b.length; }
constexpr bool operator==(NSRange a, NSRange b) { return NSEqualRanges(a, b); }
constexpr bool operator==(CFRange a, CFRange b) { return a.location == b.location && a.length == b.length; }

/// Whether all of `range` lies within `length` places; a range that wraps does not.
constexpr bool rangeFits(NSRange range, uint64_t length) {
  return range.location <= length && range.length <= length - range.location;
}

}  // namespace quoll::inline v1
#endif
#endif
