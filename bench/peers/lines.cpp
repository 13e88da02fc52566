// SPDX-License-Identifier: MIT
// Finding the lines of a text.
#include "bench/lines.h"
#include <cstring>
#include <istream>
#include <streambuf>
#include <string_view>
#include "bench/peers/text_hwy.h"
#if defined(__x86_64__)
#include <immintrin.h>
#endif
#if PEERS_QT
#include <QIODevice>
#include <QString>
#include <QTextStream>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif

using namespace bench;
using benchmark::State;
namespace {

template <class Text>
void copy_all(State& s, const Text& t) {
  Text to(t.size(), 0);
  run_lines(s, t, 0, [&](const Text& from, std::uint64_t&) {
    std::memcpy(to.data(), from.data(), from.size() * sizeof from[0]);
    benchmark::ClobberMemory();
    return 0;
  });
}
void lines8_memcpy(State& s) { copy_all(s, text8()); }
void lines16_memcpy(State& s) { copy_all(s, text16()); }
PEER(lines8_memcpy, "lines_utf8/limit-memcpy");
PEER(lines16_memcpy, "lines_utf16/limit-memcpy");

#if defined(__x86_64__)
__attribute__((target("avx2"))) static std::uint64_t avx2_read(const void* data, std::size_t n) {
  auto* p = static_cast<const __m256i*>(data);
  __m256i a = _mm256_setzero_si256(), b = a, c = a, d = a;
  for (std::size_t i = 0; i + 4 <= n / 32; i += 4) {
    a = _mm256_or_si256(a, _mm256_loadu_si256(p + i));
    b = _mm256_or_si256(b, _mm256_loadu_si256(p + i + 1));
    c = _mm256_or_si256(c, _mm256_loadu_si256(p + i + 2));
    d = _mm256_or_si256(d, _mm256_loadu_si256(p + i + 3));
  }
  a = _mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d));
  return std::uint64_t(_mm256_extract_epi64(a, 0));
}
template <class Text>
void read_all(State& s, const Text& t) {
  if (!__builtin_cpu_supports("avx2")) {
    s.SkipWithError("no AVX2");
    return;
  }
  run_lines(s, t, 0, [](const Text& x, std::uint64_t& acc) {
    acc = avx2_read(x.data(), x.size() * sizeof x[0]);
    return 0;
  });
}
void lines8_read(State& s) { read_all(s, text8()); }
void lines16_read(State& s) { read_all(s, text16()); }
PEER(lines8_read, "lines_utf8/limit-avx2-read");
void ascii80_read(State& s) { read_all(s, ascii80()); }
void utf16_80_read(State& s) { read_all(s, utf16_80()); }
PEER(lines16_read, "lines_utf16/limit-avx2-read");
PEER(ascii80_read, "lines80_ascii/limit-avx2-read");
PEER(utf16_80_read, "lines80_utf16/limit-avx2-read");

