// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/Toolkit.h"

#include <bit>
#include <cstdlib>

#include "QuollFoundation/platform/collections/ArrayAccessInternal.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

// The members are one table and share their cores, so they stand in one file, in the order of the header.
namespace quoll::inline v1 {

namespace {

// Walks

/// Calls `visit(element, index)` for each element.
template <class Visit> void eachIndexed(NSObject* collection, Visit visit) {
  uint64_t index = 0;
  detail::walk(collection, [&](NSObject* element) {
    visit(element, index++);
    return true;
  });
}

template <class Visit> void eachEntry(const NSDictionary* dictionary, Visit visit) {
  if (dictionary)
    dictionary->enumerateKeysAndObjectsUsingBlock([&](NSObject* key, NSObject* value, bool*) { visit(key, value); });
}

// Fast enumeration does not change what it walks, enumerators apart.
NSObject* enumerable(const NSObject* collection) { return detail::enumerable(collection); }

Ref<NSArray> valuesOf(const NSDictionary* dictionary) { return dictionary ? dictionary->allValues() : nullptr; }

/// An argument that is given back.
template <class T> Ref<T> itself(const T* argument) { return const_cast<T*>(argument); }

template <class Test> auto negated(const Test& test) {
  return [&test](auto... arguments) { return !test(arguments...); };
}

NSComparisonResult compareByMessage(NSObject* a, NSObject* b) { return send<NSComparisonResult>(a, "compare:"_sel, b); }

auto valueAt(const NSString* keyPath) {
  return [keyPath](NSObject* element) { return element->valueForKeyPath(keyPath); };
}

// The cores. Most take any callable, so that a member's own callback is called directly; those that call a callback for
// many elements in a row take it as it came. A callback may let the last reference to the collection go: what is read
// once more after a walk is pinned.

void append(NSMutableArray* results, Ref<NSObject>&& result) {
  detail::ArrayAccess::append(results, std::move(result));
}
template <class Collection> void append(Collection* results, const Ref<NSObject>& result) {
  results->addObject(result);
}

/// The passing elements are collected at once: what an index set would tell is only where they are.
template <class Test> Ref<NSArray> filteredArray(const NSArray* array, Test test) {
  if (!array) return nullptr;
  const Ref<NSMutableArray> passing = NSMutableArray::array();
  eachIndexed(enumerable(array), [&](NSObject* element, uint64_t index) {
    if (test(element, index)) append(passing.get(), element);
  });
  return detail::ArrayAccess::frozen(passing);
}

/// The same where the index does not matter.
Ref<NSArray> filteredArray(const NSArray* array, const ElementPredicate& test) {
  if (!array) return nullptr;
  const Ref<NSMutableArray> passing = NSMutableArray::array();
  const auto visitBatch = [&](NSObject* const* elements, uint64_t count) {
    // From one set bit to the next: a branch on each answer would mostly be mispredicted.
    for (uint64_t answers = test.callInARow(elements, count); answers; answers &= answers - 1) {
      append(passing.get(), elements[std::countr_zero(answers)]);
    }
    return true;
  };
  detail::walkInBatches(enumerable(array), visitBatch, [&](NSObject* element) {
    if (test(element)) append(passing.get(), element);
    return true;
  });
  return detail::ArrayAccess::frozen(passing);
}

template <class Test> Ref<NSOrderedSet> filteredOrderedSet(const NSOrderedSet* set, Test test) {
  if (!set) return nullptr;
  const Ref<NSOrderedSet> pinned = itself(set);
  return NSOrderedSet::orderedSetWithArray(set->objectsAtIndexes(set->indexesOfObjectsPassingTest(
      [&](NSObject* element, uint64_t index, bool*) { return test(element, index); })));
}

template <class Test> Ref<NSSet> filteredSet(const NSSet* set, Test test) {
  if (!set) return nullptr;
  return set->objectsPassingTest([&](NSObject* element, bool*) { return test(element); });
}

template <class Test> Ref<NSDictionary> filteredDictionary(const NSDictionary* dictionary, Test test) {
  if (!dictionary) return nullptr;
  const Ref<NSDictionary> pinned = itself(dictionary);
  const Ref<NSSet> keys =
      dictionary->keysOfEntriesPassingTest([&](NSObject* key, NSObject* value, bool*) { return test(key, value); });
  return dictionary->dictionaryWithValuesForKeys(keys->allObjects());
}

template <class Test> Ref<NSObject> foundInArray(const NSArray* array, Test test) {
  if (!array) return nullptr;
  const Ref<NSArray> pinned = itself(array);
  const uint64_t index =
      array->indexOfObjectPassingTest([&](NSObject* element, uint64_t i, bool*) { return test(element, i); });
  return index == NSNotFound ? nullptr : array->objectAtIndex(index);
}

template <class Test> Ref<NSObject> foundInDictionary(const NSDictionary* dictionary, Test test) {
  Ref<NSObject> found;
  detail::walk(enumerable(dictionary), [&](NSObject* key) {
    Ref<NSObject> value = dictionary->objectForKeyedSubscript(key);
    if (!test(key, value.get())) return true;
    found = std::move(value);
    return false;
  });
  return found;
}

/// Collects what `transform(element, index)` gives into `results`, which are new.
template <class Result, class Transform>
Ref<Result> mapped(NSObject* collection, Ref<Result> results, Transform transform) {
  eachIndexed(collection, [&](NSObject* element, uint64_t index) {
    if (Ref<NSObject> result = transform(element, index)) append(results.get(), std::move(result));
  });
  return results;
}

/// The same where the index does not matter.
template <class Result> Ref<Result> mapped(NSObject* collection, Ref<Result> results,
                                           const ElementTransform& transform) {
  const auto visitBatch = [&](NSObject* const* elements, uint64_t count) {
    Ref<NSObject> batch[detail::batchSize];
    transform.callInARow(elements, count, batch);
    for (uint64_t i = 0; i < count; ++i) {
      if (batch[i]) append(results.get(), std::move(batch[i]));
    }
    return true;
  };
  detail::walkInBatches(collection, visitBatch, [&](NSObject* element) {
    if (Ref<NSObject> result = transform(element)) append(results.get(), std::move(result));
    return true;
  });
  return results;
}

template <class Transform>
Ref<NSMutableDictionary> mappedDictionary(const NSDictionary* dictionary, Transform transform) {
  if (!dictionary) return nullptr;
  Ref<NSMutableDictionary> results = NSMutableDictionary::dictionary();
  eachEntry(dictionary, [&](NSObject* key, NSObject* value) {
    if (const Ref<NSObject> result = transform(key, value)) results->setObject_forKey(result, key);
  });
  return results;
}

/// Groups grow in place and are frozen at the end: equal to what adding to immutable arrays gives, in linear time.
template <class Key> Ref<NSMutableDictionary> grouped(NSObject* collection, Key keyOf) {
  if (!collection) return nullptr;
  Ref<NSMutableDictionary> groups = NSMutableDictionary::dictionary();
  detail::walk(collection, [&](NSObject* element) {
    const Ref<NSObject> key = keyOf(element);
    if (!key) return true;
    auto* group = static_cast<NSMutableArray*>(const_cast<void*>(CFDictionaryGetValue(groups, key.get())));
    if (!group) {
      const Ref<NSMutableArray> first = NSMutableArray::array();
      groups->setObject_forKey(first, key);
      group = first.get();
    }
    append(group, element);
    return true;
  });
  const Ref<NSArray> keys = groups->allKeys();
  for (NSObject* key : *keys) {
    const Ref<NSObject> group = groups->objectForKey(key);
    groups->setObject_forKey(detail::ArrayAccess::frozen(static_cast<NSMutableArray*>(group.get())), key);
  }
  return groups;
}

template <class Key> Ref<NSMutableDictionary> indexed(NSObject* collection, Key keyOf) {
  if (!collection) return nullptr;
  Ref<NSMutableDictionary> index = NSMutableDictionary::dictionary();
  detail::walk(collection, [&](NSObject* element) {
    if (const Ref<NSObject> key = keyOf(element)) index->setObject_forKey(element, key);
    return true;
  });
  return index;
}

Ref<NSObject> reduced(NSObject* collection, Ref<NSObject> memo, const Reducer& reducer) {
  const auto visitBatch = [&](NSObject* const* elements, uint64_t count) {
    reducer.callInARow(elements, count, memo);
    return true;
  };
  detail::walkInBatches(collection, visitBatch, [&](NSObject* element) {
    memo = reducer(memo.get(), element);
    return true;
  });
  return memo;
}

template <class Step> Ref<NSObject> reducedFromFirst(NSObject* collection, Step step) {
  Ref<NSObject> memo;
  eachIndexed(collection, [&](NSObject* element, uint64_t index) {
    memo = index ? step(memo.get(), element) : Ref<NSObject>(element);
  });
  return memo;
}

/// The element that stands `wanted` to all others; of equal ones the last.
template <class Compare> Ref<NSObject> extreme(NSObject* collection, NSComparisonResult wanted, Compare compare) {
  return reducedFromFirst(collection, [&](NSObject* memo, NSObject* element) -> Ref<NSObject> {
    return compare(memo, element) == wanted ? memo : element;
  });
}

/// From the back: each place gets one of the elements up to it, perhaps its own.
template <class Collection> void shuffle(Collection* collection) {
  for (uint64_t i = collection->count(); i >= 2; --i) {
    collection->exchangeObjectAtIndex_withObjectAtIndex(arc4random_uniform(static_cast<uint32_t>(i)), i - 1);
  }
}

}  // namespace

// All, Any

bool __ASTAll_NSFastEnumeration(NSObject* collection, ElementPredicate predicate) {
  bool any = false;
  const bool all = detail::walk(collection, [&](NSObject* element) {
    any = true;
    return predicate(element);
  });
  return any && all;
}
bool __ASTAll_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate) {
  return __ASTAll_NSFastEnumeration(valuesOf(dictionary), predicate);
}

