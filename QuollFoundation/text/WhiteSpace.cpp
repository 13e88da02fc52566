// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/WhiteSpace.h"

#include <cstring>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"

namespace quoll::inline v1 {

bool QFCharacterIsNewline(char16_t unit) { return detail::isNewlineUnit(unit); }

bool isWhitespace(const NSString* receiver) {
  if (!receiver) return false;
  if (!receiver->length()) {
    raise(NSInvalidArgumentException, "isWhitespace is undefined for strings of length == 0");
  }
  return receiver->visit([](auto units) {
    for (const auto each : units) {
      const auto unit = static_cast<char16_t>(each);
      if (!detail::isWhitespaceUnit(unit) && !detail::isNewlineUnit(unit)) return false;
    }
    return true;
  });
}

Ref<NSString> stringByStrippingWhitespace(const NSString* receiver) {
  if (!receiver) return nullptr;
  return receiver->substringWithRange(detail::rangeWithoutWhitespace(receiver));
}

void stripWhitespace(NSMutableString* receiver) { CFStringTrimWhitespace(receiver); }

namespace {

/// Copies with blanks for line ends. Blocks of a known length, so that the compiler takes many units at once.
template <class Unit> void replaceNewlines(const Unit* from, size_t length, Unit* to) {
  constexpr size_t block = 64;
  const auto replace = [](Unit unit) -> Unit {
    if constexpr (sizeof(Unit) == 1) return static_cast<uint8_t>(unit - '\n') <= 3 ? ' ' : unit;
    else return detail::isNewlineUnit(unit) ? u' ' : unit;
  };
  size_t i = 0;
  for (; length - i >= block; i += block) {
    Unit units[block];
    std::memcpy(units, from + i, sizeof units);
    for (Unit& unit : units) unit = replace(unit);
    std::memcpy(to + i, units, sizeof units);
  }
  for (; i < length; ++i) to[i] = replace(from[i]);
}

}  // namespace

Ref<NSString> stringByReplacingNewlinesWithSpaces(const NSString* receiver) {
  if (!receiver) return nullptr;
  return receiver->visit([]<class Unit>(std::basic_string_view<Unit> units) {
    return detail::Text::made<Unit>(units.size(), [&](Unit* to) { replaceNewlines(units.data(), units.size(), to); });
  });
}

Ref<NSCharacterSet> tabCharacterSet() { return NSCharacterSet::characterSetWithCharactersInString("\t"_ns); }

namespace detail {

extern constinit const AdditionGroup<NSString> whiteSpaceAdditions{
    "QFAdditions",
    {method<&isWhitespace>("isWhitespace"_sel), method<&stringByStrippingWhitespace>("stringByStrippingWhitespace"_sel),
     method<&stringByReplacingNewlinesWithSpaces>("stringByReplacingNewlinesWithSpaces"_sel)}};
extern constinit const AdditionGroup<NSMutableString> mutableWhiteSpaceAdditions{
    "QFAdditions", {method<&stripWhitespace>("stripWhitespace"_sel)}};
extern constinit const AdditionGroup<NSCharacterSet> tabCharacterSetAdditions{
    "QFAdditions", {classMethod<&tabCharacterSet>("tabCharacterSet"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