__attribute__((target("avx2"))) static __m256i avx2_ends(__m256i v) {
  __m256i lf = _mm256_cmpeq_epi16(v, _mm256_set1_epi16(0x0A));
  __m256i cr = _mm256_cmpeq_epi16(v, _mm256_set1_epi16(0x0D));
  __m256i nel = _mm256_cmpeq_epi16(v, _mm256_set1_epi16(0x85));
  __m256i ls = _mm256_cmpeq_epi16(_mm256_or_si256(v, _mm256_set1_epi16(1)), _mm256_set1_epi16(0x2029));
  return _mm256_or_si256(_mm256_or_si256(lf, cr), _mm256_or_si256(nel, ls));
}
__attribute__((target("avx2,bmi"))) static std::size_t avx2_lines(const char16_t* p, std::size_t n,
                                                                  std::uint64_t& acc) {
  std::size_t i = 0, start = 0, lines = 0;
  std::uint64_t a = 0;
  auto end_at = [&](std::size_t at) {
    if (p[at] == 0x0A && at > 0 && p[at - 1] == 0x0D) {
      start = at + 1;
      return;
    }
    a += at - start;
    start = at + 1;
    ++lines;
  };
  for (; i + 32 <= n; i += 32) {
    __m256i x = avx2_ends(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + i)));
    __m256i y = avx2_ends(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + i + 16)));
    __m256i both = _mm256_permute4x64_epi64(_mm256_packs_epi16(x, y), 0xD8);
    for (unsigned bits = unsigned(_mm256_movemask_epi8(both)); bits; bits &= bits - 1)
      end_at(i + unsigned(__builtin_ctz(bits)));
  }
  for (; i < n; ++i)
    if (p[i] == 0x0A || p[i] == 0x0D || p[i] == 0x85 || (p[i] | 1) == 0x2029) end_at(i);
  a += n - start;
  acc = a;
  return lines + 1;
}
void lines16_avx2(State& s) {
  if (!__builtin_cpu_supports("avx2")) {
    s.SkipWithError("no AVX2");
    return;
  }
  run_lines(s, text16(), lines_all(), [](auto& t, std::uint64_t& acc) { return avx2_lines(t.data(), t.size(), acc); });
}
PEER(lines16_avx2, "lines_utf16/hand-avx2-scan");
#endif
#if PEERS_HWY
void lines16_hwy(State& s) {
  s.SetLabel(hwy_target());
  run_lines(s, text16(), lines_all(), [](auto& t, std::uint64_t& acc) { return hwy_lines(t.data(), t.size(), &acc); });
}
void utf16_80_hwy(State& s) {
  s.SetLabel(hwy_target());
  run_lines(s, utf16_80(), lines_of_80(utf16_80()),
            [](auto& t, std::uint64_t& acc) { return hwy_lines(t.data(), t.size(), &acc); });
}
PEER(utf16_80_hwy, "lines80_utf16/highway-scan");
PEER(lines16_hwy, "lines_utf16/highway-scan");
#endif

std::size_t memchr_lines(const std::string& t, std::uint64_t& acc) {
  const char *p = t.data(), *end = p + t.size();
  std::size_t n = 1;
  while (auto* q = static_cast<const char*>(std::memchr(p, '\n', std::size_t(end - p)))) {
    acc += std::uint64_t(q - p);
    p = q + 1;
    ++n;
  }
  return n;
}
void lines8_memchr(State& s) { run_lines(s, text8(), lines_lf(), memchr_lines); }
void ascii80_memchr(State& s) { run_lines(s, ascii80(), lines_of_80(ascii80()), memchr_lines); }
PEER(ascii80_memchr, "lines80_ascii/memchr (LF)");

// What a text beyond the caches costs this machine: the growth that no scan can avoid.
template <std::size_t MiB>
void scaling_memchr(State& s) {
  static const std::string t = lines80_ascii(MiB << 20);
  run_lines(s, t, lines_of_80(t), memchr_lines);
}
PEER(scaling_memchr<16>, "lines_scaling_ascii/memchr-16-MiB (LF)");
PEER(scaling_memchr<256>, "lines_scaling_ascii/memchr-256-MiB (LF)");

void lines8_getline(State& s) {
  struct Buf : std::streambuf {
    Buf(const std::string& t) {
      auto* p = const_cast<char*>(t.data());
      setg(p, p, p + t.size());
    }
  };
  run_lines(s, text8(), lines_lf(), [](auto& t, std::uint64_t& acc) {
    Buf b(t);
    std::istream in(&b);
    std::string line;
    std::size_t n = 0;
    while (std::getline(in, line)) {
      acc += line.size();
      ++n;
    }
    return n;
  });
}
void lines8_scalar(State& s) {
  run_lines(s, text8(), lines_lf(), [](auto& t, std::uint64_t& acc) {
    std::size_t n = 1, start = 0;
    for (std::size_t i = 0; i < t.size(); ++i)
      if (t[i] == '\n') {
        acc += i - start;
        start = i + 1;
        ++n;
      }
    return n;
  });
}
PEER(lines8_memchr, "lines_utf8/memchr (LF)");
PEER(lines8_getline, "lines_utf8/std::getline (LF)");
PEER(lines8_scalar, "lines_utf8/scalar (LF)");

