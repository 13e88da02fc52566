// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSAttributedString.h"

#include <algorithm>

#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"

namespace quoll::inline v1 {

Class* NSAttributedString::classObject() {
  static Class* const cls =
      ClassBuilder<NSAttributedString>("NSAttributedString")
          .initializer<&NSAttributedString::initWithString_ofClass>("initWithString:"_sel)
          .initializer<&NSAttributedString::initWithString_attributes_ofClass>("initWithString:attributes:"_sel)
          .initializer<&NSAttributedString::initWithAttributedString_ofClass>("initWithAttributedString:"_sel)
          .method<&NSAttributedString::string>("string"_sel)
          .method<&NSAttributedString::length>("length"_sel)
          .method<&NSAttributedString::attributesAtIndex_effectiveRange>("attributesAtIndex:effectiveRange:"_sel)
          .method<&NSAttributedString::attribute_atIndex_effectiveRange>("attribute:atIndex:effectiveRange:"_sel)
          .method<&NSAttributedString::attributedSubstringFromRange>("attributedSubstringFromRange:"_sel)
          .method<&NSAttributedString::enumerateAttributesInRange_options_usingBlock>(
              "enumerateAttributesInRange:options:usingBlock:"_sel)
          .method<&NSAttributedString::isEqualToAttributedString>("isEqualToAttributedString:"_sel)
          .build();
  return cls;
}

NSAttributedString::NSAttributedString() : text_(""_ns) {}
NSAttributedString::~NSAttributedString() = default;

// Making attributed strings

namespace {

/// What stands for no attributes, one for all.
const Ref<NSDictionary>& noAttributes() {
  static const Ref<NSDictionary>* const none = new Ref<NSDictionary>(NSDictionary::dictionary());
  return *none;
}

Ref<NSDictionary> kept(const NSDictionary* attributes) {
  return attributes && attributes->count() > 0 ? attributes->copy() : noAttributes();
}

}  // namespace

void NSAttributedString::takeText(const NSString* text) { text_ = text->copy(); }

Ref<NSAttributedString> NSAttributedString::initWithString_ofClass(const NSString* text, Class* cls) {
  Ref<NSAttributedString> made = create<NSAttributedString>(cls);
  if (!text) detail::raiseNilArgument(made, "initWithString:");
  made->takeText(text);
  add(made->runs_, made->length(), noAttributes());
  return made;
}

Ref<NSAttributedString> NSAttributedString::initWithString_attributes_ofClass(const NSString* text,
                                                                              const NSDictionary* attributes,
                                                                              Class* cls) {
  Ref<NSAttributedString> made = create<NSAttributedString>(cls);
  if (!text) detail::raiseNilArgument(made, "initWithString:attributes:");
  made->takeText(text);
  add(made->runs_, made->length(), kept(attributes));
  return made;
}

Ref<NSAttributedString> NSAttributedString::initWithAttributedString_ofClass(const NSAttributedString* other,
                                                                             Class* cls) {
  Ref<NSAttributedString> made = create<NSAttributedString>(cls);
  if (!other) detail::raiseNilArgument(made, "initWithAttributedString:");
  made->takeText(other->text_);
  made->runs_ = other->runs_;
  return made;
}

// Runs

/// Behind what is there; of no length, it adds nothing.
void NSAttributedString::add(Runs& runs, uint64_t end, const Ref<NSDictionary>& attributes) {
  if (end == (runs.empty() ? 0 : runs.back().end)) return;
  if (!runs.empty() && quoll::isEqual(runs.back().attributes, attributes)) runs.back().end = end;
  else runs.push_back({end, attributes});
}

size_t NSAttributedString::runAt(uint64_t index) const {
  const auto after = [](uint64_t place, const Run& run) { return place < run.end; };
  return static_cast<size_t>(std::upper_bound(runs_.begin(), runs_.end(), index, after) - runs_.begin());
}

NSRange NSAttributedString::rangeOfRun(size_t run) const {
  const uint64_t start = run == 0 ? 0 : runs_[run - 1].end;
  return {start, runs_[run].end - start};
}

NSDictionary* NSAttributedString::checkedRunAt(uint64_t index, NSRange* range, std::string_view selector) const {
  if (index >= length()) detail::raiseIndex(this, selector, index, length());
  const size_t run = runAt(index);
  if (range) *range = rangeOfRun(run);
  return runs_[run].attributes.get();
}

/// With ends that count from the start of the range, which fits.
NSAttributedString::Runs NSAttributedString::runsIn(NSRange range) const {
  Runs runs;
  const uint64_t end = NSMaxRange(range);
  if (range.length == 0) return runs;
  for (size_t i = runAt(range.location); i < runs_.size(); ++i) {
    runs.push_back({std::min(end, runs_[i].end) - range.location, runs_[i].attributes});
    if (runs_[i].end >= end) break;
  }
  return runs;
}

// Reading

Ref<NSString> NSAttributedString::string() const {
  if (!as<NSMutableString>(text_)) return text_;
  Ref<NSString> now = now_.load();
  if (!now) {
    now = text_->copy();
    now_.store(now);
  }
  return now;
}

Ref<NSDictionary> NSAttributedString::attributesAtIndex_effectiveRange(uint64_t index, NSRange* effectiveRange) const {
  return checkedRunAt(index, effectiveRange, "attributesAtIndex:effectiveRange:");
}

Ref<NSObject> NSAttributedString::attribute_atIndex_effectiveRange(const NSString* name, uint64_t index,
                                                                   NSRange* effectiveRange) const {
  constexpr std::string_view selector = "attribute:atIndex:effectiveRange:";
  if (!name) detail::raiseNilArgument(this, selector);
  return checkedRunAt(index, effectiveRange, selector)->objectForKey(name);
}

Ref<NSAttributedString> NSAttributedString::attributedSubstringFromRange(NSRange range) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, "attributedSubstringFromRange:", range, length());
  Ref<NSAttributedString> part = create<NSAttributedString>(NSAttributedString::classObject());
  part->text_ = text_->substringWithRange(range);
  part->runs_ = runsIn(range);
  return part;
}

