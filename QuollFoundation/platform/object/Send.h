// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "QuollFoundation/platform/object/Class.h"

namespace quoll::inline v1 {

namespace detail {

[[noreturn]] QF_EXPORT void refuseSelector(const NSObject* receiver, Selector selector);

/// The way of any types: numbers are converted, an unknown message is forwarded. Takes the arguments away.
QF_EXPORT Value sendErased(NSObject* receiver, Selector selector, const Entry* entry, std::span<Value> arguments);

/// A C string that a Value brings lives on with the innermost AutoreleaseScope.
QF_EXPORT const char* autoreleasedText(Value result, std::string_view where);

template <class R, class... A> requires(!ObjectHandle<R>)
[[gnu::always_inline]] inline R callDirect(AnyFunction direct, NSObject* receiver, Selector selector,
                                           const A&... arguments) {
  auto* function = reinterpret_cast<DirectFunction<R, A...>*>(direct);
  if constexpr (std::is_void_v<R>) function(receiver, toCanonical(arguments)...);
  else return fromCanonical<R>(function(receiver, toCanonical(arguments)...), selector, 0);
}
template <class R, class... A> requires ObjectHandle<R>
R callDirect(AnyFunction direct, NSObject* receiver, Selector selector, const A&... arguments) {
  auto* function = reinterpret_cast<DirectFunction<R, A...>*>(direct);
  return fromCanonical<R>(Ref<NSObject>::adopt(function(receiver, toCanonical(arguments)...)), selector, 0);
}

/// How an argument goes to a function that is not inline: the address of a small one would force it into memory on the
/// fast path too.
template <class A> concept SmallPlain =
    std::is_trivially_copyable_v<A> && !std::is_array_v<A> && sizeof(A) <= 2 * sizeof(void*);
template <class A> using Passed = std::conditional_t<SmallPlain<A>, A, const A&>;

/// Calls a method whose arguments fit and drops its result.
template <class... A> bool callIgnoringResult(uint64_t key, AnyFunction direct, NSObject* receiver, Selector selector,
                                              Passed<A>... arguments) {
  switch (static_cast<ResultKind>(key & 0xFF)) {
    case ResultKind::Nothing: callDirect<void>(direct, receiver, selector, arguments...); return true;
    case ResultKind::Integer: callDirect<int64_t>(direct, receiver, selector, arguments...); return true;
    case ResultKind::Object: callDirect<Ref<NSObject>>(direct, receiver, selector, arguments...); return true;
    case ResultKind::Double: callDirect<double>(direct, receiver, selector, arguments...); return true;
    case ResultKind::Float: callDirect<float>(direct, receiver, selector, arguments...); return true;
    case ResultKind::Other: return false;
  }
  return false;
}

template <class R, class... A> [[gnu::noinline]] R sendSlowly(NSObject* receiver, Selector selector,
                                                              Passed<A>... arguments) {
  const Entry* entry = findEntry(receiver, selector);
  if constexpr (std::is_void_v<R>) {
    if (entry && sameArguments(entry->key, signatureKey<R, A...>()) &&
        callIgnoringResult<A...>(entry->key, entry->direct, receiver, selector, arguments...)) {
      return;
    }
  }
  if (entry && entry->key == signatureKey<R, A...>())
    return callDirect<R, A...>(entry->direct, receiver, selector, arguments...);
  std::array<Value, sizeof...(A)> values{Value::of(arguments)...};
  Value result = sendErased(receiver, selector, entry, values);
  if constexpr (CString<R>) return const_cast<R>(autoreleasedText(std::move(result), selector.name()));
  else return result.template as<R>(selector.name(), 0);
}

template <class T> constexpr bool isObjectPointer = std::is_pointer_v<T> && ObjectHandle<T>;

}  // namespace detail

/// Sends a message by name, and gives its result as an R: `send<int>(counter, "add:"_sel, 2)`.
///
/// A null receiver answers zero. Numbers are converted where they must be; a number that doesn't fit, a wrong class of
/// argument or result, or an argument of another kind raises NSInvalidArgumentException, as does a message that the
/// receiver neither knows nor forwards. An object is received as `Ref<T>`.
///
/// Threads: thread-safe; takes no lock for a method that was found before.
template <class R = void, class... A> R send(NSObject* receiver, Selector selector, const A&... arguments) {
  static_assert(!detail::isObjectPointer<R> || std::is_same_v<R, Class*> || std::is_same_v<R, Protocol*>,
                "receive an object as Ref<T>: a T* would dangle");
  if (!receiver) {
    if constexpr (std::is_void_v<R>) return;
    else return R();
  }
  if (!selector) [[unlikely]]
    detail::refuseSelector(receiver, selector);
  const detail::CacheLine* line = selector.record()->find(detail::vtableOf(receiver));
  constexpr uint64_t key = detail::signatureKey<R, A...>();
  if (line && line->key == key) [[likely]]
    return detail::callDirect<R>(line->direct, receiver, selector, arguments...);
  if constexpr (std::is_void_v<R>) {
    if (line && detail::sameArguments(line->key, key) &&
        detail::callIgnoringResult<A...>(line->key, line->direct, receiver, selector, arguments...)) {
      return;
    }
  }
  return detail::sendSlowly<R, A...>(receiver, selector, arguments...);
}
template <class R = void, class T, class... A> R send(const Ref<T>& receiver, Selector selector,
                                                      const A&... arguments) {
  return send<R>(static_cast<NSObject*>(receiver.get()), selector, arguments...);
}

namespace detail {
/// The selector under which the class, or one that it inherits from, registered the function. Raises for none.
QF_EXPORT Selector selectorOfFunction(const Class* cls, uint64_t function, std::string_view name);
template <class F> struct ReceiverOf;
template <class R, bool Const, class C, class... A> struct ReceiverOf<Shape<R, Const, C, A...>> {
  using Type = C;
};
}  // namespace detail

/// The selector of a registered member function: what a typed name can't misspell.
template <auto f> Selector selectorOf() {
  using Receiver = typename detail::ReceiverOf<typename detail::ShapeOf<decltype(f)>::Type>::Type;
  static const Selector selector =
      detail::selectorOfFunction(Receiver::classObject(), detail::functionKey<f>(), detail::spelledFunctionName<f>());
  return selector;
}

/// What `alloc` gives: it waits for an initialiser, and remembers the class.
QF_EXPORT Ref<NSObject> alloc(Class* cls);

/// An object of `cls`, which is T or a subclass, made by the class's own initialiser: an override runs.
template <class T, class... A> Ref<T> made(Class* cls, Selector initializer, const A&... arguments) {
  return send<Ref<T>>(alloc(cls), initializer, arguments...);
}

namespace detail {
template <class T> class OnReceiverProxy {
 public:
  explicit OnReceiverProxy(NSObject* receiver) : receiver_(receiver) {}
  /// Sends the message that the member function is registered under, with its own types.
  template <auto f, class... A> auto call(const A&... arguments) const {
    return callAs(typename ShapeOf<decltype(f)>::Type{}, selectorOf<f>(), arguments...);
  }

 private:
  template <class R, bool Const, class C, class... P, class... A>
  auto callAs(Shape<R, Const, C, P...>, Selector selector, const A&... arguments) const {
    static_assert(sizeof...(P) == sizeof...(A), "another number of arguments than the member function takes");
    using Result = std::conditional_t<isObjectPointer<R>, Ref<typename Pointee<R>::Type>, R>;
    return send<Result>(receiver_, selector, static_cast<const std::decay_t<P>&>(arguments)...);
  }
  NSObject* receiver_;
};
}  // namespace detail

/// A typed message to a receiver that may be a proxy: `on(proxy).call<&Document::setTitle>(title)`.
inline detail::OnReceiverProxy<NSObject> on(NSObject* receiver) { return detail::OnReceiverProxy<NSObject>(receiver); }

}  // namespace quoll::inline v1
