// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <span>

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1::detail {

/// How plain immutable strings are made: the units stand behind the object, in the same allocation.
struct Text {
  /// The most units that a text may have.
  static constexpr size_t longest = size_t{1} << 61;

  /// A string of `length` units that `fill(Unit* units)` writes.
  template <class Unit, class Fill> static Ref<NSString> made(size_t length, const Fill& fill) {
    if (length == 0) return empty();
    InPlace string = allocate(length, sizeof(Unit));
    auto* units = static_cast<Unit*>(string.units);
    fill(units);
    string.object->setStorage(units, length);
    return std::move(string.object);
  }
  static Ref<NSString> copied(std::string_view ascii);
  static Ref<NSString> copied(std::u16string_view units);      ///< Stays UTF-16, whatever the units are.
  static Ref<NSString> fromUnits(std::u16string_view units);   ///< ASCII where it can be.
  static Ref<NSString> fromUTF8(std::string_view bytes);       ///< Null where it is ill-formed.
  static Ref<NSString> fromUTF8Lossy(std::string_view bytes);  ///< What is ill-formed is read as Latin-1: for messages.
  static Ref<NSString> empty();
  /// The one immutable string of this text; itself where it is immutable.
  static Ref<NSString> immutable(const NSString* text);
  static Ref<NSString> part(const NSString* text, NSRange range);  ///< The range fits.

  /// Writes a text and gives the place behind it.
  static char* write(char* to, std::string_view ascii);
  static char16_t* write(char16_t* to, std::string_view ascii);
  static char16_t* write(char16_t* to, std::u16string_view units);

  /// Some units of a text, borrowed. The range fits.
  struct Part {
    explicit Part(const NSString* t) : text(t), range{0, t->length()} {}
    Part(const NSString* t, NSRange r) : text(t), range(r) {}
    /// To memory of bytes the text is ASCII, or the part is empty.
    template <class Unit> Unit* write(Unit* to) const {
      if (const char* ascii = text->asciiCharacters()) {
        return Text::write(to, std::string_view(ascii + range.location, range.length));
      }
      if constexpr (sizeof(Unit) == 1) return to;
      else return Text::write(to, std::u16string_view(text->utf16Characters() + range.location, range.length));
    }
    const NSString* text;
    NSRange range;
  };
  static Ref<NSString> joined(std::span<const Part> parts);
  static Ref<NSString> joined(std::initializer_list<Part> parts) {
    return joined(std::span(parts.begin(), parts.size()));
  }

 private:
  struct InPlace {
    Ref<NSString> object;
    void* units;
  };
  static InPlace allocate(size_t length, size_t unitSize);
};

/// Calls `visitor` with the stored texts of both, in any mixture of ASCII and UTF-16.
template <class Visitor> decltype(auto) visitBoth(const NSString* a, const NSString* b, const Visitor& visitor) {
  return a->visit([&](auto left) { return b->visit([&](auto right) { return visitor(left, right); }); });
}

}  // namespace quoll::inline v1::detail
