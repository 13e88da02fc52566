// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/threading/NSThread.h"

namespace quoll::inline v1::detail {

namespace {
constinit const ClassRecord classes[] = {
    {"NSThread", &NSThread::classObject},
};
}  // namespace

extern constinit const FolderRecord threadingRecords{classes, {}, {}};

}  // namespace quoll::inline v1::detail
