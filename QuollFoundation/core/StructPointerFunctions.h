// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "QuollFoundation/platform/collections/NSPointerFunctions.h"

/// Pointer functions for ranges, rectangles, points and sizes. Additions to NSPointerFunctions.
///
///     auto corners = NSPointerArray::initWithPointerFunctions(pointerFunctionsForCGPoint());
///     const CGPoint corner{1, 2};
///     corners->addPointer(&corner);            // copies it
///
/// An array made with them copies each struct that is added into memory of its own, and compares structs by their
/// bytes. `rangePointerArray()` and its kin are the short way to one. Threads: immutable once an array has them.
namespace quoll::inline v1 {

/// Copy what comes in, as a struct, into memory of the system's allocator: 0x10403.
inline constexpr uint64_t QFStructPointerFunctionsOptions = 66563;

template <class T = NSPointerFunctions> Ref<T> pointerFunctionsForNSRange();
template <class T = NSPointerFunctions> Ref<T> pointerFunctionsForCGRect();
template <class T = NSPointerFunctions> Ref<T> pointerFunctionsForCGPoint();
template <class T = NSPointerFunctions> Ref<T> pointerFunctionsForCGSize();

/// The same for a class that is known at run time.
QF_EXPORT Ref<NSPointerFunctions> pointerFunctionsForNSRange_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerFunctions> pointerFunctionsForCGRect_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerFunctions> pointerFunctionsForCGPoint_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerFunctions> pointerFunctionsForCGSize_ofClass(Class* cls);

extern "C" {
/// How many bytes an element has, whatever the element: 16, 32, 16 and 16.
QF_EXPORT uint64_t _QFPointerFunctionsNSRangeStructSize(const void* element);
QF_EXPORT uint64_t _QFPointerFunctionsCGRectStructSize(const void* element);
QF_EXPORT uint64_t _QFPointerFunctionsCGPointStructSize(const void* element);
QF_EXPORT uint64_t _QFPointerFunctionsCGSizeStructSize(const void* element);
}

template <class T> Ref<T> pointerFunctionsForNSRange() {
  return cast<T>(pointerFunctionsForNSRange_ofClass(T::classObject()));
}
template <class T> Ref<T> pointerFunctionsForCGRect() {
  return cast<T>(pointerFunctionsForCGRect_ofClass(T::classObject()));
}
template <class T> Ref<T> pointerFunctionsForCGPoint() {
  return cast<T>(pointerFunctionsForCGPoint_ofClass(T::classObject()));
}
template <class T> Ref<T> pointerFunctionsForCGSize() {
  return cast<T>(pointerFunctionsForCGSize_ofClass(T::classObject()));
}

}  // namespace quoll::inline v1
