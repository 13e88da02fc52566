// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSDate.h"

#include <gtest/gtest.h>

#include <cmath>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

TEST(NSDate, GoesToAndFromTheClock) {
  quoll::Ref<quoll::NSDate> soon = quoll::NSDate::dateWithTimeIntervalSinceNow(60);
  EXPECT_EQ(soon->compare(quoll::NSDate::date()), quoll::NSOrderedDescending);
  const auto now = std::chrono::system_clock::now();
  const auto back = quoll::NSDate::dateWithTimePoint(now)->timePoint();
  EXPECT_LT(std::chrono::abs(back - now), std::chrono::microseconds(1));
}

using namespace quoll;
using namespace std::chrono_literals;

namespace {

Ref<NSDate> at(double seconds) { return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds); }

/// A date that a user derives: it knows which initialiser made it.
class MarkedDate : public NSDate {
  QF_CLASS(MarkedDate, NSDate)
 public:
  static Ref<NSDate> initWithTimeIntervalSinceReferenceDate_ofClass(double seconds, Class* cls) {
    Ref<NSDate> date = NSDate::initWithTimeIntervalSinceReferenceDate_ofClass(seconds, cls);
    cast<MarkedDate>(date.get())->isMarked_ = true;
    return date;
  }
  bool isMarked() const { return isMarked_; }

 private:
  bool isMarked_ = false;
};

Class* MarkedDate::classObject() {
  static Class* const cls = ClassBuilder<MarkedDate>("MarkedDate")
                                .initializer<&MarkedDate::initWithTimeIntervalSinceReferenceDate_ofClass>(
                                    "initWithTimeIntervalSinceReferenceDate:")
                                .build();
  return cls;
}

}  // namespace

TEST(NSDate, CountsFromTheFirstOfJanuary2001) {
  const std::chrono::sys_days reference = std::chrono::year(2001) / 1 / 1;
  EXPECT_EQ(NSDate::dateWithTimePoint(reference)->timeIntervalSinceReferenceDate(), 0);
  EXPECT_EQ(at(0)->timeIntervalSince1970(), 978307200);
  EXPECT_EQ(NSDate::dateWithTimeIntervalSince1970(0)->timeIntervalSinceReferenceDate(), -978307200);
  EXPECT_EQ(NSDate::initWithTimeIntervalSince1970(0)->timeIntervalSinceReferenceDate(), -978307200);
  EXPECT_EQ(at(0)->timePoint(), reference);
  EXPECT_EQ(at(1.5)->timePoint() - reference, 1500ms);
}

TEST(NSDate, BeyondTheClockIsItsFirstOrLastPoint) {
  using Point = std::chrono::system_clock::time_point;
  EXPECT_EQ(at(INFINITY)->timePoint(), Point::max());
  EXPECT_EQ(NSDate::distantFuture()->timePoint(), Point::max());
  EXPECT_LT(NSDate::distantPast()->timePoint(), Point(-std::chrono::hours(24 * 365 * 200)));
  EXPECT_EQ(NSDate::dateWithTimePoint(Point::min())->compare(NSDate::distantPast()), NSOrderedDescending);
}

TEST(NSDate, AddsAndSubtractsSeconds) {
  const Ref<NSDate> date = at(10);
  EXPECT_EQ(date->dateByAddingTimeInterval(2.5)->timeIntervalSinceDate(date), 2.5);
  EXPECT_EQ(NSDate::dateWithTimeInterval_sinceDate(-3, date)->timeIntervalSinceReferenceDate(), 7);
  EXPECT_LT(date->timeIntervalSinceNow(), 0);
  EXPECT_THAT([&] { date->timeIntervalSinceDate(nullptr); },
              raises(NSInvalidArgumentException, "timeIntervalSinceDate:"));
  EXPECT_THAT([] { NSDate::dateWithTimeInterval_sinceDate(1, nullptr); }, raises(NSInvalidArgumentException, ""));
}

TEST(NSDate, ComparesByTime) {
  EXPECT_EQ(at(1)->compare(at(2)), NSOrderedAscending);
  EXPECT_EQ(at(2)->compare(at(2)), NSOrderedSame);
  EXPECT_EQ(at(3)->compare(at(2)), NSOrderedDescending);
  EXPECT_EQ(at(3)->compare(nullptr), NSOrderedDescending);
  EXPECT_THAT(at(2), equals(at(2)));
  EXPECT_TRUE(at(2)->isEqualToDate(at(2)));
  EXPECT_FALSE(at(2)->isEqualToDate(nullptr));
  EXPECT_EQ(at(2)->hash(), at(2)->hash());
  EXPECT_EQ(at(0.0)->hash(), at(-0.0)->hash());
  EXPECT_FALSE(at(2)->isEqual(at(3)));
  EXPECT_FALSE(at(NAN)->isEqual(at(NAN)));
}

TEST(NSDate, EarlierAndLaterGiveTheReceiverForTheSameTime) {
  const Ref<NSDate> first = at(1);
  const Ref<NSDate> second = at(2);
  const Ref<NSDate> same = at(1);
  EXPECT_EQ(first->earlierDate(second), first);
  EXPECT_EQ(first->laterDate(second), second);
  EXPECT_EQ(first->earlierDate(same), first);
  EXPECT_EQ(first->laterDate(same), first);
  EXPECT_EQ(first->laterDate(nullptr), first);
}

TEST(NSDate, DescribesItselfInUTC) {
  struct Row {
    double seconds;
    const char* text;
  } const rows[] = {
      {0, "2001-01-01 00:00:00 +0000"},
      {0.999, "2001-01-01 00:00:00 +0000"},
      {-0.5, "2000-12-31 23:59:59 +0000"},
      {-978307200, "1970-01-01 00:00:00 +0000"},
      {5097600 + 3723, "2001-03-01 01:02:03 +0000"},
      {-26524800, "2000-02-29 00:00:00 +0000"},
      {INFINITY, "inf seconds after 2001-01-01 00:00:00 +0000"},
  };
  for (const Row& row : rows) EXPECT_THAT(at(row.seconds)->description(), equals(row.text));
  EXPECT_THAT(NSDate::distantPast()->description(), equals("0001-01-01 00:00:00 +0000"));
  EXPECT_THAT(NSDate::distantFuture()->description(), equals("4001-01-01 00:00:00 +0000"));
}

TEST(NSDate, MakesASubclassThroughItsOwnInitialiser) {
  EXPECT_TRUE(NSDate::dateWithTimeIntervalSince1970<MarkedDate>(0)->isMarked());
  EXPECT_TRUE(NSDate::date<MarkedDate>()->isMarked());
  EXPECT_TRUE(send<Ref<MarkedDate>>(MarkedDate::classObject(), "dateWithTimeIntervalSinceNow:"_sel, 1.0)->isMarked());
}

TEST(NSDate, PlainOneIsNow) {
  const Ref<NSDate> before = NSDate::date();
  const auto date = send<Ref<NSDate>>(NSDate::classObject(), "new"_sel);
  EXPECT_NE(date->compare(before), NSOrderedAscending);
  EXPECT_NE(date->compare(NSDate::date()), NSOrderedDescending);
}

TEST(NSDate, CopiesToItself) {
  const Ref<NSDate> date = at(1);
  EXPECT_EQ(date->copy(), date);
}
