// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/collections/Callbacks.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"

/// Functional programming over collections: plain functions, one for each operation and kind of collection.
///
///     auto even = Filter(numbers, [](NSNumber* n) { return n->integerValue() % 2 == 0; });
///     auto byExtension = GroupBy(files, "pathExtension"_ns);
///     auto longest = Max(names, [](NSString* a, NSString* b) { return compareLengths(a, b); });
///
/// A member's name is `__AST`, its family, `_` and what it walks: NSArray, NSDictionary, NSSet, NSOrderedSet, or
/// NSFastEnumeration for anything that `forEachIn` can walk; a last word says what its callback receives. Each family
/// has a short name too (`Filter`), which picks the member by the kind of the collection and the number of the
/// callback's arguments; it is told beside the members.
///
/// Walks visit the whole collection unless the family ends early by itself (All, Any, Find, IndexOf). A dictionary's
/// plain members hand over its values. A callback that changes the collection raises NSGenericException, unless the
/// member walks a list that it made before: of a dictionary's values (All, Any, GroupBy, IndexBy, Min, Max, Reduce), or
/// of what is sorted. "Mutable" and "immutable" below say what the result is; it is the caller's own, unless an
/// argument itself is given back.
///
/// A null collection gives null, zero or NO, unless its member says otherwise; a null callback does not compile.
///
/// Threads: callbacks run on the caller's thread, in order, before the function returns. Nothing is shared by calls.
namespace quoll::inline v1 {

namespace detail {
/// Whoever walks an enumerator moves it on; other enumerables stay as they are.
inline NSObject* enumerable(const NSObject* collection) { return const_cast<NSObject*>(collection); }
}  // namespace detail

/// All: whether every element passes. Of an EMPTY collection: NO.
QF_EXPORT bool __ASTAll_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate);
QF_EXPORT bool __ASTAll_NSFastEnumeration(NSObject* collection, ElementPredicate predicate);

inline bool All(const NSDictionary* d, ElementPredicate test) { return __ASTAll_NSDictionary(d, test); }
inline bool All(const NSObject* c, ElementPredicate test) {
  return __ASTAll_NSFastEnumeration(detail::enumerable(c), test);
}

/// Any: whether an element passes. Of an empty collection: NO.
QF_EXPORT bool __ASTAny_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate);
QF_EXPORT bool __ASTAny_NSFastEnumeration(NSObject* collection, ElementPredicate predicate);

inline bool Any(const NSDictionary* d, ElementPredicate test) { return __ASTAny_NSDictionary(d, test); }
inline bool Any(const NSObject* c, ElementPredicate test) {
  return __ASTAny_NSFastEnumeration(detail::enumerable(c), test);
}

/// Defaults: a mutable copy, with the entries of `defaults` whose keys it lacks. Extend: with all entries of `other`,
/// which win. If one argument is null, the other itself.
QF_EXPORT Ref<NSDictionary> __ASTDefaults_NSDictionary(const NSDictionary* dictionary, const NSDictionary* defaults);
QF_EXPORT Ref<NSDictionary> __ASTExtend_NSDictionary(const NSDictionary* dictionary, const NSDictionary* other);

inline Ref<NSDictionary> Defaults(const NSDictionary* d, const NSDictionary* defaults) {
  return __ASTDefaults_NSDictionary(d, defaults);
}
inline Ref<NSDictionary> Extend(const NSDictionary* d, const NSDictionary* other) {
  return __ASTExtend_NSDictionary(d, other);
}

/// Difference: the elements of `a` that equal none of `b`, in their order; immutable. A null `b` gives `a` itself.
QF_EXPORT Ref<NSArray> __ASTDifference_NSArray(const NSArray* a, const NSArray* b);
QF_EXPORT Ref<NSSet> __ASTDifference_NSSet(const NSSet* a, const NSSet* b);
QF_EXPORT Ref<NSOrderedSet> __ASTDifference_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b);

inline Ref<NSArray> Difference(const NSArray* a, const NSArray* b) { return __ASTDifference_NSArray(a, b); }
inline Ref<NSSet> Difference(const NSSet* a, const NSSet* b) { return __ASTDifference_NSSet(a, b); }
inline Ref<NSOrderedSet> Difference(const NSOrderedSet* a, const NSOrderedSet* b) {
  return __ASTDifference_NSOrderedSet(a, b);
}

