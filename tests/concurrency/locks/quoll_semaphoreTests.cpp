// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include "QuollFoundation/platform/object/Block.h"
#include "tests/support/WatchedThread.h"

namespace {

using namespace std::chrono_literals;
using quoll::quoll_semaphore_create;
using quoll::quoll_semaphore_release;
using quoll::quoll_semaphore_signal;
using quoll::quoll_semaphore_t;
using quoll::quoll_semaphore_timed_wait;
using quoll::quoll_semaphore_wait;
using quoll::quoll_semaphore_wait_signal;
using quoll::quoll_semaphore_wait_signal_f;
using quoll::testsupport::WatchedThread;

static_assert(std::is_same_v<quoll_semaphore_t, quoll::dispatch_semaphore_t>);

class quoll_semaphore : public ::testing::Test {
 protected:
  quoll_semaphore_t holding(int64_t count) {
    semaphores_.emplace_back(quoll_semaphore_create(count), &quoll_semaphore_release);
    return semaphores_.back().get();
  }

 private:
  std::vector<std::unique_ptr<quoll::DispatchSemaphore, void (*)(quoll_semaphore_t)>> semaphores_;
};

bool isTaken(quoll_semaphore_t semaphore) {
  if (quoll_semaphore_timed_wait(semaphore, 0) != 0) return true;
  quoll_semaphore_signal(semaphore);
  return false;
}

TEST_F(quoll_semaphore, LimitsHowManyThreadsGetPast) {
  quoll::quoll_semaphore_t slots = quoll::quoll_semaphore_create(4);
  std::atomic<int> inside{0};
  std::atomic<int> most{0};
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < 500; ++k) {
          quoll::quoll_semaphore_wait(slots);
          const int now = ++inside;
          for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {}
          --inside;
          quoll::quoll_semaphore_signal(slots);
        }
      });
    }
  }
  EXPECT_GE(most, 1);
  EXPECT_LE(most, 4);
  quoll::quoll_semaphore_release(slots);
}

TEST_F(quoll_semaphore, NegativeCountsGiveNone) {
  EXPECT_EQ(quoll_semaphore_create(-1), nullptr);
  EXPECT_EQ(quoll_semaphore_create(INT64_MIN), nullptr);
}

TEST_F(quoll_semaphore, ReleasingNullDoesNothing) { quoll_semaphore_release(nullptr); }

TEST_F(quoll_semaphore, WaitTakesACountAndGivesZero) {
  const quoll_semaphore_t semaphore = holding(1);
  EXPECT_EQ(quoll_semaphore_wait(semaphore), 0);
  EXPECT_TRUE(isTaken(semaphore));
}

TEST_F(quoll_semaphore, ATimedWaitOfNothingIsAPoll) {
  const quoll_semaphore_t semaphore = holding(0);
  for (const int64_t timeout : {int64_t{0}, int64_t{-1}, INT64_MIN}) {
    EXPECT_NE(quoll_semaphore_timed_wait(semaphore, timeout), 0);
    EXPECT_EQ(quoll_semaphore_signal(semaphore), 0);
    EXPECT_EQ(quoll_semaphore_timed_wait(semaphore, timeout), 0);
  }
}

TEST_F(quoll_semaphore, ATimedWaitCountsNanoseconds) {
  const quoll_semaphore_t semaphore = holding(0);
  const auto began = std::chrono::steady_clock::now();
  EXPECT_NE(quoll_semaphore_timed_wait(semaphore, 5'000'000), 0);
  const auto took = std::chrono::steady_clock::now() - began;
  EXPECT_GE(took, 5ms);
  EXPECT_LT(took, 60s);
}

TEST_F(quoll_semaphore, ATimedWaitBeyondTheClockIsWithoutLimit) {
  const quoll_semaphore_t semaphore = holding(0);
  int64_t result = -1;
  WatchedThread waiter([&] { result = quoll_semaphore_timed_wait(semaphore, INT64_MAX); });
  ASSERT_TRUE(waiter.sleepsOn(semaphore));
  EXPECT_NE(quoll_semaphore_signal(semaphore), 0);
  waiter.join();
  EXPECT_EQ(result, 0);
}

TEST_F(quoll_semaphore, SignalTellsWhetherItWokeAThread) {
  const quoll_semaphore_t semaphore = holding(0);
  EXPECT_EQ(quoll_semaphore_signal(semaphore), 0);
  EXPECT_EQ(quoll_semaphore_wait(semaphore), 0);
  WatchedThread waiter([&] { quoll_semaphore_wait(semaphore); });
  ASSERT_TRUE(waiter.sleepsOn(semaphore));
  EXPECT_NE(quoll_semaphore_signal(semaphore), 0);
}

