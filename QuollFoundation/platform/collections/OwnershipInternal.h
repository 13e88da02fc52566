// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSObject.h"

/// References and memory that containers keep in arrays of plain pointers.
namespace quoll::inline v1::detail {

inline NSObject* object(const void* stored) { return static_cast<NSObject*>(const_cast<void*>(stored)); }
inline NSObject* retained(const NSObject* object) { return Ref<NSObject>(const_cast<NSObject*>(object)).detach(); }
inline void drop(const void* stored) { Ref<NSObject>::adopt(object(stored)); }

/// Drops an array of references that nobody sees any more. Each count is fetched eight objects ahead: after a sort they
/// stand anywhere in memory.
inline void dropEach(void* const* stored, uint64_t count) {
  constexpr uint64_t ahead = 8;
  for (uint64_t i = 0; i < count; ++i) {
    if (i + ahead < count) __builtin_prefetch(&headerOf(stored[i + ahead]), 1);
    drop(stored[i]);
  }
}

/// Whether a class is one of ours itself, whose initialisers may be called directly: nothing overrides them.
template <class... T> bool isOneOf(const Class* cls) { return ((cls == T::classObject()) || ...); }

/// Grows or shrinks a block of elements; raises NSMallocException where there is no memory.
template <class T> T* resized(T* block, uint64_t count) {
  void* bigger =
      count <= SIZE_MAX / 2 / sizeof(T) ? std::realloc(static_cast<void*>(block), count * sizeof(T)) : nullptr;
  if (!bigger) raise(NSMallocException, "no memory for the elements of a collection");
  return static_cast<T*>(bigger);
}

/// The capacity that follows, growing by half: at least `needed`.
inline uint64_t grown(uint64_t capacity, uint64_t needed) {
  const uint64_t more = capacity + capacity / 2 + 4;
  return more < needed ? needed : more;
}

}  // namespace quoll::inline v1::detail
