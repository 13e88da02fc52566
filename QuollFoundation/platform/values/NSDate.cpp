// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSDate.h"

#include <cmath>
#include <cstdio>
#include <functional>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/NSNumber.h"

namespace quoll::inline v1 {

using std::chrono::system_clock;

Class* NSDate::classObject() {
  static Class* const cls =
      ClassBuilder<NSDate>("NSDate")
          .classMethod<&NSDate::date_ofClass>("date"_sel)
          .classMethod<&NSDate::dateWithTimeIntervalSinceReferenceDate_ofClass>(
              "dateWithTimeIntervalSinceReferenceDate:"_sel)
          .classMethod<&NSDate::dateWithTimeIntervalSince1970_ofClass>("dateWithTimeIntervalSince1970:"_sel)
          .classMethod<&NSDate::dateWithTimeIntervalSinceNow_ofClass>("dateWithTimeIntervalSinceNow:"_sel)
          .classMethod<&NSDate::dateWithTimeInterval_sinceDate_ofClass>("dateWithTimeInterval:sinceDate:"_sel)
          .classMethod<&NSDate::distantPast>("distantPast"_sel)
          .classMethod<&NSDate::distantFuture>("distantFuture"_sel)
          .initializer<&NSDate::initWithTimeIntervalSinceReferenceDate_ofClass>(
              "initWithTimeIntervalSinceReferenceDate:"_sel)
          .initializer<&NSDate::initWithTimeIntervalSince1970_ofClass>("initWithTimeIntervalSince1970:"_sel)
          .method<&NSDate::timeIntervalSinceReferenceDate>("timeIntervalSinceReferenceDate"_sel)
          .method<&NSDate::timeIntervalSince1970>("timeIntervalSince1970"_sel)
          .method<&NSDate::timeIntervalSinceNow>("timeIntervalSinceNow"_sel)
          .method<&NSDate::timeIntervalSinceDate>("timeIntervalSinceDate:"_sel)
          .method<&NSDate::dateByAddingTimeInterval>("dateByAddingTimeInterval:"_sel)
          .method<&NSDate::earlierDate>("earlierDate:"_sel)
          .method<&NSDate::laterDate>("laterDate:"_sel)
          .method<&NSDate::compare>("compare:"_sel)
          .method<&NSDate::isEqualToDate>("isEqualToDate:"_sel)
          .build();
  return cls;
}

namespace {

constexpr std::chrono::seconds reference{static_cast<int64_t>(NSTimeIntervalSince1970)};

NSTimeInterval sinceReference(system_clock::time_point point) {
  const auto whole = std::chrono::duration_cast<std::chrono::seconds>(point.time_since_epoch());
  const std::chrono::duration<double> rest = point.time_since_epoch() - whole;
  return static_cast<double>((whole - reference).count()) + rest.count();
}
NSTimeInterval now() { return sinceReference(system_clock::now()); }

constexpr NSTimeInterval twoThousandYears = 63113904000.0;

}  // namespace

NSDate::NSDate() : seconds_(now()) {}

Ref<NSDate> NSDate::initWithTimeIntervalSinceReferenceDate_ofClass(NSTimeInterval seconds, Class* cls) {
  if (cls == NSDate::classObject()) return make<NSDate>(seconds);
  Ref<NSDate> date = create<NSDate>(cls);
  date->seconds_ = seconds;
  return date;
}
Ref<NSDate> NSDate::dateWithTimeIntervalSinceReferenceDate_ofClass(NSTimeInterval seconds, Class* cls) {
  if (cls == NSDate::classObject()) return make<NSDate>(seconds);
  return made<NSDate>(cls, "initWithTimeIntervalSinceReferenceDate:"_sel, seconds);
}
Ref<NSDate> NSDate::initWithTimeIntervalSince1970_ofClass(NSTimeInterval seconds, Class* cls) {
  return dateWithTimeIntervalSinceReferenceDate_ofClass(seconds - NSTimeIntervalSince1970, cls);
}
Ref<NSDate> NSDate::dateWithTimeIntervalSince1970_ofClass(NSTimeInterval seconds, Class* cls) {
  return dateWithTimeIntervalSinceReferenceDate_ofClass(seconds - NSTimeIntervalSince1970, cls);
}
Ref<NSDate> NSDate::dateWithTimeIntervalSinceNow_ofClass(NSTimeInterval seconds, Class* cls) {
  return dateWithTimeIntervalSinceReferenceDate_ofClass(now() + seconds, cls);
}
Ref<NSDate> NSDate::dateWithTimeInterval_sinceDate_ofClass(NSTimeInterval seconds, const NSDate* date, Class* cls) {
  if (!date) detail::raiseNilArgument(cls, "dateWithTimeInterval:sinceDate:");
  return dateWithTimeIntervalSinceReferenceDate_ofClass(date->seconds_ + seconds, cls);
}
Ref<NSDate> NSDate::date_ofClass(Class* cls) { return dateWithTimeIntervalSinceReferenceDate_ofClass(now(), cls); }
Ref<NSDate> NSDate::distantPast() { return make<NSDate>(-twoThousandYears); }
Ref<NSDate> NSDate::distantFuture() { return make<NSDate>(twoThousandYears); }

Ref<NSDate> NSDate::dateWithTimePoint(system_clock::time_point point) { return make<NSDate>(sinceReference(point)); }

system_clock::time_point NSDate::timePoint() const {
  using Ticks = system_clock::duration;
  const double ticks = seconds_ * static_cast<double>(Ticks::period::den) / static_cast<double>(Ticks::period::num);
  const Ticks sinceReference(detail::nearestInteger<Ticks::rep>(std::round(ticks)));
  if (sinceReference > Ticks::max() - reference) return system_clock::time_point::max();
  return system_clock::time_point(sinceReference + reference);
}

NSTimeInterval NSDate::timeIntervalSinceNow() const { return seconds_ - now(); }
NSTimeInterval NSDate::timeIntervalSinceDate(const NSDate* other) const {
  if (!other) detail::raiseNilArgument(this, "timeIntervalSinceDate:");
  return seconds_ - other->seconds_;
}
Ref<NSDate> NSDate::dateByAddingTimeInterval(NSTimeInterval seconds) const {
  return dateWithTimeIntervalSinceReferenceDate_ofClass(seconds_ + seconds, NSDate::classObject());
}
Ref<NSDate> NSDate::earlierDate(const NSDate* other) const {
  return const_cast<NSDate*>(other && other->seconds_ < seconds_ ? other : this);
}
Ref<NSDate> NSDate::laterDate(const NSDate* other) const {
  return const_cast<NSDate*>(other && other->seconds_ > seconds_ ? other : this);
}

NSComparisonResult NSDate::compare(const NSDate* other) const {
  return other ? compareValues(seconds_, other->seconds_) : NSOrderedDescending;
}
bool NSDate::isEqualToDate(const NSDate* other) const { return other && seconds_ == other->seconds_; }
bool NSDate::isEqual(const NSObject* other) const { return isEqualToDate(as<NSDate>(other)); }
uint64_t NSDate::hash() const { return std::hash<double>()(seconds_); }

Ref<NSString> NSDate::description() const {
  constexpr double furthest = 1e12;  // some 30,000 years, as far as the calendar goes
  char text[64];
  if (!(std::fabs(seconds_) < furthest)) {
    std::snprintf(text, sizeof text, "%g seconds after 2001-01-01 00:00:00 +0000", seconds_);
    return NSString::stringWithUTF8(text);
  }
  using namespace std::chrono;
  const sys_seconds point{reference + seconds(static_cast<int64_t>(std::floor(seconds_)))};
  const sys_days day = floor<days>(point);
  const year_month_day date = day;
  const hh_mm_ss time(point - day);
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return NSString::stringWithUTF8(text);
}

Ref<NSObject> NSDate::copyWithZone(NSZone*) const { return const_cast<NSDate*>(this); }

}  // namespace quoll::inline v1
