// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/LineModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "QuollFoundation/core/Ranges.h"
#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/FreeMemory.h"

using namespace quoll;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr uint64_t excluding = QFLineEnumerationExcludeTerminators;
constexpr uint64_t trimming = QFLineEnumerationExcludeTerminators | QFLineEnumerationTrimWhitespace;

/// One call of a callback, as a value.
struct Call {
  std::u16string text;
  bool hasText;
  uint64_t location, length;
  bool isBlank;
  uint64_t index;
  bool operator==(const Call&) const = default;
};
void PrintTo(const Call& call, std::ostream* out) {
  *out << "{" << (call.hasText ? NSString::stringWithCharacters(call.text)->utf8() : "(null)") << ", " << call.location
       << ", " << call.length << (call.isBlank ? ", blank, " : ", line, ") << call.index << "}";
}
Call line(std::u16string text, uint64_t location, uint64_t length, uint64_t index) {
  return {std::move(text), true, location, length, false, index};
}
Call blank(std::u16string text, uint64_t location, uint64_t length, uint64_t index) {
  return {std::move(text), true, location, length, true, index};
}

void collect(NSString* substring, uint64_t location, uint64_t length, bool isBlank, uint64_t index, bool*,
             void* calls) {
  static_cast<std::vector<Call>*>(calls)->push_back(
      {substring ? substring->utf16() : u"", substring != nullptr, location, length, isBlank, index});
}
std::vector<Call> callsOf(const NSString* text, NSRange range, uint64_t options) {
  std::vector<Call> calls;
  enumerateLinesInRange_options_function_context(text, range, options, &collect, &calls);
  return calls;
}
std::vector<Call> callsOf(const NSString* text, uint64_t options) {
  std::vector<Call> calls;
  enumerateLinesWithOptions_function_context(text, options, &collect, &calls);
  return calls;
}

std::vector<NSRange> asVector(NSPointerArray* ranges) {
  std::vector<NSRange> result;
  for (uint64_t i = 0; i < ranges->count(); ++i) result.push_back(rangeAtIndex(ranges, i));
  return result;
}
/// Of the plain array, which is freed.
std::vector<NSRange> plainLineRanges(const NSString* text) {
  uint64_t count = 0;
  const std::unique_ptr<NSRange, decltype(&std::free)> ranges(getLineRanges(text, &count), &std::free);
  return {ranges.get(), ranges.get() + count};
}

/// Texts of few kinds of units, so that terminators meet in all ways.
Ref<NSString> anyText() {
  const auto units = *rc::gen::container<std::u16string>(
      rc::gen::element<char16_t>(u'a', u' ', u'\t', u'\n', u'\r', u'\x85', u'\x2028', u'\x2029', u'\v', u'\f', 0xD800));
  return NSString::stringWithCharacters(units);
}

TEST(LineModel, AnswersByNameInAllItsForms) {
  const Ref<NSString> text = "a\nbb\nccc"_ns;
  const NSRange middle{2, 3};
  uint64_t calls = 0;
  const auto count = [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* context) {
    ++*static_cast<uint64_t*>(context);
  };
  const QFLineEnumerationFunction function = count;
  void* const context = &calls;
  send(text, "enumerateLinesInRange:options:function:context:"_sel, middle, uint64_t{0}, function, context);
  EXPECT_EQ(calls, 1u);
  send(text, "enumerateLinesWithOptions:function:context:"_sel, uint64_t{0}, function, context);
  EXPECT_EQ(calls, 4u);
  uint64_t number = 0;
  std::free(send<NSRange*>(text, "getLineRangesInRange:count:"_sel, middle, &number));
  EXPECT_EQ(number, 1u);
  std::free(send<NSRange*>(text, "getLineRanges:"_sel, &number));
  EXPECT_EQ(number, 3u);
  EXPECT_EQ(send<Ref<NSPointerArray>>(text, "lineRangesInRange:"_sel, middle)->count(), 1u);
  EXPECT_EQ(send<Ref<NSPointerArray>>(text, "_10_6_lineRangesInRange:"_sel, NSRange{0, 0})->count(), 0u);
  EXPECT_EQ(send<Ref<NSPointerArray>>(text, "lineRangesInRange:"_sel, NSRange{0, 0})->count(), 1u);
  EXPECT_EQ(send<uint64_t>(text, "numberOfLinesInRange:"_sel, NSRange{0, 5}), 2u);
  EXPECT_EQ(send<uint64_t>(text, "_10_6_numberOfLinesInRange:"_sel, NSRange{0, 5}), 2u);
  EXPECT_EQ(send<NSRange>(text, "lineNumberRangeInRange:"_sel, middle), NSMakeRange(1, 1));
  EXPECT_EQ(send<NSRange>(text, "rangeOfLine:"_sel, uint64_t{2}), NSMakeRange(5, 3));
}

}  // namespace

