// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/EscapingInternal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/text/EscapingInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <array>
#include <bit>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

inline constexpr std::array<char, 128> escapes = [] {
  std::array<char, 128> table{};
  table['\t'] = 't';
  table['\r'] = 'r';
  table['\n'] = 'n';
  for (const char itself : {'\\', '"', '\''}) table[static_cast<size_t>(itself)] = itself;
  return table;
}();
/// What stands behind the backslash; 0 for a unit that needs none.
template <class Unit>
HWY_INLINE char escapeOf(Unit unit) {
  const auto value = static_cast<char16_t>(unit);
  return value < escapes.size() ? escapes[value] : '\0';
}

template <class D, class Units>
HWY_INLINE auto needEscapes(D d, Units units) {
  const auto is = [&](char unit) HWY_ATTR { return hn::Eq(units, hn::Set(d, static_cast<hn::TFromD<D>>(unit))); };
  return hn::Or(hn::Or(hn::Or(is('\t'), is('\n')), is('\r')), hn::Or(hn::Or(is('\\'), is('"')), is('\'')));
}

template <class Unit>
HWY_INLINE size_t countOf(const Unit* text, size_t length) {
  const UnitTag<Unit> d;
  const size_t lanes = hn::Lanes(d);
  size_t count = 0, i = 0;
  for (; length - i >= lanes; i += lanes) count += hn::CountTrue(d, needEscapes(d, loadUnits(d, text + i)));
  for (; i < length; ++i) count += escapeOf(text[i]) != 0;
  return count;
}

/// Without a branch on what the units are: a backslash is always written, and stays where it is needed.
template <class Unit>
HWY_INLINE Unit* writeEach(const Unit* text, size_t length, Unit* to) {
  for (size_t i = 0; i < length; ++i) {
    const char escape = escapeOf(text[i]);
    *to = escape ? Unit{'\\'} : text[i];
    to += escape != 0;
    *to++ = escape ? static_cast<Unit>(escape) : text[i];
  }
  return to;
}

template <class Unit>
HWY_INLINE void writeWhole(const Unit* text, size_t length, Unit* to) {
  constexpr int few = 8;  // more of them in a vector, and it is faster to look at each unit
  const UnitTag<Unit> d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  while (length - i >= lanes) {
    const auto units = loadUnits(d, text + i);
    const uint64_t special = bitsOf(d, needEscapes(d, units));
    if (std::popcount(special) > few) {
      to = writeEach(text + i, lanes, to);
      i += lanes;
      continue;
    }
    hn::StoreU(units, d, reinterpret_cast<LaneOf<Unit>*>(to));  // fits: what is left needs as many places at least
    const size_t plain = special ? static_cast<size_t>(std::countr_zero(special)) : lanes;
    i += plain;
    to += plain;
    if (special) to = writeEach(text + i++, 1, to);
  }
  writeEach(text + i, length - i, to);
}

size_t CountAscii(const char* text, size_t length) { return countOf(text, length); }
size_t CountUTF16(const char16_t* text, size_t length) { return countOf(text, length); }
void WriteAscii(const char* text, size_t length, char* to) { writeWhole(text, length, to); }
void WriteUTF16(const char16_t* text, size_t length, char16_t* to) { writeWhole(text, length, to); }

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(CountAscii);
HWY_EXPORT(CountUTF16);
HWY_EXPORT(WriteAscii);
HWY_EXPORT(WriteUTF16);

size_t countOfEscapes(std::string_view text) { return HWY_DYNAMIC_DISPATCH(CountAscii)(text.data(), text.size()); }
size_t countOfEscapes(std::u16string_view text) { return HWY_DYNAMIC_DISPATCH(CountUTF16)(text.data(), text.size()); }

void writeEscaped(std::string_view text, char* to) { HWY_DYNAMIC_DISPATCH(WriteAscii)(text.data(), text.size(), to); }
void writeEscaped(std::u16string_view text, char16_t* to) {
  HWY_DYNAMIC_DISPATCH(WriteUTF16)(text.data(), text.size(), to);
}

}  // namespace quoll::inline v1::detail
#endif
