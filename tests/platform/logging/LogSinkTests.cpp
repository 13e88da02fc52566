// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/logging/LogSink.h"

#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/logging/NSLog.h"
#include "QuollFoundation/platform/logging/SystemLog.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using ::testing::HasSubstr;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;

/// Puts a sink in place for a scope.
class WithSink {
 public:
  explicit WithSink(LogSink sink) : before_(setLogSink(std::move(sink))) {}
  ~WithSink() { setLogSink(before_); }
  WithSink(const WithSink&) = delete;
  WithSink& operator=(const WithSink&) = delete;

 private:
  LogSink before_;
};

TEST(LogSink, HeaderExample) {
  std::vector<std::string> lines;
  quoll::LogSink before =
      quoll::setLogSink([&](const quoll::LogRecord* record) { lines.push_back(record->message->utf8()); });
  quoll::NSLog("one"_ns);
  quoll::setLogSink(before);
  CaptureStderr();
  quoll::NSLog("two"_ns);
  EXPECT_THAT(GetCapturedStderr(), HasSubstr("two"));
  EXPECT_THAT(lines, ::testing::ElementsAre("one"));
}

TEST(LogSink, GetsWhoWhenAndWhere) {
  std::vector<LogRecord> records;
  const WithSink sink([&](const LogRecord* record) { records.push_back(*record); });
  const auto begin = std::chrono::system_clock::now();
  NSLog("text"_ns);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].level, LogLevel::Default);
  EXPECT_EQ(records[0].subsystem, "");
  EXPECT_EQ(records[0].category, "");
  EXPECT_THAT(records[0].message, equals("text"));
  EXPECT_GE(records[0].time, begin);
  EXPECT_LE(records[0].time, std::chrono::system_clock::now());
  EXPECT_EQ(records[0].process, getpid());
  EXPECT_EQ(records[0].thread, syscall(SYS_gettid));
}

TEST(LogSink, AtTheStartIsStandardError) {
  CaptureStderr();
  NSLog("Grüße %d"_ns, 7);
  EXPECT_THAT(GetCapturedStderr(),
              ::testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}[-+][0-9]{4} "
                                      "[^ ]+\\[[0-9]+:[0-9]+\\] Grüße 7\n"));
}

TEST(LogSink, ALineSaysLogAndLevel) {
  const std::chrono::sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(1'000'000'000'042)};
  struct Row {
    LogLevel level;
    std::string_view subsystem, category;
    const char* ending;
  };
  const Row rows[] = {
      {LogLevel::Default, "", "", "[12:34] text"},
      {LogLevel::Error, "", "", "[12:34] error: text"},
      {LogLevel::Fault, "org.example", "files", "[12:34] [org.example:files] fault: text"},
      {LogLevel::Info, "org.example", "", "[12:34] [org.example:] info: text"},
      {LogLevel::Debug, "", "", "[12:34] debug: text"},
  };
  for (const Row& row : rows) {
    const std::string line = logLine({row.level, row.subsystem, row.category, "text"_ns, time, 12, 34});
    EXPECT_THAT(line, ::testing::EndsWith(row.ending));
    EXPECT_THAT(line, ::testing::StartsWith("2001-09-")) << "in any time zone";
    EXPECT_THAT(line, HasSubstr(".042"));
  }
}

TEST(LogSink, ATimeBefore1970HasItsMilliseconds) {
  const std::chrono::sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(-1)};
  EXPECT_THAT(logLine({LogLevel::Default, "", "", ""_ns, time, 1, 1}), HasSubstr(":59.999"));
}

TEST(LogSink, WritesUnpairedSurrogatesAsReplacementCharacters) {
  CaptureStderr();
  NSLog("a%Cz"_ns, 0xD800);
  EXPECT_THAT(GetCapturedStderr(), HasSubstr("a\uFFFDz\n"));
}

TEST(LogSink, MayReplaceItself) {
  std::vector<std::string> first, second;
  const WithSink sink([&](const LogRecord* record) {
    setLogSink([&](const LogRecord* later) { second.push_back(later->message->utf8()); });
    first.push_back(record->message->utf8());
  });
  NSLog("one"_ns);
  NSLog("two"_ns);
  EXPECT_THAT(first, ::testing::ElementsAre("one"));
  EXPECT_THAT(second, ::testing::ElementsAre("two"));
}

