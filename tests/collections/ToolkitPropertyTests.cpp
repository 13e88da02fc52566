// SPDX-License-Identifier: MIT
// What holds of the toolkit for any collection, against plain models.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <random>
#include <vector>

#include "tests/collections/CollectionFixtures.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

using Numbers = std::vector<int>;

/// Small numbers, so that many are equal.
Numbers someNumbers() { return *rc::gen::container<Numbers>(rc::gen::inRange(-8, 8)).as("numbers"); }

Ref<NSArray> boxed(const Numbers& numbers) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : numbers) array->addObject(box(each));
  return array->copy();
}
template <class Collection> Numbers plain(const Collection* collection) {
  Numbers numbers;
  for (NSObject* each : *collection) numbers.push_back(unbox<int>(each));
  return numbers;
}
template <class T> Numbers plain(const Ref<T>& collection) { return plain(collection.get()); }

bool has(const Numbers& numbers, int number) {
  return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}
template <class Test> Numbers kept(const Numbers& numbers, Test test) {
  Numbers result;
  std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(result), test);
  return result;
}
Numbers unique(const Numbers& numbers) {
  Numbers result;
  for (const int each : numbers) {
    if (!has(result, each)) result.push_back(each);
  }
  return result;
}
Numbers joined(Numbers a, const Numbers& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}
Numbers sorted(Numbers numbers) {
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}
Numbers without(const Numbers& a, const Numbers& b) {
  return kept(a, [&](int each) { return !has(b, each); });
}
Numbers common(const Numbers& a, const Numbers& b) {
  return kept(a, [&](int each) { return has(b, each); });
}

/// The place of each element, counted in `before`, which holds each once.
std::vector<size_t> places(const NSArray* after, const NSArray* before) {
  std::vector<size_t> found;
  for (NSObject* each : *after) found.push_back(before->indexOfObjectIdenticalTo(each));
  return found;
}
/// Whether each element of one stands once in the other, told by address.
bool isPermutation(const NSArray* after, const NSArray* before) {
  std::vector<size_t> found = places(after, before);
  std::sort(found.begin(), found.end());
  std::vector<size_t> all(before->count());
  std::iota(all.begin(), all.end(), size_t{0});
  return found == all;
}
/// One object for each number, none the same.
Ref<NSArray> items(const Numbers& numbers) {
  Ref<NSMutableArray> array = NSMutableArray::array();
  for (const int each : numbers) array->addObject(make<Item>(each, 0));
  return array->copy();
}

NSComparisonResult byValue(NSObject* a, NSObject* b) {
  const int64_t first = cast<Item>(a)->value(), second = cast<Item>(b)->value();
  return first < second ? NSOrderedAscending : first > second ? NSOrderedDescending : NSOrderedSame;
}

}  // namespace

RC_GTEST_PROP(ToolkitProperty, FilterAndRejectPartEveryCollectionInOrder, ()) {
  const Numbers numbers = someNumbers();
  const int bound = *rc::gen::inRange(-9, 9);
  const auto below = [bound](NSNumber* n) { return n->integerValue() < bound; };
  const auto passing = [bound](const Numbers& all) { return kept(all, [bound](int n) { return n < bound; }); };
  const auto failing = [bound](const Numbers& all) { return kept(all, [bound](int n) { return n >= bound; }); };
  const Ref<NSArray> array = boxed(numbers);
  RC_ASSERT(plain(__ASTFilter_NSArray(array, below)) == passing(numbers));
  RC_ASSERT(plain(__ASTReject_NSArray(array, below)) == failing(numbers));

  const Numbers once = unique(numbers);
  const Ref<NSSet> set = NSSet::setWithArray(array);
  RC_ASSERT(sorted(plain(__ASTFilter_NSSet(set, below))) == sorted(passing(once)));
  RC_ASSERT(sorted(plain(__ASTReject_NSSet(set, below))) == sorted(failing(once)));
  const Ref<NSOrderedSet> orderedSet = NSOrderedSet::orderedSetWithArray(array);
  RC_ASSERT(plain(__ASTFilter_NSOrderedSet(orderedSet, below)) == passing(once));
  RC_ASSERT(plain(__ASTReject_NSOrderedSet(orderedSet, below)) == failing(once));

  Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  for (const int each : once) dictionary->setObject_forKey(box(each), box(std::to_string(each)));
  RC_ASSERT(plain(__ASTFilter_NSDictionary(dictionary, below)->allValues()) == passing(once));
  RC_ASSERT(plain(__ASTReject_NSDictionary(dictionary, below)->allValues()) == failing(once));
}

