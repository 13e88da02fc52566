// SPDX-License-Identifier: MIT
#include "Recipe.h"

#include <QuollFoundation/testing.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace quoll;

TEST(Recipe, CopyIsEqualButAnother) {
  const LeakGuard nothingLeaks;
  Ref<Recipe> soup = Recipe::initWithTitle("Soup"_ns);
  soup->setServings(3);
  Ref<NSObject> copy = soup->copy();
  EXPECT_NE(copy, soup);
  EXPECT_THAT(copy, equals(soup));
}

TEST(Recipe, KeepsACopyOfItsTitle) {
  Ref<NSMutableString> title = "Soup"_ns->mutableCopy();
  Ref<Recipe> soup = Recipe::initWithTitle(title);
  title->appendString(" of the day"_ns);
  EXPECT_THAT(soup->title(), equals("Soup"_ns));
}

TEST(Recipe, AnswersByNameAndByKey) {
  auto soup = send<Ref<Recipe>>(alloc(classNamed("Recipe") ? classNamed("Recipe") : Recipe::classObject()),
                                "initWithTitle:"_sel, "Soup"_ns);
  send(soup, selectorOf<&Recipe::setServings>(), 7);
  EXPECT_THAT(soup->valueForKey("servings"_ns), equals(box(7)));
  EXPECT_THAT([&] { soup->setValue_forKey("many"_ns, "servings"_ns); }, raises(NSInvalidArgumentException, "servings"));
}
