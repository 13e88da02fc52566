// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/collections/Callbacks.h"
#include "QuollFoundation/platform/collections/NSArray.h"

/// An array on one line, for logs. Additions to NSArray.
///
///     shortDescription(NSArray::arrayWithObjects({1, 2}));             // "[1, 2]"
///
/// Threads: as the array's.
namespace quoll::inline v1 {

/// The elements' descriptions in brackets.
QF_EXPORT Ref<NSString> shortDescription(const NSArray* receiver);
/// The descriptions of what `mapping` gives for the elements; null is left out.
QF_EXPORT Ref<NSString> shortDescriptionWithMapping(const NSArray* receiver, ElementTransform mapping);

}  // namespace quoll::inline v1
