// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <locale.h>
#include <unistd.h>

#include <cfloat>
#include <cinttypes>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

Ref<NSString> formatted(const char* format, const std::vector<FormatArgument>& arguments) {
  return NSString::stringWithFormat_arguments(NSString::stringWithUTF8(format), arguments);
}

class Speaker : public NSObject {
  QF_CLASS(Speaker, NSObject)
 public:
  Ref<NSString> description() const override {
    if (said) said->appendString("!"_ns);
    return text;
  }
  Ref<NSString> text;
  Ref<NSMutableString> said;
};
Class* Speaker::classObject() {
  static Class* const cls = ClassBuilder<Speaker>("FormatsTestSpeaker").build();
  return cls;
}

class Stand : public NSProxy {
  QF_CLASS(Stand, NSProxy)
 public:
  explicit Stand(NSObject* target) : target_(target) {}
  Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const override {
    return target_->methodSignatureForSelector(selector);
  }
  void forwardInvocation(NSInvocation* invocation) override { invocation->invokeWithTarget(target_); }

 private:
  Ref<NSObject> target_;
};
Class* Stand::classObject() {
  static Class* const cls = ClassBuilder<Stand>("FormatsTestStand").build();
  return cls;
}

TEST(Formats, HeaderExample) {
  EXPECT_THAT(NSString::stringWithFormat("%@ has %d of %.1f %%"_ns, "Grüße"_ns, 3, 2.5),
              equals("Grüße has 3 of 2.5 %"));
}

