// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/QFSemaphore.h"

#include <algorithm>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

Class* QFSemaphore::classObject() {
  static Class* const cls = ClassBuilder<QFSemaphore>("QFSemaphore")
                                .initializer<&QFSemaphore::initWithValue_ofClass>("initWithValue:"_sel)
                                .initializer<&QFSemaphore::init_ofClass>("init"_sel)
                                .method<&QFSemaphore::wait>("wait"_sel)
                                .method<&QFSemaphore::waitWithTimeout>("waitWithTimeout:"_sel)
                                .method<&QFSemaphore::signal>("signal"_sel)
                                .method<&QFSemaphore::waitAndSignalUsingBlock>("waitAndSignalUsingBlock:"_sel)
                                .build();
  return cls;
}

Ref<QFSemaphore> QFSemaphore::initWithValue_ofClass(int64_t value, Class* cls) {
  Ref<QFSemaphore> self = create<QFSemaphore>(cls);
  self->mSemaphore = quoll_semaphore_create(value);
  return self->mSemaphore ? self : nullptr;
}

Ref<QFSemaphore> QFSemaphore::init_ofClass(Class* cls) {
  create<QFSemaphore>(cls)->doesNotRecognizeSelector("init"_sel);
  return nullptr;
}

QFSemaphore::~QFSemaphore() { quoll_semaphore_release(mSemaphore); }

void QFSemaphore::waitWithTimeout(uint64_t nanoseconds) {
  waitForNanoseconds(static_cast<int64_t>(std::min<uint64_t>(nanoseconds, INT64_MAX)));
}

bool QFSemaphore::waitForNanoseconds(int64_t nanoseconds) {
  return quoll_semaphore_timed_wait(semaphore(), nanoseconds) == 0;
}

void QFSemaphore::waitAndSignalUsingBlock(BlockRef<void()> block) { quoll_semaphore_wait_signal(semaphore(), block); }

void QFSemaphore::raiseUninitialized() const {
  raise(NSInternalInconsistencyException, "a QFSemaphore is made with initWithValue:, and this one was not");
}

}  // namespace quoll::inline v1
