// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/CFDictionary.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
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
int64_t valueOf(const void* cell) { return *static_cast<const int64_t*>(cell); }
bool sameCells(const void* a, const void* b) { return valueOf(a) == valueOf(b); }
CFHashCode hashCell(const void* value) { return static_cast<CFHashCode>(valueOf(value)); }

constexpr CFDictionaryKeyCallBacks keyCells{0, &retainCell, &releaseCell, nullptr, &sameCells, &hashCell};
constexpr CFDictionaryValueCallBacks valueCells{0, &retainCell, &releaseCell, nullptr, &sameCells};

Ref<CFDictionary> squares(int64_t count) {
  Ref<CFDictionary> dictionary = CFDictionaryCreateMutable(nullptr, 0, &keyCells, &valueCells);
  for (int64_t i = 0; i < count; ++i) {
    const int64_t square = i * i;
    CFDictionarySetValue(dictionary, &i, &square);
  }
  return dictionary;
}

TEST(CFDictionary, RefusesNullInPlaceOfKeysAndFunctions) {
  EXPECT_THAT([] { CFDictionaryCreate(nullptr, nullptr, nullptr, 2, nullptr, nullptr); },
              raises(NSInvalidArgumentException, "CFDictionaryCreate"));
  const Ref<CFDictionary> none = CFDictionaryCreate(nullptr, nullptr, nullptr, 0, nullptr, nullptr);
  EXPECT_THAT([&] { CFDictionaryApplyFunction(none, nullptr, nullptr); },
              raises(NSInvalidArgumentException, "CFDictionaryApplyFunction"));
}

}  // namespace

TEST(CFDictionary, KeepsKeysAndValuesInCellsOfItsOwn) {
  {
    const Ref<CFDictionary> dictionary = squares(100);
    EXPECT_EQ(cells, 200);
    for (int64_t i = 0; i < 100; ++i) EXPECT_EQ(valueOf(CFDictionaryGetValue(dictionary, &i)), i * i);
    const int64_t absent = 100, key = 5;
    EXPECT_EQ(CFDictionaryGetValue(dictionary, &absent), nullptr);
    EXPECT_TRUE(CFDictionaryContainsKey(dictionary, &key));
    EXPECT_EQ(CFDictionaryGetCountOfKey(dictionary, &absent), 0);
    CFDictionaryRemoveValue(dictionary, &key);
    CFDictionaryRemoveValue(dictionary, &absent);
    EXPECT_EQ(CFDictionaryGetCount(dictionary), 99);
    EXPECT_EQ(cells, 198);
  }
  EXPECT_EQ(cells, 0);
}

TEST(CFDictionary, AddsWhatIsAbsentAndReplacesWhatIsThere) {
  const Ref<CFDictionary> dictionary = squares(2);
  const int64_t zero = 0, one = 1, five = 5, seven = 7;
  CFDictionaryAddValue(dictionary, &one, &seven);
  CFDictionaryReplaceValue(dictionary, &five, &seven);
  EXPECT_EQ(CFDictionaryGetCount(dictionary), 2);
  EXPECT_EQ(valueOf(CFDictionaryGetValue(dictionary, &one)), 1);
  CFDictionaryAddValue(dictionary, &five, &seven);
  CFDictionaryReplaceValue(dictionary, &zero, &seven);
  EXPECT_EQ(valueOf(CFDictionaryGetValue(dictionary, &five)), 7);
  EXPECT_EQ(CFDictionaryGetCountOfValue(dictionary, &seven), 2);
  EXPECT_TRUE(CFDictionaryContainsValue(dictionary, &one));
  EXPECT_FALSE(CFDictionaryContainsValue(dictionary, &five));
}

TEST(CFDictionary, WritesItsEntriesInOrder) {
  const void *keys[3], *values[3];
  CFDictionaryGetKeysAndValues(squares(3), nullptr, nullptr);
  const Ref<CFDictionary> three = squares(3);
  CFDictionaryGetKeysAndValues(three, keys, values);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(valueOf(keys[i]), i);
    EXPECT_EQ(valueOf(values[i]), i * i);
  }
  int64_t sum = 0;
  CFDictionaryApplyFunction(
      three, [](const void*, const void* value, void* context) { *static_cast<int64_t*>(context) += valueOf(value); },
      &sum);
  EXPECT_EQ(sum, 5);
}

