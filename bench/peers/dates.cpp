// SPDX-License-Identifier: MIT
// Adding months to an instant, and ordinals ("1st", "22nd").
#include <chrono>
#include "bench/measure.h"
#if PEERS_QT
#include <QDateTime>
#include <QTimeZone>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_ICU
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/rbnf.h>
#include <unicode/ucal.h>
#include <unicode/unum.h>
#include <unicode/upluralrules.h>
#endif

using namespace bench;
using benchmark::State;
namespace {
constexpr int kDates = 100;

// 100 instants from 1970 to 2026; month counts from -18 to +18
struct When {
  double ms;
  int months;
};
static const std::vector<When>& whens() {
  static const std::vector<When> v = [] {
    std::vector<When> o;
    Rng r{8};
    for (int i = 0; i < kDates; ++i) o.push_back({double(r.below(1767225600)) * 1000.0, int(r.below(37)) - 18});
    return o;
  }();
  return v;
}
static double chrono_add(const When& w) {  // UTC; the day is clamped to the length of the month, as everywhere below
  using namespace std::chrono;
  sys_time<milliseconds> t{milliseconds(std::int64_t(w.ms))};
  auto day = floor<days>(t);
  year_month_day d{day};
  auto m = d.year() / d.month() + std::chrono::months(w.months);
  auto last = (m / std::chrono::last).day();
  sys_days moved{m / (d.day() < last ? d.day() : last)};
  return double((moved + (t - day)).time_since_epoch().count());
}
template <class Body>
static void add_each(State& s, bool utc, Body body) {
  double want = 0, sum = 0;
  for (auto& w : whens()) want += chrono_add(w);
  for (auto _ : s) {
    sum = 0;
    for (auto& w : whens()) sum += body(w);
    keep(sum);
  }
  if (utc && sum != want) {
    s.SkipWithError("wrong dates");
    return;
  }
  items(s, kDates);
}

void chrono_utc(State& s) { add_each(s, true, chrono_add); }
PEER(chrono_utc, "add_months_utc/limit-std::chrono");

#if PEERS_ICU
static UCalendar* open_cal(const char16_t* zone) {
  UErrorCode e = U_ZERO_ERROR;
  return ucal_open(zone, -1, "en_US", UCAL_GREGORIAN, &e);
}
static double icu_add(UCalendar* c, const When& w) {
  UErrorCode e = U_ZERO_ERROR;
  ucal_setMillis(c, w.ms, &e);
  ucal_add(c, UCAL_MONTH, w.months, &e);
  return ucal_getMillis(c, &e);
}
static const char16_t kUtc[] = u"UTC", kBerlin[] = u"Europe/Berlin";
template <const char16_t* Z>
void icu_reused(State& s) {
  UCalendar* c = open_cal(Z);
  add_each(s, Z == kUtc, [c](const When& w) { return icu_add(c, w); });
  ucal_close(c);
}
template <const char16_t* Z>
void icu_opened(State& s) {
  add_each(s, Z == kUtc, [](const When& w) {
    UCalendar* c = open_cal(Z);
    double t = icu_add(c, w);
    ucal_close(c);
    return t;
  });
}
template <const char16_t* Z>
void icu_cloned(State& s) {
  UCalendar* m = open_cal(Z);
  add_each(s, Z == kUtc, [m](const When& w) {
    UErrorCode e = U_ZERO_ERROR;
    UCalendar* c = ucal_clone(m, &e);
    double t = icu_add(c, w);
    ucal_close(c);
    return t;
  });
  ucal_close(m);
}
PEER(icu_reused<kUtc>, "add_months_utc/ICU-reused");
PEER(icu_cloned<kUtc>, "add_months_utc/ICU-cloned-each-time");
PEER(icu_opened<kUtc>, "add_months_utc/ICU-opened-each-time");
PEER(icu_reused<kBerlin>, "add_months_zone/ICU-reused");
PEER(icu_cloned<kBerlin>, "add_months_zone/ICU-cloned-each-time");
PEER(icu_opened<kBerlin>, "add_months_zone/ICU-opened-each-time");
#endif
#if PEERS_QT
void qt_utc(State& s) {
  add_each(s, true, [](const When& w) {
    return double(QDateTime::fromMSecsSinceEpoch(qint64(w.ms), Qt::UTC).addMonths(w.months).toMSecsSinceEpoch());
  });
}
void qt_zone(State& s) {
  QTimeZone z("Europe/Berlin");
  if (!z.isValid()) {
    s.SkipWithError("no time zone data");
    return;
  }
  add_each(s, false, [&](const When& w) {
    return double(QDateTime::fromMSecsSinceEpoch(qint64(w.ms), z).addMonths(w.months).toMSecsSinceEpoch());
  });
}
PEER(qt_utc, "add_months_utc/QDateTime::addMonths");
PEER(qt_zone, "add_months_zone/QDateTime::addMonths");
#endif
#if PEERS_GLIB
static void glib_months(State& s, bool utc, GTimeZone* z) {
  add_each(s, utc, [z](const When& w) {
    GDateTime* utc = g_date_time_new_from_unix_utc(gint64(w.ms / 1000));
    GDateTime* a = g_date_time_to_timezone(utc, z);
    GDateTime* b = g_date_time_add_months(a, w.months);
    double t = double(g_date_time_to_unix(b)) * 1000.0;
    g_date_time_unref(b);
    g_date_time_unref(a);
    g_date_time_unref(utc);
    return t;
  });
  g_time_zone_unref(z);
}
void glib_utc(State& s) { glib_months(s, true, g_time_zone_new_utc()); }
void glib_zone(State& s) { glib_months(s, false, g_time_zone_new_identifier("Europe/Berlin")); }
PEER(glib_utc, "add_months_utc/g_date_time_add_months");
PEER(glib_zone, "add_months_zone/g_date_time_add_months");
#endif

// ---------------------------------------------------------------- ordinals of 1..100
template <class Body>
static void ordinals(State& s, Body body) {
  for (auto _ : s)
    for (int i = 1; i <= 100; ++i) body(i);
  items(s, 100);
}
void ord_hand(State& s) {  // English only: the floor
  ordinals(s, [](int i) {
    char16_t b[16];
    int n = 0, v = i;
    do {
      b[n++] = char16_t('0' + v % 10);
    } while (v /= 10);
    for (int k = 0; k < n / 2; ++k) std::swap(b[k], b[n - 1 - k]);
    static const char16_t* const kSuffix[] = {u"th", u"st", u"nd", u"rd"};
    int last = i % 10, tens = i / 10 % 10;
    const char16_t* x = kSuffix[last <= 3 && tens != 1 ? last : 0];
    b[n++] = x[0];
    b[n++] = x[1];
    std::u16string out(b, std::size_t(n));
    keep(*out.data());
  });
}
PEER(ord_hand, "ordinal/limit-hand-written-English");
#if PEERS_ICU
static UNumberFormat* open_ordinal() {
  UErrorCode e = U_ZERO_ERROR;
  return unum_open(UNUM_ORDINAL, nullptr, 0, "en_US", nullptr, &e);
}
static void icu_ordinal(UNumberFormat* f, int i) {
  UErrorCode e = U_ZERO_ERROR;
  UChar b[64];
  int32_t n = unum_formatInt64(f, i, b, 64, nullptr, &e);
  std::u16string out(b, std::size_t(n));
  keep(*out.data());
}
void ord_reused(State& s) {
  UNumberFormat* f = open_ordinal();
  ordinals(s, [f](int i) { icu_ordinal(f, i); });
  unum_close(f);
}
void ord_opened(State& s) {
  ordinals(s, [](int i) {
    UNumberFormat* f = open_ordinal();
    icu_ordinal(f, i);
    unum_close(f);
  });
}
void ord_cloned(State& s) {
  UNumberFormat* m = open_ordinal();
  ordinals(s, [m](int i) {
    UErrorCode e = U_ZERO_ERROR;
    UNumberFormat* f = unum_clone(m, &e);
    icu_ordinal(f, i);
    unum_close(f);
  });
  unum_close(m);
}
void ord_plural(State& s) {  // plural rules choose the suffix; the caller keeps the suffix table
  UErrorCode e = U_ZERO_ERROR;
  UPluralRules* r = uplrules_openForType("en_US", UPLURAL_TYPE_ORDINAL, &e);
  ordinals(s, [r](int i) {
    UErrorCode e2 = U_ZERO_ERROR;
    UChar key[16];
    uplrules_select(r, i, key, 16, &e2);
    std::string d = std::to_string(i);
    std::u16string out(d.begin(), d.end());
    out += key[0] == 'o' && key[1] == 'n' ? u"st" : key[0] == 't' ? u"nd" : key[0] == 'f' ? u"rd" : u"th";
    keep(*out.data());
  });
  uplrules_close(r);
}
PEER(ord_reused, "ordinal/ICU-unum-reused");
PEER(ord_cloned, "ordinal/ICU-unum-cloned-each-time");
PEER(ord_opened, "ordinal/ICU-unum-opened-each-time");
PEER(ord_plural, "ordinal/ICU-plural-rules-reused");
#endif
}  // namespace
