// SPDX-License-Identifier: MIT
#include "QuollFoundation/concurrency/locks/QFThreadsafeObject.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Reflection.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/WatchedThread.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::WatchedThread;

/// Shows its fields.
class OpenObject : public QFThreadsafeObject {
  QF_CLASS(OpenObject, QFThreadsafeObject)
 public:
  const void* synchronization() const { return mSynchronizationSemaphore; }
  const void* mutation() const { return mMutationSemaphore; }
  uint64_t readers() const { return mNumberOfReaders; }
  std::vector<const void*> fields() const {
    return {&mRepresentedObject, &mSynchronizationSemaphore,       &mMutationSemaphore, &mNumberOfReaders, &mReaderMap,
            &mWriterThread,      &mNumberOfWritesFromCurrentThread};
  }
};
Class* OpenObject::classObject() {
  static Class* const cls = ClassBuilder<OpenObject>("OpenObject").build();
  return cls;
}
Ref<OpenObject> guarding(NSObject* object) { return QFThreadsafeObject::initWithRepresentedObject<OpenObject>(object); }

/// Takes the refusal of `init` lightly.
class QuietObject : public QFThreadsafeObject {
  QF_CLASS(QuietObject, QFThreadsafeObject)
 public:
  void doesNotRecognizeSelector(Selector) const override {}
};
Class* QuietObject::classObject() {
  static Class* const cls = ClassBuilder<QuietObject>("QuietObject").build();
  return cls;
}

TEST(QFThreadsafeObject, LetsManyReadAndOneWrite) {
  quoll::Ref<quoll::QFThreadsafeObject> names =
      quoll::QFThreadsafeObject::initWithRepresentedObject(quoll::NSMutableArray::array());
  names->writeTransactionUsingBlock([](quoll::NSMutableArray* list) { list->addObject("Ann"_ns); });
  uint64_t count = 0;
  names->readTransactionUsingBlock([&](quoll::NSMutableArray* list) { count = list->count(); });
  EXPECT_EQ(count, 1u);
}

TEST(QFThreadsafeObject, StartsWithItsObjectAndAnEmptyMap) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  EXPECT_THAT(guarded->representedObject(), equals("text"));
  ASSERT_NE(guarded->readerMap(), nullptr);
  EXPECT_EQ(guarded->readerMap()->count(), 0u);
  EXPECT_EQ(guarded->writerThread(), nullptr);
  EXPECT_EQ(guarded->numberOfWritesFromCurrentThread(), 0u);
  EXPECT_EQ(guarded->readers(), 0u);
}

TEST(QFThreadsafeObject, MayGuardNothing) {
  const Ref<OpenObject> guarded = guarding(nullptr);
  bool called = false;
  guarded->readTransactionUsingBlock([&](NSObject* object) {
    called = true;
    EXPECT_EQ(object, nullptr);
  });
  EXPECT_TRUE(called);
}

TEST(QFThreadsafeObject, KeepsItsFieldsInTheirOrder) {
  const Ref<OpenObject> guarded = guarding(nullptr);
  const std::vector<const void*> fields = guarded->fields();
  ASSERT_EQ(fields.size(), 7u);
  EXPECT_TRUE(std::is_sorted(fields.begin(), fields.end()));
}

TEST(QFThreadsafeObject, RefusesToBeMadeWithoutAnObject) {
  EXPECT_THAT([] { QFThreadsafeObject::init(); }, raises(NSInvalidArgumentException, "init"));
  EXPECT_THAT([] { send<Ref<NSObject>>(alloc(QFThreadsafeObject::classObject()), "init"_sel); },
              raises(NSInvalidArgumentException, "init"));
  EXPECT_EQ(QFThreadsafeObject::init<QuietObject>(), nullptr);
}

TEST(QFThreadsafeObject, ReadersOverlap) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  std::latch inside(2);
  const auto read = [&] { guarded->readTransactionUsingBlock([&](NSObject*) { inside.arrive_and_wait(); }); };
  {
    std::jthread other(read);
    read();
  }
  EXPECT_EQ(guarded->readers(), 0u);
}

TEST(QFThreadsafeObject, AWriterWaitsForAllReaders) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  std::atomic<bool> wrote = false;
  guarded->beginRead();
  guarded->beginRead();
  WatchedThread writer([&] { guarded->writeTransactionUsingBlock([&](NSObject*) { wrote = true; }); });
  ASSERT_TRUE(writer.sleepsOn(guarded->mutation()));
  guarded->endRead();
  ASSERT_TRUE(writer.sleepsOn(guarded->mutation()));
  EXPECT_FALSE(wrote);
  guarded->beginRead();  // readers are preferred: one more enters past the waiting writer
  guarded->endRead();
  EXPECT_FALSE(wrote);
  guarded->endRead();
  writer.join();
  EXPECT_TRUE(wrote);
}

