// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Diagnostics.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(Diagnostics, PutCaretsUnderARange) {
  EXPECT_THAT(quoll::QF_debugStringToShowRange("let x = 1\nlet y == 2\n"_ns, {16, 2}),
              equals("2: let y == 2\n         ^^\n"));
  EXPECT_THAT(QF_debugStringToShowRange("abc\n"_ns, {0, 1}), equals("1: abc\n   ^\n"));
}

TEST(Diagnostics, FollowOnTheSameLineWhereTheLastLineDoesNotEnd) {
  EXPECT_THAT(QF_debugStringToShowRange("abc"_ns, {1, 2}), equals("1: abc    ^^\n"));
}

TEST(Diagnostics, ShowAllLinesThatTheRangeTouches) {
  EXPECT_THAT(QF_debugStringToShowRange("ab\ncd\nef\n"_ns, {1, 3}), equals("1: ab\ncd\n    ^^^\n"));
}

TEST(Diagnostics, ShowAnEmptyRangeWithoutCarets) {
  EXPECT_THAT(QF_debugStringToShowRange("abc\n"_ns, {2, 0}), equals("1: abc\n     \n"));
}

TEST(Diagnostics, RaiseForARangeThatIsNotInTheText) {
  EXPECT_THAT([] { QF_debugStringToShowRange("abc"_ns, {3, 0}); }, raises(NSRangeException, "3"));
  EXPECT_THAT([] { QF_debugStringToShowRange("abc"_ns, {1, 3}); }, raises(NSRangeException, "3"));
  EXPECT_THAT([] { QF_debugStringToShowRange(""_ns, {0, 0}); }, raises(NSRangeException, "0"));
  EXPECT_THAT([] { QF_debugStringToShowRange("abc"_ns, {UINT64_MAX, 1}); }, raises(NSRangeException, "3"));
}

TEST(Diagnostics, NameTheBytesOfAText) {
  EXPECT_THAT(QF_UTF8Name("aé"_ns), equals("UTF-8: 61 C3 A9"));
  EXPECT_THAT(QF_UTF8Name(""_ns), equals("UTF-8: "));
  EXPECT_THAT(QF_UTF8Name(NSString::stringWithCharacters(std::u16string_view(u"\xd800", 1))),
              equals("UTF-8: EF BF BD"));
}

TEST(Diagnostics, AnswerByName) {
  EXPECT_THAT(send<Ref<NSString>>("a"_ns, "QF_UTF8Name"_sel), equals("UTF-8: 61"));
  EXPECT_THAT(send<Ref<NSString>>("a\n"_ns, "QF_debugStringToShowRange:"_sel, NSRange{0, 1}), equals("1: a\n   ^\n"));
  EXPECT_EQ(QF_UTF8Name(nullptr), nullptr);
  EXPECT_EQ(QF_debugStringToShowRange(nullptr, {0, 0}), nullptr);
}

}  // namespace
