// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CharacterSets.h"

#include <algorithm>
#include <string>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/ImmortalInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/BlanksInternal.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace quoll::inline v1 {

namespace {

/// What a function accepts; lives for ever.
template <bool (*contains)(char16_t)> class PredefinedSet : public NSCharacterSet {
 public:
  constexpr PredefinedSet() = default;
  bool characterIsMember(char16_t unit) const override { return contains(unit); }
};

class ListedSet : public NSCharacterSet {
 public:
  explicit ListedSet(std::u16string units) : units_(std::move(units)) { std::sort(units_.begin(), units_.end()); }
  bool characterIsMember(char16_t unit) const override {
    return std::binary_search(units_.begin(), units_.end(), unit);
  }

 private:
  std::u16string units_;
};

class InvertedSet : public NSCharacterSet {
 public:
  explicit InvertedSet(const NSCharacterSet* set) : set_(const_cast<NSCharacterSet*>(set)) {}
  bool characterIsMember(char16_t unit) const override { return !set_->characterIsMember(unit); }

 private:
  const Ref<NSCharacterSet> set_;
};

constexpr bool isEither(char16_t unit) { return detail::isWhitespaceUnit(unit) || detail::isNewlineUnit(unit); }

template <bool (*contains)(char16_t)> constexpr detail::Immortal<PredefinedSet<contains>> predefined{};
template <bool (*contains)(char16_t)> NSCharacterSet* setOf() { return predefined<contains>.get(); }

/// Where the units that a set does not hold begin and end; an empty range at 0 where there are none.
template <class Unit, class Members>
NSRange withoutEnds(std::basic_string_view<Unit> units, Members isMember) {
  size_t start = 0, end = units.size();
  const auto unit = [&](size_t i) { return static_cast<char16_t>(units[i]); };
  while (start < end && isMember(unit(start))) ++start;
  while (end > start && isMember(unit(end - 1))) --end;
  return NSMakeRange(start, end - start);
}

}  // namespace

Class* NSCharacterSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSCharacterSet>("NSCharacterSet")
          .classMethod<&NSCharacterSet::whitespaceCharacterSet>("whitespaceCharacterSet"_sel)
          .classMethod<&NSCharacterSet::newlineCharacterSet>("newlineCharacterSet"_sel)
          .classMethod<&NSCharacterSet::whitespaceAndNewlineCharacterSet>("whitespaceAndNewlineCharacterSet"_sel)
          .classMethod<&NSCharacterSet::characterSetWithCharactersInString>("characterSetWithCharactersInString:"_sel)
          .method<&NSCharacterSet::invertedSet>("invertedSet"_sel)
          .method<&NSCharacterSet::characterIsMember>("characterIsMember:"_sel)
          .build();
  return cls;
}

Ref<NSCharacterSet> NSCharacterSet::whitespaceCharacterSet() { return setOf<&detail::isWhitespaceUnit>(); }
Ref<NSCharacterSet> NSCharacterSet::newlineCharacterSet() { return setOf<&detail::isNewlineUnit>(); }
Ref<NSCharacterSet> NSCharacterSet::whitespaceAndNewlineCharacterSet() { return setOf<&isEither>(); }

Ref<NSCharacterSet> NSCharacterSet::characterSetWithCharactersInString(const NSString* characters) {
  if (!characters) detail::raiseNilArgument(classObject(), "characterSetWithCharactersInString:");
  return make<ListedSet>(characters->utf16());
}
Ref<NSCharacterSet> NSCharacterSet::invertedSet() const { return make<InvertedSet>(this); }

Ref<NSObject> NSCharacterSet::copyWithZone(NSZone*) const { return const_cast<NSCharacterSet*>(this); }

CFCharacterSetRef CFCharacterSetGetPredefined(CFCharacterSetPredefinedSet set) {
  switch (set) {
    case kCFCharacterSetWhitespace: return setOf<&detail::isWhitespaceUnit>();
    case kCFCharacterSetWhitespaceAndNewline: return setOf<&isEither>();
    case kCFCharacterSetNewline: return setOf<&detail::isNewlineUnit>();
  }
  raise(NSInvalidArgumentException, "CFCharacterSetGetPredefined: there is no set " + std::to_string(set));
}

bool CFCharacterSetIsCharacterMember(CFCharacterSetRef set, char16_t unit) {
  return set && set->characterIsMember(unit);
}

// Texts

NSRange NSString::rangeOfCharacterFromSet_options_range(const NSCharacterSet* set, NSStringCompareOptions options,
                                                        NSRange range) const {
  if (!rangeFits(range, length())) {
    detail::raiseRange(this, "rangeOfCharacterFromSet:options:range:", range, length());
  }
  if (!set) detail::raiseNilArgument(this, "rangeOfCharacterFromSet:options:range:");
  return visit([&](auto units) {
    const auto isMember = [&](auto unit) { return set->characterIsMember(static_cast<char16_t>(unit)); };
    const auto part = units.substr(range.location, range.length);
    if (options & NSBackwardsSearch) {
      const auto last = std::find_if(part.rbegin(), part.rend(), isMember);
      if (last == part.rend()) return NSMakeRange(NSNotFound, 0);
      return NSMakeRange(NSMaxRange(range) - 1 - static_cast<uint64_t>(last - part.rbegin()), 1);
    }
    const auto first = std::find_if(part.begin(), part.end(), isMember);
    if (first == part.end()) return NSMakeRange(NSNotFound, 0);
    return NSMakeRange(range.location + static_cast<uint64_t>(first - part.begin()), 1);
  });
}

NSRange NSString::rangeOfCharacterFromSet(const NSCharacterSet* set) const {
  return rangeOfCharacterFromSet_options_range(set, {}, {0, length()});
}

Ref<NSString> NSString::stringByTrimmingCharactersInSet(const NSCharacterSet* set) const {
  if (!set) detail::raiseNilArgument(this, "stringByTrimmingCharactersInSet:");
  return substringWithRange(visit(
      [&](auto units) { return withoutEnds(units, [&](char16_t unit) { return set->characterIsMember(unit); }); }));
}

bool CFStringFindCharacterFromSet(const NSString* text, CFCharacterSetRef set, CFRange range,
                                  NSStringCompareOptions options, CFRange* found) {
  if (!text || !set) return false;
  const NSRange wanted = NSMakeRange(static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length));
  const NSRange first = text->rangeOfCharacterFromSet_options_range(set, options, wanted);
  if (first.location == NSNotFound) return false;
  if (found) *found = CFRangeMake(static_cast<int64_t>(first.location), static_cast<int64_t>(first.length));
  return true;
}

NSRange detail::rangeWithoutWhitespace(const NSString* text) {
  return text->visit([](auto units) -> NSRange {
    const size_t start = blankPrefixLength(units);
    return {start, units.size() - start - blankSuffixLength(units.substr(start))};
  });
}

void CFStringTrimWhitespace(NSMutableString* text) {
  if (!text) return;
  const NSRange kept = detail::rangeWithoutWhitespace(text);
  text->deleteCharactersInRange({NSMaxRange(kept), text->length() - NSMaxRange(kept)});
  text->deleteCharactersInRange({0, kept.location});
}

}  // namespace quoll::inline v1
