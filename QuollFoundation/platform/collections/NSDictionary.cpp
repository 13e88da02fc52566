// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSDictionary.h"

#include <vector>

#include "QuollFoundation/platform/collections/DescriptionInternal.h"
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NestingInternal.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/collections/StableSortInternal.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

using detail::ObjectKeys;
using detail::PairEntry;

Class* NSDictionary::classObject() {
  static Class* const cls =
      ClassBuilder<NSDictionary>("NSDictionary")
          .classMethod<&NSDictionary::dictionary_ofClass>("dictionary"_sel)
          .classMethod<&NSDictionary::dictionaryWithObject_forKey_ofClass>("dictionaryWithObject:forKey:"_sel)
          .classMethod<&NSDictionary::dictionaryWithObjects_forKeys_ofClass>("dictionaryWithObjects:forKeys:"_sel)
          .classMethod<&NSDictionary::dictionaryWithObjects_forKeys_count_ofClass>(
              "dictionaryWithObjects:forKeys:count:"_sel)
          .classMethod<&NSDictionary::dictionaryWithDictionary_ofClass>("dictionaryWithDictionary:"_sel)
          .initializer<&NSDictionary::initWithObjects_forKeys_ofClass>("initWithObjects:forKeys:"_sel)
          .initializer<&NSDictionary::initWithObjects_forKeys_count_ofClass>("initWithObjects:forKeys:count:"_sel)
          .initializer<&NSDictionary::initWithDictionary_ofClass>("initWithDictionary:"_sel)
          .initializer<&NSDictionary::initWithDictionary_copyItems_ofClass>("initWithDictionary:copyItems:"_sel)
          .method<overload<uint64_t() const>(&NSDictionary::count)>("count"_sel)
          .method<&NSDictionary::objectForKey>("objectForKey:"_sel)
          .method<&NSDictionary::objectForKeyedSubscript>("objectForKeyedSubscript:"_sel)
          .method<&NSDictionary::allKeys>("allKeys"_sel)
          .method<&NSDictionary::allValues>("allValues"_sel)
          .method<&NSDictionary::allKeysForObject>("allKeysForObject:"_sel)
          .method<&NSDictionary::objectsForKeys_notFoundMarker>("objectsForKeys:notFoundMarker:"_sel)
          .method<&NSDictionary::keysSortedByValueUsingSelector>("keysSortedByValueUsingSelector:"_sel)
          .method<&NSDictionary::keysSortedByValueUsingComparator>("keysSortedByValueUsingComparator:"_sel)
          .method<&NSDictionary::keyEnumerator>("keyEnumerator"_sel)
          .method<&NSDictionary::objectEnumerator>("objectEnumerator"_sel)
          .method<&NSDictionary::enumerateKeysAndObjectsUsingBlock>("enumerateKeysAndObjectsUsingBlock:"_sel)
          .method<&NSDictionary::enumerateKeysAndObjectsWithOptions_usingBlock>(
              "enumerateKeysAndObjectsWithOptions:usingBlock:"_sel)
          .method<&NSDictionary::keysOfEntriesPassingTest>("keysOfEntriesPassingTest:"_sel)
          .method<&NSDictionary::keysOfEntriesWithOptions_passingTest>("keysOfEntriesWithOptions:passingTest:"_sel)
          .method<&NSDictionary::isEqualToDictionary>("isEqualToDictionary:"_sel)
          .build();
  return cls;
}

NSDictionary::~NSDictionary() { dropAll(); }

/// What the dictionary held dies when it is empty already.
void NSDictionary::dropAll() {
  detail::EntryTable<PairEntry> old;
  old.swap(table_);
  for (const PairEntry& entry : old) {
    if (!entry.key) continue;
    detail::drop(entry.key);
    detail::drop(entry.value);
  }
}

// Making dictionaries

void NSDictionary::put(const NSObject* key, const NSObject* value, std::string_view selector) {
  if (!key || !value) detail::raiseNilArgument(this, selector);
  uint64_t hash = 0;
  if (PairEntry* entry = table_.find(key, ObjectKeys(), &hash)) {
    void* const old = std::exchange(entry->value, detail::retained(value));
    table_.noteMutation();
    detail::drop(old);
    return;
  }
  Ref<NSObject> copy = key->copy();
  if (!copy) detail::raiseNilArgument(this, selector);
  table_.append({copy.get(), detail::retained(value), hash});
  static_cast<void>(copy.detach());
}

