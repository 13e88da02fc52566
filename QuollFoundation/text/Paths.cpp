// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Paths.h"

#include <string>

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/texts/PathComponents.h"

namespace quoll::inline v1 {

Ref<NSString> pathByAppendingPath(const NSString* receiver, const NSString* path) {
  if (!receiver) return nullptr;
  Ref<NSString> joined = receiver->copy();
  if (!path) return joined;
  for (NSString* component : elements<NSString>(pathComponents(path))) {
    joined = stringByAppendingPathComponent(joined, component);
  }
  return joined;
}

Ref<NSString> absolutePathByAppendingRelativePath(const NSString* receiver, const NSString* path) {
  if (!receiver) return nullptr;
  if (isAbsolutePath(path)) {
    raise(
        NSInvalidArgumentException,
        "Invalid argument passed to -[NSString(QFAdditions) absolutePathByAppendingRelativePath:]. The string is not a "
        "relative path");
  }
  return stringByStandardizingPath(pathByAppendingPath(receiver, path));
}

namespace detail {

extern constinit const AdditionGroup<NSString> pathAdditions{
    "QFAdditions",
    {method<&pathByAppendingPath>("pathByAppendingPath:"_sel),
     method<&absolutePathByAppendingRelativePath>("absolutePathByAppendingRelativePath:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
