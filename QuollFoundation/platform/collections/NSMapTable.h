// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSDictionary.h"

namespace quoll::inline v1 {

/// Values under keys that are held and not copied, so that any object may be a key: a thread, a document. Keys are told
/// apart by `isEqual:` and `hash`; their order is that in which they were added first.
///
///     auto owners = NSMapTable::strongToStrongObjectsMapTable();
///     owners->setObject_forKey(person, document);
///
/// A null key or value raises NSInvalidArgumentException; a null key is never found. Threads: caller-locked.
class QF_EXPORT NSMapTable : public NSObject {
  QF_CLASS(NSMapTable, NSObject)
 public:
  template <class T = NSMapTable> static Ref<T> strongToStrongObjectsMapTable() {
    return cast<T>(strongToStrongObjectsMapTable_ofClass(T::classObject()));
  }
  static Ref<NSMapTable> strongToStrongObjectsMapTable_ofClass(Class* cls);

  uint64_t count() const { return table_.count(); }
  Ref<NSObject> objectForKey(const NSObject* key) const;  ///< Null when absent.
  void setObject_forKey(NSObject* object, NSObject* key);
  void removeObjectForKey(const NSObject* key);  ///< An absent key, or null, removes nothing.
  void removeAllObjects();
  Ref<NSEnumerator> keyEnumerator() const;
  Ref<NSEnumerator> objectEnumerator() const;
  Ref<NSDictionary> dictionaryRepresentation() const;  ///< With copies of the keys.

  // As a range of DictionaryEntry; a walk for fast enumeration gives the keys.
  using Iterator = NSDictionary::Iterator;
  Iterator begin() const { return {table_.begin(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  Iterator end() const { return {table_.end(), table_.end(), detail::Watch(this, &table_.mutations())}; }
  size_t size() const { return table_.count(); }
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

  Ref<NSObject> copyWithZone(NSZone* zone) const override;

  ~NSMapTable() override;

 protected:
  NSMapTable() = default;

 private:
  detail::EntryTable<detail::PairEntry> table_;
};

}  // namespace quoll::inline v1
