// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/UTF8Internal.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/platform/strings/UTF8Internal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

// ---- one character at a time, for the ends of texts and for what comes seldom

HWY_INLINE bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
HWY_INLINE bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// Decodes the character at `from`, which is valid, and steps behind it.
HWY_INLINE void decodeOne(const uint8_t*& from, char16_t*& out) {
  const unsigned lead = *from;
  const auto bits = [&](size_t i) HWY_ATTR { return from[i] & 0x3Fu; };
  if (lead < 0x80) {
    *out++ = static_cast<char16_t>(lead);
    from += 1;
  } else if (lead < 0xE0) {
    *out++ = static_cast<char16_t>((lead & 0x1F) << 6 | bits(1));
    from += 2;
  } else if (lead < 0xF0) {
    *out++ = static_cast<char16_t>((lead & 0x0F) << 12 | bits(1) << 6 | bits(2));
    from += 3;
  } else {
    const unsigned above = ((lead & 0x07) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3)) - 0x10000;
    *out++ = static_cast<char16_t>(0xD800 | above >> 10);
    *out++ = static_cast<char16_t>(0xDC00 | (above & 0x3FF));
    from += 4;
  }
}

/// Encodes the character at `from` and steps behind it.
HWY_INLINE void encodeOne(const char16_t*& from, const char16_t* end, uint8_t*& out) {
  const auto put = [&](unsigned byte) HWY_ATTR { *out++ = static_cast<uint8_t>(byte); };
  unsigned character = *from++;
  if (isHighSurrogate(static_cast<char16_t>(character)) && from != end && isLowSurrogate(*from)) {
    character = 0x10000 + ((character & 0x3FF) << 10 | (*from++ & 0x3FFu));
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    return put(0x80 | (character & 0x3F));
  }
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | character >> 6);
    return put(0x80 | (character & 0x3F));
  }
  if ((character & 0xF800) == 0xD800) character = 0xFFFD;
  put(0xE0 | character >> 12);
  put(0x80 | (character >> 6 & 0x3F));
  put(0x80 | (character & 0x3F));
}

// ---- measuring UTF-8

#if HWY_TARGET == HWY_SCALAR

/// The length of the well-formed character at the start, or 0.
HWY_INLINE size_t lengthOfOne(const uint8_t* from, size_t left) {
  const auto between = [&](size_t i, unsigned low, unsigned high) { return from[i] >= low && from[i] <= high; };
  const unsigned lead = *from;
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  if (lead < 0xE0) return left >= 2 && between(1, 0x80, 0xBF) ? 2 : 0;
  if (lead < 0xF0) {
    const bool second = left >= 3 && between(1, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF);
    return second && between(2, 0x80, 0xBF) ? 3 : 0;
  }
  const bool second = left >= 4 && between(1, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF);
  return second && between(2, 0x80, 0xBF) && between(3, 0x80, 0xBF) ? 4 : 0;
}

UTF8Shape MeasureUTF8(const uint8_t* bytes, size_t length) {
  UTF8Shape shape{.ascii = true, .valid = true};
  for (size_t i = 0; i < length;) {
    const size_t size = lengthOfOne(bytes + i, length - i);
    if (size == 0) return {};
    shape.units += size == 4 ? 2 : 1;
    shape.ascii = shape.ascii && size == 1;
    i += size;
  }
  return shape;
}

#else

// What can be wrong with a byte and the one before it. Three tables, one for each half of the first byte and one for
// the upper half of the second, say what each half allows; what all three allow is wrong. Only the pair of two
// continuation bytes is right where a longer character has reached its third or fourth byte, and wrong elsewhere.
inline constexpr uint8_t tooShort = 1;    // a character that ends early
inline constexpr uint8_t tooLong = 2;     // a continuation byte behind an ASCII one
inline constexpr uint8_t overlong3 = 4;   // E0 80..9F
inline constexpr uint8_t tooLarge = 8;    // F4 90..BF and F5..FF 90..BF
inline constexpr uint8_t surrogate = 16;  // ED A0..BF
inline constexpr uint8_t overlong2 = 32;  // C0 and C1
inline constexpr uint8_t overlong4 = 64;  // F0 80..8F; too large with F5..FF
inline constexpr uint8_t twoContinuations = 128;

