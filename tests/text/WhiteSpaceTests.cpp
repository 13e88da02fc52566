// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/WhiteSpace.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(WhiteSpace, IsTakenOffBothEnds) {
  EXPECT_THAT(quoll::stringByStrippingWhitespace(" \t\r\n a b\u2028\u3000"_ns), equals("a b"));
  EXPECT_THAT(stringByStrippingWhitespace("\v\f\u0085"_ns), equals(""));
  EXPECT_THAT(stringByStrippingWhitespace(""_ns), equals(""));
  EXPECT_THAT(stringByStrippingWhitespace("plain"_ns), equals("plain"));
}

TEST(WhiteSpace, IsTakenOffAMutableTextInPlace) {
  const Ref<NSMutableString> text = NSMutableString::stringWithString(" \n a b \t"_ns);
  stripWhitespace(text);
  EXPECT_THAT(text, equals("a b"));
}

TEST(WhiteSpace, MayBeAllThatThereIs) {
  EXPECT_TRUE(isWhitespace(" \t\n"_ns));
  EXPECT_TRUE(isWhitespace(u"\u3000\u2029"_ns));
  EXPECT_FALSE(isWhitespace(" a "_ns));
  EXPECT_FALSE(isWhitespace("\u200b"_ns));
}

TEST(WhiteSpace, IsUndefinedForAnEmptyText) {
  EXPECT_THAT([] { isWhitespace(""_ns); },
              raises(NSInvalidArgumentException, "isWhitespace is undefined for strings of length == 0"));
}

TEST(WhiteSpace, TakesABlankForEachUnitOfALineEnd) {
  EXPECT_THAT(stringByReplacingNewlinesWithSpaces("a\r\nb"_ns), equals("a  b"));
  EXPECT_THAT(stringByReplacingNewlinesWithSpaces("\n\v\f\r\tx"_ns), equals("    \tx"));
  EXPECT_THAT(stringByReplacingNewlinesWithSpaces(u"ä\u0085\u2028\u2029\u2027"_ns), equals("ä   \u2027"));
  EXPECT_THAT(stringByReplacingNewlinesWithSpaces(""_ns), equals(""));
}

TEST(WhiteSpace, ReplacesLineEndsWhereverTheyStand) {
  for (size_t length = 1; length < 200; length += 13) {
    for (size_t at = 0; at < length; ++at) {
      std::string text(length, 'x');
      text[at] = '\n';
      std::string expected = text;
      expected[at] = ' ';
      EXPECT_EQ(stringByReplacingNewlinesWithSpaces(NSString::stringWithUTF8(text))->utf8(), expected);
      std::u16string wide(text.begin(), text.end());
      wide.back() = at + 1 == length ? u'\u2028' : u'ä';
      std::u16string wideExpected(expected.begin(), expected.end());
      wideExpected.back() = at + 1 == length ? u' ' : u'ä';
      EXPECT_EQ(stringByReplacingNewlinesWithSpaces(NSString::stringWithCharacters(wide))->utf16(), wideExpected);
    }
  }
}

TEST(WhiteSpace, KnowsTheUnitsThatEndLines) {
  for (uint32_t unit = 0; unit < 0x10000; ++unit) {
    const bool expected = (unit >= 0xA && unit <= 0xD) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
    EXPECT_EQ(QFCharacterIsNewline(static_cast<char16_t>(unit)), expected) << unit;
  }
}

TEST(WhiteSpace, HasASetOfTheTabAlone) {
  const Ref<NSCharacterSet> tab = tabCharacterSet();
  for (uint32_t unit = 0; unit < 0x10000; ++unit) {
    EXPECT_EQ(tab->characterIsMember(static_cast<char16_t>(unit)), unit == 9) << unit;
  }
}

TEST(WhiteSpace, AnswersByName) {
  EXPECT_TRUE(send<bool>(" "_ns, "isWhitespace"_sel));
  EXPECT_THAT(send<Ref<NSString>>(" a "_ns, "stringByStrippingWhitespace"_sel), equals("a"));
  EXPECT_TRUE(
      send<Ref<NSCharacterSet>>(NSCharacterSet::classObject(), "tabCharacterSet"_sel)->characterIsMember(u'\t'));
}

TEST(WhiteSpace, ANullReceiverAnswersNull) {
  EXPECT_FALSE(isWhitespace(nullptr));
  EXPECT_EQ(stringByStrippingWhitespace(nullptr), nullptr);
  EXPECT_EQ(stringByReplacingNewlinesWithSpaces(nullptr), nullptr);
  stripWhitespace(nullptr);
}

}  // namespace
