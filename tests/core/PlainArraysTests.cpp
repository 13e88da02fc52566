// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/PlainArrays.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ostream>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/testing.h"

namespace {

using quoll::QFReallocateIfNeeded;
using quoll::QFReallocateIfNeededWithAdditionalLength;

// A buffer from malloc that frees itself, with the variable that holds its capacity.
template <class T> class Buffer {
 public:
  explicit Buffer(uint64_t capacity) : start_(static_cast<T*>(std::malloc(capacity * sizeof(T)))), capacity(capacity) {}
  ~Buffer() { std::free(start_); }
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;

  T* get() const { return start_; }
  void take(void* start) { start_ = static_cast<T*>(start); }

 private:
  T* start_;

 public:
  uint64_t capacity;
};

TEST(PlainArrays, AListGrowsAsItIsFilled) {
  uint64_t capacity = 0;
  quoll::NSRange* ranges = nullptr;
  for (uint64_t count = 0; count < 1000; ++count) {
    ranges =
        static_cast<quoll::NSRange*>(quoll::QFReallocateIfNeeded(ranges, count, &capacity, sizeof(quoll::NSRange)));
    ASSERT_NE(ranges, nullptr);
    ranges[count] = {count, 2 * count};
  }
  for (uint64_t i = 0; i < 1000; ++i) ASSERT_EQ(ranges[i], (quoll::NSRange{i, 2 * i}));
  EXPECT_EQ(capacity, 1024u);
  std::free(ranges);
}

TEST(PlainArrays, ABufferWithMoreRoomThanRequiredIsUntouched) {
  Buffer<int> buffer(17);
  EXPECT_EQ(QFReallocateIfNeeded(buffer.get(), 16, &buffer.capacity, sizeof(int)), buffer.get());
  EXPECT_EQ(buffer.capacity, 17u);
}

TEST(PlainArrays, AFullBufferGrowsBySixtyFour) {
  Buffer<int> buffer(16);
  std::fill_n(buffer.get(), 16, 7);
  buffer.take(QFReallocateIfNeeded(buffer.get(), 16, &buffer.capacity, sizeof(int)));
  EXPECT_EQ(buffer.capacity, 80u);
  buffer.get()[79] = 1;
  EXPECT_EQ(std::count(buffer.get(), buffer.get() + 16, 7), 16);
}

TEST(PlainArrays, GrowthStartsFromTheLargerOfCapacityAndCount) {
  Buffer<char> buffer(3);
  buffer.take(QFReallocateIfNeeded(buffer.get(), 100, &buffer.capacity, 1));
  EXPECT_EQ(buffer.capacity, 164u);
  buffer.get()[163] = 'x';
}

TEST(PlainArrays, ANullBufferIsAllocated) {
  uint64_t capacity = 0;
  auto* start = static_cast<char*>(QFReallocateIfNeeded(nullptr, 0, &capacity, 1));
  ASSERT_NE(start, nullptr);
  EXPECT_EQ(capacity, 64u);
  start[63] = 'x';
  std::free(start);
}

TEST(PlainArrays, ANullBufferWithACapacityStaysNull) {
  uint64_t capacity = 1;
  EXPECT_EQ(QFReallocateIfNeeded(nullptr, 0, &capacity, 1), nullptr);
  EXPECT_EQ(capacity, 1u);
}

TEST(PlainArrays, TheCallerChoosesTheAdditionalCount) {
  Buffer<int> buffer(16);
  buffer.take(QFReallocateIfNeededWithAdditionalLength(buffer.get(), 16, &buffer.capacity, sizeof(int), 5));
  EXPECT_EQ(buffer.capacity, 21u);
  EXPECT_EQ(QFReallocateIfNeededWithAdditionalLength(buffer.get(), 20, &buffer.capacity, sizeof(int), 5), buffer.get());
  EXPECT_EQ(buffer.capacity, 21u);
}

TEST(PlainArrays, NothingMoreIsABufferAllTheSame) {
  uint64_t capacity = 0;
  void* start = QFReallocateIfNeededWithAdditionalLength(nullptr, 0, &capacity, 8, 0);
  EXPECT_NE(start, nullptr);
  EXPECT_EQ(capacity, 0u);
  void* again = QFReallocateIfNeededWithAdditionalLength(start, 0, &capacity, 8, 0);
  EXPECT_NE(again, nullptr);
  std::free(again);
}

TEST(PlainArrays, ElementsWithoutSizeNeverFreeTheBuffer) {
  Buffer<char> buffer(1);
  buffer.take(QFReallocateIfNeeded(buffer.get(), 1, &buffer.capacity, 0));
  EXPECT_NE(buffer.get(), nullptr);
  EXPECT_EQ(buffer.capacity, 65u);
}

struct TooMuch {
  const char* claim;
  uint64_t requiredCount;
  uint64_t elementSize;
  uint64_t additionalCount;
  uint64_t capacityAfter;
  friend std::ostream& operator<<(std::ostream& out, const TooMuch& row) { return out << row.claim; }
};

class PlainArraysTooMuch : public ::testing::TestWithParam<TooMuch> {};

TEST_P(PlainArraysTooMuch, AnswersNullAndKeepsTheBuffer) {
  const TooMuch& row = GetParam();
  Buffer<char> buffer(4);
  std::fill_n(buffer.get(), 4, 'x');
  errno = 0;
  EXPECT_EQ(QFReallocateIfNeededWithAdditionalLength(buffer.get(), row.requiredCount, &buffer.capacity, row.elementSize,
                                                     row.additionalCount),
            nullptr);
  EXPECT_EQ(errno, ENOMEM);
  EXPECT_EQ(buffer.capacity, row.capacityAfter);
  EXPECT_EQ(std::count(buffer.get(), buffer.get() + 4, 'x'), 4);
}

INSTANTIATE_TEST_SUITE_P(
    PlainArrays, PlainArraysTooMuch,
    ::testing::Values(TooMuch{"SumOfCounts", UINT64_MAX, 1, 64, UINT64_MAX},
                      TooMuch{"SumByOne", UINT64_MAX - 63, 1, 64, UINT64_MAX},
                      TooMuch{"LargestSum", UINT64_MAX - 64, 1, 64, UINT64_MAX},
                      TooMuch{"AdditionalCount", 5, 1, UINT64_MAX, UINT64_MAX},
                      TooMuch{"ProductWrapsToSomethingSmall", (uint64_t{1} << 61) - 64, 8, 64, uint64_t{1} << 61},
                      TooMuch{"ProductWrapsToZero", 4, uint64_t{1} << 63, 64, 68},
                      TooMuch{"ElementSize", 4, UINT64_MAX, 64, 68},
                      TooMuch{"MoreBytesThanAPointerDifference", (uint64_t{1} << 63) - 64, 1, 64, uint64_t{1} << 63}),
    [](const auto& info) { return info.param.claim; });

RC_GTEST_PROP(PlainArraysProperty, AfterACallThereIsRoomForOneMore, ()) {
  const auto before = *rc::gen::inRange<uint64_t>(0, 300);
  const auto required = *rc::gen::inRange<uint64_t>(0, 300);
  Buffer<uint16_t> buffer(before);
  buffer.take(QFReallocateIfNeeded(buffer.get(), required, &buffer.capacity, sizeof(uint16_t)));
  RC_ASSERT(buffer.capacity > required);
  RC_ASSERT(buffer.capacity == (before > required ? before : required + 64));
  buffer.get()[required] = 1;
}

TEST(PlainArrays, RefuseANullCapacity) {
  EXPECT_THAT([] { (void)QFReallocateIfNeeded(nullptr, 1, nullptr, 8); },
              raises(quoll::NSInvalidArgumentException, "capacity"));
}

}  // namespace
