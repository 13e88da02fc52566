// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/logging/LogSink.h"

namespace quoll::inline v1::detail {

/// Formats a line and gives it to the sink, unless its level is below the lowest. Raises only for a format that does
/// not fit its arguments; `operation` names the caller there. A proxy is written as `<Class: address>`.
void logFormatted(std::string_view operation, LogLevel level, std::string_view subsystem, std::string_view category,
                  const NSString* format, std::span<const FormatArgument> arguments);

}  // namespace quoll::inline v1::detail
