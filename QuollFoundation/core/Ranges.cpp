// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Ranges.h"

#include <algorithm>

namespace quoll::inline v1 {

extern "C" {
constexpr NSRange QFZeroRange = {0, 0};
constexpr NSRange QFNotFoundRange = {NSNotFound, 0};
}

namespace {

NSRange placeAt(uint64_t location) { return {location, 0}; }

/// Of two ranges that both have a length.
NSRange commonPart(NSRange a, NSRange b) {
  const uint64_t start = std::max(a.location, b.location);
  const uint64_t end = std::min(NSMaxRange(a), NSMaxRange(b));
  return start < end ? NSRange{start, end - start} : QFNotFoundRange;
}

NSRange placeWithin(NSRange container, uint64_t place, bool touching) {
  const uint64_t start = container.location;
  const uint64_t end = NSMaxRange(container);
  const bool inside = touching ? start <= place && place <= end : start < place && place < end;
  return inside ? placeAt(place) : QFNotFoundRange;
}

}  // namespace

// The order of the rules decides where several apply, as they do for ranges that wrap.
NSRange QFIntersectionRange(NSRange a, NSRange b, bool touching) {
  if (a.length == 0 && b.length == 0 && a.location == b.location) return placeAt(a.location);
  if (touching && NSMaxRange(a) == b.location) return placeAt(b.location);
  if (touching && NSMaxRange(b) == a.location) return placeAt(a.location);
  if (a.length != 0 && b.length != 0) return commonPart(a, b);
  return a.length != 0 ? placeWithin(a, b.location, touching) : placeWithin(b, a.location, touching);
}

bool QFEqualCFRanges(CFRange a, CFRange b) { return a == b; }

}  // namespace quoll::inline v1
