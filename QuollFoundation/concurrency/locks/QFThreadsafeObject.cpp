// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/QFThreadsafeObject.h"

#include <utility>

#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1 {

Class* QFThreadsafeObject::classObject() {
  static Class* const cls =
      ClassBuilder<QFThreadsafeObject>("QFThreadsafeObject")
          .initializer<&QFThreadsafeObject::initWithRepresentedObject_ofClass>("initWithRepresentedObject:"_sel)
          .initializer<&QFThreadsafeObject::init_ofClass>("init"_sel)
          .property<&QFThreadsafeObject::representedObject, &QFThreadsafeObject::setRepresentedObject>(
              "representedObject")
          .property<&QFThreadsafeObject::readerMap, &QFThreadsafeObject::setReaderMap>("readerMap")
          .property<&QFThreadsafeObject::writerThread, &QFThreadsafeObject::setWriterThread>("writerThread")
          .property<&QFThreadsafeObject::numberOfWritesFromCurrentThread,
                    &QFThreadsafeObject::setNumberOfWritesFromCurrentThread>("numberOfWritesFromCurrentThread")
          .method<&QFThreadsafeObject::readTransactionUsingBlock>("readTransactionUsingBlock:"_sel)
          .method<&QFThreadsafeObject::writeTransactionUsingBlock>("writeTransactionUsingBlock:"_sel)
          .method<&QFThreadsafeObject::readTransactionUsingFunction_context>(
              "readTransactionUsingFunction:context:"_sel)
          .method<&QFThreadsafeObject::writeTransactionUsingFunction_context>(
              "writeTransactionUsingFunction:context:"_sel)
          .method<&QFThreadsafeObject::beginRead>("beginRead"_sel)
          .method<&QFThreadsafeObject::endRead>("endRead"_sel)
          .method<&QFThreadsafeObject::beginWrite>("beginWrite"_sel)
          .method<&QFThreadsafeObject::endWrite>("endWrite"_sel)
          .method<&QFThreadsafeObject::_cleanupSemaphores>("_cleanupSemaphores"_sel)
          .build();
  return cls;
}

Ref<QFThreadsafeObject> QFThreadsafeObject::initWithRepresentedObject_ofClass(NSObject* object, Class* cls) {
  Ref<QFThreadsafeObject> self = create<QFThreadsafeObject>(cls);
  self->mRepresentedObject.store(object);
  self->mSynchronizationSemaphore = quoll_semaphore_create(1);
  self->mMutationSemaphore = quoll_semaphore_create(1);
  self->mReaderMap = NSMapTable::strongToStrongObjectsMapTable();
  return self;
}

Ref<QFThreadsafeObject> QFThreadsafeObject::init_ofClass(Class* cls) {
  create<QFThreadsafeObject>(cls)->doesNotRecognizeSelector("init"_sel);
  return nullptr;
}

QFThreadsafeObject::~QFThreadsafeObject() {
  _cleanupSemaphores();
  mRepresentedObject.store(nullptr);  // in the order of the fields; by themselves they would go in reverse
  mReaderMap = nullptr;
  mWriterThread = nullptr;
}

void QFThreadsafeObject::_cleanupSemaphores() {
  quoll_semaphore_release(std::exchange(mSynchronizationSemaphore, nullptr));
  quoll_semaphore_release(std::exchange(mMutationSemaphore, nullptr));
}

// The first reader waits for a writer with the synchronization semaphore still taken, so that further readers queue
// behind it.
void QFThreadsafeObject::beginRead() {
  quoll_semaphore_wait(mSynchronizationSemaphore);
  if (mNumberOfReaders++ == 0) quoll_semaphore_wait(mMutationSemaphore);
  quoll_semaphore_signal(mSynchronizationSemaphore);
}

void QFThreadsafeObject::endRead() {
  quoll_semaphore_wait(mSynchronizationSemaphore);
  if (mNumberOfReaders-- == 1) quoll_semaphore_signal(mMutationSemaphore);
  quoll_semaphore_signal(mSynchronizationSemaphore);
}

void QFThreadsafeObject::beginWrite() { quoll_semaphore_wait(mMutationSemaphore); }
void QFThreadsafeObject::endWrite() { quoll_semaphore_signal(mMutationSemaphore); }

// The object is let go after the lock: what dies with it may take its time, or take the lock.

void QFThreadsafeObject::readTransactionUsingBlock(BlockRef<void(NSObject* object)> block) {
  beginRead();
  const Ref<NSObject> object = representedObject();
  block(object.get());
  endRead();
}

void QFThreadsafeObject::writeTransactionUsingBlock(BlockRef<void(NSObject* object)> block) {
  beginWrite();
  const Ref<NSObject> object = representedObject();
  block(object.get());
  endWrite();
}

void QFThreadsafeObject::readTransactionUsingFunction_context(void (*function)(NSObject* object, void* context),
                                                              void* context) {
  readTransactionUsingBlock([=](NSObject* object) { function(object, context); });
}

void QFThreadsafeObject::writeTransactionUsingFunction_context(void (*function)(NSObject* object, void* context),
                                                               void* context) {
  writeTransactionUsingBlock([=](NSObject* object) { function(object, context); });
}

}  // namespace quoll::inline v1
