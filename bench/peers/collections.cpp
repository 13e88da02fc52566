// SPDX-License-Identifier: MIT
// Map, filter, reduce, group-by, sort over 1e6 boxed integers, sets of them, and string-keyed hash maps.
// Results are built and destroyed inside the measured time.
#include <algorithm>
#include <memory>
#include <numeric>
#include <ranges>
#include <unordered_map>
#include <unordered_set>
#include "bench/collections.h"
#if PEERS_QT
#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_ABSL
#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>
#include <absl/hash/hash.h>
#endif
#if PEERS_RANGEV3
#include <range/v3/all.hpp>
#endif
#if PEERS_BOOST
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#endif

using namespace bench;
using benchmark::State;
namespace {
// ---------------------------------------------------------------- plain integers
constexpr auto plain = in_order([](long x) { return x; });
/// The groups of a standard map; `list` looks at one.
template <class List>
constexpr auto in_groups(List list) {
  return [list](const auto& groups) {
    std::uint64_t sum = 0;
    for (auto& group : groups) sum += list(group.second);
    return sum;
  };
}
constexpr auto plain_groups = in_groups(plain);

void map_plain(State& s) {
  per_element(s, map_digest(), plain, [] {
    std::vector<long> o(kN);
    std::ranges::transform(numbers(), o.begin(), mapped);
    return o;
  });
}
#if !defined(__clang__) || __clang_major__ >= 16  // clang 14 can't compile the views of g++ 12's library
void filter_plain(State& s) {
  per_element(s, filter_digest(), plain, [] {
    std::vector<long> o;
    for (long x : numbers() | std::views::filter(wanted)) o.push_back(x);
    return o;
  });
}
PEER(filter_plain, "filter/limit-std::ranges-on-long");
#endif
void reduce_plain(State& s) {
  per_element(s, number_sum(), Itself(), [] { return std::accumulate(numbers().begin(), numbers().end(), 0L); });
}
void group_plain(State& s) {
  per_element(s, group_digest<1000>(), plain_groups, [] {
    std::unordered_map<long, std::vector<long>> g;
    for (long x : numbers()) g[group_of<1000>(x)].push_back(x);
    return g;
  });
}
void sort_plain(State& s) {
  per_element(s, sort_digest(), plain, [] {
    auto o = numbers();
    std::ranges::sort(o);
    return o;
  });
}
#if !defined(__clang__) || __clang_major__ >= 16
void pipe_plain(State& s) {  // map, filter, reduce with no intermediate collection
  per_element(s, pipe_sum(), Itself(), [] {
    long sum = 0;
    for (long x : numbers() | std::views::transform(mapped) | std::views::filter(wanted)) sum += x;
    return sum;
  });
}
PEER(pipe_plain, "map_filter_reduce/limit-std::views-on-long");
#endif
PEER(map_plain, "map/limit-std::ranges-on-long");
PEER(reduce_plain, "reduce/limit-std::accumulate-on-long");
PEER(group_plain, "group_by/limit-unordered_map-on-long");
PEER(sort_plain, "sort/limit-std::ranges-on-long");
#if PEERS_RANGEV3
void pipe_v3(State& s) {
  per_element(s, pipe_sum(), Itself(), [] {
    return ranges::accumulate(numbers() | ranges::views::transform(mapped) | ranges::views::filter(wanted), 0L);
  });
}
void map_v3(State& s) {
  per_element(s, map_digest(), plain, [] {
    auto o = numbers() | ranges::views::transform(mapped) | ranges::to<std::vector>();
    return o;
  });
}
void filter_v3(State& s) {
  per_element(s, filter_digest(), plain, [] {
    auto o = numbers() | ranges::views::filter(wanted) | ranges::to<std::vector>();
    return o;
  });
}
PEER(map_v3, "map/range-v3-on-long");
PEER(filter_v3, "filter/range-v3-on-long");
PEER(pipe_v3, "map_filter_reduce/range-v3-on-long");
#endif

// ---------------------------------------------------------------- boxed in a counted pointer
struct Number {
  explicit Number(long v) : v_(v) {}
  virtual ~Number() = default;
  virtual long value() const { return v_; }
  long v_;
};
struct Shared {
  using Ptr = std::shared_ptr<Number>;
  static Ptr make(long v) { return std::make_shared<Number>(v); }
};
template <class Box>
static const std::vector<typename Box::Ptr>& boxed() {
  static const auto v = [] {
    std::vector<typename Box::Ptr> o;
    for (long x : numbers()) o.push_back(Box::make(x));
    return o;
  }();
  return v;
}
constexpr auto pointed = in_order([](const auto& x) { return x->value(); });
constexpr auto pointed_groups = in_groups(pointed);
template <class Box>
void map_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, map_digest(), pointed, [&] {
    std::vector<typename Box::Ptr> o;
    o.reserve(in.size());
    for (auto& x : in) o.push_back(Box::make(mapped(x->value())));
    return o;
  });
}
template <class Box>
void filter_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, filter_digest(), pointed, [&] {
    std::vector<typename Box::Ptr> o;
    for (auto& x : in)
      if (wanted(x->value())) o.push_back(x);
    return o;
  });
}
template <class Box>
void reduce_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, number_sum(), Itself(), [&] {
    long sum = 0;
    for (auto& x : in) sum += x->value();
    return sum;
  });
}
template <class Box>
void fold_boxed(State& s) {  // the memo is a box too
  auto& in = boxed<Box>();
  per_element(
      s, number_sum(), [](const auto& sum) { return std::uint64_t(sum->value()); },
      [&] {
        typename Box::Ptr memo = Box::make(0);
        for (auto& x : in) memo = Box::make(memo->value() + x->value());
        return memo;
      });
}
template <class Box, long groups = 1000, std::size_t count = kN>
void group_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(
      s, group_digest<groups>(count), pointed_groups,
      [&] {
        std::unordered_map<long, std::vector<typename Box::Ptr>> g;
        for (std::size_t i = 0; i < count; ++i) g[group_of<groups>(in[i]->value())].push_back(in[i]);
        return g;
      },
      count);
}
struct ByValue {
  template <class Ptr>
  std::size_t operator()(const Ptr& x) const {
    return std::hash<long>()(x->value());
  }
  template <class Ptr>
  bool operator()(const Ptr& a, const Ptr& b) const {
    return a->value() == b->value();
  }
};
template <class Box, long groups>
void group_boxed_keys(State& s) {
  auto& in = boxed<Box>();
  per_element(s, group_digest<groups>(), pointed_groups, [&] {
    std::unordered_map<typename Box::Ptr, std::vector<typename Box::Ptr>, ByValue, ByValue> g;
    for (auto& x : in) g[Box::make(group_of<groups>(x->value()))].push_back(x);
    return g;
  });
}
template <class Box>
void sort_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, sort_digest(), pointed, [&] {
    auto o = in;
    std::sort(o.begin(), o.end(), [](auto& a, auto& b) { return a->value() < b->value(); });
    return o;
  });
}
template <class Box>
void pipe_boxed(State& s) {  // eager: a collection after each step
  auto& in = boxed<Box>();
  per_element(s, pipe_sum(), Itself(), [&] {
    std::vector<typename Box::Ptr> a, b;
    a.reserve(in.size());
    for (auto& x : in) a.push_back(Box::make(mapped(x->value())));
    for (auto& x : a)
      if (wanted(x->value())) b.push_back(x);
    long sum = 0;
    for (auto& x : b) sum += x->value();
    return sum;
  });
}
#define BOXED(Box, name)                                                    \
  PEER(map_boxed<Box>, "map/" name);                                        \
  PEER(filter_boxed<Box>, "filter/" name);                                  \
  PEER(reduce_boxed<Box>, "reduce/" name);                                  \
  PEER(reduce_boxed<Box>, "each/" name);                                    \
  PEER(fold_boxed<Box>, "reduce_boxed/" name);                              \
  PEER(group_boxed<Box>, "group_by/" name);                                 \
  PEER((group_boxed<Box, 10>), "group_by_10/" name);                        \
  PEER((group_boxed_keys<Box, 1000>), "group_by/" name "-boxed-keys");      \
  PEER((group_boxed_keys<Box, 10>), "group_by_10/" name "-boxed-keys");     \
  PEER((group_boxed<Box, 1000, kN>), "group_by_scaling/" name);             \
  PEER((group_boxed<Box, 1000, kFew>), "group_by_scaling/" name "-100000"); \
  PEER(sort_boxed<Box>, "sort/" name);                                      \
  PEER(pipe_boxed<Box>, "map_filter_reduce/" name)
