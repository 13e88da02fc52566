// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "QuollFoundation/platform/collections/Element.h"
#include "QuollFoundation/platform/collections/Elements.h"
#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

class NSMutableSet;

/// Objects, each once, told apart by `isEqual:` and `hash`; in the order in which they were added.
///
///     auto colours = NSSet::setWithObjects({"red"_ns, "green"_ns, "red"_ns});   // two
///     for (NSString* colour : elements<NSString>(colours)) ...
///
/// A `copy` of an immutable set is itself. Null raises NSInvalidArgumentException, or ends a list that the set is made
/// from; it is never found. A callback that changes the set raises NSGenericException before the next element.
///
/// Lifetime: iterators are valid while the set lives unchanged. Threads: immutable (NSMutableSet: caller-locked).
class QF_EXPORT NSSet : public NSObject {
  QF_CLASS(NSSet, NSObject)
 public:
  using ElementAction = BlockRef<void(NSObject* element, bool* stop)>;
  using ElementTest = BlockRef<bool(NSObject* element, bool* stop)>;

  template <class T = NSSet> static Ref<T> set() { return cast<T>(set_ofClass(T::classObject())); }
  template <class T = NSSet> static Ref<T> setWithObject(const NSObject* object) {
    return cast<T>(setWithObject_ofClass(object, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> setWithObjects(std::initializer_list<Element> objects) {
    return cast<T>(setWithObjects_ofClass(objects, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> setWithObjects_count(NSObject* const* objects, uint64_t count) {
    return cast<T>(setWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> setWithArray(const NSArray* array) {
    return cast<T>(setWithArray_ofClass(array, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> setWithSet(const NSSet* other) {
    return cast<T>(setWithSet_ofClass(other, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> initWithObjects_count(NSObject* const* objects, uint64_t count) {
    return cast<T>(initWithObjects_count_ofClass(objects, count, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> initWithArray(const NSArray* array) {
    return cast<T>(initWithArray_ofClass(array, T::classObject()));
  }
  template <class T = NSSet> static Ref<T> initWithSet(const NSSet* other) {
    return cast<T>(initWithSet_ofClass(other, T::classObject()));
  }
  /// A copy of each element, by its `copyWithZone:`.
  template <class T = NSSet> static Ref<T> initWithSet_copyItems(const NSSet* other, bool copyItems) {
    return cast<T>(initWithSet_copyItems_ofClass(other, copyItems, T::classObject()));
  }
  static Ref<NSSet> set_ofClass(Class* cls);
  static Ref<NSSet> setWithObject_ofClass(const NSObject* object, Class* cls);
  static Ref<NSSet> setWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls);
  static Ref<NSSet> setWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSSet> setWithArray_ofClass(const NSArray* array, Class* cls);
  static Ref<NSSet> setWithSet_ofClass(const NSSet* other, Class* cls);
  static Ref<NSSet> initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls);
  static Ref<NSSet> initWithArray_ofClass(const NSArray* array, Class* cls);
  static Ref<NSSet> initWithSet_ofClass(const NSSet* other, Class* cls);
  static Ref<NSSet> initWithSet_copyItems_ofClass(const NSSet* other, bool copyItems, Class* cls);

  // As a range of NSObject*
  using Iterator = detail::TableIterator<detail::ElementEntry>;
  Iterator begin() const { return {table_.begin(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  Iterator end() const { return {table_.end(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  size_t size() const { return table_.count(); }

  uint64_t count() const { return table_.count(); }
  Ref<NSObject> member(const NSObject* object) const;  ///< The element that equals it, or null.
  bool containsObject(const NSObject* object) const;
  Ref<NSObject> anyObject() const;  ///< Null when empty.
  Ref<NSArray> allObjects() const;
  Ref<NSEnumerator> objectEnumerator() const;

  bool isEqualToSet(const NSSet* other) const;
  bool isSubsetOfSet(const NSSet* other) const;  ///< Of itself too.
  bool intersectsSet(const NSSet* other) const;
  Ref<NSSet> setByAddingObject(const NSObject* object) const;
  Ref<NSSet> setByAddingObjectsFromSet(const NSSet* other) const;
  Ref<NSSet> setByAddingObjectsFromArray(const NSArray* other) const;
  Ref<NSArray> sortedArrayUsingDescriptors(const NSArray* descriptors) const;

  void enumerateObjectsUsingBlock(ElementAction action) const;
  void enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options, ElementAction action) const;
  Ref<NSSet> objectsPassingTest(ElementTest test) const;
  Ref<NSSet> objectsWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const;
  void makeObjectsPerformSelector(Selector selector) const;
  void makeObjectsPerformSelector_withObject(Selector selector, NSObject* argument) const;
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;  ///< "{(\n    a,\n    b\n)}"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSSet> copy() const;
  Ref<NSMutableSet> mutableCopy() const;

  // Key-value coding: each key is asked of every element, into a set. See CollectionCoding.cpp.
  Ref<NSObject> valueForKey(const NSString* key) const override;
  void setValue_forKey(NSObject* value, const NSString* key) override;
  Ref<NSObject> valueForKeyPath(const NSString* path) const override;

  ~NSSet() override;

 protected:
  NSSet() = default;

 private:
  friend class NSMutableSet;
  friend class NSOrderedSet;
  friend class NSMutableOrderedSet;
  detail::EntryTable<detail::ElementEntry> table_;
};

}  // namespace quoll::inline v1
