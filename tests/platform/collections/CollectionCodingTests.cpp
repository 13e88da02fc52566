// SPDX-License-Identifier: MIT
// Key-value coding over collections.
#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NSOrderedSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/NSNull.h"
#include "tests/platform/collections/CollectionsSupport.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSArray> items(std::initializer_list<int> values) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : values) array->addObject(make<Item>(each));
  return array->copy();
}

Ref<NSDictionary> entry(const char* key, Element value) {
  return NSDictionary::dictionaryWithEntries({{key, value.get()}});
}

TEST(CollectionCoding, ADictionaryCountsItsEntriesUnlessOneHasThatKey) {
  const Ref<NSDictionary> two = NSDictionary::dictionaryWithEntries({{"a", 1}, {"b", 2}});
  EXPECT_THAT(two->valueForKey("@count"_ns), equals(box(2)));
  EXPECT_THAT(two->valueForKeyPath("@count"_ns), equals(box(2)));
  const Ref<NSDictionary> odd = NSDictionary::dictionaryWithEntries({{"@count", "own"}});
  EXPECT_THAT(odd->valueForKey("@count"_ns), equals("own"));
}

}  // namespace

TEST(CollectionCoding, AsksEachElement) {
  EXPECT_EQ(texts(*cast<NSArray>(items({3, 1})->valueForKey("value"_ns))), "3 1");
  EXPECT_EQ(texts(*cast<NSArray>(NSArray::arrayWithObjects({"a", "bb"})->valueForKeyPath("length"_ns))), "1 2");
  EXPECT_EQ(texts(*cast<NSSet>(NSSet::setWithArray(items({3, 1, 3}))->valueForKey("value"_ns))), "3 1");
  EXPECT_EQ(texts(*cast<NSOrderedSet>(NSOrderedSet::orderedSetWithArray(items({3, 1}))->valueForKeyPath("value"_ns))),
            "3 1");
  EXPECT_THAT([] { items({1})->valueForKey("nothing"_ns); }, raises(NSUndefinedKeyException, "nothing"));
  EXPECT_THAT([] { items({1})->valueForKey(nullptr); }, raises(NSInvalidArgumentException));
}

TEST(CollectionCoding, GivesNSNullForNullAlsoDownAPath) {
  const Ref<NSArray> rows = NSArray::arrayWithObjects({entry("a", entry("b", 5)), entry("x", 1)});
  const Ref<NSArray> values = cast<NSArray>(rows->valueForKeyPath("a.b"_ns));
  EXPECT_THAT(values->objectAtIndex(0), equals(box(5)));
  EXPECT_EQ(values->objectAtIndex(1).get(), NSNull::null());
}

TEST(CollectionCoding, SetsEachElement) {
  const Ref<NSArray> array = items({1, 2});
  array->setValue_forKey(box(7), "value"_ns);
  EXPECT_EQ(texts(*cast<NSArray>(array->valueForKey("value"_ns))), "7 7");
  NSSet::setWithArray(array)->setValue_forKey(box(8), "value"_ns);
  EXPECT_EQ(cast<Item>(array->firstObject())->value(), 8);
}

TEST(CollectionCoding, CountsSumsAndCompares) {
  const Ref<NSArray> array = items({4, 1, 7});
  const struct Row {
    const char* path;
    Ref<NSNumber> value;
  } rows[] = {{"@count", box(3)},     {"@sum.value", box(12)},     {"@avg.value", box(4.0)}, {"@min.value", box(1)},
              {"@max.value", box(7)}, {"value.@max.self", box(7)}, {"value.@count", box(3)}};
  for (const Row& row : rows) {
    EXPECT_THAT(array->valueForKeyPath(box(row.path)), equals(row.value)) << row.path;
  }
  EXPECT_THAT(array->valueForKey("@count"_ns), equals(box(3)));
  EXPECT_THAT(NSSet::setWithArray(array)->valueForKeyPath("@sum.value"_ns), equals(box(12)));
  EXPECT_THAT(NSOrderedSet::orderedSetWithArray(array)->valueForKeyPath("@count"_ns), equals(box(3)));
}

TEST(CollectionCoding, OperatesOnNothing) {
  const Ref<NSArray> none = NSArray::array();
  EXPECT_THAT(none->valueForKeyPath("@count"_ns), equals(box(0)));
  EXPECT_THAT(none->valueForKeyPath("@sum.value"_ns), equals(box(0)));
  EXPECT_THAT(none->valueForKeyPath("@avg.value"_ns), equals(box(0)));
  EXPECT_FALSE(none->valueForKeyPath("@min.value"_ns));
  EXPECT_FALSE(none->valueForKeyPath("@max.value"_ns));
}

