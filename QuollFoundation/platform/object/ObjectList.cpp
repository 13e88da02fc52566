// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/ObjectList.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1 {

Class* ObjectList::classObject() {
  static Class* const cls = ClassBuilder<ObjectList>("QFObjectList").build();
  return cls;
}

Ref<ObjectList> ObjectList::of(std::span<const NSObject* const> objects) {
  Ref<ObjectList> list = make<ObjectList>();
  list->objects_.reserve(objects.size());
  for (const NSObject* each : objects) list->objects_.emplace_back(const_cast<NSObject*>(each));
  return list;
}

Ref<ObjectList> ObjectList::rest() const {
  Ref<ObjectList> list = make<ObjectList>();
  if (!objects_.empty()) list->objects_.assign(objects_.begin() + 1, objects_.end());
  return list;
}

}  // namespace quoll::inline v1