/// Each: calls the action for each element.
QF_EXPORT void __ASTEach_NSArray(const NSArray* array, ElementAction action);
QF_EXPORT void __ASTEach_NSArray_withIndex(const NSArray* array, IndexedAction action);
QF_EXPORT void __ASTEach_NSDictionary(const NSDictionary* dictionary, ElementAction action);
QF_EXPORT void __ASTEach_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryAction action);
QF_EXPORT void __ASTEach_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedAction action);
QF_EXPORT void __ASTEach_NSFastEnumeration(NSObject* collection, ElementAction action);
QF_EXPORT void __ASTEach_NSFastEnumeration_withIndex(NSObject* collection, IndexedAction action);

template <CallbackOf<1> F> void Each(const NSArray* a, F&& f) { __ASTEach_NSArray(a, f); }
template <CallbackOf<2> F> void Each(const NSArray* a, F&& f) { __ASTEach_NSArray_withIndex(a, f); }
template <CallbackOf<1> F> void Each(const NSDictionary* d, F&& f) { __ASTEach_NSDictionary(d, f); }
template <CallbackOf<2> F> void Each(const NSDictionary* d, F&& f) { __ASTEach_NSDictionary_keysAndValues(d, f); }
template <CallbackOf<2> F> void Each(const NSOrderedSet* s, F&& f) { __ASTEach_NSOrderedSet_withIndex(s, f); }
template <CallbackOf<1> F> void Each(const NSObject* c, F&& f) {
  __ASTEach_NSFastEnumeration(detail::enumerable(c), f);
}
template <CallbackOf<2> F> void Each(const NSObject* c, F&& f) {
  __ASTEach_NSFastEnumeration_withIndex(detail::enumerable(c), f);
}

/// Empty: whether there is no element. Null is empty.
QF_EXPORT bool __ASTEmpty_NSArray(const NSArray* array);
QF_EXPORT bool __ASTEmpty_NSDictionary(const NSDictionary* dictionary);
QF_EXPORT bool __ASTEmpty_NSSet(const NSSet* set);
QF_EXPORT bool __ASTEmpty_NSOrderedSet(const NSOrderedSet* set);
QF_EXPORT bool __ASTEmpty_NSFastEnumeration(NSObject* collection);  ///< Takes a batch of up to 16 off an enumerator.

inline bool Empty(const NSArray* a) { return __ASTEmpty_NSArray(a); }
inline bool Empty(const NSDictionary* d) { return __ASTEmpty_NSDictionary(d); }
inline bool Empty(const NSSet* s) { return __ASTEmpty_NSSet(s); }
inline bool Empty(const NSOrderedSet* s) { return __ASTEmpty_NSOrderedSet(s); }
inline bool Empty(const NSObject* c) { return __ASTEmpty_NSFastEnumeration(detail::enumerable(c)); }

/// Filter: what passes, in its order; immutable. A dictionary's passing keys are read by key-value coding: a key that
/// is no string raises NSInvalidArgumentException.
QF_EXPORT Ref<NSArray> __ASTFilter_NSArray(const NSArray* array, ElementPredicate predicate);
QF_EXPORT Ref<NSArray> __ASTFilter_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate);
QF_EXPORT Ref<NSDictionary> __ASTFilter_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate);
QF_EXPORT Ref<NSDictionary> __ASTFilter_NSDictionary_keysAndValues(const NSDictionary* dictionary,
                                                                   EntryPredicate predicate);
QF_EXPORT Ref<NSSet> __ASTFilter_NSSet(const NSSet* set, ElementPredicate predicate);
QF_EXPORT Ref<NSOrderedSet> __ASTFilter_NSOrderedSet(const NSOrderedSet* set, ElementPredicate predicate);
QF_EXPORT Ref<NSOrderedSet> __ASTFilter_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedPredicate predicate);

