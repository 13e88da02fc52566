// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Words.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

void tell(NSString* text, uint64_t location, uint64_t length, bool flag, uint64_t index, bool*, void* context) {
  *static_cast<std::string*>(context) += std::to_string(index) + "(" + std::to_string(location) + "," +
                                         std::to_string(length) + ")" + (text ? "'" + text->utf8() + "'" : "") +
                                         (flag ? "!" : "");
}

std::string words(const NSString* text, NSRange range, uint64_t options = 0) {
  const LocaleScope english("en_US"_ns);
  std::string told;
  enumerateWordsInRange_options_function_context(text, range, options, &tell, &told);
  return told;
}

std::string ranges(const NSString* text, NSRange range, bool includeWhitespace) {
  const LocaleScope english("en_US"_ns);
  uint64_t count = 99;
  const std::unique_ptr<NSRange, decltype(&std::free)> found(
      getWordRangesForRange_includeWhitespace_count(text, range, includeWhitespace, &count), &std::free);
  std::string told;
  for (uint64_t i = 0; i < count; ++i) {
    told += "(" + std::to_string(found.get()[i].location) + "," + std::to_string(found.get()[i].length) + ")";
  }
  EXPECT_EQ(numberOfWordsInRange_includeWhitespace(text, range, includeWhitespace), count);
  return told;
}

TEST(Words, AreCountedWithWhatLiesBetween) {
  const LocaleScope english("en_US"_ns);
  EXPECT_EQ(quoll::numberOfWordsInRange("one two. "_ns, {0, 9}), 4u);
  EXPECT_EQ(numberOfWordsInRange("hello world"_ns, {0, 11}), 2u);
  EXPECT_EQ(numberOfWordsInRange_includeWhitespace("hello world"_ns, {0, 11}, true), 3u);
}

TEST(Words, CoverWholeLinesWhereverTheRangeStarts) {
  EXPECT_EQ(words("one two.\nthree.\nfour.\n"_ns, {11, 1}), "0(9,5)'three'1(14,2)'.'");
  EXPECT_EQ(words("a.\nb.\nc.\n"_ns, {4, 3}), "0(3,1)'b'1(4,2)'.'2(6,1)'c'3(7,2)'.'");
  EXPECT_EQ(words("a.\nb.\n"_ns, {3, 0}), "0(3,1)'b'1(4,2)'.'");
}

TEST(Words, ExcludingTheTerminatorMakesItARunOfItsOwn) {
  EXPECT_EQ(words("one.\r\n"_ns, {0, 1}, QFLineEnumerationExcludeTerminators), "0(0,3)'one'1(3,1)'.'0(4,2)'\r\n'!");
  EXPECT_EQ(words("one."_ns, {0, 1}, QFLineEnumerationExcludeTerminators), "0(0,3)'one'1(3,1)'.'");
}

TEST(Words, OfABoundaryTokenizerHaveTheTerminatorAsATokenWithTheFlag) {
  EXPECT_EQ(words("a b\n"_ns, {0, 1}, QFLineEnumerationExcludeTerminators | uint64_t{QFWordEnumerationWordBoundaries}),
            "0(0,1)'a'1(1,1)' '2(2,1)'b'0(3,1)'\n'!");
}

TEST(Words, AreTrimmedOnlyWhereTerminatorsAreExcluded) {
  constexpr uint64_t trims = QFLineEnumerationTrimWhitespace;
  EXPECT_EQ(words("\t one. \t\n"_ns, {0, 1}, QFLineEnumerationExcludeTerminators | trims),
            "0(2,3)'one'1(5,1)'.'0(8,1)'\n'!");
  EXPECT_EQ(words(" one. "_ns, {0, 1}, trims), "0(0,6)' one. '");
  EXPECT_EQ(words("  \n"_ns, {0, 1}, QFLineEnumerationExcludeTerminators | trims), "0(2,1)'\n'!");
}

TEST(Words, ComeWithoutSubstringsWhereNoneAreWanted) {
  EXPECT_EQ(words("one. "_ns, {0, 1}, QFTokenEnumerationNoSubstrings), "0(0,3)1(3,2)");
}

TEST(Words, HaveRangesAsAPlainArray) {
  EXPECT_EQ(ranges("one two. "_ns, {0, 1}, false), "(0,3)(3,1)(4,3)(7,2)");
  EXPECT_EQ(ranges("one two"_ns, {0, 1}, true), "(0,3)(3,1)(4,3)");
  EXPECT_EQ(ranges(""_ns, {0, 0}, false), "");
}

TEST(Words, OfAnEmptyTextAreANullArray) {
  uint64_t count = 7;
  EXPECT_EQ(getWordRangesForRange_includeWhitespace_count(""_ns, {0, 0}, false, &count), nullptr);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(getWordRangesForRange_includeWhitespace_count(nullptr, {0, 0}, false, nullptr), nullptr);
}

TEST(Words, GrowTheArrayPastItsFirstRoom) {
  std::string text;
  for (int i = 0; i < 500; ++i) text += "w ";
  const LocaleScope english("en_US"_ns);
  uint64_t count = 0;
  const std::unique_ptr<NSRange, decltype(&std::free)> found(
      getWordRangesForRange_includeWhitespace_count(NSString::stringWithUTF8(text), {0, 1}, true, &count), &std::free);
  ASSERT_EQ(count, 1000u);
  EXPECT_EQ(found.get()[999], NSMakeRange(999, 1));
}

