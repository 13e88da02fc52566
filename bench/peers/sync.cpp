// SPDX-License-Identifier: MIT
// Semaphores, readers and a writer, thread pools.
// With several threads the time is wall time divided by the operations of all of them.
#include "bench/sync.h"
#include <pthread.h>
#include <semaphore.h>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <semaphore>
#include <shared_mutex>
#include <thread>
#if PEERS_QT
#include <QReadWriteLock>
#include <QSemaphore>
#include <QThreadPool>
#endif
#if PEERS_GLIB
#include <glib.h>
#endif
#if PEERS_BOOST && __has_include(<boost/asio.hpp>)
#include <boost/asio.hpp>
#define PEERS_ASIO 1
#endif

using namespace bench;
using benchmark::State;
namespace {

// ---------------------------------------------------------------- semaphores
struct StdSem {
  std::counting_semaphore<> s;
  explicit StdSem(int n) : s(n) {}
  void down() { s.acquire(); }
  void up() { s.release(); }
};
struct PosixSem {
  sem_t s;
  explicit PosixSem(int n) { sem_init(&s, 0, unsigned(n)); }
  ~PosixSem() { sem_destroy(&s); }
  void down() {
    while (sem_wait(&s) != 0) {}
  }
  void up() { sem_post(&s); }
};
struct MutexSem {  // the textbook one
  std::mutex m;
  std::condition_variable cv;
  int n;
  explicit MutexSem(int k) : n(k) {}
  void down() {
    std::unique_lock l(m);
    cv.wait(l, [this] { return n > 0; });
    --n;
  }
  void up() {
    {
      std::lock_guard l(m);
      ++n;
    }
    cv.notify_one();
  }
};
void spin_handoff(State& s) {  // what the caches need to pass a word to the other core and back, nobody sleeping
  alignas(64) std::atomic<long> go{0};
  alignas(64) std::atomic<long> back{0};
  std::thread t([&] {
    for (long i = 1;; ++i) {
      long g;
      while ((g = go.load(std::memory_order_acquire)) < i && g >= 0) {}
      if (g < 0) return;
      back.store(i, std::memory_order_release);
    }
  });
  long i = 0;
  for (auto _ : s) {
    go.store(++i, std::memory_order_release);
    while (back.load(std::memory_order_acquire) != i) {}
  }
  go.store(-1);
  t.join();
  items(s, 1);
}
PEER(spin_handoff, "semaphore_handoff/limit-busy-wait");
SEM(StdSem, "std::counting_semaphore");
SEM(PosixSem, "sem_t");
SEM(MutexSem, "mutex+condition_variable");
#if PEERS_QT
struct QtSem {
  QSemaphore s;
  explicit QtSem(int n) : s(n) {}
  void down() { s.acquire(); }
  void up() { s.release(); }
};
SEM(QtSem, "QSemaphore");
#endif
void sem_atomic(State& s) {
  static std::atomic<int> n{1};
  for (auto _ : s) {
    n.fetch_sub(1);
    n.fetch_add(1);
  }
  items(s, 1);
}
PEER(sem_atomic, "semaphore/limit-atomic-dec+inc")->Threads(1)->Threads(2);

// ---------------------------------------------------------------- 95% reads, 5% writes of a small table
template <class Lock>
struct Locked {
  template <class F>
  void read(F f) {
    lock.r_lock();
    f(table);
    lock.r_unlock();
  }
  template <class F>
  void write(F f) {
    lock.w_lock();
    f(table);
    lock.w_unlock();
  }
  Lock lock;
  Table table;
};
#define RW(T, name) READERS(Locked<T>, name)
struct StdShared {
  std::shared_mutex m;
  void r_lock() { m.lock_shared(); }
  void r_unlock() { m.unlock_shared(); }
  void w_lock() { m.lock(); }
  void w_unlock() { m.unlock(); }
};
struct StdMutex {
  std::mutex m;
  void r_lock() { m.lock(); }
  void r_unlock() { m.unlock(); }
  void w_lock() { m.lock(); }
  void w_unlock() { m.unlock(); }
};
struct Posix {
  pthread_rwlock_t m;
  Posix() { pthread_rwlock_init(&m, nullptr); }
  void r_lock() { pthread_rwlock_rdlock(&m); }
  void r_unlock() { pthread_rwlock_unlock(&m); }
  void w_lock() { pthread_rwlock_wrlock(&m); }
  void w_unlock() { pthread_rwlock_unlock(&m); }
};
struct PosixWriter {  // waiting writers first: a writer is never starved
  pthread_rwlock_t m;
  PosixWriter() {
    pthread_rwlockattr_t a;
    pthread_rwlockattr_init(&a);
    pthread_rwlockattr_setkind_np(&a, PTHREAD_RWLOCK_PREFER_WRITER_NONRECURSIVE_NP);
    pthread_rwlock_init(&m, &a);
  }
  void r_lock() { pthread_rwlock_rdlock(&m); }
  void r_unlock() { pthread_rwlock_unlock(&m); }
  void w_lock() { pthread_rwlock_wrlock(&m); }
  void w_unlock() { pthread_rwlock_unlock(&m); }
};
RW(StdShared, "std::shared_mutex");
RW(StdMutex, "std::mutex");
RW(Posix, "pthread_rwlock");
RW(PosixWriter, "pthread_rwlock-prefer-writer");
#if PEERS_QT
struct QtRW {
  QReadWriteLock m;
  void r_lock() { m.lockForRead(); }
  void r_unlock() { m.unlock(); }
  void w_lock() { m.lockForWrite(); }
  void w_unlock() { m.unlock(); }
};
RW(QtRW, "QReadWriteLock");
#endif
#if PEERS_GLIB
struct GRW {
  GRWLock m;
  GRW() { g_rw_lock_init(&m); }
  void r_lock() { g_rw_lock_reader_lock(&m); }
  void r_unlock() { g_rw_lock_reader_unlock(&m); }
  void w_lock() { g_rw_lock_writer_lock(&m); }
  void w_unlock() { g_rw_lock_writer_unlock(&m); }
};
RW(GRW, "GRWLock");
#endif

// ---------------------------------------------------------------- thread pools
// 1e5 tasks that count, 2 workers, wait for all.
constexpr int kTasks = 100000;
struct Count {
  std::atomic<int> n{0};
  sem_t done;
  Count() { sem_init(&done, 0, 0); }
  void hit() {
    if (n.fetch_add(1) + 1 == kTasks) sem_post(&done);
  }
  void wait() {
    while (sem_wait(&done) != 0) {}
    n = 0;
  }
};
template <class Pool>
void pool(State& s) {
  Pool p;
  Count c;
  for (auto _ : s) {
    for (int i = 0; i < kTasks; ++i) p.run([&c] { c.hit(); });
    c.wait();
  }
  items(s, kTasks);
}
struct Inline {
  template <class F>
  void run(F f) {
    std::function<void()> g(f);
    keep(g);
    g();
  }
};
PEER(pool<Inline>, "thread_pool/limit-std::function-inline");
struct QueuePool {
  std::mutex m;
  std::condition_variable cv;
  std::deque<std::function<void()>> q;
  bool stop = false;
  std::vector<std::thread> t;
  QueuePool() {
    for (int i = 0; i < 2; ++i)
      t.emplace_back([this] {
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
      });
  }
  ~QueuePool() {
    {
      std::lock_guard l(m);
      stop = true;
    }
    cv.notify_all();
    for (auto& x : t) x.join();
  }
  template <class F>
  void run(F f) {
    {
      std::lock_guard l(m);
      q.emplace_back(std::move(f));
    }
    cv.notify_one();
  }
};
PEER(pool<QueuePool>, "thread_pool/mutex+condvar-deque");
void pool_async(State& s) {  // a thread per task, at most 100 alive
  for (auto _ : s) {
    std::atomic<int> n{0};
    for (int b = 0; b < kTasks; b += 100) {
      std::vector<std::future<void>> f;
      for (int i = 0; i < 100; ++i) f.push_back(std::async(std::launch::async, [&n] { ++n; }));
      for (auto& x : f) x.get();
    }
  }
  items(s, kTasks);
}
PEER(pool_async, "thread_pool/std::async")->Iterations(1);
#if PEERS_QT
struct QtPool {
  QThreadPool p;
  QtPool() { p.setMaxThreadCount(2); }
  template <class F>
  void run(F f) {
    p.start(std::function<void()>(f));
  }
};
PEER(pool<QtPool>, "thread_pool/QThreadPool");
#endif
#if PEERS_GLIB
struct GPool {
  using F = std::function<void()>;
  GThreadPool* p = g_thread_pool_new(
      [](gpointer d, gpointer) {
        auto* f = static_cast<F*>(d);
        (*f)();
        delete f;
      },
      nullptr, 2, TRUE, nullptr);
  ~GPool() { g_thread_pool_free(p, FALSE, TRUE); }
  template <class X>
  void run(X f) {
    g_thread_pool_push(p, new F(f), nullptr);
  }
};
PEER(pool<GPool>, "thread_pool/GThreadPool");
#endif
#if PEERS_ASIO
struct AsioPool {
  boost::asio::thread_pool p{2};
  ~AsioPool() { p.join(); }
  template <class F>
  void run(F f) {
    boost::asio::post(p, f);
  }
};
PEER(pool<AsioPool>, "thread_pool/boost::asio::thread_pool");
#endif
}  // namespace
