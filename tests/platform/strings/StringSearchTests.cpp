// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

constexpr NSRange none{NSNotFound, 0};
constexpr auto plain = NSStringCompareOptions(0);

TEST(StringSearch, FindsTheFirstOccurrence) {
  EXPECT_EQ("hello"_ns->rangeOfString("l"_ns), (NSRange{2, 1}));
  EXPECT_EQ("hello"_ns->rangeOfString("lo"_ns), (NSRange{3, 2}));
  EXPECT_EQ("hello"_ns->rangeOfString("hello"_ns), (NSRange{0, 5}));
  EXPECT_EQ("hello"_ns->rangeOfString("x"_ns), none);
  EXPECT_EQ("hello"_ns->rangeOfString("hello!"_ns), none);
  EXPECT_TRUE("hello"_ns->containsString("ell"_ns));
  EXPECT_FALSE("hello"_ns->containsString("elk"_ns));
}

TEST(StringSearch, NeverFindsTheEmptyString) {
  const NSStringCompareOptions all[] = {plain,
                                        NSLiteralSearch,
                                        NSBackwardsSearch,
                                        NSAnchoredSearch,
                                        NSCaseInsensitiveSearch,
                                        NSCaseInsensitiveSearch | NSAnchoredSearch,
                                        NSDiacriticInsensitiveSearch | NSBackwardsSearch};
  for (const auto options : all) {
    EXPECT_EQ("abc"_ns->rangeOfString_options(""_ns, options), none) << options;
    EXPECT_EQ(""_ns->rangeOfString_options(""_ns, options), none) << options;
    EXPECT_EQ(""_ns->rangeOfString_options("a"_ns, options), none) << options;
  }
  EXPECT_FALSE("abc"_ns->containsString(""_ns));
}

TEST(StringSearch, FindsInAnyMixtureOfStorages) {
  EXPECT_EQ("aébc"_ns->rangeOfString("bc"_ns), (NSRange{2, 2}));
  EXPECT_EQ("aébc"_ns->rangeOfString("éb"_ns), (NSRange{1, 2}));
  EXPECT_EQ("abc"_ns->rangeOfString("é"_ns), none);
}

TEST(StringSearch, BackwardsFindsTheLast) {
  EXPECT_EQ("abcabc"_ns->rangeOfString_options("bc"_ns, NSBackwardsSearch), (NSRange{4, 2}));
  EXPECT_EQ("aaa"_ns->rangeOfString_options("aa"_ns, NSBackwardsSearch), (NSRange{1, 2}));
}

TEST(StringSearch, AnchoredLooksOnlyAtAnEnd) {
  EXPECT_EQ("abcabc"_ns->rangeOfString_options("abc"_ns, NSAnchoredSearch), (NSRange{0, 3}));
  EXPECT_EQ("abcabc"_ns->rangeOfString_options("bc"_ns, NSAnchoredSearch), none);
  EXPECT_EQ("abcabc"_ns->rangeOfString_options("bc"_ns, NSAnchoredSearch | NSBackwardsSearch), (NSRange{4, 2}));
  EXPECT_EQ("abcabc"_ns->rangeOfString_options("ab"_ns, NSAnchoredSearch | NSBackwardsSearch), none);
  EXPECT_EQ("ABC"_ns->rangeOfString_options("ab"_ns, NSAnchoredSearch | NSCaseInsensitiveSearch), (NSRange{0, 2}));
  EXPECT_EQ("ab"_ns->rangeOfString_options("abc"_ns, NSAnchoredSearch), none);
}

TEST(StringSearch, StaysInsideTheRange) {
  EXPECT_EQ("abcabc"_ns->rangeOfString_options_range("abc"_ns, NSLiteralSearch, {1, 5}), (NSRange{3, 3}));
  EXPECT_EQ("abcabc"_ns->rangeOfString_options_range("abc"_ns, NSLiteralSearch, {1, 4}), none);
  EXPECT_EQ("abcabc"_ns->rangeOfString_options_range("abc"_ns, NSBackwardsSearch, {0, 5}), (NSRange{0, 3}));
  EXPECT_EQ("ABCABC"_ns->rangeOfString_options_range("c"_ns, NSCaseInsensitiveSearch, {3, 3}), (NSRange{5, 1}));
  EXPECT_EQ("abc"_ns->rangeOfString_options_range("a"_ns, NSLiteralSearch, {3, 0}), none);
}

