// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayStacks.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/platform/collections/CollectionsSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::texts;

TEST(ArrayStacks, GivesTheLastFirst) {
  const quoll::Ref<quoll::NSMutableArray> open = quoll::NSMutableArray::array();
  quoll::push(open, "a"_ns);
  quoll::push(open, "b"_ns);
  EXPECT_THAT(quoll::pop(open), equals("b"));
  EXPECT_THAT(quoll::pop(open), equals("a"));
  EXPECT_TRUE(quoll::isEmpty(open));
}

TEST(ArrayStacks, StaysEmptyWhereThereIsNothingToPop) {
  const Ref<NSMutableArray> stack = NSMutableArray::array();
  EXPECT_EQ(pop(stack), nullptr);
  EXPECT_TRUE(isEmpty(stack));
}

TEST(ArrayStacks, IgnoresNull) {
  const Ref<NSMutableArray> stack = NSMutableArray::arrayWithObjects({1});
  push(stack, nullptr);
  EXPECT_EQ(texts(*stack), "1");
}

TEST(ArrayStacks, KeepsWhatItGives) {
  LeakGuard guard;
  const Ref<NSMutableArray> stack = NSMutableArray::array();
  push(stack, make<testsupport::Item>(5));
  EXPECT_EQ(cast<testsupport::Item>(pop(stack).get())->value(), 5);
}

TEST(ArrayStacks, AnswersByName) {
  const Ref<NSMutableArray> stack = NSMutableArray::array();
  send(stack, "push:"_sel, "a"_ns);
  EXPECT_FALSE(send<bool>(stack, "isEmpty"_sel));
  EXPECT_THAT(send<Ref<NSObject>>(stack, "pop"_sel), equals("a"));
}

TEST(ArrayStacks, PoppingIsNoKey) {
  const Ref<NSMutableArray> stack = NSMutableArray::arrayWithObjects({1});
  EXPECT_THAT([&] { stack->NSObject::valueForKey("pop"_ns); }, raises(NSUndefinedKeyException, "pop"));
  EXPECT_EQ(stack->count(), 1u);
}

TEST(ArrayStacks, ANullReceiverAnswersNo) {
  push(nullptr, "a"_ns);
  EXPECT_EQ(pop(nullptr), nullptr);
  EXPECT_FALSE(isEmpty(nullptr));
}

}  // namespace