bool __ASTAny_NSFastEnumeration(NSObject* collection, ElementPredicate predicate) {
  return !detail::walk(collection, negated(predicate));
}
bool __ASTAny_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate) {
  return __ASTAny_NSFastEnumeration(valuesOf(dictionary), predicate);
}

// Defaults, Extend

Ref<NSDictionary> __ASTDefaults_NSDictionary(const NSDictionary* dictionary, const NSDictionary* defaults) {
  if (!dictionary) return itself(defaults);
  if (!defaults) return itself(dictionary);
  Ref<NSMutableDictionary> result = dictionary->mutableCopy();
  eachEntry(defaults, [&](NSObject* key, NSObject* value) {
    if (!result->objectForKey(key)) result->setObject_forKey(value, key);
  });
  return result;
}

Ref<NSDictionary> __ASTExtend_NSDictionary(const NSDictionary* dictionary, const NSDictionary* other) {
  if (!dictionary) return itself(other);
  if (!other) return itself(dictionary);
  Ref<NSMutableDictionary> result = dictionary->mutableCopy();
  eachEntry(other, [&](NSObject* key, NSObject* value) { result->setObject_forKey(value, key); });
  return result;
}

// Difference

Ref<NSArray> __ASTDifference_NSArray(const NSArray* a, const NSArray* b) {
  if (!a || !b) return itself(a);
  const Ref<NSMutableArray> rest = a->mutableCopy();
  rest->removeObjectsInArray(b);
  return rest->copy();
}
Ref<NSSet> __ASTDifference_NSSet(const NSSet* a, const NSSet* b) {
  if (!a || !b) return itself(a);
  const Ref<NSMutableSet> rest = a->mutableCopy();
  rest->minusSet(b);
  return rest->copy();
}
Ref<NSOrderedSet> __ASTDifference_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b) {
  if (!a || !b) return itself(a);
  const Ref<NSMutableOrderedSet> rest = a->mutableCopy();
  rest->minusOrderedSet(b);
  return rest->copy();
}

