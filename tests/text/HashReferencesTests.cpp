// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HashReferences.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cctype>
#include <string>

#include "QuollFoundation/platform/logging/LogSink.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/texts/NSRegularExpression.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

struct Row {
  const char* claim;
  const char* text;
  int64_t length;
  const char* shortened;
};
constexpr Row rows[] = {
    {"a long run is cut", "deadbeefcafe1234", 7, "deadbee"},
    {"a short run stays", "x1234y", 7, "x1234y"},
    {"upper case counts", "ABCDEF0123", 4, "ABCD"},
    {"a run of just the length stays", "abc1234", 7, "abc1234"},
    {"runs inside words are cut", "padded cafe", 3, "padd caf"},
    {"each run for itself", "see 0123456789 and abcdefabcdef.", 7, "see 0123456 and abcdefa."},
    {"nothing else changes", "Grüße, 100%, $1", 7, "Grüße, 100%, $1"},
    {"no text", "", 7, ""},
    {"0 takes the digits out", "xabcy12z", 0, "xyz"},
};

TEST(HashReferences, AreCutToALength) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(stringByShorteningHashRefsToLength(NSString::stringWithUTF8(row.text), row.length)->utf8(),
              row.shortened);
  }
}

TEST(HashReferences, AreThoseOfAPlainWalk) {
  EXPECT_TRUE(rc::check([] {
    const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0fFgG .a9")));
    const auto length = *rc::gen::inRange<size_t>(1, 5);
    std::string expected;
    for (size_t i = 0; i < text.size();) {
      size_t end = i;
      while (end < text.size() && std::isxdigit(static_cast<unsigned char>(text[end]))) ++end;
      if (end == i) expected += text[i++];
      else {
        expected += text.substr(i, end - i >= length ? length : end - i);
        i = end;
      }
    }
    RC_ASSERT(
        stringByShorteningHashRefsToLength(NSString::stringWithUTF8(text), static_cast<int64_t>(length))->utf8() ==
        expected);
  }));
}

Ref<NSString> replacedByTheExpression(const NSString* text, int length) {
  const Ref<NSString> pattern = NSString::stringWithFormat("([0123456789abcdef]{%d})[0123456789abcdef]*"_ns, length);
  return NSRegularExpression::regularExpressionWithPattern_options_error(pattern, NSRegularExpressionCaseInsensitive,
                                                                         nullptr)
      ->stringByReplacingMatchesInString_options_range_withTemplate(text, {}, {0, text->length()}, "$1"_ns);
}

TEST(HashReferences, AreThoseOfTheExpressionAroundEachUnit) {
  std::u16string all;
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) all += {u'b', u'B', static_cast<char16_t>(unit), u'0', u'F', u'-'};
  const Ref<NSString> text = NSString::stringWithCharacters(all);
  for (const int length : {0, 1, 2, 3, 4, 5}) {
    EXPECT_TRUE(
        stringByShorteningHashRefsToLength(text, length)->isEqualToString(replacedByTheExpression(text, length)))
        << length;
  }
}

TEST(HashReferences, AreThoseOfTheExpressionInAnyText) {
  EXPECT_TRUE(rc::check([] {
    const auto units = *rc::gen::container<std::u16string>(
        rc::gen::elementOf(std::u16string(u"09afAFgG -é\uFF11\uFF21\U0001d7d8") + char16_t{0xD835} + char16_t{0xDFD8}));
    const Ref<NSString> text = NSString::stringWithCharacters(units);
    const int length = *rc::gen::inRange(0, 6);
    RC_ASSERT(stringByShorteningHashRefsToLength(text, length)->isEqualToString(replacedByTheExpression(text, length)));
  }));
}

TEST(HashReferences, OfALengthThatNoExpressionTakesAreLoggedAndGiveNull) {
  std::string logged;
  const LogSink previous = setLogSink([&](const LogRecord* record) { logged += record->message->utf8(); });
  EXPECT_EQ(stringByShorteningHashRefsToLength("abc"_ns, INT64_MAX), nullptr);
  setLogSink(previous);
  EXPECT_NE(logged.find("{9223372036854775807}"), std::string::npos) << logged;
  EXPECT_THAT(stringByShorteningHashRefsToLength("abc"_ns, 2000), equals("abc"));
}

TEST(HashReferences, OfANegativeLengthAreLoggedAndGiveNull) {
  std::string logged;
  const LogSink previous = setLogSink([&](const LogRecord* record) { logged += record->message->utf8(); });
  EXPECT_EQ(stringByShorteningHashRefsToLength("abc"_ns, -1), nullptr);
  setLogSink(previous);
  EXPECT_EQ(logged.rfind("-[NSString(QFAdditions) stringByShorteningHashRefsToLength:], ", 0), 0u) << logged;
  EXPECT_NE(logged.find("{-1}"), std::string::npos) << logged;
}

TEST(HashReferences, AnswerByName) {
  EXPECT_THAT(send<Ref<NSString>>("deadbeef"_ns, "stringByShorteningHashRefsToLength:"_sel, int64_t{4}),
              equals("dead"));
  EXPECT_EQ(stringByShorteningHashRefsToLength(nullptr, 4), nullptr);
}

}  // namespace
