// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/UnitsInternal.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "QuollFoundation/platform/strings/UnitsInternal.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "QuollFoundation/platform/strings/VectorScanInternal.h"

HWY_BEFORE_NAMESPACE();
namespace quoll::inline v1::detail::HWY_NAMESPACE {

// ---- comparing

/// Loads units as lanes of `d`, widening ASCII where these have 16 bits.
template <class D, class Unit>
HWY_INLINE auto loadWidened(D d, const Unit* units) {
  if constexpr (sizeof(Unit) == sizeof(hn::TFromD<D>)) {
    return loadUnits(d, units);
  } else {
    return hn::PromoteTo(d, loadUnits(hn::Rebind<uint8_t, D>(), units));
  }
}

template <class A, class B>
struct DifferenceTest {
  const A* a;
  const B* b;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    return hn::Ne(loadWidened(d, a + i), loadWidened(d, b + i));
  }
  HWY_INLINE bool operator()(size_t i) const { return static_cast<char16_t>(a[i]) != static_cast<char16_t>(b[i]); }
};

size_t SamePrefixAscii(const char* a, const char* b, size_t length) {
  return firstWhere<char>(length, DifferenceTest<char, char>{a, b});
}
size_t SamePrefixMixed(const char* a, const char16_t* b, size_t length) {
  return firstWhere<char16_t>(length, DifferenceTest<char, char16_t>{a, b});
}
size_t SamePrefixUTF16(const char16_t* a, const char16_t* b, size_t length) {
  return firstWhere<char16_t>(length, DifferenceTest<char16_t, char16_t>{a, b});
}
size_t SameSuffixAscii(const char* a, const char* b, size_t length) {
  return length - behindLastWhere<char>(length, DifferenceTest<char, char>{a, b});
}
size_t SameSuffixMixed(const char* a, const char16_t* b, size_t length) {
  return length - behindLastWhere<char16_t>(length, DifferenceTest<char, char16_t>{a, b});
}
size_t SameSuffixUTF16(const char16_t* a, const char16_t* b, size_t length) {
  return length - behindLastWhere<char16_t>(length, DifferenceTest<char16_t, char16_t>{a, b});
}

// ---- searching

struct UnitTest {
  const char16_t* text;
  char16_t unit;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    return hn::Eq(loadUnits(d, text + i), hn::Set(d, static_cast<uint16_t>(unit)));
  }
  HWY_INLINE bool operator()(size_t i) const { return text[i] == unit; }
};

size_t FindUnitUTF16(const char16_t* text, size_t length, char16_t unit) {
  return firstWhere<char16_t>(length, UnitTest{text, unit});
}
size_t FindBehindLastUnitUTF16(const char16_t* text, size_t length, char16_t unit) {
  return behindLastWhere<char16_t>(length, UnitTest{text, unit});
}

/// Whether a unit and the one `distance` further are the two wanted: the places where a search looks closer.
template <class Unit>
struct EndsTest {
  const Unit* text;
  size_t distance;
  Unit first;
  Unit last;

  template <class D>
  HWY_INLINE auto operator()(D d, size_t i) const {
    using Lane = hn::TFromD<D>;
    const auto firsts = hn::Eq(loadUnits(d, text + i), hn::Set(d, static_cast<Lane>(first)));
    return hn::And(firsts, hn::Eq(loadUnits(d, text + i + distance), hn::Set(d, static_cast<Lane>(last))));
  }
  HWY_INLINE bool operator()(size_t i) const { return text[i] == first && text[i + distance] == last; }
};

size_t FindEndsAscii(const char* text, size_t places, size_t distance, char first, char last) {
  return firstWhere<char>(places, EndsTest<char>{text, distance, first, last});
}
size_t FindEndsUTF16(const char16_t* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return firstWhere<char16_t>(places, EndsTest<char16_t>{text, distance, first, last});
}
size_t FindBehindLastEndsAscii(const char* text, size_t places, size_t distance, char first, char last) {
  return behindLastWhere<char>(places, EndsTest<char>{text, distance, first, last});
}
size_t FindBehindLastEndsUTF16(const char16_t* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return behindLastWhere<char16_t>(places, EndsTest<char16_t>{text, distance, first, last});
}

