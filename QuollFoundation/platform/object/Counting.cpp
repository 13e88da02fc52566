// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Counting.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

#include "QuollFoundation/platform/object/LiveObjectsInternal.h"
#include "QuollFoundation/platform/object/SideRecordInternal.h"

namespace quoll::inline v1::detail {

namespace {

/// The releases that are under way on this thread.
struct Releases {
  int depth = 0;
  NSObject* pending = nullptr;  // linked through the header's side word, tagged, or the side record
};
[[gnu::tls_model("initial-exec")]] constinit thread_local Releases releases;

constexpr int deepestNesting = 64;
constexpr uintptr_t linkTag = 1;

void enqueue(NSObject* object) {
  std::atomic<SideRecord*>& side = headerOf(object).side;
  if (SideRecord* record = side.load(std::memory_order_acquire)) record->nextToRelease = releases.pending;
  else
    side.store(reinterpret_cast<SideRecord*>(reinterpret_cast<uintptr_t>(releases.pending) | linkTag),
               std::memory_order_relaxed);
  releases.pending = object;
}

NSObject* dequeue() {
  NSObject* object = releases.pending;
  std::atomic<SideRecord*>& side = headerOf(object).side;
  SideRecord* word = side.load(std::memory_order_relaxed);
  const auto bits = reinterpret_cast<uintptr_t>(word);
  if (bits & linkTag) {
    side.store(nullptr, std::memory_order_relaxed);
    releases.pending = reinterpret_cast<NSObject*>(bits & ~linkTag);
  } else {
    releases.pending = word->nextToRelease;
  }
  return object;
}

}  // namespace

void* allocateObject(size_t size) { return static_cast<Header*>(::operator new(sizeof(Header) + size)) + 1; }
void freeObject(Header* header) noexcept { ::operator delete(header); }

void abandonObject(Header* header) noexcept {
  header->counts.fetch_add(Header::dying, std::memory_order_relaxed);
  delete header->side.load(std::memory_order_acquire);
  Counts::releaseWeak(header + 1);
}

void rejectMisplaced() {
  std::fputs("QuollFoundation: NSObject must be the first base of a class with virtual functions\n", stderr);
  std::abort();
}

void Counts::destroy(const void* dead) {
  auto* object = static_cast<NSObject*>(const_cast<void*>(dead));
  if (releases.depth >= deepestNesting) return enqueue(object);
  ++releases.depth;
  destroyNow(object);
  if (releases.depth == 1) {
    while (releases.pending) destroyNow(dequeue());
  }
  --releases.depth;
}

void Counts::destroyNow(NSObject* object) {
  Header& header = headerOf(object);
  if (header.counts.load(std::memory_order_relaxed) & Header::recorded) [[unlikely]]
    forgetLiveObject(object);
  object->~NSObject();
  delete header.side.load(std::memory_order_acquire);
  releaseWeak(object);
}

SideRecord* sideIfAny(const NSObject* object) {
  SideRecord* word = headerOf(object).side.load(std::memory_order_acquire);
  return reinterpret_cast<uintptr_t>(word) & linkTag ? nullptr : word;
}

SideRecord& sideOf(const NSObject* object) {
  std::atomic<SideRecord*>& word = headerOf(object).side;
  if (SideRecord* side = word.load(std::memory_order_acquire)) return *side;
  auto made = std::make_unique<SideRecord>();
  SideRecord* expected = nullptr;
  if (word.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel)) return *made.release();
  return *expected;
}

}  // namespace quoll::inline v1::detail