constexpr uint8_t allowedByFirstHigh(unsigned half) {
  if (half < 0x8) return tooLong;
  if (half < 0xC) return twoContinuations;
  if (half == 0xC) return tooShort | overlong2;
  if (half == 0xD) return tooShort;
  return half == 0xE ? tooShort | overlong3 | surrogate : tooShort | tooLarge | overlong4;
}

constexpr uint8_t allowedByFirstLow(unsigned half) {
  unsigned allowed = tooShort | tooLong | twoContinuations;
  if (half == 0x0) allowed |= overlong3 | overlong4;
  if (half <= 0x1) allowed |= overlong2;
  if (half >= 0x4) allowed |= tooLarge;
  if (half >= 0x5) allowed |= overlong4;
  if (half == 0xD) allowed |= surrogate;
  return static_cast<uint8_t>(allowed);
}

constexpr uint8_t allowedBySecondHigh(unsigned half) {
  if (half < 0x8 || half > 0xB) return tooShort;
  unsigned allowed = tooLong | overlong2 | twoContinuations;
  if (half == 0x8) allowed |= overlong4;
  if (half <= 0x9) allowed |= overlong3;
  if (half >= 0x9) allowed |= tooLarge;
  if (half >= 0xA) allowed |= surrogate;
  return static_cast<uint8_t>(allowed);
}

struct HalfTable {
  alignas(16) uint8_t allowed[16] = {};

  constexpr explicit HalfTable(uint8_t (*rule)(unsigned)) {
    for (unsigned half = 0; half < 16; ++half) allowed[half] = rule(half);
  }
};
inline constexpr HalfTable byFirstHigh{allowedByFirstHigh};
inline constexpr HalfTable byFirstLow{allowedByFirstLow};
inline constexpr HalfTable bySecondHigh{allowedBySecondHigh};

/// Not zero where one of `bytes` is wrong together with those that stand one, two and three before it.
template <class D, class V>
HWY_INLINE V errorsIn(D d, V bytes, V before1, V before2, V before3) {
  const auto nibble = hn::Set(d, 0x0F);
  const auto high = hn::TableLookupBytes(hn::LoadDup128(d, byFirstHigh.allowed), hn::ShiftRight<4>(before1));
  const auto low = hn::TableLookupBytes(hn::LoadDup128(d, byFirstLow.allowed), hn::And(before1, nibble));
  const auto second = hn::TableLookupBytes(hn::LoadDup128(d, bySecondHigh.allowed), hn::ShiftRight<4>(bytes));
  const auto wrong = hn::And(hn::And(high, low), second);
  // The upper bit is set where a third or fourth byte has to stand, which is a continuation byte behind another one.
  const auto third = hn::SaturatedSub(before2, hn::Set(d, 0xE0 - 0x80));
  const auto fourth = hn::SaturatedSub(before3, hn::Set(d, 0xF0 - 0x80));
  return hn::Xor(wrong, hn::And(hn::Or(third, fourth), hn::Set(d, twoContinuations)));
}

template <class D, class V>
HWY_INLINE bool areZero(D d, V bytes) {
  return hn::AllTrue(d, hn::Eq(bytes, hn::Zero(d)));
}

template <class D, class V>
HWY_INLINE size_t unitsIn(D d, V bytes) {
  const hn::RebindToSigned<D> numbers;
  const auto starts = hn::Gt(hn::BitCast(numbers, bytes), hn::Set(numbers, int8_t{-0x41}));  // no continuation byte
  const auto pairs = hn::Eq(hn::And(bytes, hn::Set(d, 0xF0)), hn::Set(d, 0xF0));
  return hn::CountTrue(numbers, starts) + hn::CountTrue(d, pairs);
}

/// Measures a text piece by piece. The pieces that `take` and `takeBlock` are given follow each other.
class UTF8Measure {
 public:
  static constexpr size_t pieceBytes = 16;
  static constexpr size_t blockBytes = 64;

