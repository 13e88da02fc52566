// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSData.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <numeric>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

using Bytes = std::vector<uint8_t>;

Ref<NSData> dataOf(const Bytes& bytes) { return NSData::dataWithBytes_length(bytes.data(), bytes.size()); }
Ref<NSMutableData> mutableOf(const Bytes& bytes) { return dataOf(bytes)->mutableCopy(); }
Bytes bytesOf(const NSData* data) {
  const auto* first = static_cast<const uint8_t*>(data->bytes());
  return Bytes(first, first + data->length());
}
Bytes counted(size_t length) {
  Bytes bytes(length);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0});
  return bytes;
}
/// The same bytes in pieces of the given lengths.
Ref<NSData> inRegions(const Bytes& bytes, const std::vector<size_t>& lengths) {
  std::vector<Ref<NSData>> parts;
  size_t at = 0;
  for (const size_t length : lengths) {
    parts.push_back(NSData::dataWithBytes_length(bytes.data() + at, length));
    at += length;
  }
  return NSData::dataWithRegions(parts);
}
std::vector<NSRange> regionsOf(const NSData* data) {
  std::vector<NSRange> ranges;
  data->enumerateByteRangesUsingBlock([&](const void*, NSRange range, bool*) { ranges.push_back(range); });
  return ranges;
}

TEST(NSData, HeaderExample) {
  const std::vector<uint16_t> samples{0x0102, 0x0304};
  const quoll::Ref<quoll::NSData> data = quoll::NSData::dataWithSpan(std::as_bytes(std::span(samples)));
  unsigned sum = 0;
  for (const std::byte b : data->span()) sum += std::to_integer<unsigned>(b);
  EXPECT_EQ(sum, 10u);
}

TEST(NSData, KeepsACopyOfItsBytes) {
  Bytes bytes{1, 2, 3};
  const Ref<NSData> data = dataOf(bytes);
  bytes[0] = 9;
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 3}));
  EXPECT_EQ(data->length(), 3u);
}

/// A copy of the bytes from `malloc`, for somebody who frees them.
void* allocatedCopy(const Bytes& bytes) {
  void* copy = std::malloc(bytes.size() + 1);
  std::copy(bytes.begin(), bytes.end(), static_cast<uint8_t*>(copy));
  return copy;
}

TEST(NSData, TakesBytesOverWithoutACopy) {
  void* bytes = allocatedCopy({1, 2, 3});
  const Ref<NSData> data = NSData::dataWithBytesNoCopy_length(bytes, 3);
  EXPECT_EQ(data->bytes(), bytes);
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 3}));
  EXPECT_EQ(data->copy(), data);
}

TEST(NSData, TakesOverAnAllocationWithoutBytes) {
  for (void* bytes : {std::malloc(1), static_cast<void*>(nullptr)}) {
    const Ref<NSData> data = NSData::initWithBytesNoCopy_length(bytes, 0);
    EXPECT_NE(data->bytes(), nullptr);
    EXPECT_THAT(data, equals(NSData::data()));
  }
}

TEST(NSData, MutableDataGrowsBytesThatItTookOver) {
  const Ref<NSMutableData> data = NSMutableData::dataWithBytesNoCopy_length<NSMutableData>(allocatedCopy({1, 2}), 2);
  data->appendBytes_length("a", 1);
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 'a'}));
}

TEST(NSData, WithoutBytesHasAnAddressAllTheSame) {
  for (const Ref<NSData>& data : {NSData::data(), NSData::dataWithSpan({}), NSData::dataWithBytes_length(nullptr, 0),
                                  Ref<NSData>(NSMutableData::data()), NSData::dataWithRegions({})}) {
    EXPECT_EQ(data->length(), 0u);
    EXPECT_NE(data->bytes(), nullptr);
    EXPECT_TRUE(data->span().empty());
    EXPECT_TRUE(regionsOf(data).empty());
    EXPECT_THAT(data, equals(NSData::data()));
  }
}

TEST(NSData, ConvertsToASpanExplicitly) {
  static_assert(!std::is_convertible_v<const NSData&, std::span<const std::byte>>);
  const Ref<NSData> data = dataOf({1, 2});
  EXPECT_EQ(static_cast<std::span<const std::byte>>(*data).data(), data->bytes());
}

