// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/StructPointerFunctions.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace {

using namespace quoll;

TEST(StructPointerFunctions, MakeArraysThatCopyWhatIsAdded) {
  const Ref<NSPointerArray> corners = NSPointerArray::initWithPointerFunctions(pointerFunctionsForCGPoint());
  CGPoint corner{1, 2};
  corners->addPointer(&corner);
  corner.x = 7;
  EXPECT_EQ(*static_cast<CGPoint*>(corners->pointerAtIndex(0)), (CGPoint{1, 2}));
}

static_assert(QFStructPointerFunctionsOptions == 0x10403);
static_assert(QFStructPointerFunctionsOptions ==
              (NSPointerFunctionsCopyIn | NSPointerFunctionsStructPersonality | NSPointerFunctionsMallocMemory));

TEST(StructPointerFunctions, HaveTheOptionsOfCopiedStructs) {
  for (const Ref<NSPointerFunctions>& functions : {pointerFunctionsForNSRange(), pointerFunctionsForCGRect(),
                                                   pointerFunctionsForCGPoint(), pointerFunctionsForCGSize()}) {
    EXPECT_EQ(functions->options(), 66563u);
  }
}

TEST(StructPointerFunctions, SizesAreThoseOfTheStructs) {
  EXPECT_EQ(_QFPointerFunctionsNSRangeStructSize(nullptr), 16u);
  EXPECT_EQ(_QFPointerFunctionsCGRectStructSize(nullptr), 32u);
  EXPECT_EQ(_QFPointerFunctionsCGPointStructSize(nullptr), 16u);
  EXPECT_EQ(_QFPointerFunctionsCGSizeStructSize(nullptr), 16u);
}

TEST(StructPointerFunctions, HaveTheSizeFunctionOfTheirStruct) {
  EXPECT_EQ(pointerFunctionsForNSRange()->sizeFunction(), &_QFPointerFunctionsNSRangeStructSize);
  EXPECT_EQ(pointerFunctionsForCGRect()->sizeFunction(), &_QFPointerFunctionsCGRectStructSize);
  EXPECT_EQ(pointerFunctionsForCGPoint()->sizeFunction(), &_QFPointerFunctionsCGPointStructSize);
  EXPECT_EQ(pointerFunctionsForCGSize()->sizeFunction(), &_QFPointerFunctionsCGSizeStructSize);
}

TEST(StructPointerFunctions, HaveTheSizeFunctionOfTheirStructByName) {
  Class* const cls = NSPointerFunctions::classObject();
  const auto sizeBy = [cls](Selector selector) { return send<Ref<NSPointerFunctions>>(cls, selector)->sizeFunction(); };
  EXPECT_EQ(sizeBy("pointerFunctionsForNSRange"_sel), &_QFPointerFunctionsNSRangeStructSize);
  EXPECT_EQ(sizeBy("pointerFunctionsForCGRect"_sel), &_QFPointerFunctionsCGRectStructSize);
  EXPECT_EQ(sizeBy("pointerFunctionsForCGPoint"_sel), &_QFPointerFunctionsCGPointStructSize);
  EXPECT_EQ(sizeBy("pointerFunctionsForCGSize"_sel), &_QFPointerFunctionsCGSizeStructSize);
}

TEST(StructPointerFunctions, EachCallMakesItsOwn) {
  EXPECT_NE(pointerFunctionsForNSRange(), pointerFunctionsForNSRange());  // they can be changed
}

TEST(StructPointerFunctions, ElementsCompareByTheirBytes) {
  const auto arrayOf = [](CGRect rect) {
    const Ref<NSPointerArray> array = NSPointerArray::initWithPointerFunctions(pointerFunctionsForCGRect());
    array->addPointer(&rect);
    return array;
  };
  EXPECT_TRUE(isEqual(arrayOf({{1, 2}, {3, 4}}), arrayOf({{1, 2}, {3, 4}})));
  EXPECT_FALSE(isEqual(arrayOf({{1, 2}, {3, 4}}), arrayOf({{1, 2}, {3, 5}}))) << "up to the last of them";
  EXPECT_FALSE(isEqual(arrayOf({{0.0, 2}, {3, 4}}), arrayOf({{-0.0, 2}, {3, 4}}))) << "equal numbers, other bytes";
}

class Functions : public NSPointerFunctions {
  QF_CLASS(Functions, NSPointerFunctions)
 protected:
  Functions() = default;
};
Class* Functions::classObject() {
  static Class* const cls = ClassBuilder<Functions>("Functions").build();
  return cls;
}

TEST(StructPointerFunctions, AreOfTheClassThatIsAsked) {
  EXPECT_EQ(pointerFunctionsForNSRange<Functions>()->isa(), Functions::classObject());
  EXPECT_EQ(pointerFunctionsForCGRect<Functions>()->isa(), Functions::classObject());
  EXPECT_EQ(pointerFunctionsForCGPoint<Functions>()->isa(), Functions::classObject());
  EXPECT_EQ(pointerFunctionsForCGSize<Functions>()->isa(), Functions::classObject());
  EXPECT_EQ(send<Ref<NSPointerFunctions>>(Functions::classObject(), "pointerFunctionsForCGRect"_sel)->isa(),
            Functions::classObject());
}

}  // namespace
