// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"

/// The records of all folders, lowest first: what the runtime knows before anybody has touched a class.
namespace quoll::inline v1::detail {

extern const FolderRecord objectRecords;
extern const FolderRecord stringsRecords;
extern const FolderRecord valuesRecords;
extern const FolderRecord codingRecords;
extern const FolderRecord collectionsRecords;
extern const FolderRecord textsRecords;
extern const FolderRecord threadingRecords;
extern const FolderRecord coreRecords;
extern const FolderRecord toolkitRecords;
extern const FolderRecord locksRecords;
extern const FolderRecord textRecords;

namespace {
constinit const FolderRecord* const all[] = {&objectRecords,      &stringsRecords, &valuesRecords,    &codingRecords,
                                             &collectionsRecords, &textsRecords,   &threadingRecords, &coreRecords,
                                             &toolkitRecords,     &locksRecords,   &textRecords};
}  // namespace

std::span<const FolderRecord* const> folders() { return all; }

}  // namespace quoll::inline v1::detail
