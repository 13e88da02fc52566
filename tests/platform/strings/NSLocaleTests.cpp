// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSLocale.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

/// Each test runs in a process of its own, so nobody else sees the environment change.
void setEnvironment(const char* all, const char* messages, const char* lang) {
  const auto set = [](const char* name, const char* value) {
    if (value) setenv(name, value, 1);
    else unsetenv(name);
  };
  set("LC_ALL", all);
  set("LC_MESSAGES", messages);
  set("LANG", lang);
}
std::string current() { return NSLocale::currentLocale()->localeIdentifier()->utf8(); }

TEST(NSLocale, HasAnIdentifier) {
  quoll::Ref<quoll::NSLocale> german = quoll::NSLocale::localeWithLocaleIdentifier("de_DE"_ns);
  EXPECT_THAT(german->localeIdentifier(), equals("de_DE"));
  EXPECT_THAT(german->description(), equals("de_DE"));
}

struct Row {
  const char* claim;
  const char* all;
  const char* messages;
  const char* lang;
  const char* identifier;
};
constexpr Row rows[] = {
    {"LC_ALL comes first", "de_DE.UTF-8", "fr_FR.UTF-8", "it_IT.UTF-8", "de_DE"},
    {"then LC_MESSAGES", nullptr, "fr_FR.UTF-8", "it_IT.UTF-8", "fr_FR"},
    {"then LANG", nullptr, nullptr, "it_IT.UTF-8", "it_IT"},
    {"an empty one does not count", "", "", "it_IT", "it_IT"},
    {"none is POSIX", nullptr, nullptr, nullptr, "en_US_POSIX"},
    {"C is POSIX", "C", nullptr, "it_IT", "en_US_POSIX"},
    {"C with an encoding is POSIX", "C.UTF-8", nullptr, "it_IT", "en_US_POSIX"},
    {"POSIX by name", "POSIX", nullptr, "it_IT", "en_US_POSIX"},
    {"a modifier is left out", nullptr, nullptr, "de_DE@euro", "de_DE"},
    {"a language alone", nullptr, nullptr, "eo", "eo"},
};

TEST(NSLocale, TheCurrentOneIsThatOfTheEnvironmentAtEachCall) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    setEnvironment(row.all, row.messages, row.lang);
    EXPECT_EQ(current(), row.identifier);
  }
}

TEST(NSLocale, StaysOneObjectWhileTheEnvironmentStaysAsItIs) {
  setEnvironment("de_DE.UTF-8", nullptr, nullptr);
  const Ref<NSLocale> first = NSLocale::currentLocale();
  EXPECT_EQ(NSLocale::currentLocale(), first);
  EXPECT_EQ(CFLocaleCopyCurrent(), first);
}

TEST(NSLocale, ATestCanReplaceTheCurrentOne) {
  setEnvironment("de_DE.UTF-8", nullptr, nullptr);
  {
    const LocaleScope swedish("sv_SE"_ns);
    EXPECT_EQ(current(), "sv_SE");
  }
  EXPECT_EQ(current(), "de_DE");
}

TEST(NSLocale, EqualsAnotherOfItsIdentifier) {
  const Ref<NSLocale> a = NSLocale::localeWithLocaleIdentifier("de_DE"_ns);
  const Ref<NSLocale> b = NSLocale::localeWithLocaleIdentifier("de_DE"_ns);
  EXPECT_TRUE(isEqual(a, b));
  EXPECT_EQ(a->hash(), b->hash());
  EXPECT_FALSE(isEqual(a, NSLocale::localeWithLocaleIdentifier("de_AT"_ns)));
  EXPECT_EQ(a->copyWithZone(nullptr), a);
}

TEST(NSLocale, RefusesANullIdentifier) {
  EXPECT_THAT([] { NSLocale::localeWithLocaleIdentifier(nullptr); },
              raises(NSInvalidArgumentException, "initWithLocaleIdentifier:"));
}

TEST(NSLocale, AnswersByName) {
  const auto locale = send<Ref<NSLocale>>(NSLocale::classObject(), "localeWithLocaleIdentifier:"_sel, "de_DE"_ns);
  EXPECT_THAT(send<Ref<NSString>>(locale, "localeIdentifier"_sel), equals("de_DE"));
  EXPECT_NE(send<Ref<NSLocale>>(NSLocale::classObject(), "currentLocale"_sel), nullptr);
}

TEST(NSLocale, LetsGoOfItsOrders) {
  LeakGuard guard;
  const Ref<NSLocale> locale = NSLocale::localeWithLocaleIdentifier("de_DE"_ns);
  EXPECT_EQ("a"_ns->compare_options_range_locale("b"_ns, NSNumericSearch, {0, 1}, locale), NSOrderedAscending);
}

}  // namespace
