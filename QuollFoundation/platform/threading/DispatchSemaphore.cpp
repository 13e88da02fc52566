// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/threading/DispatchSemaphore.h"

#include <linux/futex.h>
#include <sched.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <new>

#include "QuollFoundation/platform/threading/SpinHabitInternal.h"

namespace quoll::inline v1 {
namespace {

constexpr uint64_t nanosecondsPerSecond = 1'000'000'000;
constexpr int mostPauses = 64;  // about a microsecond

uint64_t monotonicNow() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * nanosecondsPerSecond + static_cast<uint64_t>(now.tv_nsec);
}

bool isForEver(dispatch_time_t deadline) { return deadline > INT64_MAX; }
bool isPast(dispatch_time_t deadline) {
  return deadline == DISPATCH_TIME_NOW || (!isForEver(deadline) && deadline <= monotonicNow());
}

// With one processor, whoever spins keeps the other thread from signalling.
bool spinningCanHelp() {
  static const bool several = [] {
    cpu_set_t usable;
    CPU_ZERO(&usable);
    const bool known = sched_getaffinity(getpid(), sizeof usable, &usable) == 0;
    return !known || CPU_COUNT(&usable) > 1;  // unknown where there are more than the set can name
  }();
  return several;
}

void pauseProcessor() {
#if defined(__x86_64__) || defined(__i386__)
  __builtin_ia32_pause();
#elif defined(__aarch64__)
  asm volatile("isb");
#endif
}

/// What a `dispatch_semaphore_t` points to. On a cache line of its own: two semaphores that hand work to and fro would
/// else slow each other down.
class alignas(64) Record final : public DispatchSemaphore {
 public:
  static Record& of(dispatch_semaphore_t semaphore) { return static_cast<Record&>(*semaphore); }

  /// A count so large that nobody can use it up or overflow it stands for all larger ones.
  explicit Record(int64_t count) : DispatchSemaphore(std::min(count, INT64_MAX / 2)) {}

  bool takeWhileSpinning(dispatch_time_t deadline);
  bool takeAfterSleeping(dispatch_time_t deadline);

  void retain() { references_.fetch_add(1, std::memory_order_relaxed); }
  void release() {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

 private:
  static constexpr int64_t withOneSleeperMore(int64_t word) { return (word | INT64_MIN) + oneSleeper; }
  static constexpr int64_t withOneSleeperLess(int64_t word) {
    const int64_t rest = word - oneSleeper;
    return rest < INT64_MIN + oneSleeper ? rest - INT64_MIN : rest;  // the last one takes the sign away
  }

  bool spinFor(uint64_t nanoseconds, dispatch_time_t deadline);
  bool enterSleepersUnlessTaken();
  bool takeAsSleeper();
  void leaveSleepers();
  bool sleepUntil(dispatch_time_t deadline);

  std::atomic<uint32_t> references_{1};
  SpinHabit habit_;
};

/// The half of the word that the kernel compares with zero.
uint32_t* sleepingPlace(DispatchSemaphore* semaphore) {
  static_assert(sizeof(DispatchSemaphore) == 2 * sizeof(uint32_t) && std::endian::native == std::endian::little);
  return reinterpret_cast<uint32_t*>(semaphore);
}

bool Record::takeWhileSpinning(dispatch_time_t deadline) {
  if (!spinningCanHelp()) return false;
  const bool taken = spinFor(habit_.nanoseconds(), deadline);
  habit_.learn(taken ? SpinHabit::Paid : SpinHabit::InVain);
  return taken;
}

/// Looks ever less often: each look takes the line of the cache away from the thread that is about to signal.
bool Record::spinFor(uint64_t nanoseconds, dispatch_time_t deadline) {
  if (nanoseconds == 0) return false;
  const uint64_t end = std::min(monotonicNow() + nanoseconds, deadline);
  for (int pauses = 1;; pauses = std::min(2 * pauses, mostPauses)) {
    if (hasCount(word_.load(std::memory_order_relaxed)) && takeNow()) return true;
    for (int i = 0; i < pauses; ++i) pauseProcessor();
    if (pauses == mostPauses && monotonicNow() >= end) return false;
  }
}

bool Record::takeAfterSleeping(dispatch_time_t deadline) {
  if (!enterSleepersUnlessTaken()) return true;
  while (!takeAsSleeper()) {
    if (sleepUntil(deadline)) continue;
    leaveSleepers();
    return takeNow();
  }
  return true;
}

bool Record::enterSleepersUnlessTaken() {
  while (!takeNow()) {
    int64_t seen = word_.load(std::memory_order_relaxed);
    if (!hasCount(seen) && word_.compare_exchange_strong(seen, withOneSleeperMore(seen), std::memory_order_relaxed))
      return true;
  }
  return false;
}

/// Also ends this thread's being a sleeper, where it answers true.
bool Record::takeAsSleeper() {
  int64_t seen = word_.load(std::memory_order_relaxed);
  while (hasCount(seen)) {
    if (word_.compare_exchange_weak(seen, withOneSleeperLess(seen - 1), std::memory_order_acquire,
                                    std::memory_order_relaxed))
      return true;
  }
  return false;
}

void Record::leaveSleepers() {
  int64_t seen = word_.load(std::memory_order_relaxed);
  while (!word_.compare_exchange_weak(seen, withOneSleeperLess(seen), std::memory_order_relaxed)) {}
}

/// False when the deadline came; true when something else ended the sleep, perhaps nothing.
bool Record::sleepUntil(dispatch_time_t deadline) {
  const timespec time{static_cast<time_t>(deadline / nanosecondsPerSecond),
                      static_cast<long>(deadline % nanosecondsPerSecond)};
  const long result = syscall(SYS_futex, sleepingPlace(this), FUTEX_WAIT_BITSET_PRIVATE, uint32_t{0},
                              isForEver(deadline) ? nullptr : &time, nullptr, FUTEX_BITSET_MATCH_ANY);
  return result == 0 || errno != ETIMEDOUT;
}

}  // namespace

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds) {
  if (isForEver(when)) return DISPATCH_TIME_FOREVER;
  const auto start = static_cast<int64_t>(when == DISPATCH_TIME_NOW ? monotonicNow() : when);
  if (nanoseconds > INT64_MAX - start) return DISPATCH_TIME_FOREVER;
  return static_cast<uint64_t>(std::max<int64_t>(start + nanoseconds, 1));
}

dispatch_semaphore_t dispatch_semaphore_create(int64_t count) {
  return count < 0 ? nullptr : new (std::nothrow) Record(count);
}
void dispatch_retain(dispatch_semaphore_t semaphore) { Record::of(semaphore).retain(); }
void dispatch_release(dispatch_semaphore_t semaphore) { Record::of(semaphore).release(); }

bool DispatchSemaphore::takeLater(dispatch_time_t deadline) {
  if (isPast(deadline)) return false;
  Record& record = Record::of(this);
  return record.takeWhileSpinning(deadline) || record.takeAfterSleeping(deadline);
}

/// The memory may be gone by now. The kernel is only given the address; at worst it wakes a stranger, who looks at its
/// own word and sleeps again.
bool DispatchSemaphore::wakeOne() { return syscall(SYS_futex, sleepingPlace(this), FUTEX_WAKE_PRIVATE, 1) > 0; }

}  // namespace quoll::inline v1