// ---- hashing

// Long texts are hashed in stripes of 32 units, which are eight words of four units each. A word is masked by a key of
// its place, then adds the product of its halves to the sum of its column, and itself, so that a product of zero hides
// nothing. The keys take a step from stripe to stripe.

inline constexpr size_t stripeUnits = 32;
// Digits of pi: no meaning is hidden in them.
inline constexpr uint64_t firstKeys[8] = {0x243F'6A88'85A3'08D3, 0x1319'8A2E'0370'7344, 0xA409'3822'299F'31D0,
                                          0x082E'FA98'EC4E'6C89, 0x4528'21E6'38D0'1377, 0xBE54'66CF'34E9'0C6C,
                                          0xC0AC'29B7'C97C'50DD, 0x3F84'D5B5'B547'0917};
inline constexpr uint64_t keySteps[8] = {  // odd, so that a key comes back after 2^64 stripes only
    0x9216'D5D9'8979'FB1B, 0xD131'0BA6'98DF'B5AD, 0x2FFD'72DB'D01A'DFB7, 0xB8E1'AFED'6A26'7E97,
    0xBA7C'9045'F12C'7F99, 0x24A1'9947'B391'6CF7, 0x0801'F2E2'858E'FC17, 0x6369'20D8'7157'4E69};

#if HWY_TARGET == HWY_SCALAR

template <class Unit>
HWY_INLINE uint64_t wordAt(const Unit* units) {
  uint64_t word = 0;
  for (size_t i = 0; i < 4; ++i) word |= uint64_t{static_cast<char16_t>(units[i])} << (16 * i);
  return word;
}

template <class Unit>
HWY_INLINE void sumStripes(const Unit* units, size_t length, uint64_t* sums) {
  const size_t last = (length - 1) / stripeUnits;
  for (size_t i = 0; i <= last; ++i) {
    const Unit* stripe = units + (i < last ? i * stripeUnits : length - stripeUnits);
    for (size_t column = 0; column < 8; ++column) {
      const uint64_t word = wordAt(stripe + 4 * column);
      const uint64_t keyed = word ^ (firstKeys[column] + i * keySteps[column]);
      sums[column] += (keyed & 0xFFFF'FFFF) * (keyed >> 32) + keyed;
    }
  }
}

#else

/// Two sums, so that no addition waits for the one before it.
template <class D, class V, class Unit>
HWY_INLINE void addWords(D d, V keys, const Unit* units, V& products, V& words) {
  const hn::Repartition<uint32_t, D> halves;
  const auto keyed = hn::Xor(hn::BitCast(d, loadWidened(hn::Repartition<uint16_t, D>(), units)), keys);
  const auto high = hn::ShiftRight<32>(keyed);
  products = hn::Add(products, hn::MulEven(hn::BitCast(halves, keyed), hn::BitCast(halves, high)));
  words = hn::Add(words, keyed);
}

template <class Unit>
HWY_INLINE void sumStripes(const Unit* units, size_t length, uint64_t* sums) {
  const hn::CappedTag<uint64_t, 8> d;
  const Unit* last = units + length - stripeUnits;  // may overlap the stripe before it
  for (size_t column = 0; column < 8; column += hn::Lanes(d)) {
    const auto steps = hn::LoadU(d, keySteps + column);
    auto keys = hn::LoadU(d, firstKeys + column);
    auto products = hn::Zero(d);
    auto words = hn::Zero(d);
    for (const Unit* stripe = units; stripe < last; stripe += stripeUnits, keys = hn::Add(keys, steps)) {
      addWords(d, keys, stripe + 4 * column, products, words);
    }
    addWords(d, keys, last + 4 * column, products, words);
    hn::StoreU(hn::Add(products, words), d, sums + column);
  }
}

#endif

void SumStripesAscii(const char* units, size_t length, uint64_t* sums) { sumStripes(units, length, sums); }
void SumStripesUTF16(const char16_t* units, size_t length, uint64_t* sums) { sumStripes(units, length, sums); }

}  // namespace quoll::inline v1::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quoll::inline v1::detail {

