// SPDX-License-Identifier: MIT
// Every member of the toolkit, family by family as its header lists them: an ordinary case, the empty collection, none,
// and what is odd about it. Long because the table of members is. How members walk is in ToolkitWalksTests.cpp.
#include "QuollFoundation/collections/Toolkit.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "tests/collections/CollectionFixtures.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {
/// What `arc4random_uniform` answers instead of chance, and the bounds that it was asked for.
struct Draws {
  std::vector<uint32_t> answers;
  std::vector<uint32_t> bounds;
};
constinit Draws* draws = nullptr;
}  // namespace

// The program's definition serves the library too. Without a list of answers the real one draws.
extern "C" __attribute__((visibility("default"))) uint32_t arc4random_uniform(uint32_t bound) noexcept {
  if (!draws) {
    static const auto real = reinterpret_cast<uint32_t (*)(uint32_t)>(dlsym(RTLD_NEXT, "arc4random_uniform"));
    return real(bound);
  }
  const size_t drawn = draws->bounds.size();
  draws->bounds.push_back(bound);
  return drawn < draws->answers.size() ? draws->answers[drawn] : 0;
}

TEST(Toolkit, FiltersGroupsAndFindsTheGreatest) {
  auto numbers = quoll::NSArray::arrayWithObjects({1, 2, 3, 4});
  auto even = quoll::Filter(numbers, [](quoll::NSNumber* n) { return n->integerValue() % 2 == 0; });
  EXPECT_THAT(even, quoll::equals(quoll::NSArray::arrayWithObjects({2, 4})));

  auto names = quoll::NSArray::arrayWithObjects({"Bo", "Annabel", "Al"});
  auto byLength = quoll::GroupBy(names, quoll::box("length"));
  EXPECT_THAT(byLength->objectForKey(quoll::box(2)), quoll::equals(quoll::NSArray::arrayWithObjects({"Bo", "Al"})));
  auto longest = quoll::Max(names, [](quoll::NSString* a, quoll::NSString* b) {
    return a->length() < b->length() ? quoll::NSOrderedAscending : quoll::NSOrderedDescending;
  });
  EXPECT_THAT(longest, quoll::equals("Annabel"));
}

namespace {

// Callbacks

constexpr auto evenIndex = [](NSObject*, uint64_t index) { return index % 2 == 0; };
/// The entry is {a=1}, {b=2} and so on: the letter's own number.
constexpr auto ownNumber = [](NSString* key, NSNumber* value) {
  return key->characterAtIndex(0) - u'a' + 1 == value->integerValue();
};

/// Ten times the number; nothing for 2.
constexpr auto tenfoldButTwo = [](NSNumber* n) -> Ref<NSObject> {
  return n->integerValue() == 2 ? nullptr : box(n->integerValue() * 10);
};
/// "index:element"; nothing for 2.
constexpr auto placedButTwo = [](NSNumber* n, uint64_t index) -> Ref<NSObject> {
  return n->integerValue() == 2 ? nullptr : box(std::to_string(index) + ":" + shown(n));
};
/// "key:value"; nothing for 2.
constexpr auto entryButTwo = [](NSString* key, NSNumber* n) -> Ref<NSObject> {
  return n->integerValue() == 2 ? nullptr : box(shown(key) + ":" + shown(n));
};
constexpr auto parity = [](NSNumber* n) -> Ref<NSObject> { return n->integerValue() % 2 ? "odd"_ns : "even"_ns; };
/// Nothing for numbers from 3 on.
constexpr auto parityBelowThree = [](NSNumber* n) -> Ref<NSObject> {
  return n->integerValue() < 3 ? parity(n) : nullptr;
};

/// "(memo element)", to see which call had what.
constexpr auto bracket = [](NSObject* memo, NSObject* element) -> Ref<NSObject> {
  return box("(" + described(memo) + " " + described(element) + ")");
};
constexpr auto bracketEntry = [](NSObject* memo, NSObject* key, NSObject* value) -> Ref<NSObject> {
  return box("(" + described(memo) + " " + described(key) + "=" + described(value) + ")");
};
constexpr auto toNothing = [](auto...) -> Ref<NSObject> { return nullptr; };

/// By the first unit only, so that others of the same one are equal.
constexpr auto byInitial = [](NSString* a, NSString* b) {
  const char16_t first = a->characterAtIndex(0), second = b->characterAtIndex(0);
  return first < second ? NSOrderedAscending : first > second ? NSOrderedDescending : NSOrderedSame;
};
constexpr auto unaskedComparator = [](NSObject*, NSObject*) -> NSComparisonResult {
  ADD_FAILURE() << "the comparator is asked";
  return NSOrderedSame;
};
constexpr auto unaskedReducer = [](NSObject*, NSObject*) -> Ref<NSObject> {
  ADD_FAILURE() << "the reducer is called";
  return nullptr;
};

std::string whichOf(const NSObject* result, const NSObject* first, const NSObject* second) {
  return result == first ? "the first itself" : result == second ? "the second itself" : "another: " + shown(result);
}

/// What a member calls back with, as text.
template <class Walk> std::string calls(Walk walk) {
  Record record;
  walk([&record](auto... given) {
    std::string call;
    ((call += (call.empty() ? "" : "/") + shown(given)), ...);
    record.add(call);
  });
  return record.text();
}

const auto letters = [] { return dictionary({{"a", 1}, {"b", 2}, {"c", 3}}); };

}  // namespace

TEST(Toolkit, AllNeedsAnElementAndOnlyPassingOnes) {
  expectRows({
      {"elements that all pass", [] { return shown(__ASTAll_NSFastEnumeration(list({2, 4}), even)); }, "YES"},
      {"one that fails", [] { return shown(__ASTAll_NSFastEnumeration(list({2, 3, 4}), even)); }, "NO"},
      {"an empty array", [] { return shown(__ASTAll_NSFastEnumeration(list({}), even)); }, "NO"},
      {"no array", [] { return shown(__ASTAll_NSFastEnumeration(nullptr, even)); }, "NO"},
      {"of a dictionary, its keys",
       [] { return shown(__ASTAll_NSFastEnumeration(letters(), [](NSString* k) { return k->length() == 1; })); },
       "YES"},
      {"values that all pass", [] { return shown(__ASTAll_NSDictionary(dictionary({{"a", 2}, {"b", 4}}), even)); },
       "YES"},
      {"a value that fails", [] { return shown(__ASTAll_NSDictionary(letters(), even)); }, "NO"},
      {"an empty dictionary", [] { return shown(__ASTAll_NSDictionary(dictionary({}), even)); }, "NO"},
      {"no dictionary", [] { return shown(__ASTAll_NSDictionary(nullptr, even)); }, "NO"},
      {"it stops at the first that fails",
       [] {
         Record asked;
         __ASTAll_NSFastEnumeration(list({2, 3, 4}), [&](NSNumber* n) { return asked.add(shown(n)), even(n); });
         return asked.text();
       },
       "2 3"},
  });
}

TEST(Toolkit, AnyNeedsAPassingElement) {
  expectRows({
      {"one that passes", [] { return shown(__ASTAny_NSFastEnumeration(list({1, 2, 3}), even)); }, "YES"},
      {"none that passes", [] { return shown(__ASTAny_NSFastEnumeration(list({1, 3}), even)); }, "NO"},
      {"an empty array", [] { return shown(__ASTAny_NSFastEnumeration(list({}), even)); }, "NO"},
      {"no array", [] { return shown(__ASTAny_NSFastEnumeration(nullptr, even)); }, "NO"},
      {"a value that passes", [] { return shown(__ASTAny_NSDictionary(letters(), even)); }, "YES"},
      {"no value that passes", [] { return shown(__ASTAny_NSDictionary(dictionary({{"a", 1}}), even)); }, "NO"},
      {"an empty dictionary", [] { return shown(__ASTAny_NSDictionary(dictionary({}), even)); }, "NO"},
      {"no dictionary", [] { return shown(__ASTAny_NSDictionary(nullptr, even)); }, "NO"},
      {"it stops at the first that passes",
       [] {
         Record asked;
         __ASTAny_NSFastEnumeration(list({1, 2, 3}), [&](NSNumber* n) { return asked.add(shown(n)), even(n); });
         return asked.text();
       },
       "1 2"},
  });
}

