// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

struct Row {
  const char* claim;
  const char* left;
  const char* right;
  uint64_t options;
  NSComparisonResult result;
};

Ref<NSString> text(const char* utf8) { return NSString::stringWithUTF8(utf8); }

constexpr Row rows[] = {
    {"the empty text is itself", "", "", 0, NSOrderedSame},
    {"the empty text comes first", "", "a", 0, NSOrderedAscending},
    {"a prefix comes first", "ab", "abc", 0, NSOrderedAscending},
    {"upper case comes before lower case", "Z", "a", 0, NSOrderedAscending},
    {"units decide, not code points", "😀", "\uFFFD", 0, NSOrderedAscending},
    {"equivalent forms are not the same", "é", "e\u0301", NSLiteralSearch, NSOrderedDescending},
    {"digits go unit by unit", "a10", "a2", 0, NSOrderedAscending},

    {"case is overlooked", "HeLLo", "hEllO", NSCaseInsensitiveSearch, NSOrderedSame},
    {"case is overlooked beyond ASCII", "ÄΣ", "äς", NSCaseInsensitiveSearch, NSOrderedSame},
    {"case is overlooked beyond the first plane", "𐐀", "𐐨", NSCaseInsensitiveSearch, NSOrderedSame},
    {"case is overlooked, a prefix comes first", "AB", "abc", NSCaseInsensitiveSearch, NSOrderedAscending},
    {"case is overlooked, order is of the folded", "_", "A", NSCaseInsensitiveSearch, NSOrderedAscending},

    {"numbers compare by value", "a2", "a10", NSNumericSearch, NSOrderedAscending},
    {"leading zeros count for nothing", "a007", "a7", NSNumericSearch, NSOrderedSame},
    {"zero is a number", "a0", "a00", NSNumericSearch, NSOrderedSame},
    {"what follows equal numbers decides", "a01b", "a1c", NSNumericSearch, NSOrderedAscending},
    {"numbers of any length", "123456789012345678901234567890", "123456789012345678901234567891", NSNumericSearch,
     NSOrderedAscending},
    {"more digits are more", "99", "100000000000000000000000", NSNumericSearch, NSOrderedAscending},
    {"a number beside a letter goes by units", "1", "a", NSNumericSearch, NSOrderedAscending},
    {"a number ends a text", "a", "a1", NSNumericSearch, NSOrderedAscending},
    {"numbers and case together", "FILE9", "file10", NSNumericSearch | NSCaseInsensitiveSearch, NSOrderedAscending},

    {"diacritics are overlooked", "résumé", "resume", NSDiacriticInsensitiveSearch, NSOrderedSame},
    {"diacritics are overlooked in either form", "e\u0301", "é", NSDiacriticInsensitiveSearch, NSOrderedSame},
    {"diacritics alone are nothing", "\u0301", "", NSDiacriticInsensitiveSearch, NSOrderedSame},
    {"diacritics and case together", "RÉSUMÉ", "resume", NSDiacriticInsensitiveSearch | NSCaseInsensitiveSearch,
     NSOrderedSame},
    {"letters still differ", "é", "f", NSDiacriticInsensitiveSearch, NSOrderedAscending},

    {"width is overlooked", "ＡＢＣ１", "ABC1", NSWidthInsensitiveSearch, NSOrderedSame},
    {"width is overlooked for katakana", "ｶﾅ", "カナ", NSWidthInsensitiveSearch, NSOrderedSame},
    {"a half-width voiced letter is the whole one", "ｶﾞ", "ガ", NSWidthInsensitiveSearch, NSOrderedSame},
    {"a ligature is no matter of width", "ﬁ", "fi", NSWidthInsensitiveSearch, NSOrderedDescending},

    {"forced ordering parts what folds to the same", "A", "a", NSCaseInsensitiveSearch | NSForcedOrderingSearch,
     NSOrderedAscending},
    {"forced ordering parts equal numbers", "a01", "a1", NSNumericSearch | NSForcedOrderingSearch, NSOrderedAscending},
    {"forced ordering leaves equal texts the same", "a", "a", NSCaseInsensitiveSearch | NSForcedOrderingSearch,
     NSOrderedSame},
};

