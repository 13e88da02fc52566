// SPDX-License-Identifier: MIT
#include <array>
#include <cstring>
#include "bench/codecs.h"
#if defined(__x86_64__)
#include <immintrin.h>
#endif
#if PEERS_QT
#include <QByteArray>
#endif
#if PEERS_ABSL
#include <absl/strings/escaping.h>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_OPENSSL
#include <openssl/evp.h>
#endif

using namespace bench;
using benchmark::State;
namespace {
static const std::array<std::uint8_t, 256>& table() {
  static const std::array<std::uint8_t, 256> t = [] {
    std::array<std::uint8_t, 256> a;
    a.fill(255);
    for (int i = 0; i < 64; ++i) a[std::uint8_t(kBase64Alphabet[i])] = std::uint8_t(i);
    return a;
  }();
  return t;
}

// One character at a time, white space skipped.
static std::string scalar_one(const std::string& in) {
  std::string o;
  o.resize(in.size() / 4 * 3 + 3);
  auto& t = table();
  char* d = o.data();
  unsigned v = 0, n = 0;
  for (char ch : in) {
    std::uint8_t x = t[std::uint8_t(ch)];
    if (x == 255) continue;
    v = v << 6 | x;
    if (++n == 4) {
      *d++ = char(v >> 16);
      *d++ = char(v >> 8);
      *d++ = char(v);
      n = 0;
    }
  }
  o.resize(std::size_t(d - o.data()));
  return o;
}
// Four at a time while all four are letters of the alphabet.
static std::size_t scalar_quads(const char*& p, const char* end, char* d) {
  auto& t = table();
  char* start = d;
  for (; end - p >= 4; p += 4) {
    std::uint32_t a = t[std::uint8_t(p[0])], b = t[std::uint8_t(p[1])], c = t[std::uint8_t(p[2])],
                  e = t[std::uint8_t(p[3])];
    if ((a | b | c | e) & 128) break;
    std::uint32_t v = a << 18 | b << 12 | c << 6 | e;
    d[0] = char(v >> 16);
    d[1] = char(v >> 8);
    d[2] = char(v);
    d += 3;
  }
  return std::size_t(d - start);
}
static std::string scalar_four(const std::string& in) {
  std::string o;
  o.resize(in.size() / 4 * 3 + 3);
  const char *p = in.data(), *end = p + in.size();
  char* d = o.data();
  while (true) {
    d += scalar_quads(p, end, d);
    if (p == end) break;
    ++p;  // breaks fall between quads here
  }
  o.resize(std::size_t(d - o.data()));
  return o;
}
static std::string copy_of(const std::string& in) { return std::string(in.data(), in.size()); }
static void decode_copy(State& s, const std::string& in) {
  for (auto _ : s) {
    auto o = copy_of(in);
    keep(*o.data());
  }
  bytes(s, std::int64_t(in.size()));
}
void dec_copy_clean(State& s) { decode_copy(s, base64_clean()); }
void dec_copy_wrapped(State& s) { decode_copy(s, base64_wrapped()); }
void dec_one_clean(State& s) { run_decode(s, base64_clean(), scalar_one); }
void dec_one_wrapped(State& s) { run_decode(s, base64_wrapped(), scalar_one); }
void dec_four_clean(State& s) { run_decode(s, base64_clean(), scalar_four); }
void dec_four_wrapped(State& s) { run_decode(s, base64_wrapped(), scalar_four); }
PEER(dec_copy_clean, "base64_decode_clean/limit-memcpy");
PEER(dec_copy_wrapped, "base64_decode_wrapped/limit-memcpy");
PEER(dec_one_clean, "base64_decode_clean/scalar-1-char");
PEER(dec_one_wrapped, "base64_decode_wrapped/scalar-1-char");
PEER(dec_four_clean, "base64_decode_clean/scalar-4-chars");
PEER(dec_four_wrapped, "base64_decode_wrapped/scalar-4-chars");

#if defined(__x86_64__)
// 32 characters to 24 bytes per step; stops at the first step holding anything else.
__attribute__((target("avx2"))) static std::size_t avx2_run(const char*& p, const char* end, char* d,
                                                            const char* dend) {
  const __m256i lut_lo =
      _mm256_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A,
                       0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A);
  const __m256i lut_hi =
      _mm256_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10,
                       0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10);
  const __m256i roll = _mm256_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0, 0, 16, 19, 4, -65,
                                        -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0);
  const __m256i slash = _mm256_set1_epi8(0x2F);
  const __m256i order = _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1, 2, 1, 0, 6, 5, 4, 10,
                                         9, 8, 14, 13, 12, -1, -1, -1, -1);
  char* start = d;
  for (; end - p >= 32 && dend - d >= 32; p += 32, d += 24) {
    __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    __m256i hi = _mm256_and_si256(_mm256_srli_epi32(v, 4), slash);
    __m256i bad =
        _mm256_and_si256(_mm256_shuffle_epi8(lut_lo, _mm256_and_si256(v, slash)), _mm256_shuffle_epi8(lut_hi, hi));
    if (!_mm256_testz_si256(bad, bad)) break;
    v = _mm256_add_epi8(v, _mm256_shuffle_epi8(roll, _mm256_add_epi8(_mm256_cmpeq_epi8(v, slash), hi)));
    v = _mm256_maddubs_epi16(v, _mm256_set1_epi32(0x01400140));
    v = _mm256_madd_epi16(v, _mm256_set1_epi32(0x00011000));
    v = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(v, order), _mm256_setr_epi32(0, 1, 2, 4, 5, 6, -1, -1));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(d), v);
  }
  return std::size_t(d - start);
}
static std::string avx2_decode(const std::string& in) {
  std::string o;
  o.resize(in.size() / 4 * 3 + 40);
  const char *p = in.data(), *end = p + in.size();
  char *d = o.data(), *dend = d + o.size();
  while (p < end) {
    d += avx2_run(p, end, d, dend);
    d += scalar_quads(p, end - p > 32 ? p + 32 : end, d);
    while (p < end && (*p == '\n' || *p == '\r')) ++p;
  }
  o.resize(std::size_t(d - o.data()));
  return o;
}
static void avx2_case(State& s, const std::string& in) {
  if (!__builtin_cpu_supports("avx2")) {
    s.SkipWithError("no AVX2");
    return;
  }
  run_decode(s, in, avx2_decode);
}
void dec_avx2_clean(State& s) { avx2_case(s, base64_clean()); }
void dec_avx2_wrapped(State& s) { avx2_case(s, base64_wrapped()); }
PEER(dec_avx2_clean, "base64_decode_clean/hand-avx2");
PEER(dec_avx2_wrapped, "base64_decode_wrapped/hand-avx2");
#endif
#if PEERS_QT
static QByteArray qt_decode(const std::string& in) {
  return QByteArray::fromBase64(QByteArray::fromRawData(in.data(), qsizetype(in.size())));
}
static QByteArray qt_decode_strict(const std::string& in) {
  return QByteArray::fromBase64Encoding(QByteArray::fromRawData(in.data(), qsizetype(in.size())),
                                        QByteArray::AbortOnBase64DecodingErrors)
      .decoded;
}
void dec_qt_clean(State& s) { run_decode(s, base64_clean(), qt_decode); }
void dec_qt_strict(State& s) { run_decode(s, base64_clean(), qt_decode_strict); }
void dec_qt_wrapped(State& s) { run_decode(s, base64_wrapped(), qt_decode); }
PEER(dec_qt_clean, "base64_decode_clean/QByteArray::fromBase64");
PEER(dec_qt_strict, "base64_decode_clean/QByteArray::fromBase64Encoding-strict");
PEER(dec_qt_wrapped, "base64_decode_wrapped/QByteArray::fromBase64");
#endif
#if PEERS_GLIB
struct GBytesOut {
  guchar* p;
  gsize n;
  ~GBytesOut() { g_free(p); }
  guchar* data() const { return p; }
  gsize size() const { return n; }
};
static GBytesOut g_decode(const std::string& in) {
  gsize n;
  guchar* p = g_base64_decode(in.c_str(), &n);
  return {p, n};
}
void dec_glib_clean(State& s) { run_decode(s, base64_clean(), g_decode); }
void dec_glib_wrapped(State& s) { run_decode(s, base64_wrapped(), g_decode); }
PEER(dec_glib_clean, "base64_decode_clean/g_base64_decode");
PEER(dec_glib_wrapped, "base64_decode_wrapped/g_base64_decode");
#endif
#if PEERS_ABSL
static std::string absl_decode(const std::string& in) {
  std::string o;
  if (!absl::Base64Unescape(in, &o)) o.clear();
  return o;
}
void dec_absl_clean(State& s) { run_decode(s, base64_clean(), absl_decode); }
void dec_absl_wrapped(State& s) { run_decode(s, base64_wrapped(), absl_decode); }
PEER(dec_absl_clean, "base64_decode_clean/absl::Base64Unescape");
PEER(dec_absl_wrapped, "base64_decode_wrapped/absl::Base64Unescape");
#endif
#if PEERS_OPENSSL
static std::string evp_block(const std::string& in) {
  std::string o;
  o.resize(in.size() / 4 * 3);
  int n = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(o.data()), reinterpret_cast<const unsigned char*>(in.data()),
                          int(in.size()));
  o.resize(std::size_t(n < 0 ? 0 : n));
  return o;
}
static std::string evp_update(const std::string& in) {
  std::string o;
  o.resize(in.size() / 4 * 3 + 64);
  EVP_ENCODE_CTX* c = EVP_ENCODE_CTX_new();
  EVP_DecodeInit(c);
  int n = 0, tail = 0;
  auto* d = reinterpret_cast<unsigned char*>(o.data());
  EVP_DecodeUpdate(c, d, &n, reinterpret_cast<const unsigned char*>(in.data()), int(in.size()));
  EVP_DecodeFinal(c, d + n, &tail);
  EVP_ENCODE_CTX_free(c);
  o.resize(std::size_t(n + tail));
  return o;
}
void dec_evp_clean(State& s) { run_decode(s, base64_clean(), evp_block); }
void dec_evp_wrapped(State& s) { run_decode(s, base64_wrapped(), evp_update); }
PEER(dec_evp_clean, "base64_decode_clean/EVP_DecodeBlock");
PEER(dec_evp_wrapped, "base64_decode_wrapped/EVP_DecodeUpdate");
#endif

