// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <utility>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/collections/CFDictionary.h"
#include "QuollFoundation/platform/collections/Element.h"
#include "QuollFoundation/platform/collections/Elements.h"
#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

class NSMutableDictionary;
class NSSet;

/// Values under keys. Keys are told apart by `isEqual:` and `hash`, and copied; their order is that in which they were
/// added first.
///
///     auto ages = NSDictionary::dictionaryWithEntries({{"Ann"_ns, 31}, {"Bo"_ns, 28}});   // plain values are boxed
///     for (auto [name, age] : *ages) std::cout << name << ": " << age << '\n';
///     int64_t age = cast<NSNumber>(ages->objectForKey("Ann"_ns))->integerValue();
///
/// A `copy` of an immutable dictionary is itself. Null as a key or a value raises NSInvalidArgumentException; a null
/// key is never found. A walk for fast enumeration gives the keys. A callback that changes the dictionary raises
/// NSGenericException before the next entry.
///
/// Lifetime: iterators are valid while the dictionary lives unchanged. Threads: immutable (NSMutableDictionary:
/// caller-locked).
class QF_EXPORT NSDictionary : public CFDictionary {
  QF_CLASS(NSDictionary, CFDictionary)
 public:
  using EntryAction = BlockRef<void(NSObject* key, NSObject* value, bool* stop)>;
  using EntryTest = BlockRef<bool(NSObject* key, NSObject* value, bool* stop)>;
  using EntryList = std::initializer_list<std::pair<Element, Element>>;

