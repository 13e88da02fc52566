// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Subarrays.h"

#include <string>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {
namespace {

constexpr const char* name = "QFArrayCreateSubarrayWithRange";

void removeLast(CFMutableArrayRef array) { CFArrayRemoveValueAtIndex(array, CFArrayGetCount(array) - 1); }

[[noreturn]] void raiseNegative(CFIndex location, CFIndex length) {
  raise(NSRangeException, std::string(name) + ": location " + std::to_string(location) + " and length " +
                              std::to_string(length) + " cannot be negative");
}

/// Of `count` elements, the removal at index i meets count - i of them.
void checkRemovals(CFIndex location, CFIndex count) {
  const CFIndex possible = count - count / 2;
  if (location <= possible) return;
  raise(NSRangeException, std::string(name) + ": removal at index " + std::to_string(possible) + " for location " +
                              std::to_string(location) + " is beyond the " + std::to_string(count - possible) +
                              " elements that are left of " + std::to_string(count));
}

}  // namespace

Ref<CFArray> QFArrayCreateSubarrayWithRange(CFAllocatorRef allocator, CFArrayRef array, CFIndex location,
                                            CFIndex length) {
  if (location < 0 || length < 0) raiseNegative(location, length);
  const Ref<CFArray> copy = CFArrayCreateMutableCopy(allocator, 0, array);
  while (CFArrayGetCount(copy) - location > length) removeLast(copy);
  const CFIndex count = CFArrayGetCount(copy);
  checkRemovals(location, count);
  // Removing at index 0, then 1, then 2 of what is left takes the elements 0, 2, 4 away. Those that stay move to the
  // front, the others to the end, so that a long array is walked once.
  CFIndex kept = 0;
  for (CFIndex i = 0; i < count; ++i) {
    const bool isRemoved = i / 2 < location && i % 2 == 0;
    if (!isRemoved) CFArrayExchangeValuesAtIndices(copy, kept++, i);
  }
  while (CFArrayGetCount(copy) > kept) removeLast(copy);
  return CFArrayCreateCopy(allocator, copy);
}

}  // namespace quoll::inline v1
