// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace quoll::inline v1::detail {

/// Writes three characters a byte: two upper-case digits and a blank.
void writeHexText(const uint8_t* bytes, size_t count, char* out);

}  // namespace quoll::inline v1::detail
