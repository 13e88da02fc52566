// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/CFStringTokenizer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

Ref<NSLocale> english() { return NSLocale::localeWithLocaleIdentifier("en_US"_ns); }

Ref<CFStringTokenizer> tokenizer(const NSString* text, CFOptionFlags unit, Ref<NSLocale> locale = english()) {
  return CFStringTokenizerCreate(nullptr, text, CFRangeMake(0, static_cast<int64_t>(text->length())), unit, locale);
}

/// The tokens, joined by bars.
std::string tokens(const NSString* text, CFOptionFlags unit) {
  const Ref<CFStringTokenizer> each = tokenizer(text, unit);
  std::string all;
  while (CFStringTokenizerAdvanceToNextToken(each)) {
    const CFRange range = CFStringTokenizerGetCurrentTokenRange(each);
    all +=
        text->substringWithRange({static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length)})->utf8();
    all += '|';
  }
  return all;
}

TEST(CFStringTokenizer, CutsATextIntoWords) {
  const quoll::Ref<quoll::NSString> text = "one, two"_ns;
  const auto words = quoll::CFStringTokenizerCreate(nullptr, text, quoll::CFRangeMake(0, 8),
                                                    quoll::kCFStringTokenizerUnitWord, nullptr);
  ASSERT_TRUE(quoll::CFStringTokenizerAdvanceToNextToken(words));
  EXPECT_EQ(quoll::CFStringTokenizerGetCurrentTokenRange(words), quoll::CFRangeMake(0, 3));
  ASSERT_TRUE(quoll::CFStringTokenizerAdvanceToNextToken(words));
  EXPECT_EQ(quoll::CFStringTokenizerGetCurrentTokenRange(words), quoll::CFRangeMake(5, 3));
  EXPECT_FALSE(quoll::CFStringTokenizerAdvanceToNextToken(words));
  EXPECT_EQ(quoll::CFStringTokenizerGetCurrentTokenRange(words), quoll::CFRangeMake(quoll::kCFNotFound, 0));
}

struct Row {
  const char* claim;
  const char* text;
  const char* words;
  const char* segments;
};
constexpr Row rows[] = {
    {"blanks run together, signs stand alone", "a  b!?", "a|b|", "a|  |b|!|?|"},
    {"an apostrophe and a decimal point stay inside", "can't 3.14 1,000", "can't|3.14|1,000|", "can't| |3.14| |1,000|"},
    {"a line end is one segment", "a\r\nb\n", "a|b|", "a|\r\n|b|\n|"},
    {"German", "Grüße, Weltstraße", "Grüße|Weltstraße|", "Grüße|,| |Weltstraße|"},
    {"Thai has no blanks between words", "สวัสดีครับ", "สวัสดี|ครับ|", "สวัสดี|ครับ|"},
    {"Japanese", "日本語を話す", "日本語|を|話す|", "日本語|を|話す|"},
    {"Chinese", "我住在北京", "我|住在|北京|", "我|住在|北京|"},
    {"Arabic", "مرحبا بالعالم", "مرحبا|بالعالم|", "مرحبا| |بالعالم|"},
    {"an emoji of several people is one segment and no word", "a👩‍👩‍👧b", "a|b|",
     "a|👩‍👩‍👧|b|"},
};

TEST(CFStringTokenizer, KnowsTheWordsOfManyLanguages) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSString> text = NSString::stringWithUTF8(row.text);
    EXPECT_EQ(tokens(text, kCFStringTokenizerUnitWord), row.words);
    EXPECT_EQ(tokens(text, kCFStringTokenizerUnitWordBoundary), row.segments);
  }
}

TEST(CFStringTokenizer, HasNoTokenInAnEmptyText) {
  EXPECT_EQ(tokens(""_ns, kCFStringTokenizerUnitWord), "");
  EXPECT_EQ(tokens(""_ns, kCFStringTokenizerUnitWordBoundary), "");
}

TEST(CFStringTokenizer, TakesAnUnpairedSurrogateForASign) {
  const Ref<NSString> text = NSString::stringWithCharacters(std::u16string_view(u"a\xd800 b", 4));
  const Ref<CFStringTokenizer> each = tokenizer(text, kCFStringTokenizerUnitWord);
  EXPECT_TRUE(each->advance());
  EXPECT_EQ(each->currentRange(), CFRangeMake(0, 1));
  EXPECT_TRUE(each->advance());
  EXPECT_EQ(each->currentRange(), CFRangeMake(3, 1));
}

TEST(CFStringTokenizer, GoesToTheTokenThatHoldsAnIndex) {
  const Ref<CFStringTokenizer> words = tokenizer("one two"_ns, kCFStringTokenizerUnitWord);
  EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(words, 5), kCFStringTokenizerTokenNormal);
  EXPECT_EQ(words->currentRange(), CFRangeMake(4, 3));
  EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(words, 0), kCFStringTokenizerTokenNormal);
  EXPECT_EQ(words->currentRange(), CFRangeMake(0, 3));
  EXPECT_TRUE(words->advance());
  EXPECT_EQ(words->currentRange(), CFRangeMake(4, 3));
}

