// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/SortDescriptors.h"

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Ref<NSSortDescriptor> sortDescriptorWithKey_ascending_ofClass(const NSString* key, bool ascending, Class* cls) {
  return made<NSSortDescriptor>(cls, "initWithKey:ascending:"_sel, key, ascending);
}

Ref<NSSortDescriptor> sortDescriptorWithKey_ascending_selector_ofClass(const NSString* key, bool ascending,
                                                                       Selector selector, Class* cls) {
  return made<NSSortDescriptor>(cls, "initWithKey:ascending:selector:"_sel, key, ascending, selector);
}

namespace detail {

extern constinit const AdditionGroup<NSSortDescriptor> sortDescriptorAdditions{
    "QFAdditions",
    {classMethod<&sortDescriptorWithKey_ascending_ofClass>("sortDescriptorWithKey:ascending:"_sel),
     classMethod<&sortDescriptorWithKey_ascending_selector_ofClass>("sortDescriptorWithKey:ascending:selector:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