TEST(LogSink, ThatLogsWritesThatToStandardError) {
  int calls = 0;
  const WithSink sink([&](const LogRecord*) {
    ++calls;
    NSLog("from within"_ns);
  });
  CaptureStderr();
  NSLog("one"_ns);
  NSLog("two"_ns);
  const std::string written = GetCapturedStderr();
  EXPECT_EQ(calls, 2);
  EXPECT_THAT(written, HasSubstr("from within\n"));
  EXPECT_THAT(written, ::testing::Not(HasSubstr("one")));
}

struct Odd {};

TEST(LogSink, ThatRaisesLosesNothing) {
  struct Row {
    const char* claim;
    LogSink sink;
    const char* said;
  };
  const Row rows[] = {
      {"our exception", LogSink([](const LogRecord*) { raise(NSRangeException, "far off"); }),
       "NSRangeException: far off"},
      {"one of the language", LogSink([](const LogRecord*) { throw std::runtime_error("full"); }), "full"},
      {"any object", LogSink([](const LogRecord*) { throw Odd(); }), "no std::exception"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const WithSink sink(row.sink);
    CaptureStderr();
    EXPECT_NO_THROW(NSLog("the line"_ns));
    const std::string written = GetCapturedStderr();
    EXPECT_THAT(written, HasSubstr(row.said));
    EXPECT_THAT(written, HasSubstr("the line\n"));
  }
}

TEST(LogSink, ThatRaisedIsCalledAgain) {
  int calls = 0;
  const WithSink sink([&](const LogRecord*) {
    ++calls;
    throw Odd();
  });
  CaptureStderr();
  NSLog("one"_ns);
  NSLog("two"_ns);
  GetCapturedStderr();
  EXPECT_EQ(calls, 2);
}

TEST(LogSink, IsLetGoWhenReplaced) {
  {
    const WithSink touched([](const LogRecord*) {});
  }  // the default sink is made when first asked for
  const LeakGuard guard;
  const Ref<NSString> held = "held"_ns->mutableCopy()->copy();
  const WithSink sink([held](const LogRecord*) {});
}

TEST(LogSink, MayBeReplacedWhileThreadsLog) {
  constexpr int threadCount = 3, lineCount = 300;
  std::atomic<int> lines = 0;
  const auto counting = [&](const LogRecord*) { ++lines; };
  const WithSink sink(counting);
  std::latch start(threadCount + 1);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < threadCount; ++i) {
      threads.emplace_back([&] {
        start.arrive_and_wait();
        for (int line = 0; line < lineCount; ++line) NSLog("%d"_ns, line);
      });
    }
    start.arrive_and_wait();
    for (int i = 0; i < lineCount; ++i) setLogSink(counting);
  }
  EXPECT_EQ(lines, threadCount * lineCount);
}

TEST(LogSink, DebugLinesAreOffUnlessAskedFor) {
  int calls = 0;
  const WithSink sink([&](const LogRecord*) { ++calls; });
  const LogLevel before = setLowestLogLevel(LogLevel::Info);
  os_log_debug(OS_LOG_DEFAULT, "unseen"_ns);
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(setLowestLogLevel(LogLevel::Debug), LogLevel::Info);
  os_log_debug(OS_LOG_DEFAULT, "seen"_ns);
  EXPECT_EQ(calls, 1);
  setLowestLogLevel(LogLevel::Fault);
  NSLog("unseen"_ns);
  os_log_error(OS_LOG_DEFAULT, "unseen"_ns);
  EXPECT_EQ(calls, 1);
  setLowestLogLevel(before);
}

/// What the environment says is read once: each case needs a process of its own.
void expectLowest(const char* variable, const char* name) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        if (variable) setenv("QUOLL_LOG", variable, 1);
        else unsetenv("QUOLL_LOG");
        const bool debug = lowestLogLevel() == LogLevel::Debug;
        os_log_debug(OS_LOG_DEFAULT, "a debug line"_ns);
        os_log_info(OS_LOG_DEFAULT, debug ? "lowest is Debug"_ns : "lowest is Info"_ns);
        _exit(0);
      },
      ::testing::ExitedWithCode(0), name);
}

TEST(LogSinkDeathTest, TheEnvironmentTurnsDebugLinesOn) { expectLowest("debug", "a debug line\n.*lowest is Debug\n"); }
TEST(LogSinkDeathTest, WithoutAWordDebugLinesAreOff) { expectLowest(nullptr, "\\] info: lowest is Info\n"); }
TEST(LogSinkDeathTest, AnotherWordTurnsNothingOn) { expectLowest("DEBUG2", "\\] info: lowest is Info\n"); }

}  // namespace
