// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1::detail {

/// A recorded object is about to be destroyed.
void forgetLiveObject(const NSObject* object);

}  // namespace quoll::inline v1::detail
