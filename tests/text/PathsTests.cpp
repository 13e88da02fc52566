// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Paths.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(Paths, AreJoinedComponentByComponent) {
  EXPECT_THAT(quoll::pathByAppendingPath("/usr"_ns, "share/doc"_ns), equals("/usr/share/doc"));
  EXPECT_THAT(pathByAppendingPath("/usr/"_ns, "share//doc/"_ns), equals("/usr/share/doc"));
  EXPECT_THAT(pathByAppendingPath("a"_ns, "b"_ns), equals("a/b"));
}

TEST(Paths, WithoutComponentsAddNothing) {
  EXPECT_THAT(pathByAppendingPath("/usr"_ns, ""_ns), equals("/usr"));
  EXPECT_THAT(pathByAppendingPath("/usr"_ns, nullptr), equals("/usr"));
}

TEST(Paths, AreStandardisedWhereTheSecondIsRelative) {
  EXPECT_THAT(absolutePathByAppendingRelativePath("/usr/share"_ns, "../lib"_ns), equals("/usr/lib"));
  EXPECT_THAT(absolutePathByAppendingRelativePath("/usr"_ns, "./share/./doc/"_ns), equals("/usr/share/doc"));
}

TEST(Paths, ASecondOneThatIsAbsoluteIsRefused) {
  for (NSString* path : {"/lib"_ns, "~/lib"_ns}) {
    EXPECT_THAT([&] { absolutePathByAppendingRelativePath("/usr"_ns, path); },
                raises(NSInvalidArgumentException,
                       "Invalid argument passed to -[NSString(QFAdditions) absolutePathByAppendingRelativePath:]. The "
                       "string is not a relative path"));
  }
}

TEST(Paths, AnswerByName) {
  EXPECT_THAT(send<Ref<NSString>>("a"_ns, "pathByAppendingPath:"_sel, "b/c"_ns), equals("a/b/c"));
  EXPECT_THAT(send<Ref<NSString>>("/a"_ns, "absolutePathByAppendingRelativePath:"_sel, "../c"_ns), equals("/c"));
  EXPECT_EQ(pathByAppendingPath(nullptr, "b"_ns), nullptr);
  EXPECT_EQ(absolutePathByAppendingRelativePath(nullptr, "b"_ns), nullptr);
}

}  // namespace