TEST(CFStringTokenizer, FindsNoWordInAGapAndGoesOnBehindIt) {
  const Ref<CFStringTokenizer> words = tokenizer("one two"_ns, kCFStringTokenizerUnitWord);
  EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(words, 3), kCFStringTokenizerTokenNone);
  EXPECT_EQ(words->currentRange(), CFRangeMake(kCFNotFound, 0));
  EXPECT_TRUE(words->advance());
  EXPECT_EQ(words->currentRange(), CFRangeMake(4, 3));
  const Ref<CFStringTokenizer> segments = tokenizer("one two"_ns, kCFStringTokenizerUnitWordBoundary);
  EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(segments, 3), kCFStringTokenizerTokenNormal);
  EXPECT_EQ(segments->currentRange(), CFRangeMake(3, 1));
}

TEST(CFStringTokenizer, FindsNothingOutsideOfItsRange) {
  const Ref<CFStringTokenizer> words =
      CFStringTokenizerCreate(nullptr, "one two three"_ns, CFRangeMake(4, 3), kCFStringTokenizerUnitWord, nullptr);
  for (const int64_t index : {int64_t{-1}, int64_t{0}, int64_t{3}, int64_t{7}, INT64_MAX, INT64_MIN}) {
    EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(words, index), kCFStringTokenizerTokenNone) << index;
    EXPECT_FALSE(words->advance());
  }
  EXPECT_TRUE(words->goToTokenAtIndex(4));
  EXPECT_EQ(words->currentRange(), CFRangeMake(4, 3));
}

TEST(CFStringTokenizer, KeepsTheTextAsItWas) {
  Ref<NSMutableString> text = NSMutableString::stringWithString("one two"_ns);
  const Ref<CFStringTokenizer> words = tokenizer(text, kCFStringTokenizerUnitWord);
  text->setString("x"_ns);
  text = nullptr;
  EXPECT_TRUE(words->advance());
  EXPECT_EQ(words->currentRange(), CFRangeMake(0, 3));
}

TEST(CFStringTokenizer, RefusesWhatItCantCut) {
  EXPECT_THAT([] { (void)CFStringTokenizerCreate(nullptr, nullptr, {0, 0}, 0, nullptr); },
              raises(NSInvalidArgumentException, "null"));
  EXPECT_THAT([] { (void)CFStringTokenizerCreate(nullptr, "a"_ns, {0, 1}, 3, nullptr); },
              raises(NSInvalidArgumentException, "3"));
  for (const CFRange range : {CFRange{0, 2}, CFRange{-1, 1}, CFRange{1, INT64_MAX}, CFRange{0, -1}}) {
    EXPECT_THAT([&] { (void)CFStringTokenizerCreate(nullptr, "a"_ns, range, 0, nullptr); },
                raises(NSRangeException, "out of bounds"));
  }
}

TEST(CFStringTokenizer, ANullTokenizerHasNoTokens) {
  EXPECT_EQ(CFStringTokenizerGoToTokenAtIndex(nullptr, 0), kCFStringTokenizerTokenNone);
  EXPECT_EQ(CFStringTokenizerAdvanceToNextToken(nullptr), kCFStringTokenizerTokenNone);
  EXPECT_EQ(CFStringTokenizerGetCurrentTokenRange(nullptr), CFRangeMake(kCFNotFound, 0));
}

/// A line of Unicode's own test: "÷ 0041 × 003A ÷", breaks and code points.
struct UnicodeLine {
  Ref<NSString> text;
  std::vector<uint64_t> breaks;
};
UnicodeLine readLine(const std::string& line) {
  std::istringstream words(line.substr(0, line.find('#')));
  UnicodeLine read;
  std::u16string units;
  for (std::string word; words >> word;) {
    if (word == "÷") read.breaks.push_back(units.size());
    else if (word != "×") {
      const auto point = static_cast<char32_t>(std::stoul(word, nullptr, 16));
      if (point < 0x10000) units += static_cast<char16_t>(point);
      else {
        units += static_cast<char16_t>(0xD7C0 + (point >> 10));
        units += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
      }
    }
  }
  read.text = NSString::stringWithCharacters(units);
  return read;
}

TEST(CFStringTokenizer, BreaksWhereUnicodesOwnTestSays) {
  std::ifstream file("/usr/share/unicode/auxiliary/WordBreakTest.txt");
  ASSERT_TRUE(file) << "the package unicode-data is missing";
  // Most languages part words at a colon; the test does not, and neither does Finnish.
  const Ref<NSLocale> finnish = NSLocale::localeWithLocaleIdentifier("fi_FI"_ns);
  int lines = 0;
  for (std::string line; std::getline(file, line);) {
    const UnicodeLine expected = readLine(line);
    if (expected.breaks.empty()) continue;
    ++lines;
    const Ref<CFStringTokenizer> each = tokenizer(expected.text, kCFStringTokenizerUnitWordBoundary, finnish);
    std::vector<uint64_t> breaks{0};
    while (each->advance()) {
      const CFRange range = each->currentRange();
      EXPECT_EQ(static_cast<uint64_t>(range.location), breaks.back()) << line;
      breaks.push_back(static_cast<uint64_t>(range.location + range.length));
    }
    EXPECT_EQ(breaks, expected.breaks) << line;
  }
  EXPECT_GT(lines, 1000);
}

}  // namespace
