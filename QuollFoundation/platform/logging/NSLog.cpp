// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/NSLog.h"

#include "QuollFoundation/platform/logging/LogSinkInternal.h"

namespace quoll::inline v1 {

void NSLog_arguments(const NSString* format, std::span<const FormatArgument> arguments) {
  detail::logFormatted("NSLog", LogLevel::Default, {}, {}, format, arguments);
}

}  // namespace quoll::inline v1
