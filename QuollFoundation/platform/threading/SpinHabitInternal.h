// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

/// How long a thread that has to wait for one thing should spin before it sleeps, learnt from the waits before.
///
/// Spinning pays when the other thread is just running and answers soon. Whether it does depends on that thread and on
/// what else the machine does, so it is learnt: each spin in vain halves the next; after several, waits sleep at once,
/// and only now and then one tries again with the full length.
///
///     const bool taken = spinFor(habit.nanoseconds());
///     habit.learn(taken ? SpinHabit::Paid : SpinHabit::InVain);
///
/// Threads: thread-safe. Threads that learn at once may lose each other's lesson, which does no harm.
namespace quoll::inline v1 {

class SpinHabit {
 public:
  enum Outcome { Paid, InVain };

  /// About what it takes to fall asleep and be woken twice: a thread that spins for so long in vain has lost as much
  /// again, and one that waits for a thread which is just being woken still meets it.
  static constexpr uint64_t longest = 20'000;
  static constexpr uint32_t triesInARow = 6;
  static constexpr uint32_t waitsBetweenTries = 250;

  /// 0: sleep at once, which counts as in vain.
  uint64_t nanoseconds() const {
    const uint32_t misses = misses_.load(std::memory_order_relaxed);
    if (isNewTry(misses)) return longest;
    return misses < triesInARow ? longest >> misses : 0;
  }

  void learn(Outcome outcome) {
    const uint32_t misses = misses_.load(std::memory_order_relaxed);
    misses_.store(outcome == Paid ? afterPaid(misses) : afterInVain(misses), std::memory_order_relaxed);
  }

 private:
  static bool isNewTry(uint32_t misses) { return misses >= triesInARow + waitsBetweenTries; }
  static uint32_t afterPaid(uint32_t misses) { return misses == 0 || isNewTry(misses) ? 0 : misses - 1; }
  static uint32_t afterInVain(uint32_t misses) { return isNewTry(misses) ? triesInARow : misses + 1; }

  std::atomic<uint32_t> misses_{0};
};

}  // namespace quoll::inline v1
