// SPDX-License-Identifier: MIT
#include "bench/sync.h"

#include "QuollFoundation/concurrency/locks/QFThreadsafeObject.h"
#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace {

using namespace quoll;

struct Semaphore {
  explicit Semaphore(int count) : s(quoll_semaphore_create(count)) {}
  Semaphore(const Semaphore&) = delete;
  Semaphore& operator=(const Semaphore&) = delete;
  ~Semaphore() { quoll_semaphore_release(s); }
  void down() { quoll_semaphore_wait(s); }
  void up() { quoll_semaphore_signal(s); }
  quoll_semaphore_t s;
};
SEM(Semaphore, "quoll");

class TableObject : public NSObject {
  QF_CLASS(TableObject, NSObject)
 public:
  bench::Table table;
};
Class* TableObject::classObject() {
  static Class* const cls = ClassBuilder<TableObject>("TableObject").build();
  return cls;
}

struct Transactions {
  template <class F>
  void read(F f) {
    guarded->readTransactionUsingBlock([&](TableObject* object) { f(object->table); });
  }
  template <class F>
  void write(F f) {
    guarded->writeTransactionUsingBlock([&](TableObject* object) { f(object->table); });
  }
  Ref<QFThreadsafeObject> guarded = QFThreadsafeObject::initWithRepresentedObject(make<TableObject>());
};
READERS(Transactions, "quoll");

}  // namespace