template <CallbackOf<1> F> Ref<NSArray> Filter(const NSArray* a, F&& f) { return __ASTFilter_NSArray(a, f); }
template <CallbackOf<2> F> Ref<NSArray> Filter(const NSArray* a, F&& f) { return __ASTFilter_NSArray_withIndex(a, f); }
template <CallbackOf<1> F> Ref<NSDictionary> Filter(const NSDictionary* d, F&& f) {
  return __ASTFilter_NSDictionary(d, f);
}
template <CallbackOf<2> F> Ref<NSDictionary> Filter(const NSDictionary* d, F&& f) {
  return __ASTFilter_NSDictionary_keysAndValues(d, f);
}
template <CallbackOf<1> F> Ref<NSSet> Filter(const NSSet* s, F&& f) { return __ASTFilter_NSSet(s, f); }
template <CallbackOf<1> F> Ref<NSOrderedSet> Filter(const NSOrderedSet* s, F&& f) {
  return __ASTFilter_NSOrderedSet(s, f);
}
template <CallbackOf<2> F> Ref<NSOrderedSet> Filter(const NSOrderedSet* s, F&& f) {
  return __ASTFilter_NSOrderedSet_withIndex(s, f);
}

/// Find: the first element that passes, or null; of a dictionary the value, never the key.
QF_EXPORT Ref<NSObject> __ASTFind_NSArray(const NSArray* array, ElementPredicate predicate);
QF_EXPORT Ref<NSObject> __ASTFind_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate);
QF_EXPORT Ref<NSObject> __ASTFind_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate);
QF_EXPORT Ref<NSObject> __ASTFind_NSDictionary_keysAndValues(const NSDictionary* dictionary, EntryPredicate predicate);
QF_EXPORT Ref<NSObject> __ASTFind_NSFastEnumeration(NSObject* collection, ElementPredicate predicate);

template <CallbackOf<1> F> Ref<NSObject> Find(const NSArray* a, F&& f) { return __ASTFind_NSArray(a, f); }
template <CallbackOf<2> F> Ref<NSObject> Find(const NSArray* a, F&& f) { return __ASTFind_NSArray_withIndex(a, f); }
template <CallbackOf<1> F> Ref<NSObject> Find(const NSDictionary* d, F&& f) { return __ASTFind_NSDictionary(d, f); }
template <CallbackOf<2> F> Ref<NSObject> Find(const NSDictionary* d, F&& f) {
  return __ASTFind_NSDictionary_keysAndValues(d, f);
}
template <CallbackOf<1> F> Ref<NSObject> Find(const NSObject* c, F&& f) {
  return __ASTFind_NSFastEnumeration(detail::enumerable(c), f);
}

/// Flatten: a mutable array in which the elements of each array stand in its place, one level deep. Null: an empty one.
QF_EXPORT Ref<NSMutableArray> __ASTFlatten_NSArray(const NSArray* array);

inline Ref<NSMutableArray> Flatten(const NSArray* a) { return __ASTFlatten_NSArray(a); }

/// GroupBy: a mutable dictionary of immutable arrays: the elements of one key, in their order. A null key drops the
/// element. The key is what the transform gives, or the value of a key path.
QF_EXPORT Ref<NSMutableDictionary> __ASTGroupBy_NSDictionary_block(const NSDictionary* dictionary,
                                                                   ElementTransform key);
QF_EXPORT Ref<NSMutableDictionary> __ASTGroupBy_NSDictionary_keyPath(const NSDictionary* dictionary,
                                                                     const NSString* keyPath);
QF_EXPORT Ref<NSMutableDictionary> __ASTGroupBy_NSFastEnumeration_block(NSObject* collection, ElementTransform key);
QF_EXPORT Ref<NSMutableDictionary> __ASTGroupBy_NSFastEnumeration_keyPath(NSObject* collection,
                                                                          const NSString* keyPath);

template <CallbackOf<1> F> Ref<NSMutableDictionary> GroupBy(const NSDictionary* d, F&& f) {
  return __ASTGroupBy_NSDictionary_block(d, f);
}
inline Ref<NSMutableDictionary> GroupBy(const NSDictionary* d, const NSString* path) {
  return __ASTGroupBy_NSDictionary_keyPath(d, path);
}
template <CallbackOf<1> F> Ref<NSMutableDictionary> GroupBy(const NSObject* c, F&& f) {
  return __ASTGroupBy_NSFastEnumeration_block(detail::enumerable(c), f);
}
inline Ref<NSMutableDictionary> GroupBy(const NSObject* c, const NSString* path) {
  return __ASTGroupBy_NSFastEnumeration_keyPath(detail::enumerable(c), path);
}

