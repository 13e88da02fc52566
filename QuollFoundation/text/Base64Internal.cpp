// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Base64Internal.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/text/Base64Internal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

/// Characters of a text and what they mean.
using Tag = hn::CappedTag<uint8_t, 64>;
using Vector = hn::VFromD<Tag>;

/// The values of a stretch of text in which much is skipped.
constexpr size_t stretch = 192;
struct Squeezed {
  HWY_ALIGN uint8_t values[stretch + 4 + 64];
  size_t count;
};

/// Takes up at least `length` bytes of the text, and as many more as fill the last group, and steps behind them. One
/// byte costs the same whether it is skipped or not.
HWY_INLINE void squeeze(const uint8_t*& text, size_t length, const uint8_t* end, Squeezed& out) {
  size_t count = 0;
  const auto take = [&](uint8_t byte) HWY_ATTR {
    const uint8_t value = base64Values[byte];
    out.values[count] = value;
    count += value != notBase64;
  };
  for (const uint8_t* const until = text + length; text != until; ++text) take(*text);
  for (; count % 4 != 0 && text != end; ++text) take(*text);
  out.count = count;
}

#if HWY_TARGET == HWY_SCALAR

/// Writes the bytes of the values and steps behind those of whole groups.
HWY_INLINE void pack(const Squeezed& in, uint8_t*& out) {
  for (size_t i = 0; i < in.count; i += 4) {
    const uint8_t* const v = in.values + i;
    out[i / 4 * 3] = static_cast<uint8_t>(v[0] << 2 | v[1] >> 4);
    out[i / 4 * 3 + 1] = static_cast<uint8_t>(v[1] << 4 | v[2] >> 2);
    out[i / 4 * 3 + 2] = static_cast<uint8_t>(v[2] << 6 | v[3]);
  }
  out += in.count / 4 * 3;
}

/// Takes up whole groups as long as nothing, or little, is to be skipped.
HWY_INLINE void decodeSmooth(const uint8_t*&, const uint8_t*, uint8_t*&) {}

#else

/// The bytes of the values, four values to three bytes, in the first three quarters of the vector.
HWY_INLINE Vector packed(Vector values) {
  const Tag d;
  const hn::Repartition<uint16_t, Tag> d16;
  const hn::Repartition<uint32_t, Tag> d32;
  // In memory, and so from low bits to high ones: 6 bits each in bytes a b c d; ab cd; abcd.
  const auto pairs = hn::BitCast(d16, values);
  const auto joined = hn::Or(hn::And(hn::ShiftLeft<6>(pairs), hn::Set(d16, 0x0FC0)), hn::ShiftRight<8>(pairs));
  const auto fours = hn::BitCast(d32, joined);
  const auto groups = hn::Or(hn::And(hn::ShiftLeft<12>(fours), hn::Set(d32, 0x00FFF000)), hn::ShiftRight<16>(fours));
  HWY_ALIGN static constexpr uint8_t order[16] = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 0x80, 0x80, 0x80, 0x80};
  const auto bytes = hn::TableLookupBytesOr0(hn::BitCast(d, groups), hn::LoadDup128(d, order));
  if constexpr (HWY_MAX_BYTES == 16) return bytes;
  HWY_ALIGN static constexpr uint32_t words[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14};
  const auto places = hn::And(hn::Load(d32, words), hn::Set(d32, static_cast<uint32_t>(hn::Lanes(d32) - 1)));
  return hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(d32, bytes), hn::IndicesFromVec(d32, places)));
}

HWY_INLINE void pack(Squeezed& in, uint8_t*& out) {
  const Tag d;
  hn::StoreU(hn::Zero(d), d, in.values + in.count);
  for (size_t i = 0; i < in.count; i += hn::Lanes(d)) {
    hn::StoreU(packed(hn::Load(d, in.values + i)), d, out + i / 4 * 3);
  }
  out += in.count / 4 * 3;
}

/// Which characters are not of the alphabet. Each half of a character tells by one bit a kind which kinds it is in.
HWY_INLINE auto noise(Vector text, Vector high) {
  const Tag d;
  enum : uint8_t { Sign = 1, Digit = 2, Early = 4, Late = 8, Letter = Early | Late, Any = Digit | Letter };
  HWY_ALIGN static constexpr uint8_t kinds[16] = {0, 0, Sign, Digit, Early, Late, Early, Late};
  HWY_ALIGN static constexpr uint8_t places[16] = {Digit | Late, Any,   Any,   Any,         Any,    Any,
                                                   Any,          Any,   Any,   Any,         Letter, Sign | Early,
                                                   Early,        Early, Early, Sign | Early};
  const auto low = hn::And(text, hn::Set(d, 0x0F));
  const auto found = hn::And(hn::TableLookupBytes(hn::LoadDup128(d, kinds), high),
                             hn::TableLookupBytes(hn::LoadDup128(d, places), low));
  return hn::Eq(found, hn::Zero(d));
}

/// What characters of the alphabet mean: how far a value is from its character goes by the character's high half, but
/// for the slash, which takes the place before the plus sign.
HWY_INLINE Vector valuesOf(Vector text, Vector high) {
  const Tag d;
  HWY_ALIGN static constexpr int8_t distances[16] = {0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a', 26 - 'a'};
  const auto slash = hn::VecFromMask(d, hn::Eq(text, hn::Set(d, '/')));
  const auto table = hn::BitCast(d, hn::LoadDup128(hn::RebindToSigned<Tag>(), distances));
  return hn::Add(text, hn::TableLookupBytes(table, hn::Add(high, slash)));
}

/// Takes up whole groups as long as nothing, or little, is to be skipped.
HWY_INLINE void decodeSmooth(const uint8_t*& text, const uint8_t* end, uint8_t*& out) {
  const Tag d;
  const size_t lanes = hn::Lanes(d);
  while (static_cast<size_t>(end - text) >= lanes) {
    const auto characters = hn::LoadU(d, text);
    const auto high = hn::ShiftRight<4>(characters);
    const auto skipped = noise(characters, high);
    hn::StoreU(packed(valuesOf(characters, high)), d, out);
    if (HWY_LIKELY(hn::AllFalse(d, skipped))) {
      text += lanes;
      out += lanes / 4 * 3;
      continue;
    }
    const uint64_t bits = bitsOf(d, skipped);
    if (static_cast<size_t>(std::popcount(bits)) > lanes / 16) return;
    const auto clean = static_cast<size_t>(std::countr_zero(bits));
    text += clean / 4 * 4;
    out += clean / 4 * 3;
    if (clean % 4 != 0) return;
    text += std::countr_one(bits >> clean);
  }
}

#endif

size_t DecodeBase64(const uint8_t* text, size_t length, uint8_t* out) {
  const uint8_t* const end = text + length;
  const uint8_t* const first = out;
  size_t unfinished = 0;
  while (text != end) {
    decodeSmooth(text, end, out);
    Squeezed rest;
    squeeze(text, std::min<size_t>(stretch, static_cast<size_t>(end - text)), end, rest);
    pack(rest, out);
    unfinished = rest.count % 4;
  }
  return static_cast<size_t>(out - first) / 3 * 4 + unfinished;
}

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(DecodeBase64);

size_t decodeBase64Text(const char* text, size_t length, uint8_t* out) {
  return HWY_DYNAMIC_DISPATCH(DecodeBase64)(reinterpret_cast<const uint8_t*>(text), length, out);
}

}  // namespace quoll::inline v1::detail
#endif
