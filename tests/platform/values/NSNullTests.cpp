// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSNull.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

TEST(NSNull, IsOneObjectHoweverAskedFor) {
  quoll::NSNull* null = quoll::NSNull::null();
  EXPECT_EQ(null, quoll::NSNull::null());
}

using namespace quoll;

TEST(NSNull, IsOneObjectByNameToo) {
  EXPECT_EQ(send<Ref<NSNull>>(NSNull::classObject(), "null"_sel), NSNull::null());
  EXPECT_EQ(send<Ref<NSNull>>(NSNull::classObject(), "new"_sel), NSNull::null());
  EXPECT_EQ(NSNull::null()->copy(), NSNull::null());
}

TEST(NSNull, EqualsItselfOnlyAndSaysWhatItIs) {
  EXPECT_TRUE(NSNull::null()->isEqual(NSNull::null()));
  EXPECT_FALSE(NSNull::null()->isEqual(nullptr));
  EXPECT_THAT(NSNull::null()->description(), equals("<null>"));
}
