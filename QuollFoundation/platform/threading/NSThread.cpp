// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/threading/NSThread.h"

#include <unistd.h>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/ImmortalInternal.h"

namespace quoll::inline v1 {

Class* NSThread::classObject() {
  static Class* const cls = ClassBuilder<NSThread>("NSThread")
                                .classMethod<&NSThread::currentThread>("currentThread"_sel)
                                .classMethod<&NSThread::mainThread>("mainThread"_sel)
                                .classMethod<&NSThread::class_isMainThread>("isMainThread"_sel)
                                .method<&NSThread::isMainThread>("isMainThread"_sel)
                                .build();
  return cls;
}

namespace {

constexpr detail::Immortal<NSThread> theMain{};
constinit thread_local bool hasEnded = false;  // outlives the object below, which takes it down

/// Of one thread, until it ends.
struct Identity {
  Ref<NSThread> thread = make<NSThread>();
  ~Identity() { hasEnded = true; }
};

}  // namespace

Ref<NSThread> NSThread::mainThread() { return theMain.get(); }

bool NSThread::class_isMainThread() {
  constinit static thread_local pid_t thread = 0;
  if (!thread) thread = gettid();
  return thread == getpid();
}

Ref<NSThread> NSThread::currentThread() {
  if (class_isMainThread()) return mainThread();
  if (hasEnded) return make<NSThread>();
  thread_local const Identity own;
  return own.thread;
}

bool NSThread::isMainThread() const { return this == theMain.get(); }

}  // namespace quoll::inline v1