TEST(StringSearch, OverlooksCase) {
  EXPECT_EQ("Straße ÄÖ"_ns->rangeOfString_options("äö"_ns, NSCaseInsensitiveSearch), (NSRange{7, 2}));
  EXPECT_EQ("xΣΑΣ"_ns->rangeOfString_options("σας"_ns, NSCaseInsensitiveSearch), (NSRange{1, 3}));
  EXPECT_EQ("𐐀b"_ns->rangeOfString_options("𐐨B"_ns, NSCaseInsensitiveSearch), (NSRange{0, 3}));
  EXPECT_EQ("aBcAbC"_ns->rangeOfString_options("abc"_ns, NSCaseInsensitiveSearch | NSBackwardsSearch), (NSRange{3, 3}));
  EXPECT_EQ("ABC"_ns->rangeOfString_options("b"_ns, NSCaseInsensitiveSearch | NSLiteralSearch), (NSRange{1, 1}));
  EXPECT_EQ("aÉ"_ns->rangeOfString_options("é"_ns, NSCaseInsensitiveSearch), (NSRange{1, 1}));
  EXPECT_EQ("ÉABC"_ns->rangeOfString_options("c"_ns, NSCaseInsensitiveSearch), (NSRange{3, 1}));
}

TEST(StringSearch, OverlooksDiacritics) {
  EXPECT_EQ("le café noir"_ns->rangeOfString_options("cafe"_ns, NSDiacriticInsensitiveSearch), (NSRange{3, 4}));
  EXPECT_EQ("le cafe noir"_ns->rangeOfString_options("café"_ns, NSDiacriticInsensitiveSearch), (NSRange{3, 4}));
  // A mark that was left out belongs to the letter before it.
  EXPECT_EQ("le cafe\u0301 noir"_ns->rangeOfString_options("cafe"_ns, NSDiacriticInsensitiveSearch), (NSRange{3, 5}));
  EXPECT_EQ("cafe\u0301"_ns->rangeOfString_options("CAFÉ"_ns, NSDiacriticInsensitiveSearch | NSCaseInsensitiveSearch),
            (NSRange{0, 5}));
  EXPECT_EQ("a\u0301"_ns->rangeOfString_options("\u0301"_ns, NSDiacriticInsensitiveSearch), none);
}

TEST(StringSearch, OverlooksWidth) {
  EXPECT_EQ("xＡＢＣ"_ns->rangeOfString_options("BC"_ns, NSWidthInsensitiveSearch), (NSRange{2, 2}));
  EXPECT_EQ("カナ"_ns->rangeOfString_options("ｶﾅ"_ns, NSWidthInsensitiveSearch), (NSRange{0, 2}));
}

TEST(StringSearch, FindsNoPartOfAFoldedCharacter) {
  // The syllable decomposes into three; its first part alone is no match.
  EXPECT_EQ("각"_ns->rangeOfString_options("\u1100"_ns, NSDiacriticInsensitiveSearch), none);
  EXPECT_EQ("각\u1100"_ns->rangeOfString_options("\u1100"_ns, NSDiacriticInsensitiveSearch), (NSRange{1, 1}));
  EXPECT_EQ("\u1100각"_ns->rangeOfString_options("\u1100"_ns, NSDiacriticInsensitiveSearch | NSBackwardsSearch),
            (NSRange{0, 1}));
}

TEST(StringSearch, IsLiteralByDefault) {
  EXPECT_EQ("é"_ns->rangeOfString("e\u0301"_ns), none);
  EXPECT_EQ("e\u0301"_ns->rangeOfString("e"_ns), (NSRange{0, 1}));
  EXPECT_EQ("É"_ns->rangeOfString_options("é"_ns, NSLiteralSearch), none);
}

TEST(StringSearch, FindsUnpairedSurrogates) {
  const Ref<NSString> high = NSString::stringWithCharacters(std::u16string(1, 0xD83D));
  EXPECT_EQ("a😀"_ns->rangeOfString(high), (NSRange{1, 1}));
  const Ref<NSString> text = NSString::stringWithCharacters(std::u16string{u'A', 0xD83D});
  EXPECT_EQ(text->rangeOfString_options(high, NSCaseInsensitiveSearch), (NSRange{1, 1}));
}

