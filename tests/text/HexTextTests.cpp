// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HexText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

namespace {

using namespace quoll;

using Bytes = std::vector<uint8_t>;

Ref<NSData> dataOf(const Bytes& bytes) { return NSData::dataWithBytes_length(bytes.data(), bytes.size()); }
std::string hexOf(const NSData* data) { return QF_niceHexString(data)->utf8(); }

std::string modelHex(const Bytes& bytes) {
  std::string text;
  for (const uint8_t byte : bytes) {
    const Ref<NSString> digits = NSString::stringWithFormat("%02X"_ns, byte);
    text += (text.empty() ? "" : " ") + digits->utf8();
  }
  return text;
}

TEST(HexText, HeaderExample) {
  quoll::Ref<quoll::NSString> text = quoll::QF_niceHexString(quoll::NSData::dataWithBytes_length("\x00\xAB\x10", 3));
  EXPECT_EQ(text->utf8(), "00 AB 10");
}

TEST(HexText, HasNoBlankBeforeTheFirstByteNorAfterTheLast) {
  EXPECT_EQ(hexOf(dataOf({0})), "00");
  EXPECT_EQ(hexOf(dataOf({0xFE, 0x01})), "FE 01");
}

TEST(HexText, OfNoBytesIsEmpty) {
  EXPECT_THAT(QF_niceHexString(NSData::data()), equals(""_ns));
  EXPECT_THAT(QF_niceHexString(NSMutableData::data()), equals(""_ns));
  EXPECT_EQ(QF_niceHexString(nullptr), nullptr);
}

TEST(HexText, WritesEachByteWithTwoUpperCaseDigits) {
  Bytes all(256);
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<uint8_t>(i);
  EXPECT_EQ(hexOf(dataOf(all)), modelHex(all));
}

TEST(HexText, OfRegionsReadsAsOneSequence) {
  const Ref<NSData> data = NSData::dataWithRegions({dataOf({0x0A}), dataOf({0x1B, 0x2C}), NSData::data(), dataOf({3})});
  EXPECT_EQ(hexOf(data), "0A 1B 2C 03");
}

TEST(HexText, OfRegionsDoesNotPutThemTogether) {
  const Bytes bytes(100'000, 0x55);
  const Ref<NSData> data = NSData::dataWithRegions({dataOf(bytes), dataOf(bytes)});
  QF_niceHexString(data);
  const AllocationCount allocations;
  const Ref<NSString> text = QF_niceHexString(data);
  EXPECT_EQ(allocations.made(), 1u);
  EXPECT_EQ(text->length(), 3u * 200'000 - 1);
}

TEST(HexText, OfMutableDataShowsTheBytesOfThatMoment) {
  const Ref<NSMutableData> data = dataOf({1, 2})->mutableCopy();
  const Ref<NSString> before = QF_niceHexString(data);
  data->resetBytesInRange({0, 2});
  EXPECT_THAT(before, equals("01 02"_ns));
  EXPECT_EQ(hexOf(data), "00 00");
}

TEST(HexText, AnswersByName) {
  EXPECT_THAT(send<Ref<NSString>>(dataOf({0xAB, 0xCD}), "QF_niceHexString"_sel), equals("AB CD"_ns));
  EXPECT_EQ(send<Ref<NSString>>(static_cast<NSData*>(nullptr), "QF_niceHexString"_sel), nullptr);
}

RC_GTEST_PROP(HexText, IsTheTextOfEachByteHoweverTheDataIsDivided, (const std::vector<Bytes>& pieces)) {
  std::vector<Ref<NSData>> regions;
  Bytes whole;
  for (const Bytes& piece : pieces) {
    regions.push_back(dataOf(piece));
    whole.insert(whole.end(), piece.begin(), piece.end());
  }
  RC_ASSERT(hexOf(NSData::dataWithRegions(regions)) == modelHex(whole));
  RC_ASSERT(hexOf(dataOf(whole)) == modelHex(whole));
}

}  // namespace
