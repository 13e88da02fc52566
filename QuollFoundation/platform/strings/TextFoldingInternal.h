// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "QuollFoundation/platform/basics/Comparison.h"

/// Texts without the differences that a comparison is told to overlook: case, diacritics, width. Each code point is
/// folded by itself: case by simple folding, diacritics by decomposition and leaving the marks out.
namespace quoll::inline v1::detail {

inline constexpr uint64_t foldingOptions =
    NSCaseInsensitiveSearch | NSDiacriticInsensitiveSearch | NSWidthInsensitiveSearch;

/// What one code point becomes: no more than 18 units (one compatibility form has as many), often none.
struct FoldedPoint {
  char16_t units[24];
  int count = 0;
};
FoldedPoint foldPoint(char32_t point, uint64_t options);
/// The same of a code point of ASCII, which becomes one unit.
constexpr char16_t foldASCII(char32_t point, uint64_t options) {
  const bool lowers = (options & NSCaseInsensitiveSearch) && point >= U'A' && point <= U'Z';
  return static_cast<char16_t>(lowers ? point + 0x20 : point);
}

/// The code point at `index`, which then stands behind it. An unpaired surrogate is its own code point.
inline char32_t nextPoint(std::string_view text, size_t& index) { return static_cast<unsigned char>(text[index++]); }
inline char32_t nextPoint(std::u16string_view text, size_t& index) {
  const char32_t unit = text[index++];
  if ((unit & 0xFC00) != 0xD800 || index == text.size() || (text[index] & 0xFC00) != 0xDC00) return unit;
  return 0x10000 + ((unit & 0x3FF) << 10) + (text[index++] & 0x3FF);
}

/// A folded text that knows where each of its units came from.
class FoldedText {
 public:
  template <class Unit> FoldedText(std::basic_string_view<Unit> text, uint64_t options);
  std::u16string_view units() const { return units_; }
  /// Where the code point of unit `index` starts in the text; of the index behind the last, the text's length.
  size_t origin(size_t index) const {
    if (origins_.empty()) return index;
    return index < origins_.size() ? origins_[index] : sourceLength_;
  }
  /// The first unit that came from source index `origin` or from behind it.
  size_t indexOf(size_t origin) const {
    if (origins_.empty()) return origin;
    return static_cast<size_t>(std::lower_bound(origins_.begin(), origins_.end(), origin) - origins_.begin());
  }
  /// Whether unit `index` is the first of its code point.
  bool isBoundary(size_t index) const { return index == 0 || origin(index) != origin(index - 1); }

 private:
  std::u16string units_;
  std::vector<size_t> origins_;  // empty where every unit came from the one of its own index
  size_t sourceLength_;
};

}  // namespace quoll::inline v1::detail
