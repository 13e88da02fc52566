// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/Element.h"

#include <gtest/gtest.h>

#include "QuollFoundation/testing.h"

using namespace quoll;

namespace {

struct NotBoxable {};
static_assert(!std::is_constructible_v<Element, NotBoxable>);
static_assert(std::is_constructible_v<Element, const NSString*>);

}  // namespace

TEST(Element, TakesObjectsAndPlainValues) {
  const Ref<NSString> text = NSString::stringWithUTF8("x");
  EXPECT_EQ(Element(text).get(), text.get());
  EXPECT_EQ(Element(text.get()).get(), text.get());
  EXPECT_THAT(Element(5).get(), equals(box(5)));
  EXPECT_STREQ(cast<NSNumber>(Element(true).get())->objCType(), "c");
  EXPECT_THAT(Element("text").get(), equals("text"));
  EXPECT_THAT(Element(NSMakeRange(1, 2)).get(), equals(box(NSMakeRange(1, 2))));
}

TEST(Element, TakesNull) {
  EXPECT_FALSE(Element(nullptr));
  EXPECT_FALSE(Element(Ref<NSString>()));
  EXPECT_TRUE(Element(0));
}
