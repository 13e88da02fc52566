// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/HashIndex.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace quoll::detail;

TEST(HashIndex, FindsWhatAPlainListFindsWhateverComesAndGoes) {
  std::mt19937_64 random(11);
  std::vector<uint64_t> hashes;  // by position
  HashIndex index(700);
  const auto isAt = [&](uint64_t hash, uint32_t position) {
    return index.find(hash, [&](uint32_t p) { return p == position; }) == position;
  };
  for (int turn = 0; turn < 20'000; ++turn) {
    // Few different hashes, so that groups of slots overflow into one another and around the end.
    const uint64_t hash = turn % 3 ? random() % 40 : ~uint64_t{0} - random() % 40;
    if (hashes.size() < 700 && random() % 2) {
      hashes.push_back(hash);
      index.add(hash, static_cast<uint32_t>(hashes.size() - 1));
    } else if (!hashes.empty()) {
      const auto last = static_cast<uint32_t>(hashes.size() - 1);
      ASSERT_TRUE(isAt(hashes.back(), last));
      index.remove(hashes.back(), last);
      ASSERT_FALSE(isAt(hashes.back(), last));
      hashes.pop_back();
    }
    if (turn % 500 != 0) continue;
    for (uint32_t i = 0; i < hashes.size(); ++i) ASSERT_TRUE(isAt(hashes[i], i)) << turn;
  }
}

TEST(HashIndex, EndsASearchThoughEveryGroupWasPassed) {
  constexpr uint32_t room = 20;  // two groups: what overflows the one comes into the other
  std::mt19937_64 random(12);
  HashIndex index(room);
  std::vector<uint64_t> hashes(room);  // by position
  for (uint32_t i = 0; i < room; ++i) index.add(hashes[i], i);
  for (int turn = 0; turn < 20'000; ++turn) {
    const auto position = static_cast<uint32_t>(random() % room);
    const auto isThere = [&] {
      return index.find(hashes[position], [&](uint32_t found) { return found == position; }) == position;
    };
    ASSERT_TRUE(isThere()) << turn;
    index.remove(hashes[position], position);
    ASSERT_FALSE(isThere()) << turn;
    hashes[position] = random();
    ASSERT_FALSE(isThere()) << turn;
    index.add(hashes[position], position);
  }
}
