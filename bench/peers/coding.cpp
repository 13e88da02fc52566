// SPDX-License-Identifier: MIT
// Reading and writing a property by its name, unobserved and observed.
#include <functional>
#include <vector>
#include "bench/measure.h"
#include "bench/peers/glib_objects.h"
#if PEERS_QT
#include <QVariant>
#include "bench/peers/qt_objects.h"
#endif

using namespace bench;
using benchmark::State;
namespace {

struct Plain {
  int value = 0;
  std::vector<std::function<void(int)>> observers;
  OPAQUE void set(int v) {
    if (v != value) {
      value = v;
      for (auto& f : observers) f(v);
    }
  }
  OPAQUE int get() const { return value; }
};
template <int R>
void set_plain(State& s) {
  Plain p;
  int sum = 0, i = 0;
  for (int k = 0; k < R; ++k) p.observers.emplace_back([&sum](int v) { sum += v; });
  for (auto _ : s) p.set(++i);
  keep(sum);
  items(s, 1);
}
void get_plain(State& s) {
  Plain p;
  for (auto _ : s) keep(p.get());
  items(s, 1);
}
PEER(set_plain<0>, "set_property/limit-setter");
PEER(set_plain<1>, "set_observed_property/limit-setter+std::function");
PEER(get_plain, "get_property/limit-getter");
#if PEERS_QT
void set_qt_plain(State& s) {
  Sender o;
  int i = 0;
  for (auto _ : s) o.setProperty("plain", ++i);
  items(s, 1);
}
void set_qt_observed(State& s) {
  Sender o;
  Receiver r;
  QObject::connect(&o, &Sender::valueChanged, &r, &Receiver::take);
  int i = 0;
  for (auto _ : s) o.setProperty("value", ++i);
  items(s, 1);
}
void set_qt_setter(State& s) {
  Sender o;
  Receiver r;
  QObject::connect(&o, &Sender::valueChanged, &r, &Receiver::take);
  int i = 0;
  for (auto _ : s) o.setValue(++i);
  items(s, 1);
}
void set_qproperty(State& s) {
  QProperty<int> p;
  int sum = 0, i = 0;
  auto h = p.onValueChanged([&] { sum += p.value(); });
  for (auto _ : s) p = ++i;
  keep(sum);
  items(s, 1);
}
void get_qt(State& s) {
  Sender o;
  for (auto _ : s) keep(o.property("plain").toInt());
  items(s, 1);
}
PEER(set_qt_plain, "set_property/QObject::setProperty");
PEER(set_qt_observed, "set_observed_property/QObject::setProperty+signal");
PEER(set_qt_setter, "set_observed_property/Qt-setter+signal");
PEER(set_qproperty, "set_observed_property/QProperty+onValueChanged");
PEER(get_qt, "get_property/QObject::property");
#endif
#if PEERS_GLIB
static void on_notify(PeerObj* o, GParamSpec*, gpointer sum) { *static_cast<int*>(sum) += o->value; }
void set_g_plain(State& s) {
  auto* o = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  int i = 0;
  for (auto _ : s) g_object_set(o, "plain", ++i, nullptr);
  items(s, 1);
  g_object_unref(o);
}
void set_g_observed(State& s) {
  int sum = 0, i = 0;
  auto* o = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  g_signal_connect(o, "notify::value", G_CALLBACK(on_notify), &sum);
  for (auto _ : s) g_object_set(o, "value", ++i, nullptr);
  keep(sum);
  items(s, 1);
  g_object_unref(o);
}
void set_g_pspec(State& s) {
  int sum = 0, i = 0;
  auto* o = static_cast<PeerObj*>(g_object_new(peer_obj_get_type(), nullptr));
  g_signal_connect(o, "notify::value", G_CALLBACK(on_notify), &sum);
  for (auto _ : s) {
    o->value = ++i;
    g_object_notify_by_pspec(&o->parent, value_spec);
  }
  keep(sum);
  items(s, 1);
  g_object_unref(o);
}
void get_g(State& s) {
  auto* o = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  for (auto _ : s) {
    int v = 0;
    g_object_get(o, "plain", &v, nullptr);
    keep(v);
  }
  items(s, 1);
  g_object_unref(o);
}
PEER(set_g_plain, "set_property/g_object_set");
PEER(set_g_observed, "set_observed_property/g_object_set+notify");
PEER(set_g_pspec, "set_observed_property/g_object_notify_by_pspec");
PEER(get_g, "get_property/g_object_get");
#endif

}  // namespace