static_assert(QFLineEnumerationNoLineSubstrings == 0x4 && QFLineEnumerationNoSeparatorSubstrings == 0x10 &&
              QFLineEnumerationExcludeTerminators == 0x400 && QFLineEnumerationTrimWhitespace == 0x1000);

TEST(LineModel, TheHeadersExampleVisitsLinesAndFindsOneByNumber) {
  std::string out;
  Ref<NSString> text = "one\n\nthree"_ns;
  quoll::enumerateLines(text, quoll::QFLineEnumerationExcludeTerminators, [&](const quoll::QFLine& line, bool*) {
    if (!line.isBlank) out += std::to_string(line.index) + ": " + line.substring->utf8() + "\n";
  });
  EXPECT_EQ(out, "0: one\n2: three\n");
  EXPECT_EQ(quoll::rangeOfLine(text, 2), NSMakeRange(5, 5));
}

// The enumerator ------------------------------------------------------------------------------------------------------

TEST(LineEnumeration, OfAnEmptyStringCallsNobody) {
  EXPECT_THAT(callsOf(""_ns, 0), IsEmpty());
  EXPECT_THAT(callsOf(""_ns, trimming), IsEmpty());
  EXPECT_THAT(callsOf(""_ns, {0, 5}, 0), IsEmpty());
}
TEST(LineEnumeration, WithoutOptionsGivesWholeLines) {
  EXPECT_THAT(callsOf("a\nb"_ns, 0), ElementsAre(line(u"a\n", 0, 2, 0), line(u"b", 2, 1, 1)));
}
TEST(LineEnumeration, ExcludingTerminatorsShortensTheSubstringButNotTheRange) {
  EXPECT_THAT(callsOf("a\nb"_ns, excluding), ElementsAre(line(u"a", 0, 2, 0), line(u"b", 2, 1, 1)));
}
TEST(LineEnumeration, ExcludingTerminatorsTellsBlankLinesApart) {
  EXPECT_THAT(callsOf("a\n\nb"_ns, excluding),
              ElementsAre(line(u"a", 0, 2, 0), blank(u"\n", 2, 1, 1), line(u"b", 3, 1, 2)));
}
TEST(LineEnumeration, WithTerminatorsAnEmptyLineIsALineLikeOthers) {
  EXPECT_THAT(callsOf("a\n\nb"_ns, 0), ElementsAre(line(u"a\n", 0, 2, 0), line(u"\n", 2, 1, 1), line(u"b", 3, 1, 2)));
}
TEST(LineEnumeration, TrimmingALineOfWhiteSpaceGivesOneBlankCallOfTheWholeLine) {
  EXPECT_THAT(callsOf(" \t \n"_ns, trimming), ElementsAre(blank(u"\n", 0, 4, 0)));
}
TEST(LineEnumeration, TrimmingAnEmptyLineGivesTheTerminatorsRange) {
  EXPECT_THAT(callsOf("a\r\n\r\n"_ns, trimming), ElementsAre(line(u"a", 0, 3, 0), blank(u"\r\n", 3, 2, 1)));
}
TEST(LineEnumeration, TrimmingStripsBothEndsButNotTheMiddle) {
  EXPECT_THAT(callsOf("\t a b \u00A0\n"_ns, trimming), ElementsAre(line(u"a b", 0, 8, 0)));
}
TEST(LineEnumeration, TrimmingHasNoEffectWithoutExcludingTerminators) {
  EXPECT_THAT(callsOf(" a \n"_ns, QFLineEnumerationTrimWhitespace), ElementsAre(line(u" a \n", 0, 4, 0)));
}
TEST(LineEnumeration, TrimmingTakesUnicodeSpacesButNoVerticalTabOrFormFeed) {
  EXPECT_THAT(callsOf(u"\x3000\x2003"
                      u"a\v\f"_ns,
                      trimming),
              ElementsAre(line(u"a\v\f", 0, 5, 0)));
}
TEST(LineEnumeration, ABlankLastLineWithoutTerminatorGetsNoCall) {
  EXPECT_THAT(callsOf("a\n  "_ns, trimming), ElementsAre(line(u"a", 0, 2, 0)));
  EXPECT_THAT(callsOf("a\n"_ns, excluding), ElementsAre(line(u"a", 0, 2, 0)));
}
TEST(LineEnumeration, NoLineSubstringsGivesNullForLinesOnly) {
  EXPECT_THAT(callsOf("a\n\n"_ns, excluding | QFLineEnumerationNoLineSubstrings),
              ElementsAre(Call{u"", false, 0, 2, false, 0}, blank(u"\n", 2, 1, 1)));
}
TEST(LineEnumeration, NoSeparatorSubstringsGivesNullForBlankLinesOnly) {
  EXPECT_THAT(callsOf("a\n\n"_ns, excluding | QFLineEnumerationNoSeparatorSubstrings),
              ElementsAre(line(u"a", 0, 2, 0), Call{u"", false, 2, 1, true, 1}));
}
TEST(LineEnumeration, IgnoresOptionBitsWithoutMeaning) {
  EXPECT_EQ(callsOf("a\n b"_ns, ~uint64_t{0x1414}), callsOf("a\n b"_ns, 0));
}
TEST(LineEnumeration, KnowsEveryTerminatorAndNoOther) {
  EXPECT_THAT(callsOf(u"a\nb\rc\r\nd\x85"
                      u"e\x2028"
                      u"f\x2029g\vh\fi"_ns,
                      excluding),
              ElementsAre(line(u"a", 0, 2, 0), line(u"b", 2, 2, 1), line(u"c", 4, 3, 2), line(u"d", 7, 2, 3),
                          line(u"e", 9, 2, 4), line(u"f", 11, 2, 5), line(u"g\vh\fi", 13, 5, 6)));
}
TEST(LineEnumeration, CarriageReturnLineFeedIsOneTerminatorButLineFeedCarriageReturnIsTwo) {
  EXPECT_THAT(callsOf("a\r\nb"_ns, 0), ElementsAre(line(u"a\r\n", 0, 3, 0), line(u"b", 3, 1, 1)));
  EXPECT_THAT(callsOf("a\n\rb"_ns, 0), ElementsAre(line(u"a\n", 0, 2, 0), line(u"\r", 2, 1, 1), line(u"b", 3, 1, 2)));
}
TEST(LineEnumeration, StopInTheFirstCallEndsTheWalk) {
  int calls = 0;
  enumerateLines("a\nb\nc"_ns, 0, [&](const QFLine&, bool* stop) {
    ++calls;
    *stop = true;
  });
  EXPECT_EQ(calls, 1);
}
TEST(LineEnumeration, StopInABlankLineEndsTheWalk) {
  int calls = 0;
  enumerateLines("\nb\nc"_ns, excluding, [&](const QFLine& line, bool* stop) {
    ++calls;
    *stop = line.isBlank;
  });
  EXPECT_EQ(calls, 1);
}
TEST(LineEnumeration, VisitsTheLineThatHoldsTheLocationWhole) {
  EXPECT_THAT(callsOf("ab\ncd\nef"_ns, {4, 1}, 0), ElementsAre(line(u"cd\n", 3, 3, 0)));
}
TEST(LineEnumeration, VisitsEachLineThatStartsBeforeTheEnd) {
  EXPECT_THAT(callsOf("ab\ncd\nef"_ns, {1, 3}, 0), ElementsAre(line(u"ab\n", 0, 3, 0), line(u"cd\n", 3, 3, 1)));
  EXPECT_THAT(callsOf("ab\ncd\nef"_ns, {1, 2}, 0), ElementsAre(line(u"ab\n", 0, 3, 0)));
}
TEST(LineEnumeration, OfAnEmptyRangeVisitsOneLine) {
  EXPECT_THAT(callsOf("ab\ncd"_ns, {3, 0}, 0), ElementsAre(line(u"cd", 3, 2, 0)));
  EXPECT_THAT(callsOf("ab\ncd"_ns, {5, 0}, 0), ElementsAre(line(u"cd", 3, 2, 0)));
}
TEST(LineEnumeration, BetweenCarriageReturnAndLineFeedTheLineIsTheOneThePairEnds) {
  EXPECT_THAT(callsOf("ab\r\ncd"_ns, {3, 0}, 0), ElementsAre(line(u"ab\r\n", 0, 4, 0)));
}
TEST(LineEnumeration, AtTheEndOfATerminatedTextFindsNoLine) { EXPECT_THAT(callsOf("ab\n"_ns, {3, 0}, 0), IsEmpty()); }
TEST(LineEnumeration, PastTheEndStopsAtTheEnd) {
  const auto both = {line(u"a\n", 0, 2, 0), line(u"b", 2, 1, 1)};
  EXPECT_EQ(callsOf("a\nb"_ns, {0, 100}, 0), std::vector<Call>(both));
  EXPECT_EQ(callsOf("a\nb"_ns, {1, UINT64_MAX}, 0), std::vector<Call>(both)) << "location + length wraps";
  EXPECT_THAT(callsOf("a\nb"_ns, {4, 1}, 0), IsEmpty());
  EXPECT_THAT(callsOf("a\nb"_ns, {UINT64_MAX, UINT64_MAX}, 0), IsEmpty());
}
TEST(LineEnumeration, OfOneUnit) {
  EXPECT_THAT(callsOf("a"_ns, excluding), ElementsAre(line(u"a", 0, 1, 0)));
  EXPECT_THAT(callsOf("\n"_ns, excluding), ElementsAre(blank(u"\n", 0, 1, 0)));
  EXPECT_THAT(callsOf(u"\xDC00"_ns, excluding), ElementsAre(line(u"\xDC00", 0, 1, 0)));
}
TEST(LineEnumeration, NullFunctionRaises) {
  EXPECT_THAT([] { enumerateLinesInRange_options_function_context("a"_ns, {0, 1}, 0, nullptr, nullptr); },
              raises(NSInvalidArgumentException,
                     "enumerateLinesInRange:options:function:context: callback function cannot be nil"));
  EXPECT_THAT([] { enumerateLinesWithOptions_function_context(""_ns, 0, nullptr, nullptr); },
              raises(NSInvalidArgumentException, "callback function cannot be nil"));
}
TEST(LineEnumeration, PassesTheContextUntouched) {
  int context = 0;
  enumerateLinesWithOptions_function_context(
      "a"_ns, 0, [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* c) { ++*static_cast<int*>(c); },
      &context);
  EXPECT_EQ(context, 1);
}
TEST(LineEnumeration, OfANullStringDoesNothing) {
  enumerateLinesInRange_options_function_context(nullptr, {0, 1}, 0, nullptr, nullptr);
  enumerateLines(nullptr, 0, [](const QFLine&, bool*) { FAIL(); });
}
TEST(LineEnumeration, SubstringsKeptByTheCallbackOutliveTheWalk) {
  std::vector<Ref<NSString>> kept;
  enumerateLines("one\ntwo"_ns, excluding, [&](const QFLine& line, bool*) { kept.push_back(line.substring); });
  EXPECT_THAT(kept[0], equals("one"_ns));
  EXPECT_THAT(kept[1], equals("two"_ns));
}
TEST(LineEnumeration, SurvivesACallbackThatDropsTheString) {
  Ref<NSString> text = NSString::stringWithUTF8(std::string(5000, 'x') + "\nsecond\nthird");
  size_t units = 0;
  enumerateLines(text.get(), 0, [&](const QFLine& line, bool*) {
    text = nullptr;
    units += line.substring->length();
  });
  EXPECT_EQ(units, 5013u);
}
TEST(LineEnumeration, SeesWhatItsCallbackChanges) {
  Ref<NSMutableString> text = "a\nb\nc"_ns->mutableCopy();
  std::vector<std::u16string> seen;
  enumerateLines(text, excluding, [&](const QFLine& line, bool*) {
    seen.push_back(line.substring->utf16());
    if (line.index == 0) text->replaceCharactersInRange_withString({2, 1}, "new\nlines"_ns);
  });
  EXPECT_THAT(seen, ElementsAre(u"a", u"new"));  // the end was fixed when the walk began, at what is now inside "lines"
  seen.clear();
  enumerateLines(text, excluding, [&](const QFLine& line, bool*) {
    seen.push_back(line.substring->utf16());
    text->setString(""_ns);
  });
  EXPECT_THAT(seen, ElementsAre(u"a"));
}
TEST(LineEnumeration, OfAMutableStringAgreesWithThatOfItsCopy) {
  for (NSString* text : {"a\n\n b \r\nc"_ns, "\n"_ns, "x"_ns, u"é\x2028 "_ns}) {
    const Ref<NSMutableString> changeable = text->mutableCopy();
    for (uint64_t at = 0; at <= text->length() + 1; ++at) {
      EXPECT_EQ(callsOf(changeable, {at, 2}, trimming), callsOf(text, {at, 2}, trimming));
      EXPECT_EQ(callsOf(changeable, {at, 0}, 0), callsOf(text, {at, 0}, 0));
    }
  }
}
TEST(LineEnumeration, WithoutSubstringsAllocatesNothing) {
  std::string ascii;
  for (int i = 0; i < 10000; ++i) ascii += "a line of some text\r\n";
  const auto options = trimming | QFLineEnumerationNoLineSubstrings | QFLineEnumerationNoSeparatorSubstrings;
  for (const Ref<NSString>& text : {NSString::stringWithUTF8(ascii), NSString::stringWithUTF8(ascii + "\u00E9")}) {
    uint64_t lines = 0;
    enumerateLines(text, options, [&](const QFLine&, bool*) { ++lines; });
    const AllocationCount allocations;
    enumerateLines(text, options, [&](const QFLine&, bool*) { ++lines; });
    EXPECT_EQ(allocations.made(), 0u);
    EXPECT_GE(lines, 20000u);
  }
}
TEST(LineEnumeration, OfTwoToThe31UnitsInOneLine) {
  const uint64_t length = (uint64_t{1} << 31) + 1;
  if (!hasFreeMemory(3 * length)) GTEST_SKIP() << "not enough memory";
  const Ref<NSString> text = NSString::stringWithUTF8(std::string(length, 'x'));
  EXPECT_EQ(numberOfLines(text), 1u);
  EXPECT_EQ(rangeOfLine(text, 0), NSMakeRange(0, length));
  EXPECT_THAT(callsOf(text, QFLineEnumerationNoLineSubstrings), ElementsAre(Call{u"", false, 0, length, false, 0}));
}