/// Head: the first element, or null.
QF_EXPORT Ref<NSObject> __ASTHead_NSArray(const NSArray* array);
QF_EXPORT Ref<NSObject> __ASTHead_NSOrderedSet(const NSOrderedSet* set);

inline Ref<NSObject> Head(const NSArray* a) { return __ASTHead_NSArray(a); }
inline Ref<NSObject> Head(const NSOrderedSet* s) { return __ASTHead_NSOrderedSet(s); }

/// IndexBy: a mutable dictionary from key to element; of equal keys the last element stays. A null key drops the
/// element.
QF_EXPORT Ref<NSMutableDictionary> __ASTIndexBy_NSDictionary_block(const NSDictionary* dictionary,
                                                                   ElementTransform key);
QF_EXPORT Ref<NSMutableDictionary> __ASTIndexBy_NSDictionary_keyPath(const NSDictionary* dictionary,
                                                                     const NSString* keyPath);
QF_EXPORT Ref<NSMutableDictionary> __ASTIndexBy_NSFastEnumeration_block(NSObject* collection, ElementTransform key);
QF_EXPORT Ref<NSMutableDictionary> __ASTIndexBy_NSFastEnumeration_keyPath(NSObject* collection,
                                                                          const NSString* keyPath);

template <CallbackOf<1> F> Ref<NSMutableDictionary> IndexBy(const NSDictionary* d, F&& f) {
  return __ASTIndexBy_NSDictionary_block(d, f);
}
inline Ref<NSMutableDictionary> IndexBy(const NSDictionary* d, const NSString* path) {
  return __ASTIndexBy_NSDictionary_keyPath(d, path);
}
template <CallbackOf<1> F> Ref<NSMutableDictionary> IndexBy(const NSObject* c, F&& f) {
  return __ASTIndexBy_NSFastEnumeration_block(detail::enumerable(c), f);
}
inline Ref<NSMutableDictionary> IndexBy(const NSObject* c, const NSString* path) {
  return __ASTIndexBy_NSFastEnumeration_keyPath(detail::enumerable(c), path);
}

/// IndexOf: the index, from 0, of the first element that the object equals, or NSNotFound. A null ARRAY or ORDERED SET
/// gives 0; any other null collection, and a null object, NSNotFound.
QF_EXPORT uint64_t __ASTIndexOf_NSArray(const NSArray* array, const NSObject* object);
QF_EXPORT uint64_t __ASTIndexOf_NSOrderedSet(const NSOrderedSet* set, const NSObject* object);
QF_EXPORT uint64_t __ASTIndexOf_NSFastEnumeration(NSObject* collection, const NSObject* object);

inline uint64_t IndexOf(const NSArray* a, const NSObject* o) { return __ASTIndexOf_NSArray(a, o); }
inline uint64_t IndexOf(const NSOrderedSet* s, const NSObject* o) { return __ASTIndexOf_NSOrderedSet(s, o); }
inline uint64_t IndexOf(const NSObject* c, const NSObject* o) {
  return __ASTIndexOf_NSFastEnumeration(detail::enumerable(c), o);
}

/// Intersection: the elements of `a` that `b` contains, in their order; immutable. If one is null, THE OTHER ITSELF.
QF_EXPORT Ref<NSArray> __ASTIntersection_NSArray(const NSArray* a, const NSArray* b);
QF_EXPORT Ref<NSSet> __ASTIntersection_NSSet(const NSSet* a, const NSSet* b);
QF_EXPORT Ref<NSOrderedSet> __ASTIntersection_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b);

inline Ref<NSArray> Intersection(const NSArray* a, const NSArray* b) { return __ASTIntersection_NSArray(a, b); }
inline Ref<NSSet> Intersection(const NSSet* a, const NSSet* b) { return __ASTIntersection_NSSet(a, b); }
inline Ref<NSOrderedSet> Intersection(const NSOrderedSet* a, const NSOrderedSet* b) {
  return __ASTIntersection_NSOrderedSet(a, b);
}

/// Map: what the transform gives for each element; mutable. A null result drops the element, and later indices stay as
/// they are. In a set equal results are one; in an ordered set the first keeps its place; a dictionary keeps its keys.
QF_EXPORT Ref<NSMutableArray> __ASTMap_NSArray(const NSArray* array, ElementTransform transform);
QF_EXPORT Ref<NSMutableArray> __ASTMap_NSArray_withIndex(const NSArray* array, IndexedTransform transform);
QF_EXPORT Ref<NSMutableDictionary> __ASTMap_NSDictionary(const NSDictionary* dictionary, ElementTransform transform);
QF_EXPORT Ref<NSMutableDictionary> __ASTMap_NSDictionary_keysAndValues(const NSDictionary* dictionary,
                                                                       EntryTransform transform);
