// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/object/Casting.h"

namespace quoll::inline v1 {

using NSTimeInterval = double;  ///< Seconds.

/// From 1 January 1970 to 1 January 2001, both 00:00 UTC.
inline constexpr NSTimeInterval NSTimeIntervalSince1970 = 978307200.0;

/// A point in time: seconds since the reference date, 1 January 2001 00:00 UTC. It has no time zone and no calendar.
///
///     Ref<NSDate> soon = NSDate::dateWithTimeIntervalSinceNow(60);
///     if (soon->compare(NSDate::date()) == NSOrderedDescending) ...
///     auto point = NSDate::dateWithTimePoint(std::chrono::system_clock::now())->timePoint();
///
/// Comparisons are those of the doubles. Threads: immutable.
class QF_EXPORT NSDate : public NSObject {
  QF_CLASS(NSDate, NSObject)
 public:
  using Plain = NSDate;  ///< Its destructor has nothing to do.

  template <class T = NSDate> static Ref<T> date() { return cast<T>(date_ofClass(T::classObject())); }  ///< Now.
  template <class T = NSDate> static Ref<T> dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    return cast<T>(dateWithTimeIntervalSinceReferenceDate_ofClass(seconds, T::classObject()));
  }
  template <class T = NSDate> static Ref<T> dateWithTimeIntervalSince1970(NSTimeInterval seconds) {
    return cast<T>(dateWithTimeIntervalSince1970_ofClass(seconds, T::classObject()));
  }
  template <class T = NSDate> static Ref<T> dateWithTimeIntervalSinceNow(NSTimeInterval seconds) {
    return cast<T>(dateWithTimeIntervalSinceNow_ofClass(seconds, T::classObject()));
  }
  template <class T = NSDate> static Ref<T> dateWithTimeInterval_sinceDate(NSTimeInterval seconds, const NSDate* date) {
    return cast<T>(dateWithTimeInterval_sinceDate_ofClass(seconds, date, T::classObject()));
  }
  template <class T = NSDate> static Ref<T> initWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    return cast<T>(initWithTimeIntervalSinceReferenceDate_ofClass(seconds, T::classObject()));
  }
  template <class T = NSDate> static Ref<T> initWithTimeIntervalSince1970(NSTimeInterval seconds) {
    return cast<T>(initWithTimeIntervalSince1970_ofClass(seconds, T::classObject()));
  }
  static Ref<NSDate> distantPast();    ///< Some two thousand years ago.
  static Ref<NSDate> distantFuture();  ///< Some two thousand years ahead.

  static Ref<NSDate> date_ofClass(Class* cls);
  static Ref<NSDate> dateWithTimeIntervalSinceReferenceDate_ofClass(NSTimeInterval seconds, Class* cls);
  static Ref<NSDate> dateWithTimeIntervalSince1970_ofClass(NSTimeInterval seconds, Class* cls);
  static Ref<NSDate> dateWithTimeIntervalSinceNow_ofClass(NSTimeInterval seconds, Class* cls);
  static Ref<NSDate> dateWithTimeInterval_sinceDate_ofClass(NSTimeInterval seconds, const NSDate* date, Class* cls);
  static Ref<NSDate> initWithTimeIntervalSinceReferenceDate_ofClass(NSTimeInterval seconds, Class* cls);
  static Ref<NSDate> initWithTimeIntervalSince1970_ofClass(NSTimeInterval seconds, Class* cls);

  // To and from std::chrono
  static Ref<NSDate> dateWithTimePoint(std::chrono::system_clock::time_point point);
  /// A date beyond what the clock can express gives its first or last point.
  std::chrono::system_clock::time_point timePoint() const;

  NSTimeInterval timeIntervalSinceReferenceDate() const { return seconds_; }
  NSTimeInterval timeIntervalSince1970() const { return seconds_ + NSTimeIntervalSince1970; }
  NSTimeInterval timeIntervalSinceNow() const;                      ///< Negative for the past.
  NSTimeInterval timeIntervalSinceDate(const NSDate* other) const;  ///< Null raises NSInvalidArgumentException.
  Ref<NSDate> dateByAddingTimeInterval(NSTimeInterval seconds) const;
  Ref<NSDate> earlierDate(const NSDate* other) const;  ///< Itself when they are the same, or `other` is null.
  Ref<NSDate> laterDate(const NSDate* other) const;    ///< Itself when they are the same, or `other` is null.

  NSComparisonResult compare(const NSDate* other) const;  ///< Null comes first.
  bool isEqualToDate(const NSDate* other) const;
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;               ///< "2001-01-01 00:00:00 +0000": whole seconds, in UTC.
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  NSDate();  // now
  explicit NSDate(NSTimeInterval seconds) : seconds_(seconds) {}

 private:
  NSTimeInterval seconds_;
};

}  // namespace quoll::inline v1
