// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HashReferences.h"

#include "QuollFoundation/platform/collections/NSError.h"
#include "QuollFoundation/platform/logging/NSLog.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/texts/NSRegularExpression.h"

namespace quoll::inline v1 {

Ref<NSString> stringByShorteningHashRefsToLength(const NSString* receiver, int64_t length) {
  if (!receiver) return nullptr;
  constexpr NSString* digit = "[0123456789abcdef]"_ns;
  const Ref<NSString> pattern =
      NSString::stringWithFormat("(%@{%@})%@*"_ns, digit, NSString::stringWithFormat("%lld"_ns, length), digit);
  Ref<NSError> error;
  const Ref<NSRegularExpression> expression = NSRegularExpression::regularExpressionWithPattern_options_error(
      pattern, NSRegularExpressionCaseInsensitive, &error);
  if (!expression) {
    NSLog("%s, %@"_ns, "-[NSString(QFAdditions) stringByShorteningHashRefsToLength:]", error);
    return nullptr;
  }
  return expression->stringByReplacingMatchesInString_options_range_withTemplate(receiver, {}, {0, receiver->length()},
                                                                                 "$1"_ns);
}

namespace detail {

extern constinit const AdditionGroup<NSString> hashReferenceAdditions{
    "QFAdditions", {method<&stringByShorteningHashRefsToLength>("stringByShorteningHashRefsToLength:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
