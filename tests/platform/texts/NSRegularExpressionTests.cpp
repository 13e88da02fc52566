// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSRegularExpression.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

Ref<NSString> text(std::string_view bytes) { return NSString::stringWithUTF8(bytes); }
/// The same text, stored as UTF-16.
Ref<NSString> wide(std::string_view bytes) {
  return text(std::string(bytes) + "é")->substringToIndex(text(bytes)->length());
}
NSRange all(const NSString* string) { return {0, string->length()}; }

Ref<NSRegularExpression> expression(std::string_view pattern, NSRegularExpressionOptions options = {}) {
  Ref<NSError> error;
  auto made = NSRegularExpression::regularExpressionWithPattern_options_error(text(pattern), options, &error);
  EXPECT_TRUE(made) << error;
  return made;
}

/// The matches, joined by bars.
std::string matches(const NSRegularExpression* regex, const NSString* string, NSRange range,
                    NSMatchingOptions options = {}) {
  std::string found;
  for (auto* match : elements<NSTextCheckingResult>(regex->matchesInString_options_range(string, options, range))) {
    found += string->substringWithRange(match->range())->utf8() + "|";
  }
  return found;
}

std::string replaced(std::string_view pattern, const NSString* string, std::string_view with) {
  return expression(pattern)
      ->stringByReplacingMatchesInString_options_range_withTemplate(string, {}, all(string), text(with))
      ->utf8();
}

TEST(NSRegularExpression, FindsAndReplaces) {
  quoll::Ref<quoll::NSError> error;
  const auto digits = quoll::NSRegularExpression::regularExpressionWithPattern_options_error("([0-9]+)"_ns, {}, &error);
  ASSERT_TRUE(digits) << error;
  const quoll::Ref<quoll::NSString> all = "a1 b22"_ns;
  EXPECT_THAT(digits->stringByReplacingMatchesInString_options_range_withTemplate(all, {}, {0, 6}, "<$1>"_ns),
              quoll::equals("a<1> b<22>"));
  EXPECT_EQ(digits->numberOfMatchesInString_options_range(all, {}, {0, 6}), 2u);
}

TEST(NSRegularExpression, KnowsItsPattern) {
  const auto regex = expression("(a)(b(c))", NSRegularExpressionCaseInsensitive);
  EXPECT_THAT(regex->pattern(), equals("(a)(b(c))"));
  EXPECT_EQ(regex->options(), NSRegularExpressionCaseInsensitive);
  EXPECT_EQ(regex->numberOfCaptureGroups(), 3u);
  EXPECT_EQ(expression("a")->numberOfCaptureGroups(), 0u);
  EXPECT_EQ(regex->copy().get(), regex.get());
  EXPECT_THAT(regex, equals(expression("(a)(b(c))", NSRegularExpressionCaseInsensitive)));
  EXPECT_EQ(regex->hash(), expression("(a)(b(c))", NSRegularExpressionCaseInsensitive)->hash());
  EXPECT_FALSE(regex->isEqual(expression("(a)(b(c))")));
  EXPECT_THAT(regex->description()->utf8(), ::testing::HasSubstr("> (a)(b(c)) 0x1"));
}

TEST(NSRegularExpression, APatternThatIsNoneGivesAnError) {
  for (const char* pattern : {"(", "[a", "a{2,1}", "*", ""}) {
    SCOPED_TRACE(pattern);
    Ref<NSError> error;
    EXPECT_FALSE(NSRegularExpression::regularExpressionWithPattern_options_error(text(pattern), {}, &error));
    ASSERT_TRUE(error);
    EXPECT_THAT(error->domain(), equals("NSCocoaErrorDomain"));
    EXPECT_EQ(error->code(), 2048);
    EXPECT_THAT(error->localizedDescription()->utf8(), ::testing::HasSubstr("\"" + std::string(pattern) + "\""));
    EXPECT_THAT(error->localizedDescription()->utf8(), ::testing::HasSubstr("U_"));
    EXPECT_FALSE(NSRegularExpression::initWithPattern_options_error(text(pattern), {}, nullptr));
  }
  Ref<NSError> error;
  (void)NSRegularExpression::initWithPattern_options_error("(a"_ns, {}, &error);
  EXPECT_THAT(error->localizedDescription(),
              equals("The pattern \"(a\" is not valid: U_REGEX_MISMATCHED_PAREN in line 1 at 2"));
}

