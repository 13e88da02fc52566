// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSMutableArray.h"

/// A mutable array as a stack. Additions to NSMutableArray.
///
///     push(open, document);
///     while (Ref<NSObject> each = pop(open)) close(each);
///
/// Threads: caller-locked, as the array.
namespace quoll::inline v1 {

QF_EXPORT void push(NSMutableArray* receiver, const NSObject* object);  ///< At the end. Null is ignored.
QF_EXPORT Ref<NSObject> pop(NSMutableArray* receiver);                  ///< Takes the last off; null when empty.
QF_EXPORT bool isEmpty(const NSMutableArray* receiver);

}  // namespace quoll::inline v1
