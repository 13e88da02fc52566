// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

/// How much a log line matters, from least to most.
enum class LogLevel : uint8_t { Debug, Info, Default, Error, Fault };

/// One line of the log, as a sink gets it.
struct LogRecord {
  LogLevel level;
  std::string_view subsystem;  ///< Empty for NSLog and the default log, as is the category. Lives for ever.
  std::string_view category;
  Ref<NSString> message;  ///< Never null.
  std::chrono::system_clock::time_point time;
  pid_t process;
  pid_t thread;  ///< As the kernel numbers it.
};

/// Where log lines go: it gets each record, never null, on the thread that logs.
using LogSink = Block<void(const LogRecord* record)>;

/// Replaces the sink of the process and gives the one before, so that it can be put back:
///
///     std::vector<std::string> lines;
///     LogSink before = setLogSink([&](const LogRecord* record) { lines.push_back(record->message->utf8()); });
///     ...
///     setLogSink(before);
///
/// Threads call a sink at the same time; a replaced one may still finish calls that had begun. A line that a sink
/// logs itself, and a line whose sink raises, goes to standard error; no exception leaves the log. Threads:
/// thread-safe.
QF_EXPORT LogSink setLogSink(LogSink sink);

/// The sink that stands at the start: one write to standard error for each record. Threads: thread-safe.
QF_EXPORT void writeToStandardError(const LogRecord* record);

/// The line that `writeToStandardError` writes, without the line feed: local time, program, process and thread, what
/// log and level it is unless plain, the message; in UTF-8, with U+FFFD for unpaired surrogates.
QF_EXPORT std::string logLine(const LogRecord& record);

/// Below this level nothing is formatted and no sink is called: at first Debug where the environment says
/// QUOLL_LOG=debug, else Info. Threads: thread-safe.
QF_EXPORT LogLevel lowestLogLevel();
/// Gives the level before.
QF_EXPORT LogLevel setLowestLogLevel(LogLevel level);

}  // namespace quoll::inline v1
