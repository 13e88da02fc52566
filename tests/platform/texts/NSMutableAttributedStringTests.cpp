// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "tests/platform/texts/AttributedSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::colour;
using testsupport::runsOf;

Ref<NSMutableAttributedString> plain(const NSString* text) { return NSMutableAttributedString::initWithString(text); }
Ref<NSAttributedString> coloured(const NSString* text, const char* name) {
  return NSAttributedString::initWithString_attributes(text, colour(name));
}
/// "ab" in red, "cd" without attributes.
Ref<NSMutableAttributedString> sample() {
  auto text = plain("abcd"_ns);
  text->setAttributes_range(colour("red"), {0, 2});
  return text;
}

TEST(NSMutableAttributedString, ChangesItsTextAndItsAttributes) {
  auto text = quoll::NSMutableAttributedString::initWithString("Hello"_ns);
  text->addAttribute_value_range("colour"_ns, "red"_ns, {0, 1});
  text->appendAttributedString(quoll::NSAttributedString::initWithString(", you"_ns));
  EXPECT_THAT(text->string(), quoll::equals("Hello, you"));
  EXPECT_EQ(runsOf(text), "H[colour=red]ello, you[]");
}

TEST(NSMutableAttributedString, AppendsAndMergesEqualNeighbours) {
  auto text = plain(""_ns);
  text->appendAttributedString(coloured("ab"_ns, "red"));
  text->appendAttributedString(coloured("cd"_ns, "red"));
  EXPECT_EQ(runsOf(text), "abcd[colour=red]");
  text->appendAttributedString(coloured("e"_ns, "blue"));
  text->appendAttributedString(coloured(""_ns, "green"));
  EXPECT_EQ(runsOf(text), "abcd[colour=red]e[colour=blue]");
}

struct ReplaceRow {
  const char* claim;
  NSRange range;
  NSString* with;
  const char* plainResult;       // of a plain text
  const char* attributedResult;  // of a green one
};
const ReplaceRow replaceRows[] = {
    {"within a run", {0, 1}, "xy"_ns, "xyb[colour=red]cd[]", "xy[colour=green]b[colour=red]cd[]"},
    {"over a border it takes the first unit's", {1, 2}, "x"_ns, "ax[colour=red]d[]", "a[colour=red]x[colour=green]d[]"},
    {"inserted at a border it takes those before",
     {2, 0},
     "x"_ns,
     "abx[colour=red]cd[]",
     "ab[colour=red]x[colour=green]cd[]"},
    {"inserted at the start it takes those behind",
     {0, 0},
     "x"_ns,
     "xab[colour=red]cd[]",
     "x[colour=green]ab[colour=red]cd[]"},
    {"inserted in a run", {1, 0}, "x"_ns, "axb[colour=red]cd[]", "a[colour=red]x[colour=green]b[colour=red]cd[]"},
    {"at the end", {4, 0}, "x"_ns, "ab[colour=red]cdx[]", "ab[colour=red]cd[]x[colour=green]"},
    {"all of it", {0, 4}, "x"_ns, "x[colour=red]", "x[colour=green]"},
    {"by nothing", {1, 2}, ""_ns, "a[colour=red]d[]", "a[colour=red]d[]"},
    {"all by nothing", {0, 4}, ""_ns, "", ""},
    {"nothing by nothing", {2, 0}, ""_ns, "ab[colour=red]cd[]", "ab[colour=red]cd[]"},
};

TEST(NSMutableAttributedString, ReplacesPartsOfTheText) {
  for (const ReplaceRow& row : replaceRows) {
    SCOPED_TRACE(row.claim);
    const auto text = sample(), attributed = sample();
    text->replaceCharactersInRange_withString(row.range, row.with);
    EXPECT_EQ(runsOf(text), row.plainResult);
    attributed->replaceCharactersInRange_withAttributedString(row.range, coloured(row.with, "green"));
    EXPECT_EQ(runsOf(attributed), row.attributedResult);
  }
}

TEST(NSMutableAttributedString, TextInAnEmptyStringHasNoAttributes) {
  auto text = plain(""_ns);
  text->replaceCharactersInRange_withString({0, 0}, "ab"_ns);
  EXPECT_EQ(runsOf(text), "ab[]");
}

