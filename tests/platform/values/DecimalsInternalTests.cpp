// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/DecimalsInternal.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

using namespace quoll;
using detail::Decimals;

namespace {
std::string text(double number) { return std::string(Decimals(number).text()); }
std::string text(float number) { return std::string(Decimals(number).text()); }
}  // namespace

TEST(Decimals, AreTheShortestThatReadBack) {
  struct Row {
    double number;
    const char* text;
  } const rows[] = {
      {0, "0"},
      {-0.0, "-0"},
      {1, "1"},
      {-1, "-1"},
      {0.1, "0.1"},
      {0.1 + 0.2, "0.30000000000000004"},
      {100000, "100000"},
      {1234567, "1234567"},
      {123.25, "123.25"},
      {0.0001, "0.0001"},
      {0.00012345, "0.00012345"},
      {0.00001, "1e-05"},
      {1e16, "10000000000000000"},
      {1.5e16, "15000000000000000"},
      {1e17, "1e+17"},
      {1e20, "1e+20"},
      {1.25e100, "1.25e+100"},
      {5e-324, "5e-324"},
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {-1.7976931348623157e308, "-1.7976931348623157e+308"},
      {INFINITY, "inf"},
      {-INFINITY, "-inf"},
      {NAN, "nan"},
  };
  for (const Row& row : rows) EXPECT_EQ(text(row.number), row.text);
}

TEST(Decimals, OfAFloatReadBackAsThatFloat) {
  EXPECT_EQ(text(0.1f), "0.1");
  EXPECT_EQ(text(16777216.0f), "16777216");
  EXPECT_EQ(text(3.4028235e38f), "3.4028235e+38");
}

RC_GTEST_PROP(Decimals, AnyDoubleReadsBack, (uint64_t bits)) {
  const double number = std::bit_cast<double>(bits);
  RC_PRE(!std::isnan(number));
  RC_ASSERT(std::bit_cast<uint64_t>(std::strtod(text(number).c_str(), nullptr)) == bits);
}
