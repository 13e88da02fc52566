// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSMutableArray.h"

/// Mapping a part of an array, with a condition and a stop, and mapping runs of neighbours. Additions to NSArray.
///
///     auto titles = qf_mapObjectsInRange_usingBlock(books, {10, 5}, [](Book* book, uint64_t, bool*) {
///       return book->title();
///     });
///
/// A callback that changes the receiver raises NSGenericException. Threads: callbacks run on the caller's thread.
namespace quoll::inline v1 {

/// Gives what stands for the element, or null to drop it. Setting `*stop` ends the walk after it.
using ArrayMap = BlockRef<Ref<NSObject>(NSObject* element, uint64_t index, bool* stop)>;
/// Whether the element at that index is mapped at all; null is always.
using IndexCondition = OptionalBlockRef<bool(uint64_t index)>;

/// Immutable. Indices count from 0 at the start of the range. THE RANGE (0, 0) IS THE WHOLE ARRAY; one that reaches
/// past the end raises NSRangeException.
QF_EXPORT Ref<NSArray> qf_mapObjectsInRange_usingBlock_condition(const NSArray* receiver, NSRange range, ArrayMap map,
                                                                 IndexCondition condition);
QF_EXPORT Ref<NSArray> qf_mapObjectsInRange_usingBlock(const NSArray* receiver, NSRange range, ArrayMap map);
QF_EXPORT Ref<NSArray> qf_mapObjectsUsingBlock_condition(const NSArray* receiver, ArrayMap map,
                                                         IndexCondition condition);
QF_EXPORT Ref<NSArray> qf_mapObjectsUsingBlock(const NSArray* receiver, ArrayMap map);

/// Cuts the array where `inSameGroup(previous, current)` is false, and joins what `map` gives for each of the groups;
/// null adds nothing. Mutable. The group is the same array each time, emptied after the call: copy it to keep it.
QF_EXPORT Ref<NSMutableArray> qf_mapGroupsByBlock_withBlock(
    const NSArray* receiver, BlockRef<bool(NSObject* previous, NSObject* current)> inSameGroup,
    BlockRef<Ref<NSArray>(NSMutableArray* group)> map);

}  // namespace quoll::inline v1
