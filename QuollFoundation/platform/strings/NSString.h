// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Equality.h"
#include "QuollFoundation/platform/object/NSObject.h"
#include "QuollFoundation/platform/strings/FormatArgument.h"
#include "QuollFoundation/platform/strings/StringLiteral.h"

namespace quoll::inline v1 {

class NSCharacterSet;
class NSData;
class NSLocale;
class NSMutableString;

namespace detail {
struct Text;  // makes plain strings
}

/// How bytes stand for text.
enum NSStringEncoding : uint64_t {
  NSASCIIStringEncoding = 1,
  NSUTF8StringEncoding = 4,
  NSISOLatin1StringEncoding = 5,
  NSUTF16StringEncoding = 10,  ///< By its byte-order mark, else big-endian; written with a mark.
  NSUTF16BigEndianStringEncoding = 0x90000100,
  NSUTF16LittleEndianStringEncoding = 0x94000100,
};

/// A sequence of UTF-16 code units. Lengths and indices count units, from 0; an index or range past the end raises
/// NSRangeException.
///
///     Ref<NSString> name = NSString::stringWithUTF8("Grüße");      // null where the bytes are no UTF-8
///     if (name->hasPrefix("Gr"_ns)) std::cout << name << '\n';      // a literal is `"text"_ns`
///
/// The text is stored as ASCII bytes or as UTF-16 units, and says which; a UTF-16 text may happen to be all ASCII.
/// Unpaired surrogates are allowed. Threads: immutable (NSMutableString: caller-locked).
class QF_EXPORT NSString : public NSObject {
  QF_CLASS(NSString, NSObject)
 public:
  using Plain = NSString;  ///< Its destructor has nothing to do.

  // Making strings. What can't be decoded gives null.
  static Ref<NSString> stringWithUTF8(std::string_view bytes);
  static Ref<NSString> stringWithCharacters(std::u16string_view units);
  static Ref<NSString> stringWithLatin1(std::string_view bytes);
  static Ref<NSString> stringWithBytes_encoding(std::string_view bytes, NSStringEncoding encoding);
  /// The empty one; there is one immutable empty string only.
  template <class T = NSString> static Ref<T> string() { return cast<T>(string_ofClass(T::classObject())); }
  template <class T = NSString> static Ref<T> stringWithString(const NSString* other) {
    return cast<T>(stringWithString_ofClass(other, T::classObject()));
  }
  template <class T = NSString> static Ref<T> stringWithCharacters_length(const char16_t* units, uint64_t length) {
    return cast<T>(stringWithCharacters_length_ofClass(units, length, T::classObject()));
  }
  template <class T = NSString> static Ref<T> stringWithUTF8String(const char* text) {
    return cast<T>(stringWithUTF8String_ofClass(text, T::classObject()));
  }
  template <class T = NSString> static Ref<T> initWithString(const NSString* other) {
    return cast<T>(initWithString_ofClass(other, T::classObject()));
  }
  template <class T = NSString> static Ref<T> initWithCharacters_length(const char16_t* units, uint64_t length) {
    return cast<T>(initWithCharacters_length_ofClass(units, length, T::classObject()));
  }
  template <class T = NSString> static Ref<T> initWithUTF8String(const char* text) {
    return cast<T>(initWithUTF8String_ofClass(text, T::classObject()));
  }
  template <class T = NSString> static Ref<T> initWithData_encoding(const NSData* data, NSStringEncoding encoding) {
    return cast<T>(initWithData_encoding_ofClass(data, encoding, T::classObject()));
  }
  /// Checked at run time: a placeholder that doesn't fit its argument raises NSInvalidArgumentException.
  /// `%@ %p %s %c %d %i %u %x %X %o %f %e %g %G %E %%` with flags, width, precision and `h hh l ll z q`.
  template <class... A> static Ref<NSString> stringWithFormat(const NSString* format, const A&... arguments) {
    const FormatArgument list[sizeof...(A) + 1] = {FormatArgument(arguments)..., FormatArgument()};
    return stringWithFormat_arguments(format, {list, sizeof...(A)});
  }
  static Ref<NSString> stringWithFormat_arguments(const NSString* format, std::span<const FormatArgument> arguments);