TEST(Toolkit, DefaultsFillsGapsAndExtendOverwrites) {
  static const Ref<NSDictionary> a = dictionary({{"a", 1}, {"b", 2}}), b = dictionary({{"b", 20}, {"c", 30}});
  expectRows({
      {"present keys keep their values", [] { return shown(__ASTDefaults_NSDictionary(a, b)); },
       "mutable {a=1 b=2 c=30}"},
      {"the defaults of an empty one", [] { return shown(__ASTDefaults_NSDictionary(dictionary({}), b)); },
       "mutable {b=20 c=30}"},
      {"empty defaults give a copy", [] { return shown(__ASTDefaults_NSDictionary(a, dictionary({}))); },
       "mutable {a=1 b=2}"},
      {"no dictionary", [] { return whichOf(__ASTDefaults_NSDictionary(nullptr, b), a, b); }, "the second itself"},
      {"no defaults", [] { return whichOf(__ASTDefaults_NSDictionary(a, nullptr), a, b); }, "the first itself"},
      {"neither", [] { return shown(__ASTDefaults_NSDictionary(nullptr, nullptr)); }, "null"},
      {"the later argument wins", [] { return shown(__ASTExtend_NSDictionary(a, b)); }, "mutable {a=1 b=20 c=30}"},
      {"an empty one is extended", [] { return shown(__ASTExtend_NSDictionary(dictionary({}), b)); },
       "mutable {b=20 c=30}"},
      {"extended by nothing", [] { return shown(__ASTExtend_NSDictionary(a, dictionary({}))); }, "mutable {a=1 b=2}"},
      {"no dictionary to extend", [] { return whichOf(__ASTExtend_NSDictionary(nullptr, b), a, b); },
       "the second itself"},
      {"no dictionary to extend by", [] { return whichOf(__ASTExtend_NSDictionary(a, nullptr), a, b); },
       "the first itself"},
      {"nothing extended by nothing", [] { return shown(__ASTExtend_NSDictionary(nullptr, nullptr)); }, "null"},
      {"the arguments stay as they were", [] { return shown(a) + shown(b); }, "{a=1 b=2}{b=20 c=30}"},
  });
}

TEST(Toolkit, DifferenceKeepsWhatTheOtherLacks) {
  static const Ref<NSMutableArray> array = mutableList({1, 2, 2, 3, 1, 4});
  static const Ref<NSMutableSet> set = mutableSetOf({1, 2, 3});
  static const Ref<NSMutableOrderedSet> orderedSet = mutableOrdered({3, 1, 2});
  expectRows({
      {"all occurrences go, duplicates stay", [] { return shown(__ASTDifference_NSArray(array, list({2, 4, 9}))); },
       "[1 3 1]"},
      {"less an empty array", [] { return shown(__ASTDifference_NSArray(array, list({}))); }, "[1 2 2 3 1 4]"},
      {"of an empty array", [] { return shown(__ASTDifference_NSArray(list({}), array)); }, "[]"},
      {"less itself", [] { return shown(__ASTDifference_NSArray(array, array)); }, "[]"},
      {"of no array", [] { return shown(__ASTDifference_NSArray(nullptr, array)); }, "null"},
      {"less no array, mutable as it is",
       [] { return whichOf(__ASTDifference_NSArray(array, nullptr), array, nullptr); }, "the first itself"},
      {"set less set", [] { return shown(__ASTDifference_NSSet(set, setOf({2, 9}))); }, "(1 3)"},
      {"of an empty set", [] { return shown(__ASTDifference_NSSet(setOf({}), set)); }, "()"},
      {"of no set", [] { return shown(__ASTDifference_NSSet(nullptr, set)); }, "null"},
      {"less no set", [] { return whichOf(__ASTDifference_NSSet(set, nullptr), set, nullptr); }, "the first itself"},
      {"ordered set less ordered set", [] { return shown(__ASTDifference_NSOrderedSet(orderedSet, ordered({1, 9}))); },
       "<3 2>"},
      {"of an empty ordered set", [] { return shown(__ASTDifference_NSOrderedSet(ordered({}), orderedSet)); }, "<>"},
      {"of no ordered set", [] { return shown(__ASTDifference_NSOrderedSet(nullptr, orderedSet)); }, "null"},
      {"less no ordered set",
       [] { return whichOf(__ASTDifference_NSOrderedSet(orderedSet, nullptr), orderedSet, nullptr); },
       "the first itself"},
      {"the arguments stay as they were", [] { return shown(array) + shown(set) + shown(orderedSet); },
       "mutable [1 2 2 3 1 4]mutable (1 2 3)mutable <3 1 2>"},
  });
}

TEST(Toolkit, EachCallsBackInOrder) {
  expectRows({
      {"array", [] { return calls([](auto f) { __ASTEach_NSArray(list({1, 2, 3}), f); }); }, "1 2 3"},
      {"empty array", [] { return calls([](auto f) { __ASTEach_NSArray(list({}), f); }); }, ""},
      {"no array", [] { return calls([](auto f) { __ASTEach_NSArray(nullptr, f); }); }, ""},
      {"array with index", [] { return calls([](auto f) { __ASTEach_NSArray_withIndex(list({7, 8}), f); }); },
       "7/0 8/1"},
      {"empty array with index", [] { return calls([](auto f) { __ASTEach_NSArray_withIndex(list({}), f); }); }, ""},
      {"no array with index", [] { return calls([](auto f) { __ASTEach_NSArray_withIndex(nullptr, f); }); }, ""},
      {"dictionary: values", [] { return calls([](auto f) { __ASTEach_NSDictionary(letters(), f); }); }, "1 2 3"},
      {"empty dictionary", [] { return calls([](auto f) { __ASTEach_NSDictionary(dictionary({}), f); }); }, ""},
      {"no dictionary", [] { return calls([](auto f) { __ASTEach_NSDictionary(nullptr, f); }); }, ""},
      {"entries", [] { return calls([](auto f) { __ASTEach_NSDictionary_keysAndValues(letters(), f); }); },
       "a/1 b/2 c/3"},
      {"no entries", [] { return calls([](auto f) { __ASTEach_NSDictionary_keysAndValues(dictionary({}), f); }); }, ""},
      {"entries of null", [] { return calls([](auto f) { __ASTEach_NSDictionary_keysAndValues(nullptr, f); }); }, ""},
      {"ordered set with index",
       [] { return calls([](auto f) { __ASTEach_NSOrderedSet_withIndex(ordered({7, 8, 7}), f); }); }, "7/0 8/1"},
      {"empty ordered set with index",
       [] { return calls([](auto f) { __ASTEach_NSOrderedSet_withIndex(ordered({}), f); }); }, ""},
      {"no ordered set with index", [] { return calls([](auto f) { __ASTEach_NSOrderedSet_withIndex(nullptr, f); }); },
       ""},
      {"anything", [] { return calls([](auto f) { __ASTEach_NSFastEnumeration(setOf({1, 2, 1}), f); }); }, "1 2"},
      {"the keys of a dictionary", [] { return calls([](auto f) { __ASTEach_NSFastEnumeration(letters(), f); }); },
       "a b c"},
      {"an enumerator",
       [] { return calls([](auto f) { __ASTEach_NSFastEnumeration(list({1, 2})->reverseObjectEnumerator(), f); }); },
       "2 1"},
      {"anything empty", [] { return calls([](auto f) { __ASTEach_NSFastEnumeration(setOf({}), f); }); }, ""},
      {"nothing", [] { return calls([](auto f) { __ASTEach_NSFastEnumeration(nullptr, f); }); }, ""},
      {"anything with index",
       [] { return calls([](auto f) { __ASTEach_NSFastEnumeration_withIndex(setOf({7, 8}), f); }); }, "7/0 8/1"},
      {"anything empty with index",
       [] { return calls([](auto f) { __ASTEach_NSFastEnumeration_withIndex(setOf({}), f); }); }, ""},
      {"nothing with index", [] { return calls([](auto f) { __ASTEach_NSFastEnumeration_withIndex(nullptr, f); }); },
       ""},
  });
}

TEST(Toolkit, EachCountsOnAcrossBatches) {
  std::vector<uint64_t> indices;
  __ASTEach_NSFastEnumeration_withIndex(numbersTo(40), [&](NSNumber* n, uint64_t index) {
    EXPECT_EQ(n->integerValue(), static_cast<int64_t>(index) + 1);
    indices.push_back(index);
  });
  ASSERT_EQ(indices.size(), 40u);
  EXPECT_TRUE(std::is_sorted(indices.begin(), indices.end()));
  EXPECT_EQ(indices.back(), 39u);
}