// Each

void __ASTEach_NSFastEnumeration(NSObject* collection, ElementAction action) { forEachIn(collection, action); }
void __ASTEach_NSFastEnumeration_withIndex(NSObject* collection, IndexedAction action) {
  eachIndexed(collection, action);
}
void __ASTEach_NSArray(const NSArray* array, ElementAction action) {
  __ASTEach_NSFastEnumeration(enumerable(array), action);
}
void __ASTEach_NSArray_withIndex(const NSArray* array, IndexedAction action) {
  if (array)
    array->enumerateObjectsUsingBlock([&](NSObject* element, uint64_t index, bool*) { action(element, index); });
}
void __ASTEach_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedAction action) {
  if (set) set->enumerateObjectsUsingBlock([&](NSObject* element, uint64_t index, bool*) { action(element, index); });
}
void __ASTEach_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryAction action) {
  eachEntry(dictionary, action);
}
void __ASTEach_NSDictionary(const NSDictionary* dictionary, ElementAction action) {
  eachEntry(dictionary, [&](NSObject*, NSObject* value) { action(value); });
}

// Empty

bool __ASTEmpty_NSArray(const NSArray* array) { return !__ASTSize_NSArray(array); }
bool __ASTEmpty_NSDictionary(const NSDictionary* dictionary) { return !__ASTSize_NSDictionary(dictionary); }
bool __ASTEmpty_NSSet(const NSSet* set) { return !__ASTSize_NSSet(set); }
bool __ASTEmpty_NSOrderedSet(const NSOrderedSet* set) { return !__ASTSize_NSOrderedSet(set); }
bool __ASTEmpty_NSFastEnumeration(NSObject* collection) {
  return detail::walk(collection, [](NSObject*) { return false; });
}

