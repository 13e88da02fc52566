// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/Enumeration.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

/// A class of one's own that can be walked: the numbers from 1 on.
class Countdown : public NSObject {
  QF_CLASS(Countdown, NSObject)
 public:
  explicit Countdown(int from) : from_(from) {}
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override {
    largestRequest = std::max(largestRequest, count);
    if (!state->state) kept_ = NSMutableArray::array();
    state->itemsPtr = objects;
    uint64_t given = 0;
    for (; given < count && static_cast<int>(state->state) < from_; ++given) {
      const Ref<NSNumber> number = box(from_ - static_cast<int>(state->state++));
      kept_->addObject(number);
      objects[given] = number.get();
    }
    return given;
  }
  uint64_t largestRequest = 0;

 private:
  const int from_;
  Ref<NSMutableArray> kept_;
};
Class* Countdown::classObject() {
  static Class* const cls = ClassBuilder<Countdown>("Countdown").build();
  return cls;
}

}  // namespace

TEST(Enumeration, WalksAClassOfOnesOwnInBatchesOfSixteen) {
  const Ref<Countdown> countdown = make<Countdown>(40);
  const std::vector<NSObject*> elements = walked(countdown);
  ASSERT_EQ(elements.size(), 40u);
  EXPECT_EQ(unbox<int>(elements[0]), 40);
  EXPECT_EQ(unbox<int>(elements[39]), 1);
  EXPECT_EQ(countdown->largestRequest, 16u);
}

TEST(Enumeration, WalksThroughAProxy) {
  EXPECT_EQ(walked(make<Forwarder>(NSArray::arrayWithObjects({1, 2, 3}).get())).size(), 3u);
}

TEST(Enumeration, OfNullCallsNobody) { EXPECT_TRUE(walked(nullptr).empty()); }

TEST(Enumeration, OfAnObjectThatIsNoCollectionRaises) {
  EXPECT_THAT([] { walked("text"_ns); },
              raises(NSInvalidArgumentException, "countByEnumeratingWithState:objects:count:"));
}

TEST(Enumeration, GivesBatchesOfNoMoreThanWasAskedFor) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (int i = 0; i < 40; ++i) array->addObject(box(i));
  for (const Ref<NSObject>& kept : {Ref<NSObject>(array), Ref<NSObject>(array->copy())}) {
    NSFastEnumerationState state{};
    NSObject* buffer[16];
    EXPECT_EQ(kept->countByEnumeratingWithState_objects_count(&state, buffer, 16), 16u);
    EXPECT_EQ(kept->countByEnumeratingWithState_objects_count(&state, buffer, 16), 16u);
    EXPECT_EQ(kept->countByEnumeratingWithState_objects_count(&state, buffer, 16), 8u);
    EXPECT_EQ(unbox<int>(state.itemsPtr[7]), 39);
    EXPECT_EQ(kept->countByEnumeratingWithState_objects_count(&state, buffer, 16), 0u);
  }
}

TEST(Enumeration, NamesTheCollectionThatWasMutated) {
  const Ref<NSMutableArray> array = NSMutableArray::array();
  EXPECT_THAT([&] { objc_enumerationMutation(array); },
              raises(NSGenericException,
                     "*** Collection " + detail::plainDescription(array) + " was mutated while being enumerated."));
}
