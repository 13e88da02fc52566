// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayIdentity.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/platform/collections/CollectionsSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::Item;

TEST(ArrayIdentity, TellsAnObjectFromItsEqual) {
  const Ref<Item> present = make<Item>(1), twin = make<Item>(1);
  const Ref<NSArray> array = NSArray::arrayWithObjects({make<Item>(0), present});
  EXPECT_TRUE(quoll::containsObjectIdenticalTo(array, present));
  EXPECT_FALSE(quoll::containsObjectIdenticalTo(array, twin));
  EXPECT_TRUE(array->containsObject(twin));
}

TEST(ArrayIdentity, FindsNoNull) {
  EXPECT_FALSE(containsObjectIdenticalTo(NSArray::arrayWithObjects({1}), nullptr));
  EXPECT_FALSE(containsObjectIdenticalTo(nullptr, "a"_ns));
}

TEST(ArrayIdentity, AnswersByName) {
  const Ref<Item> item = make<Item>(1);
  EXPECT_TRUE(send<bool>(NSArray::arrayWithObject(item), "containsObjectIdenticalTo:"_sel, item));
}

}  // namespace
