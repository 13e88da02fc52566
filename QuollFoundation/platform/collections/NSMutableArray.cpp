// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableArray.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/collections/UniqueObjectsInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Class* NSMutableArray::classObject() {
  static Class* const cls =
      ClassBuilder<NSMutableArray>("NSMutableArray")
          .classMethod<&NSMutableArray::arrayWithCapacity_ofClass>("arrayWithCapacity:"_sel)
          .initializer<&NSMutableArray::initWithCapacity_ofClass>("initWithCapacity:"_sel)
          .method<&NSMutableArray::addObject>("addObject:"_sel)
          .method<&NSMutableArray::addObjectsFromArray>("addObjectsFromArray:"_sel)
          .method<&NSMutableArray::insertObject_atIndex>("insertObject:atIndex:"_sel)
          .method<&NSMutableArray::insertObjects_atIndexes>("insertObjects:atIndexes:"_sel)
          .method<&NSMutableArray::removeObjectAtIndex>("removeObjectAtIndex:"_sel)
          .method<&NSMutableArray::removeLastObject>("removeLastObject"_sel)
          .method<&NSMutableArray::replaceObjectAtIndex_withObject>("replaceObjectAtIndex:withObject:"_sel)
          .method<&NSMutableArray::setObject_atIndexedSubscript>("setObject:atIndexedSubscript:"_sel)
          .method<&NSMutableArray::exchangeObjectAtIndex_withObjectAtIndex>(
              "exchangeObjectAtIndex:withObjectAtIndex:"_sel)
          .method<&NSMutableArray::replaceObjectsInRange_withObjectsFromArray>(
              "replaceObjectsInRange:withObjectsFromArray:"_sel)
          .method<&NSMutableArray::removeObject>("removeObject:"_sel)
          .method<&NSMutableArray::removeObject_inRange>("removeObject:inRange:"_sel)
          .method<&NSMutableArray::removeObjectIdenticalTo>("removeObjectIdenticalTo:"_sel)
          .method<&NSMutableArray::removeObjectsInArray>("removeObjectsInArray:"_sel)
          .method<&NSMutableArray::removeObjectsInRange>("removeObjectsInRange:"_sel)
          .method<&NSMutableArray::removeObjectsAtIndexes>("removeObjectsAtIndexes:"_sel)
          .method<&NSMutableArray::removeAllObjects>("removeAllObjects"_sel)
          .method<&NSMutableArray::setArray>("setArray:"_sel)
          .method<&NSMutableArray::sortUsingComparator>("sortUsingComparator:"_sel)
          .method<&NSMutableArray::sortUsingSelector>("sortUsingSelector:"_sel)
          .method<&NSMutableArray::sortUsingFunction_context>("sortUsingFunction:context:"_sel)
          .method<&NSMutableArray::sortUsingDescriptors>("sortUsingDescriptors:"_sel)
          .build();
  return cls;
}

Ref<NSMutableArray> NSMutableArray::arrayWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  if (detail::isOneOf<NSMutableArray>(cls)) return initWithCapacity_ofClass(capacity, cls);
  return made<NSMutableArray>(cls, "initWithCapacity:"_sel, capacity);
}

Ref<NSMutableArray> NSMutableArray::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableArray> array = create<NSMutableArray>(cls);
  constexpr uint64_t mostReserved = 1 << 20;  // a wild hint costs nothing
  if (capacity) array->makeRoom(array->capacity_, std::min(capacity, mostReserved));
  return array;
}

void NSMutableArray::takeItems(void** items, uint64_t count) {
  NSArray::takeItems(items, count);
  capacity_ = count;
}

uint64_t NSMutableArray::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                   uint64_t count) {
  state->state = std::min(state->state, count_);  // it may have become shorter
  const uint64_t given = NSArray::countByEnumeratingWithState_objects_count(state, objects, count);
  state->mutationsPtr = &mutations_;
  return given;
}

Ref<NSObject> NSMutableArray::copyWithZone(NSZone*) const { return NSArray::initWithArray(this); }

// Adding

void NSMutableArray::addObject(const NSObject* object) {
  if (!object) detail::raiseNilArgument(this, "addObject:");
  if (count_ == capacity_) makeRoom(capacity_, count_ + 1);
  items_[count_++] = detail::retained(object);
  ++mutations_;
}

void NSMutableArray::addObjectsFromArray(const NSArray* other) {
  if (!other) return;
  const uint64_t more = other->count();  // it may be this array
  makeRoom(capacity_, count_ + more);
  for (uint64_t i = 0; i < more; ++i) items_[count_ + i] = detail::retained(detail::object(other->items_[i]));
  count_ += more;
  ++mutations_;
}

void NSMutableArray::insertObject_atIndex(const NSObject* object, uint64_t index) {
  if (!object) detail::raiseNilArgument(this, "insertObject:atIndex:");
  if (index > count_) detail::raiseIndex(this, "insertObject:atIndex:", index, count_ + 1);
  makeRoom(capacity_, count_ + 1);
  insertItem(index, detail::retained(object), capacity_);
}

void NSMutableArray::insertObjects_atIndexes(const NSArray* objects, const NSIndexSet* indexes) {
  if (!objects || !indexes) detail::raiseNilArgument(this, "insertObjects:atIndexes:");
  if (objects->count() != indexes->count()) {
    raise(NSInvalidArgumentException, detail::methodName(this, "insertObjects:atIndexes:") + ": " +
                                          std::to_string(objects->count()) + " objects for " +
                                          std::to_string(indexes->count()) + " indexes");
  }
  const uint64_t last = indexes->count() ? indexes->lastIndex() : 0;
  if (last && last >= count_ + objects->count()) raisePastEnd("insertObjects:atIndexes:", last);
  const Ref<NSArray> given = objects->copy();  // it may be this array
  uint64_t next = 0;
  for (const NSRange range : indexes->ranges()) {
    for (uint64_t i = 0; i < range.length; ++i) {
      insertObject_atIndex(given->objectAtIndex(next++), range.location + i);
    }
  }
}

