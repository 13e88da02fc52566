// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/LineBounds.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <vector>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

constexpr uint64_t most = std::numeric_limits<uint64_t>::max();

struct Line {
  std::string text;
  NSRange contents;
  NSRange enclosing;
  friend bool operator==(const Line&, const Line&) = default;
};
void PrintTo(const Line& line, std::ostream* out) {
  *out << '"' << line.text << "\" ";
  quoll::PrintTo(line.contents, out);
  *out << " in ";
  quoll::PrintTo(line.enclosing, out);
}

std::vector<Line> linesIn(const NSString* text, NSRange range, uint64_t options = NSStringEnumerationByLines) {
  std::vector<Line> lines;
  enumerateSubstringsInRange_options_usingBlock(
      text, range, static_cast<NSStringEnumerationOptions>(options),
      [&](NSString* part, NSRange contents, NSRange enclosing, bool*) {
        lines.push_back({part ? part->utf8() : "(null)", contents, enclosing});
      });
  return lines;
}

TEST(LineBounds, AreVisitedAsTheExampleDoes) {
  std::string printed;
  const auto print = [&](quoll::NSString* line) { printed += line->utf8() + ";"; };
  const quoll::Ref<quoll::NSString> text = "one\ntwo\r\nthree"_ns;
  quoll::enumerateSubstringsInRange_options_usingBlock(
      text, quoll::NSMakeRange(0, text->length()), quoll::NSStringEnumerationByLines,
      [&](quoll::NSString* line, quoll::NSRange, quoll::NSRange, bool*) { print(line); });
  EXPECT_EQ(printed, "one;two;three;");
}

TEST(LineBounds, EndAtEachTerminator) {
  const Ref<NSString> text = "a\nb\rc\r\nd\u0085e\u2028f\u2029g"_ns;
  EXPECT_EQ(linesIn(text, {0, text->length()}), (std::vector<Line>{{"a", {0, 1}, {0, 2}},
                                                                   {"b", {2, 1}, {2, 2}},
                                                                   {"c", {4, 1}, {4, 3}},
                                                                   {"d", {7, 1}, {7, 2}},
                                                                   {"e", {9, 1}, {9, 2}},
                                                                   {"f", {11, 1}, {11, 2}},
                                                                   {"g", {13, 1}, {13, 1}}}));
}

TEST(LineBounds, DoNotEndAtVerticalTabAndFormFeed) {
  EXPECT_EQ(lineRangeForRange("a\vb\fc\n"_ns, {0, 0}), (NSRange{0, 6}));
}

TEST(LineBounds, GiveTheLineOfAPosition) {
  struct Row {
    const char* claim;
    int64_t position;
    int64_t start, end, contentsEnd;
  };
  constexpr Row rows[] = {{"the first unit", 0, 0, 3, 2},
                          {"the terminator belongs to its line", 2, 0, 3, 2},
                          {"the unit behind it does not", 3, 3, 7, 5},
                          {"a carriage return", 5, 3, 7, 5},
                          {"between carriage return and line feed", 6, 3, 7, 5},
                          {"the last line has no terminator", 7, 7, 9, 9},
                          {"the end belongs to the last line", 9, 7, 9, 9}};
  const Ref<NSString> text = "ab\ncd\r\nef"_ns;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    CFIndex start = -1, end = -1, contentsEnd = -1;
    CFStringGetLineBounds(text, {row.position, 0}, &start, &end, &contentsEnd);
    EXPECT_EQ(start, row.start);
    EXPECT_EQ(end, row.end);
    EXPECT_EQ(contentsEnd, row.contentsEnd);
    EXPECT_EQ(lineRangeForRange(text, {static_cast<uint64_t>(row.position), 0}),
              (NSRange{static_cast<uint64_t>(row.start), static_cast<uint64_t>(row.end - row.start)}));
  }
}

TEST(LineBounds, OfTheEndBehindATerminatorAreThoseOfAnEmptyLine) {
  EXPECT_EQ(lineRangeForRange("ab\n"_ns, {3, 0}), (NSRange{3, 0}));
  EXPECT_EQ(lineRangeForRange(""_ns, {0, 0}), (NSRange{0, 0}));
}

TEST(LineBounds, OfARangeAreThoseOfItsFirstAndLastLine) {
  const Ref<NSString> text = "ab\ncd\r\nef"_ns;
  EXPECT_EQ(lineRangeForRange(text, {1, 3}), (NSRange{0, 7}));
  EXPECT_EQ(lineRangeForRange(text, {1, 2}), (NSRange{0, 3}));  // the last unit is the terminator of the first line
  EXPECT_EQ(lineRangeForRange(text, {4, 2}), (NSRange{3, 4}));  // ends inside the pair
  uint64_t start = most, end = most, contentsEnd = most;
  getLineStart_end_contentsEnd_forRange(text, &start, &end, &contentsEnd, {1, 3});
  EXPECT_EQ(start, 0u);
  EXPECT_EQ(end, 7u);
  EXPECT_EQ(contentsEnd, 5u);
}

