// SPDX-License-Identifier: MIT
// Sending a message and emitting a notification, on one thread.
#include "bench/dispatch.h"
#include <array>
#include <functional>
#include <memory>
#include <unordered_map>
#if PEERS_QT
#include <QMetaMethod>
#include "bench/peers/qt_objects.h"
#endif
#include "bench/peers/glib_objects.h"
#if PEERS_SIGC
#include <sigc++/sigc++.h>
#endif
#if PEERS_ABSL
#include <absl/container/flat_hash_map.h>
#endif

using namespace bench;
using benchmark::State;
namespace {

// ---------------------------------------------------------------- send
using Fn = int (*)(void*, int);
OPAQUE int direct(void*, int v) { return v + 1; }

struct Base {
  const void* cls;
  explicit Base(const void* k) : cls(k) {}
  virtual ~Base() = default;
  virtual int add(int v) = 0;
  virtual void put(int v) = 0;
  virtual std::shared_ptr<Base> echo(const std::shared_ptr<Base>& o) = 0;
  int value = 0;
};
template <int K>
struct Derived final : Base {
  alignas(64) static inline char key;  // stands for a class record
  Derived() : Base(&key) {}
  OPAQUE int add(int v) override { return v + 1; }
  OPAQUE void put(int v) override { value = v; }
  OPAQUE std::shared_ptr<Base> echo(const std::shared_ptr<Base>& o) override { return o; }
  OPAQUE static int imp(void*, int v) { return v + 1; }
};
char messages[64];  // an interned message name is the address of one of these

// The floor of a dynamic send: one probe of a table indexed by (class, message).
struct Cache {
  struct Line {
    const void* cls;
    const void* msg;
    Fn fn;
  };
  std::array<Line, 256> lines{};
  static std::size_t slot(const void* c, const void* s) {
    return ((reinterpret_cast<std::uintptr_t>(c) >> 6) ^ reinterpret_cast<std::uintptr_t>(s)) & 255;
  }
  Fn find(const void* c, const void* s) const {
    const Line& l = lines[slot(c, s)];
    return l.cls == c && l.msg == s ? l.fn : nullptr;
  }
  void put(const void* c, const void* s, Fn f) { lines[slot(c, s)] = {c, s, f}; }
};

void send_direct(State& s) {
  sends(s, [](int x) { return direct(nullptr, x); });
}
void send_pointer(State& s) {
  Fn f = direct;
  sends(s, [&](int x) {
    keep(f);
    return f(nullptr, x);
  });
}
void send_virtual(State& s) {
  std::unique_ptr<Base> o = std::make_unique<Derived<0>>();
  Base* p = o.get();
  sends(s, [&](int x) {
    keep(p);
    return p->add(x);
  });
}
void send_function(State& s) {
  int bias = 1;
  std::function<int(int)> f = [&bias](int v) { return v + bias; };
  sends(s, [&](int x) {
    keep(f);
    return f(x);
  });
}
void send_cache(State& s) {
  Derived<0> o;
  Cache c;
  c.put(o.cls, &messages[3], Derived<0>::imp);
  Base* p = &o;
  const void* msg = &messages[3];
  sends(s, [&](int x) {
    keep(p);
    keep(msg);
    Fn f = c.find(p->cls, msg);
    return f ? f(p, x) : -1;
  });
}
template <class Map>
void send_map(State& s, Map& m) {
  for (auto& k : messages) m[&k] = Derived<0>::imp;
  const void* msg = &messages[3];
  sends(s, [&](int x) {
    keep(msg);
    return m.find(msg)->second(nullptr, x);
  });
}
void send_unordered(State& s) {
  std::unordered_map<const void*, Fn> m;
  send_map(s, m);
}
void send_unordered_string(State& s) {
  std::unordered_map<std::string, Fn> m;
  for (int i = 0; i < 64; ++i) m["set_something_" + std::to_string(i)] = Derived<0>::imp;
  std::string msg = "set_something_17";
  sends(s, [&](int x) {
    keep(msg);
    return m.find(msg)->second(nullptr, x);
  });
}
PEER(send_direct, "send/limit-direct-call");
PEER(send_pointer, "send/function-pointer");
PEER(send_virtual, "send/virtual");
PEER(send_function, "send/std::function");
PEER(send_cache, "send/class+message-cache");
PEER(send_unordered, "send/unordered_map-pointer-key");
PEER(send_unordered_string, "send/unordered_map-string-key");
#if PEERS_ABSL
void send_flat(State& s) {
  absl::flat_hash_map<const void*, Fn> m;
  send_map(s, m);
}
PEER(send_flat, "send/absl::flat_hash_map-pointer-key");
#endif
#if PEERS_QT
void send_qmetamethod(State& s) {
  Sender o;
  QMetaMethod m = o.metaObject()->method(o.metaObject()->indexOfMethod("add(int)"));
  sends(s, [&](int x) {
    int r = 0;
    m.invoke(&o, Qt::DirectConnection, Q_RETURN_ARG(int, r), Q_ARG(int, x));
    return r;
  });
}
void send_qinvoke(State& s) {
  Sender o;
  sends(s, [&](int x) {
    int r = 0;
    QMetaObject::invokeMethod(&o, "add", Qt::DirectConnection, Q_RETURN_ARG(int, r), Q_ARG(int, x));
    return r;
  });
}
PEER(send_qmetamethod, "send/QMetaMethod::invoke");
PEER(send_qinvoke, "send/QMetaObject::invokeMethod-by-name");
#endif
#if PEERS_GLIB
void send_gclosure(State& s) {
  auto marshal = [](GClosure* c, GValue* ret, guint, const GValue* args, gpointer, gpointer) {
    g_value_set_int(ret,
                    reinterpret_cast<Fn>(reinterpret_cast<GCClosure*>(c)->callback)(nullptr, g_value_get_int(args)));
  };
  GClosure* c = g_cclosure_new(G_CALLBACK(Derived<0>::imp), nullptr, nullptr);
  g_closure_set_marshal(c, marshal);
  g_closure_ref(c);
  g_closure_sink(c);
  sends(s, [&](int x) {
    GValue ret = G_VALUE_INIT, arg = G_VALUE_INIT;
    g_value_init(&ret, G_TYPE_INT);
    g_value_init(&arg, G_TYPE_INT);
    g_value_set_int(&arg, x);
    g_closure_invoke(c, &ret, 1, &arg, nullptr);
    return g_value_get_int(&ret);
  });
  g_closure_unref(c);
}
PEER(send_gclosure, "send/g_closure_invoke");
#endif

// ---------------------------------------------------------------- send to objects of 8 classes in random order
const std::vector<std::unique_ptr<Base>>& mixed() {
  static const auto all = mixed_objects<std::unique_ptr<Base>>(
      []<int K>() -> std::unique_ptr<Base> { return std::make_unique<Derived<K>>(); });
  return all;
}
template <class Put>
void each_class(Put put) {
  put(&Derived<0>::key, Derived<0>::imp);
  put(&Derived<1>::key, Derived<1>::imp);
  put(&Derived<2>::key, Derived<2>::imp);
  put(&Derived<3>::key, Derived<3>::imp);
  put(&Derived<4>::key, Derived<4>::imp);
  put(&Derived<5>::key, Derived<5>::imp);
  put(&Derived<6>::key, Derived<6>::imp);
  put(&Derived<7>::key, Derived<7>::imp);
}
void mixed_virtual(State& s) {
  sends_mixed(s, mixed(), [](auto& o, int x) { return o->add(x); });
}
void mixed_cache(State& s) {
  Cache c;
  each_class([&](const void* k, Fn f) { c.put(k, &messages[3], f); });
  bool all = true;
  each_class([&](const void* k, Fn f) { all = all && c.find(k, &messages[3]) == f; });
  if (!all) {
    s.SkipWithError("two classes share a cache line of the table");
    return;
  }
  sends_mixed(s, mixed(), [&](auto& o, int x) {
    Fn f = c.find(o->cls, &messages[3]);
    return f ? f(o.get(), x) : -1;
  });
}
void mixed_unordered(State& s) {
  std::unordered_map<const void*, std::unordered_map<const void*, Fn>> m;
  each_class([&](const void* k, Fn f) {
    for (auto& msg : messages) m[k][&msg] = f;
  });
  sends_mixed(s, mixed(),
              [&](auto& o, int x) { return m.find(o->cls)->second.find(&messages[3])->second(o.get(), x); });
}
PEER(mixed_virtual, "send_mixed_classes/virtual");
PEER(mixed_cache, "send_mixed_classes/class+message-cache");
PEER(mixed_unordered, "send_mixed_classes/unordered_map-of-unordered_map");

// ---------------------------------------------------------------- send one int, no result
void put_virtual(State& s) {
  std::unique_ptr<Base> o = std::make_unique<Derived<0>>();
  Base* p = o.get();
  sends_no_result(s, [&](int i) {
    keep(p);
    p->put(i);
  });
  expect(s, o->value, kCalls - 1);
}
void put_mixed_virtual(State& s) {
  sends_mixed_no_result(s, mixed(), [](auto& o, int i) { o->put(i); });
  expect(s, mixed().back()->value, std::ssize(mixed()));
}
PEER(put_virtual, "send_no_result/virtual");
PEER(put_mixed_virtual, "send_no_result_mixed_classes/virtual");
#if PEERS_QT
void put_by_name(State& s) {
  Sender o;
  sends_no_result(s, [&](int i) { QMetaObject::invokeMethod(&o, "put", Qt::DirectConnection, Q_ARG(int, i)); });
  expect(s, o.plain(), kCalls - 1);
}
const std::vector<std::unique_ptr<Sender>>& mixed_senders() {
  static const auto all = mixed_objects<std::unique_ptr<Sender>>(
      []<int K>() -> std::unique_ptr<Sender> { return std::make_unique<SenderKind<K>>(); });
  return all;
}
void mixed_by_name(State& s) {
  sends_mixed(s, mixed_senders(), [](auto& o, int x) {
    int r = 0;
    QMetaObject::invokeMethod(o.get(), "add", Qt::DirectConnection, Q_RETURN_ARG(int, r), Q_ARG(int, x));
    return r;
  });
}
void put_mixed_by_name(State& s) {
  sends_mixed_no_result(s, mixed_senders(), [](auto& o, int i) {
    QMetaObject::invokeMethod(o.get(), "put", Qt::DirectConnection, Q_ARG(int, i));
  });
  expect(s, mixed_senders().back()->plain(), std::ssize(mixed_senders()));
}
PEER(put_by_name, "send_no_result/QMetaObject::invokeMethod-by-name");
PEER(mixed_by_name, "send_mixed_classes/QMetaObject::invokeMethod-by-name");
PEER(put_mixed_by_name, "send_no_result_mixed_classes/QMetaObject::invokeMethod-by-name");

// The call that a proxy which captures and drops its messages is measured against.
PEER(put_by_name, "send_captured/QMetaObject::invokeMethod-by-name");
#endif

// ---------------------------------------------------------------- send an object, get an object
void echo_virtual(State& s) {
  std::shared_ptr<Base> o = std::make_shared<Derived<0>>(), text = std::make_shared<Derived<1>>();
  Base* p = o.get();
  if (expect(s, p->echo(text) == text))
    repeats(s, [&] {
      keep(p);
      return p->echo(text);
    });
}
PEER(echo_virtual, "send_object/virtual-shared_ptr");
#if PEERS_QT
void echo_qobject(State& s) {
  Sender o, other;
  const auto echo = [&] {
    QObject* r = nullptr;
    QMetaObject::invokeMethod(&o, "echo", Qt::DirectConnection, Q_RETURN_ARG(QObject*, r), Q_ARG(QObject*, &other));
    return r;
  };
  if (expect(s, echo() == &other)) repeats(s, echo);
}
void echo_qstring(State& s) {
  Sender o;
  const QString text = QStringLiteral("text");
  const auto echo = [&] {
    QString r;
    QMetaObject::invokeMethod(&o, "echoText", Qt::DirectConnection, Q_RETURN_ARG(QString, r), Q_ARG(QString, text));
    return r;
  };
  if (expect(s, echo() == text)) repeats(s, echo);
}
PEER(echo_qobject, "send_object/QMetaObject::invokeMethod-QObject*");
PEER(echo_qstring, "send_object/QMetaObject::invokeMethod-QString");
#endif

// ---------------------------------------------------------------- notify: one int to 0, 1 or 10 receivers
template <int R>
void notify_vector(State& s) {
  int sum = 0;
  std::vector<std::function<void(int)>> v;
  for (int i = 0; i < R; ++i) v.emplace_back([&sum](int x) { sum += x; });
  int x = 1;
  for (auto _ : s) {
    keep(x);
    for (auto& f : v) f(x);
    benchmark::ClobberMemory();
  }
  keep(sum);
  items(s, 1);
}
PEER(notify_vector<0>, "notify_0/limit-vector-of-std::function");
PEER(notify_vector<1>, "notify_1/limit-vector-of-std::function");
PEER(notify_vector<10>, "notify_10/limit-vector-of-std::function");
#if PEERS_QT
template <int R>
void notify_qt(State& s) {
  Sender o;
  std::vector<std::unique_ptr<Receiver>> r;
  for (int i = 0; i < R; ++i) {
    r.push_back(std::make_unique<Receiver>());
    QObject::connect(&o, &Sender::fired, r.back().get(), &Receiver::take);
  }
  for (auto _ : s) o.fire(1);
  items(s, 1);
}
PEER(notify_qt<0>, "notify_0/Qt-signal");
PEER(notify_qt<1>, "notify_1/Qt-signal");
PEER(notify_qt<10>, "notify_10/Qt-signal");
#endif
#if PEERS_SIGC
template <int R>
void notify_sigc(State& s) {
  int sum = 0;
  sigc::signal<void(int)> sig;
  for (int i = 0; i < R; ++i) sig.connect([&sum](int x) { sum += x; });
  for (auto _ : s) sig.emit(1);
  keep(sum);
  items(s, 1);
}
PEER(notify_sigc<0>, "notify_0/sigc++");
PEER(notify_sigc<1>, "notify_1/sigc++");
PEER(notify_sigc<10>, "notify_10/sigc++");
#endif

#if PEERS_GLIB
static void on_fired(PeerObj*, int v, gpointer sum) { *static_cast<int*>(sum) += v; }

template <int R>
void notify_gobject(State& s) {
  int sum = 0;
  auto* o = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  for (int i = 0; i < R; ++i) g_signal_connect(o, "fired", G_CALLBACK(on_fired), &sum);
  for (auto _ : s) g_signal_emit(o, fired_signal, 0, 1);
  keep(sum);
  items(s, 1);
  g_object_unref(o);
}
void notify_gobject_name(State& s) {
  int sum = 0;
  auto* o = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  g_signal_connect(o, "fired", G_CALLBACK(on_fired), &sum);
  for (auto _ : s) g_signal_emit_by_name(o, "fired", 1);
  keep(sum);
  items(s, 1);
  g_object_unref(o);
}
PEER(notify_gobject<0>, "notify_0/g_signal_emit");
PEER(notify_gobject<1>, "notify_1/g_signal_emit");
PEER(notify_gobject_name, "notify_1/g_signal_emit_by_name");
PEER(notify_gobject<10>, "notify_10/g_signal_emit");
#endif
}  // namespace
