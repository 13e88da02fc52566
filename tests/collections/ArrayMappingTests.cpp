// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayMapping.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/platform/collections/CollectionsSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::texts;

Ref<NSArray> list(std::initializer_list<Element> objects) { return NSArray::arrayWithObjects(objects); }
const auto same = [](NSObject* element, uint64_t, bool*) -> Ref<NSObject> { return element; };

/// The elements that were mapped, each with its index.
std::string mapped(const NSArray* array, NSRange range) {
  std::string calls;
  qf_mapObjectsInRange_usingBlock(array, range, [&](NSObject* element, uint64_t index, bool*) -> Ref<NSObject> {
    calls += testsupport::described(element) + "@" + std::to_string(index) + " ";
    return nullptr;
  });
  return calls;
}

TEST(ArrayMapping, MapsARangeWithIndicesFromItsStart) {
  const quoll::Ref<quoll::NSArray> titles = quoll::qf_mapObjectsInRange_usingBlock(
      list({"a"_ns, "b"_ns, "c"_ns}), {1, 2},
      [](NSString* text, uint64_t index, bool*) { return NSString::stringWithFormat("%@%llu"_ns, text, index); });
  EXPECT_EQ(texts(*titles), "b0 c1");
}

TEST(ArrayMapping, TakesTheEmptyRangeAtZeroAsTheWholeArray) { EXPECT_EQ(mapped(list({7, 8}), {0, 0}), "7@0 8@1 "); }

TEST(ArrayMapping, TakesAnyOtherRangeAsItStands) {
  const Ref<NSArray> three = list({7, 8, 9});
  EXPECT_EQ(mapped(three, {2, 0}), "");
  EXPECT_EQ(mapped(three, {3, 0}), "");
  EXPECT_EQ(mapped(three, {0, 1}), "7@0 ");
  EXPECT_EQ(mapped(three, {1, 2}), "8@0 9@1 ");
}

TEST(ArrayMapping, RaisesForARangePastTheEnd) {
  const Ref<NSArray> two = list({7, 8});
  EXPECT_THAT([&] { mapped(two, {1, 2}); }, raises(NSRangeException, "subarrayWithRange:"));
  EXPECT_THAT([&] { mapped(two, {UINT64_MAX, 2}); }, raises(NSRangeException, "subarrayWithRange:"));
  EXPECT_THAT([&] { mapped(list({}), {1, 0}); }, raises(NSRangeException, "subarrayWithRange:"));
}

TEST(ArrayMapping, DropsNullResults) {
  const Ref<NSArray> odd = qf_mapObjectsUsingBlock(list({1, 2, 3}), [](NSNumber* n, uint64_t, bool*) -> Ref<NSObject> {
    return n->integerValue() % 2 ? n : nullptr;
  });
  EXPECT_EQ(texts(*odd), "1 3");
}

TEST(ArrayMapping, EndsAfterTheElementThatSetsTheStop) {
  const Ref<NSArray> first =
      qf_mapObjectsUsingBlock(list({1, 2, 3}), [](NSObject* element, uint64_t, bool* stop) -> Ref<NSObject> {
        *stop = true;
        return element;
      });
  EXPECT_EQ(texts(*first), "1");
}

TEST(ArrayMapping, MapsOnlyWhereTheConditionHolds) {
  const Ref<NSArray> even =
      qf_mapObjectsUsingBlock_condition(list({5, 6, 7}), same, [](uint64_t index) { return index % 2 == 0; });
  EXPECT_EQ(texts(*even), "5 7");
  const Ref<NSArray> later = qf_mapObjectsInRange_usingBlock_condition(list({5, 6, 7}), {1, 2}, same,
                                                                       [](uint64_t index) { return index == 1; });
  EXPECT_EQ(texts(*later), "7");
}

TEST(ArrayMapping, CallsNothingWhereNoIndexPasses) {
  int calls = 0;
  const Ref<NSArray> none = qf_mapObjectsUsingBlock_condition(
      list({5, 6}),
      [&](NSObject* element, uint64_t, bool*) -> Ref<NSObject> {
        ++calls;
        return element;
      },
      [](uint64_t) { return false; });
  EXPECT_EQ(none->count(), 0u);
  EXPECT_EQ(calls, 0);
}

