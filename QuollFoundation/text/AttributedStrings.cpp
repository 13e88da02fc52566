// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/AttributedStrings.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Ref<NSAttributedString> attributedString_ofClass(Class* cls) { return attributedStringWithString_ofClass(""_ns, cls); }
Ref<NSAttributedString> attributedStringWithString_ofClass(const NSString* text, Class* cls) {
  return made<NSAttributedString>(cls, "initWithString:"_sel, text);
}
Ref<NSAttributedString> attributedStringWithString_withAttributes_ofClass(const NSString* text,
                                                                          const NSDictionary* attributes, Class* cls) {
  return made<NSAttributedString>(cls, "initWithString:attributes:"_sel, text, attributes);
}

Ref<NSAttributedString> attributedStringByPrependString(const NSAttributedString* receiver, const NSString* text) {
  if (!receiver) return nullptr;
  if (!text) detail::raiseNilArgument(receiver, "attributedStringByPrependString:");
  return attributedStringWithString_ofClass(text->stringByAppendingString(receiver->string()), receiver->isa());
}
Ref<NSAttributedString> attributedStringByAppendingString(const NSAttributedString* receiver, const NSString* text) {
  if (!receiver) return nullptr;
  if (!text) detail::raiseNilArgument(receiver, "attributedStringByAppendingString:");
  return attributedStringWithString_ofClass(receiver->string()->stringByAppendingString(text), receiver->isa());
}

void appendString(NSMutableAttributedString* receiver, const NSString* text) {
  appendString_withAttributes(receiver, text, nullptr);
}
void appendString_withAttributes(NSMutableAttributedString* receiver, const NSString* text,
                                 const NSDictionary* attributes) {
  if (!receiver) return;
  receiver->appendAttributedString(NSAttributedString::initWithString_attributes(text, attributes));
}
void prependString(NSMutableAttributedString* receiver, const NSString* text) {
  prependString_withAttributes(receiver, text, nullptr);
}
void prependString_withAttributes(NSMutableAttributedString* receiver, const NSString* text,
                                  const NSDictionary* attributes) {
  insertString_withAttributes_atIndex(receiver, text, attributes, 0);
}
void insertString_withAttributes_atIndex(NSMutableAttributedString* receiver, const NSString* text,
                                         const NSDictionary* attributes, uint64_t index) {
  if (!receiver) return;
  receiver->insertAttributedString_atIndex(NSAttributedString::initWithString_attributes(text, attributes), index);
}

namespace detail {

extern constinit const AdditionGroup<NSAttributedString> attributedStringAdditions{
    "QFAdditions",
    {classMethod<&attributedString_ofClass>("attributedString"_sel),
     classMethod<&attributedStringWithString_ofClass>("attributedStringWithString:"_sel),
     classMethod<&attributedStringWithString_withAttributes_ofClass>("attributedStringWithString:withAttributes:"_sel),
     method<&attributedStringByPrependString>("attributedStringByPrependString:"_sel),
     method<&attributedStringByAppendingString>("attributedStringByAppendingString:"_sel)}};

extern constinit const AdditionGroup<NSMutableAttributedString> mutableAttributedStringAdditions{
    "QFAdditions",
    {classMethod<&attributedString_ofClass>("attributedString"_sel), method<&appendString>("appendString:"_sel),
     method<&appendString_withAttributes>("appendString:withAttributes:"_sel),
     method<&prependString>("prependString:"_sel),
     method<&prependString_withAttributes>("prependString:withAttributes:"_sel),
     method<&insertString_withAttributes_atIndex>("insertString:withAttributes:atIndex:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