BOXED(Shared, "vector<std::shared_ptr>");
#if PEERS_BOOST
struct Counted : boost::intrusive_ref_counter<Counted> {
  explicit Counted(long v) : v_(v) {}
  virtual ~Counted() = default;
  virtual long value() const { return v_; }
  long v_;
};
struct Intrusive {
  using Ptr = boost::intrusive_ptr<Counted>;
  static Ptr make(long v) { return Ptr(new Counted(v)); }
};
BOXED(Intrusive, "vector<boost::intrusive_ptr>");
#endif

// ---------------------------------------------------------------- Qt
#if PEERS_QT
static const QList<QVariant>& variants() {
  static const QList<QVariant> v = [] {
    QList<QVariant> o;
    for (long x : numbers()) o.append(QVariant(qlonglong(x)));
    return o;
  }();
  return v;
}
constexpr auto varied = in_order([](const QVariant& x) { return x.toLongLong(); });
void map_qt(State& s) {
  auto& in = variants();
  per_element(s, map_digest(), varied, [&] {
    QList<QVariant> o;
    o.reserve(in.size());
    for (auto& x : in) o.append(QVariant(qlonglong(mapped(long(x.toLongLong())))));
    return o;
  });
}
void filter_qt(State& s) {
  auto& in = variants();
  per_element(s, filter_digest(), varied, [&] {
    QList<QVariant> o;
    for (auto& x : in)
      if (wanted(long(x.toLongLong()))) o.append(x);
    return o;
  });
}
void reduce_qt(State& s) {
  auto& in = variants();
  per_element(s, number_sum(), Itself(), [&] {
    qlonglong sum = 0;
    for (auto& x : in) sum += x.toLongLong();
    return sum;
  });
}
void fold_qt(State& s) {
  auto& in = variants();
  per_element(
      s, number_sum(), [](const QVariant& sum) { return sum.toULongLong(); },
      [&] {
        QVariant memo(qlonglong(0));
        for (auto& x : in) memo = QVariant(qlonglong(memo.toLongLong() + x.toLongLong()));
        return memo;
      });
}
template <long groups>
void group_qt(State& s) {
  auto& in = variants();
  const auto look = [](const auto& all) {
    std::uint64_t sum = 0;
    for (auto& group : all) sum += varied(group);
    return sum;
  };
  per_element(s, group_digest<groups>(), look, [&] {
    QHash<qlonglong, QList<QVariant>> g;
    for (auto& x : in) g[group_of<groups>(long(x.toLongLong()))].append(x);
    return g;
  });
}
void sort_qt(State& s) {
  auto& in = variants();
  per_element(s, sort_digest(), varied, [&] {
    auto o = in;
    std::sort(o.begin(), o.end(), [](auto& a, auto& b) { return a.toLongLong() < b.toLongLong(); });
    return o;
  });
}
void pipe_qt(State& s) {
  auto& in = variants();
  per_element(s, pipe_sum(), Itself(), [&] {
    QList<QVariant> a, b;
    a.reserve(in.size());
    for (auto& x : in) a.append(QVariant(qlonglong(mapped(long(x.toLongLong())))));
    for (auto& x : std::as_const(a))
      if (wanted(long(x.toLongLong()))) b.append(x);
    qlonglong sum = 0;
    for (auto& x : std::as_const(b)) sum += x.toLongLong();
    return sum;
  });
}
PEER(map_qt, "map/QList<QVariant>");
PEER(filter_qt, "filter/QList<QVariant>");
PEER(reduce_qt, "reduce/QList<QVariant>");
PEER(reduce_qt, "each/QList<QVariant>");
PEER(fold_qt, "reduce_boxed/QList<QVariant>");
PEER(group_qt<1000>, "group_by/QHash-of-QList<QVariant>");
PEER(group_qt<10>, "group_by_10/QHash-of-QList<QVariant>");
PEER(sort_qt, "sort/QList<QVariant>");
PEER(pipe_qt, "map_filter_reduce/QList<QVariant>");
#endif

