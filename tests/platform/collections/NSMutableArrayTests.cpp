// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableArray.h"

#include <gtest/gtest.h>

#include <random>

#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSMutableArray> numbers(std::initializer_list<int> values) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : values) array->addObject(box(each));
  return array;
}

}  // namespace

TEST(NSMutableArray, GrowsAndChangesPlaces) {
  const Ref<NSMutableArray> array = numbers({1, 2});
  array->insertObject_atIndex(box(0), 0);
  array->insertObject_atIndex(box(9), 3);
  EXPECT_EQ(texts(*array), "0 1 2 9");
  array->replaceObjectAtIndex_withObject(3, box(3));
  array->exchangeObjectAtIndex_withObjectAtIndex(0, 3);
  EXPECT_EQ(texts(*array), "3 1 2 0");
  array->setObject_atIndexedSubscript(box(7), 4);
  array->setObject_atIndexedSubscript(box(8), 0);
  EXPECT_EQ(texts(*array), "8 1 2 0 7");
  array->replaceObjectsInRange_withObjectsFromArray({1, 3}, numbers({5}));
  EXPECT_EQ(texts(*array), "8 5 7");
}

TEST(NSMutableArray, RemovesInEachWay) {
  const Ref<NSMutableArray> array = numbers({1, 2, 1, 3, 1});
  array->removeObject_inRange(box(1), {1, 2});
  EXPECT_EQ(texts(*array), "1 2 3 1");
  array->removeObject(box(1));
  EXPECT_EQ(texts(*array), "2 3");
  array->removeObject(box(77));
  array->removeObject(nullptr);
  EXPECT_EQ(texts(*array), "2 3");
  array->removeObjectAtIndex(0);
  array->removeLastObject();
  EXPECT_EQ(array->count(), 0u);
  array->setArray(numbers({1, 2, 3, 4}));
  array->removeObjectsInRange({1, 2});
  EXPECT_EQ(texts(*array), "1 4");
  array->removeObjectsInArray(numbers({4, 4, 5}));
  array->removeObjectsInArray(nullptr);
  EXPECT_EQ(texts(*array), "1");
  array->removeAllObjects();
  EXPECT_EQ(array->count(), 0u);
}

TEST(NSMutableArray, RemovesByIdentityOnly) {
  const Ref<Item> a = make<Item>(1), b = make<Item>(1);
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({a, b, a});
  array->removeObjectIdenticalTo(a);
  ASSERT_EQ(array->count(), 1u);
  EXPECT_EQ(array->firstObject().get(), b.get());
}