TEST(Toolkit, EmptyAndSizeCount) {
  expectRows({
      {"array", [] { return shown(__ASTEmpty_NSArray(list({1}))); }, "NO"},
      {"empty array", [] { return shown(__ASTEmpty_NSArray(list({}))); }, "YES"},
      {"no array", [] { return shown(__ASTEmpty_NSArray(nullptr)); }, "YES"},
      {"dictionary", [] { return shown(__ASTEmpty_NSDictionary(letters())); }, "NO"},
      {"empty dictionary", [] { return shown(__ASTEmpty_NSDictionary(dictionary({}))); }, "YES"},
      {"no dictionary", [] { return shown(__ASTEmpty_NSDictionary(nullptr)); }, "YES"},
      {"set", [] { return shown(__ASTEmpty_NSSet(setOf({1}))); }, "NO"},
      {"empty set", [] { return shown(__ASTEmpty_NSSet(setOf({}))); }, "YES"},
      {"no set", [] { return shown(__ASTEmpty_NSSet(nullptr)); }, "YES"},
      {"ordered set", [] { return shown(__ASTEmpty_NSOrderedSet(ordered({1}))); }, "NO"},
      {"empty ordered set", [] { return shown(__ASTEmpty_NSOrderedSet(ordered({}))); }, "YES"},
      {"no ordered set", [] { return shown(__ASTEmpty_NSOrderedSet(nullptr)); }, "YES"},
      {"anything", [] { return shown(__ASTEmpty_NSFastEnumeration(list({1})->objectEnumerator())); }, "NO"},
      {"anything empty", [] { return shown(__ASTEmpty_NSFastEnumeration(list({})->objectEnumerator())); }, "YES"},
      {"nothing", [] { return shown(__ASTEmpty_NSFastEnumeration(nullptr)); }, "YES"},
      {"size of an array", [] { return shown(__ASTSize_NSArray(list({1, 1}))); }, "2"},
      {"size of an empty array", [] { return shown(__ASTSize_NSArray(list({}))); }, "0"},
      {"size of no array", [] { return shown(__ASTSize_NSArray(nullptr)); }, "0"},
      {"size of a dictionary", [] { return shown(__ASTSize_NSDictionary(letters())); }, "3"},
      {"size of an empty dictionary", [] { return shown(__ASTSize_NSDictionary(dictionary({}))); }, "0"},
      {"size of no dictionary", [] { return shown(__ASTSize_NSDictionary(nullptr)); }, "0"},
      {"size of a set", [] { return shown(__ASTSize_NSSet(setOf({1, 2, 1}))); }, "2"},
      {"size of an empty set", [] { return shown(__ASTSize_NSSet(setOf({}))); }, "0"},
      {"size of no set", [] { return shown(__ASTSize_NSSet(nullptr)); }, "0"},
      {"size of an ordered set", [] { return shown(__ASTSize_NSOrderedSet(ordered({1, 2, 1}))); }, "2"},
      {"size of an empty ordered set", [] { return shown(__ASTSize_NSOrderedSet(ordered({}))); }, "0"},
      {"size of no ordered set", [] { return shown(__ASTSize_NSOrderedSet(nullptr)); }, "0"},
      {"size of anything", [] { return shown(__ASTSize_NSFastEnumeration(numbersTo(40)->objectEnumerator())); }, "40"},
      {"size of anything empty", [] { return shown(__ASTSize_NSFastEnumeration(list({})->objectEnumerator())); }, "0"},
      {"size of nothing", [] { return shown(__ASTSize_NSFastEnumeration(nullptr)); }, "0"},
  });
}

TEST(Toolkit, FilterKeepsWhatPasses) {
  expectRows({
      {"array", [] { return shown(__ASTFilter_NSArray(mutableList({1, 2, 3, 4, 2}), even)); }, "[2 4 2]"},
      {"empty array", [] { return shown(__ASTFilter_NSArray(list({}), even)); }, "[]"},
      {"no array", [] { return shown(__ASTFilter_NSArray(nullptr, even)); }, "null"},
      {"array with index", [] { return shown(__ASTFilter_NSArray_withIndex(mutableList({7, 8, 9}), evenIndex)); },
       "[7 9]"},
      {"empty array with index", [] { return shown(__ASTFilter_NSArray_withIndex(list({}), evenIndex)); }, "[]"},
      {"no array with index", [] { return shown(__ASTFilter_NSArray_withIndex(nullptr, evenIndex)); }, "null"},
      {"dictionary by value", [] { return shown(__ASTFilter_NSDictionary(letters()->mutableCopy(), even)); }, "{b=2}"},
      {"empty dictionary", [] { return shown(__ASTFilter_NSDictionary(dictionary({}), even)); }, "{}"},
      {"no dictionary", [] { return shown(__ASTFilter_NSDictionary(nullptr, even)); }, "null"},
      {"entries",
       [] {
         return shown(
             __ASTFilter_NSDictionary_keysAndValues(mutableDictionary({{"a", 1}, {"b", 9}, {"c", 3}}), ownNumber));
       },
       "{a=1 c=3}"},
      {"no entries", [] { return shown(__ASTFilter_NSDictionary_keysAndValues(dictionary({}), ownNumber)); }, "{}"},
      {"entries of null", [] { return shown(__ASTFilter_NSDictionary_keysAndValues(nullptr, ownNumber)); }, "null"},
      {"set", [] { return shown(__ASTFilter_NSSet(mutableSetOf({1, 2, 3, 4}), even)); }, "(2 4)"},
      {"empty set", [] { return shown(__ASTFilter_NSSet(setOf({}), even)); }, "()"},
      {"no set", [] { return shown(__ASTFilter_NSSet(nullptr, even)); }, "null"},
      {"ordered set", [] { return shown(__ASTFilter_NSOrderedSet(mutableOrdered({4, 3, 2}), even)); }, "<4 2>"},
      {"empty ordered set", [] { return shown(__ASTFilter_NSOrderedSet(ordered({}), even)); }, "<>"},
      {"no ordered set", [] { return shown(__ASTFilter_NSOrderedSet(nullptr, even)); }, "null"},
      {"ordered set with index",
       [] { return shown(__ASTFilter_NSOrderedSet_withIndex(mutableOrdered({7, 8, 9}), evenIndex)); }, "<7 9>"},
      {"empty ordered set with index", [] { return shown(__ASTFilter_NSOrderedSet_withIndex(ordered({}), evenIndex)); },
       "<>"},
      {"no ordered set with index", [] { return shown(__ASTFilter_NSOrderedSet_withIndex(nullptr, evenIndex)); },
       "null"},
  });
}

TEST(Toolkit, FilterGivesTheEntriesUnderKeysThatAreAlsoMethodsOrPaths) {
  const Ref<NSDictionary> entries =
      dictionary({{"count", 1}, {"self", 2}, {"a.b", 3}, {"description", 4}, {"@count", 5}, {"", 6}, {"odd", 7}});
  const Ref<NSDictionary> filtered =
      __ASTFilter_NSDictionary(entries, [](NSNumber* value) { return value->integerValue() < 7; });
  EXPECT_EQ(shown(filtered), "{count=1 self=2 a.b=3 description=4 @count=5 =6}");
}

TEST(Toolkit, FilterOfADictionaryRefusesAKeyThatIsNoString) {
  const Ref<NSDictionary> entries = dictionary({{"a", 1}, {42, 2}});
  EXPECT_THAT([&] { __ASTFilter_NSDictionary(entries, even); }, raises(NSInvalidArgumentException, "the key 42"));
  EXPECT_THAT([&] { __ASTReject_NSDictionary_keysAndValues(entries, never); },
              raises(NSInvalidArgumentException, "the key 42"));
  EXPECT_THAT([&] { __ASTPick_NSDictionary(entries, list({42})); }, raises(NSInvalidArgumentException, "the key 42"));
  EXPECT_EQ(shown(__ASTReject_NSDictionary(entries, even)), "{a=1}") << "a key that is not kept may be anything";
}

TEST(Toolkit, RejectKeepsWhatFails) {
  expectRows({
      {"array", [] { return shown(__ASTReject_NSArray(mutableList({1, 2, 3, 1}), even)); }, "[1 3 1]"},
      {"empty array", [] { return shown(__ASTReject_NSArray(list({}), even)); }, "[]"},
      {"no array", [] { return shown(__ASTReject_NSArray(nullptr, even)); }, "null"},
      {"array with index", [] { return shown(__ASTReject_NSArray_withIndex(mutableList({7, 8, 9}), evenIndex)); },
       "[8]"},
      {"empty array with index", [] { return shown(__ASTReject_NSArray_withIndex(list({}), evenIndex)); }, "[]"},
      {"no array with index", [] { return shown(__ASTReject_NSArray_withIndex(nullptr, evenIndex)); }, "null"},
      {"set", [] { return shown(__ASTReject_NSSet(mutableSetOf({1, 2, 3}), even)); }, "(1 3)"},
      {"empty set", [] { return shown(__ASTReject_NSSet(setOf({}), even)); }, "()"},
      {"no set", [] { return shown(__ASTReject_NSSet(nullptr, even)); }, "null"},
      {"ordered set", [] { return shown(__ASTReject_NSOrderedSet(mutableOrdered({3, 2, 1}), even)); }, "<3 1>"},
      {"empty ordered set", [] { return shown(__ASTReject_NSOrderedSet(ordered({}), even)); }, "<>"},
      {"no ordered set", [] { return shown(__ASTReject_NSOrderedSet(nullptr, even)); }, "null"},
      {"ordered set with index",
       [] { return shown(__ASTReject_NSOrderedSet_withIndex(mutableOrdered({7, 8, 9}), evenIndex)); }, "<8>"},
      {"empty ordered set with index", [] { return shown(__ASTReject_NSOrderedSet_withIndex(ordered({}), evenIndex)); },
       "<>"},
      {"no ordered set with index", [] { return shown(__ASTReject_NSOrderedSet_withIndex(nullptr, evenIndex)); },
       "null"},
      {"dictionary by value", [] { return shown(__ASTReject_NSDictionary(letters()->mutableCopy(), even)); },
       "{a=1 c=3}"},
      {"empty dictionary", [] { return shown(__ASTReject_NSDictionary(dictionary({}), even)); }, "{}"},
      {"no dictionary", [] { return shown(__ASTReject_NSDictionary(nullptr, even)); }, "null"},
      {"entries",
       [] { return shown(__ASTReject_NSDictionary_keysAndValues(mutableDictionary({{"a", 1}, {"b", 9}}), ownNumber)); },
       "{b=9}"},
      {"no entries", [] { return shown(__ASTReject_NSDictionary_keysAndValues(dictionary({}), ownNumber)); }, "{}"},
      {"entries of null", [] { return shown(__ASTReject_NSDictionary_keysAndValues(nullptr, ownNumber)); }, "null"},
  });
}

