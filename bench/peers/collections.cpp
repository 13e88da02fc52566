// SPDX-License-Identifier: MIT
// Map, filter, reduce, group-by, sort over 1e6 boxed integers, and string-keyed hash maps.
// Results are built and destroyed inside the measured time.
#include <algorithm>
#include <memory>
#include <numeric>
#include <ranges>
#include <unordered_map>
#include "bench/measure.h"
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
constexpr std::size_t kN = 1'000'000;

static const std::vector<long>& numbers() {
  static const std::vector<long> v = [] {
    std::vector<long> o(kN);
    Rng r{3};
    for (auto& x : o) x = long(r.below(kN));
    return o;
  }();
  return v;
}
static long mapped(long x) { return 2 * x + 1; }
static bool wanted(long x) { return x % 3 == 0; }
static long group_of(long x) { return x % 1000; }

template <class Body>
static void per_element(State& s, Body body) {
  for (auto _ : s) body();
  items(s, std::int64_t(kN));
}

// ---------------------------------------------------------------- plain integers
void map_plain(State& s) {
  per_element(s, [] {
    std::vector<long> o(kN);
    std::ranges::transform(numbers(), o.begin(), mapped);
    keep(*o.data());
  });
}
#if !defined(__clang__) || __clang_major__ >= 16  // clang 14 can't compile the views of g++ 12's library
void filter_plain(State& s) {
  per_element(s, [] {
    std::vector<long> o;
    for (long x : numbers() | std::views::filter(wanted)) o.push_back(x);
    keep(*o.data());
  });
}
PEER(filter_plain, "filter/limit-std::ranges-on-long");
#endif
void reduce_plain(State& s) {
  per_element(s, [] { keep(std::accumulate(numbers().begin(), numbers().end(), 0L)); });
}
void group_plain(State& s) {
  per_element(s, [] {
    std::unordered_map<long, std::vector<long>> g;
    for (long x : numbers()) g[group_of(x)].push_back(x);
    keep(g.size());
  });
}
void sort_plain(State& s) {
  per_element(s, [] {
    auto o = numbers();
    std::ranges::sort(o);
    keep(*o.data());
  });
}
#if !defined(__clang__) || __clang_major__ >= 16
void pipe_plain(State& s) {  // map, filter, reduce with no intermediate collection
  per_element(s, [] {
    long sum = 0;
    for (long x : numbers() | std::views::transform(mapped) | std::views::filter(wanted)) sum += x;
    keep(sum);
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
  per_element(s, [] {
    keep(ranges::accumulate(numbers() | ranges::views::transform(mapped) | ranges::views::filter(wanted), 0L));
  });
}
void map_v3(State& s) {
  per_element(s, [] {
    auto o = numbers() | ranges::views::transform(mapped) | ranges::to<std::vector>();
    keep(*o.data());
  });
}
void filter_v3(State& s) {
  per_element(s, [] {
    auto o = numbers() | ranges::views::filter(wanted) | ranges::to<std::vector>();
    keep(*o.data());
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
template <class Box>
void map_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, [&] {
    std::vector<typename Box::Ptr> o;
    o.reserve(in.size());
    for (auto& x : in) o.push_back(Box::make(mapped(x->value())));
    keep(*o.data());
  });
}
template <class Box>
void filter_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, [&] {
    std::vector<typename Box::Ptr> o;
    for (auto& x : in)
      if (wanted(x->value())) o.push_back(x);
    keep(*o.data());
  });
}
template <class Box>
void reduce_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, [&] {
    long sum = 0;
    for (auto& x : in) sum += x->value();
    keep(sum);
  });
}
template <class Box>
void group_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, [&] {
    std::unordered_map<long, std::vector<typename Box::Ptr>> g;
    for (auto& x : in) g[group_of(x->value())].push_back(x);
    keep(g.size());
  });
}
template <class Box>
void sort_boxed(State& s) {
  auto& in = boxed<Box>();
  per_element(s, [&] {
    auto o = in;
    std::sort(o.begin(), o.end(), [](auto& a, auto& b) { return a->value() < b->value(); });
    keep(*o.data());
  });
}
template <class Box>
void pipe_boxed(State& s) {  // eager: a collection after each step
  auto& in = boxed<Box>();
  per_element(s, [&] {
    std::vector<typename Box::Ptr> a, b;
    a.reserve(in.size());
    for (auto& x : in) a.push_back(Box::make(mapped(x->value())));
    for (auto& x : a)
      if (wanted(x->value())) b.push_back(x);
    long sum = 0;
    for (auto& x : b) sum += x->value();
    keep(sum);
  });
}
#define BOXED(Box, name)                    \
  PEER(map_boxed<Box>, "map/" name);        \
  PEER(filter_boxed<Box>, "filter/" name);  \
  PEER(reduce_boxed<Box>, "reduce/" name);  \
  PEER(group_boxed<Box>, "group_by/" name); \
  PEER(sort_boxed<Box>, "sort/" name);      \
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
void map_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    QList<QVariant> o;
    o.reserve(in.size());
    for (auto& x : in) o.append(QVariant(qlonglong(mapped(long(x.toLongLong())))));
    keep(*o.constData());
  });
}
void filter_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    QList<QVariant> o;
    for (auto& x : in)
      if (wanted(long(x.toLongLong()))) o.append(x);
    keep(*o.constData());
  });
}
void reduce_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    qlonglong sum = 0;
    for (auto& x : in) sum += x.toLongLong();
    keep(sum);
  });
}
void group_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    QHash<qlonglong, QList<QVariant>> g;
    for (auto& x : in) g[group_of(long(x.toLongLong()))].append(x);
    keep(g.size());
  });
}
void sort_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    auto o = in;
    std::sort(o.begin(), o.end(), [](auto& a, auto& b) { return a.toLongLong() < b.toLongLong(); });
    keep(*o.constData());
  });
}
void pipe_qt(State& s) {
  auto& in = variants();
  per_element(s, [&] {
    QList<QVariant> a, b;
    a.reserve(in.size());
    for (auto& x : in) a.append(QVariant(qlonglong(mapped(long(x.toLongLong())))));
    for (auto& x : std::as_const(a))
      if (wanted(long(x.toLongLong()))) b.append(x);
    qlonglong sum = 0;
    for (auto& x : std::as_const(b)) sum += x.toLongLong();
    keep(sum);
  });
}
PEER(map_qt, "map/QList<QVariant>");
PEER(filter_qt, "filter/QList<QVariant>");
PEER(reduce_qt, "reduce/QList<QVariant>");
PEER(group_qt, "group_by/QHash-of-QList<QVariant>");
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
void map_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] {
    auto* o = map_boxes(in);
    keep(o->len);
    g_ptr_array_unref(o);
  });
}
void filter_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] {
    auto* o = filter_boxes(in);
    keep(o->len);
    g_ptr_array_unref(o);
  });
}
void reduce_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] { keep(sum_boxes(in)); });
}
void group_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] {
    GHashTable* g =
        g_hash_table_new_full(nullptr, nullptr, nullptr, reinterpret_cast<GDestroyNotify>(g_ptr_array_unref));
    for (guint i = 0; i < in->len; ++i) {
      gpointer key = GINT_TO_POINTER(group_of(at(in, i)));
      auto* list = static_cast<GPtrArray*>(g_hash_table_lookup(g, key));
      if (!list) g_hash_table_insert(g, key, list = g_ptr_array_new_with_free_func(unbox));
      g_ptr_array_add(list, hold(g_ptr_array_index(in, i)));
    }
    keep(g_hash_table_size(g));
    g_hash_table_unref(g);
  });
}
void sort_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] {
    auto* o = g_ptr_array_new_full(in->len, unbox);
    for (guint i = 0; i < in->len; ++i) g_ptr_array_add(o, hold(g_ptr_array_index(in, i)));
    g_ptr_array_sort(o, [](gconstpointer a, gconstpointer b) -> gint {
      gint64 x = **static_cast<gint64* const*>(a), y = **static_cast<gint64* const*>(b);
      return (x > y) - (x < y);
    });
    keep(o->len);
    g_ptr_array_unref(o);
  });
}
void pipe_g(State& s) {
  auto* in = boxes();
  per_element(s, [&] {
    auto *a = map_boxes(in), *b = filter_boxes(a);
    keep(sum_boxes(b));
    g_ptr_array_unref(b);
    g_ptr_array_unref(a);
  });
}
PEER(map_g, "map/GPtrArray");
PEER(filter_g, "filter/GPtrArray");
PEER(reduce_g, "reduce/GPtrArray");
PEER(group_g, "group_by/GHashTable-of-GPtrArray");
PEER(sort_g, "sort/GPtrArray");
PEER(pipe_g, "map_filter_reduce/GPtrArray");
#endif

