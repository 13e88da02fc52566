// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Equality.h"

#include <gtest/gtest.h>

#include <unordered_set>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

TEST(Equality, AMapGoesByTheKeysValues) {
  ObjectMap<Ref<NSString>, int> lengths;
  lengths[NSString::stringWithUTF8("one")] = 3;
  lengths[Ref<NSString>("one"_ns)] += 10;
  EXPECT_EQ(lengths.size(), 1U);
  EXPECT_EQ(lengths.at("one"_ns), 13);
  EXPECT_EQ(lengths.count("two"_ns), 0U);
}

TEST(Equality, NullHashesToZeroAndEqualsNullOnly) {
  EXPECT_EQ(ObjectHash()(nullptr), 0U);
  EXPECT_TRUE(ObjectEqual()(nullptr, nullptr));
  EXPECT_FALSE(ObjectEqual()(nullptr, "x"_ns) || ObjectEqual()("x"_ns, nullptr));
  ObjectMap<Ref<NSString>, int> map;
  map[nullptr] = 1;
  EXPECT_EQ(map.at(nullptr), 1);
}

TEST(Equality, EqualObjectsHashTheSame) {
  const Ref<NSString> made = NSString::stringWithUTF8("same");
  EXPECT_TRUE(ObjectEqual()(made, "same"_ns));
  EXPECT_EQ(ObjectHash()(made), ObjectHash()("same"_ns));
}

TEST(Equality, ObjectsWithoutAnEqualityOfTheirOwnAreTheirIdentity) {
  const Ref<Counter> a = Counter::initWithValue(1), b = Counter::initWithValue(1);
  const std::unordered_set<Ref<Counter>, ObjectHash, ObjectEqual> set{a, b, a};
  EXPECT_EQ(set.size(), 2U);
  EXPECT_TRUE(*a == *a && !(*a == *b));
}
