// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/NSNumber.h"

/// From plain values to objects and back.
///
///     Ref<NSNumber> count = box(5);                      // a number keeps its C type
///     Ref<NSValue> range = box(NSMakeRange(2, 5));       // any registered struct
///     Ref<NSString> name = box(std::string_view("x"));   // UTF-8
///     int back = unbox<int>(count);
///
/// `unbox` raises NSInvalidArgumentException, naming the object's class and the wanted type, for null, for an object
/// of another class and for a number that doesn't fit: one beyond the type's range. A fraction is dropped, as in C++,
/// and any number but 0 is true.
namespace quoll::inline v1 {

namespace detail {

template <class T> concept PlainNumber = Integer<T> || std::floating_point<T>;

/// What `box` and `unbox` call for the types they are asked for.
/// Raises for ill-formed text.
QF_EXPORT Ref<NSString> boxUTF8(std::string_view text);
/// These raise where the object is no number, or no number within the limits; `wanted` names the type.
QF_EXPORT int64_t unboxSigned(const NSObject* object, int64_t least, int64_t most, std::string_view wanted);
/// From 0 on; see unboxSigned.
QF_EXPORT uint64_t unboxUnsigned(const NSObject* object, uint64_t most, std::string_view wanted);
/// From `-most` on, infinity and NaN included; see unboxSigned.
QF_EXPORT double unboxReal(const NSObject* object, double most, std::string_view wanted);
/// See unboxSigned.
QF_EXPORT bool unboxBool(const NSObject* object);
/// Copies the bytes of a value of exactly this type; raises for anything else.
QF_EXPORT void unboxStruct(const NSObject* object, std::string_view type, size_t size, void* out);
/// Never null: raises for anything else than a string.
QF_EXPORT const NSString* unboxString(const NSObject* object);
/// For an integer parameter of this one-letter type, an unsigned number by its bits. "c" is left to the callee: it may
/// be a bool, which takes any number.
QF_EXPORT int64_t unboxForParameter(const NSNumber* number, char type);

}  // namespace detail

template <detail::PlainNumber T> Ref<NSNumber> box(T plain) {
  if constexpr (std::floating_point<T>) {
    static_assert(sizeof(T) <= sizeof(double), "a long double does not fit into a number");
    return detail::makeNumber(static_cast<double>(plain), detail::encodingOf<T>.text);
  } else return detail::makeNumber(static_cast<int64_t>(plain), detail::encodingOf<T>.text);
}
template <detail::RegisteredStruct T> Ref<NSValue> box(const T& plain) { return NSValue::valueOf(plain); }
/// UTF-8; ill-formed text raises NSInvalidArgumentException.
inline Ref<NSString> box(std::string_view text) { return detail::boxUTF8(text); }
inline Ref<NSString> box(std::u16string_view units) { return NSString::stringWithCharacters(units); }
inline Ref<NSString> box(const std::string& text) { return detail::boxUTF8(text); }
inline Ref<NSString> box(const char* text) { return text ? detail::boxUTF8(text) : nullptr; }
/// An object is itself, and null is null.
inline Ref<NSObject> box(std::nullptr_t) { return nullptr; }
template <class T> Ref<T> box(const Ref<T>& object) { return object; }
template <class T> requires std::derived_from<T, NSObject>
Ref<std::remove_const_t<T>> box(T* object) {
  return const_cast<std::remove_const_t<T>*>(object);
}

/// A number, an enumeration, a registered struct, `std::string` (UTF-8) or `std::u16string`.
template <class T> T unbox(const NSObject* object) {
  using Limits = std::numeric_limits<T>;
  constexpr std::string_view name = detail::className<T>;
  if constexpr (std::is_same_v<T, bool>) return detail::unboxBool(object);
  else if constexpr (std::is_enum_v<T>) return static_cast<T>(unbox<std::underlying_type_t<T>>(object));
  else if constexpr (std::signed_integral<T>) {
    return static_cast<T>(detail::unboxSigned(object, Limits::min(), Limits::max(), name));
  } else if constexpr (std::unsigned_integral<T>) {
    return static_cast<T>(detail::unboxUnsigned(object, Limits::max(), name));
  } else if constexpr (std::floating_point<T>) {
    static_assert(sizeof(T) <= sizeof(double), "a number holds no long double");
    return static_cast<T>(detail::unboxReal(object, Limits::max(), name));
  } else if constexpr (std::is_same_v<T, std::string>) return detail::unboxString(object)->utf8();
  else if constexpr (std::is_same_v<T, std::u16string>) return detail::unboxString(object)->utf16();
  else {
    static_assert(detail::RegisteredStruct<T>, "only numbers, strings and structs with a StructEncoding are boxed");
    T plain;
    detail::unboxStruct(object, StructEncoding<T>::text, sizeof plain, &plain);
    return plain;
  }
}

}  // namespace quoll::inline v1