// Ranges --------------------------------------------------------------------------------------------------------------

TEST(LineRanges, AsAPlainArrayBelongToTheCaller) {
  EXPECT_THAT(plainLineRanges("a\n\nb"_ns), ElementsAre(NSMakeRange(0, 2), NSMakeRange(2, 1), NSMakeRange(3, 1)));
}
TEST(LineRanges, AsAPlainArrayOfNoLineAreNull) {
  uint64_t count = 99;
  EXPECT_EQ(getLineRanges(""_ns, &count), nullptr);
  EXPECT_EQ(count, 0u);
  count = 99;
  EXPECT_EQ(getLineRanges(nullptr, &count), nullptr);
  EXPECT_EQ(count, 0u);
}
TEST(LineRanges, AsAPlainArrayGrowPast64) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "x\n";
  const std::vector<NSRange> ranges = plainLineRanges(NSString::stringWithUTF8(text));
  ASSERT_EQ(ranges.size(), 1000u);
  EXPECT_EQ(ranges[999], NSMakeRange(1998, 2));
}
TEST(LineRanges, PastTheEndRaise) {
  uint64_t count = 0;
  Ref<NSString> text = "abc"_ns;
  const auto expected =
      NSString::stringWithFormat("Range {2, 2} lies out of bounds of string %p with length 3"_ns, text);
  EXPECT_THAT([&] { static_cast<void>(getLineRangesInRange_count(text, {2, 2}, &count)); },
              raises(NSRangeException, expected->utf8()));
  EXPECT_THAT([&] { static_cast<void>(getLineRangesInRange_count(text, {1, UINT64_MAX}, &count)); },
              raises(NSRangeException, "Range {1, 18446744073709551615} lies out of bounds"));
  EXPECT_THAT([&] { static_cast<void>(getLineRangesInRange_count(""_ns, {0, 1}, &count)); },
              raises(NSRangeException, "with length 0"));
}
TEST(LineRanges, AsAnArrayCoverWholeLines) {
  EXPECT_THAT(asVector(lineRanges("a\r\nb"_ns)), ElementsAre(NSMakeRange(0, 3), NSMakeRange(3, 1)));
  EXPECT_THAT(asVector(lineRangesInRange("ab\ncd\nef"_ns, {1, 3})), ElementsAre(NSMakeRange(0, 3), NSMakeRange(3, 3)));
}
TEST(LineRanges, OfAnEmptyRangeAreTheLineThere) {
  EXPECT_THAT(asVector(lineRangesInRange("ab\ncd"_ns, {4, 0})), ElementsAre(NSMakeRange(3, 2)));
  EXPECT_THAT(asVector(_10_6_lineRangesInRange("ab\ncd"_ns, {4, 0})), IsEmpty());
}
TEST(LineRanges, OfAnEmptyStringAreNone) {
  EXPECT_THAT(asVector(lineRanges(""_ns)), IsEmpty());
  EXPECT_THAT(asVector(lineRangesInRange(""_ns, {5, 0})), IsEmpty());
}
TEST(LineRanges, OfAnEmptyRangePastTheEndRaise) {
  EXPECT_THAT([] { lineRangesInRange("ab"_ns, {3, 0}); }, raises(NSRangeException, ""));
}

