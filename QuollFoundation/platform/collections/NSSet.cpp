// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSSet.h"

#include "QuollFoundation/platform/collections/DescriptionInternal.h"
#include "QuollFoundation/platform/collections/ElementTableInternal.h"
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NestingInternal.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Class* NSSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSSet>("NSSet")
          .classMethod<&NSSet::set_ofClass>("set"_sel)
          .classMethod<&NSSet::setWithObject_ofClass>("setWithObject:"_sel)
          .classMethod<&NSSet::setWithObjects_count_ofClass>("setWithObjects:count:"_sel)
          .classMethod<&NSSet::setWithArray_ofClass>("setWithArray:"_sel)
          .classMethod<&NSSet::setWithSet_ofClass>("setWithSet:"_sel)
          .initializer<&NSSet::initWithObjects_count_ofClass>("initWithObjects:count:"_sel)
          .initializer<&NSSet::initWithArray_ofClass>("initWithArray:"_sel)
          .initializer<&NSSet::initWithSet_ofClass>("initWithSet:"_sel)
          .initializer<&NSSet::initWithSet_copyItems_ofClass>("initWithSet:copyItems:"_sel)
          .method<&NSSet::count>("count"_sel)
          .method<&NSSet::member>("member:"_sel)
          .method<&NSSet::containsObject>("containsObject:"_sel)
          .method<&NSSet::anyObject>("anyObject"_sel)
          .method<&NSSet::allObjects>("allObjects"_sel)
          .method<&NSSet::objectEnumerator>("objectEnumerator"_sel)
          .method<&NSSet::isEqualToSet>("isEqualToSet:"_sel)
          .method<&NSSet::isSubsetOfSet>("isSubsetOfSet:"_sel)
          .method<&NSSet::intersectsSet>("intersectsSet:"_sel)
          .method<&NSSet::setByAddingObject>("setByAddingObject:"_sel)
          .method<&NSSet::setByAddingObjectsFromSet>("setByAddingObjectsFromSet:"_sel)
          .method<&NSSet::setByAddingObjectsFromArray>("setByAddingObjectsFromArray:"_sel)
          .method<&NSSet::sortedArrayUsingDescriptors>("sortedArrayUsingDescriptors:"_sel)
          .method<&NSSet::enumerateObjectsUsingBlock>("enumerateObjectsUsingBlock:"_sel)
          .method<&NSSet::enumerateObjectsWithOptions_usingBlock>("enumerateObjectsWithOptions:usingBlock:"_sel)
          .method<&NSSet::objectsPassingTest>("objectsPassingTest:"_sel)
          .method<&NSSet::objectsWithOptions_passingTest>("objectsWithOptions:passingTest:"_sel)
          .method<&NSSet::makeObjectsPerformSelector>("makeObjectsPerformSelector:"_sel)
          .method<&NSSet::makeObjectsPerformSelector_withObject>("makeObjectsPerformSelector:withObject:"_sel)
          .build();
  return cls;
}

NSSet::~NSSet() { detail::dropAll(table_); }

// Making sets

Ref<NSSet> NSSet::set_ofClass(Class* cls) {
  if (detail::isOneOf<NSSet, NSMutableSet>(cls)) return create<NSSet>(cls);
  return made<NSSet>(cls, "init"_sel);
}

Ref<NSSet> NSSet::setWithObject_ofClass(const NSObject* object, Class* cls) {
  NSObject* const objects[] = {const_cast<NSObject*>(object)};
  return setWithObjects_count_ofClass(objects, 1, cls);
}

Ref<NSSet> NSSet::setWithObjects_ofClass(std::initializer_list<Element> objects, Class* cls) {
  const Ref<NSArray> list = NSArray::arrayWithObjects(objects);
  if (detail::isOneOf<NSSet, NSMutableSet>(cls)) return initWithArray_ofClass(list, cls);
  return made<NSSet>(cls, "initWithArray:"_sel, list);
}

Ref<NSSet> NSSet::setWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls) {
  if (detail::isOneOf<NSSet, NSMutableSet>(cls)) return initWithObjects_count_ofClass(objects, count, cls);
  return made<NSSet>(cls, "initWithObjects:count:"_sel, objects, count);
}
Ref<NSSet> NSSet::setWithArray_ofClass(const NSArray* array, Class* cls) {
  if (detail::isOneOf<NSSet, NSMutableSet>(cls)) return initWithArray_ofClass(array, cls);
  return made<NSSet>(cls, "initWithArray:"_sel, array);
}
Ref<NSSet> NSSet::setWithSet_ofClass(const NSSet* other, Class* cls) {
  if (detail::isOneOf<NSSet, NSMutableSet>(cls)) return initWithSet_ofClass(other, cls);
  return made<NSSet>(cls, "initWithSet:"_sel, other);
}

Ref<NSSet> NSSet::initWithObjects_count_ofClass(NSObject* const* objects, uint64_t count, Class* cls) {
  if (count && !objects) detail::raiseNilArgument(cls, "initWithObjects:count:");
  Ref<NSSet> set = create<NSSet>(cls);
  set->table_.reserve(count);
  detail::addElements(set->table_, objects, count, set, "initWithObjects:count:");
  return set;
}

