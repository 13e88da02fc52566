// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/StableSortInternal.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using quoll::detail::stableSort;

namespace {

struct Card {
  int value, place;
};

}  // namespace

TEST(StableSort, SortsLikeTheStandardLibrary) {
  std::mt19937 random(2);
  for (const size_t count : {0u, 1u, 2u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 64u, 100u, 1000u, 4097u}) {
    for (const int kinds : {1, 3, 1'000'000}) {
      std::vector<Card> cards(count);
      std::vector<Card*> ours, theirs;
      for (size_t i = 0; i < count; ++i) {
        cards[i] = {static_cast<int>(random() % static_cast<unsigned>(kinds)), static_cast<int>(i)};
        ours.push_back(&cards[i]);
      }
      theirs = ours;
      stableSort(ours.data(), count, [](const Card* a, const Card* b) { return a->value > b->value; });
      std::stable_sort(theirs.begin(), theirs.end(), [](const Card* a, const Card* b) { return a->value < b->value; });
      EXPECT_EQ(ours, theirs) << count << " of " << kinds;
    }
  }
}

TEST(StableSort, LosesNothingWhateverTheComparatorAnswers) {
  std::mt19937 random(3);
  std::vector<Card> cards(777);
  std::vector<Card*> order;
  for (Card& card : cards) order.push_back(&card);
  const std::vector<Card*> before = order;
  stableSort(order.data(), order.size(), [&](const Card*, const Card*) { return random() % 2 == 0; });
  EXPECT_TRUE(std::is_permutation(order.begin(), order.end(), before.begin()));
}