HWY_EXPORT(SamePrefixAscii);
HWY_EXPORT(SamePrefixMixed);
HWY_EXPORT(SamePrefixUTF16);
HWY_EXPORT(SameSuffixAscii);
HWY_EXPORT(SameSuffixMixed);
HWY_EXPORT(SameSuffixUTF16);
HWY_EXPORT(FindUnitUTF16);
HWY_EXPORT(FindBehindLastUnitUTF16);
HWY_EXPORT(FindEndsAscii);
HWY_EXPORT(FindEndsUTF16);
HWY_EXPORT(FindBehindLastEndsAscii);
HWY_EXPORT(FindBehindLastEndsUTF16);
HWY_EXPORT(SumStripesAscii);
HWY_EXPORT(SumStripesUTF16);

namespace {

size_t samePrefix(const char* a, const char* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SamePrefixAscii)(a, b, length);
}
size_t samePrefix(const char* a, const char16_t* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SamePrefixMixed)(a, b, length);
}
size_t samePrefix(const char16_t* a, const char* b, size_t length) { return samePrefix(b, a, length); }
size_t samePrefix(const char16_t* a, const char16_t* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SamePrefixUTF16)(a, b, length);
}

size_t sameSuffix(const char* a, const char* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SameSuffixAscii)(a, b, length);
}
size_t sameSuffix(const char* a, const char16_t* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SameSuffixMixed)(a, b, length);
}
size_t sameSuffix(const char16_t* a, const char* b, size_t length) { return sameSuffix(b, a, length); }
size_t sameSuffix(const char16_t* a, const char16_t* b, size_t length) {
  return HWY_DYNAMIC_DISPATCH(SameSuffixUTF16)(a, b, length);
}

// The places are the indices at which the whole of what is wanted still fits.

size_t findEnds(const char* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return HWY_DYNAMIC_DISPATCH(FindEndsAscii)(text, places, distance, static_cast<char>(first), static_cast<char>(last));
}
size_t findEnds(const char16_t* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return HWY_DYNAMIC_DISPATCH(FindEndsUTF16)(text, places, distance, first, last);
}
size_t findBehindLastEnds(const char* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return HWY_DYNAMIC_DISPATCH(FindBehindLastEndsAscii)(text, places, distance, static_cast<char>(first),
                                                       static_cast<char>(last));
}
size_t findBehindLastEnds(const char16_t* text, size_t places, size_t distance, char16_t first, char16_t last) {
  return HWY_DYNAMIC_DISPATCH(FindBehindLastEndsUTF16)(text, places, distance, first, last);
}

template <class Unit>
bool canHold(char16_t unit) {
  return sizeof(Unit) > 1 || unit < 0x80;
}

/// Says when a search loses more time at places that turn out wrong than it saves by jumping to such places.
class SearchBudget {
 public:
  /// Charges a place where `same` units were the same, after `passed` places. False once the budget is spent.
  bool pay(size_t same, size_t passed) {
    spent_ += costOfPlace + same;
    return spent_ <= allowance + costPerPassedPlace * passed;
  }

 private:
  static constexpr size_t costOfPlace = 16;  // in units compared
  static constexpr size_t costPerPassedPlace = 8;
  static constexpr size_t allowance = 4096;
  size_t spent_ = 0;
};

/// A text read forwards, or from its end.
template <class Unit>
struct Forwards {
  std::basic_string_view<Unit> text;
  uint64_t operator[](size_t i) const { return static_cast<char16_t>(text[i]); }
};
template <class Unit>
struct Backwards {
  std::basic_string_view<Unit> text;
  uint64_t operator[](size_t i) const { return static_cast<char16_t>(text[text.size() - 1 - i]); }
};

/// A hash of a window that slides over a text: a polynomial over the integers modulo 2^61 - 1.
class SlidingHash {
 public:
  explicit SlidingHash(size_t window) {
    for (size_t i = 1; i < window; ++i) weightOfOldest_ = product(weightOfOldest_, base);
  }
  void push(uint64_t unit) { value_ = sum(product(value_, base), unit); }
  void dropOldest(uint64_t unit) { value_ = sum(value_, prime - product(weightOfOldest_, unit)); }
  bool operator==(const SlidingHash& other) const { return value_ == other.value_; }

 private:
  static constexpr uint64_t prime = (uint64_t{1} << 61) - 1;
  static constexpr uint64_t base = 0x0B4E'2F36'D1A7'9C53;

