// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/StringSearchInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UnitsInternal.h"

namespace quoll::inline v1 {

namespace detail {

namespace {

template <class A, class B> bool startsWith(A text, B start) {
  return start.size() <= text.size() && equalUnits(text.substr(0, start.size()), start);
}
template <class A, class B> bool endsWith(A text, B end) {
  return end.size() <= text.size() && equalUnits(text.substr(text.size() - end.size()), end);
}

/// Where an occurrence starts, by the anchoring and direction of the options.
template <class A, class B> size_t placeOf(A text, B wanted, uint64_t options) {
  const bool backwards = options & NSBackwardsSearch;
  if (!(options & NSAnchoredSearch)) return backwards ? findLastUnits(text, wanted) : findUnits(text, wanted);
  const bool stands = !wanted.empty() && (backwards ? endsWith(text, wanted) : startsWith(text, wanted));
  if (!stands) return noIndex;
  return backwards ? text.size() - wanted.size() : 0;
}

FoldedText foldedPart(const NSString* text, NSRange range, uint64_t options) {
  return text->visit([&](auto all) { return FoldedText(all.substr(range.location, range.length), options); });
}

}  // namespace

StringSearch::StringSearch(const NSString* text, const NSString* wanted, uint64_t options, NSRange range)
    : text_(text), wanted_(wanted), options_(options), range_(range) {
  if (options & NSRegularExpressionSearch) {
    raise(NSInvalidArgumentException,
          methodName(text, "rangeOfString:options:range:") + ": a plain search takes no regular expression");
  }
  if (!(options & foldingOptions)) return;
  foldedText_.emplace(foldedPart(text, range, options));
  foldedWanted_.emplace(foldedPart(wanted, {0, wanted->length()}, options));
}

NSRange StringSearch::first() const { return within(range_.location, NSMaxRange(range_)); }

std::vector<NSRange> StringSearch::all() const {
  std::vector<NSRange> places;
  size_t start = range_.location;
  size_t end = NSMaxRange(range_);
  for (;;) {
    const NSRange place = within(start, end);
    if (place.location == NSNotFound) break;
    places.push_back(place);
    if (options_ & NSAnchoredSearch) break;
    if (options_ & NSBackwardsSearch) end = place.location;
    else start = NSMaxRange(place);
  }
  if (options_ & NSBackwardsSearch) std::reverse(places.begin(), places.end());
  return places;
}

NSRange StringSearch::within(size_t start, size_t end) const {
  if (foldedText_) return folded(start, end);
  return visitBoth(text_, wanted_, [&](auto text, auto wanted) { return literal(text, wanted, start, end); });
}

template <class A, class B> NSRange StringSearch::literal(A text, B wanted, size_t start, size_t end) const {
  const size_t place = placeOf(text.substr(start, end - start), wanted, options_);
  return place == noIndex ? notFound : NSRange{start + place, wanted.size()};
}

/// An occurrence starts and ends between code points of the text; marks that were left out belong to what stands
/// before them.
NSRange StringSearch::folded(size_t start, size_t end) const {
  const std::u16string_view wanted = foldedWanted_->units();
  size_t from = foldedText_->indexOf(start - range_.location);
  size_t to = foldedText_->indexOf(end - range_.location);
  while (to - from >= wanted.size()) {
    const size_t place = placeOf(foldedText_->units().substr(from, to - from), wanted, options_);
    if (place == noIndex) return notFound;
    const size_t first = from + place;
    const size_t behind = first + wanted.size();
    if (foldedText_->isBoundary(first) && foldedText_->isBoundary(behind)) {
      const size_t origin = foldedText_->origin(first);
      return {range_.location + origin, foldedText_->origin(behind) - origin};
    }
    if (options_ & NSAnchoredSearch) return notFound;
    if (options_ & NSBackwardsSearch) to = behind - 1;
    else from = first + 1;
  }
  return notFound;
}

Ref<NSString> replaced(const NSString* text, const std::vector<NSRange>& places, const NSString* with) {
  std::vector<Text::Part> parts;
  parts.reserve(2 * places.size() + 1);
  uint64_t done = 0;
  for (const NSRange& place : places) {
    parts.emplace_back(text, NSRange{done, place.location - done});
    parts.emplace_back(with);
    done = NSMaxRange(place);
  }
  parts.emplace_back(text, NSRange{done, text->length() - done});
  return Text::joined(parts);
}

}  // namespace detail

NSRange NSString::rangeOfString(const NSString* wanted) const {
  if (!wanted) detail::raiseNilArgument(this, "rangeOfString:");
  const size_t place =
      detail::visitBoth(this, wanted, [](auto text, auto sought) { return detail::findUnits(text, sought); });
  return place == detail::noIndex ? detail::notFound : NSRange{place, wanted->length()};
}

NSRange NSString::rangeOfString_options(const NSString* wanted, NSStringCompareOptions options) const {
  return rangeOfString_options_range(wanted, options, {0, length()});
}

NSRange NSString::rangeOfString_options_range(const NSString* wanted, NSStringCompareOptions options,
                                              NSRange range) const {
  constexpr std::string_view selector = "rangeOfString:options:range:";
  if (!wanted) detail::raiseNilArgument(this, selector);
  if (!rangeFits(range, length())) detail::raiseRange(this, selector, range, length());
  return detail::StringSearch(this, wanted, options, range).first();
}

bool NSString::containsString(const NSString* wanted) const {
  if (!wanted) detail::raiseNilArgument(this, "containsString:");
  return rangeOfString(wanted).location != NSNotFound;
}

bool NSString::hasPrefix(const NSString* prefix) const {
  if (!prefix) detail::raiseNilArgument(this, "hasPrefix:");
  if (prefix->length() == 0) return false;
  return detail::visitBoth(this, prefix, [](auto text, auto start) { return detail::startsWith(text, start); });
}

bool NSString::hasSuffix(const NSString* suffix) const {
  if (!suffix) detail::raiseNilArgument(this, "hasSuffix:");
  if (suffix->length() == 0) return false;
  return detail::visitBoth(this, suffix, [](auto text, auto end) { return detail::endsWith(text, end); });
}

Ref<NSString> NSString::stringByReplacingOccurrencesOfString_withString(const NSString* target,
                                                                        const NSString* with) const {
  if (!target || !with) detail::raiseNilArgument(this, "stringByReplacingOccurrencesOfString:withString:");
  const std::vector<NSRange> places = detail::StringSearch(this, target, NSLiteralSearch, {0, length()}).all();
  return places.empty() ? copy() : detail::replaced(this, places, with);
}

}  // namespace quoll::inline v1
