// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSDictionary.h"

namespace quoll::inline v1 {

/// A dictionary that can be changed. `copy` gives an immutable one.
///
///     auto seen = NSMutableDictionary::dictionary();
///     seen->setObject_forKey(box(3), "apples"_ns);
class QF_EXPORT NSMutableDictionary : public NSDictionary {
  QF_CLASS(NSMutableDictionary, NSDictionary)
 public:
  template <class T = NSMutableDictionary> static Ref<T> dictionary() { return NSDictionary::dictionary<T>(); }
  template <class T = NSMutableDictionary> static Ref<T> dictionaryWithEntries(EntryList entries) {
    return NSDictionary::dictionaryWithEntries<T>(entries);
  }
  template <class T = NSMutableDictionary> static Ref<T> dictionaryWithDictionary(const NSDictionary* other) {
    return NSDictionary::dictionaryWithDictionary<T>(other);
  }
  template <class T = NSMutableDictionary> static Ref<T> initWithDictionary(const NSDictionary* other) {
    return NSDictionary::initWithDictionary<T>(other);
  }
  /// Room for so many; it grows as needed all the same.
  template <class T = NSMutableDictionary> static Ref<T> dictionaryWithCapacity(uint64_t capacity) {
    return cast<T>(dictionaryWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableDictionary> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableDictionary> dictionaryWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableDictionary> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  void setObject_forKey(const NSObject* object, const NSObject* key);             ///< A present key keeps its place.
  void setObject_forKeyedSubscript(const NSObject* object, const NSObject* key);  ///< A null object removes the key.
  void removeObjectForKey(const NSObject* key);  ///< An absent key removes nothing; null raises.
  void removeObjectsForKeys(const NSArray* keys);
  void removeAllObjects();
  void addEntriesFromDictionary(const NSDictionary* other);
  void setDictionary(const NSDictionary* other);

  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  void setValue_forKey(NSObject* value, const NSString* key) override;  ///< Null removes the key.

 protected:
  NSMutableDictionary() = default;
};

}  // namespace quoll::inline v1
