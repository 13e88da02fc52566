// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace quoll::inline v1::detail {

/// The shortest decimal text that reads back as the same number: "0.1", "1", "1e+20". Plain digits as long as the
/// decimal point stands within 17 digits or at most four zeros after it, as `%.17g` chooses.
class Decimals {
 public:
  explicit Decimals(double number);
  explicit Decimals(float number);  ///< The shortest that reads back as this float: 0.1f is "0.1".
  std::string_view text() const { return {text_, length_}; }

 private:
  template <class T> void write(T number);
  void setPoint(const char* digits, size_t count, int exponent);
  void append(std::string_view text);
  void appendZeros(int count);

  char text_[32];
  size_t length_ = 0;
};

}  // namespace quoll::inline v1::detail
