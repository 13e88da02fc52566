// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace quoll::inline v1::detail {

/// Blocks larger than this are mapped anew by the allocator each time.
inline constexpr size_t alwaysMappedAnew = size_t{32} << 20;

/// Asks for large pages under a new block of memory that will all be written, if it is larger than `alwaysMappedAnew`.
/// What the kernel does for each small page takes several times as long as writing it. Changes nothing but speed.
void prepareToFill(void* memory, size_t size);

/// The same for a block of any size that is looked up here and there, as a large table is: with small pages most
/// look-ups would miss the translation of their address too. Blocks below 4 MiB are left alone.
void prepareToSearch(void* memory, size_t size);

/// As realloc, for such a block, whose first `kept` bytes count. From 4 MiB on they are copied: realloc would take the
/// small pages along.
void* reallocatedToSearch(void* memory, size_t kept, size_t size);

}  // namespace quoll::inline v1::detail