struct OptionRow {
  const char* claim;
  const char* pattern;
  uint64_t options;
  const char* text;
  const char* matches;
};
constexpr OptionRow optionRows[] = {
    {"none", "ab", 0, "ab AB", "ab|"},
    {"case makes no difference", "ab", NSRegularExpressionCaseInsensitive, "ab AB", "ab|AB|"},
    {"nor outside of ASCII", "ä", NSRegularExpressionCaseInsensitive, "Ä", "Ä|"},
    {"blanks and comments mean nothing", "a b # c", NSRegularExpressionAllowCommentsAndWhitespace, "ab", "ab|"},
    {"signs are text", "a.(", NSRegularExpressionIgnoreMetacharacters, "abc a.(", "a.(|"},
    {"a dot is no line end", "a.b", 0, "a\nb", ""},
    {"a dot is a line end", "a.b", NSRegularExpressionDotMatchesLineSeparators, "a\nb", "a\nb|"},
    {"anchors are at the ends of the text", "^.", 0, "a\nb", "a|"},
    {"anchors are at the ends of lines", "^.", NSRegularExpressionAnchorsMatchLines, "a\nb", "a|b|"},
    {"a carriage return ends a line", "a.", 0, "a\r", ""},
    {"only the line feed does", "a.", NSRegularExpressionUseUnixLineSeparators, "a\r", "a\r|"},
    {"an apostrophe ends a word", "\\b\\w+\\b", 0, "can't", "can|t|"},
    {"but not by Unicode's rules", "\\b.+?\\b", NSRegularExpressionUseUnicodeWordBoundaries, "can't", "can't|"},
    {"several at once", "A B", NSRegularExpressionCaseInsensitive | NSRegularExpressionAllowCommentsAndWhitespace, "ab",
     "ab|"},
};

TEST(NSRegularExpression, OptionsSayHowAPatternIsRead) {
  for (const OptionRow& row : optionRows) {
    SCOPED_TRACE(row.claim);
    const auto regex = expression(row.pattern, static_cast<NSRegularExpressionOptions>(row.options));
    EXPECT_EQ(matches(regex, text(row.text), all(text(row.text))), row.matches);
    EXPECT_EQ(matches(regex, wide(row.text), all(wide(row.text))), row.matches);
  }
}

TEST(NSRegularExpression, FindsTheFirstMatchAndItsGroups) {
  const auto regex = expression("(a)|(b)(c)?");
  const auto match = regex->firstMatchInString_options_range("xxbc"_ns, {}, {0, 4});
  ASSERT_TRUE(match);
  EXPECT_EQ(match->numberOfRanges(), 4u);
  EXPECT_EQ(match->range(), NSMakeRange(2, 2));
  EXPECT_EQ(match->rangeAtIndex(1), NSMakeRange(NSNotFound, 0)) << "it had no part in the match";
  EXPECT_EQ(match->rangeAtIndex(2), NSMakeRange(2, 1));
  EXPECT_EQ(match->rangeAtIndex(3), NSMakeRange(3, 1));
  EXPECT_EQ(regex->rangeOfFirstMatchInString_options_range("xxbc"_ns, {}, {0, 4}), NSMakeRange(2, 2));
  EXPECT_FALSE(regex->firstMatchInString_options_range("xx"_ns, {}, {0, 2}));
  EXPECT_EQ(regex->rangeOfFirstMatchInString_options_range("xx"_ns, {}, {0, 2}), NSMakeRange(NSNotFound, 0));
  EXPECT_EQ(regex->matchesInString_options_range("xx"_ns, {}, {0, 2})->count(), 0u);
}