Ref<NSSet> NSSet::initWithArray_ofClass(const NSArray* array, Class* cls) {
  Ref<NSSet> set = create<NSSet>(cls);
  if (array) set->table_.reserve(array->count());
  detail::addElements(set->table_, array);
  return set;
}

Ref<NSSet> NSSet::initWithSet_ofClass(const NSSet* other, Class* cls) {
  Ref<NSSet> set = create<NSSet>(cls);
  if (other) detail::copyElements(set->table_, other->table_);
  return set;
}

Ref<NSSet> NSSet::initWithSet_copyItems_ofClass(const NSSet* other, bool copyItems, Class* cls) {
  if (!other || !copyItems) return initWithSet_ofClass(other, cls);
  return initWithArray_ofClass(NSArray::initWithArray_copyItems(other->allObjects(), true), cls);
}

Ref<NSObject> NSSet::copyWithZone(NSZone*) const {
  if (isa() != NSSet::classObject()) return initWithSet<NSSet>(this);
  return const_cast<NSSet*>(this);
}
Ref<NSObject> NSSet::mutableCopyWithZone(NSZone*) const { return NSMutableSet::initWithSet(this); }
Ref<NSSet> NSSet::copy() const { return cast<NSSet>(copyWithZone(nullptr)); }
Ref<NSMutableSet> NSSet::mutableCopy() const { return cast<NSMutableSet>(mutableCopyWithZone(nullptr)); }

// Elements

Ref<NSObject> NSSet::member(const NSObject* object) const {
  const detail::ElementEntry* entry = object ? table_.find(object, detail::ObjectKeys()) : nullptr;
  return entry ? entry->key : nullptr;
}
bool NSSet::containsObject(const NSObject* object) const { return object && table_.find(object, detail::ObjectKeys()); }
Ref<NSObject> NSSet::anyObject() const { return count() ? table_.begin()->key : nullptr; }
Ref<NSArray> NSSet::allObjects() const { return detail::arrayOf(table_); }
Ref<NSEnumerator> NSSet::objectEnumerator() const { return detail::enumeratorOf(this, table_, false); }

// Other sets

bool NSSet::isEqual(const NSObject* other) const { return isEqualToSet(as<const NSSet>(other)); }

bool NSSet::isEqualToSet(const NSSet* other) const {
  if (this == other) return true;
  if (!other || count() != other->count()) return false;
  const detail::Nesting nesting(this, "isEqual:");
  return detail::isSubset(table_, other->table_);
}

uint64_t NSSet::hash() const { return detail::hashOf(table_); }
bool NSSet::isSubsetOfSet(const NSSet* other) const {
  return other ? detail::isSubset(table_, other->table_) : count() == 0;
}
bool NSSet::intersectsSet(const NSSet* other) const { return other && detail::intersects(table_, other->table_); }

Ref<NSSet> NSSet::setByAddingObject(const NSObject* object) const {
  if (!object) detail::raiseNilArgument(this, "setByAddingObject:");
  Ref<NSSet> result = initWithSet<NSSet>(this);
  detail::addElement(result->table_, object);
  return result;
}

Ref<NSSet> NSSet::setByAddingObjectsFromSet(const NSSet* other) const {
  Ref<NSSet> result = initWithSet<NSSet>(this);
  if (other) detail::addEntries(result->table_, other->table_);
  return result;
}

Ref<NSSet> NSSet::setByAddingObjectsFromArray(const NSArray* other) const {
  Ref<NSSet> result = initWithSet<NSSet>(this);
  detail::addElements(result->table_, other);
  return result;
}

Ref<NSArray> NSSet::sortedArrayUsingDescriptors(const NSArray* descriptors) const {
  return allObjects()->sortedArrayUsingDescriptors(descriptors);
}

// Walks

void NSSet::enumerateObjectsUsingBlock(ElementAction action) const {
  detail::eachOf(this, [&](NSObject* element) {
    bool stop = false;
    action(element, &stop);
    return !stop;
  });
}

void NSSet::enumerateObjectsWithOptions_usingBlock(NSEnumerationOptions, ElementAction action) const {
  enumerateObjectsUsingBlock(action);
}

Ref<NSSet> NSSet::objectsPassingTest(ElementTest test) const {
  Ref<NSSet> passing = set();
  detail::eachOf(this, [&](NSObject* element) {
    bool stop = false;
    if (test(element, &stop)) detail::addElement(passing->table_, element);
    return !stop;
  });
  return passing;
}

Ref<NSSet> NSSet::objectsWithOptions_passingTest(NSEnumerationOptions, ElementTest test) const {
  return objectsPassingTest(test);
}

void NSSet::makeObjectsPerformSelector(Selector selector) const {
  detail::eachOf(this, [&](NSObject* element) {
    element->performSelector(selector);
    return true;
  });
}

void NSSet::makeObjectsPerformSelector_withObject(Selector selector, NSObject* argument) const {
  detail::eachOf(this, [&](NSObject* element) {
    element->performSelector_withObject(selector, argument);
    return true;
  });
}

uint64_t NSSet::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                          uint64_t count) {
  const uint64_t given = table_.enumerate(state, objects, count);
  detail::noteImmutable(state, this);
  return given;
}

Ref<NSString> NSSet::description() const { return detail::describeCollection(this); }

}  // namespace quoll::inline v1
