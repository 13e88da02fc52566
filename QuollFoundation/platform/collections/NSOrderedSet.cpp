// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSOrderedSet.h"

#include <vector>

#include "QuollFoundation/platform/collections/DescriptionInternal.h"
#include "QuollFoundation/platform/collections/ElementTableInternal.h"
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NestingInternal.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Class* NSOrderedSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSOrderedSet>("NSOrderedSet")
          .classMethod<&NSOrderedSet::orderedSet_ofClass>("orderedSet"_sel)
          .classMethod<&NSOrderedSet::orderedSetWithObject_ofClass>("orderedSetWithObject:"_sel)
          .classMethod<&NSOrderedSet::orderedSetWithObjects_count_ofClass>("orderedSetWithObjects:count:"_sel)
          .classMethod<&NSOrderedSet::orderedSetWithArray_ofClass>("orderedSetWithArray:"_sel)
          .classMethod<&NSOrderedSet::orderedSetWithSet_ofClass>("orderedSetWithSet:"_sel)
          .classMethod<&NSOrderedSet::orderedSetWithOrderedSet_ofClass>("orderedSetWithOrderedSet:"_sel)
          .initializer<&NSOrderedSet::initWithObjects_count_ofClass>("initWithObjects:count:"_sel)
          .initializer<&NSOrderedSet::initWithArray_ofClass>("initWithArray:"_sel)
          .initializer<&NSOrderedSet::initWithSet_ofClass>("initWithSet:"_sel)
          .initializer<&NSOrderedSet::initWithOrderedSet_ofClass>("initWithOrderedSet:"_sel)
          .method<&NSOrderedSet::count>("count"_sel)
          .method<&NSOrderedSet::objectAtIndex>("objectAtIndex:"_sel)
          .method<&NSOrderedSet::objectAtIndexedSubscript>("objectAtIndexedSubscript:"_sel)
          .method<&NSOrderedSet::firstObject>("firstObject"_sel)
          .method<&NSOrderedSet::lastObject>("lastObject"_sel)
          .method<&NSOrderedSet::indexOfObject>("indexOfObject:"_sel)
          .method<&NSOrderedSet::containsObject>("containsObject:"_sel)
          .method<&NSOrderedSet::objectsAtIndexes>("objectsAtIndexes:"_sel)
          .method<&NSOrderedSet::array>("array"_sel)
          .method<&NSOrderedSet::set>("set"_sel)
          .method<&NSOrderedSet::objectEnumerator>("objectEnumerator"_sel)
          .method<&NSOrderedSet::reverseObjectEnumerator>("reverseObjectEnumerator"_sel)
          .method<&NSOrderedSet::isEqualToOrderedSet>("isEqualToOrderedSet:"_sel)
          .method<&NSOrderedSet::isSubsetOfOrderedSet>("isSubsetOfOrderedSet:"_sel)
          .method<&NSOrderedSet::isSubsetOfSet>("isSubsetOfSet:"_sel)
          .method<&NSOrderedSet::intersectsOrderedSet>("intersectsOrderedSet:"_sel)
          .method<&NSOrderedSet::intersectsSet>("intersectsSet:"_sel)
          .method<&NSOrderedSet::reversedOrderedSet>("reversedOrderedSet"_sel)
          .method<&NSOrderedSet::sortedArrayUsingComparator>("sortedArrayUsingComparator:"_sel)
          .method<&NSOrderedSet::sortedArrayUsingDescriptors>("sortedArrayUsingDescriptors:"_sel)
          .method<&NSOrderedSet::enumerateObjectsUsingBlock>("enumerateObjectsUsingBlock:"_sel)
          .method<&NSOrderedSet::enumerateObjectsWithOptions_usingBlock>("enumerateObjectsWithOptions:usingBlock:"_sel)
          .method<&NSOrderedSet::indexOfObjectPassingTest>("indexOfObjectPassingTest:"_sel)
          .method<&NSOrderedSet::indexesOfObjectsPassingTest>("indexesOfObjectsPassingTest:"_sel)
          .method<&NSOrderedSet::indexesOfObjectsWithOptions_passingTest>(
              "indexesOfObjectsWithOptions:passingTest:"_sel)
          .build();
  return cls;
}

NSOrderedSet::~NSOrderedSet() { detail::dropAll(table_); }

void NSOrderedSet::raisePastEnd(std::string_view selector, uint64_t index) const {
  detail::raiseIndex(this, selector, index, count());
}

// Making ordered sets

Ref<NSOrderedSet> NSOrderedSet::orderedSet_ofClass(Class* cls) {
  if (detail::isOneOf<NSOrderedSet, NSMutableOrderedSet>(cls)) return create<NSOrderedSet>(cls);
  return made<NSOrderedSet>(cls, "init"_sel);
}

