// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Booleans.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/strings/NSString.h"

namespace {

using quoll::QFStringFromBOOL;

TEST(Booleans, TrueIsYesAndFalseIsNo) {
  EXPECT_EQ(QFStringFromBOOL(true)->utf8(), "YES");
  EXPECT_EQ(QFStringFromBOOL(false)->utf8(), "NO");
}

TEST(Booleans, AnyValueButZeroIsYes) {
  EXPECT_EQ(QFStringFromBOOL(2)->utf8(), "YES");
  EXPECT_EQ(QFStringFromBOOL(-1)->utf8(), "YES");
  EXPECT_EQ(QFStringFromBOOL(0x100)->utf8(), "YES") << "also where the low byte is zero";
  EXPECT_EQ(QFStringFromBOOL(0)->utf8(), "NO");
}

}  // namespace
