// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/TextFoldingInternal.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace quoll::inline v1::detail {

namespace {

constexpr int longestDecomposition = 20;

/// The canonical decomposition, else the code point itself.
int decompose(char32_t point, char16_t* units) {
  UErrorCode error = U_ZERO_ERROR;
  const UNormalizer2* canonical = unorm2_getNFDInstance(&error);
  const int32_t count = U_FAILURE(error) ? -1
                                         : unorm2_getDecomposition(canonical, static_cast<UChar32>(point), units,
                                                                   longestDecomposition, &error);
  if (count >= 0 && U_SUCCESS(error)) return count;
  int written = 0;
  U16_APPEND_UNSAFE(units, written, point);
  return written;
}

/// The usual form of a full-width or half-width one.
char32_t withUsualWidth(char32_t point) {
  const int32_t type = u_getIntPropertyValue(static_cast<UChar32>(point), UCHAR_DECOMPOSITION_TYPE);
  if (type != U_DT_WIDE && type != U_DT_NARROW) return point;
  UErrorCode error = U_ZERO_ERROR;
  char16_t units[longestDecomposition];
  const UNormalizer2* compatible = unorm2_getNFKDInstance(&error);
  if (U_FAILURE(error)) return point;
  const int32_t count =
      unorm2_getRawDecomposition(compatible, static_cast<UChar32>(point), units, longestDecomposition, &error);
  if (count <= 0 || U_FAILURE(error)) return point;
  size_t index = 0;
  return nextPoint(std::u16string_view(units, static_cast<size_t>(count)), index);
}

bool isMark(char32_t point) { return u_charType(static_cast<UChar32>(point)) == U_NON_SPACING_MARK; }

void appendFolded(FoldedPoint& to, char32_t point, uint64_t options) {
  if ((options & NSDiacriticInsensitiveSearch) && isMark(point)) return;
  if (options & NSCaseInsensitiveSearch) {
    point = static_cast<char32_t>(u_foldCase(static_cast<UChar32>(point), U_FOLD_CASE_DEFAULT));
  }
  U16_APPEND_UNSAFE(to.units, to.count, point);
}

}  // namespace

FoldedPoint foldPoint(char32_t point, uint64_t options) {
  FoldedPoint folded;
  if (point < 0x80) {
    folded.units[folded.count++] = foldASCII(point, options);
    return folded;
  }
  if (options & NSWidthInsensitiveSearch) point = withUsualWidth(point);
  if (!(options & (NSDiacriticInsensitiveSearch | NSWidthInsensitiveSearch))) {
    appendFolded(folded, point, options);
    return folded;
  }
  char16_t units[longestDecomposition];
  const std::u16string_view parts(units, static_cast<size_t>(decompose(point, units)));
  for (size_t i = 0; i < parts.size();) appendFolded(folded, nextPoint(parts, i), options);
  return folded;
}

template <class Unit>
FoldedText::FoldedText(std::basic_string_view<Unit> text, uint64_t options) : sourceLength_(text.size()) {
  units_.reserve(text.size());
  bool keepsPlaces = true;
  for (size_t i = 0; i < text.size();) {
    const size_t start = i;
    const char32_t point = nextPoint(text, i);
    if (point < 0x80 && keepsPlaces) {
      units_ += foldASCII(point, options);
      continue;
    }
    const FoldedPoint folded = foldPoint(point, options);
    if (keepsPlaces && folded.count != static_cast<int>(i - start)) {
      keepsPlaces = false;
      for (size_t before = 0; before < start; ++before) origins_.push_back(before);
    }
    units_.append(folded.units, static_cast<size_t>(folded.count));
    if (!keepsPlaces) origins_.insert(origins_.end(), static_cast<size_t>(folded.count), start);
  }
}
template FoldedText::FoldedText(std::string_view, uint64_t);
template FoldedText::FoldedText(std::u16string_view, uint64_t);

}  // namespace quoll::inline v1::detail
