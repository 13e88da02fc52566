// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/PlainArrays.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {
namespace {

constexpr uint64_t usualAdditionalCount = 64;

uint64_t sumOrLargest(uint64_t a, uint64_t b) { return a > UINT64_MAX - b ? UINT64_MAX : a + b; }

void* reallocateElements(void* buffer, uint64_t count, uint64_t elementSize) {
  uint64_t bytes = 0;
  if (__builtin_mul_overflow(count, elementSize, &bytes) || bytes > PTRDIFF_MAX) {
    errno = ENOMEM;
    return nullptr;
  }
  // Never zero bytes: that would free the buffer and answer null, as if it were still the caller's.
  return std::realloc(buffer, std::max<uint64_t>(bytes, 1));
}

}  // namespace

void* QFReallocateIfNeeded(void* buffer, uint64_t requiredCount, uint64_t* capacity, uint64_t elementSize) {
  return QFReallocateIfNeededWithAdditionalLength(buffer, requiredCount, capacity, elementSize, usualAdditionalCount);
}

void* QFReallocateIfNeededWithAdditionalLength(void* buffer, uint64_t requiredCount, uint64_t* capacity,
                                               uint64_t elementSize, uint64_t additionalCount) {
  if (!capacity) raise(NSInvalidArgumentException, "QFReallocateIfNeeded: the address of the capacity is null");
  if (*capacity > requiredCount) return buffer;
  *capacity = sumOrLargest(std::max(*capacity, requiredCount), additionalCount);
  return reallocateElements(buffer, *capacity, elementSize);
}

}  // namespace quoll::inline v1