  static uint64_t sum(uint64_t a, uint64_t b) { return a + b >= prime ? a + b - prime : a + b; }
  static uint64_t product(uint64_t a, uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide wide = static_cast<Wide>(a) * b;
    return sum(static_cast<uint64_t>(wide) & prime, static_cast<uint64_t>(wide >> 61));
  }

  uint64_t value_ = 0;
  uint64_t weightOfOldest_ = 1;
};

/// Where `wanted` starts first, else `noIndex`, in a time that depends on the lengths alone; `same(i)` compares all
/// units at place i.
template <class Text, class Wanted, class Same>
size_t findBySlidingHash(Text text, size_t length, Wanted wanted, size_t size, Same same) {
  SlidingHash wantedHash(size);
  SlidingHash hash(size);
  for (size_t i = 0; i < size; ++i) {
    wantedHash.push(wanted[i]);
    hash.push(text[i]);
  }
  for (size_t place = 0;; ++place) {
    if (hash == wantedHash && same(place)) return place;
    if (place + size == length) return noIndex;
    hash.dropOldest(text[place]);
    hash.push(text[place + size]);
  }
}

template <class A, class B>
size_t findUnitsSteadily(std::basic_string_view<A> text, std::basic_string_view<B> wanted) {
  const auto same = [&](size_t place) { return equalUnits(text.substr(place, wanted.size()), wanted); };
  return findBySlidingHash(Forwards<A>{text}, text.size(), Forwards<B>{wanted}, wanted.size(), same);
}

template <class A, class B>
size_t findLastUnitsSteadily(std::basic_string_view<A> text, std::basic_string_view<B> wanted) {
  const size_t lastPlace = text.size() - wanted.size();
  const auto same = [&](size_t place) { return equalUnits(text.substr(lastPlace - place, wanted.size()), wanted); };
  const size_t found = findBySlidingHash(Backwards<A>{text}, text.size(), Backwards<B>{wanted}, wanted.size(), same);
  return found == noIndex ? noIndex : lastPlace - found;
}

template <class A, class B>
bool mayHold(std::basic_string_view<A> text, std::basic_string_view<B> wanted) {
  return !wanted.empty() && wanted.size() <= text.size() && canHold<A>(static_cast<char16_t>(wanted.front())) &&
         canHold<A>(static_cast<char16_t>(wanted.back()));
}

template <class Word>
uint64_t load(const void* from) {
  Word word;
  std::memcpy(&word, from, sizeof(word));
  return word;
}

/// Up to eight units as their low bytes and their high bytes. ASCII has the ones ready in memory and none of the
/// others.
struct SplitUnits {
  uint64_t low;
  uint64_t high;
};

// Registers of units and of bytes; the compiler goes from one to the other with an instruction or two.
using FourUnits [[gnu::vector_size(8)]] = uint16_t;
using FourBytes [[gnu::vector_size(4)]] = uint8_t;
using EightUnits [[gnu::vector_size(16)]] = uint16_t;
using EightBytes [[gnu::vector_size(8)]] = uint8_t;

template <class Units, class Bytes, class Word>
SplitUnits splitUnits(const char16_t* from) {
  Units units;
  std::memcpy(&units, from, sizeof(units));
  const Bytes low = __builtin_convertvector(units, Bytes);
  const Bytes high = __builtin_convertvector(units >> 8, Bytes);
  return {load<Word>(&low), load<Word>(&high)};
}

SplitUnits fourUnits(const char* units) { return {load<uint32_t>(units), 0}; }
SplitUnits fourUnits(const char16_t* units) { return splitUnits<FourUnits, FourBytes, uint32_t>(units); }
SplitUnits eightUnits(const char* units) { return {load<uint64_t>(units), 0}; }
SplitUnits eightUnits(const char16_t* units) { return splitUnits<EightUnits, EightBytes, uint64_t>(units); }
/// One to three units.
template <class Unit>
SplitUnits fewUnits(const Unit* units, size_t length) {
  const uint64_t first = static_cast<char16_t>(units[0]);
  const uint64_t middle = static_cast<char16_t>(units[length / 2]);
  return {first | middle << 16 | uint64_t{static_cast<char16_t>(units[length - 1])} << 32, 0};
}

