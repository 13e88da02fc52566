// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AtomicRef.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

static_assert(!std::is_copy_constructible_v<AtomicRef<Node>> && !std::is_copy_assignable_v<AtomicWeak<Node>>);
static_assert(sizeof(AtomicRef<Node>) == sizeof(void*) && sizeof(AtomicWeak<Node>) == sizeof(void*));

TEST(AtomicRef, LoadsStoresAndExchanges) {
  const Ref<Node> a = make<Node>(), b = make<Node>();
  AtomicRef<Node> shared(a);
  EXPECT_TRUE(shared.load() == a);
  EXPECT_TRUE(shared.exchange(b) == a && shared.load() == b);
  shared.store(nullptr);
  EXPECT_TRUE(shared.load() == nullptr && shared.exchange(a) == nullptr);
}

TEST(AtomicRef, KeepsItsObjectAndLetsItGo) {
  {
    AtomicRef<Node> shared;
    EXPECT_TRUE(shared.load() == nullptr);
    shared.store(make<Node>());
    shared.store(make<Node>());
    EXPECT_EQ(Node::alive, 1);
  }
  EXPECT_EQ(Node::alive, 0);
}

TEST(AtomicRef, WhatIsReplacedMayUseTheReferenceWhileItDies) {
  AtomicRef<NSObject> shared;
  bool sawTheNew = false;
  shared.store(make<Farewell>([&] { sawTheNew = shared.load() == "new"_ns; }));
  shared.store(Ref<NSString>("new"_ns));
  EXPECT_TRUE(sawTheNew);
}

TEST(AtomicRef, LoadsRaceSafelyWithStores) {
  AtomicRef<Node> shared(make<Node>());
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&] {
      while (!stop) EXPECT_TRUE(shared.load()->next == nullptr);
    });
  }
  threads.emplace_back([&] {
    for (int i = 0; i < 20'000; ++i) shared.store(make<Node>());
    stop = true;
  });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Node::alive, 1);
}

TEST(AtomicRef, ExchangesRaceSafelyAndLoseNothing) {
  AtomicRef<Node> shared(make<Node>());
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&] {
      Ref<Node> mine = make<Node>();
      for (int i = 0; i < 10'000; ++i) {
        mine = shared.exchange(std::move(mine));
        ASSERT_TRUE(mine != nullptr);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Node::alive, 1) << "each thread has dropped the one it held last";
}

TEST(AtomicWeak, IsNullOnceItsObjectIsGone) {
  Ref<Node> node = make<Node>();
  AtomicWeak<Node> weak(node);
  EXPECT_TRUE(weak.load() == node && weak.address() == node.get());
  const void* was = node.get();
  node = nullptr;
  EXPECT_TRUE(weak.load() == nullptr && weak.address() == was);
  weak.store(nullptr);
  EXPECT_EQ(weak.address(), nullptr);
}

TEST(AtomicWeak, OfADyingObjectIsNull) {
  AtomicWeak<NSObject> weak;
  bool wasNull = false;
  Ref<Farewell> farewell = make<Farewell>([&] { wasNull = weak.load() == nullptr; });
  weak.store(farewell);
  farewell = nullptr;
  EXPECT_TRUE(wasNull);
}

TEST(AtomicWeak, LoadsRaceSafelyWithStoresAndDeaths) {
  AtomicWeak<Node> weak;
  std::atomic<bool> stop{false};
  std::atomic<int> found{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&] {
      while (!stop) {
        if (const Ref<Node> node = weak.load()) found += node->next == nullptr;
      }
    });
  }
  threads.emplace_back([&] {
    for (int i = 0; i < 20'000 || found == 0; ++i) {
      const Ref<Node> node = make<Node>();
      weak.store(node);
      if (i % 2) weak.store(nullptr);
    }
    stop = true;
  });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Node::alive, 0);
}