  HWY_INLINE const UTF8Shape& shape() const { return shape_; }

  /// Takes sixteen bytes, and the sixteen before them. False where one is wrong.
  template <class V>
  HWY_INLINE bool take(V bytes, V before) {
    const hn::CappedTag<uint8_t, pieceBytes> d;
    if (takeAscii(pieceBytes, areZero(d, hn::And(bytes, hn::Set(d, 0x80))))) return true;
    shape_.units += unitsIn(d, bytes);
    return areZero(d, errorsIn(d, bytes, hn::CombineShiftRightBytes<15>(d, bytes, before),
                               hn::CombineShiftRightBytes<14>(d, bytes, before),
                               hn::CombineShiftRightBytes<13>(d, bytes, before)));
  }

  /// Takes a whole block; reads the three bytes before it.
  HWY_INLINE bool takeBlock(const uint8_t* block) {
    const UnitTag<uint8_t> d;
    auto all = hn::Zero(d);
    for (size_t i = 0; i < blockBytes; i += hn::Lanes(d)) all = hn::Or(all, hn::LoadU(d, block + i));
    if (takeAscii(blockBytes, areZero(d, hn::And(all, hn::Set(d, 0x80))))) return true;
    auto errors = hn::Zero(d);
    for (size_t i = 0; i < blockBytes; i += hn::Lanes(d)) {
      const uint8_t* at = block + i;
      const auto bytes = hn::LoadU(d, at);
      shape_.units += unitsIn(d, bytes);
      errors = hn::Or(errors, errorsIn(d, bytes, hn::LoadU(d, at - 1), hn::LoadU(d, at - 2), hn::LoadU(d, at - 3)));
    }
    return areZero(d, errors);
  }

  HWY_INLINE void dropUnits(size_t count) { shape_.units -= count; }

 private:
  /// Takes a piece that is ASCII and follows ASCII, so that no character can end early. False for another.
  HWY_INLINE bool takeAscii(size_t size, bool ascii) {
    const bool plain = ascii && asciiBefore_;
    asciiBefore_ = ascii;
    shape_.ascii = shape_.ascii && plain;
    shape_.units += plain ? size : 0;
    return plain;
  }

  UTF8Shape shape_{.units = 0, .ascii = true, .valid = true};
  bool asciiBefore_ = true;
};

UTF8Shape MeasureUTF8(const uint8_t* text, size_t length) {
  const hn::CappedTag<uint8_t, UTF8Measure::pieceBytes> d;
  const size_t lanes = hn::Lanes(d);
  UTF8Measure measure;
  auto before = hn::Zero(d);
  size_t i = 0;
  while (length - i >= lanes) {
    const auto bytes = hn::LoadU(d, text + i);
    if (!measure.take(bytes, before)) return {};
    i += lanes;
    for (; length - i >= UTF8Measure::blockBytes; i += UTF8Measure::blockBytes) {
      if (!measure.takeBlock(text + i)) return {};
    }
    before = hn::LoadU(d, text + i - lanes);
  }
  // The zeros behind the text show up a character that ends early.
  alignas(16) uint8_t rest[UTF8Measure::pieceBytes] = {};
  std::memcpy(rest, text + i, length - i);
  if (!measure.take(hn::Load(d, rest), before)) return {};
  measure.dropUnits(lanes - (length - i));
  return measure.shape();
}

#endif

// ---- decoding UTF-8

#if HWY_TARGET != HWY_SCALAR

// Text comes in runs of characters that take the same number of bytes. A run is decoded by whole vectors; what these
// write behind its end is overwritten by what follows, for which so many bytes are always left.
inline constexpr size_t roomForRun = 48;

HWY_INLINE uint8_t* asBytes(char16_t* units) { return reinterpret_cast<uint8_t*>(units); }
HWY_INLINE const uint8_t* asBytes(const char16_t* units) { return reinterpret_cast<const uint8_t*>(units); }
HWY_INLINE bool hasRoom(const uint8_t* from, const uint8_t* end) {
  return static_cast<size_t>(end - from) >= roomForRun;
}

