// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <limits>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/values/NSValue.h"

namespace quoll::inline v1 {

namespace detail {

/// The power of two above the largest T; unlike the largest T itself, a double always holds it exactly.
template <class T> inline constexpr double firstAbove =
    2.0 * static_cast<double>(std::numeric_limits<T>::max() / 2 + 1);

/// The fraction is dropped; a limit of T where the number is beyond it, 0 for NaN.
template <class T> constexpr T nearestInteger(double real) {
  using Limits = std::numeric_limits<T>;
  if (!(real > static_cast<double>(Limits::min()))) return real != real ? T{0} : Limits::min();
  return real >= firstAbove<T> ? Limits::max() : static_cast<T>(real);
}

}  // namespace detail

/// A number as an object. It remembers the C type that it was made from; `box(5)` is the short way to one.
///
///     Ref<NSNumber> count = NSNumber::numberWithInt(5);
///     if (count->isEqualToNumber(NSNumber::numberWithDouble(5))) ...  // by value, whatever the types
///
/// Types: integers of 1, 2, 4 and 8 bytes are "c" "s" "i" "q" and, unsigned, "C" "S" "I" "Q"; a bool is "c"; float is
/// "f", double "d". "l", "L" and "B" occur only where `initWithBytes:objCType:` is given them.
///
/// Values are compared exactly, also a 64-bit integer with a double. NaN equals nothing, and compares as the same with
/// everything. Threads: immutable.
class QF_EXPORT NSNumber : public NSValue {
  QF_CLASS(NSNumber, NSValue)
 public:
  using Plain = NSNumber;  ///< Its destructor has nothing to do.