RC_GTEST_PROP(ToolkitProperty, FilterByIndexAndRejectByIndexPartAnArray, ()) {
  const Numbers numbers = someNumbers();
  const auto third = [](NSObject*, uint64_t index) { return index % 3 == 0; };
  Numbers thirds, others;
  for (size_t i = 0; i < numbers.size(); ++i) (i % 3 == 0 ? thirds : others).push_back(numbers[i]);
  const Ref<NSArray> array = boxed(numbers);
  RC_ASSERT(plain(__ASTFilter_NSArray_withIndex(array, third)) == thirds);
  RC_ASSERT(plain(__ASTReject_NSArray_withIndex(array, third)) == others);
}

RC_GTEST_PROP(ToolkitProperty, SortIsAStablePermutation, ()) {
  const Numbers numbers = someNumbers();
  const Ref<NSArray> array = items(numbers);
  std::vector<size_t> expected(numbers.size());
  std::iota(expected.begin(), expected.end(), size_t{0});
  std::stable_sort(expected.begin(), expected.end(), [&](size_t a, size_t b) { return numbers[a] < numbers[b]; });
  RC_ASSERT(places(__ASTSort_NSArray_comparator(array, &byValue), array) == expected);
}

RC_GTEST_PROP(ToolkitProperty, SortByMessageOrdersNumbers, ()) {
  const Numbers numbers = someNumbers();
  RC_ASSERT(plain(__ASTSort_NSArray(boxed(numbers))) == sorted(numbers));
  RC_ASSERT(plain(__ASTSort_NSOrderedSet(NSOrderedSet::orderedSetWithArray(boxed(numbers)))) ==
            sorted(unique(numbers)));
}

RC_GTEST_PROP(ToolkitProperty, AComparatorThatContradictsItselfGivesSomeOrder, ()) {
  const auto size = *rc::gen::inRange<size_t>(0, 300);
  std::minstd_rand random(*rc::gen::arbitrary<uint32_t>());
  const Ref<NSArray> array = items(Numbers(size, 0));
  const auto whim = [&](NSObject*, NSObject*) { return static_cast<NSComparisonResult>(int(random() % 3) - 1); };
  RC_ASSERT(isPermutation(__ASTSort_NSArray_comparator(array, whim), array));
  const auto alwaysLess = [](NSObject*, NSObject*) { return NSOrderedAscending; };
  RC_ASSERT(isPermutation(__ASTSort_NSArray_comparator(array, alwaysLess), array));
  const auto alwaysGreater = [](NSObject*, NSObject*) { return NSOrderedDescending; };
  RC_ASSERT(isPermutation(__ASTSort_NSArray_comparator(array, alwaysGreater), array));
}

RC_GTEST_PROP(ToolkitProperty, ArraysAreCombinedAsTheirModels, ()) {
  const Numbers a = someNumbers(), b = someNumbers();
  RC_ASSERT(plain(__ASTDifference_NSArray(boxed(a), boxed(b))) == without(a, b));
  RC_ASSERT(plain(__ASTIntersection_NSArray(boxed(a), boxed(b))) == common(a, b));
  RC_ASSERT(plain(__ASTUnion_NSArray(boxed(a), boxed(b))) == joined(a, without(b, a)));
}

RC_GTEST_PROP(ToolkitProperty, OrderedSetsAreCombinedAsTheirModels, ()) {
  const Numbers a = unique(someNumbers()), b = unique(someNumbers());
  const auto first = NSOrderedSet::orderedSetWithArray(boxed(a)), second = NSOrderedSet::orderedSetWithArray(boxed(b));
  RC_ASSERT(plain(__ASTDifference_NSOrderedSet(first, second)) == without(a, b));
  RC_ASSERT(plain(__ASTIntersection_NSOrderedSet(first, second)) == common(a, b));
  RC_ASSERT(plain(__ASTUnion_NSOrderedSet(first, second)) == joined(a, without(b, a)));
}

