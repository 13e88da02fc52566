// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableSet.h"

#include <algorithm>

#include "QuollFoundation/platform/collections/ElementTableInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

using detail::ElementEntry;

Class* NSMutableSet::classObject() {
  static Class* const cls = ClassBuilder<NSMutableSet>("NSMutableSet")
                                .classMethod<&NSMutableSet::setWithCapacity_ofClass>("setWithCapacity:"_sel)
                                .initializer<&NSMutableSet::initWithCapacity_ofClass>("initWithCapacity:"_sel)
                                .method<&NSMutableSet::addObject>("addObject:"_sel)
                                .method<&NSMutableSet::addObjectsFromArray>("addObjectsFromArray:"_sel)
                                .method<&NSMutableSet::removeObject>("removeObject:"_sel)
                                .method<&NSMutableSet::removeAllObjects>("removeAllObjects"_sel)
                                .method<&NSMutableSet::unionSet>("unionSet:"_sel)
                                .method<&NSMutableSet::minusSet>("minusSet:"_sel)
                                .method<&NSMutableSet::intersectSet>("intersectSet:"_sel)
                                .method<&NSMutableSet::setSet>("setSet:"_sel)
                                .build();
  return cls;
}

Ref<NSMutableSet> NSMutableSet::setWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  if (detail::isOneOf<NSMutableSet>(cls)) return initWithCapacity_ofClass(capacity, cls);
  return made<NSMutableSet>(cls, "initWithCapacity:"_sel, capacity);
}

Ref<NSMutableSet> NSMutableSet::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableSet> set = create<NSMutableSet>(cls);
  constexpr uint64_t mostReserved = 1 << 20;  // a wild hint costs little
  set->table_.reserve(std::min(capacity, mostReserved));
  return set;
}

void NSMutableSet::addObject(const NSObject* object) {
  if (!object) detail::raiseNilArgument(this, "addObject:");
  detail::addElement(table_, object);
}

void NSMutableSet::addObjectsFromArray(const NSArray* array) { detail::addElements(table_, array); }

void NSMutableSet::removeObject(const NSObject* object) {
  ElementEntry* entry = object ? table_.find(object, detail::ObjectKeys()) : nullptr;
  if (entry) detail::drop(table_.remove(entry).key);
}

void NSMutableSet::removeAllObjects() { detail::dropAll(table_); }

void NSMutableSet::unionSet(const NSSet* other) {
  if (other) detail::addEntries(table_, other->table_);
}

void NSMutableSet::minusSet(const NSSet* other) {
  if (!other) return;
  if (other == this) return removeAllObjects();
  const Ref<NSSet> given = const_cast<NSSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return detail::contains(given->table_, e); });
}

void NSMutableSet::intersectSet(const NSSet* other) {
  if (!other) return removeAllObjects();
  const Ref<NSSet> given = const_cast<NSSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return !detail::contains(given->table_, e); });
}

void NSMutableSet::setSet(const NSSet* other) {
  if (other == this) return;
  const Ref<NSSet> given = const_cast<NSSet*>(other);
  removeAllObjects();
  unionSet(given);
}

uint64_t NSMutableSet::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                 uint64_t count) {
  return table_.enumerate(state, objects, count);
}

Ref<NSObject> NSMutableSet::copyWithZone(NSZone*) const { return NSSet::initWithSet(this); }

}  // namespace quoll::inline v1
