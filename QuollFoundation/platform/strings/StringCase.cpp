// SPDX-License-Identifier: MIT
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/TextInternal.h"

namespace quoll::inline v1 {

using detail::Text;

namespace {

using Mapping = int32_t (*)(char16_t* to, int32_t capacity, const char16_t* from, int32_t length, const char* locale,
                            UErrorCode* error);

Ref<NSString> mappedASCII(std::string_view text, char first, char last) {
  return Text::made<char>(text.size(), [&](char* to) {
    for (const char unit : text) *to++ = unit >= first && unit <= last ? static_cast<char>(unit ^ 0x20) : unit;
  });
}

/// ICU counts in 32 bits, so a huge text is mapped in pieces, cut between words where possible: the form of a letter
/// may depend on its neighbours.
size_t endOfPiece(std::u16string_view text, size_t start) {
  constexpr size_t longest = size_t{1} << 28;
  if (text.size() - start <= longest) return text.size();
  size_t end = start + longest;
  const size_t leastEnd = end - 4096;
  while (end > leastEnd && !detail::isWhitespaceUnit(text[end]) && !detail::isNewlineUnit(text[end])) --end;
  return U16_IS_TRAIL(text[end]) ? end - 1 : end;
}

void appendMapped(std::u16string& to, std::u16string_view piece, Mapping map) {
  const size_t done = to.size();
  to.resize(done + piece.size() + piece.size() / 8);
  for (;;) {
    UErrorCode error = U_ZERO_ERROR;
    const int32_t needed = map(to.data() + done, static_cast<int32_t>(to.size() - done), piece.data(),
                               static_cast<int32_t>(piece.size()), "", &error);
    if (error != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(error)) raise(NSGenericException, u_errorName(error));
    to.resize(done + static_cast<size_t>(needed));
    if (error != U_BUFFER_OVERFLOW_ERROR) return;
  }
}

Ref<NSString> mapped(std::u16string_view text, Mapping map) {
  std::u16string result;
  for (size_t start = 0; start < text.size();) {
    const size_t end = endOfPiece(text, start);
    appendMapped(result, text.substr(start, end - start), map);
    start = end;
  }
  return Text::fromUnits(result);
}

}  // namespace

Ref<NSString> NSString::uppercaseString() const {
  if (const char* ascii = asciiCharacters()) return mappedASCII({ascii, length()}, 'a', 'z');
  return mapped({utf16Characters(), length()}, &u_strToUpper);
}

Ref<NSString> NSString::lowercaseString() const {
  if (const char* ascii = asciiCharacters()) return mappedASCII({ascii, length()}, 'A', 'Z');
  return mapped({utf16Characters(), length()}, &u_strToLower);
}

}  // namespace quoll::inline v1
