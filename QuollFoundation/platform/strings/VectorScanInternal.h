// SPDX-License-Identifier: MIT

// Searching a span with vectors: the loops that the text kernels share. A source file that is compiled once for each
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

/// The widest vector of units whose mask fits 64 bits; and the one of 16 bytes, for what is left.
template <class Unit>
using UnitTag = hn::CappedTag<LaneOf<Unit>, 64>;
template <class Unit>
using ShortUnitTag = hn::CappedTag<LaneOf<Unit>, 16 / sizeof(Unit)>;

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

/// The first index in [0, count) for which a test holds, else `count`. `test(d, i)` answers for all lanes of `d` from
/// index i on, `test(i)` for one index; no test looks beyond `count`.
template <class Unit, class Test>
HWY_INLINE size_t firstWhere(size_t count, const Test& test) {
  const UnitTag<Unit> wide;
  const size_t lanes = hn::Lanes(wide);
  size_t i = 0;
  for (; count - i >= 4 * lanes; i += 4 * lanes) {
    const auto near = hn::Or(test(wide, i), test(wide, i + lanes));
    const auto far = hn::Or(test(wide, i + 2 * lanes), test(wide, i + 3 * lanes));
    if (!hn::AllFalse(wide, hn::Or(near, far))) break;
  }
  for (; count - i >= lanes; i += lanes) {
    const uint64_t bits = bitsOf(wide, test(wide, i));
    if (bits != 0) return i + static_cast<size_t>(std::countr_zero(bits));
  }
  if (i == count) return count;
  const ShortUnitTag<Unit> narrow;
  const size_t few = hn::Lanes(narrow);
  if (count < few) {
    while (i < count && !test(i)) ++i;
    return i;
  }
  for (;; i += few) {
    if (count - i < few) i = count - few;  // the last vector overlaps what was tested before
    const uint64_t bits = bitsOf(narrow, test(narrow, i));
    if (bits != 0) return i + static_cast<size_t>(std::countr_zero(bits));
    if (i + few == count) return count;
  }
}

/// One more than the last index in [0, count) for which a test holds, else 0.
template <class Unit, class Test>
HWY_INLINE size_t behindLastWhere(size_t count, const Test& test) {
  const UnitTag<Unit> wide;
  const size_t lanes = hn::Lanes(wide);
  size_t end = count;
  for (; end >= 4 * lanes; end -= 4 * lanes) {
    const auto near = hn::Or(test(wide, end - lanes), test(wide, end - 2 * lanes));
    const auto far = hn::Or(test(wide, end - 3 * lanes), test(wide, end - 4 * lanes));
    if (!hn::AllFalse(wide, hn::Or(near, far))) break;
  }
  for (; end >= lanes; end -= lanes) {
    const uint64_t bits = bitsOf(wide, test(wide, end - lanes));
    if (bits != 0) return end - lanes + static_cast<size_t>(std::bit_width(bits));
  }
  if (end == 0) return 0;
  const ShortUnitTag<Unit> narrow;
  const size_t few = hn::Lanes(narrow);
  if (count < few) {
    while (end > 0 && !test(end - 1)) --end;
    return end;
  }
  for (;; end -= few) {
    if (end < few) end = few;  // the last vector overlaps what was tested before
    const uint64_t bits = bitsOf(narrow, test(narrow, end - few));
    if (bits != 0) return end - few + static_cast<size_t>(std::bit_width(bits));
    if (end == few) return 0;
  }
}

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
