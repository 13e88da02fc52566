// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"
#include "QuollFoundation/platform/collections/NSMapTable.h"
#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/threading/NSThread.h"

namespace quoll::inline v1 {

/// An object that many threads may read at once, and one alone may change.
///
///     Ref<QFThreadsafeObject> names = QFThreadsafeObject::initWithRepresentedObject(NSMutableArray::array());
///     names->writeTransactionUsingBlock([&](NSMutableArray* list) { list->addObject(name); });
///     names->readTransactionUsingBlock([&](NSMutableArray* list) { count = list->count(); });
///
/// Readers are preferred: while one is inside, others enter at once, and a writer waits until all have left. Neither
/// kind is told from another of its own thread: A WRITE INSIDE A WRITE, OR INSIDE A READ, WAITS FOR EVER. An exception
/// passes through a transaction and leaves the lock taken, since what it guards may be half changed; `ReadScope` and
/// `WriteScope` give it back.
///
/// `readerMap`, `writerThread` and `numberOfWritesFromCurrentThread` are places for callers, to build more on top; the
/// lock neither reads nor writes them.
///
/// Threads: thread-safe, but for these three, which are caller-locked. Lifetime: keep a reference while inside.
class QF_EXPORT QFThreadsafeObject : public NSObject {
  QF_CLASS(QFThreadsafeObject, NSObject)
 public:
  template <class T = QFThreadsafeObject> static Ref<T> initWithRepresentedObject(NSObject* object) {
    return cast<T>(initWithRepresentedObject_ofClass(object, T::classObject()));
  }
  static Ref<QFThreadsafeObject> initWithRepresentedObject_ofClass(NSObject* object, Class* cls);
  /// Refused: sends `doesNotRecognizeSelector:`, which raises. Null where a subclass overrides that.
  template <class T = QFThreadsafeObject> static Ref<T> init() { return cast<T>(init_ofClass(T::classObject())); }
  static Ref<QFThreadsafeObject> init_ofClass(Class* cls);

  // The callback gets the object as it is when the lock has been taken.
  void readTransactionUsingBlock(BlockRef<void(NSObject* object)> block);
  void writeTransactionUsingBlock(BlockRef<void(NSObject* object)> block);
  void readTransactionUsingFunction_context(void (*function)(NSObject* object, void* context), void* context);
  void writeTransactionUsingFunction_context(void (*function)(NSObject* object, void* context), void* context);

  // The lock itself. Each begin needs its end, on any thread; a surplus end spoils the lock.
  void beginRead();
  void endRead();
  void beginWrite();
  void endWrite();

  /// The guarded object. Setting it is no transaction: it needs no lock, and the next transaction sees it.
  virtual Ref<NSObject> representedObject() const { return mRepresentedObject.load(); }
  virtual void setRepresentedObject(NSObject* object) { mRepresentedObject.store(object); }

  Ref<NSMapTable> readerMap() const { return mReaderMap; }
  void setReaderMap(NSMapTable* map) { mReaderMap = map; }
  Ref<NSThread> writerThread() const { return mWriterThread; }
  void setWriterThread(NSThread* thread) { mWriterThread = thread; }
  uint64_t numberOfWritesFromCurrentThread() const { return mNumberOfWritesFromCurrentThread; }
  void setNumberOfWritesFromCurrentThread(uint64_t number) { mNumberOfWritesFromCurrentThread = number; }

  /// Gives the semaphores back, as destruction does. The lock is of no use afterwards.
  void _cleanupSemaphores();

 protected:
  QFThreadsafeObject() = default;
  ~QFThreadsafeObject() override;

  AtomicRef<NSObject> mRepresentedObject;
  quoll_semaphore_t mSynchronizationSemaphore = nullptr;  ///< Guards the number of readers.
  quoll_semaphore_t mMutationSemaphore = nullptr;         ///< Held by a writer, or by all readers together.
  uint64_t mNumberOfReaders = 0;
  Ref<NSMapTable> mReaderMap;
  Ref<NSThread> mWriterThread;
  uint64_t mNumberOfWritesFromCurrentThread = 0;
};

/// Reads from here to the end of the scope, also when an exception ends it. Null guards nothing.
class [[nodiscard]] ReadScope {
 public:
  explicit ReadScope(QFThreadsafeObject* guarded) : guarded_(guarded) {
    if (guarded_) guarded_->beginRead();
  }
  ~ReadScope() {
    if (guarded_) guarded_->endRead();
  }
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  const Ref<QFThreadsafeObject> guarded_;
};

/// The same for writing.
class [[nodiscard]] WriteScope {
 public:
  explicit WriteScope(QFThreadsafeObject* guarded) : guarded_(guarded) {
    if (guarded_) guarded_->beginWrite();
  }
  ~WriteScope() {
    if (guarded_) guarded_->endWrite();
  }
  WriteScope(const WriteScope&) = delete;
  WriteScope& operator=(const WriteScope&) = delete;

 private:
  const Ref<QFThreadsafeObject> guarded_;
};

}  // namespace quoll::inline v1
