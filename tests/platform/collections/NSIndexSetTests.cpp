// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSIndexSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "QuollFoundation/platform/object/Send.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;

namespace {

Ref<NSMutableIndexSet> indexes(std::initializer_list<NSRange> ranges) {
  Ref<NSMutableIndexSet> set = make<NSMutableIndexSet>();
  for (const NSRange range : ranges) set->addIndexesInRange(range);
  return set;
}

}  // namespace

TEST(NSIndexSet, KeepsRangesThatTouchTogether) {
  const Ref<NSMutableIndexSet> set = indexes({{5, 2}, {1, 1}, {2, 3}});
  ASSERT_EQ(set->ranges().size(), 1u);
  EXPECT_EQ(set->ranges()[0], NSMakeRange(1, 6));
  set->removeIndex(3);
  ASSERT_EQ(set->ranges().size(), 2u);
  EXPECT_EQ(set->count(), 5u);
}

TEST(NSIndexSet, AnswersForTheEmptySet) {
  const Ref<NSIndexSet> none = NSIndexSet::indexSet();
  EXPECT_EQ(none->firstIndex(), NSNotFound);
  EXPECT_EQ(none->lastIndex(), NSNotFound);
  EXPECT_EQ(none->indexGreaterThanIndex(0), NSNotFound);
  EXPECT_EQ(none->indexLessThanIndex(9), NSNotFound);
  EXPECT_FALSE(none->containsIndexesInRange({0, 0}));
  EXPECT_TRUE(none->containsIndexes(nullptr));
}

TEST(NSIndexSet, RefusesIndexesFromNotFoundOn) {
  const Ref<NSMutableIndexSet> set = indexes({});
  EXPECT_THAT([&] { set->addIndex(NSNotFound); }, raises(NSRangeException, "-[NSMutableIndexSet addIndex:]"));
  EXPECT_THAT([&] { set->addIndexesInRange({1, UINT64_MAX}); }, raises(NSRangeException));
  EXPECT_THAT([&] { NSIndexSet::indexSetWithIndex(UINT64_MAX); }, raises(NSRangeException));
  set->addIndex(NSNotFound - 1);
  EXPECT_EQ(set->indexGreaterThanIndex(NSNotFound - 1), NSNotFound);
  EXPECT_EQ(set->countOfIndexesInRange({5, UINT64_MAX}), 1u);
}

TEST(NSIndexSet, WalksBothWaysAndByRanges) {
  const Ref<NSIndexSet> set = indexes({{1, 2}, {5, 1}});
  std::string seen;
  set->enumerateIndexesUsingBlock([&](uint64_t index, bool*) { seen += std::to_string(index) + " "; });
  set->enumerateIndexesWithOptions_usingBlock(NSEnumerationReverse, [&](uint64_t index, bool* stop) {
    seen += std::to_string(index) + " ";
    *stop = index == 2;
  });
  set->enumerateRangesUsingBlock([&](NSRange range, bool*) { seen += "+" + std::to_string(range.length); });
  EXPECT_EQ(seen, "1 2 5 5 2 +2+1");
}

TEST(NSIndexSet, MayBeChangedByItsCallback) {
  const Ref<NSMutableIndexSet> set = indexes({{1, 3}});
  int calls = 0;
  set->enumerateIndexesUsingBlock([&](uint64_t, bool*) {
    ++calls;
    set->removeAllIndexes();
  });
  EXPECT_EQ(calls, 3);
}

TEST(NSIndexSet, CopiesAndCompares) {
  const Ref<NSMutableIndexSet> set = indexes({{1, 3}});
  const Ref<NSIndexSet> copy = set->copy();
  EXPECT_EQ(copy->copy().get(), copy.get());
  EXPECT_EQ(copy->isa(), NSIndexSet::classObject());
  EXPECT_THAT(copy, equals(set));
  EXPECT_EQ(copy->hash(), set->hash());
  set->addIndexes(set);
  set->removeIndexes(set);
  EXPECT_FALSE(copy->isEqual(set));
  EXPECT_THAT(copy->mutableCopy(), equals(copy));
  EXPECT_NE(testsupport::described(copy).find("[number of indexes: 3 (in 1 ranges), indexes: (1-3)]"),
            std::string::npos);
}

TEST(NSIndexSet, IsASetOfTheStandardLibraryUnderRandomOperations) {
  std::mt19937 random(5);
  const Ref<NSMutableIndexSet> set = indexes({});
  std::set<uint64_t> model;
  for (int step = 0; step < 20'000; ++step) {
    const NSRange range = {random() % 100, random() % 8};
    for (uint64_t i = range.location; i < NSMaxRange(range); ++i) {
      if (step % 2) model.insert(i);
      else model.erase(i);
    }
    if (step % 2) set->addIndexesInRange(range);
    else set->removeIndexesInRange(range);
    ASSERT_EQ(set->count(), model.size());
    const uint64_t probe = random() % 110;
    ASSERT_EQ(set->containsIndex(probe), model.contains(probe));
    const auto above = model.upper_bound(probe), atLeast = model.lower_bound(probe);
    ASSERT_EQ(set->indexGreaterThanIndex(probe), above == model.end() ? NSNotFound : *above);
    ASSERT_EQ(set->indexGreaterThanOrEqualToIndex(probe), atLeast == model.end() ? NSNotFound : *atLeast);
    ASSERT_EQ(set->indexLessThanIndex(probe), atLeast == model.begin() ? NSNotFound : *std::prev(atLeast));
    ASSERT_EQ(set->indexLessThanOrEqualToIndex(probe), above == model.begin() ? NSNotFound : *std::prev(above));
    const auto inRange =
        static_cast<uint64_t>(std::distance(model.lower_bound(range.location), model.lower_bound(NSMaxRange(range))));
    ASSERT_EQ(set->countOfIndexesInRange(range), inRange);
    ASSERT_EQ(set->intersectsIndexesInRange(range), inRange > 0);
    ASSERT_EQ(set->containsIndexesInRange(range), range.length && inRange == range.length);
  }
  std::set<uint64_t> left;
  set->enumerateIndexesUsingBlock([&](uint64_t index, bool*) { left.insert(index); });
  EXPECT_EQ(left, model);
}
