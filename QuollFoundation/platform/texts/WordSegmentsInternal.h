// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSString.h"

struct UBreakIterator;

/// Where words begin and end.
namespace quoll::inline v1::detail {

struct WordSegment {
  uint64_t start;
  uint64_t end;
  bool isWord;  ///< Not blanks or signs.
};

/// The rules for ASCII, which need no tables of Unicode. What differs from language to language, the signs that stand
/// inside words and numbers, is asked of ICU once.
class ASCIIWords {
 public:
  explicit ASCIIWords(UBreakIterator* iterator);
  /// The segment at a boundary. It ends where it starts when a unit beyond ASCII plays a part in it: then it is for
  /// ICU.
  template <class Unit> WordSegment startingAt(std::basic_string_view<Unit> text, size_t start) const;
  // Of texts that are all ASCII:
  WordSegment holding(std::string_view text, size_t index) const;
  /// The first word at or behind a boundary; empty at the end of the text when there is none.
  WordSegment nextWord(std::string_view text, size_t start) const;

 private:
  enum Kind : uint8_t { Other, Letter, Digit, Underscore, Space, CarriageReturn, LineFeed };
  enum Role : uint8_t {
    InWords = 1,  // letters, digits and underscores: what needs no second look
    BetweenLetters = 2,
    BetweenDigits = 4,
  };
  enum class Step : uint8_t { In, Out, Unknown };
  template <class Unit> Step step(std::basic_string_view<Unit> text, size_t index) const;
  template <class Unit> WordSegment word(std::basic_string_view<Unit> text, size_t start) const;
  template <class Unit> unsigned rolesOf(Unit ascii) const { return roles_[static_cast<uint8_t>(ascii)]; }
  template <class Unit> static bool isBeyond(std::basic_string_view<Unit> text, size_t index) {
    return sizeof(Unit) > 1 && index < text.size() && text[index] >= 0x80;
  }

  std::array<Kind, 128> kinds_{};
  std::array<uint8_t, 128> roles_{};
  bool underscoreIsWord_ = false;    // by itself
  bool underscoresAreWord_ = false;  // two and more
};

struct CloseBreakIterator {
  void operator()(UBreakIterator* iterator) const noexcept;
};
using BreakIteratorHandle = std::unique_ptr<UBreakIterator, CloseBreakIterator>;

/// What all texts of one locale share; lives for ever.
class WordRules {
 public:
  static const WordRules& of(const std::string& locale);
  const ASCIIWords& ascii() const { return ascii_; }
  BreakIteratorHandle iterator() const;  ///< A new one.

 private:
  explicit WordRules(BreakIteratorHandle prototype);
  const BreakIteratorHandle prototype_;
  const ASCIIWords ascii_;
};

/// The segments of a part of a text, which tile it. Indices count from the start of the part.
class WordSegments {
 public:
  WordSegments(const NSString* text, NSRange range, const NSLocale* locale);
  uint64_t length() const { return length_; }
  /// `start` is 0 or the end of a segment, and below the length.
  WordSegment startingAt(uint64_t start) const;
  WordSegment holding(uint64_t index) const;  ///< Below the length.
  /// The first word at or behind such a start or the length; empty at the end when there is none.
  WordSegment nextWord(uint64_t start) const;

 private:
  const Ref<NSString> text_;  // the part; nobody changes it
  const uint64_t length_;
  const WordRules& rules_;
  BreakIteratorHandle iterator_;  // only where the text is not ASCII
};

}  // namespace quoll::inline v1::detail
