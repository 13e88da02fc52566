// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/ValueCallbacks.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "QuollFoundation/platform/collections/CFArray.h"
#include "QuollFoundation/platform/collections/CFDictionary.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

/// All the sets in one shape; those of arrays and of values have no hash, those of arrays no key set beside them.
struct Set {
  const char* name;
  size_t cellSize;
  CFDictionaryKeyCallBacks callbacks;
};
template <class S> Set setOf(const char* name, size_t cellSize, const S& set) {
  return {name, cellSize, {set.version, set.retain, set.release, set.copyDescription, set.equal, nullptr}};
}
Set keysOf(const char* name, size_t cellSize, const CFDictionaryKeyCallBacks& set) { return {name, cellSize, set}; }

#define QUOLL_SET(set, size) setOf(#set, size, set)
#define QUOLL_KEYS(set, size) keysOf(#set, size, set)
const Set sets[] = {
    QUOLL_KEYS(kQFUniCharDictionaryKeyCallbacks, 2),
    QUOLL_SET(kQFUniCharDictionaryValueCallbacks, 2),
    QUOLL_SET(kQFNSIntegerArrayCallbacks, 8),
    QUOLL_KEYS(kQFNSIntegerDictionaryKeyCallbacks, 8),
    QUOLL_SET(kQFNSIntegerDictionaryValueCallbacks, 8),
    QUOLL_SET(kQFNSUIntegerArrayCallBacks, 8),
    QUOLL_KEYS(kQFNSUIntegerDictionaryKeyCallBacks, 8),
    QUOLL_SET(kQFNSUIntegerDictionaryValueCallBacks, 8),
    QUOLL_SET(kQFCFIndexArrayCallbacks, 8),
    QUOLL_KEYS(kQFCFIndexDictionaryKeyCallbacks, 8),
    QUOLL_SET(kQFCFIndexDictionaryValueCallbacks, 8),
    QUOLL_SET(kQFNSRangeArrayCallbacks, 16),
    QUOLL_SET(kQFBOOLArrayCallBacks, 1),
    QUOLL_KEYS(kQFBOOLDictionaryKeyCallBacks, 1),
    QUOLL_SET(kQFBOOLDictionaryValueCallBacks, 1),
};
#undef QUOLL_SET
#undef QUOLL_KEYS

static_assert(std::is_same_v<decltype(kQFNSRangeArrayCallbacks), const CFArrayCallBacks>);
static_assert(std::is_same_v<decltype(kQFBOOLDictionaryKeyCallBacks), const CFDictionaryKeyCallBacks>);
static_assert(std::is_same_v<decltype(kQFBOOLDictionaryValueCallBacks), const CFDictionaryValueCallBacks>);

TEST(ValueCallbacks, AreCompleteAndOfVersionZero) {
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    EXPECT_EQ(set.callbacks.version, 0);
    EXPECT_NE(set.callbacks.retain, nullptr);
    EXPECT_NE(set.callbacks.release, nullptr);
    EXPECT_NE(set.callbacks.copyDescription, nullptr);
    EXPECT_NE(set.callbacks.equal, nullptr);
    const bool isForKeys = std::string(set.name).find("Key") != std::string::npos;
    EXPECT_EQ(set.callbacks.hash != nullptr, isForKeys);
  }
}

TEST(ValueCallbacks, RetainCopiesTheWholeValueIntoACellOfItsOwn) {
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    std::vector<unsigned char> value(set.cellSize, 1);
    const void* cell = set.callbacks.retain(nullptr, value.data());
    ASSERT_NE(cell, nullptr);
    EXPECT_NE(cell, value.data());
    EXPECT_EQ(std::memcmp(cell, value.data(), set.cellSize), 0);
    EXPECT_TRUE(set.callbacks.equal(cell, value.data()));
    value.assign(set.cellSize, 0);
    EXPECT_EQ(*static_cast<const unsigned char*>(cell), 1) << "the cell does not follow the variable";
    EXPECT_FALSE(set.callbacks.equal(cell, value.data()));
    set.callbacks.release(nullptr, cell);
  }
}

TEST(ValueCallbacks, ReadAndWriteOnlyTheBytesOfTheCell) {  // the address sanitizer sees any other
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    const std::vector<unsigned char> value(set.cellSize, 1), other(set.cellSize, 0);
    const void* cell = set.callbacks.retain(nullptr, value.data());
    EXPECT_FALSE(set.callbacks.equal(other.data(), cell));
    EXPECT_FALSE(set.callbacks.copyDescription(cell)->utf8().empty());
    if (set.callbacks.hash) {
      EXPECT_NE(set.callbacks.hash(cell), 0u);
    }
    set.callbacks.release(nullptr, cell);
  }
}