// ---------------------------------------------------------------- GLib: GPtrArray of counted boxes
#if PEERS_GLIB
static gint64* box(long v) {
  auto* p = g_atomic_rc_box_new(gint64);
  *p = v;
  return p;
}
static void unbox(gpointer p) { g_atomic_rc_box_release(p); }
static gint64* hold(gpointer p) { return static_cast<gint64*>(g_atomic_rc_box_acquire(p)); }
static gint64 at(GPtrArray* a, guint i) { return *static_cast<gint64*>(g_ptr_array_index(a, i)); }
static GPtrArray* boxes() {
  static GPtrArray* a = [] {
    auto* o = g_ptr_array_new_full(kN, unbox);
    for (long x : numbers()) g_ptr_array_add(o, box(x));
    return o;
  }();
  return a;
}
static GPtrArray* map_boxes(GPtrArray* in) {
  auto* o = g_ptr_array_new_full(in->len, unbox);
  for (guint i = 0; i < in->len; ++i) g_ptr_array_add(o, box(mapped(at(in, i))));
  return o;
}
static GPtrArray* filter_boxes(GPtrArray* in) {
  auto* o = g_ptr_array_new_with_free_func(unbox);
  for (guint i = 0; i < in->len; ++i)
    if (wanted(at(in, i))) g_ptr_array_add(o, hold(g_ptr_array_index(in, i)));
  return o;
}
static gint64 sum_boxes(GPtrArray* in) {
  gint64 sum = 0;
  for (guint i = 0; i < in->len; ++i) sum += at(in, i);
  return sum;
}
struct Unref {
  void operator()(GPtrArray* a) const { g_ptr_array_unref(a); }
  void operator()(GHashTable* t) const { g_hash_table_unref(t); }
};
using List = std::unique_ptr<GPtrArray, Unref>;
using Table = std::unique_ptr<GHashTable, Unref>;
static std::uint64_t digest_boxes(GPtrArray* a) {
  Digest d;
  for (guint i = 0; i < a->len; ++i) d.add(long(at(a, i)));
  return d.value();
}
constexpr auto listed = [](const List& list) { return digest_boxes(list.get()); };
constexpr auto listed_groups = [](const Table& table) {
  std::uint64_t sum = 0;
  GHashTableIter i;
  gpointer list;
  g_hash_table_iter_init(&i, table.get());
  while (g_hash_table_iter_next(&i, nullptr, &list)) sum += digest_boxes(static_cast<GPtrArray*>(list));
  return sum;
};
void map_g(State& s) {
  auto* in = boxes();
  per_element(s, map_digest(), listed, [&] {
    auto* o = map_boxes(in);
    return List(o);
  });
}
void filter_g(State& s) {
  auto* in = boxes();
  per_element(s, filter_digest(), listed, [&] {
    auto* o = filter_boxes(in);
    return List(o);
  });
}
void reduce_g(State& s) {
  auto* in = boxes();
  per_element(s, number_sum(), Itself(), [&] { return sum_boxes(in); });
}
void group_g(State& s) {
  auto* in = boxes();
  per_element(s, group_digest<1000>(), listed_groups, [&] {
    GHashTable* g =
        g_hash_table_new_full(nullptr, nullptr, nullptr, reinterpret_cast<GDestroyNotify>(g_ptr_array_unref));
    for (guint i = 0; i < in->len; ++i) {
      gpointer key = GINT_TO_POINTER(group_of<1000>(at(in, i)));
      auto* list = static_cast<GPtrArray*>(g_hash_table_lookup(g, key));
      if (!list) g_hash_table_insert(g, key, list = g_ptr_array_new_with_free_func(unbox));
      g_ptr_array_add(list, hold(g_ptr_array_index(in, i)));
    }
    return Table(g);
  });
}
void sort_g(State& s) {
  auto* in = boxes();
  per_element(s, sort_digest(), listed, [&] {
    auto* o = g_ptr_array_new_full(in->len, unbox);
    for (guint i = 0; i < in->len; ++i) g_ptr_array_add(o, hold(g_ptr_array_index(in, i)));
    g_ptr_array_sort(o, [](gconstpointer a, gconstpointer b) -> gint {
      gint64 x = **static_cast<gint64* const*>(a), y = **static_cast<gint64* const*>(b);
      return (x > y) - (x < y);
    });
    return List(o);
  });
}
void pipe_g(State& s) {
  auto* in = boxes();
  per_element(s, pipe_sum(), Itself(), [&] {
    auto *a = map_boxes(in), *b = filter_boxes(a);
    const gint64 sum = sum_boxes(b);
    g_ptr_array_unref(b);
    g_ptr_array_unref(a);
    return sum;
  });
}
PEER(map_g, "map/GPtrArray");
PEER(filter_g, "filter/GPtrArray");
PEER(reduce_g, "reduce/GPtrArray");
PEER(reduce_g, "each/GPtrArray");
PEER(group_g, "group_by/GHashTable-of-GPtrArray");
PEER(sort_g, "sort/GPtrArray");
PEER(pipe_g, "map_filter_reduce/GPtrArray");
#endif

