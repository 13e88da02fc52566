// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSString.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <sstream>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/FreeMemory.h"

using namespace quoll;
using namespace quoll::literals;

static_assert(sizeof(NSString) == 3 * sizeof(void*), "the text of a plain string stands directly behind it");
static_assert(!std::is_constructible_v<NSString>);

namespace {

constexpr uint64_t most = std::numeric_limits<uint64_t>::max();

/// The text in UTF-16 storage, also where it is ASCII: as a part of a wider text.
Ref<NSString> asUTF16(std::u16string_view text) {
  return NSString::stringWithCharacters(u"\u4E00" + std::u16string(text))->substringFromIndex(1);
}

TEST(NSString, SaysItsUnitsAsTheExampleDoes) {
  quoll::Ref<quoll::NSString> name = quoll::NSString::stringWithUTF8("Grüße");
  std::ostringstream out;
  if (name->hasPrefix("Gr"_ns)) out << name << '\n';
  EXPECT_EQ(out.str(), "Grüße\n");
  EXPECT_EQ(name->length(), 5u);
  EXPECT_EQ(name->characterAtIndex(2), u'ü');
}

TEST(NSString, StoresAsciiAsBytesAndOtherTextAsUnits) {
  const Ref<NSString> ascii = NSString::stringWithUTF8("plain");
  EXPECT_NE(ascii->asciiCharacters(), nullptr);
  EXPECT_EQ(ascii->utf16Characters(), nullptr);
  EXPECT_NE(NSString::stringWithCharacters(u"plain")->asciiCharacters(), nullptr);
  EXPECT_NE(NSString::stringWithLatin1("plain")->asciiCharacters(), nullptr);
  const Ref<NSString> wide = NSString::stringWithUTF8("é");
  EXPECT_EQ(wide->asciiCharacters(), nullptr);
  ASSERT_NE(wide->utf16Characters(), nullptr);
  EXPECT_EQ(wide->utf16Characters()[0], u'é');
}

TEST(NSString, IsMadeInOneAllocation) {  // or in none, in room that an object left
  const AllocationCount allocations;
  const Ref<NSString> text = NSString::stringWithUTF8("in one piece");
  EXPECT_LE(allocations.made(), 1u);
  const AllocationCount more;
  const Ref<NSString> wide = NSString::stringWithUTF8("日本語");
  EXPECT_LE(more.made(), 1u);
}

TEST(NSString, HasOneImmortalEmptyString) {
  NSString::classObject();
  const AllocationCount allocations;
  const Ref<NSString> empty = NSString::string();
  EXPECT_EQ(empty->length(), 0u);
  EXPECT_TRUE(NSString::stringWithUTF8("") == empty);
  EXPECT_TRUE(NSString::stringWithCharacters({}) == empty);
  EXPECT_TRUE(NSString::stringWithLatin1({}) == empty);
  EXPECT_TRUE("abc"_ns->substringFromIndex(3) == empty);
  EXPECT_TRUE(NSString::stringWithUTF8("é")->substringToIndex(0) == empty);
  EXPECT_LE(allocations.made(), 1u);  // the é
}

TEST(NSString, DecodesUTF8OfEveryLength) {
  EXPECT_EQ(NSString::stringWithUTF8("aé日😀")->utf16(), u"aé日😀");
  EXPECT_EQ(NSString::stringWithUTF8("😀")->length(), 2u);
  EXPECT_EQ(NSString::stringWithUTF8(std::string_view("a\0b", 3))->length(), 3u);
}

TEST(NSString, IsNullForIllFormedUTF8) {
  const std::string_view illFormed[] = {"\x80", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE6\x97x"};
  for (const std::string_view bytes : illFormed) {
    EXPECT_EQ(NSString::stringWithUTF8(bytes), nullptr);
    EXPECT_EQ(NSString::stringWithUTF8String(std::string(bytes).c_str()), nullptr);
  }
}

TEST(NSString, DecodesEachLatin1ByteToOneUnit) {
  const Ref<NSString> text = NSString::stringWithLatin1("a\x80\xFF");
  EXPECT_EQ(text->utf16(), (std::u16string{u'a', 0x80, 0xFF}));
}

TEST(NSString, KeepsUnpairedSurrogates) {
  const std::u16string units{0xDC00, u'a', 0xD800};
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  EXPECT_EQ(text->utf16(), units);
  EXPECT_EQ(text->characterAtIndex(2), 0xD800);
  EXPECT_EQ(text->utf8(), "\uFFFDa\uFFFD");
  EXPECT_EQ(text->UTF8String(), nullptr);
}

TEST(NSString, GivesAUTF8StringThatLivesAsLongAsTheScope) {
  const AutoreleaseScope scope;
  const char* text = NSString::stringWithUTF8("naïve")->UTF8String();
  EXPECT_STREQ(text, "naïve");
  EXPECT_STREQ(""_ns->UTF8String(), "");
}

TEST(NSString, LeavesNothingBehind) {
  const LeakGuard guard;
  const Ref<NSString> large = NSString::stringWithUTF8(std::string(10000, 'x'));
  const Ref<NSString> part = large->substringFromIndex(10);
  part->UTF8String();
  part->stringByAppendingString("é"_ns)->uppercaseString()->copy();
}

TEST(NSString, IsMadeByNameToo) {
  Class* cls = NSString::classObject();
  EXPECT_THAT(send<Ref<NSString>>(cls, "string"_sel), equals(""));
  EXPECT_THAT(send<Ref<NSString>>(cls, "stringWithString:"_sel, "a"_ns), equals("a"));
  EXPECT_THAT(send<Ref<NSString>>(cls, "stringWithUTF8String:"_sel, static_cast<const char*>("é")), equals("é"));
  const char16_t units[] = u"ab";
  EXPECT_THAT(send<Ref<NSString>>(cls, "stringWithCharacters:length:"_sel, static_cast<const char16_t*>(units), 2),
              equals("ab"));
  EXPECT_THAT(send<Ref<NSString>>(alloc(cls), "initWithString:"_sel, "a"_ns), equals("a"));
  EXPECT_THAT(send<Ref<NSString>>(alloc(cls), "init"_sel), equals(""));
  EXPECT_EQ(send<uint64_t>("four"_ns, "length"_sel), 4u);
  EXPECT_EQ(send<int>("four"_ns, "characterAtIndex:"_sel, 1), 'o');
}

TEST(NSString, SaysOfEveryFormThatItIsAString) {
  const Ref<NSString> large = NSString::stringWithUTF8(std::string(10000, 'x'));
  const Ref<NSString> forms[] = {"literal"_ns, NSString::stringWithUTF8("made"), large->substringFromIndex(1), ""_ns};
  for (const Ref<NSString>& text : forms) EXPECT_EQ(text->class_(), NSString::classObject());
}

// Indices and ranges

TEST(NSString, RaisesForAnIndexPastTheEnd) {
  const Ref<NSString> text = NSString::stringWithUTF8("abc");
  EXPECT_THAT([&] { text->characterAtIndex(3); },
              raises(NSRangeException, "-[NSString characterAtIndex:]: index 3 beyond bounds [0 .. 2]"));
  EXPECT_THAT([&] { ""_ns->characterAtIndex(0); },
              raises(NSRangeException, "-[NSString characterAtIndex:]: index 0 beyond bounds for empty NSString"));
  EXPECT_THAT([&] { text->substringFromIndex(4); }, raises(NSRangeException, "substringFromIndex:]: index 4"));
  EXPECT_THAT([&] { text->substringToIndex(most); }, raises(NSRangeException, "substringToIndex:"));
}

TEST(NSString, RaisesForEveryRangeThatDoesNotFit) {
  const Ref<NSString> text = NSString::stringWithUTF8("abcde");
  const NSRange wrong[] = {{6, 0},    {5, 1},       {0, 6},        {4, 2},         {most, 1},
                           {1, most}, {most, most}, {2, most - 1}, {NSNotFound, 0}};
  char16_t units[8];
  for (const NSRange range : wrong) {
    EXPECT_THAT([&] { text->substringWithRange(range); }, raises(NSRangeException, "-[NSString substringWithRange:]"));
    EXPECT_THAT([&] { text->getCharacters_range(units, range); }, raises(NSRangeException, "getCharacters:range:"));
    EXPECT_THAT([&] { text->rangeOfString_options_range("a"_ns, NSLiteralSearch, range); }, raises(NSRangeException));
    EXPECT_THAT([&] { text->stringByReplacingCharactersInRange_withString(range, "x"_ns); }, raises(NSRangeException));
  }
  EXPECT_THAT([&] { text->substringWithRange({4, 9}); },
              raises(NSRangeException, "-[NSString substringWithRange:]: Range {4, 9} out of bounds; length 5"));
}

TEST(NSString, TakesEveryRangeThatFits) {
  const Ref<NSString> text = NSString::stringWithUTF8("aé");
  EXPECT_THAT(text->substringWithRange({2, 0}), equals(""));
  EXPECT_THAT(text->substringWithRange({0, 2}), equals("aé"));
  EXPECT_THAT(text->substringWithRange({1, 1}), equals("é"));
  EXPECT_THAT(text->substringFromIndex(2), equals(""));
  EXPECT_THAT(text->substringToIndex(2), equals("aé"));
  text->getCharacters_range(nullptr, {1, 0});
}

TEST(NSString, CopiesUnitsOutOfEitherStorage) {
  char16_t units[4] = {};
  "abcdef"_ns->getCharacters_range(units, {1, 4});
  EXPECT_EQ(std::u16string_view(units, 4), u"bcde");
  NSString::stringWithUTF8("aéîö")->getCharacters_range(units, {1, 3});
  EXPECT_EQ(std::u16string_view(units, 3), u"éîö");
  EXPECT_THAT([] { "ab"_ns->getCharacters_range(nullptr, {0, 1}); }, raises(NSInvalidArgumentException));
}

// Parts

TEST(NSString, CopiesASmallPartInOneAllocation) {
  const Ref<NSString> text = NSString::stringWithUTF8(std::string(100000, 'x'));
  const AllocationCount allocations;
  const Ref<NSString> line = text->substringWithRange({500, 80});
  EXPECT_LE(allocations.made(), 1u);
  EXPECT_NE(line->asciiCharacters(), text->asciiCharacters() + 500);
}

TEST(NSString, SharesTheUnitsOfALargePart) {
  const Ref<NSString> text = NSString::stringWithUTF8(std::string(10000, 'x'));
  const Ref<NSString> part = text->substringFromIndex(100);
  EXPECT_EQ(part->asciiCharacters(), text->asciiCharacters() + 100);
  EXPECT_EQ(part->length(), 9900u);
  EXPECT_EQ(part->substringFromIndex(100)->asciiCharacters(), text->asciiCharacters() + 200);
}

TEST(NSString, KeepsAliveWhatAPartShares) {
  Ref<NSString> part = NSString::stringWithUTF8(std::string(9999, 'x') + "y")->substringFromIndex(1);
  part = part->substringFromIndex(1);
  EXPECT_EQ(part->characterAtIndex(9997), u'y');
}

TEST(NSString, DoesNotKeepAHugeTextAliveForASmallPartOfIt) {
  const Ref<NSString> text = NSString::stringWithUTF8(std::string(1000000, 'x'));
  EXPECT_NE(text->substringWithRange({0, 5000})->asciiCharacters(), text->asciiCharacters());
}

TEST(NSString, GivesItselfAsItsWholePart) {
  const Ref<NSString> text = NSString::stringWithUTF8("whole");
  EXPECT_TRUE(text->substringFromIndex(0) == text);
  EXPECT_TRUE(text->copy() == text);
  EXPECT_TRUE(text->description() == text);
  EXPECT_TRUE(NSString::stringWithString(text) == text);
}

TEST(NSString, AppendsAnyMixtureOfStorages) {
  EXPECT_THAT("ab"_ns->stringByAppendingString("cd"_ns), equals("abcd"));
  EXPECT_NE("ab"_ns->stringByAppendingString("cd"_ns)->asciiCharacters(), nullptr);
  EXPECT_THAT("ab"_ns->stringByAppendingString("é"_ns), equals("abé"));
  EXPECT_THAT("é"_ns->stringByAppendingString("ab"_ns), equals("éab"));
  EXPECT_THAT(""_ns->stringByAppendingString("é"_ns), equals("é"));
  EXPECT_THAT([] { "a"_ns->stringByAppendingString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSString stringByAppendingString:]: nil argument"));
}

TEST(NSString, ReplacesARange) {
  EXPECT_THAT("abcde"_ns->stringByReplacingCharactersInRange_withString({1, 3}, "-é-"_ns), equals("a-é-e"));
  EXPECT_THAT("abc"_ns->stringByReplacingCharactersInRange_withString({3, 0}, "d"_ns), equals("abcd"));
  EXPECT_THAT("abc"_ns->stringByReplacingCharactersInRange_withString({0, 3}, ""_ns), equals(""));
  EXPECT_THAT([] { "a"_ns->stringByReplacingCharactersInRange_withString({0, 1}, nullptr); },
              raises(NSInvalidArgumentException));
}

TEST(NSString, RaisesForNullWhereATextIsNeeded) {
  EXPECT_THAT([] { NSString::stringWithString(nullptr); },
              raises(NSInvalidArgumentException, "+[NSString stringWithString:]: nil argument"));
  EXPECT_THAT([] { NSString::stringWithUTF8String(nullptr); }, raises(NSInvalidArgumentException));
  EXPECT_THAT([] { NSString::initWithString(nullptr); },
              raises(NSInvalidArgumentException, "-[NSString initWithString:]: nil argument"));
  EXPECT_THAT([] { NSString::initWithUTF8String<NSMutableString>(nullptr); },
              raises(NSInvalidArgumentException, "-[NSMutableString initWithUTF8String:]: nil argument"));
  EXPECT_THAT([] { NSString::stringWithCharacters_length(nullptr, 1); }, raises(NSInvalidArgumentException));
  EXPECT_THAT(NSString::stringWithCharacters_length(nullptr, 0), equals(""));
}

TEST(NSString, RefusesALengthThatNoMemoryHas) {
  const char16_t unit = u'a';
  EXPECT_THAT([&] { NSString::stringWithCharacters_length(&unit, most); }, raises(NSRangeException));
}

TEST(NSString, HoldsTwoToThe31UnitsInOneLine) {
  constexpr size_t length = (size_t{1} << 31) + 5;
  if (!hasFreeMemory(3 * length)) GTEST_SKIP() << "not enough memory";
  const Ref<NSString> text = NSString::stringWithUTF8(std::string(length, 'x'));
  EXPECT_EQ(text->length(), length);
  EXPECT_EQ(text->characterAtIndex(length - 1), u'x');
  EXPECT_EQ(text->substringFromIndex(length - 2)->length(), 2u);
  EXPECT_EQ(text->rangeOfString("y"_ns).location, NSNotFound);
}

// Subclasses of clients

class Shout : public NSString {
  QF_CLASS(Shout, NSString)
};
Class* Shout::classObject() {
  static Class* const cls = ClassBuilder<Shout>("Shout").build();
  return cls;
}

class Marked : public NSString {
  QF_CLASS(Marked, NSString)
 public:
  static Ref<NSString> initWithString_ofClass(const NSString* other, Class* cls) {
    return NSString::initWithString_ofClass(other->stringByAppendingString("!"_ns), cls);
  }
};
Class* Marked::classObject() {
  static Class* const cls =
      ClassBuilder<Marked>("Marked").initializer<&Marked::initWithString_ofClass>("initWithString:"_sel).build();
  return cls;
}

TEST(NSString, IsMadeAsASubclassOfAClient) {
  const LeakGuard guard;
  const Ref<Shout> shout = NSString::stringWithString<Shout>(NSString::stringWithUTF8("héy"));
  EXPECT_EQ(shout->class_(), Shout::classObject());
  EXPECT_THAT(shout, equals("héy"));
  EXPECT_THAT("héy"_ns, equals(shout));
  EXPECT_EQ(NSString::string<Shout>()->length(), 0u);
  EXPECT_EQ(NSString::stringWithUTF8String<Shout>("x")->class_(), Shout::classObject());
  EXPECT_EQ(NSString::stringWithUTF8String<Shout>("\x80"), nullptr);
  EXPECT_THAT(send<Ref<NSString>>(alloc(Shout::classObject()), "initWithString:"_sel, "a"_ns), equals("a"));
}

TEST(NSString, SendsTheInitialiserThatASubclassOverrides) {
  EXPECT_THAT(NSString::stringWithString<Marked>("a"_ns), equals("a!"));
  EXPECT_THAT(NSString::initWithString<Marked>("a"_ns), equals("a"));  // a typed call names the function itself
}

// Copies

TEST(NSString, GivesAMutableCopyOfItsOwn) {
  const Ref<NSMutableString> copy = "abc"_ns->mutableCopy();
  copy->appendString("d"_ns);
  EXPECT_THAT(copy, equals("abcd"));
  EXPECT_THAT(send<Ref<NSObject>>("abc"_ns, "mutableCopy"_sel), equals("abc"));
}

RC_GTEST_PROP(NSString, DecodesWhatItEncodes, (const std::vector<uint32_t>& points)) {
  std::u16string units;
  for (const uint32_t p : points) {
    const uint32_t point = p % 0x110000;
    if (point < 0x10000) {
      if (point < 0xD800 || point >= 0xE000) units += static_cast<char16_t>(point);
    } else {
      units += static_cast<char16_t>(0xD7C0 + (point >> 10));
      units += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
    }
  }
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  RC_ASSERT(text->utf16() == units);
  RC_ASSERT(isEqual(NSString::stringWithUTF8(text->utf8()), text));
}

RC_GTEST_PROP(NSString, IsTheSameTextInEitherStorage, (const std::string& any)) {
  std::u16string units;
  for (const char c : any) units += static_cast<char16_t>(c & 0x7F);
  const Ref<NSString> narrow = NSString::stringWithCharacters(units);
  const Ref<NSString> wide = asUTF16(units);
  RC_ASSERT(units.empty() || (narrow->asciiCharacters() && wide->utf16Characters()));
  RC_ASSERT(isEqual(narrow, wide) && isEqual(wide, narrow));
  RC_ASSERT(narrow->hash() == wide->hash());
  RC_ASSERT(narrow->compare(wide) == NSOrderedSame);
}

RC_GTEST_PROP(NSString, IsJoinedAgainFromItsParts, (const std::u16string& units)) {
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  const auto cut = *rc::gen::inRange<uint64_t>(0, units.size() + 1);
  RC_ASSERT(isEqual(text->substringToIndex(cut)->stringByAppendingString(text->substringFromIndex(cut)), text));
}

}  // namespace
