// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/Enumeration.h"

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

namespace detail {
constinit uint64_t neverMutated = 0;
}

void objc_enumerationMutation(NSObject* collection) {
  raise(NSGenericException,
        "*** Collection " + detail::plainDescription(collection) + " was mutated while being enumerated.");
}

void forEachIn(NSObject* enumerable, BlockRef<void(NSObject*)> visit) {
  const auto visitBatch = [&](NSObject* const* elements, uint64_t count) {
    visit.callInARow(elements, count);
    return true;
  };
  detail::walkInBatches(enumerable, visitBatch, [&](NSObject* element) {
    visit(element);
    return true;
  });
}

}  // namespace quoll::inline v1
