// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// White space and newlines at the ends of plain spans of units.
namespace quoll::inline v1::detail {

/// How many units are blank, white space or newlines, from the start of a text on, and up to its end. ASCII bytes or
/// UTF-16 units.
size_t blankPrefixLength(std::string_view text);
size_t blankPrefixLength(std::u16string_view text);
size_t blankSuffixLength(std::string_view text);
size_t blankSuffixLength(std::u16string_view text);

}  // namespace quoll::inline v1::detail
