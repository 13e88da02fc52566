// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/QFSemaphore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Reflection.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/WatchedThread.h"

namespace {

using namespace std::chrono_literals;
using namespace quoll::literals;
using quoll::Class;
using quoll::NSObject;
using quoll::QFSemaphore;
using quoll::Ref;
using quoll::testsupport::WatchedThread;

// Says which word its waiters sleep on, and lives to tell.
class NamedSemaphore : public QFSemaphore {
  QF_CLASS(NamedSemaphore, QFSemaphore)
 public:
  const void* place() const { return mSemaphore; }
  int mark = 7;
};
Class* NamedSemaphore::classObject() {
  static Class* const cls = quoll::ClassBuilder<NamedSemaphore>("NamedSemaphore").build();
  return cls;
}

// Takes the refusal of `init` lightly.
class QuietSemaphore : public QFSemaphore {
  QF_CLASS(QuietSemaphore, QFSemaphore)
 public:
  void doesNotRecognizeSelector(quoll::Selector) const override { ++asked; }
  static inline std::atomic<int> asked{0};
};
Class* QuietSemaphore::classObject() {
  static Class* const cls = quoll::ClassBuilder<QuietSemaphore>("QuietSemaphore").build();
  return cls;
}

TEST(QFSemaphore, AWorkerSaysThatItIsDone) {
  bool done = false;
  quoll::Ref<quoll::QFSemaphore> loaded = quoll::QFSemaphore::initWithValue(0);
  std::jthread worker([&done, loaded] {
    done = true;
    loaded->signal();
  });
  EXPECT_TRUE(loaded->waitFor(60s));
  EXPECT_TRUE(done);
}

TEST(QFSemaphore, WaitTakesWhatSignalGives) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(2);
  semaphore->wait();
  semaphore->wait();
  EXPECT_FALSE(semaphore->waitFor(0ns));
  semaphore->signal();
  EXPECT_TRUE(semaphore->waitFor(0ns));
}

TEST(QFSemaphore, NegativeCountsGiveNone) {
  EXPECT_EQ(QFSemaphore::initWithValue(-1), nullptr);
  EXPECT_EQ(QFSemaphore::initWithValue<NamedSemaphore>(INT64_MIN), nullptr);
}

TEST(QFSemaphore, PlainInitRaisesAnUnrecognizedSelector) {
  const auto expectRefused = [](auto refused, const std::string& className) {
    try {
      refused();
      ADD_FAILURE() << "did not raise";
    } catch (const quoll::NSException& e) {
      EXPECT_EQ(e.name(), Ref<quoll::NSString>(quoll::NSInvalidArgumentException));
      EXPECT_NE(std::string(e.what()).find("-[" + className + " init]: unrecognized selector"), std::string::npos)
          << e.what();
    }
  };
  expectRefused([] { QFSemaphore::init(); }, "QFSemaphore");
  expectRefused([] { QFSemaphore::init<NamedSemaphore>(); }, "NamedSemaphore");
  expectRefused([] { quoll::made<QFSemaphore>(QFSemaphore::classObject(), "init"_sel); }, "QFSemaphore");
  expectRefused([] { quoll::send<Ref<NSObject>>(QFSemaphore::classObject(), "new"_sel); }, "QFSemaphore");
}

TEST(QFSemaphore, PlainInitYieldsNothingEvenWhereItsRefusalIsOverridden) {
  QuietSemaphore::asked = 0;
  EXPECT_EQ(QFSemaphore::init<QuietSemaphore>(), nullptr);
  EXPECT_EQ(QuietSemaphore::asked, 1);
}

TEST(QFSemaphore, ASubclassIsMadeByTheInheritedInitializer) {
  const Ref<NamedSemaphore> typed = QFSemaphore::initWithValue<NamedSemaphore>(1);
  EXPECT_EQ(typed->mark, 7);
  EXPECT_TRUE(typed->waitFor(0ns));
  const Ref<NamedSemaphore> byName =
      quoll::made<NamedSemaphore>(NamedSemaphore::classObject(), "initWithValue:"_sel, int64_t{1});
  EXPECT_EQ(byName->mark, 7);
  EXPECT_TRUE(byName->waitFor(0ns));
}

