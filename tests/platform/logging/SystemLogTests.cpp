// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/SystemLog.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

class SystemLogTests : public ::testing::Test {
 protected:
  SystemLogTests()
      : before_(setLogSink([this](const LogRecord* record) { records_.push_back(*record); })),
        level_(setLowestLogLevel(LogLevel::Debug)) {}
  ~SystemLogTests() override {
    setLogSink(before_);
    setLowestLogLevel(level_);
  }
  std::vector<LogRecord> records_;

 private:
  LogSink before_;
  LogLevel level_;
};

class Counted : public NSObject {
  QF_CLASS(Counted, NSObject)
 public:
  Ref<NSString> description() const override {
    ++asked;
    return "counted"_ns;
  }
  mutable int asked = 0;
};
Class* Counted::classObject() {
  static Class* const cls = ClassBuilder<Counted>("SystemLogTestsCounted").build();
  return cls;
}

TEST_F(SystemLogTests, HeaderExample) {
  const quoll::os_log_t files = quoll::os_log_create("org.example.viewer", "files");
  quoll::os_log_error(files, "can't read %@"_ns, "a.txt"_ns);
  ASSERT_EQ(records_.size(), 1u);
  EXPECT_THAT(records_[0].message, equals("can't read a.txt"));
  EXPECT_EQ(records_[0].level, LogLevel::Error);
  EXPECT_EQ(records_[0].subsystem, "org.example.viewer");
  EXPECT_EQ(records_[0].category, "files");
}

TEST_F(SystemLogTests, EachFunctionHasItsLevel) {
  os_log(OS_LOG_DEFAULT, "%d"_ns, 1);
  os_log_info(OS_LOG_DEFAULT, "%d"_ns, 2);
  os_log_debug(OS_LOG_DEFAULT, "%d"_ns, 3);
  os_log_error(OS_LOG_DEFAULT, "%d"_ns, 4);
  os_log_fault(OS_LOG_DEFAULT, "%d"_ns, 5);
  os_log_with_type(OS_LOG_DEFAULT, LogLevel::Info, "%d"_ns, 6);
  std::vector<LogLevel> levels;
  std::string texts;
  for (const LogRecord& record : records_) {
    levels.push_back(record.level);
    texts += record.message->utf8();
  }
  EXPECT_EQ(texts, "123456");
  EXPECT_THAT(levels, ::testing::ElementsAre(LogLevel::Default, LogLevel::Info, LogLevel::Debug, LogLevel::Error,
                                             LogLevel::Fault, LogLevel::Info));
}

TEST_F(SystemLogTests, TheSameNamesAreTheSameLog) {
  const os_log_t log = os_log_create("a", "b");
  EXPECT_EQ(os_log_create(std::string("a"), std::string("b")), log);
  EXPECT_NE(os_log_create("a", "c"), log);
  EXPECT_NE(os_log_create("ab", ""), log);
  EXPECT_EQ(os_log_create("", ""), OS_LOG_DEFAULT);
}

TEST_F(SystemLogTests, TheDefaultLogHasNoNames) {
  os_log(OS_LOG_DEFAULT, "text"_ns);
  ASSERT_EQ(records_.size(), 1u);
  EXPECT_EQ(records_[0].subsystem, "");
  EXPECT_EQ(records_[0].category, "");
}

TEST_F(SystemLogTests, WhatALevelKeepsOutIsNotFormatted) {
  const Ref<Counted> argument = make<Counted>();
  setLowestLogLevel(LogLevel::Error);
  os_log(OS_LOG_DEFAULT, "%@"_ns, argument);
  EXPECT_EQ(argument->asked, 0);
  os_log_error(OS_LOG_DEFAULT, "%@"_ns, argument);
  EXPECT_EQ(argument->asked, 1);
  EXPECT_EQ(records_.size(), 1u);
}

TEST_F(SystemLogTests, SaysWhetherALevelIsWritten) {
  setLowestLogLevel(LogLevel::Info);
  EXPECT_FALSE(os_log_type_enabled(OS_LOG_DEFAULT, LogLevel::Debug));
  EXPECT_TRUE(os_log_type_enabled(os_log_create("a", "b"), LogLevel::Info));
}

TEST_F(SystemLogTests, AFormatThatDoesNotFitRaises) {
  EXPECT_THAT([] { os_log(OS_LOG_DEFAULT, "%@"_ns, 1); }, raises(NSInvalidArgumentException, "os_log: %@ at index 0"));
  EXPECT_TRUE(records_.empty());
}

}  // namespace
