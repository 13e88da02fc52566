// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSString.h"

#include <cstring>
#include <limits>

#include "QuollFoundation/platform/object/AssociatedValues.h"
#include "QuollFoundation/platform/object/AutoreleaseScope.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"

namespace quoll::inline v1 {

using detail::Text;

namespace detail {

namespace {

/// A part of another text, whose units it shares.
class SharedString : public NSString {
 protected:
  template <class Unit>
  SharedString(const NSString* owner, const Unit* units, size_t length)
      : NSString(units, length), owner_(const_cast<NSString*>(owner)) {}

 private:
  const NSString* owner() const override { return owner_; }
  Ref<NSString> owner_;
};

/// A part of this many bytes shares the units of its owner, unless it would keep far more alive than it needs.
constexpr size_t leastToShare = 4096;
constexpr size_t mostKept = 8;  // times the part

bool shouldShare(const NSString* owner, size_t length, size_t unitSize) {
  return owner && length * unitSize >= leastToShare && owner->length() / mostKept <= length;
}

}  // namespace

Text::InPlace Text::allocate(size_t length, size_t unitSize) {
  if (length > longest) raise(NSMallocException, "a string of " + std::to_string(length) + " units is too long");
  static_assert(sizeof(Made<NSString>) == sizeof(NSString));
  Ref<NSString> object = makeSized<NSString>(length * unitSize);
  void* behind = object.get() + 1;
  prepareToFill(behind, length * unitSize);
  return {std::move(object), behind};
}

Ref<NSString> Text::empty() { return ""_ns; }

Ref<NSString> Text::copied(std::string_view ascii) {
  return made<char>(ascii.size(), [&](char* units) { std::memcpy(units, ascii.data(), ascii.size()); });
}

Ref<NSString> Text::copied(std::u16string_view source) {
  const size_t bytes = source.size() * sizeof(char16_t);
  return made<char16_t>(source.size(), [&](char16_t* units) { std::memcpy(units, source.data(), bytes); });
}

Ref<NSString> Text::fromUnits(std::u16string_view units) {
  if (!isASCII(units)) return copied(units);
  return made<char>(units.size(), [&](char* ascii) { narrow(units, ascii); });
}

Ref<NSString> Text::fromUTF8(std::string_view bytes) {
  const UTF8Shape shape = measureUTF8(bytes);
  if (!shape.valid) return nullptr;
  if (shape.ascii) return copied(bytes);
  return made<char16_t>(shape.units, [&](char16_t* units) { decodeUTF8(bytes, units); });
}

Ref<NSString> Text::fromUTF8Lossy(std::string_view bytes) {
  Ref<NSString> text = fromUTF8(bytes);
  return text ? text : NSString::stringWithLatin1(bytes);
}

char* Text::write(char* to, std::string_view ascii) {
  if (!ascii.empty()) std::memcpy(to, ascii.data(), ascii.size());
  return to + ascii.size();
}
char16_t* Text::write(char16_t* to, std::string_view ascii) {
  widen(ascii, to);
  return to + ascii.size();
}
char16_t* Text::write(char16_t* to, std::u16string_view units) {
  if (!units.empty()) std::memcpy(to, units.data(), units.size() * sizeof(char16_t));
  return to + units.size();
}

Ref<NSString> Text::joined(std::span<const Part> parts) {
  size_t length = 0;
  bool ascii = true;
  for (const Part& part : parts) {
    length += part.range.length;
    ascii = ascii && (part.range.length == 0 || part.text->asciiCharacters());
  }
  const auto fill = [&](auto* to) {
    for (const Part& part : parts) to = part.write(to);
  };
  return ascii ? made<char>(length, fill) : made<char16_t>(length, fill);
}

Ref<NSString> Text::immutable(const NSString* text) {
  if (text->owner()) return const_cast<NSString*>(text);
  return text->visit([](auto units) { return copied(units); });
}

Ref<NSString> Text::part(const NSString* text, NSRange range) {
  if (range.length == text->length()) return immutable(text);
  return text->visit([&](auto all) {
    const auto units = all.substr(range.location, range.length);
    const NSString* owner = text->owner();
    if (!shouldShare(owner, units.size(), sizeof(units[0]))) return copied(units);
    return Ref<NSString>(make<SharedString>(owner, units.data(), units.size()));
  });
}

}  // namespace detail

Class* NSString::classObject() {
  static Class* const cls =
      ClassBuilder<NSString>("NSString")
          .initializer<&NSString::init_ofClass>("init"_sel)
          .initializer<&NSString::initWithString_ofClass>("initWithString:"_sel)
          .initializer<&NSString::initWithCharacters_length_ofClass>("initWithCharacters:length:"_sel)
          .initializer<&NSString::initWithUTF8String_ofClass>("initWithUTF8String:"_sel)
          .initializer<&NSString::initWithData_encoding_ofClass>("initWithData:encoding:"_sel)
          .classMethod<&NSString::string_ofClass>("string"_sel)
          .classMethod<&NSString::stringWithString_ofClass>("stringWithString:"_sel)
          .classMethod<&NSString::stringWithCharacters_length_ofClass>("stringWithCharacters:length:"_sel)
          .classMethod<&NSString::stringWithUTF8String_ofClass>("stringWithUTF8String:"_sel)
          .method<&NSString::length>("length"_sel)
          .method<&NSString::characterAtIndex>("characterAtIndex:"_sel)
          .method<&NSString::getCharacters_range>("getCharacters:range:"_sel)
          .method<&NSString::UTF8String>("UTF8String"_sel)
          .method<&NSString::dataUsingEncoding>("dataUsingEncoding:"_sel)
          .method<&NSString::canBeConvertedToEncoding>("canBeConvertedToEncoding:"_sel)
          .method<&NSString::substringFromIndex>("substringFromIndex:"_sel)
          .method<&NSString::substringToIndex>("substringToIndex:"_sel)
          .method<&NSString::substringWithRange>("substringWithRange:"_sel)
          .method<&NSString::stringByAppendingString>("stringByAppendingString:"_sel)
          .method<&NSString::stringByReplacingOccurrencesOfString_withString>(
              "stringByReplacingOccurrencesOfString:withString:"_sel)
          .method<&NSString::stringByReplacingCharactersInRange_withString>(
              "stringByReplacingCharactersInRange:withString:"_sel)
          .method<&NSString::stringByTrimmingCharactersInSet>("stringByTrimmingCharactersInSet:"_sel)
          .method<&NSString::uppercaseString>("uppercaseString"_sel)
          .method<&NSString::lowercaseString>("lowercaseString"_sel)
          .method<&NSString::isEqualToString>("isEqualToString:"_sel)
          .method<&NSString::compare>("compare:"_sel)
          .method<&NSString::compare_options>("compare:options:"_sel)
          .method<&NSString::compare_options_range>("compare:options:range:"_sel)
          .method<&NSString::compare_options_range_locale>("compare:options:range:locale:"_sel)
          .method<&NSString::caseInsensitiveCompare>("caseInsensitiveCompare:"_sel)
          .method<&NSString::localizedCompare>("localizedCompare:"_sel)
          .method<&NSString::localizedStandardCompare>("localizedStandardCompare:"_sel)
          .method<&NSString::hasPrefix>("hasPrefix:"_sel)
          .method<&NSString::hasSuffix>("hasSuffix:"_sel)
          .method<&NSString::rangeOfString>("rangeOfString:"_sel)
          .method<&NSString::rangeOfString_options>("rangeOfString:options:"_sel)
          .method<&NSString::rangeOfString_options_range>("rangeOfString:options:range:"_sel)
          .method<&NSString::containsString>("containsString:"_sel)
          .method<&NSString::rangeOfCharacterFromSet>("rangeOfCharacterFromSet:"_sel)
          .method<&NSString::rangeOfCharacterFromSet_options_range>("rangeOfCharacterFromSet:options:range:"_sel)
          .method<&NSString::intValue>("intValue"_sel)
          .method<&NSString::integerValue>("integerValue"_sel)
          .method<&NSString::longLongValue>("longLongValue"_sel)
          .method<&NSString::floatValue>("floatValue"_sel)
          .method<&NSString::doubleValue>("doubleValue"_sel)
          .method<&NSString::boolValue>("boolValue"_sel)
          .build();
  return cls;
}

// Storage

void NSString::setStorage(const char* ascii, size_t length) {
  units_ = ascii;
  length_ = length & ~signBit;
  ascii_ = 1;
}

void NSString::setStorage(const char16_t* units, size_t length) {
  units_ = units;
  length_ = length & ~signBit;
  ascii_ = 0;
}

/// A client's subclass has no room behind its objects: it leans on a plain string that dies with it.
void NSString::takeText(const NSString* text) {
  static constexpr char key = 0;
  const Ref<NSString> plain = Text::immutable(text);
  setAssociatedValue(this, &key, plain);
  plain->visit([&](auto units) { setStorage(units.data(), units.size()); });
}

const NSString* NSString::owner() const { return this; }

void NSString::raiseIndex(std::string_view selector, uint64_t index) const {
  detail::raiseIndex(this, selector, index, length());
}

// Making strings

namespace {

[[noreturn]] void raiseNilInInitializer(const Class* cls, std::string_view selector) {
  raise(NSInvalidArgumentException, "-[" + std::string(cls->name()) + " " + std::string(selector) + "]: nil argument");
}

std::u16string_view viewOf(const char16_t* units, uint64_t length, std::string_view selector) {
  if (!units && length > 0) detail::raiseNilArgument(NSString::classObject(), selector);
  if (length > Text::longest) detail::raiseRange(NSString::classObject(), selector, {0, length}, Text::longest);
  return {units, length};
}

}  // namespace

Ref<NSString> NSString::stringWithUTF8(std::string_view bytes) { return Text::fromUTF8(bytes); }
Ref<NSString> NSString::stringWithCharacters(std::u16string_view units) { return Text::fromUnits(units); }
Ref<NSString> NSString::stringWithLatin1(std::string_view bytes) {
  if (detail::isASCII(bytes)) return Text::copied(bytes);
  return Text::made<char16_t>(bytes.size(), [&](char16_t* units) { detail::widen(bytes, units); });
}

Ref<NSString> NSString::init_ofClass(Class* cls) { return initWithString_ofClass(""_ns, cls); }
Ref<NSString> NSString::initWithString_ofClass(const NSString* other, Class* cls) {
  if (!other) raiseNilInInitializer(cls, "initWithString:");
  if (cls == classObject()) return Text::immutable(other);
  Ref<NSString> string = create<NSString>(cls);
  string->takeText(other);
  return string;
}
Ref<NSString> NSString::initWithCharacters_length_ofClass(const char16_t* units, uint64_t length, Class* cls) {
  return initWithString_ofClass(Text::fromUnits(viewOf(units, length, "initWithCharacters:length:")), cls);
}
Ref<NSString> NSString::initWithUTF8String_ofClass(const char* text, Class* cls) {
  if (!text) raiseNilInInitializer(cls, "initWithUTF8String:");
  const Ref<NSString> decoded = Text::fromUTF8(text);
  return decoded ? initWithString_ofClass(decoded, cls) : nullptr;
}

Ref<NSString> NSString::string_ofClass(Class* cls) {
  return cls == classObject() ? Text::empty() : made<NSString>(cls, "init"_sel);
}
Ref<NSString> NSString::stringWithString_ofClass(const NSString* other, Class* cls) {
  if (!other) detail::raiseNilArgument(cls, "stringWithString:");
  return cls == classObject() ? Text::immutable(other) : made<NSString>(cls, "initWithString:"_sel, other);
}
Ref<NSString> NSString::stringWithCharacters_length_ofClass(const char16_t* units, uint64_t length, Class* cls) {
  const std::u16string_view view = viewOf(units, length, "stringWithCharacters:length:");
  return cls == classObject() ? Text::fromUnits(view)
                              : made<NSString>(cls, "initWithCharacters:length:"_sel, units, length);
}
Ref<NSString> NSString::stringWithUTF8String_ofClass(const char* text, Class* cls) {
  if (!text) detail::raiseNilArgument(cls, "stringWithUTF8String:");
  return cls == classObject() ? Text::fromUTF8(text) : made<NSString>(cls, "initWithUTF8String:"_sel, text);
}

// Units and bytes

void NSString::getCharacters_range(char16_t* buffer, NSRange range) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, "getCharacters:range:", range, length());
  if (range.length == 0) return;
  if (!buffer) detail::raiseNilArgument(this, "getCharacters:range:");
  if (ascii_) return detail::widen({asciiCharacters() + range.location, range.length}, buffer);
  std::memcpy(buffer, utf16Characters() + range.location, range.length * sizeof(char16_t));
}

