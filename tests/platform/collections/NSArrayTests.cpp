// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSArray.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <ranges>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/SampleObjects.h"

TEST(NSArray, HoldsObjectsAndBoxedValuesInOrder) {
  auto list = quoll::NSArray::arrayWithObjects({quoll::NSString::stringWithUTF8("one"), 2, 3.5});
  std::string texts;
  for (quoll::NSObject* each : *list) texts += each->description()->utf8() + " ";
  EXPECT_EQ(texts, "one 2 3.5 ");
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

/// An array that a user derives.
class Playlist : public NSMutableArray {
  QF_CLASS(Playlist, NSMutableArray)
 public:
  int plays = 0;
};
Class* Playlist::classObject() {
  static Class* const cls = ClassBuilder<Playlist>("Playlist").build();
  return cls;
}

class Frozen : public NSArray {
  QF_CLASS(Frozen, NSArray)
 public:
  int marks = 7;
};
Class* Frozen::classObject() {
  static Class* const cls = ClassBuilder<Frozen>("Frozen").build();
  return cls;
}

Ref<NSArray> numbers(std::initializer_list<int> values) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : values) array->addObject(box(each));
  return array->copy();
}

static_assert(std::ranges::random_access_range<NSArray>);
static_assert(std::ranges::sized_range<NSArray>);
static_assert(std::is_same_v<std::ranges::range_value_t<NSArray>, NSObject*>);

TEST(NSArray, RefusesNullInPlaceOfElementsAndACountThatNoMemoryHas) {
  EXPECT_THAT([] { NSArray::arrayWithObjects_count(nullptr, 3); }, raises(NSInvalidArgumentException, "count:"));
  NSObject* const one[] = {"a"_ns};
  EXPECT_THAT([&] { NSArray::arrayWithObjects_count(one, UINT64_MAX); }, raises(NSMallocException, "memory"));
  EXPECT_THAT([&] { NSArray::arrayWithObjects_count(one, (uint64_t{1} << 61) + 1); },
              raises(NSMallocException, "memory"));
  EXPECT_THAT([&] { NSArray::arrayWithObject("a"_ns)->getObjects_range(nullptr, {0, 1}); },
              raises(NSInvalidArgumentException, "getObjects:range:"));
  EXPECT_EQ(NSArray::arrayWithObjects_count(nullptr, 0)->count(), 0u);
}

}  // namespace

TEST(NSArray, IsMadeInEachWay) {
  NSObject* const objects[] = {"a"_ns, "b"_ns};
  const Ref<NSArray> two = NSArray::arrayWithObjects({"a"_ns, "b"_ns});
  EXPECT_EQ(NSArray::array()->count(), 0u);
  EXPECT_EQ(texts(*NSArray::arrayWithObject("a"_ns)), "a");
  EXPECT_THAT(NSArray::arrayWithObjects_count(objects, 2), equals(two));
  EXPECT_THAT(NSArray::initWithObjects_count(objects, 2), equals(two));
  EXPECT_THAT(NSArray::arrayWithArray(two), equals(two));
  EXPECT_THAT(NSArray::initWithArray(two), equals(two));
  EXPECT_EQ(NSArray::arrayWithArray(nullptr)->count(), 0u);
  EXPECT_THAT(send<Ref<NSArray>>(alloc(NSArray::classObject()), "initWithArray:"_sel, two), equals(two));
  EXPECT_THAT(send<Ref<NSArray>>(NSArray::classObject(), "arrayWithObject:"_sel, "a"_ns),
              equals(NSArray::arrayWithObject("a"_ns)));
}

TEST(NSArray, EndsItsListAtTheFirstNull) {
  EXPECT_EQ(texts(*NSArray::arrayWithObjects({1, nullptr, 3})), "1");
  EXPECT_EQ(NSArray::arrayWithObjects({})->count(), 0u);
}

TEST(NSArray, RefusesNullByName) {
  NSObject* const objects[] = {"a"_ns, nullptr};
  EXPECT_THAT([&] { NSArray::initWithObjects_count(objects, 2); },
              raises(NSInvalidArgumentException, "-[NSArray initWithObjects:count:]: nil argument"));
  EXPECT_THAT([&] { NSArray::arrayWithObject(nullptr); }, raises(NSInvalidArgumentException, "nil argument"));
  EXPECT_THAT([&] { NSArray::array()->arrayByAddingObject(nullptr); },
              raises(NSInvalidArgumentException, "-[NSArray arrayByAddingObject:]"));
}

