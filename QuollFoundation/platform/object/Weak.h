// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Ref.h"

namespace quoll::inline v1 {

/// A reference that does not keep its object alive, and is null once the object begins to die.
///
///     Weak<Window> window = current;
///     if (Ref<Window> still = window.lock()) still->close();
///
/// The object's memory (not its parts) stays until the last Weak is gone.
/// Threads: one Weak is as safe as a plain pointer; `lock()` races safely with the object's death.
template <class T> class Weak {
 public:
  constexpr Weak() = default;
  constexpr Weak(std::nullptr_t) {}
  Weak(T* object) noexcept : object_(object) {
    if (object) detail::Counts::retainWeak(object);
  }
  template <class U> requires std::convertible_to<U*, T*>
  Weak(const Ref<U>& object) noexcept : Weak(object.get()) {}
  template <class U> requires std::convertible_to<U*, T*>
  Weak(const Weak<U>& other) noexcept : Weak(other.object_) {}
  Weak(const Weak& other) noexcept : Weak(other.object_) {}
  Weak(Weak&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~Weak() {
    if (object_) detail::Counts::releaseWeak(object_);
  }
  Weak& operator=(Weak other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// The object while it lives; null once its destructor has begun.
  [[nodiscard]] Ref<T> lock() const {
    return object_ && detail::Counts::retainIfAlive(object_) ? Ref<T>::adopt(object_) : nullptr;
  }

  /// The address, also of an object that is gone: to compare or print, never to follow.
  const void* address() const { return object_; }

 private:
  template <class U> friend class Weak;
  T* object_ = nullptr;
};

}  // namespace quoll::inline v1
