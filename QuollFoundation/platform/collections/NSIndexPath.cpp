// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSIndexPath.h"

#include <algorithm>
#include <string>
#include <vector>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSIndexPath::classObject() {
  static Class* const cls =
      ClassBuilder<NSIndexPath>("NSIndexPath")
          .classMethod<&NSIndexPath::indexPathWithIndex_ofClass>("indexPathWithIndex:"_sel)
          .classMethod<&NSIndexPath::indexPathWithIndexes_length_ofClass>("indexPathWithIndexes:length:"_sel)
          .initializer<&NSIndexPath::initWithIndex_ofClass>("initWithIndex:"_sel)
          .initializer<&NSIndexPath::initWithIndexes_length_ofClass>("initWithIndexes:length:"_sel)
          .method<&NSIndexPath::length>("length"_sel)
          .method<&NSIndexPath::indexAtPosition>("indexAtPosition:"_sel)
          .method<&NSIndexPath::getIndexes>("getIndexes:"_sel)
          .method<&NSIndexPath::getIndexes_range>("getIndexes:range:"_sel)
          .method<&NSIndexPath::indexPathByAddingIndex>("indexPathByAddingIndex:"_sel)
          .method<&NSIndexPath::indexPathByRemovingLastIndex>("indexPathByRemovingLastIndex"_sel)
          .method<&NSIndexPath::compare>("compare:"_sel)
          .build();
  return cls;
}

NSIndexPath::~NSIndexPath() {
  if (indexes_ != reinterpret_cast<uint64_t*>(this + 1)) std::free(indexes_);
}

Ref<NSIndexPath> NSIndexPath::indexPathWithIndex_ofClass(uint64_t index, Class* cls) {
  if (cls == NSIndexPath::classObject()) return initWithIndex_ofClass(index, cls);
  return made<NSIndexPath>(cls, "initWithIndex:"_sel, index);
}
Ref<NSIndexPath> NSIndexPath::indexPathWithIndexes_length_ofClass(const uint64_t* indexes, uint64_t length,
                                                                  Class* cls) {
  if (cls == NSIndexPath::classObject()) return initWithIndexes_length_ofClass(indexes, length, cls);
  return made<NSIndexPath>(cls, "initWithIndexes:length:"_sel, indexes, length);
}
Ref<NSIndexPath> NSIndexPath::initWithIndex_ofClass(uint64_t index, Class* cls) {
  return initWithIndexes_length_ofClass(&index, 1, cls);
}

Ref<NSIndexPath> NSIndexPath::initWithIndexes_length_ofClass(const uint64_t* indexes, uint64_t length, Class* cls) {
  static_assert(sizeof(detail::Made<NSIndexPath>) == sizeof(NSIndexPath), "the indices stand directly behind a path");
  if (length > SIZE_MAX / 2 / sizeof(uint64_t)) raise(NSMallocException, "no memory for the indices of a path");
  if (length && !indexes) detail::raiseNilArgument(cls, "initWithIndexes:length:");
  Ref<NSIndexPath> path;
  if (cls == NSIndexPath::classObject()) {
    path = makeSized<NSIndexPath>(length * sizeof(uint64_t));
    path->indexes_ = reinterpret_cast<uint64_t*>(path.get() + 1);
  } else {
    path = create<NSIndexPath>(cls);
    if (length) path->indexes_ = detail::resized<uint64_t>(nullptr, length);
  }
  std::copy_n(indexes, length, path->indexes_);
  path->length_ = length;
  return path;
}

uint64_t NSIndexPath::indexAtPosition(uint64_t position) const {
  return position < length_ ? indexes_[position] : NSNotFound;
}
void NSIndexPath::getIndexes(uint64_t* indexes) const {
  if (length_ && !indexes) detail::raiseNilArgument(this, "getIndexes:");
  std::copy_n(indexes_, length_, indexes);
}
void NSIndexPath::getIndexes_range(uint64_t* indexes, NSRange range) const {
  if (!rangeFits(range, length_)) detail::raiseRange(this, "getIndexes:range:", range, length_);
  if (range.length && !indexes) detail::raiseNilArgument(this, "getIndexes:range:");
  std::copy_n(indexes_ + range.location, range.length, indexes);
}

Ref<NSIndexPath> NSIndexPath::indexPathByAddingIndex(uint64_t index) const {
  std::vector<uint64_t> longer(indexes_, indexes_ + length_);
  longer.push_back(index);
  return indexPathWithIndexes_length(longer.data(), longer.size());
}
Ref<NSIndexPath> NSIndexPath::indexPathByRemovingLastIndex() const {
  return indexPathWithIndexes_length(indexes_, length_ ? length_ - 1 : 0);
}

NSComparisonResult NSIndexPath::compare(const NSIndexPath* other) const {
  if (!other) return NSOrderedDescending;
  for (uint64_t i = 0; i < std::min(length_, other->length_); ++i) {
    if (indexes_[i] != other->indexes_[i]) return compareValues(indexes_[i], other->indexes_[i]);
  }
  return compareValues(length_, other->length_);
}

bool NSIndexPath::isEqual(const NSObject* other) const {
  auto* path = as<const NSIndexPath>(other);
  return path && std::ranges::equal(indexes(), path->indexes());
}

uint64_t NSIndexPath::hash() const {
  uint64_t hash = length_;
  for (const uint64_t index : indexes()) hash = hash * 31 + index;
  return hash;
}

Ref<NSString> NSIndexPath::description() const {
  std::string text = detail::plainDescription(this) + " {length = " + std::to_string(length_) + ", path = ";
  const char* between = "";
  for (const uint64_t index : indexes()) {
    text += between + std::to_string(index);
    between = " - ";
  }
  return NSString::stringWithUTF8(text + "}");
}

Ref<NSObject> NSIndexPath::copyWithZone(NSZone*) const { return const_cast<NSIndexPath*>(this); }

}  // namespace quoll::inline v1
