// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/CFArray.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

int cells = 0;

const void* retainCell(CFAllocatorRef allocator, const void* value) {
  ++cells;
  auto* cell = static_cast<int64_t*>(CFAllocatorAllocate(allocator, sizeof(int64_t)));
  *cell = *static_cast<const int64_t*>(value);
  return cell;
}
void releaseCell(CFAllocatorRef allocator, const void* value) {
  --cells;
  CFAllocatorDeallocate(allocator, const_cast<void*>(value));
}
bool sameCells(const void* a, const void* b) {
  return *static_cast<const int64_t*>(a) == *static_cast<const int64_t*>(b);
}
Ref<NSString> describeCell(const void* value) { return box(std::to_string(*static_cast<const int64_t*>(value))); }

constexpr CFArrayCallBacks cellCallBacks{0, &retainCell, &releaseCell, &describeCell, &sameCells};

CFRange all(CFArrayRef array) { return {0, CFArrayGetCount(array)}; }

Ref<CFArray> cellArray(std::initializer_list<int64_t> values) {
  Ref<CFArray> array = CFArrayCreateMutable(nullptr, 0, &cellCallBacks);
  for (const int64_t each : values) CFArrayAppendValue(array, &each);
  return array;
}

std::string cellTexts(CFArrayRef array) {
  std::string text;
  for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
    text += std::to_string(*static_cast<const int64_t*>(CFArrayGetValueAtIndex(array, i))) + " ";
  }
  return text;
}

TEST(CFArray, RefusesNullInPlaceOfValuesAndFunctions) {
  EXPECT_THAT([] { CFArrayCreate(nullptr, nullptr, 3, nullptr); }, raises(NSInvalidArgumentException, "CFArrayCreate"));
  EXPECT_THAT([] { CFArrayCreate(nullptr, nullptr, 3, &kCFTypeArrayCallBacks); },
              raises(NSInvalidArgumentException, "CFArrayCreate"));
  const void* value = "x";
  const Ref<CFArray> one = CFArrayCreate(nullptr, &value, 1, nullptr);
  EXPECT_THAT([&] { CFArrayGetValues(one, {0, 1}, nullptr); }, raises(NSInvalidArgumentException, "CFArrayGetValues"));
  EXPECT_THAT([&] { CFArrayApplyFunction(one, {0, 1}, nullptr, nullptr); },
              raises(NSInvalidArgumentException, "CFArrayApplyFunction"));
}

TEST(CFArray, NamesTheFunctionThatWasGivenARangePastTheEnd) {
  const void* value = "x";
  const Ref<CFArray> one = CFArrayCreate(nullptr, &value, 1, nullptr);
  EXPECT_THAT([&] { CFArrayContainsValue(one, {0, 2}, value); }, raises(NSRangeException, "CFArrayContainsValue"));
}

}  // namespace

TEST(CFArray, KeepsValuesInCellsOfItsOwn) {
  {
    int64_t value = 5;
    const Ref<CFArray> array = CFArrayCreateMutable(nullptr, 0, &cellCallBacks);
    CFArrayAppendValue(array, &value);
    value = 6;
    EXPECT_EQ(cellTexts(array), "5 ");
    EXPECT_EQ(cells, 1);
    CFArraySetValueAtIndex(array, 0, &value);
    CFArraySetValueAtIndex(array, 1, &value);
    EXPECT_EQ(cellTexts(array), "6 6 ");
    EXPECT_EQ(cells, 2);
  }
  EXPECT_EQ(cells, 0);
}

TEST(CFArray, InsertsRemovesAndExchanges) {
  const Ref<CFArray> array = cellArray({1, 2, 3});
  const int64_t zero = 0;
  CFArrayInsertValueAtIndex(array, 0, &zero);
  CFArrayExchangeValuesAtIndices(array, 0, 3);
  EXPECT_EQ(cellTexts(array), "3 1 2 0 ");
  CFArrayRemoveValueAtIndex(array, 1);
  CFArrayAppendArray(array, array, all(array));
  EXPECT_EQ(cellTexts(array), "3 2 0 3 2 0 ");
  CFArrayRemoveAllValues(array);
  EXPECT_EQ(CFArrayGetCount(array), 0);
  EXPECT_EQ(cells, 0);
}

TEST(CFArray, ComparesByItsCallback) {
  const Ref<CFArray> array = cellArray({1, 2, 1});
  const int64_t one = 1, nine = 9;
  EXPECT_TRUE(CFArrayContainsValue(array, all(array), &one));
  EXPECT_FALSE(CFArrayContainsValue(array, {1, 1}, &one));
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(array, all(array), &one), 0);
  EXPECT_EQ(CFArrayGetLastIndexOfValue(array, all(array), &one), 2);
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(array, all(array), &nine), kCFNotFound);
  EXPECT_EQ(CFArrayGetLastIndexOfValue(array, all(array), &nine), kCFNotFound);
  EXPECT_EQ(CFArrayGetCountOfValue(array, all(array), &one), 2);
  EXPECT_TRUE(array->isEqual(cellArray({1, 2, 1})));
  EXPECT_FALSE(array->isEqual(cellArray({1, 2, 2})));
  EXPECT_NE(array->description()->utf8().find("\n    1\n    2\n    1\n)"), std::string::npos);
}

