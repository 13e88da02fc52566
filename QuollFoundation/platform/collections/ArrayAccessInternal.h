// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1::detail {

/// Ways in and out of an array that take no references: for those who make one.
struct ArrayAccess {
  /// Takes over a reference; not null.
  [[gnu::always_inline]] static void append(NSMutableArray* array, Ref<NSObject>&& object) {
    if (array->count_ == array->capacity_) [[unlikely]]
      array->makeRoom(array->capacity_, array->count_ + 1);
    array->items_[array->count_++] = object.detach();
    ++array->mutations_;
  }

  /// An immutable array of what the other one held, which is empty then.
  static Ref<NSArray> frozen(NSMutableArray* array) {
    Ref<NSArray> immutable = create<NSArray>(NSArray::classObject());
    if (array->capacity_ > array->count_ && array->count_) array->items_ = resized(array->items_, array->count_);
    immutable->NSArray::takeItems(std::exchange(array->items_, nullptr), std::exchange(array->count_, 0));
    array->capacity_ = 0;
    ++array->mutations_;
    return immutable;
  }

  /// The same objects in another order.
  static void arrange(NSMutableArray* array, NSObject* const* objects) {
    if (array->count_) std::memcpy(array->items_, objects, array->count_ * sizeof(void*));
  }
};

}  // namespace quoll::inline v1::detail