TEST(StringComparison, KeepsToTheTable) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const auto options = static_cast<NSStringCompareOptions>(row.options);
    EXPECT_EQ(text(row.left)->compare_options(text(row.right), options), row.result);
    EXPECT_EQ(text(row.right)->compare_options(text(row.left), options), -row.result);
  }
}

TEST(StringComparison, PutsNullFirst) {
  EXPECT_EQ(""_ns->compare(nullptr), NSOrderedDescending);
  EXPECT_EQ("a"_ns->compare_options(nullptr, NSCaseInsensitiveSearch), NSOrderedDescending);
  EXPECT_EQ("a"_ns->caseInsensitiveCompare(nullptr), NSOrderedDescending);
}

TEST(StringComparison, ComparesUnpairedSurrogatesAsUnits) {
  const Ref<NSString> high = NSString::stringWithCharacters(std::u16string(1, 0xD800));
  const Ref<NSString> low = NSString::stringWithCharacters(std::u16string(1, 0xDC00));
  EXPECT_EQ(high->compare(low), NSOrderedAscending);
  EXPECT_EQ(high->caseInsensitiveCompare(low), NSOrderedAscending);
  EXPECT_EQ(high->compare_options(high->copy(), NSDiacriticInsensitiveSearch), NSOrderedSame);
}

TEST(StringComparison, EqualsTheSameUnitsOfAnyClass) {
  const Ref<NSString> made = NSString::stringWithUTF8("text");
  EXPECT_TRUE(made->isEqual("text"_ns));
  EXPECT_TRUE(made->isEqualToString(NSMutableString::stringWithString("text"_ns)));
  EXPECT_FALSE(made->isEqual("texts"_ns));
  EXPECT_FALSE(made->isEqual("texu"_ns));
  EXPECT_FALSE(made->isEqual(NSString::classObject()));
  EXPECT_FALSE(made->isEqual(nullptr));
  EXPECT_FALSE(made->isEqualToString(nullptr));
  EXPECT_FALSE("é"_ns->isEqual("e\u0301"_ns));
}

TEST(StringComparison, HashesEqualTextsAlike) {
  EXPECT_EQ(NSString::stringWithUTF8("text")->hash(), "text"_ns->hash());
  EXPECT_EQ(NSMutableString::stringWithString("text"_ns)->hash(), "text"_ns->hash());
  EXPECT_EQ("é-abc"_ns->substringFromIndex(2)->hash(), "abc"_ns->hash());
  EXPECT_NE("text"_ns->hash(), "texu"_ns->hash());
  EXPECT_EQ("é"_ns->substringToIndex(0)->hash(), ""_ns->hash());
}

TEST(StringComparison, AnswersByName) {
  EXPECT_EQ(send<NSComparisonResult>("a"_ns, "compare:"_sel, "b"_ns), NSOrderedAscending);
  EXPECT_EQ(send<NSComparisonResult>("a"_ns, "compare:options:"_sel, "A"_ns, NSCaseInsensitiveSearch), NSOrderedSame);
  EXPECT_TRUE(send<bool>("a"_ns, "isEqual:"_sel, "a"_ns));
}

Ref<NSString> drawn() {
  return NSString::stringWithCharacters(
      *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"aAb01289éÉ\u0301Ａ각"))));
}

RC_GTEST_PROP(StringComparison, IsAnOrderUnderEveryOption, ()) {
  const auto options = static_cast<NSStringCompareOptions>(*rc::gen::inRange<uint64_t>(0, 1024) & ~uint64_t{12});
  const Ref<NSString> a = drawn();
  const Ref<NSString> b = drawn();
  const Ref<NSString> c = drawn();
  RC_ASSERT(a->compare_options(b, options) == -b->compare_options(a, options));
  RC_ASSERT(a->compare_options(a->mutableCopy(), options) == NSOrderedSame);
  if (a->compare_options(b, options) <= 0 && b->compare_options(c, options) <= 0) {
    RC_ASSERT(a->compare_options(c, options) <= 0);
  }
}

}  // namespace
