// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Counting.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/AssociatedValues.h"
#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/LiveObjects.h"
#include "QuollFoundation/platform/object/Synchronized.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using detail::Header;
using detail::headerOf;

namespace {

uint64_t strongCount(const NSObject* object) { return headerOf(object).counts & Header::strongPart; }
uint64_t weakCount(const NSObject* object) { return (headerOf(object).counts & Header::weakPart) / Header::oneWeak; }

/// Hands `this` around while it dies.
class Restless : public NSObject {
 public:
  explicit Restless(int& deaths) : deaths_(deaths) {}
  ~Restless() override {
    ++deaths_;
    Ref<NSObject> self = this;
    Ref<NSObject> again = self;
    self = nullptr;
    const Synchronized lock(again);
    setAssociatedValue(again, &deaths_, "value"_ns);
    const Weak<NSObject> weak = again;
    EXPECT_TRUE(weak.lock() == nullptr);
  }

 private:
  int& deaths_;
};

class Failing : public NSObject {
 public:
  Failing() {
    const Ref<NSObject> self = this;
    setAssociatedValue(self, &alive, make<Node>());  // has a side record by now
    member_ = make<Node>();
    throw 1;
  }

 private:
  static inline int alive = 0;
  Ref<Node> member_;
};

class CountedNumber : public NSNumber {
 public:
  explicit CountedNumber(int& deaths) : deaths_(deaths) {}
  ~CountedNumber() override { ++deaths_; }

 private:
  int& deaths_;
};

constexpr int million = 1'000'000;

}  // namespace

TEST(Counting, AllStrongReferencesHoldOneWeakCount) {
  const Ref<Node> node = make<Node>();
  EXPECT_TRUE(strongCount(node) == 1 && weakCount(node) == 1);
  const Ref<Node> second = node;
  const Weak<Node> weak = node;
  EXPECT_TRUE(strongCount(node) == 2 && weakCount(node) == 2);
}

TEST(Counting, AnObjectCostsOneAllocationAtMost) {
  const AllocationCount allocations;
  const Ref<Node> node = make<Node>();
  const Ref<Node> copy = node;
  const Weak<Node> weak = node;
  EXPECT_LE(allocations.made(), 1U);
}

TEST(Counting, ADestructorThatHandsThisAroundRunsOnce) {
  int deaths = 0;
  make<Restless>(deaths) = nullptr;
  EXPECT_EQ(deaths, 1);
  {
    const Ref<Restless> restless = make<Restless>(deaths);
    const Ref<Restless> shared = restless;
    const Weak<Restless> weak = restless;
  }
  EXPECT_EQ(deaths, 2);
}

TEST(Counting, AConstructorThatThrowsLeavesNothingBehind) {
  EXPECT_THROW(make<Failing>(), int);
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, APlainObjectLetsGoWhatWasAssociatedWithIt) {
  static const int key = 0;
  Ref<NSNumber> number = NSNumber::numberWithInt(12'345);
  setAssociatedValue(number, &key, make<Node>());
  EXPECT_EQ(Node::alive, 1);
  number = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, AWeakReferenceToAPlainObjectIsNullAfterIt) {
  Ref<NSNumber> number = NSNumber::numberWithInt(12'345);
  const Weak<NSNumber> weak = number;
  EXPECT_EQ(weak.lock(), number);
  number = nullptr;
  EXPECT_TRUE(weak.lock() == nullptr);
}

TEST(Counting, ASubclassOfAPlainClassIsDestroyedAsEver) {
  int deaths = 0;
  make<CountedNumber>(deaths) = nullptr;
  EXPECT_EQ(deaths, 1);
}

TEST(Counting, AChainOfAMillionObjectsGoesWithoutADeepStack) {
  Ref<Node> head;
  for (int i = 0; i < million; ++i) {
    Ref<Node> node = make<Node>();
    node->next = std::move(head);
    head = std::move(node);
  }
  EXPECT_EQ(Node::alive, million);
  head = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, AChainThroughSideRecordsGoesWithoutADeepStack) {
  static const int key = 0;
  Ref<Node> head;
  for (int i = 0; i < million / 10; ++i) {
    Ref<Node> node = make<Node>();
    if (i % 3 == 0) setAssociatedValue(node, &key, head);  // linked by the side record alone
    else node->next = head;
    if (i % 5 == 0) setAssociatedValue(node, &million, "text"_ns);
    head = std::move(node);
  }
  head = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, AChainHeldWeaklyAtEachLinkGoesToo) {
  std::vector<Weak<Node>> links;
  Ref<Node> head;
  for (int i = 0; i < 1000; ++i) {
    Ref<Node> node = make<Node>();
    links.emplace_back(node);
    node->next = std::move(head);
    head = std::move(node);
  }
  head = nullptr;
  EXPECT_EQ(Node::alive, 0);
  for (const Weak<Node>& link : links) EXPECT_TRUE(link.lock() == nullptr);
}

TEST(Counting, ADestructorThatRaisesAChainOfItsOwnIsServed) {
  Ref<Farewell> outer = make<Farewell>([] {
    Ref<Node> head;
    for (int i = 0; i < 1000; ++i) {
      Ref<Node> node = make<Node>();
      node->next = std::move(head);
      head = std::move(node);
    }
  });
  outer = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, LiteralsAndClassesAreNeverCounted) {
  NSString* literal = "immortal"_ns;
  const uint64_t before = headerOf(literal).counts;
  std::vector<Ref<NSString>> copies(100, literal);
  std::vector<Weak<NSString>> weak(100, literal);
  EXPECT_EQ(headerOf(literal).counts, before);
  copies.clear();
  weak.clear();
  EXPECT_EQ(headerOf(literal).counts, before);
  Class* cls = Counter::classObject();
  const uint64_t counts = headerOf(cls).counts;
  const Ref<Class> held = cls;
  EXPECT_EQ(headerOf(cls).counts, counts);
}

TEST(Counting, CountsAreRightWithASecondThreadAndAfterIt) {
  const Ref<Node> node = make<Node>();
  {
    const Ref<Node> before = node;
    std::thread([&] { const Ref<Node> there = node; }).join();
  }
  EXPECT_EQ(strongCount(node), 1U);
  const Ref<Node> after = node;
  EXPECT_EQ(strongCount(node), 2U);
}

TEST(Counting, TheLastReferenceMayDieOnAnotherThread) {
  Ref<Node> node = make<Node>();
  std::thread([moved = std::move(node)]() mutable { moved = nullptr; }).join();
  EXPECT_EQ(Node::alive, 0);
}

TEST(Counting, FourThreadsMakeShareWeakenAndDropForASecond) {
  AtomicRef<Node> shared(make<Node>());
  AtomicWeak<Node> seen;
  std::atomic<uint64_t> locked{0};
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(1);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      Weak<Node> weak;
      for (uint64_t i = 0; i < 64 || std::chrono::steady_clock::now() < limit; ++i) {
        Ref<Node> mine = make<Node>();
        mine->next = make<Node>();
        if (i % 3 == 0) shared.store(mine);
        if (i % 5 == static_cast<uint64_t>(t)) seen.store(mine);
        const Ref<Node> now = shared.load();
        if (const Ref<Node> again = weak.lock()) ++locked;
        if (const Ref<Node> again = seen.load()) ++locked;
        weak = now;
        if (i % 16 == 0) setAssociatedValue(now, &locked, now->next);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  shared.store(nullptr);
  EXPECT_GT(locked, 0U);
  EXPECT_EQ(Node::alive, 0);
}
