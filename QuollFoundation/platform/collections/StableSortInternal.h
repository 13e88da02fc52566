// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

/// Sorting pointers, or small things that hold one, where looking at what they point to is what takes the time.
namespace quoll::inline v1::detail {

template <class T, class After> void insertionSort(T* items, size_t count, After& after) {
  for (size_t i = 1; i < count; ++i) {
    T const item = items[i];
    size_t at = i;
    for (; at > 0 && after(items[at - 1], item); --at) items[at] = items[at - 1];
    items[at] = item;
  }
}

/// So many steps before a merge compares an object it asks the cache for it.
constexpr ptrdiff_t fetchedAhead = 8;

inline void fetch(const void* object) {
  __builtin_prefetch(object);
  __builtin_prefetch(static_cast<const char*>(object) + 24);  // often on the next line
}

/// Two sorted halves of `from` into `to`.
template <class T, class After> void merge(const T* from, size_t middle, size_t count, T* to, After& after) {
  if (!after(from[middle - 1], from[middle])) {
    std::copy_n(from, count, to);
    return;
  }
  const T *left = from, *right = from + middle;
  const T *const leftEnd = right, *const rightEnd = from + count;
  // Without a branch on the answer: nobody could predict it.
  const auto step = [&] {
    T const first = *left, second = *right;
    const bool takesSecond = after(first, second);
    *to++ = takesSecond ? second : first;
    left += !takesSecond;
    right += takesSecond;
  };
  while (leftEnd - left > fetchedAhead && rightEnd - right > fetchedAhead) {
    fetch(left[fetchedAhead]);
    fetch(right[fetchedAhead]);
    step();
  }
  while (left != leftEnd && right != rightEnd) step();
  to = std::copy(left, leftEnd, to);
  std::copy(right, rightEnd, to);
}

/// Sorts `items`; the result stands in `other`, which is as long, if `intoOther`. Halves are sorted one after the other
/// to the end, so that what a half points to is still in the cache for the next merge.
template <class T, class After> void sortHalves(T* items, size_t count, T* other, bool intoOther, After& after) {
  constexpr size_t run = 8;
  if (count <= run) {
    insertionSort(items, count, after);
    if (intoOther) std::copy_n(items, count, other);
    return;
  }
  const size_t middle = count / 2;
  sortHalves(items, middle, other, !intoOther, after);
  sortHalves(items + middle, count - middle, other + middle, !intoOther, after);
  if (intoOther) merge(items, middle, count, other, after);
  else merge(other, middle, count, items, after);
}

/// Sorts pointers, or what has a `fetch` of its own, keeping the order of equal ones. `after(a, b)` says that a belongs
/// behind b; whatever it answers, no place outside is touched: std::stable_sort doesn't promise that for an order that
/// contradicts itself.
template <class T, class After> void stableSort(T* items, size_t count, After after) {
  const std::unique_ptr<T[]> scratch(new T[count]);
  sortHalves(items, count, scratch.get(), false, after);
}

}  // namespace quoll::inline v1::detail