// Filter, Reject, Without

Ref<NSArray> __ASTFilter_NSArray(const NSArray* array, ElementPredicate predicate) {
  return filteredArray(array, predicate);
}
Ref<NSArray> __ASTFilter_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate) {
  return filteredArray(array, predicate);
}
Ref<NSDictionary> __ASTFilter_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate) {
  return filteredDictionary(dictionary, [&](NSObject*, NSObject* value) { return predicate(value); });
}
Ref<NSDictionary> __ASTFilter_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryPredicate predicate) {
  return filteredDictionary(dictionary, predicate);
}
Ref<NSSet> __ASTFilter_NSSet(const NSSet* set, ElementPredicate predicate) { return filteredSet(set, predicate); }
Ref<NSOrderedSet> __ASTFilter_NSOrderedSet(const NSOrderedSet* set, ElementPredicate predicate) {
  return filteredOrderedSet(set, [&](NSObject* element, uint64_t) { return predicate(element); });
}
Ref<NSOrderedSet> __ASTFilter_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedPredicate predicate) {
  return filteredOrderedSet(set, predicate);
}

Ref<NSArray> __ASTReject_NSArray(const NSArray* array, ElementPredicate predicate) {
  return __ASTFilter_NSArray(array, negated(predicate));
}
Ref<NSArray> __ASTReject_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate) {
  return __ASTFilter_NSArray_withIndex(array, negated(predicate));
}
Ref<NSDictionary> __ASTReject_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate) {
  return __ASTFilter_NSDictionary(dictionary, negated(predicate));
}
Ref<NSDictionary> __ASTReject_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryPredicate predicate) {
  return __ASTFilter_NSDictionary_keysAndValues(dictionary, negated(predicate));
}
Ref<NSSet> __ASTReject_NSSet(const NSSet* set, ElementPredicate predicate) {
  return __ASTFilter_NSSet(set, negated(predicate));
}
Ref<NSOrderedSet> __ASTReject_NSOrderedSet(const NSOrderedSet* set, ElementPredicate predicate) {
  return __ASTFilter_NSOrderedSet(set, negated(predicate));
}
Ref<NSOrderedSet> __ASTReject_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedPredicate predicate) {
  return __ASTFilter_NSOrderedSet_withIndex(set, negated(predicate));
}

