// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/object/FastEnumeration.h"

namespace quoll::inline v1 {

/// How a collection calls back for each element. Bits. Walks are always on the caller's thread.
enum NSEnumerationOptions : uint64_t {
  NSEnumerationConcurrent = 1,  ///< Allowed, and without effect.
  NSEnumerationReverse = 2,     ///< From the last element to the first, where there is an order.
};

/// Raises NSGenericException: the collection was changed by somebody who walks it.
[[noreturn]] QF_EXPORT void objc_enumerationMutation(NSObject* collection);

namespace detail {

constexpr uint64_t batchSize = 16;

/// The counter of mutations of every collection that can't be changed: its elements need no reference while walked, and
/// its batches are of `batchSize` at most.
QF_EXPORT extern uint64_t neverMutated;

/// Calls `visit(element)` for each element of an enumerable, until it answers false; answers whether it never did.
/// Elements come in batches of 16; a mutation of the collection by `visit` raises before the next element. Where nothing
/// can change the collection `visitBatch(elements, count)` is called instead, which answers likewise.
template <class VisitBatch, class Visit> bool walkInBatches(NSObject* enumerable, VisitBatch visitBatch, Visit visit) {
  if (!enumerable) return true;
  const Ref<NSObject> pinned = enumerable;
  NSFastEnumerationState state{};
  NSObject* buffer[batchSize];
  uint64_t mutations = 0;
  bool started = false;
  while (const uint64_t count = enumerable->countByEnumeratingWithState_objects_count(&state, buffer, batchSize)) {
    if (!started && state.mutationsPtr) mutations = *state.mutationsPtr;
    started = true;
    if (state.mutationsPtr == &neverMutated) {
      if (!visitBatch(static_cast<NSObject* const*>(state.itemsPtr), count)) return false;
      continue;
    }
    for (uint64_t i = 0; i < count; ++i) {
      if (state.mutationsPtr && *state.mutationsPtr != mutations) [[unlikely]]
        objc_enumerationMutation(enumerable);
      NSObject* const element = state.itemsPtr[i];
      const Ref<NSObject> kept = element;  // `visit` may remove it
      if (!visit(element)) return false;
    }
  }
  return true;
}

/// The same, element by element.
template <class Visit> bool walk(NSObject* enumerable, Visit visit) {
  const auto visitBatch = [&](NSObject* const* elements, uint64_t count) {
    for (uint64_t i = 0; i < count; ++i) {
      if (!visit(elements[i])) return false;
    }
    return true;
  };
  return walkInBatches(enumerable, visitBatch, [&](NSObject* element) { return visit(element); });
}

}  // namespace detail

/// Calls back for each element of an enumerable: an array, a set, an ordered set, an enumerator, a class of one's own
/// that answers `countByEnumeratingWithState:objects:count:`; of a dictionary, its keys. Null has none.
///
/// A callback that changes the collection raises NSGenericException, "*** Collection <NSMutableArray: 0x...> was
/// mutated while being enumerated.", before the next element.
QF_EXPORT void forEachIn(NSObject* enumerable, BlockRef<void(NSObject* element)> visit);

}  // namespace quoll::inline v1
