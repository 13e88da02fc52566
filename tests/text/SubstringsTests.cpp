// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Substrings.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(Substrings, LieBetweenTwoIndices) {
  EXPECT_THAT(quoll::substringBetweenIndex_andIndex("abcdef"_ns, 1, 3), equals("bc"));
  EXPECT_THAT(substringBetweenIndex_andIndex("abc"_ns, 3, 3), equals(""));
  EXPECT_THAT(substringBetweenIndex_andIndex("abc"_ns, 0, 3), equals("abc"));
}

TEST(Substrings, RaisePastTheEndAndForASmallerSecondIndex) {
  EXPECT_THAT([] { substringBetweenIndex_andIndex("abc"_ns, 1, 4); }, raises(NSRangeException, "3"));
  EXPECT_THAT([] { substringBetweenIndex_andIndex("abc"_ns, 2, 1); }, raises(NSRangeException, "3"));
  EXPECT_THAT([] { substringBetweenIndex_andIndex("abc"_ns, UINT64_MAX, 0); }, raises(NSRangeException, "3"));
}

TEST(Substrings, AreFoundFromAnIndexOn) {
  EXPECT_EQ(rangeOfString_startingIndex("abab"_ns, "b"_ns, 2), NSMakeRange(3, 1));
  EXPECT_EQ(rangeOfString_startingIndex("abab"_ns, "b"_ns, 0), NSMakeRange(1, 1));
  EXPECT_EQ(rangeOfString_startingIndex("abab"_ns, "B"_ns, 0), NSMakeRange(NSNotFound, 0));
  EXPECT_EQ(rangeOfString_startingIndex("abab"_ns, "b"_ns, 4), NSMakeRange(NSNotFound, 0));
  EXPECT_EQ(rangeOfString_startingIndex("abab"_ns, ""_ns, 1), NSMakeRange(NSNotFound, 0));
  EXPECT_THAT([] { rangeOfString_startingIndex("abab"_ns, "b"_ns, 5); }, raises(NSRangeException, "4"));
}

TEST(Substrings, TheLastUnitIsThatAtTheEnd) {
  EXPECT_EQ(QFStringGetLastCharacter("abc"_ns), u'c');
  EXPECT_EQ(QFStringGetLastCharacter(u"ä"_ns), u'ä');
  EXPECT_EQ(QFStringGetLastCharacter(nullptr), u'\0');
  EXPECT_THAT([] { QFStringGetLastCharacter(""_ns); }, raises(NSRangeException, "0"));
}

TEST(Substrings, ArePutBeforeTheReceiver) {
  EXPECT_THAT(stringByPrependingString("b"_ns, "a"_ns), equals("ab"));
  EXPECT_THAT([] { stringByPrependingString("b"_ns, nullptr); },
              raises(NSInvalidArgumentException, "stringByPrependingString:"));
}

TEST(Substrings, JoinToAKeyPath) {
  EXPECT_THAT(keyPathWithComponents({"a", "b", "c", nullptr}), equals("a.b.c"));
  EXPECT_THAT(keyPathWithComponents({"a"}), equals("a"));
  EXPECT_THAT(keyPathWithComponents({"a", nullptr, "b"}), equals("a"));
  EXPECT_THAT(keyPathWithComponents({"a", 7}), equals("a.7"));
  EXPECT_EQ(keyPathWithComponents({nullptr, "a"}), nullptr);
  EXPECT_EQ(keyPathWithComponents({}), nullptr);
}

TEST(Substrings, BytesAreReadInAnEncoding) {
  const auto data = [](std::string_view bytes) { return NSData::dataWithBytes_length(bytes.data(), bytes.size()); };
  EXPECT_THAT(stringWithData_encoding(data("\xC3\xA4"), NSUTF8StringEncoding), equals("ä"));
  EXPECT_THAT(stringWithData_encoding(data("\xE4"), NSISOLatin1StringEncoding), equals("ä"));
  EXPECT_EQ(stringWithData_encoding(data("\xE4"), NSUTF8StringEncoding), nullptr);
  EXPECT_EQ(stringWithData_encoding(data("\xE4"), NSASCIIStringEncoding), nullptr);
  const Ref<NSMutableString> changing = stringWithData_encoding<NSMutableString>(data("a"), NSUTF8StringEncoding);
  changing->appendString("b"_ns);
  EXPECT_THAT(changing, equals("ab"));
}

TEST(Substrings, AnswerByName) {
  EXPECT_THAT(send<Ref<NSString>>("abc"_ns, "substringBetweenIndex:andIndex:"_sel, 1, 2), equals("b"));
  EXPECT_EQ(send<NSRange>("abab"_ns, "rangeOfString:startingIndex:"_sel, "b"_ns, 2), NSMakeRange(3, 1));
  EXPECT_THAT(send<Ref<NSString>>(NSString::classObject(), "keyPathWithComponents:"_sel, objects("a"_ns, "b"_ns)),
              equals("a.b"));
}

TEST(Substrings, ANullReceiverAnswersNull) {
  EXPECT_EQ(substringBetweenIndex_andIndex(nullptr, 0, 0), nullptr);
  EXPECT_EQ(rangeOfString_startingIndex(nullptr, "a"_ns, 0), NSMakeRange(0, 0));
  EXPECT_EQ(stringByPrependingString(nullptr, "a"_ns), nullptr);
}

}  // namespace
