// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/threading/NSThread.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <thread>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(NSThread, TellsThreadsApart) {
  const quoll::Ref<quoll::NSThread> owner = quoll::NSThread::currentThread();
  Ref<NSThread> other;
  std::thread([&] { other = quoll::NSThread::currentThread(); }).join();
  EXPECT_FALSE(isEqual(owner, other));
  EXPECT_TRUE(isEqual(owner, NSThread::currentThread()));
}

TEST(NSThread, IsOneObjectForEachThread) {
  std::thread([] { EXPECT_EQ(NSThread::currentThread(), NSThread::currentThread()); }).join();
}

TEST(NSThread, TheFirstThreadOfTheProcessIsTheMainOne) {
  EXPECT_EQ(NSThread::currentThread(), NSThread::mainThread());
  EXPECT_TRUE(NSThread::class_isMainThread());
  EXPECT_TRUE(NSThread::currentThread()->isMainThread());
}

TEST(NSThread, AnotherThreadKnowsTheMainOne) {
  const Ref<NSThread> main = NSThread::currentThread();
  std::thread([&] {
    EXPECT_EQ(NSThread::mainThread(), main);
    EXPECT_FALSE(NSThread::class_isMainThread());
    EXPECT_FALSE(NSThread::currentThread()->isMainThread());
  }).join();
}

TEST(NSThread, OutlivesItsThreadWhileItIsHeld) {
  LeakGuard guard;
  Weak<NSThread> watched;
  Ref<NSThread> held;
  std::thread([&] {
    held = NSThread::currentThread();
    watched = held.get();
  }).join();
  EXPECT_EQ(watched.lock(), held);
  held = nullptr;
  EXPECT_EQ(watched.lock(), nullptr);
}

/// Asks when the thread's own object is already gone.
Ref<NSThread> lateFirst, lateSecond;
void askLate(void*) {
  lateFirst = NSThread::currentThread();
  lateSecond = NSThread::currentThread();
}

TEST(NSThread, GivesAFreshObjectLateInAThreadsEnd) {
  pthread_key_t key;
  ASSERT_EQ(pthread_key_create(&key, &askLate), 0);
  Ref<NSThread> early;
  std::thread([&] {
    pthread_setspecific(key, &key);  // its destructor runs after those of thread-local objects
    early = NSThread::currentThread();
  }).join();
  pthread_key_delete(key);
  ASSERT_NE(lateFirst, nullptr);
  EXPECT_NE(lateFirst, early);
  EXPECT_NE(lateFirst, lateSecond);
  lateFirst = lateSecond = nullptr;
}

TEST(NSThread, AnswersByName) {
  EXPECT_EQ(send<Ref<NSThread>>(NSThread::classObject(), "currentThread"_sel), NSThread::currentThread());
  EXPECT_EQ(send<Ref<NSThread>>(NSThread::classObject(), "mainThread"_sel), NSThread::mainThread());
  EXPECT_TRUE(send<bool>(NSThread::classObject(), "isMainThread"_sel));
  EXPECT_TRUE(send<bool>(NSThread::currentThread(), "isMainThread"_sel));
}

}  // namespace