std::string NSString::utf8() const {
  if (ascii_) return std::string(asciiCharacters(), length());
  const std::u16string_view units(utf16Characters(), length());
  std::string bytes(detail::measureUTF16(units).bytes, 0);
  detail::encodeUTF8(units, bytes.data());
  return bytes;
}

std::u16string NSString::utf16() const {
  std::u16string units(length(), 0);
  getCharacters_range(units.data(), {0, length()});
  return units;
}

namespace {
/// Bytes that a scope keeps; they stand behind it.
class KeptBytes : public NSObject {
 public:
  char* bytes() { return reinterpret_cast<char*>(this + 1); }
};
}  // namespace

const char* NSString::UTF8String() const {
  if (!ascii_ && !detail::measureUTF16({utf16Characters(), length()}).valid) return nullptr;
  const std::string bytes = utf8();
  const Ref<KeptBytes> kept = makeSized<KeptBytes>(bytes.size() + 1);
  std::memcpy(kept->bytes(), bytes.c_str(), bytes.size() + 1);
  return autorelease(kept)->bytes();
}

// Parts

Ref<NSString> NSString::substringFromIndex(uint64_t index) const {
  if (index > length()) detail::raiseIndex(this, "substringFromIndex:", index, length() + 1);
  return Text::part(this, {index, length() - index});
}

