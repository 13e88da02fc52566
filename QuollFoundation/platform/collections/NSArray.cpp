// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSArray.h"

#include <algorithm>
#include <vector>

#include "QuollFoundation/platform/collections/DescriptionInternal.h"
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NestingInternal.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSArray::classObject() {
  static Class* const cls =
      ClassBuilder<NSArray>("NSArray")
          .classMethod<&NSArray::array_ofClass>("array"_sel)
          .classMethod<&NSArray::arrayWithObject_ofClass>("arrayWithObject:"_sel)
          .classMethod<&NSArray::arrayWithObjects_count_ofClass>("arrayWithObjects:count:"_sel)
          .classMethod<&NSArray::arrayWithArray_ofClass>("arrayWithArray:"_sel)
          .initializer<&NSArray::initWithObjects_count_ofClass>("initWithObjects:count:"_sel)
          .initializer<&NSArray::initWithArray_ofClass>("initWithArray:"_sel)
          .initializer<&NSArray::initWithArray_copyItems_ofClass>("initWithArray:copyItems:"_sel)
          .method<overload<uint64_t() const>(&NSArray::count)>("count"_sel)
          .method<&NSArray::objectAtIndex>("objectAtIndex:"_sel)
          .method<&NSArray::objectAtIndexedSubscript>("objectAtIndexedSubscript:"_sel)
          .method<&NSArray::firstObject>("firstObject"_sel)
          .method<&NSArray::lastObject>("lastObject"_sel)
          .method<&NSArray::getObjects_range>("getObjects:range:"_sel)
          .method<&NSArray::objectsAtIndexes>("objectsAtIndexes:"_sel)
          .method<&NSArray::containsObject>("containsObject:"_sel)
          .method<&NSArray::indexOfObject>("indexOfObject:"_sel)
          .method<&NSArray::indexOfObject_inRange>("indexOfObject:inRange:"_sel)
          .method<&NSArray::indexOfObjectIdenticalTo>("indexOfObjectIdenticalTo:"_sel)
          .method<&NSArray::indexOfObjectIdenticalTo_inRange>("indexOfObjectIdenticalTo:inRange:"_sel)
          .method<&NSArray::indexOfObjectPassingTest>("indexOfObjectPassingTest:"_sel)
          .method<&NSArray::indexOfObjectWithOptions_passingTest>("indexOfObjectWithOptions:passingTest:"_sel)
          .method<&NSArray::indexesOfObjectsPassingTest>("indexesOfObjectsPassingTest:"_sel)
          .method<&NSArray::indexesOfObjectsWithOptions_passingTest>("indexesOfObjectsWithOptions:passingTest:"_sel)
          .method<&NSArray::firstObjectCommonWithArray>("firstObjectCommonWithArray:"_sel)
          .method<&NSArray::subarrayWithRange>("subarrayWithRange:"_sel)
          .method<&NSArray::arrayByAddingObject>("arrayByAddingObject:"_sel)
          .method<&NSArray::arrayByAddingObjectsFromArray>("arrayByAddingObjectsFromArray:"_sel)
          .method<&NSArray::sortedArrayUsingComparator>("sortedArrayUsingComparator:"_sel)
          .method<&NSArray::sortedArrayUsingSelector>("sortedArrayUsingSelector:"_sel)
          .method<&NSArray::sortedArrayUsingFunction_context>("sortedArrayUsingFunction:context:"_sel)
          .method<&NSArray::sortedArrayUsingDescriptors>("sortedArrayUsingDescriptors:"_sel)
          .method<&NSArray::enumerateObjectsUsingBlock>("enumerateObjectsUsingBlock:"_sel)
          .method<&NSArray::enumerateObjectsWithOptions_usingBlock>("enumerateObjectsWithOptions:usingBlock:"_sel)
          .method<&NSArray::makeObjectsPerformSelector>("makeObjectsPerformSelector:"_sel)
          .method<&NSArray::makeObjectsPerformSelector_withObject>("makeObjectsPerformSelector:withObject:"_sel)
          .method<&NSArray::objectEnumerator>("objectEnumerator"_sel)
          .method<&NSArray::reverseObjectEnumerator>("reverseObjectEnumerator"_sel)
          .method<&NSArray::componentsJoinedByString>("componentsJoinedByString:"_sel)
          .method<&NSArray::isEqualToArray>("isEqualToArray:"_sel)
          .build();
  return cls;
}

