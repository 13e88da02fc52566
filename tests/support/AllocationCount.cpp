// SPDX-License-Identifier: MIT
#include "tests/support/AllocationCount.h"

#include <cstdlib>
#include <new>
#include <stdexcept>

namespace {
constinit thread_local size_t allocations = 0;
}

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SANITIZED
#endif
#endif

#ifdef SANITIZED
#include <sanitizer/allocator_interface.h>

// A sanitizer has operators of its own, and tells of each allocation, `malloc` included.
static const int hooks = __sanitizer_install_malloc_and_free_hooks([](const volatile void*, size_t) { ++allocations; },
                                                                   [](const volatile void*) {});
#else

// The program's own operators serve the shared library too. The other forms end in these.
void* operator new(size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

static const int hooks = 1;
#endif

AllocationCount::AllocationCount() : before_(allocations) {
  if (hooks == 0) throw std::runtime_error("this sanitizer does not tell of allocations");
}
size_t AllocationCount::made() const { return allocations - before_; }
