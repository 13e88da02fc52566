// SPDX-License-Identifier: MIT
// Making a string of UTF-8, hashing one, and what a literal costs.
#include <cstring>
#include <functional>
#include <string_view>

#include "bench/dispatch.h"
#include "bench/strings.h"
#if PEERS_QT
#include <QHash>
#include <QString>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_ICU
#include <unicode/ustring.h>
#endif
#if PEERS_ABSL
#include <absl/hash/hash.h>
#endif

using namespace bench;
using benchmark::State;
namespace {

// ---------------------------------------------------------------- from UTF-8
void decode_memcpy(State& s, const Encoded& t) {
  std::string to(t.utf8.size(), 0);
  for (auto _ : s) {
    std::memcpy(to.data(), t.utf8.data(), t.utf8.size());
    benchmark::ClobberMemory();
  }
  bytes(s, std::ssize(t.utf8));
}
PEER_ENCODED(decode_memcpy, "limit-memcpy");

#if PEERS_QT
void decode_qt(State& s, const Encoded& t) {
  from_utf8(
      s, t, [](const std::string& utf8) { return QString::fromUtf8(utf8.data(), qsizetype(utf8.size())); },
      [](const QString& q) { return std::u16string_view(reinterpret_cast<const char16_t*>(q.utf16()), q.size()); });
}
PEER_ENCODED(decode_qt, "QString::fromUtf8");
#endif
#if PEERS_GLIB
struct GUnits {
  gunichar2* p;
  glong n;
  GUnits(gunichar2* units, glong count) : p(units), n(count) {}
  GUnits(GUnits&& other) noexcept : p(std::exchange(other.p, nullptr)), n(other.n) {}
  ~GUnits() { g_free(p); }
};
void decode_glib(State& s, const Encoded& t) {
  from_utf8(
      s, t,
      [](const std::string& utf8) {
        glong n = 0;
        gunichar2* p = g_utf8_to_utf16(utf8.data(), glong(utf8.size()), nullptr, &n, nullptr);
        return GUnits(p, n);
      },
      [](const GUnits& u) { return std::u16string_view(reinterpret_cast<const char16_t*>(u.p), std::size_t(u.n)); });
}
PEER_ENCODED(decode_glib, "g_utf8_to_utf16");
#endif
#if PEERS_ICU
void decode_icu(State& s, const Encoded& t) {
  from_utf8(
      s, t,
      [](const std::string& utf8) {
        std::u16string to(utf8.size(), 0);  // never more units than bytes
        std::int32_t n = 0;
        UErrorCode e = U_ZERO_ERROR;
        u_strFromUTF8(to.data(), std::int32_t(to.size()), &n, utf8.data(), std::int32_t(utf8.size()), &e);
        to.resize(U_SUCCESS(e) ? std::size_t(n) : 0);
        return to;
      },
      [](const std::u16string& to) { return std::u16string_view(to); });
}
PEER_ENCODED(decode_icu, "ICU-u_strFromUTF8");
#endif

// ---------------------------------------------------------------- hash of 1 KiB
// The texts of the two families differ in how they are kept by those who keep ASCII in bytes: 512 units of UTF-16,
// and 1024 characters of ASCII.
void hash_std16(State& s) {
  repeats(s, [&t = kilobyte16()] { return std::hash<std::u16string_view>()(t); });
}
void hash_std8(State& s) {
  repeats(s, [&t = kilobyte8()] { return std::hash<std::string_view>()(t); });
}
PEER(hash_std16, "string_hash_utf16/std::hash");
PEER(hash_std8, "string_hash_ascii/std::hash");
#if PEERS_ABSL
void hash_absl16(State& s) {
  repeats(s, [&t = kilobyte16()] { return absl::Hash<std::u16string_view>()(t); });
}
void hash_absl8(State& s) {
  repeats(s, [&t = kilobyte8()] { return absl::Hash<std::string_view>()(t); });
}
PEER(hash_absl16, "string_hash_utf16/absl::Hash");
PEER(hash_absl8, "string_hash_ascii/absl::Hash");
#endif
#if PEERS_QT
void hash_qt16(State& s) {
  repeats(s, [t = QString::fromUtf16(kilobyte16().data(), qsizetype(kilobyte16().size()))] { return qHash(t, 0); });
}
void hash_qt8(State& s) {
  repeats(s, [t = QString::fromLatin1(kilobyte8())] { return qHash(t, 0); });
}
void hash_qbytes(State& s) {
  repeats(s, [t = QByteArray::fromStdString(kilobyte8())] { return qHash(t, 0); });
}
PEER(hash_qt16, "string_hash_utf16/qHash(QString)");
PEER(hash_qt8, "string_hash_ascii/qHash(QString)");
PEER(hash_qbytes, "string_hash_ascii/qHash(QByteArray)");
#endif
#if PEERS_GLIB
void hash_glib(State& s) {
  repeats(s, [&t = kilobyte8()] { return g_str_hash(t.c_str()); });
}
PEER(hash_glib, "string_hash_ascii/g_str_hash");
#endif

// ---------------------------------------------------------------- a literal
const char* text_somewhere = "text";
void literal_pointer(State& s) {
  benchmark::DoNotOptimize(text_somewhere);
  for (auto _ : s)
    for (int i = 0; i < kCalls; ++i) use(text_somewhere);
  items(s, kCalls);
}
PEER(literal_pointer, "literal/pointer");
#if PEERS_QT
void literal_qstring(State& s) {
  for (auto _ : s)
    for (int i = 0; i < kCalls; ++i) {
      const QString t = QStringLiteral("text");
      use(t.constData());
    }
  items(s, kCalls);
}
PEER(literal_qstring, "literal/QStringLiteral");
#endif

}  // namespace