TEST(NSData, NullBytesWithALengthRaise) {
  EXPECT_THAT([] { NSData::dataWithBytes_length(nullptr, 1); },
              raises(NSInvalidArgumentException, "+[NSData initWithBytes:length:]: nil argument"));
  EXPECT_THAT([] { NSData::dataWithBytesNoCopy_length(nullptr, 1); },
              raises(NSInvalidArgumentException, "+[NSData initWithBytesNoCopy:length:]: nil argument"));
  EXPECT_THAT([] { NSMutableData::data()->appendBytes_length(nullptr, 1); },
              raises(NSInvalidArgumentException, "-[NSMutableData appendBytes:length:]: nil argument"));
}

TEST(NSData, NullDataRaises) {
  const Ref<NSMutableData> data = NSMutableData::data();
  EXPECT_THAT([] { NSData::dataWithData(nullptr); }, raises(NSInvalidArgumentException, "initWithData:"));
  EXPECT_THAT([] { NSData::dataWithRegions({nullptr}); }, raises(NSInvalidArgumentException, "dataWithRegions:"));
  EXPECT_THAT([&] { data->appendData(nullptr); }, raises(NSInvalidArgumentException, "appendData:"));
  EXPECT_THAT([&] { data->setData(nullptr); }, raises(NSInvalidArgumentException, "setData:"));
}

TEST(NSData, ALengthBeyondMemoryRaises) {
  constexpr uint64_t tooLong = UINT64_MAX - 8;
  EXPECT_THAT([] { NSData::dataWithBytes_length("", tooLong); },
              raises(NSInvalidArgumentException, "length 18446744073709551607"));
  char stays[1] = {};
  EXPECT_THAT([&] { NSData::dataWithBytesNoCopy_length(stays, tooLong); },
              raises(NSInvalidArgumentException, "initWithBytesNoCopy:length:]: length 18446744073709551607"));
  EXPECT_THAT([] { NSMutableData::dataWithLength(tooLong); }, raises(NSInvalidArgumentException, "length"));
  EXPECT_THAT([] { NSMutableData::dataWithCapacity(tooLong); }, raises(NSInvalidArgumentException, "length"));
  EXPECT_THAT([] { mutableOf({1})->increaseLengthBy(UINT64_MAX); }, raises(NSInvalidArgumentException, "length"));
}

TEST(NSData, ARangePastTheEndRaises) {
  const Ref<NSData> whole = dataOf({1, 2, 3, 4, 5});
  const Ref<NSData> split = inRegions({1, 2, 3, 4, 5}, {2, 3});
  const Ref<NSMutableData> changing = whole->mutableCopy();
  uint8_t buffer[16];
  for (const NSRange range :
       {NSRange{4, 2}, NSRange{6, 0}, NSRange{0, 6}, NSRange{3, UINT64_MAX}, NSRange{UINT64_MAX, 2}}) {
    SCOPED_TRACE(::testing::PrintToString(range));
    for (const Ref<NSData>& data : {whole, split}) {
      EXPECT_THAT([&] { data->subdataWithRange(range); }, raises(NSRangeException, "-[NSData subdataWithRange:]"));
      EXPECT_THAT([&] { data->getBytes_range(buffer, range); }, raises(NSRangeException, "-[NSData getBytes:range:]"));
    }
    EXPECT_THAT([&] { changing->resetBytesInRange(range); }, raises(NSRangeException, "resetBytesInRange:"));
    EXPECT_THAT([&] { changing->replaceBytesInRange_withBytes(range, buffer); },
                raises(NSRangeException, "replaceBytesInRange:withBytes:"));
    EXPECT_THAT([&] { changing->replaceBytesInRange_withBytes_length(range, buffer, 1); },
                raises(NSRangeException, "replaceBytesInRange:withBytes:length:"));
  }
  EXPECT_THAT([&] { whole->subdataWithRange({4, 2}); },
              raises(NSRangeException, "Range {4, 2} out of bounds; length 5"));
  EXPECT_THAT(changing, equals(whole));
}

