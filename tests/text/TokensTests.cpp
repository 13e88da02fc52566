// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Tokens.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

struct Call {
  std::string text;
  bool hasText;
  uint64_t location, length;
  bool flag;
  uint64_t index;
};

/// What an enumeration calls, and where it is told to stop.
struct Calls {
  std::vector<Call> all;
  uint64_t stopAt = UINT64_MAX;

  static void add(NSString* text, uint64_t location, uint64_t length, bool flag, uint64_t index, bool* stop,
                  void* context) {
    auto* const calls = static_cast<Calls*>(context);
    calls->all.push_back({text ? text->utf8() : "", text != nullptr, location, length, flag, index});
    if (calls->all.size() - 1 == calls->stopAt) *stop = true;
  }
  /// "(0,5) 'hello'" and so on; a flag is an exclamation mark.
  std::string told() const {
    std::string told;
    for (const Call& call : all) {
      told += "(" + std::to_string(call.location) + "," + std::to_string(call.length) + ")";
      if (call.hasText) told += "'" + call.text + "'";
      if (call.flag) told += "!";
    }
    return told;
  }
};

std::string enumerated(const NSString* text, CFRange range, uint64_t options = 0, bool flag = false,
                       uint64_t stopAt = UINT64_MAX, bool boundaries = false) {
  const LocaleScope english("en_US"_ns);
  const Ref<CFStringTokenizer> tokenizer =
      boundaries ? QFStringCreateWordBoundaryTokenizer(text) : QFStringCreateWordTokenizer(text);
  Calls calls;
  calls.stopAt = stopAt;
  QFStringTokenizerEnumerateTokensInRange(tokenizer, text, range, options, &Calls::add, &calls, flag);
  for (size_t i = 0; i < calls.all.size(); ++i) EXPECT_EQ(calls.all[i].index, i);
  return calls.told();
}

TEST(Tokens, AreGivenWithWhatLiesBetween) {
  const LocaleScope english("en_US"_ns);
  const quoll::Ref<quoll::NSString> text = "one two. "_ns;
  Calls calls;
  quoll::QFStringTokenizerEnumerateTokens(quoll::QFStringCreateWordTokenizer(text), text, &Calls::add, &calls);
  EXPECT_EQ(calls.told(), "(0,3)'one'(3,1)' '(4,3)'two'(7,2)'. '");
}

TEST(Tokens, NoneIsGivenOfAnEmptyRange) {
  EXPECT_EQ(enumerated("one"_ns, {1, 0}), "");
  EXPECT_EQ(enumerated("one"_ns, {99, 0}), "");
  EXPECT_EQ(enumerated(""_ns, {0, 0}), "");
}

TEST(Tokens, ARangeBetweenTwoWordsIsOneCallWithTheFlagPassedIn) {
  EXPECT_EQ(enumerated("one,  two"_ns, {4, 1}, 0, true), "(4,1)' '!");
  EXPECT_EQ(enumerated("one,  two"_ns, {3, 3}, 0, false), "(3,3)',  '");
}

TEST(Tokens, ARangeThatStartsInAGapIsOneGapAsAWhole) {
  EXPECT_EQ(enumerated("one two three"_ns, {3, 10}), "(3,10)' two three'");
}

TEST(Tokens, ATokenBehindAGapThatReachesTheEndIsLeftOut) {
  EXPECT_EQ(enumerated("hello world"_ns, {0, 11}), "(0,5)'hello'(5,1)' '");
  EXPECT_EQ(enumerated("hello world "_ns, {0, 12}), "(0,5)'hello'(5,1)' '(6,5)'world'(11,1)' '");
}

TEST(Tokens, ATokenIsClippedAtTheStartAndNotAtTheEnd) {
  EXPECT_EQ(enumerated("hello world"_ns, {2, 1}), "(2,3)'llo'");
  EXPECT_EQ(enumerated("hello"_ns, {0, 2}), "(0,5)'hello'");
}

// A line of a gap is told with its terminator, though its text is without it.
TEST(Tokens, AGapWithALineBreakIsGivenLineByLine) {
  EXPECT_EQ(enumerated("one \n\n two."_ns, {0, 11}), "(0,3)'one'(3,2)' '(5,1)'\n'!(6,1)' '(7,3)'two'(10,1)'.'");
  EXPECT_EQ(enumerated("one\r\n\r\ntwo."_ns, {0, 11}), "(0,3)'one'(3,2)'\r\n'!(5,2)'\r\n'!(7,3)'two'(10,1)'.'");
}

