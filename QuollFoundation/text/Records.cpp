// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSString> lineModelAdditions;

namespace {
constinit const GroupRecord groups[] = {lineModelAdditions};
}  // namespace

extern constinit const FolderRecord textRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
