// SPDX-License-Identifier: MIT
#pragma once

/// How every way of finding lines is timed.

#include <cstdint>

#include "bench/corpus.h"

namespace bench {

/// `body(text, acc)` gives the number of lines and adds to `acc` something that depends on each of them. `want` 0: the
/// number is not checked.
template <class Text, class Body>
void run_lines(benchmark::State& s, const Text& t, std::size_t want, Body body) {
  for (auto _ : s) {
    std::uint64_t acc = 0;
    const std::size_t n = body(t, acc);
    keep(acc);
    if (want && !expect(s, n, want)) return;
  }
  bytes(s, std::int64_t(t.size() * sizeof t[0]));
}

/// The texts of the `lines80` families, and how many lines they have.
inline const std::string& ascii80() {
  static const std::string t = lines80_ascii(kTextBytes);
  return t;
}
inline const std::u16string& utf16_80() {
  static const std::u16string t = lines80_utf16(kTextBytes);
  return t;
}
template <class Text>
std::size_t lines_of_80(const Text& t) {
  return t.size() / 80;
}

}  // namespace bench
