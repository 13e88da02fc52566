// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/LiveObjects.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

class Tracked : public NSObject {
  QF_CLASS(Tracked, NSObject)
 public:
  Ref<Tracked> next;
};
Class* Tracked::classObject() {
  static Class* const cls = ClassBuilder<Tracked>("Tracked").build();
  return cls;
}

size_t living(const char* cls) {
  const auto counts = liveObjectCounts();
  const auto found = counts.find(cls);
  return found == counts.end() ? 0 : found->second;
}

}  // namespace

TEST(LiveObjects, RecordingMayBeTheFirstThingThatAProgramDoes) {
  const LiveObjectRecording recording;
  const Ref<Tracked> tracked = make<Tracked>();
  EXPECT_EQ(living("Tracked"), 1U);
  EXPECT_EQ(send<Class*>(tracked, "class"_sel), Tracked::classObject());
}

TEST(LiveObjects, AreCountedByClassWhileARecordingStands) {
  const Ref<Tracked> before = make<Tracked>();
  const LiveObjectRecording recording;
  EXPECT_EQ(living("Tracked"), 0U);
  std::vector<Ref<Tracked>> three{make<Tracked>(), make<Tracked>(), make<Tracked>()};
  const Ref<Counter> counter = Counter::initWithValue(1);
  EXPECT_EQ(living("Tracked"), 3U);
  EXPECT_EQ(living("Counter"), 1U);
  three.pop_back();
  EXPECT_EQ(living("Tracked"), 2U);
  three.clear();
  EXPECT_EQ(liveObjectCounts().count("Tracked"), 0U) << "a class without any is left out";
}

TEST(LiveObjects, RecordedOnesAreForgottenAlsoAfterTheRecording) {
  Ref<Tracked> tracked;
  {
    const LiveObjectRecording outer;
    { const LiveObjectRecording inner; }
    tracked = make<Tracked>();
  }
  EXPECT_EQ(living("Tracked"), 1U);
  const Ref<Tracked> unrecorded = make<Tracked>();
  EXPECT_EQ(living("Tracked"), 1U);
  tracked = nullptr;
  EXPECT_EQ(living("Tracked"), 0U);
}

TEST(LiveObjects, AnObjectThatOnlyAWeakReferenceKnowsDoesNotLive) {
  const LiveObjectRecording recording;
  Weak<Tracked> weak;
  {
    const Ref<Tracked> tracked = make<Tracked>();
    weak = tracked;
    EXPECT_EQ(living("Tracked"), 1U);
  }
  EXPECT_EQ(living("Tracked"), 0U);
  EXPECT_TRUE(weak.lock() == nullptr);
}

TEST(LiveObjects, ClassesAndSignaturesAreNoLeak) {
  const size_t classes = living("Class"), signatures = living("NSMethodSignature");
  const LiveObjectRecording recording;
  {
    EXPECT_EQ(make<Kinds>()->methodSignatureForSelector("describe:object:"_sel)->numberOfArguments(), 4U);
    allClasses();
  }
  EXPECT_EQ(living("Class"), classes);
  EXPECT_EQ(living("NSMethodSignature"), signatures);
}

TEST(LiveObjects, AChainThatIsReleasedIsForgotten) {
  const LiveObjectRecording recording;
  Ref<Tracked> head;
  for (int i = 0; i < 1000; ++i) {
    Ref<Tracked> tracked = make<Tracked>();
    tracked->next = std::move(head);
    head = std::move(tracked);
  }
  EXPECT_EQ(living("Tracked"), 1000U);
  head = nullptr;
  EXPECT_EQ(living("Tracked"), 0U);
}

TEST(LiveObjects, AreCountedByManyThreads) {
  const LiveObjectRecording recording;
  AtomicRef<Tracked> shared;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 2000; ++i) {
        const Ref<Tracked> mine = make<Tracked>();
        shared.store(mine);
        if (i % 100 == 0) static_cast<void>(liveObjectCounts());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(living("Tracked"), 1U);
  shared.store(nullptr);
  EXPECT_EQ(living("Tracked"), 0U);
}
