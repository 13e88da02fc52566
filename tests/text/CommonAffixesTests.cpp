// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/CommonAffixes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(CommonAffixes, AreCountedInUnits) {
  EXPECT_EQ(quoll::QFStringLengthOfCommonPrefixWithString("abc"_ns, "abd"_ns), 2u);
  EXPECT_EQ(lengthOfCommonPrefixWithString("abc"_ns, ""_ns), 0u);
  EXPECT_EQ(lengthOfCommonPrefixWithString(""_ns, "abc"_ns), 0u);
  EXPECT_EQ(QFStringLengthOfCommonPrefixWithString(nullptr, "a"_ns), 0u);
  EXPECT_EQ(QFStringLengthOfCommonPrefixWithString("a"_ns, nullptr), 0u);
  EXPECT_EQ(lengthOfCommonPrefixWithString("abc"_ns, "abcdef"_ns), 3u);
  EXPECT_EQ(lengthOfCommonSuffixWithString("xyz"_ns, "ayz"_ns), 2u);
  EXPECT_EQ(lengthOfCommonSuffixWithString("yz"_ns, "xyz"_ns), 2u);
  EXPECT_EQ(lengthOfCommonSuffixWithString("abc"_ns, "abd"_ns), 0u);
  EXPECT_EQ(QFStringLengthOfCommonSuffixWithString(nullptr, "a"_ns), 0u);
}

TEST(CommonAffixes, AreRangesOfTheReceiver) {
  EXPECT_EQ(rangeOfCommonPrefixWithString("abc"_ns, "abd"_ns), NSMakeRange(0, 2));
  EXPECT_EQ(rangeOfCommonSuffixWithString("xyz"_ns, "ayz"_ns), NSMakeRange(1, 2));
}

TEST(CommonAffixes, AnEmptySuffixIsNowhereWhileAnEmptyPrefixIsAtTheStart) {
  EXPECT_EQ(rangeOfCommonPrefixWithString("xbc"_ns, "abc"_ns), NSMakeRange(0, 0));
  EXPECT_EQ(rangeOfCommonSuffixWithString("abc"_ns, "abd"_ns), NSMakeRange(NSNotFound, 0));
  EXPECT_EQ(rangeOfCommonSuffixWithString("abc"_ns, nullptr), NSMakeRange(NSNotFound, 0));
  EXPECT_EQ(rangeOfCommonSuffixWithString(nullptr, "a"_ns), NSMakeRange(0, 0));
}

TEST(CommonAffixes, MayEndInsideASurrogatePair) {
  EXPECT_EQ(lengthOfCommonPrefixWithString(u"\U0001F600"_ns, u"\U0001F601"_ns), 1u);
  EXPECT_EQ(lengthOfCommonSuffixWithString(u"\U0001F600"_ns, u"\U0001FA00"_ns), 1u);
}

TEST(CommonAffixes, TakeNoAccountOfCaseOrForm) {
  EXPECT_EQ(lengthOfCommonPrefixWithString("aB"_ns, "ab"_ns), 1u);
  EXPECT_EQ(lengthOfCommonPrefixWithString("é"_ns, "e\u0301"_ns), 0u);
}

TEST(CommonAffixes, AgreeWithAPlainLoopWhateverTheStorage) {
  EXPECT_TRUE(rc::check([] {
    const auto gen = rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"aab")));
    std::u16string a = *gen, b = *gen;
    const auto common = *gen;
    a = common + a + common;
    b = common + b + common;
    uint64_t prefix = 0, suffix = 0;
    while (prefix < std::min(a.size(), b.size()) && a[prefix] == b[prefix]) ++prefix;
    while (suffix < std::min(a.size(), b.size()) && a[a.size() - 1 - suffix] == b[b.size() - 1 - suffix]) ++suffix;
    // "ä" in front makes the storage wide; the part behind it stays so.
    const Ref<NSString> wide = NSString::stringWithCharacters(u"ä" + a)->substringFromIndex(1);
    const Ref<NSString> narrow = NSString::stringWithCharacters(b);
    RC_ASSERT(lengthOfCommonPrefixWithString(wide, narrow) == prefix);
    RC_ASSERT(lengthOfCommonSuffixWithString(narrow, wide) == suffix);
  }));
}

TEST(CommonAffixes, AllocateNothing) {
  const Ref<NSString> a = NSString::stringWithUTF8("x" + std::string(1000, 'a')), b = "y"_ns;
  lengthOfCommonPrefixWithString(a, b);
  const AllocationCount count;
  lengthOfCommonPrefixWithString(a, b);
  lengthOfCommonSuffixWithString(a, a);
  EXPECT_EQ(count.made(), 0u);
}

TEST(CommonAffixes, AnswerByName) {
  EXPECT_EQ(send<uint64_t>("abc"_ns, "lengthOfCommonPrefixWithString:"_sel, "abd"_ns), 2u);
  EXPECT_EQ(send<NSRange>("abc"_ns, "rangeOfCommonSuffixWithString:"_sel, "bc"_ns), NSMakeRange(1, 2));
}

}  // namespace