TEST(NSData, GivesParts) {
  const Bytes bytes = counted(10);
  for (const Ref<NSData>& data : {dataOf(bytes), inRegions(bytes, {1, 2, 3, 4})}) {
    uint8_t buffer[10] = {};
    EXPECT_EQ(bytesOf(data->subdataWithRange({2, 5})), (Bytes{2, 3, 4, 5, 6}));
    EXPECT_EQ(data->subdataWithRange({10, 0})->length(), 0u);
    data->getBytes_range(buffer, {5, 3});
    EXPECT_EQ(Bytes(buffer, buffer + 4), (Bytes{5, 6, 7, 0}));
    data->getBytes_length(buffer, 2);
    EXPECT_EQ(Bytes(buffer, buffer + 4), (Bytes{0, 1, 7, 0}));
    data->getBytes(buffer);
    EXPECT_EQ(Bytes(buffer, buffer + 10), bytes);
    data->getBytes_length(buffer, 99);
    EXPECT_EQ(Bytes(buffer, buffer + 10), bytes);
  }
}

// Regions

TEST(NSData, OfRegionsShowsEachRegionWithItsPlace) {
  const Ref<NSData> data = inRegions(counted(6), {1, 0, 2, 3, 0});
  std::vector<NSRange> ranges;
  Bytes seen;
  data->enumerateByteRangesUsingBlock([&](const void* bytes, NSRange range, bool*) {
    ranges.push_back(range);
    const auto* first = static_cast<const uint8_t*>(bytes);
    seen.insert(seen.end(), first, first + range.length);
  });
  EXPECT_THAT(ranges, ::testing::ElementsAre(NSRange{0, 1}, NSRange{1, 2}, NSRange{3, 3}));
  EXPECT_EQ(seen, counted(6));
}

TEST(NSData, OfOnePieceIsOneRegion) {
  EXPECT_THAT(regionsOf(dataOf(counted(6))), ::testing::ElementsAre(NSRange{0, 6}));
}

TEST(NSData, EnumerationOfRegionsStopsWhenTold) {
  const Ref<NSData> data = inRegions(counted(6), {1, 2, 3});
  int calls = 0;
  data->enumerateByteRangesUsingBlock([&](const void*, NSRange range, bool* stop) {
    ++calls;
    *stop = range.location == 1;
  });
  EXPECT_EQ(calls, 2);
}

TEST(NSData, TheBlockMayDropTheDataItGoesThrough) {
  Ref<NSData> data = inRegions(counted(6), {1, 2, 3});
  int calls = 0;
  data->enumerateByteRangesUsingBlock([&](const void*, NSRange, bool*) {
    data = nullptr;
    ++calls;
  });
  EXPECT_EQ(calls, 3);
}

TEST(NSData, OfRegionsPutsThemTogetherOnce) {
  const Ref<NSData> data = inRegions(counted(6), {1, 2, 3});
  const void* first = data->bytes();
  EXPECT_EQ(bytesOf(data), counted(6));
  EXPECT_EQ(data->bytes(), first);
  EXPECT_EQ(regionsOf(data).size(), 3u) << "what it is made of stays";
}

TEST(NSData, OfRegionsPutsThemTogetherOnceForAllThreads) {
  for (int round = 0; round < 50; ++round) {
    const Ref<NSData> data = inRegions(counted(100), {50, 50});
    std::vector<const void*> seen(4);
    std::vector<std::jthread> threads;
    for (const void*& address : seen) threads.emplace_back([&] { address = data->bytes(); });
    threads.clear();
    EXPECT_THAT(seen, ::testing::Each(data->bytes()));
    ASSERT_EQ(bytesOf(data), counted(100));
  }
}

TEST(NSData, RegionsOfRegionsAreOneList) {
  const Ref<NSData> inner = inRegions(counted(3), {1, 2});
  const Ref<NSData> data = NSData::dataWithRegions({inner, dataOf({9}), inner});
  EXPECT_EQ(regionsOf(data).size(), 5u);
  EXPECT_EQ(bytesOf(data), (Bytes{0, 1, 2, 9, 0, 1, 2}));
}

TEST(NSData, OfOneRegionIsThatRegion) {
  const Ref<NSData> only = dataOf({1, 2});
  EXPECT_EQ(NSData::dataWithRegions({NSData::data(), only}), only);
}

TEST(NSData, RegionsAreNotCopiedUnlessTheyMayChange) {
  const Ref<NSData> fixed = dataOf({1, 2});
  const Ref<NSMutableData> changing = mutableOf({3, 4});
  const Ref<NSData> data = NSData::dataWithRegions({fixed, changing});
  const void* first = nullptr;
  data->enumerateByteRangesUsingBlock([&](const void* bytes, NSRange range, bool*) {
    if (range.location == 0) first = bytes;
  });
  changing->resetBytesInRange({0, 2});
  EXPECT_EQ(first, fixed->bytes());
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 3, 4}));
}

