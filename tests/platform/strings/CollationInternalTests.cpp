// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CollationInternal.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/ucol.h>

#include <string>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using detail::ASCIIOrder;
using detail::Collations;
using detail::CollatorHandle;

constexpr uint64_t standard =
    NSCaseInsensitiveSearch | NSNumericSearch | NSWidthInsensitiveSearch | NSForcedOrderingSearch;

Ref<NSLocale> locale(const char* name) { return NSLocale::localeWithLocaleIdentifier(NSString::stringWithUTF8(name)); }

CollatorHandle opened(const char* name, UCollationStrength strength) {
  UErrorCode status = U_ZERO_ERROR;
  CollatorHandle collator(ucol_open(name, &status));
  ucol_setStrength(collator.get(), strength);
  ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
  EXPECT_TRUE(U_SUCCESS(status));
  return collator;
}

/// ICU's answer: without case first, then with it, then by units.
class ByICU {
 public:
  explicit ByICU(const char* name) : secondary_(opened(name, UCOL_SECONDARY)), tertiary_(opened(name, UCOL_TERTIARY)) {}
  NSComparisonResult compare(const std::string& a, const std::string& b) const {
    for (const auto* collator : {secondary_.get(), tertiary_.get()}) {
      UErrorCode status = U_ZERO_ERROR;
      const UCollationResult result = ucol_strcollUTF8(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                                                       static_cast<int32_t>(b.size()), &status);
      if (result != UCOL_EQUAL) return result == UCOL_LESS ? NSOrderedAscending : NSOrderedDescending;
    }
    return compareValues(a, b);
  }

 private:
  CollatorHandle secondary_, tertiary_;
};

std::string printable() {
  std::string all;
  for (char c = ' '; c <= '~'; ++c) all += c;
  return all;
}

/// Sequences that some language gives a place of its own.
constexpr const char* contractions[] = {"aa", "ch", "ll", "dz", "cs", "dzs", "gy", "ly", "nj",
                                        "sz", "ng", "y",  "w",  "IJ", "rh",  "th", "ph"};

TEST(ASCIIOrder, IsThatOfICUForAllPairsWhereverItIsUsed) {
  int used = 0;
  for (int32_t i = 0; i < ucol_countAvailable(); ++i) {
    const char* const name = ucol_getAvailable(i);
    SCOPED_TRACE(name);
    const Ref<NSLocale> own = locale(name);
    const ASCIIOrder& order = Collations::of(own).asciiOrder();
    if (!order.isUsable()) continue;
    ++used;
    const ByICU icu(name);
    std::vector<std::string> texts(std::begin(contractions), std::end(contractions));
    const std::string all = printable();
    for (const char c : all) texts.push_back({c});
    // Those of a region order as their language does: all pairs of them would tell nothing new.
    const size_t step = std::string_view(name).size() <= 3 ? 1 : 7;
    for (size_t a = 0; a < texts.size(); a += step) {
      for (const std::string& other : texts) {
        for (const auto& [x, y] : {std::pair(texts[a], other), std::pair(texts[a] + other, other + texts[a]),
                                   std::pair("b" + texts[a] + other, "b" + other)}) {
          NSComparisonResult result{};
          ASSERT_TRUE(order.compare(x, y, result));
          ASSERT_EQ(result, icu.compare(x, y)) << x << " and " << y;
        }
      }
    }
  }
  EXPECT_GT(used, 20);
}

TEST(ASCIIOrder, IsNotUsedWhereALanguageHasItsOwnPlaces) {
  for (const char* name : {"da", "cs", "hu", "lt", "cy", "hr"}) {
    const Ref<NSLocale> own = locale(name);
    EXPECT_FALSE(Collations::of(own).asciiOrder().isUsable()) << name;
  }
  for (const char* name : {"en_US", "en_US_POSIX", "de_DE", "fr_FR", "ja_JP", "ru_RU"}) {
    const Ref<NSLocale> own = locale(name);
    const bool isUsable = Collations::of(own).asciiOrder().isUsable();
    EXPECT_EQ(isUsable, std::string_view(name) != "en_US_POSIX") << name;
  }
}

