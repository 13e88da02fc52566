// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include "QuollFoundation/platform/logging/LogSink.h"

/// The system log: lines with a level, under the names of a subsystem and a category.
///
///     const os_log_t files = os_log_create("org.example.viewer", "files");
///     os_log_error(files, "can't read %@"_ns, path);
///
/// What a level keeps out is not formatted. See NSLog.h for formats, LogSink.h for levels and for where lines go.
/// Threads: thread-safe.
namespace quoll::inline v1 {

/// A log; one for each pair of names. It lives for ever.
class SystemLog;
using os_log_t = const SystemLog*;

/// The log of these names, the same each time.
QF_EXPORT os_log_t os_log_create(std::string_view subsystem, std::string_view category);

/// The log without names. Wherever a log is asked for, null means this one.
inline constexpr os_log_t OS_LOG_DEFAULT = nullptr;

/// Whether a line of this level would be written.
QF_EXPORT bool os_log_type_enabled(os_log_t log, LogLevel level);

/// Writes a line.
QF_EXPORT void os_log_with_type_arguments(os_log_t log, LogLevel level, const NSString* format,
                                          std::span<const FormatArgument> arguments);

/// Writes a line, from the arguments one after the other.
template <class... A> void os_log_with_type(os_log_t log, LogLevel level, const NSString* format,
                                            const A&... arguments) {
  const FormatArgument list[sizeof...(A) + 1] = {FormatArgument(arguments)..., FormatArgument()};
  os_log_with_type_arguments(log, level, format, {list, sizeof...(A)});
}

// One function a level.
template <class... A> void os_log(os_log_t log, const NSString* format, const A&... arguments) {
  os_log_with_type(log, LogLevel::Default, format, arguments...);
}
template <class... A> void os_log_info(os_log_t log, const NSString* format, const A&... arguments) {
  os_log_with_type(log, LogLevel::Info, format, arguments...);
}
template <class... A> void os_log_debug(os_log_t log, const NSString* format, const A&... arguments) {
  os_log_with_type(log, LogLevel::Debug, format, arguments...);
}
template <class... A> void os_log_error(os_log_t log, const NSString* format, const A&... arguments) {
  os_log_with_type(log, LogLevel::Error, format, arguments...);
}
template <class... A> void os_log_fault(os_log_t log, const NSString* format, const A&... arguments) {
  os_log_with_type(log, LogLevel::Fault, format, arguments...);
}

}  // namespace quoll::inline v1
