// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/CellMemoryInternal.h"

#include <pthread.h>
#include <sys/mman.h>

#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>

namespace quoll::inline v1::detail {

namespace {

constexpr size_t sparesKept = 16;    // segments that nobody uses: what was let go at once is often made anew
constexpr size_t smallSegments = 2;  // without a large page: a program that has few objects would not fill it

template <class T> void link(T*& first, T* item, T* previous = nullptr) {
  item->previous = previous;
  item->next = first;
  if (first) first->previous = item;
  first = item;
}
template <class T> void unlink(T*& first, T* item) {
  (item->previous ? item->previous->next : first) = item->next;
  if (item->next) item->next->previous = item->previous;
}

/// The memory that no heap has.
class Segments {
 public:
  std::mutex& mutex() { return mutex_; }

  /// Null when the system has no memory.
  CellPage* take() noexcept {
    const std::scoped_lock lock(mutex_);
    if (!withRoom_ && !add()) return nullptr;
    CellSegment* const segment = withRoom_;
    if (segment->freePages == UINT32_MAX) --spares_;
    CellPage* const page = &segment->pages[std::countr_zero(segment->freePages)];
    segment->freePages &= segment->freePages - 1;
    if (!segment->freePages) unlink(withRoom_, segment);
    return page;
  }

  void giveBack(CellPage* page) {
    const std::scoped_lock lock(mutex_);
    CellSegment* const segment = CellSegment::of(page);
    if (!segment->freePages) link(withRoom_, segment);
    segment->freePages |= uint32_t{1} << (page - segment->pages);
    if (segment->freePages != UINT32_MAX) return;
    if (spares_ < sparesKept) {
      ++spares_;
    } else {
      unlink(withRoom_, segment);
      --count_;
      munmap(segment, CellSegment::size);
    }
  }

  CellMemory memory() {
    const std::scoped_lock lock(mutex_);
    CellMemory memory{count_, 0};
    for (const CellSegment* each = withRoom_; each; each = each->next) {
      memory.freePages += static_cast<size_t>(std::popcount(each->freePages));
    }
    return memory;
  }

 private:
  bool add() {
    void* const memory = mapped();
    if (!memory) return false;
    if (count_ >= smallSegments) madvise(memory, CellSegment::size, MADV_HUGEPAGE);  // refused where there are none
    link(withRoom_, ::new (memory) CellSegment);
    ++count_;
    ++spares_;
    return true;
  }

  static char* map(size_t size) {
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<char*>(memory);
  }
  static void* mapped() {
    char* const memory = map(CellSegment::size);  // often aligned: the system puts one block below the other
    if (!memory || CellSegment::of(memory) == static_cast<void*>(memory)) return memory;
    munmap(memory, CellSegment::size);
    char* const larger = map(2 * CellSegment::size);
    if (!larger) return nullptr;
    char* const aligned = reinterpret_cast<char*>(CellSegment::of(larger + CellSegment::size - 1));
    if (aligned != larger) munmap(larger, static_cast<size_t>(aligned - larger));
    munmap(aligned + CellSegment::size, static_cast<size_t>(larger + CellSegment::size - aligned));
    return aligned;
  }