// ---------------------------------------------------------------- hash maps with 1e6 string keys
static std::vector<std::string> make_keys(const char* prefix, std::uint64_t seed) {
  std::vector<std::string> v;
  Rng r{seed};
  for (std::size_t i = 0; i < kN; ++i)  // 12 to 30 characters, all different
    v.push_back(prefix + std::to_string(i) + "/" + std::string(r.below(14), char('a' + r.below(26))));
  for (std::size_t i = kN; i > 1; --i) std::swap(v[i - 1], v[r.below(i)]);
  return v;
}
static const std::vector<std::string>& keys8() {
  static const auto v = make_keys("item-", 1);
  return v;
}
static const std::vector<std::string>& misses8() {
  static const auto v = make_keys("none-", 2);
  return v;
}
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
  static const auto v = [] {
    auto o = keys<Key>();
    Rng r{9};
    for (std::size_t i = kN; i > 1; --i) std::swap(o[i - 1], o[r.below(i)]);
    return o;
  }();
  return v;
}
template <class Map, class Key>
void hash_insert(State& s) {
  auto& k = keys<Key>();
  per_element(s, [&] {
    Map m;
    int i = 0;
    for (auto& x : k) m[x] = i++;
    keep(m.size());
  });
}
template <class Map, class Key>
void hash_find(State& s, const std::vector<Key>& look) {
  Map m;
  int i = 0;
  for (auto& x : keys<Key>()) m[x] = i++;
  per_element(s, [&] {
    std::size_t n = 0;
    for (auto& x : look) n += m.find(x) != m.end();
    keep(n);
  });
}
template <class Map, class Key>
void hash_hit(State& s) {
  hash_find<Map, Key>(s, probes<Key>());
}
template <class Map, class Key>
void hash_miss(State& s) {
  hash_find<Map, Key>(s, misses<Key>());
}
#define HASHED(Map, Key, name)                        \
  PEER((hash_insert<Map, Key>), "hash_insert/" name); \
  PEER((hash_hit<Map, Key>), "hash_find_hit/" name);  \
  PEER((hash_miss<Map, Key>), "hash_find_miss/" name)
