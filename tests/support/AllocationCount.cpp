// SPDX-License-Identifier: MIT
#include "tests/support/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {
constinit thread_local size_t allocations = 0;

void* counted(size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
}  // namespace

// The program's own operators serve the shared library too. The array forms end in these.
void* operator new(size_t size) { return counted(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

AllocationCount::AllocationCount() : before_(allocations) {}
size_t AllocationCount::made() const { return allocations - before_; }
