// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/StringComponents.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

using namespace quoll;

TEST(StringComponents, StandBetweenTheSeparators) {
  const struct Row {
    const char *claim, *text, *separator, *joined;
  } rows[] = {
      {"parts", "a, b, c", ", ", "a|b|c"},
      {"empty ones too", ",a,,b,", ",", "|a||b|"},
      {"no separator", "abc", ",", "abc"},
      {"an empty text", "", ",", ""},
      {"an empty separator", "a,b", "", "a,b"},
      {"only separators", ",,", ",", "||"},
      {"overlapping separators are found from the left", "aaa", "aa", "|a"},
      {"other letters", "äöü", "ö", "ä|ü"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSArray> parts = componentsSeparatedByString(box(row.text), box(row.separator));
    EXPECT_THAT(parts->componentsJoinedByString("|"_ns), equals(row.joined));
    if (*row.separator) {
      EXPECT_THAT(parts->componentsJoinedByString(box(row.separator)), equals(row.text));
    }
  }
}

TEST(StringComponents, NeedASeparator) {
  EXPECT_THAT([] { componentsSeparatedByString("a"_ns, nullptr); },
              raises(NSInvalidArgumentException, "componentsSeparatedByString:"));
  EXPECT_EQ(componentsSeparatedByString(nullptr, ","_ns).get(), nullptr);
  EXPECT_EQ(send<Ref<NSArray>>("a,b"_ns, "componentsSeparatedByString:"_sel, ","_ns)->count(), 2u);
}
