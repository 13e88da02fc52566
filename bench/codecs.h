// SPDX-License-Identifier: MIT
#pragma once

/// Texts and bytes of the codec families and how each is timed. base64 rates are per byte of text, hex rates per byte
/// of binary.

#include <algorithm>
#include <cstring>
#include <string>

#include "bench/measure.h"

namespace bench {

constexpr std::size_t kBase64Bytes = 12u << 20;  // 16 MiB of text; a multiple of 3: no padding
constexpr std::size_t kHexBytes = 16u << 20;
inline constexpr char kBase64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

inline std::string random_bytes(std::size_t count) {
  std::string s(count, 0);
  Rng r{5};
  for (auto& c : s) c = char(r());
  return s;
}

/// `in` is a multiple of 3 bytes.
inline std::string encode_base64(const std::string& in) {
  std::string o;
  o.resize(in.size() / 3 * 4);
  char* d = o.data();
  for (std::size_t i = 0; i + 3 <= in.size(); i += 3) {
    unsigned v = unsigned(std::uint8_t(in[i])) << 16 | unsigned(std::uint8_t(in[i + 1])) << 8 | std::uint8_t(in[i + 2]);
    *d++ = kBase64Alphabet[v >> 18];
    *d++ = kBase64Alphabet[v >> 12 & 63];
    *d++ = kBase64Alphabet[v >> 6 & 63];
    *d++ = kBase64Alphabet[v & 63];
  }
  return o;
}

inline const std::string& base64_bytes() {
  static const std::string v = random_bytes(kBase64Bytes);
  return v;
}
inline const std::string& base64_clean() {
  static const std::string v = encode_base64(base64_bytes());
  return v;
}
/// With a line feed after every 76 characters.
inline const std::string& base64_wrapped() {
  static const std::string v = [] {
    std::string o;
    for (std::size_t i = 0; i < base64_clean().size(); i += 76) {
      o.append(base64_clean(), i, 76);
      o += '\n';
    }
    return o;
  }();
  return v;
}

/// `decode(in)` gives something with data() and size(), destroyed in the time.
template <class Decode>
void run_decode(benchmark::State& s, const std::string& in, Decode decode) {
  bool checked = false;
  for (auto _ : s) {
    auto out = decode(in);
    keep(*out.data());
    if (!checked) {
      checked = true;
      if (std::size_t(out.size()) != kBase64Bytes || std::memcmp(out.data(), base64_bytes().data(), kBase64Bytes)) {
        s.SkipWithError("wrong bytes");
        return;
      }
    }
  }
  bytes(s, std::int64_t(in.size()));
}

inline const std::string& hex_bytes() {
  static const std::string v = random_bytes(kHexBytes);
  return v;
}
/// What the dump is, but for the case of the letters.
inline const std::string& hex_text() {
  static const std::string v = [] {
    constexpr char digits[] = "0123456789abcdef";
    std::string o;
    for (char c : hex_bytes()) o += {digits[std::uint8_t(c) >> 4], digits[std::uint8_t(c) & 15], ' '};
    o.pop_back();
    return o;
  }();
  return v;
}

template <class Body>
void run_hex(benchmark::State& s, Body body) {
  for (auto _ : s) body(hex_bytes());
  bytes(s, std::int64_t(kHexBytes));
}

/// `dump(bytes)` gives something with data() and size(), destroyed in the time.
template <class Dump>
void run_hex_dump(benchmark::State& s, Dump dump) {
  const auto same = [](char got, char want) { return (got | 0x20) == want; };  // digits and blanks have that bit
  bool checked = false;
  run_hex(s, [&](const std::string& in) {
    auto out = dump(in);
    keep(*out.data());
    if (checked) return;
    checked = true;
    expect(s, std::equal(out.data(), out.data() + out.size(), hex_text().begin(), hex_text().end(), same));
  });
}

}  // namespace bench