/// The same without a copy of the key.
void NSDictionary::putKept(Ref<NSObject> key, const NSObject* value) {
  uint64_t hash = 0;
  if (PairEntry* entry = table_.find(key.get(), ObjectKeys(), &hash)) {
    void* const old = std::exchange(entry->value, detail::retained(value));
    table_.noteMutation();
    detail::drop(old);
    return;
  }
  table_.append({key.get(), detail::retained(value), hash});
  static_cast<void>(key.detach());
}

void NSDictionary::copyEntries(const NSDictionary* other) {
  table_.copyFrom(other->table_);
  for (const PairEntry& entry : table_) {
    static_cast<void>(detail::retained(detail::object(entry.key)));
    static_cast<void>(detail::retained(detail::object(entry.value)));
  }
}

Ref<NSDictionary> NSDictionary::dictionary_ofClass(Class* cls) {
  if (detail::isOneOf<NSDictionary, NSMutableDictionary>(cls)) return create<NSDictionary>(cls);
  return made<NSDictionary>(cls, "init"_sel);
}

Ref<NSDictionary> NSDictionary::dictionaryWithObject_forKey_ofClass(const NSObject* object, const NSObject* key,
                                                                    Class* cls) {
  NSObject* const objects[] = {const_cast<NSObject*>(object)};
  NSObject* const keys[] = {const_cast<NSObject*>(key)};
  return dictionaryWithObjects_forKeys_count_ofClass(objects, keys, 1, cls);
}

Ref<NSDictionary> NSDictionary::dictionaryWithObjects_forKeys_ofClass(const NSArray* objects, const NSArray* keys,
                                                                      Class* cls) {
  if (detail::isOneOf<NSDictionary, NSMutableDictionary>(cls))
    return initWithObjects_forKeys_ofClass(objects, keys, cls);
  return made<NSDictionary>(cls, "initWithObjects:forKeys:"_sel, objects, keys);
}

Ref<NSDictionary> NSDictionary::dictionaryWithObjects_forKeys_count_ofClass(NSObject* const* objects,
                                                                            NSObject* const* keys, uint64_t count,
                                                                            Class* cls) {
  if (detail::isOneOf<NSDictionary, NSMutableDictionary>(cls))
    return initWithObjects_forKeys_count_ofClass(objects, keys, count, cls);
  return made<NSDictionary>(cls, "initWithObjects:forKeys:count:"_sel, objects, keys, count);
}

Ref<NSDictionary> NSDictionary::dictionaryWithDictionary_ofClass(const NSDictionary* other, Class* cls) {
  if (detail::isOneOf<NSDictionary, NSMutableDictionary>(cls)) return initWithDictionary_ofClass(other, cls);
  return made<NSDictionary>(cls, "initWithDictionary:"_sel, other);
}

Ref<NSDictionary> NSDictionary::dictionaryWithObjectsAndKeys_ofClass(std::initializer_list<Element> list, Class* cls) {
  std::vector<NSObject*> objects, keys;
  for (const Element* each = list.begin(); each != list.end() && *each; ++each) {
    objects.push_back(each->get());
    if (++each == list.end() || !*each) {
      raise(NSInvalidArgumentException, detail::methodName(cls, "dictionaryWithObjectsAndKeys:") + ": value " +
                                            std::to_string(objects.size()) + " has no key");
    }
    keys.push_back(each->get());
  }
  return dictionaryWithObjects_forKeys_count_ofClass(objects.data(), keys.data(), objects.size(), cls);
}

Ref<NSDictionary> NSDictionary::dictionaryWithEntries_ofClass(EntryList entries, Class* cls) {
  std::vector<NSObject*> objects, keys;
  for (const auto& [key, value] : entries) {
    keys.push_back(key.get());
    objects.push_back(value.get());
  }
  return dictionaryWithObjects_forKeys_count_ofClass(objects.data(), keys.data(), objects.size(), cls);
}

