// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

#include "QuollFoundation/platform/object/Block.h"

/// One argument or result whose type is known at run time only: what invocations and key-value coding carry.
namespace quoll::inline v1::detail {

[[noreturn]] QF_EXPORT void raiseMismatch(std::string_view where, size_t index, std::string_view wanted,
                                          std::string_view given);
/// For an object of another class.
[[noreturn]] QF_EXPORT void raiseWrongObject(std::string_view where, size_t index, std::string_view wanted,
                                             const NSObject* given);
[[noreturn]] QF_EXPORT void raiseOutOfRange(std::string_view where, size_t index, std::string_view wanted,
                                            int64_t given);
[[noreturn]] QF_EXPORT void raiseRealOutOfRange(std::string_view where, size_t index, std::string_view wanted,
                                                double given);

/// Where a value is checked: a function's name, or the selector, whose text is read only where it is needed.
constexpr std::string_view placeName(std::string_view where) { return where; }
constexpr std::string_view placeName(Selector where) { return where.name(); }

/// 64 bits, signed and unsigned, pass into one another as in C++; anything narrower is checked. `index` 0 is a result.
template <class T, class Where> T narrow(int64_t value, Where where, size_t index) {
  if constexpr (std::is_enum_v<T>) return static_cast<T>(narrow<std::underlying_type_t<T>>(value, where, index));
  else if constexpr (std::is_same_v<T, bool>) return value != 0;
  else if constexpr (sizeof(T) == 8) return static_cast<T>(value);
  else {
    const T narrowed = static_cast<T>(value);
    if (static_cast<int64_t>(narrowed) != value) [[unlikely]] {
      raiseOutOfRange(placeName(where), index, {encodingOf<T>.text, encodingOf<T>.length}, value);
    }
    return narrowed;
  }
}

/// A block of any signature: borrowed, or owned once kept.
struct AnyBlock {
  void* callable;
  const BlockTable* table;
  HeapBlock* owner;
};

/// How a BlockRef lies in memory.
struct BlockWords {
  void* callable;
  const BlockTable* table;
};

/// Owns objects and C strings, copies structs; `keep` makes it own its block too. Threads: caller-locked.
class QF_EXPORT Value {
 public:
  enum class Kind : uint8_t { Nothing, Integer, Real, Object, Block, CString, Plain };

  Value() = default;
  Value(const Value& other);
  Value(Value&& other) noexcept;
  ~Value() {
    if (kind_ >= Kind::Object) release();
  }
  Value& operator=(Value other) noexcept;

  template <class T> static Value of(const T& given);
  /// The value as a T; zero or null when nothing is held. Raises for another kind, or a number that doesn't fit.
  template <class T> T as(std::string_view where, size_t index) const;

  /// From and to memory that holds a value of the encoded type; objects are `T*` or `Ref<T>`, blocks `BlockRef`. What
  /// doesn't fit raises, as in `as`.
  static Value fromMemory(std::string_view encoding, const void* address);
  void toMemory(std::string_view encoding, void* address, std::string_view where = "a value", size_t index = 0) const;

  Kind kind() const { return kind_; }
  bool isNothing() const { return kind_ == Kind::Nothing; }
  const char* encoding() const { return encoding_; }  ///< Of the type that was given.
  int64_t integer() const { return integer_; }
  double real() const { return real_; }
  NSObject* object() const { return kind_ == Kind::Object ? object_ : nullptr; }
  const void* bytes() const { return isOutside() ? outside_ : plain_; }
  size_t size() const { return size_; }

  void keep();                  ///< Raises for a block that can't be copied.
  Ref<NSObject> boxed() const;  ///< As key-value coding gives it: numbers and structs as NSNumber and NSValue.
  /// The other way, for a parameter of the given encoding. Raises when the object doesn't fit; null only for objects.
  static Value unboxed(NSObject* object, std::string_view encoding);
  std::string_view kindName() const;

  static Value ofInteger(int64_t value, const char* encoding);
  static Value ofReal(double value, const char* encoding);
  static Value ofObject(NSObject* object);
  static Value ofBlock(void* callable, const BlockTable* table);
  static Value ofCString(const char* text);
  static Value ofPlain(const void* bytes, size_t size, uint64_t key, const char* encoding);

 private:
  // Where only the encoding is known, its text stands behind the bytes: whose it was may be gone.
  bool isOutside() const { return size_ > sizeof plain_ || key_ == 0; }
  void release() noexcept;
  void take(Value& other) noexcept;
  void copyWords(const Value& other) noexcept;
  void numberToMemory(char code, void* address, std::string_view where, size_t index) const;
  template <class T> T number(std::string_view where, size_t index) const;
  template <class T> static T fromReal(double real, std::string_view where, size_t index);
  [[noreturn]] void refuse(std::string_view where, size_t index, std::string_view wanted) const;

