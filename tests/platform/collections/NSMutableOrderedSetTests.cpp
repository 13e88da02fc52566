// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSMutableOrderedSet> numbers(std::initializer_list<int> values) {
  Ref<NSMutableOrderedSet> set = NSMutableOrderedSet::orderedSet();
  for (const int each : values) set->addObject(box(each));
  return set;
}

}  // namespace

TEST(NSMutableOrderedSet, LeavesAnElementWhereItIs) {
  const Ref<NSMutableOrderedSet> set = numbers({1, 2});
  set->addObject(box(1));
  set->insertObject_atIndex(box(2), 0);
  set->replaceObjectAtIndex_withObject(0, box(2));
  EXPECT_EQ(texts(*set), "1 2");
  const Ref<NSNumber> one = box(1.0);
  set->replaceObjectAtIndex_withObject(0, one);
  EXPECT_EQ(set->firstObject().get(), one.get());
}

TEST(NSMutableOrderedSet, ChangesPlaces) {
  const Ref<NSMutableOrderedSet> set = numbers({1, 2, 3});
  set->insertObject_atIndex(box(0), 0);
  set->setObject_atIndex(box(9), 4);
  set->setObject_atIndex(box(8), 1);
  EXPECT_EQ(texts(*set), "0 8 2 3 9");
  set->exchangeObjectAtIndex_withObjectAtIndex(0, 4);
  EXPECT_EQ(texts(*set), "9 8 2 3 0");
  set->removeObjectAtIndex(1);
  set->removeObject(box(2));
  set->removeObject(nullptr);
  EXPECT_EQ(texts(*set), "9 3 0");
  EXPECT_EQ(set->indexOfObject(box(0)), 2u);
  set->sortUsingComparator([](NSNumber* a, NSNumber* b) { return a->compare(b); });
  EXPECT_EQ(texts(*set), "0 3 9");
  EXPECT_EQ(set->indexOfObject(box(9)), 2u);
  set->removeObjectsAtIndexes(NSIndexSet::indexSetWithIndexesInRange({0, 2}));
  set->removeObjectsInArray(NSArray::arrayWithObjects({7}));
  EXPECT_EQ(texts(*set), "9");
}

TEST(NSMutableOrderedSet, CombinesWithOtherSets) {
  const Ref<NSMutableOrderedSet> set = numbers({3, 1, 2});
  set->unionOrderedSet(numbers({5, 1, 4}));
  EXPECT_EQ(texts(*set), "3 1 2 5 4");
  set->minusOrderedSet(numbers({1, 5}));
  EXPECT_EQ(texts(*set), "3 2 4");
  set->intersectOrderedSet(numbers({4, 3}));
  EXPECT_EQ(texts(*set), "3 4");
  set->unionSet(numbers({7})->set());
  set->minusSet(numbers({3})->set());
  set->intersectSet(numbers({7, 8})->set());
  EXPECT_EQ(texts(*set), "7");
  set->unionOrderedSet(set);
  set->intersectOrderedSet(set);
  set->unionOrderedSet(nullptr);
  set->minusOrderedSet(nullptr);
  EXPECT_EQ(texts(*set), "7");
  set->minusOrderedSet(set);
  EXPECT_EQ(set->count(), 0u);
}

TEST(NSMutableOrderedSet, RefusesNullAndPlacesPastItsEnd) {
  const Ref<NSMutableOrderedSet> set = numbers({1});
  EXPECT_THAT([&] { set->addObject(nullptr); },
              raises(NSInvalidArgumentException, "-[NSMutableOrderedSet addObject:]"));
  EXPECT_THAT([&] { set->insertObject_atIndex(box(2), 2); }, raises(NSRangeException, "index 2"));
  EXPECT_THAT([&] { set->removeObjectAtIndex(1); }, raises(NSRangeException, "removeObjectAtIndex:"));
  EXPECT_THAT([&] { set->replaceObjectAtIndex_withObject(1, box(2)); }, raises(NSRangeException));
  EXPECT_THAT([&] { set->exchangeObjectAtIndex_withObjectAtIndex(0, 1); }, raises(NSRangeException));
  EXPECT_THAT([&] { set->setObject_atIndex(box(2), 2); }, raises(NSRangeException));
}

TEST(NSMutableOrderedSet, RaisesWhereItIsChangedWhileWalked) {
  const Ref<NSMutableOrderedSet> set = numbers({1, 2, 3});
  const char* text = "*** Collection <NSMutableOrderedSet: 0x";
  EXPECT_THAT([&] { forEachIn(set, [&](NSObject*) { set->removeObjectAtIndex(0); }); },
              raises(NSGenericException, text));
  EXPECT_THAT([&] { set->enumerateObjectsUsingBlock([&](NSObject*, uint64_t, bool*) { set->addObject(box(9)); }); },
              raises(NSGenericException, text));
  EXPECT_THAT(
      [&] {
        set->sortUsingComparator([&](NSObject*, NSObject*) {
          set->addObject(box(set->count() + 50));
          return NSOrderedSame;
        });
      },
      raises(NSGenericException, text));
}

TEST(NSMutableOrderedSet, IsAListWithoutTwinsUnderRandomOperations) {
  const LeakGuard guard;
  std::mt19937 random(11);
  const Ref<NSMutableOrderedSet> set = NSMutableOrderedSet::orderedSetWithCapacity(4);
  std::vector<int> model;
  for (int step = 0; step < 50'000; ++step) {
    const int value = static_cast<int>(random() % (step / 10'000 % 2 ? 12 : 300));
    const auto found = std::find(model.begin(), model.end(), value);
    const size_t at = random() % (model.size() + 1);
    switch (random() % 6) {
      case 0:
        set->addObject(box(value));
        if (found == model.end()) model.push_back(value);
        break;
      case 1:
        set->insertObject_atIndex(box(value), at);
        if (found == model.end()) model.insert(model.begin() + std::ptrdiff_t(at), value);
        break;
      case 2:
        set->removeObject(box(value));
        if (found != model.end()) model.erase(found);
        break;
      case 3:
        if (at == model.size()) break;
        set->replaceObjectAtIndex_withObject(at, box(value));
        if (found == model.end()) model[at] = value;
        break;
      case 4:
        if (at == model.size() || at == 0) break;
        set->exchangeObjectAtIndex_withObjectAtIndex(at, at / 2);
        std::swap(model[at], model[at / 2]);
        break;
      default:
        ASSERT_EQ(set->indexOfObject(box(value)),
                  found == model.end() ? NSNotFound : static_cast<uint64_t>(found - model.begin()));
    }
    ASSERT_EQ(set->count(), model.size());
  }
  for (size_t i = 0; i < model.size(); ++i) ASSERT_EQ(unbox<int>(set->objectAtIndex(i)), model[i]);
}
