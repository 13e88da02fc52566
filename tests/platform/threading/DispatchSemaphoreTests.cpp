// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/threading/DispatchSemaphore.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "tests/support/WatchedThread.h"

namespace {

using namespace std::chrono_literals;
using quoll::dispatch_release;
using quoll::dispatch_semaphore_create;
using quoll::dispatch_semaphore_signal;
using quoll::dispatch_semaphore_t;
using quoll::dispatch_semaphore_wait;
using quoll::dispatch_time;
using quoll::DISPATCH_TIME_FOREVER;
using quoll::DISPATCH_TIME_NOW;
using quoll::testsupport::WatchedThread;

constexpr uint64_t largestSigned = INT64_MAX;
constexpr int64_t oneSecond = 1'000'000'000;

struct Released {
  void operator()(dispatch_semaphore_t semaphore) const { dispatch_release(semaphore); }
};
using Semaphore = std::unique_ptr<quoll::DispatchSemaphore, Released>;

Semaphore semaphoreOf(int64_t count) { return Semaphore(dispatch_semaphore_create(count)); }
bool takesNow(const Semaphore& semaphore) { return dispatch_semaphore_wait(semaphore.get(), DISPATCH_TIME_NOW) == 0; }
void wait(const Semaphore& semaphore) { EXPECT_EQ(dispatch_semaphore_wait(semaphore.get(), DISPATCH_TIME_FOREVER), 0); }
int64_t signal(const Semaphore& semaphore) { return dispatch_semaphore_signal(semaphore.get()); }
bool sleepsIn(const WatchedThread& thread, const Semaphore& semaphore) { return thread.sleepsOn(semaphore.get()); }

std::chrono::nanoseconds processorTimeOfThread() {
  timespec used{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
  return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

TEST(DispatchSemaphore, AWorkerSaysThatItIsDone) {
  bool done = false;
  quoll::dispatch_semaphore_t loaded = quoll::dispatch_semaphore_create(0);
  std::jthread worker([&] {
    done = true;
    quoll::dispatch_semaphore_signal(loaded);
  });
  EXPECT_EQ(quoll::dispatch_semaphore_wait(loaded, quoll::dispatch_time(quoll::DISPATCH_TIME_NOW, 60 * oneSecond)), 0);
  EXPECT_TRUE(done);
  quoll::dispatch_release(loaded);
}

TEST(DispatchSemaphore, NegativeCountsGiveNone) {
  EXPECT_EQ(dispatch_semaphore_create(-1), nullptr);
  EXPECT_EQ(dispatch_semaphore_create(INT64_MIN), nullptr);
}

TEST(DispatchSemaphore, TheCountIsTakenOneByOne) {
  const Semaphore semaphore = semaphoreOf(3);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(takesNow(semaphore));
  EXPECT_FALSE(takesNow(semaphore));
  EXPECT_EQ(signal(semaphore), 0);
  EXPECT_EQ(signal(semaphore), 0);
  wait(semaphore);
  EXPECT_TRUE(takesNow(semaphore));
  EXPECT_FALSE(takesNow(semaphore));
}

TEST(DispatchSemaphore, TheLargestCountSurvivesSignals) {
  const Semaphore semaphore = semaphoreOf(INT64_MAX);
  EXPECT_EQ(signal(semaphore), 0);
  EXPECT_EQ(signal(semaphore), 0);
  for (int i = 0; i < 1000; ++i) ASSERT_TRUE(takesNow(semaphore));
  EXPECT_EQ(signal(semaphore), 0);
  EXPECT_TRUE(takesNow(semaphore));
}

TEST(DispatchSemaphore, CountsBeyondThirtyTwoBitsAreCounts) {
  for (const int64_t count :
       {int64_t{1} << 31, int64_t{1} << 32, int64_t{1} << 40, int64_t{1} << 41, int64_t{1} << 62}) {
    const Semaphore semaphore = semaphoreOf(count);
    EXPECT_TRUE(takesNow(semaphore)) << count;
    EXPECT_EQ(signal(semaphore), 0) << count;
    EXPECT_TRUE(takesNow(semaphore)) << count;
  }
}

TEST(DispatchSemaphore, ADeadlineThatIsPastStillTakesACountThatIsThere) {
  const Semaphore semaphore = semaphoreOf(0);
  const auto past = {dispatch_time(DISPATCH_TIME_NOW, 0), dispatch_time(DISPATCH_TIME_NOW, -oneSecond),
                     dispatch_time(DISPATCH_TIME_NOW, INT64_MIN), DISPATCH_TIME_NOW};
  for (const quoll::dispatch_time_t deadline : past) {
    EXPECT_NE(dispatch_semaphore_wait(semaphore.get(), deadline), 0);
    signal(semaphore);
    EXPECT_EQ(dispatch_semaphore_wait(semaphore.get(), deadline), 0);
  }
}

TEST(DispatchSemaphore, ADeadlineEndsTheWaitAndNotBefore) {
  const Semaphore semaphore = semaphoreOf(0);
  for (const auto limit : {0us, 1us, 50us, 20'000us}) {
    const auto began = std::chrono::steady_clock::now();
    const auto deadline = dispatch_time(DISPATCH_TIME_NOW, std::chrono::nanoseconds(limit).count());
    EXPECT_NE(dispatch_semaphore_wait(semaphore.get(), deadline), 0);
    EXPECT_GE(std::chrono::steady_clock::now() - began, limit);
  }
  EXPECT_EQ(signal(semaphore), 0);  // none of them is thought to wait still
  EXPECT_TRUE(takesNow(semaphore));
}

TEST(DispatchSemaphore, SignalTellsWhetherItWokeASleepingThread) {
  const Semaphore semaphore = semaphoreOf(0);
  EXPECT_EQ(signal(semaphore), 0);
  EXPECT_TRUE(takesNow(semaphore));
  WatchedThread waiter([&] { wait(semaphore); });
  ASSERT_TRUE(sleepsIn(waiter, semaphore));
  EXPECT_NE(signal(semaphore), 0);
  waiter.join();
  EXPECT_EQ(signal(semaphore), 0);
}

TEST(DispatchSemaphore, OneSignalLetsOneOfTwoSleepersGo) {
  const Semaphore semaphore = semaphoreOf(0);
  std::atomic<int> returned{0};
  const auto body = [&] {
    wait(semaphore);
    ++returned;
  };
  WatchedThread first(body);
  WatchedThread second(body);
  ASSERT_TRUE(sleepsIn(first, semaphore) && sleepsIn(second, semaphore));
  EXPECT_NE(signal(semaphore), 0);
  while (returned == 0) sched_yield();
  EXPECT_FALSE(takesNow(semaphore));
  EXPECT_EQ(returned, 1);
  EXPECT_NE(signal(semaphore), 0);
  first.join();
  second.join();
  EXPECT_EQ(returned, 2);
}

TEST(DispatchSemaphore, ACountMayBeTakenBeforeTheWokenThreadGetsIt) {
  const Semaphore semaphore = semaphoreOf(0);
  int overtaken = 0;
  for (int round = 0; round < 100; ++round) {
    WatchedThread waiter([&] { wait(semaphore); });
    ASSERT_TRUE(sleepsIn(waiter, semaphore));
    EXPECT_NE(signal(semaphore), 0);
    if (!takesNow(semaphore)) continue;
    ++overtaken;  // the waiter sleeps on, and gets the next
    signal(semaphore);
  }
  EXPECT_FALSE(takesNow(semaphore));
  RecordProperty("overtaken", overtaken);
}

TEST(DispatchSemaphore, ASleeperWithADeadlineTakesACountThatComesInTime) {
  const Semaphore semaphore = semaphoreOf(0);
  int64_t result = -1;
  WatchedThread waiter(
      [&] { result = dispatch_semaphore_wait(semaphore.get(), dispatch_time(DISPATCH_TIME_NOW, 600 * oneSecond)); });
  ASSERT_TRUE(sleepsIn(waiter, semaphore));
  EXPECT_NE(signal(semaphore), 0);
  waiter.join();
  EXPECT_EQ(result, 0);
}

TEST(DispatchSemaphore, DeadlinesTheClockCannotReachAreForEver) {
  for (const uint64_t deadline : {DISPATCH_TIME_FOREVER, largestSigned, largestSigned + 1, DISPATCH_TIME_FOREVER - 1}) {
    const Semaphore semaphore = semaphoreOf(0);
    int64_t result = -1;
    WatchedThread waiter([&] { result = dispatch_semaphore_wait(semaphore.get(), deadline); });
    ASSERT_TRUE(sleepsIn(waiter, semaphore)) << deadline;
    EXPECT_NE(signal(semaphore), 0) << deadline;
    waiter.join();
    EXPECT_EQ(result, 0) << deadline;
  }
}

std::atomic<int> handled{0};
void countSignal(int) { ++handled; }

class DispatchSemaphoreInterrupted : public ::testing::TestWithParam<uint64_t> {
 protected:
  void SetUp() override {
    struct sigaction interrupting{};
    interrupting.sa_handler = countSignal;  // without SA_RESTART, so the sleep ends
    sigaction(SIGUSR1, &interrupting, &before_);
    handled = 0;
  }
  void TearDown() override { sigaction(SIGUSR1, &before_, nullptr); }

 private:
  struct sigaction before_{};
};

TEST_P(DispatchSemaphoreInterrupted, WaitsOnAfterASignalHandler) {
  const Semaphore semaphore = semaphoreOf(0);
  std::atomic<bool> returned{false};
  WatchedThread waiter([&] {
    EXPECT_EQ(dispatch_semaphore_wait(semaphore.get(), GetParam()), 0);
    returned = true;
  });
  for (int times = 1; times <= 3; ++times) {
    ASSERT_TRUE(sleepsIn(waiter, semaphore));
    pthread_kill(waiter.handle(), SIGUSR1);
    while (handled < times) sched_yield();
  }
  ASSERT_TRUE(sleepsIn(waiter, semaphore));
  EXPECT_FALSE(returned);
  EXPECT_NE(signal(semaphore), 0);
}

INSTANTIATE_TEST_SUITE_P(DispatchSemaphore, DispatchSemaphoreInterrupted,
                         ::testing::Values(DISPATCH_TIME_FOREVER, largestSigned - 1), [](const auto& info) {
                           return info.param == DISPATCH_TIME_FOREVER ? "ForEver" : "WithADeadline";
                         });

TEST(DispatchSemaphore, AnIdleWaiterUsesNoProcessorTime) {
  const Semaphore semaphore = semaphoreOf(0);
  const auto before = processorTimeOfThread();
  EXPECT_NE(dispatch_semaphore_wait(semaphore.get(), dispatch_time(DISPATCH_TIME_NOW, oneSecond / 2)), 0);
  EXPECT_LT(processorTimeOfThread() - before, 20ms);
}

TEST(DispatchSemaphore, LivesUntilItsLastReferenceIsReleased) {
  dispatch_semaphore_t semaphore = dispatch_semaphore_create(1);
  quoll::dispatch_retain(semaphore);
  dispatch_release(semaphore);
  EXPECT_EQ(dispatch_semaphore_wait(semaphore, DISPATCH_TIME_NOW), 0);
  EXPECT_EQ(dispatch_semaphore_signal(semaphore), 0);
  dispatch_release(semaphore);
}

TEST(DispatchSemaphore, WhoTookACountMayReleaseWhileTheSignalReturns) {
  for (int round = 0; round < 2000; ++round) {
    dispatch_semaphore_t done = dispatch_semaphore_create(0);
    std::thread worker([done] { dispatch_semaphore_signal(done); });
    EXPECT_EQ(dispatch_semaphore_wait(done, DISPATCH_TIME_FOREVER), 0);
    dispatch_release(done);
    worker.join();
  }
}

TEST(DispatchSemaphore, WhatWasWrittenBeforeASignalIsSeenAfterTheWait) {
  const Semaphore go = semaphoreOf(0);
  const Semaphore back = semaphoreOf(0);
  constexpr int rounds = 20'000;
  int plain = 0;  // not atomic: the semaphores alone order its accesses
  std::jthread other([&] {
    for (int i = 0; i < rounds; ++i) {
      wait(go);
      ++plain;
      signal(back);
    }
  });
  for (int i = 0; i < rounds; ++i) {
    ++plain;
    signal(go);
    wait(back);
    ASSERT_EQ(plain, 2 * (i + 1));
  }
}

TEST(DispatchSemaphore, ACountOfOneExcludesTheOthers) {
  const Semaphore guard = semaphoreOf(1);
  constexpr int rounds = 20'000;
  int plain = 0;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < rounds; ++k) {
          wait(guard);
          ++plain;
          signal(guard);
        }
      });
    }
  }
  EXPECT_EQ(plain, 4 * rounds);
  EXPECT_TRUE(takesNow(guard));
  EXPECT_FALSE(takesNow(guard));
}

