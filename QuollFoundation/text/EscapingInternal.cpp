// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/EscapingInternal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/text/EscapingInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <bit>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

/// What stands behind the backslash; 0 for a unit that needs none.
template <class Unit>
HWY_INLINE Unit escapeOf(Unit unit) {
  switch (unit) {
    case '\t': return 't';
    case '\r': return 'r';
    case '\n': return 'n';
    case '\\':
    case '"':
    case '\'': return unit;
    default: return 0;
  }
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

/// Writes the units from `i` on up to the first that needs no backslash, `length` at most, which have one.
template <class Unit>
HWY_INLINE void writeEscapes(const Unit* text, size_t length, size_t& i, Unit*& to) {
  for (; i < length; ++i) {
    const Unit escape = escapeOf(text[i]);
    if (!escape) return;
    *to++ = '\\';
    *to++ = escape;
  }
}

template <class Unit>
HWY_INLINE void writeWhole(const Unit* text, size_t length, Unit* to) {
  using Lane = LaneOf<Unit>;
  const UnitTag<Unit> d;
  const size_t lanes = hn::Lanes(d);
  size_t i = 0;
  while (length - i >= lanes) {
    const auto units = loadUnits(d, text + i);
    hn::StoreU(units, d, reinterpret_cast<Lane*>(to));  // fits, as what is left needs no less than it has units
    const uint64_t special = bitsOf(d, needEscapes(d, units));
    const size_t plain = special ? static_cast<size_t>(std::countr_zero(special)) : lanes;
    i += plain;
    to += plain;
    if (special) writeEscapes(text, length, i, to);
  }
  while (i < length) {
    writeEscapes(text, length, i, to);
    for (; i < length && !escapeOf(text[i]); ++i) *to++ = text[i];
  }
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
