// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdint>
#include <optional>

namespace quoll::testing {

/// Runs a test once with each instruction set that this machine and this build know, the plain fallback included.
///
///     class LineScanner : public EachInstructionSet {};
///     TEST_F(LineScanner, EndsALineAtALineFeed) { ... }
class EachInstructionSet : public ::testing::Test {
 protected:
  /// Declared anew, so that the runs before the last can be made from here; the last one is the framework's own.
  void TestBody() override = 0;

  void SetUp() override {
    const auto sets = hwy::SupportedAndGeneratedTargets();
    ASSERT_GT(sets.size(), 1u);
    for (size_t i = sets.size() - 1; i > 0 && !HasFatalFailure(); --i) {
      useInstructionSet(sets[i]);
      TestBody();
    }
    useInstructionSet(sets[0]);
  }
  void TearDown() override {
    trace_.reset();
    choose(0);
  }

  void useInstructionSet(int64_t target) {
    trace_.reset();
    trace_.emplace(__FILE__, __LINE__, hwy::TargetName(target));
    choose(target);
  }

 private:
  /// 0 means the best one.
  static void choose(int64_t target) {
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().DeInit();
  }

  std::optional<::testing::ScopedTrace> trace_;
};

}  // namespace quoll::testing
