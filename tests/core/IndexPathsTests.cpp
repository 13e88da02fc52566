// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/IndexPaths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;

using Indices = std::vector<uint64_t>;

Ref<NSIndexPath> pathOf(const Indices& indices) {
  return NSIndexPath::indexPathWithIndexes_length(indices.data(), indices.size());
}

Indices indicesOf(const NSIndexPath* path) {
  Indices indices;
  for (uint64_t i = 0; i < path->length(); ++i) indices.push_back(path->indexAtPosition(i));
  return indices;
}

TEST(IndexPaths, TheEmptyPathHasNoIndices) {
  EXPECT_EQ(indexPath()->length(), 0u);
  EXPECT_EQ(send<Ref<NSIndexPath>>(NSIndexPath::classObject(), "indexPath"_sel)->length(), 0u);
  EXPECT_TRUE(isEqual(indexPath(), pathOf({})));
}

TEST(IndexPaths, HaveAFirstAndALastIndex) {
  EXPECT_EQ(firstIndex(pathOf({1, 4, 7})), 1u);
  EXPECT_EQ(lastIndex(pathOf({1, 4, 7})), 7u);
  EXPECT_EQ(firstIndex(pathOf({9})), 9u);
  EXPECT_EQ(lastIndex(pathOf({9})), 9u);
  EXPECT_EQ(send<uint64_t>(pathOf({1, 4, 7}), "firstIndex"_sel), 1u);
  EXPECT_EQ(send<uint64_t>(pathOf({1, 4, 7}), "lastIndex"_sel), 7u);
}

TEST(IndexPaths, TheEndsOfAnEmptyPathAreNotFound) {
  EXPECT_EQ(firstIndex(indexPath()), NSNotFound);
  EXPECT_EQ(lastIndex(indexPath()), NSNotFound);
}

TEST(IndexPaths, IncrementingChangesTheLastIndexAlone) {
  const Ref<NSIndexPath> path = pathOf({1, 4, 0});
  EXPECT_EQ(indicesOf(indexPathByIncrementingLastIndex(path)), (Indices{1, 4, 1}));
  EXPECT_EQ(indicesOf(path), (Indices{1, 4, 0})) << "the path itself stays";
  EXPECT_EQ(indicesOf(indexPathByIncrementingLastIndex(pathOf({5}))), (Indices{6}));
  EXPECT_EQ(indicesOf(indexPathByIncrementingLastIndex(pathOf({3, UINT64_MAX}))), (Indices{3, 0}));
  EXPECT_EQ(indicesOf(send<Ref<NSIndexPath>>(path, "indexPathByIncrementingLastIndex"_sel)), (Indices{1, 4, 1}));
}

TEST(IndexPaths, IncrementingAnEmptyPathRaises) {
  EXPECT_THAT([] { static_cast<void>(indexPathByIncrementingLastIndex(indexPath())); },
              raises(NSRangeException, "-[NSIndexPath indexPathByIncrementingLastIndex]"));
}

TEST(IndexPaths, ReplacingChangesOneIndex) {
  const Ref<NSIndexPath> path = pathOf({1, 4, 7});
  const auto replaced = [&path](uint64_t position, uint64_t index) {
    return indicesOf(indexPathByReplacingIndexAtPosition_withIndex(path, position, index));
  };
  EXPECT_EQ(replaced(0, 9), (Indices{9, 4, 7}));
  EXPECT_EQ(replaced(1, 9), (Indices{1, 9, 7}));
  EXPECT_EQ(replaced(2, UINT64_MAX), (Indices{1, 4, UINT64_MAX}));
  EXPECT_EQ(replaced(1, 4), (Indices{1, 4, 7}));
  EXPECT_EQ(indicesOf(path), (Indices{1, 4, 7})) << "the path itself stays";
  const auto byName =
      send<Ref<NSIndexPath>>(path, "indexPathByReplacingIndexAtPosition:withIndex:"_sel, 1, uint64_t{9});
  EXPECT_EQ(indicesOf(byName), (Indices{1, 9, 7}));
}

TEST(IndexPaths, ReplacingPastTheEndRaises) {
  const std::string method = "-[NSIndexPath indexPathByReplacingIndexAtPosition:withIndex:]: index ";
  for (const uint64_t position : {uint64_t{2}, uint64_t{NSNotFound}, UINT64_MAX}) {
    EXPECT_THAT([=] { static_cast<void>(indexPathByReplacingIndexAtPosition_withIndex(pathOf({1, 4}), position, 0)); },
                raises(NSRangeException, method + std::to_string(position) + " beyond bounds [0 .. 1]"));
  }
  EXPECT_THAT([] { static_cast<void>(indexPathByReplacingIndexAtPosition_withIndex(indexPath(), 0, 0)); },
              raises(NSRangeException, method + "0"));
}

TEST(IndexPaths, ANullReceiverAnswersZeroOrNull) {
  EXPECT_EQ(firstIndex(nullptr), 0u);
  EXPECT_EQ(lastIndex(nullptr), 0u);
  EXPECT_EQ(indexPathByIncrementingLastIndex(nullptr), nullptr);
  EXPECT_EQ(indexPathByReplacingIndexAtPosition_withIndex(nullptr, 3, 4), nullptr);
}

class Route : public NSIndexPath {
  QF_CLASS(Route, NSIndexPath)
 protected:
  Route() = default;
};
Class* Route::classObject() {
  static Class* const cls = ClassBuilder<Route>("Route").build();
  return cls;
}

TEST(IndexPaths, TheEmptyPathIsOfTheClassThatIsAsked) {
  EXPECT_EQ(indexPath<Route>()->isa(), Route::classObject());
  EXPECT_EQ(send<Ref<NSIndexPath>>(Route::classObject(), "indexPath"_sel)->isa(), Route::classObject());
}

RC_GTEST_PROP(IndexPaths, ReplacingWithWhatWasThereGivesAnEqualPath, (const Indices& indices)) {
  RC_PRE(!indices.empty());
  const auto position = *rc::gen::inRange<size_t>(0, indices.size());
  const Ref<NSIndexPath> path = pathOf(indices);
  const Ref<NSIndexPath> changed = indexPathByReplacingIndexAtPosition_withIndex(path, position, indices[position] + 1);
  RC_ASSERT(!isEqual(path, changed));
  RC_ASSERT(isEqual(path, indexPathByReplacingIndexAtPosition_withIndex(changed, position, indices[position])));
}

RC_GTEST_PROP(IndexPaths, IncrementingReplacesTheLastIndex, (const Indices& indices)) {
  RC_PRE(!indices.empty());
  const Ref<NSIndexPath> path = pathOf(indices);
  RC_ASSERT(isEqual(indexPathByIncrementingLastIndex(path),
                    indexPathByReplacingIndexAtPosition_withIndex(path, indices.size() - 1, indices.back() + 1)));
}

}  // namespace