TEST(Toolkit, WithoutDropsAllThatTheValueEquals) {
  expectRows({
      {"array", [] { return shown(__ASTWithout_NSArray(mutableList({1, 2, 1, 3}), box(1))); }, "[2 3]"},
      {"array without what it lacks", [] { return shown(__ASTWithout_NSArray(list({1, 2}), box(9))); }, "[1 2]"},
      {"array without null", [] { return shown(__ASTWithout_NSArray(list({1, 2}), nullptr)); }, "[1 2]"},
      {"empty array", [] { return shown(__ASTWithout_NSArray(list({}), box(1))); }, "[]"},
      {"no array", [] { return shown(__ASTWithout_NSArray(nullptr, box(1))); }, "null"},
      {"set", [] { return shown(__ASTWithout_NSSet(mutableSetOf({1, 2}), box(1))); }, "(2)"},
      {"set without null", [] { return shown(__ASTWithout_NSSet(setOf({1}), nullptr)); }, "(1)"},
      {"empty set", [] { return shown(__ASTWithout_NSSet(setOf({}), box(1))); }, "()"},
      {"no set", [] { return shown(__ASTWithout_NSSet(nullptr, box(1))); }, "null"},
      {"ordered set", [] { return shown(__ASTWithout_NSOrderedSet(mutableOrdered({3, 1, 2}), box(1))); }, "<3 2>"},
      {"ordered set without null", [] { return shown(__ASTWithout_NSOrderedSet(ordered({1}), nullptr)); }, "<1>"},
      {"empty ordered set", [] { return shown(__ASTWithout_NSOrderedSet(ordered({}), box(1))); }, "<>"},
      {"no ordered set", [] { return shown(__ASTWithout_NSOrderedSet(nullptr, box(1))); }, "null"},
  });
}

TEST(Toolkit, WithoutAsksTheValueNotTheElement) {
  const Ref<Item> element = make<Item>(1), value = make<Item>(1);
  int ofElement = 0, ofValue = 0;
  const Ref<NSArray> array = list({element});
  const Ref<NSSet> set = setOf({element});
  const Ref<NSOrderedSet> orderedSet = ordered({element});
  element->onEqual = [&] { ++ofElement; };
  value->onEqual = [&] { ++ofValue; };
  EXPECT_EQ(__ASTWithout_NSArray(array, value)->count(), 0u);
  EXPECT_EQ(__ASTWithout_NSSet(set, value)->count(), 0u);
  EXPECT_EQ(__ASTWithout_NSOrderedSet(orderedSet, value)->count(), 0u);
  EXPECT_EQ(ofElement, 0);
  EXPECT_EQ(ofValue, 3);
}

TEST(Toolkit, FindGivesTheFirstThatPasses) {
  expectRows({
      {"array", [] { return shown(__ASTFind_NSArray(list({1, 2, 4}), even)); }, "2"},
      {"array with none", [] { return shown(__ASTFind_NSArray(list({1, 3}), even)); }, "null"},
      {"empty array", [] { return shown(__ASTFind_NSArray(list({}), even)); }, "null"},
      {"no array", [] { return shown(__ASTFind_NSArray(nullptr, even)); }, "null"},
      {"array with index",
       [] { return shown(__ASTFind_NSArray_withIndex(list({7, 8}), [](NSObject*, uint64_t i) { return i == 1; })); },
       "8"},
      {"array with index, none", [] { return shown(__ASTFind_NSArray_withIndex(list({7, 8}), never)); }, "null"},
      {"empty array with index", [] { return shown(__ASTFind_NSArray_withIndex(list({}), evenIndex)); }, "null"},
      {"no array with index", [] { return shown(__ASTFind_NSArray_withIndex(nullptr, evenIndex)); }, "null"},
      {"dictionary: the value, not the key", [] { return shown(__ASTFind_NSDictionary(letters(), even)); }, "2"},
      {"dictionary with none", [] { return shown(__ASTFind_NSDictionary(letters(), never)); }, "null"},
      {"empty dictionary", [] { return shown(__ASTFind_NSDictionary(dictionary({}), even)); }, "null"},
      {"no dictionary", [] { return shown(__ASTFind_NSDictionary(nullptr, even)); }, "null"},
      {"entries: the value, not the key",
       [] {
         return shown(__ASTFind_NSDictionary_keysAndValues(dictionary({{"a", 9}, {"b", 2}, {"c", 3}}), ownNumber));
       },
       "2"},
      {"entries with none", [] { return shown(__ASTFind_NSDictionary_keysAndValues(letters(), never)); }, "null"},
      {"no entries", [] { return shown(__ASTFind_NSDictionary_keysAndValues(dictionary({}), ownNumber)); }, "null"},
      {"entries of null", [] { return shown(__ASTFind_NSDictionary_keysAndValues(nullptr, ownNumber)); }, "null"},
      {"anything", [] { return shown(__ASTFind_NSFastEnumeration(setOf({1, 2, 4}), even)); }, "2"},
      {"anything with none", [] { return shown(__ASTFind_NSFastEnumeration(setOf({1, 3}), even)); }, "null"},
      {"anything empty", [] { return shown(__ASTFind_NSFastEnumeration(setOf({}), even)); }, "null"},
      {"nothing", [] { return shown(__ASTFind_NSFastEnumeration(nullptr, even)); }, "null"},
      {"it stops where it finds",
       [] {
         Record asked;
         __ASTFind_NSDictionary(letters(), [&](NSNumber* n) { return asked.add(shown(n)), even(n); });
         __ASTFind_NSArray(list({1, 2, 3}), [&](NSNumber* n) { return asked.add(shown(n)), even(n); });
         return asked.text();
       },
       "1 2 1 2"},
  });
}

TEST(Toolkit, FlattenUnpacksOneLevel) {
  expectRows({
      {"nested arrays", [] { return shown(__ASTFlatten_NSArray(list({1, list({2, list({3})})}))); },
       "mutable [1 2 [3]]"},
      {"mutable ones and empty ones", [] { return shown(__ASTFlatten_NSArray(list({mutableList({1}), list({}), 2}))); },
       "mutable [1 2]"},
      {"sets are elements", [] { return shown(__ASTFlatten_NSArray(list({setOf({1})}))); }, "mutable [(1)]"},
      {"empty array", [] { return shown(__ASTFlatten_NSArray(list({}))); }, "mutable []"},
      {"no array", [] { return shown(__ASTFlatten_NSArray(nullptr)); }, "mutable []"},
  });
}

TEST(Toolkit, HeadAndTailPart) {
  expectRows({
      {"head of an array", [] { return shown(__ASTHead_NSArray(list({1, 2}))); }, "1"},
      {"head of an empty array", [] { return shown(__ASTHead_NSArray(list({}))); }, "null"},
      {"head of no array", [] { return shown(__ASTHead_NSArray(nullptr)); }, "null"},
      {"head of an ordered set", [] { return shown(__ASTHead_NSOrderedSet(ordered({1, 2}))); }, "1"},
      {"head of an empty ordered set", [] { return shown(__ASTHead_NSOrderedSet(ordered({}))); }, "null"},
      {"head of no ordered set", [] { return shown(__ASTHead_NSOrderedSet(nullptr)); }, "null"},
      {"tail of an array", [] { return shown(__ASTTail_NSArray(mutableList({1, 2, 1}))); }, "[2 1]"},
      {"tail of two", [] { return shown(__ASTTail_NSArray(list({1, 2}))); }, "[2]"},
      {"tail of one", [] { return shown(__ASTTail_NSArray(mutableList({1}))); }, "[]"},
      {"tail of an empty array", [] { return shown(__ASTTail_NSArray(mutableList({}))); }, "[]"},
      {"tail of no array", [] { return shown(__ASTTail_NSArray(nullptr)); }, "null"},
      {"tail of an ordered set", [] { return shown(__ASTTail_NSOrderedSet(mutableOrdered({3, 1, 2}))); }, "<1 2>"},
      {"tail of an ordered set of one", [] { return shown(__ASTTail_NSOrderedSet(mutableOrdered({3}))); }, "<>"},
      {"tail of an empty ordered set", [] { return shown(__ASTTail_NSOrderedSet(mutableOrdered({}))); }, "<>"},
      {"tail of no ordered set", [] { return shown(__ASTTail_NSOrderedSet(nullptr)); }, "null"},
  });
}