NSArray::~NSArray() {
  void** const items = std::exchange(items_, nullptr);
  const uint64_t count = std::exchange(count_, 0);
  detail::dropEach(items, count);
  if (items != reinterpret_cast<void**>(this + 1)) std::free(items);
}

void NSArray::raisePastEnd(std::string_view selector, uint64_t index) const {
  detail::raiseIndex(this, selector, index, count_);
}

void NSArray::checkRange(std::string_view selector, NSRange range) const {
  if (!rangeFits(range, count_)) detail::raiseRange(this, selector, range, count_);
}

// Making arrays

/// Takes over the items, which are owned, and the block that they are in.
void NSArray::takeItems(void** items, uint64_t count) {
  items_ = items;
  count_ = count;
}

Ref<NSArray> NSArray::holding(NSObject* const* objects, uint64_t count, Class* cls, std::string_view selector) {
  static_assert(sizeof(detail::Made<NSArray>) == sizeof(NSArray), "the objects stand directly behind an array");
  if (count && !objects) detail::raiseNilArgument(cls, selector);
  if (count > SIZE_MAX / 2 / sizeof(void*)) raise(NSMallocException, "no memory for the elements of a collection");
  Ref<NSArray> array;
  void** items = nullptr;
  if (cls == NSArray::classObject()) {
    array = makeSized<NSArray>(count * sizeof(void*), uint64_t{0});
    items = array->items_;
  } else {
    array = create<NSArray>(cls);
    if (count) items = detail::resized<void*>(nullptr, count);
    array->takeItems(items, 0);
  }
  for (uint64_t i = 0; i < count; ++i) {
    if (!objects[i]) detail::raiseNilArgument(array, selector);
    items[i] = detail::retained(objects[i]);
    ++array->count_;
  }
  if (cls != NSArray::classObject()) array->takeItems(items, count);
  return array;
}

Ref<NSArray> NSArray::array_ofClass(Class* cls) {
  if (detail::isOneOf<NSArray, NSMutableArray>(cls)) return create<NSArray>(cls);
  return made<NSArray>(cls, "init"_sel);
}

Ref<NSArray> NSArray::arrayWithObject_ofClass(const NSObject* object, Class* cls) {
  NSObject* const objects[] = {const_cast<NSObject*>(object)};
  return arrayWithObjects_count_ofClass(objects, 1, cls);
}

Ref<NSArray> NSArray::arrayWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls) {
  std::vector<NSObject*> list;
  list.reserve(objects.size());
  for (const Element& each : objects) {
    if (!each) break;
    list.push_back(each.get());
  }
  return arrayWithObjects_count_ofClass(list.data(), list.size(), cls);
}

Ref<NSArray> NSArray::arrayWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls) {
  if (detail::isOneOf<NSArray, NSMutableArray>(cls)) return initWithObjects_count_ofClass(objects, count, cls);
  return made<NSArray>(cls, "initWithObjects:count:"_sel, objects, count);
}

Ref<NSArray> NSArray::arrayWithArray_ofClass(const NSArray* other, Class* cls) {
  if (detail::isOneOf<NSArray, NSMutableArray>(cls)) return initWithArray_ofClass(other, cls);
  return made<NSArray>(cls, "initWithArray:"_sel, other);
}

Ref<NSArray> NSArray::initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls) {
  return holding(objects, count, cls, "initWithObjects:count:");
}

Ref<NSArray> NSArray::initWithArray_ofClass(const NSArray* other, Class* cls) {
  if (!other) return create<NSArray>(cls);
  return holding(reinterpret_cast<NSObject* const*>(other->items_), other->count_, cls, "initWithArray:");
}

