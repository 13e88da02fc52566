// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HexTextInternal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/text/HexTextInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

/// The digits of numbers from 0 to 15.
template <class D>
HWY_INLINE hn::VFromD<D> digits(D d, hn::VFromD<D> numbers) {
  const hn::RebindToSigned<D> compared;  // what vectors compare best
  const auto isLetter = hn::Gt(hn::BitCast(compared, numbers), hn::Set(compared, 9));
  const auto gap = hn::IfThenElseZero(isLetter, hn::Set(compared, 'A' - '9' - 1));
  return hn::Add(hn::Add(numbers, hn::Set(d, '0')), hn::BitCast(d, gap));
}

struct WriteHex {
  const uint8_t* bytes;
  uint8_t* out;

  template <class D>
  HWY_INLINE void operator()(D d, size_t i) const {
    const auto numbers = hn::LoadU(d, bytes + i);
    const auto first = digits(d, hn::ShiftRight<4>(numbers));
    const auto second = digits(d, hn::And(numbers, hn::Set(d, 0x0F)));
    hn::StoreInterleaved3(first, second, hn::Set(d, ' '), d, out + 3 * i);
  }
  HWY_INLINE void operator()(size_t i) const {
    constexpr char all[] = "0123456789ABCDEF";
    out[3 * i] = static_cast<uint8_t>(all[bytes[i] >> 4]);
    out[3 * i + 1] = static_cast<uint8_t>(all[bytes[i] & 0x0F]);
    out[3 * i + 2] = ' ';
  }
};

void WriteHexText(const uint8_t* bytes, size_t count, uint8_t* out) { forEach<char>(count, WriteHex{bytes, out}); }

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(WriteHexText);

void writeHexText(const uint8_t* bytes, size_t count, char* out) {
  HWY_DYNAMIC_DISPATCH(WriteHexText)(bytes, count, reinterpret_cast<uint8_t*>(out));
}

}  // namespace quoll::inline v1::detail
#endif
