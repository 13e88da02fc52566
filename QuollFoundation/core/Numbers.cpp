// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Numbers.h"

#include <string_view>

#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

Ref<NSNumber> numberWithCGFloat_ofClass(CGFloat value, Class* cls) {
  if (cls == NSNumber::classObject()) return NSNumber::numberWithDouble_ofClass(value, cls);
  return send<Ref<NSNumber>>(cls, "numberWithDouble:"_sel, value);
}

Ref<NSNumber> initWithCGFloat_ofClass(CGFloat value, Class* cls) {
  if (cls == NSNumber::classObject()) return NSNumber::initWithDouble_ofClass(value, cls);
  return made<NSNumber>(cls, "initWithDouble:"_sel, value);
}

CGFloat CGFloatValue(const NSNumber* receiver) { return receiver ? receiver->doubleValue() : 0; }

bool isUnsigned(const NSNumber* receiver) {
  if (!receiver) return false;
  const std::string_view type = receiver->objCType();
  return type == "I" || type == "S" || type == "Q" || type == "C";
}

namespace detail {

extern constinit const AdditionGroup<NSNumber> numberAdditions{
    "QFAdditions",
    {classMethod<&numberWithCGFloat_ofClass>("numberWithCGFloat:"_sel),
     initializer<&initWithCGFloat_ofClass>("initWithCGFloat:"_sel), method<&CGFloatValue>("CGFloatValue"_sel),
     method<&isUnsigned>("isUnsigned"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
