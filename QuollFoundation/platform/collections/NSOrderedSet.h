// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "QuollFoundation/platform/collections/NSSet.h"

namespace quoll::inline v1 {

class NSMutableOrderedSet;

/// Objects in an order, each once, told apart by `isEqual:` and `hash`. Indices count from 0; one past the end raises
/// NSRangeException.
///
///     auto steps = NSOrderedSet::orderedSetWithObjects({"wash"_ns, "dry"_ns, "wash"_ns});   // two: wash, dry
///     uint64_t second = steps->indexOfObject("dry"_ns);                                     // 1, found by hash
///
/// A `copy` of an immutable one is itself. Null raises NSInvalidArgumentException, or ends a list that it is made from;
/// it is never found. A callback that changes it raises NSGenericException before the next element.
///
/// Lifetime: iterators are valid while it lives unchanged. Threads: immutable (NSMutableOrderedSet: caller-locked).
class QF_EXPORT NSOrderedSet : public NSObject {
  QF_CLASS(NSOrderedSet, NSObject)
 public:
  using ElementAction = NSArray::ElementAction;
  using ElementTest = NSArray::ElementTest;

  template <class T = NSOrderedSet> static Ref<T> orderedSet() { return cast<T>(orderedSet_ofClass(T::classObject())); }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithObject(const NSObject* object) {
    return cast<T>(orderedSetWithObject_ofClass(object, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithObjects(std::initializer_list<Element> objects) {
    return cast<T>(orderedSetWithObjects_ofClass(objects, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithObjects_count(NSObject* const* objects,
                                                                              uint64_t count) {
    return cast<T>(orderedSetWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithArray(const NSArray* array) {
    return cast<T>(orderedSetWithArray_ofClass(array, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithSet(const NSSet* set) {
    return cast<T>(orderedSetWithSet_ofClass(set, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> orderedSetWithOrderedSet(const NSOrderedSet* other) {
    return cast<T>(orderedSetWithOrderedSet_ofClass(other, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> initWithObjects_count(NSObject* const* objects, uint64_t count) {
    return cast<T>(initWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> initWithArray(const NSArray* array) {
    return cast<T>(initWithArray_ofClass(array, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> initWithSet(const NSSet* set) {
    return cast<T>(initWithSet_ofClass(set, T::classObject()));
  }
  template <class T = NSOrderedSet> static Ref<T> initWithOrderedSet(const NSOrderedSet* other) {
    return cast<T>(initWithOrderedSet_ofClass(other, T::classObject()));
  }
  static Ref<NSOrderedSet> orderedSet_ofClass(Class* cls);
  static Ref<NSOrderedSet> orderedSetWithObject_ofClass(const NSObject* object, Class* cls);
  static Ref<NSOrderedSet> orderedSetWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls);
  static Ref<NSOrderedSet> orderedSetWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSOrderedSet> orderedSetWithArray_ofClass(const NSArray* array, Class* cls);
  static Ref<NSOrderedSet> orderedSetWithSet_ofClass(const NSSet* set, Class* cls);
  static Ref<NSOrderedSet> orderedSetWithOrderedSet_ofClass(const NSOrderedSet* other, Class* cls);
  static Ref<NSOrderedSet> initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSOrderedSet> initWithArray_ofClass(const NSArray* array, Class* cls);
  static Ref<NSOrderedSet> initWithSet_ofClass(const NSSet* set, Class* cls);
  static Ref<NSOrderedSet> initWithOrderedSet_ofClass(const NSOrderedSet* other, Class* cls);

  // As a range of NSObject*
  using Iterator = NSSet::Iterator;
  Iterator begin() const { return {table_.begin(), table_.end(), watch()}; }
  Iterator end() const { return {table_.end(), table_.end(), watch()}; }
  size_t size() const { return table_.count(); }
  detail::Watch watch() const { return {this, &table_.mutations()}; }

  uint64_t count() const { return table_.count(); }
  Ref<NSObject> objectAtIndex(uint64_t index) const;
  Ref<NSObject> objectAtIndexedSubscript(uint64_t index) const { return objectAtIndex(index); }
  Ref<NSObject> firstObject() const;  ///< Null when empty.
  Ref<NSObject> lastObject() const;
  uint64_t indexOfObject(const NSObject* object) const;  ///< NSNotFound when absent.
  bool containsObject(const NSObject* object) const { return indexOfObject(object) != NSNotFound; }
  Ref<NSArray> objectsAtIndexes(const NSIndexSet* indexes) const;
  Ref<NSArray> array() const;
  Ref<NSSet> set() const;
  Ref<NSEnumerator> objectEnumerator() const;
  Ref<NSEnumerator> reverseObjectEnumerator() const;

  bool isEqualToOrderedSet(const NSOrderedSet* other) const;   ///< The same elements in the same order.
  bool isSubsetOfOrderedSet(const NSOrderedSet* other) const;  ///< In any order, as all of these.
  bool isSubsetOfSet(const NSSet* other) const;
  bool intersectsOrderedSet(const NSOrderedSet* other) const;
  bool intersectsSet(const NSSet* other) const;
  Ref<NSOrderedSet> reversedOrderedSet() const;
  Ref<NSArray> sortedArrayUsingComparator(NSComparator comparator) const;
  Ref<NSArray> sortedArrayUsingDescriptors(const NSArray* descriptors) const;

  void enumerateObjectsUsingBlock(ElementAction action) const;
  void enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options, ElementAction action) const;
  uint64_t indexOfObjectPassingTest(ElementTest test) const;
  Ref<NSIndexSet> indexesOfObjectsPassingTest(ElementTest test) const;
  Ref<NSIndexSet> indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const;
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;  ///< "{(\n    a,\n    b\n)}"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSOrderedSet> copy() const;
  Ref<NSMutableOrderedSet> mutableCopy() const;

  // Key-value coding: each key is asked of every element, into an ordered set. See CollectionCoding.cpp.
  Ref<NSObject> valueForKey(const NSString* key) const override;
  void setValue_forKey(NSObject* value, const NSString* key) override;
  Ref<NSObject> valueForKeyPath(const NSString* path) const override;

  ~NSOrderedSet() override;

 protected:
  NSOrderedSet() = default;

 private:
  friend class NSMutableOrderedSet;
  [[noreturn]] void raisePastEnd(std::string_view selector, uint64_t index) const;
  detail::EntryTable<detail::ElementEntry> table_;  // never with holes
};

}  // namespace quoll::inline v1
