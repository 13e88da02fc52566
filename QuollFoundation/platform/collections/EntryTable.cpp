// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/EntryTable.h"

#include <algorithm>
#include <cstring>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"

namespace quoll::inline v1::detail {

namespace {
constexpr uint64_t mostEntries = (uint64_t{1} << 31) - 1;

uint64_t capacityAfter(uint64_t capacity) {
  return capacity == mostEntries ? capacity + 1 : std::clamp<uint64_t>(capacity * 2, 4, mostEntries);
}
}  // namespace

template <class Entry> EntryTable<Entry>::~EntryTable() { std::free(static_cast<void*>(entries_)); }

template <class Entry> void EntryTable<Entry>::reserve(uint64_t count) {
  if (count > mostEntries) raise(NSMallocException, "a collection cannot hold 2^31 elements");
  if (count <= capacity_) return;
  const bool fitsIndex = count <= searchedOneByOne || count <= index_.room();
  HashIndex index = fitsIndex ? HashIndex() : HashIndex(count);
  void* const larger = reallocatedToSearch(entries_, used_ * sizeof(Entry), count * sizeof(Entry));
  if (!larger) raise(NSMallocException, "no memory for the elements of a collection");
  entries_ = static_cast<Entry*>(larger);
  capacity_ = static_cast<uint32_t>(count);
  if (fitsIndex) return;
  index_.swap(index);
  fillIndex();
}

template <class Entry> Entry* EntryTable<Entry>::append(const Entry& entry) {
  if (used_ == capacity_) {
    if (holes_ > used_ / 4) closeHoles();
    else reserve(capacityAfter(used_));
  }
  entries_[used_] = entry;
  if (index_.isActive()) index_.add(entry.hash, used_);
  ++mutations_;
  return &entries_[used_++];
}

template <class Entry> Entry EntryTable<Entry>::remove(Entry* entry) {
  const Entry removed = *entry;
  const auto position = static_cast<uint32_t>(entry - entries_);
  if (index_.isActive()) index_.remove(removed.hash, position);
  entry->key = nullptr;
  ++holes_;
  ++mutations_;
  if (holes_ == used_) first_ = used_ = holes_ = 0;
  while (first_ < used_ && !entries_[first_].key) ++first_;
  for (; used_ > first_ && !entries_[used_ - 1].key; --used_) --holes_;
  if (holes_ > 32 && holes_ > used_ / 2) closeHoles();
  return removed;
}

template <class Entry> void EntryTable<Entry>::insert(uint32_t position, const Entry& entry) {
  if (position == used_) {
    append(entry);
    return;
  }
  if (used_ == capacity_) reserve(capacityAfter(used_));
  std::memmove(static_cast<void*>(entries_ + position + 1), entries_ + position, (used_ - position) * sizeof(Entry));
  entries_[position] = entry;
  ++used_;
  ++mutations_;
  if (!index_.isActive()) return;
  index_.shift(position, 1);
  index_.add(entry.hash, position);
}

template <class Entry> Entry EntryTable<Entry>::erase(uint32_t position) {
  const Entry removed = entries_[position];
  if (index_.isActive()) {
    index_.remove(removed.hash, position);
    if (position + 1 != used_) index_.shift(position, -1);
  }
  --used_;
  std::memmove(static_cast<void*>(entries_ + position), entries_ + position + 1, (used_ - position) * sizeof(Entry));
  ++mutations_;
  return removed;
}

template <class Entry> void EntryTable<Entry>::exchange(uint32_t a, uint32_t b) {
  const Entry first = entries_[a], second = entries_[b];
  replace(a, second);
  replace(b, first);
}

template <class Entry> void EntryTable<Entry>::replace(uint32_t position, const Entry& entry) {
  if (index_.isActive()) {
    index_.remove(entries_[position].hash, position);
    index_.add(entry.hash, position);
  }
  entries_[position] = entry;
  ++mutations_;
}

template <class Entry> void EntryTable<Entry>::closeHoles() {
  if (!holes_) return;
  Entry* const last = std::remove_if(entries_ + first_, entries_ + used_, [](const Entry& e) { return !e.key; });
  if (first_) {
    std::memmove(static_cast<void*>(entries_), entries_ + first_,
                 static_cast<size_t>(last - (entries_ + first_)) * sizeof(Entry));
  }
  used_ = count();
  first_ = holes_ = 0;
  rehash();
}

template <class Entry> void EntryTable<Entry>::rehash() {
  if (!index_.isActive()) return;
  index_.clear();
  fillIndex();
}

/// The index is empty.
template <class Entry> void EntryTable<Entry>::fillIndex() {
  if (!index_.isActive()) return;
  constexpr uint32_t ahead = 8;  // far enough for the memory of a group to arrive meanwhile
  for (uint32_t i = first_; i < used_; ++i) {
    if (i + ahead < used_) index_.prepareToAdd(entries_[i + ahead].hash);
    if (entries_[i].key) index_.add(entries_[i].hash, i);
  }
}

template <class Entry> void EntryTable<Entry>::copyFrom(const EntryTable& other) {
  EntryTable fresh;
  fresh.reserve(other.count());
  for (const Entry& entry : other) {
    if (entry.key) fresh.entries_[fresh.used_++] = entry;
  }
  fresh.fillIndex();
  swap(fresh);
}

template <class Entry>
uint64_t EntryTable<Entry>::enumerate(NSFastEnumerationState* state, NSObject** objects, uint64_t count) {
  if (state->state == 0) {
    state->mutationsPtr = &mutations_;
    state->state = uint64_t{first_} + 1;
  }
  state->itemsPtr = objects;
  uint64_t given = 0;
  uint64_t at = state->state - 1;
  for (; at < used_ && given < count; ++at) {
    if (entries_[at].key) objects[given++] = object(entries_[at].key);
  }
  state->state = at + 1;
  return given;
}

template class EntryTable<PairEntry>;
template class EntryTable<ElementEntry>;

}  // namespace quoll::inline v1::detail
