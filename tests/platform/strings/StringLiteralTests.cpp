// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/StringLiteral.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

using namespace quoll::literals;
using quoll::equals;
using quoll::NSString;
using quoll::Ref;

namespace {

constinit NSString* const key = "key"_ns;  // made by the compiler, before anything runs

TEST(StringLiteral, IsAConstant) {
  const AllocationCount allocations;
  EXPECT_EQ(key->length(), 3u);
  EXPECT_EQ("key"_ns, key);
  EXPECT_EQ(allocations.made(), 0u);
}

TEST(StringLiteral, IsStoredAsAsciiWhereItFits) {
  EXPECT_STREQ("plain"_ns->asciiCharacters(), "plain");
  EXPECT_STREQ(u"plain"_ns->asciiCharacters(), "plain");
  EXPECT_EQ(std::u16string_view("Grüße 😀"_ns->utf16Characters()), u"Grüße 😀");
  EXPECT_EQ(""_ns->length(), 0u);
}

TEST(StringLiteral, TakesUTF16WithUnpairedSurrogates) {
  EXPECT_EQ(u"a\xD800"_ns->length(), 2u);
  EXPECT_EQ(u"a\xD800"_ns->characterAtIndex(1), 0xD800);
}

TEST(StringLiteral, KeepsUnitsThatAreZero) { EXPECT_EQ("a\0b"_ns->length(), 3u); }

TEST(StringLiteral, IsAnOrdinaryStringOtherwise) {
  EXPECT_THAT("text"_ns, equals(NSString::stringWithUTF8("text")));
  EXPECT_EQ("text"_ns->class_(), NSString::classObject());
  EXPECT_EQ("text"_ns->hash(), NSString::stringWithUTF8("text")->hash());
  EXPECT_EQ("text"_ns->copy(), "text"_ns);
}

TEST(StringLiteral, IsNeverCounted) {
  {
    const Ref<NSString> first = "kept"_ns;
    const Ref<NSString> second = first;
  }
  const quoll::Weak<NSString> weak = "kept"_ns;
  EXPECT_EQ(weak.lock(), "kept"_ns);
}

TEST(StringLiteral, SharesItsUnitsWithNobodyWhoNeedsThemToEnd) {
  const Ref<NSString> part = "text"_ns->substringToIndex(2);
  EXPECT_THAT(part, equals("te"));
}

}  // namespace
