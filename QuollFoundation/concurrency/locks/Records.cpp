// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/QFSemaphore.h"
#include "QuollFoundation/concurrency/locks/QFThreadsafeObject.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

namespace {
constinit const ClassRecord classes[] = {
    {"QFSemaphore", &QFSemaphore::classObject},
    {"QFThreadsafeObject", &QFThreadsafeObject::classObject},
};
}  // namespace

extern constinit const FolderRecord locksRecords{classes, {}, {}};

}  // namespace quoll::inline v1::detail