TEST(RangeOfLine, CountsFromZero) {
  EXPECT_EQ(rangeOfLine("a\nb\n"_ns, 0), NSMakeRange(0, 2));
  EXPECT_EQ(rangeOfLine("a\nb\n"_ns, 1), NSMakeRange(2, 2));
  EXPECT_EQ(_10_6_rangeOfLine("a\nb\n"_ns, 1), NSMakeRange(2, 2));
}
TEST(RangeOfLine, BeyondTheLastIsNotFound) {
  EXPECT_EQ(rangeOfLine("a\nb\n"_ns, 2), QFNotFoundRange);
  EXPECT_EQ(rangeOfLine(""_ns, 0), QFNotFoundRange);
  EXPECT_EQ(rangeOfLine("a"_ns, UINT64_MAX), QFNotFoundRange);
}

TEST(NumberOfLines, CountsWhatTheRangeTouches) {
  EXPECT_EQ(numberOfLines("a\nb"_ns), 2u);
  EXPECT_EQ(numberOfLines("a\nb\n"_ns), 2u);
  EXPECT_EQ(numberOfLines(""_ns), 0u);
  EXPECT_EQ(numberOfLinesInRange("a\nb\nc"_ns, {1, 2}), 2u);
  EXPECT_EQ(numberOfLinesInRange("a\nb\nc"_ns, {1, 0}), 0u);
  EXPECT_EQ(_10_6_numberOfLinesInRange("a\r\nb"_ns, {2, 1}), 1u) << "inside the pair";
  EXPECT_EQ(numberOfLinesInRange("a\nb"_ns, {0, UINT64_MAX}), 2u);
  EXPECT_EQ(numberOfLinesInRange("a\nb"_ns, {7, 1}), 0u);
}