QF_EXPORT Ref<NSMutableArray> __ASTMap_NSDictionary_keysAndValues_toArray(const NSDictionary* dictionary,
                                                                          EntryTransform transform);
QF_EXPORT Ref<NSMutableSet> __ASTMap_NSSet(const NSSet* set, ElementTransform transform);
QF_EXPORT Ref<NSMutableOrderedSet> __ASTMap_NSOrderedSet(const NSOrderedSet* set, ElementTransform transform);
QF_EXPORT Ref<NSMutableOrderedSet> __ASTMap_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedTransform transform);
QF_EXPORT Ref<NSMutableArray> __ASTMap_NSFastEnumeration(NSObject* collection, ElementTransform transform);
QF_EXPORT Ref<NSMutableArray> __ASTMap_NSFastEnumeration_withIndex(NSObject* collection, IndexedTransform transform);

template <CallbackOf<1> F> Ref<NSMutableArray> Map(const NSArray* a, F&& f) { return __ASTMap_NSArray(a, f); }
template <CallbackOf<2> F> Ref<NSMutableArray> Map(const NSArray* a, F&& f) { return __ASTMap_NSArray_withIndex(a, f); }
template <CallbackOf<1> F> Ref<NSMutableDictionary> Map(const NSDictionary* d, F&& f) {
  return __ASTMap_NSDictionary(d, f);
}
template <CallbackOf<2> F> Ref<NSMutableDictionary> Map(const NSDictionary* d, F&& f) {
  return __ASTMap_NSDictionary_keysAndValues(d, f);
}
template <CallbackOf<2> F> Ref<NSMutableArray> MapToArray(const NSDictionary* d, F&& f) {
  return __ASTMap_NSDictionary_keysAndValues_toArray(d, f);
}
template <CallbackOf<1> F> Ref<NSMutableSet> Map(const NSSet* s, F&& f) { return __ASTMap_NSSet(s, f); }
template <CallbackOf<1> F> Ref<NSMutableOrderedSet> Map(const NSOrderedSet* s, F&& f) {
  return __ASTMap_NSOrderedSet(s, f);
}
template <CallbackOf<2> F> Ref<NSMutableOrderedSet> Map(const NSOrderedSet* s, F&& f) {
  return __ASTMap_NSOrderedSet_withIndex(s, f);
}
template <CallbackOf<1> F> Ref<NSMutableArray> Map(const NSObject* c, F&& f) {
  return __ASTMap_NSFastEnumeration(detail::enumerable(c), f);
}
template <CallbackOf<2> F> Ref<NSMutableArray> Map(const NSObject* c, F&& f) {
  return __ASTMap_NSFastEnumeration_withIndex(detail::enumerable(c), f);
}

/// Min, Max: the least and the greatest element, null of an empty collection; OF EQUAL ONES THE LAST. Without a
/// comparator elements are sent `compare:`.
QF_EXPORT Ref<NSObject> __ASTMin_NSDictionary(const NSDictionary* dictionary);
QF_EXPORT Ref<NSObject> __ASTMin_NSDictionary_comparator(const NSDictionary* dictionary, NSComparator comparator);
QF_EXPORT Ref<NSObject> __ASTMin_NSFastEnumeration(NSObject* collection);
QF_EXPORT Ref<NSObject> __ASTMin_NSFastEnumeration_comparator(NSObject* collection, NSComparator comparator);
QF_EXPORT Ref<NSObject> __ASTMax_NSDictionary(const NSDictionary* dictionary);
QF_EXPORT Ref<NSObject> __ASTMax_NSDictionary_comparator(const NSDictionary* dictionary, NSComparator comparator);
QF_EXPORT Ref<NSObject> __ASTMax_NSFastEnumeration(NSObject* collection);
QF_EXPORT Ref<NSObject> __ASTMax_NSFastEnumeration_comparator(NSObject* collection, NSComparator comparator);

