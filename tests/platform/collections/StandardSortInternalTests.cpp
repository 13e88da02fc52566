// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/StandardSortInternal.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using detail::compareInStandardOrder;
using detail::sortInStandardOrder;

/// A text that finds its own way to compare.
class Backwards : public NSString {
  QF_CLASS(Backwards, NSString)
 public:
  NSComparisonResult compareBackwards(const NSString* other) const { return other->localizedStandardCompare(this); }
};
Class* Backwards::classObject() {
  static Class* const cls = ClassBuilder<Backwards>("Backwards")
                                .method<&Backwards::compareBackwards>("localizedStandardCompare:"_sel)
                                .build();
  return cls;
}

/// A text that leaves comparing as it is.
class Named : public NSString {
  QF_CLASS(Named, NSString)
};
Class* Named::classObject() {
  static Class* const cls = ClassBuilder<Named>("Named").build();
  return cls;
}

constexpr Selector standard = "localizedStandardCompare:"_sel;

using Texts = std::vector<Ref<NSString>>;
std::vector<NSObject*> objects(const Texts& texts) { return {texts.begin(), texts.end()}; }

std::vector<NSObject*> sortedByComparisons(const Texts& texts) {
  std::vector<NSObject*> all = objects(texts);
  std::stable_sort(all.begin(), all.end(), [](NSObject* a, NSObject* b) {
    return static_cast<NSString*>(a)->localizedStandardCompare(static_cast<NSString*>(b)) == NSOrderedAscending;
  });
  return all;
}
std::vector<NSObject*> sortedByKeys(const Texts& texts) {
  std::vector<NSObject*> all = objects(texts);
  sortInStandardOrder(all);
  return all;
}

/// Stored as UTF-16, whatever the units are.
Ref<NSString> wide(const std::u16string& text) {
  return NSString::stringWithCharacters(u"ä" + text)->substringFromIndex(1);
}

/// Texts of a few kinds of units; some are ASCII that is stored as UTF-16.
rc::Gen<Texts> manyTexts(const std::u16string& units) {
  const auto text = rc::gen::container<std::u16string>(rc::gen::elementOf(units));
  return rc::gen::container<Texts>(rc::gen::map(rc::gen::pair(text, rc::gen::arbitrary<bool>()), [](const auto& given) {
    return given.second ? wide(given.first) : NSString::stringWithCharacters(given.first);
  }));
}

class StandardSortOf : public testing::TestWithParam<const char*> {};

TEST_P(StandardSortOf, IsThatOfComparisons) {
  const LocaleScope scope(NSString::stringWithUTF8(GetParam()));
  const char16_t halves[] = {0xD83D, 0xDE00, 1};
  const std::u16string plain = u"aAbch0019 ._", hard = plain + u"éÉe\u0301Ａ１\u200dЖ語\U0001f600" + halves[0];
  for (const std::u16string& units : {std::u16string(u"aA0"), plain, hard, hard.substr(plain.size()) + halves[2]}) {
    EXPECT_TRUE(rc::check([&] {
      const Texts texts = *manyTexts(units);
      RC_ASSERT(sortedByKeys(texts) == sortedByComparisons(texts));
    }));
  }
}
INSTANTIATE_TEST_SUITE_P(Locales, StandardSortOf, testing::Values("en_US", "da_DK", "en_US_POSIX", "ja_JP", "cs_CZ"));

TEST(StandardSort, TakesNamesOfAllKindsTogether) {
  const LocaleScope english("en_US"_ns);
  Texts texts;
  for (unsigned i = 0; i < 3000; ++i) {
    const unsigned number = i * 7919 % 500;
    const char* const formats[] = {"IMG_%04u.JPG", "img_%u.jpg", "Chapter %u", "Résumé %u",
                                   "日本 %u",      "Ärger%u",    "\t%u"};
    char name[64];
    std::snprintf(name, sizeof name, formats[i % std::size(formats)], number);
    texts.push_back(NSString::stringWithUTF8(name));
  }
  EXPECT_EQ(sortedByKeys(texts), sortedByComparisons(texts));
  texts.resize(20);
  EXPECT_EQ(sortedByKeys(texts), sortedByComparisons(texts));
  EXPECT_TRUE(sortedByKeys({}).empty());
}

TEST(StandardSort, KeepsTheOrderOfEqualTexts) {
  const LocaleScope english("en_US"_ns);
  Texts texts;
  for (int i = 0; i < 40; ++i) {
    texts.push_back(i % 3 ? wide(u"same") : NSMutableString::stringWithString("same"_ns));
    texts.push_back(wide(u"gleich\u00e4"));
  }
  const std::vector<NSObject*> sorted = sortedByKeys(texts);
  EXPECT_EQ(sorted, sortedByComparisons(texts));
  for (size_t i = 0; i < 40; ++i) EXPECT_EQ(sorted[i + 40], texts[2 * i].get());
}

TEST(StandardSort, IsForTextsThatCompareAsAllDo) {
  const Ref<NSString> literal = "a"_ns, mutableText = NSMutableString::stringWithString("b"_ns), wideText = wide(u"ж");
  const Ref<Named> named = Named::stringWithString<Named>("c"_ns);
  const Ref<Backwards> backwards = Backwards::stringWithString<Backwards>("d"_ns);
  const Ref<NSNumber> number = NSNumber::numberWithInt(1);
  std::vector<NSObject*> texts = {literal, mutableText, wideText, named, literal};
  EXPECT_TRUE(compareInStandardOrder(texts, standard));
  EXPECT_FALSE(compareInStandardOrder(texts, "localizedCompare:"_sel));
  EXPECT_FALSE(compareInStandardOrder(texts, "unknown:"_sel));
  for (NSObject* other : {static_cast<NSObject*>(backwards), static_cast<NSObject*>(number)}) {
    std::vector<NSObject*> mixed = texts;
    mixed.push_back(other);
    EXPECT_FALSE(compareInStandardOrder(mixed, standard));
    mixed.push_back(other);
    EXPECT_FALSE(compareInStandardOrder(mixed, standard));
    std::swap(mixed.front(), mixed.back());
    EXPECT_FALSE(compareInStandardOrder(mixed, standard));
  }
}

TEST(StandardSort, LeavesTextsThatCompareInTheirOwnWayToIt) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSMutableArray> array = NSMutableArray::array();
  for (int i = 0; i < 20; ++i) {
    array->addObject(Backwards::stringWithString<Backwards>(NSString::stringWithFormat("%d"_ns, i)));
  }
  array->sortUsingSelector(standard);
  for (int i = 0; i < 20; ++i) {
    EXPECT_THAT(as<NSString>(array->objectAtIndex(static_cast<uint64_t>(i))), equals(std::to_string(19 - i)));
  }
}

}  // namespace
