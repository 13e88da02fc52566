// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/CFArray.h"

namespace quoll::inline v1::detail {

/// An array of what is no object.
class ValueArray : public CFArray {
  QF_CLASS(ValueArray, CFArray)
 public:
  ValueArray(const CFArrayCallBacks* callBacks, CFAllocatorRef allocator, bool isMutable);
  ~ValueArray() override;

  void insert(uint64_t index, const void* value);
  void replace(uint64_t index, const void* value);
  void remove(uint64_t index);
  void clear();
  void exchange(uint64_t a, uint64_t b);
  void append(const void* const* values, uint64_t count);
  bool same(const void* a, const void* b) const;
  const void* value(uint64_t index) const { return items_[index]; }
  const void* const* values() const { return items_; }
  const CFArrayCallBacks& callBacks() const { return callBacks_; }
  bool isMutable() const { return isMutable_; }
  void freeze() { isMutable_ = false; }

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override { return count_; }
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;

 private:
  const void* kept(const void* value) const;
  void release(const void* value) const;

  const CFArrayCallBacks callBacks_;
  const CFAllocatorRef allocator_;
  uint64_t capacity_ = 0;
  bool isMutable_;
};

}  // namespace quoll::inline v1::detail
