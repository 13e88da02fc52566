// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

/// Gives the elements of a collection one after another, once.
///
///     for (auto names = list->objectEnumerator(); Ref<NSObject> each = names->nextObject();) ...
///
/// It keeps the collection alive; once that has changed, the next element raises NSGenericException. A subclass says
/// what comes next. Threads: caller-locked.
class QF_EXPORT NSEnumerator : public NSObject {
  QF_CLASS(NSEnumerator, NSObject)
 public:
  virtual Ref<NSObject> nextObject();  ///< Null at the end. Raises unless overridden.
  Ref<NSArray> allObjects();           ///< Those that are left.
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;

 protected:
  NSEnumerator() = default;

 private:
  Ref<NSObject> given_;  // keeps the element alive that a walk was given last
};

namespace detail {
Ref<NSEnumerator> enumeratorOf(const NSArray* array, NSEnumerationOptions options);
/// Of a collection whose keys, or values, are walked in order.
Ref<NSEnumerator> enumeratorOf(const NSObject* collection, const EntryTable<PairEntry>& table, bool values);
Ref<NSEnumerator> enumeratorOf(const NSObject* collection, const EntryTable<ElementEntry>& table, bool reverse);
}  // namespace detail

}  // namespace quoll::inline v1
