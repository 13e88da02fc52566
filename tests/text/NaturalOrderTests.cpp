// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/NaturalOrder.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(NaturalOrder, ListsNamesAsAFileBrowserDoes) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSMutableArray> names = NSMutableArray::arrayWithObjects({"file 10", "File 2", "file 1", "_draft"});
  names->sortUsingSelector("finderCompare:"_sel);
  EXPECT_THAT(names->componentsJoinedByString(","_ns), equals("_draft,file 1,File 2,file 10"));
}

TEST(NaturalOrder, SortsManyNamesAsTheyCompare) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSMutableArray> names = NSMutableArray::array();
  for (int i = 0; i < 500; ++i) {
    const int number = i * 37 % 120;
    names->addObject(NSString::stringWithFormat(i % 3   ? "IMG_%03d.JPG"_ns
                                                : i % 2 ? "img_%d.jpg"_ns
                                                        : "Éa %d"_ns,
                                                number));
  }
  const Ref<NSArray> sorted = names->sortedArrayUsingSelector("finderCompare:"_sel);
  const Ref<NSArray> compared = names->sortedArrayUsingComparator(
      [](NSObject* a, NSObject* b) { return finderCompare(cast<NSString>(a), cast<NSString>(b)); });
  ASSERT_EQ(sorted->count(), compared->count());
  for (uint64_t i = 0; i < sorted->count(); ++i) EXPECT_EQ(sorted->objectAtIndex(i), compared->objectAtIndex(i)) << i;
}

TEST(NaturalOrder, TellsDifferentTextsApart) {
  const LocaleScope english("en_US"_ns);
  const NSString* const names[] = {"a0"_ns, "A0"_ns, "A00"_ns};
  for (size_t i = 0; i < 3; ++i) {
    for (size_t j = 0; j < 3; ++j) {
      EXPECT_EQ(finderCompare(names[i], names[j]), compareValues(i, j)) << i << j;
      EXPECT_EQ(_10_5_finderCompare(names[i], names[j]), compareValues(i, j)) << i << j;
    }
  }
}

TEST(NaturalOrder, IsTheSameSpelledOut) {
  const LocaleScope german("de_DE"_ns);
  const char* const names[] = {"Äpfel 2", "Apfel 10", "ａ1", "a1", "z", "Ö", "", "1", "01"};
  for (const char* a : names) {
    for (const char* b : names) {
      const Ref<NSString> left = NSString::stringWithUTF8(a), right = NSString::stringWithUTF8(b);
      EXPECT_EQ(finderCompare(left, right), _10_5_finderCompare(left, right)) << a << " " << b;
    }
  }
}

TEST(NaturalOrder, NumericallyOnlyTheValuesOfNumbersCount) {
  EXPECT_EQ(numericalCompare("A0"_ns, "A00"_ns), NSOrderedSame);
  EXPECT_EQ(numericalCompare("a2"_ns, "a10"_ns), NSOrderedAscending);
  EXPECT_EQ(numericalCompare("B"_ns, "a"_ns), NSOrderedAscending);
  EXPECT_EQ(numericalCompare("a"_ns, "A"_ns), NSOrderedDescending);
}

TEST(NaturalOrder, NumericallyTheLocaleMakesNoDifference) {
  for (NSString* locale : {"en_US"_ns, "sv_SE"_ns, "da_DK"_ns}) {
    const LocaleScope scope(locale);
    EXPECT_EQ(numericalCompare("ä"_ns, "z"_ns), NSOrderedDescending);
    EXPECT_EQ(numericalCompare("aa"_ns, "z"_ns), NSOrderedAscending);
  }
}

TEST(NaturalOrder, OrdersNumbersOfAThousandDigits) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSString> small = NSString::stringWithUTF8(std::string(1000, '1'));
  const Ref<NSString> large = NSString::stringWithUTF8(std::string(999, '1') + "2");
  EXPECT_EQ(numericalCompare(small, large), NSOrderedAscending);
  EXPECT_EQ(finderCompare(small, large), NSOrderedAscending);
}

TEST(NaturalOrder, AnswersByName) {
  EXPECT_EQ(send<NSComparisonResult>("a2"_ns, "numericalCompare:"_sel, "a10"_ns), NSOrderedAscending);
  EXPECT_EQ(send<NSComparisonResult>("a2"_ns, "_10_5_finderCompare:"_sel, "a10"_ns), NSOrderedAscending);
}

TEST(NaturalOrder, NullReceiversAndArgumentsHaveTheirPlace) {
  EXPECT_EQ(finderCompare(nullptr, "a"_ns), NSOrderedSame);
  EXPECT_EQ(numericalCompare(nullptr, "a"_ns), NSOrderedSame);
  EXPECT_EQ(finderCompare("a"_ns, nullptr), NSOrderedDescending);
}

}  // namespace
