// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/CFAllocator.h"

#include <gtest/gtest.h>

using namespace quoll;

TEST(CFAllocator, IsTheSystemsUnderEachName) {
  for (CFAllocatorRef allocator : {CFAllocatorRef(nullptr), kCFAllocatorDefault, kCFAllocatorSystemDefault}) {
    void* memory = CFAllocatorAllocate(allocator, 16);
    ASSERT_NE(memory, nullptr);
    CFAllocatorDeallocate(allocator, memory);
    EXPECT_EQ(CFAllocatorAllocate(allocator, 0), nullptr);
    EXPECT_EQ(CFAllocatorAllocate(allocator, -1), nullptr);
  }
}