TEST(NSRegularExpression, FindsEmptyMatchesBetweenUnits) {
  const auto regex = expression("x*");
  EXPECT_EQ(regex->numberOfMatchesInString_options_range("axb"_ns, {}, {0, 3}), 4u);
  EXPECT_EQ(regex->numberOfMatchesInString_options_range(""_ns, {}, {0, 0}), 1u);
  EXPECT_EQ(replaced("x*", "axb"_ns, "-"), "-a--b-");
}

struct RangeRow {
  const char* claim;
  const char* pattern;
  uint64_t options;
  NSRange range;
  const char* matches;  // in "one two"
};
constexpr RangeRow rangeRows[] = {
    {"only what is in the range", "\\w", 0, {2, 3}, "e|t|"},
    {"a match does not leave it", "\\w+", 0, {1, 5}, "ne|tw|"},
    {"its ends are anchors", "^ne", 0, {1, 6}, "ne|"},
    {"or not", "^ne", NSMatchingWithoutAnchoringBounds, {1, 6}, ""},
    {"the text's own ends stay anchors", "^one", NSMatchingWithoutAnchoringBounds, {0, 3}, "one|"},
    {"what is before it is not seen", "(?<=o)ne", 0, {1, 2}, ""},
    {"or is seen", "(?<=o)ne", NSMatchingWithTransparentBounds, {1, 2}, "ne|"},
    {"what is behind it is not seen", "e(?= )", 0, {0, 3}, ""},
    {"or is seen too", "e(?= )", NSMatchingWithTransparentBounds, {0, 3}, "e|"},
    {"its ends are ends of words", "\\bne\\b", 0, {1, 2}, "ne|"},
    {"unless what is outside is seen", "\\bne\\b", NSMatchingWithTransparentBounds, {1, 2}, ""},
    {"anchored: at the start of the range", "\\w", NSMatchingAnchored, {4, 3}, "t|"},
    {"anchored: nowhere else", "w", NSMatchingAnchored, {4, 3}, ""},
    {"an empty range", "x*", 0, {7, 0}, "|"},
};

TEST(NSRegularExpression, SearchesWithinARange) {
  for (const RangeRow& row : rangeRows) {
    SCOPED_TRACE(row.claim);
    const auto options = static_cast<NSMatchingOptions>(row.options);
    EXPECT_EQ(matches(expression(row.pattern), "one two"_ns, row.range, options), row.matches);
    EXPECT_EQ(matches(expression(row.pattern), wide("one two"), row.range, options), row.matches);
  }
}

TEST(NSRegularExpression, ASearchLeavesNoOptionBehind) {
  const auto regex = expression("^ne");
  EXPECT_EQ(matches(regex, "one"_ns, {1, 2}, NSMatchingWithoutAnchoringBounds), "");
  EXPECT_EQ(matches(regex, "one"_ns, {1, 2}), "ne|");
}