TEST(Formats, EachPlaceholderWritesItsArgument) {
  int number = 0;
  char address[40];
  std::snprintf(address, sizeof address, "%p", static_cast<void*>(&number));
  const char unended[3] = {'a', 'b', 'c'};
  struct Row {
    const char* claim;
    const char* format;
    std::vector<FormatArgument> arguments;
    const char* text;
  };
  const Row rows[] = {
      {"no text", "", {}, ""},
      {"no placeholder", "plain", {}, "plain"},
      {"a percent sign", "100%%", {}, "100%"},
      {"percent signs side by side", "%%%%", {}, "%%"},
      {"an object by its description", "<%@>", {"one"_ns}, "<one>"},
      {"an absent object", "%@", {static_cast<NSString*>(nullptr)}, "(null)"},
      {"a null literal", "%@", {nullptr}, "(null)"},
      {"a class by its name", "%@", {NSString::classObject()}, "NSString"},
      {"text outside ASCII in the format", "é%dß", {1}, "é1ß"},
      {"text outside ASCII in an object, after ASCII", "a%@b%@", {"π"_ns, "c"_ns}, "aπbc"},
      {"an object with a width", "[%5@]", {"ab"_ns}, "[   ab]"},
      {"an object with a width, to the left", "[%-5@]", {"ab"_ns}, "[ab   ]"},
      {"a width counts units", "[%3@]", {"π"_ns}, "[  π]"},
      {"an object with a precision", "[%.2@]", {"abc"_ns}, "[ab]"},
      {"a precision splits no surrogate pair", "[%.2@]", {"a😀"_ns}, "[a]"},
      {"a precision of 0", "[%.0@]", {"a😀"_ns}, "[]"},
      {"zeros pad no text", "[%05@]", {"ab"_ns}, "[   ab]"},
      {"a C string is UTF-8", "%s", {"Grüße"}, "Grüße"},
      {"an absent C string", "%s", {static_cast<const char*>(nullptr)}, "(null)"},
      {"a null literal for a C string", "%s", {nullptr}, "(null)"},
      {"an absent C string, cut", "%.3s", {nullptr}, "(nu"},
      {"an empty C string", "[%s]", {""}, "[]"},
      {"an ill-formed byte", "%s", {"a\xFFz"}, "a\uFFFDz"},
      {"an encoded surrogate", "%s", {"\xED\xA0\x80"}, "\uFFFD\uFFFD\uFFFD"},
      {"an unfinished character", "%s", {"a\xE2\x82"}, "a\uFFFD"},
      {"a C string with a width, in units", "[%3s]", {"ü"}, "[  ü]"},
      {"a C string needs no end within its precision", "%.3s", {unended}, "abc"},
      {"a precision counts bytes and cuts no character", "%.3s", {"aüü"}, "aü"},
      {"half a character at the cut is left out", "%.2s", {"aü"}, "a"},
      {"three quarters of a character are left out", "%.3s", {"😀"}, ""},
      {"a whole character at the cut stays", "%.4s", {"😀x"}, "😀"},
      {"ill-formed bytes at the cut stay ill-formed", "%.2s", {"\x80\x80\x80"}, "\uFFFD\uFFFD"},
      {"a unit of a low byte", "%c%c", {'A', 0x1E9}, "Aé"},
      {"a negative char is its byte", "%c", {static_cast<signed char>(-1)}, "ÿ"},
      {"a UTF-16 unit", "%C", {u'π'}, "π"},
      {"a UTF-16 unit from an int", "%C", {0x3C0}, "π"},
      {"a pair from two units", "%C%C", {u'\xD83D', u'\xDE00'}, "😀"},
      {"a unit with a width", "[%3c|%-3C]", {'a', u'π'}, "[  a|π  ]"},
      {"an address", "%p", {&number}, address},
      {"a null address", "%p", {static_cast<int*>(nullptr)}, "0x0"},
      {"a null literal as an address", "%p", {nullptr}, "0x0"},
      {"an address with a width", "[%5p]", {static_cast<void*>(nullptr)}, "[  0x0]"},
      {"a Boolean is a number", "%d", {true}, "1"},
      {"a smaller integer is promoted", "%d %u", {static_cast<int8_t>(-1), static_cast<uint8_t>(255)}, "-1 255"},
      {"a smaller negative integer in hexadecimal", "%x", {static_cast<int8_t>(-1)}, "ffffffff"},
      {"a larger placeholder takes a smaller integer", "%lld %zu", {-1, 7u}, "-1 7"},
      {"hh and h cut an int, as in C", "%hhd %hhu %hd %hu", {257, 257, 65537, 65537}, "1 1 1 1"},
      {"q is 64 bits", "%qd %qu", {INT64_MIN, UINT64_MAX}, "-9223372036854775808 18446744073709551615"},
      {"a float is a double", "%g", {0.5f}, "0.5"},
      {"l changes nothing for a double", "%lf", {0.5}, "0.500000"},
      {"the flag for groups does nothing", "%'d", {1234567}, "1234567"},
      {"a width from an argument", "[%*d]", {5, 42}, "[   42]"},
      {"a negative width from an argument is to the left", "[%*d]", {-5, 42}, "[42   ]"},
      {"a precision from an argument", "[%.*f]", {2, 1.0}, "[1.00]"},
      {"a negative precision from an argument is none", "[%.*d|%.*@]", {-1, 42, -1, "all"_ns}, "[42|all]"},
      {"width and precision from arguments", "[%*.*@]", {4, 2, "abc"_ns}, "[  ab]"},
      {"numbered arguments", "%2$@ %1$@", {"one"_ns, "two"_ns}, "two one"},
      {"a numbered argument twice", "%1$d%1$d", {7}, "77"},
      {"a numbered argument with flags, width and precision", "[%1$-8.3f]", {1.0}, "[1.000   ]"},
      {"a numbered width and precision", "[%1$*2$.*3$f]", {1.0, 6, 2}, "[  1.00]"},
      {"surplus arguments are not looked at", "%d", {1, 2.0, nullptr}, "1"},
      {"surplus numbered arguments too", "%3$d", {"a", 2.0, 3}, "3"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(formatted(row.format, row.arguments), equals(row.text));
  }
}

TEST(Formats, AFormatInUTF16WorksLikeOneInASCII) {
  const Ref<NSString> wide = NSString::stringWithCharacters(u"π %2$5.1f|%1$@|%%");
  EXPECT_THAT(NSString::stringWithFormat(wide, "x"_ns, 2.25), equals("π   2.2|x|%"));
}

TEST(Formats, AZeroUnitIsText) {
  const Ref<NSString> zero = NSString::stringWithCharacters(std::u16string_view(u"a\0b", 3));
  EXPECT_THAT(NSString::stringWithFormat("%@%c"_ns, zero, 0), equals(std::u16string_view(u"a\0b\0", 4)));
}

TEST(Formats, AnUnpairedSurrogateStays) {
  const Ref<NSString> lone = NSString::stringWithCharacters(u"\xD800");
  EXPECT_THAT(NSString::stringWithFormat("a%@"_ns, lone), equals(std::u16string_view(u"a\xD800")));
}

TEST(Formats, AFormatWithoutPlaceholdersIsItself) { EXPECT_EQ(NSString::stringWithFormat("plain"_ns), "plain"_ns); }

TEST(Formats, AMutableFormatIsCopied) {
  const Ref<NSMutableString> format = NSMutableString::stringWithString("plain"_ns);
  const Ref<NSString> text = NSString::stringWithFormat(format);
  format->appendString("!"_ns);
  EXPECT_THAT(text, equals("plain"));
}

// Numbers: what the C library writes, in the C locale.

std::vector<std::string> shapes() {
  std::vector<std::string> all;
  for (int flags = 0; flags < 32; ++flags) {
    std::string chosen = "%";
    for (int bit = 0; bit < 5; ++bit) {
      if (flags & 1 << bit) chosen += "-+ #0"[bit];
    }
    for (const char* width : {"", "1", "7", "40"}) {
      for (const char* precision : {"", ".", ".0", ".1", ".5", ".25"}) all.push_back(chosen + width + precision);
    }
  }
  return all;
}

template <class Number> void expectAsInC(const std::string& format, Number number) {
  char wanted[500];
  ASSERT_LT(std::snprintf(wanted, sizeof wanted, format.c_str(), number), static_cast<int>(sizeof wanted));
  const Ref<NSString> text = NSString::stringWithFormat(NSString::stringWithUTF8(format), number);
  ASSERT_EQ(text->utf8(), wanted) << format;
}

template <class Number> void expectAllAsInC(std::string_view length, std::string_view conversions,
                                            std::initializer_list<Number> numbers) {
  for (const std::string& shape : shapes()) {
    for (const char conversion : conversions) {
      for (const Number number : numbers) {
        ASSERT_NO_FATAL_FAILURE(expectAsInC(shape + std::string(length) + conversion, number));
      }
    }
  }
}

TEST(Formats, IntegersOf32BitsAreWrittenAsInC) {
  expectAllAsInC<int>("", "di", {0, 1, -1, 42, INT_MIN, INT_MAX});
  expectAllAsInC<unsigned>("", "uxXo", {0, 1, 42, UINT_MAX});
}

TEST(Formats, IntegersOfEachLengthAreWrittenAsInC) {
  expectAllAsInC<int>("hh", "di", {0, 42, -1, 300, INT_MIN});
  expectAllAsInC<unsigned>("hh", "uxXo", {0, 42, 300, UINT_MAX});
  expectAllAsInC<int>("h", "di", {0, 42, -1, 70000, INT_MIN});
  expectAllAsInC<unsigned>("h", "uxXo", {0, 42, 70000, UINT_MAX});
  expectAllAsInC<long>("l", "di", {0, LONG_MIN, LONG_MAX});
  expectAllAsInC<unsigned long long>("ll", "uxXo", {0, 42, ULLONG_MAX});
  expectAllAsInC<ptrdiff_t>("t", "di", {0, PTRDIFF_MIN});
  expectAllAsInC<size_t>("z", "uxXo", {0, SIZE_MAX});
  expectAllAsInC<intmax_t>("j", "di", {0, INTMAX_MIN});
}

TEST(Formats, FloatingPointNumbersAreWrittenAsInC) {
  expectAllAsInC<double>("", "fFeEgGaA",
                         {0.0, -0.0, 1.0, -1.5, 0.1, 1e-7, 123456789.0, 1e22, HUGE_VAL, -HUGE_VAL, std::nan("")});
  expectAsInC("%.3f", DBL_MAX);
  expectAsInC("%g", DBL_MIN);
  expectAsInC("%g", DBL_TRUE_MIN);
}

TEST(Formats, LongNumbersAreWhole) {
  EXPECT_EQ(NSString::stringWithFormat("%.2000f"_ns, 1.0)->length(), 2002u);
  EXPECT_EQ(NSString::stringWithFormat("%1000d"_ns, 1)->length(), 1000u);
  EXPECT_EQ(NSString::stringWithFormat("%.1000d"_ns, 1)->length(), 1000u);
}

/// Makes the program write 1.234,5, whatever is installed: by a compiled LC_NUMERIC in a folder of our own.
bool setDecimalComma() {
  using namespace std::string_view_literals;
  constexpr std::string_view numeric =
      "\x14\x11\x03\x20\x06\0\0\0\x20\0\0\0\x22\0\0\0\x24\0\0\0\x28\0\0\0\x2C\0\0\0\x30\0\0\0"
      ",\0.\0\x03\x03\0\0,\0\0\0.\0\0\0ANSI_X3.4-1968\0"sv;
  const std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) / ("quoll-locale-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder / "comma");
  std::ofstream(folder / "comma" / "LC_NUMERIC", std::ios::binary) << numeric;
  setenv("LOCPATH", folder.c_str(), 1);
  const bool done = setlocale(LC_NUMERIC, "comma") != nullptr;
  unsetenv("LOCPATH");
  std::filesystem::remove_all(folder);
  return done;
}

TEST(Formats, TheLocaleOfProgramAndThreadChangesNothing) {
  const auto ours = [] { return NSString::stringWithFormat("%.1f %'d %'.1f %d"_ns, 1234.5, 1234567, 1234.5, 1234); };
  const auto theirs = [] {
    char text[20];
    std::snprintf(text, sizeof text, "%.1f", 1234.5);
    return std::string(text);
  };
  ASSERT_TRUE(setDecimalComma());
  const locale_t comma = duplocale(LC_GLOBAL_LOCALE);
  EXPECT_EQ(theirs(), "1234,5");
  EXPECT_THAT(ours(), equals("1234.5 1234567 1234.5 1234"));
  setlocale(LC_NUMERIC, "C");
  const locale_t before = uselocale(comma);
  EXPECT_EQ(theirs(), "1234,5");
  EXPECT_THAT(ours(), equals("1234.5 1234567 1234.5 1234"));
  EXPECT_EQ(uselocale(before), comma) << "the thread's locale is put back";
  freelocale(comma);
}

// Objects

TEST(Formats, AnObjectWithoutDescriptionIsNull) {
  EXPECT_THAT(NSString::stringWithFormat("%@"_ns, make<Speaker>()), equals("(null)"));
}

TEST(Formats, AProxyForwardsItsDescription) {
  const Ref<Speaker> speaker = make<Speaker>();
  speaker->text = "I"_ns;
  EXPECT_THAT(NSString::stringWithFormat("%@"_ns, make<Stand>(speaker)), equals("I"));
}

TEST(Formats, ADescriptionMayChangeTheFormat) {
  const Ref<NSMutableString> format = NSMutableString::stringWithString("%@%@ end"_ns);
  const Ref<Speaker> speaker = make<Speaker>();
  speaker->text = "I"_ns;
  speaker->said = format;
  EXPECT_THAT(NSString::stringWithFormat(format, speaker, speaker), equals("II end"));
  EXPECT_THAT(format, equals("%@%@ end!!"));
}

TEST(Formats, NothingIsLeaked) {
  const LeakGuard guard;
  formatted("%@ %5d %s %f", {make<Speaker>(), 3, "ü", 1.0});
  EXPECT_ANY_THROW(formatted("%@ %d", {"a"_ns, 2.0}));
}

// What doesn't fit

TEST(Formats, WhatDoesNotFitRaises) {
  struct Row {
    const char* claim;
    const char* format;
    std::vector<FormatArgument> arguments;
    const char* reason;
  };
  const Row rows[] = {
      {"no argument", "a %d", {}, "%d at index 2 of \"a %d\" needs argument 1; there are 0"},
      {"too few", "%d %d", {1}, "%d at index 3 of \"%d %d\" needs argument 2; there are 1"},
      {"too few for a width", "%*d", {1}, "needs argument 2; there are 1"},
      {"a number past the end", "%3$d", {1, 2}, "needs argument 3; there are 2"},
      {"the number 0", "%0$d", {1}, "counts arguments from 0; the first is 1"},
      {"the number 0, written longer", "%00$d", {1}, "counts arguments from 0; the first is 1"},
      {"an object for an integer", "%d", {"a"_ns}, "takes an integer; argument 1 is an object"},
      {"a floating-point number for an integer", "%d", {1.0}, "argument 1 is a floating-point number"},
      {"a C string for an integer", "%x", {"a"}, "argument 1 is a C string"},
      {"an address for an integer", "%lu", {static_cast<void*>(nullptr)}, "argument 1 is an address"},
      {"64 bits for 32", "%d", {int64_t{1}}, "takes an integer of 32 bits; argument 1 has 64"},
      {"64 bits for 32, unsigned", "%x", {size_t{1}}, "takes an integer of 32 bits; argument 1 has 64"},
      {"64 bits for h", "%hd", {int64_t{1}}, "takes an integer of 32 bits; argument 1 has 64"},
      {"64 bits for hh", "%hhu", {int64_t{1}}, "takes an integer of 32 bits; argument 1 has 64"},
      {"64 bits for a unit", "%C", {int64_t{1}}, "takes an integer of 32 bits; argument 1 has 64"},
      {"64 bits for a width", "%*d", {int64_t{1}, 1}, "argument 1 has 64"},
      {"a floating-point number for a width", "%*d", {1.0, 1}, "takes an integer; argument 1 is a floating"},
      {"an integer for a floating-point number", "%f", {1}, "takes a floating-point number; argument 1 is an integer"},
      {"an integer for an object", "%@", {1}, "takes an object; argument 1 is an integer"},
      {"a C string for an object", "%@", {"a"}, "takes an object; argument 1 is a C string"},
      {"an address for an object", "%@", {static_cast<void*>(nullptr)}, "argument 1 is an address"},
      {"an object for a C string", "%s", {"a"_ns}, "takes a C string; argument 1 is an object"},
      {"UTF-16 for a C string", "%s", {u"a"}, "takes a C string; argument 1 is an address"},
      {"an integer for a C string", "%s", {1}, "takes a C string; argument 1 is an integer"},
      {"an integer for an address", "%p", {1}, "takes an address; argument 1 is an integer"},
      {"a floating-point number for an address", "%p", {1.0}, "takes an address; argument 1 is a floating"},
      {"an object for a unit", "%c", {"a"_ns}, "takes an integer; argument 1 is an object"},
      {"the second argument", "%d%@", {1, 2}, "%@ at index 2 of \"%d%@\" takes an object; argument 2 is an integer"},
      {"writing to memory", "%n", {static_cast<int*>(nullptr)}, "%n at index 0 of \"%n\" is unknown"},
      {"a letter without meaning", "%y", {1}, "%y at index 0 of \"%y\" is unknown"},
      {"a character outside ASCII", "%é", {1}, "%é at index 0 of \"%é\" is unknown"},
      {"a character outside the basic plane", "%😀", {1}, "%😀 at index 0 of \"%😀\" is unknown"},
      {"UTF-16 text", "%S", {u"a"}, "%S at index 0 of \"%S\" is unknown"},
      {"a long double", "%Lf", {1.0}, "is unknown"},
      {"a length that no integer has", "%hld", {1}, "is unknown"},
      {"a third h", "%hhhd", {1}, "is unknown"},
      {"a length for a floating-point number", "%hf", {1.0}, "is unknown"},
      {"a length for an object", "%l@", {"a"_ns}, "is unknown"},
      {"a length for a C string", "%ls", {L"a"}, "is unknown"},
      {"a percent sign with a width", "%5%", {}, "is unknown"},
      {"a percent sign with a number", "%1$%", {1}, "is unknown"},
      {"a flag after the width", "%5-d", {1}, "is unknown"},
      {"two precisions", "%.1.2f", {1.0}, "is unknown"},
      {"nothing after the sign", "100%", {}, "% at index 3 of \"100%\" is unfinished"},
      {"nothing after the flags", "%-", {1}, "%- at index 0 of \"%-\" is unfinished"},
      {"nothing after the width", "%5", {1}, "is unfinished"},
      {"nothing after the point", "%.", {1}, "is unfinished"},
      {"nothing after the length", "%ll", {1}, "is unfinished"},
      {"nothing after the number", "%1$", {1}, "is unfinished"},
      {"numbered and other arguments", "%1$d %d", {1}, "mixes numbered arguments with others"},
      {"other and numbered arguments", "%d %1$d", {1}, "mixes numbered arguments with others"},
      {"a numbered argument with another width", "%1$*d", {1}, "mixes numbered arguments with others"},
      {"a width beyond an int", "%2147483648d", {1}, "has a number that is too large"},
      {"a precision beyond an int", "%.99999999999999999999f", {1.0}, "has a number that is too large"},
      {"the lowest width", "%*d", {INT_MIN, 1}, "has a width that is too large"},
      {"a number of an argument beyond an int", "%99999999999$d", {1}, "has a number that is too large"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT([&] { formatted(row.format, row.arguments); }, raises(NSInvalidArgumentException, row.reason));
    EXPECT_THAT([&] { formatted(row.format, row.arguments); },
                raises(NSInvalidArgumentException, "+[NSString stringWithFormat:]: %"));
  }
}

TEST(Formats, ANullFormatRaises) {
  EXPECT_THAT([] { NSString::stringWithFormat(nullptr, 1); },
              raises(NSInvalidArgumentException, "+[NSString stringWithFormat:]: nil argument"));
}

TEST(Formats, AnExceptionOutOfADescriptionPassesOn) {
  class Raiser : public NSObject {
   public:
    Ref<NSString> description() const override { raise(NSGenericException, "no words"); }
  };
  EXPECT_THAT([] { NSString::stringWithFormat("%@"_ns, make<Raiser>()); }, raises(NSGenericException, "no words"));
}

}  // namespace
