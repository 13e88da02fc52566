// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMapTable.h"

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

using detail::ObjectKeys;
using detail::PairEntry;

Class* NSMapTable::classObject() {
  static Class* const cls =
      ClassBuilder<NSMapTable>("NSMapTable")
          .classMethod<&NSMapTable::strongToStrongObjectsMapTable_ofClass>("strongToStrongObjectsMapTable"_sel)
          .method<&NSMapTable::count>("count"_sel)
          .method<&NSMapTable::objectForKey>("objectForKey:"_sel)
          .method<&NSMapTable::setObject_forKey>("setObject:forKey:"_sel)
          .method<&NSMapTable::removeObjectForKey>("removeObjectForKey:"_sel)
          .method<&NSMapTable::removeAllObjects>("removeAllObjects"_sel)
          .method<&NSMapTable::keyEnumerator>("keyEnumerator"_sel)
          .method<&NSMapTable::objectEnumerator>("objectEnumerator"_sel)
          .method<&NSMapTable::dictionaryRepresentation>("dictionaryRepresentation"_sel)
          .build();
  return cls;
}

NSMapTable::~NSMapTable() { removeAllObjects(); }

Ref<NSMapTable> NSMapTable::strongToStrongObjectsMapTable_ofClass(Class* cls) {
  return made<NSMapTable>(cls, "init"_sel);
}

Ref<NSObject> NSMapTable::objectForKey(const NSObject* key) const {
  const PairEntry* entry = key ? table_.find(key, ObjectKeys()) : nullptr;
  return entry ? detail::object(entry->value) : nullptr;
}

void NSMapTable::setObject_forKey(NSObject* object, NSObject* key) {
  if (!object || !key) detail::raiseNilArgument(this, "setObject:forKey:");
  uint64_t hash = 0;
  if (PairEntry* entry = table_.find(key, ObjectKeys(), &hash)) {
    void* const old = std::exchange(entry->value, detail::retained(object));
    table_.noteMutation();
    detail::drop(old);
    return;
  }
  table_.append({key, object, hash});
  static_cast<void>(detail::retained(key));
  static_cast<void>(detail::retained(object));
}

void NSMapTable::removeObjectForKey(const NSObject* key) {
  PairEntry* entry = key ? table_.find(key, ObjectKeys()) : nullptr;
  if (!entry) return;
  const PairEntry removed = table_.remove(entry);
  detail::drop(removed.key);
  detail::drop(removed.value);
}

void NSMapTable::removeAllObjects() {
  detail::EntryTable<PairEntry> old;
  old.swap(table_);
  for (const PairEntry& entry : old) {
    if (!entry.key) continue;
    detail::drop(entry.key);
    detail::drop(entry.value);
  }
}

Ref<NSEnumerator> NSMapTable::keyEnumerator() const { return detail::enumeratorOf(this, table_, false); }
Ref<NSEnumerator> NSMapTable::objectEnumerator() const { return detail::enumeratorOf(this, table_, true); }

Ref<NSDictionary> NSMapTable::dictionaryRepresentation() const {
  Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  for (const auto [key, value] : *this) dictionary->setObject_forKey(value, key);
  return dictionary->copy();
}

uint64_t NSMapTable::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                               uint64_t count) {
  return table_.enumerate(state, objects, count);
}

Ref<NSObject> NSMapTable::copyWithZone(NSZone*) const {
  Ref<NSMapTable> copy = create<NSMapTable>(isa());
  for (const auto [key, value] : *this) copy->setObject_forKey(value, key);
  return copy;
}

}  // namespace quoll::inline v1
