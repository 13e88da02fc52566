// SPDX-License-Identifier: MIT
#include "bench/collections.h"

#include <algorithm>

#include "QuollFoundation/collections/Toolkit.h"
#include "QuollFoundation/platform/object/Equality.h"
#include "QuollFoundation/platform/values/Boxing.h"
#if PEERS_ABSL
#include <absl/container/flat_hash_set.h>
#endif

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

long value(const NSObject* number) { return cast<const NSNumber>(number)->integerValue(); }
constexpr auto boxes = in_order(value);
constexpr auto in_array = [](const auto& array) { return boxes(*array); };

template <class Array = NSArray>
Ref<Array> boxed(const std::vector<long>& plain) {
  const Ref<NSMutableArray> all = NSMutableArray::array();
  for (const long x : plain) all->addObject(box(x));
  return Array::template arrayWithArray<Array>(all);
}
/// The first `count` numbers.
template <std::size_t count = kN>
const NSArray* input() {
  static const Ref<NSArray> all = boxed({numbers().begin(), numbers().begin() + count});
  return all;
}

// ---------------------------------------------------------------- the toolkit
Ref<NSArray> mapped_numbers(const NSArray* in) {
  return Map(in, [](NSNumber* n) { return box(mapped(n->integerValue())); });
}
Ref<NSArray> filtered(const NSArray* in) {
  return Filter(in, [](NSNumber* n) { return wanted(n->integerValue()); });
}
/// Every sum on the way is a number of its own.
Ref<NSObject> folded(const NSArray* in) {
  return Reduce(in, box(0L), [](NSNumber* sum, NSNumber* n) { return box(sum->integerValue() + n->integerValue()); });
}

void map(State& s) {
  const NSArray* in = input();
  per_element(s, map_digest(), in_array, [&] { return mapped_numbers(in); });
}
void filter(State& s) {
  const NSArray* in = input();
  per_element(s, filter_digest(), in_array, [&] { return filtered(in); });
}
void reduce(State& s) {
  const NSArray* in = input();
  per_element(s, number_sum(), value, [&] { return folded(in); });
}
void each(State& s) {
  const NSArray* in = input();
  per_element(s, number_sum(), Itself(), [&] {
    long sum = 0;
    Each(in, [&](NSNumber* n) { sum += n->integerValue(); });
    return sum;
  });
}
void pipe(State& s) {
  const NSArray* in = input();
  per_element(s, pipe_sum(), value, [&] { return folded(filtered(mapped_numbers(in))); });
}
OURS(map, "map");
OURS(filter, "filter");
OURS(reduce, "reduce");
OURS(reduce, "reduce_boxed");
OURS(each, "each");
OURS(pipe, "map_filter_reduce");

std::uint64_t in_groups(const Ref<NSMutableDictionary>& groups) {
  std::uint64_t sum = 0;
  for (const auto [key, group] : *groups) sum += boxes(*cast<NSArray>(group));
  return sum;
}
template <long groups, std::size_t count = kN>
void group_by(State& s) {
  const NSArray* in = input<count>();
  per_element(
      s, group_digest<groups>(count), in_groups,
      [&] { return GroupBy(in, [](NSNumber* n) { return box(group_of<groups>(n->integerValue())); }); }, count);
}
OURS(group_by<1000>, "group_by");
OURS(group_by<10>, "group_by_10");
OURS(group_by<1000>, "group_by_scaling");
PEER((group_by<1000, kFew>), "group_by_scaling/quoll-100000");

// ---------------------------------------------------------------- sorting
NSComparisonResult by_value(NSObject* a, NSObject* b) {
  const long x = value(a), y = value(b);
  return x < y ? NSOrderedAscending : x > y ? NSOrderedDescending : NSOrderedSame;
}
void sort(State& s) {
  const NSArray* in = input();
  per_element(s, sort_digest(), in_array, [&] { return Sort(in, [](auto a, auto b) { return by_value(a, b); }); });
}
void stable_sort(State& s) {
  const NSArray* in = input();
  per_element(s, sort_digest(), boxes, [&] {
    std::vector<NSObject*> o(in->begin(), in->end());
    std::stable_sort(o.begin(), o.end(), [](auto a, auto b) { return by_value(a, b) == NSOrderedAscending; });
    return o;
  });
}
OURS(sort, "sort");
PEER(stable_sort, "sort/std::stable_sort-same-objects");

// ---------------------------------------------------------------- sets, and arrays taken as such
constexpr auto sum_of = [](const auto& collection) {
  std::uint64_t sum = 0;
  for (const NSObject* x : *collection) sum += std::uint64_t(value(x));
  return sum;
};
struct Sets {
  static const Sets& all() {
    static const Sets two{NSSet::setWithArray(boxed(one_set(kN))), NSSet::setWithArray(boxed(other_set(kN)))};
    return two;
  }
  Ref<NSSet> a, b;
};
void set_union(State& s) {
  auto& [a, b] = Sets::all();
  per_element(s, union_sum(kN), sum_of, [&] { return Union(a.get(), b.get()); });
}
void set_difference(State& s) {
  auto& [a, b] = Sets::all();
  per_element(s, difference_sum(kN), sum_of, [&] { return Difference(a.get(), b.get()); });
}
void set_intersection(State& s) {
  auto& [a, b] = Sets::all();
  per_element(s, intersection_sum(kN), sum_of, [&] { return Intersection(a.get(), b.get()); });
}
OURS(set_union, "set_union");
OURS(set_difference, "set_difference");
OURS(set_intersection, "set_intersection");

