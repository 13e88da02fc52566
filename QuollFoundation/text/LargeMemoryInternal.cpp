// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/LargeMemoryInternal.h"

#include <sys/mman.h>

#include <cstdint>

namespace quoll::inline v1::detail {

namespace {
constexpr uintptr_t largePage = uintptr_t{2} << 20;
}  // namespace

void prepareToFill(void* memory, size_t size) {
  if (size <= alwaysMappedAnew) return;
  const auto from = reinterpret_cast<uintptr_t>(memory);
  const uintptr_t first = (from + largePage - 1) & ~(largePage - 1);
  const uintptr_t end = (from + size) & ~(largePage - 1);
  madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);  // refused where there are none, which is fine
}

}  // namespace quoll::inline v1::detail
