// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "bench/measure.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

class Model : public NSObject {
  QF_CLASS(Model, NSObject)
 public:
  int plain() const { return plain_; }
  void setPlain(int value) { plain_ = value; }

 private:
  int plain_ = 0;
};
Class* Model::classObject() {
  static Class* const cls =
      ClassBuilder<Model>("BenchModel").property<&Model::plain, &Model::setPlain>("plain").build();
  return cls;
}

/// The way from and to a plain int is part of the time, as it is for the peers.
void get(State& s) {
  const Ref<Model> model = make<Model>();
  model->setPlain(123'456);
  NSObject* p = model;
  if (!expect(s, unbox<int>(p->valueForKey("plain"_ns)), model->plain())) return;
  for (auto _ : s) {
    keep(p);
    keep(unbox<int>(p->valueForKey("plain"_ns)));
  }
  items(s, 1);
}
void set(State& s) {
  const Ref<Model> model = make<Model>();
  NSObject* p = model;
  int i = 0;
  for (auto _ : s) {
    keep(p);
    p->setValue_forKey(box(++i), "plain"_ns);
  }
  items(s, 1);
  expect(s, model->plain(), i);
}
OURS(get, "get_property");
OURS(set, "set_property");

}  // namespace