namespace {
/// The value is asked, not the element.
auto equalTo(const NSObject* value) {
  return [value](NSObject* element) { return value && value->isEqual(element); };
}
}  // namespace

Ref<NSArray> __ASTWithout_NSArray(const NSArray* array, const NSObject* value) {
  return __ASTReject_NSArray(array, equalTo(value));
}
Ref<NSSet> __ASTWithout_NSSet(const NSSet* set, const NSObject* value) {
  return __ASTReject_NSSet(set, equalTo(value));
}
Ref<NSOrderedSet> __ASTWithout_NSOrderedSet(const NSOrderedSet* set, const NSObject* value) {
  return __ASTReject_NSOrderedSet(set, equalTo(value));
}

// Find

Ref<NSObject> __ASTFind_NSArray(const NSArray* array, ElementPredicate predicate) {
  return foundInArray(array, [&](NSObject* element, uint64_t) { return predicate(element); });
}
Ref<NSObject> __ASTFind_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate) {
  return foundInArray(array, predicate);
}
Ref<NSObject> __ASTFind_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate) {
  return foundInDictionary(dictionary, [&](NSObject*, NSObject* value) { return predicate(value); });
}
Ref<NSObject> __ASTFind_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryPredicate predicate) {
  return foundInDictionary(dictionary, predicate);
}
Ref<NSObject> __ASTFind_NSFastEnumeration(NSObject* collection, ElementPredicate predicate) {
  Ref<NSObject> found;
  detail::walk(collection, [&](NSObject* element) {
    if (!predicate(element)) return true;
    found = element;
    return false;
  });
  return found;
}

// Flatten, Head, Tail

Ref<NSMutableArray> __ASTFlatten_NSArray(const NSArray* array) {
  Ref<NSMutableArray> flat = NSMutableArray::array();
  forEachIn(enumerable(array), [&](NSObject* element) {
    if (const NSArray* nested = as<NSArray>(element)) flat->addObjectsFromArray(nested);
    else flat->addObject(element);
  });
  return flat;
}

Ref<NSObject> __ASTHead_NSArray(const NSArray* array) { return array ? array->firstObject() : nullptr; }
Ref<NSObject> __ASTHead_NSOrderedSet(const NSOrderedSet* set) { return set ? set->firstObject() : nullptr; }

Ref<NSArray> __ASTTail_NSArray(const NSArray* array) {
  if (!array) return nullptr;
  if (array->count() < 2) return NSArray::array();
  return array->subarrayWithRange({1, array->count() - 1});
}
Ref<NSOrderedSet> __ASTTail_NSOrderedSet(const NSOrderedSet* set) {
  return set ? NSOrderedSet::orderedSetWithArray(__ASTTail_NSArray(set->array())) : nullptr;
}

// GroupBy, IndexBy

Ref<NSMutableDictionary> __ASTGroupBy_NSFastEnumeration_block(NSObject* collection, ElementTransform key) {
  return grouped(collection, key);
}
Ref<NSMutableDictionary> __ASTGroupBy_NSFastEnumeration_keyPath(NSObject* collection, const NSString* keyPath) {
  return grouped(collection, valueAt(keyPath));
}
Ref<NSMutableDictionary> __ASTGroupBy_NSDictionary_block(const NSDictionary* dictionary, ElementTransform key) {
  return grouped(valuesOf(dictionary), key);
}
Ref<NSMutableDictionary> __ASTGroupBy_NSDictionary_keyPath(const NSDictionary* dictionary, const NSString* keyPath) {
  return grouped(valuesOf(dictionary), valueAt(keyPath));
}

