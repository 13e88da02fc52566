// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

namespace detail {
struct ArrayAccess;
}

/// An array that can be changed. `copy` gives an immutable one.
class QF_EXPORT NSMutableArray : public NSArray {
  QF_CLASS(NSMutableArray, NSArray)
 public:
  template <class T = NSMutableArray> static Ref<T> array() { return NSArray::array<T>(); }
  template <class T = NSMutableArray> static Ref<T> arrayWithObject(const NSObject* object) {
    return NSArray::arrayWithObject<T>(object);
  }
  template <class T = NSMutableArray> static Ref<T> arrayWithObjects(std::initializer_list<Element> objects) {
    return NSArray::arrayWithObjects<T>(objects);
  }
  template <class T = NSMutableArray> static Ref<T> arrayWithArray(const NSArray* other) {
    return NSArray::arrayWithArray<T>(other);
  }
  template <class T = NSMutableArray> static Ref<T> initWithArray(const NSArray* other) {
    return NSArray::initWithArray<T>(other);
  }
  /// Room for so many; it grows as needed all the same.
  template <class T = NSMutableArray> static Ref<T> arrayWithCapacity(uint64_t capacity) {
    return cast<T>(arrayWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableArray> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableArray> arrayWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableArray> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  void addObject(const NSObject* object);
  void addObjectsFromArray(const NSArray* other);  ///< Null adds nothing.
  void insertObject_atIndex(const NSObject* object, uint64_t index);
  void insertObjects_atIndexes(const NSArray* objects, const NSIndexSet* indexes);
  void removeObjectAtIndex(uint64_t index);
  void removeLastObject();  ///< An empty array raises NSRangeException.
  void replaceObjectAtIndex_withObject(uint64_t index, const NSObject* object);
  void setObject_atIndexedSubscript(const NSObject* object, uint64_t index);  ///< At the count: appends.
  void exchangeObjectAtIndex_withObjectAtIndex(uint64_t first, uint64_t second);
  void replaceObjectsInRange_withObjectsFromArray(NSRange range, const NSArray* objects);

  // By `isEqual:` of the object that is given, all occurrences; null and absent objects remove nothing.
  void removeObject(const NSObject* object);
  void removeObject_inRange(const NSObject* object, NSRange range);
  void removeObjectIdenticalTo(const NSObject* object);
  void removeObjectsInArray(const NSArray* others);
  void removeObjectsInRange(NSRange range);
  void removeObjectsAtIndexes(const NSIndexSet* indexes);
  void removeAllObjects();
  void setArray(const NSArray* other);

  // Stable. A comparator that changes the array raises NSGenericException; one that raises leaves it as it was.
  void sortUsingComparator(NSComparator comparator);
  void sortUsingSelector(Selector comparison);
  void sortUsingFunction_context(NSComparisonResult (*compare)(NSObject*, NSObject*, void*), void* context);
  void sortUsingDescriptors(const NSArray* descriptors);

  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableArray() = default;

 private:
  friend struct detail::ArrayAccess;
  void takeItems(void** items, uint64_t count) override;
  void reorder(const NSArray* sorted, uint64_t mutations);
  template <class Removes> void removeWhere(NSRange range, Removes removes);

  uint64_t capacity_ = 0;
};

}  // namespace quoll::inline v1
