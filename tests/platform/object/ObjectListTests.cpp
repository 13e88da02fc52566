// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/ObjectList.h"

#include <gtest/gtest.h>

#include "QuollFoundation/testing.h"
#include "tests/support/SampleObjects.h"

namespace {

using namespace quoll;
using testsupport::Counter;

TEST(ObjectList, OwnsWhatItLists) {
  LeakGuard guard;
  Weak<Counter> watched;
  {
    Ref<Counter> counter = make<Counter>();
    watched = counter.get();
    const Ref<ObjectList> list = objects(counter, nullptr);
    counter = nullptr;
    EXPECT_TRUE(watched.lock());
    EXPECT_EQ(list->count(), 2u);
  }
  EXPECT_FALSE(watched.lock());
}

TEST(ObjectList, KeepsNullsAndTheOrder) {
  const Ref<Counter> a = make<Counter>(), b = make<Counter>();
  const Ref<ObjectList> list = objects(a, nullptr, b);
  const std::vector<Ref<NSObject>> held(list->begin(), list->end());
  ASSERT_EQ(held.size(), 3u);
  EXPECT_EQ(held[0], a.get());
  EXPECT_EQ(held[1], nullptr);
  EXPECT_EQ(held[2], b.get());
}

TEST(ObjectList, GivesItsFirstAndTheRest) {
  const Ref<Counter> a = make<Counter>(), b = make<Counter>();
  const Ref<ObjectList> list = objects(a, b);
  EXPECT_EQ(list->first(), a.get());
  EXPECT_EQ(list->rest()->first(), b.get());
  EXPECT_EQ(list->rest()->rest()->count(), 0u);
}

TEST(ObjectList, HasNoFirstWhenEmpty) {
  EXPECT_EQ(objects()->first(), nullptr);
  EXPECT_EQ(objects()->rest()->count(), 0u);
}

}  // namespace
