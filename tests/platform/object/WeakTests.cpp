// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Weak.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

/// Looks at itself through a Weak while it dies.
class Watcher : public NSObject {
 public:
  explicit Watcher(bool& wasNull) : wasNull_(wasNull) {}
  ~Watcher() override { wasNull_ = !Weak<Watcher>(this).lock() && !outside.lock(); }
  Weak<Watcher> outside;

 private:
  bool& wasNull_;
};

/// Gives a Weak of itself away and throws.
class Unborn : public NSObject {
 public:
  explicit Unborn(Weak<NSObject>& weak) {
    weak = Weak<NSObject>(this);
    aliveInside = weak.lock() == this;
    throw 1;
  }
  static inline bool aliveInside = false;
};

}  // namespace

static_assert(sizeof(Weak<Node>) == sizeof(void*));
static_assert(std::is_convertible_v<Ref<Node>, Weak<NSObject>> && std::is_convertible_v<Weak<Node>, Weak<NSObject>>);
static_assert(!std::is_convertible_v<Weak<NSObject>, Weak<Node>>);

TEST(Weak, GivesTheObjectWhileItLivesAndNullAfter) {
  Weak<Node> weak;
  {
    const Ref<Node> node = make<Node>();
    weak = node;
    EXPECT_TRUE(weak.lock() == node);
  }
  EXPECT_TRUE(weak.lock() == nullptr);
  EXPECT_EQ(Node::alive, 0);
}

TEST(Weak, KeepsTheMemoryAndReadsNothingInIt) {
  Weak<Node> weak;
  Ref<Node> node = make<Node>();
  weak = node;
  const Weak<Node> second = weak;
  void* bytes = node.get();
  node = nullptr;
  std::memset(bytes, 0xEE, sizeof(Node));  // an address sanitizer would object if the memory were gone
  EXPECT_TRUE(weak.lock() == nullptr && second.lock() == nullptr);
  EXPECT_EQ(weak.address(), bytes);
}

TEST(Weak, OfADyingObjectIsNull) {
  bool wasNull = false;
  {
    const Ref<Watcher> watcher = make<Watcher>(wasNull);
    watcher->outside = watcher.get();
  }
  EXPECT_TRUE(wasNull);
}

TEST(Weak, IsNullAfterAConstructorThatThrew) {
  Weak<NSObject> weak;
  EXPECT_THROW(make<Unborn>(weak), int);
  EXPECT_TRUE(Unborn::aliveInside);
  EXPECT_TRUE(weak.lock() == nullptr);
}

TEST(Weak, OfALiteralAndOfAClassNeverGoesNull) {
  const Weak<NSString> literal = "text"_ns;
  const Weak<Class> cls = Counter::classObject();
  EXPECT_TRUE(literal.lock() == "text"_ns);
  EXPECT_TRUE(cls.lock() == Counter::classObject());
}

TEST(Weak, OfASubclassServesAsOneOfItsBase) {
  const Ref<Node> node = make<Node>();
  const Weak<NSObject> fromRef = node;
  const Weak<Node> own = node;
  const Weak<NSObject> fromWeak = own;
  EXPECT_TRUE(fromRef.lock() == node && fromWeak.lock() == node);
}

TEST(Weak, OfNullIsNull) {
  EXPECT_TRUE(Weak<Node>().lock() == nullptr);
  EXPECT_TRUE(Weak<Node>(nullptr).lock() == nullptr);
  EXPECT_TRUE(Weak<Node>(Ref<Node>()).lock() == nullptr);
  EXPECT_EQ(Weak<Node>().address(), nullptr);
}

TEST(Weak, IsAssignedToItselfAndMoved) {
  const Ref<Node> node = make<Node>();
  Weak<Node> weak = node;
  Weak<Node>& same = weak;
  weak = same;
  Weak<Node> moved = std::move(weak);
  EXPECT_TRUE(moved.lock() == node && weak.lock() == nullptr);
}

TEST(Weak, LockRacesSafelyWithTheLastRelease) {
  for (int round = 0; round < 100; ++round) {
    Ref<Node> node = make<Node>();
    const Weak<Node> weak = node;
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
      threads.emplace_back([&] {
        ++ready;
        for (int turn = 0; turn < 100; ++turn) {
          if (const Ref<Node> still = weak.lock()) {
            EXPECT_TRUE(still->next == nullptr);
          }
        }
      });
    }
    while (ready < 2) std::this_thread::yield();
    node = nullptr;
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Node::alive, 0);
  }
}
