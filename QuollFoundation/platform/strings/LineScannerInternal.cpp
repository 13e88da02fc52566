// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/LineScannerInternal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/platform/strings/LineScannerInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

template <class D>
HWY_INLINE auto terminatorsAt(D d, const char* text) {
  const auto units = loadUnits(d, text);
  return hn::Or(hn::Eq(units, hn::Set(d, '\n')), hn::Eq(units, hn::Set(d, '\r')));
}

template <class D>
HWY_INLINE auto terminatorsAt(D d, const char16_t* text) {
  const auto units = loadUnits(d, text);
  const auto breaks = hn::Or(hn::Eq(units, hn::Set(d, '\n')), hn::Eq(units, hn::Set(d, '\r')));
  const auto separators = hn::Eq(hn::Or(units, hn::Set(d, 1)), hn::Set(d, 0x2029));  // U+2028 too
  return hn::Or(breaks, hn::Or(separators, hn::Eq(units, hn::Set(d, 0x85))));
}

HWY_INLINE bool isTerminator(char unit) { return unit == '\n' || unit == '\r'; }
HWY_INLINE bool isTerminator(char16_t unit) {
  return unit == '\n' || unit == '\r' || unit == 0x85 || (unit | 1) == 0x2029;
}

/// Whether a unit belongs to a terminator, for the loops that search.
template <class Unit>
struct TerminatorTest {
  const Unit* text;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    return terminatorsAt(d, text + i);
  }
  HWY_INLINE bool operator()(size_t i) const { return isTerminator(text[i]); }
};

size_t FindInAscii(const char* text, size_t length) { return firstWhere<char>(length, TerminatorTest<char>{text}); }
size_t FindInUTF16(const char16_t* text, size_t length) {
  return firstWhere<char16_t>(length, TerminatorTest<char16_t>{text});
}
size_t FindBehindLastInAscii(const char* text, size_t length) {
  return behindLastWhere<char>(length, TerminatorTest<char>{text});
}
size_t FindBehindLastInUTF16(const char16_t* text, size_t length) {
  return behindLastWhere<char16_t>(length, TerminatorTest<char16_t>{text});
}

template <class Unit>
HWY_INLINE uint64_t terminatorWord(const Unit* text) {
  const UnitTag<Unit> d;
  const size_t lanes = hn::Lanes(d);
  uint64_t word = 0;
  for (size_t i = 0; i < 64; i += lanes) word |= bitsOf(d, terminatorsAt(d, text + i)) << i;
  return word;
}

template <class Unit>
HWY_INLINE void markTerminators(const Unit* text, size_t length, uint64_t* words) {
  size_t i = 0;
  for (; length - i >= 64; i += 64) *words++ = terminatorWord(text + i);
  if (i == length) return;
  Unit rest[64] = {};
  std::memcpy(rest, text + i, (length - i) * sizeof(Unit));
  *words = terminatorWord(rest);
}

void MarkInAscii(const char* text, size_t length, uint64_t* words) { markTerminators(text, length, words); }
void MarkInUTF16(const char16_t* text, size_t length, uint64_t* words) { markTerminators(text, length, words); }

/// Of the first `length` units, counts those behind which a line starts. Reads one unit more, to tell whether a
/// carriage return is the first half of a pair.
template <class Unit>
HWY_INLINE size_t countLineEnds(const Unit* text, size_t length) {
  const UnitTag<Unit> d;
  const size_t lanes = hn::Lanes(d);
  const auto carriageReturn = hn::Set(d, '\r');
  const auto lineFeed = hn::Set(d, '\n');
  size_t count = 0;
  size_t i = 0;
  for (; length - i >= lanes; i += lanes) {
    const auto units = loadUnits(d, text + i);
    const auto pairs = hn::And(hn::Eq(units, carriageReturn), hn::Eq(loadUnits(d, text + i + 1), lineFeed));
    count += hn::CountTrue(d, hn::AndNot(pairs, terminatorsAt(d, text + i)));
  }
  for (; i < length; ++i) count += isTerminator(text[i]) && !(text[i] == '\r' && text[i + 1] == '\n');
  return count;
}

