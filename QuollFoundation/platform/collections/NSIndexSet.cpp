// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSIndexSet.h"

#include <algorithm>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSIndexSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSIndexSet>("NSIndexSet")
          .classMethod<&NSIndexSet::indexSet_ofClass>("indexSet"_sel)
          .classMethod<&NSIndexSet::indexSetWithIndex_ofClass>("indexSetWithIndex:"_sel)
          .classMethod<&NSIndexSet::indexSetWithIndexesInRange_ofClass>("indexSetWithIndexesInRange:"_sel)
          .initializer<&NSIndexSet::initWithIndex_ofClass>("initWithIndex:"_sel)
          .initializer<&NSIndexSet::initWithIndexesInRange_ofClass>("initWithIndexesInRange:"_sel)
          .initializer<&NSIndexSet::initWithIndexSet_ofClass>("initWithIndexSet:"_sel)
          .method<&NSIndexSet::count>("count"_sel)
          .method<&NSIndexSet::firstIndex>("firstIndex"_sel)
          .method<&NSIndexSet::lastIndex>("lastIndex"_sel)
          .method<&NSIndexSet::containsIndex>("containsIndex:"_sel)
          .method<&NSIndexSet::containsIndexesInRange>("containsIndexesInRange:"_sel)
          .method<&NSIndexSet::containsIndexes>("containsIndexes:"_sel)
          .method<&NSIndexSet::intersectsIndexesInRange>("intersectsIndexesInRange:"_sel)
          .method<&NSIndexSet::countOfIndexesInRange>("countOfIndexesInRange:"_sel)
          .method<&NSIndexSet::indexGreaterThanIndex>("indexGreaterThanIndex:"_sel)
          .method<&NSIndexSet::indexGreaterThanOrEqualToIndex>("indexGreaterThanOrEqualToIndex:"_sel)
          .method<&NSIndexSet::indexLessThanIndex>("indexLessThanIndex:"_sel)
          .method<&NSIndexSet::indexLessThanOrEqualToIndex>("indexLessThanOrEqualToIndex:"_sel)
          .method<&NSIndexSet::enumerateIndexesUsingBlock>("enumerateIndexesUsingBlock:"_sel)
          .method<&NSIndexSet::enumerateIndexesWithOptions_usingBlock>("enumerateIndexesWithOptions:usingBlock:"_sel)
          .method<&NSIndexSet::enumerateRangesUsingBlock>("enumerateRangesUsingBlock:"_sel)
          .method<&NSIndexSet::isEqualToIndexSet>("isEqualToIndexSet:"_sel)
          .build();
  return cls;
}

Class* NSMutableIndexSet::classObject() {
  static Class* const cls = ClassBuilder<NSMutableIndexSet>("NSMutableIndexSet")
                                .method<&NSMutableIndexSet::addIndex>("addIndex:"_sel)
                                .method<&NSMutableIndexSet::addIndexesInRange>("addIndexesInRange:"_sel)
                                .method<&NSMutableIndexSet::addIndexes>("addIndexes:"_sel)
                                .method<&NSMutableIndexSet::removeIndex>("removeIndex:"_sel)
                                .method<&NSMutableIndexSet::removeIndexesInRange>("removeIndexesInRange:"_sel)
                                .method<&NSMutableIndexSet::removeIndexes>("removeIndexes:"_sel)
                                .method<&NSMutableIndexSet::removeAllIndexes>("removeAllIndexes"_sel)
                                .build();
  return cls;
}

Ref<NSIndexSet> NSIndexSet::indexSet_ofClass(Class* cls) { return made<NSIndexSet>(cls, "init"_sel); }
Ref<NSIndexSet> NSIndexSet::indexSetWithIndex_ofClass(uint64_t index, Class* cls) {
  return made<NSIndexSet>(cls, "initWithIndex:"_sel, index);
}
Ref<NSIndexSet> NSIndexSet::indexSetWithIndexesInRange_ofClass(NSRange range, Class* cls) {
  return made<NSIndexSet>(cls, "initWithIndexesInRange:"_sel, range);
}
Ref<NSIndexSet> NSIndexSet::initWithIndex_ofClass(uint64_t index, Class* cls) {
  Ref<NSIndexSet> set = create<NSIndexSet>(cls);
  set->add({index, 1}, "initWithIndex:");
  return set;
}
Ref<NSIndexSet> NSIndexSet::initWithIndexesInRange_ofClass(NSRange range, Class* cls) {
  Ref<NSIndexSet> set = create<NSIndexSet>(cls);
  set->add(range, "initWithIndexesInRange:");
  return set;
}
Ref<NSIndexSet> NSIndexSet::initWithIndexSet_ofClass(const NSIndexSet* other, Class* cls) {
  Ref<NSIndexSet> set = create<NSIndexSet>(cls);
  if (!other) return set;
  set->ranges_ = other->ranges_;
  set->count_ = other->count_;
  return set;
}

