// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayStacks.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

void push(NSMutableArray* receiver, const NSObject* object) {
  if (receiver && object) receiver->addObject(object);
}

Ref<NSObject> pop(NSMutableArray* receiver) {
  if (!receiver || isEmpty(receiver)) return nullptr;
  Ref<NSObject> last = receiver->lastObject();
  receiver->removeLastObject();
  return last;
}

bool isEmpty(const NSMutableArray* receiver) { return receiver && receiver->count() == 0; }

namespace detail {

extern constinit const AdditionGroup<NSMutableArray> arrayStacks{
    "QFStack", {method<&push>("push:"_sel), method<&pop>("pop"_sel), method<&isEmpty>("isEmpty"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
