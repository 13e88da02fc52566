// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

Ref<NSString> text(std::string_view utf8) { return NSString::stringWithUTF8(utf8); }

TEST(StringNumbers, ReadTheIntegerAtTheStart) {
  struct Row {
    const char* text;
    int64_t value;
  };
  constexpr Row rows[] = {
      {"", 0},      {"42", 42},   {"  \t\n42", 42}, {"-42x", -42}, {"+7", 7},  {"- 7", 0},           {"--7", 0},
      {"x7", 0},    {"0042", 42}, {"12.9", 12},     {"0x1F", 0},   {"7e3", 7}, {"\u00A0\u20287", 7}, {"-", 0},
      {"1,000", 1}, {"12é", 12}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(text(row.text)->integerValue(), row.value);
    EXPECT_EQ(text(row.text)->longLongValue(), row.value);
    EXPECT_EQ(text(row.text)->intValue(), row.value);
  }
}

TEST(StringNumbers, GiveTheLimitForAnIntegerThatIsTooLarge) {
  EXPECT_EQ(text("9223372036854775807")->integerValue(), INT64_MAX);
  EXPECT_EQ(text("9223372036854775808")->integerValue(), INT64_MAX);
  EXPECT_EQ(text("-9223372036854775808")->integerValue(), INT64_MIN);
  EXPECT_EQ(text("-9223372036854775809")->longLongValue(), INT64_MIN);
  EXPECT_EQ(text(std::string(1000, '9'))->integerValue(), INT64_MAX);
  EXPECT_EQ(text("2147483647")->intValue(), INT32_MAX);
  EXPECT_EQ(text("2147483648")->intValue(), INT32_MAX);
  EXPECT_EQ(text("-2147483649")->intValue(), INT32_MIN);
}

TEST(StringNumbers, ReadTheRealAtTheStart) {
  struct Row {
    const char* text;
    double value;
  };
  constexpr Row rows[] = {
      {"", 0},      {"1.5", 1.5},   {" \n-1.5e2x", -150}, {"+.5", 0.5},     {"5.", 5},     {".", 0},        {"1e", 1},
      {"1e+", 1},   {"1E+2", 100},  {"1e-2", 0.01},       {"-0.25é", -.25}, {"1,5", 1},    {"infinity", 0}, {"nan", 0},
      {"0x1p3", 0}, {"1.5.5", 1.5}, {"- 1", 0},           {"e5", 0},        {"1e5.5", 1e5}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(text(row.text)->doubleValue(), row.value);
    EXPECT_EQ(text(row.text)->floatValue(), static_cast<float>(row.value));
  }
  EXPECT_TRUE(std::signbit(text("-0")->doubleValue()));
}

TEST(StringNumbers, GiveInfinityForARealThatIsTooLargeAndZeroForOneTooSmall) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(text("1e400")->doubleValue(), infinity);
  EXPECT_EQ(text("-1e400")->doubleValue(), -infinity);
  EXPECT_EQ(text("1e99999999999999999999")->doubleValue(), infinity);
  EXPECT_EQ(text(std::string(400, '9'))->doubleValue(), infinity);
  EXPECT_EQ(text("1e-400")->doubleValue(), 0);
  EXPECT_EQ(text("1e-99999999999999999999")->doubleValue(), 0);
  EXPECT_EQ(text("0." + std::string(400, '0') + "1")->doubleValue(), 0);
  EXPECT_EQ(text("0e400")->doubleValue(), 0);
  EXPECT_EQ(text("4.9406564584124654e-324")->doubleValue(), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(text("1e39")->floatValue(), std::numeric_limits<float>::infinity());
  EXPECT_EQ(text("1e-50")->floatValue(), 0.0f);
  EXPECT_EQ(text(std::string(400, '9') + "e-390")->doubleValue(), 1e10);
}

TEST(StringNumbers, ReadTruth) {
  for (const char* yes : {"YES", "y", "true", "T", "1", " \n+09", "-000y", "7up"}) {
    EXPECT_TRUE(text(yes)->boolValue()) << yes;
  }
  for (const char* no : {"", "NO", "false", "0", "000", "x1", "-", "--1", "on", "é"}) {
    EXPECT_FALSE(text(no)->boolValue()) << no;
  }
}

TEST(StringNumbers, AreReadOfUTF16TextToo) {
  const Ref<NSString> wide = text("é-12.5e1")->substringFromIndex(1);
  ASSERT_NE(wide->utf16Characters(), nullptr);
  EXPECT_EQ(wide->integerValue(), -12);
  EXPECT_EQ(wide->doubleValue(), -125);
  EXPECT_EQ(text("１２")->integerValue(), 0);  // full-width digits are no number
}

TEST(StringNumbers, AnswerByName) {
  EXPECT_EQ(send<int64_t>("12"_ns, "integerValue"_sel), 12);
  EXPECT_EQ(send<double>("1.5"_ns, "doubleValue"_sel), 1.5);
  EXPECT_TRUE(send<bool>("YES"_ns, "boolValue"_sel));
}

RC_GTEST_PROP(StringNumbers, ReadWhatWasWritten, (int64_t value, double real)) {
  RC_ASSERT(text(std::to_string(value))->integerValue() == value);
  char written[64];
  std::snprintf(written, sizeof written, "%.17g", real);
  RC_ASSERT(text(written)->doubleValue() == real);
}

}  // namespace
