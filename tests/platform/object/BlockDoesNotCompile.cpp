// SPDX-License-Identifier: MIT
// What is no callback; scripts/check-refusals tries each case.
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

[[maybe_unused]] static void each(BlockRef<void(NSObject*)>) {}

[[maybe_unused]] static void attempt([[maybe_unused]] BlockRef<void(NSObject*)> borrowed) {
#if CASE == 0
  each([](NSString*) {});
  each(Block<void(NSObject*)>([](NSObject*) {}));
#elif CASE == 1  // refused: deleted
  each(nullptr);
#elif CASE == 2  // refused: deleted
  Block<void()> none(nullptr);
#elif CASE == 3  // refused: no matching
  BlockRef<void()> none;
#elif CASE == 4  // refused: deleted
  borrowed = borrowed;
#elif CASE == 5  // refused: no matching | no match | could not convert | cannot | invalid conversion
  each([](int) {});
#elif CASE == 6  // refused: conversion | could not convert
  Block<void(NSObject*)> kept = borrowed;
#elif CASE == 7  // refused by clang: dangling | destroyed at the end | temporary
  BlockRef<void(NSObject*)> dangling([&](NSObject*) { static_cast<void>(&borrowed); });
  dangling(nullptr);
#endif
}
