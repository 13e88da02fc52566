// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AutoreleaseScope.h"

#include <pthread.h>

#include <vector>

namespace quoll::inline v1 {

namespace {

using Pool = std::vector<Ref<NSObject>>;

/// Ends what was kept since; a destructor may autorelease more.
void drain(Pool& pool, size_t begin) {
  while (pool.size() > begin) {
    const Ref<NSObject> last = std::move(pool.back());
    pool.pop_back();
  }
}

void endOfThread(void* pool);

/// A key of the C library, not a thread_local: what is autoreleased while the thread's own objects go gets a fresh
/// pool, and the thread's end comes round to it once more.
pthread_key_t poolKey() {
  static const pthread_key_t key = [] {
    pthread_key_t made;
    if (pthread_key_create(&made, &endOfThread) != 0) throw std::bad_alloc();
    return made;
  }();
  return key;
}

void endOfThread(void* pool) {
  pthread_setspecific(poolKey(), pool);  // what dies now may autorelease in its turn, as deep as it likes
  drain(*static_cast<Pool*>(pool), 0);
  pthread_setspecific(poolKey(), nullptr);
  delete static_cast<Pool*>(pool);
}

Pool& currentPool() {
  if (void* pool = pthread_getspecific(poolKey())) return *static_cast<Pool*>(pool);
  auto* made = new Pool;
  pthread_setspecific(poolKey(), made);
  return *made;
}

}  // namespace

AutoreleaseScope::AutoreleaseScope() : begin_(currentPool().size()) {}
AutoreleaseScope::~AutoreleaseScope() { drain(currentPool(), begin_); }

void detail::keepUntilScopeEnds(Ref<NSObject> object) { currentPool().push_back(std::move(object)); }

}  // namespace quoll::inline v1
