// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/collections/CFArray.h"
#include "QuollFoundation/platform/collections/Element.h"
#include "QuollFoundation/platform/collections/Elements.h"

namespace quoll::inline v1 {

namespace detail {
struct ArrayAccess;
}
class NSEnumerator;
class NSIndexSet;
class NSMutableArray;

using NSComparator = BlockRef<NSComparisonResult(NSObject* a, NSObject* b)>;

/// Objects in an order. Indices count from 0; one past the end raises NSRangeException.
///
///     auto list = NSArray::arrayWithObjects({"one"_ns, 2, 3.5});         // plain values are boxed
///     for (NSObject* each : *list) std::cout << each << '\n';
///     for (NSString* name : elements<NSString>(names)) ...               // as their own class
///
/// An immutable array holds its objects in place. A `copy` of it is itself. Elements are held and never null: null
/// raises NSInvalidArgumentException, or ends a list that the array is made from. A callback that changes the array
/// raises NSGenericException before the next element.
///
/// Lifetime: iterators are valid while the array lives unchanged. Threads: immutable (NSMutableArray: caller-locked).
class QF_EXPORT NSArray : public CFArray {
  QF_CLASS(NSArray, CFArray)
 public:
  using ElementAction = BlockRef<void(NSObject* element, uint64_t index, bool* stop)>;
  using ElementTest = BlockRef<bool(NSObject* element, uint64_t index, bool* stop)>;