void NSIndexSet::checkRange(NSRange range, std::string_view selector) const {
  if (!rangeFits(range, NSNotFound)) detail::raiseRange(this, selector, range, NSNotFound);
}

/// The first range that ends behind the index.
size_t NSIndexSet::rangeAtOrAfter(uint64_t index) const {
  if (!ranges_.empty() && index >= NSMaxRange(ranges_.back())) return ranges_.size();
  const auto at =
      std::partition_point(ranges_.begin(), ranges_.end(), [&](NSRange range) { return NSMaxRange(range) <= index; });
  return static_cast<size_t>(at - ranges_.begin());
}

// A range takes in those that it overlaps and those that it touches.
void NSIndexSet::add(NSRange range, std::string_view selector) {
  checkRange(range, selector);
  if (!range.length) return;
  size_t from = rangeAtOrAfter(range.location);
  if (from && NSMaxRange(ranges_[from - 1]) == range.location) --from;
  size_t to = from;
  uint64_t start = range.location, end = NSMaxRange(range);
  for (; to < ranges_.size() && ranges_[to].location <= end; ++to) {
    start = std::min(start, ranges_[to].location);
    end = std::max(end, NSMaxRange(ranges_[to]));
    count_ -= ranges_[to].length;
  }
  count_ += end - start;
  const auto place = ranges_.begin() + static_cast<std::ptrdiff_t>(from);
  if (from == to) {
    ranges_.insert(place, {start, end - start});
    return;
  }
  *place = {start, end - start};
  ranges_.erase(place + 1, ranges_.begin() + static_cast<std::ptrdiff_t>(to));
}

void NSIndexSet::remove(NSRange range, std::string_view selector) {
  checkRange(range, selector);
  if (!range.length) return;
  const uint64_t end = NSMaxRange(range);
  const size_t from = rangeAtOrAfter(range.location);
  size_t to = from;
  NSRange left[2];
  size_t leftCount = 0;
  for (; to < ranges_.size() && ranges_[to].location < end; ++to) {
    const NSRange cut = ranges_[to];
    count_ -= cut.length;
    if (cut.location < range.location) left[leftCount++] = {cut.location, range.location - cut.location};
    if (NSMaxRange(cut) > end) left[leftCount++] = {end, NSMaxRange(cut) - end};
  }
  for (size_t i = 0; i < leftCount; ++i) count_ += left[i].length;
  const auto place = ranges_.erase(ranges_.begin() + static_cast<std::ptrdiff_t>(from),
                                   ranges_.begin() + static_cast<std::ptrdiff_t>(to));
  ranges_.insert(place, left, left + leftCount);
}

// Questions

bool NSIndexSet::containsIndex(uint64_t index) const {
  const size_t at = rangeAtOrAfter(index);
  return at < ranges_.size() && NSLocationInRange(index, ranges_[at]);
}

bool NSIndexSet::containsIndexesInRange(NSRange range) const {
  if (!range.length) return false;
  const size_t at = rangeAtOrAfter(range.location);
  return at < ranges_.size() && NSLocationInRange(range.location, ranges_[at]) &&
         range.length <= NSMaxRange(ranges_[at]) - range.location;
}

bool NSIndexSet::containsIndexes(const NSIndexSet* others) const {
  return !others || std::all_of(others->ranges_.begin(), others->ranges_.end(),
                                [&](NSRange range) { return containsIndexesInRange(range); });
}

bool NSIndexSet::intersectsIndexesInRange(NSRange range) const { return countOfIndexesInRange(range) != 0; }

uint64_t NSIndexSet::countOfIndexesInRange(NSRange range) const {
  const uint64_t end = NSMaxRange(range) < range.location ? UINT64_MAX : NSMaxRange(range);
  uint64_t count = 0;
  for (size_t i = rangeAtOrAfter(range.location); i < ranges_.size() && ranges_[i].location < end; ++i) {
    count += std::min(end, NSMaxRange(ranges_[i])) - std::max(range.location, ranges_[i].location);
  }
  return count;
}

