// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSAttributedString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "tests/platform/texts/AttributedSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::colour;
using testsupport::runsOf;

/// "ab" in red, "cd" without attributes, "ef" in blue.
Ref<NSAttributedString> sample() {
  auto text = NSMutableAttributedString::initWithString("abcdef"_ns);
  text->setAttributes_range(colour("red"), {0, 2});
  text->setAttributes_range(colour("blue"), {4, 2});
  return text->copy();
}

TEST(NSAttributedString, TellsTheAttributesOfAPlaceAndTheirRun) {
  const quoll::Ref<quoll::NSDictionary> bold = quoll::NSDictionary::dictionaryWithEntries({{"weight"_ns, 700}});
  const auto title = quoll::NSAttributedString::initWithString_attributes("Quoll"_ns, bold);
  quoll::NSRange run{};
  EXPECT_THAT(title->attributesAtIndex_effectiveRange(2, &run), quoll::equals(bold));
  EXPECT_EQ(run, quoll::NSMakeRange(0, 5));
}

TEST(NSAttributedString, APlainTextIsOneRunWithoutAttributes) {
  const auto text = NSAttributedString::initWithString("abc"_ns);
  EXPECT_THAT(text->string(), equals("abc"));
  EXPECT_EQ(text->length(), 3u);
  EXPECT_EQ(runsOf(text), "abc[]");
  EXPECT_EQ(runsOf(NSAttributedString::initWithString_attributes("abc"_ns, nullptr)), "abc[]");
  EXPECT_EQ(runsOf(NSAttributedString::initWithString_attributes("abc"_ns, NSDictionary::dictionary())), "abc[]");
}

TEST(NSAttributedString, AnEmptyTextHasNoRuns) {
  for (const auto& text : {NSAttributedString::initWithString(""_ns),
                           NSAttributedString::initWithString_attributes(""_ns, colour("red"))}) {
    EXPECT_EQ(text->length(), 0u);
    EXPECT_EQ(runsOf(text), "");
    EXPECT_THAT([&] { (void)text->attributesAtIndex_effectiveRange(0, nullptr); },
                raises(NSRangeException, "attributesAtIndex:effectiveRange:]: index 0"));
    text->enumerateAttributesInRange_options_usingBlock(
        {0, 0}, {}, [](NSDictionary*, NSRange, bool*) { ADD_FAILURE() << "there is no run"; });
  }
}

TEST(NSAttributedString, FindsTheRunOfEachUnit) {
  const Ref<NSAttributedString> text = sample();
  const NSRange expected[] = {{0, 2}, {0, 2}, {2, 2}, {2, 2}, {4, 2}, {4, 2}};
  for (uint64_t i = 0; i < 6; ++i) {
    NSRange run{};
    (void)text->attributesAtIndex_effectiveRange(i, &run);
    EXPECT_EQ(run, expected[i]) << i;
    NSRange same{};
    (void)text->attribute_atIndex_effectiveRange("colour"_ns, i, &same);
    EXPECT_EQ(same, expected[i]) << i;
  }
  EXPECT_THAT(text->attribute_atIndex_effectiveRange("colour"_ns, 4, nullptr), equals("blue"));
  EXPECT_FALSE(text->attribute_atIndex_effectiveRange("colour"_ns, 2, nullptr));
  EXPECT_FALSE(text->attribute_atIndex_effectiveRange("size"_ns, 0, nullptr));
}

