// SPDX-License-Identifier: MIT
#pragma once

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <ios>
#include <string>
#include <thread>
#include <utility>

namespace quoll::testsupport {

/// A thread of which a test learns from the kernel that it sleeps, so that it need not guess how long that takes.
class WatchedThread {
 public:
  template <class Body>
  explicit WatchedThread(Body body)
      : thread_([this, body = std::move(body)]() mutable {
          id_.store(static_cast<pid_t>(syscall(SYS_gettid)));
          body();
        }) {}
  ~WatchedThread() { join(); }
  WatchedThread(const WatchedThread&) = delete;
  WatchedThread& operator=(const WatchedThread&) = delete;

  /// Waits until the thread sleeps on the 32-bit word at `place`. False when it has not after a generous limit.
  [[nodiscard]] bool sleepsOn(const void* place) const {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!sleepsNowOn(place)) {
      if (std::chrono::steady_clock::now() > limit) return false;
      sched_yield();
    }
    return true;
  }
  pthread_t handle() { return thread_.native_handle(); }
  void join() {
    if (thread_.joinable()) thread_.join();
  }

 private:
  /// The kernel's line for a thread that is blocked in a call: its number, then its arguments in hexadecimal.
  bool sleepsNowOn(const void* place) const {
    std::ifstream file("/proc/self/task/" + std::to_string(id_.load()) + "/syscall");
    long call = -1;
    uintptr_t first = 0;
    file >> call >> std::hex >> first;
    return file && call == SYS_futex && first == reinterpret_cast<uintptr_t>(place);
  }

  std::atomic<pid_t> id_{0};
  std::thread thread_;
};

}  // namespace quoll::testsupport
