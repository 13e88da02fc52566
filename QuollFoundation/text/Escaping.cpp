// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Escaping.h"

#include <string_view>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/text/EscapingInternal.h"

namespace quoll::inline v1 {

Ref<NSMutableString> stringByAddingBackslashes(const NSString* receiver) {
  if (!receiver) return nullptr;
  return receiver->visit([]<class Unit>(std::basic_string_view<Unit> units) {
    const size_t length = units.size() + detail::countOfEscapes(units);
    return NSMutableString::stringWithString(
        detail::Text::made<Unit>(length, [&](Unit* to) { detail::writeEscaped(units, to); }));
  });
}

namespace detail {

extern constinit const AdditionGroup<NSString> escapingAdditions{
    "QFAdditions", {method<&stringByAddingBackslashes>("stringByAddingBackslashes"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
