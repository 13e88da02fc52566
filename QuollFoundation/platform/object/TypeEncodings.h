// SPDX-License-Identifier: MIT
// The closed list of parameter and result types: the encoding, the canonical form and the key of each.
#pragma once

#include <bit>
#include <concepts>
#include <string_view>
#include <type_traits>

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

template <class Signature> class Block;
template <class Signature> class BlockRef;
template <class Signature> class OptionalBlockRef;

/// Lets a struct travel in messages and boxed values: specialise it with the published encoding.
///
///     template <> struct quoll::StructEncoding<Span> { static constexpr const char* text = "{Span=QQ}"; };
template <class T> struct StructEncoding;
template <> struct StructEncoding<NSRange> {
  static constexpr const char* text = "{_NSRange=QQ}";
};
template <> struct StructEncoding<CFRange> {
  static constexpr const char* text = "{?=qq}";
};
template <> struct StructEncoding<CGPoint> {
  static constexpr const char* text = "{CGPoint=dd}";
};
template <> struct StructEncoding<CGSize> {
  static constexpr const char* text = "{CGSize=dd}";
};
template <> struct StructEncoding<CGRect> {
  static constexpr const char* text = "{CGRect={CGPoint=dd}{CGSize=dd}}";
};
template <> struct StructEncoding<QFPadding> {
  static constexpr const char* text = "{QFPadding=dddd}";
};

