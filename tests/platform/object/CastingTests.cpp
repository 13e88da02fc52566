// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Casting.h"

#include <gmock/gmock.h>

#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

static_assert(std::is_same_v<decltype(as<Counter>(std::declval<NSObject*>())), Counter*>);
static_assert(std::is_same_v<decltype(as<Counter>(std::declval<const NSObject*>())), const Counter*>);
static_assert(std::is_same_v<decltype(cast<Counter>(std::declval<Ref<NSObject>>())), Ref<Counter>>);

namespace {

/// One class of many, with a vtable of its own.
template <int> class Variant : public Counter {};

}  // namespace

TEST(Casting, AsGivesTheObjectOrNull) {
  NSObject* object = "text"_ns;
  EXPECT_TRUE(as<NSString>(object) == object);
  EXPECT_TRUE(as<NSObject>(object) == object);
  EXPECT_TRUE(as<Counter>(object) == nullptr);
  EXPECT_TRUE(as<Counter>(static_cast<NSObject*>(nullptr)) == nullptr);
}

TEST(Casting, ASubclassIsItsBaseAndNotTheOtherWayRound) {
  const Ref<NSObject> sub = make<SubCounter>(), base = Counter::initWithValue(1);
  EXPECT_TRUE(as<Counter>(sub) == sub && as<SubCounter>(sub) == sub);
  EXPECT_TRUE(as<SubCounter>(base) == nullptr);
}

TEST(Casting, CastRaisesForAnotherClassNamingBoth) {
  EXPECT_TRUE(cast<NSString>(Ref<NSObject>("text"_ns)) == "text"_ns);
  EXPECT_TRUE(cast<NSString>(Ref<NSObject>()) == nullptr);
  const Ref<NSObject> counter = Counter::initWithValue(1);
  EXPECT_THAT(raised([&] { cast<NSString>(counter); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("Counter is no NSString")));
  EXPECT_THAT(raised([&] { cast<NSString>(Ref<NSObject>(Counter::initWithValue(1))); }), HasSubstr("is no NSString"));
}

TEST(Casting, ATemporaryKeepsItsReference) {
  const Ref<Node> node = as<Node>(Ref<NSObject>(make<Node>()));
  EXPECT_TRUE(node && Node::alive == 1);
  EXPECT_TRUE(as<Counter>(Ref<NSObject>(make<Node>())) == nullptr);
  EXPECT_EQ(Node::alive, 1);
}

TEST(Casting, AProxyIsOfNoClassButItsOwn) {
  const Ref<NSObject> proxy = make<Forwarder>(Counter::initWithValue(1));
  EXPECT_TRUE(as<Counter>(proxy) == nullptr);
  EXPECT_TRUE(as<Forwarder>(proxy) == proxy && as<NSObject>(proxy) == proxy);
}

TEST(Casting, RemembersEightClassesAndKnowsMoreWithoutRemembering) {
  std::vector<Ref<Counter>> counters;
  [&]<int... i>(std::integer_sequence<int, i...>) {
    (counters.push_back(make<Variant<i>>()), ...);
  }(std::make_integer_sequence<int, 24>());
  for (int round = 0; round < 2; ++round) {
    for (const Ref<Counter>& counter : counters) {
      EXPECT_TRUE(as<Counter>(static_cast<NSObject*>(counter)) == counter);
      EXPECT_TRUE(as<NSString>(static_cast<NSObject*>(counter)) == nullptr);
    }
  }
}

TEST(Casting, ManyThreadsAskAtOnce) {
  const Ref<NSObject> counter = Counter::initWithValue(1), sub = make<SubCounter>();
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(as<Counter>(i % 2 ? counter.get() : sub.get()) && !as<SubCounter>(counter.get()));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Casting, IsEqualIsNullSafeAndByValue) {
  const Ref<NSString> made = NSString::stringWithUTF8("x");
  EXPECT_TRUE(isEqual(nullptr, nullptr) && isEqual("x"_ns, made) && isEqual(made, made));
  EXPECT_FALSE(isEqual(nullptr, made) || isEqual(made, nullptr) || isEqual(made, "y"_ns));
}
