// SPDX-License-Identifier: MIT
// How the toolkit walks collections, and what becomes of one whose callbacks do what they should not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "QuollFoundation/collections/Toolkit.h"
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "tests/collections/CollectionFixtures.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::ElementsAre;
using testing::IsEmpty;

// Walks

namespace {

constexpr auto sameOrder = [](NSObject*, NSObject*) { return NSOrderedSame; };
constexpr auto oneKey = [](NSObject*, auto...) -> Ref<NSObject> { return "key"_ns; };

struct BatchRow {
  const char* member;
  void (*walk)(NSObject* collection);
};
const BatchRow wholeWalks[] = {
    {"All", [](NSObject* c) { __ASTAll_NSFastEnumeration(c, [](NSObject*) { return true; }); }},
    {"Any", [](NSObject* c) { __ASTAny_NSFastEnumeration(c, never); }},
    {"Each", [](NSObject* c) { __ASTEach_NSFastEnumeration(c, [](NSObject*) {}); }},
    {"Each_withIndex", [](NSObject* c) { __ASTEach_NSFastEnumeration_withIndex(c, [](NSObject*, uint64_t) {}); }},
    {"Find", [](NSObject* c) { __ASTFind_NSFastEnumeration(c, never); }},
    {"GroupBy_block", [](NSObject* c) { __ASTGroupBy_NSFastEnumeration_block(c, oneKey); }},
    {"GroupBy_keyPath", [](NSObject* c) { __ASTGroupBy_NSFastEnumeration_keyPath(c, "self"_ns); }},
    {"IndexBy_block", [](NSObject* c) { __ASTIndexBy_NSFastEnumeration_block(c, oneKey); }},
    {"IndexBy_keyPath", [](NSObject* c) { __ASTIndexBy_NSFastEnumeration_keyPath(c, "self"_ns); }},
    {"IndexOf", [](NSObject* c) { __ASTIndexOf_NSFastEnumeration(c, "absent"_ns); }},
    {"Map", [](NSObject* c) { __ASTMap_NSFastEnumeration(c, oneKey); }},
    {"Map_withIndex", [](NSObject* c) { __ASTMap_NSFastEnumeration_withIndex(c, oneKey); }},
    {"Min", [](NSObject* c) { __ASTMin_NSFastEnumeration(c); }},
    {"Min_comparator", [](NSObject* c) { __ASTMin_NSFastEnumeration_comparator(c, sameOrder); }},
    {"Max", [](NSObject* c) { __ASTMax_NSFastEnumeration(c); }},
    {"Max_comparator", [](NSObject* c) { __ASTMax_NSFastEnumeration_comparator(c, sameOrder); }},
    {"Pluck", [](NSObject* c) { __ASTPluck_NSFastEnumeration(c, "self"_ns); }},
    {"Reduce_block", [](NSObject* c) { __ASTReduce_NSFastEnumeration_block(c, oneKey); }},
    {"Reduce_memo_block", [](NSObject* c) { __ASTReduce_NSFastEnumeration_memo_block(c, nullptr, oneKey); }},
    {"Size", [](NSObject* c) { __ASTSize_NSFastEnumeration(c); }},
};

/// An array that keeps how it is walked.
class WatchedArray : public NSMutableArray {
  QF_CLASS(WatchedArray, NSMutableArray)
 public:
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override {
    requests.push_back(count);
    return NSMutableArray::countByEnumeratingWithState_objects_count(state, objects, count);
  }
  std::vector<uint64_t> requests;
};
Class* WatchedArray::classObject() {
  static Class* const cls = ClassBuilder<WatchedArray>("WatchedArray").build();
  return cls;
}

/// Walks as the array in it does, of which it asks all elements at once.
class Album : public NSObject {
  QF_CLASS(Album, NSObject)
 public:
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t) override {
    return songs ? songs->countByEnumeratingWithState_objects_count(state, objects, songs->count()) : 0;
  }
  Ref<NSArray> songs;
};
Class* Album::classObject() {
  static Class* const cls = ClassBuilder<Album>("Album").build();
  return cls;
}

/// An array that gives all its elements at once.
class Burst : public NSArray {
  QF_CLASS(Burst, NSArray)
 public:
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t) override {
    return NSArray::countByEnumeratingWithState_objects_count(state, objects, count());
  }
};
Class* Burst::classObject() {
  static Class* const cls = ClassBuilder<Burst>("Burst").build();
  return cls;
}

