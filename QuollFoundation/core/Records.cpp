// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSIndexPath.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/collections/NSPointerFunctions.h"
#include "QuollFoundation/platform/collections/NSSortDescriptor.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/values/NSNumber.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSIndexPath> indexPathAdditions;
extern const AdditionGroup<NSNumber> numberAdditions;
extern const AdditionGroup<NSPointerArray> valuePointerArrayAdditions;
extern const AdditionGroup<NSPointerFunctions> structPointerFunctionAdditions;
extern const AdditionGroup<NSSortDescriptor> sortDescriptorAdditions;
extern const AdditionGroup<NSValue> boxedGeometryAdditions;

namespace {
constinit const GroupRecord groups[] = {
    indexPathAdditions,
    numberAdditions,
    boxedGeometryAdditions,
    sortDescriptorAdditions,
    structPointerFunctionAdditions,
    valuePointerArrayAdditions,
};
}  // namespace

extern constinit const FolderRecord coreRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
