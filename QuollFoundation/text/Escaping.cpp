// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Escaping.h"

#include <string>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

namespace {

/// What stands behind the backslash; 0 for a unit that needs none.
constexpr char escapeOf(char16_t unit) {
  switch (unit) {
    case u'\t': return 't';
    case u'\r': return 'r';
    case u'\n': return 'n';
    case u'\\':
    case u'"':
    case u'\'': return static_cast<char>(unit);
    default: return 0;
  }
}

template <class Unit> bool anyEscapes(const Unit* units, size_t length) {
  unsigned found = 0;
  for (size_t i = 0; i < length; ++i) {
    const Unit u = units[i];
    found |= static_cast<unsigned>(u == '\t') | static_cast<unsigned>(u == '\r') | static_cast<unsigned>(u == '\n') |
             static_cast<unsigned>(u == '\\') | static_cast<unsigned>(u == '"') | static_cast<unsigned>(u == '\'');
  }
  return found != 0;
}

template <class Unit> void appendEscaped(std::basic_string<Unit>& to, std::basic_string_view<Unit> units) {
  for (const Unit unit : units) {
    const char escape = escapeOf(static_cast<char16_t>(unit));
    if (escape) to += static_cast<Unit>('\\');
    to += escape ? static_cast<Unit>(escape) : unit;
  }
}

/// Blocks without anything to escape, which most are, are copied as they stand; their length is known, so that the
/// compiler looks at many units at once.
template <class Unit> std::basic_string<Unit> escaped(std::basic_string_view<Unit> units) {
  constexpr size_t block = 32;
  std::basic_string<Unit> result;
  result.reserve(units.size() + units.size() / 16);
  for (; units.size() >= block; units.remove_prefix(block)) {
    if (anyEscapes(units.data(), block)) appendEscaped(result, units.substr(0, block));
    else result.append(units.data(), block);
  }
  appendEscaped(result, units);
  return result;
}

}  // namespace

Ref<NSMutableString> stringByAddingBackslashes(const NSString* receiver) {
  if (!receiver) return nullptr;
  return receiver->visit([]<class Unit>(std::basic_string_view<Unit> units) {
    const std::basic_string<Unit> text = escaped(units);
    if constexpr (sizeof(Unit) == 1) return NSMutableString::stringWithString(NSString::stringWithUTF8(text));
    else return NSMutableString::stringWithString(NSString::stringWithCharacters(text));
  });
}

namespace detail {

extern constinit const AdditionGroup<NSString> escapingAdditions{
    "QFAdditions", {method<&stringByAddingBackslashes>("stringByAddingBackslashes"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
