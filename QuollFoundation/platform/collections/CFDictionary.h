// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/CFAllocator.h"
#include "QuollFoundation/platform/collections/EntryTable.h"

namespace quoll::inline v1 {

/// How a dictionary keeps its keys; a null function means plain pointers: nothing to keep, equal and hashed by address.
struct CFDictionaryKeyCallBacks {
  CFIndex version;                                                     ///< 0
  const void* (*retain)(CFAllocatorRef allocator, const void* value);  ///< Gives what the dictionary stores.
  void (*release)(CFAllocatorRef allocator, const void* value);
  Ref<NSString> (*copyDescription)(const void* value);
  bool (*equal)(const void* a, const void* b);
  CFHashCode (*hash)(const void* value);
};
/// How a dictionary keeps its values.
struct CFDictionaryValueCallBacks {
  CFIndex version;  ///< 0
  const void* (*retain)(CFAllocatorRef allocator, const void* value);
  void (*release)(CFAllocatorRef allocator, const void* value);
  Ref<NSString> (*copyDescription)(const void* value);
  bool (*equal)(const void* a, const void* b);
};

QF_EXPORT extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;        ///< Objects, held.
QF_EXPORT extern const CFDictionaryKeyCallBacks kCFCopyStringDictionaryKeyCallBacks;  ///< Objects, copied.
QF_EXPORT extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;    ///< Objects, held.

namespace detail {
struct DictionaryAccess;
}

/// A dictionary of keys and values that sets of callbacks keep: plain numbers and structs in cells of their own, or
/// objects. What is made with object keys and object values is an NSDictionary or NSMutableDictionary, and each of
/// these is a CFDictionary. Entries keep the order in which their keys were added.
/// Threads: immutable, or caller-locked where it may be changed.
class QF_EXPORT CFDictionary : public NSObject {
  QF_CLASS(CFDictionary, NSObject)
 public:
  uint64_t count() const { return table_.count(); }
  Ref<NSString> description() const override;

 protected:
  CFDictionary() = default;
  detail::EntryTable<detail::PairEntry> table_;

 private:
  friend struct detail::DictionaryAccess;
};

using CFDictionaryRef = const CFDictionary*;
using CFMutableDictionaryRef = CFDictionary*;

/// The first of equal keys stays, with the value given last.
QF_EXPORT Ref<CFDictionary> CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                               CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                               const CFDictionaryValueCallBacks* valueCallBacks);
QF_EXPORT Ref<CFDictionary> CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                      const CFDictionaryKeyCallBacks* keyCallBacks,
                                                      const CFDictionaryValueCallBacks* valueCallBacks);
/// With the callbacks of the other one. A null dictionary raises NSInvalidArgumentException.
QF_EXPORT Ref<CFDictionary> CFDictionaryCreateCopy(CFAllocatorRef allocator, CFDictionaryRef dictionary);
QF_EXPORT Ref<CFDictionary> CFDictionaryCreateMutableCopy(CFAllocatorRef allocator, CFIndex capacity,
                                                          CFDictionaryRef dictionary);

/// Reading. Null answers 0, false or null.
QF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
QF_EXPORT CFIndex CFDictionaryGetCountOfKey(CFDictionaryRef dictionary, const void* key);  ///< 0 or 1
QF_EXPORT CFIndex CFDictionaryGetCountOfValue(CFDictionaryRef dictionary, const void* value);
QF_EXPORT bool CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key);
QF_EXPORT bool CFDictionaryContainsValue(CFDictionaryRef dictionary, const void* value);
QF_EXPORT const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
QF_EXPORT bool CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key, const void** value);
/// Either list may be null.
QF_EXPORT void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values);
QF_EXPORT void CFDictionaryApplyFunction(CFDictionaryRef dictionary,
                                         void (*apply)(const void* key, const void* value, void* context),
                                         void* context);

/// Changing. An immutable dictionary raises NSInvalidArgumentException.
QF_EXPORT void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key,
                                    const void* value);  ///< If absent.
QF_EXPORT void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value);
QF_EXPORT void CFDictionaryReplaceValue(CFMutableDictionaryRef dictionary, const void* key,
                                        const void* value);  ///< If present.
QF_EXPORT void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key);
QF_EXPORT void CFDictionaryRemoveAllValues(CFMutableDictionaryRef dictionary);

}  // namespace quoll::inline v1