TEST(ValueCallbacks, OneCellEqualsItself) {
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    const std::vector<unsigned char> value(set.cellSize, 0xA5);
    EXPECT_TRUE(set.callbacks.equal(value.data(), value.data()));
  }
}

TEST(ValueCallbacks, NullIsNoValue) {
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    const std::vector<unsigned char> value(set.cellSize, 0);
    EXPECT_THAT([&] { set.callbacks.retain(nullptr, nullptr); },
                raises(NSInvalidArgumentException, "Retain: the address of the value is null"));
    EXPECT_FALSE(set.callbacks.equal(nullptr, value.data()));
    EXPECT_FALSE(set.callbacks.equal(value.data(), nullptr));
    EXPECT_EQ(set.callbacks.copyDescription(nullptr), nullptr);
    if (set.callbacks.hash) {
      EXPECT_EQ(set.callbacks.hash(nullptr), 0u);
    }
    set.callbacks.release(nullptr, nullptr);
  }
}

TEST(ValueCallbacks, AKindSharesItsFunctions) {
  EXPECT_EQ(kQFUniCharDictionaryValueCallbacks.retain, &_QFCollectionUniCharRetain);
  EXPECT_EQ(kQFUniCharDictionaryKeyCallbacks.hash, &_QFCollectionUniCharHash);
  EXPECT_EQ(kQFNSIntegerArrayCallbacks.equal, &_QFCollectionNSIntegerEqual);
  EXPECT_EQ(kQFNSIntegerDictionaryKeyCallbacks.hash, &_QFCollectionNSIntegerHash);
  EXPECT_EQ(kQFNSUIntegerArrayCallBacks.copyDescription, &_QFCollectionNSUIntegerCopyDescription);
  EXPECT_EQ(kQFNSUIntegerDictionaryKeyCallBacks.hash, &_QFCollectionNSUIntegerHash);
  EXPECT_EQ(kQFCFIndexArrayCallbacks.release, &_QFCollectionCFIndexRelease);
  EXPECT_EQ(kQFCFIndexDictionaryKeyCallbacks.hash, &_QFCollectionCFIndexHash);
  EXPECT_EQ(kQFNSRangeArrayCallbacks.equal, &_QFCollectionNSRangeIsEqual);
  EXPECT_EQ(kQFBOOLArrayCallBacks.equal, &_QFCollectionBOOLEqual);
  EXPECT_EQ(kQFBOOLDictionaryKeyCallBacks.hash, &_QFCollectionBOOLHash);
}

template <class T> std::string text(Ref<NSString> (*describe)(const void*), T value) {
  return describe(&value)->utf8();
}

TEST(ValueCallbacks, IntegersAreDescribedAsSignedDecimals) {
  const auto describe = {&_QFCollectionNSIntegerCopyDescription, &_QFCollectionNSUIntegerCopyDescription,
                         &_QFCollectionCFIndexCopyDescription};
  for (const auto function : describe) {
    EXPECT_EQ(text(function, int64_t{0}), "0");
    EXPECT_EQ(text(function, int64_t{-5}), "-5");
    EXPECT_EQ(text(function, INT64_MAX), "9223372036854775807");
    EXPECT_EQ(text(function, INT64_MIN), "-9223372036854775808");
    EXPECT_EQ(text(function, UINT64_MAX), "-1") << "unsigned ones too";
  }
}

TEST(ValueCallbacks, UnitsAreDescribedAsUnsignedDecimals) {
  EXPECT_EQ(text(&_QFCollectionUniCharCopyDescription, u'\0'), "0");
  EXPECT_EQ(text(&_QFCollectionUniCharCopyDescription, u'A'), "65");
  EXPECT_EQ(text(&_QFCollectionUniCharCopyDescription, char16_t{0xD800}), "55296");
  EXPECT_EQ(text(&_QFCollectionUniCharCopyDescription, char16_t{0xFFFF}), "65535");
}

TEST(ValueCallbacks, RangesAreDescribedAsSignedPairs) {
  EXPECT_EQ(text(&_QFCollectionNSRangeCopyDescription, NSMakeRange(2, 5)), "(2, 5)");
  EXPECT_EQ(text(&_QFCollectionNSRangeCopyDescription, NSMakeRange(NSNotFound, 0)), "(9223372036854775807, 0)");
  EXPECT_EQ(text(&_QFCollectionNSRangeCopyDescription, NSMakeRange(UINT64_MAX, UINT64_MAX - 1)), "(-1, -2)");
}

