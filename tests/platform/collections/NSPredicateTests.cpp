// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPredicate.h"

#include <gtest/gtest.h>

#include <cmath>

#include "QuollFoundation/platform/collections/NSDictionary.h"
#include "QuollFoundation/platform/object/Send.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSDictionary> file() {
  return NSDictionary::dictionaryWithEntries({{"name", "a.txt"},
                                              {"size", 120},
                                              {"closed", false},
                                              {"ratio", 0.5},
                                              {"owner", NSDictionary::dictionaryWithEntries({{"name", "Ann"}})},
                                              {"tags", NSArray::arrayWithObjects({"x", "y"})}});
}

Ref<NSPredicate> predicate(const char* format) { return NSPredicate::predicateWithFormat(box(format)); }

TEST(NSPredicate, KnowsTheLargestUnsignedNumbers) {
  const auto largest = NSPredicate::predicateWithFormat("SELF == 18446744073709551615"_ns);
  EXPECT_TRUE(largest->evaluateWithObject(box(UINT64_MAX)));
  EXPECT_FALSE(largest->evaluateWithObject(box(UINT64_MAX - 1)));
}

TEST(NSPredicate, RefusesATextWithHalfASurrogatePair) {
  const Ref<NSString> format = NSString::stringWithCharacters(std::u16string(u"SELF == '") + char16_t{0xD800} + u"'");
  EXPECT_THAT([&] { NSPredicate::predicateWithFormat(format); }, raises(NSInvalidArgumentException, "surrogate"));
}

TEST(NSPredicate, NothingIsLessOrGreaterThanWhatIsNoNumber) {
  const Ref<NSNumber> nan = box(std::nan(""));
  for (NSString* format : {"SELF < 1"_ns, "SELF <= 1"_ns, "SELF > 1"_ns, "SELF >= 1"_ns, "SELF == 1"_ns}) {
    EXPECT_FALSE(NSPredicate::predicateWithFormat(format)->evaluateWithObject(nan)) << format;
  }
}

}  // namespace