Ref<NSArray> NSArray::initWithArray_copyItems_ofClass(const NSArray* other, bool copyItems, Class* cls) {
  if (!other || !copyItems) return initWithArray_ofClass(other, cls);
  Ref<NSMutableArray> copies = NSMutableArray::arrayWithCapacity(other->count());
  detail::eachOf(other, [&](NSObject* element, uint64_t) {
    copies->addObject(element->copy());
    return true;
  });
  return initWithArray_ofClass(copies, cls);
}

Ref<NSObject> NSArray::copyWithZone(NSZone*) const {
  if (isa() != NSArray::classObject()) return initWithArray_ofClass(this, NSArray::classObject());
  return const_cast<NSArray*>(this);
}
Ref<NSObject> NSArray::mutableCopyWithZone(NSZone*) const { return NSMutableArray::initWithArray(this); }
Ref<NSArray> NSArray::copy() const { return cast<NSArray>(copyWithZone(nullptr)); }
Ref<NSMutableArray> NSArray::mutableCopy() const { return cast<NSMutableArray>(mutableCopyWithZone(nullptr)); }

// Elements

void NSArray::getObjects_range(NSObject** objects, NSRange range) const {
  checkRange("getObjects:range:", range);
  if (range.length && !objects) detail::raiseNilArgument(this, "getObjects:range:");
  for (uint64_t i = 0; i < range.length; ++i) objects[i] = detail::object(items_[range.location + i]);
}

Ref<NSArray> NSArray::objectsAtIndexes(const NSIndexSet* indexes) const {
  if (!indexes) detail::raiseNilArgument(this, "objectsAtIndexes:");
  if (indexes->count() && indexes->lastIndex() >= count_) raisePastEnd("objectsAtIndexes:", indexes->lastIndex());
  std::vector<NSObject*> found;
  found.reserve(indexes->count());
  for (const NSRange range : indexes->ranges()) {
    for (uint64_t i = range.location; i < NSMaxRange(range); ++i) found.push_back(detail::object(items_[i]));
  }
  return arrayWithObjects_count(found.data(), found.size());
}

uint64_t NSArray::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject**, uint64_t count) {
  const uint64_t given = std::min(count, count_ - state->state);
  detail::noteImmutable(state, this);
  state->itemsPtr = reinterpret_cast<NSObject**>(items_) + state->state;
  state->state += given;
  return given;
}

// Search

uint64_t NSArray::indexOfObject(const NSObject* object) const { return indexOfObject_inRange(object, {0, count_}); }

uint64_t NSArray::indexOfObject_inRange(const NSObject* object, NSRange range) const {
  checkRange("indexOfObject:inRange:", range);
  if (!object) return NSNotFound;
  for (uint64_t i = range.location; i < NSMaxRange(range) && i < count_; ++i) {
    if (object == items_[i]) return i;
    const Ref<NSObject> element = detail::object(items_[i]);  // `isEqual:` may remove it
    if (object->isEqual(element)) return i;
  }
  return NSNotFound;
}

uint64_t NSArray::indexOfObjectIdenticalTo(const NSObject* object) const {
  return indexOfObjectIdenticalTo_inRange(object, {0, count_});
}

uint64_t NSArray::indexOfObjectIdenticalTo_inRange(const NSObject* object, NSRange range) const {
  checkRange("indexOfObjectIdenticalTo:inRange:", range);
  void** const end = items_ + NSMaxRange(range);
  void** const found = std::find(items_ + range.location, end, static_cast<const void*>(object));
  return found == end ? NSNotFound : static_cast<uint64_t>(found - items_);
}

uint64_t NSArray::indexOfObjectPassingTest(ElementTest test) const {
  return indexOfObjectWithOptions_passingTest({}, test);
}

uint64_t NSArray::indexOfObjectWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const {
  uint64_t found = NSNotFound;
  detail::eachOf(this, options, [&](NSObject* element, uint64_t index) {
    bool stop = false;
    if (test(element, index, &stop)) found = index;
    return !stop && found == NSNotFound;
  });
  return found;
}