TEST(Toolkit, GroupByKeepsAllInImmutableArrays) {
  static const Ref<NSArray> words = list({"one", "two", "three"});
  static const Ref<NSDictionary> byNumber = dictionary({{"1", "one"}, {"2", "two"}, {"3", "three"}});
  expectRows({
      {"anything", [] { return shown(__ASTGroupBy_NSFastEnumeration_block(list({1, 2, 3, 4}), parity)); },
       "mutable {odd=[1 3] even=[2 4]}"},
      {"a null key drops",
       [] { return shown(__ASTGroupBy_NSFastEnumeration_block(list({1, 2, 3, 4}), parityBelowThree)); },
       "mutable {odd=[1] even=[2]}"},
      {"anything empty", [] { return shown(__ASTGroupBy_NSFastEnumeration_block(list({}), parity)); }, "mutable {}"},
      {"nothing", [] { return shown(__ASTGroupBy_NSFastEnumeration_block(nullptr, parity)); }, "null"},
      {"by key path", [] { return shown(__ASTGroupBy_NSFastEnumeration_keyPath(words, "length"_ns)); },
       "mutable {3=[one two] 5=[three]}"},
      {"empty by key path", [] { return shown(__ASTGroupBy_NSFastEnumeration_keyPath(list({}), "length"_ns)); },
       "mutable {}"},
      {"null by key path", [] { return shown(__ASTGroupBy_NSFastEnumeration_keyPath(nullptr, "length"_ns)); }, "null"},
      {"values", [] { return shown(__ASTGroupBy_NSDictionary_block(letters(), parity)); },
       "mutable {odd=[1 3] even=[2]}"},
      {"no values", [] { return shown(__ASTGroupBy_NSDictionary_block(dictionary({}), parity)); }, "mutable {}"},
      {"values of null", [] { return shown(__ASTGroupBy_NSDictionary_block(nullptr, parity)); }, "null"},
      {"values by key path", [] { return shown(__ASTGroupBy_NSDictionary_keyPath(byNumber, "length"_ns)); },
       "mutable {3=[one two] 5=[three]}"},
      {"no values by key path", [] { return shown(__ASTGroupBy_NSDictionary_keyPath(dictionary({}), "length"_ns)); },
       "mutable {}"},
      {"values of null by key path", [] { return shown(__ASTGroupBy_NSDictionary_keyPath(nullptr, "length"_ns)); },
       "null"},
      {"elements that are arrays stay whole",
       [] {
         return shown(__ASTGroupBy_NSFastEnumeration_block(list({mutableList({1}), mutableList({2})}),
                                                           [](NSObject*) -> Ref<NSObject> { return "all"_ns; }));
       },
       "mutable {all=[mutable [1] mutable [2]]}"},
  });
}

TEST(Toolkit, IndexByLetsTheLastWin) {
  static const Ref<NSArray> words = list({"one", "two", "three"});
  static const Ref<NSDictionary> byNumber = dictionary({{"1", "one"}, {"2", "two"}, {"3", "three"}});
  expectRows({
      {"anything", [] { return shown(__ASTIndexBy_NSFastEnumeration_block(list({1, 2, 3, 4}), parity)); },
       "mutable {odd=3 even=4}"},
      {"a null key drops",
       [] { return shown(__ASTIndexBy_NSFastEnumeration_block(list({1, 2, 3, 4}), parityBelowThree)); },
       "mutable {odd=1 even=2}"},
      {"anything empty", [] { return shown(__ASTIndexBy_NSFastEnumeration_block(list({}), parity)); }, "mutable {}"},
      {"nothing", [] { return shown(__ASTIndexBy_NSFastEnumeration_block(nullptr, parity)); }, "null"},
      {"by key path", [] { return shown(__ASTIndexBy_NSFastEnumeration_keyPath(words, "length"_ns)); },
       "mutable {3=two 5=three}"},
      {"empty by key path", [] { return shown(__ASTIndexBy_NSFastEnumeration_keyPath(list({}), "length"_ns)); },
       "mutable {}"},
      {"null by key path", [] { return shown(__ASTIndexBy_NSFastEnumeration_keyPath(nullptr, "length"_ns)); }, "null"},
      {"values", [] { return shown(__ASTIndexBy_NSDictionary_block(letters(), parity)); }, "mutable {odd=3 even=2}"},
      {"no values", [] { return shown(__ASTIndexBy_NSDictionary_block(dictionary({}), parity)); }, "mutable {}"},
      {"values of null", [] { return shown(__ASTIndexBy_NSDictionary_block(nullptr, parity)); }, "null"},
      {"values by key path", [] { return shown(__ASTIndexBy_NSDictionary_keyPath(byNumber, "length"_ns)); },
       "mutable {3=two 5=three}"},
      {"no values by key path", [] { return shown(__ASTIndexBy_NSDictionary_keyPath(dictionary({}), "length"_ns)); },
       "mutable {}"},
      {"values of null by key path", [] { return shown(__ASTIndexBy_NSDictionary_keyPath(nullptr, "length"_ns)); },
       "null"},
  });
}

TEST(Toolkit, IndexOfGivesTheFirstEqual) {
  expectRows({
      {"array", [] { return shown(__ASTIndexOf_NSArray(list({7, 8, 8}), box(8))); }, "1"},
      {"absent from an array", [] { return shown(__ASTIndexOf_NSArray(list({7}), box(8))); }, "NSNotFound"},
      {"empty array", [] { return shown(__ASTIndexOf_NSArray(list({}), box(8))); }, "NSNotFound"},
      {"null in an array", [] { return shown(__ASTIndexOf_NSArray(list({7}), nullptr)); }, "NSNotFound"},
      {"no array", [] { return shown(__ASTIndexOf_NSArray(nullptr, box(8))); }, "0"},
      {"ordered set", [] { return shown(__ASTIndexOf_NSOrderedSet(ordered({7, 8}), box(8))); }, "1"},
      {"absent from an ordered set", [] { return shown(__ASTIndexOf_NSOrderedSet(ordered({7}), box(8))); },
       "NSNotFound"},
      {"empty ordered set", [] { return shown(__ASTIndexOf_NSOrderedSet(ordered({}), box(8))); }, "NSNotFound"},
      {"no ordered set", [] { return shown(__ASTIndexOf_NSOrderedSet(nullptr, box(8))); }, "0"},
      {"anything", [] { return shown(__ASTIndexOf_NSFastEnumeration(numbersTo(40), box(40))); }, "39"},
      {"absent from anything", [] { return shown(__ASTIndexOf_NSFastEnumeration(setOf({7}), box(8))); }, "NSNotFound"},
      {"anything empty", [] { return shown(__ASTIndexOf_NSFastEnumeration(setOf({}), box(8))); }, "NSNotFound"},
      {"null in anything", [] { return shown(__ASTIndexOf_NSFastEnumeration(setOf({7}), nullptr)); }, "NSNotFound"},
      {"nothing", [] { return shown(__ASTIndexOf_NSFastEnumeration(nullptr, box(8))); }, "NSNotFound"},
  });
}

TEST(Toolkit, IndexOfAsksTheObjectNotTheElement) {
  const Ref<Item> element = make<Item>(1), wanted = make<Item>(1);
  const Ref<NSArray> array = list({element});
  int ofElement = 0, ofWanted = 0;
  element->onEqual = [&] { ++ofElement; };
  wanted->onEqual = [&] { ++ofWanted; };
  EXPECT_EQ(__ASTIndexOf_NSFastEnumeration(array, wanted), 0u);
  EXPECT_EQ(__ASTIndexOf_NSArray(array, wanted), 0u);
  EXPECT_EQ(ofElement, 0);
  EXPECT_EQ(ofWanted, 2);
}

TEST(Toolkit, IntersectionKeepsWhatBothHold) {
  static const Ref<NSMutableArray> array = mutableList({1, 2, 2, 3, 1});
  static const Ref<NSMutableSet> set = mutableSetOf({1, 2, 3});
  static const Ref<NSMutableOrderedSet> orderedSet = mutableOrdered({3, 1, 2});
  expectRows({
      {"order and duplicates of the first", [] { return shown(__ASTIntersection_NSArray(array, list({1, 2, 9}))); },
       "[1 2 2 1]"},
      {"with an empty array", [] { return shown(__ASTIntersection_NSArray(array, list({}))); }, "[]"},
      {"of an empty array", [] { return shown(__ASTIntersection_NSArray(list({}), array)); }, "[]"},
      {"with no array", [] { return whichOf(__ASTIntersection_NSArray(array, nullptr), array, nullptr); },
       "the first itself"},
      {"of no array", [] { return whichOf(__ASTIntersection_NSArray(nullptr, array), nullptr, array); },
       "the second itself"},
      {"of no arrays", [] { return shown(__ASTIntersection_NSArray(nullptr, nullptr)); }, "null"},
      {"sets", [] { return shown(__ASTIntersection_NSSet(set, setOf({3, 1, 9}))); }, "(1 3)"},
      {"with an empty set", [] { return shown(__ASTIntersection_NSSet(set, setOf({}))); }, "()"},
      {"with no set", [] { return whichOf(__ASTIntersection_NSSet(set, nullptr), set, nullptr); }, "the first itself"},
      {"of no set", [] { return whichOf(__ASTIntersection_NSSet(nullptr, set), nullptr, set); }, "the second itself"},
      {"of no sets", [] { return shown(__ASTIntersection_NSSet(nullptr, nullptr)); }, "null"},
      {"ordered sets", [] { return shown(__ASTIntersection_NSOrderedSet(orderedSet, ordered({2, 3, 9}))); }, "<3 2>"},
      {"with an empty ordered set", [] { return shown(__ASTIntersection_NSOrderedSet(orderedSet, ordered({}))); },
       "<>"},
      {"with no ordered set",
       [] { return whichOf(__ASTIntersection_NSOrderedSet(orderedSet, nullptr), orderedSet, nullptr); },
       "the first itself"},
      {"of no ordered set",
       [] { return whichOf(__ASTIntersection_NSOrderedSet(nullptr, orderedSet), nullptr, orderedSet); },
       "the second itself"},
      {"of no ordered sets", [] { return shown(__ASTIntersection_NSOrderedSet(nullptr, nullptr)); }, "null"},
      {"the arguments stay as they were", [] { return shown(array) + shown(set) + shown(orderedSet); },
       "mutable [1 2 2 3 1]mutable (1 2 3)mutable <3 1 2>"},
  });
}

