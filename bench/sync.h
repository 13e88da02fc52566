// SPDX-License-Identifier: MIT
#pragma once

/// How every semaphore is timed. A `Sem` is made with a count and has `down()` and `up()`.

#include <atomic>
#include <thread>

#include "bench/measure.h"

namespace bench {

/// One permit: with two threads they exclude each other.
template <class Sem>
void sem_pair(benchmark::State& s) {
  static Sem sem(1);
  for (auto _ : s) {
    sem.down();
    sem.up();
  }
  items(s, 1);
}

/// Every operation wakes the other thread.
template <class Sem>
void sem_handoff(benchmark::State& s) {
  Sem go(0), back(0);
  std::atomic<bool> stop{false};
  std::thread t([&] {
    while (true) {
      go.down();
      if (stop) return;
      back.up();
    }
  });
  for (auto _ : s) {
    go.up();
    back.down();
  }
  stop = true;
  go.up();
  t.join();
  items(s, 1);
}

}  // namespace bench

#define SEM(T, member)                                                   \
  PEER(bench::sem_pair<T>, "semaphore/" member)->Threads(1)->Threads(2); \
  PEER(bench::sem_handoff<T>, "semaphore_handoff/" member)