Ref<NSMutableDictionary> __ASTIndexBy_NSFastEnumeration_block(NSObject* collection, ElementTransform key) {
  return indexed(collection, key);
}
Ref<NSMutableDictionary> __ASTIndexBy_NSFastEnumeration_keyPath(NSObject* collection, const NSString* keyPath) {
  return indexed(collection, valueAt(keyPath));
}
Ref<NSMutableDictionary> __ASTIndexBy_NSDictionary_block(const NSDictionary* dictionary, ElementTransform key) {
  return indexed(valuesOf(dictionary), key);
}
Ref<NSMutableDictionary> __ASTIndexBy_NSDictionary_keyPath(const NSDictionary* dictionary, const NSString* keyPath) {
  return indexed(valuesOf(dictionary), valueAt(keyPath));
}

// IndexOf. A null array or ordered set answers as any null receiver does: 0.

uint64_t __ASTIndexOf_NSArray(const NSArray* array, const NSObject* object) {
  return array ? array->indexOfObject(object) : 0;
}
uint64_t __ASTIndexOf_NSOrderedSet(const NSOrderedSet* set, const NSObject* object) {
  return set ? set->indexOfObject(object) : 0;
}
uint64_t __ASTIndexOf_NSFastEnumeration(NSObject* collection, const NSObject* object) {
  if (!object) return NSNotFound;
  uint64_t index = 0;
  const bool absent = detail::walk(collection, [&](NSObject* element) {
    if (object->isEqual(element)) return false;
    ++index;
    return true;
  });
  return absent ? static_cast<uint64_t>(NSNotFound) : index;
}

// Intersection

Ref<NSArray> __ASTIntersection_NSArray(const NSArray* a, const NSArray* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  const Ref<NSSet> wanted = NSSet::setWithArray(b);
  return __ASTFilter_NSArray(a, [&](NSObject* element) { return wanted->containsObject(element); });
}
Ref<NSSet> __ASTIntersection_NSSet(const NSSet* a, const NSSet* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  const Ref<NSMutableSet> common = a->mutableCopy();
  common->intersectSet(b);
  return common->copy();
}
Ref<NSOrderedSet> __ASTIntersection_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  const Ref<NSMutableOrderedSet> common = a->mutableCopy();
  common->intersectOrderedSet(b);
  return common->copy();
}

// Map, Pluck

namespace {
template <class Transform> Ref<NSMutableArray> mappedArray(const NSArray* array, Transform transform) {
  if (!array) return nullptr;
  return mapped(enumerable(array), NSMutableArray::arrayWithCapacity(array->count()), transform);
}
template <class Transform> Ref<NSMutableArray> mappedEnumerable(NSObject* collection, Transform transform) {
  return collection ? mapped(collection, NSMutableArray::array(), transform) : nullptr;
}
template <class Transform> Ref<NSMutableOrderedSet> mappedOrderedSet(const NSOrderedSet* set, Transform transform) {
  return set ? mapped(enumerable(set), NSMutableOrderedSet::orderedSet(), transform) : nullptr;
}
}  // namespace

