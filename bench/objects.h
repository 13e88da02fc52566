// SPDX-License-Identifier: MIT
#pragma once

/// How every reference is timed.

#include "bench/measure.h"

namespace bench {

/// `body()` gives a number that depends on what it read.
template <class Body>
void sums(benchmark::State& s, Body body) {
  long sum = 0;
  for (auto _ : s) sum += body();
  keep(sum);
  items(s, 1);
}

}  // namespace bench
