// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1::detail {

/// What `%@` writes for a proxy: what its target says, or `<Class: address>` without a message to anybody.
enum class ProxyText : uint8_t { OfTarget, Plain };

/// The text of a format, see NSString::stringWithFormat. `operation` names the caller in messages.
Ref<NSString> formatted(std::string_view operation, const NSString* format, std::span<const FormatArgument> arguments,
                        ProxyText proxies);

}  // namespace quoll::inline v1::detail
