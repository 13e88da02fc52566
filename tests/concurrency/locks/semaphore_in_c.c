/* SPDX-License-Identifier: MIT */
#include <pthread.h>
#include <stddef.h>
#include <stdio.h>

#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"

static int failures = 0;

static void expectTrue(const char* claim, int actual) {
  if (actual) return;
  printf("not true: %s\n", claim);
  ++failures;
}

struct Work {
  quoll_semaphore_t guard;
  quoll_semaphore_t done;
  int total;
};

static void addOne(void* context) { ++((struct Work*)context)->total; }

static void* work(void* context) {
  struct Work* work = context;
  for (int i = 0; i < 1000; ++i) quoll_semaphore_wait_signal_f(work->guard, addOne, work);
  quoll_semaphore_signal(work->done);
  return NULL;
}

static void testThreads(void) {
  struct Work shared = {quoll_semaphore_create(1), quoll_semaphore_create(0), 0};
  pthread_t threads[2];
  for (int i = 0; i < 2; ++i) expectTrue("thread", pthread_create(&threads[i], NULL, work, &shared) == 0);
  for (int i = 0; i < 2; ++i) expectTrue("wait gives 0", quoll_semaphore_wait(shared.done) == 0);
  expectTrue("every addition counted", shared.total == 2000);
  for (int i = 0; i < 2; ++i) pthread_join(threads[i], NULL);
  quoll_semaphore_release(shared.guard);
  quoll_semaphore_release(shared.done);
}

static void testCount(void) {
  quoll_semaphore_t empty = quoll_semaphore_create(0);
  expectTrue("nothing to take", quoll_semaphore_timed_wait(empty, 0) != 0);
  expectTrue("nobody woken", quoll_semaphore_signal(empty) == 0);
  expectTrue("one to take", quoll_semaphore_timed_wait(empty, 0) == 0);
  quoll_semaphore_release(empty);
}

int main(void) {
  expectTrue("no negative count", quoll_semaphore_create(-1) == NULL);
  quoll_semaphore_release(NULL);
  testCount();
  testThreads();
  return failures;
}
