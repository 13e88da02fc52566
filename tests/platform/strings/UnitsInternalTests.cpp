// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/UnitsInternal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::ExactSpan;

class Units : public quoll::testing::EachInstructionSet {};

bool isAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

std::string narrowed(std::u16string_view text) { return {text.begin(), text.end()}; }

/// Calls `body` with the text as UTF-16, and as ASCII where it is ASCII.
template <class Body>
void inEachStorage(std::u16string_view text, Body body) {
  body(ExactSpan<char16_t>(text).view());
  if (isAscii(text)) body(ExactSpan<char>(narrowed(text)).view());
}

/// Calls `body` with two texts in each mixture of storages.
template <class Body>
void inEachMixture(std::u16string_view a, std::u16string_view b, Body body) {
  inEachStorage(a, [&](auto first) { inEachStorage(b, [&](auto second) { body(first, second); }); });
}

std::u16string filler(size_t length) {
  std::u16string text(length, 0);
  for (size_t i = 0; i < length; ++i) text[i] = static_cast<char16_t>('a' + i % 26);
  return text;
}

std::u16string randomText(std::mt19937_64& random, size_t length, std::u16string_view alphabet) {
  std::u16string text(length, 0);
  for (char16_t& unit : text) unit = alphabet[random() % alphabet.size()];
  return text;
}

uint64_t hashOf(std::string_view text) { return hashUnits(text.data(), text.size()); }
uint64_t hashOf(std::u16string_view text) { return hashUnits(text.data(), text.size()); }

TEST_F(Units, AreTheSameTextInWhicheverStorage) {
  std::string_view ascii = "the same text";
  std::u16string_view utf16 = u"the same text";
  EXPECT_TRUE(quoll::detail::equalUnits(ascii, utf16));
  EXPECT_EQ(quoll::detail::hashUnits(ascii.data(), ascii.size()), quoll::detail::hashUnits(utf16.data(), utf16.size()));
  EXPECT_EQ(quoll::detail::compareUnits(ascii, utf16), std::strong_ordering::equal);
  EXPECT_EQ(quoll::detail::findUnits(utf16, std::string_view("text")), 9u);
}

// ---- hashing

TEST_F(Units, HashAlikeInEitherStorageAtEveryLength) {
  for (size_t length = 0; length <= 300; ++length) {
    const std::u16string text = filler(length);
    const ExactSpan<char> ascii(narrowed(text));
    ASSERT_EQ(hashOf(ascii.view()), hashOf(ExactSpan<char16_t>(text).view())) << length;
  }
}