TEST(StringSearch, RefusesWhatItCannotDo) {
  EXPECT_THAT([] { "a"_ns->rangeOfString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSString rangeOfString:]: nil argument"));
  EXPECT_THAT([] { "a"_ns->rangeOfString_options("a"_ns, NSRegularExpressionSearch); },
              raises(NSInvalidArgumentException));
  EXPECT_THAT([] { "a"_ns->containsString(nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([] { "a"_ns->hasPrefix(nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([] { "a"_ns->hasSuffix(nullptr); }, raises(NSInvalidArgumentException));
}

TEST(StringSearch, KnowsPrefixesAndSuffixes) {
  EXPECT_TRUE("abc"_ns->hasPrefix("ab"_ns));
  EXPECT_TRUE("abc"_ns->hasPrefix("abc"_ns));
  EXPECT_FALSE("abc"_ns->hasPrefix("abcd"_ns));
  EXPECT_FALSE("abc"_ns->hasPrefix("b"_ns));
  EXPECT_TRUE("aé"_ns->hasPrefix("a"_ns));
  EXPECT_TRUE("aéb"_ns->hasSuffix("b"_ns));
  EXPECT_FALSE("abc"_ns->hasSuffix("B"_ns));
  EXPECT_FALSE("c"_ns->hasSuffix("bc"_ns));
  EXPECT_FALSE("abc"_ns->hasPrefix(""_ns));
  EXPECT_FALSE("abc"_ns->hasSuffix(""_ns));
}

TEST(StringSearch, ReplacesEveryOccurrence) {
  EXPECT_THAT("a.b.c"_ns->stringByReplacingOccurrencesOfString_withString("."_ns, "::"_ns), equals("a::b::c"));
  EXPECT_THAT("aaa"_ns->stringByReplacingOccurrencesOfString_withString("aa"_ns, "b"_ns), equals("ba"));
  EXPECT_THAT("aXb"_ns->stringByReplacingOccurrencesOfString_withString("X"_ns, ""_ns), equals("ab"));
  EXPECT_THAT("abc"_ns->stringByReplacingOccurrencesOfString_withString("b"_ns, "é"_ns), equals("aéc"));
  EXPECT_THAT("abc"_ns->stringByReplacingOccurrencesOfString_withString(""_ns, "x"_ns), equals("abc"));
  const Ref<NSString> same = NSString::stringWithUTF8("abc");
  EXPECT_TRUE(same->stringByReplacingOccurrencesOfString_withString("x"_ns, "y"_ns) == same);
  EXPECT_THAT([] { "a"_ns->stringByReplacingOccurrencesOfString_withString(nullptr, ""_ns); },
              raises(NSInvalidArgumentException));
  EXPECT_THAT([] { "a"_ns->stringByReplacingOccurrencesOfString_withString("a"_ns, nullptr); },
              raises(NSInvalidArgumentException));
}

TEST(StringSearch, AnswersByName) {
  EXPECT_EQ(send<NSRange>("hello"_ns, "rangeOfString:"_sel, "l"_ns), (NSRange{2, 1}));
  EXPECT_TRUE(send<bool>("hello"_ns, "hasPrefix:"_sel, "he"_ns));
}

std::u16string drawn() { return *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"aAbéÉ"))); }

RC_GTEST_PROP(StringSearch, FindsWhatAPlainSearchFinds, ()) {
  const std::u16string text = drawn();
  const std::u16string wanted = drawn();
  const size_t first = wanted.empty() ? text.npos : text.find(wanted);
  const size_t last = wanted.empty() ? text.npos : text.rfind(wanted);
  const Ref<NSString> string = NSString::stringWithCharacters(text);
  const Ref<NSString> sought = NSString::stringWithCharacters(wanted);
  RC_ASSERT(string->rangeOfString(sought).location == (first == text.npos ? NSNotFound : first));
  RC_ASSERT(string->rangeOfString_options(sought, NSBackwardsSearch).location ==
            (last == text.npos ? NSNotFound : last));
}

RC_GTEST_PROP(StringSearch, OverlooksCaseLikeASearchInLowerCase, ()) {
  const Ref<NSString> text = NSString::stringWithCharacters(drawn());
  const Ref<NSString> wanted = NSString::stringWithCharacters(drawn());
  RC_ASSERT(text->rangeOfString_options(wanted, NSCaseInsensitiveSearch) ==
            text->lowercaseString()->rangeOfString(wanted->lowercaseString()));
}

}  // namespace
