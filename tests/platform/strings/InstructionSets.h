// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdint>
#include <string>

namespace quoll::testing {

/// Runs a test once with each instruction set that this machine and this build know, the plain fallback included.
///
///     using LineScanner = EachInstructionSet;
///     INSTANTIATE_TEST_SUITE_P(, LineScanner, instructionSets(), instructionSetName);
///     TEST_P(LineScanner, EndsALineAtALineFeed) { ... }
class EachInstructionSet : public ::testing::TestWithParam<int64_t> {
 protected:
  void SetUp() override { useInstructionSet(GetParam()); }
  void TearDown() override { useInstructionSet(0); }

  /// 0 means the best one.
  static void useInstructionSet(int64_t target) {
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().DeInit();
  }
};

inline auto instructionSets() { return ::testing::ValuesIn(hwy::SupportedAndGeneratedTargets()); }

inline std::string instructionSetName(const ::testing::TestParamInfo<int64_t>& set) {
  return hwy::TargetName(set.param);
}

}  // namespace quoll::testing