TEST(NSMutableArray, RemovesAllOfAnotherAlsoWhenItIsItself) {
  const Ref<NSMutableArray> array = numbers({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  array->addObjectsFromArray(array);
  EXPECT_EQ(array->count(), 22u);
  array->setArray(array);
  EXPECT_EQ(array->count(), 22u);
  array->removeObjectsInArray(array);
  EXPECT_EQ(array->count(), 0u);
}

TEST(NSMutableArray, InsertsAndRemovesAtIndexes) {
  const Ref<NSMutableArray> array = numbers({1, 2, 3});
  Ref<NSMutableIndexSet> indexes = make<NSMutableIndexSet>();
  indexes->addIndexesInRange({0, 2});
  indexes->addIndex(4);
  array->insertObjects_atIndexes(numbers({7, 8, 9}), indexes);
  EXPECT_EQ(texts(*array), "7 8 1 2 9 3");
  array->removeObjectsAtIndexes(indexes);
  EXPECT_EQ(texts(*array), "1 2 3");
  indexes->addIndex(100);
  EXPECT_THAT([&] { array->removeObjectsAtIndexes(indexes); }, raises(NSRangeException, "index 100"));
  EXPECT_THAT([&] { array->insertObjects_atIndexes(numbers({1}), indexes); },
              raises(NSInvalidArgumentException, "1 objects for 4 indexes"));
  EXPECT_THAT([&] { array->insertObjects_atIndexes(numbers({1, 2, 3, 4}), indexes); }, raises(NSRangeException));
  EXPECT_EQ(texts(*array), "1 2 3");
}

TEST(NSMutableArray, RefusesNullAndPlacesPastItsEnd) {
  const Ref<NSMutableArray> array = numbers({1});
  const struct Row {
    const char* claim;
    std::function<void()> body;
    NSString* name;
    const char* reason;
  } rows[] = {
      {"add null", [&] { array->addObject(nullptr); }, NSInvalidArgumentException, "-[NSMutableArray addObject:]"},
      {"insert null", [&] { array->insertObject_atIndex(nullptr, 0); }, NSInvalidArgumentException, "insertObject"},
      {"replace by null", [&] { array->replaceObjectAtIndex_withObject(0, nullptr); }, NSInvalidArgumentException,
       "replaceObjectAtIndex:withObject:"},
      {"insert past the end", [&] { array->insertObject_atIndex("x"_ns, 2); }, NSRangeException, "index 2"},
      {"replace past the end", [&] { array->replaceObjectAtIndex_withObject(1, "x"_ns); }, NSRangeException, "index 1"},
      {"remove past the end", [&] { array->removeObjectAtIndex(1); }, NSRangeException, "[0 .. 0]"},
      {"remove a wrapping range", [&] { array->removeObjectsInRange({1, UINT64_MAX}); }, NSRangeException, "Range"},
      {"exchange past the end", [&] { array->exchangeObjectAtIndex_withObjectAtIndex(0, 1); }, NSRangeException, "1"},
      {"remove the last of none", [] { NSMutableArray::array()->removeLastObject(); }, NSRangeException, "empty"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(row.body, raises(row.name, row.reason));
    EXPECT_EQ(texts(*array), "1");
  }
}

TEST(NSMutableArray, TakesAWildCapacityAsAHint) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithCapacity(UINT64_MAX);
  array->addObject("x"_ns);
  EXPECT_EQ(array->count(), 1u);
}

TEST(NSMutableArray, HoldsAndReleasesEachElementOnce) {
  const LeakGuard guard;
  Weak<Item> weak;
  const Ref<NSMutableArray> array = NSMutableArray::array();
  {
    const Ref<Item> item = make<Item>(1);
    weak = item.get();
    array->addObject(item);
    array->addObject(item);
  }
  array->removeObjectAtIndex(0);
  EXPECT_TRUE(weak.lock());
  array->replaceObjectAtIndex_withObject(0, "other"_ns);
  EXPECT_FALSE(weak.lock());
}

TEST(NSMutableArray, RaisesWhereItIsChangedWhileWalked) {
  const Ref<NSMutableArray> array = numbers({1, 2, 3});
  const std::string text = "*** Collection <NSMutableArray: 0x";
  auto change = [&](auto&&...) { array->addObject("more"_ns); };
  EXPECT_THAT([&] { forEachIn(array, change); }, raises(NSGenericException, text));
  EXPECT_THAT([&] { array->enumerateObjectsUsingBlock([&](NSObject*, uint64_t, bool*) { change(); }); },
              raises(NSGenericException, "> was mutated while being enumerated."));
  EXPECT_THAT(
      [&] {
        for (NSObject* each : *array) change(each);
      },
      raises(NSGenericException, text));
  EXPECT_THAT(
      [&] {
        array->indexesOfObjectsPassingTest([&](NSObject*, uint64_t, bool*) {
          change();
          return true;
        });
      },
      raises(NSGenericException, text));
}

TEST(NSMutableArray, KeepsTheElementAliveThatACallbackRemoves) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({make<Item>(1)});
  array->enumerateObjectsUsingBlock([&](Item* each, uint64_t, bool*) {
    array->removeAllObjects();
    EXPECT_EQ(each->value(), 1);
  });
  array->addObject(make<Item>(2));
  forEachIn(array, [&](Item* each) {
    array->removeAllObjects();
    EXPECT_EQ(each->value(), 2);
  });
}

TEST(NSMutableArray, StaysWholeWhereAComparisonChangesIt) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({make<Item>(1), make<Item>(2)});
  const Ref<Item> wanted = make<Item>(2);
  wanted->onEqual = [&] { array->removeAllObjects(); };
  EXPECT_THAT([&] { array->removeObject(wanted); }, raises(NSGenericException, "was mutated"));
  array->setArray(NSArray::arrayWithObjects({make<Item>(1), make<Item>(2)}));
  EXPECT_EQ(array->indexOfObject(wanted), NSNotFound);
  EXPECT_EQ(array->count(), 0u);
}

