// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSIndexPath.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSIndexPath, GivesTheIndexAtEachPosition) {
  auto path = quoll::NSIndexPath::indexPathWithIndexes({1, 4, 0});
  EXPECT_EQ(path->indexAtPosition(1), 4u);
}

using namespace quoll;

namespace {

class Trail : public NSIndexPath {
  QF_CLASS(Trail, NSIndexPath)
 public:
  int mark = 3;
};
Class* Trail::classObject() {
  static Class* const cls = ClassBuilder<Trail>("Trail").build();
  return cls;
}

TEST(NSIndexPath, RefusesNullInPlaceOfIndices) {
  EXPECT_THAT([] { NSIndexPath::indexPathWithIndexes_length(nullptr, 2); },
              raises(NSInvalidArgumentException, "initWithIndexes:length:"));
  const uint64_t two[] = {1, 2};
  const Ref<NSIndexPath> path = NSIndexPath::indexPathWithIndexes_length(two, 2);
  EXPECT_THAT([&] { path->getIndexes(nullptr); }, raises(NSInvalidArgumentException, "getIndexes:"));
  EXPECT_THAT([&] { path->getIndexes_range(nullptr, {0, 1}); },
              raises(NSInvalidArgumentException, "getIndexes:range:"));
}

}  // namespace

TEST(NSIndexPath, IsMadeInEachWay) {
  const uint64_t indexes[] = {1, 4};
  EXPECT_EQ(NSIndexPath::indexPathWithIndex(7)->length(), 1u);
  EXPECT_THAT(NSIndexPath::indexPathWithIndexes_length(indexes, 2), equals(NSIndexPath::indexPathWithIndexes({1, 4})));
  EXPECT_EQ(send<Ref<NSIndexPath>>(alloc(NSIndexPath::classObject()), "init"_sel)->length(), 0u);
  EXPECT_THAT(send<Ref<NSIndexPath>>(alloc(NSIndexPath::classObject()), "initWithIndexes:length:"_sel,
                                     static_cast<const uint64_t*>(indexes), 2),
              equals(NSIndexPath::indexPathWithIndexes({1, 4})));
  auto trail = NSIndexPath::indexPathWithIndexes_length<Trail>(indexes, 2);
  EXPECT_EQ(trail->mark, 3);
  EXPECT_EQ(trail->indexAtPosition(1), 4u);
}

TEST(NSIndexPath, GivesNotFoundPastItsEnd) {
  EXPECT_EQ(NSIndexPath::indexPathWithIndex(7)->indexAtPosition(1), NSNotFound);
  EXPECT_EQ(NSIndexPath::indexPathWithIndexes({})->indexAtPosition(0), NSNotFound);
}

TEST(NSIndexPath, WritesItsIndexes) {
  uint64_t out[3] = {9, 9, 9};
  auto path = NSIndexPath::indexPathWithIndexes({1, 4, 0});
  path->getIndexes_range(out, {1, 1});
  EXPECT_EQ(out[0], 4u);
  path->getIndexes(out);
  EXPECT_EQ(out[2], 0u);
  EXPECT_THAT([&] { path->getIndexes_range(out, {2, 2}); }, raises(NSRangeException, "getIndexes:range:"));
}

TEST(NSIndexPath, GrowsAndShrinks) {
  auto path = NSIndexPath::indexPathWithIndexes({1, 4});
  EXPECT_THAT(path->indexPathByAddingIndex(2), equals(NSIndexPath::indexPathWithIndexes({1, 4, 2})));
  EXPECT_THAT(path->indexPathByRemovingLastIndex(), equals(NSIndexPath::indexPathWithIndex(1)));
  EXPECT_EQ(NSIndexPath::indexPathWithIndexes({})->indexPathByRemovingLastIndex()->length(), 0u);
}

TEST(NSIndexPath, ComparesIndexByIndex) {
  auto a = NSIndexPath::indexPathWithIndexes({1, 4}), b = NSIndexPath::indexPathWithIndexes({1, 4, 0});
  EXPECT_EQ(a->compare(b), NSOrderedAscending);
  EXPECT_EQ(b->compare(a), NSOrderedDescending);
  EXPECT_EQ(a->compare(NSIndexPath::indexPathWithIndexes({1, 4})), NSOrderedSame);
  EXPECT_EQ(NSIndexPath::indexPathWithIndex(2)->compare(b), NSOrderedDescending);
  EXPECT_EQ(a->compare(nullptr), NSOrderedDescending);
  EXPECT_FALSE(a->isEqual(b));
  EXPECT_EQ(a->hash(), NSIndexPath::indexPathWithIndexes({1, 4})->hash());
  EXPECT_EQ(a->copy().get(), a.get());
}

TEST(NSIndexPath, DescribesLengthAndPath) {
  const std::string text = testsupport::described(NSIndexPath::indexPathWithIndexes({1, 4}));
  EXPECT_NE(text.find("{length = 2, path = 1 - 4}"), std::string::npos) << text;
}
