// SPDX-License-Identifier: MIT
#pragma once

#include <unordered_map>

#include "QuollFoundation/platform/object/Casting.h"

namespace quoll::inline v1 {

/// By value, for the standard containers. Null hashes to 0 and equals null only.
struct ObjectHash {
  using is_transparent = void;
  size_t operator()(const NSObject* object) const { return object ? object->hash() : 0; }
};
struct ObjectEqual {
  using is_transparent = void;
  bool operator()(const NSObject* a, const NSObject* b) const { return isEqual(a, b); }
};

/// An unordered map that goes by the keys' values: `ObjectMap<Ref<NSString>, int>`.
template <class K, class V> using ObjectMap = std::unordered_map<K, V, ObjectHash, ObjectEqual>;

}  // namespace quoll::inline v1
