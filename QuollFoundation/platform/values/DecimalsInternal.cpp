// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/DecimalsInternal.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace quoll::inline v1::detail {

namespace {
constexpr int mostDigits = 17;   // of a double
constexpr int leadingZeros = 4;  // after the decimal point
}  // namespace

Decimals::Decimals(double number) { write(number); }
Decimals::Decimals(float number) { write(number); }

void Decimals::append(std::string_view text) {
  std::memcpy(text_ + length_, text.data(), text.size());
  length_ += text.size();
}
void Decimals::appendZeros(int count) {
  for (; count > 0; --count) text_[length_++] = '0';
}

template <class T> void Decimals::write(T number) {
  if (std::isnan(number)) return append("nan");
  if (std::signbit(number)) append("-");
  if (std::isinf(number)) return append("inf");
  char scientific[40];
  const char* end =
      std::to_chars(scientific, scientific + sizeof scientific, std::fabs(number), std::chars_format::scientific).ptr;
  char digits[mostDigits];
  size_t count = 0;
  const char* at = scientific;
  for (; *at != 'e'; ++at) {
    if (*at != '.') digits[count++] = *at;
  }
  int exponent = 0;
  std::from_chars(at + (at[1] == '+' ? 2 : 1), end, exponent);
  if (exponent < -leadingZeros || exponent >= mostDigits) return append({scientific, end}), void();
  setPoint(digits, count, exponent);
}

void Decimals::setPoint(const char* digits, size_t count, int exponent) {
  if (exponent < 0) {
    append("0.");
    appendZeros(-exponent - 1);
    return append({digits, count});
  }
  const size_t whole = static_cast<size_t>(exponent) + 1;
  if (count <= whole) {
    append({digits, count});
    return appendZeros(static_cast<int>(whole - count));
  }
  append({digits, whole});
  append(".");
  append({digits + whole, count - whole});
}

}  // namespace quoll::inline v1::detail