TEST(CFDictionary, CopiesWithItsCallbacks) {
  const Ref<CFDictionary> dictionary = squares(20);
  const Ref<CFDictionary> frozen = CFDictionaryCreateCopy(nullptr, dictionary);
  const int64_t key = 3;
  CFDictionaryRemoveAllValues(dictionary);
  EXPECT_EQ(CFDictionaryGetCount(frozen), 20);
  EXPECT_TRUE(frozen->isEqual(CFDictionaryCreateMutableCopy(nullptr, 0, frozen)));
  EXPECT_FALSE(frozen->isEqual(squares(19)));
  EXPECT_THAT([&] { CFDictionaryRemoveValue(frozen, &key); },
              raises(NSInvalidArgumentException, "CFDictionaryRemoveValue"));
  EXPECT_THAT([] { CFDictionaryCreateCopy(nullptr, nullptr); }, raises(NSInvalidArgumentException));
}

TEST(CFDictionary, OfObjectsIsAnNSDictionary) {
  const void* keys[] = {"a"_ns, "b"_ns};
  const void* values[] = {"x"_ns, "y"_ns};
  const Ref<CFDictionary> dictionary =
      CFDictionaryCreate(nullptr, keys, values, 2, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  EXPECT_EQ(dictionary->isa(), NSDictionary::classObject());
  EXPECT_THAT(cast<NSDictionary>(dictionary)->objectForKey("b"_ns), equals("y"));
  const Ref<CFDictionary> more = CFDictionaryCreateMutableCopy(nullptr, 0, dictionary);
  EXPECT_EQ(more->isa(), NSMutableDictionary::classObject());
  CFDictionarySetValue(more, "c"_ns, "z"_ns);
  CFDictionaryRemoveValue(more, "a"_ns);
  EXPECT_EQ(texts(*cast<NSDictionary>(more)->allKeys()), "b c");
  EXPECT_EQ(CFDictionaryCreateCopy(nullptr, dictionary).get(), dictionary.get());
  EXPECT_THAT([&] { CFDictionarySetValue(more, nullptr, "z"_ns); }, raises(NSInvalidArgumentException, "nil argument"));
}

TEST(CFDictionary, HoldsObjectKeysWithoutCopyingThem) {
  const Ref<Item> key = make<Item>(1);
  const Ref<CFDictionary> dictionary =
      CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  CFDictionarySetValue(dictionary, key.get(), "x"_ns);
  EXPECT_EQ(key->copies, 0);
  EXPECT_EQ(CFDictionaryGetValue(dictionary, make<Item>(1).get()), "x"_ns);
}

TEST(CFDictionary, MixesObjectsAndPlainPointers) {
  const LeakGuard guard;
  const Ref<CFDictionary> dictionary = CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, nullptr);
  int x = 0;
  for (int i = 0; i < 30; ++i) CFDictionarySetValue(dictionary, make<Item>(i).get(), &x);
  EXPECT_EQ(CFDictionaryGetValue(dictionary, make<Item>(7).get()), &x);
  const void* found = nullptr;
  EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary, make<Item>(77).get(), &found));
}

TEST(CFDictionary, TakesNullAsAPlainKeyAndValue) {
  const Ref<CFDictionary> dictionary = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
  int x = 0;
  const void* value = &x;
  CFDictionarySetValue(dictionary, nullptr, nullptr);
  EXPECT_EQ(CFDictionaryGetCount(dictionary), 1);
  EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary, nullptr, &value));
  EXPECT_EQ(value, nullptr);
  const void* keys[1] = {&x};
  CFDictionaryGetKeysAndValues(dictionary, keys, nullptr);
  EXPECT_EQ(keys[0], nullptr);
  CFDictionaryRemoveValue(dictionary, nullptr);
  EXPECT_EQ(CFDictionaryGetCount(dictionary), 0);
}

TEST(CFDictionary, AnswersForNull) {
  EXPECT_EQ(CFDictionaryGetCount(nullptr), 0);
  EXPECT_EQ(CFDictionaryGetValue(nullptr, nullptr), nullptr);
  EXPECT_EQ(CFDictionaryGetCountOfValue(nullptr, nullptr), 0);
  CFDictionarySetValue(nullptr, nullptr, nullptr);
}