TEST(QFThreadsafeObject, ReadersQueueBehindTheFirstWhileAWriterIsInside) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  std::atomic<int> entered = 0;
  guarded->beginWrite();
  const auto read = [&] { guarded->readTransactionUsingBlock([&](NSObject*) { ++entered; }); };
  WatchedThread first(read);
  ASSERT_TRUE(first.sleepsOn(guarded->mutation()));
  WatchedThread second(read);
  ASSERT_TRUE(second.sleepsOn(guarded->synchronization()));
  EXPECT_EQ(entered, 0);
  guarded->endWrite();
  first.join();
  second.join();
  EXPECT_EQ(entered, 2);
}

TEST(QFThreadsafeObject, AWriteInsideAWriteWaits) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  guarded->beginWrite();
  std::atomic<bool> again = false;
  WatchedThread nested([&] {
    guarded->beginWrite();
    again = true;
    guarded->endWrite();
  });
  ASSERT_TRUE(nested.sleepsOn(guarded->mutation()));
  EXPECT_FALSE(again);
  guarded->endWrite();  // it knows no owner: any thread may end what another began
}

TEST(QFThreadsafeObject, AWriteInsideAReadWaits) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  WatchedThread nested([&] {
    guarded->beginRead();
    guarded->beginWrite();
    guarded->endWrite();
  });
  ASSERT_TRUE(nested.sleepsOn(guarded->mutation()));
  guarded->endRead();
}

TEST(QFThreadsafeObject, TheLastReaderMayBeAnotherThread) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  guarded->beginRead();
  std::thread([&] { guarded->endRead(); }).join();
  guarded->beginWrite();
  guarded->endWrite();
}

TEST(QFThreadsafeObject, TheNextTransactionSeesANewObject) {
  const Ref<OpenObject> guarded = guarding("old"_ns);
  std::thread([&] { guarded->setRepresentedObject("new"_ns); }).join();
  guarded->readTransactionUsingBlock([](NSObject* object) { EXPECT_THAT(object, equals("new")); });
  guarded->writeTransactionUsingBlock([&](NSObject*) { guarded->setRepresentedObject("newer"_ns); });
  guarded->writeTransactionUsingBlock([](NSObject* object) { EXPECT_THAT(object, equals("newer")); });
}

TEST(QFThreadsafeObject, HoldsTheObjectOfATransactionThatReplacesIt) {
  LeakGuard guard;
  const Ref<OpenObject> guarded = guarding(NSMutableArray::array());
  guarded->writeTransactionUsingBlock([&](NSMutableArray* list) {
    guarded->setRepresentedObject(nullptr);
    list->addObject("still here"_ns);
    EXPECT_EQ(list->count(), 1u);
  });
}

TEST(QFThreadsafeObject, GivesAFunctionItsContext) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  std::string seen;
  const auto append = [](NSObject* object, void* context) {
    *static_cast<std::string*>(context) += cast<NSString>(object)->utf8() + ";";
  };
  guarded->readTransactionUsingFunction_context(append, &seen);
  guarded->writeTransactionUsingFunction_context(append, &seen);
  EXPECT_EQ(seen, "text;text;");
}

TEST(QFThreadsafeObject, AnExceptionLeavesTheLockTaken) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  EXPECT_THROW(guarded->readTransactionUsingBlock([](NSObject*) { throw std::runtime_error("half"); }),
               std::runtime_error);
  EXPECT_EQ(guarded->readers(), 1u);
  guarded->endRead();
  EXPECT_THROW(guarded->writeTransactionUsingBlock([](NSObject*) { throw std::runtime_error("half"); }),
               std::runtime_error);
  guarded->endWrite();
  guarded->writeTransactionUsingBlock([](NSObject*) {});
}

TEST(QFThreadsafeObject, ScopesGiveTheLockBackAfterAnException) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  EXPECT_THROW(
      {
        const ReadScope reading(guarded);
        EXPECT_EQ(guarded->readers(), 1u);
        throw std::runtime_error("half");
      },
      std::runtime_error);
  EXPECT_EQ(guarded->readers(), 0u);
  EXPECT_THROW(
      {
        const WriteScope writing(guarded);
        throw std::runtime_error("half");
      },
      std::runtime_error);
  guarded->beginWrite();
  guarded->endWrite();
  const ReadScope nothing(nullptr);
  const WriteScope nothingEither(nullptr);
}

TEST(QFThreadsafeObject, ASurplusEndOfAReadWrapsTheCount) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  guarded->endRead();
  EXPECT_EQ(guarded->readers(), UINT64_MAX);
}

TEST(QFThreadsafeObject, ASurplusEndOfAWriteLetsTwoWritersIn) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  guarded->endWrite();
  guarded->beginWrite();
  guarded->beginWrite();
}

TEST(QFThreadsafeObject, LeavesThePlacesOfItsCallersAlone) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  const Ref<NSMapTable> map = NSMapTable::strongToStrongObjectsMapTable();
  const Ref<NSThread> thread = NSThread::currentThread();
  guarded->setReaderMap(map);
  guarded->setWriterThread(thread);
  guarded->setNumberOfWritesFromCurrentThread(7);
  guarded->writeTransactionUsingBlock([](NSObject*) {});
  guarded->readTransactionUsingBlock([](NSObject*) {});
  EXPECT_EQ(guarded->readerMap(), map);
  EXPECT_EQ(map->count(), 0u);
  EXPECT_EQ(guarded->writerThread(), thread);
  EXPECT_EQ(guarded->numberOfWritesFromCurrentThread(), 7u);
}