HWY_INLINE void decodeRunOf1(const uint8_t*& from, const uint8_t* end, char16_t*& out) {
  const hn::CappedTag<uint16_t, 16> d;
  const hn::Rebind<uint8_t, decltype(d)> narrow;
  const size_t lanes = hn::Lanes(d);
  size_t count = lanes;
  while (count == lanes && hasRoom(from, end)) {
    const auto bytes = hn::LoadU(narrow, from);
    hn::StoreU(hn::PromoteTo(d, bytes), d, reinterpret_cast<uint16_t*>(out));
    const uint64_t others = bitsOf(narrow, hn::Ne(hn::And(bytes, hn::Set(narrow, 0x80)), hn::Zero(narrow)));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += count;
    out += count;
  }
}

/// Writes sixteen units from their bytes.
template <class D, class V>
HWY_INLINE void storeUnits(D d, V low, V high, char16_t* out) {
  hn::StoreU(hn::InterleaveLower(d, low, high), d, asBytes(out));
  hn::StoreU(hn::InterleaveUpper(d, low, high), d, asBytes(out + 8));
}

HWY_INLINE void decodeRunOf2(const uint8_t*& from, const uint8_t* end, char16_t*& out) {
  const hn::CappedTag<uint8_t, 16> d;
  size_t count = 16;
  while (count == 16 && hasRoom(from, end)) {
    hn::Vec<decltype(d)> a, b;
    hn::LoadInterleaved2(d, from, a, b);
    const auto high = hn::And(hn::ShiftRight<2>(a), hn::Set(d, 0x07));
    const auto low = hn::Or(hn::ShiftLeft<6>(a), hn::And(b, hn::Set(d, 0x3F)));
    storeUnits(d, low, high, out);
    const uint64_t others = bitsOf(d, hn::Ne(hn::And(a, hn::Set(d, 0xE0)), hn::Set(d, 0xC0)));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += 2 * count;
    out += count;
  }
}

HWY_INLINE void decodeRunOf3(const uint8_t*& from, const uint8_t* end, char16_t*& out) {
  const hn::CappedTag<uint8_t, 16> d;
  size_t count = 16;
  while (count == 16 && hasRoom(from, end)) {
    hn::Vec<decltype(d)> a, b, c;
    hn::LoadInterleaved3(d, from, a, b, c);
    const auto high = hn::Or(hn::ShiftLeft<4>(a), hn::And(hn::ShiftRight<2>(b), hn::Set(d, 0x0F)));
    const auto low = hn::Or(hn::ShiftLeft<6>(b), hn::And(c, hn::Set(d, 0x3F)));
    storeUnits(d, low, high, out);
    const uint64_t others = bitsOf(d, hn::Ne(hn::And(a, hn::Set(d, 0xF0)), hn::Set(d, 0xE0)));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += 3 * count;
    out += count;
  }
}

HWY_INLINE bool isLeadOf2(uint8_t byte) { return (byte & 0xE0) == 0xC0; }
HWY_INLINE bool isLeadOf3(uint8_t byte) { return (byte & 0xF0) == 0xE0; }

// Whether the first character is of the kind, and a few behind it seem to be: shorter runs are faster one by one.
HWY_INLINE bool startsRunOf2(const uint8_t* from) { return isLeadOf2(from[0]) && isLeadOf2(from[2]); }
HWY_INLINE bool startsRunOf3(const uint8_t* from) {
  return isLeadOf3(from[0]) && isLeadOf3(from[3] & from[6] & from[9]);
}

HWY_INLINE void decodeRuns(const uint8_t*& from, const uint8_t* end, char16_t*& out) {
  while (hasRoom(from, end)) {
    if (*from < 0x80) {
      decodeRunOf1(from, end, out);
    } else if (startsRunOf3(from)) {
      decodeRunOf3(from, end, out);
    } else if (startsRunOf2(from)) {
      decodeRunOf2(from, end, out);
    } else {
      decodeOne(from, out);
    }
  }
}

