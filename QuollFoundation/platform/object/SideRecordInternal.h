// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <utility>
#include <vector>

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1::detail {

/// What few objects need; made when first needed, and gone with the object.
struct SideRecord {
  std::recursive_mutex lock;  // the object's own, see Synchronized
  std::mutex valuesLock;
  std::vector<std::pair<const void*, Ref<NSObject>>> values;
  NSObject* nextToRelease = nullptr;
};

/// The object's side record, made if need be.
SideRecord& sideOf(const NSObject* object);
/// Null when there is none.
SideRecord* sideIfAny(const NSObject* object);

}  // namespace quoll::inline v1::detail