TEST(ValueCallbacks, BooleansAreDescribedAsYesAndNo) {
  EXPECT_EQ(text(&_QFCollectionBOOLCopyDescription, uint8_t{1}), "YES");
  EXPECT_EQ(text(&_QFCollectionBOOLCopyDescription, uint8_t{0}), "NO");
  EXPECT_EQ(text(&_QFCollectionBOOLCopyDescription, uint8_t{2}), "YES");
}

TEST(ValueCallbacks, ValuesHashToThemselves) {
  const char16_t unit = 0xFFFF;
  const int64_t negative = -1;
  const uint64_t large = UINT64_MAX - 1;
  const uint8_t yes = 1, odd = 0xFE;
  EXPECT_EQ(_QFCollectionUniCharHash(&unit), 0xFFFFu);
  EXPECT_EQ(_QFCollectionNSIntegerHash(&negative), UINT64_MAX);
  EXPECT_EQ(_QFCollectionCFIndexHash(&negative), UINT64_MAX);
  EXPECT_EQ(_QFCollectionNSUIntegerHash(&large), UINT64_MAX - 1);
  EXPECT_EQ(_QFCollectionBOOLHash(&yes), 1u);
  EXPECT_EQ(_QFCollectionBOOLHash(&odd), 0xFEu);
}

TEST(ValueCallbacks, RangesAreEqualInBothFields) {
  const NSRange range{2, 5}, same{2, 5}, otherLocation{3, 5}, otherLength{2, 6};
  EXPECT_TRUE(_QFCollectionNSRangeIsEqual(&range, &same));
  EXPECT_FALSE(_QFCollectionNSRangeIsEqual(&range, &otherLocation));
  EXPECT_FALSE(_QFCollectionNSRangeIsEqual(&range, &otherLength));
}

TEST(ValueCallbacks, BooleansAreEqualUnlessTheirExclusiveOrIsOne) {
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      const auto first = static_cast<uint8_t>(a), second = static_cast<uint8_t>(b);
      ASSERT_EQ(_QFCollectionBOOLEqual(&first, &second), (a ^ b) != 1) << a << " and " << b;
    }
  }
  const uint8_t yes = 1, alsoYes = 1, no = 0, two = 2;
  EXPECT_TRUE(_QFCollectionBOOLEqual(&yes, &alsoYes));
  EXPECT_FALSE(_QFCollectionBOOLEqual(&no, &yes));
  EXPECT_TRUE(_QFCollectionBOOLEqual(&two, &no));
}

TEST(ValueCallbacks, ArraysKeepCopiesOfTheirValues) {
  const Ref<CFArray> counts = CFArrayCreateMutable(nullptr, 0, &kQFNSIntegerArrayCallbacks);
  int64_t count = 5;
  CFArrayAppendValue(counts, &count);
  count = 6;
  CFArrayAppendValue(counts, &count);
  EXPECT_EQ(*static_cast<const int64_t*>(CFArrayGetValueAtIndex(counts, 0)), 5);
  EXPECT_EQ(*static_cast<const int64_t*>(CFArrayGetValueAtIndex(counts, 1)), 6);
  const int64_t wanted = 6;
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(counts, {0, 2}, &wanted), 1);
  CFArrayRemoveValueAtIndex(counts, 0);
  EXPECT_EQ(*static_cast<const int64_t*>(CFArrayGetValueAtIndex(counts, 0)), 6);
}

template <class T> Ref<CFArray> arrayOf(const CFArrayCallBacks& callBacks, std::initializer_list<T> values) {
  const Ref<CFArray> array = CFArrayCreateMutable(nullptr, 0, &callBacks);
  for (const T& value : values) CFArrayAppendValue(array, &value);
  return array;
}

TEST(ValueCallbacks, ArraysOfEachKindFindAndDescribeTheirValues) {
  const Ref<CFArray> ranges = arrayOf<NSRange>(kQFNSRangeArrayCallbacks, {{0, 5}, {7, 2}});
  const NSRange second{7, 2}, absent{7, 3};
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(ranges, {0, 2}, &second), 1);
  EXPECT_FALSE(CFArrayContainsValue(ranges, {0, 2}, &absent));
  EXPECT_TRUE(ranges->description()->containsString("(7, 2)"_ns)) << ranges;
  const Ref<CFArray> flags = arrayOf<uint8_t>(kQFBOOLArrayCallBacks, {0, 1, 1});
  const uint8_t yes = 1;
  EXPECT_EQ(CFArrayGetCountOfValue(flags, {0, 3}, &yes), 2);
  EXPECT_TRUE(flags->description()->containsString("YES"_ns)) << flags;
  const Ref<CFArray> sizes = arrayOf<uint64_t>(kQFNSUIntegerArrayCallBacks, {UINT64_MAX});
  EXPECT_TRUE(sizes->description()->containsString("-1"_ns)) << sizes;
  const Ref<CFArray> indices = arrayOf<CFIndex>(kQFCFIndexArrayCallbacks, {-7, 7});
  const CFIndex seven = 7;
  EXPECT_EQ(CFArrayGetFirstIndexOfValue(indices, {0, 2}, &seven), 1);
}

