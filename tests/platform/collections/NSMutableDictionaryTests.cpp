// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSMutableDictionary, SetsAndFinds) {
  auto seen = quoll::NSMutableDictionary::dictionary();
  seen->setObject_forKey(quoll::box(3), quoll::box("apples"));
  EXPECT_EQ(quoll::unbox<int>(seen->objectForKey(quoll::box("apples"))), 3);
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

std::string entries(const NSDictionary* dictionary) {
  std::string all;
  for (auto [key, value] : *dictionary) all += described(key) + "=" + described(value) + " ";
  return all;
}

Ref<NSMutableDictionary> letters() {
  return NSMutableDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"c"_ns, 3}});
}

}  // namespace

TEST(NSMutableDictionary, KeepsItsOrderWhileChanged) {
  const Ref<NSMutableDictionary> dictionary = letters();
  dictionary->setObject_forKey(box(9), "b"_ns);
  EXPECT_EQ(entries(dictionary), "a=1 b=9 c=3 ");
  dictionary->removeObjectForKey("a"_ns);
  dictionary->setObject_forKey(box(1), "a"_ns);
  EXPECT_EQ(entries(dictionary), "b=9 c=3 a=1 ");
  dictionary->removeObjectsForKeys(NSArray::arrayWithObjects({"c"_ns, "z"_ns}));
  EXPECT_EQ(entries(dictionary), "b=9 a=1 ");
  dictionary->setObject_forKeyedSubscript(nullptr, "b"_ns);
  dictionary->setObject_forKeyedSubscript(box(4), "d"_ns);
  EXPECT_EQ(entries(dictionary), "a=1 d=4 ");
  dictionary->removeAllObjects();
  EXPECT_EQ(dictionary->count(), 0u);
}

TEST(NSMutableDictionary, TakesTheEntriesOfAnother) {
  const Ref<NSMutableDictionary> dictionary = letters();
  dictionary->addEntriesFromDictionary(NSDictionary::dictionaryWithEntries({{"c"_ns, 7}, {"d"_ns, 8}}));
  dictionary->addEntriesFromDictionary(dictionary);
  dictionary->addEntriesFromDictionary(nullptr);
  EXPECT_EQ(entries(dictionary), "a=1 b=2 c=7 d=8 ");
  dictionary->setDictionary(dictionary);
  EXPECT_EQ(dictionary->count(), 4u);
  dictionary->setDictionary(NSDictionary::dictionaryWithEntries({{"x"_ns, 1}}));
  EXPECT_EQ(entries(dictionary), "x=1 ");
  dictionary->setDictionary(nullptr);
  EXPECT_EQ(dictionary->count(), 0u);
}

TEST(NSMutableDictionary, RefusesNullByName) {
  const Ref<NSMutableDictionary> dictionary = letters();
  EXPECT_THAT([&] { dictionary->setObject_forKey(nullptr, "a"_ns); },
              raises(NSInvalidArgumentException, "-[NSMutableDictionary setObject:forKey:]: nil argument"));
  EXPECT_THAT([&] { dictionary->setObject_forKey("a"_ns, nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([&] { dictionary->removeObjectForKey(nullptr); },
              raises(NSInvalidArgumentException, "removeObjectForKey:"));
  EXPECT_EQ(dictionary->count(), 3u);
}

TEST(NSMutableDictionary, RefusesAKeyThatCantBeCopied) {
  const LeakGuard guard;
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  const Ref<NSObject> key = make<NSObject>();
  EXPECT_THAT([&] { dictionary->setObject_forKey(box(1), key); }, raises(NSInvalidArgumentException, "copyWithZone:"));
  EXPECT_EQ(dictionary->count(), 0u);
}

TEST(NSMutableDictionary, HoldsAndReleasesKeysAndValues) {
  const LeakGuard guard;
  Weak<Item> weak;
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionaryWithCapacity(UINT64_MAX);
  for (int i = 0; i < 100; ++i) {
    const Ref<Item> value = make<Item>(i);
    weak = value.get();
    dictionary->setObject_forKey(value, make<Item>(i % 20));
  }
  EXPECT_TRUE(weak.lock());
  dictionary->setObject_forKey("other"_ns, make<Item>(19));
  EXPECT_FALSE(weak.lock());
  dictionary->removeObjectForKey(make<Item>(3));
  EXPECT_EQ(dictionary->count(), 19u);
}

TEST(NSMutableDictionary, RaisesWhereItIsChangedWhileWalked) {
  const Ref<NSMutableDictionary> dictionary = letters();
  const char* text = "*** Collection <NSMutableDictionary: 0x";
  EXPECT_THAT([&] { forEachIn(dictionary, [&](NSObject* key) { dictionary->removeObjectForKey(key); }); },
              raises(NSGenericException, text));
  EXPECT_THAT(
      [&] {
        for (auto [key, value] : *dictionary) dictionary->setObject_forKey(value, "new"_ns);
      },
      raises(NSGenericException, text));
  EXPECT_THAT(
      [&] {
        dictionary->enumerateKeysAndObjectsUsingBlock([&](NSString* key, NSNumber* value, bool*) {
          dictionary->removeAllObjects();
          EXPECT_GT(key->length() + value->unsignedIntValue(), 0u);  // both still live
        });
        dictionary->setObject_forKey(box(1), "x"_ns);
        dictionary->setObject_forKey(box(1), "y"_ns);
        dictionary->keysOfEntriesPassingTest([&](NSObject*, NSObject*, bool*) {
          dictionary->removeAllObjects();
          dictionary->setObject_forKey(box(1), "z"_ns);
          return true;
        });
      },
      raises(NSGenericException, text));
}

TEST(NSMutableDictionary, IsAMapOfTheStandardLibraryUnderRandomOperations) {
  std::mt19937 random(7);
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  std::map<int, int> model;
  for (int step = 0; step < 100'000; ++step) {
    const int range = step / 20'000 % 2 ? 12 : 3000;  // small and large by turns
    const int key = static_cast<int>(random() % static_cast<unsigned>(range)), value = step;
    switch (random() % 5) {
      case 0:
      case 1: dictionary->setObject_forKey(box(value), box(key)), model[key] = value; break;
      case 2:
      case 3: dictionary->removeObjectForKey(box(key)), model.erase(key); break;
      default: {
        const Ref<NSObject> found = dictionary->objectForKey(box(key));
        const auto expected = model.find(key);
        ASSERT_EQ(static_cast<bool>(found), expected != model.end());
        if (found) {
          ASSERT_EQ(unbox<int>(found), expected->second);
        }
      }
    }
    ASSERT_EQ(dictionary->count(), model.size());
  }
  std::map<int, int> left;
  for (auto [key, value] : *dictionary) left[unbox<int>(key)] = unbox<int>(value);
  EXPECT_EQ(left, model);
  EXPECT_THAT(dictionary->copy(), equals(dictionary));
}

TEST(NSMutableDictionary, TellsKeysOfOneHashApart) {
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  for (int i = 0; i < 200; ++i) dictionary->setObject_forKey(box(i), make<Item>(i, 5));
  for (int i = 0; i < 200; i += 2) dictionary->removeObjectForKey(make<Item>(i, 5));
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(static_cast<bool>(dictionary->objectForKey(make<Item>(i, 5))), i % 2 == 1) << i;
  }
}
