// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// Hangs a value on an object under a key, an address of the caller's own; it dies with the object or when replaced.
/// Null takes it away. Threads: thread-safe.
QF_EXPORT void setAssociatedValue(NSObject* object, const void* key, NSObject* value);
/// Null when nothing hangs there.
QF_EXPORT Ref<NSObject> associatedValue(const NSObject* object, const void* key);

}  // namespace quoll::inline v1
