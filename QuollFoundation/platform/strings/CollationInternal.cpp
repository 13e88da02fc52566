// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CollationInternal.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <numeric>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/TextFoldingInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"

namespace quoll::inline v1::detail {

void CloseCollator::operator()(UCollator* collator) const noexcept { ucol_close(collator); }

namespace {

constexpr int mostDigits = 254;  // ICU weighs longer numbers in parts

bool isDigit(char c) { return c >= '0' && c <= '9'; }

NSComparisonResult resultOf(int difference) {
  return difference < 0 ? NSOrderedAscending : difference > 0 ? NSOrderedDescending : NSOrderedSame;
}

int compareCharacters(const UCollator* collator, char a, char b) {
  const auto left = static_cast<UChar>(a), right = static_cast<UChar>(b);
  return ucol_strcoll(collator, &left, 1, &right, 1);
}

/// Whether the language gives a place of its own to something that is all ASCII: a character, or a sequence like "ch".
bool tailorsASCII(const UCollator* collator) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<USet, decltype(&uset_close)> tailored(ucol_getTailoredSet(collator, &status), &uset_close);
  if (U_FAILURE(status)) return true;
  for (int32_t i = 0; i < uset_getItemCount(tailored.get()); ++i) {
    UChar32 first = 0, last = 0;
    UChar sequence[32];
    const int32_t length = uset_getItem(tailored.get(), i, &first, &last, sequence, std::size(sequence), &status);
    if (length == 0 && first < 0x80) return true;  // a range of characters
    if (length > 0 && std::all_of(sequence, sequence + std::min<int32_t>(length, 32), [](UChar c) { return c < 0x80; }))
      return true;
    status = U_ZERO_ERROR;
  }
  return false;
}

/// Ranks from 1 on, the same for characters that the collator holds for the same.
void rank(const UCollator* collator, std::array<uint8_t, 128>& ranks) {
  std::array<char, '~' - ' ' + 1> characters;
  std::iota(characters.begin(), characters.end(), ' ');
  std::stable_sort(characters.begin(), characters.end(),
                   [&](char a, char b) { return compareCharacters(collator, a, b) < 0; });
  uint8_t next = 0;
  for (size_t i = 0; i < characters.size(); ++i) {
    if (i == 0 || compareCharacters(collator, characters[i - 1], characters[i]) != 0) ++next;
    ranks[static_cast<size_t>(characters[i])] = next;
  }
}

struct Digits {
  std::string_view significant;
  size_t end;
};
Digits digitsAt(std::string_view text, size_t index) {
  while (index < text.size() && text[index] == '0') ++index;
  size_t end = index;
  while (end < text.size() && isDigit(text[end])) ++end;
  return {text.substr(index, end - index), end};
}
int compareNumbers(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

/// The units of a text as ICU wants them; a short one without an allocation.
class Units {
 public:
  Units(const NSString* text, uint64_t options) {
    if (options) {
      folded_ = text->visit([&](auto units) { return std::u16string(FoldedText(units, options).units()); });
      units_ = folded_.data();
      length_ = folded_.size();
      return;
    }
    length_ = text->length();
    units_ = text->utf16Characters();
    if (units_) return;
    char16_t* room = few_;
    if (length_ > std::size(few_)) {
      folded_.resize(length_);
      room = folded_.data();
    }
    std::copy_n(text->asciiCharacters(), length_, room);
    units_ = room;
  }
  const UChar* units() const { return units_; }
  int32_t length() const {
    if (length_ > INT32_MAX) raise(NSRangeException, "the text is too long to be compared in the order of a language");
    return static_cast<int32_t>(length_);
  }

 private:
  char16_t few_[256];
  std::u16string folded_;
  const char16_t* units_ = nullptr;
  uint64_t length_ = 0;
};

/// Appends ICU's key of a text.
void appendKey(const UCollator* order, const Units& text, std::string& keys) {
  const size_t before = keys.size();
  for (size_t room = 4 * static_cast<size_t>(text.length()) + 16;;) {
    keys.resize(before + room);
    const auto fits = static_cast<int32_t>(std::min<size_t>(room, INT32_MAX));
    auto* const key = reinterpret_cast<uint8_t*>(keys.data() + before);
    const auto length = static_cast<size_t>(ucol_getSortKey(order, text.units(), text.length(), key, fits));
    if (length == 0) raise(NSMallocException, "no memory for the place of a text in the order of a language");
    if (length <= room) return keys.resize(before + length - 1);  // without the 0 at its end
    room = length;
  }
}

bool hasWideDigit(const Units& text) {
  constexpr UChar firstWideDigit = 0x660;
  for (int32_t i = 0; i < text.length();) {
    if (text.units()[i] < firstWideDigit) {
      ++i;
      continue;
    }
    UChar32 c;
    U16_NEXT(text.units(), i, text.length(), c);
    if (u_isdigit(c)) return true;
  }
  return false;
}

/// ICU's comparison passes over what two texts have in common at their starts, and in a language with places of its own
/// it doesn't see that it stops inside a number when the digits are beyond ASCII. Its keys are right.
bool mayShareWideNumber(const Units& a, const Units& b) {
  if (a.length() == 0 || b.length() == 0 || a.units()[0] != b.units()[0]) return false;
  return hasWideDigit(a) || hasWideDigit(b);
}

}  // namespace

// Printable ASCII

ASCIIOrder::ASCIIOrder(const UCollator* primary, const UCollator* tertiary) {
  UErrorCode status = U_ZERO_ERROR;
  if (ucol_getAttribute(tertiary, UCOL_ALTERNATE_HANDLING, &status) != UCOL_NON_IGNORABLE) return;
  if (U_FAILURE(status) || tailorsASCII(tertiary)) return;
  rank(primary, primary_);
  rank(tertiary, tertiary_);
  isUsable_ = primary_['9'] - primary_['0'] == 9;  // nothing stands between the digits, or at a digit's place
}

bool ASCIIOrder::compare(std::string_view a, std::string_view b, NSComparisonResult& result) const {
  size_t i = 0, j = 0;
  int primary = 0, tertiary = 0;
  while (i < a.size() && j < b.size()) {
    const auto x = static_cast<uint8_t>(a[i]), y = static_cast<uint8_t>(b[j]);
    if (isDigit(a[i]) && isDigit(b[j])) {
      const Digits left = digitsAt(a, i), right = digitsAt(b, j);
      if (left.end - i > mostDigits || right.end - j > mostDigits) return false;
      if (!primary) primary = compareNumbers(left.significant, right.significant);
      i = left.end;
      j = right.end;
    } else {
      if (!primary_[x] || !primary_[y]) return false;
      if (!primary) primary = primary_[x] - primary_[y];
      if (!tertiary) tertiary = tertiary_[x] - tertiary_[y];
      ++i;
      ++j;
    }
    if (primary) break;
  }
  if (!primary && (i < a.size() || j < b.size())) {
    const char next = i < a.size() ? a[i] : b[j];
    if (!primary_[static_cast<uint8_t>(next)]) return false;
    primary = i < a.size() ? 1 : -1;
  }
  if (!primary) primary = tertiary;
  result = resultOf(primary ? primary : a.compare(b));
  return true;
}

bool ASCIIOrder::appendKey(std::string_view text, std::string& keys) const {
  for (size_t i = 0; i < text.size();) {
    const uint8_t place = primary_[static_cast<uint8_t>(text[i])];
    if (isDigit(text[i])) {  // a number: where digits stand, how many they are, and which
      const Digits number = digitsAt(text, i);
      if (number.end - i > mostDigits) return false;
      keys += static_cast<char>(primary_['0']);
      keys += static_cast<char>(number.significant.size() + 1);  // not 0, which is below everything
      keys += number.significant;
      i = number.end;
    } else {
      if (!place) return false;
      keys += static_cast<char>(place);
      ++i;
    }
  }
  return true;
}

// Locales

const Collations& Collations::of(const NSLocale* locale) {
  if (const Collations* made = locale->collations_.load(std::memory_order_acquire)) return *made;
  std::unique_ptr<Collations> fresh(new Collations(locale->name_));
  Collations* expected = nullptr;
  if (!locale->collations_.compare_exchange_strong(expected, fresh.get())) return *expected;
  return *fresh.release();
}

void Collations::drop(Collations* collations) {
  if (!collations) return;
  for (auto& each : collations->collators_) CloseCollator()(each.load());
  delete collations->asciiOrder_.load();
  delete collations;
}

CollatorHandle Collations::open(uint64_t options) const {
  UErrorCode status = U_ZERO_ERROR;
  CollatorHandle collator(ucol_open(locale_.c_str(), &status));
  if (!collator || U_FAILURE(status)) {
    raise(NSInternalInconsistencyException, "no order of texts for the locale " + locale_ + ": " + u_errorName(status));
  }
  ucol_setAttribute(collator.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
  if (options & NSDiacriticInsensitiveSearch) {
    ucol_setStrength(collator.get(), UCOL_PRIMARY);
    if (!(options & NSCaseInsensitiveSearch)) ucol_setAttribute(collator.get(), UCOL_CASE_LEVEL, UCOL_ON, &status);
  } else {
    ucol_setStrength(collator.get(), options & NSCaseInsensitiveSearch ? UCOL_SECONDARY : UCOL_TERTIARY);
  }
  if (options & NSNumericSearch) ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
  return collator;
}

const UCollator* Collations::collator(uint64_t options) const {
  const size_t kind = (options & NSCaseInsensitiveSearch ? 1 : 0) | (options & NSDiacriticInsensitiveSearch ? 2 : 0) |
                      (options & NSNumericSearch ? 4 : 0);
  std::atomic<UCollator*>& place = collators_[kind];
  if (const UCollator* made = place.load(std::memory_order_acquire)) return made;
  CollatorHandle fresh = open(options);
  UCollator* expected = nullptr;
  if (!place.compare_exchange_strong(expected, fresh.get())) return expected;
  return fresh.release();
}

const ASCIIOrder& Collations::asciiOrder() const {
  if (const ASCIIOrder* made = asciiOrder_.load(std::memory_order_acquire)) return *made;
  auto fresh = std::make_unique<const ASCIIOrder>(collator(NSCaseInsensitiveSearch), collator(0));
  const ASCIIOrder* expected = nullptr;
  if (!asciiOrder_.compare_exchange_strong(expected, fresh.get())) return *expected;
  return *fresh.release();
}

NSComparisonResult Collations::ordered(const NSString* a, const NSString* b, uint64_t kind, uint64_t folding) const {
  const Units left(a, folding), right(b, folding);
  const UCollator* const order = collator(kind);
  if ((kind & NSNumericSearch) && mayShareWideNumber(left, right)) {
    std::string leftKey, rightKey;
    detail::appendKey(order, left, leftKey);
    detail::appendKey(order, right, rightKey);
    return resultOf(leftKey.compare(rightKey));
  }
  return resultOf(ucol_strcoll(order, left.units(), left.length(), right.units(), right.length()));
}

void Collations::appendKey(const NSString* text, std::string& keys) const {
  detail::appendKey(collator(standardOptions), Units(text, 0), keys);
}

NSComparisonResult Collations::compare(const NSString* a, const NSString* b, uint64_t options) const {
  if ((options & standardOptions) == standardOptions && !(options & NSDiacriticInsensitiveSearch) &&
      a->asciiCharacters() && b->asciiCharacters()) {
    NSComparisonResult result;
    const ASCIIOrder& order = asciiOrder();
    if (order.isUsable() &&
        order.compare({a->asciiCharacters(), a->length()}, {b->asciiCharacters(), b->length()}, result))
      return result;
  }
  // Width is a difference of the third kind, like case, and goes where case goes: it is looked at again, without case.
  const uint64_t overlooked = options & (NSCaseInsensitiveSearch | NSDiacriticInsensitiveSearch);
  const uint64_t width = options & NSWidthInsensitiveSearch;
  NSComparisonResult result = ordered(a, b, options, overlooked ? 0 : width);
  if (result == NSOrderedSame && overlooked && !width) result = ordered(a, b, options & NSNumericSearch, overlooked);
  if (result != NSOrderedSame || !(options & NSForcedOrderingSearch)) return result;
  result = ordered(a, b, options & NSNumericSearch, 0);
  return result == NSOrderedSame ? a->compare(b) : result;
}

}  // namespace quoll::inline v1::detail
