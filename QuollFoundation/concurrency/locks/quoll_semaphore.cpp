// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"

#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

namespace {
// C++ has these two inline; naming them here makes the symbols that C links with.
[[gnu::used]] constexpr auto* waitForC = &quoll_semaphore_wait;
[[gnu::used]] constexpr auto* signalForC = &quoll_semaphore_signal;
}  // namespace

quoll_semaphore_t quoll_semaphore_create(int64_t count) { return dispatch_semaphore_create(count); }

void quoll_semaphore_release(quoll_semaphore_t semaphore) {
  if (semaphore) dispatch_release(semaphore);
}

int64_t quoll_semaphore_timed_wait(quoll_semaphore_t semaphore, int64_t nanoseconds) {
  return dispatch_semaphore_wait(semaphore, dispatch_time(DISPATCH_TIME_NOW, nanoseconds));
}

int64_t quoll_semaphore_wait_signal_f(quoll_semaphore_t semaphore, void (*function)(void*), void* context) {
  if (!function) raise(NSInvalidArgumentException, "quoll_semaphore_wait_signal_f: the function is null");
  quoll_semaphore_wait(semaphore);
  function(context);
  return quoll_semaphore_signal(semaphore);
}

int64_t quoll_semaphore_wait_signal(quoll_semaphore_t semaphore, BlockRef<void()> block) {
  quoll_semaphore_wait(semaphore);
  block();
  return quoll_semaphore_signal(semaphore);
}

}  // namespace quoll::inline v1