TEST(NSMutableAttributedString, DeletingJoinsEqualNeighbours) {
  auto text = sample();
  text->appendAttributedString(coloured("ef"_ns, "red"));
  text->deleteCharactersInRange({2, 2});
  EXPECT_EQ(runsOf(text), "abef[colour=red]");
  text->deleteCharactersInRange({0, 4});
  EXPECT_EQ(text->length(), 0u);
}

TEST(NSMutableAttributedString, InsertsRunsBetweenRuns) {
  auto text = sample();
  text->insertAttributedString_atIndex(sample(), 1);
  EXPECT_EQ(runsOf(text), "aab[colour=red]cd[]b[colour=red]cd[]");
  text->setAttributedString(coloured("x"_ns, "blue"));
  EXPECT_EQ(runsOf(text), "x[colour=blue]");
}

TEST(NSMutableAttributedString, MayBeItsOwnArgument) {
  auto text = sample();
  text->appendAttributedString(text);
  EXPECT_EQ(runsOf(text), "ab[colour=red]cd[]ab[colour=red]cd[]");
  text = sample();
  text->insertAttributedString_atIndex(text, 1);
  EXPECT_EQ(runsOf(text), "aab[colour=red]cd[]b[colour=red]cd[]");
  text = sample();
  text->replaceCharactersInRange_withAttributedString({0, 4}, text);
  EXPECT_EQ(runsOf(text), "ab[colour=red]cd[]");
  text->setAttributedString(text);
  EXPECT_EQ(runsOf(text), "ab[colour=red]cd[]");
}

TEST(NSMutableAttributedString, SetsAddsAndRemovesAttributes) {
  auto text = sample();
  text->addAttribute_value_range("size"_ns, NSNumber::numberWithInt(9), {1, 2});
  EXPECT_EQ(runsOf(text), "a[colour=red]b[colour=red,size=9]c[size=9]d[]");
  text->addAttributes_range(NSDictionary::dictionaryWithEntries({{"colour"_ns, "blue"}, {"size"_ns, 9}}), {0, 4});
  EXPECT_EQ(runsOf(text), "abcd[colour=blue,size=9]");  // whatever the order in which they came
  text->removeAttribute_range("colour"_ns, {3, 1});
  EXPECT_EQ(runsOf(text), "abc[colour=blue,size=9]d[size=9]");
  text->removeAttribute_range("weight"_ns, {0, 4});
  EXPECT_EQ(runsOf(text), "abc[colour=blue,size=9]d[size=9]");
  text->setAttributes_range(nullptr, {0, 4});
  EXPECT_EQ(runsOf(text), "abcd[]");
  text->addAttribute_value_range("size"_ns, "1"_ns, {2, 0});
  EXPECT_EQ(runsOf(text), "abcd[]");
}

