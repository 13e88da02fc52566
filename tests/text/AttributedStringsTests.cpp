// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/AttributedStrings.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/collections/NSDictionary.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

Ref<NSDictionary> bold() { return NSDictionary::dictionaryWithEntries({{"weight", "bold"}}); }

/// The text with each run in brackets where it has attributes.
std::string shown(const NSAttributedString* text) {
  std::string all;
  for (uint64_t at = 0; at < text->length();) {
    NSRange run;
    const bool plain = text->attributesAtIndex_effectiveRange(at, &run)->count() == 0;
    const std::string part = text->string()->substringWithRange(run)->utf8();
    all += plain ? part : "[" + part + "]";
    at = NSMaxRange(run);
  }
  return all;
}

TEST(AttributedStrings, AreMadeInOneCall) {
  EXPECT_EQ(shown(quoll::attributedString()), "");
  EXPECT_EQ(shown(attributedStringWithString("plain"_ns)), "plain");
  EXPECT_EQ(shown(attributedStringWithString_withAttributes("strong"_ns, bold())), "[strong]");
  EXPECT_EQ(shown(attributedStringWithString_withAttributes("plain"_ns, nullptr)), "plain");
}

TEST(AttributedStrings, AreOfTheClassThatIsAsked) {
  EXPECT_EQ(attributedString()->isa(), NSAttributedString::classObject());
  EXPECT_EQ(attributedString<NSMutableAttributedString>()->isa(), NSMutableAttributedString::classObject());
  Class* const changing = NSMutableAttributedString::classObject();
  EXPECT_EQ(send<Ref<NSObject>>(changing, "attributedString"_sel)->isa(), changing);
  EXPECT_EQ(send<Ref<NSObject>>(changing, "attributedStringWithString:"_sel, "a"_ns)->isa(), changing);
  EXPECT_EQ(send<Ref<NSObject>>(changing, "attributedStringWithString:withAttributes:"_sel, "a"_ns, bold())->isa(),
            changing);
}

TEST(AttributedStrings, LoseAllAttributesWhenPlainTextIsAdded) {
  const Ref<NSAttributedString> strong = attributedStringWithString_withAttributes("strong"_ns, bold());
  EXPECT_EQ(shown(attributedStringByPrependString(strong, "very "_ns)), "very strong");
  EXPECT_EQ(shown(attributedStringByAppendingString(strong, "est"_ns)), "strongest");
  EXPECT_EQ(shown(strong), "[strong]");
}

TEST(AttributedStrings, KeepTheirClassWhenPlainTextIsAdded) {
  const Ref<NSMutableAttributedString> text = attributedStringWithString<NSMutableAttributedString>("a"_ns);
  EXPECT_EQ(attributedStringByPrependString(text, "b"_ns)->isa(), NSMutableAttributedString::classObject());
  EXPECT_EQ(attributedStringByAppendingString(text, "b"_ns)->isa(), NSMutableAttributedString::classObject());
}

TEST(AttributedStrings, GrowInPlace) {
  const Ref<NSMutableAttributedString> text = attributedStringWithString<NSMutableAttributedString>("middle"_ns);
  appendString(text, " end"_ns);
  appendString_withAttributes(text, "!"_ns, bold());
  prependString(text, "start "_ns);
  prependString_withAttributes(text, "> "_ns, bold());
  insertString_withAttributes_atIndex(text, "very "_ns, bold(), 8);
  EXPECT_EQ(shown(text), "[> ]start [very ]middle end[!]");
}

TEST(AttributedStrings, GrowWithoutAttributesBehindTextThatHasThem) {
  const Ref<NSMutableAttributedString> text =
      attributedStringWithString_withAttributes<NSMutableAttributedString>("a"_ns, bold());
  appendString(text, "b"_ns);
  EXPECT_EQ(shown(text), "[a]b");
}

TEST(AttributedStrings, RaiseForAnIndexPastTheEndAndForANullText) {
  const Ref<NSMutableAttributedString> text = attributedStringWithString<NSMutableAttributedString>("abc"_ns);
  EXPECT_THAT([&] { insertString_withAttributes_atIndex(text, "x"_ns, nullptr, 4); },
              raises(NSRangeException, "index 4"));
  EXPECT_THAT([&] { appendString(text, nullptr); }, raises(NSInvalidArgumentException, "initWithString"));
  EXPECT_THAT([&] { attributedStringByPrependString(text, nullptr); },
              raises(NSInvalidArgumentException, "attributedStringByPrependString:"));
  EXPECT_EQ(shown(text), "abc");
}

TEST(AttributedStrings, AnswerByName) {
  const Ref<NSMutableAttributedString> text = attributedString<NSMutableAttributedString>();
  send(text, "appendString:"_sel, "b"_ns);
  send(text, "prependString:withAttributes:"_sel, "a"_ns, bold());
  send(text, "insertString:withAttributes:atIndex:"_sel, "c"_ns, nullptr, 2);
  EXPECT_EQ(shown(text), "[a]bc");
}

TEST(AttributedStrings, ANullReceiverAnswersNull) {
  EXPECT_EQ(attributedStringByPrependString(nullptr, "a"_ns), nullptr);
  EXPECT_EQ(attributedStringByAppendingString(nullptr, "a"_ns), nullptr);
  appendString(nullptr, "a"_ns);
  prependString(nullptr, "a"_ns);
}

}  // namespace
