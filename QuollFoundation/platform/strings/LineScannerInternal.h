// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Line terminators and the bounds of lines in plain spans of units: the one scanner under every operation that
/// thinks in lines, so that all of them agree.
///
/// A line ends at U+000A, U+000D, the pair of both (one terminator of two units), U+0085, U+2028 or U+2029. Vertical
/// tab and form feed end no line. A line holds its terminator; the last line may have none. Text is ASCII bytes (every
/// byte below 0x80) or UTF-16 units; indices count units.
///
/// To visit one line after the other use `LineCursor`: it looks at thousands of units at once. The functions serve
/// single questions; each starts its scan anew.
///
/// No function allocates. Indices beyond the text are the caller's mistake and not checked here.
namespace quoll::inline v1::detail {

/// Where a line starts, where its terminator starts, and where the next line starts.
struct LineBounds {
  size_t start = 0;
  size_t contentsEnd = 0;  ///< Equal to `end` for a last line without terminator.
  size_t end = 0;

  friend bool operator==(const LineBounds&, const LineBounds&) = default;
};

/// The index of the first unit in [from, end) that belongs to a terminator, else `end`.
size_t findLineTerminator(const char* text, size_t from, size_t end);
size_t findLineTerminator(const char16_t* text, size_t from, size_t end);

/// The start of the line that holds `index` (at most the length). An index between a carriage return and its line feed
/// belongs to the line that the pair ends; the length belongs to the last line, which is empty after a terminator.
size_t findLineStart(std::string_view text, size_t index);
size_t findLineStart(std::u16string_view text, size_t index);

/// The line that holds `index`, by the rule of `findLineStart`.
LineBounds findLineBounds(std::string_view text, size_t index);
LineBounds findLineBounds(std::u16string_view text, size_t index);

/// The start of the line that holds `location`, and the ends of the line that holds the last of `length` units from
/// there on; without units, of the same line.
LineBounds findLineBounds(std::string_view text, size_t location, size_t length);
LineBounds findLineBounds(std::u16string_view text, size_t location, size_t length);

/// How many lines the units in [from, end) touch: none for an empty range.
size_t countLines(std::string_view text, size_t from, size_t end);
size_t countLines(std::u16string_view text, size_t from, size_t end);

/// Sets bit i of the words for each unit of `text` that belongs to a terminator, and clears the other bits of the
/// ceil(length / 64) words. `LineCursor` calls it for a block at a time.
void markLineTerminators(const char* text, size_t length, uint64_t* words);
void markLineTerminators(const char16_t* text, size_t length, uint64_t* words);

/// Gives the lines of a text one after the other.
///
///     LineCursor lines(std::u16string_view(text), index);
///     for (LineBounds line; lines.next(line);) { ... }
///
/// It looks ahead in blocks that grow from 256 to 4096 units, so that stopping after the first line of a huge text
/// costs little. Use it for a run of lines; for a single one `findLineBounds` is cheaper. The text outlives the cursor.
template <class Unit>
class LineCursor {
 public:
  /// Starts with the line that holds `index`.
  explicit LineCursor(std::basic_string_view<Unit> text, size_t index = 0)
      : text_(text.data()),
        length_(text.size()),
        start_(index == 0 ? 0 : findLineStart(text, index)),
        marked_(start_) {}

  /// Gives the next line and steps behind it. False at the end of the text: a terminator at the very end is not
  /// followed by an empty line.
  bool next(LineBounds& line) {
    if (start_ == length_) return false;
    const size_t at = nextTerminator();
    size_t end = at;
    if (at != length_) end += isPair(at) ? 2 : 1;
    line = {start_, at, end};
    start_ = end;
    return true;
  }

  /// Where the line that `next` would give starts.
  size_t position() const { return start_; }

 private:
  static constexpr size_t unitsInWord = 64;
  static constexpr size_t unitsInBlock = 4096;

  bool isPair(size_t at) const { return text_[at] == '\r' && at + 1 < length_ && text_[at + 1] == '\n'; }

  /// The first terminator unit from `start_` on, else the length.
  size_t nextTerminator() {
    for (;;) {
      while (bits_ == 0) {
        if (word_ == wordCount_ && !markBlock()) return length_;
        bits_ = words_[word_++];
      }
      const size_t at = block_ + word_ * unitsInWord - unitsInWord + static_cast<size_t>(std::countr_zero(bits_));
      bits_ &= bits_ - 1;
      if (at >= start_) return at;  // else it is the line feed of the pair that ended the line before
    }
  }

  bool markBlock() {
    if (marked_ == length_) return false;
    const size_t units = std::min(blockUnits_, length_ - marked_);
    markLineTerminators(text_ + marked_, units, words_);
    block_ = marked_;
    marked_ += units;
    word_ = 0;
    wordCount_ = (units + unitsInWord - 1) / unitsInWord;
    blockUnits_ = std::min(2 * blockUnits_, unitsInBlock);
    return true;
  }

  const Unit* text_;
  size_t length_;
  size_t start_;       // of the next line
  uint64_t bits_ = 0;  // the terminators of word `word_ - 1` that were not given yet
  size_t word_ = 0;    // the next word to look at
  size_t wordCount_ = 0;
  size_t block_ = 0;  // the index of the unit that bit 0 of word 0 stands for
  size_t marked_;     // units before this index have been looked at
  size_t blockUnits_ = 256;
  uint64_t words_[unitsInBlock / unitsInWord];
};

}  // namespace quoll::inline v1::detail
