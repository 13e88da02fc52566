// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace quoll::inline v1 {

/// A text as it stands in source code: a backslash before each backslash, double and single quote, and `\\t`, `\\r`,
/// `\\n` for a tab, a carriage return and a line feed. An addition to NSString. The result is the caller's, to change
/// at will.
///
///     stringByAddingBackslashes("a\tb"_ns)        // a, backslash, t, b
QF_EXPORT Ref<NSMutableString> stringByAddingBackslashes(const NSString* receiver);

}  // namespace quoll::inline v1
