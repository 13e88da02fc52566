// SPDX-License-Identifier: MIT
#pragma once

#include <sched.h>

#include "QuollFoundation/platform/object/Weak.h"

namespace quoll::inline v1 {

namespace detail {

/// An address and a lock in one word. Whoever holds the lock may count the object that the address names.
class LockedAddress {
 public:
  constexpr LockedAddress() = default;
  explicit LockedAddress(const void* address) : word_(reinterpret_cast<uintptr_t>(address)) {}

  uintptr_t lock() const {
    for (unsigned turns = 1;; ++turns) {
      const uintptr_t word = word_.fetch_or(busy, std::memory_order_acquire);
      if (!(word & busy)) return word;
      if (turns % 64 == 0) sched_yield();  // the holder is a few instructions from done, unless it lost its core
    }
  }
  void unlock(uintptr_t word) const { word_.store(word, std::memory_order_release); }

 private:
  static constexpr uintptr_t busy = 1;
  mutable std::atomic<uintptr_t> word_{0};
};

}  // namespace detail

/// A strong reference that threads may read and replace at once. Threads: thread-safe.
template <class T> class AtomicRef {
 public:
  constexpr AtomicRef() = default;
  AtomicRef(Ref<T> object) : word_(object.detach()) {}
  ~AtomicRef() { exchange(nullptr); }
  AtomicRef(const AtomicRef&) = delete;
  AtomicRef& operator=(const AtomicRef&) = delete;

  Ref<T> load() const {
    const uintptr_t word = word_.lock();
    Ref<T> result = reinterpret_cast<T*>(word);  // retained while nobody can replace it
    word_.unlock(word);
    return result;
  }
  void store(Ref<T> object) { exchange(std::move(object)); }
  Ref<T> exchange(Ref<T> object) {
    const uintptr_t old = word_.lock();
    word_.unlock(reinterpret_cast<uintptr_t>(object.detach()));
    return Ref<T>::adopt(reinterpret_cast<T*>(old));  // dies in the caller, after the word is free
  }

 private:
  detail::LockedAddress word_;
};

/// A weak reference that one thread may set or clear while others load it. Threads: thread-safe.
template <class T> class AtomicWeak {
 public:
  constexpr AtomicWeak() = default;
  AtomicWeak(T* object) : word_(object) {
    if (object) detail::Counts::retainWeak(object);
  }
  ~AtomicWeak() { store(nullptr); }
  AtomicWeak(const AtomicWeak&) = delete;
  AtomicWeak& operator=(const AtomicWeak&) = delete;

  /// The object while it lives; null once its destructor has begun.
  Ref<T> load() const {
    const uintptr_t word = word_.lock();
    T* object = reinterpret_cast<T*>(word);
    const bool alive = object && detail::Counts::retainIfAlive(object);
    word_.unlock(word);
    return alive ? Ref<T>::adopt(object) : nullptr;
  }
  void store(T* object) {
    if (object) detail::Counts::retainWeak(object);
    const uintptr_t old = word_.lock();
    word_.unlock(reinterpret_cast<uintptr_t>(object));
    if (old) detail::Counts::releaseWeak(reinterpret_cast<T*>(old));
  }
  /// The address, also of an object that is gone: to compare or print, never to follow.
  const void* address() const {
    const uintptr_t word = word_.lock();
    word_.unlock(word);
    return reinterpret_cast<const void*>(word);
  }

 private:
  detail::LockedAddress word_;
};

}  // namespace quoll::inline v1