TEST(ASCIIOrder, OrdersTextsWithNumbersAsICUDoes) {
  const Ref<NSLocale> english = locale("en_US");
  const ASCIIOrder& order = Collations::of(english).asciiOrder();
  const ByICU icu("en_US");
  EXPECT_TRUE(rc::check([&] {
    const auto text = rc::gen::container<std::string>(rc::gen::elementOf(std::string("aAbZ0019 .-_~$")));
    const std::string a = *text, b = *text;
    NSComparisonResult result{};
    RC_ASSERT(order.compare(a, b, result));
    RC_ASSERT(result == icu.compare(a, b));
  }));
}

TEST(ASCIIOrder, LeavesControlCharactersAndHugeNumbersToICU) {
  const Ref<NSLocale> english = locale("en_US");
  const ASCIIOrder& order = Collations::of(english).asciiOrder();
  NSComparisonResult result{};
  EXPECT_FALSE(order.compare("a\tb", "a\tc", result));
  EXPECT_FALSE(order.compare("a\x01", "a", result));
  EXPECT_FALSE(order.compare(std::string(300, '1'), std::string(300, '2'), result));
  EXPECT_TRUE(order.compare(std::string(254, '1'), std::string(254, '2'), result));
}

int signOf(int difference) { return (difference > 0) - (difference < 0); }

TEST(ASCIIOrder, KeysHaveTheOrderOfTheirTexts) {
  const Ref<NSLocale> english = locale("en_US");
  const ASCIIOrder& order = Collations::of(english).asciiOrder();
  const auto keyOf = [&](const std::string& text) {
    std::string key = "before";
    RC_ASSERT(order.appendKey(text, key));
    return key.substr(6);
  };
  EXPECT_TRUE(rc::check([&] {
    const auto text = rc::gen::container<std::string>(rc::gen::elementOf(std::string("aAbZ0019 .-_~$")));
    const std::string a = *text, b = *text;
    NSComparisonResult result{};
    RC_ASSERT(order.compare(a, b, result));
    const int byKeys = signOf(keyOf(a).compare(keyOf(b)));
    if (byKeys != 0) RC_ASSERT(byKeys == result);
  }));
}

/// Texts in which everything comes together: numbers, case, width, marks, halves of pairs.
rc::Gen<std::u16string> hardTexts() {
  return rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"aA0019é\u0301Ａ０１\u200dЖ") +
                                                               char16_t{0xD83D} + char16_t{0xDE00} + char16_t{1}));
}

TEST(ASCIIOrder, KeysOverlookCaseAndZerosBeforeNumbersAlone) {
  const Ref<NSLocale> english = locale("en_US");
  const ASCIIOrder& order = Collations::of(english).asciiOrder();
  const auto keyOf = [&](const std::string& text) {
    std::string key;
    EXPECT_TRUE(order.appendKey(text, key)) << text;
    return key;
  };
  EXPECT_EQ(keyOf("File 007.txt"), keyOf("file 7.TXT"));
  EXPECT_EQ(keyOf("a0"), keyOf("A00"));
  // Each of them before all that follow.
  const char* const texts[] = {"", "_", "0", "0a", "1", "2", "9", "10", "10a", "a", "a 1", "a0", "a1", "ab"};
  for (size_t i = 1; i < std::size(texts); ++i) EXPECT_LT(keyOf(texts[i - 1]), keyOf(texts[i])) << texts[i];
  EXPECT_LT(keyOf(std::string(253, '9')), keyOf(std::string(254, '1')));
}

TEST(ASCIIOrder, HasNoKeyForControlCharactersAndHugeNumbers) {
  const Ref<NSLocale> english = locale("en_US");
  const ASCIIOrder& order = Collations::of(english).asciiOrder();
  for (const std::string& text : {std::string("a\tb"), std::string("\x01"), std::string("a\x7f"), std::string(255, '1'),
                                  std::string(255, '0'), std::string("a\0b", 3)}) {
    std::string key;
    EXPECT_FALSE(order.appendKey(text, key)) << testing::PrintToString(text);
  }
}

