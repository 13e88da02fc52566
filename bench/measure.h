// SPDX-License-Identifier: MIT
#pragma once

/// What every benchmark here is made of.
///
/// A benchmark is named `family/member`. All members of a family do the same work on the same data, so their times can
/// be divided. Members are registered with PEER, except this library's own, which OURS names `family/quoll`. A member
/// called `limit-...` is a floor set by the machine or by code with no abstraction at all.
///
///     void lines(benchmark::State& s) {
///       const std::u16string& text = bench::text16();
///       for (auto _ : s) bench::keep(countLines(text));
///       bench::bytes(s, std::ssize(text) * 2);
///     }
///     PEER(lines, "lines_utf16/some library");

#include <benchmark/benchmark.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#define PEER(fn, name) BENCHMARK(fn)->Name(name)->UseRealTime()
#define OURS(fn, family) PEER(fn, family "/quoll")

// Never inlined, and its callers assume nothing about it.
#if defined(__clang__)
#define OPAQUE __attribute__((noinline))
#else
#define OPAQUE __attribute__((noipa))
#endif

namespace bench {

/// splitmix64: the same data on every machine.
struct Rng {
  std::uint64_t s;
  std::uint64_t operator()() {
    std::uint64_t z = (s += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  std::uint64_t below(std::uint64_t n) { return (*this)() % n; }
};

template <class T>
inline void keep(const T& v) {
  benchmark::DoNotOptimize(v);
}

/// How much work one iteration does: the cost reported is the time divided by it.
inline void items(benchmark::State& s, std::int64_t per_iteration) {
  s.SetItemsProcessed(s.iterations() * per_iteration);
}
inline void bytes(benchmark::State& s, std::int64_t per_iteration) {
  s.SetBytesProcessed(s.iterations() * per_iteration);
}

/// Turn the row into an error when a member computed something else than it should have.
inline bool expect(benchmark::State& s, bool right) {
  if (!right) s.SkipWithError("wrong result");
  return right;
}
template <std::integral Got, std::integral Want>
bool expect(benchmark::State& s, Got got, Want want) {
  if (std::cmp_equal(got, want)) return true;
  s.SkipWithError(("wrong result: " + std::to_string(got) + ", expected " + std::to_string(want)).c_str());
  return false;
}

/// Families named `..._one_thread` run in a process of their own that never started a thread: there the standard
/// library and this one count references without atomic instructions.
bool only_one_thread_so_far(benchmark::State& s);

/// `body` as a member of such a family.
template <void (*body)(benchmark::State&)>
void alone(benchmark::State& s) {
  if (only_one_thread_so_far(s)) body(s);
}

}  // namespace bench
