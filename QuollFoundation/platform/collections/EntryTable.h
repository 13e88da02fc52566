// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/collections/HashIndex.h"

/// The one table under dictionaries, sets, ordered sets and map tables: entries in the order of their insertion, and an
/// index of their hashes.
namespace quoll::inline v1::detail {

/// An entry of a dictionary.
struct PairEntry {
  void* key;  ///< Null: a hole.
  void* value;
  uint64_t hash;
};
/// An entry of a set.
struct ElementEntry {
  NSObject* key;  ///< Null: a hole.
  uint64_t hash;
};

/// Entries in the order of their insertion. Up to eight are searched one by one, more through the index. It owns the
/// memory and not what the entries refer to. Removal leaves a hole, which walks skip; many holes are closed up.
template <class Entry> class EntryTable {
 public:
  static constexpr uint32_t searchedOneByOne = 8;

  EntryTable() = default;
  EntryTable(EntryTable&& other) noexcept { swap(other); }
  EntryTable& operator=(EntryTable other) noexcept {
    swap(other);
    return *this;
  }
  ~EntryTable();

  uint32_t count() const { return used_ - holes_; }
  bool hasHoles() const { return holes_ != 0; }
  /// All entries, holes included.
  const Entry* begin() const { return entries_ + first_; }
  const Entry* end() const { return entries_ + used_; }
  const Entry& operator[](uint32_t position) const { return entries_[position]; }  ///< Only without holes.
  const uint64_t& mutations() const { return mutations_; }
  void noteMutation() { ++mutations_; }

  /// `keys` offers `hash(key)` and `same(wanted, present)`; a key is the same as itself. Null when the key is absent.
  /// `hash`, if given, becomes the key's, unless the entry was found without it.
  template <class Keys> [[gnu::always_inline]] Entry* find(const void* key, const Keys& keys,
                                                           uint64_t* hash = nullptr) const;
  template <class Keys> [[gnu::always_inline]] Entry* find(const void* key, uint64_t hash, const Keys& keys) const;

  // Each of these counts as a mutation.
  void reserve(uint64_t count);
  Entry* append(const Entry& entry);  ///< Of an absent key.
  Entry remove(Entry* entry);
  void insert(uint32_t position, const Entry& entry);  ///< Only without holes.
  Entry erase(uint32_t position);                      ///< The same: the later ones move up.
  void exchange(uint32_t a, uint32_t b);
  void replace(uint32_t position, const Entry& entry);
  void closeHoles();
  void rehash();  ///< After the entries were put into another order.
  /// The entries of another table, as they are: their owner makes references of them.
  void copyFrom(const EntryTable& other);
  void swap(EntryTable& other) noexcept;  ///< Of the entries: a mutation of both.
  /// Takes out what `removes(entry)` says, and closes the holes. Nothing is changed while it asks; what it changes
  /// itself raises.
  template <class Removes> std::vector<Entry> removeWhere(const NSObject* owner, Removes removes);

  Entry* mutableEntries() { return entries_; }
  /// The next batch of keys of a walk.
  uint64_t enumerate(NSFastEnumerationState* state, NSObject** objects, uint64_t count);

 private:
  template <class Same> Entry* searchOneByOne(Same same) const;
  template <class Keys> [[gnu::always_inline]] Entry* findIndexed(const void* key, uint64_t hash,
                                                                  const Keys& keys) const;
  template <class Keys> [[gnu::noinline]] Entry* searchIndex(const void* key, uint64_t hash, const Keys& keys) const;
  void fillIndex();

  Entry* entries_ = nullptr;
  uint32_t first_ = 0;  // no entry before it
  uint32_t used_ = 0;
  uint32_t holes_ = 0;  // between first_ and used_, and before first_
  uint32_t capacity_ = 0;
  uint64_t mutations_ = 0;
  HashIndex index_;  // with room for the capacity, when that is larger than `searchedOneByOne`
};

extern template class QF_EXPORT EntryTable<PairEntry>;
extern template class QF_EXPORT EntryTable<ElementEntry>;

template <class Entry> template <class Same> Entry* EntryTable<Entry>::searchOneByOne(Same same) const {
  for (uint32_t i = first_; i < used_; ++i) {
    if (entries_[i].key && same(entries_[i].key)) return &entries_[i];
  }
  return nullptr;
}

template <class Entry> template <class Keys>
inline Entry* EntryTable<Entry>::find(const void* key, uint64_t hash, const Keys& keys) const {
  if (!index_.isActive()) return searchOneByOne([&](const void* present) { return keys.same(key, present); });
  return findIndexed(key, hash, keys);
}

template <class Entry> template <class Keys>
inline Entry* EntryTable<Entry>::find(const void* key, const Keys& keys, uint64_t* hash) const {
  if (!index_.isActive()) {
    if (Entry* found = searchOneByOne([&](const void* present) { return keys.same(key, present); })) return found;
    if (hash) *hash = keys.hash(key);
    return nullptr;
  }
  const uint64_t own = keys.hash(key);
  if (hash) *hash = own;
  return findIndexed(key, own, keys);
}

/// The usual case is short, so that a processor which waits for the memory of one key begins to search for the next.
template <class Entry> template <class Keys>
inline Entry* EntryTable<Entry>::findIndexed(const void* key, uint64_t hash, const Keys& keys) const {
  const uint32_t guess = index_.guess(hash);
  if (guess == HashIndex::none) return nullptr;
  if (guess != HashIndex::elsewhere) {
    Entry* const likely = &entries_[guess];
    if (likely->key == key || (likely->hash == hash && keys.same(key, likely->key))) [[likely]]
      return likely;
  }
  return searchIndex(key, hash, keys);
}

template <class Entry> template <class Keys>
Entry* EntryTable<Entry>::searchIndex(const void* key, uint64_t hash, const Keys& keys) const {
  const uint32_t at =
      index_.find(hash, [&](uint32_t i) { return entries_[i].hash == hash && keys.same(key, entries_[i].key); });
  return at == HashIndex::none ? nullptr : &entries_[at];
}

template <class Entry> void EntryTable<Entry>::swap(EntryTable& other) noexcept {
  std::swap(entries_, other.entries_);
  std::swap(first_, other.first_);
  std::swap(used_, other.used_);
  std::swap(holes_, other.holes_);
  std::swap(capacity_, other.capacity_);
  index_.swap(other.index_);
  ++mutations_;
  ++other.mutations_;
}

template <class Entry> template <class Removes>
std::vector<Entry> EntryTable<Entry>::removeWhere(const NSObject* owner, Removes removes) {
  std::vector<bool> marked(used_);
  const uint64_t before = mutations_;
  for (uint32_t i = first_; i < used_; ++i) {
    marked[i] = entries_[i].key && removes(entries_[i]);
    if (mutations_ != before) objc_enumerationMutation(const_cast<NSObject*>(owner));
  }
  std::vector<Entry> removed;
  for (uint32_t i = first_; i < used_; ++i) {
    if (!marked[i]) continue;
    removed.push_back(entries_[i]);
    entries_[i].key = nullptr;
  }
  holes_ += static_cast<uint32_t>(removed.size());
  closeHoles();
  mutations_ += !removed.empty();
  return removed;
}

/// Keys that are objects, by value.
struct ObjectKeys {
  static uint64_t hash(const void* key) { return static_cast<const NSObject*>(key)->hash(); }
  static bool same(const void* wanted, const void* present) {
    return wanted == present || static_cast<const NSObject*>(wanted)->isEqual(static_cast<const NSObject*>(present));
  }
};

}  // namespace quoll::inline v1::detail
