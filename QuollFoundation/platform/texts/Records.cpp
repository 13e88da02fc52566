// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/texts/CFStringTokenizer.h"

namespace quoll::inline v1::detail {

namespace {
constinit const ClassRecord classes[] = {
    {"CFStringTokenizer", &CFStringTokenizer::classObject},
};
}  // namespace

extern constinit const FolderRecord textsRecords{classes, {}, {}};

}  // namespace quoll::inline v1::detail
