// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/threading/SpinHabitInternal.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace {

using quoll::SpinHabit;

std::vector<uint64_t> spinsInVain(SpinHabit& habit, uint32_t waits) {
  std::vector<uint64_t> spins;
  for (uint32_t i = 0; i < waits; ++i) {
    spins.push_back(habit.nanoseconds());
    habit.learn(SpinHabit::InVain);
  }
  return spins;
}

TEST(SpinHabit, AnUntriedWaitSpinsForTheFullLength) { EXPECT_EQ(SpinHabit().nanoseconds(), SpinHabit::longest); }

TEST(SpinHabit, ASpinThatPaidIsRepeated) {
  SpinHabit habit;
  for (int i = 0; i < 1000; ++i) {
    habit.learn(SpinHabit::Paid);
    ASSERT_EQ(habit.nanoseconds(), SpinHabit::longest);
  }
}

TEST(SpinHabit, EachSpinInVainHalvesTheNextUntilThereIsNone) {
  SpinHabit habit;
  EXPECT_EQ(spinsInVain(habit, 8), (std::vector<uint64_t>{20'000, 10'000, 5'000, 2'500, 1'250, 625, 0, 0}));
}

TEST(SpinHabit, OneThatPaidDoublesTheNext) {
  SpinHabit habit;
  spinsInVain(habit, 3);
  habit.learn(SpinHabit::Paid);
  EXPECT_EQ(habit.nanoseconds(), 5'000u);
}

TEST(SpinHabit, AfterManyWaitsOneTriesAgain) {
  SpinHabit habit;
  spinsInVain(habit, SpinHabit::triesInARow);
  for (int again = 0; again < 3; ++again) {
    for (const uint64_t spin : spinsInVain(habit, SpinHabit::waitsBetweenTries)) ASSERT_EQ(spin, 0u);
    EXPECT_EQ(spinsInVain(habit, 1).front(), SpinHabit::longest);
  }
}

TEST(SpinHabit, ANewTryThatPaidBringsTheHabitBack) {
  SpinHabit habit;
  spinsInVain(habit, SpinHabit::triesInARow + SpinHabit::waitsBetweenTries);
  habit.learn(SpinHabit::Paid);
  EXPECT_EQ(spinsInVain(habit, 2), (std::vector<uint64_t>{20'000, 10'000}));
}

TEST(SpinHabit, WaitsThatNeverSpinSuccessfullyCostLittle) {
  SpinHabit habit;
  const std::vector<uint64_t> spins = spinsInVain(habit, 10'000);
  EXPECT_LT(std::accumulate(spins.begin(), spins.end(), uint64_t{0}) / spins.size(), 100u);
}

}  // namespace