TEST(Tokens, AGapsLinesHaveTheirOwnFlagInPlaceOfThePassedOne) {
  EXPECT_EQ(enumerated("one -\n\n- two."_ns, {0, 13}, 0, true),
            "(0,3)'one'!(3,3)' -'(6,1)'\n'!(7,2)'- '(9,3)'two'!(12,1)'.'!");
}

TEST(Tokens, AVerticalTabInAGapGoesTheWayOfLinesThoughItEndsNone) {
  EXPECT_EQ(enumerated("one \v two."_ns, {0, 10}, 0, true), "(0,3)'one'!(3,3)' \v '(6,3)'two'!(9,1)'.'!");
}

TEST(Tokens, ComeWithoutSubstringsWhereNoneAreWanted) {
  EXPECT_EQ(enumerated("one \n\ntwo."_ns, {0, 10}, QFTokenEnumerationNoSubstrings), "(0,3)(3,2)(5,1)!(6,3)(9,1)");
}

TEST(Tokens, AStopAtATokenEndsAll) { EXPECT_EQ(enumerated("one two three."_ns, {0, 14}, 0, false, 0), "(0,3)'one'"); }

TEST(Tokens, AStopInAGapEndsTheGapOnly) {
  EXPECT_EQ(enumerated("one two."_ns, {0, 8}, 0, false, 1), "(0,3)'one'(3,1)' '(4,3)'two'(7,1)'.'");
  EXPECT_EQ(enumerated("one -\n\n- two."_ns, {0, 13}, 0, false, 1), "(0,3)'one'(3,3)' -'(9,3)'two'(12,1)'.'");
}

TEST(Tokens, OfABoundaryTokenizerLeaveNoGaps) {
  EXPECT_EQ(enumerated("one, two"_ns, {0, 8}, 0, false, UINT64_MAX, true), "(0,3)'one'(3,1)','(4,1)' '(5,3)'two'");
}

TEST(Tokens, RaiseForARangeBeyondTheString) {
  for (const CFRange range : {CFRange{0, 4}, CFRange{3, 1}, CFRange{4, INT64_MAX}, CFRange{INT64_MAX, INT64_MAX}}) {
    EXPECT_THAT([&] { enumerated("one"_ns, range); }, raises(NSRangeException, "lies out of bounds of string 0x"));
  }
  EXPECT_THAT([] { enumerated("one"_ns, {0, 4}); },
              raises(NSRangeException, "Range {0, 4} lies out of bounds of string"));
  EXPECT_THAT([] { enumerated("one"_ns, {0, 4}); }, raises(NSRangeException, "with length 3"));
  EXPECT_THAT([] { enumerated("one"_ns, {-1, 2}); },
              raises(NSRangeException, "Range {9223372036854775807, 2} lies out of bounds"));
  EXPECT_THAT([] { enumerated("one"_ns, {1, -1}); }, raises(NSRangeException, "Range {1, 0} lies out of bounds"));
}

TEST(Tokens, RefuseANullFunctionAndPassOverANullString) {
  const Ref<CFStringTokenizer> tokenizer = QFStringCreateWordTokenizer("one"_ns);
  EXPECT_THAT([&] { QFStringTokenizerEnumerateTokens(tokenizer, "one"_ns, nullptr, nullptr); },
              raises(NSInvalidArgumentException, "callback function cannot be nil"));
  Calls calls;
  QFStringTokenizerEnumerateTokens(tokenizer, nullptr, &Calls::add, &calls);
  EXPECT_EQ(calls.told(), "");
  EXPECT_EQ(QFStringCreateWordTokenizer(nullptr), nullptr);
}

TEST(Tokens, RaiseWhereACallbackShortensTheirString) {
  const LocaleScope english("en_US"_ns);
  const Ref<NSMutableString> text = NSMutableString::stringWithString("one two."_ns);
  const auto shorten = [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* context) {
    static_cast<NSMutableString*>(context)->setString("x"_ns);
  };
  EXPECT_THAT([&] { QFStringTokenizerEnumerateTokens(QFStringCreateWordTokenizer(text), text, shorten, text.get()); },
              raises(NSRangeException, "Skipped range {3, 1} lies out of bounds of string 0x"));
}