using Std8 = std::unordered_map<std::string, int>;
using Std16 = std::unordered_map<std::u16string, int>;
HASHED(Std8, std::string, "unordered_map<string>");
HASHED(Std16, std::u16string, "unordered_map<u16string>");
#if PEERS_ABSL
using Flat8 = absl::flat_hash_map<std::string, int>;
using Flat16 = absl::flat_hash_map<std::u16string, int>;
HASHED(Flat8, std::string, "absl::flat_hash_map<string>");
HASHED(Flat16, std::u16string, "absl::flat_hash_map<u16string>");
#endif
#if PEERS_QT
using QMap16 = QHash<QString, int>;
HASHED(QMap16, QString, "QHash<QString> (keys shared, not copied)");
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
  per_element(s, [] {
    auto* m = fill();
    keep(g_hash_table_size(m));
    g_hash_table_unref(m);
  });
}
static void ghash_find(State& s, const std::vector<std::string>& look) {
  auto* m = fill();
  per_element(s, [&] {
    std::size_t n = 0;
    for (auto& k : look) n += g_hash_table_lookup(m, k.c_str()) != nullptr;
    keep(n);
  });
  g_hash_table_unref(m);
}
void ghash_hit(State& s) { ghash_find(s, probes<std::string>()); }
void ghash_miss(State& s) { ghash_find(s, misses8()); }
PEER(ghash_insert, "hash_insert/GHashTable(strdup)");
PEER(ghash_hit, "hash_find_hit/GHashTable(strdup)");
PEER(ghash_miss, "hash_find_miss/GHashTable(strdup)");
#endif
}  // namespace
