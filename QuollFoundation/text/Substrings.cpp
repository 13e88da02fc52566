// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Substrings.h"

#include <string>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace quoll::inline v1 {

char16_t QFStringGetLastCharacter(const NSString* string) {
  return string ? string->characterAtIndex(string->length() - 1) : u'\0';
}

Ref<NSString> substringBetweenIndex_andIndex(const NSString* receiver, uint64_t i, uint64_t j) {
  return receiver ? receiver->substringWithRange({i, j - i}) : nullptr;
}

NSRange rangeOfString_startingIndex(const NSString* receiver, const NSString* wanted, uint64_t index) {
  if (!receiver) return {0, 0};
  return receiver->rangeOfString_options_range(wanted, {}, {index, receiver->length() - index});
}

Ref<NSString> stringByPrependingString(const NSString* receiver, const NSString* prefix) {
  if (!receiver) return nullptr;
  if (!prefix) detail::raiseNilArgument(receiver, "stringByPrependingString:");
  return prefix->stringByAppendingString(receiver);
}

Ref<NSString> keyPathWithComponents(const ObjectList* components) {
  if (!components || !components->first()) return nullptr;
  const Ref<NSMutableString> path = NSMutableString::stringWithFormat("%@"_ns, components->first());
  const Ref<ObjectList> others = components->rest();
  for (const Ref<NSObject>& each : *others) {
    if (!each) break;
    path->appendFormat(".%@"_ns, each);
  }
  return path->copy();
}

Ref<NSString> stringWithData_encoding_ofClass(const NSData* data, NSStringEncoding encoding, Class* cls) {
  return made<NSString>(cls, "initWithData:encoding:"_sel, data, encoding);
}

namespace detail {

extern constinit const AdditionGroup<NSString> substringAdditions{
    "QFAdditions",
    {method<&substringBetweenIndex_andIndex>("substringBetweenIndex:andIndex:"_sel),
     method<&rangeOfString_startingIndex>("rangeOfString:startingIndex:"_sel),
     method<&stringByPrependingString>("stringByPrependingString:"_sel),
     classMethod<overload<Ref<NSString>(const ObjectList*)>(&keyPathWithComponents)>("keyPathWithComponents:"_sel),
     classMethod<&stringWithData_encoding_ofClass>("stringWithData:encoding:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
