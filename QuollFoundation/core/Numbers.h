// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/values/NSNumber.h"

/// Numbers that hold a coordinate, and a question about their type. Additions to NSNumber.
///
///     Ref<NSNumber> width = numberWithCGFloat(rect.size.width);
///     CGFloat same = CGFloatValue(width);
///
/// Threads: immutable.
namespace quoll::inline v1 {

/// The same as `numberWithDouble:` and `initWithDouble:`, which a subclass may override.
template <class T = NSNumber> Ref<T> numberWithCGFloat(CGFloat value);
template <class T = NSNumber> Ref<T> initWithCGFloat(CGFloat value);

/// The number as a double; 0 for null.
QF_EXPORT CGFloat CGFloatValue(const NSNumber* receiver);

/// Whether it was made from an unsigned type: its type encoding is "C", "S", "I" or "Q". Not for "L", which stands for
/// an unsigned type as well but is not asked about.
QF_EXPORT bool isUnsigned(const NSNumber* receiver);

/// The same for a class that is known at run time.
QF_EXPORT Ref<NSNumber> numberWithCGFloat_ofClass(CGFloat value, Class* cls);
QF_EXPORT Ref<NSNumber> initWithCGFloat_ofClass(CGFloat value, Class* cls);

template <class T> Ref<T> numberWithCGFloat(CGFloat value) {
  return cast<T>(numberWithCGFloat_ofClass(value, T::classObject()));
}
template <class T> Ref<T> initWithCGFloat(CGFloat value) {
  return cast<T>(initWithCGFloat_ofClass(value, T::classObject()));
}

}  // namespace quoll::inline v1
