// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <type_traits>

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// One argument of a format, with its type, so that a placeholder that doesn't fit is found out. Borrowed for the
/// length of the call.
class FormatArgument {
 public:
  enum class Kind : uint8_t { Nothing, Integer, Real, Object, CString, Pointer };

  constexpr FormatArgument() = default;
  template <class T> requires(std::integral<T> || std::is_enum_v<T>)
  constexpr FormatArgument(T value)
      : kind(Kind::Integer), size(sizeof(T)), isSigned(isSignedInteger<T>()), integer(static_cast<uint64_t>(value)) {}
  constexpr FormatArgument(double value) : kind(Kind::Real), size(8), real(value) {}
  constexpr FormatArgument(float value) : FormatArgument(static_cast<double>(value)) {}
  constexpr FormatArgument(std::nullptr_t) : kind(Kind::Object), size(8), pointer(nullptr) {}
  FormatArgument(const char* text) : kind(Kind::CString), size(8), pointer(text) {}
  template <class T> requires std::derived_from<T, NSObject>
  FormatArgument(T* object) : kind(Kind::Object), size(8), pointer(static_cast<const NSObject*>(object)) {}
  template <class T> FormatArgument(const Ref<T>& object) : FormatArgument(object.get()) {}
  template <class T> requires(!std::derived_from<T, NSObject> && !std::is_same_v<std::remove_cv_t<T>, char>)
  FormatArgument(T* address) : kind(Kind::Pointer), size(8), pointer(reinterpret_cast<const void*>(address)) {}

  const NSObject* object() const { return static_cast<const NSObject*>(pointer); }
  const char* text() const { return static_cast<const char*>(pointer); }

  Kind kind = Kind::Nothing;
  uint8_t size = 0;       ///< In bytes.
  bool isSigned = false;  ///< Of an integer.
  union {
    uint64_t integer = 0;  ///< Sign-extended to 64 bits.
    double real;
    const void* pointer;
  };

 private:
  template <class T> static constexpr bool isSignedInteger() {
    if constexpr (std::is_enum_v<T>) return std::is_signed_v<std::underlying_type_t<T>>;
    else return std::is_signed_v<T>;
  }
};

}  // namespace quoll::inline v1
