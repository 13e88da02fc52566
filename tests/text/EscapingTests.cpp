// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Escaping.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

/// One replacement after the other, as the rule is told.
std::u16string oneAfterTheOther(std::u16string text) {
  const std::pair<char16_t, char16_t> steps[] = {{u'\\', u'\\'}, {u'\t', u't'}, {u'\r', u'r'},
                                                 {u'\n', u'n'},  {u'"', u'"'},  {u'\'', u'\''}};
  for (const auto& [unit, escape] : steps) {
    std::u16string next;
    for (const char16_t each : text) {
      if (each == unit) next += {u'\\', escape};
      else next += each;
    }
    text = next;
  }
  return text;
}

TEST(Escaping, PutsBackslashesBeforeWhatSourceCodeNeeds) {
  EXPECT_THAT(quoll::stringByAddingBackslashes("a\tb"_ns), equals("a\\tb"));
  EXPECT_THAT(stringByAddingBackslashes("\t\\\""_ns), equals("\\t\\\\\\\""));
  EXPECT_THAT(stringByAddingBackslashes("\r\n'"_ns), equals("\\r\\n\\'"));
  EXPECT_THAT(stringByAddingBackslashes(""_ns), equals(""));
  EXPECT_THAT(stringByAddingBackslashes("plain"_ns), equals("plain"));
}

TEST(Escaping, GivesATextThatCanBeChanged) {
  const Ref<NSMutableString> text = stringByAddingBackslashes("a"_ns);
  text->appendString("b"_ns);
  EXPECT_THAT(text, equals("ab"));
}

TEST(Escaping, IsThatOfOneReplacementAfterTheOther) {
  EXPECT_TRUE(rc::check([] {
    const auto text = *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"abcä\\\t\r\n\"'")));
    RC_ASSERT(stringByAddingBackslashes(NSString::stringWithCharacters(text))->utf16() == oneAfterTheOther(text));
  }));
}

TEST(Escaping, FindsEachUnitInLongTexts) {
  for (size_t at = 0; at < 100; ++at) {
    std::u16string text(100, u'x');
    text[at] = u'\n';
    EXPECT_EQ(stringByAddingBackslashes(NSString::stringWithCharacters(text))->utf16(), oneAfterTheOther(text));
    text[99 - at] = u'ä';
    EXPECT_EQ(stringByAddingBackslashes(NSString::stringWithCharacters(text))->utf16(), oneAfterTheOther(text));
  }
}

TEST(Escaping, AnswersByName) {
  EXPECT_THAT(send<Ref<NSString>>("a\tb"_ns, "stringByAddingBackslashes"_sel), equals("a\\tb"));
  EXPECT_EQ(stringByAddingBackslashes(nullptr), nullptr);
}

}  // namespace
