// SPDX-License-Identifier: MIT
#include "QuollFoundation/testing.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace {

using namespace quoll;
using ::testing::Not;
using ::testing::PrintToString;

class Counter : public NSObject {
  QF_CLASS(Counter, NSObject)
};
Class* Counter::classObject() {
  static Class* const cls = ClassBuilder<Counter>("testingTestsCounter").build();
  return cls;
}

class Stand : public NSProxy {
  QF_CLASS(Stand, NSProxy)
};
Class* Stand::classObject() {
  static Class* const cls = ClassBuilder<Stand>("testingTestsStand").build();
  return cls;
}

template <class Value, class Matcher> std::string explained(const Value& value, const Matcher& matcher) {
  ::testing::StringMatchResultListener listener;
  ::testing::SafeMatcherCast<const Value&>(matcher).MatchAndExplain(value, &listener);
  return listener.str();
}

TEST(Testing, HeaderExample) {
  const quoll::Ref<quoll::NSString> title = quoll::NSString::stringWithUTF8("Untitled");
  EXPECT_THAT(title, equals("Untitled"));
  EXPECT_THAT([&] { title->substringFromIndex(9); }, raises(quoll::NSRangeException, "index 9"));
  const quoll::LeakGuard guard;
}

// Printing

TEST(Testing, ObjectsPrintWhatTheySayAndTheirClass) {
  const Ref<NSString> text = "Grüße"_ns->mutableCopy()->copy();
  const Ref<Counter> counter = make<Counter>();
  EXPECT_EQ(PrintToString(text), "\"Grüße\" (NSString)");
  EXPECT_EQ(PrintToString(text.get()), "\"Grüße\" (NSString)");
  EXPECT_EQ(PrintToString(static_cast<const NSObject*>(text)), "\"Grüße\" (NSString)");
  EXPECT_THAT(PrintToString(counter), ::testing::MatchesRegex("<testingTestsCounter: 0x[0-9a-f]+> \\(testing.*\\)"));
  EXPECT_EQ(PrintToString(Ref<NSString>()), "(null)");
  EXPECT_EQ(PrintToString(static_cast<Counter*>(nullptr)), "(null)");
  EXPECT_EQ(PrintToString(std::vector<Ref<NSString>>{text}), "{ \"Grüße\" (NSString) }");
}

TEST(Testing, PrintingSendsNothingToAProxy) {
  EXPECT_THAT(PrintToString(make<Stand>()), ::testing::MatchesRegex("<testingTestsStand: 0x[0-9a-f]+>"));
}

TEST(Testing, PlainValuesPrintTheirFields) {
  EXPECT_EQ(PrintToString(NSRange{1, 2}), "{1, 2}");
  EXPECT_EQ(PrintToString(NSRange{NSNotFound, 0}), "{NSNotFound, 0}");
  EXPECT_EQ(PrintToString(CFRange{-1, 2}), "{-1, 2}");
  EXPECT_EQ(PrintToString(CGPoint{1, 2.5}), "{1, 2.5}");
  EXPECT_EQ(PrintToString(CGSize{1, 2.5}), "{1, 2.5}");
  EXPECT_EQ(PrintToString(CGRect{{1, 2}, {3, 4}}), "{{1, 2}, {3, 4}}");
  EXPECT_EQ(PrintToString(QFPadding{1, 2, 3, 4}), "{top 1, left 2, bottom 3, right 4}");
  EXPECT_EQ(PrintToString(NSOrderedAscending), "NSOrderedAscending");
  EXPECT_EQ(PrintToString(NSOrderedSame), "NSOrderedSame");
  EXPECT_EQ(PrintToString(NSOrderedDescending), "NSOrderedDescending");
  EXPECT_EQ(PrintToString("isEqual:"_sel), "isEqual:");
  EXPECT_EQ(PrintToString(Selector()), "(no selector)");
  EXPECT_EQ(PrintToString(NSException(NSRangeException, "far"_ns)), "NSRangeException: far");
}

// equals

TEST(Testing, EqualsGoesByValue) {
  const Ref<NSString> one = "one"_ns->mutableCopy();
  EXPECT_THAT(one, equals("one"_ns));
  EXPECT_THAT(one, equals(Ref<NSString>("one"_ns)));
  EXPECT_THAT(one, equals("one"));
  EXPECT_THAT(one, equals(u"one"));
  EXPECT_THAT(one.get(), equals(std::string("one")));
  EXPECT_THAT(one, Not(equals("two")));
  EXPECT_THAT(make<Counter>(), Not(equals(make<Counter>())));
}

TEST(Testing, NullEqualsNullOnly) {
  EXPECT_THAT(Ref<NSString>(), equals(nullptr));
  EXPECT_THAT(nullptr, equals(Ref<NSString>()));
  EXPECT_THAT(Ref<NSString>(), Not(equals("")));
  EXPECT_THAT(""_ns, Not(equals(nullptr)));
}