TEST(NSMutableAttributedString, RefusesWhatIsPastTheEndAndWhatIsNull) {
  const auto text = sample();
  const NSRange past{3, 2};
  const std::pair<const char*, std::function<void()>> pastTheEnd[] = {
      {"replaceCharactersInRange:withString:", [&] { text->replaceCharactersInRange_withString(past, ""_ns); }},
      {"replaceCharactersInRange:withAttributedString:",
       [&] { text->replaceCharactersInRange_withAttributedString(past, text); }},
      {"insertAttributedString:atIndex:", [&] { text->insertAttributedString_atIndex(text, 5); }},
      {"deleteCharactersInRange:", [&] { text->deleteCharactersInRange(past); }},
      {"setAttributes:range:", [&] { text->setAttributes_range(nullptr, past); }},
      {"addAttribute:value:range:", [&] { text->addAttribute_value_range("a"_ns, "b"_ns, past); }},
      {"addAttributes:range:", [&] { text->addAttributes_range(colour("red"), past); }},
      {"removeAttribute:range:", [&] { text->removeAttribute_range("a"_ns, past); }},
  };
  for (const auto& [selector, call] : pastTheEnd) {
    EXPECT_THAT(call, raises(NSRangeException, "-[NSMutableAttributedString " + std::string(selector) + "]"));
  }
  const std::pair<const char*, std::function<void()>> null[] = {
      {"initWithString:", [&] { (void)plain(nullptr); }},
      {"replaceCharactersInRange:withString:", [&] { text->replaceCharactersInRange_withString({0, 0}, nullptr); }},
      {"replaceCharactersInRange:withAttributedString:",
       [&] { text->replaceCharactersInRange_withAttributedString({0, 0}, nullptr); }},
      {"appendAttributedString:", [&] { text->appendAttributedString(nullptr); }},
      {"insertAttributedString:atIndex:", [&] { text->insertAttributedString_atIndex(nullptr, 0); }},
      {"setAttributedString:", [&] { text->setAttributedString(nullptr); }},
      {"addAttribute:value:range:", [&] { text->addAttribute_value_range(nullptr, "b"_ns, {0, 1}); }},
      {"addAttribute:value:range:", [&] { text->addAttribute_value_range("a"_ns, nullptr, {0, 1}); }},
      {"addAttributes:range:", [&] { text->addAttributes_range(nullptr, {0, 1}); }},
      {"removeAttribute:range:", [&] { text->removeAttribute_range(nullptr, {0, 1}); }},
  };
  for (const auto& [selector, call] : null) {
    EXPECT_THAT(call, raises(NSInvalidArgumentException, "-[NSMutableAttributedString " + std::string(selector) + "]"));
  }
  EXPECT_EQ(runsOf(text), "ab[colour=red]cd[]");
}

TEST(NSMutableAttributedString, WhatWasReadBeforeStaysAsItWas) {
  auto text = sample();
  const Ref<NSString> letters = text->string();
  EXPECT_EQ(text->string().get(), letters.get()) << "asked twice without a change, it is made once";
  const Ref<NSAttributedString> before = text->copy(), part = text->attributedSubstringFromRange({0, 4});
  EXPECT_EQ(before->isa(), NSAttributedString::classObject());
  text->setAttributedString(coloured("x"_ns, "blue"));
  EXPECT_THAT(letters, equals("abcd"));
  EXPECT_THAT(text->string(), equals("x"));
  EXPECT_EQ(runsOf(before), "ab[colour=red]cd[]");
  EXPECT_THAT(part, equals(before));
}

TEST(NSMutableAttributedString, AWalkMayChangeAttributes) {
  auto text = sample();
  std::vector<NSRange> visited;
  text->enumerateAttributesInRange_options_usingBlock({0, 4}, {}, [&](NSDictionary*, NSRange range, bool*) {
    visited.push_back(range);
    text->setAttributes_range(colour("green"), range);
  });
  EXPECT_EQ(visited, (std::vector<NSRange>{{0, 2}, {2, 2}}));
  EXPECT_EQ(runsOf(text), "abcd[colour=green]");
}

TEST(NSMutableAttributedString, AWalkThatChangesTheLengthRaises) {
  auto text = sample();
  EXPECT_THAT(
      [&] {
        text->enumerateAttributesInRange_options_usingBlock(
            {0, 4}, {}, [&](NSDictionary*, NSRange, bool*) { text->deleteCharactersInRange({0, 4}); });
      },
      raises(NSGenericException, "was mutated while being enumerated"));
}

TEST(NSMutableAttributedString, AWalkKeepsTheStringAlive) {
  auto text = sample();
  int runs = 0;
  NSMutableAttributedString* const borrowed = text.get();
  borrowed->enumerateAttributesInRange_options_usingBlock({0, 4}, {}, [&](NSDictionary*, NSRange, bool*) {
    text = nullptr;
    ++runs;
  });
  EXPECT_EQ(runs, 2);
}

/// A value that runs a function when it is compared, and another when it dies.
class Trap : public NSObject {
  QF_CLASS(Trap, NSObject)
 public:
  std::function<void()> onEqual, onDeath;
  bool isEqual(const NSObject* other) const override {
    if (onEqual) onEqual();
    return other == this;
  }
  uint64_t hash() const override { return 1; }
  ~Trap() override {
    if (onDeath) onDeath();
  }
};
Class* Trap::classObject() {
  static Class* const cls = ClassBuilder<Trap>("Trap").build();
  return cls;
}

