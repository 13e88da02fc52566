// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/FastEnumeration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

/// Gives its elements by portions, from a place of its own or into the walker's.
class Basket : public NSObject {
  QF_CLASS(Basket, NSObject)
 public:
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override {
    const uint64_t given = std::min<uint64_t>(count, elements.size() - state->state);
    for (uint64_t i = 0; i < given; ++i) objects[i] = elements[state->state + i];
    state->itemsPtr = objects;
    state->mutationsPtr = &mutations;
    state->state += given;
    return given;
  }
  std::vector<Ref<NSObject>> elements;
  uint64_t mutations = 0;
};
Class* Basket::classObject() {
  static Class* const cls = ClassBuilder<Basket>("Basket").build();
  return cls;
}

std::vector<NSObject*> walk(NSObject* collection, uint64_t portion) {
  NSFastEnumerationState state{};
  std::vector<NSObject*> room(portion), seen;
  while (const auto given = send<uint64_t>(collection, "countByEnumeratingWithState:objects:count:"_sel, &state,
                                           room.data(), portion)) {
    std::copy_n(state.itemsPtr, given, std::back_inserter(seen));
  }
  return seen;
}

}  // namespace

TEST(FastEnumeration, WalksACollectionInPortions) {
  const Ref<Basket> basket = make<Basket>();
  for (int64_t i = 0; i < 10; ++i) basket->elements.emplace_back(Counter::initWithValue(i));
  for (const uint64_t portion : {1, 3, 10, 16}) {
    const std::vector<NSObject*> seen = walk(basket, portion);
    EXPECT_TRUE(std::equal(seen.begin(), seen.end(), basket->elements.begin(), basket->elements.end(),
                           [](NSObject* a, const Ref<NSObject>& b) { return b == a; }))
        << portion;
  }
}

TEST(FastEnumeration, WalksAProxyOfACollection) {
  const Ref<Basket> basket = make<Basket>();
  basket->elements.emplace_back("only"_ns);
  EXPECT_EQ(walk(make<Forwarder>(basket), 4).size(), 1U);
}

TEST(FastEnumeration, OfAnEmptyCollectionEndsAtOnce) { EXPECT_TRUE(walk(make<Basket>(), 4).empty()); }

TEST(FastEnumeration, ShowsTheWalkerThatTheCollectionChanged) {
  const Ref<Basket> basket = make<Basket>();
  basket->elements.emplace_back("one"_ns);
  NSFastEnumerationState state{};
  NSObject* room[4];
  basket->countByEnumeratingWithState_objects_count(&state, room, 4);
  const uint64_t before = *state.mutationsPtr;
  ++basket->mutations;
  EXPECT_NE(*state.mutationsPtr, before);
}
