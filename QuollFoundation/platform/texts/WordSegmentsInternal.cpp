// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/WordSegmentsInternal.h"

#include <unicode/ubrk.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
#include <mutex>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1::detail {

void CloseBreakIterator::operator()(UBreakIterator* iterator) const noexcept { ubrk_close(iterator); }

namespace {

void check(UErrorCode status, const char* what) {
  if (U_FAILURE(status)) {
    raise(NSInternalInconsistencyException, std::string("ICU: ") + what + ": " + u_errorName(status));
  }
}

void setText(UBreakIterator* iterator, std::u16string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  ubrk_setText(iterator, text.data(), static_cast<int32_t>(text.size()), &status);
  check(status, "a text can't be cut into words");
}

/// Whether ICU takes the text for one segment.
bool isOne(UBreakIterator* iterator, std::u16string_view text) {
  setText(iterator, text);
  return ubrk_following(iterator, 0) == static_cast<int32_t>(text.size());
}

bool isWordEnd(UBreakIterator* iterator) { return ubrk_getRuleStatus(iterator) >= UBRK_WORD_NUMBER; }

bool isASCII(const NSString* text) {
  if (text->asciiCharacters()) return true;
  const std::u16string_view units(text->utf16Characters(), text->length());
  return std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x80; });
}

/// The part as a text of its own: ASCII where it can be.
Ref<NSString> partOf(const NSString* text, NSRange range) {
  Ref<NSString> part = text->copy()->substringWithRange(range);
  if (part->utf16Characters() && isASCII(part)) {
    return NSString::stringWithCharacters({part->utf16Characters(), part->length()});
  }
  return part;
}

/// How many of eight ASCII units are letters and digits, up to the first that is none.
size_t lettersAndDigitsOfEight(const char* units) {
  if constexpr (std::endian::native != std::endian::little) return 0;
  constexpr uint64_t each = 0x0101'0101'0101'0101, tops = 0x80 * each;
  uint64_t all;
  std::memcpy(&all, units, sizeof all);
  // The top bit of a byte: none of these sums reaches the next one.
  const auto isAtLeast = [](uint64_t bytes, char least) {
    return bytes + (0x80 - static_cast<uint64_t>(least)) * each;
  };
  const uint64_t small = all | 0x20 * each;  // makes no other unit a letter
  const uint64_t letters = isAtLeast(small, 'a') & ~isAtLeast(small, 'z' + 1);
  const uint64_t digits = isAtLeast(all, '0') & ~isAtLeast(all, '9' + 1);
  const uint64_t others = ~(letters | digits) & tops;
  return static_cast<size_t>(std::countr_zero(others)) / 8;
}

}  // namespace

// ASCII

ASCIIWords::ASCIIWords(UBreakIterator* iterator) {
  for (char c = 'a'; c <= 'z'; ++c) kinds_[static_cast<size_t>(c)] = kinds_[static_cast<size_t>(c - 0x20)] = Letter;
  for (char c = '0'; c <= '9'; ++c) kinds_[static_cast<size_t>(c)] = Digit;
  kinds_['_'] = Underscore;
  kinds_[' '] = Space;
  kinds_['\r'] = CarriageReturn;
  kinds_['\n'] = LineFeed;
  for (char16_t c = 0x21; c < 0x7F; ++c) {
    if (kinds_[c] != Other) continue;
    const char16_t letters[] = {u'a', c, u'a'}, digits[] = {u'1', c, u'1'};
    if (isOne(iterator, {letters, 2})) kinds_[c] = Letter;  // some versions take @ for one
    if (isOne(iterator, {letters, 3})) roles_[c] |= BetweenLetters;
    if (isOne(iterator, {digits, 3})) roles_[c] |= BetweenDigits;
  }
  for (size_t c = 0; c < kinds_.size(); ++c) {
    if (kinds_[c] >= Letter && kinds_[c] <= Underscore) roles_[c] |= InWords;
  }
  underscoreIsWord_ = isOne(iterator, u"_") && isWordEnd(iterator);
  underscoresAreWord_ = isOne(iterator, u"__") && isWordEnd(iterator);
}

/// Whether a sign that comes behind a part of a word is one too: when it is between two letters or two digits that it
/// joins.
template <class Unit> ASCIIWords::Step ASCIIWords::step(std::basic_string_view<Unit> text, size_t index) const {
  if (isBeyond(text, index + 1)) return Step::Unknown;
  if (index + 1 == text.size()) return Step::Out;
  const Kind before = kinds_[static_cast<uint8_t>(text[index - 1])];
  if (before != kinds_[static_cast<uint8_t>(text[index + 1])]) return Step::Out;
  const unsigned joins = before == Letter ? BetweenLetters : before == Digit ? BetweenDigits : 0;
  return rolesOf(text[index]) & joins ? Step::In : Step::Out;
}

template <class Unit> inline WordSegment ASCIIWords::word(std::basic_string_view<Unit> text, size_t start) const {
  size_t end = start + 1;
  if constexpr (sizeof(Unit) == 1) {
    for (size_t units = 8; units == 8 && text.size() - end >= 8; end += units) {
      units = lettersAndDigitsOfEight(text.data() + end);
    }
  }
  for (; end < text.size(); ++end) {
    if (isBeyond(text, end)) return {start, start, false};
    const unsigned roles = rolesOf(text[end]);
    if (roles & InWords) continue;
    if (roles == 0) break;
    const Step next = step(text, end);
    if (next == Step::Unknown) return {start, start, false};
    if (next == Step::Out) break;
  }
  if (text[start] != '_') return {start, end, true};
  const bool isPlain = text.substr(start, end - start).find_first_not_of(Unit{'_'}) == text.npos;
  return {start, end, !isPlain || (end - start > 1 ? underscoresAreWord_ : underscoreIsWord_)};
}