  static Ref<NSString> init_ofClass(Class* cls);
  static Ref<NSString> initWithString_ofClass(const NSString* other, Class* cls);
  static Ref<NSString> initWithCharacters_length_ofClass(const char16_t* units, uint64_t length, Class* cls);
  static Ref<NSString> initWithUTF8String_ofClass(const char* text, Class* cls);
  static Ref<NSString> string_ofClass(Class* cls);
  static Ref<NSString> stringWithString_ofClass(const NSString* other, Class* cls);
  static Ref<NSString> stringWithCharacters_length_ofClass(const char16_t* units, uint64_t length, Class* cls);
  static Ref<NSString> stringWithUTF8String_ofClass(const char* text, Class* cls);
  static Ref<NSString> initWithData_encoding_ofClass(const NSData* data, NSStringEncoding encoding, Class* cls);

  // Units
  uint64_t length() const { return length_; }
  char16_t characterAtIndex(uint64_t index) const {
    if (index >= length_) [[unlikely]]
      raiseIndex("characterAtIndex:", index);
    return ascii_ ? static_cast<char16_t>(asciiCharacters()[index]) : utf16Characters()[index];
  }
  void getCharacters_range(char16_t* buffer, NSRange range) const;
  const char* asciiCharacters() const { return ascii_ ? static_cast<const char*>(units_) : nullptr; }  ///< Or null.
  const char16_t* utf16Characters() const { return ascii_ ? nullptr : static_cast<const char16_t*>(units_); }
  /// Calls `visitor` with the stored text, a `std::string_view` of ASCII or a `std::u16string_view`.
  template <class Visitor> decltype(auto) visit(Visitor&& visitor) const {
    return ascii_ ? visitor(std::string_view(asciiCharacters(), length_))
                  : visitor(std::u16string_view(utf16Characters(), length_));
  }

  // To C++ and to bytes
  std::string utf8() const;  ///< An unpaired surrogate as U+FFFD.
  std::u16string utf16() const;
  /// Null where the text has a unit that the encoding lacks.
  Ref<NSData> dataUsingEncoding(NSStringEncoding encoding) const;
  bool canBeConvertedToEncoding(NSStringEncoding encoding) const;
  /// Zero-terminated, autoreleased with the innermost scope; null with an unpaired surrogate.
  const char* UTF8String() const;

  // Parts
  Ref<NSString> substringFromIndex(uint64_t index) const;
  Ref<NSString> substringToIndex(uint64_t index) const;
  Ref<NSString> substringWithRange(NSRange range) const;
  Ref<NSString> stringByAppendingString(const NSString* other) const;  ///< Null raises NSInvalidArgumentException.
  Ref<NSString> stringByReplacingOccurrencesOfString_withString(const NSString* target, const NSString* with) const;
  Ref<NSString> stringByReplacingCharactersInRange_withString(NSRange range, const NSString* with) const;
  Ref<NSString> stringByTrimmingCharactersInSet(const NSCharacterSet* set) const;  ///< At both ends.
  Ref<NSString> uppercaseString() const;
  Ref<NSString> lowercaseString() const;

  // Comparison
  bool isEqual(const NSObject* other) const override;
  bool isEqualToString(const NSString* other) const;
  uint64_t hash() const override;                           ///< Over units: the storage makes no difference.
  NSComparisonResult compare(const NSString* other) const;  ///< By units; null comes first.
  NSComparisonResult compare_options(const NSString* other, NSStringCompareOptions options) const;
  /// A part of this text with the whole of the other.
  NSComparisonResult compare_options_range(const NSString* other, NSStringCompareOptions options, NSRange range) const;
  /// In the order of a language; with a null locale, or NSLiteralSearch, by units.
  NSComparisonResult compare_options_range_locale(const NSString* other, NSStringCompareOptions options, NSRange range,
                                                  const NSLocale* locale) const;
  NSComparisonResult caseInsensitiveCompare(const NSString* other) const;
  NSComparisonResult localizedCompare(const NSString* other) const;  ///< In the order of the current locale.
  /// As a file browser lists names: in the order of the current locale, numbers by their value, without regard to case
  /// and width unless all else is the same. Texts that are not equal are never the same.
  NSComparisonResult localizedStandardCompare(const NSString* other) const;
  bool hasPrefix(const NSString* prefix) const;  ///< The empty string is no prefix.
  bool hasSuffix(const NSString* suffix) const;

