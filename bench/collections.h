// SPDX-License-Identifier: MIT
#pragma once

/// What every collection is timed with: the data, the functions that are mapped over it, and how a result is checked.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "bench/measure.h"

namespace bench {

constexpr std::size_t kN = 1'000'000;
constexpr std::size_t kFew = 100'000;  ///< For what must not cost more an element when there are more.

inline const std::vector<long>& numbers() {
  static const std::vector<long> v = [] {
    std::vector<long> o(kN);
    Rng r{3};
    for (auto& x : o) x = long(r.below(kN));
    return o;
  }();
  return v;
}
inline long mapped(long x) { return 2 * x + 1; }
inline bool wanted(long x) { return x % 3 == 0; }
template <long groups>
long group_of(long x) {
  return x % groups;
}

// ---------------------------------------------------------------- sets
template <class T>
void shuffle(std::vector<T>& v, std::uint64_t seed) {
  Rng r{seed};
  for (std::size_t i = v.size(); i > 1; --i) std::swap(v[i - 1], v[r.below(i)]);
}
/// `count` different numbers from `first` on, in no order.
inline std::vector<long> distinct(long first, std::size_t count, std::uint64_t seed) {
  std::vector<long> v(count);
  for (std::size_t i = 0; i < count; ++i) v[i] = first + long(i);
  shuffle(v, seed);
  return v;
}
/// Two sets with half of their elements in common.
inline std::vector<long> one_set(std::size_t count) { return distinct(0, count, 11); }
inline std::vector<long> other_set(std::size_t count) { return distinct(long(count / 2), count, 12); }
/// The sum of all numbers from `first` up to, without, `end`.
constexpr std::uint64_t sum_between(std::uint64_t first, std::uint64_t end) {
  return (first + end - 1) * (end - first) / 2;
}
constexpr std::uint64_t union_sum(std::uint64_t n) { return sum_between(0, n + n / 2); }
constexpr std::uint64_t difference_sum(std::uint64_t n) { return sum_between(0, n / 2); }
constexpr std::uint64_t intersection_sum(std::uint64_t n) { return sum_between(n / 2, n); }

// ---------------------------------------------------------------- keys
/// 12 to 30 characters, all different, in no order.
inline std::vector<std::string> make_keys(const char* prefix, std::uint64_t seed) {
  std::vector<std::string> v;
  Rng r{seed};
  for (std::size_t i = 0; i < kN; ++i)
    v.push_back(prefix + std::to_string(i) + "/" + std::string(r.below(14), char('a' + r.below(26))));
  for (std::size_t i = kN; i > 1; --i) std::swap(v[i - 1], v[r.below(i)]);
  return v;
}
inline const std::vector<std::string>& keys8() {
  static const auto v = make_keys("item-", 1);
  return v;
}
inline const std::vector<std::string>& misses8() {
  static const auto v = make_keys("none-", 2);
  return v;
}
/// Looked up in another order than the insertion.
template <class Key>
std::vector<Key> in_other_order(std::vector<Key> keys) {
  shuffle(keys, 9);
  return keys;
}
/// What a walk over all keys and the numbers 0, 1, 2, ... under them adds up: their lengths and the numbers.
inline std::uint64_t walk_sum() {
  std::uint64_t sum = sum_between(0, kN);
  for (auto& k : keys8()) sum += k.size();
  return sum;
}

// ---------------------------------------------------------------- results
/// One number for integers in their order.
class Digest {
 public:
  void add(long x) { value_ = value_ * 31 + std::uint64_t(x) + 1; }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0;
};
/// For per_element: the digest of a list whose elements are read by `value`.
template <class Value>
constexpr auto in_order(Value value) {
  return [value](const auto& list) {
    Digest d;
    for (auto&& x : list) d.add(long(value(x)));
    return d.value();
  };
}
inline std::uint64_t map_digest() {
  Digest d;
  for (long x : numbers()) d.add(mapped(x));
  return d.value();
}
inline std::uint64_t filter_digest() {
  Digest d;
  for (long x : numbers())
    if (wanted(x)) d.add(x);
  return d.value();
}
/// Counted, not compared, so that it has nothing in common with what is measured.
inline std::uint64_t sort_digest() {
  std::vector<int> times(kN);
  for (long x : numbers()) ++times[std::size_t(x)];
  Digest d;
  for (std::size_t x = 0; x < kN; ++x)
    for (int i = 0; i < times[x]; ++i) d.add(long(x));
  return d.value();
}
/// The groups' digests added up: the order of the groups does not matter, that within them does.
template <long groups>
std::uint64_t group_digest(std::size_t count = kN) {
  std::vector<Digest> d(groups);
  for (std::size_t i = 0; i < count; ++i) d[std::size_t(group_of<groups>(numbers()[i]))].add(numbers()[i]);
  std::uint64_t sum = 0;
  for (auto& x : d) sum += x.value();
  return sum;
}
inline std::uint64_t number_sum() {
  std::uint64_t sum = 0;
  for (long x : numbers()) sum += std::uint64_t(x);
  return sum;
}
inline std::uint64_t pipe_sum() {
  std::uint64_t sum = 0;
  for (long x : numbers())
    if (wanted(mapped(x))) sum += std::uint64_t(mapped(x));
  return sum;
}

struct Itself {
  template <class T>
  std::uint64_t operator()(const T& x) const {
    return std::uint64_t(x);
  }
};

/// What `make()` gives is built and destroyed inside the measured time. `look` of it is compared with `want` before.
template <class Look, class Make>
void per_element(benchmark::State& s, std::uint64_t want, Look look, Make make, std::size_t count = kN) {
  if (!expect(s, look(make()), want)) return;
  for (auto _ : s) keep(make());
  items(s, std::int64_t(count));
}

}  // namespace bench