TEST(ArrayMapping, MapsAllWithoutACondition) {
  EXPECT_EQ(texts(*qf_mapObjectsUsingBlock_condition(list({5, 6}), same, nullptr)), "5 6");
}

TEST(ArrayMapping, GivesAnImmutableArray) {
  EXPECT_EQ(as<NSMutableArray>(qf_mapObjectsUsingBlock(NSMutableArray::arrayWithObjects({1}), same).get()), nullptr);
}

TEST(ArrayMapping, RaisesWhereACallbackChangesTheArray) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({1, 2});
  EXPECT_THAT(
      [&] {
        qf_mapObjectsUsingBlock(array, [&](NSObject*, uint64_t, bool*) -> Ref<NSObject> {
          array->removeAllObjects();
          return nullptr;
        });
      },
      raises(NSGenericException, "NSMutableArray"));
}

TEST(ArrayMapping, AnswersByName) {
  const ArrayMap map = same;
  const auto all = send<Ref<NSArray>>(list({1, 2}), "qf_mapObjectsInRange:usingBlock:condition:"_sel, NSRange{1, 1},
                                      map, IndexCondition());
  EXPECT_EQ(texts(*all), "2");
}

TEST(ArrayMapping, MapsRunsOfNeighbours) {
  std::string groups;
  const auto equal = [](NSObject* a, NSObject* b) { return isEqual(a, b); };
  const Ref<NSMutableArray> sizes =
      qf_mapGroupsByBlock_withBlock(list({1, 1, 2, 2, 2, 3}), equal, [&](NSMutableArray* group) {
        groups += "[" + texts(*group) + "]";
        return list({group->count(), "|"_ns});
      });
  EXPECT_EQ(groups, "[1 1][2 2 2][3]");
  EXPECT_EQ(texts(*sizes), "2 | 3 | 1 |");
}

TEST(ArrayMapping, AsksAboutEachPairOfNeighboursOnce) {
  std::string pairs;
  qf_mapGroupsByBlock_withBlock(
      list({1, 2, 3}),
      [&](NSNumber* a, NSNumber* b) {
        pairs += a->stringValue()->utf8() + b->stringValue()->utf8() + " ";
        return a->integerValue() == 1;
      },
      [](NSMutableArray*) -> Ref<NSArray> { return nullptr; });
  EXPECT_EQ(pairs, "12 23 ");
}

TEST(ArrayMapping, CallsNothingForAnEmptyArray) {
  int calls = 0;
  const Ref<NSMutableArray> none = qf_mapGroupsByBlock_withBlock(
      list({}), [&](NSObject*, NSObject*) { return ++calls != 0; },
      [&](NSMutableArray* group) -> Ref<NSArray> {
        ++calls;
        return group;
      });
  EXPECT_EQ(none->count(), 0u);
  EXPECT_EQ(calls, 0);
}

TEST(ArrayMapping, UsesOneGroupAgainAndAgain) {
  std::vector<Ref<NSMutableArray>> seen;
  const Ref<NSMutableArray> all = qf_mapGroupsByBlock_withBlock(
      list({1, 2}), [](NSObject*, NSObject*) { return false; },
      [&](NSMutableArray* group) -> Ref<NSArray> {
        seen.emplace_back(group);
        return group;
      });
  EXPECT_EQ(texts(*all), "1 2");
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0], seen[1]);
  EXPECT_EQ(seen[0]->count(), 0u);
}

TEST(ArrayMapping, AddsNothingForANullResultOfAGroup) {
  const Ref<NSMutableArray> some = qf_mapGroupsByBlock_withBlock(
      list({1, 2}), [](NSObject*, NSObject*) { return false; },
      [&](NSMutableArray* group) -> Ref<NSArray> {
        return isEqual(group->firstObject(), box(1)) ? nullptr : group->copy();
      });
  EXPECT_EQ(texts(*some), "2");
}

TEST(ArrayMapping, ANullReceiverAnswersNull) {
  EXPECT_EQ(qf_mapObjectsUsingBlock(nullptr, same), nullptr);
  EXPECT_EQ(
      qf_mapGroupsByBlock_withBlock(
          nullptr, [](NSObject*, NSObject*) { return true; }, [](NSMutableArray*) -> Ref<NSArray> { return nullptr; }),
      nullptr);
}

}  // namespace
