// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Text as it stands in source code, in plain spans of units.
namespace quoll::inline v1::detail {

/// How many units of ASCII bytes or UTF-16 need a backslash.
size_t countOfEscapes(std::string_view text);
size_t countOfEscapes(std::u16string_view text);

/// Writes the text with its backslashes: as many units as it has, and one more for each that needs a backslash.
void writeEscaped(std::string_view text, char* to);
void writeEscaped(std::u16string_view text, char16_t* to);

}  // namespace quoll::inline v1::detail
