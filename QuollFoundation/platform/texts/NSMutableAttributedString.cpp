// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"

#include <algorithm>
#include <iterator>

#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace quoll::inline v1 {

Class* NSMutableAttributedString::classObject() {
  static Class* const cls =
      ClassBuilder<Self>("NSMutableAttributedString")
          .method<&Self::replaceCharactersInRange_withString>("replaceCharactersInRange:withString:"_sel)
          .method<&Self::replaceCharactersInRange_withAttributedString>(
              "replaceCharactersInRange:withAttributedString:"_sel)
          .method<&Self::appendAttributedString>("appendAttributedString:"_sel)
          .method<&Self::insertAttributedString_atIndex>("insertAttributedString:atIndex:"_sel)
          .method<&Self::deleteCharactersInRange>("deleteCharactersInRange:"_sel)
          .method<&Self::setAttributedString>("setAttributedString:"_sel)
          .method<&Self::setAttributes_range>("setAttributes:range:"_sel)
          .method<&Self::addAttribute_value_range>("addAttribute:value:range:"_sel)
          .method<&Self::addAttributes_range>("addAttributes:range:"_sel)
          .method<&Self::removeAttribute_range>("removeAttribute:range:"_sel)
          .build();
  return cls;
}

NSMutableAttributedString::NSMutableAttributedString() { text_ = NSMutableString::string(); }
NSMutableAttributedString::~NSMutableAttributedString() = default;

void NSMutableAttributedString::takeText(const NSString* text) { cast<NSMutableString>(text_)->setString(text); }

void NSMutableAttributedString::checkRange(NSRange range, std::string_view selector) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, selector, range, length());
}

// Changing runs

/// The runs, with ends that count from its start, in place of those of the range, and the text, unless it is null, in
/// place of its text.
///
/// What compares values, and so may run anything, comes first; then what may lack memory; then nothing can fail. What
/// is replaced dies last.
void NSMutableAttributedString::replace(NSRange range, const NSString* with, const Runs& runs) {
  const Ref<NSString> text = with ? with->copy() : nullptr;  // it may be our own
  const uint64_t end = NSMaxRange(range), delta = (text ? text->length() : range.length) - range.length;
  const size_t first = range.location == 0 ? 0 : runAt(range.location - 1);
  const size_t last = end == length() ? runs_.size() : runAt(end) + 1;
  Runs middle = joined(range, runs, first, last, delta);

  const size_t count = runs_.size() - (last - first) + middle.size();
  if (count > runs_.capacity()) runs_.reserve(std::max(count, 2 * runs_.capacity()));
  middle.reserve(last - first);
  if (text) cast<NSMutableString>(text_)->replaceCharactersInRange_withString(range, text);
  if (text) now_.store(nullptr);
  install(middle, first, last, delta);
}

/// What comes in place of the runs from `first` to `last`: what is left of these before the range, the new ones, and
/// what is left of them behind it.
NSAttributedString::Runs NSMutableAttributedString::joined(NSRange range, const Runs& runs, size_t first, size_t last,
                                                           uint64_t delta) {
  const uint64_t changes = changes_;
  const Run none{0, nullptr};
  const Run left = range.location > 0 ? runs_[first] : none,
            right = NSMaxRange(range) < length() ? runs_[last - 1] : none;
  Runs middle;
  middle.reserve(runs.size() + 2);
  if (left.attributes) middle.push_back({range.location, left.attributes});
  for (const Run& run : runs) add(middle, range.location + run.end, run.attributes);
  if (right.attributes) add(middle, right.end + delta, right.attributes);
  if (changes_ != changes) objc_enumerationMutation(this);
  return middle;
}

/// Trades the runs from `first` to `last` for others; there is room.
void NSMutableAttributedString::install(Runs& middle, size_t first, size_t last, uint64_t delta) {
  ++changes_;
  const auto at = [](Runs& runs, size_t i) { return runs.begin() + static_cast<std::ptrdiff_t>(i); };
  if (delta != 0) {
    for (size_t i = last; i < runs_.size(); ++i) runs_[i].end += delta;
  }
  const size_t common = std::min(middle.size(), last - first);
  std::swap_ranges(middle.begin(), at(middle, common), at(runs_, first));
  if (first + common < last) {
    std::move(at(runs_, first + common), at(runs_, last), std::back_inserter(middle));
    runs_.erase(at(runs_, first + common), at(runs_, last));
  } else {
    const auto rest = std::make_move_iterator(at(middle, common));
    runs_.insert(at(runs_, last), rest, std::make_move_iterator(middle.end()));
  }
}

