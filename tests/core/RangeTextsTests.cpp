// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/RangeTexts.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "QuollFoundation/platform/strings/NSString.h"

namespace {

TEST(RangeTexts, NegativePartsBecomeNotFoundAndEmpty) {
  struct Row {
    const char* claim;
    quoll::CFRange range;
    const char* text;
  };
  const Row rows[] = {
      {"a plain range", {3, 4}, "{3, 4}"},
      {"the zero range", {0, 0}, "{0, 0}"},
      {"both negative", {-1, -3}, "{9223372036854775807, 0}"},
      {"a negative location keeps its length", {-1, 5}, "{9223372036854775807, 5}"},
      {"a negative length keeps its location", {5, -1}, "{5, 0}"},
      {"the largest values", {INT64_MAX, INT64_MAX}, "{9223372036854775807, 9223372036854775807}"},
      {"the smallest values", {INT64_MIN, INT64_MIN}, "{9223372036854775807, 0}"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(quoll::QFNSStringFromCFRange(row.range)->utf8(), row.text);
  }
}

}  // namespace