Ref<NSDictionary> NSDictionary::initWithObjects_forKeys_ofClass(const NSArray* objects, const NSArray* keys,
                                                                Class* cls) {
  const uint64_t count = objects ? objects->count() : 0, keyCount = keys ? keys->count() : 0;
  if (count != keyCount) {
    raise(NSInvalidArgumentException, "-[" + std::string(cls->name()) + " initWithObjects:forKeys:]: " +
                                          std::to_string(count) + " objects for " + std::to_string(keyCount) + " keys");
  }
  Ref<NSDictionary> dictionary = create<NSDictionary>(cls);
  dictionary->table_.reserve(count);
  for (uint64_t i = 0; i < count; ++i) {
    dictionary->put(keys->objectAtIndex(i), objects->objectAtIndex(i), "initWithObjects:forKeys:");
  }
  return dictionary;
}

Ref<NSDictionary> NSDictionary::initWithObjects_forKeys_count_ofClass(NSObject* const* objects, NSObject* const* keys,
                                                                      uint64_t count, Class* cls) {
  Ref<NSDictionary> dictionary = create<NSDictionary>(cls);
  if (count && (!objects || !keys)) detail::raiseNilArgument(cls, "initWithObjects:forKeys:count:");
  dictionary->table_.reserve(count);
  for (uint64_t i = 0; i < count; ++i) dictionary->put(keys[i], objects[i], "initWithObjects:forKeys:count:");
  return dictionary;
}

Ref<NSDictionary> NSDictionary::initWithDictionary_ofClass(const NSDictionary* other, Class* cls) {
  Ref<NSDictionary> dictionary = create<NSDictionary>(cls);
  if (other) dictionary->copyEntries(other);
  return dictionary;
}

Ref<NSDictionary> NSDictionary::initWithDictionary_copyItems_ofClass(const NSDictionary* other, bool copyItems,
                                                                     Class* cls) {
  Ref<NSDictionary> dictionary = initWithDictionary_ofClass(other, cls);
  if (!other || !copyItems) return dictionary;
  detail::eachEntryOf(other, [&](NSObject* key, NSObject* value) {
    dictionary->put(key, value->copy(), "initWithDictionary:copyItems:");
    return true;
  });
  return dictionary;
}

Ref<NSObject> NSDictionary::copyWithZone(NSZone*) const {
  if (isa() != NSDictionary::classObject()) return initWithDictionary<NSDictionary>(this);
  return const_cast<NSDictionary*>(this);
}
Ref<NSObject> NSDictionary::mutableCopyWithZone(NSZone*) const { return NSMutableDictionary::initWithDictionary(this); }
Ref<NSDictionary> NSDictionary::copy() const { return cast<NSDictionary>(copyWithZone(nullptr)); }
Ref<NSMutableDictionary> NSDictionary::mutableCopy() const {
  return cast<NSMutableDictionary>(mutableCopyWithZone(nullptr));
}

// Entries

Ref<NSObject> NSDictionary::objectForKey(const NSObject* key) const {
  const PairEntry* entry = key ? table_.find(key, ObjectKeys()) : nullptr;
  return entry ? detail::object(entry->value) : nullptr;
}

