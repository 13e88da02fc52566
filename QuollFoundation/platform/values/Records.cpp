// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/values/NSDate.h"
#include "QuollFoundation/platform/values/NSNull.h"
#include "QuollFoundation/platform/values/NSNumber.h"

namespace quoll::inline v1::detail {

namespace {
constinit const ClassRecord classes[] = {
    {"NSDate", &NSDate::classObject},
    {"NSNull", &NSNull::classObject},
    {"NSNumber", &NSNumber::classObject},
    {"NSValue", &NSValue::classObject},
};
}  // namespace

extern constinit const FolderRecord valuesRecords{classes, {}, {}};

}  // namespace quoll::inline v1::detail