Ref<NSMutableArray> __ASTMap_NSArray(const NSArray* array, ElementTransform transform) {
  return mappedArray(array, transform);
}
Ref<NSMutableArray> __ASTMap_NSArray_withIndex(const NSArray* array, IndexedTransform transform) {
  return mappedArray(array, transform);
}
Ref<NSMutableDictionary> __ASTMap_NSDictionary(const NSDictionary* dictionary, ElementTransform transform) {
  return mappedDictionary(dictionary, [&](NSObject*, NSObject* value) { return transform(value); });
}
Ref<NSMutableDictionary> __ASTMap_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryTransform transform) {
  return mappedDictionary(dictionary, transform);
}
Ref<NSMutableArray> __ASTMap_NSDictionary_keysAndValues_toArray(const NSDictionary* dictionary,
                                                                EntryTransform transform) {
  if (!dictionary) return nullptr;
  Ref<NSMutableArray> results = NSMutableArray::array();
  eachEntry(dictionary, [&](NSObject* key, NSObject* value) {
    if (const Ref<NSObject> result = transform(key, value)) results->addObject(result);
  });
  return results;
}
Ref<NSMutableSet> __ASTMap_NSSet(const NSSet* set, ElementTransform transform) {
  return set ? mapped(enumerable(set), NSMutableSet::set(), transform) : nullptr;
}
Ref<NSMutableOrderedSet> __ASTMap_NSOrderedSet(const NSOrderedSet* set, ElementTransform transform) {
  return mappedOrderedSet(set, transform);
}
Ref<NSMutableOrderedSet> __ASTMap_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedTransform transform) {
  return mappedOrderedSet(set, transform);
}
Ref<NSMutableArray> __ASTMap_NSFastEnumeration(NSObject* collection, ElementTransform transform) {
  return mappedEnumerable(collection, transform);
}
Ref<NSMutableArray> __ASTMap_NSFastEnumeration_withIndex(NSObject* collection, IndexedTransform transform) {
  return mappedEnumerable(collection, transform);
}

Ref<NSMutableDictionary> __ASTPluck_NSDictionary(const NSDictionary* dictionary, const NSString* keyPath) {
  return __ASTMap_NSDictionary(dictionary, valueAt(keyPath));
}
Ref<NSMutableArray> __ASTPluck_NSFastEnumeration(NSObject* collection, const NSString* keyPath) {
  return __ASTMap_NSFastEnumeration(collection, valueAt(keyPath));
}

// Min, Max

Ref<NSObject> __ASTMin_NSFastEnumeration_comparator(NSObject* collection, NSComparator comparator) {
  return extreme(collection, NSOrderedAscending, comparator);
}
Ref<NSObject> __ASTMin_NSFastEnumeration(NSObject* collection) {
  return extreme(collection, NSOrderedAscending, compareByMessage);
}
Ref<NSObject> __ASTMin_NSDictionary_comparator(const NSDictionary* dictionary, NSComparator comparator) {
  return extreme(valuesOf(dictionary), NSOrderedAscending, comparator);
}
Ref<NSObject> __ASTMin_NSDictionary(const NSDictionary* dictionary) {
  return extreme(valuesOf(dictionary), NSOrderedAscending, compareByMessage);
}
Ref<NSObject> __ASTMax_NSFastEnumeration_comparator(NSObject* collection, NSComparator comparator) {
  return extreme(collection, NSOrderedDescending, comparator);
}
Ref<NSObject> __ASTMax_NSFastEnumeration(NSObject* collection) {
  return extreme(collection, NSOrderedDescending, compareByMessage);
}
Ref<NSObject> __ASTMax_NSDictionary_comparator(const NSDictionary* dictionary, NSComparator comparator) {
  return extreme(valuesOf(dictionary), NSOrderedDescending, comparator);
}
Ref<NSObject> __ASTMax_NSDictionary(const NSDictionary* dictionary) {
  return extreme(valuesOf(dictionary), NSOrderedDescending, compareByMessage);
}

// Negate

Block<bool(NSObject*)> __ASTNegate_id(Block<bool(NSObject*)> predicate) {
  return [predicate](NSObject* element) { return !predicate(element); };
}
Block<bool(NSObject*, NSObject*)> __ASTNegate_id_id(Block<bool(NSObject*, NSObject*)> predicate) {
  return [predicate](NSObject* key, NSObject* value) { return !predicate(key, value); };
}
Block<bool(NSObject*, uint64_t)> __ASTNegate_id_NSUInteger(Block<bool(NSObject*, uint64_t)> predicate) {
  return [predicate](NSObject* element, uint64_t index) { return !predicate(element, index); };
}

// Pick

Ref<NSDictionary> __ASTPick_NSDictionary(const NSDictionary* dictionary, const NSObject* keys) {
  return __ASTFilter_NSDictionary_keysAndValues(dictionary, [&](NSObject* key, NSObject*) {
    return send<bool>(const_cast<NSObject*>(keys), "containsObject:"_sel, key);
  });
}