Ref<NSIndexSet> NSArray::indexesOfObjectsPassingTest(ElementTest test) const {
  return indexesOfObjectsWithOptions_passingTest({}, test);
}

Ref<NSIndexSet> NSArray::indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options, ElementTest test) const {
  return detail::indexesPassing(this, options, test);
}

Ref<NSObject> NSArray::firstObjectCommonWithArray(const NSArray* other) const {
  for (uint64_t i = 0; other && i < count_; ++i) {
    if (other->containsObject(detail::object(items_[i]))) return detail::object(items_[i]);
  }
  return nullptr;
}

// Other arrays

Ref<NSArray> NSArray::subarrayWithRange(NSRange range) const {
  checkRange("subarrayWithRange:", range);
  return arrayWithObjects_count(reinterpret_cast<NSObject* const*>(items_) + range.location, range.length);
}

Ref<NSArray> NSArray::arrayByAddingObject(const NSObject* object) const {
  if (!object) detail::raiseNilArgument(this, "arrayByAddingObject:");
  std::vector<NSObject*> all(begin(), end());
  all.push_back(const_cast<NSObject*>(object));
  return arrayWithObjects_count(all.data(), all.size());
}

Ref<NSArray> NSArray::arrayByAddingObjectsFromArray(const NSArray* other) const {
  if (!other) return copy();
  std::vector<NSObject*> all;
  all.reserve(count_ + other->count_);
  all.insert(all.end(), begin(), end());
  all.insert(all.end(), other->begin(), other->end());
  return arrayWithObjects_count(all.data(), all.size());
}

// Walks

void NSArray::enumerateObjectsUsingBlock(ElementAction action) const {
  enumerateObjectsWithOptions_usingBlock({}, action);
}

void NSArray::enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options, ElementAction action) const {
  detail::eachOf(this, options, [&](NSObject* element, uint64_t index) {
    bool stop = false;
    action(element, index, &stop);
    return !stop;
  });
}

void NSArray::makeObjectsPerformSelector(Selector selector) const {
  detail::eachOf(this, [&](NSObject* element, uint64_t) {
    element->performSelector(selector);
    return true;
  });
}

void NSArray::makeObjectsPerformSelector_withObject(Selector selector, NSObject* argument) const {
  detail::eachOf(this, [&](NSObject* element, uint64_t) {
    element->performSelector_withObject(selector, argument);
    return true;
  });
}

Ref<NSEnumerator> NSArray::objectEnumerator() const { return detail::enumeratorOf(this, {}); }
Ref<NSEnumerator> NSArray::reverseObjectEnumerator() const { return detail::enumeratorOf(this, NSEnumerationReverse); }

// Text and equality

Ref<NSString> NSArray::componentsJoinedByString(const NSString* separator) const {
  std::u16string text;
  detail::eachOf(this, [&](NSObject* element, uint64_t index) {
    if (index && separator) text += separator->utf16();
    if (const Ref<NSString> part = element->description()) text += part->utf16();
    return true;
  });
  return NSString::stringWithCharacters(text);
}

Ref<NSString> NSArray::description() const { return detail::describeCollection(this); }

bool NSArray::isEqual(const NSObject* other) const { return isEqualToArray(as<const NSArray>(other)); }

bool NSArray::isEqualToArray(const NSArray* other) const {
  if (this == other) return true;
  if (!other || other->count_ != count_) return false;
  const detail::Nesting nesting(this, "isEqual:");
  for (uint64_t i = 0; i < count_ && i < other->count_; ++i) {
    const Ref<NSObject> own = detail::object(items_[i]), its = detail::object(other->items_[i]);
    if (!quoll::isEqual(own.get(), its.get())) return false;
  }
  return true;
}

uint64_t NSArray::hash() const {
  uint64_t hash = count_;
  if (count_) {
    for (const uint64_t i : {uint64_t{0}, count_ / 2, count_ - 1}) {
      hash = hash * 31 + detail::shallowHash(detail::object(items_[i]));
    }
  }
  return hash;
}

}  // namespace quoll::inline v1
