// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPointerFunctions.h"

#include <gtest/gtest.h>

#include <cstring>

#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

TEST(NSPointerFunctions, HaveTheNumbersOfTheirOptions) {
  EXPECT_EQ(NSPointerFunctionsCopyIn | NSPointerFunctionsStructPersonality | NSPointerFunctionsMallocMemory, 66563);
  EXPECT_EQ(66563, 0x10403);
}

TEST(NSPointerFunctions, RefuseOptionsThatNobodyServes) {
  for (const uint64_t options : {1u, 4u, 5u, 1536u, 1u << 17}) {
    EXPECT_THAT([&] { NSPointerFunctions::initWithOptions(options); },
                raises(NSInvalidArgumentException, std::to_string(options)))
        << options;
  }
}

TEST(NSPointerFunctions, CopyStructsByTheirSize) {
  const auto functions = NSPointerFunctions::initWithOptions(0x10403);
  const uint64_t value = 7;
  EXPECT_THAT([&] { functions->acquire(&value); }, raises(NSInvalidArgumentException, "size function"));
  functions->setSizeFunction([](const void*) -> uint64_t { return 8; });
  void* cell = functions->acquire(&value);
  EXPECT_NE(cell, &value);
  EXPECT_TRUE(functions->same(cell, &value));
  EXPECT_EQ(functions->hashOf(cell), functions->hashOf(&value));
  functions->relinquish(cell);
  EXPECT_EQ(functions->acquire(nullptr), nullptr);
}

TEST(NSPointerFunctions, CopyTexts) {
  const auto functions = NSPointerFunctions::initWithOptions(
      NSPointerFunctionsCopyIn | NSPointerFunctionsCStringPersonality | NSPointerFunctionsMallocMemory);
  char text[] = "word";
  void* copy = functions->acquire(text);
  text[0] = 'l';
  EXPECT_STREQ(static_cast<char*>(copy), "word");
  EXPECT_FALSE(functions->same(copy, text));
  EXPECT_THAT(functions->describe(copy), equals("word"));
  functions->relinquish(copy);
}

TEST(NSPointerFunctions, GoByFunctionsInPlaceOfTheirOptions) {
  const auto functions =
      NSPointerFunctions::initWithOptions(NSPointerFunctionsOpaqueMemory | NSPointerFunctionsOpaquePersonality);
  functions->setIsEqualFunction([](const void* a, const void* b, NSPointerFunctions::Size) {
    return *static_cast<const int*>(a) == *static_cast<const int*>(b);
  });
  functions->setHashFunction(
      [](const void* item, NSPointerFunctions::Size) { return static_cast<uint64_t>(*static_cast<const int*>(item)); });
  functions->setDescriptionFunction([](const void*) -> Ref<NSString> { return "a number"_ns; });
  const int x = 4, y = 4;
  EXPECT_TRUE(functions->same(&x, &y));
  EXPECT_EQ(functions->hashOf(&x), 4u);
  EXPECT_THAT(functions->describe(&x), equals("a number"));
}

TEST(NSPointerFunctions, CantBeChangedOnceACollectionHasThem) {
  const auto functions = NSPointerFunctions::initWithOptions(0x10403);
  const auto array = NSPointerArray::initWithPointerFunctions(functions);
  functions->setSizeFunction([](const void*) -> uint64_t { return 8; });
  EXPECT_EQ(array->pointerFunctions()->sizeFunction(), nullptr);
  EXPECT_THAT([&] { array->pointerFunctions()->setSizeFunction(nullptr); },
              raises(NSInvalidArgumentException, "setSizeFunction:"));
  cast<NSPointerFunctions>(array->pointerFunctions()->copy())->setSizeFunction(nullptr);
}