Ref<NSString> NSString::substringToIndex(uint64_t index) const {
  if (index > length()) detail::raiseIndex(this, "substringToIndex:", index, length() + 1);
  return Text::part(this, {0, index});
}

Ref<NSString> NSString::substringWithRange(NSRange range) const {
  if (!rangeFits(range, length())) detail::raiseRange(this, "substringWithRange:", range, length());
  return Text::part(this, range);
}

Ref<NSString> NSString::stringByAppendingString(const NSString* other) const {
  if (!other) detail::raiseNilArgument(this, "stringByAppendingString:");
  if (other->length() == 0) return copy();
  return Text::joined({Text::Part(this), Text::Part(other)});
}

Ref<NSString> NSString::stringByReplacingCharactersInRange_withString(NSRange range, const NSString* with) const {
  constexpr std::string_view selector = "stringByReplacingCharactersInRange:withString:";
  if (!with) detail::raiseNilArgument(this, selector);
  if (!rangeFits(range, length())) detail::raiseRange(this, selector, range, length());
  const uint64_t end = NSMaxRange(range);
  return Text::joined(
      {Text::Part(this, {0, range.location}), Text::Part(with), Text::Part(this, {end, length() - end})});
}

// Copies

Ref<NSString> NSString::description() const { return copy(); }
Ref<NSObject> NSString::copyWithZone(NSZone*) const { return Text::immutable(this); }
Ref<NSObject> NSString::mutableCopyWithZone(NSZone*) const {
  return NSMutableString::stringWithString<NSMutableString>(this);
}
Ref<NSString> NSString::copy() const { return cast<NSString>(copyWithZone(nullptr)); }
Ref<NSMutableString> NSString::mutableCopy() const { return cast<NSMutableString>(mutableCopyWithZone(nullptr)); }

}  // namespace quoll::inline v1
