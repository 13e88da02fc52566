// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace quoll::inline v1::detail {

namespace {
constexpr uintptr_t largePage = uintptr_t{2} << 20;
constexpr size_t fromHereOn = 2 * largePage;  // what is searched

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
  if (size >= fromHereOn) askForLargePages(memory, size);
}

void* reallocatedToSearch(void* memory, size_t kept, size_t size) {
  if (size < fromHereOn) return std::realloc(memory, size);
  void* const fresh = std::malloc(size);
  if (!fresh) return nullptr;
  askForLargePages(fresh, size);
  if (kept) std::memcpy(fresh, memory, kept);
  std::free(memory);
  return fresh;
}

}  // namespace quoll::inline v1::detail
