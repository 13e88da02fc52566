// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"

#include <algorithm>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Class* NSMutableDictionary::classObject() {
  static Class* const cls =
      ClassBuilder<NSMutableDictionary>("NSMutableDictionary")
          .classMethod<&NSMutableDictionary::dictionaryWithCapacity_ofClass>("dictionaryWithCapacity:"_sel)
          .initializer<&NSMutableDictionary::initWithCapacity_ofClass>("initWithCapacity:"_sel)
          .method<&NSMutableDictionary::setObject_forKey>("setObject:forKey:"_sel)
          .method<&NSMutableDictionary::setObject_forKeyedSubscript>("setObject:forKeyedSubscript:"_sel)
          .method<&NSMutableDictionary::removeObjectForKey>("removeObjectForKey:"_sel)
          .method<&NSMutableDictionary::removeObjectsForKeys>("removeObjectsForKeys:"_sel)
          .method<&NSMutableDictionary::removeAllObjects>("removeAllObjects"_sel)
          .method<&NSMutableDictionary::addEntriesFromDictionary>("addEntriesFromDictionary:"_sel)
          .method<&NSMutableDictionary::setDictionary>("setDictionary:"_sel)
          .build();
  return cls;
}

Ref<NSMutableDictionary> NSMutableDictionary::dictionaryWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  if (detail::isOneOf<NSMutableDictionary>(cls)) return initWithCapacity_ofClass(capacity, cls);
  return made<NSMutableDictionary>(cls, "initWithCapacity:"_sel, capacity);
}

Ref<NSMutableDictionary> NSMutableDictionary::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableDictionary> dictionary = create<NSMutableDictionary>(cls);
  constexpr uint64_t mostReserved = 1 << 20;  // a wild hint costs little
  dictionary->table_.reserve(std::min(capacity, mostReserved));
  return dictionary;
}

void NSMutableDictionary::setObject_forKey(const NSObject* object, const NSObject* key) {
  put(key, object, "setObject:forKey:");
}

void NSMutableDictionary::setObject_forKeyedSubscript(const NSObject* object, const NSObject* key) {
  if (object) put(key, object, "setObject:forKeyedSubscript:");
  else removeObjectForKey(key);
}

void NSMutableDictionary::removeObjectForKey(const NSObject* key) {
  if (!key) detail::raiseNilArgument(this, "removeObjectForKey:");
  detail::PairEntry* entry = table_.find(key, detail::ObjectKeys());
  if (!entry) return;
  const detail::PairEntry removed = table_.remove(entry);
  detail::drop(removed.key);
  detail::drop(removed.value);
}

void NSMutableDictionary::removeObjectsForKeys(const NSArray* keys) {
  if (!keys) return;
  const Ref<NSArray> given = keys->copy();
  for (NSObject* key : *given) removeObjectForKey(key);
}

void NSMutableDictionary::removeAllObjects() { dropAll(); }

void NSMutableDictionary::addEntriesFromDictionary(const NSDictionary* other) {
  if (!other || other == this) return;
  const Ref<NSDictionary> given = other->copy();
  if (given->count() > count()) table_.reserve(count() + given->count());
  for (const DictionaryEntry entry : *given) putKept(entry.key, entry.value);
}

void NSMutableDictionary::setDictionary(const NSDictionary* other) {
  if (other == this) return;
  const Ref<NSDictionary> given = other ? other->copy() : nullptr;
  removeAllObjects();
  addEntriesFromDictionary(given);
}

uint64_t NSMutableDictionary::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state,
                                                                        NSObject** objects, uint64_t count) {
  return table_.enumerate(state, objects, count);
}

Ref<NSObject> NSMutableDictionary::copyWithZone(NSZone*) const { return NSDictionary::initWithDictionary(this); }

}  // namespace quoll::inline v1
