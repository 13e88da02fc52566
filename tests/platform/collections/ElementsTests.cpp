// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/Elements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ranges>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NSOrderedSet.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

using ArrayView = ElementsView<NSString, NSArray>;
static_assert(std::ranges::random_access_range<ArrayView>);
static_assert(std::ranges::forward_range<ElementsView<NSString, NSSet>>);
static_assert(std::is_same_v<std::ranges::range_value_t<ArrayView>, NSString*>);
static_assert(std::ranges::view<ArrayView>);

}  // namespace

TEST(Elements, AreSeenAsTheirOwnClass) {
  const Ref<NSArray> names = NSArray::arrayWithObjects({"b", "a"});
  std::string all;
  for (NSString* name : elements<NSString>(names)) all += name->utf8();
  for (NSString* name : elements<NSString>(NSSet::setWithArray(names))) all += name->utf8();
  for (NSString* name : elements<NSString>(NSOrderedSet::orderedSetWithArray(names))) all += name->utf8();
  EXPECT_EQ(all, "bababa");
  EXPECT_EQ(elements<NSString>(names).size(), 2u);
}

TEST(Elements, OfAnotherClassRaise) {
  EXPECT_THAT(
      [] {
        for (NSString* each : elements<NSString>(NSArray::arrayWithObjects({1}))) FAIL() << each;
      },
      raises(NSInvalidArgumentException, "NSString"));
}

TEST(Elements, OfNullAreNone) {
  EXPECT_TRUE(elements<NSString>(static_cast<NSArray*>(nullptr)).empty());
  for (NSString* each : elements<NSString>(Ref<NSSet>())) FAIL() << each;
}

TEST(Elements, KeepATemporaryCollectionAlive) {
  int64_t sum = 0;
  for (Item* each : elements<Item>(NSArray::arrayWithObjects({make<Item>(1), make<Item>(2)}))) sum += each->value();
  EXPECT_EQ(sum, 3);
}

TEST(Elements, WorkWithAlgorithms) {
  const Ref<NSArray> names = NSArray::arrayWithObjects({"bb", "a", "ccc"});
  const auto view = elements<NSString>(names);
  const auto longest = std::ranges::max_element(view, {}, [](NSString* each) { return each->length(); });
  EXPECT_THAT(*longest, equals("ccc"));
  EXPECT_EQ(longest - view.begin(), 2);
  EXPECT_THAT(view.begin()[1], equals("a"));
  EXPECT_THAT(*(view.end() - 1), equals("ccc"));
}

TEST(Elements, RaiseOnceTheCollectionHasChanged) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({"a", "b"});
  EXPECT_THAT(
      [&] {
        for (NSString* each : elements<NSString>(array)) array->addObject(each);
      },
      raises(NSGenericException, "was mutated"));
  const Ref<NSMutableSet> set = NSMutableSet::setWithObjects({"a", "b"});
  auto at = set->begin();
  set->removeAllObjects();
  EXPECT_THAT([&] { *at; }, raises(NSGenericException, "was mutated"));
  EXPECT_THAT([&] { ++at; }, raises(NSGenericException, "was mutated"));
}

#ifndef __clang__  // clang 14 can't compile this standard library's pipelines
TEST(Elements, GoThroughPipelines) {
  const Ref<NSArray> numbers = NSArray::arrayWithObjects({1, 2, 3, 4});
  int sum = 0;
  for (const int each : elements<NSNumber>(numbers) | std::views::transform([](NSNumber* number) {
                          return number->intValue();
                        }) | std::views::filter([](int number) { return number % 2 == 0; })) {
    sum += each;
  }
  EXPECT_EQ(sum, 6);
}
#endif
