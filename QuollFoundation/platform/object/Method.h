// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/object/Value.h"

/// From a C++ function to a method: the selector, the encoding and two ways to call it.
namespace quoll::inline v1 {

namespace detail {

enum class MethodKind : uint8_t { Instance, Initializer, Class };

/// What the compiler derives from one function; a constant. Function pointers are asked for, because a cast of one is
/// no constant expression.
struct Implementation {
  const char* encoding;
  uint64_t key;
  uint64_t function;  ///< Which C++ function it is, see functionKey.
  size_t argumentCount;
  bool constReceiver;
  AnyFunction (*direct)();
  void (*apply)(NSObject* self, std::span<const Value> arguments, Value& result);
};

}  // namespace detail

/// One line of a class's table or of an addition group.
struct Method {
  Selector selector;
  const detail::Implementation* implementation = nullptr;
  detail::MethodKind kind = detail::MethodKind::Instance;
  bool isProperty = false;
  bool isKey = true;  ///< False: key-value coding never reads it.
  Selector setter{};  ///< Of a property that can be written.

  /// The method, which has an effect, is never read as a key.
  constexpr Method notAKey() const {
    Method m = *this;
    m.isKey = false;
    return m;
  }
};

namespace detail {

/// A method that reads and does nothing else: what key-value coding may call for a key.
QF_EXPORT bool mayReadAsKey(const Method& method);

/// What the placeholder was made for; raises for a finished object.
QF_EXPORT Class* classToInitialize(NSObject* placeholder);

/// From the canonical form to the parameter's own type.
template <class T, class C, class Where> T fromCanonical(C&& value, Where where, size_t index) {
  using Bare = std::remove_cvref_t<T>;
  if constexpr (Integer<Bare>) return narrow<Bare>(value, where, index);
  else if constexpr (ObjectHandle<Bare>) {
    using Object = typename Pointee<Bare>::Type;
    NSObject* object = value;
    if (object && !isKind<Object>(object)) [[unlikely]]
      raiseWrongObject(placeName(where), index, className<Object>, object);
    if constexpr (isRef<std::remove_cvref_t<C>> && isRef<Bare>) {
      return Bare::adopt(static_cast<Object*>(value.detach()));
    } else return static_cast<Object*>(object);
  } else return static_cast<Bare>(std::forward<C>(value));
}

template <class T> Canonical<T> toCanonical(const T& value) {
  using Bare = std::remove_cv_t<T>;
  if constexpr (Integer<Bare>) return static_cast<int64_t>(value);
  else if constexpr (std::is_same_v<Canonical<T>, NSObject*>) {
    if constexpr (std::is_null_pointer_v<Bare>) return nullptr;
    else return const_cast<NSObject*>(static_cast<const NSObject*>(value));
  } else return value;
}

/// An object result leaves with its reference: a plain pointer fits a register, a Ref does not.
template <class R> Canonical<R> toResult(R&& value) {
  using Bare = std::remove_cvref_t<R>;
  if constexpr (ObjectHandle<Bare>) {
    if constexpr (isRef<Bare>) return const_cast<NSObject*>(static_cast<const NSObject*>(value.detach()));
    else return Ref<NSObject>(toCanonical(value)).detach();
  } else return toCanonical(value);
}

[[noreturn]] QF_EXPORT void raiseWrongColons(std::string_view selector, size_t arguments);
[[noreturn]] QF_EXPORT void raiseArgumentCount(std::string_view where, size_t wanted, size_t given);

/// The entry points of one function. `Invoke` calls it with its own types.
template <class Invoke, bool Const, class R, class... A> struct EntryPoints {
  static_assert(!AnyBlockType<std::decay_t<R>>, "a block is no result type: nobody would own it");
  static constexpr std::string_view where = Invoke::name();  // found when compiling, not at each call

  template <size_t... I> static Canonical<R> call(NSObject* self, std::index_sequence<I...>,
                                                  Canonical<A>... arguments) {
    if constexpr (std::is_void_v<R>) Invoke::call(self, fromCanonical<std::decay_t<A>>(arguments, where, I + 1)...);
    else return toResult<R>(Invoke::call(self, fromCanonical<std::decay_t<A>>(arguments, where, I + 1)...));
  }
  static Canonical<R> direct(NSObject* self, Canonical<A>... arguments) {
    return call(self, std::index_sequence_for<A...>{}, arguments...);
  }
  template <size_t... I>
  static void applyEach(NSObject* self, [[maybe_unused]] std::span<const Value> given, [[maybe_unused]] Value& result,
                        std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>) Invoke::call(self, given[I].template as<std::decay_t<A>>(where, I + 1)...);
    else result = Value::of(Invoke::call(self, given[I].template as<std::decay_t<A>>(where, I + 1)...));
  }
  static void apply(NSObject* self, std::span<const Value> given, Value& result) {
    if (given.size() != sizeof...(A)) raiseArgumentCount(where, sizeof...(A), given.size());
    applyEach(self, given, result, std::index_sequence_for<A...>{});
  }
  static AnyFunction askDirect() { return reinterpret_cast<AnyFunction>(&direct); }
  static constexpr Implementation value{
      methodEncoding<R, A...>.text, signatureKey<R, A...>(), Invoke::function, sizeof...(A), Const, &askDirect, &apply};
};

template <class... A> struct List {
  static constexpr size_t count = sizeof...(A);
};
template <class R, bool Const, class Receiver, class... A> struct Shape {
  static constexpr size_t argumentCount = sizeof...(A);
};
template <class F> struct ShapeOf;
template <class C, class R, class... A> struct ShapeOf<R (C::*)(A...)> {
  using Type = Shape<R, false, C, A...>;
};
template <class C, class R, class... A> struct ShapeOf<R (C::*)(A...) const> {
  using Type = Shape<R, true, C, A...>;
};
template <class C, class R, class... A> struct ShapeOf<R (C::*)(A...) noexcept> : ShapeOf<R (C::*)(A...)> {};
template <class C, class R, class... A> struct ShapeOf<R (C::*)(A...) const noexcept> : ShapeOf<R (C::*)(A...) const> {
};
template <class T, class R, class... A> struct ShapeOf<R (*)(T*, A...)> {
  using Type = Shape<R, std::is_const_v<T>, std::remove_const_t<T>, A...>;
};
template <class T, class R, class... A> struct ShapeOf<R (*)(T*, A...) noexcept> : ShapeOf<R (*)(T*, A...)> {};

// The trailing Class*, if any, is the receiver.
template <class L, class... A> struct Split {
  using Arguments = L;
  static constexpr bool takesClass = false;
};
template <class... B> struct Split<List<B...>, Class*> {
  using Arguments = List<B...>;
  static constexpr bool takesClass = true;
};
template <class... B, class H, class... A> requires(!std::is_same_v<H, Class*> || sizeof...(A) > 0)
struct Split<List<B...>, H, A...> : Split<List<B..., H>, A...> {};
template <class F> struct StaticShapeOf;
template <class R, class... A> struct StaticShapeOf<R (*)(A...)> : Split<List<>, A...> {
  using Result = R;
};
template <class R, class... A> struct StaticShapeOf<R (*)(A...) noexcept> : StaticShapeOf<R (*)(A...)> {};

template <auto f, class S> struct OnReceiver;
template <auto f, class R, bool Const, class Receiver, class... A>
struct OnReceiver<f, Shape<R, Const, Receiver, A...>> {
  static constexpr uint64_t function = functionKey<f>();
  static constexpr std::string_view name() { return spelledFunctionName<f>(); }
  static R call(NSObject* self, A... arguments) {
    auto* receiver = static_cast<Receiver*>(self);
    if constexpr (std::is_member_function_pointer_v<decltype(f)>) return (receiver->*f)(static_cast<A>(arguments)...);
    else return f(receiver, static_cast<A>(arguments)...);
  }
  using Points = EntryPoints<OnReceiver, Const, R, A...>;
};

template <auto f, MethodKind kind, class L> struct OnClass;
template <auto f, MethodKind kind, class... A> struct OnClass<f, kind, List<A...>> {
  using Shape = StaticShapeOf<decltype(f)>;
  static constexpr uint64_t function = functionKey<f>();
  static constexpr std::string_view name() { return spelledFunctionName<f>(); }
  static typename Shape::Result call(NSObject* self, A... arguments) {
    if constexpr (kind == MethodKind::Initializer) {
      Class* cls = classToInitialize(self);
      return f(static_cast<A>(arguments)..., cls);
    } else if constexpr (Shape::takesClass) {
      return f(static_cast<A>(arguments)..., reinterpret_cast<Class*>(self));  // NSObject is its first base
    } else return f(static_cast<A>(arguments)...);
  }
  using Points = EntryPoints<OnClass, false, typename Shape::Result, A...>;
};

constexpr Selector withArguments(Selector selector, size_t count) {
  if (selector.argumentCount() == count) return selector;
  if (std::is_constant_evaluated()) throw "the selector has another number of arguments than the function";
  raiseWrongColons(selector.name(), count);
}

/// A selector that is written where a function is registered: the compiler counts its colons.
template <size_t count> struct CountedSelector {
  consteval CountedSelector(Selector s) : selector(withArguments(s, count)) {}
  Selector selector;
};
template <auto f> using SelectorOnReceiver = CountedSelector<ShapeOf<decltype(f)>::Type::argumentCount>;
template <auto f> using SelectorOnClass = CountedSelector<StaticShapeOf<decltype(f)>::Arguments::count>;

}  // namespace detail