size_t CountEndsInAscii(const char* text, size_t length) { return countLineEnds(text, length); }
size_t CountEndsInUTF16(const char16_t* text, size_t length) { return countLineEnds(text, length); }

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(FindInAscii);
HWY_EXPORT(FindInUTF16);
HWY_EXPORT(FindBehindLastInAscii);
HWY_EXPORT(FindBehindLastInUTF16);
HWY_EXPORT(MarkInAscii);
HWY_EXPORT(MarkInUTF16);
HWY_EXPORT(CountEndsInAscii);
HWY_EXPORT(CountEndsInUTF16);

namespace {

size_t findBehindLast(const char* text, size_t length) {
  return HWY_DYNAMIC_DISPATCH(FindBehindLastInAscii)(text, length);
}
size_t findBehindLast(const char16_t* text, size_t length) {
  return HWY_DYNAMIC_DISPATCH(FindBehindLastInUTF16)(text, length);
}
size_t countEnds(const char* text, size_t length) { return HWY_DYNAMIC_DISPATCH(CountEndsInAscii)(text, length); }
size_t countEnds(const char16_t* text, size_t length) { return HWY_DYNAMIC_DISPATCH(CountEndsInUTF16)(text, length); }

/// Whether `index` lies between a carriage return and its line feed.
template <class View>
bool splitsPair(View text, size_t index) {
  return index > 0 && index < text.size() && text[index] == '\n' && text[index - 1] == '\r';
}

template <class View>
size_t lineStart(View text, size_t index) {
  return findBehindLast(text.data(), splitsPair(text, index) ? index - 1 : index);
}

/// The ends of the line that holds `index`; its start stays 0.
template <class View>
LineBounds lineEnds(View text, size_t index) {
  if (splitsPair(text, index)) return {0, index - 1, index + 1};
  const size_t at = findLineTerminator(text.data(), index, text.size());
  if (at == text.size()) return {0, at, at};
  return {0, at, at + (splitsPair(text, at + 1) ? 2 : 1)};
}

template <class View>
LineBounds lineBounds(View text, size_t location, size_t length) {
  LineBounds bounds = lineEnds(text, length == 0 ? location : location + length - 1);
  bounds.start = lineStart(text, location);
  return bounds;
}

template <class View>
size_t linesTouched(View text, size_t from, size_t end) {
  return from == end ? 0 : 1 + countEnds(text.data() + from, end - from - 1);
}

}  // namespace

size_t findLineTerminator(const char* text, size_t from, size_t end) {
  return from + HWY_DYNAMIC_DISPATCH(FindInAscii)(text + from, end - from);
}
size_t findLineTerminator(const char16_t* text, size_t from, size_t end) {
  return from + HWY_DYNAMIC_DISPATCH(FindInUTF16)(text + from, end - from);
}

size_t findLineStart(std::string_view text, size_t index) { return lineStart(text, index); }
size_t findLineStart(std::u16string_view text, size_t index) { return lineStart(text, index); }

LineBounds findLineBounds(std::string_view text, size_t index) { return lineBounds(text, index, 0); }
LineBounds findLineBounds(std::u16string_view text, size_t index) { return lineBounds(text, index, 0); }
LineBounds findLineBounds(std::string_view text, size_t location, size_t length) {
  return lineBounds(text, location, length);
}
LineBounds findLineBounds(std::u16string_view text, size_t location, size_t length) {
  return lineBounds(text, location, length);
}

size_t countLines(std::string_view text, size_t from, size_t end) { return linesTouched(text, from, end); }
size_t countLines(std::u16string_view text, size_t from, size_t end) { return linesTouched(text, from, end); }

void markLineTerminators(const char* text, size_t length, uint64_t* words) {
  HWY_DYNAMIC_DISPATCH(MarkInAscii)(text, length, words);
}
void markLineTerminators(const char16_t* text, size_t length, uint64_t* words) {
  HWY_DYNAMIC_DISPATCH(MarkInUTF16)(text, length, words);
}

}  // namespace quoll::inline v1::detail
#endif
