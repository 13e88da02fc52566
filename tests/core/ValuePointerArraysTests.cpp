// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/ValuePointerArrays.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "QuollFoundation/core/StructPointerFunctions.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

constexpr CGRect rect{{1, 2.5}, {3, -4}};
constexpr CGPoint point{-1, 7};
constexpr CGSize size{8, 0.25};
constexpr NSRange range{3, UINT64_MAX};

TEST(ValuePointerArrays, GiveBackWhatWasAddedInOrder) {
  const Ref<NSPointerArray> found = rangePointerArray();
  addRange(found, NSMakeRange(0, 5));
  addRange(found, NSMakeRange(5, 2));
  ASSERT_EQ(found->count(), 2u);
  EXPECT_EQ(rangeAtIndex(found, 0), NSMakeRange(0, 5));
  EXPECT_EQ(rangeAtIndex(found, 1), NSMakeRange(5, 2));
}

TEST(ValuePointerArrays, BeginEmpty) {
  for (const Ref<NSPointerArray>& array :
       {rangePointerArray(), rectPointerArray(), pointPointerArray(), sizePointerArray()}) {
    EXPECT_EQ(array->count(), 0u);
    EXPECT_EQ(array->isa(), NSPointerArray::classObject());
  }
}

TEST(ValuePointerArrays, HoldEachKind) {
  const Ref<NSPointerArray> ranges = rangePointerArray(), rects = rectPointerArray();
  const Ref<NSPointerArray> points = pointPointerArray(), sizes = sizePointerArray();
  addRange(ranges, range);
  addRect(rects, rect);
  addPoint(points, point);
  addSize(sizes, size);
  EXPECT_EQ(rangeAtIndex(ranges, 0), range);
  EXPECT_EQ(rectAtIndex(rects, 0), rect);
  EXPECT_EQ(pointAtIndex(points, 0), point);
  EXPECT_EQ(sizeAtIndex(sizes, 0), size);
}

TEST(ValuePointerArrays, HoldEachKindByName) {
  Class* const cls = NSPointerArray::classObject();
  const auto ranges = send<Ref<NSPointerArray>>(cls, "rangePointerArray"_sel);
  const auto rects = send<Ref<NSPointerArray>>(cls, "rectPointerArray"_sel);
  const auto points = send<Ref<NSPointerArray>>(cls, "pointPointerArray"_sel);
  const auto sizes = send<Ref<NSPointerArray>>(cls, "sizePointerArray"_sel);
  send(ranges, "addRange:"_sel, range);
  send(rects, "addRect:"_sel, rect);
  send(points, "addPoint:"_sel, point);
  send(sizes, "addSize:"_sel, size);
  EXPECT_EQ(send<NSRange>(ranges, "rangeAtIndex:"_sel, 0), range);
  EXPECT_EQ(send<CGRect>(rects, "rectAtIndex:"_sel, 0), rect);
  EXPECT_EQ(send<CGPoint>(points, "pointAtIndex:"_sel, 0), point);
  EXPECT_EQ(send<CGSize>(sizes, "sizeAtIndex:"_sel, 0), size);
}

TEST(ValuePointerArrays, HoldCopiesOfTheirOwn) {
  const Ref<NSPointerArray> array = rangePointerArray();
  NSRange variable{1, 2};
  array->addPointer(&variable);
  variable = {7, 7};
  EXPECT_EQ(rangeAtIndex(array, 0), NSMakeRange(1, 2));
  EXPECT_NE(array->pointerAtIndex(0), static_cast<void*>(&variable));
}

TEST(ValuePointerArrays, EqualTheOneOfTheSameStructs) {
  const Ref<NSPointerArray> array = rangePointerArray(), same = rangePointerArray(), other = rangePointerArray();
  for (const Ref<NSPointerArray>& each : {array, same, other}) addRange(each, {1, 2});
  addRange(array, {3, 4});
  addRange(same, {3, 4});
  addRange(other, {3, 5});
  EXPECT_TRUE(isEqual(array, same));
  EXPECT_FALSE(isEqual(array, other));
}