TEST(CollectionCoding, CountsNullAsZeroInSumsAndNotAtAllInExtremes) {
  const Ref<NSArray> rows = NSArray::arrayWithObjects({entry("n", 4), entry("x", 1)});
  EXPECT_THAT(rows->valueForKeyPath("@sum.n"_ns), equals(box(4)));
  EXPECT_THAT(rows->valueForKeyPath("@avg.n"_ns), equals(box(2)));
  EXPECT_THAT(rows->valueForKeyPath("@min.n"_ns), equals(box(4)));
}

TEST(CollectionCoding, SumsIntegersExactlyAndOthersAsTheyAre) {
  const int64_t large = (int64_t{1} << 53) + 1;
  EXPECT_THAT(NSArray::arrayWithObjects({large, 2})->valueForKeyPath("@sum.self"_ns), equals(box(large + 2)));
  EXPECT_THAT(NSArray::arrayWithObjects({1, 0.5})->valueForKeyPath("@sum.self"_ns), equals(box(1.5)));
  EXPECT_THAT(NSArray::arrayWithObjects({INT64_MAX, INT64_MAX})->valueForKeyPath("@sum.self"_ns), equals(box(0x1p64)));
}

TEST(CollectionCoding, RefusesOperatorsThatItLacks) {
  EXPECT_THAT([] { items({1})->valueForKeyPath("@median.value"_ns); },
              raises(NSInvalidArgumentException, "\"@median.value\" is not one of"));
  EXPECT_THAT([] { items({1})->valueForKeyPath("@sum"_ns); },
              raises(NSInvalidArgumentException, "needs a key path behind it"));
}

TEST(CollectionCoding, OfADictionaryGoesByItsEntries) {
  const Ref<NSDictionary> dictionary =
      NSDictionary::dictionaryWithEntries({{"count", 7}, {"self", 8}, {"a.b", 9}, {"description", 10}, {"@x", 11}});
  EXPECT_THAT(dictionary->valueForKey("count"_ns), equals(box(7)));
  EXPECT_FALSE(dictionary->valueForKey("hash"_ns));
  EXPECT_THAT(dictionary->dictionaryWithValuesForKeys(dictionary->allKeys()), equals(dictionary));
  const Ref<NSMutableDictionary> changed = dictionary->mutableCopy();
  changed->setValue_forKey(box(1), "count"_ns);
  changed->setValue_forKey(nullptr, "self"_ns);
  EXPECT_EQ(texts(*changed->allKeys()), "count a.b description @x");
  EXPECT_THAT(changed->valueForKey("count"_ns), equals(box(1)));
  EXPECT_THAT([&] { changed->setValue_forKey(box(1), nullptr); }, raises(NSInvalidArgumentException));
}

TEST(CollectionCoding, ReadsAndWritesManyKeysAtOnce) {
  const Ref<Item> item = make<Item>(4);
  const Ref<NSDictionary> values = item->dictionaryWithValuesForKeys(NSArray::arrayWithObjects({"value", "hash"}));
  EXPECT_THAT(values->objectForKey("value"_ns), equals(box(4)));
  EXPECT_EQ(values->count(), 2u);
  item->setValuesForKeysWithDictionary(entry("value", 9));
  EXPECT_EQ(item->value(), 9);
  EXPECT_EQ(item->dictionaryWithValuesForKeys(nullptr)->count(), 0u);
  const Ref<NSDictionary> absent =
      NSDictionary::dictionary()->dictionaryWithValuesForKeys(NSArray::arrayWithObject("x"_ns));
  EXPECT_EQ(absent->objectForKey("x"_ns).get(), NSNull::null());
  const Ref<NSMutableDictionary> target = NSMutableDictionary::dictionaryWithEntries({{"x"_ns, 1}});
  target->setValuesForKeysWithDictionary(absent);
  EXPECT_EQ(target->count(), 0u);
}

TEST(CollectionCoding, NamesAKeyThatIsNoString) {
  const Ref<NSDictionary> dictionary = NSDictionary::dictionaryWithEntries({{5, "five"}});
  EXPECT_THAT([&] { dictionary->dictionaryWithValuesForKeys(dictionary->allKeys()); },
              raises(NSInvalidArgumentException, "the key 5 of class NSNumber is no string"));
}

TEST(CollectionCoding, ReachesTheTargetThroughAProxy) {
  const Ref<Forwarder> proxy = make<Forwarder>(make<Item>(4).get());
  EXPECT_THAT(proxy->dictionaryWithValuesForKeys(NSArray::arrayWithObject("value"_ns)), equals(entry("value", 4)));
  proxy->setValuesForKeysWithDictionary(entry("value", 6));
  EXPECT_THAT(proxy->valueForKey("value"_ns), equals(box(6)));
}