/// Folds the double-length product, in which every bit of the factors counts.
uint64_t foldedProduct(uint64_t a, uint64_t b) {
  __extension__ using Wide = unsigned __int128;
  const Wide wide = static_cast<Wide>(a) * b;
  return static_cast<uint64_t>(wide) ^ static_cast<uint64_t>(wide >> 64);
}

/// Takes words up one pair after the other.
class HashState {
 public:
  explicit HashState(uint64_t seed) : value_(seed * 0xE655'25F3'AA55'AB95) {}

  void take(uint64_t a, uint64_t b) {
    value_ = foldedProduct(a ^ 0x5748'9862'63E8'1440, b ^ value_ ^ 0x55CA'396A'2AAB'10B6);
  }
  void take(SplitUnits a, SplitUnits b) {
    take(a.low, b.low);
    if ((a.high | b.high) != 0) take(a.high, ~b.high);
  }
  uint64_t result() const { return foldedProduct(value_ ^ 0xB4CC'5C34'1141'E8CE, 0xA154'86AF'7C72'E995); }

 private:
  uint64_t value_;
};

template <class Unit>
uint64_t hashShort(const Unit* units, size_t length) {
  HashState state(length);
  if (length >= 8) {
    for (size_t i = 0; i + 16 < length; i += 16) state.take(eightUnits(units + i), eightUnits(units + i + 8));
    const size_t first = length < 16 ? 0 : length - 16;  // may overlap what was taken before
    state.take(eightUnits(units + first), eightUnits(units + length - 8));
  } else if (length >= 4) {
    state.take(fourUnits(units), fourUnits(units + length - 4));
  } else if (length > 0) {
    state.take(fewUnits(units, length), {0, 0});
  }
  return state.result();
}

constexpr size_t longestShortHash = 64;

constexpr uint64_t sumKeys[8] = {0xB3EE'1411'636F'BC2A, 0x2BA9'C55D'7418'31F6, 0xCE5C'3E16'9B87'931E,
                                 0xAFD6'BA33'6C24'CF5C, 0x7A32'5381'2895'8677, 0x3B8F'4898'6B4B'B9AF,
                                 0xC4BF'E81B'6628'2193, 0x61D8'09CC'FB21'A991};

uint64_t hashOfSums(const uint64_t* sums, size_t length) {
  uint64_t total = 0;
  for (size_t i = 0; i < 8; i += 2) total += foldedProduct(sums[i] ^ sumKeys[i], sums[i + 1] ^ sumKeys[i + 1]);
  return HashState(total + length).result();
}

// By themselves: short texts, which most are, then need no room for sums.
[[gnu::noinline]] uint64_t hashLong(const char* ascii, size_t length) {
  uint64_t sums[8] = {};
  HWY_DYNAMIC_DISPATCH(SumStripesAscii)(ascii, length, sums);
  return hashOfSums(sums, length);
}
[[gnu::noinline]] uint64_t hashLong(const char16_t* units, size_t length) {
  uint64_t sums[8] = {};
  HWY_DYNAMIC_DISPATCH(SumStripesUTF16)(units, length, sums);
  return hashOfSums(sums, length);
}

}  // namespace

uint64_t hashUnits(const char* ascii, size_t length) {
  return length <= longestShortHash ? hashShort(ascii, length) : hashLong(ascii, length);
}
uint64_t hashUnits(const char16_t* units, size_t length) {
  return length <= longestShortHash ? hashShort(units, length) : hashLong(units, length);
}

template <TextUnit A, TextUnit B>
size_t commonPrefixLength(std::basic_string_view<A> a, std::basic_string_view<B> b) {
  const size_t length = std::min(a.size(), b.size());
  // Most texts that differ do so at once: these need no vectors.
  if (length == 0 || static_cast<char16_t>(a[0]) != static_cast<char16_t>(b[0])) return 0;
  return samePrefix(a.data(), b.data(), length);
}

template <TextUnit A, TextUnit B>
size_t commonSuffixLength(std::basic_string_view<A> a, std::basic_string_view<B> b) {
  const size_t length = std::min(a.size(), b.size());
  return sameSuffix(a.data() + (a.size() - length), b.data() + (b.size() - length), length);
}