TEST(NSAttributedString, RefusesWhatIsPastTheEndAndWhatIsNull) {
  const Ref<NSAttributedString> text = sample();
  EXPECT_THAT([&] { (void)text->attributesAtIndex_effectiveRange(6, nullptr); },
              raises(NSRangeException,
                     "-[NSAttributedString attributesAtIndex:effectiveRange:]: index 6 beyond bounds [0 .. 5]"));
  EXPECT_THAT([&] { (void)text->attribute_atIndex_effectiveRange("colour"_ns, 7, nullptr); },
              raises(NSRangeException, "attribute:atIndex:effectiveRange:]: index 7 beyond bounds [0 .. 5]"));
  for (const NSRange range : {NSRange{0, 7}, NSRange{7, 0}, NSRange{3, UINT64_MAX}}) {
    EXPECT_THAT([&] { (void)text->attributedSubstringFromRange(range); },
                raises(NSRangeException, "-[NSAttributedString attributedSubstringFromRange:]"));
    EXPECT_THAT([&] { text->enumerateAttributesInRange_options_usingBlock(range, {}, [](auto...) {}); },
                raises(NSRangeException, "enumerateAttributesInRange:options:usingBlock:"));
  }
  EXPECT_THAT([&] { (void)text->attribute_atIndex_effectiveRange(nullptr, 0, nullptr); },
              raises(NSInvalidArgumentException, "attribute:atIndex:effectiveRange:"));
  EXPECT_THAT([] { (void)NSAttributedString::initWithString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSAttributedString initWithString:]"));
  EXPECT_THAT([] { (void)NSAttributedString::initWithString_attributes(nullptr, nullptr); },
              raises(NSInvalidArgumentException, "-[NSAttributedString initWithString:attributes:]"));
  EXPECT_THAT([] { (void)NSAttributedString::initWithAttributedString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSAttributedString initWithAttributedString:]"));
}

TEST(NSAttributedString, APartKeepsItsAttributes) {
  const Ref<NSAttributedString> text = sample();
  EXPECT_EQ(runsOf(text->attributedSubstringFromRange({1, 4})), "b[colour=red]cd[]e[colour=blue]");
  EXPECT_EQ(runsOf(text->attributedSubstringFromRange({2, 2})), "cd[]");
  EXPECT_EQ(runsOf(text->attributedSubstringFromRange({6, 0})), "");
  EXPECT_THAT(text->attributedSubstringFromRange({0, 6}), equals(text));
}

struct Visit {
  std::string attributes;
  NSRange range;
  bool operator==(const Visit&) const = default;
};
std::vector<Visit> visits(const NSAttributedString* text, NSRange range,
                          NSAttributedStringEnumerationOptions options = {}, size_t most = 99) {
  std::vector<Visit> all;
  text->enumerateAttributesInRange_options_usingBlock(range, options,
                                                      [&](NSDictionary* attributes, NSRange run, bool* stop) {
                                                        all.push_back({testsupport::shortText(attributes), run});
                                                        *stop = all.size() == most;
                                                      });
  return all;
}

TEST(NSAttributedString, WalksOverTheRunsOfARange) {
  const Ref<NSAttributedString> text = sample();
  EXPECT_EQ(visits(text, {1, 4}), (std::vector<Visit>{{"colour=red", {1, 1}}, {"", {2, 2}}, {"colour=blue", {4, 1}}}));
  EXPECT_EQ(visits(text, {1, 4}, NSAttributedStringEnumerationReverse),
            (std::vector<Visit>{{"colour=blue", {4, 1}}, {"", {2, 2}}, {"colour=red", {1, 1}}}));
  EXPECT_EQ(visits(text, {0, 6}, {}, 1), (std::vector<Visit>{{"colour=red", {0, 2}}}));
  EXPECT_EQ(visits(text, {3, 0}), std::vector<Visit>());
}

TEST(NSAttributedString, IsEqualByTextAndAttributes) {
  const Ref<NSAttributedString> text = sample();
  EXPECT_THAT(text, equals(sample()));
  EXPECT_EQ(text->hash(), sample()->hash());
  EXPECT_THAT(text, equals(text->mutableCopy()));
  EXPECT_THAT(text->mutableCopy(), equals(text));
  EXPECT_TRUE(text->isEqualToAttributedString(sample()));
  EXPECT_FALSE(text->isEqualToAttributedString(nullptr));
  EXPECT_FALSE(text->isEqual("abcdef"_ns));
  EXPECT_FALSE(text->isEqual(NSAttributedString::initWithString("abcdef"_ns)));
  EXPECT_FALSE(text->isEqual(NSAttributedString::initWithString_attributes("abcdef"_ns, colour("red"))));
  const Ref<NSMutableAttributedString> other = text->mutableCopy();
  other->setAttributes_range(colour("red"), {0, 3});
  EXPECT_FALSE(text->isEqual(other));
}

TEST(NSAttributedString, ACopyIsItself) {
  const Ref<NSAttributedString> text = sample();
  EXPECT_EQ(text->copy().get(), text.get());
  EXPECT_EQ(send<Ref<NSObject>>(text, "copy"_sel).get(), text.get());
  EXPECT_EQ(text->mutableCopy()->isa(), NSMutableAttributedString::classObject());
  EXPECT_EQ(NSAttributedString::initWithAttributedString(text)->isa(), NSAttributedString::classObject());
}

TEST(NSAttributedString, KeepsWhatItWasMadeFromAsItWas) {
  const Ref<NSMutableString> letters = NSMutableString::stringWithString("abc"_ns);
  const Ref<NSMutableDictionary> attributes = colour("red")->mutableCopy();
  const auto text = NSAttributedString::initWithString_attributes(letters, attributes);
  letters->setString("x"_ns);
  attributes->removeAllObjects();
  EXPECT_EQ(runsOf(text), "abc[colour=red]");
}

TEST(NSAttributedString, DescribesEachRun) {
  EXPECT_THAT(NSAttributedString::initWithString_attributes("ab"_ns, colour("red"))->description(),
              equals("ab{\n    colour = red;\n}"));
  EXPECT_THAT(sample()->description(), equals("ab{\n    colour = red;\n}cd{\n}ef{\n    colour = blue;\n}"));
}

class Heading : public NSAttributedString {
  QF_CLASS(Heading, NSAttributedString)
 public:
  bool wasMade = false;
  static Ref<Heading> initWithString_ofClass(const NSString* text, Class* cls) {
    auto heading = cast<Heading>(NSAttributedString::initWithString_ofClass(text, cls));
    heading->wasMade = true;
    return heading;
  }
};
Class* Heading::classObject() {
  static Class* const cls =
      ClassBuilder<Heading>("Heading").initializer<&Heading::initWithString_ofClass>("initWithString:"_sel).build();
  return cls;
}

TEST(NSAttributedString, InitialisersMakeTheClassThatIsAskedFor) {
  const auto typed = NSAttributedString::initWithString_attributes<Heading>("abc"_ns, colour("red"));
  EXPECT_EQ(typed->isa(), Heading::classObject());
  EXPECT_EQ(runsOf(typed), "abc[colour=red]");
  const auto named = made<Heading>(Heading::classObject(), "initWithString:"_sel, "abc"_ns);
  EXPECT_TRUE(named->wasMade);
  EXPECT_EQ(runsOf(made<NSAttributedString>(NSMutableAttributedString::classObject(), "initWithAttributedString:"_sel,
                                            typed)),
            "abc[colour=red]");
  EXPECT_EQ(typed->copy()->isa(), NSAttributedString::classObject());
  EXPECT_EQ(NSAttributedString::initWithString<NSMutableAttributedString>("a"_ns)->isa(),
            NSMutableAttributedString::classObject());
}

TEST(NSAttributedString, AnswersByName) {
  const Ref<NSAttributedString> text = sample();
  NSRange run{};
  EXPECT_THAT(send<Ref<NSDictionary>>(text, "attributesAtIndex:effectiveRange:"_sel, 5, &run), equals(colour("blue")));
  EXPECT_EQ(run, NSMakeRange(4, 2));
  EXPECT_THAT(text->valueForKeyPath("string.length"_ns)->description(), equals("6"));
}

}  // namespace
