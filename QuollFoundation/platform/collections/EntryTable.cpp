// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/EntryTable.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"

namespace quoll::inline v1::detail {

HashIndex::~HashIndex() { std::free(slots_); }

void HashIndex::reserve(uint64_t count) {
  const uint64_t oldSize = slots_ ? uint64_t{mask_} + 1 : 0;
  if (slots_ && count <= oldSize / 4 * 3) return;
  const uint64_t size = std::max<uint64_t>(16, std::bit_ceil(count + count / 3 + 1));
  const uint64_t bytes = bytesFor(size);
  auto* fresh = static_cast<Slot*>(std::calloc(bytes, 1));
  if (!fresh) raise(NSMallocException, "no memory for the index of a collection");
  prepareToSearch(fresh, bytes);
  HashIndex old;
  old.swap(*this);
  slots_ = fresh;
  mask_ = static_cast<uint32_t>(size - 1);
  shift_ = static_cast<uint32_t>(32 - std::countr_zero(size));
  count_ = old.count_;
  for (uint64_t i = 0; i < oldSize; ++i) {
    if (old.slots_[i].place) place(old.slots_[i]);
  }
}

void HashIndex::remove(uint64_t hash, uint32_t position) {
  uint32_t gap = spread(hash) >> shift_;
  while (slots_[gap].place != position + 1) gap = (gap + 1) & mask_;
  // Slots behind the gap move into it unless they would then stand before their first slot: no marks of the deleted.
  for (uint32_t i = (gap + 1) & mask_; slots_[i].place; i = (i + 1) & mask_) {
    const uint32_t home = slots_[i].hash >> shift_;
    if (((i - home) & mask_) < ((i - gap) & mask_)) continue;
    slots_[gap] = slots_[i];
    setTag(gap, tagOf(slots_[gap].hash));
    gap = i;
  }
  slots_[gap].place = 0;
  setTag(gap, 0);
  --count_;
}

void HashIndex::shift(uint32_t from, int32_t by) {
  if (!slots_) return;
  for (uint64_t i = 0; i <= mask_; ++i) {
    if (slots_[i].place > from) slots_[i].place += static_cast<uint32_t>(by);
  }
}

void HashIndex::clear() {
  if (slots_) std::memset(static_cast<void*>(slots_), 0, bytesFor(uint64_t{mask_} + 1));
  count_ = 0;
}

namespace {
constexpr uint64_t mostEntries = (uint64_t{1} << 31) - 1;

uint64_t capacityAfter(uint64_t capacity) {
  return capacity == mostEntries ? capacity + 1 : std::clamp<uint64_t>(capacity * 2, 4, mostEntries);
}
}  // namespace

template <class Entry> EntryTable<Entry>::~EntryTable() { std::free(static_cast<void*>(entries_)); }

template <class Entry> void EntryTable<Entry>::reserve(uint64_t count) {
  if (count > mostEntries) raise(NSMallocException, "a collection cannot hold 2^31 elements");
  const auto wanted = static_cast<uint32_t>(count);
  if (wanted > capacity_) {
    void* const larger = reallocatedToSearch(entries_, used_ * sizeof(Entry), wanted * sizeof(Entry));
    if (!larger) raise(NSMallocException, "no memory for the elements of a collection");
    entries_ = static_cast<Entry*>(larger);
    capacity_ = wanted;
  }
  if (wanted <= searchedOneByOne) return;
  const bool wasActive = index_.isActive();
  index_.reserve(wanted);
  if (!wasActive) rehash();
}

template <class Entry> Entry* EntryTable<Entry>::append(const Entry& entry) {
  if (used_ == capacity_) {
    if (holes_ > used_ / 4) closeHoles();
    else reserve(capacityAfter(used_));
  }
  entries_[used_] = entry;
  if (index_.isActive()) {
    index_.reserve(count() + 1);
    index_.add(entry.hash, used_);
  } else if (count() == searchedOneByOne) {
    index_.reserve(capacity_);
    ++used_;
    rehash();
    --used_;
  }
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
  if (count() == searchedOneByOne) reserve(capacity_ > searchedOneByOne ? capacity_ : 2 * searchedOneByOne);
  std::memmove(static_cast<void*>(entries_ + position + 1), entries_ + position, (used_ - position) * sizeof(Entry));
  entries_[position] = entry;
  ++used_;
  ++mutations_;
  if (!index_.isActive()) return;
  index_.reserve(used_);
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
  for (uint32_t i = first_; i < used_; ++i) {
    if (entries_[i].key) index_.add(entries_[i].hash, i);
  }
}

template <class Entry> void EntryTable<Entry>::copyFrom(const EntryTable& other) {
  EntryTable fresh;
  fresh.reserve(other.count());
  for (const Entry& entry : other) {
    if (entry.key) fresh.entries_[fresh.used_++] = entry;
  }
  fresh.rehash();
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
