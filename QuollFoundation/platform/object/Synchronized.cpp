// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Synchronized.h"

#include "QuollFoundation/platform/object/SideRecordInternal.h"

namespace quoll::inline v1 {

Synchronized::Synchronized(NSObject* object) : object_(object) {
  if (object) detail::sideOf(object).lock.lock();
}
Synchronized::~Synchronized() {
  if (object_) detail::sideOf(object_).lock.unlock();
}

}  // namespace quoll::inline v1