TEST(DispatchSemaphore, NoSignalIsLostAmongManyWaiters) {
  const Semaphore semaphore = semaphoreOf(0);
  constexpr int rounds = 20'000;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 3; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < rounds; ++k) wait(semaphore);
      });
      threads.emplace_back([&] {
        for (int k = 0; k < rounds; ++k) signal(semaphore);
      });
    }
  }  // ends only when each wait found its count
  EXPECT_FALSE(takesNow(semaphore));
}

TEST(DispatchSemaphore, WaitersThatGiveUpTakeNothingWithThem) {
  const Semaphore semaphore = semaphoreOf(0);
  constexpr int signals = 20'000;
  std::atomic<int> taken{0};
  {
    std::vector<std::jthread> threads;
    for (const int64_t limit : {0, 1'000, 30'000, 200'000}) {
      threads.emplace_back([&, limit] {
        while (taken < signals) {
          if (dispatch_semaphore_wait(semaphore.get(), dispatch_time(DISPATCH_TIME_NOW, limit)) == 0) ++taken;
        }
      });
    }
    threads.emplace_back([&] {
      for (int i = 0; i < signals; ++i) {
        signal(semaphore);
        if (i % 16 == 0) sched_yield();
      }
    });
  }
  EXPECT_EQ(taken, signals);
  EXPECT_FALSE(takesNow(semaphore));
  EXPECT_EQ(signal(semaphore), 0);
}

// Clients are compiled with the meaning of the word, and a sleeper left over would make every signal a call of the
// kernel.
TEST(DispatchSemaphore, TheWordIsTheCountOnceNobodySleeps) {
  const auto wordOf = [](const Semaphore& semaphore) {
    return std::atomic_ref(*reinterpret_cast<int64_t*>(semaphore.get())).load();
  };
  const Semaphore semaphore = semaphoreOf(0);
  EXPECT_NE(dispatch_semaphore_wait(semaphore.get(), dispatch_time(DISPATCH_TIME_NOW, oneSecond / 1000)), 0);
  EXPECT_EQ(wordOf(semaphore), 0);
  {
    WatchedThread first([&] { wait(semaphore); });
    WatchedThread second([&] { wait(semaphore); });
    ASSERT_TRUE(sleepsIn(first, semaphore) && sleepsIn(second, semaphore));
    EXPECT_LT(wordOf(semaphore), 0);
    for (int i = 0; i < 5; ++i) signal(semaphore);
  }
  EXPECT_EQ(wordOf(semaphore), 3);
}

TEST(DispatchTime, IsCountedFromTheMonotonicClock) {
  const auto earliest = std::chrono::steady_clock::now().time_since_epoch().count();
  const auto moment = static_cast<int64_t>(dispatch_time(DISPATCH_TIME_NOW, 5 * oneSecond)) - 5 * oneSecond;
  const auto latest = std::chrono::steady_clock::now().time_since_epoch().count();
  EXPECT_GE(moment, earliest);
  EXPECT_LE(moment, latest);
}

TEST(DispatchTime, AddsToAMoment) {
  EXPECT_EQ(dispatch_time(1000, 5), 1005u);
  EXPECT_EQ(dispatch_time(1000, -5), 995u);
  EXPECT_EQ(dispatch_time(1000, 0), 1000u);
}

TEST(DispatchTime, IsForEverWhereTheSumIsTooLarge) {
  EXPECT_EQ(dispatch_time(DISPATCH_TIME_NOW, INT64_MAX), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(largestSigned, 1), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(largestSigned - 1, 1), largestSigned);
  EXPECT_EQ(dispatch_time(1000, INT64_MAX), DISPATCH_TIME_FOREVER);
}

TEST(DispatchTime, ForEverStaysForEver) {
  EXPECT_EQ(dispatch_time(DISPATCH_TIME_FOREVER, 0), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(DISPATCH_TIME_FOREVER, -oneSecond), DISPATCH_TIME_FOREVER);
  EXPECT_EQ(dispatch_time(largestSigned + 1, -oneSecond), DISPATCH_TIME_FOREVER);
}

TEST(DispatchTime, BeforeTheClocksStartIsNeverNow) {
  EXPECT_EQ(dispatch_time(1000, -1000), 1u);
  EXPECT_EQ(dispatch_time(1000, INT64_MIN), 1u);
  EXPECT_EQ(dispatch_time(DISPATCH_TIME_NOW, INT64_MIN), 1u);
}

}  // namespace
