// SPDX-License-Identifier: MIT
// What can't be registered as a method; scripts/check-refusals tries each case.
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

struct Unlisted {};
[[maybe_unused]] static int64_t plusTwo(Counter* receiver) { return receiver->value() + 2; }
[[maybe_unused]] static void takesUnlisted(Counter*, Unlisted) {}
[[maybe_unused]] static Block<void()> givesABlock(Counter*) {
  return [] {};
}
[[maybe_unused]] static Ref<Counter> withoutAClass(int64_t) { return nullptr; }

#if CASE == 1  // refused: another number of arguments
constexpr Method wrong = method<&Counter::plus>("plus"_sel);
#elif CASE == 2  // refused: another number of arguments | constant initializer
constinit const AdditionGroup<Counter> wrong{"Wrong", {method<&plusTwo>("plusTwo:"_sel)}};
#elif CASE == 9  // refused: another number of arguments | constant initializer
constinit const ProtocolRecord wrong{"Wrong", {required<void(NSString*)>("setTitle"_sel)}};
#endif

class Nameless : public Counter {};

[[maybe_unused]] static void attempt() {
#if CASE == 0
  ClassBuilder<Counter>("Right").method<&Counter::plus>("plus:"_sel).method<&plusTwo>("plusTwo"_sel);
#elif CASE == 3   // refused: another number of arguments
  ClassBuilder<Counter>("Wrong").method<&Counter::plus>("plus"_sel);
#elif CASE == 4   // refused: another number of arguments
  ClassBuilder<Counter>("Wrong").initializer<&Counter::initWithValue_ofClass>("initWithValue"_sel);
#elif CASE == 5   // refused: an initializer takes the class to make last
  ClassBuilder<Counter>("Wrong").initializer<&withoutAClass>("initWithValue:"_sel);
#elif CASE == 6   // refused: a struct needs a StructEncoding
  ClassBuilder<Counter>("Wrong").method<&takesUnlisted>("takes:"_sel);
#elif CASE == 7   // refused: a block is no result type
  ClassBuilder<Counter>("Wrong").method<&givesABlock>("gives"_sel);
#elif CASE == 8   // refused: the class lacks its own QF_CLASS line
  ClassBuilder<Nameless>("Wrong").build();
#elif CASE == 10  // refused: another number of arguments
  ClassBuilder<Counter>("Wrong").property<&Counter::value, &Counter::setValue>("value", "assignValue"_sel);
#endif
}
