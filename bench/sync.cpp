// SPDX-License-Identifier: MIT
#include "bench/sync.h"

#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"

namespace {

using namespace quoll;

struct Semaphore {
  explicit Semaphore(int count) : s(quoll_semaphore_create(count)) {}
  Semaphore(const Semaphore&) = delete;
  Semaphore& operator=(const Semaphore&) = delete;
  ~Semaphore() { quoll_semaphore_release(s); }
  void down() { quoll_semaphore_wait(s); }
  void up() { quoll_semaphore_signal(s); }
  quoll_semaphore_t s;
};
SEM(Semaphore, "quoll");

}  // namespace