RC_GTEST_PROP(ToolkitProperty, SetsAreCombinedAsTheirModels, ()) {
  const Numbers a = unique(someNumbers()), b = unique(someNumbers());
  const auto first = NSSet::setWithArray(boxed(a)), second = NSSet::setWithArray(boxed(b));
  RC_ASSERT(sorted(plain(__ASTDifference_NSSet(first, second))) == sorted(without(a, b)));
  RC_ASSERT(sorted(plain(__ASTIntersection_NSSet(first, second))) == sorted(common(a, b)));
  RC_ASSERT(sorted(plain(__ASTUnion_NSSet(first, second))) == sorted(joined(a, without(b, a))));
}

RC_GTEST_PROP(ToolkitProperty, HeadAndTailMakeTheWhole, ()) {
  const Numbers numbers = someNumbers();
  const Ref<NSArray> array = boxed(numbers), tail = __ASTTail_NSArray(array);
  const Ref<NSObject> head = __ASTHead_NSArray(array);
  Numbers whole = plain(tail);
  if (head) whole.insert(whole.begin(), unbox<int>(head));
  RC_ASSERT(whole == numbers);
}

RC_GTEST_PROP(ToolkitProperty, GroupByEqualsTheNaiveRebuild, ()) {
  const Numbers numbers = someNumbers();
  // Every addition makes a new array; -8 has no key.
  Ref<NSMutableDictionary> expected = NSMutableDictionary::dictionary();
  for (const int each : numbers) {
    if (each == -8) continue;
    const Ref<NSNumber> key = box(each % 3);
    const Ref<NSArray> group = cast<NSArray>(expected->objectForKey(key));
    expected->setObject_forKey((group ? group : NSArray::array())->arrayByAddingObject(box(each)), key);
  }
  const Ref<NSMutableDictionary> groups = __ASTGroupBy_NSFastEnumeration_block(
      boxed(numbers),
      [](NSNumber* n) -> Ref<NSObject> { return n->integerValue() == -8 ? nullptr : box(n->integerValue() % 3); });
  RC_ASSERT(isEqual(groups, expected));
  RC_ASSERT(shown(groups) == shown(expected));  // in the same order, and immutable
}

RC_GTEST_PROP(ToolkitProperty, IndexByHoldsTheLastOfEachGroup, ()) {
  const Numbers numbers = someNumbers();
  const auto key = [](NSNumber* n) -> Ref<NSObject> { return box(n->integerValue() % 3); };
  const auto index = __ASTIndexBy_NSFastEnumeration_block(boxed(numbers), key);
  const auto groups = __ASTGroupBy_NSFastEnumeration_block(boxed(numbers), key);
  RC_ASSERT(index->count() == groups->count());
  for (auto [each, group] : *groups) {
    RC_ASSERT(isEqual(index->objectForKey(each).get(), cast<NSArray>(group)->lastObject().get()));
  }
}

RC_GTEST_PROP(ToolkitProperty, MinAndMaxAreTheEndsOfTheSorted, ()) {
  const Numbers numbers = someNumbers();
  RC_PRE(!numbers.empty());
  const Ref<NSArray> array = items(numbers);
  const auto last = [&](int wanted) {
    const auto found = std::find(numbers.rbegin(), numbers.rend(), wanted);
    return array->objectAtIndex(static_cast<uint64_t>(numbers.rend() - found) - 1);
  };
  const auto [least, greatest] = std::minmax_element(numbers.begin(), numbers.end());
  RC_ASSERT(__ASTMin_NSFastEnumeration_comparator(array, &byValue) == last(*least));
  RC_ASSERT(__ASTMax_NSFastEnumeration_comparator(array, &byValue) == last(*greatest));
}

RC_GTEST_PROP(ToolkitProperty, ShuffleIsAPermutation, ()) {
  const auto size = *rc::gen::inRange<size_t>(0, 200);
  const Ref<NSArray> array = items(Numbers(size, 0));
  RC_ASSERT(isPermutation(__ASTShuffle_NSArray(array), array));
  const auto set = NSOrderedSet::orderedSetWithArray(numbersTo(static_cast<int>(size)));
  RC_ASSERT(isPermutation(__ASTShuffle_NSOrderedSet(set)->array(), set->array()));
}

