// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/EntryTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace quoll;
using namespace quoll::detail;

namespace {

/// Keys that are numbers: their addresses, with hashes that collide often.
struct NumberKeys {
  static uint64_t hash(const void* key) { return reinterpret_cast<uintptr_t>(key) / 3; }
  static bool same(const void* wanted, const void* present) { return wanted == present; }
};

void* key(uint64_t number) { return reinterpret_cast<void*>(number); }
PairEntry entry(uint64_t number) { return {key(number), nullptr, NumberKeys::hash(key(number))}; }

using Table = EntryTable<PairEntry>;

}  // namespace

TEST(EntryTable, FindsEachEntryInATableOfAnySize) {
  Table table;
  for (uint64_t i = 1; i <= 3000; ++i) {
    table.append(entry(i));
    ASSERT_EQ(table.count(), i);
    ASSERT_EQ(table.find(key(i), NumberKeys())->key, key(i));
    ASSERT_EQ(table.find(key(i + 1), NumberKeys()), nullptr);
  }
  for (uint64_t i = 1; i <= 3000; ++i) ASSERT_EQ(table.find(key(i), NumberKeys())->key, key(i));
}

TEST(EntryTable, TellsEntriesOfOneHashApart) {
  Table table;
  for (uint64_t i = 1; i <= 500; ++i) table.append({key(i), nullptr, 7});
  const auto found = [&](uint64_t number) { return table.find(key(number), 7, NumberKeys()); };
  for (uint64_t i = 1; i <= 500; ++i) ASSERT_EQ(found(i)->key, key(i));
  EXPECT_EQ(found(501), nullptr);
  for (uint64_t i = 2; i <= 500; i += 2) table.remove(found(i));
  for (uint64_t i = 1; i <= 500; ++i) ASSERT_EQ(found(i) != nullptr, i % 2 == 1) << i;
}

TEST(EntryTable, TellsTheHashOfWhatItDoesNotFind) {
  Table table;
  uint64_t hash = 0;
  EXPECT_EQ(table.find(key(30), NumberKeys(), &hash), nullptr);
  EXPECT_EQ(hash, 10u);
  table.reserve(100);
  EXPECT_EQ(table.find(key(60), NumberKeys(), &hash), nullptr);
  EXPECT_EQ(hash, 20u);
}

TEST(EntryTable, CountsEachChange) {
  Table table;
  const uint64_t start = table.mutations();
  PairEntry* added = table.append(entry(1));
  EXPECT_GT(table.mutations(), start);
  const uint64_t before = table.mutations();
  table.remove(added);
  EXPECT_GT(table.mutations(), before);
}

TEST(EntryTable, KeepsTheOrderWithAndWithoutHoles) {
  std::mt19937 random(9);
  for (const unsigned keys : {6u, 10u, 400u}) {
    Table table;
    std::vector<uint64_t> model;
    for (int step = 0; step < 20'000; ++step) {
      const uint64_t number = 1 + random() % keys;
      const auto found = std::find(model.begin(), model.end(), number);
      PairEntry* present = table.find(key(number), NumberKeys());
      ASSERT_EQ(present != nullptr, found != model.end());
      if (present) {
        model.erase(found);
        ASSERT_EQ(table.remove(present).key, key(number));
      } else {
        model.push_back(number);
        table.append(entry(number));
      }
      if (step % 500 == 0) table.closeHoles();
      ASSERT_EQ(table.count(), model.size());
    }
    std::vector<uint64_t> left;
    for (const PairEntry& each : table) {
      if (each.key) left.push_back(reinterpret_cast<uintptr_t>(each.key));
    }
    EXPECT_EQ(left, model);
  }
}

TEST(EntryTable, InsertsAndErasesInTheMiddle) {
  std::mt19937 random(10);
  for (const unsigned keys : {7u, 12u, 200u}) {
    Table table;
    std::vector<uint64_t> model;
    for (int step = 0; step < 10'000; ++step) {
      const uint64_t number = 1 + random() % keys;
      const auto found = std::find(model.begin(), model.end(), number);
      if (found == model.end()) {
        const size_t at = random() % (model.size() + 1);
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), number);
        table.insert(static_cast<uint32_t>(at), entry(number));
      } else {
        ASSERT_EQ(table.erase(static_cast<uint32_t>(found - model.begin())).key, key(number));
        model.erase(found);
      }
      ASSERT_EQ(table.count(), model.size());
      for (size_t i = 0; i < model.size(); i += 1 + model.size() / 5) {
        ASSERT_EQ(table.find(key(model[i]), NumberKeys()), &table[static_cast<uint32_t>(i)]);
      }
    }
  }
}

TEST(EntryTable, TakesOutWhatIsMarked) {
  Table table;
  for (uint64_t i = 1; i <= 100; ++i) table.append(entry(i));
  const auto removed =
      table.removeWhere(nullptr, [](const PairEntry& each) { return reinterpret_cast<uintptr_t>(each.key) % 2 == 0; });
  EXPECT_EQ(removed.size(), 50u);
  EXPECT_EQ(table.count(), 50u);
  EXPECT_FALSE(table.hasHoles());
  EXPECT_EQ(table.find(key(2), NumberKeys()), nullptr);
  EXPECT_EQ(table.find(key(3), NumberKeys()), &table[1]);
}

TEST(EntryTable, CopiesAndExchangesEntries) {
  Table table, copy;
  for (uint64_t i = 1; i <= 50; ++i) table.append(entry(i));
  table.remove(table.find(key(7), NumberKeys()));
  copy.copyFrom(table);
  EXPECT_EQ(copy.count(), 49u);
  EXPECT_FALSE(copy.hasHoles());
  copy.exchange(0, 48);
  EXPECT_EQ(copy[0].key, key(50));
  EXPECT_EQ(copy.find(key(1), NumberKeys()), &copy[48]);
  copy.replace(0, entry(99));
  EXPECT_EQ(copy.find(key(50), NumberKeys()), nullptr);
  EXPECT_EQ(copy.find(key(99), NumberKeys()), &copy[0]);
  EXPECT_NE(table.find(key(50), NumberKeys()), nullptr);
}