inline Ref<NSObject> Min(const NSDictionary* d) { return __ASTMin_NSDictionary(d); }
inline Ref<NSObject> Min(const NSDictionary* d, NSComparator c) { return __ASTMin_NSDictionary_comparator(d, c); }
inline Ref<NSObject> Min(const NSObject* c) { return __ASTMin_NSFastEnumeration(detail::enumerable(c)); }
inline Ref<NSObject> Min(const NSObject* c, NSComparator f) {
  return __ASTMin_NSFastEnumeration_comparator(detail::enumerable(c), f);
}
inline Ref<NSObject> Max(const NSDictionary* d) { return __ASTMax_NSDictionary(d); }
inline Ref<NSObject> Max(const NSDictionary* d, NSComparator c) { return __ASTMax_NSDictionary_comparator(d, c); }
inline Ref<NSObject> Max(const NSObject* c) { return __ASTMax_NSFastEnumeration(detail::enumerable(c)); }
inline Ref<NSObject> Max(const NSObject* c, NSComparator f) {
  return __ASTMax_NSFastEnumeration_comparator(detail::enumerable(c), f);
}

/// Negate: a predicate that answers the opposite. It may be kept, and keeps the one it was made from.
QF_EXPORT Block<bool(NSObject*)> __ASTNegate_id(Block<bool(NSObject*)> predicate);
QF_EXPORT Block<bool(NSObject*, NSObject*)> __ASTNegate_id_id(Block<bool(NSObject*, NSObject*)> predicate);
QF_EXPORT Block<bool(NSObject*, uint64_t)> __ASTNegate_id_NSUInteger(Block<bool(NSObject*, uint64_t)> predicate);

template <CallbackOf<1> F> Block<bool(NSObject*)> Negate(F&& f) { return __ASTNegate_id(Block<bool(NSObject*)>(f)); }
template <CallbackOf<2> F> Block<bool(NSObject*, NSObject*)> Negate(F&& f) {
  return __ASTNegate_id_id(Block<bool(NSObject*, NSObject*)>(f));
}
template <IndexedCallback F> Block<bool(NSObject*, uint64_t)> Negate(F&& f) {
  return __ASTNegate_id_NSUInteger(Block<bool(NSObject*, uint64_t)>(f));
}

/// Pick: an immutable dictionary of the entries whose keys are listed. `keys` is any collection that answers
/// `containsObject:`; null lists none.
QF_EXPORT Ref<NSDictionary> __ASTPick_NSDictionary(const NSDictionary* dictionary, const NSObject* keys);

inline Ref<NSDictionary> Pick(const NSDictionary* d, const NSObject* keys) { return __ASTPick_NSDictionary(d, keys); }

/// Pluck: each element's value for a key path; mutable. Null values are dropped; a dictionary keeps its keys.
QF_EXPORT Ref<NSMutableDictionary> __ASTPluck_NSDictionary(const NSDictionary* dictionary, const NSString* keyPath);
QF_EXPORT Ref<NSMutableArray> __ASTPluck_NSFastEnumeration(NSObject* collection, const NSString* keyPath);

inline Ref<NSMutableDictionary> Pluck(const NSDictionary* d, const NSString* path) {
  return __ASTPluck_NSDictionary(d, path);
}
inline Ref<NSMutableArray> Pluck(const NSObject* c, const NSString* path) {
  return __ASTPluck_NSFastEnumeration(detail::enumerable(c), path);
}

/// Reduce: memo = reducer(memo, element) for each element; the last memo, which may be null. Without a memo to start
/// from, the first element is it, and the reducer is called from the second on.
QF_EXPORT Ref<NSObject> __ASTReduce_NSDictionary_block(const NSDictionary* dictionary, Reducer reducer);
QF_EXPORT Ref<NSObject> __ASTReduce_NSDictionary_memo_block(const NSDictionary* dictionary, NSObject* memo,
                                                            Reducer reducer);
QF_EXPORT Ref<NSObject> __ASTReduce_NSDictionary_memo_keysAndValues_block(const NSDictionary* dictionary,
                                                                          NSObject* memo, EntryReducer reducer);
QF_EXPORT Ref<NSObject> __ASTReduce_NSFastEnumeration_block(NSObject* collection, Reducer reducer);
QF_EXPORT Ref<NSObject> __ASTReduce_NSFastEnumeration_memo_block(NSObject* collection, NSObject* memo, Reducer reducer);

