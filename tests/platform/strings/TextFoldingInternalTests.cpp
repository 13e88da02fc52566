// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/TextFoldingInternal.h"

#include <gtest/gtest.h>

#include <limits>

namespace quoll::inline v1::detail {
namespace {

constexpr uint64_t everything = foldingOptions;

TEST(TextFolding, LeavesOutWhatItIsTold) {
  EXPECT_EQ(FoldedText(std::u16string_view(u"ÉΣ"), NSCaseInsensitiveSearch).units(), u"éσ");
  EXPECT_EQ(FoldedText(std::u16string_view(u"Éa"), NSDiacriticInsensitiveSearch).units(), u"Ea");
  EXPECT_EQ(FoldedText(std::u16string_view(u"ＡＢ"), NSWidthInsensitiveSearch).units(), u"AB");
  EXPECT_EQ(FoldedText(std::u16string_view(u"ＡÉ"), everything).units(), u"ae");
  EXPECT_EQ(FoldedText(std::string_view("AbC"), NSCaseInsensitiveSearch).units(), u"abc");
}

TEST(TextFolding, KnowsWhereEachUnitCameFrom) {
  const FoldedText folded(std::u16string_view(u"xe\u0301각y"), NSDiacriticInsensitiveSearch);
  ASSERT_EQ(folded.units(), u"xe\u1100\u1161\u11A8y");
  const size_t origins[] = {0, 1, 3, 3, 3, 4, 5};
  for (size_t i = 0; i < 7; ++i) EXPECT_EQ(folded.origin(i), origins[i]) << i;
  for (const size_t inside : {3, 4}) EXPECT_FALSE(folded.isBoundary(inside)) << inside;
  for (const size_t boundary : {0, 1, 2, 5, 6}) EXPECT_TRUE(folded.isBoundary(boundary)) << boundary;
  EXPECT_EQ(folded.indexOf(2), 2u);  // the mark became nothing; what follows comes next
  EXPECT_EQ(folded.indexOf(3), 2u);
  EXPECT_EQ(folded.indexOf(5), 6u);
}

TEST(TextFolding, FoldsEveryCodePointWithinItsRoom) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    for (const uint64_t options : {uint64_t{NSCaseInsensitiveSearch}, everything}) {
      const FoldedPoint folded = foldPoint(point, options);
      ASSERT_GE(folded.count, 0);
      ASSERT_LE(folded.count, int{std::size(folded.units)}) << static_cast<uint32_t>(point);
    }
  }
}

TEST(TextFolding, OfCaseAloneKeepsEveryLength) {
  for (char32_t point = 0; point <= 0x10FFFF; ++point) {
    ASSERT_EQ(foldPoint(point, NSCaseInsensitiveSearch).count, point < 0x10000 ? 1 : 2) << static_cast<uint32_t>(point);
  }
}

TEST(TextFolding, ReadsAnUnpairedSurrogateAsItself) {
  const std::u16string text{0xDC00, 0xD800, u'A', 0xD83D, 0xDE00, 0xD800};
  EXPECT_EQ(FoldedText(std::u16string_view(text), NSCaseInsensitiveSearch).units(),
            (std::u16string{0xDC00, 0xD800, u'a', 0xD83D, 0xDE00, 0xD800}));
}

}  // namespace
}  // namespace quoll::inline v1::detail
