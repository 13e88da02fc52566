// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// A thread, as an object that tells it from others: one object for each, however the thread was made.
///
///     Ref<NSThread> owner = NSThread::currentThread();
///     if (!isEqual(owner, NSThread::currentThread())) handOver(owner);
///
/// The main thread is the process's first one. Threads: thread-safe.
class QF_EXPORT NSThread : public NSObject {
  QF_CLASS(NSThread, NSObject)
 public:
  /// Never null. Late in a thread's end, when its object is gone, a fresh one at each call.
  static Ref<NSThread> currentThread();
  static Ref<NSThread> mainThread();
  static bool class_isMainThread();  ///< Whether the caller runs on it.

  bool isMainThread() const;

 protected:
  constexpr NSThread() = default;
};

}  // namespace quoll::inline v1
