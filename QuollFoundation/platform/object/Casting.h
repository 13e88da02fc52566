// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <type_traits>

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

namespace detail {

/// Whether the object, whose vtable is not remembered yet, is of the class or of a subclass.
QF_EXPORT bool isOfClass(const NSObject* object, const Class* cls);
[[noreturn]] QF_EXPORT void raiseWrongClass(const NSObject* object, std::string_view wanted);

/// The vtables that are known to be of a class: the first that was met, since mostly objects of a type are of one
/// class, and eight more. A line is written once, so that threads never take it from one another.
template <class T> struct KnownVtables {
  static inline constinit std::atomic<const void*> first{};
  static inline constinit std::atomic<const void*> others[8]{};

  [[gnu::noinline]] static bool has(const NSObject* object) {
    const void* vtable = vtableOf(object);
    std::atomic<const void*>& line = others[SelectorName::firstLine(vtable) % 8];
    const void* known = line.load(std::memory_order_relaxed);
    if (vtable == known) return true;
    if (!isOfClass(object, T::classObject())) return false;
    if (!known) line.store(vtable, std::memory_order_relaxed);
    if (!first.load(std::memory_order_relaxed)) first.store(vtable, std::memory_order_relaxed);
    return true;
  }
};

/// The first look is inline wherever a cast stands; the rest is a call.
template <class T> [[gnu::always_inline]] inline bool isKind(const NSObject* object) {
  if constexpr (std::is_same_v<std::remove_const_t<T>, NSObject>) {
    return true;
  } else {
    using Known = KnownVtables<std::remove_const_t<T>>;
    if (vtableOf(object) == Known::first.load(std::memory_order_relaxed)) [[likely]]
      return true;
    return Known::has(object);
  }
}

template <class T, class O> using CastResult = std::conditional_t<std::is_const_v<O>, const T, T>;

}  // namespace detail

/// The object as a T; null if it is of another class, as a proxy always is.
template <class T, class O> requires std::derived_from<std::remove_const_t<O>, NSObject>
detail::CastResult<T, O>* as(O* object) {
  return object && detail::isKind<T>(object) ? static_cast<detail::CastResult<T, O>*>(object) : nullptr;
}
template <class T, class O> Ref<T> as(const Ref<O>& object) { return as<T>(object.get()); }
template <class T, class O> Ref<T> as(Ref<O>&& object) {
  return object && !detail::isKind<T>(object.get()) ? nullptr : Ref<T>::adopt(static_cast<T*>(object.detach()));
}

/// The same, but raises NSInvalidArgumentException for another class. Null stays null.
template <class T, class O> requires std::derived_from<std::remove_const_t<O>, NSObject>
[[gnu::always_inline]] inline detail::CastResult<T, O>* cast(O* object) {
  if (object && !detail::isKind<T>(object)) [[unlikely]]
    detail::raiseWrongClass(object, detail::className<T>);
  return static_cast<detail::CastResult<T, O>*>(object);
}
template <class T, class O> Ref<T> cast(const Ref<O>& object) { return cast<T>(object.get()); }
template <class T, class O> Ref<T> cast(Ref<O>&& object) {
  cast<T>(object.get());
  return Ref<T>::adopt(static_cast<T*>(object.detach()));
}

/// Whether both are null, the same object, or equal by value.
inline bool isEqual(const NSObject* a, const NSObject* b) { return a == b || (a && b && a->isEqual(b)); }

}  // namespace quoll::inline v1
