// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quoll::inline v1::detail {
namespace {

/// Memory of the kernel's, promised and not yet there.
class Mapping {
 public:
  explicit Mapping(size_t size)
      : size_(size), start_(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
  ~Mapping() { munmap(start_, size_); }
  char* start() const { return static_cast<char*>(start_); }

 private:
  size_t size_;
  void* start_;
};

/// Whether the kernel was asked for large pages at that address.
bool hasLargePagesAsked(const void* address) {
  const auto wanted = reinterpret_cast<uintptr_t>(address);
  std::ifstream maps("/proc/self/smaps");
  bool isThere = false;
  for (std::string line; std::getline(maps, line);) {
    uintptr_t start = 0, end = 0;
    char dash = 0;
    if (std::istringstream(line) >> std::hex >> start >> dash >> end && dash == '-') {
      isThere = start <= wanted && wanted < end;
    } else if (isThere && line.starts_with("VmFlags:")) {
      return line.find(" hg") != line.npos;
    }
  }
  return false;
}

bool kernelHasLargePages() { return std::filesystem::exists("/sys/kernel/mm/transparent_hugepage"); }

constexpr size_t large = alwaysMappedAnew + (size_t{8} << 20);
constexpr size_t middle = large / 2;

TEST(LargeMemory, GetsLargePages) {
  const Mapping memory(large);
  EXPECT_FALSE(hasLargePagesAsked(memory.start() + middle));
  prepareToFill(memory.start() + 24, large - 24);
  EXPECT_EQ(hasLargePagesAsked(memory.start() + middle), kernelHasLargePages());
}

TEST(LargeMemory, ThatIsSearchedGetsLargePagesEarlier) {
  const Mapping memory(large);
  prepareToSearch(memory.start(), (size_t{4} << 20) - 1);
  EXPECT_FALSE(hasLargePagesAsked(memory.start() + (size_t{2} << 20)));
  prepareToSearch(memory.start(), size_t{8} << 20);
  EXPECT_EQ(hasLargePagesAsked(memory.start() + (size_t{4} << 20)), kernelHasLargePages());
  EXPECT_FALSE(hasLargePagesAsked(memory.start() + middle));
}

TEST(LargeMemory, ThatIsSearchedMayGrowAndKeepsItsStart) {
  char* text = static_cast<char*>(std::malloc(3));
  std::memcpy(text, "abc", 3);
  for (const size_t size : {size_t{100}, size_t{8} << 20, size_t{64} << 20}) {
    text = static_cast<char*>(reallocatedToSearch(text, 3, size));
    EXPECT_EQ(std::string(text, 3), "abc") << size;
    EXPECT_EQ(hasLargePagesAsked(text + size / 2), size >= (size_t{4} << 20) && kernelHasLargePages()) << size;
  }
  std::free(text);
}

TEST(LargeMemory, MemoryThatIsNotLargeIsLeftAlone) {
  const Mapping memory(large);
  prepareToFill(memory.start(), alwaysMappedAnew);
  EXPECT_FALSE(hasLargePagesAsked(memory.start() + middle));
}

TEST(LargeMemory, MemoryAroundItIsLeftAlone) {
  const Mapping memory(large + middle);
  prepareToFill(memory.start() + middle + 1, large - 1);
  EXPECT_FALSE(hasLargePagesAsked(memory.start()));
  EXPECT_FALSE(hasLargePagesAsked(memory.start() + middle));
}

TEST(LargeMemory, KeepsWhatWasWritten) {
  const Mapping memory(large);
  memory.start()[0] = 'a';
  memory.start()[middle] = 'b';
  prepareToFill(memory.start(), large);
  EXPECT_EQ(memory.start()[0], 'a');
  EXPECT_EQ(memory.start()[middle], 'b');
}

}  // namespace
}  // namespace quoll::inline v1::detail
