// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/EscapingInternal.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::ExactSpan;

class EscapingKernel : public quoll::testing::EachInstructionSet {};

template <class Unit> std::basic_string<Unit> escapedByAPlainLoop(std::basic_string_view<Unit> text) {
  std::basic_string<Unit> out;
  for (const Unit unit : text) {
    const bool isNamed = unit == '\t' || unit == '\r' || unit == '\n';
    if (isNamed || unit == '\\' || unit == '"' || unit == '\'') out += '\\';
    if (isNamed) out += unit == '\t' ? 't' : unit == '\r' ? 'r' : 'n';
    else out += unit;
  }
  return out;
}

template <class Unit> void expectAsAPlainLoop(std::basic_string_view<Unit> text) {
  const std::basic_string<Unit> expected = escapedByAPlainLoop(text);
  const ExactSpan<Unit> in(text);
  ASSERT_EQ(in.view().size() + countOfEscapes(in.view()), expected.size());
  ExactSpan<Unit> out(expected.size());
  writeEscaped(in.view(), out.data());
  ASSERT_EQ(out.view(), expected);
}

/// Texts of some length of which about one unit in `rarity` comes from `special`.
template <class Unit> void expectAsAPlainLoopForMany(const std::basic_string<Unit>& special) {
  std::minstd_rand random(7);
  for (const unsigned rarity : {1u, 2u, 9u, 70u}) {
    for (size_t length = 0; length <= 300; length += length < 140 ? 1 : 17) {
      std::basic_string<Unit> text(length, Unit{'x'});
      for (Unit& unit : text) {
        if (random() % rarity == 0) unit = special[random() % special.size()];
      }
      expectAsAPlainLoop<Unit>(text);
    }
  }
}

TEST_F(EscapingKernel, WritesWhatAPlainLoopDoesAndNothingBeyond) {
  expectAsAPlainLoopForMany<char>("\t\r\n\\\"'");
  expectAsAPlainLoopForMany<char>("\t\n\v\f\r &(x\\]\"'n");
  expectAsAPlainLoopForMany<char16_t>(u"\t\r\n\\\"'");
  // What has the low byte of a special unit, and halves of pairs.
  const char16_t lookalikes[] = {0x0109, 0x2209, 0x5C5C, 0x225C, 0x0A0A, 0xD80A, 0xDC22, u'\\', u'\n'};
  expectAsAPlainLoopForMany<char16_t>({lookalikes, std::size(lookalikes)});
}

}  // namespace
}  // namespace quoll::inline v1::detail
