// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/RangeTexts.h"

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {

Ref<NSString> QFNSStringFromCFRange(CFRange range) {
  return NSStringFromRange({range.location < 0 ? NSNotFound : static_cast<uint64_t>(range.location),
                            range.length < 0 ? 0 : static_cast<uint64_t>(range.length)});
}

}  // namespace quoll::inline v1
