// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/StringComponents.h"

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

Ref<NSArray> componentsSeparatedByString(const NSString* receiver, const NSString* separator) {
  if (!receiver) return nullptr;
  if (!separator) detail::raiseNilArgument(receiver, "componentsSeparatedByString:");
  Ref<NSMutableArray> parts = NSMutableArray::array();
  const uint64_t length = receiver->length();
  uint64_t start = 0;
  while (true) {
    const NSRange next = receiver->rangeOfString_options_range(separator, NSLiteralSearch, {start, length - start});
    if (next.location == NSNotFound || !next.length) break;
    parts->addObject(receiver->substringWithRange({start, next.location - start}));
    start = NSMaxRange(next);
  }
  parts->addObject(receiver->substringFromIndex(start));
  return parts->copy();
}

namespace detail {

extern constinit const AdditionGroup<NSString> stringComponents{
    "NSStringComponents", {method<&componentsSeparatedByString>("componentsSeparatedByString:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
