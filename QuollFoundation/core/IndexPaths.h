// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSIndexPath.h"

/// The ends of an index path, and paths that differ in one index. Additions to NSIndexPath.
///
///     Ref<NSIndexPath> next = indexPathByIncrementingLastIndex(path);          // 1.4.0 becomes 1.4.1
///
/// Threads: immutable.
namespace quoll::inline v1 {

/// The empty path.
template <class T = NSIndexPath> Ref<T> indexPath();
QF_EXPORT Ref<NSIndexPath> indexPath_ofClass(Class* cls);  ///< For a class that is known at run time.

/// NSNotFound for an empty path.
QF_EXPORT uint64_t firstIndex(const NSIndexPath* receiver);
QF_EXPORT uint64_t lastIndex(const NSIndexPath* receiver);

/// With the last index one larger; the largest becomes 0. Raises NSRangeException for an empty path.
QF_EXPORT Ref<NSIndexPath> indexPathByIncrementingLastIndex(const NSIndexPath* receiver);
/// Of the same length, with another index at the position. Raises NSRangeException past the end.
QF_EXPORT Ref<NSIndexPath> indexPathByReplacingIndexAtPosition_withIndex(const NSIndexPath* receiver, uint64_t position,
                                                                         uint64_t index);

template <class T> Ref<T> indexPath() { return cast<T>(indexPath_ofClass(T::classObject())); }

}  // namespace quoll::inline v1
