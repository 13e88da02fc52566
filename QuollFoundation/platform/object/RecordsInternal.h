// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Protocol.h"

/// What the library offers, as constants: no static initialiser runs, and the runtime reads them when first asked.
namespace quoll::inline v1::detail {

struct ClassRecord {
  const char* name;
  Class* (*classObject)();
};

/// One folder's classes, addition groups and protocols.
struct FolderRecord {
  std::span<const ClassRecord> classes;
  std::span<const GroupRecord> groups;
  std::span<const ProtocolRecord> protocols;
};

/// Of all folders; defined at the top of the house, which knows them all.
std::span<const FolderRecord* const> folders();

}  // namespace quoll::inline v1::detail
