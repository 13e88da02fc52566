// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/CellMemoryInternal.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <utility>
#include <vector>

using namespace quoll::detail;

namespace {

constexpr size_t pagesInSegment = 32;
constexpr size_t pageSize = size_t{64} << 10;

char* bytesOf(void* cell) { return static_cast<char*>(cell); }

size_t pagesInUse() {
  const CellMemory memory = cellMemory();
  return memory.segments * pagesInSegment - memory.freePages;
}

/// A cell that is filled with a mark of its own, which nobody else may overwrite.
struct Marked {
  uint8_t* cell = nullptr;
  size_t size = 0;
  uint8_t mark = 0;

  static Marked made(size_t size, uint8_t mark) {
    Marked marked{static_cast<uint8_t*>(allocateCell(size)), size, mark};
    std::memset(marked.cell, mark, size);
    return marked;
  }
  bool isIntact() const {
    return std::all_of(cell, cell + size, [this](uint8_t byte) { return byte == mark; });
  }
};

std::vector<void*> manyCells(size_t count, size_t size) {
  std::vector<void*> cells(count);
  for (void*& each : cells) each = allocateCell(size);
  return cells;
}

void freeAll(const std::vector<void*>& cells) {
  for (void* each : cells) freeCell(each);
}

/// With no other memory than the cells: a sanitizer's malloc does not outlive a fork.
void makeAndFreeAChain(size_t count, size_t size) {
  void* last = nullptr;
  for (size_t i = 0; i < count; ++i) {
    void* const cell = allocateCell(size);
    std::memcpy(cell, &last, sizeof last);
    last = cell;
  }
  while (last) freeCell(std::exchange(last, *static_cast<void**>(last)));
}

}  // namespace

TEST(CellMemory, CellsOfASizeStandSideBySideInTheOrderOfTheirMaking) {
  const std::vector<void*> cells = manyCells(100, 40);
  for (size_t i = 1; i < cells.size(); ++i) EXPECT_EQ(bytesOf(cells[i]) - bytesOf(cells[i - 1]), 40);
  freeAll(cells);
}

TEST(CellMemory, CellsAreAlignedAsTheirSizeAsks) {
  for (size_t size = 1; size <= largestCell; ++size) {
    const std::vector<void*> cells = manyCells(3, size);
    for (void* each : cells) EXPECT_EQ(reinterpret_cast<uintptr_t>(each) % (size % 16 == 0 ? 16 : 8), 0U) << size;
    freeAll(cells);
  }
}

TEST(CellMemory, ACellThatIsFreedIsTheNextToBeHandedOut) {
  void* const stays = allocateCell(24);
  void* const first = allocateCell(24);
  freeCell(first);
  EXPECT_EQ(allocateCell(24), first);
  freeCell(first);
  freeCell(stays);
}

