// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NSOrderedSet.h"

/// Walks over collections that call back: nothing that a callback does to the collection leads to a dead element.
namespace quoll::inline v1::detail {

/// Calls `visit(element, index)` until it answers false. A mutation raises before the next element.
template <class Visit> void eachOf(const NSArray* array, NSEnumerationOptions options, Visit visit) {
  const Ref<NSArray> pinned = const_cast<NSArray*>(array);
  const bool pins = as<const NSMutableArray>(array);
  const bool reverse = options & NSEnumerationReverse;
  const auto from = array->begin();
  const uint64_t count = array->count();
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t index = reverse ? count - 1 - i : i;
    NSObject* const element = from[static_cast<std::ptrdiff_t>(index)];
    const Ref<NSObject> kept = pins ? element : nullptr;
    if (!visit(element, index)) return;
  }
}
template <class Visit> void eachOf(const NSArray* array, Visit visit) { eachOf(array, {}, visit); }

template <class Visit> void eachOf(const NSOrderedSet* set, NSEnumerationOptions options, Visit visit) {
  const Ref<NSOrderedSet> pinned = const_cast<NSOrderedSet*>(set);
  const bool reverse = options & NSEnumerationReverse;
  const Watch watch = set->watch();
  const uint64_t count = set->count();
  for (uint64_t i = 0; i < count; ++i) {
    watch.check();
    const uint64_t index = reverse ? count - 1 - i : i;
    const Ref<NSObject> element = set->objectAtIndex(index);
    if (!visit(element.get(), index)) return;
  }
}

/// Calls `visit(element)` until it answers false.
template <class Visit> void eachOf(const NSSet* set, Visit visit) {
  const Ref<NSSet> pinned = const_cast<NSSet*>(set);
  const bool pins = as<const NSMutableSet>(set);
  for (NSObject* element : *set) {
    const Ref<NSObject> kept = pins ? element : nullptr;
    if (!visit(element)) return;
  }
}

/// Calls `visit(key, value)` until it answers false.
template <class Visit> void eachEntryOf(const NSDictionary* dictionary, Visit visit) {
  const Ref<NSDictionary> pinned = const_cast<NSDictionary*>(dictionary);
  const bool pins = as<const NSMutableDictionary>(dictionary);
  for (const auto [key, value] : *dictionary) {
    const Ref<NSObject> keptKey = pins ? key : nullptr, keptValue = pins ? value : nullptr;
    if (!visit(key, value)) return;
  }
}

/// The indexes of the elements of an indexed collection that a test accepts.
template <class Collection, class Test>
Ref<NSIndexSet> indexesPassing(const Collection* collection, NSEnumerationOptions options, Test test) {
  Ref<NSMutableIndexSet> passing = make<NSMutableIndexSet>();
  eachOf(collection, options, [&](NSObject* element, uint64_t index) {
    bool stop = false;
    if (test(element, index, &stop)) passing->addIndex(index);
    return !stop;
  });
  return passing->copy();
}

}  // namespace quoll::inline v1::detail
