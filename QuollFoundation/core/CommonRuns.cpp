// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/CommonRuns.h"

#include <algorithm>
#include <string>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {
namespace {

uint64_t comparableCount(uint64_t lengthInA, uint64_t lengthInB, QFElementComparator comparator, const char* function) {
  const uint64_t count = std::min(lengthInA, lengthInB);
  if (count > 0 && !comparator) {
    raise(NSInvalidArgumentException, std::string(function) + ": the comparator cannot be null");
  }
  return count;
}

}  // namespace

uint64_t QFArrayLengthOfCommonPrefix(const void* a, uint64_t startInA, uint64_t lengthInA, const void* b,
                                     uint64_t startInB, uint64_t lengthInB, QFElementComparator comparator,
                                     void* context) {
  const uint64_t count = comparableCount(lengthInA, lengthInB, comparator, "QFArrayLengthOfCommonPrefix");
  uint64_t i = 0;
  while (i < count && comparator(a, startInA + i, b, startInB + i, context)) ++i;
  return i;
}

uint64_t QFArrayLengthOfCommonSuffix(const void* a, uint64_t startInA, uint64_t lengthInA, const void* b,
                                     uint64_t startInB, uint64_t lengthInB, QFElementComparator comparator,
                                     void* context) {
  const uint64_t count = comparableCount(lengthInA, lengthInB, comparator, "QFArrayLengthOfCommonSuffix");
  const uint64_t lastInA = startInA + lengthInA - 1;
  const uint64_t lastInB = startInB + lengthInB - 1;
  uint64_t i = 0;
  while (i < count && comparator(a, lastInA - i, b, lastInB - i, context)) ++i;
  return i;
}

}  // namespace quoll::inline v1
