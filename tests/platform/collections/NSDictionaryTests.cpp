// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSDictionary.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"
#include "tests/support/AllocationCount.h"

TEST(NSDictionary, GivesItsEntriesInOrder) {
  auto ages = quoll::NSDictionary::dictionaryWithEntries({{"Ann", 31}, {"Bo", 28}});
  std::string texts;
  for (auto [name, age] : *ages) texts += name->description()->utf8() + ": " + age->description()->utf8() + "\n";
  EXPECT_EQ(texts, "Ann: 31\nBo: 28\n");
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSDictionary> letters() { return NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"c"_ns, 3}}); }

std::string entries(const NSDictionary* dictionary) {
  std::string all;
  for (auto [key, value] : *dictionary) all += described(key) + "=" + described(value) + " ";
  return all;
}

static_assert(std::ranges::forward_range<NSDictionary>);

TEST(NSDictionary, RefusesNullInPlaceOfKeysAndObjects) {
  EXPECT_THAT([] { NSDictionary::dictionaryWithObjects_forKeys_count(nullptr, nullptr, 2); },
              raises(NSInvalidArgumentException, "count:"));
}

}  // namespace

TEST(NSDictionary, IsMadeInEachWay) {
  const Ref<NSArray> keys = NSArray::arrayWithObjects({"a"_ns, "b"_ns, "c"_ns});
  const Ref<NSArray> values = NSArray::arrayWithObjects({1, 2, 3});
  EXPECT_THAT(NSDictionary::dictionaryWithObjects_forKeys(values, keys), equals(letters()));
  EXPECT_THAT(NSDictionary::dictionaryWithObjectsAndKeys({1, "a"_ns, 2, "b"_ns, 3, "c"_ns}), equals(letters()));
  EXPECT_THAT(NSDictionary::dictionaryWithDictionary(letters()), equals(letters()));
  EXPECT_THAT(NSDictionary::initWithObjects_forKeys(values, keys), equals(letters()));
  EXPECT_EQ(NSDictionary::dictionary()->count(), 0u);
  EXPECT_EQ(entries(NSDictionary::dictionaryWithObject_forKey(box(1), "a"_ns)), "a=1 ");
  EXPECT_EQ(NSDictionary::dictionaryWithDictionary(nullptr)->count(), 0u);
  EXPECT_EQ(NSMutableDictionary::dictionaryWithDictionary(letters())->isa(), NSMutableDictionary::classObject());
  EXPECT_THAT(send<Ref<NSDictionary>>(NSDictionary::classObject(), "dictionaryWithObjects:forKeys:"_sel, values, keys),
              equals(letters()));
}

TEST(NSDictionary, RefusesListsThatDontPairUp) {
  EXPECT_THAT([] { NSDictionary::dictionaryWithObjectsAndKeys({1, "a"_ns, 2}); },
              raises(NSInvalidArgumentException, "value 2 has no key"));
  EXPECT_EQ(NSDictionary::dictionaryWithObjectsAndKeys({1, "a"_ns, nullptr, "b"_ns})->count(), 1u);
  EXPECT_THAT([] { NSDictionary::dictionaryWithObjects_forKeys(NSArray::arrayWithObject(box(1)), NSArray::array()); },
              raises(NSInvalidArgumentException, "-[NSDictionary initWithObjects:forKeys:]: 1 objects for 0 keys"));
  EXPECT_THAT([] { NSDictionary::dictionaryWithEntries({{"a"_ns, nullptr}}); },
              raises(NSInvalidArgumentException, "nil argument"));
}

TEST(NSDictionary, KeepsTheFirstPlaceAndTheLastValueOfAKey) {
  EXPECT_EQ(entries(NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"a"_ns, 3}})), "a=3 b=2 ");
}

TEST(NSDictionary, FindsByEqualityOfKeysHoweverMany) {
  for (const int count : {0, 1, 7, 8, 9, 10, 100, 1000}) {
    const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
    for (int i = 0; i < count; ++i) dictionary->setObject_forKey(box(i * i), box(i));
    const Ref<NSDictionary> copy = dictionary->copy();
    for (int i = 0; i < count; ++i) {
      ASSERT_EQ(unbox<int>(dictionary->objectForKey(box(static_cast<int64_t>(i)))), i * i);
      ASSERT_EQ(unbox<int>(copy->objectForKey(box(static_cast<double>(i)))), i * i);
    }
    EXPECT_FALSE(dictionary->objectForKey(box(-1)));
    EXPECT_FALSE(copy->objectForKey("0"_ns));
    EXPECT_FALSE(copy->objectForKey(nullptr));
  }
}

TEST(NSDictionary, CopiesItsKeysOnce) {
  const Ref<NSMutableString> key = "a"_ns->mutableCopy();
  const Ref<NSDictionary> dictionary = NSDictionary::dictionaryWithObject_forKey(box(1), key);
  key->appendString("b"_ns);
  EXPECT_EQ(entries(dictionary), "a=1 ");
  EXPECT_TRUE(dictionary->objectForKey("a"_ns));
  const Ref<Item> item = make<Item>(1);
  const Ref<NSMutableDictionary> items = NSMutableDictionary::dictionary();
  items->setObject_forKey(box(1), item);
  items->setObject_forKey(box(2), item);
  EXPECT_EQ(item->copies, 1);
}