TEST(Collations, KeysHaveTheOrderOfTheirTexts) {
  for (const char* name : {"en_US", "da_DK", "en_US_POSIX", "ja_JP"}) {
    SCOPED_TRACE(name);
    const Ref<NSLocale> own = locale(name);
    const Collations& order = Collations::of(own);
    EXPECT_TRUE(rc::check([&] {
      const Ref<NSString> a = NSString::stringWithCharacters(*hardTexts()),
                          b = NSString::stringWithCharacters(*hardTexts());
      std::string left, right;
      order.appendKey(a, left);
      order.appendKey(b, right);
      const int byKeys = signOf(left.compare(right));
      if (byKeys != 0) RC_ASSERT(byKeys == order.compare(a, b, standard));
    }));
  }
}

TEST(Collations, MakesKeysOfLongTexts) {
  const Ref<NSLocale> english = locale("en_US");
  const Collations& order = Collations::of(english);
  const std::u16string units(5000, u'\u8a9e');
  std::string shorter, longer;
  order.appendKey(NSString::stringWithCharacters(units), shorter);
  order.appendKey(NSString::stringWithCharacters(units + u"x"), longer);
  EXPECT_GT(shorter.size(), 2 * units.size());
  EXPECT_LT(shorter, longer);
}

TEST(Collations, TheStandardOrderIsStrictAndTotal) {
  for (const char* name : {"en_US", "da_DK", "sv_SE", "en_US_POSIX"}) {
    SCOPED_TRACE(name);
    const Ref<NSLocale> own = locale(name);
    const Collations& order = Collations::of(own);
    EXPECT_TRUE(rc::check([&] {
      const Ref<NSString> a = NSString::stringWithCharacters(*hardTexts()),
                          b = NSString::stringWithCharacters(*hardTexts()),
                          c = NSString::stringWithCharacters(*hardTexts());
      const auto ab = order.compare(a, b, standard), bc = order.compare(b, c, standard),
                 ac = order.compare(a, c, standard);
      RC_ASSERT((ab == NSOrderedSame) == a->isEqualToString(b));
      RC_ASSERT(order.compare(b, a, standard) == -ab);
      if (ab == NSOrderedAscending && bc == NSOrderedAscending) RC_ASSERT(ac == NSOrderedAscending);
    }));
  }
}

TEST(Collations, OrdersNumbersInDigitsBeyondASCIIByValueInEveryLanguage) {
  const char16_t* const texts[] = {u"\uFF11e",      u"1f",        u"\uFF15e",
                                   u"\uFF11\uFF11", u"5\uFF102e", u"5\uFF10\uFF10\uFF10e"};
  for (const char* name : {"en_US", "da_DK", "sv_SE", "ja_JP", "cs_CZ", "en_US_POSIX"}) {
    SCOPED_TRACE(name);
    const Ref<NSLocale> own = locale(name);
    const Collations& order = Collations::of(own);
    for (size_t i = 0; i < std::size(texts); ++i) {
      for (size_t j = 0; j < std::size(texts); ++j) {
        const Ref<NSString> a = NSString::stringWithCharacters(texts[i]), b = NSString::stringWithCharacters(texts[j]);
        EXPECT_EQ(order.compare(a, b, standard), compareValues(i, j)) << i << " and " << j;
      }
    }
  }
}

TEST(Collations, OrdersNumbersOfAThousandDigits) {
  const Ref<NSLocale> english = locale("en_US");
  const Collations& order = Collations::of(english);
  const auto number = [](const std::string& digits) { return NSString::stringWithUTF8(digits); };
  const std::string ones(1000, '1');
  EXPECT_EQ(order.compare(number(ones), number(std::string(1000, '2')), standard), NSOrderedAscending);
  EXPECT_EQ(order.compare(number("0" + ones), number(ones), standard), NSOrderedAscending);
  EXPECT_EQ(order.compare(number(ones), number(ones), standard), NSOrderedSame);
}

TEST(Collations, ThreadsMayShareOne) {
  const Ref<NSLocale> german = locale("de_DE");
  std::vector<std::jthread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 200; ++round) {
        EXPECT_EQ(Collations::of(german).compare("Äpfel"_ns, "Birnen"_ns, standard), NSOrderedAscending);
        EXPECT_EQ(Collations::of(german).compare("a2"_ns, "a10"_ns, standard), NSOrderedAscending);
      }
    });
  }
}

}  // namespace
