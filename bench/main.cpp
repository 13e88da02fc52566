// SPDX-License-Identifier: MIT
// The entry point of every group.
#include <semaphore.h>
#include <sys/single_threaded.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "bench/measure.h"
#if PEERS_QT
#include <QCoreApplication>
#endif

namespace {

// A desktop program has several threads, and libstdc++ drops the atomic instructions of shared_ptr in a process that
// never started one.
void park_a_thread() {
  static sem_t never;
  sem_init(&never, 0, 0);
  std::thread([] {
    while (true) sem_wait(&never);
  }).detach();
}

/// Removes the flag, which Google Benchmark doesn't know.
bool take_flag(int& argc, char** argv, const char* flag) {
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], flag) != 0) continue;
    for (int k = i; k < argc; ++k) argv[k] = argv[k + 1];
    --argc;
    return true;
  }
  return false;
}

}  // namespace

bool bench::only_one_thread_so_far(benchmark::State& s) {
  if (__libc_single_threaded) return true;
  s.SkipWithError("this process has had a second thread: run the family alone, with --one_thread");
  return false;
}

int main(int argc, char** argv) {
  if (!take_flag(argc, argv, "--one_thread")) park_a_thread();
#if PEERS_QT
  QCoreApplication app(argc, argv);  // sets the locale of the environment
#endif
  if (!std::setlocale(LC_ALL, "en_US.UTF-8") && !std::setlocale(LC_ALL, "C.UTF-8")) std::setlocale(LC_ALL, "");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  std::fflush(nullptr);
  std::_Exit(0);  // workers of a bounded run may still be parked
}