  // Made for a class known when compiling
  template <class T = NSNumber> static Ref<T> numberWithChar(int8_t value) {
    return cast<T>(numberWithChar_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedChar(uint8_t value) {
    return cast<T>(numberWithUnsignedChar_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithShort(int16_t value) {
    return cast<T>(numberWithShort_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedShort(uint16_t value) {
    return cast<T>(numberWithUnsignedShort_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithInt(int32_t value) {
    return cast<T>(numberWithInt_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedInt(uint32_t value) {
    return cast<T>(numberWithUnsignedInt_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithLong(int64_t value) {
    return cast<T>(numberWithLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedLong(uint64_t value) {
    return cast<T>(numberWithUnsignedLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithLongLong(int64_t value) {
    return cast<T>(numberWithLongLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedLongLong(uint64_t value) {
    return cast<T>(numberWithUnsignedLongLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithFloat(float value) {
    return cast<T>(numberWithFloat_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithDouble(double value) {
    return cast<T>(numberWithDouble_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithBool(bool value) {
    return cast<T>(numberWithBool_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithInteger(int64_t value) {
    return cast<T>(numberWithInteger_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> numberWithUnsignedInteger(uint64_t value) {
    return cast<T>(numberWithUnsignedInteger_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithChar(int8_t value) {
    return cast<T>(initWithChar_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedChar(uint8_t value) {
    return cast<T>(initWithUnsignedChar_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithShort(int16_t value) {
    return cast<T>(initWithShort_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedShort(uint16_t value) {
    return cast<T>(initWithUnsignedShort_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithInt(int32_t value) {
    return cast<T>(initWithInt_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedInt(uint32_t value) {
    return cast<T>(initWithUnsignedInt_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithLong(int64_t value) {
    return cast<T>(initWithLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedLong(uint64_t value) {
    return cast<T>(initWithUnsignedLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithLongLong(int64_t value) {
    return cast<T>(initWithLongLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedLongLong(uint64_t value) {
    return cast<T>(initWithUnsignedLongLong_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithFloat(float value) {
    return cast<T>(initWithFloat_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithDouble(double value) {
    return cast<T>(initWithDouble_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithBool(bool value) {
    return cast<T>(initWithBool_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithInteger(int64_t value) {
    return cast<T>(initWithInteger_ofClass(value, T::classObject()));
  }
  template <class T = NSNumber> static Ref<T> initWithUnsignedInteger(uint64_t value) {
    return cast<T>(initWithUnsignedInteger_ofClass(value, T::classObject()));
  }

  // The same for a class known only at run time
  static Ref<NSNumber> numberWithChar_ofClass(int8_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedChar_ofClass(uint8_t value, Class* cls);
  static Ref<NSNumber> numberWithShort_ofClass(int16_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedShort_ofClass(uint16_t value, Class* cls);
  static Ref<NSNumber> numberWithInt_ofClass(int32_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedInt_ofClass(uint32_t value, Class* cls);
  static Ref<NSNumber> numberWithLong_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedLong_ofClass(uint64_t value, Class* cls);
  static Ref<NSNumber> numberWithLongLong_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedLongLong_ofClass(uint64_t value, Class* cls);
  static Ref<NSNumber> numberWithFloat_ofClass(float value, Class* cls);
  static Ref<NSNumber> numberWithDouble_ofClass(double value, Class* cls);
  static Ref<NSNumber> numberWithBool_ofClass(bool value, Class* cls);
  static Ref<NSNumber> numberWithInteger_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> numberWithUnsignedInteger_ofClass(uint64_t value, Class* cls);
  static Ref<NSNumber> initWithChar_ofClass(int8_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedChar_ofClass(uint8_t value, Class* cls);
  static Ref<NSNumber> initWithShort_ofClass(int16_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedShort_ofClass(uint16_t value, Class* cls);
  static Ref<NSNumber> initWithInt_ofClass(int32_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedInt_ofClass(uint32_t value, Class* cls);
  static Ref<NSNumber> initWithLong_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedLong_ofClass(uint64_t value, Class* cls);
  static Ref<NSNumber> initWithLongLong_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedLongLong_ofClass(uint64_t value, Class* cls);
  static Ref<NSNumber> initWithFloat_ofClass(float value, Class* cls);
  static Ref<NSNumber> initWithDouble_ofClass(double value, Class* cls);
  static Ref<NSNumber> initWithBool_ofClass(bool value, Class* cls);
  static Ref<NSNumber> initWithInteger_ofClass(int64_t value, Class* cls);
  static Ref<NSNumber> initWithUnsignedInteger_ofClass(uint64_t value, Class* cls);
  /// Raises NSInvalidArgumentException for a type that is no number.
  static Ref<NSNumber> initWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls);

  // The value as another type. An integer loses its upper bits as in C; a floating-point number loses its fraction,
  // and gives the nearest limit of the type where it is too large, 0 where it is NaN.
  int8_t charValue() const { return to<int8_t>(); }
  uint8_t unsignedCharValue() const { return to<uint8_t>(); }
  int16_t shortValue() const { return to<int16_t>(); }
  uint16_t unsignedShortValue() const { return to<uint16_t>(); }
  int32_t intValue() const { return to<int32_t>(); }
  uint32_t unsignedIntValue() const { return to<uint32_t>(); }
  int64_t longValue() const { return to<int64_t>(); }
  uint64_t unsignedLongValue() const { return to<uint64_t>(); }
  int64_t longLongValue() const { return to<int64_t>(); }
  uint64_t unsignedLongLongValue() const { return to<uint64_t>(); }
  float floatValue() const;
  double doubleValue() const;
  bool boolValue() const { return isReal() ? real_ != 0 : integer_ != 0; }
  int64_t integerValue() const { return to<int64_t>(); }
  uint64_t unsignedIntegerValue() const { return to<uint64_t>(); }
  Ref<NSString> stringValue() const;  ///< The shortest decimal that reads back the same; a bool is "1" or "0".
  void getValue(void* buffer) const override;

  NSComparisonResult compare(const NSNumber* other) const;  ///< Null comes first.
  bool isEqualToNumber(const NSNumber* other) const;
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;  ///< Equal values have equal hashes, whatever their types.
  Ref<NSString> description() const override;

  bool isReal() const { return *encoding_ == 'd' || *encoding_ == 'f'; }  ///< Made from a float or double.
  /// Whether the integer is to be read as unsigned and is above the largest signed one.
  bool exceedsSigned() const { return integer_ < 0 && !isReal() && (*encoding_ == 'Q' || *encoding_ == 'L'); }

 protected:
  constexpr NSNumber() : NSNumber(int64_t{0}, "i") {}
  constexpr NSNumber(int64_t value, const char* encoding) : NSValue(encoding) { integer_ = value; }
  constexpr NSNumber(double value, const char* encoding) : NSValue(encoding) { real_ = value; }

 private:
  size_t size() const override { return detail::sizeOfType(encoding_); }
  template <class T> T to() const { return isReal() ? detail::nearestInteger<T>(real_) : static_cast<T>(integer_); }
  template <class T> static Ref<NSNumber> by(Selector initializer, T value, Class* cls);
  template <class T> static Ref<NSNumber> holding(T value, const char* encoding, Class* cls);
  std::partial_ordering order(const NSNumber* other) const;
};

namespace detail {
/// An NSNumber; `encoding` is a text of one letter that lives as long as the program.
QF_EXPORT Ref<NSNumber> makeNumber(int64_t value, const char* encoding);
QF_EXPORT Ref<NSNumber> makeNumber(double value, const char* encoding);
/// The program's own text of one of a number's type letters; null for any other letter.
QF_EXPORT const char* numberEncoding(char letter);
}  // namespace detail

}  // namespace quoll::inline v1