// ---------------------------------------------------------------- sets of 1e6 boxed integers
template <class Set>
struct TwoSets {
  static Set filled(const std::vector<long>& numbers) {
    Set o;
    for (long x : numbers) o.insert(Shared::make(x));
    return o;
  }
  static const TwoSets& all() {
    static const TwoSets two{filled(one_set(kN)), filled(other_set(kN))};
    return two;
  }
  Set a, b;
};
template <class Set>
std::uint64_t sum_of(const Set& set) {
  std::uint64_t sum = 0;
  for (auto& x : set) sum += std::uint64_t(x->value());
  return sum;
}
template <class Set>
void set_union(State& s) {
  auto& in = TwoSets<Set>::all();
  per_element(s, union_sum(kN), sum_of<Set>, [&] {
    Set o = in.a;
    o.insert(in.b.begin(), in.b.end());
    return o;
  });
}
template <class Set, bool common>
void set_select(State& s) {
  auto& in = TwoSets<Set>::all();
  per_element(s, common ? intersection_sum(kN) : difference_sum(kN), sum_of<Set>, [&] {
    Set o;
    for (auto& x : in.a)
      if (in.b.contains(x) == common) o.insert(x);
    return o;
  });
}
#define SETS(Set, name)                                   \
  PEER(set_union<Set>, "set_union/" name);                \
  PEER((set_select<Set, false>), "set_difference/" name); \
  PEER((set_select<Set, true>), "set_intersection/" name)