TEST(NSArray, LeavesNothingBehindWhenItsMakingRaises) {
  const LeakGuard guard;
  const Ref<Item> item = make<Item>(1);
  NSObject* const objects[] = {item, nullptr};
  EXPECT_THAT([&] { NSArray::initWithObjects_count(objects, 2); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([&] { NSArray::initWithObjects_count<NSMutableArray>(objects, 2); }, raises(NSInvalidArgumentException));
}

TEST(NSArray, IsOfTheClassAskedFor) {
  const Ref<NSArray> two = numbers({1, 2});
  auto playlist = NSArray::arrayWithArray<Playlist>(two);
  playlist->addObject(box(3));
  EXPECT_EQ(texts(*playlist), "1 2 3");
  EXPECT_EQ(playlist->plays, 0);
  auto frozen = NSArray::arrayWithArray<Frozen>(two);
  EXPECT_EQ(texts(*frozen), "1 2");
  EXPECT_EQ(frozen->marks, 7);
  EXPECT_EQ(NSMutableArray::arrayWithObjects({1})->isa(), NSMutableArray::classObject());
  EXPECT_EQ(Playlist::array<Playlist>()->isa(), Playlist::classObject());
}

TEST(NSArray, TakesAtMostEightBytesAnElementAndSixtyFourMore) {
  for (const uint64_t count : {0u, 1u, 2u, 3u, 10u, 101u, 1000u}) {
    std::vector<NSObject*> objects(count, "x"_ns);
    const Ref<NSArray> array = NSArray::arrayWithObjects_count(objects.data(), count);
    const void* block = reinterpret_cast<const char*>(array.get()) - sizeof(detail::Header);
    EXPECT_LE(malloc_usable_size(const_cast<void*>(block)), 8 * count + 64) << count;
  }
}

TEST(NSArray, CopiesForFreeWhenImmutable) {
  const Ref<NSArray> array = numbers({1, 2});
  EXPECT_EQ(array->copy().get(), array.get());
  const Ref<NSArray> mutableArray = array->mutableCopy();
  const Ref<NSArray> copy = mutableArray->copy();
  EXPECT_NE(copy.get(), mutableArray.get());
  EXPECT_EQ(copy->isa(), NSArray::classObject());
  EXPECT_THAT(copy, equals(array));
}

TEST(NSArray, CopiesItsElementsWhereAsked) {
  const Ref<Item> item = make<Item>(3);
  const Ref<NSArray> copy = NSArray::initWithArray_copyItems(NSArray::arrayWithObject(item), true);
  EXPECT_EQ(item->copies, 1);
  EXPECT_NE(copy->firstObject().get(), item.get());
  EXPECT_EQ(NSArray::initWithArray_copyItems(NSArray::arrayWithObject(item), false)->firstObject().get(), item.get());
}

TEST(NSArray, RaisesPastItsEndWithIndexAndBounds) {
  const Ref<NSArray> three = numbers({1, 2, 3});
  EXPECT_THAT([&] { three->objectAtIndex(5); },
              raises(NSRangeException, "-[NSArray objectAtIndex:]: index 5 beyond bounds [0 .. 2]"));
  EXPECT_THAT([&] { three->objectAtIndex(UINT64_MAX); }, raises(NSRangeException));
  EXPECT_THAT([&] { NSArray::array()->objectAtIndex(0); }, raises(NSRangeException, "empty"));
  EXPECT_THAT([&] { three->subarrayWithRange({2, 2}); }, raises(NSRangeException, "subarrayWithRange:"));
  EXPECT_THAT([&] { three->subarrayWithRange({1, UINT64_MAX}); }, raises(NSRangeException));
  EXPECT_THAT([&] { three->indexOfObject_inRange(box(1), {4, 0}); }, raises(NSRangeException));
}

TEST(NSArray, GivesItsFirstAndLastObjectOrNull) {
  const Ref<NSArray> three = numbers({1, 2, 3});
  EXPECT_THAT(three->firstObject(), equals(box(1)));
  EXPECT_THAT(three->lastObject(), equals(box(3)));
  EXPECT_EQ(NSArray::array()->firstObject().get(), nullptr);
  EXPECT_EQ(NSArray::array()->lastObject().get(), nullptr);
}

TEST(NSArray, FindsByEqualityAndByIdentity) {
  const Ref<Item> one = make<Item>(1), twin = make<Item>(1), two = make<Item>(2);
  const Ref<NSArray> array = NSArray::arrayWithObjects({two, one, twin});
  EXPECT_EQ(array->indexOfObject(twin), 1u);
  EXPECT_EQ(array->indexOfObjectIdenticalTo(twin), 2u);
  EXPECT_EQ(array->indexOfObject_inRange(one, {2, 1}), 2u);
  EXPECT_EQ(array->indexOfObjectIdenticalTo_inRange(one, {2, 1}), NSNotFound);
  EXPECT_EQ(array->indexOfObject(make<Item>(9)), NSNotFound);
  EXPECT_EQ(array->indexOfObject(nullptr), NSNotFound);
  EXPECT_EQ(array->indexOfObjectIdenticalTo(nullptr), NSNotFound);
  EXPECT_TRUE(array->containsObject(twin));
  EXPECT_FALSE(array->containsObject(nullptr));
  EXPECT_THAT(array->firstObjectCommonWithArray(NSArray::arrayWithObjects({7, twin})), equals(one));
  EXPECT_EQ(array->firstObjectCommonWithArray(nullptr).get(), nullptr);
}

TEST(NSArray, AsksTheWantedObjectWhetherItEqualsTheElement) {
  const Ref<Item> wanted = make<Item>(1), element = make<Item>(1);
  int asked = 0;
  wanted->onEqual = [&] { ++asked; };
  element->onEqual = [] { ADD_FAILURE() << "the element was asked"; };
  EXPECT_EQ(NSArray::arrayWithObject(element)->indexOfObject(wanted), 0u);
  EXPECT_EQ(asked, 1);
}

TEST(NSArray, MakesOtherArrays) {
  const Ref<NSArray> three = numbers({1, 2, 3});
  EXPECT_EQ(texts(*three->subarrayWithRange({1, 2})), "2 3");
  EXPECT_EQ(texts(*three->subarrayWithRange({3, 0})), "");
  EXPECT_EQ(texts(*three->arrayByAddingObject(box(4))), "1 2 3 4");
  EXPECT_EQ(texts(*three->arrayByAddingObjectsFromArray(three)), "1 2 3 1 2 3");
  EXPECT_EQ(three->arrayByAddingObjectsFromArray(nullptr).get(), three.get());
  Ref<NSMutableIndexSet> indexes = make<NSMutableIndexSet>();
  indexes->addIndex(0);
  indexes->addIndex(2);
  EXPECT_EQ(texts(*three->objectsAtIndexes(indexes)), "1 3");
  indexes->addIndex(3);
  EXPECT_THAT([&] { three->objectsAtIndexes(indexes); }, raises(NSRangeException, "index 3"));
  NSObject* two[2];
  three->getObjects_range(two, {1, 2});
  EXPECT_EQ(unbox<int>(two[1]), 3);
}

TEST(NSArray, WalksWithIndexAndStop) {
  const Ref<NSArray> three = numbers({1, 2, 3});
  std::string seen;
  three->enumerateObjectsUsingBlock([&](NSNumber* each, uint64_t index, bool* stop) {
    seen += std::to_string(index) + ":" + std::to_string(each->intValue()) + " ";
    *stop = index == 1;
  });
  EXPECT_EQ(seen, "0:1 1:2 ");
  seen.clear();
  three->enumerateObjectsWithOptions_usingBlock(NSEnumerationReverse, [&](NSNumber* each, uint64_t index, bool*) {
    seen += std::to_string(index) + ":" + std::to_string(each->intValue()) + " ";
  });
  EXPECT_EQ(seen, "2:3 1:2 0:1 ");
}

TEST(NSArray, FindsTheElementsThatPassATest) {
  const Ref<NSArray> array = numbers({1, 2, 3, 4, 5});
  auto isEven = [](NSNumber* each, uint64_t, bool*) { return each->intValue() % 2 == 0; };
  EXPECT_EQ(array->indexOfObjectPassingTest(isEven), 1u);
  EXPECT_EQ(array->indexOfObjectWithOptions_passingTest(NSEnumerationReverse, isEven), 3u);
  EXPECT_EQ(array->indexesOfObjectsPassingTest(isEven)->count(), 2u);
  EXPECT_EQ(array->indexOfObjectPassingTest([](NSObject*, uint64_t, bool* stop) {
    *stop = true;
    return false;
  }),
            NSNotFound);
  const Ref<NSIndexSet> first = array->indexesOfObjectsPassingTest([](NSObject*, uint64_t, bool* stop) {
    *stop = true;
    return true;
  });
  EXPECT_EQ(first->count(), 1u);
}

TEST(NSArray, GivesEnumeratorsBothWays) {
  const Ref<NSArray> three = numbers({1, 2, 3});
  EXPECT_EQ(texts(*three->objectEnumerator()->allObjects()), "1 2 3");
  EXPECT_EQ(texts(*three->reverseObjectEnumerator()->allObjects()), "3 2 1");
}

TEST(NSArray, PerformsSelectorsOnItsElements) {
  const Ref<Item> a = make<Item>(1), b = make<Item>(5);
  const Ref<NSArray> array = NSArray::arrayWithObjects({a, b});
  array->makeObjectsPerformSelector("bump"_sel);
  array->makeObjectsPerformSelector_withObject("add:"_sel, nullptr);
  EXPECT_EQ(a->value(), 3);
  EXPECT_EQ(b->value(), 7);
}

TEST(NSArray, SortsStably) {
  const Ref<Item> a = make<Item>(2), b = make<Item>(1), c = make<Item>(2), d = make<Item>(1);
  const Ref<NSArray> array = NSArray::arrayWithObjects({a, b, c, d});
  const Ref<NSArray> sorted =
      array->sortedArrayUsingComparator([](Item* x, Item* y) { return compareValues(x->value(), y->value()); });
  const NSObject* const expected[] = {b, d, a, c};
  for (uint64_t i = 0; i < 4; ++i) EXPECT_EQ(sorted->objectAtIndex(i).get(), expected[i]) << i;
  EXPECT_EQ(array->firstObject().get(), a.get());
}

TEST(NSArray, SortsBySelectorAndByFunction) {
  const Ref<NSArray> array = numbers({3, 1, 2});
  EXPECT_EQ(texts(*array->sortedArrayUsingSelector("compare:"_sel)), "1 2 3");
  auto backwards = [](NSObject* a, NSObject* b, void* sign) {
    return compareValues(unbox<int>(a) * *static_cast<int*>(sign), unbox<int>(b) * *static_cast<int*>(sign));
  };
  int sign = -1;
  EXPECT_EQ(texts(*array->sortedArrayUsingFunction_context(backwards, &sign)), "3 2 1");
  EXPECT_THAT([&] { array->sortedArrayUsingSelector(Selector()); }, raises(NSInvalidArgumentException));
}

TEST(NSArray, JoinsTheDescriptionsOfItsElements) {
  EXPECT_THAT(NSArray::arrayWithObjects({"a"_ns, 1, u"é"_ns})->componentsJoinedByString(", "_ns), equals("a, 1, é"));
  EXPECT_THAT(NSArray::array()->componentsJoinedByString(", "_ns), equals(""));
  EXPECT_THAT(numbers({1, 2})->componentsJoinedByString(nullptr), equals("12"));
}

TEST(NSArray, IsEqualByItsElementsAndHashesAlike) {
  EXPECT_THAT(numbers({1, 2}), equals(numbers({1, 2})));
  EXPECT_EQ(numbers({1, 2})->hash(), numbers({1, 2})->mutableCopy()->hash());
  EXPECT_FALSE(numbers({1, 2})->isEqual(numbers({2, 1})));
  EXPECT_FALSE(numbers({1, 2})->isEqualToArray(numbers({1})));
  EXPECT_FALSE(numbers({1})->isEqual("1"_ns));
  EXPECT_FALSE(numbers({1})->isEqualToArray(nullptr));
  const Ref<NSArray> nested = NSArray::arrayWithObject(numbers({1, 2}));
  EXPECT_EQ(nested->hash(), NSArray::arrayWithObject(numbers({1, 2})->mutableCopy())->hash());
}

TEST(NSArray, DescribesWhatIsInIt) {
  EXPECT_THAT(NSArray::arrayWithObjects({"a"_ns, 2})->description(), equals("(\n    a,\n    2\n)"));
  EXPECT_THAT(NSArray::array()->description(), equals("(\n)"));
  const Ref<NSArray> nested = NSArray::arrayWithObjects({"a b"_ns, numbers({1})});
  EXPECT_THAT(nested->description(), equals("(\n    \"a b\",\n    (\n        1\n    )\n)"));
  EXPECT_THAT(NSArray::arrayWithObject("say \"no\"\n"_ns)->description(), equals("(\n    \"say \\\"no\\\"\\n\"\n)"));
}

TEST(NSArray, InsideItselfDescribesAndHashesWithoutEnd) {
  const Ref<NSMutableArray> a = NSMutableArray::array(), b = NSMutableArray::array();
  a->addObject(a);
  a->addObject(a);
  b->addObject(b);
  b->addObject(b);
  EXPECT_THAT(a->description(), equals("(\n    (...),\n    (...)\n)"));
  EXPECT_EQ(a->hash(), b->hash());
  EXPECT_TRUE(a->isEqual(a));
  EXPECT_THAT([&] { a->isEqual(b); }, raises(NSGenericException, "nested deeper than 512"));
  EXPECT_TRUE(numbers({1})->isEqual(numbers({1})));  // and the depth is forgotten
  a->removeAllObjects();
  b->removeAllObjects();
}

TEST(NSArray, DescribesAProxyWithoutSendingItAnything) {
  const Ref<Forwarder> proxy = make<Forwarder>("target"_ns);
  EXPECT_NE(NSArray::arrayWithObject(proxy)->description()->utf8().find("<Forwarder: 0x"), std::string::npos);
}

TEST(NSArray, DiesWithoutDeepStackWhenNestedDeeply) {
  Ref<NSArray> nested = NSArray::array();
  for (int i = 0; i < 1'000'000; ++i) nested = NSArray::arrayWithObject(nested);
  nested = nullptr;
}

TEST(NSArray, IsARange) {
  const Ref<NSArray> array = numbers({5, 3, 4});
  EXPECT_EQ(std::ranges::distance(*array), 3);
  EXPECT_EQ(std::ranges::count_if(*array, [](NSObject* each) { return unbox<int>(each) > 3; }), 2);
  const auto smallest = std::ranges::min_element(*array, {}, [](NSObject* each) { return unbox<int>(each); });
  EXPECT_EQ(smallest - array->begin(), 1);
  EXPECT_EQ(unbox<int>(array->begin()[2]), 4);
}

TEST(NSArray, AllocatesNothingWhileWalked) {
  const Ref<NSArray> array = numbers({1, 2, 3, 4});
  int sum = 0;
  const auto walk = [&] {
    for (NSObject* each : *array) sum += cast<NSNumber>(each)->intValue();
    for (NSNumber* each : elements<NSNumber>(array)) sum += each->intValue();
    array->enumerateObjectsUsingBlock([&](NSNumber* each, uint64_t, bool*) { sum += each->intValue(); });
    forEachIn(array, [&](NSNumber* each) { sum += each->intValue(); });
  };
  walk();  // the classes are built when first asked for
  const AllocationCount count;
  walk();
  EXPECT_EQ(count.made(), 0u);
  EXPECT_EQ(sum, 80);
}

TEST(NSArray, AnswersMessagesByName) {
  const Ref<NSArray> array = numbers({1, 2, 3});
  EXPECT_EQ(send<uint64_t>(array, "count"_sel), 3u);
  EXPECT_THAT(send<Ref<NSObject>>(array, "objectAtIndex:"_sel, 1), equals(box(2)));
  EXPECT_THAT(send<Ref<NSObject>>(array, "subarrayWithRange:"_sel, NSMakeRange(0, 1)), equals(numbers({1})));
}

TEST(NSArray, LivesThroughACallbackThatDropsIt) {
  Ref<NSArray> array = NSArray::arrayWithObjects({make<Item>(1), make<Item>(2), make<Item>(3)});
  int64_t sum = 0;
  array->enumerateObjectsUsingBlock([&](Item* each, uint64_t, bool*) {
    array = nullptr;
    sum += each->value();
  });
  EXPECT_EQ(sum, 6);
}