TEST(Tokens, MayLoseTheLastReferenceToTheirStringMeanwhile) {
  const Ref<NSLocale> kept = NSLocale::currentLocale();
  LeakGuard guard;
  struct Owner {
    Ref<NSString> text;
    Ref<CFStringTokenizer> tokenizer;
    int calls = 0;
  } owner{NSString::stringWithUTF8("one two three four five six seven."), nullptr};
  owner.tokenizer = QFStringCreateWordTokenizer(owner.text);
  QFStringTokenizerEnumerateTokens(
      owner.tokenizer, owner.text,
      [](NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* context) {
        auto* const held = static_cast<Owner*>(context);
        held->text = nullptr;
        held->tokenizer = nullptr;
        ++held->calls;
      },
      &owner);
  EXPECT_EQ(owner.calls, 14);
}

std::string told(const NSPointerArray* ranges) {
  std::string text;
  enumeratePointersUsingBlock(ranges, [&](uint64_t, void* pointer, bool*) {
    const NSRange range = *static_cast<NSRange*>(pointer);
    text += "(" + std::to_string(range.location) + "," + std::to_string(range.length) + ")";
  });
  return text;
}

TEST(TokenRanges, AreThoseOfWholeTokensFromTheOneThatHoldsTheLocation) {
  const Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer("one two three"_ns);
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 0, 13)), "(0,3)(4,3)(8,5)");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 1, 4)), "(0,3)(4,3)");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 1, 3)), "(0,3)");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 5, INT64_MAX)), "(4,3)(8,5)");
}

TEST(TokenRanges, AreNoneWhereNoTokenHoldsTheLocation) {
  const Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer("one two"_ns);
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 3, 4)), "");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, -1, 4)), "");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 99, 4)), "");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(nullptr, 0, 4)), "");
}

TEST(TokenRanges, TestTheEndBeforeTheFirstTokenToo) {
  const Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer("one two"_ns);
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 4, 0)), "");
  EXPECT_EQ(told(QFTokenizerTokenRangesForRange(words, 5, 0)), "(4,3)");
}

TEST(TokenRanges, OfAStringAreThoseOfEveryCall) {
  const Ref<NSString> text = "one \n\n two."_ns;
  const Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer(text);
  EXPECT_EQ(told(QFStringWordRangesForCharacterRange(text, 0, 11, words)), "(0,3)(3,2)(5,1)(6,1)(7,3)(10,1)");
  EXPECT_EQ(told(QFStringWordRangesForCharacterRange(text, 0, 0, words)), "");
  EXPECT_THAT([&] { (void)QFStringWordRangesForCharacterRange(text, 0, 12, words); },
              raises(NSRangeException, "lies out of bounds"));
}

TEST(Tokens, AreMadeByTheAdditionsToo) {
  const LocaleScope english("en_US"_ns);
  EXPECT_TRUE(createWordTokenizer("one"_ns)->advance());
  const auto boundaries = send<Ref<CFStringTokenizer>>(", "_ns, "createWordBoundaryTokenizer"_sel);
  EXPECT_TRUE(boundaries->advance());
  EXPECT_FALSE(send<Ref<CFStringTokenizer>>(", "_ns, "createWordTokenizer"_sel)->advance());
  EXPECT_EQ(createWordTokenizer(nullptr), nullptr);
}

/// Words, blanks, line ends, marks, halves of pairs.
rc::Gen<std::u16string> mixedTexts() {
  return rc::gen::container<std::u16string>(rc::gen::elementOf(
      std::u16string(u"abé1 ,.\r\n\v\u2028日本\u0e17\u0e14\u0301") + char16_t{0xD83D} + char16_t{0xDE00}));
}

TEST(Tokens, AreInOrderAndInsideOfTheText) {
  EXPECT_TRUE(rc::check([] {
    const Ref<NSString> text = NSString::stringWithCharacters(*mixedTexts());
    const auto start = *rc::gen::inRange<int64_t>(0, static_cast<int64_t>(text->length()) + 1);
    const auto length = *rc::gen::inRange<int64_t>(0, static_cast<int64_t>(text->length()) - start + 1);
    const bool boundaries = *rc::gen::arbitrary<bool>();
    const Ref<CFStringTokenizer> tokenizer =
        boundaries ? QFStringCreateWordBoundaryTokenizer(text) : QFStringCreateWordTokenizer(text);
    Calls calls;
    QFStringTokenizerEnumerateTokensInRange(tokenizer, text, {start, length}, 0, &Calls::add, &calls, false);
    uint64_t behind = static_cast<uint64_t>(start);
    for (const Call& call : calls.all) {
      RC_ASSERT(call.location >= behind);
      RC_ASSERT(call.length > 0u);
      behind = call.location + call.length;
      RC_ASSERT(behind <= text->length());
    }
  }));
}

}  // namespace