template <class Array = NSArray> Ref<Array> twoHundredNumbers() {
  const Ref<NSMutableArray> numbers = NSMutableArray::array();
  for (int i = 1000; i < 1200; ++i) numbers->addObject(box(i));
  return Array::template arrayWithArray<Array>(numbers);
}

}  // namespace

TEST(ToolkitWalks, WalksInBatchesOfSixteen) {
  for (const BatchRow& row : wholeWalks) {
    SCOPED_TRACE(row.member);
    const Ref<Batches> full = make<Batches>(numbersTo(33)), empty = make<Batches>(list({}));
    row.walk(full);
    EXPECT_THAT(full->requests, ElementsAre(16, 16, 16, 16)) << "16, 16, 1 and none";
    row.walk(empty);
    EXPECT_THAT(empty->requests, ElementsAre(16));
  }
}

TEST(ToolkitWalks, TakesBatchesOfAnySize) {
  const Ref<Album> album = make<Album>();
  album->songs = twoHundredNumbers();
  const Ref<NSArray> burst = twoHundredNumbers<Burst>();
  for (NSObject* const collection : {static_cast<NSObject*>(album), static_cast<NSObject*>(burst)}) {
    EXPECT_THAT(__ASTMap_NSFastEnumeration(collection, [](NSObject* each) { return Ref(each); }),
                equals(twoHundredNumbers()));
    const auto first = [](NSObject*, NSObject* each) { return Ref(each); };
    EXPECT_THAT(__ASTReduce_NSFastEnumeration_memo_block(collection, nullptr, first), equals(box(1199)));
    int calls = 0;
    __ASTEach_NSFastEnumeration(collection, [&](NSObject*) { ++calls; });
    EXPECT_EQ(calls, 200);
  }
  EXPECT_THAT(__ASTFilter_NSArray(burst, [](NSObject*) { return true; }), equals(twoHundredNumbers()));
}

TEST(ToolkitWalks, HoldsTheElementsOfAnArrayThatStandsInForItsOwner) {
  const LeakGuard guard;
  const Ref<Album> album = make<Album>();
  album->songs = twoHundredNumbers();
  int64_t sum = 0;
  __ASTEach_NSFastEnumeration(album, [&](NSNumber* each) {
    album->songs = nullptr;
    sum += each->integerValue();
  });
  EXPECT_EQ(sum, (1000 + 1199) * 100);
}

TEST(ToolkitWalks, AsksForNoBatchBeyondWhatItNeeds) {
  const auto requested = [](auto walk) {
    const Ref<Batches> batches = make<Batches>(numbersTo(33));
    walk(batches.get());
    return batches->requests;
  };
  EXPECT_THAT(requested([](NSObject* c) { EXPECT_FALSE(__ASTEmpty_NSFastEnumeration(c)); }), ElementsAre(16));
  EXPECT_THAT(requested([](NSObject* c) { EXPECT_FALSE(__ASTAll_NSFastEnumeration(c, never)); }), ElementsAre(16));
  EXPECT_THAT(requested([](NSObject* c) { EXPECT_TRUE(__ASTAny_NSFastEnumeration(c, even)); }), ElementsAre(16));
  EXPECT_THAT(requested([](NSObject* c) { EXPECT_EQ(shown(__ASTFind_NSFastEnumeration(c, even)), "2"); }),
              ElementsAre(16));
  EXPECT_THAT(requested([](NSObject* c) { EXPECT_EQ(__ASTIndexOf_NSFastEnumeration(c, box(17)), 16u); }),
              ElementsAre(16, 16));
}

TEST(ToolkitWalks, EachOfAnArrayWalksByFastEnumeration) {
  const Ref<WatchedArray> array = NSArray::arrayWithArray<WatchedArray>(numbersTo(17));
  array->requests.clear();
  int count = 0;
  __ASTEach_NSArray(array, [&](NSObject*) { ++count; });
  EXPECT_EQ(count, 17);
  EXPECT_FALSE(array->requests.empty());
  EXPECT_THAT(array->requests, testing::Each(16u));
}

TEST(ToolkitWalks, RaisesWhenACollectionOfOnesOwnSaysThatItChanged) {
  const Ref<Batches> batches = make<Batches>(numbersTo(33));
  EXPECT_THAT(
      [&] {
        __ASTEach_NSFastEnumeration(batches, [&](NSNumber* n) {
          if (n->integerValue() == 16) ++batches->mutations;  // seen with the first element of the second batch
          EXPECT_LE(n->integerValue(), 16);
        });
      },
      raises(NSGenericException, detail::plainDescription(batches)));
}

