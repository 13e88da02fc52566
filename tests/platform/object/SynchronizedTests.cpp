// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Synchronized.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

TEST(Synchronized, LetsOneThreadInAtATime) {
  const Ref<Counter> counter = Counter::initWithValue(0);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        const Synchronized lock(counter);
        counter->setValue(counter->value() + 1);  // no atomic: a thread sanitizer would object
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(counter->value(), 20'000);
}

TEST(Synchronized, IsRecursive) {
  const Ref<Counter> counter = Counter::initWithValue(0);
  const Synchronized outer(counter);
  {
    const Synchronized inner(counter);
    counter->setValue(1);
  }
  EXPECT_EQ(counter->value(), 1);
}

TEST(Synchronized, KeepsOthersOutUntilTheOutermostEnds) {
  const Ref<Counter> counter = Counter::initWithValue(0);
  std::thread other;
  {
    const Synchronized outer(counter);
    { const Synchronized inner(counter); }
    std::atomic<bool> started{false};
    other = std::thread([&] {
      started = true;
      const Synchronized lock(counter);
      counter->setValue(counter->value() * 10);
    });
    while (!started) std::this_thread::yield();
    counter->setValue(7);
  }
  other.join();
  EXPECT_EQ(counter->value(), 70);
}

TEST(Synchronized, EndsWhenAnExceptionLeavesIt) {
  const Ref<Counter> counter = Counter::initWithValue(0);
  EXPECT_THROW(
      {
        const Synchronized lock(counter);
        throw std::runtime_error("out");
      },
      std::runtime_error);
  std::thread([&] {
    const Synchronized lock(counter);
    counter->setValue(1);
  }).join();
  EXPECT_EQ(counter->value(), 1);
}

TEST(Synchronized, OnNullDoesNothingAndOnAClassLocksTheClass) {
  const Synchronized none(nullptr);
  const Synchronized ofClass(Counter::classObject());
  const Synchronized ofLiteral("literal"_ns);
  bool entered = false;
  std::thread([&] {
    const Synchronized alsoNone(nullptr);
    entered = true;
  }).join();
  EXPECT_TRUE(entered);
}

TEST(Synchronized, KeepsItsObjectAlive) {
  Ref<Node> node = make<Node>();
  {
    const Synchronized lock(node);
    node = nullptr;
    EXPECT_EQ(Node::alive, 1);
  }
  EXPECT_EQ(Node::alive, 0);
}
