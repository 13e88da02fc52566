// SPDX-License-Identifier: MIT
// Making and dropping an object, strong and weak references.
#include "bench/objects.h"
#include <atomic>
#include <cstdlib>
#include <memory>
#include "bench/peers/glib_objects.h"
#if PEERS_QT
#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <QWeakPointer>
#include "bench/peers/qt_objects.h"
#endif
#if PEERS_BOOST
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#endif

using namespace bench;
using benchmark::State;
namespace {

// ---------------------------------------------------------------- create+destroy, retain+release
struct Body {
  virtual ~Body() = default;
  int value = 1;
};
void new_malloc(State& s) {
  for (auto _ : s) {
    void* p = std::malloc(32);
    keep(p);
    std::free(p);
  }
  items(s, 1);
}
void new_shared(State& s) {
  for (auto _ : s) {
    auto p = std::make_shared<Body>();
    keep(p);
  }
  items(s, 1);
}
void retain_atomic(State& s) {
  std::atomic<int> n{1};
  for (auto _ : s) {
    n.fetch_add(1, std::memory_order_relaxed);
    keep(n.fetch_sub(1, std::memory_order_acq_rel));
  }
  items(s, 1);
}
void retain_shared(State& s) {
  auto p = std::make_shared<Body>();
  for (auto _ : s) {
    auto q = p;
    keep(q);
  }
  items(s, 1);
}
PEER(new_malloc, "create_destroy/limit-malloc+free");
PEER(new_shared, "create_destroy/std::make_shared");
PEER(retain_atomic, "retain_release/limit-atomic-inc+dec");
PEER(retain_shared, "retain_release/std::shared_ptr");
#if PEERS_BOOST
struct Counted : boost::intrusive_ref_counter<Counted> {
  virtual ~Counted() = default;
  int value = 1;
};
void new_intrusive(State& s) {
  for (auto _ : s) {
    boost::intrusive_ptr<Counted> p(new Counted);
    keep(p);
  }
  items(s, 1);
}
void retain_intrusive(State& s) {
  boost::intrusive_ptr<Counted> p(new Counted);
  for (auto _ : s) {
    auto q = p;
    keep(q);
  }
  items(s, 1);
}
PEER(new_intrusive, "create_destroy/boost::intrusive_ptr");
PEER(retain_intrusive, "retain_release/boost::intrusive_ptr");
#endif
#if PEERS_QT
void new_qobject(State& s) {
  for (auto _ : s) {
    auto* p = new Receiver;
    keep(p);
    delete p;
  }
  items(s, 1);
}
void retain_qshared(State& s) {
  auto p = QSharedPointer<Body>::create();
  for (auto _ : s) {
    auto q = p;
    keep(q);
  }
  items(s, 1);
}
PEER(new_qobject, "create_destroy/QObject");
PEER(retain_qshared, "retain_release/QSharedPointer");
#endif
#if PEERS_GLIB
void new_gobject(State& s) {
  for (auto _ : s) {
    auto* p = g_object_new(peer_obj_get_type(), nullptr);
    keep(p);
    g_object_unref(p);
  }
  items(s, 1);
}
void retain_gobject(State& s) {
  auto* p = static_cast<GObject*>(g_object_new(peer_obj_get_type(), nullptr));
  for (auto _ : s) {
    g_object_ref(p);
    keep(p);
    g_object_unref(p);
  }
  items(s, 1);
  g_object_unref(p);
}
void retain_rcbox(State& s) {
  auto* p = static_cast<int*>(g_atomic_rc_box_alloc(sizeof(int)));
  for (auto _ : s) {
    g_atomic_rc_box_acquire(p);
    keep(p);
    g_atomic_rc_box_release(p);
  }
  items(s, 1);
  g_atomic_rc_box_release(p);
}
PEER(new_gobject, "create_destroy/GObject");
PEER(retain_gobject, "retain_release/g_object_ref");
PEER(retain_rcbox, "retain_release/g_atomic_rc_box");
#endif
// ---------------------------------------------------------------- weak reference to strong and back
struct Thing {
  int value = 1;
};
void weak_atomic(State& s) {
  static std::atomic<int> n{1};
  sums(s, [] {
    n.fetch_add(1);
    return n.fetch_sub(1);
  });
}
void weak_std(State& s) {
  static auto p = std::make_shared<Thing>();
  static std::weak_ptr<Thing> w = p;
  sums(s, [] {
    auto q = w.lock();
    return q ? q->value : 0;
  });
}
void alive_std(State& s) {
  auto p = std::make_shared<Thing>();
  std::weak_ptr<Thing> w = p;
  sums(s, [&] {
    keep(w);
    return int(!w.expired());
  });
}
PEER(alive_std, "weak_check/std::weak_ptr::expired");
PEER(weak_atomic, "weak_lock/limit-atomic-inc+dec")->Threads(1)->Threads(2);
PEER(weak_std, "weak_lock/std::weak_ptr::lock")->Threads(1)->Threads(2);
#if PEERS_QT
void weak_qt(State& s) {
  static auto p = QSharedPointer<Thing>::create();
  static QWeakPointer<Thing> w = p;
  sums(s, [] {
    auto q = w.toStrongRef();
    return q ? q->value : 0;
  });
}
PEER(weak_qt, "weak_lock/QWeakPointer::toStrongRef")->Threads(1)->Threads(2);
void alive_qpointer(State& s) {
  QObject o;
  QPointer<QObject> w(&o);
  sums(s, [&] {
    keep(w);
    return int(w.data() != nullptr);
  });
}
PEER(alive_qpointer, "weak_check/QPointer");
#endif
#if PEERS_GLIB
void weak_g(State& s) {
  static auto* o = static_cast<GObject*>(g_object_new(G_TYPE_OBJECT, nullptr));
  static GWeakRef* w = [] {
    auto* r = new GWeakRef;
    g_weak_ref_init(r, o);
    return r;
  }();
  sums(s, [] {
    auto* q = static_cast<GObject*>(g_weak_ref_get(w));
    if (!q) return 0;
    g_object_unref(q);
    return 1;
  });
}
PEER(weak_g, "weak_lock/GWeakRef")->Threads(1)->Threads(2);
#endif

// ---------------------------------------------------------------- the same in a process of one thread
PEER(alone<new_malloc>, "create_destroy_one_thread/limit-malloc+free");
PEER(alone<new_shared>, "create_destroy_one_thread/std::make_shared");
PEER(alone<retain_shared>, "retain_release_one_thread/std::shared_ptr");
PEER(alone<weak_std>, "weak_lock_one_thread/std::weak_ptr::lock");
#if PEERS_BOOST
PEER(alone<new_intrusive>, "create_destroy_one_thread/boost::intrusive_ptr");
PEER(alone<retain_intrusive>, "retain_release_one_thread/boost::intrusive_ptr");
#endif
#if PEERS_QT
PEER(alone<retain_qshared>, "retain_release_one_thread/QSharedPointer");
PEER(alone<weak_qt>, "weak_lock_one_thread/QWeakPointer::toStrongRef");
#endif

}  // namespace