TEST(ValuePointerArrays, CopyTheStructsWithTheArray) {
  const Ref<NSPointerArray> array = rangePointerArray();
  addRange(array, {1, 2});
  const auto copy = cast<NSPointerArray>(array->copy());
  array->replacePointerAtIndex_withPointer(0, &range);
  EXPECT_EQ(rangeAtIndex(copy, 0), NSMakeRange(1, 2));
  EXPECT_EQ(rangeAtIndex(array, 0), range);
}

TEST(ValuePointerArrays, IndicesPastTheEndRaise) {
  const Ref<NSPointerArray> ranges = rangePointerArray(), rects = rectPointerArray();
  addRange(ranges, range);
  for (const uint64_t index : {uint64_t{1}, uint64_t{NSNotFound}, UINT64_MAX}) {
    const std::string named = "AtIndex:]: index " + std::to_string(index) + " beyond bounds ";
    EXPECT_THAT([&] { static_cast<void>(rangeAtIndex(ranges, index)); }, raises(NSRangeException, "range" + named));
    EXPECT_THAT([&] { static_cast<void>(pointAtIndex(ranges, index)); }, raises(NSRangeException, "point" + named));
    EXPECT_THAT([&] { static_cast<void>(sizeAtIndex(ranges, index)); }, raises(NSRangeException, "size" + named));
    EXPECT_THAT([&] { static_cast<void>(rectAtIndex(rects, index)); }, raises(NSRangeException, "rect" + named));
  }
}

TEST(ValuePointerArrays, ArraysOfOtherElementsRaise) {
  const Ref<NSPointerArray> ranges = rangePointerArray(), rects = rectPointerArray();
  const Ref<NSPointerArray> objects = NSPointerArray::strongObjectsPointerArray();
  addRange(ranges, range);
  addRect(rects, rect);
  objects->addPointer("an object"_ns);
  const auto refused = [](const char* selector, int bytes) {
    return raises(NSInvalidArgumentException, "-[NSPointerArray " + std::string(selector) +
                                                  "]: the elements are no copied structs of " + std::to_string(bytes) +
                                                  " bytes");
  };
  EXPECT_THAT([&] { addRect(ranges, rect); }, refused("addRect:", 32));
  EXPECT_THAT([&] { addRange(rects, range); }, refused("addRange:", 16));
  EXPECT_THAT([&] { addRange(objects, range); }, refused("addRange:", 16));
  EXPECT_THAT([&] { addPoint(objects, point); }, refused("addPoint:", 16));
  EXPECT_THAT([&] { addSize(rects, size); }, refused("addSize:", 16));
  EXPECT_THAT([&] { static_cast<void>(rectAtIndex(ranges, 0)); }, refused("rectAtIndex:", 32));
  EXPECT_THAT([&] { static_cast<void>(rangeAtIndex(rects, 0)); }, refused("rangeAtIndex:", 16));
  EXPECT_THAT([&] { static_cast<void>(rangeAtIndex(objects, 0)); }, refused("rangeAtIndex:", 16));
  EXPECT_THAT([&] { static_cast<void>(rangesDescription(objects)); }, refused("rangesDescription", 16));
  EXPECT_EQ(ranges->count(), 1u);
  EXPECT_EQ(rects->count(), 1u);
}

TEST(ValuePointerArrays, AnArrayThatKeepsAddressesRefusesValues) {
  const Ref<NSPointerFunctions> functions =
      NSPointerFunctions::initWithOptions(NSPointerFunctionsOpaqueMemory | NSPointerFunctionsStructPersonality);
  functions->setSizeFunction(&_QFPointerFunctionsNSRangeStructSize);
  const Ref<NSPointerArray> array = NSPointerArray::initWithPointerFunctions(functions);
  EXPECT_THAT([&] { addRange(array, range); }, raises(NSInvalidArgumentException, "no copied structs"));
  EXPECT_EQ(array->count(), 0u);
}

