// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/BlanksInternal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/platform/strings/BlanksInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

/// Lanes from `first` to `last`.
template <class D>
HWY_INLINE auto inRange(D d, hn::VFromD<D> units, hn::TFromD<D> first, hn::TFromD<D> last) {
  const auto above = hn::Sub(units, hn::Set(d, first));
  return hn::Eq(hn::Min(above, hn::Set(d, static_cast<hn::TFromD<D>>(last - first))), above);
}

template <class Unit>
struct OtherTest {
  const Unit* text;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    const auto units = loadUnits(d, text + i);
    const auto is = [&](hn::TFromD<D> unit) HWY_ATTR { return hn::Eq(units, hn::Set(d, unit)); };
    auto blank = hn::Or(is(' '), inRange(d, units, '\t', '\r'));
    if constexpr (sizeof(Unit) > 1) {
      const auto spaces = hn::Or(hn::Or(is(0xA0), is(0x1680)), hn::Or(is(0x202F), hn::Or(is(0x205F), is(0x3000))));
      const auto runs = hn::Or(inRange(d, units, 0x2000, 0x200A), inRange(d, units, 0x2028, 0x2029));
      blank = hn::Or(hn::Or(blank, is(0x85)), hn::Or(spaces, runs));
    }
    return hn::Not(blank);
  }
  HWY_INLINE bool operator()(size_t i) const {
    const auto unit = static_cast<char16_t>(text[i]);
    return !isWhitespaceUnit(unit) && !isNewlineUnit(unit);
  }
};

size_t BlankPrefixAscii(const char* text, size_t length) { return firstWhere<char>(length, OtherTest<char>{text}); }
size_t BlankPrefixUTF16(const char16_t* text, size_t length) {
  return firstWhere<char16_t>(length, OtherTest<char16_t>{text});
}
size_t BlankSuffixAscii(const char* text, size_t length) {
  return length - behindLastWhere<char>(length, OtherTest<char>{text});
}
size_t BlankSuffixUTF16(const char16_t* text, size_t length) {
  return length - behindLastWhere<char16_t>(length, OtherTest<char16_t>{text});
}

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(BlankPrefixAscii);
HWY_EXPORT(BlankPrefixUTF16);
HWY_EXPORT(BlankSuffixAscii);
HWY_EXPORT(BlankSuffixUTF16);

namespace {
bool isBlank(char16_t unit) { return isWhitespaceUnit(unit) || isNewlineUnit(unit); }
}  // namespace

// Most texts have no blanks at their ends: these need no vectors.

size_t blankPrefixLength(std::string_view text) {
  if (text.empty() || !isBlank(static_cast<char16_t>(text.front()))) return 0;
  return HWY_DYNAMIC_DISPATCH(BlankPrefixAscii)(text.data(), text.size());
}
size_t blankPrefixLength(std::u16string_view text) {
  if (text.empty() || !isBlank(text.front())) return 0;
  return HWY_DYNAMIC_DISPATCH(BlankPrefixUTF16)(text.data(), text.size());
}
size_t blankSuffixLength(std::string_view text) {
  if (text.empty() || !isBlank(static_cast<char16_t>(text.back()))) return 0;
  return HWY_DYNAMIC_DISPATCH(BlankSuffixAscii)(text.data(), text.size());
}
size_t blankSuffixLength(std::u16string_view text) {
  if (text.empty() || !isBlank(text.back())) return 0;
  return HWY_DYNAMIC_DISPATCH(BlankSuffixUTF16)(text.data(), text.size());
}

}  // namespace quoll::inline v1::detail
#endif