using StdSet = std::unordered_set<Shared::Ptr, ByValue, ByValue>;
SETS(StdSet, "std::unordered_set<std::shared_ptr>");
#if PEERS_ABSL
struct ByValueMixed : ByValue {
  template <class Ptr>
  std::size_t operator()(const Ptr& x) const {
    return absl::Hash<long>()(x->value());
  }
};
using FlatSet = absl::flat_hash_set<Shared::Ptr, ByValueMixed, ByValue>;
SETS(FlatSet, "absl::flat_hash_set<std::shared_ptr>");
#endif

// ---------------------------------------------------------------- hash maps with 1e6 string keys
template <class Key>
static std::vector<Key> convert(const std::vector<std::string>& v) {
  std::vector<Key> o;
  for (auto& k : v) {
    if constexpr (std::is_same_v<Key, std::string>) o.push_back(k);
    else if constexpr (std::is_same_v<Key, std::u16string>) o.emplace_back(k.begin(), k.end());
#if PEERS_QT
    else if constexpr (std::is_same_v<Key, QString>) o.push_back(QString::fromStdString(k));
#endif
  }
  return o;
}
template <class Key>
static const std::vector<Key>& keys() {
  static const auto v = convert<Key>(keys8());
  return v;
}
template <class Key>
static const std::vector<Key>& misses() {
  static const auto v = convert<Key>(misses8());
  return v;
}
// Looked up in another order than the insertion.
template <class Key>
static const std::vector<Key>& probes() {
  static const auto v = in_other_order(keys<Key>());
  return v;
}
template <class Map, class Key>
Map filled() {
  Map m;
  int i = 0;
  for (auto& x : keys<Key>()) m[x] = i++;
  return m;
}
constexpr auto size = [](const auto& m) { return std::uint64_t(m.size()); };
template <class Map, class Key>
void hash_insert(State& s) {
  keys<Key>();
  per_element(s, kN, size, filled<Map, Key>);
}
template <class Map, class Key>
void hash_find(State& s, const std::vector<Key>& look, std::size_t hits) {
  const Map m = filled<Map, Key>();
  per_element(s, hits, Itself(), [&] {
    std::size_t n = 0;
    for (auto& x : look) n += m.find(x) != m.end();
    return n;
  });
}
template <class Map, class Key>
void hash_hit(State& s) {
  hash_find<Map, Key>(s, probes<Key>(), kN);
}
template <class Map, class Key>
void hash_miss(State& s) {
  hash_find<Map, Key>(s, misses<Key>(), 0);
}
template <class Map, class Key>
void hash_walk(State& s) {
  const Map m = filled<Map, Key>();
  per_element(s, walk_sum(), Itself(), [&] {
    std::uint64_t sum = 0;
    if constexpr (requires { m.begin()->first; }) {
      for (auto& [key, value] : m) sum += key.size() + std::uint64_t(value);
    } else {
      for (auto i = m.begin(); i != m.end(); ++i) sum += std::uint64_t(i.key().size() + i.value());
    }
    return sum;
  });
}
template <class Map, class Key>
void hash_visit(State& s) {
  const Map m = filled<Map, Key>();
  per_element(s, kN, Itself(), [&] {
    std::size_t n = 0;
    for (auto i = m.begin(); i != m.end(); ++i, ++n) {
      if constexpr (requires { i->first; }) {
        keep(&i->first);
        keep(&i->second);
      } else {
        keep(&i.key());
        keep(&i.value());
      }
    }
    return n;
  });
}
#define HASHED(Map, Key, name)                         \
  PEER((hash_insert<Map, Key>), "hash_insert/" name);  \
  PEER((hash_hit<Map, Key>), "hash_find_hit/" name);   \
  PEER((hash_miss<Map, Key>), "hash_find_miss/" name); \
  PEER((hash_walk<Map, Key>), "hash_walk/" name);      \
  PEER((hash_visit<Map, Key>), "hash_visit/" name)
