// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// Holds the object's own recursive lock for as long as it stands; does nothing for null.
///
///     Synchronized lock(center);
///
/// The lock is made when first taken. Keeps the object alive meanwhile. Threads: thread-safe.
class QF_EXPORT Synchronized {
 public:
  [[nodiscard]] explicit Synchronized(NSObject* object);
  ~Synchronized();
  Synchronized(const Synchronized&) = delete;
  Synchronized& operator=(const Synchronized&) = delete;

 private:
  Ref<NSObject> object_;
};

}  // namespace quoll::inline v1
