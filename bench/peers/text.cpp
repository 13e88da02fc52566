// SPDX-License-Identifier: MIT
// Words, natural sort, common prefix.
#include "bench/text.h"
#include <algorithm>
#include <clocale>
#include <cstring>
#include <numeric>
#include <string_view>
#include "bench/corpus.h"
#include "bench/peers/text_hwy.h"
#if defined(__x86_64__)
#include <immintrin.h>
#endif
#if PEERS_QT
#include <QCollator>
#include <QString>
#include <QTextBoundaryFinder>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_ICU
#include <unicode/ubrk.h>
#include <unicode/ucol.h>
#include <unicode/uregex.h>
#include <unicode/utext.h>
#endif

using namespace bench;
using benchmark::State;
namespace {

// ---------------------------------------------------------------- words
void words_ascii(State& s) {  // not UAX #29: one table look-up per unit, a floor
  static bool letter[128];
  for (int c = 0; c < 128; ++c) letter[c] = std::isalnum(c) || c == '\'';
  auto& t = words16();
  for (auto _ : s) {
    std::size_t n = 0;
    bool in = false;
    for (char16_t c : t) {
      bool now = c < 128 ? letter[c] : true;
      n += now && !in;
      in = now;
    }
    keep(n);
  }
  bytes(s, std::int64_t(t.size() * 2));
}
PEER(words_ascii, "words/limit-ascii-table-scan");
#if PEERS_ICU
static UBreakIterator* open_words(const UChar* p, int32_t n) {
  UErrorCode e = U_ZERO_ERROR;
  return ubrk_open(UBRK_WORD, "en_US", p, n, &e);
}
static const UChar* u(const std::u16string& s) { return reinterpret_cast<const UChar*>(s.data()); }

static void words_icu_over(State& s, const std::u16string& t) {
  UBreakIterator* b = open_words(nullptr, 0);
  for (auto _ : s) {
    UErrorCode e = U_ZERO_ERROR;
    ubrk_setText(b, u(t), int32_t(t.size()), &e);
    std::size_t n = 0;
    while (ubrk_next(b) != UBRK_DONE) n += ubrk_getRuleStatus(b) >= UBRK_WORD_NONE_LIMIT;
    keep(n);
  }
  bytes(s, std::int64_t(t.size() * 2));
  ubrk_close(b);
}
void words_icu(State& s) { words_icu_over(s, words16()); }
void words_icu_english(State& s) { words_icu_over(s, english16()); }
void words_icu_mixed(State& s) { words_icu_over(s, mixed16()); }
PEER(words_icu_english, "words_english/ICU-ubrk_next");
PEER(words_icu_mixed, "words_mixed/ICU-ubrk_next");
void tokenizer_icu_open(State& s) {
  const std::u16string text = u"a short text";
  for (auto _ : s) {
    UBreakIterator* b = open_words(u(text), int32_t(text.size()));
    keep(b);
    ubrk_close(b);
  }
  items(s, 1);
}
PEER(tokenizer_icu_open, "tokenizer_open/ICU-ubrk_open");
void words_icu_utext8(State& s) {  // the same text in UTF-8; rate still given per UTF-16 byte
  auto& t = words16();
  std::string t8 = text8().substr(0, t.size());
  while (to16(t8).size() < t.size()) t8 = text8().substr(0, t8.size() + (t.size() - to16(t8).size()));
  UBreakIterator* b = open_words(nullptr, 0);
  for (auto _ : s) {
    UErrorCode e = U_ZERO_ERROR;
    UText* ut = utext_openUTF8(nullptr, t8.data(), int64_t(t8.size()), &e);
    ubrk_setUText(b, ut, &e);
    std::size_t n = 0;
    while (ubrk_next(b) != UBRK_DONE) n += ubrk_getRuleStatus(b) >= UBRK_WORD_NONE_LIMIT;
    keep(n);
    utext_close(ut);
  }
  bytes(s, std::int64_t(t.size() * 2));
  ubrk_close(b);
}
PEER(words_icu, "words/ICU-ubrk_next");
PEER(words_icu_utext8, "words/ICU-ubrk_next-over-UTF8-UText");

// 1000 phrases of about 40 units, one call each
template <class Get, class Put>
static void short_icu(State& s, Get get, Put put) {
  auto& v = phrases16();
  for (auto _ : s) {
    std::size_t n = 0;
    for (auto& t : v) {
      UBreakIterator* b = get(t);
      while (ubrk_next(b) != UBRK_DONE) n += ubrk_getRuleStatus(b) >= UBRK_WORD_NONE_LIMIT;
      put(b);
    }
    keep(n);
  }
  items(s, std::int64_t(v.size()));
}
void short_icu_open(State& s) {
  short_icu(s, [](auto& t) { return open_words(u(t), int32_t(t.size())); }, ubrk_close);
}
void short_icu_clone(State& s) {
  UBreakIterator* m = open_words(nullptr, 0);
  short_icu(
      s,
      [m](auto& t) {
        UErrorCode e = U_ZERO_ERROR;
        UBreakIterator* b = ubrk_clone(m, &e);
        ubrk_setText(b, u(t), int32_t(t.size()), &e);
        return b;
      },
      ubrk_close);
  ubrk_close(m);
}
void short_icu_reuse(State& s) {
  UBreakIterator* m = open_words(nullptr, 0);
  short_icu(
      s,
      [m](auto& t) {
        UErrorCode e = U_ZERO_ERROR;
        ubrk_setText(m, u(t), int32_t(t.size()), &e);
        return m;
      },
      [](UBreakIterator*) {});
  ubrk_close(m);
}
PEER(short_icu_open, "words_short/ICU-opened-each-time");
PEER(short_icu_clone, "words_short/ICU-cloned-each-time");
PEER(short_icu_reuse, "words_short/ICU-reused");
#endif
#if PEERS_QT
static void words_qt_over(State& s, const std::u16string& t) {
  for (auto _ : s) {
    QTextBoundaryFinder f(QTextBoundaryFinder::Word, reinterpret_cast<const QChar*>(t.data()), qsizetype(t.size()));
    std::size_t n = 0;
    while (f.toNextBoundary() != -1) n += bool(f.boundaryReasons() & QTextBoundaryFinder::StartOfItem);
    keep(n);
  }
  bytes(s, std::int64_t(t.size() * 2));
}
void words_qt(State& s) { words_qt_over(s, words16()); }
void words_qt_english(State& s) { words_qt_over(s, english16()); }
void words_qt_mixed(State& s) { words_qt_over(s, mixed16()); }
PEER(words_qt_english, "words_english/QTextBoundaryFinder");
PEER(words_qt_mixed, "words_mixed/QTextBoundaryFinder");
void short_qt(State& s) {
  auto& v = phrases16();
  for (auto _ : s) {
    std::size_t n = 0;
    for (auto& t : v) {
      QTextBoundaryFinder f(QTextBoundaryFinder::Word, reinterpret_cast<const QChar*>(t.data()), qsizetype(t.size()));
      while (f.toNextBoundary() != -1) n += bool(f.boundaryReasons() & QTextBoundaryFinder::StartOfItem);
    }
    keep(n);
  }
  items(s, std::int64_t(v.size()));
}
PEER(words_qt, "words/QTextBoundaryFinder");
PEER(short_qt, "words_short/QTextBoundaryFinder");
#endif

// ---------------------------------------------------------------- natural sort
// 100000 file names; an index array is sorted.
template <class Less>
static std::vector<std::uint32_t> sorted(std::size_t n, Less less) {
  std::vector<std::uint32_t> i(n);
  std::iota(i.begin(), i.end(), 0u);
  std::sort(i.begin(), i.end(), less);
  return i;
}
static const std::vector<std::u16string>& names16() {
  static const std::vector<std::u16string> v = [] {
    std::vector<std::u16string> o;
    for (auto& n : file_names()) o.push_back(to16(n));
    return o;
  }();
  return v;
}
template <class Sort>
static void run_sort(State& s, Sort sort) {
  for (auto _ : s) keep(sort().front());
  items(s, std::int64_t(file_names().size()));
}
void nat_codeunits(State& s) {  // no natural order at all: what the sort itself costs
  auto& v = names16();
  run_sort(s, [&] { return sorted(v.size(), [&](auto a, auto b) { return v[a] < v[b]; }); });
}
static int scalar_natural(const std::u16string& a,
                          const std::u16string& b) {  // ASCII case folding, digit runs by value
  std::size_t i = 0, j = 0;
  auto digit = [](char16_t c) { return c >= '0' && c <= '9'; };
  auto fold = [](char16_t c) { return c >= 'A' && c <= 'Z' ? char16_t(c + 32) : c; };
  while (i < a.size() && j < b.size()) {
    if (digit(a[i]) && digit(b[j])) {
      while (i < a.size() && a[i] == '0') ++i;
      while (j < b.size() && b[j] == '0') ++j;
      std::size_t ie = i, je = j;
      while (ie < a.size() && digit(a[ie])) ++ie;
      while (je < b.size() && digit(b[je])) ++je;
      if (ie - i != je - j) return ie - i < je - j ? -1 : 1;
      for (; i < ie; ++i, ++j)
        if (a[i] != b[j]) return a[i] < b[j] ? -1 : 1;
    } else {
      char16_t x = fold(a[i++]), y = fold(b[j++]);
      if (x != y) return x < y ? -1 : 1;
    }
  }
  return int(i < a.size()) - int(j < b.size());
}
void nat_scalar(State& s) {
  auto& v = names16();
  run_sort(s, [&] { return sorted(v.size(), [&](auto a, auto b) { return scalar_natural(v[a], v[b]) < 0; }); });
}
void nat_strverscmp(State& s) {
  auto& v = file_names();
  run_sort(
      s, [&] { return sorted(v.size(), [&](auto a, auto b) { return strverscmp(v[a].c_str(), v[b].c_str()) < 0; }); });
}
PEER(nat_codeunits, "natural_sort/limit-code-unit-order");
PEER(nat_scalar, "natural_sort/scalar-natural-compare");
PEER(nat_strverscmp, "natural_sort/strverscmp");
#if PEERS_ICU
static UCollator* open_numeric() {
  UErrorCode e = U_ZERO_ERROR;
  UCollator* c = ucol_open("en_US", &e);
  ucol_setAttribute(c, UCOL_NUMERIC_COLLATION, UCOL_ON, &e);
  return c;
}
void finder_icu(State& s) {
  std::vector<std::u16string> v;
  for (auto& n : numbered_names()) v.push_back(to16(n));
  UCollator* c = open_numeric();
  for (auto _ : s) {
    std::int64_t sum = 0;
    for (std::size_t i = 1; i < v.size(); ++i)
      sum += ucol_strcoll(c, u(v[i - 1]), int32_t(v[i - 1].size()), u(v[i]), int32_t(v[i].size()));
    keep(sum);
  }
  items(s, std::int64_t(v.size() - 1));
  ucol_close(c);
}
PEER(finder_icu, "finder_compare/ICU-ucol_strcoll-numeric");
void hash_references_icu(State& s) {
  UErrorCode e = U_ZERO_ERROR;
  const std::u16string text = to16(log8()), pattern = u"([0123456789abcdef]{7})[0123456789abcdef]*", with = u"$1";
  URegularExpression* r = uregex_open(u(pattern), int32_t(pattern.size()), UREGEX_CASE_INSENSITIVE, nullptr, &e);
  std::u16string out(text.size(), 0);
  for (auto _ : s) {
    uregex_setText(r, u(text), int32_t(text.size()), &e);
    keep(uregex_replaceAll(r, u(with), 2, reinterpret_cast<UChar*>(out.data()), int32_t(out.size()), &e));
  }
  bytes(s, std::int64_t(log8().size()));
  uregex_close(r);
}
PEER(hash_references_icu, "hash_references/ICU-uregex_replaceAll");
void nat_icu_compare(State& s) {
  auto& v = names16();
  UCollator* c = open_numeric();
  run_sort(s, [&] {
    return sorted(v.size(), [&](auto a, auto b) {
      return ucol_strcoll(c, u(v[a]), int32_t(v[a].size()), u(v[b]), int32_t(v[b].size())) == UCOL_LESS;
    });
  });
  ucol_close(c);
}
void nat_icu_compare8(State& s) {
  auto& v = file_names();
  UCollator* c = open_numeric();
  run_sort(s, [&] {
    return sorted(v.size(), [&](auto a, auto b) {
      UErrorCode e = U_ZERO_ERROR;
      return ucol_strcollUTF8(c, v[a].data(), int32_t(v[a].size()), v[b].data(), int32_t(v[b].size()), &e) == UCOL_LESS;
    });
  });
  ucol_close(c);
}
void nat_icu_key(State& s) {
  auto& v = names16();
  UCollator* c = open_numeric();
  run_sort(s, [&] {
    std::vector<std::string> keys(v.size());
    std::uint8_t buf[1024];
    for (std::size_t i = 0; i < v.size(); ++i) {
      int32_t n = ucol_getSortKey(c, u(v[i]), int32_t(v[i].size()), buf, sizeof buf);
      keys[i].assign(reinterpret_cast<char*>(buf), std::size_t(n));
    }
    return sorted(v.size(), [&](auto a, auto b) { return keys[a] < keys[b]; });
  });
  ucol_close(c);
}
PEER(nat_icu_compare, "natural_sort/ICU-ucol_strcoll-numeric");
PEER(nat_icu_compare8, "natural_sort/ICU-ucol_strcollUTF8-numeric");
PEER(nat_icu_key, "natural_sort/ICU-sort-keys-numeric");
#endif
#if PEERS_QT
static std::vector<QString> qnames() {
  std::vector<QString> v;
  for (auto& n : file_names()) v.push_back(QString::fromStdString(n));
  return v;
}
static bool numeric(State& s, QCollator& c) {
  c.setNumericMode(true);
  if (c.compare(QStringLiteral("a2"), QStringLiteral("a10")) < 0) return true;
  s.SkipWithError("numeric mode not honoured");
  return false;
}
void finder_qt(State& s) {
  std::vector<QString> v;
  for (auto& n : numbered_names()) v.push_back(QString::fromStdString(n));
  QCollator c(QLocale(QLocale::English, QLocale::UnitedStates));
  if (!numeric(s, c)) return;
  for (auto _ : s) {
    std::int64_t sum = 0;
    for (std::size_t i = 1; i < v.size(); ++i) sum += c.compare(v[i - 1], v[i]);
    keep(sum);
  }
  items(s, std::int64_t(v.size() - 1));
}
PEER(finder_qt, "finder_compare/QCollator-numeric-compare");
void nat_qt_compare(State& s) {
  auto v = qnames();
  QCollator c(QLocale(QLocale::English, QLocale::UnitedStates));
  if (!numeric(s, c)) return;
  run_sort(s, [&] { return sorted(v.size(), [&](auto a, auto b) { return c.compare(v[a], v[b]) < 0; }); });
}
void nat_qt_key(State& s) {
  auto v = qnames();
  QCollator c(QLocale(QLocale::English, QLocale::UnitedStates));
  if (!numeric(s, c)) return;
  run_sort(s, [&] {
    std::vector<QCollatorSortKey> keys;
    keys.reserve(v.size());
    for (auto& n : v) keys.push_back(c.sortKey(n));
    return sorted(v.size(), [&](auto a, auto b) { return keys[a] < keys[b]; });
  });
}
PEER(nat_qt_compare, "natural_sort/QCollator-numeric-compare");
PEER(nat_qt_key, "natural_sort/QCollator-numeric-sortKey");
#endif
#if PEERS_GLIB
void nat_glib(State& s) {
  auto& v = file_names();
  s.SetLabel(std::setlocale(LC_COLLATE, nullptr));
  run_sort(s, [&] {
    std::vector<char*> keys;
    keys.reserve(v.size());
    for (auto& n : v) keys.push_back(g_utf8_collate_key_for_filename(n.data(), gssize(n.size())));
    auto i = sorted(v.size(), [&](auto a, auto b) { return std::strcmp(keys[a], keys[b]) < 0; });
    for (char* k : keys) g_free(k);
    return i;
  });
}
PEER(nat_glib, "natural_sort/g_utf8_collate_key_for_filename");
#endif

// ---------------------------------------------------------------- common prefix
// Two buffers of 1 MiB that differ in the last unit.
template <class Body>
static void run_prefix(State& s, bool check, Body body) {
  std::u16string a = text16().substr(0, kPrefixUnits), b = a;
  b.back() = u'#';
  for (auto _ : s) {
    std::size_t n = body(a, b);
    keep(n);
    if (check && !expect(s, n, kPrefixUnits - 1)) return;
  }
  bytes(s, std::int64_t(kPrefixUnits * 2));
}
void prefix_memcmp(State& s) {
  run_prefix(s, false, [](auto& a, auto& b) { return std::size_t(std::memcmp(a.data(), b.data(), a.size() * 2)); });
}
void prefix_mismatch(State& s) {
  run_prefix(s, true, [](auto& a, auto& b) {
    return std::size_t(std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin());
  });
}
void prefix_word64(State& s) {
  run_prefix(s, true, [](auto& a, auto& b) {
    std::size_t i = 0;
    for (; i + 4 <= a.size(); i += 4) {
      std::uint64_t x, y;
      std::memcpy(&x, a.data() + i, 8);
      std::memcpy(&y, b.data() + i, 8);
      if (x != y) return i + std::size_t(__builtin_ctzll(x ^ y)) / 16;
    }
    while (i < a.size() && a[i] == b[i]) ++i;
    return i;
  });
}
PEER(prefix_memcmp, "common_prefix/limit-memcmp");
PEER(prefix_memcmp, "common_suffix/limit-memcmp");
PEER(prefix_mismatch, "common_prefix/std::mismatch");
PEER(prefix_word64, "common_prefix/64-bit-words");
#if defined(__x86_64__)
__attribute__((target("avx2"))) static std::size_t avx2_prefix(const char16_t* a, const char16_t* b, std::size_t n) {
  std::size_t i = 0;
  auto eq = [&](std::size_t at) __attribute__((target("avx2"))) {
    return _mm256_cmpeq_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + at)),
                              _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + at)));
  };
  for (; i + 64 <= n; i += 64)
    if (_mm256_movemask_epi8(
            _mm256_and_si256(_mm256_and_si256(eq(i), eq(i + 16)), _mm256_and_si256(eq(i + 32), eq(i + 48)))) != -1)
      break;
  while (i < n && a[i] == b[i]) ++i;
  return i;
}
void prefix_avx2(State& s) {
  if (!__builtin_cpu_supports("avx2")) {
    s.SkipWithError("no AVX2");
    return;
  }
  run_prefix(s, true, [](auto& a, auto& b) { return avx2_prefix(a.data(), b.data(), a.size()); });
}
PEER(prefix_avx2, "common_prefix/hand-avx2");
#endif
#if PEERS_HWY
void prefix_hwy(State& s) {
  s.SetLabel(hwy_target());
  run_prefix(s, true, [](auto& a, auto& b) { return hwy_common_prefix(a.data(), b.data(), a.size()); });
}
PEER(prefix_hwy, "common_prefix/highway");
#endif
#if PEERS_QT
void prefix_qt(State& s) {  // order only, as memcmp
  run_prefix(s, false, [](auto& a, auto& b) { return std::size_t(QStringView(a).compare(QStringView(b))); });
}
PEER(prefix_qt, "common_prefix/QStringView::compare (order only)");
#endif

