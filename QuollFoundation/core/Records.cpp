// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/values/NSNumber.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSNumber> numberAdditions;
extern const AdditionGroup<NSValue> boxedGeometryAdditions;

namespace {
constinit const GroupRecord groups[] = {boxedGeometryAdditions, numberAdditions};
}  // namespace

extern constinit const FolderRecord coreRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
