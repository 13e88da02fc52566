// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "QuollFoundation/platform/object/NSObject.h"

/// Collections inside collections, perhaps inside themselves.
namespace quoll::inline v1::detail {

/// One step down while collections are compared. A depth that only a collection inside itself reaches raises
/// NSGenericException instead of exhausting the stack.
class Nesting {
 public:
  Nesting(const NSObject* collection, std::string_view selector);
  ~Nesting();
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
};

/// Of an element, for its collection's hash: a collection counts by its size alone, so hashing never goes deep.
uint64_t shallowHash(const NSObject* element);

}  // namespace quoll::inline v1::detail
