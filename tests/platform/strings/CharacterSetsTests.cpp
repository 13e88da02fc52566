// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CharacterSets.h"

#include <gtest/gtest.h>

#include <set>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

const std::set<char16_t> whitespace = {0x0009, 0x0020, 0x00A0, 0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                       0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
const std::set<char16_t> newlines = {0x000A, 0x000B, 0x000C, 0x000D, 0x0085, 0x2028, 0x2029};

TEST(CharacterSets, HoldExactlyTheirUnits) {
  const Ref<NSCharacterSet> blanks = NSCharacterSet::whitespaceCharacterSet();
  const Ref<NSCharacterSet> ends = NSCharacterSet::newlineCharacterSet();
  const Ref<NSCharacterSet> both = NSCharacterSet::whitespaceAndNewlineCharacterSet();
  for (int i = 0; i < 0x10000; ++i) {
    const auto unit = static_cast<char16_t>(i);
    EXPECT_EQ(blanks->characterIsMember(unit), whitespace.count(unit) == 1) << i;
    EXPECT_EQ(ends->characterIsMember(unit), newlines.count(unit) == 1) << i;
    EXPECT_EQ(both->characterIsMember(unit), whitespace.count(unit) + newlines.count(unit) == 1) << i;
    EXPECT_EQ(detail::isWhitespaceUnit(unit), blanks->characterIsMember(unit)) << i;
    EXPECT_EQ(detail::isNewlineUnit(unit), ends->characterIsMember(unit)) << i;
  }
}

TEST(CharacterSets, ArePredefinedUnderTheirNumbers) {
  EXPECT_TRUE(NSCharacterSet::whitespaceCharacterSet() == CFCharacterSetGetPredefined(kCFCharacterSetWhitespace));
  EXPECT_TRUE(NSCharacterSet::newlineCharacterSet() == CFCharacterSetGetPredefined(kCFCharacterSetNewline));
  EXPECT_TRUE(NSCharacterSet::whitespaceAndNewlineCharacterSet() ==
              CFCharacterSetGetPredefined(kCFCharacterSetWhitespaceAndNewline));
  EXPECT_EQ(int{kCFCharacterSetWhitespace}, 2);
  EXPECT_EQ(int{kCFCharacterSetWhitespaceAndNewline}, 3);
  EXPECT_EQ(int{kCFCharacterSetNewline}, 15);
  EXPECT_THAT([] { CFCharacterSetGetPredefined(static_cast<CFCharacterSetPredefinedSet>(99)); },
              raises(NSInvalidArgumentException, "99"));
}

TEST(CharacterSets, TellMembersByFunctionAndByName) {
  const NSCharacterSet* blanks = CFCharacterSetGetPredefined(kCFCharacterSetWhitespace);
  EXPECT_TRUE(CFCharacterSetIsCharacterMember(blanks, u' '));
  EXPECT_FALSE(CFCharacterSetIsCharacterMember(blanks, u'\n'));
  EXPECT_FALSE(CFCharacterSetIsCharacterMember(nullptr, u' '));
  const auto set = send<Ref<NSCharacterSet>>(NSCharacterSet::classObject(), "newlineCharacterSet"_sel);
  EXPECT_TRUE(send<bool>(set, "characterIsMember:"_sel, u'\n'));
}

TEST(CharacterSets, AreTheirOwnCopies) {
  const Ref<NSCharacterSet> set = NSCharacterSet::newlineCharacterSet();
  EXPECT_TRUE(set->copy() == set);
}

}  // namespace
