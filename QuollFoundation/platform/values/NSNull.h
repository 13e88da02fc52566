// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// Stands for "nothing" where a collection wants an object. There is one, `NSNull::null()`, so `==` tells it.
/// Threads: immutable.
class QF_EXPORT NSNull : public NSObject {
  QF_CLASS(NSNull, NSObject)
 public:
  static NSNull* null();  ///< Immortal.

  Ref<NSString> description() const override;               ///< "<null>"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  constexpr NSNull() = default;
};

}  // namespace quoll::inline v1