namespace detail {

template <class T> struct BlockSignature {
  using Type = void;
};
template <class S> struct BlockSignature<BlockRef<S>> {
  using Type = S;
};
template <class S> struct BlockSignature<OptionalBlockRef<S>> {
  using Type = S;
};
template <class S> struct BlockSignature<Block<S>> {
  using Type = S;
};

template <class T> struct Pointee {
  using Type = void;
};
template <class T> struct Pointee<T*> {
  using Type = std::remove_const_t<T>;
};
template <class T> struct Pointee<Ref<T>> {
  using Type = std::remove_const_t<T>;
};

template <class T> concept Integer = std::integral<T> || std::is_enum_v<T>;
template <class T> concept ObjectHandle = std::derived_from<typename Pointee<T>::Type, NSObject>;
template <class T> concept AnyBlockType = !std::is_void_v<typename BlockSignature<T>::Type>;
template <class T> concept RegisteredStruct = requires { StructEncoding<T>::text; };
template <class T> concept CString = std::same_as<T, const char*> || std::same_as<T, char*>;

/// A small text that grows at compile time.
struct Encoding {
  char text[120]{};
  size_t length = 0;
  constexpr Encoding& operator+=(std::string_view more) {
    for (const char c : more) text[length++] = c;
    return *this;
  }
};

template <class T> constexpr void encode(Encoding& out);

template <class T> constexpr void encodePointer(Encoding& out) {
  using Target = std::remove_pointer_t<T>;
  if constexpr (std::is_function_v<Target>) out += "^?";
  else if constexpr (CString<T>) out += std::is_const_v<Target> ? "r*" : "*";
  else {
    out += std::is_const_v<Target> ? "r^" : "^";
    using Bare = std::remove_const_t<Target>;
    if constexpr (std::is_class_v<Bare> && !ObjectHandle<Bare> && !RegisteredStruct<Bare>) out += "v";  // opaque
    else encode<Bare>(out);
  }
}

template <class T> constexpr void encode(Encoding& out) {
  if constexpr (std::is_void_v<T>) out += "v";
  else if constexpr (std::is_enum_v<T>) encode<std::underlying_type_t<T>>(out);
  else if constexpr (std::is_same_v<T, bool>) out += "c";
  else if constexpr (std::integral<T>) {
    constexpr std::string_view codes = std::is_signed_v<T> ? "csiq" : "CSIQ";
    out += codes.substr(std::bit_width(sizeof(T)) - 1, 1);
  } else if constexpr (std::is_same_v<T, float>) out += "f";
  else if constexpr (std::is_same_v<T, double>) out += "d";
  else if constexpr (std::is_same_v<T, Selector>) out += ":";
  else if constexpr (std::is_same_v<typename Pointee<T>::Type, Class>) out += "#";
  else if constexpr (ObjectHandle<T>) out += "@";
  else if constexpr (AnyBlockType<T>) out += "@?";
  else if constexpr (std::is_pointer_v<T>) encodePointer<T>(out);
  else {
    static_assert(RegisteredStruct<T>,
                  "this type is not in the list of parameter and result types; a struct needs a StructEncoding");
    out += StructEncoding<T>::text;
  }
}

template <class T> inline constexpr Encoding encodingOf = [] {
  Encoding e;
  encode<T>(e);
  return e;
}();

template <class T> concept FunctionPointer = std::is_pointer_v<T> && std::is_function_v<std::remove_pointer_t<T>>;
template <class T> struct PlainFunction;
template <class R, class... A> struct PlainFunction<R (*)(A...)> {
  using Type = R(A...);
};
template <class R, class... A> struct PlainFunction<R (*)(A...) noexcept> : PlainFunction<R (*)(A...)> {};

/// All that a pointee, a struct or a block must agree on; the same number from both compilers.
template <class T> struct FineKey {
  static constexpr uint64_t value = [] {
    if constexpr (ObjectHandle<T>) return mix(isRef<T> ? 'R' : '@', classKey<typename Pointee<T>::Type>());
    else if constexpr (std::is_same_v<T, bool>) return uint64_t{'B'};
    else if constexpr (FunctionPointer<T>) return mix('f', FineKey<typename PlainFunction<T>::Type>::value);
    else if constexpr (std::is_pointer_v<T>) {
      using Target = std::remove_pointer_t<T>;
      using Bare = std::remove_const_t<Target>;
      const uint64_t mark = std::is_const_v<Target> ? 'r' : '^';
      if constexpr (std::is_class_v<Bare> && !ObjectHandle<Bare>) return mix(mark, classKey<Bare>());
      else return mix(mark, FineKey<Bare>::value);
    } else return hashOf({encodingOf<T>.text, encodingOf<T>.length});
  }();
};
/// A block may take a plain struct by reference; a method, whose arguments are kept in invocations, may not.
template <class T> struct FineKey<const T&> {
  static constexpr uint64_t value = mix('&', classKey<T>());
};
template <class R, class... A> struct FineKey<R(A...)> {
  static constexpr uint64_t value = [] {
    uint64_t key = mix('?', FineKey<R>::value);
    ((key = mix(key, FineKey<A>::value)), ...);
    return key;
  }();
};
template <class S> struct FineKey<BlockRef<S>> {
  static constexpr uint64_t value = mix('b', FineKey<S>::value);
};
template <class S> struct FineKey<OptionalBlockRef<S>> : FineKey<BlockRef<S>> {};
template <class S> struct FineKey<Block<S>> : FineKey<BlockRef<S>> {};

/// How a value travels between `send` and a method: integers as 64 bits, objects as NSObject*, blocks as two words.
template <class T> struct CanonicalOf {
  using Type = T;
};
template <Integer T> struct CanonicalOf<T> {
  using Type = int64_t;
};
template <ObjectHandle T> struct CanonicalOf<T> {
  using Type = NSObject*;
};
template <AnyBlockType T> struct CanonicalOf<T> {
  using Type = OptionalBlockRef<typename BlockSignature<T>::Type>;
};
template <> struct CanonicalOf<std::nullptr_t> {
  using Type = NSObject*;
};
template <> struct CanonicalOf<char*> {
  using Type = const char*;
};
template <class T> using Canonical = typename CanonicalOf<std::decay_t<T>>::Type;
template <class R, class... A> using DirectFunction = Canonical<R>(NSObject*, Canonical<A>...);  // an object is owned

template <class T> constexpr uint64_t shapeKey() {
  using C = Canonical<T>;
  if constexpr (std::is_same_v<C, int64_t>) return 'q';
  else if constexpr (std::is_same_v<C, NSObject*>) return '@';
  else return FineKey<C>::value;
}

/// What a direct call gives back, where the sender may ignore it.
enum class ResultKind : uint8_t { Nothing, Integer, Object, Double, Float, Other };
template <class R> constexpr ResultKind resultKind() {
  using C = Canonical<R>;
  if constexpr (std::is_void_v<R>) return ResultKind::Nothing;
  else if constexpr (std::is_same_v<C, int64_t>) return ResultKind::Integer;
  else if constexpr (std::is_same_v<C, NSObject*>) return ResultKind::Object;
  else if constexpr (std::is_same_v<C, double>) return ResultKind::Double;
  else if constexpr (std::is_same_v<C, float>) return ResultKind::Float;
  else return ResultKind::Other;
}

/// One word for the canonical shape: equal keys, equal DirectFunction. The low byte is the kind of result; the rest
/// tells the arguments, and the result where its kind does not.
template <class R, class... A> constexpr uint64_t signatureKey() {
  uint64_t key = hashStart;
  ((key = mix(key, shapeKey<A>())), ...);
  if constexpr (resultKind<R>() == ResultKind::Other) key = mix(key, shapeKey<R>() | 1);
  return key << 8 | static_cast<uint64_t>(resultKind<R>());
}
constexpr bool sameArguments(uint64_t key, uint64_t other) { return (key ^ other) >> 8 == 0; }

template <class R, class... A> inline constexpr Encoding methodEncoding = [] {
  Encoding e;
  encode<R>(e);
  e += "@:";
  (encode<std::remove_cvref_t<A>>(e), ...);
  return e;
}();

/// The first type of a list of encodings, and what follows it.
struct EncodedType {
  std::string_view type;
  std::string_view rest;
};
QF_EXPORT EncodedType firstType(std::string_view encodings);  ///< Raises for a malformed text.
/// The size in bytes of a value of this type, 0 for void.
QF_EXPORT size_t sizeOfType(std::string_view encoding);

}  // namespace detail
}  // namespace quoll::inline v1