template <TextUnit Unit>
size_t findUnit(std::basic_string_view<Unit> text, char16_t unit) {
  if (!canHold<Unit>(unit)) return noIndex;
  if constexpr (std::same_as<Unit, char>) {
    return text.find(static_cast<char>(unit));
  } else {
    const size_t at = HWY_DYNAMIC_DISPATCH(FindUnitUTF16)(text.data(), text.size(), unit);
    return at == text.size() ? noIndex : at;
  }
}

template <TextUnit Unit>
size_t findLastUnit(std::basic_string_view<Unit> text, char16_t unit) {
  if (!canHold<Unit>(unit)) return noIndex;
  if constexpr (std::same_as<Unit, char>) {
    if (text.empty()) return noIndex;
    const void* found = memrchr(text.data(), unit, text.size());
    return found ? static_cast<size_t>(static_cast<const char*>(found) - text.data()) : noIndex;
  } else {
    return HWY_DYNAMIC_DISPATCH(FindBehindLastUnitUTF16)(text.data(), text.size(), unit) - 1;  // 0 becomes noIndex
  }
}

template <TextUnit A, TextUnit B>
size_t findUnits(std::basic_string_view<A> text, std::basic_string_view<B> wanted) {
  if (!mayHold(text, wanted)) return noIndex;
  const auto first = static_cast<char16_t>(wanted.front());
  const auto last = static_cast<char16_t>(wanted.back());
  const size_t size = wanted.size();
  const size_t places = text.size() - size + 1;
  SearchBudget budget;
  for (size_t place = 0;; ++place) {
    place += findEnds(text.data() + place, places - place, size - 1, first, last);
    if (place == places) return noIndex;
    const size_t same = commonPrefixLength(text.substr(place, size), wanted);
    if (same == size) return place;
    if (!budget.pay(same, place)) {
      const size_t found = findUnitsSteadily(text.substr(place), wanted);
      return found == noIndex ? noIndex : place + found;
    }
  }
}

template <TextUnit A, TextUnit B>
size_t findLastUnits(std::basic_string_view<A> text, std::basic_string_view<B> wanted) {
  if (!mayHold(text, wanted)) return noIndex;
  const auto first = static_cast<char16_t>(wanted.front());
  const auto last = static_cast<char16_t>(wanted.back());
  const size_t size = wanted.size();
  const size_t places = text.size() - size + 1;
  SearchBudget budget;
  for (size_t end = places;;) {
    end = findBehindLastEnds(text.data(), end, size - 1, first, last);
    if (end == 0) return noIndex;
    const size_t place = end - 1;
    const size_t same = commonPrefixLength(text.substr(place, size), wanted);
    if (same == size) return place;
    if (!budget.pay(same, places - place)) return findLastUnitsSteadily(text.substr(0, place + size), wanted);
    end = place;
  }
}

template size_t commonPrefixLength(std::string_view, std::string_view);
template size_t commonPrefixLength(std::string_view, std::u16string_view);
template size_t commonPrefixLength(std::u16string_view, std::string_view);
template size_t commonPrefixLength(std::u16string_view, std::u16string_view);
template size_t commonSuffixLength(std::string_view, std::string_view);
template size_t commonSuffixLength(std::string_view, std::u16string_view);
template size_t commonSuffixLength(std::u16string_view, std::string_view);
template size_t commonSuffixLength(std::u16string_view, std::u16string_view);
template size_t findUnit(std::string_view, char16_t);
template size_t findUnit(std::u16string_view, char16_t);
template size_t findLastUnit(std::string_view, char16_t);
template size_t findLastUnit(std::u16string_view, char16_t);
template size_t findUnits(std::string_view, std::string_view);
template size_t findUnits(std::string_view, std::u16string_view);
template size_t findUnits(std::u16string_view, std::string_view);
template size_t findUnits(std::u16string_view, std::u16string_view);
template size_t findLastUnits(std::string_view, std::string_view);
template size_t findLastUnits(std::string_view, std::u16string_view);
template size_t findLastUnits(std::u16string_view, std::string_view);
template size_t findLastUnits(std::u16string_view, std::u16string_view);

}  // namespace quoll::inline v1::detail
#endif