// Reduce

Ref<NSObject> __ASTReduce_NSFastEnumeration_memo_block(NSObject* collection, NSObject* memo, Reducer reducer) {
  return reduced(collection, memo, reducer);
}
Ref<NSObject> __ASTReduce_NSFastEnumeration_block(NSObject* collection, Reducer reducer) {
  return reducedFromFirst(collection, reducer);
}
Ref<NSObject> __ASTReduce_NSDictionary_memo_keysAndValues_block(const NSDictionary* dictionary, NSObject* memo,
                                                                EntryReducer reducer) {
  Ref<NSObject> current = memo;
  eachEntry(dictionary, [&](NSObject* key, NSObject* value) { current = reducer(current.get(), key, value); });
  return current;
}
Ref<NSObject> __ASTReduce_NSDictionary_memo_block(const NSDictionary* dictionary, NSObject* memo, Reducer reducer) {
  return reduced(valuesOf(dictionary), memo, reducer);
}
Ref<NSObject> __ASTReduce_NSDictionary_block(const NSDictionary* dictionary, Reducer reducer) {
  return reducedFromFirst(valuesOf(dictionary), reducer);
}

// Shuffle

Ref<NSMutableArray> __ASTShuffle_NSArray(const NSArray* array) {
  if (!array) return nullptr;
  Ref<NSMutableArray> copy = array->mutableCopy();
  shuffle(copy.get());
  return copy;
}
Ref<NSMutableOrderedSet> __ASTShuffle_NSOrderedSet(const NSOrderedSet* set) {
  if (!set) return nullptr;
  Ref<NSMutableOrderedSet> copy = set->mutableCopy();
  shuffle(copy.get());
  return copy;
}

// Size

uint64_t __ASTSize_NSArray(const NSArray* array) { return array ? array->count() : 0; }
uint64_t __ASTSize_NSDictionary(const NSDictionary* dictionary) { return dictionary ? dictionary->count() : 0; }
uint64_t __ASTSize_NSSet(const NSSet* set) { return set ? set->count() : 0; }
uint64_t __ASTSize_NSOrderedSet(const NSOrderedSet* set) { return set ? set->count() : 0; }
uint64_t __ASTSize_NSFastEnumeration(NSObject* collection) {
  uint64_t size = 0;
  eachIndexed(collection, [&](NSObject*, uint64_t) { ++size; });
  return size;
}

// Sort

Ref<NSArray> __ASTSort_NSArray_comparator(const NSArray* array, NSComparator comparator) {
  return array ? array->sortedArrayUsingComparator(comparator) : nullptr;
}
Ref<NSArray> __ASTSort_NSArray(const NSArray* array) { return __ASTSort_NSArray_comparator(array, &compareByMessage); }
Ref<NSOrderedSet> __ASTSort_NSOrderedSet_comparator(const NSOrderedSet* set, NSComparator comparator) {
  return set ? NSOrderedSet::orderedSetWithArray(set->sortedArrayUsingComparator(comparator)) : nullptr;
}
Ref<NSOrderedSet> __ASTSort_NSOrderedSet(const NSOrderedSet* set) {
  return __ASTSort_NSOrderedSet_comparator(set, &compareByMessage);
}

// Union

Ref<NSArray> __ASTUnion_NSArray(const NSArray* a, const NSArray* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  return a->arrayByAddingObjectsFromArray(__ASTDifference_NSArray(b, a));
}
Ref<NSSet> __ASTUnion_NSSet(const NSSet* a, const NSSet* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  return a->setByAddingObjectsFromSet(b);
}
Ref<NSOrderedSet> __ASTUnion_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b) {
  if (!a) return itself(b);
  if (!b) return itself(a);
  const Ref<NSMutableOrderedSet> all = a->mutableCopy();
  all->unionOrderedSet(b);
  return all;
}

}  // namespace quoll::inline v1
