// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Block.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <vector>

#include "tests/support/AllocationCount.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

static_assert(!std::is_default_constructible_v<BlockRef<void()>> && !std::is_copy_assignable_v<BlockRef<void()>>);
static_assert(!std::is_default_constructible_v<Block<void()>> && std::is_copy_assignable_v<Block<void()>>);
static_assert(!std::is_constructible_v<BlockRef<void()>, std::nullptr_t>, "there is always something to call");
static_assert(!std::is_constructible_v<Block<void()>, std::nullptr_t>);
static_assert(std::is_constructible_v<OptionalBlockRef<void()>, std::nullptr_t>);
static_assert(sizeof(BlockRef<void()>) == 2 * sizeof(void*) && sizeof(OptionalBlockRef<void()>) == 2 * sizeof(void*));
static_assert(!std::is_convertible_v<BlockRef<void()>, Block<void()>>, "keeping costs a copy, so it is spelled out");

int run(BlockRef<int(int)> block, int argument) { return block(argument); }
int lengthBy(BlockRef<int(NSObject*)> block, NSObject* object) { return block(object); }
void ignore(BlockRef<void(int)> block) { block(1); }
int twice(int x) { return 2 * x; }
int thrice(int x) noexcept { return 3 * x; }
int lengthOf(NSString* s) { return static_cast<int>(s->length()); }

struct Doubler {
  int operator()(int x) const { return 2 * x; }
};
struct Overloaded {
  int operator()(int) { return 1; }
  int operator()(NSString*) { return 2; }
};

/// Holds a callback that a client replaces at will.
class Bell : public NSObject {
 public:
  explicit Bell(Block<void()> ringing) : onRing(ringing) {}
  void ring() { onRing(); }
  Block<void()> onRing;
};

}  // namespace

TEST(BlockRef, TakesLambdasFunctionObjectsAndFunctions) {
  int seen = 0;
  EXPECT_EQ(run([&](int x) { return seen = x; }, 5), 5);
  EXPECT_EQ(seen, 5);
  EXPECT_EQ(run(Doubler(), 21), 42);
  const Doubler constant;
  EXPECT_EQ(run(constant, 21), 42);
  EXPECT_EQ(run(&twice, 21), 42);
  EXPECT_EQ(run(twice, 21), 42);
  EXPECT_EQ(run(&thrice, 2), 6);
  EXPECT_EQ(run(Overloaded(), 2), 1);
  EXPECT_EQ(run(std::function<int(int)>(twice), 2), 4);
  EXPECT_EQ(run([n = 0](int x) mutable { return n += x; }, 3), 3);
}

TEST(BlockRef, AllocatesNothing) {
  int sum = 0;
  const AllocationCount allocations;
  for (int i = 0; i < 10; ++i) {
    run([&](int x) { return sum += x; }, i);
  }
  EXPECT_EQ(allocations.made(), 0U);
}

TEST(BlockRef, MayIgnoreAResult) {
  int sum = 0;
  ignore([&](int x) { return sum += x; });
  EXPECT_EQ(sum, 1);
}

TEST(BlockRef, TakesAnElementAsItsOwnClassAndChecksIt) {
  EXPECT_EQ(lengthBy([](NSString* s) { return static_cast<int>(s->length()); }, "four"_ns), 4);
  EXPECT_EQ(lengthBy([](const NSString* s) { return static_cast<int>(s->length()); }, "four"_ns), 4);
  EXPECT_EQ(lengthBy(&lengthOf, "four"_ns), 4);
  EXPECT_THAT(raised([] { lengthBy([](Counter*) { return 0; }, "four"_ns); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("is no Counter")));
  EXPECT_EQ(lengthBy([](NSString* s) { return s ? 1 : 0; }, nullptr), 0) << "null is of any class";
}

TEST(BlockRef, OfANullFunctionRaises) {
  int (*none)(int) = nullptr;
  EXPECT_THAT(raised([&] { run(none, 1); }), AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("null")));
  int (*noneOfAString)(NSString*) = nullptr;
  EXPECT_THAT(raised([&] { lengthBy(noneOfAString, "x"_ns); }), HasSubstr("null"));
}

TEST(BlockRef, PassesAnExceptionOfTheBodyOn) {
  EXPECT_THROW(run([](int) -> int { throw 7; }, 1), int);
}