TEST(NSDictionary, ListsKeysAndValues) {
  EXPECT_EQ(texts(*letters()->allKeys()), "a b c");
  EXPECT_EQ(texts(*letters()->allValues()), "1 2 3");
  const Ref<NSDictionary> twice = NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"c"_ns, 1}});
  EXPECT_EQ(texts(*twice->allKeysForObject(box(1))), "a c");
  EXPECT_EQ(texts(*letters()->objectsForKeys_notFoundMarker(NSArray::arrayWithObjects({"c"_ns, "z"_ns}), "-"_ns)),
            "3 -");
  EXPECT_EQ(texts(*letters()->keyEnumerator()->allObjects()), "a b c");
  EXPECT_EQ(texts(*letters()->objectEnumerator()->allObjects()), "1 2 3");
}

TEST(NSDictionary, SortsKeysByTheirValues) {
  const Ref<NSDictionary> scores = NSDictionary::dictionaryWithEntries({{"a"_ns, 3}, {"b"_ns, 1}, {"c"_ns, 2}});
  EXPECT_EQ(texts(*scores->keysSortedByValueUsingSelector("compare:"_sel)), "b c a");
  EXPECT_EQ(texts(*scores->keysSortedByValueUsingComparator([](NSNumber* a, NSNumber* b) { return b->compare(a); })),
            "a c b");
}

TEST(NSDictionary, WalksEntriesAndStops) {
  std::string seen;
  letters()->enumerateKeysAndObjectsUsingBlock([&](NSString* key, NSNumber* value, bool* stop) {
    seen += key->utf8() + std::to_string(value->intValue());
    *stop = value->intValue() == 2;
  });
  EXPECT_EQ(seen, "a1b2");
}

TEST(NSDictionary, GivesTheKeysOfEntriesThatPass) {
  const Ref<NSSet> keys =
      letters()->keysOfEntriesPassingTest([](NSString*, NSNumber* value, bool*) { return value->intValue() != 2; });
  EXPECT_EQ(texts(*keys), "a c");
  EXPECT_EQ(keys->isa(), NSSet::classObject());
}

TEST(NSDictionary, GivesItsKeysToAWalkInBatches) {
  Ref<NSMutableDictionary> many = NSMutableDictionary::dictionary();
  for (int i = 0; i < 40; ++i) many->setObject_forKey(box(i), box(i));
  const std::vector<NSObject*> keys = walked(many);
  ASSERT_EQ(keys.size(), 40u);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(unbox<int>(keys[static_cast<size_t>(i)]), i);
  EXPECT_EQ(walked(NSDictionary::dictionary()).size(), 0u);
  EXPECT_EQ(walked(letters()).size(), 3u);
}

TEST(NSDictionary, IsEqualInAnyOrderAndHashesAlike) {
  const Ref<NSDictionary> other = NSDictionary::dictionaryWithEntries({{"c"_ns, 3}, {"b"_ns, 2.0}, {"a"_ns, 1}});
  EXPECT_THAT(letters(), equals(other));
  EXPECT_EQ(letters()->hash(), other->hash());
  EXPECT_FALSE(letters()->isEqual(NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"c"_ns, 4}})));
  EXPECT_FALSE(letters()->isEqual(NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b"_ns, 2}, {"d"_ns, 3}})));
  EXPECT_FALSE(letters()->isEqualToDictionary(nullptr));
  EXPECT_FALSE(letters()->isEqual("a"_ns));
}

TEST(NSDictionary, CopiesForFreeWhenImmutable) {
  const Ref<NSDictionary> dictionary = letters();
  EXPECT_EQ(dictionary->copy().get(), dictionary.get());
  EXPECT_EQ(dictionary->mutableCopy()->copy()->isa(), NSDictionary::classObject());
  EXPECT_THAT(dictionary->mutableCopy()->copy(), equals(dictionary));
  const Ref<Item> value = make<Item>(1);
  const Ref<NSDictionary> deep =
      NSDictionary::initWithDictionary_copyItems(NSDictionary::dictionaryWithObject_forKey(value, "k"_ns), true);
  EXPECT_EQ(value->copies, 1);
  EXPECT_NE(deep->objectForKey("k"_ns).get(), value.get());
}

TEST(NSDictionary, DescribesWhatIsInIt) {
  const Ref<NSDictionary> dictionary =
      NSDictionary::dictionaryWithEntries({{"a"_ns, 1}, {"b c"_ns, NSArray::arrayWithObject("x"_ns)}});
  EXPECT_THAT(dictionary->description(), equals("{\n    a = 1;\n    \"b c\" = (\n        x\n    );\n}"));
  EXPECT_THAT(NSDictionary::dictionary()->description(), equals("{\n}"));
}

TEST(NSDictionary, AllocatesNothingWhileWalked) {
  const Ref<NSDictionary> dictionary = letters();
  int sum = 0;
  const auto walk = [&] {
    for (auto [key, value] : *dictionary) sum += cast<NSNumber>(value)->intValue();
    dictionary->enumerateKeysAndObjectsUsingBlock([&](NSObject*, NSNumber* value, bool*) { sum += value->intValue(); });
    forEachIn(dictionary, [&](NSString* key) { sum += static_cast<int>(key->length()); });
  };
  walk();  // the classes are built when first asked for
  const AllocationCount count;
  walk();
  EXPECT_EQ(count.made(), 0u);
  EXPECT_EQ(sum, 30);
}
