// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Conversions between UTF-8, UTF-16, ASCII and Latin-1, over plain spans.
///
/// Each conversion is two steps: one that measures or tests its source, and one that writes. In between the caller
/// makes a destination of exactly the size that the first step gave. A writer trusts its source to be what the test
/// said; source and destination do not overlap.
///
///     const UTF8Shape shape = measureUTF8(bytes);
///     if (!shape.valid) return nullptr;
///     std::u16string text(shape.units, 0);
///     decodeUTF8(bytes, text.data());
namespace quoll::inline v1::detail {

struct UTF8Shape {
  size_t units = 0;    ///< How many UTF-16 units the text has; of no meaning unless valid.
  bool ascii = false;  ///< Every byte is below 0x80: the bytes are the units.
  bool valid = false;  ///< No overlong form, no surrogate, nothing above U+10FFFF, no stray or missing byte.
};

struct UTF16Shape {
  size_t bytes = 0;    ///< How many bytes `encodeUTF8` writes.
  bool ascii = false;  ///< Every unit is below 0x80.
  bool valid = false;  ///< No unpaired surrogate.
};

UTF8Shape measureUTF8(std::string_view bytes);
UTF16Shape measureUTF16(std::u16string_view text);

/// Writes the units of valid UTF-8.
void decodeUTF8(std::string_view bytes, char16_t* units);

/// Writes UTF-8, with U+FFFD for each unpaired surrogate; whoever refuses these looks at the shape first.
void encodeUTF8(std::u16string_view text, char* bytes);

bool isASCII(std::string_view bytes);
bool isASCII(std::u16string_view text);
/// Whether no unit is above U+00FF.
bool isLatin1(std::u16string_view text);

/// Writes each byte as a unit: decodes ASCII and Latin-1.
void widen(std::string_view bytes, char16_t* units);
/// Writes each unit as a byte: encodes ASCII and Latin-1. No unit is above U+00FF.
void narrow(std::u16string_view text, char* bytes);

/// Writes `count` units that lie in memory, at any address, with their two bytes in the order that is not this
/// machine's.
void loadSwappedUnits(const char* bytes, size_t count, char16_t* units);

}  // namespace quoll::inline v1::detail
