// SPDX-License-Identifier: MIT
#include "tests/support/SampleObjects.h"

#include <numeric>

namespace quoll::testsupport {

Class* Counter::classObject() {
  static Class* const cls = ClassBuilder<Counter>("Counter")
                                .property<&Counter::value, &Counter::setValue>("value")
                                .initializer<&Counter::initWithValue_ofClass>("initWithValue:"_sel)
                                .classMethod<&Counter::counterWithValue_ofClass>("counterWithValue:"_sel)
                                .classMethod<&Counter::class_value>("value"_sel)
                                .method<&Counter::plus>("plus:"_sel)
                                .method<&Counter::pop>("pop"_sel)
                                .build();
  return cls;
}

Ref<Counter> Counter::initWithValue_ofClass(int64_t value, Class* cls) {
  Ref<Counter> self = create<Counter>(cls);
  self->value_ = value;
  return self;
}

Ref<Counter> Counter::counterWithValue_ofClass(int64_t value, Class* cls) {
  return made<Counter>(cls, "initWithValue:"_sel, value);
}

Class* SubCounter::classObject() {
  static Class* const cls = ClassBuilder<SubCounter>("SubCounter").build();
  return cls;
}

Class* Kinds::classObject() {
  static Class* const cls = ClassBuilder<Kinds>("Kinds")
                                .method<&Kinds::nothing>("nothing"_sel)
                                .method<&Kinds::small>("small:"_sel)
                                .method<&Kinds::natural>("natural:"_sel)
                                .method<&Kinds::flag>("flag:"_sel)
                                .method<&Kinds::unit>("unit:"_sel)
                                .method<&Kinds::colour>("colour:"_sel)
                                .method<&Kinds::single>("single:"_sel)
                                .method<&Kinds::half>("half:"_sel)
                                .method<&Kinds::span>("span:"_sel)
                                .method<&Kinds::range>("range:"_sel)
                                .method<&Kinds::matrix>("matrix:"_sel)
                                .method<&Kinds::echo>("echo:"_sel)
                                .method<&Kinds::take>("take:"_sel)
                                .method<&Kinds::borrowed>("borrowed"_sel)
                                .method<&Kinds::anything>("anything:"_sel)
                                .method<&Kinds::hiddenCounter>("hiddenCounter"_sel)
                                .method<&Kinds::classOf>("classOf:"_sel)
                                .method<&Kinds::protocol>("protocol:"_sel)
                                .method<&Kinds::selector>("selector:"_sel)
                                .method<&Kinds::word>("word:"_sel)
                                .method<&Kinds::lengthOf>("lengthOf:"_sel)
                                .method<&Kinds::context>("context:"_sel)
                                .method<&Kinds::sum>("sum:count:"_sel)
                                .method<&Kinds::out>("out:"_sel)
                                .method<&Kinds::call>("call:with:"_sel)
                                .method<&Kinds::each>("each:block:"_sel)
                                .method<&Kinds::hasBlock>("hasBlock:"_sel)
                                .method<&Kinds::describe>("describe:object:"_sel)
                                .build();
  return cls;
}

Matrix Kinds::matrix(Matrix m) {
  for (double& cell : m.cells) cell *= 2;
  return m;
}

NSObject* Kinds::hiddenCounter() {
  static const Ref<Counter> counter = Counter::initWithValue(7);
  return counter;
}

uint64_t Kinds::sum(const uint64_t* numbers, uint64_t count) {
  return std::accumulate(numbers, numbers + count, uint64_t{0});
}

int64_t Kinds::each(int64_t n, BlockRef<bool(int64_t)> block) {
  int64_t called = 0;
  for (int64_t i = 0; i < n; ++i) {
    ++called;
    if (!block(i)) break;
  }
  return called;
}

Class* Forwarder::classObject() {
  static Class* const cls = ClassBuilder<Forwarder>("Forwarder").build();
  return cls;
}

Class* Capturer::classObject() {
  static Class* const cls = ClassBuilder<Capturer>("Capturer").build();
  return cls;
}

}  // namespace quoll::testsupport
