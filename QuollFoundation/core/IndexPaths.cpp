// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/IndexPaths.h"

#include <vector>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {
namespace {

Ref<NSIndexPath> replacing(const NSIndexPath* path, uint64_t position, uint64_t index) {
  std::vector<uint64_t> indexes(path->indexes().begin(), path->indexes().end());
  indexes[position] = index;
  return NSIndexPath::indexPathWithIndexes_length(indexes.data(), indexes.size());
}

}  // namespace

Ref<NSIndexPath> indexPath_ofClass(Class* cls) { return made<NSIndexPath>(cls, "init"_sel); }

uint64_t firstIndex(const NSIndexPath* receiver) { return receiver ? receiver->indexAtPosition(0) : 0; }

// The position before the first of an empty path wraps to one past every end.
uint64_t lastIndex(const NSIndexPath* receiver) {
  return receiver ? receiver->indexAtPosition(receiver->length() - 1) : 0;
}

Ref<NSIndexPath> indexPathByIncrementingLastIndex(const NSIndexPath* receiver) {
  if (!receiver) return nullptr;
  const uint64_t length = receiver->length();
  if (length == 0) detail::raiseIndex(receiver, "indexPathByIncrementingLastIndex", 0, 0);
  return replacing(receiver, length - 1, lastIndex(receiver) + 1);
}

Ref<NSIndexPath> indexPathByReplacingIndexAtPosition_withIndex(const NSIndexPath* receiver, uint64_t position,
                                                               uint64_t index) {
  if (!receiver) return nullptr;
  if (position >= receiver->length()) {
    detail::raiseIndex(receiver, "indexPathByReplacingIndexAtPosition:withIndex:", position, receiver->length());
  }
  return replacing(receiver, position, index);
}

namespace detail {

extern constinit const AdditionGroup<NSIndexPath> indexPathAdditions{
    "QFAdditions",
    {classMethod<&indexPath_ofClass>("indexPath"_sel), method<&firstIndex>("firstIndex"_sel),
     method<&lastIndex>("lastIndex"_sel),
     method<&indexPathByIncrementingLastIndex>("indexPathByIncrementingLastIndex"_sel),
     method<&indexPathByReplacingIndexAtPosition_withIndex>("indexPathByReplacingIndexAtPosition:withIndex:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
