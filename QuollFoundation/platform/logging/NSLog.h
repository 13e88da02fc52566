// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

/// Writes a line to the log, at the default level; see LogSink.h for where it goes.
QF_EXPORT void NSLog_arguments(const NSString* format, std::span<const FormatArgument> arguments);

/// The same, with the arguments one after the other: `NSLog("%s, %@"_ns, __func__, error)`. Raises
/// NSInvalidArgumentException where the format does not fit its arguments, see NSString::stringWithFormat; what a sink
/// raises goes no further. A proxy is written as `<Class: address>`, without a message to it. Threads: thread-safe.
template <class... A> void NSLog(const NSString* format, const A&... arguments) {
  const FormatArgument list[sizeof...(A) + 1] = {FormatArgument(arguments)..., FormatArgument()};
  NSLog_arguments(format, {list, sizeof...(A)});
}

}  // namespace quoll::inline v1
