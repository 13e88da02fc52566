// SPDX-License-Identifier: MIT
// How NSString compares in the order of a language.
#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

Ref<NSLocale> locale(const char* name) { return NSLocale::localeWithLocaleIdentifier(NSString::stringWithUTF8(name)); }

struct Row {
  const char* claim;
  const char* locale;
  uint64_t options;
  const char* a;
  const char* b;
  NSComparisonResult result;
};
constexpr Row rows[] = {
    {"without options case counts", "en_US", 0, "a", "A", NSOrderedAscending},
    {"letters before case", "en_US", 0, "B", "a", NSOrderedDescending},
    {"without case", "en_US", NSCaseInsensitiveSearch, "a", "A", NSOrderedSame},
    {"without case, but with marks", "en_US", NSCaseInsensitiveSearch, "e", "É", NSOrderedAscending},
    {"without marks, but with case", "en_US", NSDiacriticInsensitiveSearch, "e", "é", NSOrderedSame},
    {"without marks, but with case, capital", "en_US", NSDiacriticInsensitiveSearch, "e", "É", NSOrderedAscending},
    {"without marks and case", "en_US", NSDiacriticInsensitiveSearch | NSCaseInsensitiveSearch, "e", "É",
     NSOrderedSame},
    {"width counts", "en_US", 0, "a", "ａ", NSOrderedAscending},
    {"without width", "en_US", NSWidthInsensitiveSearch, "a", "ａ", NSOrderedSame},
    {"without width, but with case", "en_US", NSWidthInsensitiveSearch, "ａ", "A", NSOrderedAscending},
    {"width counts without case too", "en_US", NSCaseInsensitiveSearch, "A", "ａ", NSOrderedAscending},
    {"width counts without marks too", "en_US", NSDiacriticInsensitiveSearch, "é", "ｅ", NSOrderedAscending},
    {"without case the rest is canonical still", "en_US", NSCaseInsensitiveSearch, "É", "e\u0301", NSOrderedSame},
    {"without case and width", "en_US", NSCaseInsensitiveSearch | NSWidthInsensitiveSearch, "A", "ａ", NSOrderedSame},
    {"numbers by digits", "en_US", 0, "a10", "a2", NSOrderedAscending},
    {"numbers by value", "en_US", NSNumericSearch, "a10", "a2", NSOrderedDescending},
    {"the forced order parts what is the same", "en_US", NSCaseInsensitiveSearch | NSForcedOrderingSearch, "a", "A",
     NSOrderedAscending},
    {"canonical forms are the same", "en_US", 0, "é", "e\u0301", NSOrderedSame},
    {"the forced order parts canonical forms", "en_US", NSForcedOrderingSearch, "e\u0301", "é", NSOrderedAscending},
    {"a Swedish letter behind z", "sv_SE", 0, "ä", "z", NSOrderedDescending},
    {"a German letter beside its base", "de_DE", 0, "ä", "z", NSOrderedAscending},
    {"Danish aa stands last", "da_DK", 0, "aa", "z", NSOrderedDescending},
    {"literally by units", "sv_SE", NSLiteralSearch, "ä", "z", NSOrderedDescending},
};

TEST(LocalizedComparison, GoesByTheLanguageAndTheOptions) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSString> a = NSString::stringWithUTF8(row.a), b = NSString::stringWithUTF8(row.b);
    const auto options = static_cast<NSStringCompareOptions>(row.options);
    EXPECT_EQ(a->compare_options_range_locale(b, options, {0, a->length()}, locale(row.locale)), row.result);
    EXPECT_EQ(b->compare_options_range_locale(a, options, {0, b->length()}, locale(row.locale)), -row.result);
  }
}

TEST(LocalizedComparison, ComparesAPartOfTheReceiver) {
  EXPECT_EQ("xabcx"_ns->compare_options_range("abc"_ns, {}, {1, 3}), NSOrderedSame);
  EXPECT_EQ("xABCx"_ns->compare_options_range_locale("abc"_ns, NSCaseInsensitiveSearch, {1, 3}, locale("en_US")),
            NSOrderedSame);
}

TEST(LocalizedComparison, RaisesForARangePastTheEnd) {
  EXPECT_THAT([] { "abc"_ns->compare_options_range("abc"_ns, {}, {1, 3}); },
              raises(NSRangeException, "compare:options:range:]: Range {1, 3} out of bounds; length 3"));
  EXPECT_THAT([] { "abc"_ns->compare_options_range("abc"_ns, {}, {UINT64_MAX, 2}); },
              raises(NSRangeException, "length 3"));
}

TEST(LocalizedComparison, NullComesFirst) {
  EXPECT_EQ("a"_ns->localizedStandardCompare(nullptr), NSOrderedDescending);
  EXPECT_EQ("a"_ns->localizedCompare(nullptr), NSOrderedDescending);
}

TEST(LocalizedComparison, IsByUnitsWithoutALocale) {
  EXPECT_EQ("B"_ns->compare_options_range_locale("a"_ns, {}, {0, 1}, nullptr), NSOrderedAscending);
}

TEST(LocalizedComparison, ListsNamesAsAFileBrowserDoes) {
  const LocaleScope english("en_US"_ns);
  const char* const names[] = {"_draft", "a0",      "A0",     "A00",      "file 2",
                               "File 2", "file 10", "résumé", "Résumé 2", "zebra"};
  for (size_t i = 0; i < std::size(names); ++i) {
    for (size_t j = 0; j < std::size(names); ++j) {
      const Ref<NSString> a = NSString::stringWithUTF8(names[i]), b = NSString::stringWithUTF8(names[j]);
      EXPECT_EQ(a->localizedStandardCompare(b), compareValues(i, j)) << names[i] << " and " << names[j];
    }
  }
}

TEST(LocalizedComparison, FollowsTheCurrentLocale) {
  {
    const LocaleScope swedish("sv_SE"_ns);
    EXPECT_EQ("ä"_ns->localizedCompare("z"_ns), NSOrderedDescending);
  }
  const LocaleScope german("de_DE"_ns);
  EXPECT_EQ("ä"_ns->localizedCompare("z"_ns), NSOrderedAscending);
}

TEST(LocalizedComparison, AnswersByName) {
  const LocaleScope english("en_US"_ns);
  EXPECT_EQ(send<NSComparisonResult>("a2"_ns, "localizedStandardCompare:"_sel, "a10"_ns), NSOrderedAscending);
}

}  // namespace