WordSegment ASCIIWords::nextWord(std::string_view text, size_t start) const {
  for (;;) {
    while (start < text.size() && !(rolesOf(text[start]) & InWords)) ++start;
    if (start == text.size()) return {start, start, false};
    const WordSegment segment = word(text, start);
    if (segment.isWord) return segment;
    start = segment.end;
  }
}

template <class Unit>
WordSegment ASCIIWords::startingAt(std::basic_string_view<Unit> text, size_t start) const {
  if (isBeyond(text, start)) return {start, start, false};
  const Kind kind = kinds_[static_cast<uint8_t>(text[start])];
  if (kind == Letter || kind == Digit || kind == Underscore) return word(text, start);
  size_t end = start + 1;
  if (kind == LineFeed) return {start, end, false};
  if (kind == CarriageReturn) return {start, end + (end < text.size() && text[end] == '\n'), false};
  while (kind == Space && end < text.size() && text[end] == ' ') ++end;
  return {start, isBeyond(text, end) ? start : end, false};  // a mark would belong to it
}

WordSegment ASCIIWords::holding(std::string_view text, size_t index) const {
  // Back to a place that is a boundary whatever came before it: of two neighbours, one of them is no part of words.
  size_t start = index;
  const auto sticks = [&](size_t i) {
    const auto before = static_cast<uint8_t>(text[i - 1]), here = static_cast<uint8_t>(text[i]);
    if (kinds_[here] == Space || kinds_[before] == Space) return kinds_[here] == kinds_[before];
    if (kinds_[here] == LineFeed) return kinds_[before] == CarriageReturn;
    return roles_[here] && roles_[before];  // may be parts of one word
  };
  while (start > 0 && sticks(start)) --start;
  WordSegment segment = startingAt(text, start);
  while (segment.end <= index) segment = startingAt(text, segment.end);
  return segment;
}

// Locales

WordRules::WordRules(BreakIteratorHandle prototype) : prototype_(std::move(prototype)), ascii_(prototype_.get()) {}

const WordRules& WordRules::of(const std::string& locale) {
  static std::mutex& mutex = *new std::mutex;
  static auto& known = *new std::map<std::string, const WordRules*, std::less<>>;
  const std::lock_guard lock(mutex);
  const WordRules*& rules = known[locale];
  if (!rules) {
    UErrorCode status = U_ZERO_ERROR;
    BreakIteratorHandle prototype(ubrk_open(UBRK_WORD, locale.c_str(), nullptr, 0, &status));
    check(status, "no rules for words");
    rules = new WordRules(std::move(prototype));
  }
  return *rules;
}

BreakIteratorHandle WordRules::iterator() const {
  UErrorCode status = U_ZERO_ERROR;
  BreakIteratorHandle fresh(ubrk_clone(prototype_.get(), &status));
  check(status, "no more iterators");
  return fresh;
}

// Texts

WordSegments::WordSegments(const NSString* text, NSRange range, const NSLocale* locale)
    : text_(partOf(text, range)), length_(range.length), rules_(WordRules::of(locale->name())) {
  if (text_->asciiCharacters()) return;
  if (length_ > INT32_MAX)
    raise(NSInvalidArgumentException, "a text of more than 2^31 - 1 units can't be cut into words");
  iterator_ = rules_.iterator();
  setText(iterator_.get(), {text_->utf16Characters(), length_});
}

WordSegment WordSegments::startingAt(uint64_t start) const {
  if (const char* ascii = text_->asciiCharacters()) {
    return rules_.ascii().startingAt(std::string_view(ascii, length_), start);
  }
  const WordSegment plain = rules_.ascii().startingAt(std::u16string_view(text_->utf16Characters(), length_), start);
  if (plain.end > start) return plain;
  UBreakIterator* const iterator = iterator_.get();
  const auto from = static_cast<int32_t>(start);
  const int32_t end = ubrk_current(iterator) == from ? ubrk_next(iterator) : ubrk_following(iterator, from);
  return {start, static_cast<uint64_t>(end), isWordEnd(iterator)};
}

WordSegment WordSegments::nextWord(uint64_t start) const {
  if (const char* ascii = text_->asciiCharacters()) return rules_.ascii().nextWord({ascii, length_}, start);
  while (start < length_) {
    const WordSegment segment = startingAt(start);
    if (segment.isWord) return segment;
    start = segment.end;
  }
  return {start, start, false};
}

WordSegment WordSegments::holding(uint64_t index) const {
  if (const char* ascii = text_->asciiCharacters()) return rules_.ascii().holding({ascii, length_}, index);
  UBreakIterator* const iterator = iterator_.get();
  auto place = static_cast<int32_t>(index);
  U16_SET_CP_START(text_->utf16Characters(), 0, place);  // ICU finds nothing before the middle of a first pair
  return startingAt(static_cast<uint64_t>(ubrk_isBoundary(iterator, place) ? place : ubrk_preceding(iterator, place)));
}

}  // namespace quoll::inline v1::detail
