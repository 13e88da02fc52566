// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

#include "QuollFoundation/platform/object/ClassName.h"
#include "QuollFoundation/platform/object/Counting.h"

namespace quoll::inline v1 {

struct NotDeletable;

namespace detail {
[[noreturn]] QF_EXPORT void raiseNullReceiver(std::string_view className);
}

/// A strong, nullable reference to an object.
///
///     Ref<NSString> title = document->title();
///     if (title) label->setText(title);            // converts to a borrowed NSString*
///
/// `==` is identity; compare values with `isEqual(a, b)` or `*a == *b`. Pointer arithmetic, ordering, indexing and
/// `delete` do not compile. `->` on a null reference raises NSInvalidArgumentException naming the class.
///
/// Lifetime: a `T*` taken from a temporary Ref dangles; clang says so.
/// Threads: as safe as a plain pointer, many readers or one writer; see AtomicRef for more.
template <class T> class Ref {
 public:
  constexpr Ref() = default;
  constexpr Ref(std::nullptr_t) {}
  Ref(T* object) noexcept : object_(object) {
    if (object) detail::Counts::retain(object);
  }
  Ref(const Ref& other) noexcept : Ref(other.object_) {}
  constexpr Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U> requires std::convertible_to<U*, T*>
  Ref(const Ref<U>& other) noexcept : Ref(other.get()) {}
  template <class U> requires std::convertible_to<U*, T*>
  Ref(Ref<U>&& other) noexcept : object_(other.detach()) {}
  ~Ref() {
    if (object_) detail::Counts::release(object_);
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  T* get() const QF_LIFETIME { return object_; }
  T* operator->() const QF_LIFETIME { return checked(); }
  T& operator*() const QF_LIFETIME { return *checked(); }
  operator T*() const QF_LIFETIME { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

  /// Takes over one reference that `detach` gave away.
  static Ref adopt(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }
  [[nodiscard]] T* detach() { return std::exchange(object_, nullptr); }

  template <class I> void operator[](I) const = delete;  // a reference is no array
  operator struct NotDeletable *() const = delete;       // a second pointer makes `delete ref` ambiguous, for any T

 private:
  T* checked() const {
    if (!object_) [[unlikely]]
      detail::raiseNullReceiver(detail::className<T>);
    return object_;
  }

  T* object_ = nullptr;
};
template <class T> Ref(T*) -> Ref<T>;

namespace detail {
template <class T> constexpr bool isRef = false;
template <class T> constexpr bool isRef<Ref<T>> = true;
template <class A, class B> concept AnyRef = isRef<A> || isRef<B>;
template <class T, class U> concept Related = std::convertible_to<T*, U*> || std::convertible_to<U*, T*>;
}  // namespace detail

// Identity. There is one base class only, so every pointer to an object is the same address.
template <class T, class U> requires detail::Related<T, U>
constexpr bool operator==(const Ref<T>& a, const Ref<U>& b) {
  return static_cast<const void*>(a.get()) == static_cast<const void*>(b.get());
}
template <class T, class U> requires detail::Related<T, U>
constexpr bool operator==(const Ref<T>& a, U* b) {
  return static_cast<const void*>(a.get()) == static_cast<const void*>(b);
}
template <class T> constexpr bool operator==(const Ref<T>& a, std::nullptr_t) { return !a.get(); }

// What pointers can do and references can't.
template <class A, class B> requires detail::AnyRef<A, B>
auto operator<=>(const A&, const B&) = delete;
template <class A, class B> requires detail::AnyRef<A, B>
void operator+(const A&, const B&) = delete;
template <class A, class B> requires detail::AnyRef<A, B>
void operator-(const A&, const B&) = delete;

}  // namespace quoll::inline v1

/// Two meanings would be possible, so neither is chosen silently.
template <class T> struct std::hash<quoll::Ref<T>> {
  static_assert(
      sizeof(T) == 0,
      "A Ref has no std::hash: use quoll::ObjectHash with quoll::ObjectEqual, or quoll::ObjectMap, to go by value");
};
