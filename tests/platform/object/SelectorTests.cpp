// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Selector.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "QuollFoundation/platform/object/Class.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

static_assert("plus:"_sel == "plus:"_sel && "plus:"_sel != "plus"_sel);
static_assert("a:b:c:"_sel.argumentCount() == 3 && "value"_sel.argumentCount() == 0);
static_assert(!Selector() && Selector().name().empty() && Selector() == Selector() && Selector() != "x"_sel);
static_assert("setTitle:"_sel.name() == "setTitle:");

TEST(Selector, IsEqualByNameHoweverItWasMade) {
  const std::string name = std::string("pl") + "us:";
  const Selector made = registerSelector(name);
  EXPECT_TRUE(made == "plus:"_sel && "plus:"_sel == made);
  EXPECT_EQ(made.hash(), ("plus:"_sel).hash());
  EXPECT_FALSE(made == "value"_sel);
  EXPECT_EQ(send<int64_t>(Counter::initWithValue(1), made, 2), 3);
}

TEST(Selector, RegisteringTwiceGivesTheSameRecord) {
  const Selector first = registerSelector("madeAtRunTime:");
  EXPECT_EQ(registerSelector(std::string("madeAtRunTime:")).record(), first.record());
  EXPECT_EQ(selectorIfRegistered("madeAtRunTime:").record(), first.record());
}

TEST(Selector, LookingOneUpRegistersNothing) {
  EXPECT_FALSE(selectorIfRegistered("nobodyHasThis:"));
  EXPECT_FALSE(selectorIfRegistered("nobodyHasThis:"));
  const Selector literal = "onlyWrittenDown:"_sel;
  EXPECT_EQ(literal.argumentCount(), 1U);
  EXPECT_FALSE(selectorIfRegistered("onlyWrittenDown:"));
}

TEST(Selector, OfALibraryClassThatNobodyTouchedIsKnown) {
  EXPECT_TRUE(selectorIfRegistered("methodReturnLength"));
  EXPECT_TRUE(selectorIfRegistered("countByEnumeratingWithState:objects:count:"));
}

TEST(Selector, OfAClassAndOfAGroupIsKnownOnceTheyAre) {
  Counter::classObject();
  EXPECT_TRUE(selectorIfRegistered("counterWithValue:"));
}

TEST(Selector, NamesWithStrangeUnitsAreKept) {
  const std::string_view name("with\0zero\xC3\xA9", 11);
  const Selector made = registerSelector(name);
  EXPECT_EQ(made.name(), name);
  EXPECT_TRUE(registerSelector("") == registerSelector(""));
}

TEST(Selector, IsRegisteredByManyThreads) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 200; ++i) {
        const std::string name = "threaded" + std::to_string(i) + ":";
        EXPECT_EQ(registerSelector(name).name(), name);
        EXPECT_TRUE(selectorIfRegistered(name));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}
