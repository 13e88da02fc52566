// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HexTextInternal.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::ExactSpan;

class HexTextKernel : public quoll::testing::EachInstructionSet {};

std::string modelHexText(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof(digits), "%02X ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    text += digits;
  }
  return text;
}

TEST_F(HexTextKernel, WritesEachByteAtEachPlaceAndNothingBeyond) {
  std::string all(256 + 300, '\0');
  for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
  for (size_t start = 0; start < 256; start += 5) {
    for (size_t count = 0; count <= 300; count += count < 70 ? 1 : 23) {
      const std::string_view bytes = std::string_view(all).substr(start, count);
      const ExactSpan<char> in(bytes);
      ExactSpan<char> out(3 * count);
      writeHexText(reinterpret_cast<const uint8_t*>(in.view().data()), count, out.data());
      ASSERT_EQ(out.view(), modelHexText(bytes)) << start << ", " << count;
    }
  }
}

}  // namespace
}  // namespace quoll::inline v1::detail