TEST_F(Units, HashAlikeWithEveryInstructionSet) {
  std::mt19937_64 random(30);
  std::vector<std::u16string> texts;
  for (size_t length : {0u, 1u, 7u, 8u, 16u, 64u, 65u, 96u, 97u, 200u, 5000u}) {
    texts.push_back(filler(length));
    texts.push_back(randomText(random, length, u"a\u00E9\u3042\uFFFF\xD800"));
  }
  std::vector<uint64_t> hashes;
  for (const std::u16string& text : texts) hashes.push_back(hashOf(text));
  useInstructionSet(HWY_STATIC_TARGET);
  for (size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(hashOf(texts[i]), hashes[i]) << texts[i].size();
}

TEST_F(Units, HashDifferentlyWhenOneUnitDiffers) {
  for (size_t length :
       {1u, 2u, 3u, 4u, 5u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 33u, 63u, 64u, 65u, 95u, 96u, 97u, 128u, 200u}) {
    const std::u16string text = filler(length);
    std::unordered_set<uint64_t> seen{hashOf(text)};
    for (size_t i = 0; i < length; ++i) {
      for (unsigned bit = 0; bit < 16; ++bit) {
        std::u16string other = text;
        other[i] = static_cast<char16_t>(other[i] ^ (1u << bit));
        ASSERT_TRUE(seen.insert(hashOf(other)).second) << "bit " << bit << " of unit " << i << " of " << length;
      }
    }
  }
}

TEST_F(Units, HashDifferentlyWhenTheLengthDiffers) {
  std::unordered_set<uint64_t> seen;
  for (size_t length = 0; length <= 1000; ++length) {
    ASSERT_TRUE(seen.insert(hashOf(std::string(length, '\0'))).second) << length;
  }
}

TEST_F(Units, HashDifferentlyWhenPiecesChangePlaces) {
  const std::u16string text = filler(26 * 20);
  std::unordered_set<uint64_t> seen{hashOf(text)};
  for (size_t size : {4u, 32u, 64u}) {
    for (size_t i = size; i + size <= text.size(); i += size) {
      if (text.substr(i, size) == text.substr(0, size)) continue;
      std::u16string other = text;
      std::swap_ranges(other.begin(), other.begin() + static_cast<ptrdiff_t>(size),
                       other.begin() + static_cast<ptrdiff_t>(i));
      ASSERT_TRUE(seen.insert(hashOf(other)).second) << size << " units at " << i;
    }
  }
}

TEST_F(Units, HashKeysOfOnePatternWithoutCollisionAndEvenly) {
  constexpr size_t keys = 1 << 17;
  constexpr size_t buckets = 1 << 12;
  std::unordered_set<uint64_t> seen;
  std::vector<double> low(buckets), high(buckets);
  for (size_t i = 0; i < keys; ++i) {
    const uint64_t hash = hashOf("observer." + std::to_string(i) + ".key");
    seen.insert(hash);
    ++low[hash % buckets];
    ++high[hash / ((~uint64_t{0}) / buckets + 1)];
  }
  EXPECT_EQ(seen.size(), keys);
  for (const std::vector<double>& counts : {low, high}) {
    constexpr double expected = double{keys} / buckets;
    double deviation = 0;
    for (double count : counts) deviation += (count - expected) * (count - expected) / expected;
    EXPECT_NEAR(deviation, buckets, 6 * std::sqrt(2.0 * buckets));  // chi-squared: mean and six standard deviations
  }
}

TEST_F(Units, HashSoThatEachBitOfTheTextMovesHalfOfTheBits) {
  std::mt19937_64 random(31);
  constexpr int samples = 400;
  for (size_t length : {1u, 5u, 12u, 40u, 64u, 65u, 150u}) {
    std::vector<int> moved(64);
    for (int sample = 0; sample < samples; ++sample) {
      std::u16string text(length, 0);
      for (char16_t& unit : text) unit = static_cast<char16_t>('a' + random() % 26);
      const uint64_t before = hashOf(text);
      char16_t& unit = text[random() % length];
      unit = static_cast<char16_t>(unit ^ (1u << random() % 7));
      const uint64_t difference = before ^ hashOf(text);
      for (size_t bit = 0; bit < 64; ++bit) moved[bit] += static_cast<int>(difference >> bit & 1);
    }
    // Six standard deviations of a fair coin.
    for (int count : moved) EXPECT_NEAR(count, samples / 2, 60) << "length " << length;
  }
}

// ---- comparing

TEST_F(Units, ShareAllBeforeTheUnitThatDiffersAtEveryOffsetOfEveryLength) {
  for (size_t length = 0; length <= 200; ++length) {
    const std::u16string text = filler(length);
    inEachMixture(text, text, [&](auto a, auto b) {
      ASSERT_EQ(commonPrefixLength(a, b), length);
      ASSERT_EQ(commonSuffixLength(a, b), length);
      ASSERT_TRUE(equalUnits(a, b));
      ASSERT_EQ(compareUnits(a, b), std::strong_ordering::equal);
    });
    for (size_t i = 0; i < length; ++i) {
      std::u16string other = text;
      other[i] = i % 2 == 0 ? u'~' : u'\u2028';
      inEachMixture(text, other, [&](auto a, auto b) {
        const bool right = commonPrefixLength(a, b) == i && commonSuffixLength(a, b) == length - 1 - i &&
                           commonPrefixLength(b, a) == i && commonSuffixLength(b, a) == length - 1 - i &&
                           !equalUnits(a, b) && compareUnits(a, b) < 0 && compareUnits(b, a) > 0;
        ASSERT_TRUE(right) << i << " of " << length;
      });
    }
  }
}

TEST_F(Units, AreOrderedByTheFirstDifferenceThenByLength) {
  struct Row {
    const char* claim;
    std::u16string_view less, greater;
  };
  const Row rows[] = {
      {"nothing before something", u"", u"a"},
      {"a prefix before the whole", u"ab", u"abc"},
      {"the first difference decides, not the length", u"abz", u"ac"},
      {"upper case before lower case", u"Z", u"a"},
      {"as unsigned numbers", u"\u7FFF", u"\u8000"},
      {"by units: a pair before U+E000", u"\U0001F600", u"\uE000"},
      {"low bytes do not come first", u"\u01FF", u"\u0200"},
      {"a zero is a unit", u"a", std::u16string_view(u"a\0", 2)},
      {"behind a long common start", u"0123456789012345678901234567890123456789a",
       u"0123456789012345678901234567890123456789b"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    inEachMixture(row.less, row.greater, [](auto less, auto greater) {
      EXPECT_EQ(compareUnits(less, greater), std::strong_ordering::less);
      EXPECT_EQ(compareUnits(greater, less), std::strong_ordering::greater);
      EXPECT_FALSE(equalUnits(less, greater));
    });
  }
}

TEST_F(Units, ShareStartsAndEndsOfTextsOfDifferentLengths) {
  for (size_t length : {0u, 1u, 15u, 16u, 40u, 100u}) {
    const std::u16string text = filler(length);
    inEachMixture(text, u"##" + text, [&](auto a, auto b) {
      ASSERT_EQ(commonSuffixLength(a, b), length);
      ASSERT_EQ(commonPrefixLength(a, b), 0u);
    });
    inEachMixture(text, text + u"##", [&](auto a, auto b) {
      ASSERT_EQ(commonPrefixLength(a, b), length);
      ASSERT_EQ(commonSuffixLength(a, b), 0u);
      ASSERT_FALSE(equalUnits(a, b));
    });
  }
}

TEST_F(Units, DifferFromASCIIWhenOnlyTheHighByteDiffers) {
  const std::string ascii(40, 'a');
  std::u16string utf16(40, u'a');
  utf16[33] = 0x2061;
  EXPECT_EQ(commonPrefixLength(std::string_view(ascii), std::u16string_view(utf16)), 33u);
  EXPECT_FALSE(equalUnits(std::string_view(ascii), std::u16string_view(utf16)));
}

// ---- searching

TEST_F(Units, AreFoundAtEveryOffsetOfEveryLength) {
  for (size_t length = 1; length <= 200; ++length) {
    for (size_t i = 0; i < length; ++i) {
      std::u16string units = filler(length);
      units[i] = i % 2 == 0 ? u'~' : u'\u2028';
      inEachStorage(units, [&](auto text) {
        const bool right = findUnit(text, units[i]) == i && findLastUnit(text, units[i]) == i &&
                           findUnit(text.substr(i + 1), units[i]) == noIndex &&
                           findLastUnit(text.substr(0, i), units[i]) == noIndex;
        ASSERT_TRUE(right) << i << " of " << length;
      });
    }
  }
}

TEST_F(Units, AreFoundFirstFromEitherEnd) {
  inEachStorage(filler(26 * 5), [](auto text) {
    EXPECT_EQ(findUnit(text, u'c'), 2u);
    EXPECT_EQ(findLastUnit(text, u'c'), 26u * 4 + 2);
    EXPECT_EQ(findUnit(text, u'\u0161'), noIndex) << "its low byte is the letter a";
    EXPECT_EQ(findLastUnit(text, u'\u0161'), noIndex);
  });
}

template <class A, class B>
void expectFindsAsTheModelDoes(A text, B wanted, std::u16string_view units, std::u16string_view wantedUnits) {
  const size_t first = wantedUnits.empty() ? noIndex : units.find(wantedUnits);
  const size_t last = wantedUnits.empty() ? noIndex : units.rfind(wantedUnits);
  ASSERT_EQ(findUnits(text, wanted), first) << narrowed(wantedUnits) << " in " << narrowed(units);
  ASSERT_EQ(findLastUnits(text, wanted), last) << narrowed(wantedUnits) << " in " << narrowed(units);
}

TEST_F(Units, AreFoundInARow) {
  struct Row {
    const char* claim;
    std::u16string_view text, wanted;
  };
  const Row rows[] = {
      {"nothing is found of nothing", u"abc", u""},
      {"nothing in nothing", u"", u""},
      {"something in nothing", u"", u"a"},
      {"more than there is", u"ab", u"abc"},
      {"all of it", u"abc", u"abc"},
      {"one unit", u"abcabc", u"b"},
      {"two units", u"abcabc", u"bc"},
      {"overlapping occurrences", u"aaaaa", u"aaa"},
      {"ends that fit and a middle that does not", u"axc abc axc abc axc", u"abc"},
      {"ends that are no ASCII", u"abc", u"\u0161bc"},
      {"a middle that is no ASCII", u"abc abc", u"a\u0162c"},
      {"no ASCII", u"\u3042\u3044\u3042\u3044", u"\u3042\u3044"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    inEachMixture(row.text, row.wanted,
                  [&](auto text, auto wanted) { expectFindsAsTheModelDoes(text, wanted, row.text, row.wanted); });
  }
}

TEST_F(Units, AreFoundInRandomTextsAsByAModel) {
  std::mt19937_64 random(32);
  for (std::u16string_view alphabet : {u"ab", u"aaaaaaaaab", u"abcdefgh", u"a\u3042"}) {
    for (int round = 0; round < 300; ++round) {
      const std::u16string units = randomText(random, random() % 260, alphabet);
      const std::u16string piece = units.substr(random() % (units.size() + 1), random() % 12);
      const std::u16string wanted = round % 3 == 0 ? randomText(random, 1 + random() % 6, alphabet) : piece;
      inEachMixture(units, wanted, [&](auto a, auto b) { expectFindsAsTheModelDoes(a, b, units, wanted); });
    }
  }
}

TEST_F(Units, AreFoundAtEveryOffset) {
  for (size_t size : {2u, 3u, 17u, 33u, 70u}) {
    const std::u16string wanted = u"<" + std::u16string(size - 2, u'=') + u">";
    for (size_t length = size; length <= size + 150; length += length < size + 40 ? 1 : 9) {
      for (size_t i = 0; i + size <= length; i += 1 + length % 3) {
        const std::u16string units = filler(length).replace(i, size, wanted);
        inEachMixture(units, wanted, [&](auto a, auto b) {
          ASSERT_TRUE(findUnits(a, b) == i && findLastUnits(a, b) == i) << i << " of " << length;
        });
      }
    }
  }
}

TEST_F(Units, AreFoundBesideAnyNumberOfPlacesThatAlmostFit) {
  const std::u16string wanted = std::u16string(100, u'a') + u"b" + std::u16string(100, u'a');
  for (size_t count = 0; count <= 4000; count += count < 60 ? 1 : 985) {
    const std::u16string almost(count, u'a');
    for (const std::u16string& units : {almost, almost + wanted, wanted + almost, almost + wanted + almost}) {
      inEachMixture(units, wanted, [&](auto a, auto b) { expectFindsAsTheModelDoes(a, b, units, wanted); });
    }
  }
}

// A search that starts over at each place would compare 10^12 units.
TEST_F(Units, AreSearchedInLinearTimeWhateverTheTexts) {
  const std::string text(3'000'000, 'a');
  const std::string wanted = std::string(400'000, 'a') + "b" + std::string(400'000, 'a');
  EXPECT_EQ(findUnits(std::string_view(text), std::string_view(wanted)), noIndex);
  EXPECT_EQ(findLastUnits(std::string_view(text), std::string_view(wanted)), noIndex);
}

}  // namespace
}  // namespace quoll::inline v1::detail
