// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/ObjectList.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

namespace {
constinit const ClassRecord classes[] = {
    {"Class", &Class::classObject},
    {"NSInvocation", &NSInvocation::classObject},
    {"NSMethodSignature", &NSMethodSignature::classObject},
    {"NSObject", &NSObject::classObject},
    {"NSProxy", &NSProxy::classObject},
    {"Protocol", &Protocol::classObject},
    {"QFBlock", &HeapBlock::classObject},
    {"QFObjectList", &ObjectList::classObject},
};
}  // namespace

extern constinit const FolderRecord objectRecords{classes, {}, {}};

}  // namespace quoll::inline v1::detail
