/* SPDX-License-Identifier: MIT */
#ifndef QUOLL_CONCURRENCY_LOCKS_QUOLL_SEMAPHORE_H
#define QUOLL_CONCURRENCY_LOCKS_QUOLL_SEMAPHORE_H

#include <stdint.h>

#include "QuollFoundation/platform/basics/Export.h"

#ifdef __cplusplus
#include <type_traits>

#include "QuollFoundation/platform/threading/DispatchSemaphore.h"
#endif

QF_C_BEGIN

/// A counting semaphore as plain functions. Compiles as C and as C++.
///
///     quoll_semaphore_t slots = quoll_semaphore_create(4);
///     quoll_semaphore_wait(slots);       /* at most four threads at a time get past here */
///     convert(file);
///     quoll_semaphore_signal(slots);
///     quoll_semaphore_release(slots);    /* when the last one is done */
///
/// Use `QFSemaphore` where an object is wanted. It is no recursive lock: a thread that waits twice for a count of one,
/// without a signal between, waits for ever.
///
/// Threads: thread-safe. Lifetime: the creator's until `quoll_semaphore_release`. Null is for `quoll_semaphore_release`
/// only; the others don't test for it.
typedef struct DispatchSemaphore* quoll_semaphore_t;

/// A semaphore with that count, which the caller releases. Null for a negative count, and when memory is short.
QF_EXPORT quoll_semaphore_t quoll_semaphore_create(int64_t count);
/// Gives the semaphore back; no thread may be waiting for it. Does nothing with null.
QF_EXPORT void quoll_semaphore_release(quoll_semaphore_t semaphore);

/// Takes one from the count as soon as it is above zero, however long that takes: 0.
QF_EXPORT int64_t quoll_semaphore_wait(quoll_semaphore_t semaphore);
/// The same for at most so many nanoseconds: 0 when it took one, else non-zero. Zero and negative times take a count
/// that is there and never block; a time whose end the clock can't tell is without limit.
QF_EXPORT int64_t quoll_semaphore_timed_wait(quoll_semaphore_t semaphore, int64_t nanoseconds);
/// Adds one to the count: non-zero when that woke a thread which slept in a wait, else 0.
QF_EXPORT int64_t quoll_semaphore_signal(quoll_semaphore_t semaphore);

/// Waits without limit, calls `function(context)` once, signals; what the signal gives.
///
/// For short sections that don't throw. An exception of the function passes through and leaves the semaphore taken:
/// what it guarded may be half done, and nobody else should see it so.
QF_EXPORT int64_t quoll_semaphore_wait_signal_f(quoll_semaphore_t semaphore, void (*function)(void*), void* context);

QF_C_END

#ifdef __cplusplus
namespace quoll::inline v1 {

template <class Signature> class BlockRef;

/// The same with a callable; a `Block` is held while it runs. (To call it, include
/// QuollFoundation/platform/object/Block.h.)
///
///     quoll_semaphore_wait_signal(guard, [&] { total += part; });
QF_EXPORT int64_t quoll_semaphore_wait_signal(quoll_semaphore_t semaphore, BlockRef<void()> block);

// The short ways, inline: without contention the calls would cost more than the work.
inline int64_t quoll_semaphore_wait(quoll_semaphore_t semaphore) {
  return dispatch_semaphore_wait(semaphore, DISPATCH_TIME_FOREVER);
}
inline int64_t quoll_semaphore_signal(quoll_semaphore_t semaphore) { return dispatch_semaphore_signal(semaphore); }

}  // namespace quoll::inline v1
#endif

#endif
