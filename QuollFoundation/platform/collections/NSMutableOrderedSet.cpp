// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"

#include <algorithm>

#include "QuollFoundation/platform/collections/ElementTableInternal.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/UniqueObjectsInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

using detail::ElementEntry;
using detail::ObjectKeys;

Class* NSMutableOrderedSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSMutableOrderedSet>("NSMutableOrderedSet")
          .classMethod<&NSMutableOrderedSet::orderedSetWithCapacity_ofClass>("orderedSetWithCapacity:"_sel)
          .initializer<&NSMutableOrderedSet::initWithCapacity_ofClass>("initWithCapacity:"_sel)
          .method<&NSMutableOrderedSet::addObject>("addObject:"_sel)
          .method<&NSMutableOrderedSet::addObjectsFromArray>("addObjectsFromArray:"_sel)
          .method<&NSMutableOrderedSet::insertObject_atIndex>("insertObject:atIndex:"_sel)
          .method<&NSMutableOrderedSet::replaceObjectAtIndex_withObject>("replaceObjectAtIndex:withObject:"_sel)
          .method<&NSMutableOrderedSet::setObject_atIndex>("setObject:atIndex:"_sel)
          .method<&NSMutableOrderedSet::exchangeObjectAtIndex_withObjectAtIndex>(
              "exchangeObjectAtIndex:withObjectAtIndex:"_sel)
          .method<&NSMutableOrderedSet::removeObject>("removeObject:"_sel)
          .method<&NSMutableOrderedSet::removeObjectAtIndex>("removeObjectAtIndex:"_sel)
          .method<&NSMutableOrderedSet::removeObjectsInArray>("removeObjectsInArray:"_sel)
          .method<&NSMutableOrderedSet::removeObjectsAtIndexes>("removeObjectsAtIndexes:"_sel)
          .method<&NSMutableOrderedSet::removeAllObjects>("removeAllObjects"_sel)
          .method<&NSMutableOrderedSet::unionOrderedSet>("unionOrderedSet:"_sel)
          .method<&NSMutableOrderedSet::minusOrderedSet>("minusOrderedSet:"_sel)
          .method<&NSMutableOrderedSet::intersectOrderedSet>("intersectOrderedSet:"_sel)
          .method<&NSMutableOrderedSet::unionSet>("unionSet:"_sel)
          .method<&NSMutableOrderedSet::minusSet>("minusSet:"_sel)
          .method<&NSMutableOrderedSet::intersectSet>("intersectSet:"_sel)
          .method<&NSMutableOrderedSet::sortUsingComparator>("sortUsingComparator:"_sel)
          .method<&NSMutableOrderedSet::sortUsingDescriptors>("sortUsingDescriptors:"_sel)
          .build();
  return cls;
}

Ref<NSMutableOrderedSet> NSMutableOrderedSet::orderedSetWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  if (detail::isOneOf<NSMutableOrderedSet>(cls)) return initWithCapacity_ofClass(capacity, cls);
  return made<NSMutableOrderedSet>(cls, "initWithCapacity:"_sel, capacity);
}

Ref<NSMutableOrderedSet> NSMutableOrderedSet::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableOrderedSet> set = create<NSMutableOrderedSet>(cls);
  constexpr uint64_t mostReserved = 1 << 20;  // a wild hint costs little
  set->table_.reserve(std::min(capacity, mostReserved));
  return set;
}

// Adding and changing places

void NSMutableOrderedSet::addObject(const NSObject* object) {
  if (!object) detail::raiseNilArgument(this, "addObject:");
  detail::addElement(table_, object);
}

void NSMutableOrderedSet::addObjectsFromArray(const NSArray* array) { detail::addElements(table_, array); }

void NSMutableOrderedSet::insertObject_atIndex(const NSObject* object, uint64_t index) {
  if (!object) detail::raiseNilArgument(this, "insertObject:atIndex:");
  if (index > count()) detail::raiseIndex(this, "insertObject:atIndex:", index, count() + 1);
  uint64_t hash = 0;
  if (table_.find(object, ObjectKeys(), &hash)) return;
  table_.insert(static_cast<uint32_t>(index), {const_cast<NSObject*>(object), hash});
  static_cast<void>(detail::retained(object));
}

void NSMutableOrderedSet::replaceObjectAtIndex_withObject(uint64_t index, const NSObject* object) {
  if (!object) detail::raiseNilArgument(this, "replaceObjectAtIndex:withObject:");
  if (index >= count()) raisePastEnd("replaceObjectAtIndex:withObject:", index);
  const auto position = static_cast<uint32_t>(index);
  uint64_t hash = 0;
  const ElementEntry* present = table_.find(object, ObjectKeys(), &hash);
  if (present && present != &table_[position]) return;
  NSObject* const old = table_[position].key;
  table_.replace(position, {detail::retained(object), present ? present->hash : hash});
  detail::drop(old);
}

