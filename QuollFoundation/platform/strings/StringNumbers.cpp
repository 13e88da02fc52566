// SPDX-License-Identifier: MIT
#include <charconv>
#include <cmath>
#include <limits>

#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

namespace {

bool isDigit(char16_t unit) { return unit >= '0' && unit <= '9'; }

/// Reads a text from its start; behind the end it sees zero units.
template <class View> class Reader {
 public:
  explicit Reader(View text) : text_(text) {
    while (detail::isWhitespaceUnit(next()) || detail::isNewlineUnit(next())) step();
    if (next() == '-' || next() == '+') negative_ = taken() == '-';
  }
  bool isNegative() const { return negative_; }
  char16_t next() const { return index_ < text_.size() ? static_cast<char16_t>(text_[index_]) : u'\0'; }
  char16_t after(size_t count) const {
    return text_.size() - index_ > count ? static_cast<char16_t>(text_[index_ + count]) : u'\0';
  }
  void step() { ++index_; }
  char taken() { return static_cast<char>(text_[index_++]); }

 private:
  View text_;
  size_t index_ = 0;
  bool negative_ = false;
};

template <class Integer> Integer readInteger(const NSString* string) {
  return string->visit([](auto text) {
    Reader reader(text);
    using Limits = std::numeric_limits<Integer>;
    Integer value = 0;
    for (; isDigit(reader.next()); reader.step()) {
      const int digit = reader.next() - '0';
      const bool fits = !__builtin_mul_overflow(value, 10, &value) &&
                        !__builtin_add_overflow(value, reader.isNegative() ? -digit : digit, &value);
      if (!fits) return reader.isNegative() ? Limits::min() : Limits::max();
    }
    return value;
  });
}

/// The longest "12.5e-3" at the start, without the sign; empty when there is no digit.
template <class View> std::string takeReal(Reader<View>& reader) {
  std::string real;
  const auto takeDigits = [&] {
    while (isDigit(reader.next())) real += reader.taken();
  };
  takeDigits();
  if (reader.next() == '.' && (!real.empty() || isDigit(reader.after(1)))) {
    real += reader.taken();
    takeDigits();
  }
  if (real.empty() || (reader.next() | 0x20) != 'e') return real;
  const size_t sign = reader.after(1) == '-' || reader.after(1) == '+' ? 1 : 0;
  if (!isDigit(reader.after(1 + sign))) return real;
  real += reader.taken();
  if (sign && reader.next() == '+') reader.step();  // the parser takes no plus
  else if (sign) real += reader.taken();
  takeDigits();
  return real;
}

/// Whether the number, which fits no real, is one too small rather than too large.
bool isTiny(const std::string& real) {
  long double value = 0;
  const size_t exponent = real.find('e');
  if (exponent != real.npos) return real[exponent + 1] == '-';
  const auto parsed = std::from_chars(real.data(), real.data() + real.size(), value);
  return parsed.ec != std::errc() || value < 1;
}

template <class Real> Real readReal(const NSString* string) {
  return string->visit([](auto text) {
    Reader reader(text);
    const std::string real = takeReal(reader);
    Real value = 0;
    const auto parsed = std::from_chars(real.data(), real.data() + real.size(), value);
    if (parsed.ec == std::errc::result_out_of_range) {
      value = isTiny(real) ? Real(0) : std::numeric_limits<Real>::infinity();
    }
    return reader.isNegative() ? -value : value;
  });
}

}  // namespace

int32_t NSString::intValue() const { return readInteger<int32_t>(this); }
int64_t NSString::integerValue() const { return readInteger<int64_t>(this); }
int64_t NSString::longLongValue() const { return readInteger<int64_t>(this); }
float NSString::floatValue() const { return readReal<float>(this); }
double NSString::doubleValue() const { return readReal<double>(this); }

bool NSString::boolValue() const {
  return visit([](auto text) {
    Reader reader(text);
    while (reader.next() == '0') reader.step();
    const char16_t unit = reader.next();
    return (unit >= '1' && unit <= '9') || (unit | 0x20) == 'y' || (unit | 0x20) == 't';
  });
}

}  // namespace quoll::inline v1