TEST_F(quoll_semaphore, IsNotReentrant) {
  const quoll_semaphore_t semaphore = holding(1);
  WatchedThread thread([&] {
    quoll_semaphore_wait(semaphore);
    quoll_semaphore_wait(semaphore);
  });
  ASSERT_TRUE(thread.sleepsOn(semaphore));
  EXPECT_NE(quoll_semaphore_signal(semaphore), 0);
}

TEST_F(quoll_semaphore, WaitSignalCallsOnceWithTheCountTaken) {
  const quoll_semaphore_t semaphore = holding(1);
  int calls = 0;
  EXPECT_EQ(quoll_semaphore_wait_signal(semaphore,
                                        [&] {
                                          ++calls;
                                          EXPECT_TRUE(isTaken(semaphore));
                                        }),
            0);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(quoll_semaphore_timed_wait(semaphore, 0), 0);
  EXPECT_NE(quoll_semaphore_timed_wait(semaphore, 0), 0);
}

TEST_F(quoll_semaphore, WaitSignalWaitsForACount) {
  const quoll_semaphore_t semaphore = holding(0);
  std::atomic<bool> called{false};
  WatchedThread waiter([&] { quoll_semaphore_wait_signal(semaphore, [&] { called = true; }); });
  ASSERT_TRUE(waiter.sleepsOn(semaphore));
  EXPECT_FALSE(called);
  quoll_semaphore_signal(semaphore);
  waiter.join();
  EXPECT_TRUE(called);
}

TEST_F(quoll_semaphore, WaitSignalGivesWhatItsSignalGives) {
  const quoll_semaphore_t semaphore = holding(1);
  std::unique_ptr<WatchedThread> waiter;
  const int64_t result = quoll_semaphore_wait_signal(semaphore, [&] {
    waiter = std::make_unique<WatchedThread>([&] { quoll_semaphore_wait(semaphore); });
    EXPECT_TRUE(waiter->sleepsOn(semaphore));
  });
  EXPECT_NE(result, 0);
}

TEST_F(quoll_semaphore, WaitSignalIgnoresAResultAndTakesWhatCannotBeCopied) {
  const quoll_semaphore_t semaphore = holding(1);
  int sum = 0;
  quoll_semaphore_wait_signal(semaphore, [&sum, part = std::make_unique<int>(7)] { return sum += *part; });
  EXPECT_EQ(sum, 7);
}

TEST_F(quoll_semaphore, AnExceptionLeavesItTaken) {
  const quoll_semaphore_t semaphore = holding(1);
  EXPECT_THROW(quoll_semaphore_wait_signal(semaphore, [] { throw std::runtime_error("half done"); }),
               std::runtime_error);
  EXPECT_TRUE(isTaken(semaphore));
  quoll_semaphore_signal(semaphore);
  EXPECT_THROW(quoll_semaphore_wait_signal_f(
                   semaphore, [](void*) { throw std::runtime_error("half done"); }, nullptr),
               std::runtime_error);
  EXPECT_TRUE(isTaken(semaphore));
}

TEST_F(quoll_semaphore, ABlockIsHeldWhileItRunsAndLetGoBeforeTheSignal) {
  using Block = quoll::Block<void()>;
  const quoll_semaphore_t semaphore = holding(1);
  // Says, when it dies, whether the semaphore was still taken.
  struct Captured {
    quoll_semaphore_t semaphore;
    bool* diedTaken;
    ~Captured() { *diedTaken = isTaken(semaphore); }
  };
  bool diedTaken = false;
  bool alive = false;
  Block block([] {});
  block = Block([&, captured = std::shared_ptr<Captured>(new Captured{semaphore, &diedTaken}), still = &alive] {
    const std::weak_ptr<Captured> watched = captured;
    bool* const answer = still;
    block = Block([] {});  // the last of the caller's references
    *answer = !watched.expired();
  });
  quoll_semaphore_wait_signal(semaphore, block);
  EXPECT_TRUE(alive);
  EXPECT_TRUE(diedTaken);
  EXPECT_FALSE(isTaken(semaphore));
}

TEST_F(quoll_semaphore, TheFunctionFormPassesItsContext) {
  const quoll_semaphore_t semaphore = holding(1);
  int calls = 0;
  EXPECT_EQ(quoll_semaphore_wait_signal_f(semaphore, [](void* context) { ++*static_cast<int*>(context); }, &calls), 0);
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(isTaken(semaphore));
}

TEST_F(quoll_semaphore, WaitSignalExcludesOtherThreads) {
  const quoll_semaphore_t semaphore = holding(1);
  int plain = 0;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < 10'000; ++k) quoll_semaphore_wait_signal(semaphore, [&] { ++plain; });
      });
    }
  }
  EXPECT_EQ(plain, 40'000);
}

}  // namespace