RC_GTEST_PROP(NSData, OfRegionsIsWhatItsRegionsAreTogether, (const std::vector<Bytes>& pieces)) {
  std::vector<Ref<NSData>> parts;
  Bytes all;
  for (const Bytes& piece : pieces) {
    parts.push_back(dataOf(piece));
    all.insert(all.end(), piece.begin(), piece.end());
  }
  const Ref<NSData> split = NSData::dataWithRegions(parts), whole = dataOf(all);
  RC_ASSERT(split->hash() == whole->hash());
  RC_ASSERT(*split == *whole);
  RC_ASSERT(*whole == *split);
  const auto start = *rc::gen::inRange<size_t>(0, all.size() + 1);
  const auto length = *rc::gen::inRange<size_t>(0, all.size() - start + 1);
  RC_ASSERT(*split->subdataWithRange({start, length}) == *whole->subdataWithRange({start, length}));
  RC_ASSERT(bytesOf(split) == all);
}

// Values

TEST(NSData, EqualityGoesByBytes) {
  const Bytes bytes = counted(200);
  Bytes other = bytes;
  other[150] ^= 1;
  const Ref<NSData> data = dataOf(bytes);
  EXPECT_THAT(data, equals(inRegions(bytes, {7, 100, 93})));
  EXPECT_THAT(inRegions(bytes, {100, 100}), equals(inRegions(bytes, {7, 100, 93})));
  EXPECT_THAT(data, equals(data->mutableCopy()));
  EXPECT_THAT(data, ::testing::Not(equals(dataOf(other))));
  EXPECT_THAT(inRegions(bytes, {100, 100}), ::testing::Not(equals(inRegions(other, {7, 100, 93}))));
  EXPECT_THAT(data, ::testing::Not(equals(dataOf(counted(199)))));
  EXPECT_FALSE(data->isEqual("text"_ns));
  EXPECT_FALSE(data->isEqual(nullptr));
  EXPECT_FALSE(data->isEqualToData(nullptr));
}

TEST(NSData, EqualDataHashTheSame) {
  for (const size_t length : {0, 1, 63, 64, 65, 127, 128, 129, 500}) {
    SCOPED_TRACE(length);
    const Bytes bytes = counted(length);
    EXPECT_EQ(dataOf(bytes)->hash(), inRegions(bytes, {length / 3, length - length / 3})->hash());
    EXPECT_EQ(dataOf(bytes)->hash(), mutableOf(bytes)->hash());
  }
}

TEST(NSData, TheHashSeesLengthAndBothEnds) {
  Bytes first = counted(500), last = counted(500);
  first[0] ^= 1;
  last[499] ^= 1;
  EXPECT_NE(dataOf(counted(500))->hash(), dataOf(first)->hash());
  EXPECT_NE(dataOf(counted(500))->hash(), dataOf(last)->hash());
  EXPECT_NE(dataOf(Bytes(1, 0))->hash(), dataOf(Bytes(2, 0))->hash());
}

TEST(NSData, DescribesItself) {
  struct Row {
    const char* claim;
    Ref<NSData> data;
    const char* text;
  };
  const Row rows[] = {
      {"nothing", NSData::data(), "{length = 0, bytes = 0x}"},
      {"three bytes", dataOf({1, 2, 3}), "{length = 3, bytes = 0x010203}"},
      {"all digits", dataOf({0xAB, 0xCD, 0xEF, 0x90}), "{length = 4, bytes = 0xabcdef90}"},
      {"regions", inRegions({1, 2, 3}, {1, 2}), "{length = 3, bytes = 0x010203}"},
      {"the longest that is shown whole", dataOf(counted(24)),
       "{length = 24, bytes = 0x000102030405060708090a0b0c0d0e0f1011121314151617}"},
      {"long data without its middle", dataOf(counted(32)),
       "{length = 32, bytes = 0x00010203 04050607 08090a0b 0c0d0e0f ... 18191a1b 1c1d1e1f}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(row.data->description(), equals(row.text));
  }
}

TEST(NSData, CopiesOnlyWhatMayChange) {
  const Ref<NSData> fixed = dataOf({1});
  const Ref<NSMutableData> changing = mutableOf({1});
  EXPECT_EQ(fixed->copy(), fixed);
  EXPECT_EQ(NSData::dataWithData(fixed), fixed);
  const Ref<NSData> copy = changing->copy();
  EXPECT_FALSE(copy->isKindOfClass(NSMutableData::classObject()));
  changing->resetBytesInRange({0, 1});
  EXPECT_EQ(bytesOf(copy), Bytes{1});
  const Ref<NSMutableData> another = changing->mutableCopy();
  another->setLength(3);
  EXPECT_EQ(changing->length(), 1u);
}

// Mutable data

TEST(NSMutableData, GrowsWithZeros) {
  const Ref<NSMutableData> data = mutableOf({1, 2});
  data->setLength(4);
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 0, 0}));
  data->setLength(1);
  data->increaseLengthBy(2);
  EXPECT_EQ(bytesOf(data), (Bytes{1, 0, 0})) << "what was cut off does not come back";
  EXPECT_EQ(bytesOf(NSMutableData::dataWithLength(3)), (Bytes{0, 0, 0}));
  EXPECT_EQ(NSMutableData::dataWithCapacity(100)->length(), 0u);
}