void NSAttributedString::enumerateAttributesInRange_options_usingBlock(NSRange range,
                                                                       NSAttributedStringEnumerationOptions options,
                                                                       RunAction action) const {
  const uint64_t count = length();
  if (!rangeFits(range, count)) {
    detail::raiseRange(this, "enumerateAttributesInRange:options:usingBlock:", range, count);
  }
  const Ref<NSAttributedString> pinned = const_cast<NSAttributedString*>(this);
  bool stop = false;
  // What is left is a range, not runs: these may be others after each call.
  uint64_t start = range.location, end = NSMaxRange(range);
  while (start < end && !stop) {
    if (length() != count) objc_enumerationMutation(pinned);
    const bool reverse = options & NSAttributedStringEnumerationReverse;
    const size_t run = runAt(reverse ? end - 1 : start);
    const NSRange whole = rangeOfRun(run);
    const uint64_t from = std::max(start, whole.location), to = std::min(end, NSMaxRange(whole));
    const Ref<NSDictionary> attributes = runs_[run].attributes;
    action(attributes.get(), {from, to - from}, &stop);
    (reverse ? end : start) = reverse ? from : to;
  }
}

// As an object

bool NSAttributedString::isEqualToAttributedString(const NSAttributedString* other) const {
  if (other == this) return true;
  if (!other || !text_->isEqualToString(other->text_)) return false;
  const Runs mine = runs_, theirs = other->runs_;  // comparing values may run anything
  return std::equal(mine.begin(), mine.end(), theirs.begin(), theirs.end(), [](const Run& a, const Run& b) {
    return a.end == b.end && quoll::isEqual(a.attributes, b.attributes);
  });
}

bool NSAttributedString::isEqual(const NSObject* other) const {
  auto* text = as<const NSAttributedString>(other);
  return text && isEqualToAttributedString(text);
}
uint64_t NSAttributedString::hash() const { return text_->hash(); }

Ref<NSString> NSAttributedString::description() const {
  Ref<NSMutableString> out = NSMutableString::string();
  const Ref<NSString> text = string();
  uint64_t start = 0;
  for (const Run& run : runsIn({0, length()})) {
    out->appendString(text->substringWithRange({start, run.end - start}));
    out->appendString(run.attributes->description());
    start = run.end;
  }
  return out->copy();
}

Ref<NSObject> NSAttributedString::copyWithZone(NSZone*) const {
  if (isa() != NSAttributedString::classObject()) return initWithAttributedString<NSAttributedString>(this);
  return const_cast<NSAttributedString*>(this);
}
Ref<NSObject> NSAttributedString::mutableCopyWithZone(NSZone*) const {
  return initWithAttributedString<NSMutableAttributedString>(this);
}
Ref<NSAttributedString> NSAttributedString::copy() const { return cast<NSAttributedString>(copyWithZone(nullptr)); }
Ref<NSMutableAttributedString> NSAttributedString::mutableCopy() const {
  return cast<NSMutableAttributedString>(mutableCopyWithZone(nullptr));
}

}  // namespace quoll::inline v1