#endif

HWY_INLINE void decodeRest(const uint8_t* from, const uint8_t* end, char16_t* out) {
  const hn::CappedTag<uint16_t, 8> d;
  const hn::Rebind<uint8_t, decltype(d)> narrow;
  const auto lanes = static_cast<ptrdiff_t>(hn::Lanes(d));
  while (from != end) {
    while (end - from >= lanes) {
      const auto bytes = hn::LoadU(narrow, from);
      if (!hn::AllTrue(narrow, hn::Eq(hn::And(bytes, hn::Set(narrow, 0x80)), hn::Zero(narrow)))) break;
      hn::StoreU(hn::PromoteTo(d, bytes), d, reinterpret_cast<uint16_t*>(out));
      from += lanes;
      out += lanes;
    }
    while (from != end && *from < 0x80) *out++ = *from++;
    while (from != end && *from >= 0x80) decodeOne(from, out);
  }
}

void DecodeUTF8(const uint8_t* bytes, size_t length, char16_t* out) {
  const uint8_t* end = bytes + length;
#if HWY_TARGET != HWY_SCALAR
  decodeRuns(bytes, end, out);
#endif
  decodeRest(bytes, end, out);
}

// ---- measuring UTF-16

/// How many units take more than one byte, more than two, are surrogates, and start a pair of these.
struct UnitCounts {
  size_t above7F = 0;
  size_t above7FF = 0;
  size_t surrogates = 0;
  size_t pairs = 0;
};

HWY_INLINE void countUnit(const char16_t* text, size_t length, size_t i, UnitCounts& counts) {
  const char16_t unit = text[i];
  counts.above7F += unit > 0x7F;
  counts.above7FF += unit > 0x7FF;
  counts.surrogates += (unit & 0xF800) == 0xD800;
  counts.pairs += isHighSurrogate(unit) && i + 1 < length && isLowSurrogate(text[i + 1]);
}

/// Counts whole vectors from `i` on while a unit follows each, and steps behind them.
template <class D>
HWY_INLINE void countUnits(D d, const char16_t* text, size_t length, size_t& i, UnitCounts& counts) {
  const size_t lanes = hn::Lanes(d);
  const auto isKind = [&](auto units, uint16_t mask, uint16_t kind)
                          HWY_ATTR { return hn::Eq(hn::And(units, hn::Set(d, mask)), hn::Set(d, kind)); };
  for (; length - i > lanes; i += lanes) {
    const auto units = loadUnits(d, text + i);
    const size_t ascii = hn::CountTrue(d, isKind(units, 0xFF80, 0));
    if (ascii == lanes) continue;
    counts.above7F += lanes - ascii;
    counts.above7FF += lanes - hn::CountTrue(d, isKind(units, 0xF800, 0));
    const auto surrogates = isKind(units, 0xF800, 0xD800);
    if (hn::AllFalse(d, surrogates)) continue;
    counts.surrogates += hn::CountTrue(d, surrogates);
    const auto lowsNext = isKind(loadUnits(d, text + i + 1), 0xFC00, 0xDC00);
    counts.pairs += hn::CountTrue(d, hn::And(isKind(units, 0xFC00, 0xD800), lowsNext));
  }
}

UTF16Shape MeasureUTF16(const char16_t* text, size_t length) {
  UnitCounts counts;
  size_t i = 0;
  countUnits(UnitTag<char16_t>(), text, length, i, counts);
  countUnits(ShortestUnitTag<char16_t>(), text, length, i, counts);
  for (; i < length; ++i) countUnit(text, length, i, counts);
  // A surrogate counts three bytes, as U+FFFD does; a pair takes four.
  return {.bytes = length + counts.above7F + counts.above7FF - 2 * counts.pairs,
          .ascii = counts.above7F == 0,
          .valid = counts.surrogates == 2 * counts.pairs};
}

// ---- encoding UTF-8

#if HWY_TARGET != HWY_SCALAR

// As in decoding, by runs. A step writes at most 48 bytes, and each unit that is left takes one byte at least.
inline constexpr size_t unitsForRun = 48;

