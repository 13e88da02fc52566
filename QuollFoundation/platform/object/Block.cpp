// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Block.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1::detail {

Class* HeapBlock::classObject() {
  static Class* const cls = ClassBuilder<HeapBlock>("QFBlock").build();
  return cls;
}

void raiseNotCopyable() { raise(NSInvalidArgumentException, "a callable that can't be copied can't be kept"); }
void raiseNullBlock() { raise(NSInvalidArgumentException, "a callback is null"); }

}  // namespace quoll::inline v1::detail