// Chi-squared with 9 degrees of freedom exceeds 40 once in 100,000 tries, and chance draws anew in each run: five
// places at 60 fail once in 100 million runs.
TEST(ToolkitProperty, ShuffleIsUniformInItsFirstFivePlaces) {
  constexpr int count = 10, rounds = 20'000;
  const Ref<NSArray> array = numbersTo(count);
  std::array<std::array<int, count>, 5> seen{};
  for (int round = 0; round < rounds; ++round) {
    const Ref<NSMutableArray> shuffled = __ASTShuffle_NSArray(array);
    for (size_t place = 0; place < seen.size(); ++place) {
      ++seen[place][unbox<size_t>(shuffled->objectAtIndex(place)) - 1];
    }
  }
  for (size_t place = 0; place < seen.size(); ++place) {
    const double expected = double{rounds} / count;
    double chiSquared = 0;
    for (const int times : seen[place]) chiSquared += (times - expected) * (times - expected) / expected;
    EXPECT_LT(chiSquared, 60) << "in place " << place;
    EXPECT_GT(chiSquared, 0.05) << "too even to be chance, in place " << place;
  }
}

namespace {

/// A dictionary that keeps the order of insertion, as plainly as can be: a map, and the serial number of each key.
class OrderedModel {
 public:
  void set(int key, int value) {
    const auto [at, isNew] = values_.try_emplace(key);
    at->second.value = value;
    if (isNew) keys_[at->second.serial = next_++] = key;
  }
  void remove(int key) {
    const auto at = values_.find(key);
    if (at == values_.end()) return;
    keys_.erase(at->second.serial);
    values_.erase(at);
  }
  const int* find(int key) const {
    const auto at = values_.find(key);
    return at == values_.end() ? nullptr : &at->second.value;
  }
  size_t size() const { return values_.size(); }
  std::vector<std::pair<int, int>> entries() const {
    std::vector<std::pair<int, int>> all;
    for (const auto& [serial, key] : keys_) all.emplace_back(key, *find(key));
    return all;
  }

 private:
  struct Place {
    int value = 0;
    int serial = 0;
  };
  std::map<int, Place> values_;
  std::map<int, int> keys_;  // by serial number
  int next_ = 0;
};

std::vector<std::pair<int, int>> entriesOf(const NSDictionary* dictionary) {
  std::vector<std::pair<int, int>> all;
  __ASTEach_NSDictionary_keysAndValues(
      dictionary, [&](NSNumber* key, NSNumber* value) { all.emplace_back(key->intValue(), value->intValue()); });
  return all;
}

void expectSameEntries(const NSDictionary* dictionary, const OrderedModel& model) {
  const auto expected = model.entries();
  ASSERT_EQ(entriesOf(dictionary), expected);
  size_t at = 0;
  __ASTEach_NSFastEnumeration(const_cast<NSDictionary*>(dictionary), [&](NSNumber* key) {
    ASSERT_LT(at, expected.size());
    EXPECT_EQ(key->intValue(), expected[at++].first);
  });
  EXPECT_EQ(at, expected.size());
}

}  // namespace

TEST(ToolkitProperty, ADictionaryKeepsItsOrderUnderRandomOperations) {
  std::mt19937 random(20'11);
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionary();
  OrderedModel model;
  for (int step = 0; step < 100'000; ++step) {
    const auto range = step / 25'000 % 2 ? 16u : 2'000u;  // large and small by turns
    const int key = static_cast<int>(random() % range);
    const auto choice = random() % 1'000;
    if (choice < 400) {  // inserts, or overwrites
      dictionary->setObject_forKey(box(step), box(key));
      model.set(key, step);
    } else if (choice < 700) {
      dictionary->removeObjectForKey(box(key));
      model.remove(key);
    } else if (choice < 998) {
      const Ref<NSObject> found = dictionary->objectForKey(box(key));
      const int* expected = model.find(key);
      ASSERT_EQ(found != nullptr, expected != nullptr) << step;
      if (expected) {
        ASSERT_EQ(unbox<int>(found), *expected) << step;
      }
    } else {
      ASSERT_NO_FATAL_FAILURE(expectSameEntries(dictionary, model)) << step;
    }
    ASSERT_EQ(dictionary->count(), model.size()) << step;
  }
  expectSameEntries(dictionary, model);
}
