// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayMapping.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"

namespace quoll::inline v1 {

Ref<NSArray> qf_mapObjectsInRange_usingBlock_condition(const NSArray* receiver, NSRange range, ArrayMap map,
                                                       IndexCondition condition) {
  if (!receiver) return nullptr;
  const bool isWhole = range.location == 0 && range.length == 0;
  const Ref<NSArray> source = isWhole ? Ref(const_cast<NSArray*>(receiver)) : receiver->subarrayWithRange(range);
  const Ref<NSMutableArray> results = NSMutableArray::arrayWithCapacity(receiver->count());
  uint64_t index = 0;
  detail::walk(source.get(), [&](NSObject* element) {
    bool stop = false;
    if (!condition || condition(index)) {
      if (const Ref<NSObject> result = map(element, index, &stop)) results->addObject(result);
    }
    ++index;
    return !stop;
  });
  return results->copy();
}

Ref<NSArray> qf_mapObjectsInRange_usingBlock(const NSArray* receiver, NSRange range, ArrayMap map) {
  return qf_mapObjectsInRange_usingBlock_condition(receiver, range, map, nullptr);
}
Ref<NSArray> qf_mapObjectsUsingBlock_condition(const NSArray* receiver, ArrayMap map, IndexCondition condition) {
  return qf_mapObjectsInRange_usingBlock_condition(receiver, {0, 0}, map, condition);
}
Ref<NSArray> qf_mapObjectsUsingBlock(const NSArray* receiver, ArrayMap map) {
  return qf_mapObjectsInRange_usingBlock_condition(receiver, {0, 0}, map, nullptr);
}

Ref<NSMutableArray> qf_mapGroupsByBlock_withBlock(const NSArray* receiver,
                                                  BlockRef<bool(NSObject* previous, NSObject* current)> inSameGroup,
                                                  BlockRef<Ref<NSArray>(NSMutableArray* group)> map) {
  if (!receiver) return nullptr;
  Ref<NSMutableArray> results = NSMutableArray::array();
  const Ref<NSMutableArray> group = NSMutableArray::array();
  const auto flush = [&] {
    if (!group->count()) return;
    results->addObjectsFromArray(map(group));
    group->removeAllObjects();
  };
  Ref<NSObject> previous;
  detail::walk(const_cast<NSArray*>(receiver), [&](NSObject* element) {
    if (previous && !inSameGroup(previous, element)) flush();
    group->addObject(element);
    previous = element;
    return true;
  });
  flush();
  return results;
}

namespace detail {

extern constinit const AdditionGroup<NSArray> arrayMapping{
    "QFAdditions",
    {method<&qf_mapObjectsUsingBlock>("qf_mapObjectsUsingBlock:"_sel),
     method<&qf_mapObjectsInRange_usingBlock>("qf_mapObjectsInRange:usingBlock:"_sel),
     method<&qf_mapObjectsUsingBlock_condition>("qf_mapObjectsUsingBlock:condition:"_sel),
     method<&qf_mapObjectsInRange_usingBlock_condition>("qf_mapObjectsInRange:usingBlock:condition:"_sel),
     method<&qf_mapGroupsByBlock_withBlock>("qf_mapGroupsByBlock:withBlock:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