TEST(LineBounds, NeedNotAllBeAskedFor) {
  CFIndex end = -1;
  CFStringGetLineBounds("a\n"_ns, {0, 0}, nullptr, &end, nullptr);
  EXPECT_EQ(end, 2);
  getLineStart_end_contentsEnd_forRange("a\n"_ns, nullptr, nullptr, nullptr, {0, 0});
}

TEST(LineBounds, RaiseForARangePastTheEnd) {
  const Ref<NSString> text = NSString::stringWithUTF8("ab");
  for (const NSRange range :
       {NSRange{3, 0}, NSRange{2, 1}, NSRange{1, most}, NSRange{most, 1}, NSRange{NSNotFound, 0}}) {
    EXPECT_THAT([&] { lineRangeForRange(text, range); }, raises(NSRangeException, "-[NSString lineRangeForRange:]"));
    EXPECT_THAT([&] { getLineStart_end_contentsEnd_forRange(text, nullptr, nullptr, nullptr, range); },
                raises(NSRangeException));
  }
  EXPECT_THAT([&] { CFStringGetLineBounds(text, {-1, 0}, nullptr, nullptr, nullptr); }, raises(NSRangeException));
  EXPECT_THAT([&] { CFStringGetLineBounds(text, {0, -1}, nullptr, nullptr, nullptr); }, raises(NSRangeException));
}

TEST(LineBounds, OfNullAreZero) {
  CFIndex start = -1, end = -1, contentsEnd = -1;
  CFStringGetLineBounds(nullptr, {5, 5}, &start, &end, &contentsEnd);
  EXPECT_EQ(start + end + contentsEnd, 0);
  EXPECT_EQ(lineRangeForRange(nullptr, {5, 5}), (NSRange{0, 0}));
  EXPECT_TRUE(linesIn(nullptr, {0, 5}).empty());
}

TEST(LineBounds, AreVisitedOnlyWhereTheRangeHasAUnit) {
  const Ref<NSString> text = "ab\ncd\nef"_ns;
  EXPECT_TRUE(linesIn(text, {1, 0}).empty());
  EXPECT_TRUE(linesIn(text, {8, 0}).empty());
  EXPECT_TRUE(linesIn(""_ns, {0, 0}).empty());
  EXPECT_EQ(linesIn(text, {0, 3}).size(), 1u);
  EXPECT_EQ(linesIn(text, {0, 4}).size(), 2u);
  EXPECT_EQ(linesIn("a\n"_ns, {0, 2}).size(), 1u);  // behind the last terminator is no line
}

TEST(LineBounds, EncloseTheWholeLineAlsoWhereTheRangeIsAPartOfIt) {
  EXPECT_EQ(linesIn("abc\ndef\n"_ns, {1, 5}), (std::vector<Line>{{"bc", {1, 2}, {0, 4}}, {"de", {4, 2}, {4, 4}}}));
  EXPECT_EQ(linesIn("abc\r\nd"_ns, {4, 1}), (std::vector<Line>{{"", {3, 0}, {0, 5}}}));
}

TEST(LineBounds, AreVisitedUpToTheEndOfTheString) {
  const std::vector<Line> both = {{"a", {0, 1}, {0, 2}}, {"b", {2, 1}, {2, 1}}};
  EXPECT_EQ(linesIn("a\nb"_ns, {0, 99}), both);
  EXPECT_EQ(linesIn("a\nb"_ns, {0, most}), both);
  EXPECT_EQ(linesIn("a\nb"_ns, {2, most}), (std::vector<Line>{both[1]}));
  EXPECT_TRUE(linesIn("a\nb"_ns, {3, 5}).empty());
  EXPECT_TRUE(linesIn("a\nb"_ns, {most, most}).empty());
}

TEST(LineBounds, AreVisitedBackwards) {
  const Ref<NSString> text = "ab\ncd\r\nef"_ns;
  std::vector<Line> forwards = linesIn(text, {1, 7});
  std::reverse(forwards.begin(), forwards.end());
  EXPECT_EQ(linesIn(text, {1, 7}, NSStringEnumerationReverse), forwards);
  EXPECT_EQ(linesIn("a\n"_ns, {0, 2}, NSStringEnumerationReverse).size(), 1u);
}