// Callbacks that do what they should not

namespace {

using Meddling = std::function<void()>;

// A dead object shows here under a sanitizer.
void touch(const NSObject* object) { EXPECT_TRUE(!object || object->isa()); }
void touch(uint64_t) {}

template <class Result> auto meddling(const Meddling& meddle, Result result) {
  return [&meddle, result](auto... given) {
    meddle();
    (touch(given), ...);
    return result;
  };
}
auto meddling(const Meddling& meddle) {
  return [&meddle](auto... given) {
    meddle();
    (touch(given), ...);
  };
}
auto meddlingTransform(const Meddling& meddle) { return meddling(meddle, Ref<NSObject>("result"_ns)); }

const NSArray* array(NSObject* c) { return cast<NSArray>(c); }
const NSDictionary* entries(NSObject* c) { return cast<NSDictionary>(c); }
const NSSet* set(NSObject* c) { return cast<NSSet>(c); }
const NSOrderedSet* orderedSet(NSObject* c) { return cast<NSOrderedSet>(c); }

enum class Kind { Array, Dictionary, Set, OrderedSet };

/// A member that calls back, or asks elements, while it walks.
struct WalkRow {
  const char* member;
  Kind kind;
  void (*walk)(NSObject* collection, const Meddling& meddle);
};
using M = const Meddling&;

const WalkRow directWalks[] = {
    {"All_NSFastEnumeration", Kind::Array, [](NSObject* c, M m) { __ASTAll_NSFastEnumeration(c, meddling(m, true)); }},
    {"Any_NSFastEnumeration", Kind::Array, [](NSObject* c, M m) { __ASTAny_NSFastEnumeration(c, meddling(m, false)); }},
    {"Each_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTEach_NSArray(array(c), meddling(m)); }},
    {"Each_NSArray_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTEach_NSArray_withIndex(array(c), meddling(m)); }},
    {"Each_NSDictionary", Kind::Dictionary, [](NSObject* c, M m) { __ASTEach_NSDictionary(entries(c), meddling(m)); }},
    {"Each_NSDictionary_keysAndValues", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTEach_NSDictionary_keysAndValues(entries(c), meddling(m)); }},
    {"Each_NSOrderedSet_withIndex", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTEach_NSOrderedSet_withIndex(orderedSet(c), meddling(m)); }},
    {"Each_NSFastEnumeration", Kind::Set, [](NSObject* c, M m) { __ASTEach_NSFastEnumeration(c, meddling(m)); }},
    {"Each_NSFastEnumeration of keys", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTEach_NSFastEnumeration(c, meddling(m)); }},
    {"Each_NSFastEnumeration_withIndex", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTEach_NSFastEnumeration_withIndex(c, meddling(m)); }},
    {"Filter_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTFilter_NSArray(array(c), meddling(m, true)); }},
    {"Filter_NSArray_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTFilter_NSArray_withIndex(array(c), meddling(m, true)); }},
    {"Filter_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTFilter_NSDictionary(entries(c), meddling(m, true)); }},
    {"Filter_NSDictionary_keysAndValues", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTFilter_NSDictionary_keysAndValues(entries(c), meddling(m, true)); }},
    {"Filter_NSSet", Kind::Set, [](NSObject* c, M m) { __ASTFilter_NSSet(set(c), meddling(m, true)); }},
    {"Filter_NSOrderedSet", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTFilter_NSOrderedSet(orderedSet(c), meddling(m, true)); }},
    {"Filter_NSOrderedSet_withIndex", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTFilter_NSOrderedSet_withIndex(orderedSet(c), meddling(m, true)); }},
    {"Find_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTFind_NSArray(array(c), meddling(m, false)); }},
    {"Find_NSArray_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTFind_NSArray_withIndex(array(c), meddling(m, false)); }},
    {"Find_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTFind_NSDictionary(entries(c), meddling(m, false)); }},
    {"Find_NSDictionary_keysAndValues", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTFind_NSDictionary_keysAndValues(entries(c), meddling(m, false)); }},
    {"Find_NSFastEnumeration", Kind::Set, [](NSObject* c, M m) { __ASTFind_NSFastEnumeration(c, meddling(m, false)); }},
    {"GroupBy_NSFastEnumeration_block", Kind::Array,
     [](NSObject* c, M m) { __ASTGroupBy_NSFastEnumeration_block(c, meddlingTransform(m)); }},
    {"GroupBy_NSFastEnumeration_keyPath", Kind::Array,
     [](NSObject* c, M) { __ASTGroupBy_NSFastEnumeration_keyPath(c, "key"_ns); }},
    {"IndexBy_NSFastEnumeration_block", Kind::Array,
     [](NSObject* c, M m) { __ASTIndexBy_NSFastEnumeration_block(c, meddlingTransform(m)); }},
    {"IndexBy_NSFastEnumeration_keyPath", Kind::Set,
     [](NSObject* c, M) { __ASTIndexBy_NSFastEnumeration_keyPath(c, "key"_ns); }},
    {"IndexOf_NSFastEnumeration", Kind::Array,
     [](NSObject* c, M m) { __ASTIndexOf_NSFastEnumeration(c, make<Meddler>(&m)); }},
    {"Map_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTMap_NSArray(array(c), meddlingTransform(m)); }},
    {"Map_NSArray_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTMap_NSArray_withIndex(array(c), meddlingTransform(m)); }},
    {"Map_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTMap_NSDictionary(entries(c), meddlingTransform(m)); }},
    {"Map_NSDictionary_keysAndValues", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTMap_NSDictionary_keysAndValues(entries(c), meddlingTransform(m)); }},
    {"Map_NSDictionary_keysAndValues_toArray", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTMap_NSDictionary_keysAndValues_toArray(entries(c), meddlingTransform(m)); }},
    {"Map_NSSet", Kind::Set, [](NSObject* c, M m) { __ASTMap_NSSet(set(c), meddlingTransform(m)); }},
    {"Map_NSOrderedSet", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTMap_NSOrderedSet(orderedSet(c), meddlingTransform(m)); }},
    {"Map_NSOrderedSet_withIndex", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTMap_NSOrderedSet_withIndex(orderedSet(c), meddlingTransform(m)); }},
    {"Map_NSFastEnumeration", Kind::Set, [](NSObject* c, M m) { __ASTMap_NSFastEnumeration(c, meddlingTransform(m)); }},
    {"Map_NSFastEnumeration_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTMap_NSFastEnumeration_withIndex(c, meddlingTransform(m)); }},
    {"Min_NSFastEnumeration", Kind::Array, [](NSObject* c, M) { __ASTMin_NSFastEnumeration(c); }},
    {"Min_NSFastEnumeration_comparator", Kind::Set,
     [](NSObject* c, M m) { __ASTMin_NSFastEnumeration_comparator(c, meddling(m, NSOrderedSame)); }},
    {"Max_NSFastEnumeration", Kind::Array, [](NSObject* c, M) { __ASTMax_NSFastEnumeration(c); }},
    {"Max_NSFastEnumeration_comparator", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTMax_NSFastEnumeration_comparator(c, meddling(m, NSOrderedSame)); }},
    {"Pluck_NSFastEnumeration", Kind::Array, [](NSObject* c, M) { __ASTPluck_NSFastEnumeration(c, "key"_ns); }},
    {"Pluck_NSDictionary", Kind::Dictionary, [](NSObject* c, M) { __ASTPluck_NSDictionary(entries(c), "key"_ns); }},
    {"Reduce_NSFastEnumeration_block", Kind::Array,
     [](NSObject* c, M m) { __ASTReduce_NSFastEnumeration_block(c, meddlingTransform(m)); }},
    {"Reduce_NSFastEnumeration_memo_block", Kind::Array,
     [](NSObject* c, M m) { __ASTReduce_NSFastEnumeration_memo_block(c, nullptr, meddlingTransform(m)); }},
    {"Reduce_NSDictionary_memo_keysAndValues_block", Kind::Dictionary,
     [](NSObject* c, M m) {
       __ASTReduce_NSDictionary_memo_keysAndValues_block(entries(c), nullptr, meddlingTransform(m));
     }},
    {"Reject_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTReject_NSArray(array(c), meddling(m, false)); }},
    {"Reject_NSArray_withIndex", Kind::Array,
     [](NSObject* c, M m) { __ASTReject_NSArray_withIndex(array(c), meddling(m, false)); }},
    {"Reject_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTReject_NSDictionary(entries(c), meddling(m, false)); }},
    {"Reject_NSDictionary_keysAndValues", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTReject_NSDictionary_keysAndValues(entries(c), meddling(m, false)); }},
    {"Reject_NSSet", Kind::Set, [](NSObject* c, M m) { __ASTReject_NSSet(set(c), meddling(m, false)); }},
    {"Reject_NSOrderedSet", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTReject_NSOrderedSet(orderedSet(c), meddling(m, false)); }},
    {"Reject_NSOrderedSet_withIndex", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTReject_NSOrderedSet_withIndex(orderedSet(c), meddling(m, false)); }},
    {"Without_NSArray", Kind::Array, [](NSObject* c, M m) { __ASTWithout_NSArray(array(c), make<Meddler>(&m)); }},
    {"Without_NSSet", Kind::Set, [](NSObject* c, M m) { __ASTWithout_NSSet(set(c), make<Meddler>(&m)); }},
    {"Without_NSOrderedSet", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTWithout_NSOrderedSet(orderedSet(c), make<Meddler>(&m)); }},
};