TEST(Words, RaiseForARangeBeyondTheText) {
  uint64_t count = 0;
  EXPECT_THAT([&] { (void)getWordRangesForRange_includeWhitespace_count("one"_ns, {1, 3}, false, &count); },
              raises(NSRangeException, "Range {1, 3} lies out of bounds of string 0x"));
  EXPECT_THAT([&] { (void)getWordRangesForRange_includeWhitespace_count("one"_ns, {1, UINT64_MAX}, false, &count); },
              raises(NSRangeException, "with length 3"));
  EXPECT_THAT([] { (void)wordRangesForRange_tokenizer("one"_ns, {4, 0}, nullptr); },
              raises(NSRangeException, "lies out of bounds"));
  EXPECT_THAT([] { words("one"_ns, {4, 0}); }, raises(NSRangeException, "3"));
}

TEST(Words, AreTheSameWhateverTokenizerIsPassed) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSString> text = "one two. "_ns;
  const Ref<NSPointerArray> without = wordRangesForRange_tokenizer(text, {0, 9}, nullptr);
  const Ref<NSPointerArray> with =
      wordRangesForRange_tokenizer(text, {0, 9}, QFStringCreateWordBoundaryTokenizer("other"_ns));
  ASSERT_EQ(without->count(), 4u);
  ASSERT_EQ(with->count(), 4u);
  for (uint64_t i = 0; i < 4; ++i) EXPECT_EQ(rangeAtIndex(with, i), rangeAtIndex(without, i));
}

TEST(Words, AnswerByName) {
  const LocaleScope english("en_US"_ns);
  EXPECT_EQ(send<uint64_t>("one two. "_ns, "numberOfWordsInRange:"_sel, NSRange{0, 9}), 4u);
  EXPECT_EQ(send<uint64_t>("a b"_ns, "numberOfWordsInRange:includeWhitespace:"_sel, NSRange{0, 3}, true), 3u);
  EXPECT_EQ(numberOfWordsInRange(nullptr, {0, 0}), 0u);
  EXPECT_EQ(wordRangesForRange_tokenizer(nullptr, {0, 0}, nullptr), nullptr);
}

TEST(Words, WithBoundariesTileTheirLines) {
  EXPECT_TRUE(rc::check([] {
    const auto units = *rc::gen::nonEmpty(rc::gen::container<std::u16string>(
        rc::gen::elementOf(std::u16string(u"abé1 ,.\r\n日本\u0301") + char16_t{0xD83D} + char16_t{0xDE00})));
    const Ref<NSString> text = NSString::stringWithCharacters(units);
    uint64_t count = 0;
    const std::unique_ptr<NSRange, decltype(&std::free)> found(
        getWordRangesForRange_includeWhitespace_count(text, {0, units.size()}, true, &count), &std::free);
    uint64_t behind = 0;
    for (uint64_t i = 0; i < count; ++i) {
      RC_ASSERT(found.get()[i].location == behind);
      behind = NSMaxRange(found.get()[i]);
    }
    RC_ASSERT(behind == units.size());
  }));
}

TEST(Words, AStopInTheContentDoesNotPreventTheTerminatorsRun) {
  const LocaleScope english("en_US"_ns);
  int calls = 0;
  enumerateWordsInRange_options_function_context(
      "one two\n"_ns, {0, 1}, QFLineEnumerationExcludeTerminators,
      [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool* stop, void* context) {
        ++*static_cast<int*>(context);
        *stop = true;
      },
      &calls);
  EXPECT_EQ(calls, 2);
}

TEST(Words, MayLoseTheLastReferenceToTheirTextMeanwhile) {
  const Ref<NSLocale> kept = NSLocale::currentLocale();
  LeakGuard guard;
  Ref<NSString> text = NSString::stringWithUTF8("one two three four.\n");
  enumerateWordsInRange_options_function_context(
      text.get(), {0, 1}, QFLineEnumerationExcludeTerminators,
      [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* context) {
        *static_cast<Ref<NSString>*>(context) = nullptr;
      },
      &text);
  EXPECT_EQ(text, nullptr);
}

/// Whether all calls are in order and inside of the text.
struct Order {
  uint64_t behind;
  uint64_t length;
  bool isRight;

  static void check(NSString*, uint64_t location, uint64_t length, bool, uint64_t, bool*, void* context) {
    auto* const order = static_cast<Order*>(context);
    order->isRight = order->isRight && location >= order->behind && length > 0;
    order->behind = location + length;
    order->isRight = order->isRight && order->behind <= order->length;
  }
};

TEST(Words, AreInOrderAndInsideOfTheTextWhateverIsAsked) {
  EXPECT_TRUE(rc::check([] {
    const auto units = *rc::gen::container<std::u16string>(
        rc::gen::elementOf(std::u16string(u"abé1 ,.\r\n\t\u2028日本\u0301") + char16_t{0xD83D} + char16_t{0xDE00}));
    const Ref<NSString> text = NSString::stringWithCharacters(units);
    const uint64_t location = *rc::gen::inRange<uint64_t>(0, units.size() + 1);
    const uint64_t length = *rc::gen::inRange<uint64_t>(0, units.size() - location + 1);
    uint64_t options = 0;
    for (const uint64_t bit :
         {uint64_t{QFTokenEnumerationNoSubstrings}, uint64_t{QFWordEnumerationWordBoundaries},
          uint64_t{QFLineEnumerationExcludeTerminators}, uint64_t{QFLineEnumerationTrimWhitespace}}) {
      if (*rc::gen::arbitrary<bool>()) options |= bit;
    }
    Order order{0, units.size(), true};
    enumerateWordsInRange_options_function_context(text, {location, length}, options, &Order::check, &order);
    RC_ASSERT(order.isRight);
  }));
}

}  // namespace
