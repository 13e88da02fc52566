// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSArray.h"

#include <gtest/gtest.h>

namespace {

using namespace quoll;

TEST(NSArray, HoldsObjectsAndBoxedValuesInOrder) {
  auto list = quoll::NSArray::arrayWithObjects({"one"_ns, 2, 3.5});
  ASSERT_EQ(list->count(), 3u);
  EXPECT_TRUE(isEqual(list->objectAtIndex(0), "one"_ns));
  EXPECT_EQ(unbox<int>(list->objectAtIndex(1)), 2);
  EXPECT_EQ(unbox<double>(list->objectAtIndex(2)), 3.5);
}

}  // namespace
