// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMapTable.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

TEST(NSMapTable, HoldsKeysThatCantBeCopied) {
  const LeakGuard guard;
  const Ref<NSMapTable> table = NSMapTable::strongToStrongObjectsMapTable();
  Weak<NSObject> weak;
  {
    const Ref<NSObject> key = make<NSObject>();
    weak = key.get();
    table->setObject_forKey("first"_ns, key);
    table->setObject_forKey("second"_ns, key);
    EXPECT_THAT(table->objectForKey(key), equals("second"));
    EXPECT_EQ(table->count(), 1u);
  }
  ASSERT_TRUE(weak.lock());
  table->removeObjectForKey(weak.lock());
  EXPECT_FALSE(weak.lock());
}

TEST(NSMapTable, KeepsTheOrderOfItsKeys) {
  const Ref<NSMapTable> table = NSMapTable::strongToStrongObjectsMapTable();
  for (int i = 0; i < 20; ++i) table->setObject_forKey(box(i * 10), box(i));
  table->removeObjectForKey(box(3));
  table->removeObjectForKey(box(77));
  table->removeObjectForKey(nullptr);
  EXPECT_EQ(table->keyEnumerator()->allObjects()->count(), 19u);
  EXPECT_THAT(table->objectEnumerator()->nextObject(), equals(box(0)));
  EXPECT_EQ(walked(table).size(), 19u);
  EXPECT_EQ(table->dictionaryRepresentation()->count(), 19u);
  EXPECT_EQ(cast<NSMapTable>(table->copy())->count(), 19u);
  int64_t sum = 0;
  for (const auto [key, value] : *table) sum += unbox<int>(key);
  EXPECT_EQ(sum, 187);
  table->removeAllObjects();
  EXPECT_EQ(table->count(), 0u);
}

TEST(NSMapTable, RefusesNullAndChangesWhileWalked) {
  const Ref<NSMapTable> table = NSMapTable::strongToStrongObjectsMapTable();
  EXPECT_THAT([&] { table->setObject_forKey(nullptr, "k"_ns); },
              raises(NSInvalidArgumentException, "-[NSMapTable setObject:forKey:]"));
  EXPECT_THAT([&] { table->setObject_forKey("v"_ns, nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_FALSE(table->objectForKey(nullptr));
  table->setObject_forKey("v"_ns, "a"_ns);
  table->setObject_forKey("v"_ns, "b"_ns);
  EXPECT_THAT([&] { forEachIn(table, [&](NSObject* key) { table->removeObjectForKey(key); }); },
              raises(NSGenericException, "was mutated"));
}
