// SPDX-License-Identifier: MIT
#pragma once

/// How every way of making and hashing a string is timed.

#include <string>
#include <string_view>

#include "bench/corpus.h"

namespace bench {

/// A text of 64 MiB, and what it must be decoded to.
struct Encoded {
  const std::string& utf8;
  const std::u16string& utf16;
};
inline Encoded english() { return {text8(), text16()}; }
inline Encoded japanese() {
  static const std::u16string t = to16(japanese8());
  return {japanese8(), t};
}
inline Encoded ascii() {
  static const std::string t = lines80_ascii(kTextBytes);
  static const std::u16string u(t.begin(), t.end());
  return {t, u};
}

/// Registers `fn(State&, const Encoded&)` in the families of the three texts.
template <void (*fn)(benchmark::State&, const Encoded&), Encoded (*text)()>
void with_text(benchmark::State& s) {
  fn(s, text());
}
#define PEER_ENCODED(fn, member)                                               \
  PEER((bench::with_text<fn, bench::english>), "from_utf8_english/" member);   \
  PEER((bench::with_text<fn, bench::japanese>), "from_utf8_japanese/" member); \
  PEER((bench::with_text<fn, bench::ascii>), "from_utf8_ascii/" member)

/// `decode(utf8)` gives a string, whose destruction is part of the time; `units(string)` shows it for the check.
template <class Decode, class Units>
void from_utf8(benchmark::State& s, const Encoded& t, Decode decode, Units units) {
  {
    const auto once = decode(t.utf8);
    if (!expect(s, units(once) == t.utf16)) return;
  }
  for (auto _ : s) keep(decode(t.utf8));
  bytes(s, std::int64_t(t.utf8.size()));
}

/// 1 KiB each: 512 units, some of them not ASCII, and 1024 characters of ASCII.
inline const std::u16string& kilobyte16() {
  static const std::u16string t = u"\u20AC" + lines80_utf16(16 << 10).substr(0, 511);
  return t;
}
inline const std::string& kilobyte8() {
  static const std::string t = lines80_ascii(16 << 10).substr(0, 1024);
  return t;
}

/// Has the pointer in a register.
inline void use(const void* p) { asm volatile("" : : "r"(p) : "memory"); }

}  // namespace bench