TEST(NSMutableArray, SortsInPlace) {
  const Ref<NSMutableArray> array = numbers({3, 1, 2});
  array->sortUsingSelector("compare:"_sel);
  EXPECT_EQ(texts(*array), "1 2 3");
  array->sortUsingComparator([](NSNumber* a, NSNumber* b) { return b->compare(a); });
  EXPECT_EQ(texts(*array), "3 2 1");
  array->sortUsingFunction_context(
      [](NSObject* a, NSObject* b, void*) { return cast<NSNumber>(a)->compare(cast<NSNumber>(b)); }, nullptr);
  EXPECT_EQ(texts(*array), "1 2 3");
}

TEST(NSMutableArray, IsAsBeforeWhereItsComparatorRaises) {
  const Ref<NSMutableArray> array = numbers({3, 1, 2});
  EXPECT_THAT(
      [&] {
        array->sortUsingComparator([](NSObject*, NSObject*) -> NSComparisonResult { raise(NSGenericException, "no"); });
      },
      raises(NSGenericException, "no"));
  EXPECT_EQ(texts(*array), "3 1 2");
  EXPECT_THAT(
      [&] {
        array->sortUsingComparator([&](NSObject*, NSObject*) {
          array->removeAllObjects();
          return NSOrderedSame;
        });
      },
      raises(NSGenericException, "was mutated"));
}

TEST(NSMutableArray, SurvivesAComparatorThatContradictsItself) {
  std::mt19937 random(1);
  for (const uint64_t count : {2u, 9u, 17u, 1000u}) {
    const Ref<NSMutableArray> array = NSMutableArray::array();
    for (uint64_t i = 0; i < count; ++i) array->addObject(box(i));
    array->sortUsingComparator(
        [&](NSObject*, NSObject*) { return static_cast<NSComparisonResult>(int(random() % 3) - 1); });
    std::vector<bool> seen(count);
    for (NSNumber* each : elements<NSNumber>(array)) seen[each->unsignedLongValue()] = true;
    EXPECT_EQ(std::count(seen.begin(), seen.end(), true), static_cast<std::ptrdiff_t>(count));
  }
}

TEST(NSMutableArray, IsAListOfTheStandardLibraryUnderRandomOperations) {
  std::mt19937 random(42);
  const Ref<NSMutableArray> array = NSMutableArray::array();
  std::vector<int> model;
  for (int step = 0; step < 100'000; ++step) {
    const int value = static_cast<int>(random() % 50);
    const size_t at = random() % (model.size() + 1);
    switch (random() % 8) {
      case 0:
      case 1: array->addObject(box(value)), model.push_back(value); break;
      case 2:
        array->insertObject_atIndex(box(value), at), model.insert(model.begin() + std::ptrdiff_t(at), value);
        break;
      case 3: array->removeObject(box(value)), std::erase(model, value); break;
      case 4:
        if (at < model.size()) array->removeObjectAtIndex(at), model.erase(model.begin() + std::ptrdiff_t(at));
        break;
      case 5:
        if (!model.empty()) array->removeLastObject(), model.pop_back();
        break;
      case 6:
        if (at < model.size()) array->replaceObjectAtIndex_withObject(at, box(value)), model[at] = value;
        break;
      default: {
        const auto found = std::find(model.begin(), model.end(), value);
        const uint64_t index = found == model.end() ? NSNotFound : static_cast<uint64_t>(found - model.begin());
        ASSERT_EQ(array->indexOfObject(box(value)), index);
      }
    }
    ASSERT_EQ(array->count(), model.size());
  }
  for (size_t i = 0; i < model.size(); ++i) ASSERT_EQ(unbox<int>(array->objectAtIndex(i)), model[i]);
}
