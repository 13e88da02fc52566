// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/CFDictionary.h"

#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/collections/ValueDictionaryInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1 {

namespace {

const void* retainObject(CFAllocatorRef, const void* value) { return detail::retained(detail::object(value)); }
const void* copyObject(CFAllocatorRef, const void* value) {
  return value ? detail::object(value)->copy().detach() : nullptr;
}
void releaseObject(CFAllocatorRef, const void* value) { detail::drop(value); }
Ref<NSString> describeObject(const void* value) { return value ? detail::object(value)->description() : nullptr; }
bool sameObjects(const void* a, const void* b) { return isEqual(detail::object(a), detail::object(b)); }
CFHashCode hashObject(const void* value) { return value ? detail::object(value)->hash() : 0; }

bool meansObjects(const CFDictionaryKeyCallBacks* keys, const CFDictionaryValueCallBacks* values) {
  return keys && values && (keys->retain == &retainObject || keys->retain == &copyObject) &&
         keys->equal == &sameObjects && keys->hash == &hashObject && values->retain == &retainObject &&
         values->equal == &sameObjects;
}

}  // namespace

constinit const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{
    0, &retainObject, &releaseObject, &describeObject, &sameObjects, &hashObject};
constinit const CFDictionaryKeyCallBacks kCFCopyStringDictionaryKeyCallBacks{
    0, &copyObject, &releaseObject, &describeObject, &sameObjects, &hashObject};
constinit const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{0, &retainObject, &releaseObject,
                                                                           &describeObject, &sameObjects};

Class* CFDictionary::classObject() {
  static Class* const cls = ClassBuilder<CFDictionary>("CFDictionary").build();
  return cls;
}