TEST(LineBounds, AreVisitedWithoutAllocationWhereNoTextIsWanted) {
  const Ref<NSString> text = NSString::stringWithUTF8("one\ntwo\nthree\n");
  const auto options = NSStringEnumerationByLines | NSStringEnumerationSubstringNotRequired;
  uint64_t units = 0;
  const auto visit = [&] {
    units = 0;
    enumerateSubstringsInRange_options_usingBlock(text, {0, text->length()}, options,
                                                  [&](NSString* part, NSRange, NSRange enclosing, bool*) {
                                                    units += enclosing.length;
                                                    if (part) units = most;
                                                  });
  };
  visit();  // the classes are built when first asked for
  const AllocationCount allocations;
  visit();
  EXPECT_EQ(allocations.made(), 0u);
  EXPECT_EQ(units, text->length());
}

TEST(LineBounds, EndTheWalkWhereTheCallbackSaysSo) {
  for (const uint64_t options : {uint64_t{0}, uint64_t{NSStringEnumerationReverse}}) {
    for (const Ref<NSString>& text : {Ref<NSString>("a\nb\nc"_ns), Ref<NSString>(("a\nb\nc"_ns)->mutableCopy())}) {
      int calls = 0;
      enumerateSubstringsInRange_options_usingBlock(
          text, {0, 5}, static_cast<NSStringEnumerationOptions>(options),
          [&](NSString*, NSRange, NSRange, bool* stop) { *stop = ++calls == 2; });
      EXPECT_EQ(calls, 2);
    }
  }
}

TEST(LineBounds, RefuseUnknownOptions) {
  EXPECT_THAT([] { linesIn("a"_ns, {0, 1}, 3); }, raises(NSInvalidArgumentException, "3"));
}

TEST(LineBounds, HoldTheStringWhileItIsVisited) {
  Ref<NSString> text = NSString::stringWithUTF8("a\nb");
  int calls = 0;
  enumerateSubstringsInRange_options_usingBlock(text, {0, 3}, NSStringEnumerationByLines,
                                                [&](NSString*, NSRange, NSRange, bool*) {
                                                  text = nullptr;
                                                  ++calls;
                                                });
  EXPECT_EQ(calls, 2);
}

TEST(LineBounds, GoOnBehindWhatTheCallbackMadeOfALine) {
  const Ref<NSMutableString> text = NSMutableString::stringWithString("a\nb\nc"_ns);
  enumerateSubstringsInRange_options_usingBlock(
      text, {0, 5}, NSStringEnumerationByLines, [&](NSString* part, NSRange contents, NSRange, bool*) {
        text->replaceCharactersInRange_withString(contents, part->stringByAppendingString("\u00E9!"_ns));
      });
  EXPECT_THAT(text, equals("aé!\nbé!\ncé!"));
  enumerateSubstringsInRange_options_usingBlock(
      text, {0, text->length()}, NSStringEnumerationByLines,
      [&](NSString*, NSRange, NSRange enclosing, bool*) { text->deleteCharactersInRange(enclosing); });
  EXPECT_THAT(text, equals(""));
}

TEST(LineBounds, SurviveACallbackThatEmptiesTheText) {
  for (const uint64_t options : {uint64_t{0}, uint64_t{NSStringEnumerationReverse}}) {
    const Ref<NSMutableString> text = NSMutableString::stringWithString("a\nb\nc"_ns);
    int calls = 0;
    enumerateSubstringsInRange_options_usingBlock(text, {0, 5}, static_cast<NSStringEnumerationOptions>(options),
                                                  [&](NSString*, NSRange, NSRange, bool*) {
                                                    text->setString(""_ns);
                                                    ++calls;
                                                  });
    EXPECT_EQ(calls, 1);
  }
}

TEST(LineBounds, AnswerByName) {
  EXPECT_EQ(send<NSRange>("a\nb"_ns, "lineRangeForRange:"_sel, NSRange{0, 1}), (NSRange{0, 2}));
}

RC_GTEST_PROP(LineBounds, TileAnyString, ()) {
  const auto units = *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"ab\n\r\u0085\u2028")));
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  const std::vector<Line> lines = linesIn(text, {0, most});
  uint64_t position = 0;
  for (const Line& line : lines) {
    RC_ASSERT(line.enclosing.location == position && line.enclosing.length > 0);
    RC_ASSERT(line.contents.location == position && line.contents.length <= line.enclosing.length);
    RC_ASSERT(lineRangeForRange(text, {position, 0}) == line.enclosing);
    position = NSMaxRange(line.enclosing);
  }
  RC_ASSERT(position == text->length());
  RC_ASSERT(linesIn(text->mutableCopy(), {0, most}) == lines);
}

}  // namespace
