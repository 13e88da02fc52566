// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSOrderedSet.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSOrderedSet, KnowsWhereEachElementIs) {
  auto steps = quoll::NSOrderedSet::orderedSetWithObjects({"wash", "dry", "wash"});
  EXPECT_EQ(steps->count(), 2u);
  EXPECT_EQ(steps->indexOfObject(quoll::box("dry")), 1u);
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSOrderedSet> numbers(std::initializer_list<int> values) {
  Ref<NSMutableOrderedSet> set = NSMutableOrderedSet::orderedSet();
  for (const int each : values) set->addObject(box(each));
  return set->copy();
}

TEST(NSOrderedSet, RefusesNullInPlaceOfElements) {
  EXPECT_THAT([] { NSOrderedSet::orderedSetWithObjects_count(nullptr, 2); },
              raises(NSInvalidArgumentException, "count:"));
}

}  // namespace

TEST(NSOrderedSet, IsMadeInEachWay) {
  NSObject* const objects[] = {"a"_ns, "b"_ns};
  const Ref<NSOrderedSet> two = NSOrderedSet::orderedSetWithObjects({"a"_ns, "b"_ns});
  EXPECT_EQ(NSOrderedSet::orderedSet()->count(), 0u);
  EXPECT_EQ(texts(*NSOrderedSet::orderedSetWithObject("a"_ns)), "a");
  EXPECT_THAT(NSOrderedSet::orderedSetWithObjects_count(objects, 2), equals(two));
  EXPECT_THAT(NSOrderedSet::orderedSetWithArray(NSArray::arrayWithObjects({"a"_ns, "b"_ns, "a"_ns})), equals(two));
  EXPECT_THAT(NSOrderedSet::orderedSetWithOrderedSet(two), equals(two));
  EXPECT_THAT(NSOrderedSet::orderedSetWithSet(NSSet::setWithObjects({"a"_ns, "b"_ns})), equals(two));
  EXPECT_EQ(NSOrderedSet::orderedSetWithArray(nullptr)->count(), 0u);
  EXPECT_THAT(send<Ref<NSOrderedSet>>(NSOrderedSet::classObject(), "orderedSetWithOrderedSet:"_sel, two), equals(two));
}

TEST(NSOrderedSet, GivesElementsByIndex) {
  const Ref<NSOrderedSet> set = numbers({5, 6, 7});
  EXPECT_THAT(set->objectAtIndex(1), equals(box(6)));
  EXPECT_THAT(set->firstObject(), equals(box(5)));
  EXPECT_THAT(set->lastObject(), equals(box(7)));
  EXPECT_FALSE(NSOrderedSet::orderedSet()->firstObject());
  EXPECT_FALSE(NSOrderedSet::orderedSet()->lastObject());
  EXPECT_EQ(set->indexOfObject(box(8)), NSNotFound);
  EXPECT_EQ(set->indexOfObject(nullptr), NSNotFound);
  EXPECT_THAT([&] { set->objectAtIndex(3); },
              raises(NSRangeException, "-[NSOrderedSet objectAtIndex:]: index 3 beyond bounds [0 .. 2]"));
  EXPECT_EQ(texts(*set->objectsAtIndexes(NSIndexSet::indexSetWithIndexesInRange({1, 2}))), "6 7");
  EXPECT_THAT([&] { set->objectsAtIndexes(NSIndexSet::indexSetWithIndex(3)); }, raises(NSRangeException, "index 3"));
}

TEST(NSOrderedSet, ComparesInOrder) {
  EXPECT_THAT(numbers({1, 2}), equals(numbers({1, 2})));
  EXPECT_FALSE(numbers({1, 2})->isEqual(numbers({2, 1})));
  EXPECT_FALSE(numbers({1})->isEqualToOrderedSet(nullptr));
  EXPECT_EQ(numbers({1, 2})->hash(), numbers({1, 2})->mutableCopy()->hash());
  EXPECT_TRUE(numbers({2, 1})->isSubsetOfOrderedSet(numbers({1, 2, 3})));
  EXPECT_TRUE(numbers({2})->isSubsetOfSet(numbers({1, 2, 3})->set()));
  EXPECT_TRUE(numbers({2})->intersectsOrderedSet(numbers({1, 2})));
  EXPECT_FALSE(numbers({2})->intersectsSet(NSSet::set()));
  EXPECT_FALSE(numbers({2})->intersectsOrderedSet(nullptr));
}

TEST(NSOrderedSet, TurnsIntoOtherCollections) {
  EXPECT_EQ(texts(*numbers({1, 2, 3})->array()), "1 2 3");
  EXPECT_EQ(texts(*numbers({1, 2, 3})->set()), "1 2 3");
  EXPECT_EQ(texts(*numbers({1, 2, 3})->reversedOrderedSet()), "3 2 1");
  EXPECT_EQ(texts(*numbers({3, 1})->sortedArrayUsingComparator([](NSNumber* a, NSNumber* b) { return a->compare(b); })),
            "1 3");
  EXPECT_EQ(texts(*numbers({1, 2})->objectEnumerator()->allObjects()), "1 2");
  EXPECT_EQ(texts(*numbers({1, 2})->reverseObjectEnumerator()->allObjects()), "2 1");
  const Ref<NSOrderedSet> set = numbers({1});
  EXPECT_EQ(set->copy().get(), set.get());
  EXPECT_EQ(set->mutableCopy()->copy()->isa(), NSOrderedSet::classObject());
}

TEST(NSOrderedSet, WalksAndTests) {
  std::string seen;
  numbers({5, 6, 7})->enumerateObjectsWithOptions_usingBlock(
      NSEnumerationReverse, [&](NSNumber* each, uint64_t index, bool* stop) {
        seen += std::to_string(index) + ":" + std::to_string(each->intValue()) + " ";
        *stop = index == 1;
      });
  EXPECT_EQ(seen, "2:7 1:6 ");
  auto isOdd = [](NSNumber* each, uint64_t, bool*) { return each->intValue() % 2 == 1; };
  EXPECT_EQ(numbers({4, 5, 6, 7})->indexOfObjectPassingTest(isOdd), 1u);
  EXPECT_EQ(numbers({4, 5, 6, 7})->indexesOfObjectsPassingTest(isOdd)->lastIndex(), 3u);
  EXPECT_EQ(walked(numbers({1, 2, 3})).size(), 3u);
  EXPECT_THAT(numbers({1})->description(), equals("{(\n    1\n)}"));
}
