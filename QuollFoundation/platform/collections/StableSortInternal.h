// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace quoll::inline v1::detail {

/// Sorts pointers, keeping the order of equal ones. `after(a, b)` says that a belongs behind b; whatever it answers, no
/// place outside is touched: std::stable_sort doesn't promise that for an order that contradicts itself.
template <class T, class After> void insertionSort(T* items, size_t count, After& after) {
  for (size_t i = 1; i < count; ++i) {
    T const item = items[i];
    size_t at = i;
    for (; at > 0 && after(items[at - 1], item); --at) items[at] = items[at - 1];
    items[at] = item;
  }
}

/// Two sorted halves of `from` into `to`.
template <class T, class After>
void merge(const T* from, size_t middle, size_t count, T* to, After& after) {
  if (middle >= count || !after(from[middle - 1], from[middle])) {
    std::copy_n(from, count, to);
    return;
  }
  const T *left = from, *right = from + middle;
  const T *const leftEnd = right, *const rightEnd = from + count;
  while (left != leftEnd && right != rightEnd) *to++ = after(*left, *right) ? *right++ : *left++;
  to = std::copy(left, leftEnd, to);
  std::copy(right, rightEnd, to);
}

template <class T, class After> void stableSort(T* items, size_t count, After after) {
  constexpr size_t run = 8;
  for (size_t i = 0; i < count; i += run) insertionSort(items + i, std::min(run, count - i), after);
  if (count <= run) return;
  const std::unique_ptr<T[]> scratch(new T[count]);
  T* from = items;
  T* to = scratch.get();
  for (size_t width = run; width < count; width *= 2) {
    for (size_t i = 0; i < count; i += 2 * width) {
      merge(from + i, std::min(width, count - i), std::min(2 * width, count - i), to + i, after);
    }
    std::swap(from, to);
  }
  if (from != items) std::copy_n(from, count, items);
}

}  // namespace quoll::inline v1::detail