void NSMutableArray::setObject_atIndexedSubscript(const NSObject* object, uint64_t index) {
  if (!object) detail::raiseNilArgument(this, "setObject:atIndexedSubscript:");
  if (index > count_) detail::raiseIndex(this, "setObject:atIndexedSubscript:", index, count_ + 1);
  if (index == count_) addObject(object);
  else replaceObjectAtIndex_withObject(index, object);
}

// Changing places

void NSMutableArray::replaceObjectAtIndex_withObject(uint64_t index, const NSObject* object) {
  if (!object) detail::raiseNilArgument(this, "replaceObjectAtIndex:withObject:");
  if (index >= count_) raisePastEnd("replaceObjectAtIndex:withObject:", index);
  void* const old = std::exchange(items_[index], detail::retained(object));
  ++mutations_;
  detail::drop(old);
}

void NSMutableArray::exchangeObjectAtIndex_withObjectAtIndex(uint64_t first, uint64_t second) {
  for (const uint64_t index : {first, second}) {
    if (index >= count_) raisePastEnd("exchangeObjectAtIndex:withObjectAtIndex:", index);
  }
  std::swap(items_[first], items_[second]);
  ++mutations_;
}

void NSMutableArray::replaceObjectsInRange_withObjectsFromArray(NSRange range, const NSArray* objects) {
  checkRange("replaceObjectsInRange:withObjectsFromArray:", range);
  std::vector<NSObject*> all(begin(), begin() + static_cast<std::ptrdiff_t>(range.location));
  if (objects) all.insert(all.end(), objects->begin(), objects->end());
  all.insert(all.end(), begin() + static_cast<std::ptrdiff_t>(NSMaxRange(range)), end());
  setArray(NSArray::arrayWithObjects_count(all.data(), all.size()));
}

// Removing. What is removed dies after the array is whole again.

void NSMutableArray::removeObjectAtIndex(uint64_t index) {
  if (index >= count_) raisePastEnd("removeObjectAtIndex:", index);
  detail::drop(takeItem(index));
}

void NSMutableArray::removeLastObject() {
  if (!count_) raisePastEnd("removeLastObject", 0);
  ++mutations_;
  detail::drop(items_[--count_]);
}

void NSMutableArray::removeAllObjects() {
  void** const items = std::exchange(items_, nullptr);
  const uint64_t count = std::exchange(count_, 0);
  capacity_ = 0;
  ++mutations_;
  detail::dropEach(items, count);
  std::free(items);
}

void NSMutableArray::setArray(const NSArray* other) {
  if (other == this) return;
  const Ref<NSArray> pinned = const_cast<NSArray*>(other);
  removeAllObjects();
  addObjectsFromArray(other);
}

/// Tells first and then removes, so that a raising or changing `isEqual:` leaves the array whole.
template <class Removes> void NSMutableArray::removeWhere(NSRange range, Removes removes) {
  std::vector<bool> marked(range.length);
  const detail::Watch watch(this, &mutations_);
  uint64_t removed = 0;
  for (uint64_t i = 0; i < range.length; ++i) {
    watch.check();
    const Ref<NSObject> element = detail::object(items_[range.location + i]);  // `isEqual:` may remove it
    marked[i] = removes(element.get());
    removed += marked[i];
  }
  watch.check();
  if (!removed) return;
  std::vector<void*> dropped;
  dropped.reserve(removed);
  void** kept = items_ + range.location;
  for (uint64_t i = 0; i < range.length; ++i) {
    void* const item = items_[range.location + i];
    if (marked[i]) dropped.push_back(item);
    else *kept++ = item;
  }
  std::memmove(kept, items_ + NSMaxRange(range), (count_ - NSMaxRange(range)) * sizeof(void*));
  count_ -= removed;
  ++mutations_;
  detail::dropEach(dropped.data(), dropped.size());
}

void NSMutableArray::removeObject(const NSObject* object) { removeObject_inRange(object, {0, count_}); }

void NSMutableArray::removeObject_inRange(const NSObject* object, NSRange range) {
  checkRange("removeObject:inRange:", range);
  const Ref<NSObject> pinned = const_cast<NSObject*>(object);  // perhaps the array holds the last reference
  removeWhere(range, [&](const NSObject* element) { return object && quoll::isEqual(object, element); });
}

void NSMutableArray::removeObjectIdenticalTo(const NSObject* object) {
  const Ref<NSObject> pinned = const_cast<NSObject*>(object);
  removeWhere({0, count_}, [&](const NSObject* element) { return object == element; });
}

void NSMutableArray::removeObjectsInArray(const NSArray* others) {
  if (!others) return;
  const Ref<NSArray> given = others->copy();
  const detail::UniqueObjects wanted(given);
  removeWhere({0, count_}, [&](const NSObject* element) { return wanted.contains(element); });
}

void NSMutableArray::removeObjectsInRange(NSRange range) {
  checkRange("removeObjectsInRange:", range);
  removeWhere(range, [](const NSObject*) { return true; });
}

void NSMutableArray::removeObjectsAtIndexes(const NSIndexSet* indexes) {
  if (!indexes) detail::raiseNilArgument(this, "removeObjectsAtIndexes:");
  if (!indexes->count()) return;
  if (indexes->lastIndex() >= count_) raisePastEnd("removeObjectsAtIndexes:", indexes->lastIndex());
  uint64_t index = 0;
  removeWhere({0, count_}, [&](const NSObject*) { return indexes->containsIndex(index++); });
}

}  // namespace quoll::inline v1