/// A member function, or a free function that takes its receiver first, as a method.
template <auto f> constexpr Method method(Selector selector) {
  using Points = typename detail::OnReceiver<f, typename detail::ShapeOf<decltype(f)>::Type>::Points;
  return {detail::withArguments(selector, Points::value.argumentCount), &Points::value, detail::MethodKind::Instance};
}

namespace detail {
template <auto f, MethodKind kind> constexpr Method staticMethod(Selector selector) {
  using Points = typename OnClass<f, kind, typename StaticShapeOf<decltype(f)>::Arguments>::Points;
  return {withArguments(selector, Points::value.argumentCount), &Points::value, kind};
}
}  // namespace detail

/// A free or static function as a method of the class; a last parameter `Class*` is the receiver.
template <auto f> constexpr Method classMethod(Selector selector) {
  return detail::staticMethod<f, detail::MethodKind::Class>(selector);
}
/// A function that makes an object of the class that it takes last, as an initialiser.
template <auto f> constexpr Method initializer(Selector selector) {
  static_assert(detail::StaticShapeOf<decltype(f)>::takesClass, "an initializer takes the class to make last");
  return detail::staticMethod<f, detail::MethodKind::Initializer>(selector);
}

/// One of several functions of a name: `overload<Ref<NSString>(NSURL*)>(&f)`.
template <class Signature> constexpr auto overload(Signature* f) { return f; }
template <class Signature, class C> constexpr auto overload(Signature C::* f) { return f; }

}  // namespace quoll::inline v1
