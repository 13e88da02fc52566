// SPDX-License-Identifier: MIT
#pragma once

/// How every way of sending a message is timed.

#include <iterator>
#include <vector>

#include "bench/measure.h"

namespace bench {

/// A hundred calls an iteration, so that the loop around them costs nothing.
constexpr int kCalls = 100;

/// `call(x)` gives x + 1; each call waits for the result of the one before.
template <class Call>
void sends(benchmark::State& s, Call call) {
  int x = 0;
  for (auto _ : s) {
    for (int i = 0; i < kCalls; ++i) x = call(x);
    keep(x);
  }
  items(s, kCalls);
  expect(s, x, s.iterations() * kCalls);
}

/// `call(i)` gives nothing.
template <class Call>
void sends_no_result(benchmark::State& s, Call call) {
  for (auto _ : s)
    for (int i = 0; i < kCalls; ++i) call(i);
  items(s, kCalls);
}

/// `call()` gives something that is kept and dropped.
template <class Call>
void repeats(benchmark::State& s, Call call) {
  for (auto _ : s)
    for (int i = 0; i < kCalls; ++i) keep(call());
  items(s, kCalls);
}

/// The receivers of the `..._mixed_classes` families: `make.template operator()<K>()` gives an object of class K of 8.
template <class Object, class Make>
std::vector<Object> mixed_objects(Make make) {
  std::vector<Object> all;
  Rng r{1};
  for (int i = 0; i < 4096; ++i) {
    switch (r.below(8)) {
      case 0: all.push_back(make.template operator()<0>()); break;
      case 1: all.push_back(make.template operator()<1>()); break;
      case 2: all.push_back(make.template operator()<2>()); break;
      case 3: all.push_back(make.template operator()<3>()); break;
      case 4: all.push_back(make.template operator()<4>()); break;
      case 5: all.push_back(make.template operator()<5>()); break;
      case 6: all.push_back(make.template operator()<6>()); break;
      default: all.push_back(make.template operator()<7>()); break;
    }
  }
  return all;
}

/// `call(object, x)` gives an int, or nothing where results are none.
template <class Object, class Call>
void sends_mixed(benchmark::State& s, const std::vector<Object>& all, Call call) {
  int x = 0;
  for (auto _ : s) {
    for (const Object& o : all) x = call(o, x);
    keep(x);
  }
  expect(s, x, s.iterations() * std::ssize(all));
  items(s, static_cast<std::int64_t>(all.size()));
}
template <class Object, class Call>
void sends_mixed_no_result(benchmark::State& s, const std::vector<Object>& all, Call call) {
  for (auto _ : s) {
    int x = 0;
    for (const Object& o : all) call(o, ++x);
  }
  items(s, static_cast<std::int64_t>(all.size()));
}

}  // namespace bench
