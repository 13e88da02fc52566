// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace quoll::inline v1 {

class NSObject;

/// How far a walk over a collection has come; all zero at its start. The collection fills it in
/// (`countByEnumeratingWithState_objects_count`); the walker reads `itemsPtr`, and compares what `mutationsPtr` points
/// to with what it was, which changes when the collection does.
struct NSFastEnumerationState {
  uint64_t state;
  NSObject** itemsPtr;
  uint64_t* mutationsPtr;
  uint64_t extra[5];
};

}  // namespace quoll::inline v1
