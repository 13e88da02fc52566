// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSSortDescriptor.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSOrderedSet.h"
#include "QuollFoundation/platform/object/Send.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSArray> items(std::initializer_list<int> values) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : values) array->addObject(make<Item>(each));
  return array->copy();
}

std::string values(const NSArray* array) { return texts(*cast<NSArray>(array->valueForKey("value"_ns))); }

Ref<NSArray> by(std::initializer_list<Element> descriptors) { return NSArray::arrayWithObjects(descriptors); }

}  // namespace

TEST(NSSortDescriptor, OrdersByAKey) {
  const Ref<NSSortDescriptor> rising = NSSortDescriptor::initWithKey_ascending("value"_ns, true);
  EXPECT_EQ(values(items({3, 1, 2})->sortedArrayUsingDescriptors(by({rising}))), "1 2 3");
  EXPECT_EQ(values(items({3, 1, 2})->sortedArrayUsingDescriptors(by({rising->reversedSortDescriptor()}))), "3 2 1");
  const Ref<NSMutableArray> array = items({3, 1, 2})->mutableCopy();
  array->sortUsingDescriptors(by({rising}));
  EXPECT_EQ(values(array), "1 2 3");
  EXPECT_EQ(values(items({2, 1})->sortedArrayUsingDescriptors(nullptr)), "2 1");
}

TEST(NSSortDescriptor, ComparesBySelectorOrComparator) {
  const Ref<NSSortDescriptor> ignoringCase =
      NSSortDescriptor::initWithKey_ascending_selector(nullptr, true, "caseInsensitiveCompare:"_sel);
  EXPECT_EQ(ignoringCase->compareObject_toObject("A"_ns, "a"_ns), NSOrderedSame);
  const Ref<NSSortDescriptor> byLength = NSSortDescriptor::initWithKey_ascending_comparator(
      "self"_ns, false, [](NSString* a, NSString* b) { return compareValues(a->length(), b->length()); });
  EXPECT_EQ(byLength->compareObject_toObject("aaa"_ns, "b"_ns), NSOrderedAscending);
  EXPECT_FALSE(byLength->selector());
}

TEST(NSSortDescriptor, AsksTheNextOneWhereTheFirstSeesNoDifference) {
  const Ref<NSArray> words = NSArray::arrayWithObjects({"bb"_ns, "a"_ns, "aa"_ns, "b"_ns});
  const Ref<NSArray> sorted =
      words->sortedArrayUsingDescriptors(by({NSSortDescriptor::initWithKey_ascending("length"_ns, false),
                                             NSSortDescriptor::initWithKey_ascending("self"_ns, true)}));
  EXPECT_EQ(texts(*sorted), "aa bb a b");
}

TEST(NSSortDescriptor, PutsNullFirst) {
  const Ref<NSSortDescriptor> rising = NSSortDescriptor::initWithKey_ascending("k"_ns, true);
  const Ref<NSDictionary> none = NSDictionary::dictionary(), one = NSDictionary::dictionaryWithEntries({{"k"_ns, 1}});
  EXPECT_EQ(rising->compareObject_toObject(none, one), NSOrderedAscending);
  EXPECT_EQ(rising->compareObject_toObject(one, none), NSOrderedDescending);
  EXPECT_EQ(rising->compareObject_toObject(none, nullptr), NSOrderedSame);
  EXPECT_EQ(rising->reversedSortDescriptor()->compareObject_toObject(none, one), NSOrderedDescending);
}

TEST(NSSortDescriptor, TellsWhatItIs) {
  const Ref<NSSortDescriptor> descriptor = NSSortDescriptor::initWithKey_ascending("a.b"_ns, false);
  EXPECT_THAT(descriptor->key(), equals("a.b"));
  EXPECT_FALSE(descriptor->ascending());
  EXPECT_EQ(descriptor->selector(), "compare:"_sel);
  EXPECT_THAT(descriptor->description(), equals("(a.b, descending, compare:)"));
  EXPECT_THAT(descriptor, equals(NSSortDescriptor::initWithKey_ascending("a.b"_ns, false)));
  EXPECT_FALSE(descriptor->isEqual(NSSortDescriptor::initWithKey_ascending("a.b"_ns, true)));
  EXPECT_EQ(descriptor->copy().get(), descriptor.get());
  EXPECT_THAT(
      send<Ref<NSObject>>(alloc(NSSortDescriptor::classObject()), "initWithKey:ascending:"_sel, "a.b"_ns, false),
      equals(descriptor));
}
