// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Escaping.h"

#include <array>
#include <string_view>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"

namespace quoll::inline v1 {

namespace {

/// What stands behind the backslash; 0 for a unit that needs none.
constexpr std::array<char, 128> escapes = [] {
  std::array<char, 128> table{};
  table['\t'] = 't';
  table['\r'] = 'r';
  table['\n'] = 'n';
  for (const char itself : {'\\', '"', '\''}) table[static_cast<size_t>(itself)] = itself;
  return table;
}();
template <class Unit> char escapeOf(Unit unit) {
  const auto value = static_cast<char16_t>(unit);
  return value < escapes.size() ? escapes[value] : '\0';
}

/// Without a branch on what the units are: a backslash is always written, and stays where it is needed.
template <class Unit> void writeEscaped(std::basic_string_view<Unit> units, Unit* to) {
  for (const Unit unit : units) {
    const char escape = escapeOf(unit);
    *to = escape ? Unit{'\\'} : unit;
    to += escape != 0;
    *to++ = escape ? static_cast<Unit>(escape) : unit;
  }
}

}  // namespace

Ref<NSMutableString> stringByAddingBackslashes(const NSString* receiver) {
  if (!receiver) return nullptr;
  return receiver->visit([]<class Unit>(std::basic_string_view<Unit> units) {
    size_t length = units.size();
    for (const Unit unit : units) length += escapeOf(unit) != 0;
    return NSMutableString::stringWithString(
        detail::Text::made<Unit>(length, [&](Unit* to) { writeEscaped(units, to); }));
  });
}

namespace detail {

extern constinit const AdditionGroup<NSString> escapingAdditions{
    "QFAdditions", {method<&stringByAddingBackslashes>("stringByAddingBackslashes"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