// ---------------------------------------------------------------- base64 encode
template <class Encode>
static void run_encode(State& s, Encode encode) {
  for (auto _ : s) encode();
  bytes(s, std::int64_t(base64_clean().size()));
}
void enc_scalar(State& s) {
  run_encode(s, [] {
    auto o = encode_base64(base64_bytes());
    keep(*o.data());
  });
}
void enc_copy(State& s) {
  run_encode(s, [] {
    auto o = copy_of(base64_clean());
    keep(*o.data());
  });
}
PEER(enc_copy, "base64_encode/limit-memcpy");
PEER(enc_scalar, "base64_encode/scalar-3-bytes");
#if PEERS_QT
void enc_qt(State& s) {
  QByteArray q = QByteArray::fromRawData(base64_bytes().data(), qsizetype(base64_bytes().size()));
  run_encode(s, [&] {
    auto o = q.toBase64();
    keep(*o.constData());
  });
}
PEER(enc_qt, "base64_encode/QByteArray::toBase64");
#endif
#if PEERS_GLIB
void enc_glib(State& s) {
  run_encode(s, [] {
    char* o = g_base64_encode(reinterpret_cast<const guchar*>(base64_bytes().data()), base64_bytes().size());
    keep(*o);
    g_free(o);
  });
}
PEER(enc_glib, "base64_encode/g_base64_encode");
#endif
#if PEERS_OPENSSL
void enc_evp(State& s) {
  run_encode(s, [] {
    std::string o;
    o.resize(base64_clean().size() + 1);
    EVP_EncodeBlock(reinterpret_cast<unsigned char*>(o.data()), reinterpret_cast<const unsigned char*>(base64_bytes().data()),
                    int(base64_bytes().size()));
    keep(*o.data());
  });
}
PEER(enc_evp, "base64_encode/EVP_EncodeBlock");
#endif