  // Making arrays
  template <class T = NSArray> static Ref<T> array() { return cast<T>(array_ofClass(T::classObject())); }
  template <class T = NSArray> static Ref<T> arrayWithObject(const NSObject* object) {
    return cast<T>(arrayWithObject_ofClass(object, T::classObject()));
  }
  template <class T = NSArray> static Ref<T> arrayWithObjects(std::initializer_list<Element> objects) {
    return cast<T>(arrayWithObjects_ofClass(objects, T::classObject()));
  }
  template <class T = NSArray> static Ref<T> arrayWithObjects_count(NSObject* const* objects, uint64_t count) {
    return cast<T>(arrayWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSArray> static Ref<T> arrayWithArray(const NSArray* other) {
    return cast<T>(arrayWithArray_ofClass(other, T::classObject()));
  }
  template <class T = NSArray> static Ref<T> initWithObjects_count(NSObject* const* objects, uint64_t count) {
    return cast<T>(initWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSArray> static Ref<T> initWithArray(const NSArray* other) {
    return cast<T>(initWithArray_ofClass(other, T::classObject()));
  }
  /// A copy of each element, by its `copyWithZone:`.
  template <class T = NSArray> static Ref<T> initWithArray_copyItems(const NSArray* other, bool copyItems) {
    return cast<T>(initWithArray_copyItems_ofClass(other, copyItems, T::classObject()));
  }

  static Ref<NSArray> array_ofClass(Class* cls);
  static Ref<NSArray> arrayWithObject_ofClass(const NSObject* object, Class* cls);
  static Ref<NSArray> arrayWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls);
  static Ref<NSArray> arrayWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSArray> arrayWithArray_ofClass(const NSArray* other, Class* cls);
  static Ref<NSArray> initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSArray> initWithArray_ofClass(const NSArray* other, Class* cls);
  static Ref<NSArray> initWithArray_copyItems_ofClass(const NSArray* other, bool copyItems, Class* cls);

  // As a range of NSObject*
  ArrayIterator begin() const { return {items_, detail::Watch(this, &mutations_)}; }
  ArrayIterator end() const { return {items_ + count_, detail::Watch(this, &mutations_)}; }
  size_t size() const { return count_; }

  // Elements
  uint64_t count() const { return count_; }
  Ref<NSObject> objectAtIndex(uint64_t index) const {
    if (index >= count_) [[unlikely]]
      raisePastEnd("objectAtIndex:", index);
    return static_cast<NSObject*>(items_[index]);
  }
  Ref<NSObject> objectAtIndexedSubscript(uint64_t index) const { return objectAtIndex(index); }
  Ref<NSObject> firstObject() const { return count_ ? static_cast<NSObject*>(items_[0]) : nullptr; }  ///< Null: empty.
  Ref<NSObject> lastObject() const { return count_ ? static_cast<NSObject*>(items_[count_ - 1]) : nullptr; }
  void getObjects_range(NSObject** objects, NSRange range) const;  ///< Borrowed.
  Ref<NSArray> objectsAtIndexes(const NSIndexSet* indexes) const;

  // Search, by `isEqual:` of the object that is looked for. NSNotFound when absent; null is always absent.
  bool containsObject(const NSObject* object) const { return indexOfObject(object) != NSNotFound; }
  uint64_t indexOfObject(const NSObject* object) const;
  uint64_t indexOfObject_inRange(const NSObject* object, NSRange range) const;
  uint64_t indexOfObjectIdenticalTo(const NSObject* object) const;
  uint64_t indexOfObjectIdenticalTo_inRange(const NSObject* object, NSRange range) const;
  uint64_t indexOfObjectPassingTest(ElementTest test) const;
  uint64_t indexOfObjectWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const;
  Ref<NSIndexSet> indexesOfObjectsPassingTest(ElementTest test) const;
  Ref<NSIndexSet> indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const;
  Ref<NSObject> firstObjectCommonWithArray(const NSArray* other) const;

  // Other arrays made from this one
  Ref<NSArray> subarrayWithRange(NSRange range) const;
  Ref<NSArray> arrayByAddingObject(const NSObject* object) const;
  Ref<NSArray> arrayByAddingObjectsFromArray(const NSArray* other) const;

  // Sorted. Stable; a comparator that contradicts itself gives some order.
  Ref<NSArray> sortedArrayUsingComparator(NSComparator comparator) const;
  Ref<NSArray> sortedArrayUsingSelector(Selector comparison) const;  ///< Sent to one element with another.
  Ref<NSArray> sortedArrayUsingFunction_context(NSComparisonResult (*compare)(NSObject*, NSObject*, void*),
                                                void* context) const;
  Ref<NSArray> sortedArrayUsingDescriptors(const NSArray* descriptors) const;

  // Walks
  void enumerateObjectsUsingBlock(ElementAction action) const;
  void enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options, ElementAction action) const;
  void makeObjectsPerformSelector(Selector selector) const;
  void makeObjectsPerformSelector_withObject(Selector selector, NSObject* argument) const;
  Ref<NSEnumerator> objectEnumerator() const;
  Ref<NSEnumerator> reverseObjectEnumerator() const;
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

  // Text
  Ref<NSString> componentsJoinedByString(const NSString* separator) const;  ///< Of the descriptions.
  Ref<NSString> description() const override;                               ///< "(\n    a,\n    b\n)"

  bool isEqual(const NSObject* other) const override;
  bool isEqualToArray(const NSArray* other) const;
  uint64_t hash() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSArray> copy() const;
  Ref<NSMutableArray> mutableCopy() const;

  // Key-value coding: each key is asked of every element; null becomes NSNull. See CollectionCoding.cpp.
  Ref<NSObject> valueForKey(const NSString* key) const override;
  void setValue_forKey(NSObject* value, const NSString* key) override;
  Ref<NSObject> valueForKeyPath(const NSString* path) const override;

  ~NSArray() override;

 protected:
  NSArray() = default;
  explicit NSArray(uint64_t count) : CFArray(reinterpret_cast<void**>(this + 1), count) {}

 private:
  friend class NSMutableArray;
  friend struct detail::ArrayAccess;
  [[noreturn]] void raisePastEnd(std::string_view selector, uint64_t index) const;
  void checkRange(std::string_view selector, NSRange range) const;
  static Ref<NSArray> holding(NSObject* const* objects, uint64_t count, Class* cls, std::string_view selector);
  virtual void takeItems(void** items, uint64_t count);
};

}  // namespace quoll::inline v1
