// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

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

/// The counter of mutations of every collection that can't be changed.
QF_EXPORT extern uint64_t neverMutated;

/// For a collection that can't be changed. Its elements need no reference while it is walked; those of one that a
/// foreign enumerable asks in its place do, since that one may be let go.
inline void noteImmutable(NSFastEnumerationState* state, const NSObject* collection) {
  state->mutationsPtr = &neverMutated;
  state->extra[0] = reinterpret_cast<uintptr_t>(collection);
}
inline bool isImmutable(const NSFastEnumerationState& state, const NSObject* collection) {
  return state.mutationsPtr == &neverMutated && state.extra[0] == reinterpret_cast<uintptr_t>(collection);
}

/// Calls `visit(element)` for each element of an enumerable, until it answers false; answers whether it never did.
/// Elements come in batches of 16; a mutation of the collection by `visit` raises before the next element. Where
/// nothing can change the collection `visitBatch(elements, count)` is called instead, which answers likewise.
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
    if (isImmutable(state, enumerable)) {
      for (uint64_t i = 0; i < count; i += batchSize) {  // more only where a subclass asks for more
        NSObject* const* const batch = state.itemsPtr + i;
        if (!visitBatch(batch, std::min(batchSize, count - i))) return false;
      }
      continue;
    }
    const bool isForwarded = state.mutationsPtr == &neverMutated;
    const std::vector<Ref<NSObject>> held(state.itemsPtr, state.itemsPtr + (isForwarded ? count : 0));
    for (uint64_t i = 0; i < count; ++i) {
      if (state.mutationsPtr && *state.mutationsPtr != mutations) [[unlikely]]
        objc_enumerationMutation(enumerable);
      const Ref<NSObject> element = isForwarded ? held[i] : Ref(state.itemsPtr[i]);  // `visit` may remove it
      if (!visit(element.get())) return false;
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