// The two obvious scalar loops over the six terminators.
template <class Text>
std::size_t switch_lines(const Text& t, std::uint64_t& acc) {
  std::size_t n = 1, start = 0, len = t.size();
  const auto* p = t.data();
  for (std::size_t i = 0; i < len; ++i) switch (char16_t(p[i])) {
      case 0x0D:
        acc += i - start;
        if (i + 1 < len && p[i + 1] == 0x0A) ++i;
        start = i + 1;
        ++n;
        break;
      case 0x0A:
      case 0x85:
      case 0x2028:
      case 0x2029:
        acc += i - start;
        start = i + 1;
        ++n;
        break;
      default: break;
    }
  return n;
}
template <class Text>
std::size_t reject_lines(const Text& t, std::uint64_t& acc) {
  std::size_t n = 1, start = 0, len = t.size();
  const auto* p = t.data();
  for (std::size_t i = 0; i < len; ++i) {
    const char16_t c = char16_t(p[i]);
    if (c >= 0x20 && c < 0x80) [[likely]]
      continue;
    if (c != 0x0A && c != 0x0D && c != 0x85 && (c | 1) != 0x2029) continue;
    acc += i - start;
    if (c == 0x0D && i + 1 < len && p[i + 1] == 0x0A) ++i;
    start = i + 1;
    ++n;
  }
  return n;
}
void lines16_switch(State& s) { run_lines(s, text16(), lines_all(), switch_lines<std::u16string>); }
void lines16_reject(State& s) { run_lines(s, text16(), lines_all(), reject_lines<std::u16string>); }
void ascii80_switch(State& s) { run_lines(s, ascii80(), lines_of_80(ascii80()), switch_lines<std::string>); }
void ascii80_reject(State& s) { run_lines(s, ascii80(), lines_of_80(ascii80()), reject_lines<std::string>); }
void utf16_80_switch(State& s) { run_lines(s, utf16_80(), lines_of_80(utf16_80()), switch_lines<std::u16string>); }
void utf16_80_reject(State& s) { run_lines(s, utf16_80(), lines_of_80(utf16_80()), reject_lines<std::u16string>); }
PEER(ascii80_switch, "lines80_ascii/scalar-switch");
PEER(ascii80_reject, "lines80_ascii/scalar-quick-reject");
PEER(utf16_80_switch, "lines80_utf16/scalar-switch");
PEER(utf16_80_reject, "lines80_utf16/scalar-quick-reject");
PEER(utf16_80_switch, "last_line_range/scalar-switch");
void lines16_find(State& s) {
  run_lines(s, text16(), lines_lf(), [](auto& t, std::uint64_t& acc) {
    std::u16string_view v(t);
    std::size_t n = 1, start = 0, at;
    while ((at = v.find(u'\n', start)) != v.npos) {
      acc += at - start;
      start = at + 1;
      ++n;
    }
    return n;
  });
}
PEER(lines16_switch, "lines_utf16/scalar-switch");
PEER(lines16_reject, "lines_utf16/scalar-quick-reject");
PEER(lines16_find, "lines_utf16/u16string_view::find (LF)");

#if PEERS_QT
static QString raw(const std::u16string& t) {
  return QString::fromRawData(reinterpret_cast<const QChar*>(t.data()), qsizetype(t.size()));
}
std::size_t index_of_lines(QStringView t, std::uint64_t& acc) {
  std::size_t n = 1;
  qsizetype start = 0, at;
  while ((at = t.indexOf(u'\n', start)) >= 0) {
    acc += std::uint64_t(at - start);
    start = at + 1;
    ++n;
  }
  return n;
}
void utf16_80_indexof(State& s) { run_lines(s, utf16_80(), lines_of_80(utf16_80()), index_of_lines); }
PEER(utf16_80_indexof, "lines80_utf16/QStringView::indexOf (LF)");
PEER(utf16_80_indexof, "last_line_range/QStringView::indexOf (LF)");

template <std::size_t MiB>
void scaling_indexof(State& s) {
  static const std::u16string t = lines80_utf16(MiB << 20);
  run_lines(s, t, lines_of_80(t), index_of_lines);
}
PEER(scaling_indexof<16>, "lines_scaling_utf16/QStringView::indexOf-16-MiB (LF)");
PEER(scaling_indexof<256>, "lines_scaling_utf16/QStringView::indexOf-256-MiB (LF)");