Ref<NSOrderedSet> NSOrderedSet::orderedSetWithObject_ofClass(const NSObject* object, Class* cls) {
  NSObject* const objects[] = {const_cast<NSObject*>(object)};
  return orderedSetWithObjects_count_ofClass(objects, 1, cls);
}
Ref<NSOrderedSet> NSOrderedSet::orderedSetWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls) {
  return orderedSetWithArray_ofClass(NSArray::arrayWithObjects(objects), cls);
}
Ref<NSOrderedSet> NSOrderedSet::orderedSetWithObjects_count_ofClass(NSObject* const* objects, uint64_t count,
                                                                    Class* cls) {
  if (detail::isOneOf<NSOrderedSet, NSMutableOrderedSet>(cls))
    return initWithObjects_count_ofClass(objects, count, cls);
  return made<NSOrderedSet>(cls, "initWithObjects:count:"_sel, objects, count);
}
Ref<NSOrderedSet> NSOrderedSet::orderedSetWithArray_ofClass(const NSArray* array, Class* cls) {
  if (detail::isOneOf<NSOrderedSet, NSMutableOrderedSet>(cls)) return initWithArray_ofClass(array, cls);
  return made<NSOrderedSet>(cls, "initWithArray:"_sel, array);
}
Ref<NSOrderedSet> NSOrderedSet::orderedSetWithSet_ofClass(const NSSet* set, Class* cls) {
  if (detail::isOneOf<NSOrderedSet, NSMutableOrderedSet>(cls)) return initWithSet_ofClass(set, cls);
  return made<NSOrderedSet>(cls, "initWithSet:"_sel, set);
}
Ref<NSOrderedSet> NSOrderedSet::orderedSetWithOrderedSet_ofClass(const NSOrderedSet* other, Class* cls) {
  if (detail::isOneOf<NSOrderedSet, NSMutableOrderedSet>(cls)) return initWithOrderedSet_ofClass(other, cls);
  return made<NSOrderedSet>(cls, "initWithOrderedSet:"_sel, other);
}

Ref<NSOrderedSet> NSOrderedSet::initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls) {
  if (count && !objects) detail::raiseNilArgument(cls, "initWithObjects:count:");
  Ref<NSOrderedSet> set = create<NSOrderedSet>(cls);
  set->table_.reserve(count);
  detail::addElements(set->table_, objects, count, set, "initWithObjects:count:");
  return set;
}
Ref<NSOrderedSet> NSOrderedSet::initWithArray_ofClass(const NSArray* array, Class* cls) {
  Ref<NSOrderedSet> set = create<NSOrderedSet>(cls);
  if (array) set->table_.reserve(array->count());
  detail::addElements(set->table_, array);
  return set;
}
Ref<NSOrderedSet> NSOrderedSet::initWithSet_ofClass(const NSSet* other, Class* cls) {
  Ref<NSOrderedSet> set = create<NSOrderedSet>(cls);
  if (other) detail::copyElements(set->table_, other->table_);
  return set;
}
Ref<NSOrderedSet> NSOrderedSet::initWithOrderedSet_ofClass(const NSOrderedSet* other, Class* cls) {
  Ref<NSOrderedSet> set = create<NSOrderedSet>(cls);
  if (other) detail::copyElements(set->table_, other->table_);
  return set;
}

Ref<NSObject> NSOrderedSet::copyWithZone(NSZone*) const {
  if (isa() != NSOrderedSet::classObject()) return initWithOrderedSet<NSOrderedSet>(this);
  return const_cast<NSOrderedSet*>(this);
}
Ref<NSObject> NSOrderedSet::mutableCopyWithZone(NSZone*) const { return NSMutableOrderedSet::initWithOrderedSet(this); }
Ref<NSOrderedSet> NSOrderedSet::copy() const { return cast<NSOrderedSet>(copyWithZone(nullptr)); }
Ref<NSMutableOrderedSet> NSOrderedSet::mutableCopy() const {
  return cast<NSMutableOrderedSet>(mutableCopyWithZone(nullptr));
}

// Elements

Ref<NSObject> NSOrderedSet::objectAtIndex(uint64_t index) const {
  if (index >= count()) raisePastEnd("objectAtIndex:", index);
  return table_[static_cast<uint32_t>(index)].key;
}
Ref<NSObject> NSOrderedSet::firstObject() const { return count() ? table_[0].key : nullptr; }
Ref<NSObject> NSOrderedSet::lastObject() const { return count() ? table_[table_.count() - 1].key : nullptr; }