HWY_INLINE bool hasUnits(const char16_t* from, const char16_t* end) {
  return static_cast<size_t>(end - from) >= unitsForRun;
}

HWY_INLINE void encodeRunOf1(const char16_t*& from, const char16_t* end, uint8_t*& out) {
  const hn::CappedTag<uint16_t, 32> d;
  const hn::Rebind<uint8_t, decltype(d)> narrow;
  const size_t lanes = hn::Lanes(d);
  size_t count = lanes;
  while (count == lanes && hasUnits(from, end)) {
    const auto units = loadUnits(d, from);
    hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(hn::RebindToSigned<decltype(d)>(), units)), narrow, out);
    const uint64_t others = bitsOf(d, hn::Ne(hn::And(units, hn::Set(d, 0xFF80)), hn::Zero(d)));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += count;
    out += count;
  }
}

HWY_INLINE void encodeRunOf2(const char16_t*& from, const char16_t* end, uint8_t*& out) {
  const hn::CappedTag<uint8_t, 16> d;
  const auto zero = hn::Zero(d);
  const auto continuation = hn::Set(d, 0x80);
  size_t count = 16;
  while (count == 16 && hasUnits(from, end)) {
    hn::Vec<decltype(d)> low, high;
    hn::LoadInterleaved2(d, asBytes(from), low, high);
    const auto a = hn::Or(hn::Set(d, 0xC0), hn::Or(hn::ShiftLeft<2>(high), hn::ShiftRight<6>(low)));
    const auto b = hn::Or(continuation, hn::And(low, hn::Set(d, 0x3F)));
    hn::StoreInterleaved2(a, b, d, out);
    const auto longer = hn::Ne(hn::And(high, hn::Set(d, 0xF8)), zero);
    const auto shorter = hn::Eq(hn::Or(high, hn::And(low, continuation)), zero);
    const uint64_t others = bitsOf(d, hn::Or(longer, shorter));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += count;
    out += 2 * count;
  }
}

HWY_INLINE void encodeRunOf3(const char16_t*& from, const char16_t* end, uint8_t*& out) {
  const hn::CappedTag<uint8_t, 16> d;
  const auto continuation = hn::Set(d, 0x80);
  size_t count = 16;
  while (count == 16 && hasUnits(from, end)) {
    hn::Vec<decltype(d)> low, high;
    hn::LoadInterleaved2(d, asBytes(from), low, high);
    const auto a = hn::Or(hn::Set(d, 0xE0), hn::ShiftRight<4>(high));
    const auto upper = hn::ShiftLeft<2>(hn::And(high, hn::Set(d, 0x0F)));
    const auto b = hn::Or(continuation, hn::Or(upper, hn::ShiftRight<6>(low)));
    const auto c = hn::Or(continuation, hn::And(low, hn::Set(d, 0x3F)));
    hn::StoreInterleaved3(a, b, c, d, out);
    const auto kind = hn::And(high, hn::Set(d, 0xF8));
    const uint64_t others = bitsOf(d, hn::Or(hn::Eq(kind, hn::Zero(d)), hn::Eq(kind, hn::Set(d, 0xD8))));
    if (others != 0) count = static_cast<size_t>(std::countr_zero(others));
    from += count;
    out += 3 * count;
  }
}

HWY_INLINE bool takes2(char16_t unit) { return unit > 0x7F && unit < 0x800; }
HWY_INLINE bool takes3(char16_t unit) { return unit >= 0x800 && (unit & 0xF800) != 0xD800; }

HWY_INLINE bool startsRunOf2(const char16_t* from) { return takes2(from[0]) && takes2(from[1]); }
HWY_INLINE bool startsRunOf3(const char16_t* from) {
  return takes3(from[0]) && takes3(from[1]) && takes3(from[2]) && takes3(from[3]);
}

