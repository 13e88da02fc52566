// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/CommonAffixes.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UnitsInternal.h"

namespace quoll::inline v1 {

uint64_t QFStringLengthOfCommonPrefixWithString(const NSString* a, const NSString* b) {
  if (!a || !b) return 0;
  return detail::visitBoth(a, b, [](auto left, auto right) { return detail::commonPrefixLength(left, right); });
}

uint64_t QFStringLengthOfCommonSuffixWithString(const NSString* a, const NSString* b) {
  if (!a || !b) return 0;
  return detail::visitBoth(a, b, [](auto left, auto right) { return detail::commonSuffixLength(left, right); });
}

uint64_t lengthOfCommonPrefixWithString(const NSString* receiver, const NSString* other) {
  return QFStringLengthOfCommonPrefixWithString(receiver, other);
}
uint64_t lengthOfCommonSuffixWithString(const NSString* receiver, const NSString* other) {
  return QFStringLengthOfCommonSuffixWithString(receiver, other);
}

NSRange rangeOfCommonPrefixWithString(const NSString* receiver, const NSString* other) {
  return {0, lengthOfCommonPrefixWithString(receiver, other)};
}

NSRange rangeOfCommonSuffixWithString(const NSString* receiver, const NSString* other) {
  if (!receiver) return {0, 0};
  const uint64_t length = lengthOfCommonSuffixWithString(receiver, other);
  if (!length) return {NSNotFound, 0};
  return {receiver->length() - length, length};
}

namespace detail {

extern constinit const AdditionGroup<NSString> commonAffixAdditions{
    "QFAdditions",
    {method<&lengthOfCommonPrefixWithString>("lengthOfCommonPrefixWithString:"_sel),
     method<&lengthOfCommonSuffixWithString>("lengthOfCommonSuffixWithString:"_sel),
     method<&rangeOfCommonPrefixWithString>("rangeOfCommonPrefixWithString:"_sel),
     method<&rangeOfCommonSuffixWithString>("rangeOfCommonSuffixWithString:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
