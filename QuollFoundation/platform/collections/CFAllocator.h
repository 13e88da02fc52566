// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

#include "QuollFoundation/platform/basics/Ranges.h"

/// Allocators of the plain-value containers. There is one, the system's: all names below mean it.
namespace quoll::inline v1 {

struct CFAllocator;
using CFAllocatorRef = const CFAllocator*;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
inline constexpr CFAllocatorRef kCFAllocatorSystemDefault = nullptr;
inline constexpr CFAllocatorRef kCFAllocatorMalloc = nullptr;

/// Null for a size below 1, and where there is no memory.
inline void* CFAllocatorAllocate(CFAllocatorRef, CFIndex size, CFOptionFlags = 0) {
  return size > 0 ? std::malloc(static_cast<size_t>(size)) : nullptr;
}
inline void CFAllocatorDeallocate(CFAllocatorRef, void* memory) { std::free(memory); }

}  // namespace quoll::inline v1
