// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayTexts.h"

#include "QuollFoundation/collections/Toolkit.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Ref<NSString> shortDescriptionWithMapping(const NSArray* receiver, ElementTransform mapping) {
  if (!receiver) return nullptr;
  const Ref<NSArray> parts = __ASTMap_NSArray(receiver, mapping);
  return NSString::stringWithFormat("[%@]"_ns, parts->componentsJoinedByString(", "_ns));
}

Ref<NSString> shortDescription(const NSArray* receiver) {
  return shortDescriptionWithMapping(receiver, [](NSObject* element) { return element->description(); });
}

namespace detail {

extern constinit const AdditionGroup<NSArray> arrayTexts{
    "QFAdditions",
    {method<&shortDescription>("shortDescription"_sel),
     method<&shortDescriptionWithMapping>("shortDescriptionWithMapping:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
