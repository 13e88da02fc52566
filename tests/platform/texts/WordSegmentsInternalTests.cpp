// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/WordSegmentsInternal.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/ubrk.h>

#include <string>
#include <vector>

namespace {

using namespace quoll;
using detail::ASCIIWords;
using detail::BreakIteratorHandle;
using detail::WordRules;
using detail::WordSegment;
using detail::WordSegments;

struct Cut {
  std::vector<uint64_t> ends;
  std::vector<bool> words;
  bool operator==(const Cut&) const = default;
};

/// What ICU makes of a text.
Cut cutByICU(UBreakIterator* iterator, std::u16string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  ubrk_setText(iterator, text.data(), static_cast<int32_t>(text.size()), &status);
  Cut cut;
  for (int32_t end = ubrk_next(iterator); end != UBRK_DONE; end = ubrk_next(iterator)) {
    cut.ends.push_back(static_cast<uint64_t>(end));
    cut.words.push_back(ubrk_getRuleStatus(iterator) >= UBRK_WORD_NUMBER);
  }
  return cut;
}

Cut cutByUs(const ASCIIWords& rules, std::string_view text) {
  Cut cut;
  for (uint64_t at = 0; at < text.size(); at = cut.ends.back()) {
    const WordSegment segment = rules.startingAt(text, at);
    cut.ends.push_back(segment.end);
    cut.words.push_back(segment.isWord);
  }
  return cut;
}

std::u16string widened(std::string_view text) { return {text.begin(), text.end()}; }

/// One of each kind, the signs that some language has inside words, and others.
constexpr std::string_view kinds = "aZ1_ \t\r\n\v.,:;'\"-@/\x7f";

TEST(ASCIIWords, CutsAsICUDoesInEveryLanguage) {
  std::vector<std::string> texts;
  for (const char a : kinds) {
    for (const char b : kinds) {
      for (const char c : kinds) texts.push_back({a, b, c});
    }
  }
  for (int32_t i = 0; i < ubrk_countAvailable(); ++i) {
    const char* const locale = ubrk_getAvailable(i);
    SCOPED_TRACE(locale);
    const WordRules& rules = WordRules::of(locale);
    const BreakIteratorHandle iterator = rules.iterator();
    // A language that has no rules of its own cuts as those before it did: a sample is enough.
    const size_t step = i < 3 || std::string_view(locale).size() == 2 ? 1 : 97;
    for (size_t t = 0; t < texts.size(); t += step) {
      ASSERT_EQ(cutByUs(rules.ascii(), texts[t]), cutByICU(iterator.get(), widened(texts[t])))
          << testing::PrintToString(texts[t]);
    }
  }
}

class ASCIIWordsOf : public testing::TestWithParam<const char*> {};

TEST_P(ASCIIWordsOf, CutsLongerTextsAsICUDoes) {
  const WordRules& rules = WordRules::of(GetParam());
  const BreakIteratorHandle iterator = rules.iterator();
  EXPECT_TRUE(rc::check([&] {
    const auto picks = *rc::gen::container<std::string>(rc::gen::elementOf(std::string(kinds)));
    RC_ASSERT(cutByUs(rules.ascii(), picks) == cutByICU(iterator.get(), widened(picks)));
  }));
}

TEST_P(ASCIIWordsOf, FindsTheSegmentThatHoldsAnIndex) {
  const WordRules& rules = WordRules::of(GetParam());
  EXPECT_TRUE(rc::check([&] {
    const auto text = *rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::elementOf(std::string(kinds))));
    const Cut cut = cutByUs(rules.ascii(), text);
    uint64_t start = 0;
    for (size_t i = 0; i < cut.ends.size(); start = cut.ends[i++]) {
      for (uint64_t at = start; at < cut.ends[i]; ++at) {
        const WordSegment found = rules.ascii().holding(text, at);
        RC_ASSERT(found.start == start);
        RC_ASSERT(found.end == cut.ends[i]);
        RC_ASSERT(found.isWord == cut.words[i]);
      }
    }
  }));
}

TEST_P(ASCIIWordsOf, EndsAWordAtAnyUnitWhereverItStands) {
  const WordRules& rules = WordRules::of(GetParam());
  const BreakIteratorHandle iterator = rules.iterator();
  for (const char filler : {'a', '7', '_'}) {
    for (size_t length = 1; length < 20; ++length) {
      for (size_t place = 0; place < length; ++place) {
        for (int unit = 0; unit < 0x80; ++unit) {
          std::string text(length, filler);
          text[place] = static_cast<char>(unit);
          ASSERT_EQ(cutByUs(rules.ascii(), text), cutByICU(iterator.get(), widened(text)))
              << testing::PrintToString(text);
        }
      }
    }
  }
}