uint64_t NSIndexSet::indexGreaterThanOrEqualToIndex(uint64_t index) const {
  const size_t at = rangeAtOrAfter(index);
  return at == ranges_.size() ? NSNotFound : std::max(index, ranges_[at].location);
}
uint64_t NSIndexSet::indexGreaterThanIndex(uint64_t index) const {
  return index >= NSNotFound ? NSNotFound : indexGreaterThanOrEqualToIndex(index + 1);
}
uint64_t NSIndexSet::indexLessThanOrEqualToIndex(uint64_t index) const {
  const size_t at = rangeAtOrAfter(index);
  if (at < ranges_.size() && ranges_[at].location <= index) return index;
  return at ? NSMaxRange(ranges_[at - 1]) - 1 : NSNotFound;
}
uint64_t NSIndexSet::indexLessThanIndex(uint64_t index) const {
  return index ? indexLessThanOrEqualToIndex(index - 1) : NSNotFound;
}

// Walks, over a copy of the ranges: a callback may change a mutable set, and sees what was there before.

void NSIndexSet::enumerateIndexesUsingBlock(BlockRef<void(uint64_t, bool*)> action) const {
  enumerateIndexesWithOptions_usingBlock({}, action);
}

void NSIndexSet::enumerateIndexesWithOptions_usingBlock(NSEnumerationOptions options,
                                                        BlockRef<void(uint64_t, bool*)> action) const {
  std::vector<NSRange> given = ranges_;
  const bool reverse = options & NSEnumerationReverse;
  if (reverse) std::reverse(given.begin(), given.end());
  bool stop = false;
  for (const NSRange range : given) {
    for (uint64_t i = 0; i < range.length && !stop; ++i) {
      action(reverse ? NSMaxRange(range) - 1 - i : range.location + i, &stop);
    }
  }
}

void NSIndexSet::enumerateRangesUsingBlock(BlockRef<void(NSRange, bool*)> action) const {
  bool stop = false;
  for (const NSRange range : std::vector<NSRange>(ranges_)) {
    if (!stop) action(range, &stop);
  }
}

bool NSIndexSet::isEqual(const NSObject* other) const { return isEqualToIndexSet(as<const NSIndexSet>(other)); }
bool NSIndexSet::isEqualToIndexSet(const NSIndexSet* other) const { return other && ranges_ == other->ranges_; }
uint64_t NSIndexSet::hash() const { return count_ * 31 + (ranges_.empty() ? 0 : firstIndex() + lastIndex()); }

Ref<NSString> NSIndexSet::description() const {
  std::string text = detail::plainDescription(this) + "[number of indexes: " + std::to_string(count_) + " (in " +
                     std::to_string(ranges_.size()) + " ranges), indexes: (";
  const char* between = "";
  for (const NSRange range : ranges_) {
    text += between + std::to_string(range.location);
    if (range.length > 1) text += "-" + std::to_string(NSMaxRange(range) - 1);
    between = " ";
  }
  return NSString::stringWithUTF8(text + ")]");
}

Ref<NSObject> NSIndexSet::copyWithZone(NSZone*) const { return const_cast<NSIndexSet*>(this); }
Ref<NSObject> NSIndexSet::mutableCopyWithZone(NSZone*) const { return initWithIndexSet<NSMutableIndexSet>(this); }
Ref<NSIndexSet> NSIndexSet::copy() const { return cast<NSIndexSet>(copyWithZone(nullptr)); }
Ref<NSMutableIndexSet> NSIndexSet::mutableCopy() const { return cast<NSMutableIndexSet>(mutableCopyWithZone(nullptr)); }

// Changing

void NSMutableIndexSet::addIndexes(const NSIndexSet* others) {
  if (!others) return;
  const std::vector<NSRange> given(others->ranges().begin(), others->ranges().end());
  for (const NSRange range : given) add(range, "addIndexes:");
}

void NSMutableIndexSet::removeIndexes(const NSIndexSet* others) {
  if (!others) return;
  const std::vector<NSRange> given(others->ranges().begin(), others->ranges().end());
  for (const NSRange range : given) remove(range, "removeIndexes:");
}

void NSMutableIndexSet::removeAllIndexes() {
  ranges_.clear();
  count_ = 0;
}

Ref<NSObject> NSMutableIndexSet::copyWithZone(NSZone*) const { return initWithIndexSet<NSIndexSet>(this); }

}  // namespace quoll::inline v1