namespace detail {

struct DictionaryAccess {
  static const EntryTable<PairEntry>& table(CFDictionaryRef dictionary) { return dictionary->table_; }
  static const PairEntry* find(CFDictionaryRef dictionary, const void* key) {
    if (auto* values = as<const ValueDictionary>(dictionary)) return values->find(key);
    return key ? dictionary->table_.find(key, ObjectKeys()) : nullptr;
  }
  /// Objects as keys are held, not copied: that is what was asked for.
  static void put(NSMutableDictionary* dictionary, const void* key, const void* value) {
    if (!key || !value) raiseNilArgument(dictionary, "setObject:forKey:");
    dictionary->putKept(object(key), object(value));
  }
};

Class* ValueDictionary::classObject() {
  static Class* const cls = ClassBuilder<ValueDictionary>("QFValueDictionary").build();
  return cls;
}

constinit const char ValueDictionary::nullKey = 0;

ValueDictionary::ValueDictionary(const CFDictionaryKeyCallBacks* keys, const CFDictionaryValueCallBacks* values,
                                 CFAllocatorRef allocator, bool isMutable)
    : keyCallBacks_(keys ? *keys : CFDictionaryKeyCallBacks{}),
      valueCallBacks_(values ? *values : CFDictionaryValueCallBacks{}),
      allocator_(allocator),
      isMutable_(isMutable) {}

ValueDictionary::~ValueDictionary() { clear(); }

uint64_t ValueDictionary::hash(const void* key) const {
  const void* original = originalKey(key);
  return keyCallBacks_.hash ? keyCallBacks_.hash(original) : reinterpret_cast<uintptr_t>(original);
}
bool ValueDictionary::same(const void* wanted, const void* present) const {
  return wanted == present || (keyCallBacks_.equal && keyCallBacks_.equal(originalKey(wanted), originalKey(present)));
}
bool ValueDictionary::sameValue(const void* a, const void* b) const {
  return a == b || (valueCallBacks_.equal && valueCallBacks_.equal(a, b));
}
void ValueDictionary::releaseKey(const void* stored) const {
  if (keyCallBacks_.release) keyCallBacks_.release(allocator_, originalKey(stored));
}
void ValueDictionary::releaseValue(const void* value) const {
  if (valueCallBacks_.release) valueCallBacks_.release(allocator_, value);
}

void ValueDictionary::put(const void* key, const void* value, Present only) {
  uint64_t hash = 0;
  PairEntry* entry = table_.find(storable(key), *this, &hash);
  if (entry ? only == Present::Absent : only == Present::Here) return;
  const void* kept = valueCallBacks_.retain ? valueCallBacks_.retain(allocator_, value) : value;
  if (entry) {
    const void* old = std::exchange(entry->value, const_cast<void*>(kept));
    table_.noteMutation();
    releaseValue(old);
    return;
  }
  const void* keptKey = keyCallBacks_.retain ? keyCallBacks_.retain(allocator_, key) : key;
  table_.append({const_cast<void*>(storable(keptKey)), const_cast<void*>(kept), hash});
}

void ValueDictionary::remove(const void* key) {
  PairEntry* entry = table_.find(storable(key), *this);
  if (!entry) return;
  const PairEntry removed = table_.remove(entry);
  releaseKey(removed.key);
  releaseValue(removed.value);
}

void ValueDictionary::clear() {
  EntryTable<PairEntry> old;
  old.swap(table_);
  for (const PairEntry& entry : old) {
    if (!entry.key) continue;
    releaseKey(entry.key);
    releaseValue(entry.value);
  }
}

bool ValueDictionary::isEqual(const NSObject* other) const {
  if (this == other) return true;
  auto* dictionary = as<const ValueDictionary>(other);
  if (!dictionary || dictionary->count() != count()) return false;
  for (const PairEntry& entry : table_) {
    if (!entry.key) continue;
    const PairEntry* theirs = dictionary->find(originalKey(entry.key));
    if (!theirs || !sameValue(entry.value, theirs->value)) return false;
  }
  return true;
}

Ref<NSObject> ValueDictionary::copyWithZone(NSZone*) const {
  if (!isMutable_) return const_cast<ValueDictionary*>(this);
  return CFDictionaryCreateCopy(nullptr, this);
}
Ref<NSObject> ValueDictionary::mutableCopyWithZone(NSZone*) const {
  return CFDictionaryCreateMutableCopy(nullptr, 0, this);
}

namespace {

/// Calls one of two functions with the dictionary that may be changed.
template <class OnObjects, class OnValues>
void change(CFDictionary* dictionary, std::string_view function, OnObjects onObjects, OnValues onValues) {
  if (!dictionary) return;
  if (auto* objects = as<NSMutableDictionary>(dictionary)) return onObjects(objects);
  auto* values = as<ValueDictionary>(dictionary);
  if (!values || !values->isMutable()) {
    raise(NSInvalidArgumentException,
          std::string(function) + ": " + plainDescription(dictionary) + " cannot be changed");
  }
  onValues(values);
}

Ref<CFDictionary> copied(CFDictionaryRef dictionary, CFAllocatorRef allocator, bool isMutable,
                         std::string_view function) {
  if (!dictionary) raise(NSInvalidArgumentException, std::string(function) + ": the dictionary is null");
  auto* values = as<const ValueDictionary>(dictionary);
  if (!values) return cast<CFDictionary>(isMutable ? dictionary->mutableCopy() : dictionary->copy());
  Ref<ValueDictionary> copy =
      make<ValueDictionary>(&values->keyCallBacks(), &values->valueCallBacks(), allocator, true);
  for (const PairEntry& entry : DictionaryAccess::table(values)) {
    if (entry.key) copy->put(ValueDictionary::originalKey(entry.key), entry.value, ValueDictionary::Present::Any);
  }
  if (!isMutable) copy->freeze();
  return copy;
}

}  // namespace
}  // namespace detail

using detail::DictionaryAccess;
using detail::PairEntry;
using detail::ValueDictionary;
using Present = detail::ValueDictionary::Present;

Ref<CFDictionary> CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex,
                                            const CFDictionaryKeyCallBacks* keyCallBacks,
                                            const CFDictionaryValueCallBacks* valueCallBacks) {
  if (meansObjects(keyCallBacks, valueCallBacks)) return NSMutableDictionary::dictionary();
  return make<ValueDictionary>(keyCallBacks, valueCallBacks, allocator, true);
}

Ref<CFDictionary> CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values, CFIndex count,
                                     const CFDictionaryKeyCallBacks* keyCallBacks,
                                     const CFDictionaryValueCallBacks* valueCallBacks) {
  if (count < 0) {
    raise(NSInvalidArgumentException, "CFDictionaryCreate: the count " + std::to_string(count) + " is negative");
  }
  if (count && (!keys || !values)) raise(NSInvalidArgumentException, "CFDictionaryCreate: the keys or values are null");
  Ref<CFDictionary> dictionary = CFDictionaryCreateMutable(allocator, count, keyCallBacks, valueCallBacks);
  for (CFIndex i = 0; i < count; ++i) CFDictionarySetValue(dictionary, keys[i], values[i]);
  if (auto* plain = as<ValueDictionary>(dictionary.get())) {
    plain->freeze();
    return dictionary;
  }
  return cast<CFDictionary>(dictionary->copy());
}