TEST(LineNumberRange, SaysWhereARangeLies) {
  EXPECT_EQ(lineNumberRangeInRange("a\nb\nc"_ns, {2, 1}), NSMakeRange(1, 1));
  EXPECT_EQ(lineNumberRangeInRange("a\nb\nc"_ns, {2, 3}), NSMakeRange(1, 2));
  EXPECT_EQ(lineNumberRangeInRange("a\nb\nc"_ns, {0, 5}), NSMakeRange(0, 3));
}
TEST(LineNumberRange, OfAnEmptyRangeIsOneLine) {
  EXPECT_EQ(lineNumberRangeInRange("a\nb"_ns, {2, 0}), NSMakeRange(1, 1));
}
TEST(LineNumberRange, OfAnEmptyStringIsZero) { EXPECT_EQ(lineNumberRangeInRange(""_ns, {0, 0}), QFZeroRange); }
TEST(LineNumberRange, InTheMiddleOfALineCountsThatLineBeforeToo) {
  EXPECT_EQ(lineNumberRangeInRange("abc\ndef"_ns, {1, 1}), NSMakeRange(1, 1));
}

TEST(LineModel, AnswersByName) {
  Ref<NSString> text = "a\nb"_ns;
  EXPECT_EQ(send<uint64_t>(text, "numberOfLines"_sel), 2u);
  EXPECT_EQ(send<NSRange>(text, "rangeOfLine:"_sel, 1), NSMakeRange(2, 1));
  EXPECT_EQ(send<NSRange>(text, "_10_6_rangeOfLine:"_sel, 1), NSMakeRange(2, 1));
  EXPECT_EQ(send<Ref<NSPointerArray>>(text, "lineRanges"_sel)->count(), 2u);
  std::vector<Call> calls;
  send(text, "enumerateLinesWithOptions:function:context:"_sel, 0, static_cast<QFLineEnumerationFunction>(&collect),
       static_cast<void*>(&calls));
  EXPECT_EQ(calls.size(), 2u);
  EXPECT_EQ(send<uint64_t>(static_cast<NSString*>(nullptr), "numberOfLines"_sel), 0u);
}

