// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"

#include <sys/mman.h>

#include <cstdint>

namespace quoll::inline v1::detail {

namespace {
constexpr uintptr_t largePage = uintptr_t{2} << 20;

void askForLargePages(void* memory, size_t size) {
  const auto from = reinterpret_cast<uintptr_t>(memory);
  const uintptr_t first = (from + largePage - 1) & ~(largePage - 1);
  const uintptr_t end = (from + size) & ~(largePage - 1);
  madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);  // refused where there are none, which is fine
}

}  // namespace

void prepareToFill(void* memory, size_t size) {
  if (size > alwaysMappedAnew) askForLargePages(memory, size);
}
void prepareToSearch(void* memory, size_t size) {
  if (size >= 2 * largePage) askForLargePages(memory, size);
}

}  // namespace quoll::inline v1::detail