using Std8 = std::unordered_map<std::string, int>;
using Std16 = std::unordered_map<std::u16string, int>;
HASHED(Std8, std::string, "unordered_map<string>");
HASHED(Std16, std::u16string, "unordered_map<u16string>");
#if PEERS_ABSL
using Flat8 = absl::flat_hash_map<std::string, int>;
using Flat16 = absl::flat_hash_map<std::u16string, int>;
HASHED(Flat8, std::string, "absl::flat_hash_map<string>");
HASHED(Flat16, std::u16string, "absl::flat_hash_map<u16string>");
PEER((hash_hit<Flat16, std::u16string>), "hash_find_equal/absl::flat_hash_map<u16string>");
#endif
#if PEERS_QT
using QMap16 = QHash<QString, int>;
HASHED(QMap16, QString, "QHash<QString> (keys shared, not copied)");
void qhash_equal(State& s) {  // keys that share nothing with those in the map
  std::vector<QString> look;
  for (auto& k : probes<QString>()) look.push_back(QString(k.constData(), k.size()));
  hash_find<QMap16, QString>(s, look, kN);
}
PEER(qhash_equal, "hash_find_equal/QHash<QString>");
#endif
#if PEERS_GLIB
static GHashTable* fill() {
  GHashTable* m = g_hash_table_new_full(g_str_hash, g_str_equal, g_free, nullptr);
  int i = 0;
  for (auto& k : keys8()) g_hash_table_insert(m, g_strdup(k.c_str()), GINT_TO_POINTER(++i));
  return m;
}
void ghash_insert(State& s) {
  keys8();
  const auto size = [](const Table& m) { return std::uint64_t(g_hash_table_size(m.get())); };
  per_element(s, kN, size, [] { return Table(fill()); });
}
static void ghash_find(State& s, const std::vector<std::string>& look, std::size_t hits) {
  const Table m(fill());
  per_element(s, hits, Itself(), [&] {
    std::size_t n = 0;
    for (auto& k : look) n += g_hash_table_lookup(m.get(), k.c_str()) != nullptr;
    return n;
  });
}
void ghash_hit(State& s) { ghash_find(s, probes<std::string>(), kN); }
void ghash_miss(State& s) { ghash_find(s, misses8(), 0); }
PEER(ghash_insert, "hash_insert/GHashTable(strdup)");
PEER(ghash_hit, "hash_find_hit/GHashTable(strdup)");
PEER(ghash_miss, "hash_find_miss/GHashTable(strdup)");
#endif
}  // namespace
