// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quoll::testing {

inline constexpr std::string_view base64Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Decodes as base64 is defined: six bits a character, a byte for every eight of them.
inline std::string modelDecodedBase64(std::string_view text) {
  std::string bytes;
  uint32_t bits = 0;
  unsigned count = 0;
  for (const char c : text) {
    const size_t value = base64Alphabet.find(c);
    if (value == base64Alphabet.npos) continue;
    bits = bits << 6 | static_cast<uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      bytes.push_back(static_cast<char>(bits >> count & 0xFF));
    }
    if (count == 0) bits = 0;
  }
  return bytes;
}

/// Encodes with padding.
inline std::string modelEncodedBase64(std::string_view bytes) {
  std::string text;
  for (size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t group = 0;
    for (size_t k = 0; k < 3; ++k) {
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    }
    for (size_t k = 0; k < 4; ++k) {
      text += i + k <= bytes.size() ? base64Alphabet[group >> (18 - 6 * k) & 63] : '=';
    }
  }
  return text;
}

}  // namespace quoll::testing
