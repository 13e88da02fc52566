// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/NSLog.h"

#include <gmock/gmock.h>

#include <vector>

#include "QuollFoundation/platform/logging/LogSink.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

/// Collects lines instead of writing them.
class NSLogTests : public ::testing::Test {
 protected:
  NSLogTests() : before_(setLogSink([this](const LogRecord* record) { lines_.push_back(record->message->utf8()); })) {}
  ~NSLogTests() override { setLogSink(before_); }
  std::vector<std::string> lines_;

 private:
  LogSink before_;
};

class Unreachable : public NSProxy {
  QF_CLASS(Unreachable, NSProxy)
 public:
  Ref<NSMethodSignature> methodSignatureForSelector(Selector) const override { return fail(); }
  void forwardInvocation(NSInvocation*) override { fail(); }

 private:
  static Ref<NSMethodSignature> fail() {
    ADD_FAILURE() << "a proxy got a message";
    return nullptr;
  }
};
Class* Unreachable::classObject() {
  static Class* const cls = ClassBuilder<Unreachable>("NSLogTestsUnreachable").build();
  return cls;
}

TEST_F(NSLogTests, HeaderExample) {
  const quoll::Ref<quoll::NSString> error = "no such file"_ns;
  quoll::NSLog("%s, %@"_ns, __func__, error);
  EXPECT_THAT(lines_, ::testing::ElementsAre("TestBody, no such file"));
}

TEST_F(NSLogTests, WithoutArgumentsWritesTheText) {
  NSLog("100%%"_ns);
  NSLog("plain"_ns);
  EXPECT_THAT(lines_, ::testing::ElementsAre("100%", "plain"));
}

TEST_F(NSLogTests, AFormatThatDoesNotFitRaisesAndWritesNothing) {
  EXPECT_THAT([] { NSLog("%d"_ns, "text"_ns); }, raises(NSInvalidArgumentException, "NSLog: %d at index 0"));
  EXPECT_THAT([] { NSLog(nullptr); }, raises(NSInvalidArgumentException, "NSLog: nil argument"));
  EXPECT_TRUE(lines_.empty());
}

TEST_F(NSLogTests, SendsNothingToAProxy) {
  const Ref<Unreachable> proxy = make<Unreachable>();
  NSLog("%@"_ns, proxy);
  EXPECT_THAT(lines_,
              ::testing::ElementsAre(NSString::stringWithFormat("<NSLogTestsUnreachable: %p>"_ns, proxy)->utf8()));
}

TEST_F(NSLogTests, TakesAnExceptionsObject) {
  try {
    raise(NSRangeException, "far off");
  } catch (const NSException& e) {
    NSLog("%@"_ns, e.object());
  }
  EXPECT_THAT(lines_, ::testing::ElementsAre("far off"));
}

}  // namespace
