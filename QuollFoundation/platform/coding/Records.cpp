// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSObject> keyValueCoding;

namespace {
constinit const GroupRecord groups[] = {keyValueCoding};
}  // namespace

extern constinit const FolderRecord codingRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