TEST_P(ASCIIWordsOf, TheNextWordIsTheFirstSegmentThatIsOne) {
  const WordRules& rules = WordRules::of(GetParam());
  EXPECT_TRUE(rc::check([&] {
    const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string(kinds) + "aaaa  "));
    const Cut cut = cutByUs(rules.ascii(), text);
    WordSegment expected{text.size(), text.size(), false};
    for (size_t i = cut.ends.size(); i-- > 0;) {
      const uint64_t start = i ? cut.ends[i - 1] : 0;
      if (cut.words[i]) expected = {start, cut.ends[i], true};
      const WordSegment found = rules.ascii().nextWord(text, start);
      RC_ASSERT(found.start == expected.start);
      RC_ASSERT(found.end == expected.end);
      RC_ASSERT(found.isWord == expected.isWord);
    }
    RC_ASSERT(rules.ascii().nextWord(text, text.size()).end == text.size());
  }));
}

INSTANTIATE_TEST_SUITE_P(Locales, ASCIIWordsOf, testing::Values("en_US", "en_US_POSIX", "fi", "sv", "de", "ja", "el"));

Ref<NSLocale> english() { return NSLocale::localeWithLocaleIdentifier("en_US"_ns); }

TEST(WordSegments, TilesAnyTextWhateverWasAskedBefore) {
  const Ref<NSLocale> locale = english();
  EXPECT_TRUE(rc::check([&] {
    const auto picks = *rc::gen::container<std::vector<char16_t>>(
        rc::gen::elementOf(std::u16string(u"aé1_ .\r\n\u0e17\u0e14日本あカ\U0001f44d\u200d\u0301") + char16_t{0xD800}));
    const Ref<NSString> text = NSString::stringWithCharacters({picks.data(), picks.size()});
    const WordSegments segments(text, {0, text->length()}, locale);
    std::vector<WordSegment> all;
    for (uint64_t at = 0; at < segments.length(); at = all.back().end) {
      all.push_back(segments.startingAt(at));
      RC_ASSERT(all.back().start == at);
      RC_ASSERT(all.back().end > at);
    }
    const uint64_t end = all.empty() ? 0 : all.back().end;
    RC_ASSERT(end == segments.length());
    WordSegment word{end, end, false};
    for (size_t i = all.size(); i-- > 0;) {
      if (all[i].isWord) word = all[i];
      const WordSegment next = segments.nextWord(all[i].start);
      RC_ASSERT(next.start == word.start);
      RC_ASSERT(next.end == word.end);
      RC_ASSERT(next.isWord == word.isWord);
    }
    const WordSegments others(text, {0, text->length()}, locale);
    for (size_t i = all.size(); i-- > 0;) {
      for (uint64_t at = all[i].start; at < all[i].end; ++at) {
        const WordSegment found = others.holding(at);
        RC_ASSERT(found.start == all[i].start);
        RC_ASSERT(found.end == all[i].end);
        RC_ASSERT(found.isWord == all[i].isWord);
      }
    }
  }));
}

TEST(WordSegments, CutsMixedTextsAsICUDoes) {
  const Ref<NSLocale> locale = english();
  const BreakIteratorHandle iterator = WordRules::of("en_US").iterator();
  EXPECT_TRUE(rc::check([&] {
    const auto units = *rc::gen::container<std::u16string>(rc::gen::elementOf(
        std::u16string(
            u"aZé1_ .,:'\"-@\r\n\u2003\u2019\u05d0\u0e17\u0e14日本あカ\u200d\u0301\u00ad\U0001f1e9\U0001f44d") +
        char16_t{0xD800}));
    const Cut expected = cutByICU(iterator.get(), units);
    const Ref<NSString> text = NSString::stringWithCharacters(units);
    const WordSegments segments(text, {0, units.size()}, locale);
    Cut cut;
    for (uint64_t at = 0; at < units.size(); at = cut.ends.back()) {
      const WordSegment segment = segments.startingAt(at);
      cut.ends.push_back(segment.end);
      cut.words.push_back(segment.isWord);
    }
    RC_ASSERT(cut == expected);
  }));
}

TEST(WordSegments, TakesAPartForTheWholeText) {
  const WordSegments segments("one two"_ns, {1, 4}, english());
  EXPECT_EQ(segments.length(), 4u);
  EXPECT_EQ(segments.startingAt(0).end, 2u);
  EXPECT_EQ(segments.startingAt(3).end, 4u);
}

TEST(WordSegments, CutsUTF16ThatIsAllASCIIAsASCII) {
  const Ref<NSString> wide = "é plain words"_ns->substringFromIndex(2);
  const WordSegments segments(wide, {0, wide->length()}, english());
  EXPECT_EQ(segments.startingAt(0).end, 5u);
  EXPECT_FALSE(segments.startingAt(5).isWord);
}

}  // namespace