  std::mutex mutex_;
  CellSegment* withRoom_ = nullptr;
  size_t count_ = 0;
  size_t spares_ = 0;  // with all pages free
};
constinit Segments segments;

}  // namespace

void CellPage::makeFresh() {
  auto* const segment = reinterpret_cast<char*>(CellSegment::of(this));
  const auto index = static_cast<size_t>(this - CellSegment::of(this)->pages);
  char* const start = segment + (index ? index * CellSegment::pageSize : sizeof(CellSegment));
  const auto room = static_cast<size_t>(segment + (index + 1) * CellSegment::pageSize - start);
  free = nullptr;
  fresh = start;
  end = start + room / cellSize * cellSize;
}

void CellHeap::unlist(CellPage* page) noexcept {
  unlink(pages[page->cellSize / cellStep], page);
  page->isListed = false;
}

void* CellHeap::allocateSlowly(size_t step) noexcept {
  for (bool hasLooked = false;; hasLooked = true) {
    while (CellPage* const page = pages[step]) {
      if (void* const cell = page->take()) return cell;
      unlist(page);
    }
    if (!hasLooked) takeReturned();
    else if (!add(step)) return nullptr;
  }
}

bool CellHeap::add(size_t step) noexcept {
  CellPage* const page = segments.take();
  if (!page) return false;
  page->cellSize = static_cast<uint16_t>(step * cellStep);
  page->heap = this;
  page->isListed = true;
  page->makeFresh();
  link(pages[step], page);
  return true;
}

/// After a cell came back: a page that was full has room again, one that is empty may go.
void CellHeap::settle(CellPage* page) noexcept {
  CellPage*& first = pages[page->cellSize / cellStep];
  if (!page->isListed) {
    page->isListed = true;
    if (first) link(first->next, page, first);
    else link(first, page);
  }
  if (page->used) return;
  if (first == page && !page->next) return page->makeFresh();  // the last with room stays, or the next object maps anew
  unlist(page);
  segments.giveBack(page);
}

void CellHeap::takeReturned() noexcept {
  void* cell = returned.exchange(nullptr);
  while (cell) {
    void* next;
    std::memcpy(&next, cell, sizeof next);
    take(CellSegment::pageOf(cell), cell);
    cell = next;
  }
}

void CellHeap::letEmptyPagesGo() noexcept {
  for (CellPage* page : pages) {
    if (!page || page->used) continue;  // one that is empty is the only one with room
    unlist(page);
    segments.giveBack(page);
  }
}

namespace {

/// The heaps of threads that have ended.
class SleepingHeaps {
 public:
  std::mutex& mutex() { return mutex_; }

  CellHeap* wakeOne() {
    const std::scoped_lock lock(mutex_);
    CellHeap* const heap = first_;
    if (!heap) return nullptr;
    first_ = heap->nextAsleep;
    heap->isAwake = true;
    return heap;
  }
  void putToSleep(CellHeap* heap) noexcept {
    const std::scoped_lock lock(mutex_);
    heap->isAwake = false;  // before the last look: who gives a cell back later sees it, and looks after the heap
    tidy(heap);
    heap->nextAsleep = first_;
    first_ = heap;
  }
  void lookAfter(CellHeap* heap) noexcept {
    const std::scoped_lock lock(mutex_);
    if (!heap->isAwake) tidy(heap);
  }

 private:
  static void tidy(CellHeap* heap) noexcept {
    heap->takeReturned();
    heap->letEmptyPagesGo();
  }

  std::mutex mutex_;
  CellHeap* first_ = nullptr;
};
constinit SleepingHeaps sleepingHeaps;

[[gnu::tls_model("initial-exec")]] constinit thread_local bool hasEnded = false;

void endThread(void* heap) {
  hasEnded = true;
  heapOfThread = nullptr;
  sleepingHeaps.putToSleep(static_cast<CellHeap*>(heap));
}

// A thread that forks has both locks, so that its child does not find one that nobody there can give back.
void lockAll() {
  sleepingHeaps.mutex().lock();
  segments.mutex().lock();
}
void unlockAll() {
  segments.mutex().unlock();
  sleepingHeaps.mutex().unlock();
}

/// The heap of this thread from now on; null at the thread's end, or when there is no memory.
CellHeap* beginThread() noexcept {
  static const pthread_key_t key = [] {
    pthread_atfork(&lockAll, &unlockAll, &unlockAll);
    pthread_key_t made{};
    return pthread_key_create(&made, &endThread) == 0 ? made : static_cast<pthread_key_t>(-1);
  }();
  if (hasEnded) return nullptr;
  CellHeap* heap = sleepingHeaps.wakeOne();
  if (!heap) heap = new (std::nothrow) CellHeap;
  if (!heap) return nullptr;
  if (pthread_setspecific(key, heap) != 0) {
    sleepingHeaps.putToSleep(heap);
    return nullptr;
  }
  return heapOfThread = heap;
}

}  // namespace

[[gnu::tls_model("initial-exec")]] constinit thread_local CellHeap* heapOfThread = nullptr;

void* allocateCellSlowly(size_t size) noexcept {
  CellHeap* const heap = heapOfThread ? heapOfThread : beginThread();
  return heap ? heap->allocateSlowly((size + cellStep - 1) / cellStep) : nullptr;
}

void giveBackCell(CellHeap* heap, void* cell) noexcept {
  void* next = heap->returned.load(std::memory_order_relaxed);
  do std::memcpy(cell, &next, sizeof next);
  while (!heap->returned.compare_exchange_weak(next, cell));
  if (!heap->isAwake) sleepingHeaps.lookAfter(heap);
}

CellMemory cellMemory() { return segments.memory(); }

}  // namespace quoll::inline v1::detail
