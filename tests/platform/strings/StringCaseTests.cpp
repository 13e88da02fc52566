// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

TEST(StringCase, MapsASCII) {
  EXPECT_THAT("aZ@[`{09"_ns->uppercaseString(), equals("AZ@[`{09"));
  EXPECT_THAT("aZ@[`{09"_ns->lowercaseString(), equals("az@[`{09"));
  EXPECT_NE("abc"_ns->uppercaseString()->asciiCharacters(), nullptr);
  EXPECT_THAT(""_ns->uppercaseString(), equals(""));
}

TEST(StringCase, MapsOneLetterToSeveralWhereTheLanguagesDo) {
  EXPECT_THAT("straße"_ns->uppercaseString(), equals("STRASSE"));
  EXPECT_NE("straße"_ns->uppercaseString()->asciiCharacters(), nullptr);
  std::u16string three;
  for (int i = 0; i < 9; ++i) three += u"\u0399\u0308\u0301";
  EXPECT_EQ(NSString::stringWithCharacters(std::u16string(9, u'\u0390'))->uppercaseString()->utf16(), three);
}

TEST(StringCase, KnowsTheFinalSigma) { EXPECT_THAT("ΟΔΟΣ ΣΑ"_ns->lowercaseString(), equals("οδος σα")); }

TEST(StringCase, FollowsNoLanguage) { EXPECT_THAT("Iıé"_ns->uppercaseString(), equals("IIÉ")); }

TEST(StringCase, LeavesUnpairedSurrogates) {
  const Ref<NSString> text = NSString::stringWithCharacters(std::u16string{0xDC00, u'a', 0xD800});
  EXPECT_EQ(text->uppercaseString()->utf16(), (std::u16string{0xDC00, u'A', 0xD800}));
}

TEST(StringCase, MapsBeyondTheFirstPlane) { EXPECT_THAT("𐐨"_ns->uppercaseString(), equals("𐐀")); }

}  // namespace
