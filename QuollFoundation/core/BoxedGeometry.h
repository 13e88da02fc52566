// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/values/NSValue.h"

/// Boxed ranges, rectangles, sizes and points: initialisers, and an order of ranges. Additions to NSValue.
///
///     Ref<NSValue> boxed = initWithRange(NSMakeRange(2, 5));       // equals NSValue::valueWithRange of the same
///     boxes->sortUsingSelector("compareRangeValueLocation:"_sel);
///
/// Made by the class's own `initWithBytes:objCType:`, so that a subclass's override runs. Threads: immutable.
namespace quoll::inline v1 {

template <class T = NSValue> Ref<T> initWithRect(CGRect rect);
template <class T = NSValue> Ref<T> initWithRange(NSRange range);
template <class T = NSValue> Ref<T> initWithSize(CGSize size);
template <class T = NSValue> Ref<T> initWithPoint(CGPoint point);

/// By location alone, as unsigned numbers: ranges of one location are the same, whatever their lengths. Raises
/// NSInvalidArgumentException for null, or when either holds no range.
QF_EXPORT NSComparisonResult compareRangeValueLocation(const NSValue* receiver, const NSValue* other);

/// The initialisers of a class that is known at run time.
QF_EXPORT Ref<NSValue> initWithRect_ofClass(CGRect rect, Class* cls);
QF_EXPORT Ref<NSValue> initWithRange_ofClass(NSRange range, Class* cls);
QF_EXPORT Ref<NSValue> initWithSize_ofClass(CGSize size, Class* cls);
QF_EXPORT Ref<NSValue> initWithPoint_ofClass(CGPoint point, Class* cls);

template <class T> Ref<T> initWithRect(CGRect rect) { return cast<T>(initWithRect_ofClass(rect, T::classObject())); }
template <class T> Ref<T> initWithRange(NSRange range) {
  return cast<T>(initWithRange_ofClass(range, T::classObject()));
}
template <class T> Ref<T> initWithSize(CGSize size) { return cast<T>(initWithSize_ofClass(size, T::classObject())); }
template <class T> Ref<T> initWithPoint(CGPoint point) {
  return cast<T>(initWithPoint_ofClass(point, T::classObject()));
}

}  // namespace quoll::inline v1
