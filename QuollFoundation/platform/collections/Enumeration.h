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

/// The counter of mutations of every collection that can't be changed: its elements need no reference while walked.
QF_EXPORT extern uint64_t neverMutated;

/// Calls `visit(element)` for each element of an enumerable, until it answers false; answers whether it never did.
/// Elements come in batches of 16; a mutation of the collection by `visit` raises before the next element.
template <class Visit> bool walk(NSObject* enumerable, Visit visit) {
  if (!enumerable) return true;
  const Ref<NSObject> pinned = enumerable;
  NSFastEnumerationState state{};
  NSObject* buffer[16];
  uint64_t mutations = 0;
  bool started = false;
  while (const uint64_t count = enumerable->countByEnumeratingWithState_objects_count(&state, buffer, 16)) {
    if (!started && state.mutationsPtr) mutations = *state.mutationsPtr;
    started = true;
    if (state.mutationsPtr == &neverMutated) {
      for (uint64_t i = 0; i < count; ++i) {
        if (!visit(state.itemsPtr[i])) return false;
      }
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

}  // namespace detail

/// Calls back for each element of an enumerable: an array, a set, an ordered set, an enumerator, a class of one's own
/// that answers `countByEnumeratingWithState:objects:count:`; of a dictionary, its keys. Null has none.
///
/// A callback that changes the collection raises NSGenericException, "*** Collection <NSMutableArray: 0x...> was
/// mutated while being enumerated.", before the next element.
QF_EXPORT void forEachIn(NSObject* enumerable, BlockRef<void(NSObject* element)> visit);

}  // namespace quoll::inline v1
