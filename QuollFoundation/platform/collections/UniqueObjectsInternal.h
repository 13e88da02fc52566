// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/EntryTable.h"
#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1::detail {

/// The elements of an array, to be asked often whether an object is among them: by hash, but up to eight elements by
/// `isEqual:` alone. The array outlives it unchanged.
class UniqueObjects {
 public:
  explicit UniqueObjects(const NSArray* array) {
    if (array->count() > EntryTable<ElementEntry>::searchedOneByOne) table_.reserve(array->count());
    for (NSObject* element : *array) {
      uint64_t hash = 0;
      if (!table_.find(element, ObjectKeys(), &hash)) table_.append({element, hash});
    }
  }
  /// Asks the object, `[object isEqual:element]`.
  bool contains(const NSObject* object) const { return table_.find(object, ObjectKeys()); }

 private:
  EntryTable<ElementEntry> table_;
};

}  // namespace quoll::inline v1::detail