TEST(QFSemaphore, DoesAllByName) {
  const Ref<QFSemaphore> semaphore = quoll::made<QFSemaphore>(QFSemaphore::classObject(), "initWithValue:"_sel, 1);
  quoll::send(semaphore, "wait"_sel);
  quoll::send(semaphore, "waitWithTimeout:"_sel, uint64_t{0});
  EXPECT_FALSE(semaphore->waitFor(0ns));
  quoll::send(semaphore, "signal"_sel);
  int calls = 0;
  auto body = [&calls] { ++calls; };
  quoll::send(semaphore, "waitAndSignalUsingBlock:"_sel, quoll::BlockRef<void()>(body));
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(semaphore->waitFor(0ns));
}

TEST(QFSemaphore, IsListedWithItsMethods) {
  EXPECT_EQ(quoll::classNamed("QFSemaphore"), QFSemaphore::classObject());
  std::vector<std::string> listed;
  for (const quoll::MethodDescription& method : quoll::methodsOf(QFSemaphore::classObject())) {
    EXPECT_EQ(method.sign, '-') << method.selector;
    listed.push_back(method.selector);
  }
  EXPECT_THAT(listed, ::testing::UnorderedElementsAre("initWithValue:", "init", "wait", "waitWithTimeout:", "signal",
                                                      "waitAndSignalUsingBlock:"));
}

TEST(QFSemaphore, AnInitializerByNameGivesNoneForNegativeCounts) {
  EXPECT_EQ(quoll::made<QFSemaphore>(QFSemaphore::classObject(), "initWithValue:"_sel, -1), nullptr);
}

TEST(QFSemaphore, AWaiterSleepsUntilASignal) {
  const Ref<NamedSemaphore> semaphore = QFSemaphore::initWithValue<NamedSemaphore>(0);
  std::atomic<bool> returned{false};
  WatchedThread waiter([&] {
    semaphore->wait();
    returned = true;
  });
  ASSERT_TRUE(waiter.sleepsOn(semaphore->place()));
  EXPECT_FALSE(returned);
  semaphore->signal();
}

TEST(QFSemaphore, ATimeoutEndsAWait) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(0);
  const auto began = std::chrono::steady_clock::now();
  semaphore->waitWithTimeout(2'000'000);
  EXPECT_GE(std::chrono::steady_clock::now() - began, 2ms);
  EXPECT_FALSE(semaphore->waitFor(2ms));
  EXPECT_GE(std::chrono::steady_clock::now() - began, 4ms);
}

TEST(QFSemaphore, ATimeoutOfNothingTakesACountThatIsThere) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(1);
  semaphore->waitWithTimeout(0);
  EXPECT_FALSE(semaphore->waitFor(0ns));
  EXPECT_FALSE(semaphore->waitFor(-5s));
  semaphore->signal();
  EXPECT_TRUE(semaphore->waitFor(-5s));
}

TEST(QFSemaphore, TimeoutsAboveTheSignedMaximumAreWithoutLimit) {
  for (const uint64_t timeout : {UINT64_MAX, uint64_t{INT64_MAX} + 1, uint64_t{INT64_MAX}}) {
    const Ref<NamedSemaphore> semaphore = QFSemaphore::initWithValue<NamedSemaphore>(0);
    WatchedThread waiter([&] { semaphore->waitWithTimeout(timeout); });
    ASSERT_TRUE(waiter.sleepsOn(semaphore->place())) << timeout;
    semaphore->signal();
  }
}

