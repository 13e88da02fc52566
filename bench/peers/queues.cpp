// SPDX-License-Identifier: MIT
// Handing a call to another thread's run loop.
// roundtrip: post one call, wait until it ran (woken through the same sem_t everywhere).
// post: post 10000 calls, wait for the last.
#include <poll.h>
#include <semaphore.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include "bench/measure.h"
#if PEERS_QT
#include <QMetaObject>
#include <QThread>
#include "bench/peers/qt_objects.h"
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_UV
#include <uv.h>
#endif
#if PEERS_BOOST && __has_include(<boost/asio.hpp>)
#include <boost/asio.hpp>
#define PEERS_ASIO 1
#endif

using namespace bench;
using benchmark::State;
namespace {
constexpr int kPosts = 10000;

struct Done {
  sem_t s;
  Done() { sem_init(&s, 0, 0); }
  ~Done() { sem_destroy(&s); }
  void set() { sem_post(&s); }
  void wait() {
    while (sem_wait(&s) != 0) {}
  }
};

// A "loop" has post(callable) and is running on its own thread.
template <class Loop>
void roundtrip(State& s) {
  Loop loop;
  Done d;
  for (auto _ : s) {
    loop.post([&d] { d.set(); });
    d.wait();
  }
  items(s, 1);
}
template <class Loop>
void throughput(State& s) {
  Loop loop;
  Done d;
  int n = 0;
  for (auto _ : s) {
    n = 0;
    for (int i = 0; i < kPosts; ++i)
      loop.post([&d, &n] {
        if (++n == kPosts) d.set();
      });
    d.wait();
  }
  items(s, kPosts);
}

// ---------------------------------------------------------------- floors
void rt_sem(State& s) {
  Done go, back;
  bool stop = false;
  std::thread t([&] {
    while (true) {
      go.wait();
      if (stop) return;
      back.set();
    }
  });
  for (auto _ : s) {
    go.set();
    back.wait();
  }
  stop = true;
  go.set();
  t.join();
  items(s, 1);
}
void rt_eventfd(State& s) {
  int fd = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  Done back;
  bool stop = false;
  std::thread t([&] {
    pollfd p{fd, POLLIN, 0};
    while (true) {
      poll(&p, 1, -1);
      std::uint64_t v;
      if (read(fd, &v, 8) != 8) continue;
      if (stop) return;
      back.set();
    }
  });
  std::uint64_t one = 1;
  for (auto _ : s) {
    if (write(fd, &one, 8) != 8) break;
    back.wait();
  }
  stop = true;
  if (write(fd, &one, 8) == 8) t.join();
  else t.detach();
  close(fd);
  items(s, 1);
}
PEER(rt_sem, "roundtrip/limit-sem_t-pair");
PEER(rt_eventfd, "roundtrip/limit-poll+eventfd");

// ---------------------------------------------------------------- standard library
struct CondQueue {
  std::mutex m;
  std::condition_variable cv;
  std::deque<std::function<void()>> q;
  bool stop = false;
  std::thread t{[this] {
    std::unique_lock l(m);
    while (true) {
      cv.wait(l, [this] { return stop || !q.empty(); });
      if (q.empty()) return;
      auto f = std::move(q.front());
      q.pop_front();
      l.unlock();
      f();
      l.lock();
    }
  }};
  ~CondQueue() {
    {
      std::lock_guard l(m);
      stop = true;
    }
    cv.notify_one();
    t.join();
  }
  template <class F>
  void post(F f) {
    {
      std::lock_guard l(m);
      q.emplace_back(std::move(f));
    }
    cv.notify_one();
  }
};
struct SwapQueue {  // the consumer takes all there is; the producer wakes it only when it found the queue empty
  std::mutex m;
  std::condition_variable cv;
  std::vector<std::function<void()>> q;
  bool stop = false;
  std::thread t{[this] {
    std::vector<std::function<void()>> mine;
    while (true) {
      {
        std::unique_lock l(m);
        cv.wait(l, [this] { return stop || !q.empty(); });
        if (q.empty()) return;
        mine.swap(q);
      }
      for (auto& f : mine) f();
      mine.clear();
    }
  }};
  ~SwapQueue() {
    {
      std::lock_guard l(m);
      stop = true;
    }
    cv.notify_one();
    t.join();
  }
  template <class F>
  void post(F f) {
    bool wake;
    {
      std::lock_guard l(m);
      wake = q.empty();
      q.emplace_back(std::move(f));
    }
    if (wake) cv.notify_one();
  }
};
PEER(roundtrip<CondQueue>, "roundtrip/mutex+condvar-deque");
PEER(throughput<CondQueue>, "post/mutex+condvar-deque");
PEER(roundtrip<SwapQueue>, "roundtrip/mutex+condvar-swap");
PEER(throughput<SwapQueue>, "post/mutex+condvar-swap");

void rt_async(State& s) {
  for (auto _ : s) std::async(std::launch::async, [] {}).get();
  items(s, 1);
}
void post_async(State& s) {  // batches of 100 live threads
  for (auto _ : s) {
    std::atomic<int> n{0};
    for (int b = 0; b < kPosts; b += 100) {
      std::vector<std::future<void>> f;
      for (int i = 0; i < 100; ++i) f.push_back(std::async(std::launch::async, [&n] { ++n; }));
      for (auto& x : f) x.get();
    }
  }
  items(s, kPosts);
}
PEER(rt_async, "roundtrip/std::async");
PEER(post_async, "post/std::async");

// ---------------------------------------------------------------- Qt
#if PEERS_QT
struct QtLoop {
  QThread thread;
  Receiver worker;
  QtLoop() {
    worker.moveToThread(&thread);
    thread.start();
  }
  ~QtLoop() {
    thread.quit();
    thread.wait();
  }
  template <class F>
  void post(F f) {
    QMetaObject::invokeMethod(&worker, std::move(f), Qt::QueuedConnection);
  }
};
PEER(roundtrip<QtLoop>, "roundtrip/Qt-QueuedConnection-functor");
PEER(throughput<QtLoop>, "post/Qt-QueuedConnection-functor");
void rt_qt_blocking(State& s) {
  QtLoop loop;
  for (auto _ : s) QMetaObject::invokeMethod(&loop.worker, [] {}, Qt::BlockingQueuedConnection);
  items(s, 1);
}
PEER(rt_qt_blocking, "roundtrip/Qt-BlockingQueuedConnection");
void rt_qt_signal(State& s) {
  QtLoop loop;
  Sender sender;
  Done d;
  QObject::connect(&sender, &Sender::fired, &loop.worker, [&d](int) { d.set(); }, Qt::QueuedConnection);
  for (auto _ : s) {
    sender.fire(1);
    d.wait();
  }
  items(s, 1);
}
void post_qt_signal(State& s) {
  QtLoop loop;
  Sender sender;
  Done d;
  int n = 0;
  QObject::connect(
      &sender, &Sender::fired, &loop.worker,
      [&](int) {
        if (++n == kPosts) d.set();
      },
      Qt::QueuedConnection);
  for (auto _ : s) {
    n = 0;
    for (int i = 0; i < kPosts; ++i) sender.fire(i);
    d.wait();
  }
  items(s, kPosts);
}
PEER(rt_qt_signal, "roundtrip/Qt-QueuedConnection-signal");
PEER(post_qt_signal, "post/Qt-QueuedConnection-signal");
#endif

// ---------------------------------------------------------------- GLib
#if PEERS_GLIB
struct GLoop {
  GMainContext* ctx = g_main_context_new();
  GMainLoop* loop = g_main_loop_new(ctx, FALSE);
  std::thread t{[this] {
    g_main_context_push_thread_default(ctx);
    g_main_loop_run(loop);
    g_main_context_pop_thread_default(ctx);
  }};
  GLoop() {
    while (!g_main_loop_is_running(loop)) std::this_thread::yield();
    usleep(2000);
  }
  ~GLoop() {
    g_main_loop_quit(loop);
    t.join();
    g_main_loop_unref(loop);
    g_main_context_unref(ctx);
  }
  template <class F>
  void post(F f) {
    g_main_context_invoke_full(
        ctx, G_PRIORITY_DEFAULT,
        [](gpointer p) -> gboolean {
          (*static_cast<F*>(p))();
          return G_SOURCE_REMOVE;
        },
        new F(std::move(f)), [](gpointer p) { delete static_cast<F*>(p); });
  }
};
PEER(roundtrip<GLoop>, "roundtrip/g_main_context_invoke");
PEER(throughput<GLoop>, "post/g_main_context_invoke");
#endif

// ---------------------------------------------------------------- libuv
// uv_async coalesces, so calls travel in a locked vector.
#if PEERS_UV
struct UvLoop {
  uv_loop_t loop;
  uv_async_t async;
  std::mutex m;
  std::vector<std::function<void()>> q;
  bool stop = false;
  std::thread t;
  UvLoop() {
    uv_loop_init(&loop);
    async.data = this;
    uv_async_init(&loop, &async, [](uv_async_t* a) {
      auto* self = static_cast<UvLoop*>(a->data);
      std::vector<std::function<void()>> mine;
      bool end;
      {
        std::lock_guard l(self->m);
        mine.swap(self->q);
        end = self->stop;
      }
      for (auto& f : mine) f();
      if (end) uv_close(reinterpret_cast<uv_handle_t*>(a), nullptr);
    });
    t = std::thread([this] { uv_run(&loop, UV_RUN_DEFAULT); });
  }
  ~UvLoop() {
    {
      std::lock_guard l(m);
      stop = true;
    }
    uv_async_send(&async);
    t.join();
    uv_loop_close(&loop);
  }
  template <class F>
  void post(F f) {
    {
      std::lock_guard l(m);
      q.emplace_back(std::move(f));
    }
    uv_async_send(&async);
  }
};
PEER(roundtrip<UvLoop>, "roundtrip/uv_async_send");
PEER(throughput<UvLoop>, "post/uv_async_send+locked-vector");
#endif

#if PEERS_ASIO
struct AsioLoop {
  boost::asio::io_context ctx{1};
  boost::asio::executor_work_guard<boost::asio::io_context::executor_type> guard{ctx.get_executor()};
  std::thread t{[this] { ctx.run(); }};
  ~AsioLoop() {
    guard.reset();
    t.join();
  }
  template <class F>
  void post(F f) {
    boost::asio::post(ctx, std::move(f));
  }
};
PEER(roundtrip<AsioLoop>, "roundtrip/boost::asio::post");
PEER(throughput<AsioLoop>, "post/boost::asio::post");
#endif
}  // namespace
