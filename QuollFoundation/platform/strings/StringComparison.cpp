// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/CollationInternal.h"
#include "QuollFoundation/platform/strings/TextFoldingInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UnitsInternal.h"

namespace quoll::inline v1 {

using detail::visitBoth;

namespace {

NSComparisonResult resultOf(std::strong_ordering ordering) {
  return ordering < 0 ? NSOrderedAscending : ordering > 0 ? NSOrderedDescending : NSOrderedSame;
}

/// The units of a folded text, one after the other, without a copy of the whole.
template <class Text> class FoldedUnits {
 public:
  static constexpr int atEnd = -1;

  FoldedUnits(Text text, uint64_t options) : text_(text), options_(options) { step(); }
  int unit() const { return unit_; }
  bool isDigit() const { return unit_ >= '0' && unit_ <= '9'; }
  void step() {
    if (given_ == point_.count && !load()) return;
    unit_ = point_.units[given_++];
  }

 private:
  /// False where the unit is known already: of ASCII, or the end.
  bool load() {
    while (index_ < text_.size()) {
      const char32_t point = detail::nextPoint(text_, index_);
      if (point < 0x80) {
        unit_ = detail::foldASCII(point, options_);
        return false;
      }
      point_ = detail::foldPoint(point, options_);
      given_ = 0;
      if (point_.count > 0) return true;
    }
    unit_ = atEnd;
    return false;
  }

  Text text_;
  uint64_t options_;
  size_t index_ = 0;
  detail::FoldedPoint point_;  // what the last code point beyond ASCII became
  int given_ = 0;              // units of it
  int unit_ = atEnd;
};

/// Compares the numbers that both stand at, and steps behind them. Numbers have any length.
template <class A, class B> std::strong_ordering compareNumbers(A& a, B& b) {
  while (a.unit() == '0') a.step();
  while (b.unit() == '0') b.step();
  std::strong_ordering digits = std::strong_ordering::equal;
  for (; a.isDigit() && b.isDigit(); a.step(), b.step()) {
    if (digits == 0) digits = a.unit() <=> b.unit();
  }
  if (a.isDigit() != b.isDigit()) return a.isDigit() <=> b.isDigit();  // the one with more digits is larger
  return digits;
}

template <class A, class B> std::strong_ordering compareFolded(A left, B right, uint64_t options) {
  FoldedUnits<A> a(left, options);
  FoldedUnits<B> b(right, options);
  while (a.unit() != a.atEnd && b.unit() != b.atEnd) {
    if ((options & NSNumericSearch) && a.isDigit() && b.isDigit()) {
      if (const auto numbers = compareNumbers(a, b); numbers != 0) return numbers;
      continue;
    }
    if (a.unit() != b.unit()) break;
    a.step();
    b.step();
  }
  return a.unit() <=> b.unit();  // the end comes before any unit
}

}  // namespace

bool NSString::isEqual(const NSObject* other) const { return isEqualToString(as<NSString>(other)); }

bool NSString::isEqualToString(const NSString* other) const {
  if (this == other) return true;
  if (!other || length() != other->length()) return false;
  return visitBoth(this, other, [](auto a, auto b) { return detail::equalUnits(a, b); });
}

uint64_t NSString::hash() const {
  return visit([](auto text) { return detail::hashUnits(text.data(), text.size()); });
}

NSComparisonResult NSString::compare(const NSString* other) const {
  if (!other) return NSOrderedDescending;
  return resultOf(visitBoth(this, other, [](auto a, auto b) { return detail::compareUnits(a, b); }));
}

NSComparisonResult NSString::compare_options(const NSString* other, NSStringCompareOptions options) const {
  const uint64_t all = options;
  if (!other || !(all & (detail::foldingOptions | NSNumericSearch))) return compare(other);
  const auto folded = visitBoth(this, other, [&](auto a, auto b) { return compareFolded(a, b, all); });
  return folded == 0 && (all & NSForcedOrderingSearch) ? compare(other) : resultOf(folded);
}

NSComparisonResult NSString::compare_options_range(const NSString* other, NSStringCompareOptions options,
                                                   NSRange range) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, "compare:options:range:", range, length());
  return compare_options_range_locale(other, options, range, nullptr);
}

NSComparisonResult NSString::compare_options_range_locale(const NSString* other, NSStringCompareOptions options,
                                                          NSRange range, const NSLocale* locale) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, "compare:options:range:locale:", range, length());
  if (range.length != length()) {
    return detail::Text::part(this, range)->compare_options_range_locale(other, options, {0, range.length}, locale);
  }
  if (!other) return NSOrderedDescending;
  if (!locale || (options & NSLiteralSearch)) return compare_options(other, options);
  return detail::Collations::of(locale).compare(this, other, options);
}

NSComparisonResult NSString::localizedCompare(const NSString* other) const {
  Ref<NSLocale> room;
  return compare_options_range_locale(other, {}, {0, length()}, detail::currentLocaleForComparing(room));
}

NSComparisonResult NSString::localizedStandardCompare(const NSString* other) const {
  constexpr auto options = static_cast<NSStringCompareOptions>(detail::standardOptions);
  Ref<NSLocale> room;
  return compare_options_range_locale(other, options, {0, length()}, detail::currentLocaleForComparing(room));
}

NSComparisonResult NSString::caseInsensitiveCompare(const NSString* other) const {
  return compare_options(other, NSCaseInsensitiveSearch);
}

}  // namespace quoll::inline v1
