// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Booleans.h"

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Ref<NSString> QFStringFromBOOL(bool value) { return value ? "YES"_ns : "NO"_ns; }

}  // namespace quoll::inline v1
