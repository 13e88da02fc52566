// SPDX-License-Identifier: MIT
#pragma once

/// How every semaphore and every lock for readers and writers is timed. A `Sem` is made with a count and has `down()`
/// and `up()`. A `Guarded` has `read(f)` and `write(f)`, which hand a Table to `f` under its lock.

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

struct Table {
  long v[8] = {};
};

/// 19 reads to 1 write.
template <class Guarded>
void readers_95(benchmark::State& s) {
  static Guarded guarded;
  unsigned i = unsigned(s.thread_index()) * 7;
  long sum = 0;
  for (auto _ : s) {
    if (++i % 20 == 0) {
      guarded.write([](Table& table) {
        for (long& x : table.v) ++x;
      });
    } else {
      guarded.read([&](const Table& table) {
        for (const long x : table.v) sum += x;
      });
    }
  }
  keep(sum);
  items(s, 1);
  guarded.read([&](const Table& table) {  // every write was whole
    for (const long x : table.v) expect(s, x, table.v[0]);
  });
}

/// Reads by one thread.
template <class Guarded>
void read_uncontended(benchmark::State& s) {
  Guarded guarded;
  guarded.write([](Table& table) {
    for (long& x : table.v) x = 1;
  });
  long sum = 0, times = 0;
  for (auto _ : s) {
    guarded.read([&](const Table& table) {
      for (const long x : table.v) sum += x;
    });
    ++times;
  }
  expect(s, sum, 8 * times);
  items(s, 1);
}

}  // namespace bench

#define SEM(T, member)                                                   \
  PEER(bench::sem_pair<T>, "semaphore/" member)->Threads(1)->Threads(2); \
  PEER(bench::sem_handoff<T>, "semaphore_handoff/" member)

#define READERS(T, member)                                                              \
  PEER(bench::readers_95<T>, "readers_95/" member)->Threads(1)->Threads(2)->Threads(4); \
  PEER(bench::read_uncontended<T>, "read_uncontended/" member)
