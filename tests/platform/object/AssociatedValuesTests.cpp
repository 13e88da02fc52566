// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AssociatedValues.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {
const char key = 0, other = 0;
}

TEST(AssociatedValues, HangOnAnObjectUnderAKey) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  EXPECT_TRUE(associatedValue(counter, &key) == nullptr);
  setAssociatedValue(counter, &key, "value"_ns);
  setAssociatedValue(counter, &other, "other"_ns);
  EXPECT_TRUE(associatedValue(counter, &key) == "value"_ns && associatedValue(counter, &other) == "other"_ns);
  EXPECT_TRUE(associatedValue(Counter::initWithValue(1), &key) == nullptr);
}

TEST(AssociatedValues, AreReplacedAndTakenAway) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  setAssociatedValue(counter, &key, make<Node>());
  const Ref<Node> second = make<Node>();
  setAssociatedValue(counter, &key, second);
  EXPECT_EQ(Node::alive, 1);
  EXPECT_TRUE(associatedValue(counter, &key) == second);
  setAssociatedValue(counter, &key, nullptr);
  EXPECT_TRUE(associatedValue(counter, &key) == nullptr);
  setAssociatedValue(counter, &other, nullptr);
}

TEST(AssociatedValues, DieWithTheObject) {
  Ref<Counter> counter = Counter::initWithValue(1);
  setAssociatedValue(counter, &key, make<Node>());
  counter = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(AssociatedValues, AWeakReferenceKeepsNone) {
  Ref<Counter> counter = Counter::initWithValue(1);
  const Weak<Counter> weak = counter;
  setAssociatedValue(counter, &key, make<Node>());
  counter = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(AssociatedValues, WhatIsReplacedMayAskAndSetWhileItDies) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  bool sawTheNew = false;
  setAssociatedValue(counter, &key, make<Farewell>([&] {
                       sawTheNew = associatedValue(counter, &key) == "new"_ns;
                       setAssociatedValue(counter, &other, "set"_ns);
                     }));
  setAssociatedValue(counter, &key, "new"_ns);
  EXPECT_TRUE(sawTheNew && associatedValue(counter, &other) == "set"_ns);
}

TEST(AssociatedValues, OfNullAndOfAClassAndOfALiteral) {
  setAssociatedValue(nullptr, &key, "value"_ns);
  EXPECT_TRUE(associatedValue(nullptr, &key) == nullptr);
  setAssociatedValue(Counter::classObject(), &key, "of the class"_ns);
  EXPECT_TRUE(associatedValue(Counter::classObject(), &key) == "of the class"_ns);
  setAssociatedValue("literal"_ns, &key, "of the literal"_ns);
  EXPECT_TRUE(associatedValue("literal"_ns, &key) == "of the literal"_ns);
}

TEST(AssociatedValues, AreSetAndReadByManyThreads) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 2000; ++i) {
        setAssociatedValue(counter, &key, make<Node>());
        const Ref<NSObject> seen = associatedValue(counter, &key);
        if (i % 7 == 0) setAssociatedValue(counter, &key, nullptr);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  setAssociatedValue(counter, &key, nullptr);
  EXPECT_EQ(Node::alive, 0);
}
