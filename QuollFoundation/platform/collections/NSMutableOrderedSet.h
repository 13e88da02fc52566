// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSOrderedSet.h"

namespace quoll::inline v1 {

/// An ordered set that can be changed. `copy` gives an immutable one. Adding at the end and removing the last element
/// are quick; elsewhere the later elements move.
class QF_EXPORT NSMutableOrderedSet : public NSOrderedSet {
  QF_CLASS(NSMutableOrderedSet, NSOrderedSet)
 public:
  template <class T = NSMutableOrderedSet> static Ref<T> orderedSet() { return NSOrderedSet::orderedSet<T>(); }
  template <class T = NSMutableOrderedSet> static Ref<T> orderedSetWithObjects(std::initializer_list<Element> objects) {
    return NSOrderedSet::orderedSetWithObjects<T>(objects);
  }
  template <class T = NSMutableOrderedSet> static Ref<T> orderedSetWithArray(const NSArray* array) {
    return NSOrderedSet::orderedSetWithArray<T>(array);
  }
  template <class T = NSMutableOrderedSet> static Ref<T> initWithOrderedSet(const NSOrderedSet* other) {
    return NSOrderedSet::initWithOrderedSet<T>(other);
  }
  template <class T = NSMutableOrderedSet> static Ref<T> orderedSetWithCapacity(uint64_t capacity) {
    return cast<T>(orderedSetWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableOrderedSet> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableOrderedSet> orderedSetWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableOrderedSet> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  // An object that equals an element is not added or inserted: the element stays where it is.
  void addObject(const NSObject* object);
  void addObjectsFromArray(const NSArray* array);
  void insertObject_atIndex(const NSObject* object, uint64_t index);
  /// In place of another; where an equal element stands elsewhere, nothing happens.
  void replaceObjectAtIndex_withObject(uint64_t index, const NSObject* object);
  void setObject_atIndex(const NSObject* object, uint64_t index);  ///< At the count: adds.
  void exchangeObjectAtIndex_withObjectAtIndex(uint64_t first, uint64_t second);

  void removeObject(const NSObject* object);
  void removeObjectAtIndex(uint64_t index);
  void removeObjectsInArray(const NSArray* array);
  void removeObjectsAtIndexes(const NSIndexSet* indexes);
  void removeAllObjects();

  void unionOrderedSet(const NSOrderedSet* other);  ///< The others follow, in their order.
  void minusOrderedSet(const NSOrderedSet* other);
  void intersectOrderedSet(const NSOrderedSet* other);  ///< Null is the empty set.
  void unionSet(const NSSet* other);
  void minusSet(const NSSet* other);
  void intersectSet(const NSSet* other);

  void sortUsingComparator(NSComparator comparator);
  void sortUsingDescriptors(const NSArray* descriptors);

  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableOrderedSet() = default;

 private:
  void reorder(const NSArray* sorted, uint64_t mutations);
};

}  // namespace quoll::inline v1
