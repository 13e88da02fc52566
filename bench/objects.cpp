// SPDX-License-Identifier: MIT
#include "bench/objects.h"

#include "QuollFoundation/platform/object/NSObject.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

class Small : public NSObject {
 public:
  int value = 1;
};

void make_and_drop(State& s) {
  for (auto _ : s) {
    const Ref<Small> p = make<Small>();
    keep(p);
  }
  items(s, 1);
}
void copy_and_drop(State& s) {
  const Ref<Small> p = make<Small>();
  for (auto _ : s) {
    const Ref<Small> q = p;
    keep(q);
  }
  items(s, 1);
}
void lock_and_drop(State& s) {
  static const Ref<Small> p = make<Small>();
  static const Weak<Small> w = p;
  sums(s, [] {
    const Ref<Small> q = w.lock();
    return q ? q->value : 0;
  });
}
OURS(make_and_drop, "create_destroy");
OURS(copy_and_drop, "retain_release");
OURS(lock_and_drop, "weak_lock")->Threads(1)->Threads(2);
OURS(alone<make_and_drop>, "create_destroy_one_thread");
OURS(alone<copy_and_drop>, "retain_release_one_thread");
OURS(alone<lock_and_drop>, "weak_lock_one_thread");

}  // namespace