/// Members that walk a copy: of a dictionary its values, of what is sorted its elements.
const WalkRow walksOfCopies[] = {
    {"All_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTAll_NSDictionary(entries(c), meddling(m, true)); }},
    {"Any_NSDictionary", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTAny_NSDictionary(entries(c), meddling(m, false)); }},
    {"GroupBy_NSDictionary_block", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTGroupBy_NSDictionary_block(entries(c), meddlingTransform(m)); }},
    {"GroupBy_NSDictionary_keyPath", Kind::Dictionary,
     [](NSObject* c, M) { __ASTGroupBy_NSDictionary_keyPath(entries(c), "key"_ns); }},
    {"IndexBy_NSDictionary_block", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTIndexBy_NSDictionary_block(entries(c), meddlingTransform(m)); }},
    {"IndexBy_NSDictionary_keyPath", Kind::Dictionary,
     [](NSObject* c, M) { __ASTIndexBy_NSDictionary_keyPath(entries(c), "key"_ns); }},
    {"Min_NSDictionary", Kind::Dictionary, [](NSObject* c, M) { __ASTMin_NSDictionary(entries(c)); }},
    {"Min_NSDictionary_comparator", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTMin_NSDictionary_comparator(entries(c), meddling(m, NSOrderedSame)); }},
    {"Max_NSDictionary", Kind::Dictionary, [](NSObject* c, M) { __ASTMax_NSDictionary(entries(c)); }},
    {"Max_NSDictionary_comparator", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTMax_NSDictionary_comparator(entries(c), meddling(m, NSOrderedSame)); }},
    {"Reduce_NSDictionary_block", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTReduce_NSDictionary_block(entries(c), meddlingTransform(m)); }},
    {"Reduce_NSDictionary_memo_block", Kind::Dictionary,
     [](NSObject* c, M m) { __ASTReduce_NSDictionary_memo_block(entries(c), nullptr, meddlingTransform(m)); }},
    {"Sort_NSArray", Kind::Array, [](NSObject* c, M) { __ASTSort_NSArray(array(c)); }},
    {"Sort_NSArray_comparator", Kind::Array,
     [](NSObject* c, M m) { __ASTSort_NSArray_comparator(array(c), meddling(m, NSOrderedSame)); }},
    {"Sort_NSOrderedSet", Kind::OrderedSet, [](NSObject* c, M) { __ASTSort_NSOrderedSet(orderedSet(c)); }},
    {"Sort_NSOrderedSet_comparator", Kind::OrderedSet,
     [](NSObject* c, M m) { __ASTSort_NSOrderedSet_comparator(orderedSet(c), meddling(m, NSOrderedSame)); }},
};

