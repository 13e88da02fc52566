// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

#include "QuollFoundation/platform/basics/Export.h"

/// The platform's counting semaphore, and the deadlines that its waits take.
///
///     dispatch_semaphore_t loaded = dispatch_semaphore_create(0);
///     std::jthread worker([=] { load(); dispatch_semaphore_signal(loaded); });
///     if (dispatch_semaphore_wait(loaded, dispatch_time(DISPATCH_TIME_NOW, 2'000'000'000)) != 0) giveUp();
///
/// Use `QFSemaphore` where an object is wanted, `quoll_semaphore_...` from C, and a mutex to guard data: a semaphore
/// knows no owner, so a thread that waits twice for a count of one waits for ever.
///
/// A count belongs to whoever takes it first: a thread that was woken may find that another, which came later, was
/// quicker, and then waits on. Waiting threads look at the count for some microseconds before they sleep, as long as
/// that has paid for this semaphore lately; a thread that waits longer uses no processor time. A wait is neither ended
/// by a signal handler nor a point where a thread may be cancelled.
///
/// Threads: thread-safe; what a thread wrote before `signal` is visible to the thread that takes that count.
/// Lifetime: counted. A thread that has taken a count may drop the last reference at once, also while the `signal` that
/// gave that count has not returned.
namespace quoll::inline v1 {

struct DispatchSemaphore;
using dispatch_semaphore_t = DispatchSemaphore*;

/// A moment in nanoseconds of the monotonic clock. 0 is now; what is above the largest signed value is for ever.
using dispatch_time_t = uint64_t;
inline constexpr dispatch_time_t DISPATCH_TIME_NOW = 0;
inline constexpr dispatch_time_t DISPATCH_TIME_FOREVER = UINT64_MAX;

/// The moment `nanoseconds` after `when`; before it, if negative, but never 0. For ever where the sum is too large, and
/// when `when` is for ever.
QF_EXPORT dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);

/// A semaphore with that count and one reference, which is the caller's. Null for a negative count, and when memory is
/// short.
[[nodiscard]] QF_EXPORT dispatch_semaphore_t dispatch_semaphore_create(int64_t count);

/// Takes one from the count, once it is above zero: 0. Non-zero when it was not until the deadline; a deadline that is
/// past still takes a count that is there.
int64_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t deadline);

/// Adds one to the count. Non-zero exactly when that woke a thread which slept in a wait; 0 also when a waiting thread
/// had not fallen asleep yet and will see the count by itself.
int64_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore);

/// One reference more, which a release gives back.
QF_EXPORT void dispatch_retain(dispatch_semaphore_t semaphore);
/// The last release destroys the semaphore; no thread may then be waiting for it.
QF_EXPORT void dispatch_release(dispatch_semaphore_t semaphore);

/// The word that decides everything, changed by single atomic steps. Its short ways are inline and so compiled into
/// clients: what the word means never changes, and only the library makes semaphores, which are larger than this.
///
/// A signal is one addition, and touches nothing of the semaphore after it but the address to wake: the thread that
/// takes the count may be freeing the memory.
///
///     nobody sleeps     |  0 |  count: 63 bits                  |
///     somebody does     |  1 |  sleepers: 23 bits, count: 40    |
///
/// The count has its lowest bit in the same place in both forms, so a signal need not know which it finds, and the sign
/// of what it makes of the word tells whether to wake. The first sleeper enters only at a count of zero, so the second
/// form has room: to leave it, the count would have to rise to 2^40 before one woken thread gets to run. Threads sleep
/// as long as the lower half of the word is zero.
struct DispatchSemaphore {
 public:
  DispatchSemaphore(const DispatchSemaphore&) = delete;
  DispatchSemaphore& operator=(const DispatchSemaphore&) = delete;

  bool takeBefore(dispatch_time_t deadline) { return takeNow() || takeLater(deadline); }
  bool takeNow() {
    int64_t seen = 1;  // a guess, mostly right, that saves reading the word first
    if (word_.compare_exchange_strong(seen, 0, std::memory_order_acquire, std::memory_order_relaxed)) [[likely]]
      return true;
    while (hasCount(seen)) {
      if (word_.compare_exchange_weak(seen, seen - 1, std::memory_order_acquire, std::memory_order_relaxed))
        return true;
    }
    return false;
  }
  /// Whether a sleeping thread was woken.
  bool give() { return hasSleepers(word_.fetch_add(1, std::memory_order_release) + 1) && wakeOne(); }

 protected:
  explicit DispatchSemaphore(int64_t count) : word_(count) {}
  ~DispatchSemaphore() = default;

  static constexpr int64_t oneSleeper = int64_t{1} << 40;

  static constexpr bool hasSleepers(int64_t word) { return word < 0; }
  static constexpr bool hasCount(int64_t word) {
    return hasSleepers(word) ? (word & (oneSleeper - 1)) != 0 : word != 0;
  }

  std::atomic<int64_t> word_;

 private:
  QF_EXPORT bool takeLater(dispatch_time_t deadline);
  QF_EXPORT bool wakeOne();
};

inline int64_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t deadline) {
  return semaphore->takeBefore(deadline) ? 0 : 1;
}
inline int64_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) { return semaphore->give() ? 1 : 0; }

}  // namespace quoll::inline v1