TEST(NSPredicate, HoldsOrDoesNot) {
  const struct Row {
    const char* format;
    bool holds;
  } rows[] = {
      {"closed == NO", true},
      {"closed == YES", false},
      {"closed = false", true},
      {"closed != TRUE", true},
      {"size > 100", true},
      {"size >= 120", true},
      {"size => 121", false},
      {"size < 120", false},
      {"size =< 120", true},
      {"size <= 119", false},
      {"size <> 120", false},
      {"100 < size", true},
      {"ratio == .5", true},
      {"ratio > -1.5", true},
      {"name == 'a.txt'", true},
      {"name == \"a.txt\"", true},
      {"owner.name == 'Ann'", true},
      {"SELF.owner.name == 'Bo'", false},
      {"SELF == SELF", true},
      {"nothing == nil", true},
      {"nothing != NULL", false},
      {"name == nil", false},
      {"nothing < 5", false},
      {"nothing >= 5", false},
      {"size IN {1, 120}", true},
      {"size in {}", false},
      {"'y' IN tags", true},
      {"'z' IN tags", false},
      {"'Ann' IN owner", true},
      {"'txt' IN name", true},
      {"size > 100 AND closed == NO", true},
      {"size > 100 and closed == YES", false},
      {"size > 500 || closed == NO", true},
      {"size > 500 OR closed == YES && size > 0", false},
      {"(size > 500 OR closed == NO) AND size > 0", true},
      {"NOT size > 500", true},
      {"!(size > 100)", false},
      {"NOT NOT closed == NO", true},
      {"TRUEPREDICATE", true},
      {"FALSEPREDICATE OR size=120", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(predicate(row.format)->evaluateWithObject(file()), row.holds) << row.format;
  }
}

TEST(NSPredicate, TakesItsValuesFromArguments) {
  EXPECT_TRUE(NSPredicate::predicateWithFormat("%K == NO"_ns, "closed"_ns)->evaluateWithObject(file()));
  EXPECT_TRUE(NSPredicate::predicateWithFormat("%K == %@ AND %K > %d"_ns, "owner.name"_ns, "Ann"_ns, "size"_ns, 100)
                  ->evaluateWithObject(file()));
  EXPECT_TRUE(
      NSPredicate::predicateWithFormat("size IN %@"_ns, NSArray::arrayWithObjects({120}))->evaluateWithObject(file()));
  EXPECT_TRUE(
      NSPredicate::predicateWithFormat("ratio == %f AND size < %lu"_ns, 0.5, 121ul)->evaluateWithObject(file()));
  EXPECT_TRUE(NSPredicate::predicateWithFormat_argumentArray("%K == %d"_ns, NSArray::arrayWithObjects({"size", 120}))
                  ->evaluateWithObject(file()));
  EXPECT_FALSE(NSPredicate::predicateWithFormat("name == %@"_ns, nullptr)->evaluateWithObject(file()));
}

TEST(NSPredicate, RefusesWhatItDoesNotUnderstandWithTheText) {
  const struct Row {
    const char *format, *offending;
  } rows[] = {
      {"name LIKE 'a*'", "\"LIKE 'a*'\" is no comparison"},
      {"name BETWEEN {1, 2}", "\"BETWEEN {1, 2}\""},
      {"ANY tags == 'x'", "\"ANY tags == 'x'\" is not understood here"},
      {"size ==", "\"\" is no key path"},
      {"size", "\"\" is no comparison"},
      {"size == 1 size", "\"size\" stands behind"},
      {"(size == 1", "should be \")\""},
      {"size == 'x", "has no closing quote"},
      {"size IN {1, 2", "should be \"}\""},
      {"size == 1x", "\"1x\" is no number"},
      {"a..b == 1", "is no key path"},
      {"a. == 1", "is no key path"},
      {"FUNCTION(a) == 1", "is not understood here"},
      {"%@ == 1", "has no argument"},
      {"%z == 1", "is no placeholder"},
      {"", "is no key path"},
      {"AND", "is not understood here"},
  };
  for (const Row& row : rows) {
    EXPECT_THAT([&] { predicate(row.format); }, raises(NSInvalidArgumentException, row.offending)) << row.format;
  }
  EXPECT_THAT([] { NSPredicate::predicateWithFormat("a == 1"_ns, 5); },
              raises(NSInvalidArgumentException, "leaves arguments over"));
  EXPECT_THAT([] { NSPredicate::predicateWithFormat("%K == 1"_ns, 5); },
              raises(NSInvalidArgumentException, "needs a key path"));
  EXPECT_THAT([] { NSPredicate::predicateWithFormat("a == %d"_ns, "x"_ns); },
              raises(NSInvalidArgumentException, "needs a number"));
  EXPECT_THAT([] { NSPredicate::predicateWithFormat(nullptr); }, raises(NSInvalidArgumentException));
}

TEST(NSPredicate, RefusesEndlessNesting) {
  const std::string brackets(100'000, '('), braces = "a IN " + std::string(100'000, '{');
  EXPECT_THAT([&] { predicate(brackets.c_str()); }, raises(NSInvalidArgumentException, "nested too deeply"));
  EXPECT_THAT([&] { predicate(braces.c_str()); }, raises(NSInvalidArgumentException, "nested too deeply"));
}

TEST(NSPredicate, RaisesWhereInHasNothingToLookInto) {
  EXPECT_THAT([] { predicate("1 IN size")->evaluateWithObject(file()); },
              raises(NSInvalidArgumentException, "IN cannot look"));
  EXPECT_FALSE(predicate("1 IN nothing")->evaluateWithObject(file()));
}

TEST(NSPredicate, WritesItselfSoThatItReadsTheSame) {
  for (const char* format : {"closed == 0", "NOT (a > 1 OR b.c IN {1, \"x\"})", "SELF != nil", "TRUEPREDICATE",
                             "a == \"say \\\"x\\\"\" AND b < 2.5"}) {
    const Ref<NSString> once = predicate(format)->predicateFormat();
    EXPECT_THAT(NSPredicate::predicateWithFormat(once)->predicateFormat(), equals(once)) << format;
    EXPECT_THAT(once, equals(format));
  }
}

TEST(NSPredicate, IsABlockOrAValue) {
  const Ref<NSPredicate> longer = NSPredicate::predicateWithBlock([](NSString* text) { return text->length() > 1; });
  EXPECT_TRUE(longer->evaluateWithObject("ab"_ns));
  EXPECT_FALSE(longer->evaluateWithObject("a"_ns));
  EXPECT_TRUE(NSPredicate::predicateWithValue(true)->evaluateWithObject(nullptr));
  EXPECT_EQ(longer->copy().get(), longer.get());
}

TEST(NSPredicate, FiltersCollections) {
  const Ref<NSPredicate> large = predicate("self > 2");
  const Ref<NSArray> numbers = NSArray::arrayWithObjects({1, 2, 3, 4});
  EXPECT_EQ(texts(*filteredArrayUsingPredicate(numbers, large)), "3 4");
  EXPECT_EQ(texts(*filteredSetUsingPredicate(NSSet::setWithArray(numbers), large)), "3 4");
  EXPECT_EQ(texts(*filteredOrderedSetUsingPredicate(NSOrderedSet::orderedSetWithArray(numbers), large)), "3 4");
  const Ref<NSMutableArray> array = numbers->mutableCopy();
  filterUsingPredicate(array, large);
  EXPECT_EQ(texts(*array), "3 4");
  const Ref<NSMutableSet> set = NSMutableSet::setWithArray(numbers);
  filterUsingPredicate(set, large);
  EXPECT_EQ(texts(*set), "3 4");
  const Ref<NSMutableOrderedSet> ordered = NSMutableOrderedSet::orderedSetWithArray(numbers);
  send(ordered, "filterUsingPredicate:"_sel, large);
  EXPECT_EQ(texts(*ordered), "3 4");
  EXPECT_THAT([&] { filteredArrayUsingPredicate(numbers, nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_EQ(filteredArrayUsingPredicate(nullptr, large).get(), nullptr);
}