#if PEERS_ABSL
using Flat = absl::flat_hash_set<Ref<NSObject>, ObjectHash, ObjectEqual>;
struct FlatSets {
  static Flat filled(const NSSet* set) {
    Flat o;
    for (NSObject* x : *set) o.insert(x);
    return o;
  }
  static const FlatSets& all() {
    static const FlatSets two{filled(Sets::all().a), filled(Sets::all().b)};
    return two;
  }
  Flat a, b;
};
constexpr auto flat_sum = [](const Flat& set) { return sum_of(&set); };
void flat_union(State& s) {
  auto& [a, b] = FlatSets::all();
  per_element(s, union_sum(kN), flat_sum, [&] {
    Flat o = a;
    o.insert(b.begin(), b.end());
    return o;
  });
}
template <bool common>
void flat_select(State& s) {
  auto& [a, b] = FlatSets::all();
  per_element(s, common ? intersection_sum(kN) : difference_sum(kN), flat_sum, [&] {
    Flat o;
    for (auto& x : a)
      if (b.contains(x) == common) o.insert(x);
    return o;
  });
}
PEER(flat_union, "set_union/absl::flat_hash_set-same-objects");
PEER(flat_select<false>, "set_difference/absl::flat_hash_set-same-objects");
PEER(flat_select<true>, "set_intersection/absl::flat_hash_set-same-objects");
#endif

template <std::size_t count>
struct Arrays {
  static const Arrays& all() {
    static const Arrays two{boxed(one_set(count)), boxed(other_set(count))};
    return two;
  }
  Ref<NSArray> a, b;
};
template <std::size_t count>
void array_difference(State& s) {
  auto& [a, b] = Arrays<count>::all();
  per_element(s, difference_sum(count), sum_of, [&] { return Difference(a.get(), b.get()); }, 1);
}
template <std::size_t count>
void array_intersection(State& s) {
  auto& [a, b] = Arrays<count>::all();
  per_element(s, intersection_sum(count), sum_of, [&] { return Intersection(a.get(), b.get()); }, 1);
}
OURS(array_difference<10000>, "array_difference");
PEER(array_difference<1000>, "array_difference/quoll-1000");
OURS(array_intersection<10000>, "array_intersection");
PEER(array_intersection<1000>, "array_intersection/quoll-1000");

// ---------------------------------------------------------------- dictionaries
using Keys = std::vector<Ref<NSString>>;
Keys strings(const std::vector<std::string>& plain) {
  Keys o;
  for (auto& k : plain) o.push_back(NSString::stringWithUTF8(k));
  return o;
}
const Keys& keys() {
  static const Keys all = strings(keys8());
  return all;
}
/// The values are held, not made: 0, 1, 2, ...
Ref<NSMutableDictionary> filled(const NSArray* values) {
  Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  auto value = values->begin();
  for (auto& key : keys()) dictionary->setObject_forKey(*value++, key);
  return dictionary;
}
const NSArray* values() {
  static const Ref<NSArray> all = [] {
    std::vector<long> plain(kN);
    for (std::size_t i = 0; i < kN; ++i) plain[i] = long(i);
    return boxed(plain);
  }();
  return all;
}
void insert(State& s) {
  keys();
  const NSArray* held = values();
  per_element(s, kN, [](const auto& dictionary) { return dictionary->count(); }, [&] { return filled(held); });
}
void find(State& s, const Keys& look, std::uint64_t hits) {
  const Ref<NSMutableDictionary> dictionary = filled(values());
  per_element(s, hits, Itself(), [&] {
    std::uint64_t n = 0;
    for (auto& key : look) n += dictionary->objectForKey(key) != nullptr;
    return n;
  });
}
const Keys& probes() {
  static const Keys all = in_other_order(keys());
  return all;
}
void find_hit(State& s) { find(s, probes(), kN); }
/// Whether the key is there, as most peers are asked, and no reference to the value.
void contains(State& s) {
  const Ref<NSMutableDictionary> dictionary = filled(values());
  per_element(s, kN, Itself(), [&] {
    std::uint64_t n = 0;
    for (auto& key : probes()) n += CFDictionaryContainsKey(dictionary, key.get());
    return n;
  });
}
void find_equal(State& s) {
  static const Keys look = strings(in_other_order(keys8()));
  find(s, look, kN);
}
void find_miss(State& s) {
  static const Keys look = strings(misses8());
  find(s, look, 0);
}
void walk(State& s) {
  const Ref<NSMutableDictionary> dictionary = filled(values());
  per_element(s, walk_sum(), Itself(), [&] {
    std::uint64_t sum = 0;
    for (const auto [key, number] : *dictionary) {
      sum += cast<NSString>(key)->length() + std::uint64_t(value(number));
    }
    return sum;
  });
}
void visit(State& s) {
  const Ref<NSMutableDictionary> dictionary = filled(values());
  per_element(s, kN, Itself(), [&] {
    std::uint64_t n = 0;
    for (const auto [key, number] : *dictionary) {
      keep(key);
      keep(number);
      ++n;
    }
    return n;
  });
}
OURS(insert, "hash_insert");
OURS(find_hit, "hash_find_hit");
PEER(contains, "hash_find_hit/quoll-contains");
OURS(find_equal, "hash_find_equal");
OURS(find_miss, "hash_find_miss");
OURS(walk, "hash_walk");
OURS(visit, "hash_visit");

}  // namespace
