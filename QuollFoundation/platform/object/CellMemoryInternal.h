// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

/// Memory for the small blocks that objects are, millions of them: without a word of malloc's own between two, in the
/// order in which they are asked for, and given back to the system by the page.
///
/// A thread allocates from pages of its own, without a lock. A cell that another thread frees goes back to the heap
/// whose page it is in; when its thread has ended, the heap waits for the next new thread.
namespace quoll::inline v1::detail {

constexpr size_t largestCell = 256;  ///< Bytes.
constexpr size_t cellStep = 8;

struct CellHeap;

/// 64 KiB of cells of one size, of one heap.
struct alignas(64) CellPage {
  void* free = nullptr;   // linked through their first word
  char* fresh = nullptr;  // from here to `end` no cell was ever used
  char* end = nullptr;
  uint32_t used = 0;
  uint16_t cellSize = 0;
  bool isListed = false;
  CellHeap* heap = nullptr;
  CellPage* next = nullptr;  // among those of the heap that have room
  CellPage* previous = nullptr;

  /// Null when there is no room.
  void* take() {
    if (void* const cell = free) {
      std::memcpy(&free, cell, sizeof free);
      ++used;
      return cell;
    }
    if (fresh == end) return nullptr;
    ++used;
    return std::exchange(fresh, fresh + cellSize);
  }
  void makeFresh();  // as if no cell had ever been used
};

/// 2 MiB, a large page of the system, and aligned to it. The pages' descriptions stand together at its start: were each
/// in its page, all of them would share a few lines of the cache.
struct CellSegment {
  static constexpr size_t pageCount = 32;
  static constexpr size_t pageSize = size_t{64} << 10;
  static constexpr size_t size = pageCount * pageSize;

  CellPage pages[pageCount];
  uint32_t freePages = UINT32_MAX;  // a bit each
  CellSegment* next = nullptr;      // among those with free pages
  CellSegment* previous = nullptr;

  static CellSegment* of(const void* cell) {
    return reinterpret_cast<CellSegment*>(reinterpret_cast<uintptr_t>(cell) & ~(size - 1));
  }
  static CellPage* pageOf(const void* cell) {
    return &of(cell)->pages[reinterpret_cast<uintptr_t>(cell) % size / pageSize];
  }
};

/// What one thread allocates from. It outlives the thread, since others may still free what came from it.
struct CellHeap {
  CellPage* pages[largestCell / cellStep + 1]{};  // of each size, those with room; the first is allocated from
  std::atomic<void*> returned{nullptr};           // cells that other threads freed
  std::atomic<bool> isAwake{true};                // has a thread
  CellHeap* nextAsleep = nullptr;

  void* allocateSlowly(size_t step) noexcept;
  void take(CellPage* page, void* cell) noexcept {
    std::memcpy(cell, &page->free, sizeof cell);
    page->free = cell;
    if (--page->used == 0 || !page->isListed) [[unlikely]]
      settle(page);
  }
  void takeReturned() noexcept;
  void letEmptyPagesGo() noexcept;

 private:
  bool add(size_t step) noexcept;
  void settle(CellPage* page) noexcept;
  void unlist(CellPage* page) noexcept;
};

[[gnu::tls_model("initial-exec")]] extern constinit thread_local CellHeap* heapOfThread;
void giveBackCell(CellHeap* heap, void* cell) noexcept;

/// Null where `allocateCellSlowly` has to be asked.
inline void* allocateCellQuickly(size_t size) noexcept {
  CellHeap* const heap = heapOfThread;
  if (!heap) [[unlikely]]
    return nullptr;
  CellPage* const page = heap->pages[(size + cellStep - 1) / cellStep];
  return page ? page->take() : nullptr;
}
void* allocateCellSlowly(size_t size) noexcept;

/// Of 1 to `largestCell` bytes, aligned to 8, and to 16 if `size` is a multiple of 16. Null when the thread is at its
/// end, or the system has no memory.
inline void* allocateCell(size_t size) noexcept {
  void* const cell = allocateCellQuickly(size);
  return cell ? cell : allocateCellSlowly(size);
}

inline void freeCell(void* cell) noexcept {
  CellPage* const page = CellSegment::pageOf(cell);
  if (page->heap == heapOfThread) [[likely]]
    page->heap->take(page, cell);
  else giveBackCell(page->heap, cell);
}

/// How much memory the cells of all threads have.
struct CellMemory {
  size_t segments;
  size_t freePages;  ///< Those that no heap has.
};
CellMemory cellMemory();

}  // namespace quoll::inline v1::detail
