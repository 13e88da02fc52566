// SPDX-License-Identifier: MIT
#pragma once

/// Portable SIMD, the best instruction set chosen at run time.

#include <cstddef>
#include <cstdint>

namespace bench {

std::size_t hwy_lines(const char16_t* p, std::size_t n, std::uint64_t* acc);
std::size_t hwy_common_prefix(const char16_t* a, const char16_t* b, std::size_t n);
const char* hwy_target();

}  // namespace bench
