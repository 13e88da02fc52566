// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/BlanksInternal.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::ExactSpan;

class Blanks : public quoll::testing::EachInstructionSet {};

template <class Unit> void expectBlanksUpToEachPlace(Unit other) {
  for (size_t length = 1; length < 600; length += length < 140 ? 1 : 41) {
    for (size_t place = 0; place < length; place += length < 140 ? 1 : 13) {
      ExactSpan<Unit> text(std::basic_string<Unit>(length, Unit{' '}));
      text.data()[place] = other;
      ASSERT_EQ(blankPrefixLength(text.view()), place) << length;
      ASSERT_EQ(blankSuffixLength(text.view()), length - 1 - place) << length;
    }
    const ExactSpan<Unit> blank(std::basic_string<Unit>(length, Unit{'\n'}));
    ASSERT_EQ(blankPrefixLength(blank.view()), length);
    ASSERT_EQ(blankSuffixLength(blank.view()), length);
  }
}

TEST_F(Blanks, EndAtTheFirstOtherUnitWhereverItStands) {
  expectBlanksUpToEachPlace<char>('x');
  expectBlanksUpToEachPlace<char16_t>(u'x');
  expectBlanksUpToEachPlace<char16_t>(0xD83D);
}

TEST_F(Blanks, AreTheWhiteSpaceAndTheNewlinesOfAllUnits) {
  for (unsigned each = 0; each <= 0xFFFF; ++each) {
    const auto unit = static_cast<char16_t>(each);
    const bool isBlank = isWhitespaceUnit(unit) || isNewlineUnit(unit);
    for (const size_t length : {1u, 6u, 12u, 40u}) {
      std::u16string text(length, u' ');
      text[length / 2] = unit;
      ASSERT_EQ(blankPrefixLength(text) == length, isBlank) << each << " of " << length;
      ASSERT_EQ(blankSuffixLength(text) == length, isBlank) << each << " of " << length;
      if (each >= 0x80) continue;
      const std::string ascii(text.begin(), text.end());
      ASSERT_EQ(blankPrefixLength(ascii) == length, isBlank) << each << " of " << length;
      ASSERT_EQ(blankSuffixLength(ascii) == length, isBlank) << each << " of " << length;
    }
  }
}

TEST_F(Blanks, AreNoneInAnEmptyText) {
  EXPECT_EQ(blankPrefixLength(std::string_view()), 0u);
  EXPECT_EQ(blankSuffixLength(std::u16string_view()), 0u);
}

}  // namespace
}  // namespace quoll::inline v1::detail