TEST(ValuePointerArrays, ANullElementRaises) {
  const Ref<NSPointerArray> array = rangePointerArray();
  array->addPointer(nullptr);
  EXPECT_THAT([&] { static_cast<void>(rangeAtIndex(array, 0)); },
              raises(NSInvalidArgumentException, "-[NSPointerArray rangeAtIndex:]: the element at index 0 is null"));
  EXPECT_THAT([&] { static_cast<void>(rangesDescription(array)); },
              raises(NSInvalidArgumentException, "the element at index 0 is null"));
}

TEST(ValuePointerArrays, NullReceiversAnswerZeroAndDoNothing) {
  addRange(nullptr, range);
  addRect(nullptr, rect);
  addPoint(nullptr, point);
  addSize(nullptr, size);
  EXPECT_EQ(rangeAtIndex(nullptr, 3), NSMakeRange(0, 0));
  EXPECT_EQ(rectAtIndex(nullptr, 3), CGRectZero);
  EXPECT_EQ(pointAtIndex(nullptr, 3), CGPoint{});
  EXPECT_EQ(sizeAtIndex(nullptr, 3), CGSize{});
  EXPECT_EQ(rangesDescription(nullptr), nullptr);
  int calls = 0;
  enumeratePointersUsingBlock(nullptr, [&](uint64_t, void*, bool*) { ++calls; });
  EXPECT_EQ(calls, 0);
}

using Visits = std::vector<std::pair<uint64_t, NSRange>>;

Ref<NSPointerArray> threeRanges() {
  const Ref<NSPointerArray> array = rangePointerArray();
  addRange(array, {0, 5});
  addRange(array, {5, 1});
  addRange(array, {NSNotFound, 0});
  return array;
}

TEST(ValuePointerArrays, EnumerateIndicesAndElementsInOrder) {
  const Visits all{{0, {0, 5}}, {1, {5, 1}}, {2, {NSNotFound, 0}}};
  Visits visits;
  const auto note = [&visits](uint64_t index, void* pointer, bool* stop) {
    EXPECT_FALSE(*stop);
    visits.emplace_back(index, *static_cast<NSRange*>(pointer));
  };
  enumeratePointersUsingBlock(threeRanges(), note);
  EXPECT_EQ(visits, all);
  visits.clear();
  send(threeRanges(), "enumeratePointersUsingBlock:"_sel, BlockRef<void(uint64_t, void*, bool*)>(note));
  EXPECT_EQ(visits, all);
}

TEST(ValuePointerArrays, EnumerateTheElementsThemselves) {
  const Ref<NSPointerArray> array = threeRanges();
  enumeratePointersUsingBlock(
      array, [&](uint64_t index, void* pointer, bool*) { EXPECT_EQ(pointer, array->pointerAtIndex(index)); });
}

TEST(ValuePointerArrays, EnumerateUntilTheCallThatStops) {
  for (uint64_t last = 0; last < 3; ++last) {
    uint64_t calls = 0;
    enumeratePointersUsingBlock(threeRanges(), [&](uint64_t index, void*, bool* stop) {
      ++calls;
      *stop = index == last;
    });
    EXPECT_EQ(calls, last + 1);
  }
}

TEST(ValuePointerArrays, EnumerateNothingOfAnEmptyArray) {
  int calls = 0;
  enumeratePointersUsingBlock(rangePointerArray(), [&](uint64_t, void*, bool*) { ++calls; });
  EXPECT_EQ(calls, 0);
}

TEST(ValuePointerArrays, EnumerateAnArrayOfAnyPointers) {
  int a = 0, b = 0;
  const Ref<NSPointerArray> array =
      NSPointerArray::pointerArrayWithOptions(NSPointerFunctionsOpaqueMemory | NSPointerFunctionsOpaquePersonality);
  for (void* each : {static_cast<void*>(&a), static_cast<void*>(nullptr), static_cast<void*>(&b)}) {
    array->addPointer(each);
  }
  std::vector<void*> pointers;
  enumeratePointersUsingBlock(array, [&](uint64_t, void* pointer, bool*) { pointers.push_back(pointer); });
  EXPECT_EQ(pointers, (std::vector<void*>{&a, nullptr, &b}));
}