// A string for every line. The list of `split` keeps them all; the other makes one and drops it.
void substrings_split(State& s) {
  QString q = raw(utf16_80());
  run_lines(s, utf16_80(), lines_of_80(utf16_80()), [&](auto&, std::uint64_t& acc) {
    auto l = q.split(u'\n');
    acc = std::uint64_t(l.back().size());
    return std::size_t(l.size());
  });
}
void substrings_tokenize(State& s) {
  run_lines(s, utf16_80(), lines_of_80(utf16_80()), [&](auto& t, std::uint64_t& acc) {
    std::size_t n = 0;
    for (QStringView l : QStringView(t).tokenize(u'\n')) {
      acc += std::uint64_t(l.toString().size());
      ++n;
    }
    return n;
  });
}
PEER(substrings_split, "line_substrings_utf16/QString::split (LF)");
PEER(substrings_tokenize, "line_substrings_utf16/QStringView::tokenize+toString (LF)");

void lines16_qsplit(State& s) {
  QString q = raw(text16());
  run_lines(s, text16(), lines_lf(), [&](auto&, std::uint64_t& acc) {
    auto l = q.split(u'\n');
    acc = std::uint64_t(l.back().size());
    return std::size_t(l.size());
  });
}
void lines16_qviewsplit(State& s) {
  QStringView q(text16());
  run_lines(s, text16(), lines_lf(), [&](auto&, std::uint64_t& acc) {
    auto l = q.split(u'\n');
    acc = std::uint64_t(l.back().size());
    return std::size_t(l.size());
  });
}
void lines16_qtokenize(State& s) {
  QStringView q(text16());
  run_lines(s, text16(), lines_lf(), [&](auto&, std::uint64_t& acc) {
    std::size_t n = 0;
    for (QStringView l : q.tokenize(u'\n')) {
      acc += std::uint64_t(l.size());
      ++n;
    }
    return n;
  });
}
void lines16_qstream(State& s) {
  QString q = raw(text16());
  run_lines(s, text16(), lines_lf(), [&](auto&, std::uint64_t& acc) {
    QTextStream in(&q, QIODevice::ReadOnly);
    QString line;
    std::size_t n = 0;
    while (in.readLineInto(&line)) {
      acc += std::uint64_t(line.size());
      ++n;
    }
    return n;
  });
}
PEER(lines16_qsplit, "lines_utf16/QString::split (LF)");
PEER(lines16_qviewsplit, "lines_utf16/QStringView::split (LF)");
PEER(lines16_qtokenize, "lines_utf16/QStringView::tokenize (LF)");
PEER(lines16_qstream, "lines_utf16/QTextStream::readLineInto (LF, CR LF)");
#endif
// The same for ASCII, which Qt keeps as UTF-16; the rate is per byte of ASCII for all.
void substrings_string(State& s) {
  run_lines(s, ascii80(), lines_of_80(ascii80()), [](auto& t, std::uint64_t& acc) {
    std::size_t n = 0, start = 0, at;
    for (; (at = t.find('\n', start)) != t.npos; start = at + 1, ++n) acc += std::string(t, start, at - start).size();
    acc += std::string(t, start).size();
    return n + 1;
  });
}
PEER(substrings_string, "line_substrings_ascii/std::string-each (LF)");
#if PEERS_QT
void substrings_ascii_split(State& s) {
  QString q = QString::fromLatin1(ascii80());
  run_lines(s, ascii80(), lines_of_80(ascii80()), [&](auto&, std::uint64_t& acc) {
    auto l = q.split(u'\n');
    acc = std::uint64_t(l.back().size());
    return std::size_t(l.size());
  });
}
PEER(substrings_ascii_split, "line_substrings_ascii/QString::split (LF)");
#endif
#if PEERS_GLIB
void lines8_gsplit(State& s) {
  run_lines(s, text8(), lines_lf(), [](auto& t, std::uint64_t& acc) {
    char** v = g_strsplit(t.c_str(), "\n", -1);
    std::size_t n = g_strv_length(v);
    acc = std::uint64_t(v[n - 1][0]);
    g_strfreev(v);
    return n;
  });
}
PEER(lines8_gsplit, "lines_utf8/g_strsplit (LF)");
#endif

}  // namespace