Ref<CFDictionary> CFDictionaryCreateCopy(CFAllocatorRef allocator, CFDictionaryRef dictionary) {
  return detail::copied(dictionary, allocator, false, "CFDictionaryCreateCopy");
}
Ref<CFDictionary> CFDictionaryCreateMutableCopy(CFAllocatorRef allocator, CFIndex, CFDictionaryRef dictionary) {
  return detail::copied(dictionary, allocator, true, "CFDictionaryCreateMutableCopy");
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
  return dictionary ? static_cast<CFIndex>(dictionary->count()) : 0;
}

bool CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key, const void** value) {
  const PairEntry* entry = dictionary ? DictionaryAccess::find(dictionary, key) : nullptr;
  if (entry && value) *value = entry->value;
  return entry;
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
  const void* value = nullptr;
  CFDictionaryGetValueIfPresent(dictionary, key, &value);
  return value;
}

bool CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key) {
  return CFDictionaryGetValueIfPresent(dictionary, key, nullptr);
}
CFIndex CFDictionaryGetCountOfKey(CFDictionaryRef dictionary, const void* key) {
  return CFDictionaryContainsKey(dictionary, key);
}

CFIndex CFDictionaryGetCountOfValue(CFDictionaryRef dictionary, const void* value) {
  CFIndex count = 0;
  if (!dictionary) return count;
  auto* values = as<const ValueDictionary>(dictionary);
  for (const PairEntry& entry : DictionaryAccess::table(dictionary)) {
    if (!entry.key) continue;
    count += values ? values->sameValue(value, entry.value) : sameObjects(value, entry.value);
  }
  return count;
}
bool CFDictionaryContainsValue(CFDictionaryRef dictionary, const void* value) {
  return CFDictionaryGetCountOfValue(dictionary, value) != 0;
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values) {
  if (!dictionary) return;
  for (const PairEntry& entry : DictionaryAccess::table(dictionary)) {
    if (!entry.key) continue;
    if (keys) *keys++ = ValueDictionary::originalKey(entry.key);
    if (values) *values++ = entry.value;
  }
}

void CFDictionaryApplyFunction(CFDictionaryRef dictionary, void (*apply)(const void*, const void*, void*),
                               void* context) {
  if (!dictionary) return;
  if (!apply) raise(NSInvalidArgumentException, "CFDictionaryApplyFunction: the function is null");
  const Ref<CFDictionary> pinned = const_cast<CFDictionary*>(dictionary);
  const auto& table = DictionaryAccess::table(dictionary);
  const detail::Watch watch(dictionary, &table.mutations());
  for (const PairEntry* entry = table.begin(); entry != table.end(); ++entry) {
    if (entry->key) apply(ValueDictionary::originalKey(entry->key), entry->value, context);
    watch.check();
  }
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
  detail::change(
      dictionary, "CFDictionarySetValue",
      [&](NSMutableDictionary* objects) { DictionaryAccess::put(objects, key, value); },
      [&](ValueDictionary* values) { values->put(key, value, Present::Any); });
}

void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
  detail::change(
      dictionary, "CFDictionaryAddValue",
      [&](NSMutableDictionary* objects) {
        if (!CFDictionaryContainsKey(objects, key)) DictionaryAccess::put(objects, key, value);
      },
      [&](ValueDictionary* values) { values->put(key, value, Present::Absent); });
}

void CFDictionaryReplaceValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
  detail::change(
      dictionary, "CFDictionaryReplaceValue",
      [&](NSMutableDictionary* objects) {
        if (CFDictionaryContainsKey(objects, key)) DictionaryAccess::put(objects, key, value);
      },
      [&](ValueDictionary* values) { values->put(key, value, Present::Here); });
}

void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key) {
  detail::change(
      dictionary, "CFDictionaryRemoveValue",
      [&](NSMutableDictionary* objects) {
        if (key) objects->removeObjectForKey(detail::object(key));
      },
      [&](ValueDictionary* values) { values->remove(key); });
}

void CFDictionaryRemoveAllValues(CFMutableDictionaryRef dictionary) {
  detail::change(
      dictionary, "CFDictionaryRemoveAllValues", [](NSMutableDictionary* objects) { objects->removeAllObjects(); },
      [](ValueDictionary* values) { values->clear(); });
}

}  // namespace quoll::inline v1
