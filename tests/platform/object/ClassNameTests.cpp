// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/ClassName.h"

#include <gtest/gtest.h>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using namespace quoll::detail;

namespace {
void somewhere(NSObject*) {}
void elsewhere(NSObject*) {}
}  // namespace

static_assert(className<NSString> == "NSString" && className<Counter> == "Counter");
static_assert(className<const NSString> == "NSString" && className<const Counter> == "Counter");
static_assert(classKey<NSString>() != classKey<NSObject>() && classKey<Counter>() != classKey<SubCounter>());
static_assert(functionKey<&somewhere>() != functionKey<&elsewhere>());
static_assert(functionKey<&Counter::plus>() != functionKey<&SubCounter::plus>());

TEST(ClassName, IsTheSameFromEveryCompilerAndVersionNamespace) {
  EXPECT_EQ(hashOfName("quoll::NSString"), hashOfName("quoll::v1::NSString"));
  EXPECT_EQ(hashOfName("void (quoll::A::quoll::B)"), hashOfName("void (quoll::v1::A::quoll::v1::B)"));
  EXPECT_NE(hashOfName("quoll::NSString"), hashOfName("other::NSString"));
  EXPECT_EQ(classKey<NSString>(), hashOfName("quoll::NSString"));
}

TEST(ClassName, FunctionIsNamedWithItsClass) {
  EXPECT_TRUE(spelledFunctionName<&Counter::plus>().ends_with("Counter::plus"));
  EXPECT_TRUE(spelledFunctionName<&somewhere>().ends_with("somewhere"));
}