void NSMutableAttributedString::replaceWith(NSRange range, const NSAttributedString* with) {
  replace(range, with->text_, Runs(with->runs_));
}

template <class Change> void NSMutableAttributedString::changeAttributes(NSRange range, const Change& change) {
  if (range.length == 0) return;
  Runs runs = runsIn(range);
  for (Run& run : runs) run.attributes = change(run.attributes);
  if (!rangeFits(range, length())) objc_enumerationMutation(this);  // a key or value of the client's did it
  replace(range, nullptr, runs);
}

// Text

void NSMutableAttributedString::replaceCharactersInRange_withString(NSRange range, const NSString* with) {
  constexpr std::string_view selector = "replaceCharactersInRange:withString:";
  if (!with) detail::raiseNilArgument(this, selector);
  checkRange(range, selector);
  Runs runs;
  if (with->length() > 0) {
    const uint64_t model = range.length == 0 && range.location > 0 ? range.location - 1 : range.location;
    runs.push_back({with->length(), model < length() ? runs_[runAt(model)].attributes : NSDictionary::dictionary()});
  }
  replace(range, with, runs);
}

void NSMutableAttributedString::replaceCharactersInRange_withAttributedString(NSRange range,
                                                                              const NSAttributedString* with) {
  constexpr std::string_view selector = "replaceCharactersInRange:withAttributedString:";
  if (!with) detail::raiseNilArgument(this, selector);
  checkRange(range, selector);
  replaceWith(range, with);
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString* other) {
  if (!other) detail::raiseNilArgument(this, "appendAttributedString:");
  replaceWith({length(), 0}, other);
}

void NSMutableAttributedString::insertAttributedString_atIndex(const NSAttributedString* other, uint64_t index) {
  constexpr std::string_view selector = "insertAttributedString:atIndex:";
  if (!other) detail::raiseNilArgument(this, selector);
  if (index > length()) detail::raiseIndex(this, selector, index, length());
  replaceWith({index, 0}, other);
}

void NSMutableAttributedString::deleteCharactersInRange(NSRange range) {
  checkRange(range, "deleteCharactersInRange:");
  replace(range, ""_ns, {});
}

void NSMutableAttributedString::setAttributedString(const NSAttributedString* other) {
  if (!other) detail::raiseNilArgument(this, "setAttributedString:");
  if (other != this) replaceWith({0, length()}, other);
}

// Attributes

void NSMutableAttributedString::setAttributes_range(const NSDictionary* attributes, NSRange range) {
  checkRange(range, "setAttributes:range:");
  const Ref<NSDictionary> all = attributes ? attributes->copy() : NSDictionary::dictionary();
  changeAttributes(range, [&](const Ref<NSDictionary>&) { return all; });
}

void NSMutableAttributedString::addAttribute_value_range(const NSString* name, const NSObject* value, NSRange range) {
  constexpr std::string_view selector = "addAttribute:value:range:";
  if (!name || !value) detail::raiseNilArgument(this, selector);
  checkRange(range, selector);
  changeAttributes(range, [&](const Ref<NSDictionary>& old) {
    Ref<NSMutableDictionary> changed = old->mutableCopy();
    changed->setObject_forKey(value, name);
    return changed->copy();
  });
}

void NSMutableAttributedString::addAttributes_range(const NSDictionary* attributes, NSRange range) {
  constexpr std::string_view selector = "addAttributes:range:";
  if (!attributes) detail::raiseNilArgument(this, selector);
  checkRange(range, selector);
  const Ref<NSDictionary> more = attributes->copy();
  changeAttributes(range, [&](const Ref<NSDictionary>& old) {
    Ref<NSMutableDictionary> changed = old->mutableCopy();
    changed->addEntriesFromDictionary(more);
    return changed->copy();
  });
}

void NSMutableAttributedString::removeAttribute_range(const NSString* name, NSRange range) {
  constexpr std::string_view selector = "removeAttribute:range:";
  if (!name) detail::raiseNilArgument(this, selector);
  checkRange(range, selector);
  changeAttributes(range, [&](const Ref<NSDictionary>& old) {
    if (!old->objectForKey(name)) return old;
    Ref<NSMutableDictionary> changed = old->mutableCopy();
    changed->removeObjectForKey(name);
    return changed->copy();
  });
}

Ref<NSObject> NSMutableAttributedString::copyWithZone(NSZone*) const {
  return initWithAttributedString<NSAttributedString>(this);
}

}  // namespace quoll::inline v1