/// Three elements that meddle; mutable.
Ref<NSObject> meddlers(Kind kind, const Meddling& meddle) {
  const auto one = [&] { return make<Meddler>(&meddle); };
  switch (kind) {
    case Kind::Array: return mutableList({one(), one(), one()});
    case Kind::Dictionary: return mutableDictionary({{"a", one()}, {"b", one()}, {"c", one()}});
    case Kind::Set: return mutableSetOf({one(), one(), one()});
    case Kind::OrderedSet: return mutableOrdered({one(), one(), one()});
  }
  return nullptr;
}

void add(NSObject* collection) {
  if (auto* dictionary = as<NSMutableDictionary>(collection)) {
    dictionary->setObject_forKey("new"_ns, box(dictionary->count()));
  } else {
    send<void>(collection, "addObject:"_sel, box(send<uint64_t>(collection, "count"_sel)));
  }
}

}  // namespace

TEST(ToolkitWalks, RaisesWhenACallbackChangesTheCollection) {
  for (const WalkRow& row : directWalks) {
    SCOPED_TRACE(row.member);
    NSObject* walked = nullptr;
    int asked = 0;
    Meddling meddle = [] {};
    const Ref<NSObject> collection = meddlers(row.kind, meddle);
    walked = collection.get();
    meddle = [&] {
      if (++asked == 1) add(walked);
    };
    EXPECT_THAT([&] { row.walk(collection, meddle); },
                raises(NSGenericException, "*** Collection " + detail::plainDescription(collection) +
                                               " was mutated while being enumerated."));
    EXPECT_EQ(asked, 1) << "the next element is not visited";
  }
}

