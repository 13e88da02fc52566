// SPDX-License-Identifier: MIT

// Going over a span with vectors: the loops that the text kernels share. A source file that is compiled once for each
// instruction set includes this once in each of them, hence the guard that flips instead of `#pragma once`.
#if defined(QUOLL_VECTOR_SCAN_INTERNAL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef QUOLL_VECTOR_SCAN_INTERNAL_H
#undef QUOLL_VECTOR_SCAN_INTERNAL_H
#else
#define QUOLL_VECTOR_SCAN_INTERNAL_H
#endif

#include <hwy/highway.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <class Unit>
using LaneOf = std::conditional_t<sizeof(Unit) == 1, uint8_t, uint16_t>;

/// The widest vector of units whose mask fits 64 bits; and those of 16 and 8 bytes, for what is left.
template <class Unit>
using UnitTag = hn::CappedTag<LaneOf<Unit>, 64>;
template <class Unit>
using ShortUnitTag = hn::CappedTag<LaneOf<Unit>, 16 / sizeof(Unit)>;
template <class Unit>
using ShortestUnitTag = hn::CappedTag<LaneOf<Unit>, 8 / sizeof(Unit)>;

template <class D, class Unit>
HWY_INLINE auto loadUnits(D d, const Unit* units) {
  static_assert(sizeof(Unit) == sizeof(hn::TFromD<D>));
  return hn::LoadU(d, reinterpret_cast<const hn::TFromD<D>*>(units));
}

/// Lane i of the mask as bit i.
template <class D, class Mask>
HWY_INLINE uint64_t bitsOf(D d, Mask mask) {
  uint8_t bytes[8] = {};
  hn::StoreMaskBits(d, mask, bytes);
  uint64_t bits;
  std::memcpy(&bits, bytes, sizeof(bits));
  return bits;
}

/// What `firstWhere` does from index i on with a vector of which `count` indices fill at least one.
template <class D, class Test>
HWY_INLINE size_t firstWhereFrom(D d, size_t i, size_t count, const Test& test) {
  const size_t lanes = hn::Lanes(d);
  for (;; i += lanes) {
    if (count - i < lanes) i = count - lanes;  // the last vector overlaps what was tested before
    const uint64_t bits = bitsOf(d, test(d, i));
    if (bits != 0) return i + static_cast<size_t>(std::countr_zero(bits));
    if (i + lanes == count) return count;
  }
}

/// The first index in [0, count) for which a test holds, else `count`. `test(d, i)` answers for all lanes of `d` from
/// index i on, `test(i)` for one index; no test looks beyond `count`.
template <class Unit, class Test>
HWY_INLINE size_t firstWhere(size_t count, const Test& test) {
  const UnitTag<Unit> wide;
  const ShortUnitTag<Unit> narrow;
  const ShortestUnitTag<Unit> narrowest;
  const size_t lanes = hn::Lanes(wide);
  size_t i = 0;
  for (; count - i >= 4 * lanes; i += 4 * lanes) {
    const auto near = hn::Or(test(wide, i), test(wide, i + lanes));
    const auto far = hn::Or(test(wide, i + 2 * lanes), test(wide, i + 3 * lanes));
    if (!hn::AllFalse(wide, hn::Or(near, far))) break;
  }
  if (i == count) return count;
  if (count >= lanes) return firstWhereFrom(wide, i, count, test);
  if (count >= hn::Lanes(narrow)) return firstWhereFrom(narrow, 0, count, test);
  if (count >= hn::Lanes(narrowest)) return firstWhereFrom(narrowest, 0, count, test);
  while (i < count && !test(i)) ++i;
  return i;
}

/// What `behindLastWhere` does below index `end` with a vector of which `end` indices fill at least one.
template <class D, class Test>
HWY_INLINE size_t behindLastWhereUpTo(D d, size_t end, const Test& test) {
  const size_t lanes = hn::Lanes(d);
  for (;; end -= lanes) {
    if (end < lanes) end = lanes;  // the last vector overlaps what was tested before
    const uint64_t bits = bitsOf(d, test(d, end - lanes));
    if (bits != 0) return end - lanes + static_cast<size_t>(std::bit_width(bits));
    if (end == lanes) return 0;
  }
}

/// One more than the last index in [0, count) for which a test holds, else 0.
template <class Unit, class Test>
HWY_INLINE size_t behindLastWhere(size_t count, const Test& test) {
  const UnitTag<Unit> wide;
  const ShortUnitTag<Unit> narrow;
  const ShortestUnitTag<Unit> narrowest;
  const size_t lanes = hn::Lanes(wide);
  size_t end = count;
  for (; end >= 4 * lanes; end -= 4 * lanes) {
    const auto near = hn::Or(test(wide, end - lanes), test(wide, end - 2 * lanes));
    const auto far = hn::Or(test(wide, end - 3 * lanes), test(wide, end - 4 * lanes));
    if (!hn::AllFalse(wide, hn::Or(near, far))) break;
  }
  if (end == 0) return 0;
  if (count >= lanes) return behindLastWhereUpTo(wide, end, test);
  if (count >= hn::Lanes(narrow)) return behindLastWhereUpTo(narrow, end, test);
  if (count >= hn::Lanes(narrowest)) return behindLastWhereUpTo(narrowest, end, test);
  while (end > 0 && !test(end - 1)) --end;
  return end;
}

/// Does something for each index in [0, count), for some of them twice: `step(d, i)` for all lanes of `d` from index i
/// on, `step(i)` for one index.
template <class Unit, class Step>
HWY_INLINE void forEach(size_t count, const Step& step) {
  const UnitTag<Unit> wide;
  const ShortUnitTag<Unit> narrow;
  const size_t lanes = hn::Lanes(wide);
  const size_t few = hn::Lanes(narrow);
  size_t i = 0;
  for (; count - i >= lanes; i += lanes) step(wide, i);
  if (i == count) return;
  if (count >= lanes) return step(wide, count - lanes);
  for (; count - i >= few; i += few) step(narrow, i);
  if (i == count) return;
  if (count >= few) return step(narrow, count - few);
  for (; i < count; ++i) step(i);
}

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