template <CallbackOf<2> F> Ref<NSObject> Reduce(const NSDictionary* d, F&& f) {
  return __ASTReduce_NSDictionary_block(d, f);
}
template <CallbackOf<2> F> Ref<NSObject> Reduce(const NSDictionary* d, NSObject* memo, F&& f) {
  return __ASTReduce_NSDictionary_memo_block(d, memo, f);
}
template <CallbackOf<3> F> Ref<NSObject> Reduce(const NSDictionary* d, NSObject* memo, F&& f) {
  return __ASTReduce_NSDictionary_memo_keysAndValues_block(d, memo, f);
}
template <CallbackOf<2> F> Ref<NSObject> Reduce(const NSObject* c, F&& f) {
  return __ASTReduce_NSFastEnumeration_block(detail::enumerable(c), f);
}
template <CallbackOf<2> F> Ref<NSObject> Reduce(const NSObject* c, NSObject* memo, F&& f) {
  return __ASTReduce_NSFastEnumeration_memo_block(detail::enumerable(c), memo, f);
}

/// Reject: what does not pass; otherwise as Filter.
QF_EXPORT Ref<NSArray> __ASTReject_NSArray(const NSArray* array, ElementPredicate predicate);
QF_EXPORT Ref<NSArray> __ASTReject_NSArray_withIndex(const NSArray* array, IndexedPredicate predicate);
QF_EXPORT Ref<NSDictionary> __ASTReject_NSDictionary(const NSDictionary* dictionary, ElementPredicate predicate);
QF_EXPORT Ref<NSDictionary> __ASTReject_NSDictionary_keysAndValues(const NSDictionary* dictionary,
                                                                   EntryPredicate predicate);
QF_EXPORT Ref<NSSet> __ASTReject_NSSet(const NSSet* set, ElementPredicate predicate);
QF_EXPORT Ref<NSOrderedSet> __ASTReject_NSOrderedSet(const NSOrderedSet* set, ElementPredicate predicate);
QF_EXPORT Ref<NSOrderedSet> __ASTReject_NSOrderedSet_withIndex(const NSOrderedSet* set, IndexedPredicate predicate);

template <CallbackOf<1> F> Ref<NSArray> Reject(const NSArray* a, F&& f) { return __ASTReject_NSArray(a, f); }
template <CallbackOf<2> F> Ref<NSArray> Reject(const NSArray* a, F&& f) { return __ASTReject_NSArray_withIndex(a, f); }
template <CallbackOf<1> F> Ref<NSDictionary> Reject(const NSDictionary* d, F&& f) {
  return __ASTReject_NSDictionary(d, f);
}
template <CallbackOf<2> F> Ref<NSDictionary> Reject(const NSDictionary* d, F&& f) {
  return __ASTReject_NSDictionary_keysAndValues(d, f);
}
template <CallbackOf<1> F> Ref<NSSet> Reject(const NSSet* s, F&& f) { return __ASTReject_NSSet(s, f); }
template <CallbackOf<1> F> Ref<NSOrderedSet> Reject(const NSOrderedSet* s, F&& f) {
  return __ASTReject_NSOrderedSet(s, f);
}
template <CallbackOf<2> F> Ref<NSOrderedSet> Reject(const NSOrderedSet* s, F&& f) {
  return __ASTReject_NSOrderedSet_withIndex(s, f);
}

/// Shuffle: a mutable copy in random order, each order as likely as any other. Draws `arc4random_uniform(i)` for each i
/// from the count down to 2, and exchanges the element at that index with the one at i - 1.
QF_EXPORT Ref<NSMutableArray> __ASTShuffle_NSArray(const NSArray* array);
QF_EXPORT Ref<NSMutableOrderedSet> __ASTShuffle_NSOrderedSet(const NSOrderedSet* set);

inline Ref<NSMutableArray> Shuffle(const NSArray* a) { return __ASTShuffle_NSArray(a); }
inline Ref<NSMutableOrderedSet> Shuffle(const NSOrderedSet* s) { return __ASTShuffle_NSOrderedSet(s); }

/// Size: how many elements.
QF_EXPORT uint64_t __ASTSize_NSArray(const NSArray* array);
QF_EXPORT uint64_t __ASTSize_NSDictionary(const NSDictionary* dictionary);
QF_EXPORT uint64_t __ASTSize_NSSet(const NSSet* set);
QF_EXPORT uint64_t __ASTSize_NSOrderedSet(const NSOrderedSet* set);
QF_EXPORT uint64_t __ASTSize_NSFastEnumeration(NSObject* collection);  ///< Walks it.