TEST(Toolkit, UnionAddsWhatTheFirstLacks) {
  static const Ref<NSMutableArray> array = mutableList({1, 1, 2});
  static const Ref<NSMutableSet> set = mutableSetOf({1, 2});
  static const Ref<NSMutableOrderedSet> orderedSet = mutableOrdered({2, 1});
  expectRows({
      {"all duplicates stay", [] { return shown(__ASTUnion_NSArray(array, list({2, 3, 3}))); }, "[1 1 2 3 3]"},
      {"with an empty array", [] { return shown(__ASTUnion_NSArray(array, list({}))); }, "[1 1 2]"},
      {"of an empty array", [] { return shown(__ASTUnion_NSArray(list({}), array)); }, "[1 1 2]"},
      {"of no array", [] { return whichOf(__ASTUnion_NSArray(nullptr, array), nullptr, array); }, "the second itself"},
      {"with no array", [] { return whichOf(__ASTUnion_NSArray(array, nullptr), array, nullptr); }, "the first itself"},
      {"of no arrays", [] { return shown(__ASTUnion_NSArray(nullptr, nullptr)); }, "null"},
      {"sets", [] { return shown(__ASTUnion_NSSet(set, setOf({2, 3}))); }, "(1 2 3)"},
      {"of empty sets", [] { return shown(__ASTUnion_NSSet(setOf({}), setOf({}))); }, "()"},
      {"of no set", [] { return whichOf(__ASTUnion_NSSet(nullptr, set), nullptr, set); }, "the second itself"},
      {"with no set", [] { return whichOf(__ASTUnion_NSSet(set, nullptr), set, nullptr); }, "the first itself"},
      {"of no sets", [] { return shown(__ASTUnion_NSSet(nullptr, nullptr)); }, "null"},
      {"ordered sets: mutable", [] { return shown(__ASTUnion_NSOrderedSet(ordered({2, 1}), ordered({3, 2}))); },
       "mutable <2 1 3>"},
      {"of empty ordered sets", [] { return shown(__ASTUnion_NSOrderedSet(ordered({}), ordered({}))); }, "mutable <>"},
      {"of no ordered set", [] { return whichOf(__ASTUnion_NSOrderedSet(nullptr, orderedSet), nullptr, orderedSet); },
       "the second itself"},
      {"with no ordered set", [] { return whichOf(__ASTUnion_NSOrderedSet(orderedSet, nullptr), orderedSet, nullptr); },
       "the first itself"},
      {"of no ordered sets", [] { return shown(__ASTUnion_NSOrderedSet(nullptr, nullptr)); }, "null"},
      {"the arguments stay as they were", [] { return shown(array) + shown(set) + shown(orderedSet); },
       "mutable [1 1 2]mutable (1 2)mutable <2 1>"},
  });
}

TEST(Toolkit, MapDropsNullAndDoesNotRenumber) {
  constexpr auto halved = [](NSNumber* n) -> Ref<NSObject> { return box(n->integerValue() / 2); };
  static constexpr auto half = halved;
  static constexpr auto halfIndex = [](NSObject*, uint64_t index) -> Ref<NSObject> { return box(index / 2); };
  expectRows({
      {"array", [] { return shown(__ASTMap_NSArray(list({1, 2, 3}), tenfoldButTwo)); }, "mutable [10 30]"},
      {"empty array", [] { return shown(__ASTMap_NSArray(list({}), tenfoldButTwo)); }, "mutable []"},
      {"no array", [] { return shown(__ASTMap_NSArray(nullptr, tenfoldButTwo)); }, "null"},
      {"array with index", [] { return shown(__ASTMap_NSArray_withIndex(list({1, 2, 3}), placedButTwo)); },
       "mutable [0:1 2:3]"},
      {"empty array with index", [] { return shown(__ASTMap_NSArray_withIndex(list({}), placedButTwo)); },
       "mutable []"},
      {"no array with index", [] { return shown(__ASTMap_NSArray_withIndex(nullptr, placedButTwo)); }, "null"},
      {"values", [] { return shown(__ASTMap_NSDictionary(letters(), tenfoldButTwo)); }, "mutable {a=10 c=30}"},
      {"no values", [] { return shown(__ASTMap_NSDictionary(dictionary({}), tenfoldButTwo)); }, "mutable {}"},
      {"values of null", [] { return shown(__ASTMap_NSDictionary(nullptr, tenfoldButTwo)); }, "null"},
      {"entries", [] { return shown(__ASTMap_NSDictionary_keysAndValues(letters(), entryButTwo)); },
       "mutable {a=a:1 c=c:3}"},
      {"no entries", [] { return shown(__ASTMap_NSDictionary_keysAndValues(dictionary({}), entryButTwo)); },
       "mutable {}"},
      {"entries of null", [] { return shown(__ASTMap_NSDictionary_keysAndValues(nullptr, entryButTwo)); }, "null"},
      {"entries to an array", [] { return shown(__ASTMap_NSDictionary_keysAndValues_toArray(letters(), entryButTwo)); },
       "mutable [a:1 c:3]"},
      {"no entries to an array",
       [] { return shown(__ASTMap_NSDictionary_keysAndValues_toArray(dictionary({}), entryButTwo)); }, "mutable []"},
      {"entries of null to an array",
       [] { return shown(__ASTMap_NSDictionary_keysAndValues_toArray(nullptr, entryButTwo)); }, "null"},
      {"set", [] { return shown(__ASTMap_NSSet(setOf({1, 2, 3}), tenfoldButTwo)); }, "mutable (10 30)"},
      {"equal results in a set", [] { return shown(__ASTMap_NSSet(setOf({2, 3, 4, 5}), half)); }, "mutable (1 2)"},
      {"empty set", [] { return shown(__ASTMap_NSSet(setOf({}), half)); }, "mutable ()"},
      {"no set", [] { return shown(__ASTMap_NSSet(nullptr, half)); }, "null"},
      {"ordered set", [] { return shown(__ASTMap_NSOrderedSet(ordered({3, 2, 1}), tenfoldButTwo)); },
       "mutable <30 10>"},
      {"the first place of equal results", [] { return shown(__ASTMap_NSOrderedSet(ordered({4, 2, 5, 3}), half)); },
       "mutable <2 1>"},
      {"empty ordered set", [] { return shown(__ASTMap_NSOrderedSet(ordered({}), half)); }, "mutable <>"},
      {"no ordered set", [] { return shown(__ASTMap_NSOrderedSet(nullptr, half)); }, "null"},
      {"ordered set with index",
       [] { return shown(__ASTMap_NSOrderedSet_withIndex(ordered({1, 2, 3}), placedButTwo)); }, "mutable <0:1 2:3>"},
      {"equal results with index", [] { return shown(__ASTMap_NSOrderedSet_withIndex(ordered({7, 8, 9}), halfIndex)); },
       "mutable <0 1>"},
      {"empty ordered set with index", [] { return shown(__ASTMap_NSOrderedSet_withIndex(ordered({}), halfIndex)); },
       "mutable <>"},
      {"no ordered set with index", [] { return shown(__ASTMap_NSOrderedSet_withIndex(nullptr, halfIndex)); }, "null"},
      {"anything", [] { return shown(__ASTMap_NSFastEnumeration(setOf({1, 2, 3}), tenfoldButTwo)); },
       "mutable [10 30]"},
      {"anything empty", [] { return shown(__ASTMap_NSFastEnumeration(setOf({}), tenfoldButTwo)); }, "mutable []"},
      {"nothing", [] { return shown(__ASTMap_NSFastEnumeration(nullptr, tenfoldButTwo)); }, "null"},
      {"anything with index",
       [] { return shown(__ASTMap_NSFastEnumeration_withIndex(setOf({1, 2, 3}), placedButTwo)); }, "mutable [0:1 2:3]"},
      {"anything empty with index", [] { return shown(__ASTMap_NSFastEnumeration_withIndex(setOf({}), placedButTwo)); },
       "mutable []"},
      {"nothing with index", [] { return shown(__ASTMap_NSFastEnumeration_withIndex(nullptr, placedButTwo)); }, "null"},
  });
}