  // Search. "Not found" is (NSNotFound, 0); the empty string is not found.
  NSRange rangeOfString(const NSString* wanted) const;
  NSRange rangeOfString_options(const NSString* wanted, NSStringCompareOptions options) const;
  NSRange rangeOfString_options_range(const NSString* wanted, NSStringCompareOptions options, NSRange range) const;
  bool containsString(const NSString* wanted) const;
  /// The first unit of the set, or the last when backwards: one unit long.
  NSRange rangeOfCharacterFromSet_options_range(const NSCharacterSet* set, NSStringCompareOptions options,
                                                NSRange range) const;
  NSRange rangeOfCharacterFromSet(const NSCharacterSet* set) const;

  // Numbers at the start of the text, after white space: 0 for none; too large gives the limit.
  int32_t intValue() const;
  int64_t integerValue() const;
  int64_t longLongValue() const;
  float floatValue() const;
  double doubleValue() const;
  bool boolValue() const;  ///< Y, y, T, t or a digit 1 to 9, after white space, a sign and zeros.

  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSString> copy() const;
  Ref<NSMutableString> mutableCopy() const;

 protected:
  /// Empty. An initialiser then gives it a text, so a subclass needs no more than a default constructor.
  constexpr NSString() : NSString("", 0) {}
  /// Over text that outlives the object.
  constexpr NSString(const char* ascii, size_t length) : units_(ascii), length_(length & ~signBit), ascii_(1) {}
  constexpr NSString(const char16_t* units, size_t length) : units_(units), length_(length & ~signBit), ascii_(0) {}
  void setStorage(const char* ascii, size_t length);
  void setStorage(const char16_t* units, size_t length);

 private:
  friend struct detail::Text;
  [[noreturn]] void raiseIndex(std::string_view selector, uint64_t index) const;
  /// Takes the text of an initialiser, once.
  virtual void takeText(const NSString* text);
  /// Who holds the units, for another string to share them; null where they may change.
  virtual const NSString* owner() const;

  static constexpr size_t signBit = size_t{1} << 63;
  const void* units_;
  size_t length_ : 63;
  size_t ascii_ : 1;
};

/// Writes the description in UTF-8; "(null)" for null.
QF_EXPORT std::ostream& operator<<(std::ostream& out, const NSObject* object);
template <class T> std::ostream& operator<<(std::ostream& out, const Ref<T>& object) {
  return out << static_cast<const NSObject*>(object.get());
}

namespace detail {

/// A string that the compiler made. It says that it is an NSString.
class QF_EXPORT LiteralString : public NSString {
 public:
  template <class Unit, size_t N>
  constexpr explicit LiteralString(const std::array<Unit, N>& units) : NSString(units.data(), N - 1) {}
};

template <class T> union NeverDestroyed {
  template <class A> constexpr explicit NeverDestroyed(const A& argument) : value(argument) {}
  constexpr ~NeverDestroyed() {}
  T value;
};

/// `constexpr`, because g++ registers a destructor for anything less; the mutable header puts it into writable memory
/// all the same.
template <FixedText text> struct Literal {
  mutable Header header{Header::immortal};
  NeverDestroyed<Made<LiteralString>> object{LiteralText<text>::units};
};
template <FixedText text> inline constexpr Literal<text> literal{};

}  // namespace detail

inline namespace literals {

/// An immortal string made by the compiler: `"text"_ns`, `u"text"_ns`. Ill-formed UTF-8 does not compile. Two literals
/// of one text are equal; they are one object only within a module. For texts of up to some 200 units.
template <detail::FixedText text> constexpr NSString* operator""_ns() {
  return const_cast<detail::Made<detail::LiteralString>*>(&detail::literal<text>.object.value);
}

}  // namespace literals

}  // namespace quoll::inline v1