uint64_t NSOrderedSet::indexOfObject(const NSObject* object) const {
  const detail::ElementEntry* entry = object ? table_.find(object, detail::ObjectKeys()) : nullptr;
  return entry ? static_cast<uint64_t>(entry - table_.begin()) : NSNotFound;
}

Ref<NSArray> NSOrderedSet::objectsAtIndexes(const NSIndexSet* indexes) const {
  if (!indexes) detail::raiseNilArgument(this, "objectsAtIndexes:");
  if (indexes->count() && indexes->lastIndex() >= count()) raisePastEnd("objectsAtIndexes:", indexes->lastIndex());
  return array()->objectsAtIndexes(indexes);
}

Ref<NSArray> NSOrderedSet::array() const { return detail::arrayOf(table_); }

Ref<NSSet> NSOrderedSet::set() const {
  Ref<NSSet> set = NSSet::set();
  detail::copyElements(set->table_, table_);
  return set;
}

Ref<NSEnumerator> NSOrderedSet::objectEnumerator() const { return detail::enumeratorOf(this, table_, false); }
Ref<NSEnumerator> NSOrderedSet::reverseObjectEnumerator() const { return detail::enumeratorOf(this, table_, true); }

// Other sets

bool NSOrderedSet::isEqual(const NSObject* other) const { return isEqualToOrderedSet(as<const NSOrderedSet>(other)); }

bool NSOrderedSet::isEqualToOrderedSet(const NSOrderedSet* other) const {
  if (this == other) return true;
  if (!other || count() != other->count()) return false;
  const detail::Nesting nesting(this, "isEqual:");
  for (uint32_t i = 0; i < table_.count() && i < other->table_.count(); ++i) {
    if (!quoll::isEqual(table_[i].key, other->table_[i].key)) return false;
  }
  return true;
}

uint64_t NSOrderedSet::hash() const { return detail::hashOf(table_); }
bool NSOrderedSet::isSubsetOfOrderedSet(const NSOrderedSet* other) const {
  return other ? detail::isSubset(table_, other->table_) : count() == 0;
}
bool NSOrderedSet::isSubsetOfSet(const NSSet* other) const {
  return other ? detail::isSubset(table_, other->table_) : count() == 0;
}
bool NSOrderedSet::intersectsOrderedSet(const NSOrderedSet* other) const {
  return other && detail::intersects(table_, other->table_);
}
bool NSOrderedSet::intersectsSet(const NSSet* other) const {
  return other && detail::intersects(table_, other->table_);
}

Ref<NSOrderedSet> NSOrderedSet::reversedOrderedSet() const {
  Ref<NSOrderedSet> reversed = orderedSet();
  for (uint32_t i = table_.count(); i-- > 0;) detail::addEntry(reversed->table_, table_[i]);
  return reversed;
}

Ref<NSArray> NSOrderedSet::sortedArrayUsingComparator(NSComparator comparator) const {
  return array()->sortedArrayUsingComparator(comparator);
}
Ref<NSArray> NSOrderedSet::sortedArrayUsingDescriptors(const NSArray* descriptors) const {
  return array()->sortedArrayUsingDescriptors(descriptors);
}

// Walks

void NSOrderedSet::enumerateObjectsUsingBlock(ElementAction action) const {
  enumerateObjectsWithOptions_usingBlock({}, action);
}

void NSOrderedSet::enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions options, ElementAction action) const {
  detail::eachOf(this, options, [&](NSObject* element, uint64_t index) {
    bool stop = false;
    action(element, index, &stop);
    return !stop;
  });
}

uint64_t NSOrderedSet::indexOfObjectPassingTest(ElementTest test) const {
  uint64_t found = NSNotFound;
  detail::eachOf(this, {}, [&](NSObject* element, uint64_t index) {
    bool stop = false;
    if (test(element, index, &stop)) found = index;
    return !stop && found == NSNotFound;
  });
  return found;
}

Ref<NSIndexSet> NSOrderedSet::indexesOfObjectsPassingTest(ElementTest test) const {
  return detail::indexesPassing(this, {}, test);
}
Ref<NSIndexSet> NSOrderedSet::indexesOfObjectsWithOptions_passingTest(NSEnumerationOptions options,
                                                                      ElementTest test) const {
  return detail::indexesPassing(this, options, test);
}

uint64_t NSOrderedSet::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                 uint64_t count) {
  const uint64_t given = table_.enumerate(state, objects, count);
  detail::noteImmutable(state, this);
  return given;
}

Ref<NSString> NSOrderedSet::description() const { return detail::describeCollection(this); }

}  // namespace quoll::inline v1
