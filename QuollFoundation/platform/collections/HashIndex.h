// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "QuollFoundation/platform/basics/Export.h"

namespace quoll::inline v1::detail {

/// From a hash to the position of an entry. A line of the processor's cache is a group of twelve slots; each has its
/// tag, which is a byte of the hash, and its place. So a search waits for memory once before it asks an entry, and then
/// mostly asks just the right one. An entry whose group is full goes to the next that has room, and each group counts
/// the entries that went past it: a search ends at a group that none has passed, and a removed entry leaves no trace.
class HashIndex {
 public:
  static constexpr uint32_t none = UINT32_MAX, elsewhere = none - 1;

  HashIndex() = default;
  /// Empty, with room for `count` entries.
  QF_EXPORT explicit HashIndex(uint64_t count);
  HashIndex(HashIndex&& other) noexcept { swap(other); }
  HashIndex& operator=(HashIndex other) noexcept {
    swap(other);
    return *this;
  }
  QF_EXPORT ~HashIndex();

  bool isActive() const { return groups_ != nullptr; }  ///< Made with room: what follows needs that.
  uint64_t room() const { return groups_ ? roomOf(uint64_t{mask_} + 1) : 0; }
  /// The position that `same(position)` accepts, else `none`. It is asked about all entries of this hash, and about a
  /// few of other hashes.
  template <class Same> uint32_t find(uint64_t hash, Same same) const {
    const uint32_t wanted = spread(hash);
    uint32_t at = home(wanted);
    for (uint32_t others = mask_;; --others) {  // every group may have been passed
      const Group& group = groups_[at];
      for (uint32_t likely = group.slotsWith(tagOf(wanted)); likely; likely &= likely - 1) {
        const uint32_t position = group.places[std::countr_zero(likely)] - 1;
        if (same(position)) return position;
      }
      if (!group.passed || !others) return none;
      at = (at + 1) & mask_;
    }
  }
  /// The position that `find` would ask about first, mostly the right one; `none` when it would find none, and
  /// `elsewhere` when it would have to go on to another group.
  uint32_t guess(uint64_t hash) const {
    const uint32_t wanted = spread(hash);
    const Group& group = groups_[home(wanted)];
    const uint32_t likely = group.slotsWith(tagOf(wanted));
    if (likely) return group.places[std::countr_zero(likely)] - 1;
    return group.passed ? elsewhere : none;
  }
  /// Fetches what `add` will need.
  void prepareToAdd(uint64_t hash) const { __builtin_prefetch(&groups_[home(spread(hash))], 1); }
  /// Of an entry that is not there; there is room for it.
  void add(uint64_t hash, uint32_t position) {
    const uint32_t own = spread(hash);
    uint32_t at = home(own);
    for (; !groups_[at].slotsWith(0); at = (at + 1) & mask_) ++groups_[at].passed;
    const int slot = std::countr_zero(groups_[at].slotsWith(0));
    groups_[at].tags[slot] = tagOf(own);
    groups_[at].places[slot] = position + 1;
  }
  QF_EXPORT void remove(uint64_t hash, uint32_t position);
  /// The positions from `from` on have moved by `by`.
  QF_EXPORT void shift(uint32_t from, int32_t by);
  QF_EXPORT void clear();  ///< Keeps the room.
  void swap(HashIndex& other) noexcept {
    std::swap(groups_, other.groups_);
    std::swap(mask_, other.mask_);
    std::swap(shift_, other.shift_);
  }

 private:
  static constexpr uint32_t groupSize = 12;
  struct alignas(64) Group {
    uint8_t tags[groupSize];     // 0 is free
    uint32_t passed;             // entries that went past this group because it was full
    uint32_t places[groupSize];  // position + 1; 0 is free

    /// A bit for each slot that has this tag.
    uint32_t slotsWith(uint8_t tag) const {
#ifdef __SSE2__
      using Bytes [[gnu::vector_size(16)]] = char;
      Bytes line;
      std::memcpy(&line, this, sizeof line);  // with the count behind the tags
      const auto same = reinterpret_cast<Bytes>(line == static_cast<char>(tag) - Bytes{});
      return static_cast<uint32_t>(__builtin_ia32_pmovmskb128(same)) & ((1u << groupSize) - 1);
#else
      uint32_t bits = 0;
      for (uint32_t i = 0; i < groupSize; ++i) bits |= uint32_t{tags[i] == tag} << i;
      return bits;
#endif
    }
  };
  static_assert(sizeof(Group) == 64);

  static uint64_t roomOf(uint64_t groups) { return groups * 10; }  // fuller, and too many are passed
  static uint32_t spread(uint64_t hash) { return static_cast<uint32_t>((hash * 0x9e3779b97f4a7c15) >> 32); }
  static uint8_t tagOf(uint32_t spreadHash) {
    const auto lowest = static_cast<uint8_t>(spreadHash);
    return lowest ? lowest : 1;
  }
  uint32_t home(uint32_t spreadHash) const { return static_cast<uint32_t>(uint64_t{spreadHash} >> shift_); }

  Group* groups_ = nullptr;
  uint32_t mask_ = 0;
  uint32_t shift_ = 0;  // the upper bits of a hash are its group
};

}  // namespace quoll::inline v1::detail
