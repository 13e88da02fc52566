// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSArray> arrayIdentity;
extern const AdditionGroup<NSArray> arrayLists;
extern const AdditionGroup<NSMutableArray> arrayListWorkers;
extern const AdditionGroup<NSArray> arrayMapping;
extern const AdditionGroup<NSMutableArray> arrayStacks;
extern const AdditionGroup<NSArray> arrayTexts;
extern const AdditionGroup<NSMutableArray> mutableArrayLists;

namespace {
constinit const GroupRecord groups[] = {arrayIdentity, arrayLists, arrayListWorkers, arrayMapping,
                                        arrayStacks,   arrayTexts, mutableArrayLists};
}  // namespace

extern constinit const FolderRecord toolkitRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
