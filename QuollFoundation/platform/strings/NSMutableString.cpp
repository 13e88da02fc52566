// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSMutableString.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/StringSearchInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"

namespace quoll::inline v1 {

using detail::Text;

Class* NSMutableString::classObject() {
  static Class* const cls =
      ClassBuilder<NSMutableString>("NSMutableString")
          .initializer<&NSMutableString::initWithCapacity_ofClass>("initWithCapacity:"_sel)
          .classMethod<&NSMutableString::stringWithCapacity_ofClass>("stringWithCapacity:"_sel)
          .method<&NSMutableString::setString>("setString:"_sel)
          .method<&NSMutableString::appendString>("appendString:"_sel)
          .method<&NSMutableString::insertString_atIndex>("insertString:atIndex:"_sel)
          .method<&NSMutableString::deleteCharactersInRange>("deleteCharactersInRange:"_sel)
          .method<&NSMutableString::replaceCharactersInRange_withString>("replaceCharactersInRange:withString:"_sel)
          .method<&NSMutableString::replaceOccurrencesOfString_withString_options_range>(
              "replaceOccurrencesOfString:withString:options:range:"_sel)
          .build();
  return cls;
}

Ref<NSMutableString> NSMutableString::stringWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  return cls == classObject() ? initWithCapacity_ofClass(capacity, cls)
                              : made<NSMutableString>(cls, "initWithCapacity:"_sel, capacity);
}

Ref<NSMutableString> NSMutableString::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableString> string = create<NSMutableString>(cls);
  constexpr uint64_t mostReserved = 1 << 20;  // a wild hint costs nothing
  string->makeRoom(std::min(capacity, mostReserved), true);
  return string;
}

NSMutableString::~NSMutableString() { std::free(buffer_); }

void NSMutableString::takeText(const NSString* text) { replace({0, length()}, text); }
Ref<NSObject> NSMutableString::copyWithZone(NSZone* zone) const { return NSString::copyWithZone(zone); }

void NSMutableString::setString(const NSString* text) {
  if (!text) detail::raiseNilArgument(this, "setString:");
  if (text == this) return;
  if (!asciiCharacters() && text->asciiCharacters()) {
    setStorage(static_cast<const char*>(buffer_), 0);
    capacity_ *= sizeof(char16_t);
  }
  replace({0, length()}, text);
}

void NSMutableString::appendString(const NSString* text) {
  if (!text) detail::raiseNilArgument(this, "appendString:");
  replace({length(), 0}, text);
}

void NSMutableString::insertString_atIndex(const NSString* text, uint64_t index) {
  if (!text) detail::raiseNilArgument(this, "insertString:atIndex:");
  if (index > length()) detail::raiseIndex(this, "insertString:atIndex:", index, length() + 1);
  replace({index, 0}, text);
}

void NSMutableString::deleteCharactersInRange(NSRange range) {
  if (!rangeFits(range, length())) detail::raiseRange(this, "deleteCharactersInRange:", range, length());
  replace(range, ""_ns);
}

void NSMutableString::replaceCharactersInRange_withString(NSRange range, const NSString* with) {
  constexpr std::string_view selector = "replaceCharactersInRange:withString:";
  if (!with) detail::raiseNilArgument(this, selector);
  if (!rangeFits(range, length())) detail::raiseRange(this, selector, range, length());
  replace(range, with);
}

uint64_t NSMutableString::replaceOccurrencesOfString_withString_options_range(const NSString* target,
                                                                              const NSString* with,
                                                                              NSStringCompareOptions options,
                                                                              NSRange range) {
  constexpr std::string_view selector = "replaceOccurrencesOfString:withString:options:range:";
  if (!target || !with) detail::raiseNilArgument(this, selector);
  if (!rangeFits(range, length())) detail::raiseRange(this, selector, range, length());
  const std::vector<NSRange> places = detail::StringSearch(this, target, options, range).all();
  if (!places.empty()) setString(detail::replaced(this, places, with));
  return places.size();
}

void NSMutableString::replace(NSRange range, const NSString* with) {
  const Ref<NSString> same = with == this ? Text::immutable(this) : nullptr;
  if (same) with = same;
  const size_t kept = length() - range.length;
  if (with->length() > Text::longest - kept) raise(NSMallocException, "a string grows too long");
  const bool isWide = with->utf16Characters() && !detail::isASCII({with->utf16Characters(), with->length()});
  makeRoom(kept + with->length(), asciiCharacters() && !isWide);
  if (asciiCharacters()) splice<char>(range, with);
  else splice<char16_t>(range, with);
}

template <class Unit> void NSMutableString::splice(NSRange range, const NSString* with) {
  auto* units = static_cast<Unit*>(buffer_);
  const size_t end = NSMaxRange(range);
  const size_t tail = length() - end;
  Unit* place = units + range.location;
  if (tail > 0) std::memmove(place + with->length(), units + end, tail * sizeof(Unit));
  if constexpr (sizeof(Unit) == 1) {
    if (const char16_t* wide = with->utf16Characters()) detail::narrow({wide, with->length()}, place);
    else Text::write(place, std::string_view(with->asciiCharacters(), with->length()));
  } else {
    with->visit([&](auto text) { Text::write(place, text); });
  }
  setStorage(units, range.location + with->length() + tail);
}

void NSMutableString::makeRoom(size_t units, bool ascii) {
  constexpr size_t least = 32;
  const size_t capacity = units <= capacity_ ? capacity_ : std::max({units, 2 * capacity_, least});
  if (asciiCharacters() && !ascii) return widenTo(capacity);
  if (units <= capacity_ && buffer_) return;
  void* grown = std::realloc(buffer_, capacity * (ascii ? sizeof(char) : sizeof(char16_t)));
  if (!grown) throw std::bad_alloc();
  buffer_ = grown;
  capacity_ = capacity;
  if (ascii) setStorage(static_cast<const char*>(grown), length());
  else setStorage(static_cast<const char16_t*>(grown), length());
}

void NSMutableString::widenTo(size_t capacity) {
  auto* wide = static_cast<char16_t*>(std::malloc(capacity * sizeof(char16_t)));
  if (!wide) throw std::bad_alloc();
  detail::widen({asciiCharacters(), length()}, wide);
  setStorage(wide, length());
  std::free(buffer_);
  buffer_ = wide;
  capacity_ = capacity;
}

}  // namespace quoll::inline v1