// ---------------------------------------------------------------- hex
static const char kDigits[] = "0123456789abcdef";
void hex_copy(State& s) {  // as many bytes as the dump has
  const std::string& from = hex_text();
  run_hex_dump(s, [&](auto&) { return copy_of(from); });
}
void hex_nibbles(State& s) {
  run_hex_dump(s, [](auto& in) {
    std::string o(in.size() * 3 - 1, ' ');
    char* d = o.data();
    for (std::size_t i = 0; i < in.size(); ++i, d += 3) {
      d[0] = kDigits[std::uint8_t(in[i]) >> 4];
      d[1] = kDigits[std::uint8_t(in[i]) & 15];
    }
    return o;
  });
}
void hex_snprintf(State& s) {
  run_hex_dump(s, [](auto& in) {
    std::string o(in.size() * 3 + 1, 0);
    char* d = o.data();
    for (char c : in) {
      std::snprintf(d, 4, "%02x ", std::uint8_t(c));
      d += 3;
    }
    o.resize(in.size() * 3 - 1);
    return o;
  });
}
PEER(hex_copy, "hex_dump/limit-memcpy");
PEER(hex_nibbles, "hex_dump/scalar-nibble-table");
PEER(hex_snprintf, "hex_dump/snprintf");
#if PEERS_QT
void hex_qt(State& s) {
  run_hex_dump(s, [](auto& in) { return QByteArray::fromRawData(in.data(), qsizetype(in.size())).toHex(' '); });
}
void unhex_qt(State& s) {
  auto text = QByteArray::fromRawData(hex_bytes().data(), qsizetype(kHexBytes)).toHex(' ');
  run_hex(s, [&](auto&) {
    auto o = QByteArray::fromHex(text);
    keep(*o.constData());
  });
}
PEER(hex_qt, "hex_dump/QByteArray::toHex(' ')");
PEER(unhex_qt, "hex_parse/QByteArray::fromHex");
#endif
void unhex_scalar(State& s) {
  std::string text;
  for (char c : hex_bytes()) {
    text += kDigits[std::uint8_t(c) >> 4];
    text += kDigits[std::uint8_t(c) & 15];
    text += ' ';
  }
  std::array<std::uint8_t, 256> t;
  t.fill(255);
  for (int i = 0; i < 16; ++i) t[std::uint8_t(kDigits[i])] = std::uint8_t(i);
  run_hex(s, [&](auto&) {
    std::string o;
    o.resize(text.size() / 2);
    char* d = o.data();
    unsigned v = 0, n = 0;
    for (char c : text) {
      std::uint8_t x = t[std::uint8_t(c)];
      if (x == 255) continue;
      v = v << 4 | x;
      if (++n == 2) {
        *d++ = char(v);
        n = 0;
      }
    }
    o.resize(std::size_t(d - o.data()));
    keep(*o.data());
  });
}
PEER(unhex_scalar, "hex_parse/scalar-1-char");
}  // namespace
