// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/Block.h"

/// Growable arrays of ranges, rectangles, points and sizes. Additions to NSPointerArray.
///
///     Ref<NSPointerArray> found = rangePointerArray();
///     addRange(found, NSMakeRange(0, 5));
///     for (uint64_t i = 0; i < found->count(); ++i) use(rangeAtIndex(found, i));
///
/// The array keeps copies. Whoever adds to or reads from an array whose elements are not copied structs of that size
/// gets an NSInvalidArgumentException. Threads: as the array's (caller-locked).
namespace quoll::inline v1 {

class NSString;

/// An empty array of the kind.
template <class T = NSPointerArray> Ref<T> rangePointerArray();
template <class T = NSPointerArray> Ref<T> rectPointerArray();
template <class T = NSPointerArray> Ref<T> pointPointerArray();
template <class T = NSPointerArray> Ref<T> sizePointerArray();

/// Appends a copy.
QF_EXPORT void addRange(NSPointerArray* receiver, NSRange range);
QF_EXPORT void addRect(NSPointerArray* receiver, CGRect rect);
QF_EXPORT void addPoint(NSPointerArray* receiver, CGPoint point);
QF_EXPORT void addSize(NSPointerArray* receiver, CGSize size);

/// The value there. Raises NSRangeException past the end, NSInvalidArgumentException where a null was added.
QF_EXPORT NSRange rangeAtIndex(const NSPointerArray* receiver, uint64_t index);
QF_EXPORT CGRect rectAtIndex(const NSPointerArray* receiver, uint64_t index);
QF_EXPORT CGPoint pointAtIndex(const NSPointerArray* receiver, uint64_t index);
QF_EXPORT CGSize sizeAtIndex(const NSPointerArray* receiver, uint64_t index);

/// Calls with each index and the element there, whatever the array holds, until `*stop` is set. Elements that the
/// callback appends are visited too; where it removes some, the walk ends at the new end.
QF_EXPORT void enumeratePointersUsingBlock(const NSPointerArray* receiver,
                                           BlockRef<void(uint64_t index, void* pointer, bool* stop)> visit);

/// "2 ranges", then a line for each: "{0, 5}". Of an array of ranges.
QF_EXPORT Ref<NSString> rangesDescription(const NSPointerArray* receiver);

/// The empty arrays for a class that is known at run time.
QF_EXPORT Ref<NSPointerArray> rangePointerArray_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerArray> rectPointerArray_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerArray> pointPointerArray_ofClass(Class* cls);
QF_EXPORT Ref<NSPointerArray> sizePointerArray_ofClass(Class* cls);

template <class T> Ref<T> rangePointerArray() { return cast<T>(rangePointerArray_ofClass(T::classObject())); }
template <class T> Ref<T> rectPointerArray() { return cast<T>(rectPointerArray_ofClass(T::classObject())); }
template <class T> Ref<T> pointPointerArray() { return cast<T>(pointPointerArray_ofClass(T::classObject())); }
template <class T> Ref<T> sizePointerArray() { return cast<T>(sizePointerArray_ofClass(T::classObject())); }

}  // namespace quoll::inline v1
