// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSMutableString.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

constexpr uint64_t most = std::numeric_limits<uint64_t>::max();

Ref<NSMutableString> text(const char* utf8) {
  return NSMutableString::stringWithString(NSString::stringWithUTF8(utf8));
}

TEST(NSMutableString, IsFilledAsTheExampleDoes) {
  const quoll::Ref<quoll::NSString> total = "9"_ns;
  quoll::Ref<quoll::NSMutableString> line = quoll::NSMutableString::string();
  line->appendFormat("%d of %@"_ns, 3, total);
  EXPECT_THAT(line, equals("3 of 9"));
}

TEST(NSMutableString, StartsEmptyOrAsACopy) {
  EXPECT_EQ(NSMutableString::string()->length(), 0u);
  EXPECT_THAT(NSMutableString::stringWithCapacity(100), equals(""));
  EXPECT_THAT(NSMutableString::initWithString<NSMutableString>("a"_ns), equals("a"));
  EXPECT_THAT(NSMutableString::stringWithUTF8String<NSMutableString>("é"), equals("é"));
  EXPECT_THAT(NSMutableString::stringWithFormat("%d"_ns, 5), equals("5"));
  EXPECT_EQ(text("x")->class_(), NSMutableString::classObject());
}

TEST(NSMutableString, IsMadeByNameToo) {
  Class* cls = NSMutableString::classObject();
  const auto made = send<Ref<NSMutableString>>(cls, "stringWithString:"_sel, "a"_ns);
  send(made, "appendString:"_sel, "b"_ns);
  EXPECT_THAT(made, equals("ab"));
  EXPECT_THAT(send<Ref<NSMutableString>>(cls, "stringWithCapacity:"_sel, 5), equals(""));
  EXPECT_THAT(send<Ref<NSMutableString>>(alloc(cls), "init"_sel), equals(""));
  EXPECT_THAT(send<Ref<NSMutableString>>(cls, "string"_sel), equals(""));
}

TEST(NSMutableString, StaysASCIIUntilAWiderUnitComes) {
  const Ref<NSMutableString> string = text("abc");
  const Ref<NSString> asciiInUnits = "é-def"_ns->substringFromIndex(2);
  ASSERT_NE(asciiInUnits->utf16Characters(), nullptr);
  string->appendString(asciiInUnits);
  EXPECT_NE(string->asciiCharacters(), nullptr);
  string->insertString_atIndex("é"_ns, 3);
  EXPECT_NE(string->utf16Characters(), nullptr);
  string->appendString("g"_ns);
  EXPECT_THAT(string, equals("abcédefg"));
  string->setString("hij"_ns);
  EXPECT_NE(string->asciiCharacters(), nullptr);
  string->appendString("klm"_ns);
  EXPECT_THAT(string, equals("hijklm"));
}

TEST(NSMutableString, GrowsGeometrically) {
  const Ref<NSMutableString> string = NSMutableString::string();
  const char* last = nullptr;
  int moves = 0;
  for (int i = 0; i < 100000; ++i) {
    string->appendString("x"_ns);
    if (string->asciiCharacters() != last) ++moves;
    last = string->asciiCharacters();
  }
  EXPECT_EQ(string->length(), 100000u);
  EXPECT_LT(moves, 20);
}

TEST(NSMutableString, HasTheRoomThatWasAskedFor) {
  const Ref<NSMutableString> string = NSMutableString::stringWithCapacity(1000);
  string->appendString("x"_ns);
  const char* place = string->asciiCharacters();
  for (int i = 1; i < 1000; ++i) string->appendString("x"_ns);
  EXPECT_EQ(string->asciiCharacters(), place);
}

TEST(NSMutableString, InsertsDeletesAndReplaces) {
  const Ref<NSMutableString> string = text("abcdef");
  string->insertString_atIndex("12"_ns, 0);
  string->insertString_atIndex("!"_ns, 8);
  EXPECT_THAT(string, equals("12abcdef!"));
  string->deleteCharactersInRange({1, 2});
  EXPECT_THAT(string, equals("1bcdef!"));
  string->replaceCharactersInRange_withString({1, 3}, "é"_ns);
  EXPECT_THAT(string, equals("1éef!"));
  string->replaceCharactersInRange_withString({5, 0}, "?"_ns);
  EXPECT_THAT(string, equals("1éef!?"));
  string->deleteCharactersInRange({0, 6});
  EXPECT_THAT(string, equals(""));
}

TEST(NSMutableString, TakesItselfAsArgument) {
  const Ref<NSMutableString> string = text("ab");
  string->appendString(string);
  EXPECT_THAT(string, equals("abab"));
  string->insertString_atIndex(string, 1);
  EXPECT_THAT(string, equals("aababbab"));
  string->replaceCharactersInRange_withString({0, 7}, string);
  EXPECT_THAT(string, equals("aababbabb"));
  string->setString(string);
  EXPECT_THAT(string, equals("aababbabb"));
  EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range(string, string, NSLiteralSearch, {0, 9}), 1u);
  EXPECT_THAT(string, equals("aababbabb"));
}

TEST(NSMutableString, ReplacesOccurrencesInARange) {
  const Ref<NSMutableString> string = text("a-b-c-d");
  EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range("-"_ns, "++"_ns, NSLiteralSearch, {2, 3}), 1u);
  EXPECT_THAT(string, equals("a-b++c-d"));
  const Ref<NSMutableString> cases = text("aAéÉ");
  EXPECT_EQ(cases->replaceOccurrencesOfString_withString_options_range("é"_ns, "x"_ns, NSCaseInsensitiveSearch, {0, 4}),
            2u);
  EXPECT_THAT(cases, equals("aAxx"));
}

