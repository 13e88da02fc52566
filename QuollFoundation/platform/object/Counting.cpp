// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Counting.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "QuollFoundation/platform/object/CellMemoryInternal.h"
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

[[gnu::noinline]] void enqueue(NSObject* object) {
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

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool keepsCells = false;  // each object its own memory: that is what these builds are for
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool keepsCells = false;
#else
constexpr bool keepsCells = true;
#endif
#else
constexpr bool keepsCells = true;
#endif

bool wantsCells() {
  const char* wish = std::getenv("QUOLL_OBJECT_CACHE");
  return !(wish && std::strcmp(wish, "0") == 0);
}

[[gnu::noinline]] void* allocateByItself(size_t whole, uint64_t marks) {
  return ::new (::operator new(whole)) Header(marks | 1) + 1;
}

/// A thread's first object, and after that only those for which it has no free cell.
[[gnu::noinline]] void* allocateSlowly(size_t whole, uint64_t marks) {
  static const bool usesCells = keepsCells && wantsCells();  // read once
  void* const cell = usesCells ? allocateCellSlowly(whole) : nullptr;
  return cell ? ::new (cell) Header(Header::inCell | marks | 1) + 1 : allocateByItself(whole, marks);
}

}  // namespace

void* allocateObject(size_t size, uint64_t marks) {
  const size_t whole = sizeof(Header) + size;
  if (whole > largestCell) return allocateByItself(whole, marks);
  if (void* const cell = keepsCells ? allocateCellQuickly(whole) : nullptr) [[likely]]
    return ::new (cell) Header(Header::inCell | marks | 1) + 1;
  return allocateSlowly(whole, marks);
}

void freeObject(Header* header) noexcept {
  if (header->counts.load(std::memory_order_relaxed) & Header::inCell) [[likely]]
    freeCell(header);
  else ::operator delete(header);
}

void abandonObject(Header* header) noexcept {
  header->counts.fetch_add(Header::dying, std::memory_order_relaxed);
  delete header->side.load(std::memory_order_acquire);
  Counts::releaseWeak(header + 1);
}

void rejectMisplaced() {
  std::fputs("QuollFoundation: NSObject must be the first base of a class with virtual functions\n", stderr);
  std::abort();
}

namespace {

// What few objects need on their way out.
[[gnu::noinline]] void dropSideRecord(Header& header) { delete header.side.load(std::memory_order_acquire); }
[[gnu::noinline]] void forget(NSObject* object) { forgetLiveObject(object); }
[[gnu::noinline]] void dropMemory(const NSObject* object) { Counts::releaseWeak(object); }

}  // namespace

inline void Counts::destroyNow(NSObject* object) {
  Header& header = headerOf(object);
  if (header.counts.load(std::memory_order_relaxed) & Header::recorded) [[unlikely]]
    forget(object);
  object->~NSObject();
  if (header.side.load(std::memory_order_acquire)) [[unlikely]]
    dropSideRecord(header);
  constexpr uint64_t unseen = Header::oneWeak | Header::dying | Header::inCell;  // nobody refers to it weakly
  if (header.counts.load(std::memory_order_acquire) == unseen) [[likely]]
    freeCell(&header);
  else dropMemory(object);
}

void Counts::destroy(const void* dead) {
  Header& header = headerOf(dead);
  constexpr uint64_t justACell = Header::oneWeak | Header::dying | Header::inCell | Header::plain;
  if (header.counts.load(std::memory_order_acquire) == justACell && !header.side.load(std::memory_order_acquire)) {
    return freeCell(&header);
  }
  auto* object = static_cast<NSObject*>(const_cast<void*>(dead));
  Releases& mine = releases;
  if (mine.depth >= deepestNesting) [[unlikely]]
    return enqueue(object);
  ++mine.depth;
  destroyNow(object);
  if (mine.pending && mine.depth == 1) [[unlikely]]
    destroyPending();
  --mine.depth;
}

[[gnu::noinline]] void Counts::destroyPending() {
  while (releases.pending) destroyNow(dequeue());
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
