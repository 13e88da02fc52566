// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

/// With every run of `length` or more hexadecimal digits cut to its first `length`: for logs that name commits and
/// checksums. Runs inside words count too (*added*, *cafe*); case does not matter. An addition to NSString.
///
///     stringByShorteningHashRefsToLength("see deadbeefcafe1234"_ns, 7)                // see deadbee
///
/// A negative length is logged and gives null. 0 takes all hexadecimal digits out.
QF_EXPORT Ref<NSString> stringByShorteningHashRefsToLength(const NSString* receiver, int64_t length);

}  // namespace quoll::inline v1