// ---------------------------------------------------------------- trimming, escaping, replacing
// The loop that one writes: a unit at a time.
template <class Change>
static void run_loop(State& s, const std::string& text, Change change) {
  for (auto _ : s) keep(change(text).size());
  bytes(s, std::int64_t(text.size()));
}
void escape_loop(State& s) {
  run_loop(s, page8(), [](const std::string& in) {
    std::string out;
    for (char c : in) switch (c) {
        case '\t': out += "\\t"; break;
        case '\r': out += "\\r"; break;
        case '\n': out += "\\n"; break;
        case '\\':
        case '"':
        case '\'': out += '\\'; [[fallthrough]];
        default: out += c;
      }
    return out;
  });
}
void replace_loop(State& s) {
  run_loop(s, page8(), [](const std::string& in) {
    std::string out;
    for (char c : in) out += c >= '\n' && c <= '\r' ? ' ' : c;
    return out;
  });
}
void trim_loop(State& s) {
  const std::string blanks(512u << 10, ' ');
  run_loop(s, blanks + "x" + blanks, [](const std::string& in) {
    auto blank = [](char c) { return c == ' ' || c == '\t' || (c >= '\n' && c <= '\r'); };
    std::size_t a = 0, b = in.size();
    while (a < b && blank(in[a])) ++a;
    while (b > a && blank(in[b - 1])) --b;
    return in.substr(a, b - a);
  });
}
PEER(escape_loop, "escape/plain-loop");
PEER(replace_loop, "replace_newlines/plain-loop");
PEER(trim_loop, "trim/plain-loop");
}  // namespace
