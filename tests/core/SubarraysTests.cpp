// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Subarrays.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "QuollFoundation/core/ValueCallbacks.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

/// One string for each letter.
Ref<NSMutableArray> arrayOf(const std::string& letters) {
  const Ref<NSMutableArray> array = NSMutableArray::array();
  for (const char letter : letters) array->addObject(NSString::stringWithUTF8({&letter, 1}));
  return array;
}

std::string lettersOf(const CFArray* array) {
  std::string letters;
  for (NSObject* each : *cast<NSArray>(array)) letters += cast<NSString>(each)->utf8();
  return letters;
}

std::string subarray(const std::string& letters, CFIndex location, CFIndex length) {
  return lettersOf(QFArrayCreateSubarrayWithRange(kCFAllocatorDefault, arrayOf(letters), location, length));
}

TEST(Subarrays, TakeEveryOtherElementAwayFromTheSecondLocationOn) {
  struct Row {
    const char* claim;
    const char* array;
    CFIndex location;
    CFIndex length;
    const char* result;
  };
  const Row rows[] = {
      {"location 0", "abcd", 0, 2, "ab"},
      {"location 0, all", "abcd", 0, 4, "abcd"},
      {"location 0, nothing", "abcd", 0, 0, ""},
      {"location 1", "abcd", 1, 2, "bc"},
      {"location 1, to the end", "abcd", 1, 3, "bcd"},
      {"location 1, nothing", "abcd", 1, 0, ""},
      {"location 2 skips", "abcd", 2, 2, "bd"},
      {"location 2 of five", "abcde", 2, 3, "bde"},
      {"location 2, cut behind", "abcdefg", 2, 3, "bde"},
      {"location 3 of five", "abcde", 3, 2, "bd"},
      {"location 3 of seven", "abcdefg", 3, 4, "bdfg"},
      {"past the end, up to the end", "abcd", 1, 100, "bcd"},
      {"the largest length", "abcd", 2, INT64_MAX, "bd"},
      {"an empty array", "", 0, 5, ""},
      {"one element", "a", 1, 0, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(subarray(row.array, row.location, row.length), row.result);
  }
}

auto subarrayOf(CFArrayRef array, CFIndex location, CFIndex length) {
  return [=] { static_cast<void>(QFArrayCreateSubarrayWithRange(nullptr, array, location, length)); };
}

TEST(Subarrays, RemovalsPastTheShrinkingArrayRaise) {
  const Ref<NSArray> array = arrayOf("abcd"), empty = arrayOf("");
  EXPECT_EQ(subarray("abcd", 2, 1), "b");
  EXPECT_THAT(subarrayOf(array, 2, 0), raises(NSRangeException, "removal at index 1 for location 2"));
  EXPECT_THAT(subarrayOf(array, 3, 1), raises(NSRangeException, "removal at index 2 for location 3"));
  EXPECT_THAT(subarrayOf(array, 3, 100), raises(NSRangeException, "beyond the 2 elements that are left of 4"));
  EXPECT_THAT(subarrayOf(array, 4, 0), raises(NSRangeException, "QFArrayCreateSubarrayWithRange: "));
  EXPECT_THAT(subarrayOf(array, INT64_MAX, INT64_MAX), raises(NSRangeException));
  EXPECT_THAT(subarrayOf(empty, 1, 0), raises(NSRangeException));
}

TEST(Subarrays, NegativePartsRaise) {
  const Ref<NSArray> array = arrayOf("abcd");
  EXPECT_THAT(subarrayOf(array, -1, 2), raises(NSRangeException, "location -1 and length 2 cannot be negative"));
  EXPECT_THAT(subarrayOf(array, 1, -1), raises(NSRangeException, "location 1 and length -1 cannot be negative"));
  EXPECT_THAT(subarrayOf(array, INT64_MIN, INT64_MIN), raises(NSRangeException));
}

TEST(Subarrays, ANullArrayRaises) { EXPECT_THAT(subarrayOf(nullptr, 0, 0), raises(NSInvalidArgumentException)); }

TEST(Subarrays, AreImmutableCopiesThatLeaveTheArrayAlone) {
  const Ref<NSMutableArray> array = arrayOf("abcde");
  const Ref<CFArray> part = QFArrayCreateSubarrayWithRange(nullptr, array, 2, 3);
  EXPECT_EQ(lettersOf(array), "abcde");
  EXPECT_EQ(as<NSMutableArray>(part.get()), nullptr);
  EXPECT_THAT([&] { CFArrayAppendValue(part, "x"_ns); }, raises(NSInvalidArgumentException));
  array->removeAllObjects();
  EXPECT_EQ(lettersOf(part), "bde");
}

TEST(Subarrays, KeepTheCallbacksOfTheArray) {
  const Ref<CFArray> array = CFArrayCreateMutable(nullptr, 0, &kQFNSRangeArrayCallbacks);
  for (uint64_t i = 0; i < 5; ++i) {
    const NSRange range{i, i * i};
    CFArrayAppendValue(array, &range);
  }
  const Ref<CFArray> part = QFArrayCreateSubarrayWithRange(nullptr, array, 2, 3);
  CFArrayRemoveAllValues(array);  // its cells are not the part's
  ASSERT_EQ(CFArrayGetCount(part), 3);
  const uint64_t locations[] = {1, 3, 4};
  for (CFIndex i = 0; i < 3; ++i) {
    const NSRange wanted{locations[i], locations[i] * locations[i]};
    EXPECT_EQ(*static_cast<const NSRange*>(CFArrayGetValueAtIndex(part, i)), wanted);
    EXPECT_TRUE(CFArrayContainsValue(part, {0, 3}, &wanted));
  }
}

/// The defined steps, one by one.
std::vector<int64_t> stepByStep(std::vector<int64_t> values, size_t location, size_t length) {
  while (values.size() > location + length) values.pop_back();
  for (size_t i = 0; i < location; ++i) values.erase(values.begin() + static_cast<std::ptrdiff_t>(i));
  return values;
}

RC_GTEST_PROP(Subarrays, FollowTheirStepsForEveryLength, (const std::vector<int64_t>& values)) {
  const Ref<CFArray> array = CFArrayCreateMutable(nullptr, 0, &kQFNSIntegerArrayCallbacks);
  for (const int64_t& value : values) CFArrayAppendValue(array, &value);
  const auto location = *rc::gen::inRange<size_t>(0, values.size() / 2 + 1);
  const auto length = *rc::gen::inRange<size_t>(location, values.size() + 3);  // so that no removal is missing
  const Ref<CFArray> part =
      QFArrayCreateSubarrayWithRange(nullptr, array, static_cast<CFIndex>(location), static_cast<CFIndex>(length));
  std::vector<int64_t> result;
  for (CFIndex i = 0; i < CFArrayGetCount(part); ++i) {
    result.push_back(*static_cast<const int64_t*>(CFArrayGetValueAtIndex(part, i)));
  }
  RC_ASSERT(result == stepByStep(values, location, length));
}

}  // namespace