// Identities ----------------------------------------------------------------------------------------------------------

RC_GTEST_PROP(LineProperties, TheLineRangesTileTheText, ()) {
  const Ref<NSString> text = anyText();
  uint64_t at = 0;
  for (const NSRange range : asVector(lineRanges(text))) {
    RC_ASSERT(range.location == at);
    RC_ASSERT(range.length > 0);
    at += range.length;
  }
  RC_ASSERT(at == text->length());
}
RC_GTEST_PROP(LineProperties, CountRangesAndEnumeratorAgree, ()) {
  const Ref<NSString> text = anyText();
  const uint64_t lines = callsOf(text, 0).size();
  RC_ASSERT(numberOfLines(text) == lines);
  RC_ASSERT(lineRanges(text)->count() == lines);
  const std::vector<NSRange> ranges = plainLineRanges(text);
  RC_ASSERT(ranges.size() == lines);
  for (uint64_t n = 0; n < lines; ++n) RC_ASSERT(rangeOfLine(text, n) == ranges[n]);
}
RC_GTEST_PROP(LineProperties, AnyRangeTouchesTheLinesThatTheEnumeratorVisits, ()) {
  const Ref<NSString> text = anyText();
  const NSRange range{*rc::gen::inRange<uint64_t>(0, text->length() + 1), *rc::gen::inRange<uint64_t>(1, 40)};
  if (range.location == text->length()) return;
  const std::vector<Call> calls = callsOf(text, range, QFLineEnumerationNoLineSubstrings);
  RC_ASSERT(numberOfLinesInRange(text, range) == calls.size());
  const std::vector<NSRange> ranges = asVector(lineRangesInRange(text, range));
  RC_ASSERT(ranges.size() == calls.size());
  for (size_t i = 0; i < ranges.size(); ++i) RC_ASSERT(ranges[i] == NSMakeRange(calls[i].location, calls[i].length));
}
RC_GTEST_PROP(LineProperties, TrimmedSubstringsStandInsideTheirLinesAndAreNotBlank, ()) {
  const Ref<NSString> text = anyText();
  for (const Call& call : callsOf(text, trimming)) {
    if (call.isBlank) continue;
    const std::u16string whole = text->utf16().substr(call.location, call.length);
    RC_ASSERT(whole.find(call.text) != whole.npos);
    RC_ASSERT(!call.text.empty());
    RC_ASSERT(call.text.front() != u' ' && call.text.back() != u' ' && call.text.back() != u'\t');
  }
}
