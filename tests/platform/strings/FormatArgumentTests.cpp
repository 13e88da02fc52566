// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/FormatArgument.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/strings/NSString.h"

namespace {

using quoll::FormatArgument;
using quoll::NSString;
using quoll::Ref;
using Kind = FormatArgument::Kind;
using namespace quoll::literals;

enum class Small : int8_t { MinusOne = -1 };
enum Plain : uint32_t { All = 0xFFFFFFFF };

// What can't be written safely is no argument.
static_assert(!std::is_constructible_v<FormatArgument, std::string>);
static_assert(!std::is_constructible_v<FormatArgument, std::u16string_view>);
static_assert(!std::is_constructible_v<FormatArgument, long double>);
static_assert(std::is_trivially_destructible_v<FormatArgument>);

TEST(FormatArgument, KnowsTheSizeAndSignOfAnInteger) {
  struct Row {
    const char* claim;
    FormatArgument argument;
    unsigned size;
    bool isSigned;
    uint64_t value;
  };
  const Row rows[] = {
      {"int", -2, 4, true, static_cast<uint64_t>(-2)},
      {"unsigned", 2u, 4, false, 2},
      {"signed char", static_cast<signed char>(-1), 1, true, UINT64_MAX},
      {"unsigned char", static_cast<unsigned char>(255), 1, false, 255},
      {"short", static_cast<short>(-1), 2, true, UINT64_MAX},
      {"64 bits", INT64_MIN, 8, true, uint64_t{1} << 63},
      {"size_t", sizeof(int), 8, false, 4},
      {"bool", true, 1, false, 1},
      {"a UTF-16 unit", u'\xD800', 2, false, 0xD800},
      {"an enumeration has the size and sign of its type", Small::MinusOne, 1, true, UINT64_MAX},
      {"a plain enumeration too", All, 4, false, 0xFFFFFFFF},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(row.argument.kind, Kind::Integer);
    EXPECT_EQ(row.argument.size, row.size);
    EXPECT_EQ(row.argument.isSigned, row.isSigned);
    EXPECT_EQ(row.argument.integer, row.value);
  }
}

void someFunction() {}

TEST(FormatArgument, TellsObjectsTextsAndAddressesApart) {
  char changeable[] = "text";
  int number = 0;
  const Ref<NSString> object = "text"_ns;
  EXPECT_EQ(FormatArgument("text").kind, Kind::CString);
  EXPECT_EQ(FormatArgument(changeable).kind, Kind::CString);
  EXPECT_EQ(FormatArgument(static_cast<const char*>(nullptr)).kind, Kind::CString);
  EXPECT_EQ(FormatArgument("text"_ns).kind, Kind::Object);
  EXPECT_EQ(FormatArgument(object).object(), object.get());
  EXPECT_EQ(FormatArgument(nullptr).kind, Kind::Object);
  EXPECT_EQ(FormatArgument(nullptr).object(), nullptr);
  EXPECT_EQ(FormatArgument(&number).kind, Kind::Pointer);
  EXPECT_EQ(FormatArgument(&number).pointer, &number);
  EXPECT_EQ(FormatArgument(u"text").kind, Kind::Pointer);
  EXPECT_EQ(FormatArgument(&someFunction).pointer, reinterpret_cast<const void*>(&someFunction));
  EXPECT_EQ(FormatArgument().kind, Kind::Nothing);
}

TEST(FormatArgument, TakesBothFloatingPointTypes) {
  EXPECT_EQ(FormatArgument(0.1f).kind, Kind::Real);
  EXPECT_EQ(FormatArgument(0.1f).real, static_cast<double>(0.1f));
  EXPECT_EQ(FormatArgument(0.1).real, 0.1);
}

}  // namespace