  Kind kind_ = Kind::Nothing;
  uint32_t size_ = 0;  // of a plain value
  const char* encoding_ = nullptr;
  union {
    int64_t integer_ = 0;
    double real_;
    NSObject* object_;  // owned
    char* text_;        // owned
    AnyBlock block_;
    alignas(8) unsigned char plain_[32];
    void* outside_;  // owned; a plain value that is larger, or has no key
  };
  uint64_t key_ = 0;  // which plain type; 0 where only the encoding is known
};

template <class T> Value Value::of(const T& given) {
  using C = Canonical<T>;
  using Bare = std::remove_cv_t<std::decay_t<T>>;
  if constexpr (std::is_same_v<C, int64_t>) return ofInteger(static_cast<int64_t>(given), encodingOf<Bare>.text);
  else if constexpr (std::is_floating_point_v<C>) return ofReal(static_cast<double>(given), encodingOf<Bare>.text);
  else if constexpr (std::is_null_pointer_v<Bare>) return ofObject(nullptr);
  else if constexpr (std::is_same_v<C, NSObject*>) {
    return ofObject(const_cast<NSObject*>(static_cast<const NSObject*>(given)));
  } else if constexpr (AnyBlockType<Bare>) {
    const C block = given;
    return ofBlock(block.callable(), block.table());
  } else if constexpr (std::is_same_v<C, const char*>) return ofCString(given);
  else {
    static_assert(std::is_trivially_copyable_v<C>, "structs travel by their bytes");
    const C plain = given;
    return ofPlain(&plain, sizeof plain, FineKey<C>::value, encodingOf<C>.text);
  }
}

template <class T> T Value::fromReal(double real, std::string_view where, size_t index) {
  if constexpr (std::is_floating_point_v<T>) return static_cast<T>(real);
  else if constexpr (std::is_same_v<T, bool>) return real != 0;
  else {
    if constexpr (std::is_same_v<T, uint64_t> || std::is_same_v<T, unsigned long long>) {
      if (real >= 0x1p63 && real < 0x1p64) return static_cast<T>(real);
    }
    if (!(real >= -0x1p63 && real < 0x1p63)) {
      raiseRealOutOfRange(where, index, {encodingOf<T>.text, encodingOf<T>.length}, real);
    }
    return narrow<T>(static_cast<int64_t>(real), where, index);
  }
}

template <class T> T Value::number(std::string_view where, size_t index) const {
  if (kind_ == Kind::Real) return fromReal<T>(real_, where, index);
  if (kind_ != Kind::Integer) refuse(where, index, {encodingOf<T>.text, encodingOf<T>.length});
  if constexpr (std::is_floating_point_v<T>) {
    return encoding_[0] == 'Q' ? static_cast<T>(static_cast<uint64_t>(integer_)) : static_cast<T>(integer_);
  } else return narrow<T>(integer_, where, index);
}

/// A pointer to what may be written is also one to what may only be read.
template <class C> constexpr bool isPlainKey(uint64_t key) {
  if (key == FineKey<C>::value) return true;
  if constexpr (std::is_pointer_v<C>) return key == FineKey<std::remove_const_t<std::remove_pointer_t<C>>*>::value;
  return false;
}

template <class T> T Value::as(std::string_view where, size_t index) const {
  using Bare = std::remove_cvref_t<T>;
  using C = Canonical<T>;
  if constexpr (std::is_void_v<T>) return;
  else if constexpr (AnyBlockType<Bare>) {
    const bool isNull =
        kind_ == Kind::Nothing || (kind_ == Kind::Object && !object_) || (kind_ == Kind::Block && !block_.table);
    if (isNull) return Bare(C());  // a null block raises where null has no meaning
    if (kind_ != Kind::Block || mix('b', block_.table->key) != FineKey<Bare>::value) refuse(where, index, "@?");
    return Bare(C(block_.callable, block_.table));
  } else {
    if (kind_ == Kind::Nothing) return Bare{};
    if constexpr (std::is_same_v<C, int64_t> || std::is_floating_point_v<C>) return number<Bare>(where, index);
    else if constexpr (std::is_same_v<C, NSObject*>) {
      using Object = typename Pointee<Bare>::Type;
      if (kind_ != Kind::Object) refuse(where, index, className<Object>);
      if (object_ && !isKind<Object>(object_)) refuse(where, index, className<Object>);
      return static_cast<Object*>(object_);
    } else if constexpr (std::is_same_v<C, const char*>) {
      if (kind_ == Kind::Object && !object_) return nullptr;
      if (kind_ != Kind::CString) refuse(where, index, "a C string");
      return const_cast<Bare>(static_cast<const char*>(text_));
    } else {
      if (std::is_pointer_v<C> && kind_ == Kind::Object && !object_) return Bare{};
      const bool same =
          kind_ == Kind::Plain && size_ == sizeof(C) &&
          (key_ ? isPlainKey<C>(key_) : std::strncmp(encoding_, encodingOf<C>.text, encodingOf<C>.length) == 0);
      if (!same) refuse(where, index, {encodingOf<C>.text, encodingOf<C>.length});
      C result;
      std::memcpy(&result, bytes(), sizeof result);
      return static_cast<Bare>(result);
    }
  }
}

}  // namespace quoll::inline v1::detail