TEST(OptionalBlockRef, KnowsWhetherItIsNull) {
  const auto call = [](OptionalBlockRef<int(int)> block) { return block ? block(2) : -1; };
  EXPECT_EQ(call(nullptr), -1);
  EXPECT_EQ(call([](int x) { return x; }), 2);
  EXPECT_EQ(call(Block<int(int)>(&twice)), 4);
  const OptionalBlockRef<int(int)> none;
  EXPECT_THAT(raised([&] { none(1); }), HasSubstr("null"));
}

TEST(Block, CopiesShareTheCallable) {
  const auto total = std::make_shared<int>(0);
  const Block<int(int)> block = [total, own = 0](int x) mutable { return *total + (own += x); };
  const Block<int(int)> copy = block;
  block(1);
  EXPECT_EQ(copy(2), 3);
  EXPECT_EQ(total.use_count(), 2) << "one callable on the heap";
}

TEST(Block, LetsItsCallableGo) {
  const auto watched = std::make_shared<int>(0);
  {
    const Block<void()> block = [watched] {};
    const Block<void()> copy = block;
    EXPECT_EQ(watched.use_count(), 2);
  }
  EXPECT_EQ(watched.use_count(), 1);
}

TEST(Block, OutlivesTheCallableThatItWasMadeOf) {
  std::vector<Block<int()>> blocks;
  for (int i = 0; i < 3; ++i) {
    const auto body = [i] { return i; };
    blocks.emplace_back(body);
  }
  EXPECT_EQ(blocks[0]() + blocks[2](), 2);
}

TEST(Block, OfAFunctionAndOfAConstCallable) {
  const Block<int(int)> ofFunction = &twice;
  EXPECT_EQ(ofFunction(2), 4);
  const Block<int(int)> ofNoexcept = &thrice;
  EXPECT_EQ(ofNoexcept(2), 6);
  const auto constant = [](int x) { return x + 1; };
  const Block<int(int)> ofConst = constant;
  EXPECT_EQ(ofConst(2), 3);
  const Block<int(NSObject*)> ofElement = &lengthOf;
  EXPECT_EQ(ofElement("four"_ns), 4);
}

TEST(Block, MadeOfABorrowedOneOwnsACopy) {
  const auto keep = [](BlockRef<int(int)> borrowed) { return Block<int(int)>(borrowed); };
  const auto watched = std::make_shared<int>(40);
  const Block<int(int)> kept = keep([watched](int x) { return *watched + x; });
  EXPECT_EQ(kept(2), 42);
  EXPECT_EQ(watched.use_count(), 2);
  EXPECT_EQ(keep(&twice)(2), 4);
  EXPECT_EQ(keep(kept)(3), 43);
}

TEST(Block, RaisesForACallableThatCannotBeCopied) {
  const auto single = [only = std::make_unique<int>(1)](int x) { return *only + x; };
  EXPECT_EQ(run(single, 1), 2) << "borrowing is no copy";
  EXPECT_THAT(raised([&] { Block<int(int)>{BlockRef<int(int)>(single)}; }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("can't be copied")));
}

TEST(Block, SurvivesBeingReplacedByItsOwnBody) {
  const auto rings = std::make_shared<int>(0);
  Ref<Bell> bell = make<Bell>([] {});
  bell->onRing = [rings, raw = bell.get()] {
    raw->onRing = [] {};
    ++*rings;
  };
  bell->ring();
  EXPECT_EQ(*rings, 1);
  EXPECT_EQ(rings.use_count(), 1) << "and is gone afterwards";
}

TEST(Block, SurvivesTheDeathOfItsOwnerInItsOwnBody) {
  const auto rings = std::make_shared<int>(0);
  Ref<Bell> bell = make<Bell>([] {});
  bell->onRing = [rings, &bell] {
    bell = nullptr;
    ++*rings;
  };
  const Ref<Bell> pinned = bell;
  pinned->ring();
  EXPECT_EQ(*rings, 1);
}

TEST(Block, WhatIsReplacedMayCallTheNewOneWhileItDies) {
  int calls = 0;
  Block<void()> block = [] {};
  const Ref<Farewell> farewell = make<Farewell>([&] { block(); });
  block = [farewell] {};
  const_cast<Ref<Farewell>&>(farewell) = nullptr;
  block = [&] { ++calls; };
  EXPECT_EQ(calls, 1);
}

TEST(Block, MovedFromCanStillBeCalled) {
  Block<int(int)> first = &twice;
  const Block<int(int)> second = std::move(first);
  EXPECT_EQ(first(1) + second(1), 4);
}
