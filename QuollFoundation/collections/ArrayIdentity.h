// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

/// Whether the array holds the object itself, not merely one that equals it. An addition to NSArray. Null is in none.
///
///     if (!containsObjectIdenticalTo(open, document)) open->addObject(document);
QF_EXPORT bool containsObjectIdenticalTo(const NSArray* receiver, const NSObject* object);

}  // namespace quoll::inline v1
