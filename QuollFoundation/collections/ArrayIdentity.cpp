// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayIdentity.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"

namespace quoll::inline v1 {

bool containsObjectIdenticalTo(const NSArray* receiver, const NSObject* object) {
  return receiver && receiver->indexOfObjectIdenticalTo(object) != NSNotFound;
}

namespace detail {

extern constinit const AdditionGroup<NSArray> arrayIdentity{
    "QFAdditions", {method<&containsObjectIdenticalTo>("containsObjectIdenticalTo:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