  // Making dictionaries. Of equal keys, the first keeps its place and the last gives the value.
  template <class T = NSDictionary> static Ref<T> dictionary() { return cast<T>(dictionary_ofClass(T::classObject())); }
  template <class T = NSDictionary> static Ref<T> dictionaryWithObject_forKey(const NSObject* object,
                                                                              const NSObject* key) {
    return cast<T>(dictionaryWithObject_forKey_ofClass(object, key, T::classObject()));
  }
  /// Arrays of different counts raise NSInvalidArgumentException.
  template <class T = NSDictionary> static Ref<T> dictionaryWithObjects_forKeys(const NSArray* objects,
                                                                                const NSArray* keys) {
    return cast<T>(dictionaryWithObjects_forKeys_ofClass(objects, keys, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> dictionaryWithObjects_forKeys_count(NSObject* const* objects,
                                                                                      NSObject* const* keys,
                                                                                      uint64_t count) {
    return cast<T>(dictionaryWithObjects_forKeys_count_ofClass(objects, keys, count, T::classObject()));
  }
  /// A value, its key, a value, its key, and so on; the list ends where a value is null. An odd number raises.
  template <class T = NSDictionary> static Ref<T> dictionaryWithObjectsAndKeys(std::initializer_list<Element> list) {
    return cast<T>(dictionaryWithObjectsAndKeys_ofClass(list, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> dictionaryWithEntries(EntryList entries) {
    return cast<T>(dictionaryWithEntries_ofClass(entries, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> dictionaryWithDictionary(const NSDictionary* other) {
    return cast<T>(dictionaryWithDictionary_ofClass(other, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> initWithObjects_forKeys(const NSArray* objects, const NSArray* keys) {
    return cast<T>(initWithObjects_forKeys_ofClass(objects, keys, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> initWithObjects_forKeys_count(NSObject* const* objects,
                                                                                NSObject* const* keys, uint64_t count) {
    return cast<T>(initWithObjects_forKeys_count_ofClass(objects, keys, count, T::classObject()));
  }
  template <class T = NSDictionary> static Ref<T> initWithDictionary(const NSDictionary* other) {
    return cast<T>(initWithDictionary_ofClass(other, T::classObject()));
  }
  /// A copy of each value, by its `copyWithZone:`.
  template <class T = NSDictionary> static Ref<T> initWithDictionary_copyItems(const NSDictionary* other,
                                                                               bool copyItems) {
    return cast<T>(initWithDictionary_copyItems_ofClass(other, copyItems, T::classObject()));
  }

  static Ref<NSDictionary> dictionary_ofClass(Class* cls);
  static Ref<NSDictionary> dictionaryWithObject_forKey_ofClass(const NSObject* object, const NSObject* key, Class* cls);
  static Ref<NSDictionary> dictionaryWithObjects_forKeys_ofClass(const NSArray* objects, const NSArray* keys,
                                                                 Class* cls);
  static Ref<NSDictionary> dictionaryWithObjects_forKeys_count_ofClass(NSObject* const* objects, NSObject* const* keys,
                                                                       uint64_t count, Class* cls);
  static Ref<NSDictionary> dictionaryWithObjectsAndKeys_ofClass(std::initializer_list<Element> list, Class* cls);
  static Ref<NSDictionary> dictionaryWithEntries_ofClass(EntryList entries, Class* cls);
  static Ref<NSDictionary> dictionaryWithDictionary_ofClass(const NSDictionary* other, Class* cls);
  static Ref<NSDictionary> initWithObjects_forKeys_ofClass(const NSArray* objects, const NSArray* keys, Class* cls);
  static Ref<NSDictionary> initWithObjects_forKeys_count_ofClass(NSObject* const* objects, NSObject* const* keys,
                                                                 uint64_t count, Class* cls);
  static Ref<NSDictionary> initWithDictionary_ofClass(const NSDictionary* other, Class* cls);
  static Ref<NSDictionary> initWithDictionary_copyItems_ofClass(const NSDictionary* other, bool copyItems, Class* cls);

  // As a range of DictionaryEntry
  using Iterator = detail::TableIterator<detail::PairEntry>;
  Iterator begin() const { return {table_.begin(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  Iterator end() const { return {table_.end(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  size_t size() const { return table_.count(); }

  // Entries
  uint64_t count() const { return table_.count(); }
  Ref<NSObject> objectForKey(const NSObject* key) const;  ///< Null when absent.
  Ref<NSObject> objectForKeyedSubscript(const NSObject* key) const { return objectForKey(key); }
  Ref<NSArray> allKeys() const;
  Ref<NSArray> allValues() const;
  Ref<NSArray> allKeysForObject(const NSObject* object) const;
  Ref<NSArray> objectsForKeys_notFoundMarker(const NSArray* keys, NSObject* marker) const;
  Ref<NSArray> keysSortedByValueUsingSelector(Selector comparison) const;
  Ref<NSArray> keysSortedByValueUsingComparator(NSComparator comparator) const;
  Ref<NSEnumerator> keyEnumerator() const;
  Ref<NSEnumerator> objectEnumerator() const;

  // Walks
  void enumerateKeysAndObjectsUsingBlock(EntryAction action) const;
  void enumerateKeysAndObjectsWithOptions_usingBlock(NSEnumerationOptions options, EntryAction action) const;
  Ref<NSSet> keysOfEntriesPassingTest(EntryTest test) const;
  Ref<NSSet> keysOfEntriesWithOptions_passingTest(NSEnumerationOptions options, EntryTest test) const;
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

  bool isEqual(const NSObject* other) const override;
  bool isEqualToDictionary(const NSDictionary* other) const;
  uint64_t hash() const override;
  Ref<NSString> description() const override;  ///< "{\n    key = value;\n}"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSDictionary> copy() const;
  Ref<NSMutableDictionary> mutableCopy() const;

  // Key-value coding goes by the entries, never by methods. See CollectionCoding.cpp.
  Ref<NSObject> valueForKey(const NSString* key) const override;

  ~NSDictionary() override;

 protected:
  NSDictionary() = default;

 private:
  friend class NSMutableDictionary;
  friend struct detail::DictionaryAccess;
  void put(const NSObject* key, const NSObject* value, std::string_view selector);
  void putKept(Ref<NSObject> key, const NSObject* value);
  void dropAll();
  void copyEntries(const NSDictionary* other);
};

}  // namespace quoll::inline v1