TEST(Testing, EqualsSaysWhatItWants) {
  const ::testing::Matcher<Ref<NSString>> matcher = equals("one");
  std::ostringstream wanted, refused;
  matcher.DescribeTo(&wanted);
  matcher.DescribeNegationTo(&refused);
  EXPECT_THAT(wanted.str(), ::testing::StartsWith("equals \"one\" (NSString)"));
  EXPECT_THAT(refused.str(), ::testing::StartsWith("does not equal \"one\""));
}

TEST(Testing, AnUnequalValueFailsTheTestWithBothTexts) {
  EXPECT_NONFATAL_FAILURE(EXPECT_THAT("two"_ns, equals("one")), "equals \"one\"");
  EXPECT_NONFATAL_FAILURE(EXPECT_THAT("two"_ns, equals("one")), "Actual: \"two\"");
}

TEST(Testing, EqualsWorksInsideOtherMatchers) {
  const std::vector<Ref<NSString>> texts{"a"_ns, "b"_ns};
  EXPECT_THAT(texts, ::testing::ElementsAre(equals("a"), equals("b")));
}

TEST(Testing, EqualsRefusesIllFormedText) {
  EXPECT_THAT([] { equals("\xFF"); }, raises(NSInvalidArgumentException, "ill-formed"));
}

// raises

TEST(Testing, RaisesLooksAtNameAndReason) {
  const auto far = [] { raise(NSRangeException, "far off"); };
  EXPECT_THAT(far, raises(NSRangeException));
  EXPECT_THAT(far, raises(NSRangeException, "far"));
  EXPECT_THAT(far, Not(raises(NSRangeException, "near")));
  EXPECT_THAT(far, Not(raises(NSGenericException, "far")));
  EXPECT_EQ(explained(far, raises(NSGenericException)), "which raises NSRangeException: far off");
}

TEST(Testing, RaisesAnExceptionWithoutAReason) {
  const auto bare = [] { throw NSException(NSRangeException, nullptr); };
  EXPECT_THAT(bare, raises(NSRangeException));
  EXPECT_THAT(bare, Not(raises(NSRangeException, "far")));
}

TEST(Testing, WhatRaisesNothingOrSomethingElseDoesNotRaise) {
  const auto quiet = [] {};
  const auto standard = [] { throw std::runtime_error("full"); };
  const auto odd = [] { throw 5; };
  EXPECT_EQ(explained(quiet, raises(NSRangeException)), "which raises nothing");
  EXPECT_EQ(explained(standard, raises(NSRangeException)), "which throws a std::exception: full");
  EXPECT_EQ(explained(odd, raises(NSRangeException)), "which throws something else");
  EXPECT_NONFATAL_FAILURE(EXPECT_THAT(quiet, raises(NSRangeException, "far")),
                          "raises NSRangeException with a reason that has \"far\"");
}

// LeakGuard

TEST(LeakGuard, IsContentWhenAllIsGone) {
  const LeakGuard guard;
  make<Counter>();
  NSString::stringWithUTF8("a longer text");
}

TEST(LeakGuard, NamesClassesAndCounts) {
  std::vector<Ref<NSObject>> kept;
  EXPECT_NONFATAL_FAILURE(
      {
        const LeakGuard guard;
        for (int i = 0; i < 3; ++i) kept.push_back(make<Counter>());
      },
      "objects outlive this guard: 3 testingTestsCounter");
}

TEST(LeakGuard, NamesItsOwnLine) {
  static Ref<Counter> kept;
  static int line;
  ::testing::TestPartResultArray results;
  {
    const ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    line = __LINE__ + 1;
    const LeakGuard guard;
    kept = make<Counter>();
  }
  ASSERT_EQ(results.size(), 1);
  EXPECT_STREQ(results.GetTestPartResult(0).file_name(), __FILE__);
  EXPECT_EQ(results.GetTestPartResult(0).line_number(), line);
  kept = nullptr;
}

TEST(LeakGuard, DoesNotMindWhatLivedBefore) {
  Ref<Counter> before = make<Counter>();
  const LeakGuard guard;
  before = nullptr;
  EXPECT_EQ(guard.leaks(), "");
}

TEST(LeakGuard, LetsAutoreleasedObjectsGoFirst) {
  const LeakGuard guard;
  autorelease(make<Counter>());
  EXPECT_EQ(guard.leaks(), "1 testingTestsCounter");
}

TEST(LeakGuard, DoesNotMindClassesThatAreTouchedFirst) {
  const LeakGuard guard;
  EXPECT_NE(classNamed("NSMutableString"), nullptr);
  make<Counter>()->methodSignatureForSelector("isEqual:"_sel);
}

TEST(LeakGuard, Nests) {
  Ref<Counter> kept;
  const LeakGuard outer;
  EXPECT_NONFATAL_FAILURE(
      {
        const LeakGuard inner;
        kept = make<Counter>();
      },
      "1 testingTestsCounter");
  EXPECT_EQ(outer.leaks(), "1 testingTestsCounter");
  kept = nullptr;
}

}  // namespace
