// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSMutableSet, TakesObjects) {
  auto seen = quoll::NSMutableSet::set();
  seen->addObject(quoll::box("apple"));
  EXPECT_TRUE(seen->containsObject(quoll::box("apple")));
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSMutableSet> numbers(std::initializer_list<int> values) {
  Ref<NSMutableSet> set = NSMutableSet::set();
  for (const int each : values) set->addObject(box(each));
  return set;
}

}  // namespace

TEST(NSMutableSet, KeepsTheElementThatIsThere) {
  const Ref<Item> first = make<Item>(1), twin = make<Item>(1);
  const Ref<NSMutableSet> set = NSMutableSet::setWithObject(first);
  set->addObject(twin);
  EXPECT_EQ(set->anyObject().get(), first.get());
  set->removeObject(twin);
  EXPECT_EQ(set->count(), 0u);
  set->removeObject(twin);
  set->removeObject(nullptr);
  EXPECT_THAT([&] { set->addObject(nullptr); }, raises(NSInvalidArgumentException, "-[NSMutableSet addObject:]"));
}

TEST(NSMutableSet, CombinesWithOtherSets) {
  const Ref<NSMutableSet> set = numbers({1, 2, 3});
  set->unionSet(numbers({3, 4}));
  EXPECT_EQ(texts(*set), "1 2 3 4");
  set->minusSet(numbers({1, 9}));
  EXPECT_EQ(texts(*set), "2 3 4");
  set->intersectSet(numbers({4, 2}));
  EXPECT_EQ(texts(*set), "2 4");
  set->addObjectsFromArray(NSArray::arrayWithObjects({4, 5}));
  EXPECT_EQ(texts(*set), "2 4 5");
  set->setSet(numbers({8}));
  EXPECT_EQ(texts(*set), "8");
}

TEST(NSMutableSet, CombinesWithItselfAndWithNull) {
  const Ref<NSMutableSet> set = numbers({1, 2});
  set->unionSet(set);
  set->intersectSet(set);
  set->setSet(set);
  set->unionSet(nullptr);
  set->minusSet(nullptr);
  EXPECT_EQ(texts(*set), "1 2");
  set->minusSet(set);
  EXPECT_EQ(set->count(), 0u);
  set->addObject(box(1));
  set->intersectSet(nullptr);
  EXPECT_EQ(set->count(), 0u);
}

TEST(NSMutableSet, IsASetOfTheStandardLibraryUnderRandomOperations) {
  std::mt19937 random(3);
  const Ref<NSMutableSet> set = NSMutableSet::setWithCapacity(3);
  std::set<int> model;
  for (int step = 0; step < 100'000; ++step) {
    const int value = static_cast<int>(random() % (step / 20'000 % 2 ? 12 : 2000));
    switch (random() % 3) {
      case 0: set->addObject(box(value)), model.insert(value); break;
      case 1: set->removeObject(box(value)), model.erase(value); break;
      default: ASSERT_EQ(set->containsObject(box(value)), model.contains(value));
    }
    ASSERT_EQ(set->count(), model.size());
  }
  std::set<int> left;
  for (NSObject* each : *set) left.insert(unbox<int>(each));
  EXPECT_EQ(left, model);
}

TEST(NSMutableSet, TakesItsFirstElementManyTimesInLinearTime) {
  const Ref<NSMutableSet> set = NSMutableSet::set();
  for (int i = 0; i < 200'000; ++i) set->addObject(box(i));
  for (int i = 0; i < 200'000; ++i) {
    const Ref<NSObject> first = set->anyObject();
    ASSERT_EQ(unbox<int>(first), i);
    set->removeObject(first);
  }
  EXPECT_EQ(set->count(), 0u);
}

TEST(NSMutableSet, RaisesWhereItIsChangedWhileWalked) {
  const Ref<NSMutableSet> set = numbers({1, 2, 3});
  const char* text = "*** Collection <NSMutableSet: 0x";
  EXPECT_THAT([&] { forEachIn(set, [&](NSObject* each) { set->removeObject(each); }); },
              raises(NSGenericException, text));
  EXPECT_THAT(
      [&] {
        for (NSObject* each : *set) set->removeObject(each);
      },
      raises(NSGenericException, text));
  EXPECT_THAT(
      [&] { set->enumerateObjectsUsingBlock([&](NSObject*, bool*) { set->addObject(box(set->count() + 100)); }); },
      raises(NSGenericException, text));
}

TEST(NSMutableSet, ReleasesWhatItLetsGo) {
  const LeakGuard guard;
  const Ref<NSMutableSet> set = NSMutableSet::set();
  for (int i = 0; i < 100; ++i) set->addObject(make<Item>(i % 30));
  const Ref<NSMutableSet> others = NSMutableSet::set();
  for (int i = 0; i < 10; ++i) others->addObject(make<Item>(i));
  set->minusSet(others);
  set->unionSet(others);
  set->intersectSet(others);
  EXPECT_EQ(set->count(), 10u);
}
