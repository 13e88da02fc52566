// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include "QuollFoundation/platform/object/Selector.h"

/// The text of `"..."_ns` in the form that a string stores, worked out by the compiler. NSString.h makes the literals.
namespace quoll::inline v1::detail {

/// Decodes well-formed UTF-8 and gives each UTF-16 unit to `take`; false where it is ill-formed.
template <class Take> constexpr bool decodeLiteral(std::string_view bytes, Take take) {
  for (size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i++]);
    const int extra = lead < 0x80 ? 0 : lead < 0xC2 ? -1 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF5 ? 3 : -1;
    if (extra < 0 || bytes.size() - i < static_cast<size_t>(extra)) return false;
    char32_t scalar = extra ? static_cast<char32_t>(lead & (0x3F >> extra)) : lead;
    for (int k = 0; k < extra; ++k) {
      const auto next = static_cast<unsigned char>(bytes[i++]);
      if ((next & 0xC0) != 0x80) return false;
      scalar = scalar << 6 | static_cast<char32_t>(next & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    if (scalar < smallest[extra] || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar < 0xE000)) return false;
    if (scalar >= 0x10000) {
      take(static_cast<char16_t>(0xD7C0 + (scalar >> 10)));
      take(static_cast<char16_t>(0xDC00 + (scalar & 0x3FF)));
    } else {
      take(static_cast<char16_t>(scalar));
    }
  }
  return true;
}

/// The text of a literal in its stored form, worked out by the compiler.
template <FixedText text> struct LiteralText {
  template <class Take> static constexpr bool decode(Take take) {
    if constexpr (sizeof(text.units[0]) == 1) return decodeLiteral({text.units, text.length}, take);
    else {
      for (size_t i = 0; i < text.length; ++i) take(text.units[i]);
      return true;
    }
  }
  static_assert(decode([](char16_t) {}), "a \"...\"_ns literal must be well-formed UTF-8");

  struct Counts {
    size_t units = 0;
    bool ascii = true;
  };
  static constexpr Counts counts = [] {
    Counts result;
    decode([&](char16_t unit) {
      ++result.units;
      result.ascii = result.ascii && unit < 0x80;
    });
    return result;
  }();

  using Unit = std::conditional_t<counts.ascii, char, char16_t>;
  static constexpr auto units = [] {
    std::array<Unit, counts.units + 1> result{};
    size_t i = 0;
    decode([&](char16_t unit) { result[i++] = static_cast<Unit>(unit); });
    return result;
  }();
};

}  // namespace quoll::inline v1::detail
