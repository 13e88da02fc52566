// SPDX-License-Identifier: MIT
#include <vector>

#include "QuollFoundation/platform/collections/ArrayAccessInternal.h"
#include "QuollFoundation/platform/collections/NSSortDescriptor.h"
#include "QuollFoundation/platform/collections/StableSortInternal.h"
#include "QuollFoundation/platform/collections/StandardSortInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"

/// Sorting of arrays: always of a copy, so that a comparator may do as it pleases.
namespace quoll::inline v1 {

namespace {

/// `sort(std::vector<NSObject*>&)` puts the objects in order.
template <class Sort> Ref<NSArray> arranged(const NSArray* array, const Sort& sort) {
  const Ref<NSArray> given = array->copy();
  const Ref<NSMutableArray> result =
      NSMutableArray::initWithArray(given);  // references are taken while in memory's order
  std::vector<NSObject*> objects(given->begin(), given->end());
  sort(objects);
  detail::ArrayAccess::arrange(result, objects.data());
  return detail::ArrayAccess::frozen(result);
}

template <class Compare> void stableSort(std::vector<NSObject*>& objects, const Compare& compare) {
  detail::stableSort(objects.data(), objects.size(),
                     [&](NSObject* a, NSObject* b) { return compare(a, b) == NSOrderedDescending; });
}

template <class Compare> Ref<NSArray> sorted(const NSArray* array, const Compare& compare) {
  return arranged(array, [&](std::vector<NSObject*>& objects) { stableSort(objects, compare); });
}

}  // namespace

Ref<NSArray> NSArray::sortedArrayUsingComparator(NSComparator comparator) const { return sorted(this, comparator); }

Ref<NSArray> NSArray::sortedArrayUsingSelector(Selector comparison) const {
  if (!comparison) detail::raiseNilArgument(this, "sortedArrayUsingSelector:");
  return arranged(this, [&](std::vector<NSObject*>& objects) {
    constexpr size_t few = 8;  // need no keys
    if (objects.size() > few && detail::compareInStandardOrder(objects, comparison)) {
      return detail::sortInStandardOrder(objects);
    }
    stableSort(objects, [&](NSObject* a, NSObject* b) { return send<NSComparisonResult>(a, comparison, b); });
  });
}

Ref<NSArray> NSArray::sortedArrayUsingFunction_context(NSComparisonResult (*compare)(NSObject*, NSObject*, void*),
                                                       void* context) const {
  if (!compare) detail::raiseNilArgument(this, "sortedArrayUsingFunction:context:");
  return sorted(this, [&](NSObject* a, NSObject* b) { return compare(a, b, context); });
}

Ref<NSArray> NSArray::sortedArrayUsingDescriptors(const NSArray* descriptors) const {
  const Ref<NSArray> order = descriptors ? descriptors->copy() : NSArray::array();
  return sorted(this, [&](NSObject* a, NSObject* b) {
    for (const NSSortDescriptor* each : elements<NSSortDescriptor>(order)) {
      const NSComparisonResult result = each->compareObject_toObject(a, b);
      if (result != NSOrderedSame) return result;
    }
    return NSOrderedSame;
  });
}

/// Takes the order of the sorted copy, unless the array was changed meanwhile.
void NSMutableArray::reorder(const NSArray* sorted, uint64_t mutations) {
  if (mutations_ != mutations) objc_enumerationMutation(this);
  for (uint64_t i = 0; i < count_; ++i) items_[i] = sorted->items_[i];  // the same objects: no reference changes
  ++mutations_;
}

void NSMutableArray::sortUsingComparator(NSComparator comparator) {
  const uint64_t mutations = mutations_;
  reorder(sortedArrayUsingComparator(comparator), mutations);
}

void NSMutableArray::sortUsingSelector(Selector comparison) {
  const uint64_t mutations = mutations_;
  reorder(sortedArrayUsingSelector(comparison), mutations);
}

void NSMutableArray::sortUsingFunction_context(NSComparisonResult (*compare)(NSObject*, NSObject*, void*),
                                               void* context) {
  const uint64_t mutations = mutations_;
  reorder(sortedArrayUsingFunction_context(compare, context), mutations);
}

void NSMutableArray::sortUsingDescriptors(const NSArray* descriptors) {
  const uint64_t mutations = mutations_;
  reorder(sortedArrayUsingDescriptors(descriptors), mutations);
}

}  // namespace quoll::inline v1
