// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "QuollFoundation/platform/object/Selector.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Sorting texts as a file browser lists names, without comparing them in the order of a language again and again.
namespace quoll::inline v1::detail {

/// Whether all objects are texts to which `comparison` means what NSString does by `localizedStandardCompare:`,
/// whatever it is called.
bool compareInStandardOrder(std::span<NSObject* const> objects, Selector comparison);

/// Sorts texts by `localizedStandardCompare:` in the locale that is the current one now, keeping the order of equal
/// ones.
void sortInStandardOrder(std::span<NSObject*> texts);

}  // namespace quoll::inline v1::detail
