// SPDX-License-Identifier: MIT
#include "bench/dispatch.h"

#include <string>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSInvocation.h"
#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Send.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

class Target : public NSObject {
  QF_CLASS(Target, NSObject)
 public:
  OPAQUE int add(int v) { return v + 1; }
  OPAQUE void put(int v) { value = v; }
  OPAQUE Ref<Target> echo(Target* other) { return other; }
  int value = 0;
};
Class* Target::classObject() {
  static Class* const cls = ClassBuilder<Target>("BenchTarget")
                                .method<&Target::add>("add:"_sel)
                                .method<&Target::put>("put:"_sel)
                                .method<&Target::echo>("echo:"_sel)
                                .build();
  return cls;
}

template <int K> class Kind : public Target {
  QF_CLASS(Kind, Target)
 public:
  OPAQUE int add(int v) { return v + 1; }
  OPAQUE void put(int v) { value = v; }
};
template <int K> Class* Kind<K>::classObject() {
  static const std::string name = "BenchKind" + std::to_string(K);
  static Class* const cls =
      ClassBuilder<Kind>(name).template method<&Kind::add>("add:"_sel).template method<&Kind::put>("put:"_sel).build();
  return cls;
}

/// Captures every message and drops it.
class Silent : public NSProxy {
  QF_CLASS(Silent, NSProxy)
 public:
  explicit Silent(NSObject* target) : target_(target) {}
  Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const override {
    return target_->methodSignatureForSelector(selector);
  }
  void forwardInvocation(NSInvocation* invocation) override { keep(invocation); }

 private:
  Ref<NSObject> target_;
};
Class* Silent::classObject() {
  static Class* const cls = ClassBuilder<Silent>("BenchSilent").build();
  return cls;
}

void one_class(State& s) {
  const Ref<Target> o = make<Target>();
  NSObject* p = o;
  sends(s, [&](int x) {
    keep(p);
    return send<int>(p, "add:"_sel, x);
  });
}
void one_class_no_result(State& s) {
  const Ref<Target> o = make<Target>();
  NSObject* p = o;
  sends_no_result(s, [&](int i) {
    keep(p);
    send<void>(p, "put:"_sel, i);
  });
  expect(s, o->value, kCalls - 1);
}
OURS(one_class, "send");
OURS(one_class_no_result, "send_no_result");

const std::vector<Ref<Target>>& mixed() {
  static const auto all = mixed_objects<Ref<Target>>([]<int K>() -> Ref<Target> { return make<Kind<K>>(); });
  return all;
}
void mixed_classes(State& s) {
  sends_mixed(s, mixed(), [](const Ref<Target>& o, int x) { return send<int>(o, "add:"_sel, x); });
}
void mixed_classes_no_result(State& s) {
  sends_mixed_no_result(s, mixed(), [](const Ref<Target>& o, int i) { send<void>(o, "put:"_sel, i); });
  expect(s, mixed().back()->value, std::ssize(mixed()));
}
OURS(mixed_classes, "send_mixed_classes");
OURS(mixed_classes_no_result, "send_no_result_mixed_classes");

void object_in_and_out(State& s) {
  const Ref<Target> o = make<Target>(), other = make<Target>();
  NSObject* p = o;
  const auto echo = [&] {
    keep(p);
    return send<Ref<Target>>(p, "echo:"_sel, other);
  };
  if (expect(s, echo() == other)) repeats(s, echo);
}
OURS(object_in_and_out, "send_object");

void captured(State& s) {
  const Ref<Target> o = make<Target>();
  const Ref<Silent> proxy = make<Silent>(o);
  NSObject* p = proxy;
  sends_no_result(s, [&](int i) {
    keep(p);
    send<void>(p, "put:"_sel, i);
  });
  expect(s, o->value, 0);  // nothing went through
}
OURS(captured, "send_captured");

}  // namespace