TEST(ValuePointerArrays, EnumerateAnArrayThatItsCallbackChanges) {
  Ref<NSPointerArray> array = threeRanges();
  std::vector<uint64_t> indices;
  enumeratePointersUsingBlock(array, [&](uint64_t index, void*, bool*) {
    indices.push_back(index);
    if (index == 0) addRange(array, {9, 9});
    if (index == 2) array->setCount(0);
  });
  EXPECT_EQ(indices, (std::vector<uint64_t>{0, 1, 2}));
  addRange(array, range);
  enumeratePointersUsingBlock(array, [&](uint64_t, void*, bool*) { array = nullptr; });  // the walk holds it
  EXPECT_EQ(array, nullptr);
}

TEST(ValuePointerArrays, PassOnWhatTheCallbackThrows) {
  EXPECT_THROW(enumeratePointersUsingBlock(threeRanges(), [](uint64_t, void*, bool*) { throw 5; }), int);
}

TEST(ValuePointerArrays, DescribeTheirRangesLineByLine) {
  EXPECT_EQ(rangesDescription(threeRanges())->utf8(), "3 ranges\n{0, 5}\n{5, 1}\n{9223372036854775807, 0}");
  EXPECT_EQ(send<Ref<NSString>>(threeRanges(), "rangesDescription"_sel)->utf8(),
            "3 ranges\n{0, 5}\n{5, 1}\n{9223372036854775807, 0}");
  EXPECT_EQ(rangesDescription(rangePointerArray())->utf8(), "0 ranges");
  const Ref<NSPointerArray> one = rangePointerArray();
  addRange(one, {UINT64_MAX, UINT64_MAX});
  EXPECT_EQ(rangesDescription(one)->utf8(), "1 ranges\n{18446744073709551615, 18446744073709551615}");
}

/// Counts what its own initialiser made.
class Outline : public NSPointerArray {
  QF_CLASS(Outline, NSPointerArray)
 public:
  static Ref<NSPointerArray> initWithPointerFunctions_ofClass(const NSPointerFunctions* functions, Class* cls) {
    ++initialised;
    return NSPointerArray::initWithPointerFunctions_ofClass(functions, cls);
  }
  static inline int initialised = 0;

 protected:
  Outline() = default;
};
Class* Outline::classObject() {
  static Class* const cls =
      ClassBuilder<Outline>("Outline")
          .initializer<&Outline::initWithPointerFunctions_ofClass>("initWithPointerFunctions:"_sel)
          .build();
  return cls;
}

TEST(ValuePointerArrays, AreMadeByTheInitialiserOfTheClassThatIsAsked) {
  const Ref<Outline> outline = pointPointerArray<Outline>();
  addPoint(outline, point);
  EXPECT_EQ(pointAtIndex(outline, 0), point);
  EXPECT_EQ(outline->isa(), Outline::classObject());
  EXPECT_NE(as<Outline>(send<Ref<NSPointerArray>>(Outline::classObject(), "rangePointerArray"_sel)), nullptr);
  EXPECT_NE(as<Outline>(sizePointerArray_ofClass(Outline::classObject())), nullptr);
  EXPECT_EQ(rectPointerArray<Outline>()->isa(), Outline::classObject());
  EXPECT_EQ(Outline::initialised, 4);
}

RC_GTEST_PROP(ValuePointerArrays, GiveBackAnyRanges, (const std::vector<std::pair<uint64_t, uint64_t>>& pairs)) {
  const Ref<NSPointerArray> array = rangePointerArray();
  for (const auto& [location, length] : pairs) addRange(array, {location, length});
  RC_ASSERT(array->count() == pairs.size());
  for (size_t i = 0; i < pairs.size(); ++i) {
    RC_ASSERT(rangeAtIndex(array, i) == NSMakeRange(pairs[i].first, pairs[i].second));
  }
}

}  // namespace