TEST(ToolkitWalks, WalksACopyWhereTheCollectionMayChange) {
  for (const WalkRow& row : walksOfCopies) {
    SCOPED_TRACE(row.member);
    int asked = 0;
    Meddling meddle = [] {};
    const Ref<NSObject> collection = meddlers(row.kind, meddle);
    meddle = [&] { ++asked, add(collection); };
    EXPECT_NO_THROW(row.walk(collection, meddle));
    EXPECT_GE(asked, 2);
  }
}

TEST(ToolkitWalks, HoldsWhatACallbackTakesOutOfTheCollection) {
  const LeakGuard guard;
  const auto walks = [](const WalkRow& row) {
    SCOPED_TRACE(row.member);
    int asked = 0;
    Meddling meddle = [] {};
    const Ref<NSObject> collection = meddlers(row.kind, meddle);
    meddle = [&] {
      ++asked;
      send<void>(collection, "removeAllObjects"_sel);
    };
    try {
      row.walk(collection, meddle);
    } catch (const NSException& e) {
      EXPECT_THAT(e.name(), equals(NSGenericException)) << e.what();
    }
    EXPECT_GE(asked, 1);
  };
  for (const WalkRow& row : directWalks) walks(row);
  for (const WalkRow& row : walksOfCopies) walks(row);
}

TEST(ToolkitWalks, HoldsACollectionWhoseLastReferenceACallbackDrops) {
  const LeakGuard guard;
  const auto walks = [](const WalkRow& row, bool immutable) {
    SCOPED_TRACE(row.member);
    int asked = 0;
    Meddling meddle = [] {};
    Ref<NSObject> collection = meddlers(row.kind, meddle);
    if (immutable) collection = collection->copy();
    NSObject* const borrowed = collection.get();
    meddle = [&] {
      ++asked;
      collection = nullptr;
    };
    EXPECT_NO_THROW(row.walk(borrowed, meddle));
    EXPECT_GE(asked, 2);
  };
  for (const bool immutable : {false, true}) {
    for (const WalkRow& row : directWalks) walks(row, immutable);
    for (const WalkRow& row : walksOfCopies) walks(row, immutable);
  }
}

TEST(ToolkitWalks, FoundElementsOutliveTheirCollection) {
  const LeakGuard guard;
  const auto found = [](Kind kind, auto find) {
    Meddling meddle = [] {};
    Ref<NSObject> collection = meddlers(kind, meddle);
    NSObject* const borrowed = collection.get();
    const Ref<NSObject> element = find(borrowed, [&](auto...) {
      collection = nullptr;
      return true;
    });
    return as<Meddler>(element) != nullptr;
  };
  EXPECT_TRUE(found(Kind::Array, [](NSObject* c, auto f) { return __ASTFind_NSArray(array(c), f); }));
  EXPECT_TRUE(found(Kind::Array, [](NSObject* c, auto f) { return __ASTFind_NSArray_withIndex(array(c), f); }));
  EXPECT_TRUE(found(Kind::Dictionary, [](NSObject* c, auto f) { return __ASTFind_NSDictionary(entries(c), f); }));
  EXPECT_TRUE(
      found(Kind::Dictionary, [](NSObject* c, auto f) { return __ASTFind_NSDictionary_keysAndValues(entries(c), f); }));
  EXPECT_TRUE(found(Kind::Set, [](NSObject* c, auto f) { return __ASTFind_NSFastEnumeration(c, f); }));
}

TEST(ToolkitWalks, AnExceptionOfACallbackPassesAndLeaksNothing) {
  for (const WalkRow& row : directWalks) {
    SCOPED_TRACE(row.member);
    const LeakGuard guard;
    Meddling meddle = [] {};
    const Ref<NSObject> collection = meddlers(row.kind, meddle);
    meddle = [] { throw std::runtime_error("refused"); };
    EXPECT_THROW(row.walk(collection, meddle), std::runtime_error);
  }
}