TEST(CellMemory, PagesThatAreEmptyGoBack) {
  const size_t before = pagesInUse();
  const std::vector<void*> cells = manyCells(100'000, 48);
  EXPECT_GE(pagesInUse(), before + 100'000 * 48 / pageSize);
  freeAll(cells);
  EXPECT_LE(pagesInUse(), before + 1) << "one page stays for the next cell";
}

TEST(CellMemory, SegmentsThatAreEmptyGoBackToTheSystemButForAReserve) {
  const size_t before = cellMemory().segments;
  const std::vector<void*> cells = manyCells(1'000'000, 64);
  EXPECT_GE(cellMemory().segments, 30U);
  freeAll(cells);
  EXPECT_LE(cellMemory().segments, before + 17) << "16 in reserve, and that of the page for the next cell";
}

TEST(CellMemory, AFullPageIsUsedAgainOnceACellOfItIsFree) {
  std::vector<void*> cells = manyCells(10'000, 256);
  const size_t pages = pagesInUse();
  std::vector<void*> freed;
  for (size_t i = 0; i < cells.size(); i += 2) freed.push_back(cells[i]);
  freeAll(freed);
  for (size_t i = 0; i < cells.size(); i += 2) cells[i] = allocateCell(256);
  EXPECT_EQ(pagesInUse(), pages);
  freeAll(cells);
}

TEST(CellMemory, NoTwoCellsOverlapWhateverIsMadeAndFreed) {
  std::mt19937 random(7);
  std::vector<Marked> cells;
  for (int i = 0; i < 200'000; ++i) {
    if (cells.empty() || random() % 5 < 3) {
      cells.push_back(Marked::made(1 + random() % largestCell, static_cast<uint8_t>(random())));
    } else {
      std::swap(cells[random() % cells.size()], cells.back());
      ASSERT_TRUE(cells.back().isIntact());
      freeCell(cells.back().cell);
      cells.pop_back();
    }
  }
  for (const Marked& each : cells) {
    ASSERT_TRUE(each.isIntact());
    freeCell(each.cell);
  }
}

TEST(CellMemory, WhatAnotherThreadFreesComesBackToItsOwner) {
  const std::vector<void*> cells = manyCells(50'000, 40);
  const size_t pages = pagesInUse();
  std::thread([&] { freeAll(cells); }).join();
  EXPECT_EQ(pagesInUse(), pages) << "until the owner asks for a cell";
  const std::vector<void*> again = manyCells(50'000, 40);
  EXPECT_LE(pagesInUse(), pages + 1);
  freeAll(again);
}

TEST(CellMemory, ANewThreadTakesOverThePagesOfOneThatHasEnded) {
  std::vector<void*> cells;
  std::thread([&] { cells = manyCells(1000, 32); }).join();
  const size_t pages = pagesInUse();
  void* next = nullptr;
  std::thread([&] { next = allocateCell(32); }).join();
  EXPECT_EQ(bytesOf(next) - bytesOf(cells.back()), 32);
  EXPECT_EQ(pagesInUse(), pages);
  freeCell(next);
  freeAll(cells);
}

TEST(CellMemory, PagesGoBackWhenTheThreadThatMadeTheCellsHasEnded) {
  const size_t before = pagesInUse();
  std::vector<void*> cells;
  std::thread([&] { cells = manyCells(50'000, 40); }).join();
  EXPECT_GT(pagesInUse(), before + 20);
  freeAll(cells);
  EXPECT_EQ(pagesInUse(), before);
}

TEST(CellMemory, AThreadAtItsEndHasNoCellsAndStillFreesThem) {
  static std::atomic<int> calls;
  calls = 0;
  static void* early;
  std::thread([] {
    early = allocateCell(16);  // so that the thread's end is watched; keys are served in the order of their making
    pthread_key_t key{};
    ASSERT_EQ(pthread_key_create(&key,
                                 [](void*) {
                                   ++calls;
                                   EXPECT_EQ(allocateCell(16), nullptr);
                                   freeCell(early);
                                 }),
              0);
    ASSERT_EQ(pthread_setspecific(key, &early), 0);
  }).join();
  EXPECT_EQ(calls, 1);
}

TEST(CellMemory, AForkedChildFindsNoLockTaken) {
  std::atomic<bool> isOver{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&] {
      while (!isOver) makeAndFreeAChain(300, 256);  // just above a page: one is taken and given back each time
    });
  }
  for (int i = 0; i < 300; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      makeAndFreeAChain(300, 256);
      _exit(0);
    }
    int status = 1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  isOver = true;
  for (std::thread& each : threads) each.join();
}

TEST(CellMemory, IsNullWhereTheSystemHasNone) {
  const pid_t child = fork();  // whose limit goes with it
  if (child == 0) {
    const rlimit none{0, 0};
    bool isRefused = setrlimit(RLIMIT_AS, &none) == 0;
    for (void* cell = allocateCell(256); cell; cell = allocateCell(256)) {}
    for (int i = 0; i < 100; ++i) isRefused = isRefused && !allocateCell(256);
    _exit(isRefused ? 0 : 1);
  }
  int status = 1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(CellMemory, ThreadsThatComeAndGoMayPassCellsAround) {
  static std::array<std::atomic<uint8_t*>, 512> places;
  for (auto& each : places) each = nullptr;
  static std::atomic<int> faults;
  faults = 0;
  const auto discard = [](uint8_t* cell) {
    if (!cell) return;
    const size_t size = cell[0] + 1U;
    if (!std::all_of(cell, cell + size, [&](uint8_t byte) { return byte == cell[0]; })) ++faults;
    freeCell(cell);
  };
  const auto work = [discard](unsigned seed) {
    std::mt19937 random(seed);
    for (int i = 0; i < 3000; ++i) {
      const auto mark = static_cast<uint8_t>(random());
      discard(places[random() % places.size()].exchange(Marked::made(mark + 1U, mark).cell));
    }
  };
  for (unsigned round = 0; round < 8; ++round) {
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 4; ++i) threads.emplace_back(work, round * 4 + i);
    for (std::thread& each : threads) each.join();
  }
  for (auto& each : places) discard(each.exchange(nullptr));
  EXPECT_EQ(faults, 0);
}
