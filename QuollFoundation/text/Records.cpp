// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSString> base64Additions;
extern const AdditionGroup<NSData> hexTextAdditions;
extern const AdditionGroup<NSString> lineModelAdditions;

namespace {
constinit const GroupRecord groups[] = {base64Additions, hexTextAdditions, lineModelAdditions};
}  // namespace

extern constinit const FolderRecord textRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
