// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <type_traits>

#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"
#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/object/Class.h"

namespace quoll::inline v1 {

/// A counting semaphore as an object.
///
///     Ref<QFSemaphore> loaded = QFSemaphore::initWithValue(0);
///     std::jthread worker([=] { load(); loaded->signal(); });
///     if (!loaded->waitFor(2s)) giveUp();
///
/// The plain functions of `quoll_semaphore.h` tell more: whether a signal woke somebody, and which wait timed out. It
/// is no recursive lock: a thread that waits twice for a count of one, without a signal between, waits for ever.
///
/// Threads: thread-safe. Lifetime: keep a reference while a thread waits.
class QF_EXPORT QFSemaphore : public NSObject {
  QF_CLASS(QFSemaphore, NSObject)
 public:
  /// With that count; null for a negative one.
  template <class T = QFSemaphore> static Ref<T> initWithValue(int64_t value) {
    return cast<T>(initWithValue_ofClass(value, T::classObject()));
  }
  static Ref<QFSemaphore> initWithValue_ofClass(int64_t value, Class* cls);
  /// Refused: sends `doesNotRecognizeSelector:`, which raises. Null where a subclass overrides that.
  template <class T = QFSemaphore> static Ref<T> init() { return cast<T>(init_ofClass(T::classObject())); }
  static Ref<QFSemaphore> init_ofClass(Class* cls);

  /// Takes one from the count as soon as it is above zero.
  void wait() { quoll_semaphore_wait(semaphore()); }
  /// The same for at most so long, without saying which it was: see `waitFor`. More than the largest signed value, or
  /// than the clock can tell, is without limit.
  void waitWithTimeout(uint64_t nanoseconds);
  /// The same; whether it took one. No time, or less, takes a count that is there and never blocks.
  template <class Rep, class Period> [[nodiscard]] bool waitFor(std::chrono::duration<Rep, Period> limit) {
    return waitForNanoseconds(clampedNanoseconds(limit));
  }
  /// Adds one to the count.
  void signal() { quoll_semaphore_signal(semaphore()); }
  /// Waits without limit, calls the block once, signals. For short sections that don't throw: an exception passes
  /// through and leaves the count taken. A `Block` is held while it runs.
  void waitAndSignalUsingBlock(BlockRef<void()> block);

 protected:
  QFSemaphore() = default;
  ~QFSemaphore() override;

  quoll_semaphore_t mSemaphore = nullptr;  ///< Owned; null only until the initializer has run.

 private:
  /// Raises where no initialiser has run.
  quoll_semaphore_t semaphore() const {
    if (!mSemaphore) [[unlikely]]
      raiseUninitialized();
    return mSemaphore;
  }
  [[noreturn]] void raiseUninitialized() const;
  /// What does not fit is for ever, or never.
  template <class Rep, class Period>
  static int64_t clampedNanoseconds(std::chrono::duration<Rep, Period> limit) {
    const double wanted = std::chrono::duration<double, std::nano>(limit).count();
    constexpr double tooMany = 9.2e18;  // just below the largest signed value, where both are exact enough
    if (!(wanted < tooMany)) return INT64_MAX;
    return wanted <= 0 ? 0 : std::chrono::ceil<std::chrono::nanoseconds>(limit).count();
  }
  bool waitForNanoseconds(int64_t nanoseconds);
};

}  // namespace quoll::inline v1