TEST(NSMutableString, ReplacesFromTheEndWhenBackwards) {
  const Ref<NSMutableString> forwards = text("aaa");
  forwards->replaceOccurrencesOfString_withString_options_range("aa"_ns, "b"_ns, NSLiteralSearch, {0, 3});
  EXPECT_THAT(forwards, equals("ba"));
  const Ref<NSMutableString> backwards = text("aaa");
  backwards->replaceOccurrencesOfString_withString_options_range("aa"_ns, "b"_ns, NSBackwardsSearch, {0, 3});
  EXPECT_THAT(backwards, equals("ab"));
}

TEST(NSMutableString, ReplacesOnlyTheAnchoredOccurrence) {
  const Ref<NSMutableString> string = text("aab");
  EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range("a"_ns, ""_ns, NSAnchoredSearch, {0, 3}), 1u);
  EXPECT_THAT(string, equals("ab"));
}

TEST(NSMutableString, GivesCopiesThatStay) {
  const Ref<NSMutableString> string = text("abc");
  const Ref<NSString> copy = string->copy();
  const Ref<NSString> part = string->substringFromIndex(1);
  const Ref<NSString> whole = string->substringFromIndex(0);
  const Ref<NSString> made = NSString::stringWithString(string);
  string->setString("x"_ns);
  EXPECT_THAT(copy, equals("abc"));
  EXPECT_THAT(part, equals("bc"));
  EXPECT_THAT(whole, equals("abc"));
  EXPECT_THAT(made, equals("abc"));
  EXPECT_EQ(copy->class_(), NSString::classObject());
}

TEST(NSMutableString, SharesNoUnitsWithALargePart) {
  const Ref<NSMutableString> string = text(std::string(10000, 'x').c_str());
  const Ref<NSString> part = string->substringFromIndex(1);
  string->replaceCharactersInRange_withString({0, 10000}, "y"_ns);
  EXPECT_EQ(part->length(), 9999u);
  EXPECT_EQ(part->characterAtIndex(0), u'x');
}

TEST(NSMutableString, RaisesForNull) {
  const Ref<NSMutableString> string = text("abc");
  EXPECT_THAT([&] { string->appendString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSMutableString appendString:]: nil argument"));
  EXPECT_THAT([&] { string->setString(nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([&] { string->insertString_atIndex(nullptr, 0); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([&] { string->replaceCharactersInRange_withString({0, 1}, nullptr); },
              raises(NSInvalidArgumentException));
  EXPECT_THAT(
      [&] { string->replaceOccurrencesOfString_withString_options_range(nullptr, ""_ns, NSLiteralSearch, {0, 1}); },
      raises(NSInvalidArgumentException));
}

TEST(NSMutableString, RaisesForARangePastTheEndAndStaysAsItWas) {
  const Ref<NSMutableString> string = text("abc");
  for (const NSRange range : {NSRange{4, 0}, NSRange{3, 1}, NSRange{1, most}, NSRange{most, 2}, NSRange{0, 4}}) {
    EXPECT_THAT([&] { string->deleteCharactersInRange(range); },
                raises(NSRangeException, "-[NSMutableString deleteCharactersInRange:]"));
    EXPECT_THAT([&] { string->replaceCharactersInRange_withString(range, "x"_ns); }, raises(NSRangeException));
    EXPECT_THAT(
        [&] { string->replaceOccurrencesOfString_withString_options_range("a"_ns, "b"_ns, NSLiteralSearch, range); },
        raises(NSRangeException));
  }
  EXPECT_THAT([&] { string->insertString_atIndex("x"_ns, 4); }, raises(NSRangeException, "index 4"));
  EXPECT_THAT([&] { string->insertString_atIndex("x"_ns, most); }, raises(NSRangeException));
  EXPECT_THAT(string, equals("abc"));
}

class Journal : public NSMutableString {
  QF_CLASS(Journal, NSMutableString)
};
Class* Journal::classObject() {
  static Class* const cls = ClassBuilder<Journal>("Journal").build();
  return cls;
}

TEST(NSMutableString, IsMadeAsASubclassOfAClient) {
  const LeakGuard guard;
  const Ref<Journal> journal = NSMutableString::stringWithCapacity<Journal>(10);
  journal->appendString("é"_ns);
  EXPECT_THAT(journal, equals("é"));
  EXPECT_THAT(NSMutableString::stringWithString<Journal>("x"_ns), equals("x"));
  EXPECT_EQ(NSMutableString::string<Journal>()->class_(), Journal::classObject());
}

RC_GTEST_PROP(NSMutableString, EndsAsAPlainStringDoesAfterTheSameEdits, (const std::vector<std::u16string>& pieces)) {
  const Ref<NSMutableString> string = NSMutableString::string();
  std::u16string expected;
  for (const std::u16string& piece : pieces) {
    const auto location = *rc::gen::inRange<uint64_t>(0, expected.size() + 1);
    const auto length = *rc::gen::inRange<uint64_t>(0, expected.size() - location + 1);
    string->replaceCharactersInRange_withString({location, length}, NSString::stringWithCharacters(piece));
    expected.replace(location, length, piece);
    RC_ASSERT(string->utf16() == expected);
  }
}

}  // namespace
