// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/LogSink.h"

#include <cxxabi.h>
#include <errno.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <mutex>

#include "QuollFoundation/platform/logging/LogSinkInternal.h"
#include "QuollFoundation/platform/strings/FormatsInternal.h"

namespace quoll::inline v1 {

namespace {

/// Never destroyed: what ends late still logs.
struct CurrentSink {
  std::mutex mutex;
  LogSink sink{&writeToStandardError};
};
CurrentSink& current() {
  static auto* const sink = new CurrentSink;
  return *sink;
}

LogSink sinkNow() {
  CurrentSink& all = current();
  const std::lock_guard lock(all.mutex);
  return all.sink;
}

constinit thread_local bool isInSink = false;

struct InSink {
  InSink() { isInSink = true; }
  ~InSink() { isInSink = false; }
};

constexpr int levelFromEnvironment = -1;
constinit std::atomic<int> lowestLevel{levelFromEnvironment};

LogLevel environmentLevel() {
  const char* wanted = std::getenv("QUOLL_LOG");
  return wanted && std::string_view(wanted) == "debug" ? LogLevel::Debug : LogLevel::Info;
}

void writeAll(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
    if (written > 0) bytes.remove_prefix(static_cast<size_t>(written));
    else if (errno != EINTR) return;  // a log that can't be written has nobody to tell
  }
}

/// `2026-01-31 12:34:56.789+0100`
std::string timeText(std::chrono::system_clock::time_point time) {
  const auto since = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
  const time_t clock = seconds.count();
  tm parts{};
  localtime_r(&clock, &parts);
  char date[40], zone[8], text[64];
  strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &parts);
  strftime(zone, sizeof zone, "%z", &parts);
  std::snprintf(text, sizeof text, "%s.%03d%s", date, static_cast<int>((since - seconds).count()), zone);
  return text;
}

std::string_view nameOf(LogLevel level) {
  switch (level) {
    case LogLevel::Debug: return "debug: ";
    case LogLevel::Info: return "info: ";
    case LogLevel::Error: return "error: ";
    case LogLevel::Fault: return "fault: ";
    case LogLevel::Default: break;
  }
  return "";
}

void complain(std::string_view what, const LogRecord& record) {
  std::string line = "QuollFoundation: a log sink raised ";
  line += what;
  writeAll(line + "; its line was:\n");
  writeToStandardError(&record);
}

void callSink(const LogRecord& record) {
  const LogSink sink = sinkNow();
  const InSink inSink;
  try {
    sink(&record);
  } catch (const std::exception& e) {
    complain(e.what(), record);
  } catch (const abi::__forced_unwind&) {
    throw;  // the thread is being cancelled
  } catch (...) {
    complain("something that is no std::exception", record);
  }
}

}  // namespace

LogSink setLogSink(LogSink sink) {
  CurrentSink& all = current();
  const std::lock_guard lock(all.mutex);
  std::swap(all.sink, sink);
  return sink;
}

LogLevel lowestLogLevel() {
  const int level = lowestLevel.load(std::memory_order_relaxed);
  if (level != levelFromEnvironment) return static_cast<LogLevel>(level);
  int expected = levelFromEnvironment;
  const LogLevel fresh = environmentLevel();
  if (lowestLevel.compare_exchange_strong(expected, static_cast<int>(fresh))) return fresh;
  return static_cast<LogLevel>(expected);
}

LogLevel setLowestLogLevel(LogLevel level) {
  lowestLogLevel();  // reads the environment, so that there is a level before
  return static_cast<LogLevel>(lowestLevel.exchange(static_cast<int>(level)));
}

std::string logLine(const LogRecord& record) {
  std::string line = timeText(record.time) + " " + program_invocation_short_name + "[" +
                     std::to_string(record.process) + ":" + std::to_string(record.thread) + "] ";
  if (!record.subsystem.empty() || !record.category.empty()) {
    line.append("[").append(record.subsystem).append(":").append(record.category).append("] ");
  }
  line += nameOf(record.level);
  return line + record.message->utf8();
}

void writeToStandardError(const LogRecord* record) { writeAll(logLine(*record) + "\n"); }

void detail::logFormatted(std::string_view operation, LogLevel level, std::string_view subsystem,
                          std::string_view category, const NSString* format,
                          std::span<const FormatArgument> arguments) {
  if (level < lowestLogLevel()) return;
  const LogRecord record{level,
                         subsystem,
                         category,
                         formatted(operation, format, arguments, ProxyText::Plain),
                         std::chrono::system_clock::now(),
                         getpid(),
                         gettid()};
  if (isInSink) writeToStandardError(&record);
  else callSink(record);
}

}  // namespace quoll::inline v1
