// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CharacterSets.h"

#include <gtest/gtest.h>

#include <set>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

const std::set<char16_t> whitespace = {0x0009, 0x0020, 0x00A0, 0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                       0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
const std::set<char16_t> newlines = {0x000A, 0x000B, 0x000C, 0x000D, 0x0085, 0x2028, 0x2029};

TEST(CharacterSets, HoldExactlyTheirUnits) {
  const Ref<NSCharacterSet> blanks = NSCharacterSet::whitespaceCharacterSet();
  const Ref<NSCharacterSet> ends = NSCharacterSet::newlineCharacterSet();
  const Ref<NSCharacterSet> both = NSCharacterSet::whitespaceAndNewlineCharacterSet();
  for (int i = 0; i < 0x10000; ++i) {
    const auto unit = static_cast<char16_t>(i);
    EXPECT_EQ(blanks->characterIsMember(unit), whitespace.count(unit) == 1) << i;
    EXPECT_EQ(ends->characterIsMember(unit), newlines.count(unit) == 1) << i;
    EXPECT_EQ(both->characterIsMember(unit), whitespace.count(unit) + newlines.count(unit) == 1) << i;
    EXPECT_EQ(detail::isWhitespaceUnit(unit), blanks->characterIsMember(unit)) << i;
    EXPECT_EQ(detail::isNewlineUnit(unit), ends->characterIsMember(unit)) << i;
  }
}

TEST(CharacterSets, ArePredefinedUnderTheirNumbers) {
  EXPECT_TRUE(NSCharacterSet::whitespaceCharacterSet() == CFCharacterSetGetPredefined(kCFCharacterSetWhitespace));
  EXPECT_TRUE(NSCharacterSet::newlineCharacterSet() == CFCharacterSetGetPredefined(kCFCharacterSetNewline));
  EXPECT_TRUE(NSCharacterSet::whitespaceAndNewlineCharacterSet() ==
              CFCharacterSetGetPredefined(kCFCharacterSetWhitespaceAndNewline));
  EXPECT_EQ(int{kCFCharacterSetWhitespace}, 2);
  EXPECT_EQ(int{kCFCharacterSetWhitespaceAndNewline}, 3);
  EXPECT_EQ(int{kCFCharacterSetNewline}, 15);
  EXPECT_THAT([] { CFCharacterSetGetPredefined(static_cast<CFCharacterSetPredefinedSet>(99)); },
              raises(NSInvalidArgumentException, "99"));
}

TEST(CharacterSets, TellMembersByFunctionAndByName) {
  const NSCharacterSet* blanks = CFCharacterSetGetPredefined(kCFCharacterSetWhitespace);
  EXPECT_TRUE(CFCharacterSetIsCharacterMember(blanks, u' '));
  EXPECT_FALSE(CFCharacterSetIsCharacterMember(blanks, u'\n'));
  EXPECT_FALSE(CFCharacterSetIsCharacterMember(nullptr, u' '));
  const auto set = send<Ref<NSCharacterSet>>(NSCharacterSet::classObject(), "newlineCharacterSet"_sel);
  EXPECT_TRUE(send<bool>(set, "characterIsMember:"_sel, u'\n'));
}

TEST(CharacterSets, AreTheirOwnCopies) {
  const Ref<NSCharacterSet> set = NSCharacterSet::newlineCharacterSet();
  EXPECT_TRUE(set->copy() == set);
}

TEST(CharacterSets, HoldTheUnitsOfAText) {
  const Ref<NSCharacterSet> vowels = NSCharacterSet::characterSetWithCharactersInString("oaiéu"_ns);
  EXPECT_TRUE(vowels->characterIsMember(u'a'));
  EXPECT_TRUE(vowels->characterIsMember(u'é'));
  EXPECT_FALSE(vowels->characterIsMember(u'b'));
  EXPECT_FALSE(NSCharacterSet::characterSetWithCharactersInString(""_ns)->characterIsMember(u'a'));
  EXPECT_THAT([] { NSCharacterSet::characterSetWithCharactersInString(nullptr); },
              raises(NSInvalidArgumentException, "characterSetWithCharactersInString:"));
}

TEST(CharacterSets, InvertToAllOtherUnits) {
  const Ref<NSCharacterSet> others = NSCharacterSet::newlineCharacterSet()->invertedSet();
  EXPECT_TRUE(others->characterIsMember(u'a'));
  EXPECT_FALSE(others->characterIsMember(u'\n'));
}

TEST(CharacterSets, AreFoundInATextFromEitherEnd) {
  const Ref<NSCharacterSet> newlines = NSCharacterSet::newlineCharacterSet();
  for (const Ref<NSString>& text : {Ref<NSString>("a\nb\nc"_ns), Ref<NSString>(u"ä\nb\nc"_ns)}) {
    EXPECT_EQ(text->rangeOfCharacterFromSet(newlines), NSMakeRange(1, 1));
    EXPECT_EQ(text->rangeOfCharacterFromSet_options_range(newlines, NSBackwardsSearch, {0, 5}), NSMakeRange(3, 1));
    EXPECT_EQ(text->rangeOfCharacterFromSet_options_range(newlines, {}, {2, 3}), NSMakeRange(3, 1));
    EXPECT_EQ(text->rangeOfCharacterFromSet_options_range(newlines, {}, {4, 1}), NSMakeRange(NSNotFound, 0));
    EXPECT_EQ(text->rangeOfCharacterFromSet_options_range(newlines, NSBackwardsSearch, {2, 0}),
              NSMakeRange(NSNotFound, 0));
    EXPECT_THAT([&] { text->rangeOfCharacterFromSet_options_range(newlines, {}, {3, 3}); },
                raises(NSRangeException, "length 5"));
  }
}

TEST(CharacterSets, AreFoundByTheFunctionToo) {
  const NSCharacterSet* newlines = CFCharacterSetGetPredefined(kCFCharacterSetNewline);
  CFRange found = {7, 7};
  EXPECT_FALSE(CFStringFindCharacterFromSet("abc"_ns, newlines, {0, 3}, {}, &found));
  EXPECT_EQ(found, CFRangeMake(7, 7));
  EXPECT_TRUE(CFStringFindCharacterFromSet("a\nc"_ns, newlines, {0, 3}, {}, &found));
  EXPECT_EQ(found, CFRangeMake(1, 1));
  EXPECT_TRUE(CFStringFindCharacterFromSet("a\nc"_ns, newlines, {0, 3}, {}, nullptr));
  EXPECT_FALSE(CFStringFindCharacterFromSet(nullptr, newlines, {0, 0}, {}, nullptr));
  EXPECT_THAT([&] { CFStringFindCharacterFromSet("abc"_ns, newlines, {-1, 2}, {}, nullptr); },
              raises(NSRangeException, "length 3"));
}

TEST(CharacterSets, AreTrimmedOffBothEnds) {
  const Ref<NSCharacterSet> blanks = NSCharacterSet::whitespaceCharacterSet();
  EXPECT_THAT(" \ta b\n "_ns->stringByTrimmingCharactersInSet(blanks), equals("a b\n"));
  EXPECT_THAT("  "_ns->stringByTrimmingCharactersInSet(blanks), equals(""));
  EXPECT_THAT(""_ns->stringByTrimmingCharactersInSet(blanks), equals(""));
  EXPECT_THAT(u"\u3000ä\u00a0"_ns->stringByTrimmingCharactersInSet(blanks), equals("ä"));
}

TEST(CharacterSets, TrimAMutableTextInPlace) {
  const Ref<NSMutableString> text = NSMutableString::stringWithString(" \r\n\ta b\v\f\u0085\u2028 "_ns);
  CFStringTrimWhitespace(text);
  EXPECT_THAT(text, equals("a b"));
  text->setString(" \n"_ns);
  CFStringTrimWhitespace(text);
  EXPECT_THAT(text, equals(""));
  CFStringTrimWhitespace(nullptr);
}

}  // namespace