TEST(NSMutableData, Appends) {
  const Ref<NSMutableData> data = NSMutableData::data();
  data->appendBytes_length("ab", 2);
  data->appendData(inRegions({1, 2, 3}, {1, 2}));
  data->appendSpan(std::as_bytes(std::span("c", 1)));
  data->appendBytes_length(nullptr, 0);
  data->appendData(NSData::data());
  EXPECT_EQ(bytesOf(data), (Bytes{'a', 'b', 1, 2, 3, 'c'}));
}

TEST(NSMutableData, MayBeAppendedToItself) {
  const Ref<NSMutableData> data = mutableOf({1, 2, 3});
  data->appendData(data);
  EXPECT_EQ(bytesOf(data), (Bytes{1, 2, 3, 1, 2, 3}));
  for (int i = 0; i < 10; ++i) data->appendBytes_length(data->bytes(), data->length());
  EXPECT_EQ(data->length(), 6u << 10);
  EXPECT_EQ(bytesOf(data->subdataWithRange({6140, 4})), (Bytes{3, 1, 2, 3}));
}

TEST(NSMutableData, ReplacesBytes) {
  struct Row {
    const char* claim;
    NSRange range;
    Bytes with;
    Bytes result;
  };
  const Row rows[] = {
      {"as many", {1, 2}, {7, 8}, {0, 7, 8, 3}},
      {"fewer", {1, 2}, {7}, {0, 7, 3}},
      {"more", {1, 2}, {7, 8, 9}, {0, 7, 8, 9, 3}},
      {"none: they go", {1, 2}, {}, {0, 3}},
      {"at the start", {0, 0}, {7}, {7, 0, 1, 2, 3}},
      {"at the end", {4, 0}, {7}, {0, 1, 2, 3, 7}},
      {"all", {0, 4}, {7}, {7}},
      {"all by none", {0, 4}, {}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSMutableData> data = mutableOf(counted(4));
    data->replaceBytesInRange_withBytes_length(row.range, row.with.data(), row.with.size());
    EXPECT_EQ(bytesOf(data), row.result);
  }
}

TEST(NSMutableData, ReplacesWithItsOwnBytes) {
  const Ref<NSMutableData> data = mutableOf(counted(6));
  data->replaceBytesInRange_withBytes_length({0, 1}, static_cast<uint8_t*>(data->mutableBytes()) + 3, 3);
  EXPECT_EQ(bytesOf(data), (Bytes{3, 4, 5, 1, 2, 3, 4, 5}));
}

TEST(NSMutableData, ReplacesAsManyBytesAsTheRangeHas) {
  const Ref<NSMutableData> data = mutableOf(counted(4));
  data->replaceBytesInRange_withBytes({2, 2}, "xy");
  EXPECT_EQ(bytesOf(data), (Bytes{0, 1, 'x', 'y'}));
}

TEST(NSMutableData, TakesOverOtherData) {
  const Ref<NSMutableData> data = mutableOf(counted(4));
  data->setData(data);
  EXPECT_EQ(bytesOf(data), counted(4));
  data->setData(inRegions(counted(6), {2, 4}));
  EXPECT_EQ(bytesOf(data), counted(6));
  data->setData(NSData::data());
  EXPECT_EQ(data->length(), 0u);
}

TEST(NSMutableData, IsWrittenInPlace) {
  const Ref<NSMutableData> data = NSMutableData::dataWithLength(2);
  data->mutableSpan()[1] = std::byte{5};
  EXPECT_EQ(bytesOf(data), (Bytes{0, 5}));
}

RC_GTEST_PROP(NSMutableData, ReplacesAsAVectorDoes, (const Bytes& before, const Bytes& with)) {
  const auto start = *rc::gen::inRange<size_t>(0, before.size() + 1);
  const auto length = *rc::gen::inRange<size_t>(0, before.size() - start + 1);
  Bytes wanted = before;
  const auto place = wanted.erase(wanted.begin() + static_cast<ptrdiff_t>(start),
                                  wanted.begin() + static_cast<ptrdiff_t>(start + length));
  wanted.insert(place, with.begin(), with.end());
  const Ref<NSMutableData> data = mutableOf(before);
  data->replaceBytesInRange_withBytes_length({start, length}, with.data(), with.size());
  RC_ASSERT(bytesOf(data) == wanted);
}

// Classes and messages

class Envelope : public NSData {
  QF_CLASS(Envelope, NSData)
 public:
  int stamps = 1;
};
Class* Envelope::classObject() {
  static Class* const cls = ClassBuilder<Envelope>("NSDataTestsEnvelope").build();
  return cls;
}

class Parcel : public NSMutableData {
  QF_CLASS(Parcel, NSMutableData)
};
Class* Parcel::classObject() {
  static Class* const cls = ClassBuilder<Parcel>("NSDataTestsParcel").build();
  return cls;
}

TEST(NSData, ASubclassIsMadeByTheSameOperations) {
  const Ref<Envelope> envelope = NSData::dataWithBytes_length<Envelope>("abc", 3);
  EXPECT_EQ(envelope->stamps, 1);
  EXPECT_EQ(bytesOf(envelope), (Bytes{'a', 'b', 'c'}));
  EXPECT_EQ(NSData::data<Envelope>()->length(), 0u);
  EXPECT_EQ(bytesOf(NSData::initWithData<Envelope>(envelope)), (Bytes{'a', 'b', 'c'}));
  const Ref<Parcel> parcel = NSData::dataWithBytes_length<Parcel>("abc", 3);
  parcel->appendBytes_length("d", 1);
  EXPECT_EQ(bytesOf(parcel), (Bytes{'a', 'b', 'c', 'd'}));
  EXPECT_EQ(NSMutableData::dataWithLength<Parcel>(2)->length(), 2u);
  EXPECT_EQ(NSMutableData::initWithCapacity<Parcel>(2)->length(), 0u);
}

TEST(NSData, AnswersByName) {
  const Ref<NSData> data =
      send<Ref<NSData>>(NSData::classObject(), "dataWithBytes:length:"_sel, static_cast<const void*>("abc"), 3);
  const auto adopted =
      send<Ref<NSData>>(NSData::classObject(), "dataWithBytesNoCopy:length:"_sel, allocatedCopy({7}), 1);
  EXPECT_EQ(bytesOf(adopted), Bytes{7});
  const auto initialized =
      send<Ref<NSData>>(alloc(NSData::classObject()), "initWithBytesNoCopy:length:"_sel, allocatedCopy({8}), 1);
  EXPECT_EQ(bytesOf(initialized), Bytes{8});
  EXPECT_EQ(send<int>(data, "length"_sel), 3);
  EXPECT_EQ(send<const void*>(data, "bytes"_sel), data->bytes());
  EXPECT_EQ(bytesOf(send<Ref<NSData>>(data, "subdataWithRange:"_sel, NSRange{1, 1})), Bytes{'b'});
  const auto changing = send<Ref<NSMutableData>>(data, "mutableCopy"_sel);
  send(changing, "appendData:"_sel, data);
  EXPECT_EQ(changing->length(), 6u);
  const auto made = send<Ref<NSData>>(alloc(NSMutableData::classObject()), "initWithData:"_sel, data);
  EXPECT_TRUE(made->isKindOfClass(NSMutableData::classObject()));
}

TEST(NSData, NothingIsLeaked) {
  const LeakGuard guard;
  inRegions(counted(6), {1, 2, 3})->bytes();
  mutableOf({1})->appendBytes_length("abc", 3);
  NSData::dataWithBytesNoCopy_length(allocatedCopy({1}), 1);
}

}  // namespace
