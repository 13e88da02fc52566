// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Counting.h"

#include <pthread.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
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

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool keepsRooms = false;  // each object its own memory: that is what these builds are for
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool keepsRooms = false;
#else
constexpr bool keepsRooms = true;
#endif
#else
constexpr bool keepsRooms = true;
#endif

constexpr size_t roomStep = 16;
constexpr size_t roomSizes = 16;     // up to 256 bytes
constexpr size_t mallocsOwn = 8;     // bytes that malloc adds to a block: with them, a block is whole steps
constexpr size_t roomsOfASize = 32;  // that a thread keeps

/// Rooms of one size that a thread gave back, linked through their first word.
struct KeptRooms {
  void* first;
  size_t count;
};
struct RoomsOfThread {
  KeptRooms sizes[roomSizes + 1];
  size_t limit;  // 0 until the thread's end is watched, and after it
  bool isWatched;
};
[[gnu::tls_model("initial-exec")]] constinit thread_local RoomsOfThread rooms{};

void giveBackRooms(void*) {
  rooms.limit = 0;
  for (KeptRooms& kept : rooms.sizes) {
    while (void* room = kept.first) {
      std::memcpy(&kept.first, room, sizeof room);
      ::operator delete(room);
    }
  }
}

/// From the first room that a thread gives back on, its end is watched.
void watchEndOfThread() {
  rooms.isWatched = true;
  static const bool isWanted = [] {
    const char* wish = std::getenv("QUOLL_OBJECT_CACHE");
    return !(wish && std::strcmp(wish, "0") == 0);
  }();
  static const pthread_key_t key = [] {
    pthread_key_t made{};
    return pthread_key_create(&made, &giveBackRooms) == 0 ? made : static_cast<pthread_key_t>(-1);
  }();
  if (isWanted && pthread_setspecific(key, &rooms) == 0) rooms.limit = roomsOfASize;
}

}  // namespace

void* allocateObject(size_t size) {
  const size_t step = (sizeof(Header) + size + mallocsOwn + roomStep - 1) / roomStep;
  if (!keepsRooms || step > roomSizes) {
    return ::new (::operator new(sizeof(Header) + size)) Header(1) + 1;
  }
  KeptRooms& kept = rooms.sizes[step];
  void* room = kept.first;
  if (room) [[likely]] {
    std::memcpy(&kept.first, room, sizeof room);
    --kept.count;
  } else {
    room = ::operator new(step * roomStep - mallocsOwn);
  }
  return ::new (room) Header(step << Header::sizeShift | 1) + 1;
}

void freeObject(Header* header) noexcept {
  const size_t step = (header->counts.load(std::memory_order_relaxed) & Header::sizePart) >> Header::sizeShift;
  KeptRooms& kept = rooms.sizes[step];
  if (step && !rooms.isWatched) [[unlikely]]
    watchEndOfThread();
  if (step == 0 || kept.count >= rooms.limit) return ::operator delete(header);
  void* room = header;
  std::memcpy(room, &kept.first, sizeof room);
  kept.first = room;
  ++kept.count;
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

inline void Counts::destroyNow(NSObject* object) {
  Header& header = headerOf(object);
  if (header.counts.load(std::memory_order_relaxed) & Header::recorded) [[unlikely]]
    forgetLiveObject(object);
  object->~NSObject();
  if (SideRecord* side = header.side.load(std::memory_order_acquire)) [[unlikely]]
    delete side;
  releaseWeak(object);
}

void Counts::destroy(const void* dead) {
  auto* object = static_cast<NSObject*>(const_cast<void*>(dead));
  if (releases.depth >= deepestNesting) return enqueue(object);
  ++releases.depth;
  destroyNow(object);
  if (releases.pending && releases.depth == 1) [[unlikely]]
    destroyPending();
  --releases.depth;
}

void Counts::destroyPending() {
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