HWY_INLINE void encodeRuns(const char16_t*& from, const char16_t* end, uint8_t*& out) {
  while (hasUnits(from, end)) {
    if (*from < 0x80) {
      encodeRunOf1(from, end, out);
    } else if (startsRunOf3(from)) {
      encodeRunOf3(from, end, out);
    } else if (startsRunOf2(from)) {
      encodeRunOf2(from, end, out);
    } else {
      encodeOne(from, end, out);
    }
  }
}

#endif

HWY_INLINE void encodeRest(const char16_t* from, const char16_t* end, uint8_t* out) {
  const hn::CappedTag<uint16_t, 8> d;
  const hn::Rebind<uint8_t, decltype(d)> narrow;
  const auto lanes = static_cast<ptrdiff_t>(hn::Lanes(d));
  while (from != end) {
    while (end - from >= lanes) {
      const auto units = loadUnits(d, from);
      if (!hn::AllTrue(d, hn::Eq(hn::And(units, hn::Set(d, 0xFF80)), hn::Zero(d)))) break;
      hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(hn::RebindToSigned<decltype(d)>(), units)), narrow, out);
      from += lanes;
      out += lanes;
    }
    while (from != end && *from < 0x80) *out++ = static_cast<uint8_t>(*from++);
    while (from != end && *from >= 0x80) encodeOne(from, end, out);
  }
}

void EncodeUTF8(const char16_t* units, size_t length, uint8_t* out) {
  const char16_t* end = units + length;
#if HWY_TARGET != HWY_SCALAR
  encodeRuns(units, end, out);
#endif
  encodeRest(units, end, out);
}

// ---- units of one byte, and units the other way round

struct NotAsciiTest {
  const char* bytes;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    return hn::Ne(hn::And(loadUnits(d, bytes + i), hn::Set(d, 0x80)), hn::Zero(d));
  }
  HWY_INLINE bool operator()(size_t i) const { return (bytes[i] & 0x80) != 0; }
};

struct AnyBitTest {
  const char16_t* text;
  uint16_t bits;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    return hn::Ne(hn::And(loadUnits(d, text + i), hn::Set(d, bits)), hn::Zero(d));
  }
  HWY_INLINE bool operator()(size_t i) const { return (text[i] & bits) != 0; }
};

bool IsAscii(const char* bytes, size_t length) { return firstWhere<char>(length, NotAsciiTest{bytes}) == length; }
bool HasNone(const char16_t* text, size_t length, uint16_t bits) {
  return firstWhere<char16_t>(length, AnyBitTest{text, bits}) == length;
}

struct WidenStep {
  const char* bytes;
  char16_t* units;

  template <class D>
  HWY_INLINE void operator()(D d, size_t i) const {
    const auto widened = hn::PromoteTo(d, loadUnits(hn::Rebind<uint8_t, D>(), bytes + i));
    hn::StoreU(widened, d, reinterpret_cast<uint16_t*>(units + i));
  }
  HWY_INLINE void operator()(size_t i) const { units[i] = static_cast<uint8_t>(bytes[i]); }
};

struct NarrowStep {
  const char16_t* units;
  uint8_t* bytes;

  template <class D>
  HWY_INLINE void operator()(D d, size_t i) const {
    const hn::Rebind<uint8_t, D> narrow;
    const auto numbers = hn::BitCast(hn::RebindToSigned<D>(), loadUnits(d, units + i));
    hn::StoreU(hn::DemoteTo(narrow, numbers), narrow, bytes + i);
  }
  HWY_INLINE void operator()(size_t i) const { bytes[i] = static_cast<uint8_t>(units[i]); }
};

struct SwapStep {
  const char* bytes;
  char16_t* units;

  template <class D>
  HWY_INLINE void operator()(D d, size_t i) const {
    if constexpr (hn::MaxLanes(D()) == 1) {
      (*this)(i);
    } else {
      // As bytes: nothing says that the units are aligned.
      const auto loaded = hn::BitCast(d, loadUnits(hn::Repartition<uint8_t, D>(), bytes + 2 * i));
      const auto swapped = hn::Or(hn::ShiftLeft<8>(loaded), hn::ShiftRight<8>(loaded));
      hn::StoreU(swapped, d, reinterpret_cast<uint16_t*>(units + i));
    }
  }
  HWY_INLINE void operator()(size_t i) const {
    const unsigned upper = static_cast<uint8_t>(bytes[2 * i]);
    units[i] = static_cast<char16_t>(upper << 8 | static_cast<uint8_t>(bytes[2 * i + 1]));
  }
};

