// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/SystemLog.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "QuollFoundation/platform/logging/LogSinkInternal.h"

namespace quoll::inline v1 {

class SystemLog {
 public:
  SystemLog(std::string_view s, std::string_view c) : subsystem(s), category(c) {}
  const std::string subsystem, category;
};

namespace {

/// Never destroyed: handles live for ever.
struct Logs {
  std::mutex mutex;
  std::map<std::pair<std::string, std::string>, SystemLog> byNames;
};
Logs& logs() {
  static auto* const all = new Logs;
  return *all;
}

}  // namespace

os_log_t os_log_create(std::string_view subsystem, std::string_view category) {
  if (subsystem.empty() && category.empty()) return OS_LOG_DEFAULT;
  Logs& all = logs();
  const std::lock_guard lock(all.mutex);
  return &all.byNames.try_emplace({std::string(subsystem), std::string(category)}, subsystem, category).first->second;
}

bool os_log_type_enabled(os_log_t, LogLevel level) { return level >= lowestLogLevel(); }

void os_log_with_type_arguments(os_log_t log, LogLevel level, const NSString* format,
                                std::span<const FormatArgument> arguments) {
  const std::string_view subsystem = log ? std::string_view(log->subsystem) : std::string_view();
  const std::string_view category = log ? std::string_view(log->category) : std::string_view();
  detail::logFormatted("os_log", level, subsystem, category, format, arguments);
}

}  // namespace quoll::inline v1