TEST(Toolkit, MinAndMaxTakeTheLastOfEqualOnes) {
  static const Ref<NSArray> words = list({"bee", "ant", "bat", "ape"});
  static const Ref<NSDictionary> wordsByNumber = dictionary({{"1", "bee"}, {"2", "ant"}, {"3", "bat"}, {"4", "ape"}});
  static const Ref<NSDictionary> one = dictionary({{"a", 1}});
  expectRows({
      {"least by message", [] { return shown(__ASTMin_NSFastEnumeration(list({2, 1, 3}))); }, "1"},
      {"least of one", [] { return shown(__ASTMin_NSFastEnumeration(list({make<NSObject>()})) != nullptr); }, "YES"},
      {"least of none", [] { return shown(__ASTMin_NSFastEnumeration(list({}))); }, "null"},
      {"least of nothing", [] { return shown(__ASTMin_NSFastEnumeration(nullptr)); }, "null"},
      {"least by comparator", [] { return shown(__ASTMin_NSFastEnumeration_comparator(words, byInitial)); }, "ape"},
      {"least of one by comparator",
       [] { return shown(__ASTMin_NSFastEnumeration_comparator(list({1}), unaskedComparator)); }, "1"},
      {"least of none by comparator",
       [] { return shown(__ASTMin_NSFastEnumeration_comparator(list({}), unaskedComparator)); }, "null"},
      {"least of nothing by comparator",
       [] { return shown(__ASTMin_NSFastEnumeration_comparator(nullptr, unaskedComparator)); }, "null"},
      {"greatest by message", [] { return shown(__ASTMax_NSFastEnumeration(list({2, 3, 1}))); }, "3"},
      {"greatest of none", [] { return shown(__ASTMax_NSFastEnumeration(list({}))); }, "null"},
      {"greatest of nothing", [] { return shown(__ASTMax_NSFastEnumeration(nullptr)); }, "null"},
      {"greatest by comparator", [] { return shown(__ASTMax_NSFastEnumeration_comparator(words, byInitial)); }, "bat"},
      {"greatest of one by comparator",
       [] { return shown(__ASTMax_NSFastEnumeration_comparator(list({1}), unaskedComparator)); }, "1"},
      {"greatest of none by comparator",
       [] { return shown(__ASTMax_NSFastEnumeration_comparator(list({}), unaskedComparator)); }, "null"},
      {"greatest of nothing by comparator",
       [] { return shown(__ASTMax_NSFastEnumeration_comparator(nullptr, unaskedComparator)); }, "null"},
      {"least value", [] { return shown(__ASTMin_NSDictionary(letters())); }, "1"},
      {"least of no value", [] { return shown(__ASTMin_NSDictionary(dictionary({}))); }, "null"},
      {"least of no dictionary", [] { return shown(__ASTMin_NSDictionary(nullptr)); }, "null"},
      {"least value by comparator", [] { return shown(__ASTMin_NSDictionary_comparator(wordsByNumber, byInitial)); },
       "ape"},
      {"least of one value", [] { return shown(__ASTMin_NSDictionary_comparator(one, unaskedComparator)); }, "1"},
      {"least of no value by comparator",
       [] { return shown(__ASTMin_NSDictionary_comparator(dictionary({}), unaskedComparator)); }, "null"},
      {"least of no dictionary by comparator",
       [] { return shown(__ASTMin_NSDictionary_comparator(nullptr, unaskedComparator)); }, "null"},
      {"greatest value", [] { return shown(__ASTMax_NSDictionary(letters())); }, "3"},
      {"greatest of no value", [] { return shown(__ASTMax_NSDictionary(dictionary({}))); }, "null"},
      {"greatest of no dictionary", [] { return shown(__ASTMax_NSDictionary(nullptr)); }, "null"},
      {"greatest value by comparator", [] { return shown(__ASTMax_NSDictionary_comparator(wordsByNumber, byInitial)); },
       "bat"},
      {"greatest of one value", [] { return shown(__ASTMax_NSDictionary_comparator(one, unaskedComparator)); }, "1"},
      {"greatest of no value by comparator",
       [] { return shown(__ASTMax_NSDictionary_comparator(dictionary({}), unaskedComparator)); }, "null"},
      {"greatest of no dictionary by comparator",
       [] { return shown(__ASTMax_NSDictionary_comparator(nullptr, unaskedComparator)); }, "null"},
  });
  const Ref<Item> first = make<Item>(1), second = make<Item>(1);
  const auto equal = [](NSObject*, NSObject*) { return NSOrderedSame; };
  EXPECT_EQ(__ASTMin_NSFastEnumeration_comparator(list({first, second}), equal), second);
  EXPECT_EQ(__ASTMax_NSFastEnumeration_comparator(list({first, second}), equal), second);
}

TEST(Toolkit, MinAndMaxCompareTheMemoWithTheElement) {
  Record asked;
  const auto compare = [&](NSNumber* a, NSNumber* b) {
    asked.add(shown(a) + "<" + shown(b));
    return a->compare(b);
  };
  __ASTMin_NSFastEnumeration_comparator(list({2, 1, 3, 0}), compare);
  EXPECT_EQ(asked.text(), "2<1 1<3 1<0");
}

namespace {
/// Answers `compare:` as a number, and says who was asked.
class Weight : public NSObject {
  QF_CLASS(Weight, NSObject)
 public:
  Weight(int grams, Record* asked) : grams_(grams), asked_(asked) {}
  NSComparisonResult compare(Weight* other) {
    asked_->add(std::to_string(grams_) + "<" + std::to_string(other->grams_));
    return grams_ < other->grams_ ? NSOrderedAscending : grams_ > other->grams_ ? NSOrderedDescending : NSOrderedSame;
  }
  Ref<NSString> description() const override { return box(std::to_string(grams_) + "g"); }

 private:
  const int grams_;
  Record* asked_;
};
Class* Weight::classObject() {
  static Class* const cls = ClassBuilder<Weight>("Weight").method<&Weight::compare>("compare:"_sel).build();
  return cls;
}
}  // namespace

TEST(Toolkit, WithoutAComparatorTheFirstIsSentCompareWithTheSecond) {
  Record asked;
  const auto weights = [&] { return list({make<Weight>(2, &asked), make<Weight>(1, &asked)}); };
  const auto byName = [&] { return dictionary({{"a", make<Weight>(2, &asked)}, {"b", make<Weight>(1, &asked)}}); };
  EXPECT_EQ(shown(__ASTMin_NSFastEnumeration(weights())), "1g");
  EXPECT_EQ(shown(__ASTMax_NSFastEnumeration(weights())), "2g");
  EXPECT_EQ(shown(__ASTMin_NSDictionary(byName())), "1g");
  EXPECT_EQ(shown(__ASTMax_NSDictionary(byName())), "2g");
  EXPECT_EQ(asked.text(), "2<1 2<1 2<1 2<1");
  EXPECT_EQ(shown(__ASTSort_NSArray(weights())), "[1g 2g]");
  EXPECT_EQ(shown(__ASTSort_NSOrderedSet(NSOrderedSet::orderedSetWithArray(weights()))), "<1g 2g>");
  EXPECT_THAT([] { __ASTMin_NSFastEnumeration(list({make<NSObject>(), make<NSObject>()})); },
              raises(NSInvalidArgumentException, "compare:"));
}

TEST(Toolkit, NegateAnswersTheOpposite) {
  const auto no = __ASTNegate_id(even);
  EXPECT_FALSE(no(box(2)));
  EXPECT_TRUE(no(box(3)));
  const auto noEntry = __ASTNegate_id_id(ownNumber);
  EXPECT_FALSE(noEntry("a"_ns, box(1)));
  EXPECT_TRUE(noEntry("a"_ns, box(2)));
  const auto noIndex = __ASTNegate_id_NSUInteger(evenIndex);
  EXPECT_FALSE(noIndex("a"_ns, 0));
  EXPECT_TRUE(noIndex("a"_ns, 1));
}

TEST(Toolkit, NegateKeepsItsPredicate) {
  const LeakGuard guard;
  Weak<Item> weak;
  {
    Ref<Item> kept = make<Item>(1);
    weak = kept.get();
    const auto is = [kept](NSObject* e, auto...) { return e == kept; };
    const Block<bool(NSObject*)> one = __ASTNegate_id(is);
    const Block<bool(NSObject*, NSObject*)> two = __ASTNegate_id_id(is);
    const Block<bool(NSObject*, uint64_t)> three = __ASTNegate_id_NSUInteger(is);
    EXPECT_FALSE(one(kept));
    EXPECT_FALSE(two(kept, nullptr));
    EXPECT_FALSE(three(kept, 0));
  }
  EXPECT_FALSE(weak.lock());
}

TEST(Toolkit, PickTakesTheListedKeys) {
  expectRows({
      {"keys of an array", [] { return shown(__ASTPick_NSDictionary(letters(), list({"c", "a"}))); }, "{a=1 c=3}"},
      {"keys of a set", [] { return shown(__ASTPick_NSDictionary(letters(), setOf({"b"}))); }, "{b=2}"},
      {"keys of an ordered set", [] { return shown(__ASTPick_NSDictionary(letters(), ordered({"b"}))); }, "{b=2}"},
      {"of a mutable one, immutable",
       [] { return shown(__ASTPick_NSDictionary(letters()->mutableCopy(), list({"a"}))); }, "{a=1}"},
      {"absent keys are missing", [] { return shown(__ASTPick_NSDictionary(letters(), list({"z", "b"}))); }, "{b=2}"},
      {"no keys in the list", [] { return shown(__ASTPick_NSDictionary(letters(), list({}))); }, "{}"},
      {"no list of keys", [] { return shown(__ASTPick_NSDictionary(letters(), nullptr)); }, "{}"},
      {"an empty dictionary", [] { return shown(__ASTPick_NSDictionary(dictionary({}), list({"a"}))); }, "{}"},
      {"no dictionary", [] { return shown(__ASTPick_NSDictionary(nullptr, list({"a"}))); }, "null"},
  });
}