TEST(NSMutableAttributedString, AComparisonThatChangesTheStringRaisesAndBreaksNothing) {
  auto text = sample();
  const Ref<Trap> one = make<Trap>(), two = make<Trap>();
  text->addAttribute_value_range("trap"_ns, one, {0, 2});
  bool changed = false;
  const auto changeIt = [&] {
    if (!std::exchange(changed, true)) text->deleteCharactersInRange({0, 4});
  };
  one->onEqual = two->onEqual = changeIt;
  EXPECT_THAT(
      [&] {
        text->replaceCharactersInRange_withAttributedString(
            {2, 0}, NSAttributedString::initWithString_attributes(
                        "x"_ns, NSDictionary::dictionaryWithEntries({{"colour"_ns, "red"}, {"trap"_ns, two}})));
      },
      raises(NSGenericException, "was mutated"));
  EXPECT_EQ(runsOf(text), "");
}

TEST(NSMutableAttributedString, AValueThatDiesSeesTheStringAsItIsThen) {
  auto text = sample();
  std::string seen;
  {
    const Ref<Trap> last = make<Trap>();
    last->onDeath = [&] { seen = runsOf(text); };
    text->addAttribute_value_range("trap"_ns, last, {1, 2});
  }
  text->setAttributes_range(nullptr, {0, 4});
  EXPECT_EQ(seen, "abcd[]");
}

TEST(NSMutableAttributedString, AppendingTakesConstantTimeForEachRun) {
  const auto red = coloured("r"_ns, "red"), blue = coloured("b"_ns, "blue");
  auto text = plain(""_ns);
  constexpr int runs = 200000;  // quadratic, this would take minutes
  for (int i = 0; i < runs; ++i) text->appendAttributedString(i % 2 ? blue : red);
  NSRange run{};
  EXPECT_THAT(text->attributesAtIndex_effectiveRange(123456, &run), equals(colour("red")));
  EXPECT_EQ(run, NSMakeRange(123456, 1));
}

TEST(NSMutableAttributedString, LeaksNothing) {
  (void)sample();
  const LeakGuard guard;
  auto text = sample();
  for (int i = 0; i < 20; ++i) {
    text->insertAttributedString_atIndex(text, text->length() / 3);
    text->deleteCharactersInRange({1, text->length() / 2});
    text->addAttribute_value_range("size"_ns, NSNumber::numberWithInt(i), {0, 1});
  }
}

/// A unit and what is said of it, one by one.
struct Model {
  std::u16string text;
  std::vector<Ref<NSDictionary>> attributes;

  void replace(NSRange range, const std::u16string& with, const std::vector<Ref<NSDictionary>>& these) {
    text.replace(range.location, range.length, with);
    const auto at = attributes.begin() + static_cast<std::ptrdiff_t>(range.location);
    attributes.erase(at, at + static_cast<std::ptrdiff_t>(range.length));
    attributes.insert(attributes.begin() + static_cast<std::ptrdiff_t>(range.location), these.begin(), these.end());
  }
  void change(NSRange range, const std::function<Ref<NSDictionary>(NSDictionary*)>& to) {
    for (uint64_t i = range.location; i < NSMaxRange(range); ++i) attributes[i] = to(attributes[i].get());
  }
};

/// Runs tile the text, differ from their neighbours, and say of each unit what the model says.
void requireSame(const NSAttributedString* text, const Model& model) {
  RC_ASSERT(text->string()->utf16() == model.text);
  RC_ASSERT(text->length() == model.text.size());
  Ref<NSDictionary> before;
  for (uint64_t at = 0; at < text->length();) {
    NSRange run{};
    const Ref<NSDictionary> attributes = text->attributesAtIndex_effectiveRange(at, &run);
    RC_ASSERT(run.location == at);
    RC_ASSERT(run.length > 0u);
    RC_ASSERT(NSMaxRange(run) <= text->length());
    RC_ASSERT(!isEqual(before, attributes));
    for (; at < NSMaxRange(run); ++at) RC_ASSERT(isEqual(attributes, model.attributes[at]));
    before = attributes;
  }
}

