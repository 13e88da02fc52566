// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

class NSMutableIndexSet;

/// Indices below NSNotFound, each once, in rising order; kept as ranges. One that is NSNotFound or above raises
/// NSRangeException.
///
///     auto odd = list->indexesOfObjectsPassingTest([](NSObject*, uint64_t i, bool*) { return i % 2 == 1; });
///     for (uint64_t i = odd->firstIndex(); i != NSNotFound; i = odd->indexGreaterThanIndex(i)) ...
///
/// Threads: immutable (NSMutableIndexSet: caller-locked).
class QF_EXPORT NSIndexSet : public NSObject {
  QF_CLASS(NSIndexSet, NSObject)
 public:
  template <class T = NSIndexSet> static Ref<T> indexSet() { return cast<T>(indexSet_ofClass(T::classObject())); }
  template <class T = NSIndexSet> static Ref<T> indexSetWithIndex(uint64_t index) {
    return cast<T>(indexSetWithIndex_ofClass(index, T::classObject()));
  }
  template <class T = NSIndexSet> static Ref<T> indexSetWithIndexesInRange(NSRange range) {
    return cast<T>(indexSetWithIndexesInRange_ofClass(range, T::classObject()));
  }
  template <class T = NSIndexSet> static Ref<T> initWithIndex(uint64_t index) {
    return cast<T>(initWithIndex_ofClass(index, T::classObject()));
  }
  template <class T = NSIndexSet> static Ref<T> initWithIndexesInRange(NSRange range) {
    return cast<T>(initWithIndexesInRange_ofClass(range, T::classObject()));
  }
  template <class T = NSIndexSet> static Ref<T> initWithIndexSet(const NSIndexSet* other) {
    return cast<T>(initWithIndexSet_ofClass(other, T::classObject()));
  }
  static Ref<NSIndexSet> indexSet_ofClass(Class* cls);
  static Ref<NSIndexSet> indexSetWithIndex_ofClass(uint64_t index, Class* cls);
  static Ref<NSIndexSet> indexSetWithIndexesInRange_ofClass(NSRange range, Class* cls);
  static Ref<NSIndexSet> initWithIndex_ofClass(uint64_t index, Class* cls);
  static Ref<NSIndexSet> initWithIndexesInRange_ofClass(NSRange range, Class* cls);
  static Ref<NSIndexSet> initWithIndexSet_ofClass(const NSIndexSet* other, Class* cls);

  uint64_t count() const { return count_; }
  uint64_t firstIndex() const { return ranges_.empty() ? NSNotFound : ranges_.front().location; }
  uint64_t lastIndex() const { return ranges_.empty() ? NSNotFound : NSMaxRange(ranges_.back()) - 1; }
  bool containsIndex(uint64_t index) const;
  bool containsIndexesInRange(NSRange range) const;  ///< All of them; an empty range gives false.
  bool containsIndexes(const NSIndexSet* others) const;
  bool intersectsIndexesInRange(NSRange range) const;
  uint64_t countOfIndexesInRange(NSRange range) const;
  // The nearest index in the set, or NSNotFound.
  uint64_t indexGreaterThanIndex(uint64_t index) const;
  uint64_t indexGreaterThanOrEqualToIndex(uint64_t index) const;
  uint64_t indexLessThanIndex(uint64_t index) const;
  uint64_t indexLessThanOrEqualToIndex(uint64_t index) const;

  void enumerateIndexesUsingBlock(BlockRef<void(uint64_t index, bool* stop)> action) const;
  void enumerateIndexesWithOptions_usingBlock(NSEnumerationOptions options,
                                              BlockRef<void(uint64_t index, bool* stop)> action) const;
  void enumerateRangesUsingBlock(BlockRef<void(NSRange range, bool* stop)> action) const;
  std::span<const NSRange> ranges() const { return ranges_; }  ///< Rising, with gaps between them.

  bool isEqual(const NSObject* other) const override;
  bool isEqualToIndexSet(const NSIndexSet* other) const;
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSIndexSet> copy() const;
  Ref<NSMutableIndexSet> mutableCopy() const;

 protected:
  NSIndexSet() = default;
  void add(NSRange range, std::string_view selector);
  void remove(NSRange range, std::string_view selector);

 private:
  void checkRange(NSRange range, std::string_view selector) const;
  size_t rangeAtOrAfter(uint64_t index) const;

 protected:
  std::vector<NSRange> ranges_;
  uint64_t count_ = 0;
};

/// An index set that can be changed. `copy` gives an immutable one.
class QF_EXPORT NSMutableIndexSet : public NSIndexSet {
  QF_CLASS(NSMutableIndexSet, NSIndexSet)
 public:
  void addIndex(uint64_t index) { add({index, 1}, "addIndex:"); }
  void addIndexesInRange(NSRange range) { add(range, "addIndexesInRange:"); }
  void addIndexes(const NSIndexSet* others);
  void removeIndex(uint64_t index) { remove({index, 1}, "removeIndex:"); }
  void removeIndexesInRange(NSRange range) { remove(range, "removeIndexesInRange:"); }
  void removeIndexes(const NSIndexSet* others);
  void removeAllIndexes();
  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableIndexSet() = default;
};

}  // namespace quoll::inline v1