TEST(ValueCallbacks, ArraysCompareByTheirValues) {
  const Ref<CFArray> array = arrayOf<NSRange>(kQFNSRangeArrayCallbacks, {{0, 5}, {7, 2}});
  EXPECT_TRUE(isEqual(array, arrayOf<NSRange>(kQFNSRangeArrayCallbacks, {{0, 5}, {7, 2}})));
  EXPECT_FALSE(isEqual(array, arrayOf<NSRange>(kQFNSRangeArrayCallbacks, {{0, 5}, {7, 3}})));
}

TEST(ValueCallbacks, ACopiedArrayHasCellsOfItsOwn) {
  Ref<CFArray> array = arrayOf<NSRange>(kQFNSRangeArrayCallbacks, {{0, 5}});
  const Ref<CFArray> copy = CFArrayCreateCopy(nullptr, array);
  EXPECT_NE(CFArrayGetValueAtIndex(copy, 0), CFArrayGetValueAtIndex(array, 0));
  array = nullptr;
  EXPECT_EQ(*static_cast<const NSRange*>(CFArrayGetValueAtIndex(copy, 0)), NSMakeRange(0, 5));
}

TEST(ValueCallbacks, DictionariesFindKeysByValue) {
  const Ref<CFDictionary> counts =
      CFDictionaryCreateMutable(nullptr, 0, &kQFUniCharDictionaryKeyCallbacks, &kQFNSIntegerDictionaryValueCallbacks);
  for (const char16_t unit : std::u16string_view(u"hello, world of units")) {
    const auto* present = static_cast<const int64_t*>(CFDictionaryGetValue(counts, &unit));
    const int64_t count = present ? *present + 1 : 1;
    CFDictionarySetValue(counts, &unit, &count);
  }
  const char16_t o = u'o', z = u'z';
  ASSERT_NE(CFDictionaryGetValue(counts, &o), nullptr);
  EXPECT_EQ(*static_cast<const int64_t*>(CFDictionaryGetValue(counts, &o)), 3);
  EXPECT_EQ(CFDictionaryGetValue(counts, &z), nullptr);
  EXPECT_EQ(CFDictionaryGetCount(counts), 15);
}

/// Puts ten entries into a dictionary of the sets, finds them, and removes one.
template <class K, class V> void useDictionary(const CFDictionaryKeyCallBacks& keys,
                                               const CFDictionaryValueCallBacks& values, size_t count) {
  const Ref<CFDictionary> dictionary = CFDictionaryCreateMutable(nullptr, 0, &keys, &values);
  for (size_t i = 0; i < count; ++i) {
    const K key = static_cast<K>(i);
    const V value = static_cast<V>((i + 1) % 2);
    CFDictionarySetValue(dictionary, &key, &value);
  }
  ASSERT_EQ(CFDictionaryGetCount(dictionary), static_cast<CFIndex>(count));
  for (size_t i = 0; i < count; ++i) {
    const K key = static_cast<K>(i);
    const auto* value = static_cast<const V*>(CFDictionaryGetValue(dictionary, &key));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, static_cast<V>((i + 1) % 2));
  }
  const V zero = 0;
  EXPECT_EQ(CFDictionaryGetCountOfValue(dictionary, &zero), static_cast<CFIndex>(count / 2));
  const K first = 0;
  CFDictionaryRemoveValue(dictionary, &first);
  EXPECT_FALSE(CFDictionaryContainsKey(dictionary, &first));
}

TEST(ValueCallbacks, DictionariesOfEachKindKeepKeysAndValues) {
  useDictionary<char16_t, char16_t>(kQFUniCharDictionaryKeyCallbacks, kQFUniCharDictionaryValueCallbacks, 20);
  useDictionary<int64_t, int64_t>(kQFNSIntegerDictionaryKeyCallbacks, kQFNSIntegerDictionaryValueCallbacks, 20);
  useDictionary<uint64_t, uint64_t>(kQFNSUIntegerDictionaryKeyCallBacks, kQFNSUIntegerDictionaryValueCallBacks, 20);
  useDictionary<CFIndex, CFIndex>(kQFCFIndexDictionaryKeyCallbacks, kQFCFIndexDictionaryValueCallbacks, 20);
  useDictionary<uint8_t, uint8_t>(kQFBOOLDictionaryKeyCallBacks, kQFBOOLDictionaryValueCallBacks, 2);
}

}  // namespace