inline uint64_t Size(const NSArray* a) { return __ASTSize_NSArray(a); }
inline uint64_t Size(const NSDictionary* d) { return __ASTSize_NSDictionary(d); }
inline uint64_t Size(const NSSet* s) { return __ASTSize_NSSet(s); }
inline uint64_t Size(const NSOrderedSet* s) { return __ASTSize_NSOrderedSet(s); }
inline uint64_t Size(const NSObject* c) { return __ASTSize_NSFastEnumeration(detail::enumerable(c)); }

/// Sort: sorted, stable; immutable. Without a comparator elements are sent `compare:`.
QF_EXPORT Ref<NSArray> __ASTSort_NSArray(const NSArray* array);
QF_EXPORT Ref<NSArray> __ASTSort_NSArray_comparator(const NSArray* array, NSComparator comparator);
QF_EXPORT Ref<NSOrderedSet> __ASTSort_NSOrderedSet(const NSOrderedSet* set);
QF_EXPORT Ref<NSOrderedSet> __ASTSort_NSOrderedSet_comparator(const NSOrderedSet* set, NSComparator comparator);

inline Ref<NSArray> Sort(const NSArray* a) { return __ASTSort_NSArray(a); }
inline Ref<NSArray> Sort(const NSArray* a, NSComparator c) { return __ASTSort_NSArray_comparator(a, c); }
inline Ref<NSOrderedSet> Sort(const NSOrderedSet* s) { return __ASTSort_NSOrderedSet(s); }
inline Ref<NSOrderedSet> Sort(const NSOrderedSet* s, NSComparator c) { return __ASTSort_NSOrderedSet_comparator(s, c); }

/// Tail: all but the first element; immutable.
QF_EXPORT Ref<NSArray> __ASTTail_NSArray(const NSArray* array);
QF_EXPORT Ref<NSOrderedSet> __ASTTail_NSOrderedSet(const NSOrderedSet* set);

inline Ref<NSArray> Tail(const NSArray* a) { return __ASTTail_NSArray(a); }
inline Ref<NSOrderedSet> Tail(const NSOrderedSet* s) { return __ASTTail_NSOrderedSet(s); }

/// Union: `a`, then the elements of `b` that equal none of `a`; of arrays with all their duplicates. Immutable, but for
/// ordered sets: MUTABLE. If one is null, the other itself.
QF_EXPORT Ref<NSArray> __ASTUnion_NSArray(const NSArray* a, const NSArray* b);
QF_EXPORT Ref<NSSet> __ASTUnion_NSSet(const NSSet* a, const NSSet* b);
QF_EXPORT Ref<NSOrderedSet> __ASTUnion_NSOrderedSet(const NSOrderedSet* a, const NSOrderedSet* b);

inline Ref<NSArray> Union(const NSArray* a, const NSArray* b) { return __ASTUnion_NSArray(a, b); }
inline Ref<NSSet> Union(const NSSet* a, const NSSet* b) { return __ASTUnion_NSSet(a, b); }
inline Ref<NSOrderedSet> Union(const NSOrderedSet* a, const NSOrderedSet* b) { return __ASTUnion_NSOrderedSet(a, b); }

/// Without: what the value does not equal; otherwise as Reject. A null value equals nothing.
QF_EXPORT Ref<NSArray> __ASTWithout_NSArray(const NSArray* array, const NSObject* value);
QF_EXPORT Ref<NSSet> __ASTWithout_NSSet(const NSSet* set, const NSObject* value);
QF_EXPORT Ref<NSOrderedSet> __ASTWithout_NSOrderedSet(const NSOrderedSet* set, const NSObject* value);

inline Ref<NSArray> Without(const NSArray* a, const NSObject* value) { return __ASTWithout_NSArray(a, value); }
inline Ref<NSSet> Without(const NSSet* s, const NSObject* value) { return __ASTWithout_NSSet(s, value); }
inline Ref<NSOrderedSet> Without(const NSOrderedSet* s, const NSObject* value) {
  return __ASTWithout_NSOrderedSet(s, value);
}

}  // namespace quoll::inline v1