NSRange someRange(uint64_t length) {
  const uint64_t start = *rc::gen::inRange<uint64_t>(0, length + 1);
  return {start, *rc::gen::inRange<uint64_t>(0, length - start + 1)};
}
Ref<NSDictionary> someAttributes() {
  auto all = NSMutableDictionary::dictionary();
  if (const int one = *rc::gen::inRange(0, 3)) all->setObject_forKey(NSNumber::numberWithInt(one), "one"_ns);
  if (*rc::gen::arbitrary<bool>()) all->setObject_forKey("x"_ns, "two"_ns);
  return all->copy();
}
Ref<NSDictionary> with(const NSDictionary* old, const NSDictionary* more) {
  Ref<NSMutableDictionary> changed = old->mutableCopy();
  changed->addEntriesFromDictionary(more);
  return changed->copy();
}

void editOnce(NSMutableAttributedString* text, Model& model) {
  const NSRange range = someRange(text->length());
  const Ref<NSDictionary> attributes = someAttributes();
  const std::u16string units(*rc::gen::inRange<size_t>(0, 4), *rc::gen::elementOf(std::u16string(u"abé")));
  const Ref<NSString> string = NSString::stringWithCharacters(units);
  switch (*rc::gen::inRange(0, 8)) {
    case 0: {
      const uint64_t place = range.length == 0 && range.location > 0 ? range.location - 1 : range.location;
      const auto taken = place < model.attributes.size() ? model.attributes[place] : NSDictionary::dictionary();
      text->replaceCharactersInRange_withString(range, string);
      return model.replace(range, units, std::vector(units.size(), taken));
    }
    case 1:
      text->setAttributes_range(attributes, range);
      return model.change(range, [&](NSDictionary*) { return attributes; });
    case 2:
      text->addAttribute_value_range("one"_ns, "y"_ns, range);
      return model.change(range, [&](NSDictionary* old) {
        return with(old, NSDictionary::dictionaryWithObject_forKey("y"_ns, "one"_ns));
      });
    case 3:
      text->addAttributes_range(attributes, range);
      return model.change(range, [&](NSDictionary* old) { return with(old, attributes); });
    case 4:
      text->removeAttribute_range("one"_ns, range);
      return model.change(range, [&](NSDictionary* old) -> Ref<NSDictionary> {
        Ref<NSMutableDictionary> changed = old->mutableCopy();
        changed->removeObjectForKey("one"_ns);
        return changed->copy();
      });
    case 5: {
      const auto part = Model(model);  // of itself
      const NSRange taken = someRange(text->length());
      text->replaceCharactersInRange_withAttributedString(range, text->attributedSubstringFromRange(taken));
      const auto from = part.attributes.begin() + static_cast<std::ptrdiff_t>(taken.location);
      return model.replace(range, part.text.substr(taken.location, taken.length),
                           {from, from + static_cast<std::ptrdiff_t>(taken.length)});
    }
    case 6: text->deleteCharactersInRange(range); return model.replace(range, u"", {});
    default:
      text->appendAttributedString(NSAttributedString::initWithString_attributes(string, attributes));
      return model.replace({model.text.size(), 0}, units, std::vector(units.size(), attributes));
  }
}

RC_GTEST_PROP(NSMutableAttributedString, AgreesWithAListOfUnitsUnderAnyEdits, ()) {
  const auto text = plain(""_ns);
  Model model;
  const int edits = *rc::gen::inRange(0, 40);
  for (int i = 0; i < edits; ++i) {
    editOnce(text, model);
    requireSame(text, model);
  }
  const NSRange range = someRange(text->length());
  Model part;
  const auto from = model.attributes.begin() + static_cast<std::ptrdiff_t>(range.location);
  part.replace({0, 0}, model.text.substr(range.location, range.length),
               {from, from + static_cast<std::ptrdiff_t>(range.length)});
  requireSame(text->attributedSubstringFromRange(range), part);
  requireSame(text->copy(), model);
}

}  // namespace
