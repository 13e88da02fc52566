// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSSet.h"

namespace quoll::inline v1 {

/// A set that can be changed. `copy` gives an immutable one.
///
///     auto seen = NSMutableSet::set();
///     seen->addObject("apple"_ns);
class QF_EXPORT NSMutableSet : public NSSet {
  QF_CLASS(NSMutableSet, NSSet)
 public:
  template <class T = NSMutableSet> static Ref<T> set() { return NSSet::set<T>(); }
  template <class T = NSMutableSet> static Ref<T> setWithObject(const NSObject* object) {
    return NSSet::setWithObject<T>(object);
  }
  template <class T = NSMutableSet> static Ref<T> setWithObjects(std::initializer_list<Element> objects) {
    return NSSet::setWithObjects<T>(objects);
  }
  template <class T = NSMutableSet> static Ref<T> setWithArray(const NSArray* array) {
    return NSSet::setWithArray<T>(array);
  }
  template <class T = NSMutableSet> static Ref<T> setWithSet(const NSSet* other) { return NSSet::setWithSet<T>(other); }
  template <class T = NSMutableSet> static Ref<T> initWithSet(const NSSet* other) {
    return NSSet::initWithSet<T>(other);
  }
  template <class T = NSMutableSet> static Ref<T> setWithCapacity(uint64_t capacity) {
    return cast<T>(setWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableSet> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableSet> setWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableSet> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  void addObject(const NSObject* object);  ///< An equal element stays instead.
  void addObjectsFromArray(const NSArray* array);
  void removeObject(const NSObject* object);  ///< An absent object or null removes nothing.
  void removeAllObjects();
  void unionSet(const NSSet* other);
  void minusSet(const NSSet* other);
  void intersectSet(const NSSet* other);  ///< Null is the empty set.
  void setSet(const NSSet* other);

  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableSet() = default;
};

}  // namespace quoll::inline v1
