// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AssociatedValues.h"

#include <algorithm>

#include "QuollFoundation/platform/object/SideRecordInternal.h"

namespace quoll::inline v1 {

void setAssociatedValue(NSObject* object, const void* key, NSObject* value) {
  if (!object || (!value && !detail::sideIfAny(object))) return;
  detail::SideRecord& side = detail::sideOf(object);
  Ref<NSObject> replaced = value;  // what goes dies after the lock is left
  const std::lock_guard lock(side.valuesLock);
  const auto found = std::find_if(side.values.begin(), side.values.end(), [&](auto& v) { return v.first == key; });
  if (found == side.values.end()) {
    if (value) side.values.emplace_back(key, std::move(replaced));
  } else if (value) std::swap(found->second, replaced);
  else {
    std::swap(found->second, replaced);
    side.values.erase(found);
  }
}

Ref<NSObject> associatedValue(const NSObject* object, const void* key) {
  detail::SideRecord* side = object ? detail::sideIfAny(object) : nullptr;
  if (!side) return nullptr;
  const std::lock_guard lock(side->valuesLock);
  for (const auto& [known, value] : side->values) {
    if (known == key) return value;
  }
  return nullptr;
}

}  // namespace quoll::inline v1
