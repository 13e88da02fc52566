// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPointerArray.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

struct Pixel {
  int x, y;
};

Ref<NSPointerArray> pixels() {
  const auto functions = NSPointerFunctions::initWithOptions(0x10403);
  functions->setSizeFunction([](const void*) -> uint64_t { return sizeof(Pixel); });
  return NSPointerArray::initWithPointerFunctions(functions);
}

int xAt(const NSPointerArray* array, uint64_t index) {
  return static_cast<const Pixel*>(array->pointerAtIndex(index))->x;
}

}  // namespace

TEST(NSPointerArray, CopiesStructsIntoStorageOfItsOwn) {
  const Ref<NSPointerArray> array = pixels();
  Pixel pixel{1, 2};
  array->addPointer(&pixel);
  pixel.x = 5;
  array->insertPointer_atIndex(&pixel, 0);
  EXPECT_EQ(xAt(array, 0), 5);
  EXPECT_EQ(xAt(array, 1), 1);
  pixel.x = 9;
  array->replacePointerAtIndex_withPointer(1, &pixel);
  array->removePointerAtIndex(0);
  EXPECT_EQ(array->count(), 1u);
  EXPECT_EQ(xAt(array, 0), 9);
}

TEST(NSPointerArray, AddsAnElementOfItsOwn) {
  const Ref<NSPointerArray> array = pixels();
  const Pixel pixel{1, 2};
  array->addPointer(&pixel);
  for (int i = 0; i < 20; ++i) array->addPointer(array->pointerAtIndex(0));
  EXPECT_EQ(xAt(array, 20), 1);
}

TEST(NSPointerArray, ComparesByBytes) {
  const Ref<NSPointerArray> a = pixels(), b = pixels();
  const Pixel pixel{1, 2}, other{1, 3};
  a->addPointer(&pixel);
  b->addPointer(&pixel);
  EXPECT_THAT(a, equals(b));
  EXPECT_EQ(a->hash(), b->hash());
  b->replacePointerAtIndex_withPointer(0, &other);
  EXPECT_FALSE(a->isEqual(b));
  EXPECT_THAT(a->copy(), equals(a));
}

TEST(NSPointerArray, KeepsNullUntilItIsCompacted) {
  const Ref<NSPointerArray> array = pixels();
  const Pixel pixel{1, 2};
  array->addPointer(nullptr);
  array->addPointer(&pixel);
  array->setCount(5);
  EXPECT_EQ(array->pointerAtIndex(4), nullptr);
  array->compact();
  EXPECT_EQ(array->count(), 1u);
  array->setCount(0);
  EXPECT_EQ(array->count(), 0u);
}

TEST(NSPointerArray, RaisesPastItsEnd) {
  const Ref<NSPointerArray> array = pixels();
  EXPECT_THAT([&] { array->pointerAtIndex(0); }, raises(NSRangeException, "-[NSPointerArray pointerAtIndex:]"));
  EXPECT_THAT([&] { array->insertPointer_atIndex(nullptr, 1); }, raises(NSRangeException, "index 1"));
  EXPECT_THAT([&] { array->removePointerAtIndex(0); }, raises(NSRangeException));
  EXPECT_THAT([&] { array->replacePointerAtIndex_withPointer(0, nullptr); }, raises(NSRangeException));
}

TEST(NSPointerArray, HoldsObjects) {
  const LeakGuard guard;
  const Ref<NSPointerArray> array = NSPointerArray::strongObjectsPointerArray();
  Weak<Item> weak;
  {
    const Ref<Item> item = make<Item>(4);
    weak = item.get();
    array->addPointer(item.get());
    array->addPointer(nullptr);
  }
  EXPECT_TRUE(weak.lock());
  EXPECT_EQ(array->allObjects()->count(), 1u);
  EXPECT_EQ(walked(array).size(), 2u);
  array->removePointerAtIndex(0);
  EXPECT_FALSE(weak.lock());
}

TEST(NSPointerArray, TakesOverAndFreesMemory) {
  const auto array =
      NSPointerArray::initWithOptions(NSPointerFunctionsMallocMemory | NSPointerFunctionsOpaquePersonality);
  array->addPointer(std::malloc(10));
  array->addPointer(std::malloc(10));
  array->removePointerAtIndex(0);  // the address sanitizer says whether each was freed once
}

TEST(NSPointerArray, OfStructsIsNoListOfObjects) {
  EXPECT_THAT([] { pixels()->allObjects(); }, raises(NSInvalidArgumentException, "no objects"));
  EXPECT_THAT([] { walked(pixels()); }, raises(NSInvalidArgumentException, "no objects"));
  EXPECT_THAT([] { NSPointerArray::initWithPointerFunctions(nullptr); }, raises(NSInvalidArgumentException));
}