TEST(QFThreadsafeObject, AnswersByName) {
  const Ref<OpenObject> guarded =
      send<Ref<OpenObject>>(alloc(OpenObject::classObject()), "initWithRepresentedObject:"_sel, "text"_ns);
  EXPECT_THAT(guarded->valueForKey("representedObject"_ns), equals("text"));
  send(guarded, "beginRead"_sel);
  EXPECT_EQ(guarded->readers(), 1u);
  send(guarded, "endRead"_sel);
  int calls = 0;
  const auto counting = [&](NSObject*) { ++calls; };
  const BlockRef<void(NSObject*)> count = counting;
  send(guarded, "readTransactionUsingBlock:"_sel, count);
  send(guarded, "writeTransactionUsingBlock:"_sel, count);
  EXPECT_EQ(calls, 2);
}

TEST(QFThreadsafeObject, GivesItsSemaphoresBackOnce) {
  const Ref<OpenObject> guarded = guarding("text"_ns);
  guarded->_cleanupSemaphores();
  EXPECT_EQ(guarded->synchronization(), nullptr);
  EXPECT_EQ(guarded->mutation(), nullptr);
}

TEST(QFThreadsafeObject, LetsGoOfAllItHolds) {
  LeakGuard guard;
  const Ref<OpenObject> guarded = guarding(NSMutableArray::array());
  guarded->setWriterThread(NSThread::currentThread());
}

/// Tells when it goes.
class Mourned : public NSObject {
  QF_CLASS(Mourned, NSObject)
 public:
  Mourned(std::string& log, const char* name) : log_(log), name_(name) {}
  ~Mourned() override { log_ += name_; }
  Ref<NSObject> copyWithZone(NSZone*) const override { return const_cast<Mourned*>(this); }

 private:
  std::string& log_;
  const char* name_;
};
Class* Mourned::classObject() {
  static Class* const cls = ClassBuilder<Mourned>("Mourned").build();
  return cls;
}

TEST(QFThreadsafeObject, LetsGoOfItsObjectBeforeItsMap) {
  std::string log;
  {
    const Ref<OpenObject> guarded = guarding(make<Mourned>(log, "object "));
    guarded->readerMap()->setObject_forKey(make<Mourned>(log, "map "), "key"_ns);
  }
  EXPECT_EQ(log, "object map ");
}

TEST(QFThreadsafeObject, ReadsTheObjectAfterTheLockIsTaken) {
  const Ref<OpenObject> guarded = guarding("old"_ns);
  guarded->beginWrite();
  std::string read;
  WatchedThread reader([&] { guarded->readTransactionUsingBlock([&](NSString* object) { read = object->utf8(); }); });
  ASSERT_TRUE(reader.sleepsOn(guarded->mutation()));
  guarded->setRepresentedObject("new"_ns);
  guarded->endWrite();
  reader.join();
  EXPECT_EQ(read, "new");
}

TEST(QFThreadsafeObject, KeepsWritersAloneAmongEightThreads) {
  const Ref<OpenObject> guarded = guarding(NSMutableArray::array());
  std::atomic<int> readers = 0, writers = 0, mostReaders = 0;
  std::atomic<bool> mixed = false;
  constexpr int rounds = 400;
  std::latch firstReaders(4);
  const auto work = [&](int thread) {
    if (thread < 4) {  // at least once all four are inside together
      guarded->readTransactionUsingBlock([&](NSObject*) { firstReaders.arrive_and_wait(); });
    }
    for (int i = 0; i < rounds; ++i) {
      if ((i + thread) % 8 == 0) {
        guarded->writeTransactionUsingBlock([&](NSMutableArray* list) {
          if (++writers != 1 || readers != 0) mixed = true;
          list->addObject("line"_ns);
          --writers;
        });
      } else {
        guarded->readTransactionUsingBlock([&](NSMutableArray* list) {
          const int now = ++readers;
          if (writers != 0 || list->count() > 8 * rounds) mixed = true;
          if (now > mostReaders) mostReaders = now;
          --readers;
        });
      }
    }
  };
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 8; ++thread) threads.emplace_back(work, thread);
  }
  EXPECT_FALSE(mixed);
  guarded->readTransactionUsingBlock([](NSMutableArray* list) { EXPECT_EQ(list->count(), 8u * rounds / 8); });
}

TEST(QFThreadsafeObject, ThreadsMayReplaceTheObjectWhileOthersRead) {
  LeakGuard guard;
  const Ref<OpenObject> guarded = guarding(NSMutableArray::array());
  std::atomic<bool> done = false;
  {
    std::jthread replacing([&] {
      for (int i = 0; i < 2000; ++i) guarded->setRepresentedObject(NSMutableArray::array());
      done = true;
    });
    while (!done) guarded->readTransactionUsingBlock([](NSMutableArray* list) { EXPECT_EQ(list->count(), 0u); });
  }
}

}  // namespace
