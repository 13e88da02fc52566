// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/CFDictionary.h"

namespace quoll::inline v1::detail {

/// A dictionary whose keys or values are no objects.
class ValueDictionary : public CFDictionary {
  QF_CLASS(ValueDictionary, CFDictionary)
 public:
  ValueDictionary(const CFDictionaryKeyCallBacks* keys, const CFDictionaryValueCallBacks* values,
                  CFAllocatorRef allocator, bool isMutable);
  ~ValueDictionary() override;

  enum class Present : uint8_t { Any, Absent, Here };
  void put(const void* key, const void* value, Present only);
  void remove(const void* key);
  void clear();
  const PairEntry* find(const void* key) const { return table_.find(storable(key), *this); }
  bool sameValue(const void* a, const void* b) const;
  bool isMutable() const { return isMutable_; }
  void freeze() { isMutable_ = false; }
  const CFDictionaryKeyCallBacks& keyCallBacks() const { return keyCallBacks_; }
  const CFDictionaryValueCallBacks& valueCallBacks() const { return valueCallBacks_; }

  // The keys' policy of the table
  uint64_t hash(const void* key) const;
  bool same(const void* wanted, const void* present) const;

  // A plain key may be null, which marks a hole in the table: there it is stored as an address of our own.
  static const void* storable(const void* key) { return key ? key : &nullKey; }
  static const void* originalKey(const void* stored) { return stored == &nullKey ? nullptr : stored; }

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override { return table_.count(); }
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;

 private:
  static const char nullKey;
  void releaseKey(const void* stored) const;
  void releaseValue(const void* value) const;

  const CFDictionaryKeyCallBacks keyCallBacks_;
  const CFDictionaryValueCallBacks valueCallBacks_;
  const CFAllocatorRef allocator_;
  bool isMutable_;
};

}  // namespace quoll::inline v1::detail
