// SPDX-License-Identifier: MIT
// What a reference and an object refuse; scripts/check-refusals tries each case.
#include <memory>
#include <unordered_set>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

#if CASE == 18  // refused by clang: stack memory | temporary
Counter* gone() { return Counter::initWithValue(1); }
#endif

[[maybe_unused]] static void attempt([[maybe_unused]] Ref<Counter> ref, [[maybe_unused]] Counter* raw) {
#if CASE == 0
  const bool same = ref == raw && Ref<NSObject>(raw) == ref && ref != nullptr;
  static_cast<void>(same ? ref : Ref(raw));
#elif CASE == 1   // refused: protected
  delete raw;
#elif CASE == 2   // refused: ambiguous
  delete ref;
#elif CASE == 3   // refused: abstract
  new SubCounter;
#elif CASE == 4   // refused: abstract
  SubCounter onTheStack;
#elif CASE == 5   // refused: deleted
  ref[3];
#elif CASE == 6   // refused: deleted
  static_cast<void>(ref < raw);
#elif CASE == 7   // refused: deleted
  static_cast<void>(ref + 1);
#elif CASE == 8   // refused: deleted
  static_cast<void>(ref - ref);
#elif CASE == 9   // refused: operator++ | cannot increment
  ++ref;
#elif CASE == 10  // refused: deleted function
  static_cast<void>(ref == Ref<NSString>());
#elif CASE == 11  // refused: use quoll::ObjectHash with quoll::ObjectEqual
  std::hash<Ref<Counter>>()(ref);
#elif CASE == 12  // refused: use quoll::ObjectHash with quoll::ObjectEqual
  std::unordered_set<Ref<Counter>> set{ref};
#elif CASE == 13  // refused by clang: dangling | destroyed at the end
  Counter* dangling = Counter::initWithValue(1);
  dangling->pop();
#elif CASE == 14  // refused: abstract
  Counter copy = *raw;
#elif CASE == 15  // refused: abstract
  std::make_shared<SubCounter>();
#elif CASE == 16  // refused: abstract
  struct Holder {
    SubCounter member;
  } holder;
#elif CASE == 17  // refused: no matching | conversion
  Ref<NSString> other = ref;
#elif CASE == 19  // refused: operands | ambiguous
  static_cast<void>(raw ? ref : raw);
#elif CASE == 20  // refused: conversion | no known conversion | no match
  Ref<Counter> narrowed = Ref<NSObject>(raw);
#elif CASE == 21  // refused: deleted
  *raw = *ref;
#endif
}