void NSMutableOrderedSet::setObject_atIndex(const NSObject* object, uint64_t index) {
  if (!object) detail::raiseNilArgument(this, "setObject:atIndex:");
  if (index > count()) detail::raiseIndex(this, "setObject:atIndex:", index, count() + 1);
  if (index == count()) addObject(object);
  else replaceObjectAtIndex_withObject(index, object);
}

void NSMutableOrderedSet::exchangeObjectAtIndex_withObjectAtIndex(uint64_t first, uint64_t second) {
  for (const uint64_t index : {first, second}) {
    if (index >= count()) raisePastEnd("exchangeObjectAtIndex:withObjectAtIndex:", index);
  }
  table_.exchange(static_cast<uint32_t>(first), static_cast<uint32_t>(second));
}

// Removing

void NSMutableOrderedSet::removeObject(const NSObject* object) {
  const uint64_t index = indexOfObject(object);
  if (index != NSNotFound) removeObjectAtIndex(index);
}

void NSMutableOrderedSet::removeObjectAtIndex(uint64_t index) {
  if (index >= count()) raisePastEnd("removeObjectAtIndex:", index);
  detail::drop(table_.erase(static_cast<uint32_t>(index)).key);
}

void NSMutableOrderedSet::removeObjectsInArray(const NSArray* array) {
  if (!array) return;
  const Ref<NSArray> given = array->copy();
  const detail::UniqueObjects wanted(given);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return wanted.contains(e.key); });
}

void NSMutableOrderedSet::removeObjectsAtIndexes(const NSIndexSet* indexes) {
  if (!indexes) detail::raiseNilArgument(this, "removeObjectsAtIndexes:");
  if (!indexes->count()) return;
  if (indexes->lastIndex() >= count()) raisePastEnd("removeObjectsAtIndexes:", indexes->lastIndex());
  uint64_t index = 0;
  detail::removeElements(table_, this, [&](const ElementEntry&) { return indexes->containsIndex(index++); });
}

void NSMutableOrderedSet::removeAllObjects() { detail::dropAll(table_); }

// With other sets

void NSMutableOrderedSet::unionOrderedSet(const NSOrderedSet* other) {
  if (other) detail::addEntries(table_, other->table_);
}
void NSMutableOrderedSet::unionSet(const NSSet* other) {
  if (other) detail::addEntries(table_, other->table_);
}

void NSMutableOrderedSet::minusOrderedSet(const NSOrderedSet* other) {
  if (other == this) return removeAllObjects();
  if (!other) return;
  const Ref<NSOrderedSet> given = const_cast<NSOrderedSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return detail::contains(given->table_, e); });
}
void NSMutableOrderedSet::minusSet(const NSSet* other) {
  if (!other) return;
  const Ref<NSSet> given = const_cast<NSSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return detail::contains(given->table_, e); });
}

void NSMutableOrderedSet::intersectOrderedSet(const NSOrderedSet* other) {
  if (!other) return removeAllObjects();
  const Ref<NSOrderedSet> given = const_cast<NSOrderedSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return !detail::contains(given->table_, e); });
}
void NSMutableOrderedSet::intersectSet(const NSSet* other) {
  if (!other) return removeAllObjects();
  const Ref<NSSet> given = const_cast<NSSet*>(other);
  detail::removeElements(table_, this, [&](const ElementEntry& e) { return !detail::contains(given->table_, e); });
}

// Sorting

/// Takes the order of the sorted elements, unless the set was changed meanwhile.
void NSMutableOrderedSet::reorder(const NSArray* sorted, uint64_t mutations) {
  if (table_.mutations() != mutations) objc_enumerationMutation(this);
  detail::ElementTable fresh;
  fresh.reserve(sorted->count());
  for (NSObject* each : *sorted) fresh.append({each, each->hash()});
  table_.swap(fresh);  // the same objects: no reference changes
}

void NSMutableOrderedSet::sortUsingComparator(NSComparator comparator) {
  const uint64_t mutations = table_.mutations();
  reorder(sortedArrayUsingComparator(comparator), mutations);
}
void NSMutableOrderedSet::sortUsingDescriptors(const NSArray* descriptors) {
  const uint64_t mutations = table_.mutations();
  reorder(sortedArrayUsingDescriptors(descriptors), mutations);
}

uint64_t NSMutableOrderedSet::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state,
                                                                        NSObject** objects, uint64_t count) {
  return table_.enumerate(state, objects, count);
}

Ref<NSObject> NSMutableOrderedSet::copyWithZone(NSZone*) const { return NSOrderedSet::initWithOrderedSet(this); }

}  // namespace quoll::inline v1