TEST(NSRegularExpression, RefusesWhatIsPastTheEndNullOrTooLong) {
  const auto regex = expression("a");
  const auto mutableText = NSMutableString::stringWithString("ab"_ns);
  for (const NSRange range : {NSRange{0, 3}, NSRange{3, 0}, NSRange{1, UINT64_MAX}}) {
    EXPECT_THAT([&] { (void)regex->matchesInString_options_range("ab"_ns, {}, range); },
                raises(NSRangeException, "-[NSRegularExpression matchesInString:options:range:]"));
    EXPECT_THAT([&] { (void)regex->firstMatchInString_options_range("ab"_ns, {}, range); }, raises(NSRangeException));
    EXPECT_THAT([&] { (void)regex->numberOfMatchesInString_options_range("ab"_ns, {}, range); },
                raises(NSRangeException));
    EXPECT_THAT([&] { (void)regex->rangeOfFirstMatchInString_options_range("ab"_ns, {}, range); },
                raises(NSRangeException));
    EXPECT_THAT([&] { regex->enumerateMatchesInString_options_range_usingBlock("ab"_ns, {}, range, [](auto...) {}); },
                raises(NSRangeException));
    EXPECT_THAT(
        [&] { (void)regex->stringByReplacingMatchesInString_options_range_withTemplate("ab"_ns, {}, range, "x"_ns); },
        raises(NSRangeException));
    EXPECT_THAT([&] { (void)regex->replaceMatchesInString_options_range_withTemplate(mutableText, {}, range, "x"_ns); },
                raises(NSRangeException));
  }
  EXPECT_THAT([&] { (void)regex->matchesInString_options_range(nullptr, {}, {0, 0}); },
              raises(NSInvalidArgumentException, "matchesInString:options:range:"));
  EXPECT_THAT([&] { regex->enumerateMatchesInString_options_range_usingBlock(nullptr, {}, {0, 0}, [](auto...) {}); },
              raises(NSInvalidArgumentException));
  EXPECT_THAT(
      [&] { (void)regex->stringByReplacingMatchesInString_options_range_withTemplate("a"_ns, {}, {0, 1}, nullptr); },
      raises(NSInvalidArgumentException));
  EXPECT_THAT([&] { (void)regex->replaceMatchesInString_options_range_withTemplate(nullptr, {}, {0, 0}, "x"_ns); },
              raises(NSInvalidArgumentException));
  EXPECT_THAT([] { (void)NSRegularExpression::initWithPattern_options_error(nullptr, {}, nullptr); },
              raises(NSInvalidArgumentException, "initWithPattern:options:error:"));
  EXPECT_THAT([] { (void)NSRegularExpression::escapedPatternForString(nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([] { (void)NSRegularExpression::escapedTemplateForString(nullptr); }, raises(NSInvalidArgumentException));
}

/// A text that says that it has more units than it has.
class LongText : public NSString {
 public:
  LongText() : NSString("a", uint64_t{1} << 31) {}
};

TEST(NSRegularExpression, RefusesATextThatICUCantTake) {
  const Ref<NSString> text = make<LongText>();
  const auto regex = expression("a");
  EXPECT_THAT([&] { (void)regex->firstMatchInString_options_range(text, {}, {0, 1}); },
              raises(NSInvalidArgumentException, "2147483648 units"));
  EXPECT_THAT([&] { (void)NSRegularExpression::initWithPattern_options_error(text, {}, nullptr); },
              raises(NSInvalidArgumentException, "2147483648 units"));
}

TEST(NSRegularExpression, ASearchThatNeedsTooMuchMemoryRaisesAndTheNextOneWorks) {
  const auto regex = expression("(?:a|b)*c");
  const Ref<NSString> many = text(std::string(2000000, 'a'));
  EXPECT_THAT([&] { (void)regex->firstMatchInString_options_range(many, {}, all(many)); },
              raises(NSGenericException, "U_REGEX_STACK_OVERFLOW"));
  EXPECT_EQ(matches(regex, "abc"_ns, {0, 3}), "abc|");
}

// Enumerating

TEST(NSRegularExpression, CallsBackForEachMatch) {
  const auto regex = expression("\\d");
  std::vector<NSRange> found;
  regex->enumerateMatchesInString_options_range_usingBlock(
      "1 2 3"_ns, {}, {0, 5}, [&](NSTextCheckingResult* match, NSMatchingFlags, bool* stop) {
        found.push_back(match->range());
        *stop = found.size() == 2;
      });
  EXPECT_EQ(found, (std::vector<NSRange>{{0, 1}, {2, 1}}));
}

TEST(NSRegularExpression, ReportsTheEndWhereItIsAskedTo) {
  const auto regex = expression("\\d");
  std::vector<uint64_t> flags;
  bool stops = false;
  const auto walk = [&] {
    regex->enumerateMatchesInString_options_range_usingBlock(
        "1 2"_ns, NSMatchingReportCompletion, {0, 3},
        [&](NSTextCheckingResult* match, NSMatchingFlags flag, bool* stop) {
          EXPECT_EQ(match == nullptr, flag == NSMatchingCompleted);
          flags.push_back(flag);
          *stop = stops;
        });
  };
  walk();
  EXPECT_EQ(flags, (std::vector<uint64_t>{0, 0, NSMatchingCompleted}));
  flags.clear();
  stops = true;
  walk();
  EXPECT_EQ(flags, (std::vector<uint64_t>{0}));
}

TEST(NSRegularExpression, SaysWhetherMoreTextMightChangeAMatch) {
  const auto flagsOf = [](std::string_view pattern) {
    uint64_t flags = 0;
    expression(pattern)->enumerateMatchesInString_options_range_usingBlock(
        "ab"_ns, {}, {0, 2}, [&](NSTextCheckingResult*, NSMatchingFlags each, bool*) { flags |= each; });
    return flags;
  };
  EXPECT_EQ(flagsOf("a"), 0u);
  EXPECT_EQ(flagsOf("\\w+"), uint64_t{NSMatchingHitEnd});
  EXPECT_EQ(flagsOf("b$"), uint64_t{NSMatchingHitEnd | NSMatchingRequiredEnd});
}

TEST(NSRegularExpression, ACallbackMayChangeTheTextAndUseTheExpression) {
  auto regex = expression("\\d");
  const auto changing = NSMutableString::stringWithString("1 2"_ns);
  std::string found;
  NSRegularExpression* const borrowed = regex.get();
  borrowed->enumerateMatchesInString_options_range_usingBlock(changing, {}, {0, 3},
                                                              [&](NSTextCheckingResult* match, NSMatchingFlags, bool*) {
                                                                if (regex) found += matches(regex, "7 8 9"_ns, {0, 5});
                                                                found += std::to_string(match->range().location) + ";";
                                                                changing->setString(""_ns);
                                                                regex = nullptr;
                                                              });
  EXPECT_EQ(found, "7|8|9|0;2;");
}

TEST(NSRegularExpression, SurvivesACallbackThatThrows) {
  const auto regex = expression("\\d");
  EXPECT_THROW(regex->enumerateMatchesInString_options_range_usingBlock("1"_ns, {}, {0, 1},
                                                                        [](auto...) { throw std::string("x"); }),
               std::string);
  EXPECT_EQ(matches(regex, "1 2"_ns, {0, 3}), "1|2|");
}

// Replacing

struct TemplateRow {
  const char* claim;
  const char* with;
  const char* result;  // of "(b)(x)?(c)" in "abcd"
};
constexpr TemplateRow templateRows[] = {
    {"plain text", "-", "a-d"},
    {"nothing", "", "ad"},
    {"the match", "<$0>", "a<bc>d"},
    {"groups", "$3$1", "acbd"},
    {"a group without a part", "[$2]", "a[]d"},
    {"a group that the pattern lacks", "[$7]", "a[]d"},
    {"as many digits as make a group", "$10", "ab0d"},
    {"a dollar without a digit", "$ $a $", "a$ $a $d"},
    {"a backslash takes the next one as it is", "\\$1 \\\\ \\n", "a$1 \\ nd"},
    {"a backslash at the end", "x\\", "ax\\d"},
    {"beyond ASCII", "é$1日", "aéb日d"},
};

TEST(NSRegularExpression, ATemplateSaysWhatComesInPlace) {
  for (const TemplateRow& row : templateRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(replaced("(b)(x)?(c)", "abcd"_ns, row.with), row.result);
    EXPECT_EQ(replaced("(b)(x)?(c)", wide("abcd"), row.with), row.result);
  }
  const std::string many = "(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)";
  EXPECT_EQ(replaced(many, "abcdefghijk"_ns, "$11$10$1$12"), "kjaa2");
}

TEST(NSRegularExpression, ReplacesAllOfARange) {
  const auto digits = expression("\\d");
  EXPECT_THAT(digits->stringByReplacingMatchesInString_options_range_withTemplate("1 2 3 4"_ns, {}, {2, 3}, "<$0>"_ns),
              equals("1 <2> <3> 4"));
  EXPECT_THAT(digits->stringByReplacingMatchesInString_options_range_withTemplate("1 2 3"_ns, NSMatchingAnchored,
                                                                                  {2, 3}, "x"_ns),
              equals("1 x 3"));
  EXPECT_EQ(replaced("é", text("aéb"), "e"), "aeb");
  EXPECT_EQ(replaced("(.)(.)", text("日本語!"), "$2$1"), "本日!語");
}

TEST(NSRegularExpression, WithoutAMatchGivesTheTextItself) {
  const Ref<NSString> string = text("abc");
  EXPECT_EQ(
      expression("x")->stringByReplacingMatchesInString_options_range_withTemplate(string, {}, {0, 3}, "y"_ns).get(),
      string.get());
  const auto changing = NSMutableString::stringWithString(string);
  const auto result =
      expression("x")->stringByReplacingMatchesInString_options_range_withTemplate(changing, {}, {0, 3}, "y"_ns);
  changing->setString(""_ns);
  EXPECT_THAT(result, equals("abc"));
}

TEST(NSRegularExpression, ReplacesInPlaceAndCounts) {
  const auto changing = NSMutableString::stringWithString("a1b22"_ns);
  const auto digits = expression("\\d+");
  EXPECT_EQ(digits->replaceMatchesInString_options_range_withTemplate(changing, {}, {0, 5}, "<$0>"_ns), 2u);
  EXPECT_THAT(changing, equals("a<1>b<22>"));
  EXPECT_EQ(expression("x")->replaceMatchesInString_options_range_withTemplate(changing, {}, {0, 9}, "y"_ns), 0u);
  EXPECT_THAT(changing, equals("a<1>b<22>"));
  const auto changingWide = NSMutableString::stringWithString(wide("a1b22"));
  EXPECT_EQ(digits->replaceMatchesInString_options_range_withTemplate(changingWide, {}, {0, 5}, changingWide), 2u);
  EXPECT_THAT(changingWide, equals("aa1b22ba1b22"));
}

TEST(NSRegularExpression, EscapesAPattern) {
  EXPECT_THAT(NSRegularExpression::escapedPatternForString("a.b*c?d+e[f(g)h{i}j^k$l|m\\n/o"_ns),
              equals("a\\.b\\*c\\?d\\+e\\[f\\(g\\)h\\{i\\}j\\^k\\$l\\|m\\\\n\\/o"));
  EXPECT_THAT(NSRegularExpression::escapedPatternForString("a b-é"_ns), equals("a b-é"));
  EXPECT_THAT(NSRegularExpression::escapedTemplateForString("$1 \\ é"_ns), equals("\\$1 \\\\ é"));
}

TEST(NSRegularExpression, AnswersByName) {
  Ref<NSError> error;
  const auto regex = send<Ref<NSRegularExpression>>(NSRegularExpression::classObject(),
                                                    "regularExpressionWithPattern:options:error:"_sel, "(a)"_ns,
                                                    NSRegularExpressionCaseInsensitive, &error);
  ASSERT_TRUE(regex);
  EXPECT_THAT(send<Ref<NSString>>(regex, "stringByReplacingMatchesInString:options:range:withTemplate:"_sel, "xA"_ns, 0,
                                  NSMakeRange(0, 2), "$1$1"_ns),
              equals("xAA"));
  EXPECT_EQ(send<uint64_t>(regex, "numberOfCaptureGroups"_sel), 1u);
  EXPECT_FALSE(send<Ref<NSRegularExpression>>(NSRegularExpression::classObject(),
                                              "regularExpressionWithPattern:options:error:"_sel, "("_ns, 0, &error));
  EXPECT_EQ(error->code(), 2048);
}

class Finder : public NSRegularExpression {
  QF_CLASS(Finder, NSRegularExpression)
 public:
  bool wasMade = false;
  static Ref<Finder> initWithPattern_options_error_ofClass(const NSString* pattern, NSRegularExpressionOptions options,
                                                           Ref<NSError>* error, Class* cls) {
    auto finder =
        cast<Finder>(NSRegularExpression::initWithPattern_options_error_ofClass(pattern, options, error, cls));
    if (finder) finder->wasMade = true;
    return finder;
  }
};
Class* Finder::classObject() {
  static Class* const cls =
      ClassBuilder<Finder>("Finder")
          .initializer<&Finder::initWithPattern_options_error_ofClass>("initWithPattern:options:error:"_sel)
          .build();
  return cls;
}

TEST(NSRegularExpression, ASubclassIsMadeByItsOwnInitialiser) {
  const auto finder = Finder::regularExpressionWithPattern_options_error<Finder>("a"_ns, {}, nullptr);
  EXPECT_TRUE(finder->wasMade);
  EXPECT_EQ(matches(finder, "aba"_ns, {0, 3}), "a|a|");
  Ref<NSError> error;
  EXPECT_FALSE(Finder::regularExpressionWithPattern_options_error<Finder>("("_ns, {}, &error));
  EXPECT_TRUE(error);
  EXPECT_FALSE(NSRegularExpression::initWithPattern_options_error<Finder>("a"_ns, {}, nullptr)->wasMade);
}

TEST(NSRegularExpression, WithoutAPatternRefusesToSearch) {
  const auto none = create<NSRegularExpression>(NSRegularExpression::classObject());
  EXPECT_THAT([&] { (void)none->firstMatchInString_options_range("a"_ns, {}, {0, 1}); },
              raises(NSInternalInconsistencyException, "there is no pattern"));
}

TEST(NSRegularExpression, ManyThreadsMaySearchAtOnce) {
  const auto regex = expression("(\\w)(\\w*)");
  std::atomic<int> wrong{0};
  std::latch start(4);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, i] {
      const std::string word(static_cast<size_t>(i + 1), static_cast<char>('a' + i));
      const Ref<NSString> string = text(word + " " + word);
      start.arrive_and_wait();
      for (int turn = 0; turn < 500; ++turn) {
        const auto result =
            regex->stringByReplacingMatchesInString_options_range_withTemplate(string, {}, all(string), "$2$1"_ns);
        if (!isEqual(result, string)) ++wrong;
      }
    });
  }
  for (std::thread& each : threads) each.join();
  EXPECT_EQ(wrong, 0);
}

RC_GTEST_PROP(NSRegularExpression, AnEscapedTextMatchesAndStandsForItself, ()) {
  const auto units = *rc::gen::nonEmpty(
      rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"ab$\\.*?+[](){}^|/-&#é \n1"))));
  const Ref<NSString> string = NSString::stringWithCharacters(units);
  const auto regex = NSRegularExpression::initWithPattern_options_error(
      NSRegularExpression::escapedPatternForString(string), {}, nullptr);
  RC_ASSERT(regex->rangeOfFirstMatchInString_options_range(string, {}, all(string)) == all(string));
  const auto again = regex->stringByReplacingMatchesInString_options_range_withTemplate(
      string, {}, all(string), NSRegularExpression::escapedTemplateForString(string));
  RC_ASSERT(isEqual(again, string));
}

}  // namespace
