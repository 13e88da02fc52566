// SPDX-License-Identifier: MIT
#pragma once

/// The same deterministic texts for every member of a family.

#include <string>
#include <vector>

#include "bench/measure.h"

namespace bench {

constexpr std::size_t kTextBytes = 64u << 20;     // UTF-8 size of the long texts
constexpr std::size_t kWordUnits = 4u << 20;      // UTF-16 units of the word-break slice (8 MiB)
constexpr std::size_t kPrefixUnits = 512u << 10;  // UTF-16 units of each prefix buffer (1 MiB)

/// English-like text wrapped near 68 columns. Terminators: 96% LF, 2% CR LF, 0.5% each of CR, NEL, LS and PS. About 1%
/// of the words are not ASCII.
const std::string& text8();
const std::u16string& text16();
std::size_t lines_lf();   ///< Pieces between the LFs of text8().
std::size_t lines_all();  ///< Lines of text8() by all six terminators.

/// As many lines of exactly 79 units and an LF as fit; the last has no LF. The bytes are ASCII; of the UTF-16 words, 1%
/// are not.
std::string lines80_ascii(std::size_t bytes);
std::u16string lines80_utf16(std::size_t bytes);

/// Japanese-like text: kanji, both kana, ideographic stops, few digits and line feeds.
const std::string& japanese8();

const std::u16string& words16();                 ///< The first kWordUnits of text16().
const std::vector<std::u16string>& phrases16();  ///< 1000 phrases of about 40 units.
const std::vector<std::string>& file_names();    ///< 100000, shuffled, UTF-8.

/// UTF-16 of UTF-8 that holds no character beyond U+FFFF, as these texts do not.
std::u16string to16(const std::string& utf8);

}  // namespace bench