TEST(CFArray, CopiesWithItsCallbacks) {
  const Ref<CFArray> array = cellArray({1, 2});
  const Ref<CFArray> frozen = CFArrayCreateCopy(nullptr, array);
  const int64_t three = 3;
  CFArrayAppendValue(array, &three);
  EXPECT_EQ(cellTexts(frozen), "1 2 ");
  EXPECT_THAT([&] { CFArrayAppendValue(frozen, &three); }, raises(NSInvalidArgumentException, "CFArrayAppendValue"));
  const Ref<CFArray> thawed = CFArrayCreateMutableCopy(nullptr, 0, frozen);
  CFArrayAppendValue(thawed, &three);
  EXPECT_EQ(cellTexts(thawed), "1 2 3 ");
  EXPECT_EQ(cells, 8);
  EXPECT_THAT([] { CFArrayCreateCopy(nullptr, nullptr); }, raises(NSInvalidArgumentException, "CFArrayCreateCopy"));
}

TEST(CFArray, OfObjectsIsAnNSArray) {
  const void* values[] = {"a"_ns, "b"_ns};
  const Ref<CFArray> array = CFArrayCreate(nullptr, values, 2, &kCFTypeArrayCallBacks);
  EXPECT_EQ(array->isa(), NSArray::classObject());
  EXPECT_TRUE(array->isEqual(NSArray::arrayWithObjects({"a"_ns, "b"_ns})));
  const Ref<CFArray> more = CFArrayCreateMutableCopy(nullptr, 0, array);
  EXPECT_EQ(more->isa(), NSMutableArray::classObject());
  CFArrayAppendValue(more, "c"_ns);
  CFArrayRemoveValueAtIndex(more, 0);
  EXPECT_EQ(texts(*cast<NSArray>(more)), "b c");
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(more, all(more), u"c"_ns), 1);
  EXPECT_EQ(CFArrayCreateCopy(nullptr, array).get(), array.get());
  EXPECT_THAT([&] { CFArrayAppendValue(array, "c"_ns); }, raises(NSInvalidArgumentException, "cannot be changed"));
  EXPECT_THAT([&] { CFArrayAppendValue(more, nullptr); }, raises(NSInvalidArgumentException, "nil argument"));
  EXPECT_EQ(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks)->isa(), NSMutableArray::classObject());
}

TEST(CFArray, IsNoNSArrayWhereItsValuesAreNoObjects) {
  EXPECT_EQ(as<NSArray>(cellArray({1}).get()), nullptr);
  EXPECT_THAT([] { cast<NSArray>(cellArray({1})); }, raises(NSInvalidArgumentException, "NSArray"));
}

TEST(CFArray, KeepsPlainPointersWithoutCallbacks) {
  int x = 0, y = 0;
  const void* values[] = {&x, nullptr};
  const Ref<CFArray> array = CFArrayCreate(nullptr, values, 2, nullptr);
  EXPECT_EQ(CFArrayGetValueAtIndex(array, 0), &x);
  EXPECT_EQ(CFArrayGetValueAtIndex(array, 1), nullptr);
  EXPECT_TRUE(CFArrayContainsValue(array, {0, 2}, nullptr));
  EXPECT_FALSE(CFArrayContainsValue(array, {0, 2}, &y));
}

TEST(CFArray, RaisesPastItsEnd) {
  const Ref<CFArray> array = cellArray({1});
  const int64_t two = 2;
  const void* out[1];
  EXPECT_THAT([&] { CFArrayGetValueAtIndex(array, 1); }, raises(NSRangeException, "CFArrayGetValueAtIndex: index 1"));
  EXPECT_THAT([&] { CFArrayGetValueAtIndex(array, -1); }, raises(NSRangeException, "index -1"));
  EXPECT_THAT([&] { CFArrayGetValues(array, {0, 2}, out); }, raises(NSRangeException, "{0, 2}"));
  EXPECT_THAT([&] { CFArrayGetValues(array, {INT64_MAX, INT64_MAX}, out); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArrayContainsValue(array, {0, -1}, &two); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArrayInsertValueAtIndex(array, 2, &two); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArraySetValueAtIndex(array, 2, &two); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArrayRemoveValueAtIndex(array, 1); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArrayExchangeValuesAtIndices(array, 0, 1); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFArrayCreate(nullptr, nullptr, -1, nullptr); }, raises(NSInvalidArgumentException, "-1"));
  CFArrayGetValues(array, {0, 1}, out);
  EXPECT_EQ(*static_cast<const int64_t*>(out[0]), 1);
}

TEST(CFArray, AnswersForNull) {
  EXPECT_EQ(CFArrayGetCount(nullptr), 0);
  EXPECT_EQ(CFArrayGetValueAtIndex(nullptr, 0), nullptr);
  EXPECT_FALSE(CFArrayContainsValue(nullptr, {0, 0}, nullptr));
  CFArrayAppendValue(nullptr, nullptr);
  CFArrayRemoveAllValues(nullptr);
}

TEST(CFArray, AppliesAFunctionToARange) {
  int64_t sum = 0;
  CFArrayApplyFunction(
      cellArray({1, 2, 4}), {1, 2},
      [](const void* value, void* context) { *static_cast<int64_t*>(context) += *static_cast<const int64_t*>(value); },
      &sum);
  EXPECT_EQ(sum, 6);
}
