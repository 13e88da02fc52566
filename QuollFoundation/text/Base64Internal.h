// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quoll::inline v1::detail {

/// Stands in `base64Values` for bytes outside of the alphabet.
inline constexpr uint8_t notBase64 = 65;

/// What each byte of a base64 text means.
inline constexpr std::array<uint8_t, 256> base64Values = [] {
  struct Span {
    uint8_t first, last;
  };
  std::array<uint8_t, 256> values{};
  values.fill(notBase64);
  uint8_t value = 0;
  for (const auto [first, last] : {Span{'A', 'Z'}, {'a', 'z'}, {'0', '9'}, {'+', '+'}, {'/', '/'}}) {
    for (unsigned c = first; c <= last; ++c) values[c] = value++;
  }
  return values;
}();

/// The room that decoding needs for a text of so many bytes: what it decodes to at most, and what whole vectors write
/// behind that.
constexpr size_t base64Room(size_t length) { return (length / 4 + 1) * 3 + 64; }

/// Decodes; bytes outside of the alphabet are skipped. Gives how many characters of the alphabet there were: four of
/// them are three bytes, and what is left of a last group gives its whole bytes. Behind those the rest of the room for
/// the text may be overwritten.
size_t decodeBase64Text(const char* text, size_t length, uint8_t* out);

/// How many bytes so many characters give.
constexpr size_t base64Bytes(size_t characters) { return characters / 4 * 3 + characters % 4 * 3 / 4; }

}  // namespace quoll::inline v1::detail
