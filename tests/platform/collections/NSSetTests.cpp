// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSSet.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSSet, HoldsEachObjectOnceInOrder) {
  auto colours = quoll::NSSet::setWithObjects({"red", "green", "red"});
  std::string all;
  for (quoll::NSString* colour : quoll::elements<quoll::NSString>(colours)) all += colour->utf8() + " ";
  EXPECT_EQ(all, "red green ");
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSSet> numbers(std::initializer_list<int> values) {
  Ref<NSMutableSet> set = NSMutableSet::set();
  for (const int each : values) set->addObject(box(each));
  return set->copy();
}

static_assert(std::ranges::forward_range<NSSet>);

TEST(NSSet, RefusesNullInPlaceOfElements) {
  EXPECT_THAT([] { NSSet::setWithObjects_count(nullptr, 2); }, raises(NSInvalidArgumentException, "count:"));
}

}  // namespace

TEST(NSSet, IsMadeInEachWay) {
  NSObject* const objects[] = {"a"_ns, "b"_ns};
  const Ref<NSSet> two = NSSet::setWithObjects({"a"_ns, "b"_ns});
  EXPECT_EQ(NSSet::set()->count(), 0u);
  EXPECT_EQ(texts(*NSSet::setWithObject("a"_ns)), "a");
  EXPECT_THAT(NSSet::setWithObjects_count(objects, 2), equals(two));
  EXPECT_THAT(NSSet::setWithArray(NSArray::arrayWithObjects({"b"_ns, "a"_ns, "b"_ns})), equals(two));
  EXPECT_THAT(NSSet::setWithSet(two), equals(two));
  EXPECT_EQ(NSSet::setWithArray(nullptr)->count(), 0u);
  EXPECT_EQ(NSSet::setWithSet(nullptr)->count(), 0u);
  EXPECT_THAT(send<Ref<NSSet>>(NSSet::classObject(), "setWithSet:"_sel, two), equals(two));
  EXPECT_THAT([] { NSSet::setWithObject(nullptr); }, raises(NSInvalidArgumentException, "nil argument"));
  const Ref<Item> item = make<Item>(1);
  EXPECT_NE(NSSet::initWithSet_copyItems(NSSet::setWithObject(item), true)->anyObject().get(), item.get());
}

TEST(NSSet, FindsMembersHoweverMany) {
  for (const int count : {0, 1, 8, 9, 500}) {
    Ref<NSMutableSet> set = NSMutableSet::set();
    for (int i = 0; i < count; ++i) set->addObject(make<Item>(i));
    for (int i = 0; i < count; ++i) EXPECT_TRUE(set->containsObject(make<Item>(i)));
    EXPECT_FALSE(set->containsObject(make<Item>(-1)));
    EXPECT_FALSE(set->containsObject(nullptr));
    EXPECT_FALSE(set->member(nullptr));
    EXPECT_EQ(static_cast<bool>(set->anyObject()), count > 0);
  }
  const Ref<Item> first = make<Item>(4), twin = make<Item>(4);
  EXPECT_EQ(NSSet::setWithObjects({first, twin})->member(twin).get(), first.get());
}

TEST(NSSet, ComparesWithOtherSets) {
  EXPECT_THAT(numbers({1, 2}), equals(numbers({2, 1})));
  EXPECT_EQ(numbers({1, 2})->hash(), numbers({2, 1})->hash());
  EXPECT_FALSE(numbers({1, 2})->isEqual(numbers({1, 3})));
  EXPECT_FALSE(numbers({1})->isEqualToSet(nullptr));
  EXPECT_TRUE(numbers({1})->isSubsetOfSet(numbers({2, 1})));
  EXPECT_FALSE(numbers({1, 3})->isSubsetOfSet(numbers({2, 1})));
  EXPECT_TRUE(numbers({})->isSubsetOfSet(nullptr));
  EXPECT_TRUE(numbers({1, 3})->intersectsSet(numbers({2, 3})));
  EXPECT_FALSE(numbers({1})->intersectsSet(numbers({2})));
  EXPECT_FALSE(numbers({1})->intersectsSet(nullptr));
}

TEST(NSSet, MakesLargerSets) {
  EXPECT_EQ(texts(*numbers({1})->setByAddingObject(box(2))), "1 2");
  EXPECT_EQ(texts(*numbers({1})->setByAddingObjectsFromSet(numbers({2, 1, 3}))), "1 2 3");
  EXPECT_EQ(texts(*numbers({1})->setByAddingObjectsFromArray(NSArray::arrayWithObjects({1, 4}))), "1 4");
  EXPECT_EQ(numbers({1})->setByAddingObjectsFromSet(nullptr)->isa(), NSSet::classObject());
  EXPECT_THAT([] { NSSet::set()->setByAddingObject(nullptr); }, raises(NSInvalidArgumentException));
}

TEST(NSSet, WalksAndTests) {
  std::string seen;
  numbers({1, 2, 3})->enumerateObjectsUsingBlock([&](NSNumber* each, bool* stop) {
    seen += std::to_string(each->intValue());
    *stop = each->intValue() == 2;
  });
  EXPECT_EQ(seen, "12");
  EXPECT_EQ(texts(*numbers({1, 2, 3})->objectsPassingTest([](NSNumber* each, bool*) { return each->intValue() != 2; })),
            "1 3");
  EXPECT_EQ(texts(*numbers({1, 2})->allObjects()), "1 2");
  EXPECT_EQ(texts(*numbers({1, 2})->objectEnumerator()->allObjects()), "1 2");
  const Ref<Item> item = make<Item>(1);
  NSSet::setWithObject(item)->makeObjectsPerformSelector("bump"_sel);
  NSSet::setWithObject(item)->makeObjectsPerformSelector_withObject("add:"_sel, nullptr);
  EXPECT_EQ(item->value(), 3);
  EXPECT_EQ(walked(numbers({1, 2, 3})).size(), 3u);
}

TEST(NSSet, CopiesForFreeWhenImmutable) {
  const Ref<NSSet> set = numbers({1});
  EXPECT_EQ(set->copy().get(), set.get());
  EXPECT_EQ(set->mutableCopy()->copy()->isa(), NSSet::classObject());
}

TEST(NSSet, DescribesWhatIsInIt) {
  EXPECT_THAT(numbers({1, 2})->description(), equals("{(\n    1,\n    2\n)}"));
  EXPECT_THAT(NSSet::set()->description(), equals("{(\n)}"));
}
