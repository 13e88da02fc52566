// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/HashIndex.h"

#include <cstdlib>

#include "QuollFoundation/platform/object/LargeMemoryInternal.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1::detail {

HashIndex::HashIndex(uint64_t count) {
  uint64_t size = 1;
  while (roomOf(size) < count) size *= 2;
  groups_ = static_cast<Group*>(std::aligned_alloc(alignof(Group), size * sizeof(Group)));
  if (!groups_) raise(NSMallocException, "no memory for the index of a collection");
  prepareToSearch(groups_, size * sizeof(Group));
  mask_ = static_cast<uint32_t>(size - 1);
  shift_ = static_cast<uint32_t>(32 - std::countr_zero(size));
  clear();
}

HashIndex::~HashIndex() { std::free(groups_); }

void HashIndex::remove(uint64_t hash, uint32_t position) {
  const uint32_t own = spread(hash);
  for (uint32_t at = home(own);; at = (at + 1) & mask_) {
    Group& group = groups_[at];
    for (uint32_t likely = group.slotsWith(tagOf(own)); likely; likely &= likely - 1) {
      const int slot = std::countr_zero(likely);
      if (group.places[slot] != position + 1) continue;
      group.tags[slot] = 0;
      group.places[slot] = 0;
      return;
    }
    --group.passed;
  }
}

void HashIndex::shift(uint32_t from, int32_t by) {
  for (Group* group = groups_; group <= groups_ + mask_; ++group) {
    for (uint32_t& place : group->places) {
      if (place > from) place += static_cast<uint32_t>(by);
    }
  }
}

void HashIndex::clear() { std::memset(static_cast<void*>(groups_), 0, (size_t{mask_} + 1) * sizeof(Group)); }

}  // namespace quoll::inline v1::detail