TEST(Toolkit, PluckReadsAKeyPathAndDropsNull) {
  static const auto folders = [] {
    return list({dictionary({{"name", "a"}, {"top", dictionary({{"name", "x"}})}}), dictionary({{"size", 1}}),
                 dictionary({{"name", "b"}})});
  };
  expectRows({
      {"anything", [] { return shown(__ASTPluck_NSFastEnumeration(folders(), "name"_ns)); }, "mutable [a b]"},
      {"a path of two keys", [] { return shown(__ASTPluck_NSFastEnumeration(folders(), "top.name"_ns)); },
       "mutable [x]"},
      {"anything empty", [] { return shown(__ASTPluck_NSFastEnumeration(list({}), "name"_ns)); }, "mutable []"},
      {"nothing", [] { return shown(__ASTPluck_NSFastEnumeration(nullptr, "name"_ns)); }, "null"},
      {"a dictionary keeps its keys",
       [] {
         return shown(__ASTPluck_NSDictionary(
             dictionary({{"1", dictionary({{"name", "a"}})}, {"2", dictionary({{"size", 1}})}}), "name"_ns));
       },
       "mutable {1=a}"},
      {"an empty dictionary", [] { return shown(__ASTPluck_NSDictionary(dictionary({}), "name"_ns)); }, "mutable {}"},
      {"no dictionary", [] { return shown(__ASTPluck_NSDictionary(nullptr, "name"_ns)); }, "null"},
  });
}

TEST(Toolkit, ReduceCarriesItsMemoOn) {
  expectRows({
      {"from the first element", [] { return shown(__ASTReduce_NSFastEnumeration_block(list({1, 2, 3}), bracket)); },
       "((1 2) 3)"},
      {"of one element", [] { return shown(__ASTReduce_NSFastEnumeration_block(list({1}), unaskedReducer)); }, "1"},
      {"of none", [] { return shown(__ASTReduce_NSFastEnumeration_block(list({}), unaskedReducer)); }, "null"},
      {"of nothing", [] { return shown(__ASTReduce_NSFastEnumeration_block(nullptr, unaskedReducer)); }, "null"},
      {"from a memo", [] { return shown(__ASTReduce_NSFastEnumeration_memo_block(list({1, 2}), "m"_ns, bracket)); },
       "((m 1) 2)"},
      {"from no memo", [] { return shown(__ASTReduce_NSFastEnumeration_memo_block(list({1}), nullptr, bracket)); },
       "(null 1)"},
      {"of none, the memo",
       [] { return shown(__ASTReduce_NSFastEnumeration_memo_block(list({}), "m"_ns, unaskedReducer)); }, "m"},
      {"of nothing, the memo",
       [] { return shown(__ASTReduce_NSFastEnumeration_memo_block(nullptr, "m"_ns, unaskedReducer)); }, "m"},
      {"a null memo is carried on",
       [] {
         return shown(__ASTReduce_NSFastEnumeration_memo_block(
             list({1, 2, 3}), "m"_ns, [](NSObject* memo, NSNumber* n) -> Ref<NSObject> {
               return n->integerValue() == 2 ? nullptr : bracket(memo, n);
             }));
       },
       "(null 3)"},
      {"a null result", [] { return shown(__ASTReduce_NSFastEnumeration_block(list({1, 2}), toNothing)); }, "null"},
      {"a null memo is not a missing one",
       [] {
         return shown(
             __ASTReduce_NSFastEnumeration_block(list({1, 2, 3}), [](NSObject* memo, NSNumber* n) -> Ref<NSObject> {
               return n->integerValue() == 2 ? nullptr : bracket(memo, n);
             }));
       },
       "(null 3)"},
      {"values", [] { return shown(__ASTReduce_NSDictionary_block(letters(), bracket)); }, "((1 2) 3)"},
      {"one value", [] { return shown(__ASTReduce_NSDictionary_block(dictionary({{"a", 1}}), unaskedReducer)); }, "1"},
      {"no values", [] { return shown(__ASTReduce_NSDictionary_block(dictionary({}), unaskedReducer)); }, "null"},
      {"values of null", [] { return shown(__ASTReduce_NSDictionary_block(nullptr, unaskedReducer)); }, "null"},
      {"values from a memo", [] { return shown(__ASTReduce_NSDictionary_memo_block(letters(), "m"_ns, bracket)); },
       "(((m 1) 2) 3)"},
      {"no values, the memo",
       [] { return shown(__ASTReduce_NSDictionary_memo_block(dictionary({}), "m"_ns, unaskedReducer)); }, "m"},
      {"values of null, the memo",
       [] { return shown(__ASTReduce_NSDictionary_memo_block(nullptr, "m"_ns, unaskedReducer)); }, "m"},
      {"entries",
       [] { return shown(__ASTReduce_NSDictionary_memo_keysAndValues_block(letters(), "m"_ns, bracketEntry)); },
       "(((m a=1) b=2) c=3)"},
      {"no entries",
       [] { return shown(__ASTReduce_NSDictionary_memo_keysAndValues_block(dictionary({}), "m"_ns, bracketEntry)); },
       "m"},
      {"entries of null",
       [] { return shown(__ASTReduce_NSDictionary_memo_keysAndValues_block(nullptr, "m"_ns, bracketEntry)); }, "m"},
      {"entries to null",
       [] { return shown(__ASTReduce_NSDictionary_memo_keysAndValues_block(letters(), "m"_ns, toNothing)); }, "null"},
  });
}

TEST(Toolkit, SortIsStableAndImmutable) {
  static const Ref<NSArray> words = mutableList({"bee", "ant", "bat", "ape"});
  expectRows({
      {"by message", [] { return shown(__ASTSort_NSArray(mutableList({3, 1, 2, 1}))); }, "[1 1 2 3]"},
      {"empty array", [] { return shown(__ASTSort_NSArray(list({}))); }, "[]"},
      {"no array", [] { return shown(__ASTSort_NSArray(nullptr)); }, "null"},
      {"by comparator", [] { return shown(__ASTSort_NSArray_comparator(words, byInitial)); }, "[ant ape bee bat]"},
      {"empty array by comparator", [] { return shown(__ASTSort_NSArray_comparator(list({}), unaskedComparator)); },
       "[]"},
      {"no array by comparator", [] { return shown(__ASTSort_NSArray_comparator(nullptr, unaskedComparator)); },
       "null"},
      {"ordered set by message", [] { return shown(__ASTSort_NSOrderedSet(mutableOrdered({3, 1, 2}))); }, "<1 2 3>"},
      {"empty ordered set", [] { return shown(__ASTSort_NSOrderedSet(ordered({}))); }, "<>"},
      {"no ordered set", [] { return shown(__ASTSort_NSOrderedSet(nullptr)); }, "null"},
      {"ordered set by comparator",
       [] { return shown(__ASTSort_NSOrderedSet_comparator(NSOrderedSet::orderedSetWithArray(words), byInitial)); },
       "<ant ape bee bat>"},
      {"empty ordered set by comparator",
       [] { return shown(__ASTSort_NSOrderedSet_comparator(mutableOrdered({}), unaskedComparator)); }, "<>"},
      {"no ordered set by comparator",
       [] { return shown(__ASTSort_NSOrderedSet_comparator(nullptr, unaskedComparator)); }, "null"},
      {"the argument stays as it was", [] { return shown(words); }, "mutable [bee ant bat ape]"},
  });
}

namespace {
/// What `shuffle` gives where chance draws `answers`, and the bounds that it drew with.
template <class Shuffle> std::string drawn(std::vector<uint32_t> answers, Shuffle shuffle) {
  Draws recorded{std::move(answers), {}};
  draws = &recorded;
  std::string text = shown(shuffle());
  draws = nullptr;
  for (const uint32_t bound : recorded.bounds) text += " " + std::to_string(bound);
  return text;
}
}  // namespace

TEST(Toolkit, ShuffleDrawsFromTheBackWithFallingBounds) {
  static const Ref<NSArray> five = list({"a", "b", "c", "d", "e"});
  expectRows({
      {"always the first", [] { return drawn({0, 0, 0, 0}, [] { return __ASTShuffle_NSArray(five); }); },
       "mutable [b c d e a] 5 4 3 2"},
      {"always its own place", [] { return drawn({4, 3, 2, 1}, [] { return __ASTShuffle_NSArray(five); }); },
       "mutable [a b c d e] 5 4 3 2"},
      {"by turns", [] { return drawn({1, 3, 0, 1}, [] { return __ASTShuffle_NSArray(five); }); },
       "mutable [c e a d b] 5 4 3 2"},
      {"one element", [] { return drawn({}, [] { return __ASTShuffle_NSArray(list({1})); }); }, "mutable [1]"},
      {"no element", [] { return drawn({}, [] { return __ASTShuffle_NSArray(list({})); }); }, "mutable []"},
      {"no array", [] { return drawn({}, [] { return __ASTShuffle_NSArray(nullptr); }); }, "null"},
      {"ordered set", [] { return drawn({1, 0}, [] { return __ASTShuffle_NSOrderedSet(ordered({7, 8, 9})); }); },
       "mutable <9 7 8> 3 2"},
      {"ordered set of one", [] { return drawn({}, [] { return __ASTShuffle_NSOrderedSet(ordered({7})); }); },
       "mutable <7>"},
      {"empty ordered set", [] { return drawn({}, [] { return __ASTShuffle_NSOrderedSet(ordered({})); }); },
       "mutable <>"},
      {"no ordered set", [] { return drawn({}, [] { return __ASTShuffle_NSOrderedSet(nullptr); }); }, "null"},
      {"the argument stays as it was", [] { return shown(five); }, "[a b c d e]"},
  });
}