void Widen(const char* bytes, size_t length, char16_t* units) { forEach<char16_t>(length, WidenStep{bytes, units}); }
void Narrow(const char16_t* units, size_t length, uint8_t* bytes) {
  forEach<char16_t>(length, NarrowStep{units, bytes});
}
void LoadSwapped(const char* bytes, size_t count, char16_t* units) { forEach<char16_t>(count, SwapStep{bytes, units}); }

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

static_assert(std::endian::native == std::endian::little);

HWY_EXPORT(MeasureUTF8);
HWY_EXPORT(DecodeUTF8);
HWY_EXPORT(MeasureUTF16);
HWY_EXPORT(EncodeUTF8);
HWY_EXPORT(IsAscii);
HWY_EXPORT(HasNone);
HWY_EXPORT(Widen);
HWY_EXPORT(Narrow);
HWY_EXPORT(LoadSwapped);

namespace {

const uint8_t* asBytes(const char* bytes) { return reinterpret_cast<const uint8_t*>(bytes); }
uint8_t* asBytes(char* bytes) { return reinterpret_cast<uint8_t*>(bytes); }

constexpr size_t shortText = 32;

bool isShortASCII(std::string_view bytes) {
  if (bytes.size() > shortText) return false;
  uint64_t all = 0;
  size_t i = 0;
  for (uint64_t word; i + sizeof(word) <= bytes.size(); i += sizeof(word)) {
    std::memcpy(&word, bytes.data() + i, sizeof(word));
    all |= word;
  }
  for (; i < bytes.size(); ++i) all |= static_cast<uint8_t>(bytes[i]);
  return (all & 0x8080'8080'8080'8080) == 0;
}

}  // namespace

UTF8Shape measureUTF8(std::string_view bytes) {
  // Most texts are short and ASCII: these need no vectors. Nor does the empty one, which may have no memory.
  if (isShortASCII(bytes)) return {.units = bytes.size(), .ascii = true, .valid = true};
  return HWY_DYNAMIC_DISPATCH(MeasureUTF8)(asBytes(bytes.data()), bytes.size());
}

UTF16Shape measureUTF16(std::u16string_view text) {
  return HWY_DYNAMIC_DISPATCH(MeasureUTF16)(text.data(), text.size());
}

void decodeUTF8(std::string_view bytes, char16_t* units) {
  HWY_DYNAMIC_DISPATCH(DecodeUTF8)(asBytes(bytes.data()), bytes.size(), units);
}

void encodeUTF8(std::u16string_view text, char* bytes) {
  HWY_DYNAMIC_DISPATCH(EncodeUTF8)(text.data(), text.size(), asBytes(bytes));
}

bool isASCII(std::string_view bytes) { return HWY_DYNAMIC_DISPATCH(IsAscii)(bytes.data(), bytes.size()); }
bool isASCII(std::u16string_view text) { return HWY_DYNAMIC_DISPATCH(HasNone)(text.data(), text.size(), 0xFF80); }
bool isLatin1(std::u16string_view text) { return HWY_DYNAMIC_DISPATCH(HasNone)(text.data(), text.size(), 0xFF00); }

void widen(std::string_view bytes, char16_t* units) { HWY_DYNAMIC_DISPATCH(Widen)(bytes.data(), bytes.size(), units); }
void narrow(std::u16string_view text, char* bytes) {
  HWY_DYNAMIC_DISPATCH(Narrow)(text.data(), text.size(), asBytes(bytes));
}
void loadSwappedUnits(const char* bytes, size_t count, char16_t* units) {
  HWY_DYNAMIC_DISPATCH(LoadSwapped)(bytes, count, units);
}

}  // namespace quoll::inline v1::detail
#endif