template <class Duration> void expectWithoutLimit(Duration limit) {
  const Ref<NamedSemaphore> semaphore = QFSemaphore::initWithValue<NamedSemaphore>(0);
  bool taken = false;
  WatchedThread waiter([&] { taken = semaphore->waitFor(limit); });
  ASSERT_TRUE(waiter.sleepsOn(semaphore->place()));
  semaphore->signal();
  waiter.join();
  EXPECT_TRUE(taken);
}

TEST(QFSemaphore, DurationsBeyondTheClockAreWithoutLimit) {
  expectWithoutLimit(std::chrono::hours::max());
  expectWithoutLimit(std::chrono::nanoseconds::max());
  expectWithoutLimit(std::chrono::duration<double>(1e300));
}

TEST(QFSemaphore, DurationsOfAnyUnitAndKindAreTaken) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(0);
  EXPECT_FALSE(semaphore->waitFor(std::chrono::hours::min()));
  EXPECT_FALSE(semaphore->waitFor(std::chrono::duration<double>(-1e300)));
  EXPECT_FALSE(semaphore->waitFor(std::chrono::duration<float, std::milli>(0.5F)));
  EXPECT_FALSE(semaphore->waitFor(std::chrono::duration<int64_t, std::pico>(1)));
}

TEST(QFSemaphore, TheBlockRunsWithTheCountTaken) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(1);
  int calls = 0;
  semaphore->waitAndSignalUsingBlock([&] {
    ++calls;
    EXPECT_FALSE(semaphore->waitFor(0ns));
  });
  const quoll::Block<void()> block([&] { ++calls; });
  semaphore->waitAndSignalUsingBlock(block);
  EXPECT_EQ(calls, 2);
  EXPECT_TRUE(semaphore->waitFor(0ns));
  EXPECT_FALSE(semaphore->waitFor(0ns));
}

TEST(QFSemaphore, AnExceptionOfTheBlockLeavesTheCountTaken) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(1);
  EXPECT_THROW(semaphore->waitAndSignalUsingBlock([] { throw std::runtime_error("half done"); }), std::runtime_error);
  EXPECT_FALSE(semaphore->waitFor(0ns));
}

TEST(QFSemaphore, RaisesWhereNoInitialiserHasRun) {
  const Ref<QFSemaphore> plain = quoll::make<QFSemaphore>();
  EXPECT_THAT([&] { plain->wait(); }, quoll::raises(quoll::NSInternalInconsistencyException, "initWithValue:"));
  EXPECT_THAT([&] { plain->signal(); }, quoll::raises(quoll::NSInternalInconsistencyException, "initWithValue:"));
  EXPECT_THAT([&] { plain->waitWithTimeout(0); },
              quoll::raises(quoll::NSInternalInconsistencyException, "initWithValue:"));
}

TEST(QFSemaphore, HoldsABlockWhoseBodyDropsTheLastReferenceHoweverItIsCalled) {
  const Ref<QFSemaphore> semaphore = QFSemaphore::initWithValue(1);
  const auto survives = [&](auto call) {
    auto token = std::make_shared<int>(7);
    std::weak_ptr<int> watched = token;
    std::unique_ptr<quoll::Block<void()>> block;
    bool wasHeld = false;
    block = std::make_unique<quoll::Block<void()>>([&block, &wasHeld, token, watched] {
      block.reset();
      wasHeld = !watched.expired();
    });
    token.reset();
    call(*block);
    EXPECT_TRUE(watched.expired());
    return wasHeld;
  };
  EXPECT_TRUE(survives([&](const quoll::Block<void()>& block) { semaphore->waitAndSignalUsingBlock(block); }));
  EXPECT_TRUE(survives(
      [&](const quoll::Block<void()>& block) { quoll::send(semaphore, "waitAndSignalUsingBlock:"_sel, block); }));
  EXPECT_TRUE(survives([&](const quoll::Block<void()>& block) {
    const quoll::BlockRef<void()> borrowed = block;
    semaphore->waitAndSignalUsingBlock(borrowed);
  }));
}

}  // namespace