namespace {
/// One part of each entry.
template <class Part> Ref<NSArray> arrayOf(const NSDictionary* dictionary, Part part) {
  std::vector<NSObject*> objects;
  objects.reserve(dictionary->count());
  for (const DictionaryEntry entry : *dictionary) objects.push_back(part(entry));
  return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

/// The keys in the order of their values.
template <class Compare> Ref<NSArray> keysSorted(const NSDictionary* dictionary, Compare compare) {
  const Ref<NSDictionary> given = dictionary->copy();
  std::vector<const DictionaryEntry*> order;
  std::vector<DictionaryEntry> entries(given->begin(), given->end());
  for (const DictionaryEntry& entry : entries) order.push_back(&entry);
  detail::stableSort(order.data(), order.size(), [&](const DictionaryEntry* a, const DictionaryEntry* b) {
    return compare(a->value, b->value) == NSOrderedDescending;
  });
  std::vector<NSObject*> keys;
  for (const DictionaryEntry* entry : order) keys.push_back(entry->key);
  return NSArray::arrayWithObjects_count(keys.data(), keys.size());
}
}  // namespace

Ref<NSArray> NSDictionary::allKeys() const {
  return arrayOf(this, [](DictionaryEntry entry) { return entry.key; });
}
Ref<NSArray> NSDictionary::allValues() const {
  return arrayOf(this, [](DictionaryEntry entry) { return entry.value; });
}

Ref<NSArray> NSDictionary::allKeysForObject(const NSObject* object) const {
  Ref<NSMutableArray> keys = NSMutableArray::array();
  detail::eachEntryOf(this, [&](NSObject* key, NSObject* value) {
    if (object && quoll::isEqual(object, value)) keys->addObject(key);
    return true;
  });
  return keys->copy();
}

Ref<NSArray> NSDictionary::objectsForKeys_notFoundMarker(const NSArray* keys, NSObject* marker) const {
  Ref<NSMutableArray> found = NSMutableArray::array();
  for (uint64_t i = 0; keys && i < keys->count(); ++i) {
    const Ref<NSObject> value = objectForKey(keys->objectAtIndex(i));
    found->addObject(value ? value.get() : marker);
  }
  return found->copy();
}

Ref<NSArray> NSDictionary::keysSortedByValueUsingSelector(Selector comparison) const {
  if (!comparison) detail::raiseNilArgument(this, "keysSortedByValueUsingSelector:");
  return keysSorted(this, [&](NSObject* a, NSObject* b) { return send<NSComparisonResult>(a, comparison, b); });
}
Ref<NSArray> NSDictionary::keysSortedByValueUsingComparator(NSComparator comparator) const {
  return keysSorted(this, comparator);
}

Ref<NSEnumerator> NSDictionary::keyEnumerator() const { return detail::enumeratorOf(this, table_, false); }
Ref<NSEnumerator> NSDictionary::objectEnumerator() const { return detail::enumeratorOf(this, table_, true); }

// Walks

void NSDictionary::enumerateKeysAndObjectsUsingBlock(EntryAction action) const {
  enumerateKeysAndObjectsWithOptions_usingBlock({}, action);
}

void NSDictionary::enumerateKeysAndObjectsWithOptions_usingBlock(NSEnumerationOptions, EntryAction action) const {
  detail::eachEntryOf(this, [&](NSObject* key, NSObject* value) {
    bool stop = false;
    action(key, value, &stop);
    return !stop;
  });
}

Ref<NSSet> NSDictionary::keysOfEntriesPassingTest(EntryTest test) const {
  return keysOfEntriesWithOptions_passingTest({}, test);
}

Ref<NSSet> NSDictionary::keysOfEntriesWithOptions_passingTest(NSEnumerationOptions, EntryTest test) const {
  Ref<NSMutableSet> keys = NSMutableSet::set();
  detail::eachEntryOf(this, [&](NSObject* key, NSObject* value) {
    bool stop = false;
    if (test(key, value, &stop)) keys->addObject(key);
    return !stop;
  });
  return keys->copy();
}

uint64_t NSDictionary::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                 uint64_t count) {
  const uint64_t given = table_.enumerate(state, objects, count);
  detail::noteImmutable(state, this);
  return given;
}

// Equality

bool NSDictionary::isEqual(const NSObject* other) const { return isEqualToDictionary(as<const NSDictionary>(other)); }

bool NSDictionary::isEqualToDictionary(const NSDictionary* other) const {
  if (this == other) return true;
  if (!other || other->count() != count()) return false;
  const detail::Nesting nesting(this, "isEqual:");
  for (const PairEntry& entry : table_) {
    if (!entry.key) continue;
    const PairEntry* theirs = other->table_.find(entry.key, entry.hash, ObjectKeys());
    if (!theirs || !quoll::isEqual(detail::object(entry.value), detail::object(theirs->value))) return false;
  }
  return true;
}

uint64_t NSDictionary::hash() const {
  uint64_t hash = count();
  for (const PairEntry& entry : table_) {
    if (entry.key) hash += entry.hash;  // in any order
  }
  return hash;
}

Ref<NSString> NSDictionary::description() const { return detail::describeCollection(this); }

}  // namespace quoll::inline v1
