// SPDX-License-Identifier: MIT
// The short names: which member each picks by the kind of its collection and the shape of its callback.
#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "tests/collections/CollectionFixtures.h"

using namespace quoll;
using namespace quoll::testsupport;

// Never defined: only their types are asked for.
namespace shapes {
Ref<NSArray> a();
Ref<NSMutableArray> ma();
const NSArray* ca();
NSMutableArray* pma();
Ref<NSDictionary> d();
const NSDictionary* cd();
NSMutableDictionary* pmd();
Ref<NSSet> s();
NSMutableSet* pms();
Ref<NSOrderedSet> o();
const NSMutableOrderedSet* cmo();
Ref<NSEnumerator> e();
Ref<NSObject> x();
Ref<NSString> path();

bool test(NSObject*);
bool testIndex(NSObject*, uint64_t);
Ref<NSObject> give(NSObject*);
Ref<NSObject> givePair(NSObject*, NSObject*);
Ref<NSObject> giveTriple(NSObject*, NSObject*, NSObject*);
}  // namespace shapes

namespace {

using namespace shapes;

template <class Expected, class Actual> constexpr bool gives = std::is_same_v<Actual, Expected>;

static_assert(gives<bool, decltype(All(a(), test))> && gives<bool, decltype(Any(d(), test))>);
static_assert(gives<Ref<NSDictionary>, decltype(Defaults(d(), cd()))>);
static_assert(gives<Ref<NSDictionary>, decltype(Extend(pmd(), d()))>);
static_assert(gives<Ref<NSArray>, decltype(Difference(ma(), ca()))>);
static_assert(gives<Ref<NSSet>, decltype(Difference(s(), pms()))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Difference(o(), cmo()))>);
static_assert(gives<void, decltype(Each(pma(), test))> && gives<void, decltype(Each(e(), test))>);
static_assert(gives<bool, decltype(Empty(a()))> && gives<bool, decltype(Empty(e()))>);
static_assert(gives<Ref<NSArray>, decltype(Filter(ma(), test))>);
static_assert(gives<Ref<NSArray>, decltype(Filter(ca(), testIndex))>);
static_assert(gives<Ref<NSDictionary>, decltype(Filter(cd(), test))>);
static_assert(gives<Ref<NSDictionary>, decltype(Filter(pmd(), [](auto, auto) { return true; }))>);
static_assert(gives<Ref<NSSet>, decltype(Filter(pms(), test))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Filter(o(), test))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Filter(cmo(), testIndex))>);
static_assert(gives<Ref<NSObject>, decltype(Find(a(), test))> && gives<Ref<NSObject>, decltype(Find(d(), test))>);
static_assert(gives<Ref<NSObject>, decltype(Find(e(), test))> && gives<Ref<NSObject>, decltype(Find(o(), test))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Flatten(a()))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(GroupBy(a(), give))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(GroupBy(d(), path()))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(IndexBy(d(), give))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(IndexBy(e(), path()))>);
static_assert(gives<Ref<NSObject>, decltype(Head(a()))> && gives<Ref<NSObject>, decltype(Head(cmo()))>);
static_assert(gives<uint64_t, decltype(IndexOf(a(), x()))> && gives<uint64_t, decltype(IndexOf(e(), x()))>);
static_assert(gives<Ref<NSArray>, decltype(Intersection(a(), pma()))>);
static_assert(gives<Ref<NSSet>, decltype(Intersection(pms(), s()))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Intersection(o(), o()))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Map(a(), give))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Map(pma(), [](NSObject* y, uint64_t) { return y; }))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(Map(d(), give))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(Map(cd(), givePair))>);
static_assert(gives<Ref<NSMutableArray>, decltype(MapToArray(pmd(), givePair))>);
static_assert(gives<Ref<NSMutableSet>, decltype(Map(s(), give))>);
static_assert(gives<Ref<NSMutableOrderedSet>, decltype(Map(cmo(), give))>);
static_assert(gives<Ref<NSMutableOrderedSet>, decltype(Map(o(), [](NSObject* y, uint64_t) { return y; }))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Map(e(), give))> &&
              gives<Ref<NSMutableArray>, decltype(Map(x(), give))>);
static_assert(gives<Ref<NSObject>, decltype(Min(a()))> && gives<Ref<NSObject>, decltype(Max(d()))>);
static_assert(gives<Ref<NSDictionary>, decltype(Pick(d(), s()))>);
static_assert(gives<Ref<NSMutableDictionary>, decltype(Pluck(pmd(), path()))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Pluck(s(), path()))>);
static_assert(gives<Ref<NSObject>, decltype(Reduce(a(), givePair))>);
static_assert(gives<Ref<NSObject>, decltype(Reduce(d(), x(), giveTriple))>);
static_assert(gives<Ref<NSArray>, decltype(Reject(ma(), test))>);
static_assert(gives<Ref<NSDictionary>, decltype(Reject(pmd(), test))>);
static_assert(gives<Ref<NSSet>, decltype(Reject(pms(), test))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Reject(cmo(), testIndex))>);
static_assert(gives<Ref<NSMutableArray>, decltype(Shuffle(a()))>);
static_assert(gives<Ref<NSMutableOrderedSet>, decltype(Shuffle(o()))>);
static_assert(gives<uint64_t, decltype(Size(s()))> && gives<uint64_t, decltype(Size(e()))>);
static_assert(gives<Ref<NSArray>, decltype(Sort(pma()))> && gives<Ref<NSOrderedSet>, decltype(Sort(cmo()))>);
static_assert(gives<Ref<NSArray>, decltype(Tail(pma()))> && gives<Ref<NSOrderedSet>, decltype(Tail(o()))>);
static_assert(gives<Ref<NSArray>, decltype(Union(a(), pma()))> && gives<Ref<NSSet>, decltype(Union(s(), pms()))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Union(o(), cmo()))>);
static_assert(gives<Ref<NSArray>, decltype(Without(pma(), x()))> && gives<Ref<NSSet>, decltype(Without(s(), x()))>);
static_assert(gives<Ref<NSOrderedSet>, decltype(Without(cmo(), x()))>);
static_assert(gives<Block<bool(NSObject*)>, decltype(Negate(test))>);
static_assert(gives<Block<bool(NSObject*, NSObject*)>, decltype(Negate([](NSObject*, NSObject*) { return true; }))>);
static_assert(gives<Block<bool(NSObject*, uint64_t)>, decltype(Negate([](NSObject*, uint64_t) { return true; }))>);
bool isFirst(NSObject*, uint64_t index) { return index == 0; }
static_assert(gives<Block<bool(NSObject*, uint64_t)>, decltype(Negate(&isFirst))>);

// No member of such a shape, no overload.
template <class C, class F> concept CanFilter = requires(C collection, F callback) { Filter(collection, callback); };
constexpr auto pairTest = [](NSObject*, NSObject*) { return true; };
constexpr auto tripleTest = [](NSObject*, NSObject*, NSObject*) { return true; };
static_assert(CanFilter<NSDictionary*, decltype(pairTest)> && !CanFilter<NSArray*, decltype(tripleTest)>);
static_assert(!CanFilter<NSSet*, decltype(pairTest)> && !CanFilter<NSArray*, std::nullptr_t>);
static_assert(!CanFilter<NSEnumerator*, decltype(pairTest)> && !CanFilter<NSString*, decltype(pairTest)>);

bool isEven(NSObject* number) { return unbox<int>(number) % 2 == 0; }
bool isTypedEven(NSNumber* number) { return number->integerValue() % 2 == 0; }
bool isAtEvenIndex(NSObject*, uint64_t index) { return index % 2 == 0; }
Ref<NSObject> tenfold(NSObject* number) { return box(unbox<int>(number) * 10); }
Ref<NSObject> joined(NSObject* left, NSObject* right) { return box(described(left) + described(right)); }

const auto letters = [] { return dictionary({{"a", 1}, {"b", 2}, {"c", 4}}); };

/// What an `Each` calls back with, as text.
template <class... Given> auto noting(Record& record) {
  return [&record](Given... given) {
    std::string call;
    ((call += (call.empty() ? "" : "/") + shown(given)), ...);
    record.add(call);
  };
}

}  // namespace

TEST(ToolkitOverloads, PickByTheCollectionsKind) {
  expectRows({
      {"an array in a Ref", [] { return shown(Map(list({1, 2}), tenfold)); }, "mutable [10 20]"},
      {"a pointer to a mutable array",
       [] {
         const Ref<NSMutableArray> held = mutableList({1, 2});
         NSMutableArray* array = held;
         return shown(Filter(array, isEven));
       },
       "[2]"},
      {"a constant dictionary: values",
       [] {
         const Ref<NSDictionary> held = letters();
         const NSDictionary* entries = held;
         return shown(Map(entries, tenfold));
       },
       "mutable {a=10 b=20 c=40}"},
      {"a set", [] { return shown(Map(setOf({1, 2}), tenfold)); }, "mutable (10 20)"},
      {"an ordered set", [] { return shown(Map(ordered({1, 2}), tenfold)); }, "mutable <10 20>"},
      {"an enumerator", [] { return shown(Map(list({1, 2})->objectEnumerator(), tenfold)); }, "mutable [10 20]"},
      {"a dictionary as any object: keys",
       [] { return shown(Map(Ref<NSObject>(letters()), [](NSObject* key) { return key; })); }, "mutable [a b c]"},
      {"an array as any object",
       [] { return shown(IndexOf(Ref<NSObject>(list({1})), nullptr)) + " " + shown(IndexOf(list({1}), box(1))); },
       "NSNotFound 0"},
      {"no array",
       [] {
         const NSArray* none = nullptr;
         return shown(IndexOf(none, box(1))) + " " + shown(IndexOf(static_cast<NSObject*>(nullptr), box(1)));
       },
       "0 NSNotFound"},
      {"all values", [] { return shown(All(letters(), isEven)) + " " + shown(All(setOf({2, 4}), isEven)); }, "NO YES"},
      {"any value", [] { return shown(Any(letters(), isEven)) + " " + shown(Any(ordered({1}), isEven)); }, "YES NO"},
      {"found value", [] { return shown(Find(letters(), isEven)) + " " + shown(Find(setOf({1, 4}), isEven)); }, "2 4"},
      {"emptiness", [] { return shown(Empty(letters())) + " " + shown(Empty(list({})->objectEnumerator())); },
       "NO YES"},
      {"size",
       [] { return shown(Size(letters())) + shown(Size(setOf({1}))) + shown(Size(list({1, 2})->objectEnumerator())); },
       "312"},
      {"least and greatest", [] { return shown(Min(letters())) + shown(Max(setOf({1, 3}))); }, "13"},
      {"ends", [] { return shown(Head(list({1, 2}))) + shown(Tail(list({1, 2}))) + shown(Tail(ordered({1, 2}))); },
       "1[2]<2>"},
      {"sorted", [] { return shown(Sort(list({2, 1}))) + shown(Sort(ordered({2, 1}))); }, "[1 2]<1 2>"},
      {"shuffled", [] { return shown(Shuffle(list({1}))) + shown(Shuffle(ordered({1}))); }, "mutable [1]mutable <1>"},
      {"flattened", [] { return shown(Flatten(list({list({1}), 2}))); }, "mutable [1 2]"},
      {"combined arrays",
       [] {
         return shown(Union(list({1}), list({2}))) + shown(Intersection(list({1}), list({1}))) +
                shown(Difference(list({1, 2}), list({2})));
       },
       "[1 2][1][1]"},
      {"combined sets",
       [] {
         return shown(Union(setOf({1}), setOf({2}))) + shown(Intersection(setOf({1}), setOf({1}))) +
                shown(Difference(setOf({1, 2}), setOf({2})));
       },
       "(1 2)(1)(1)"},
      {"combined ordered sets",
       [] {
         return shown(Union(ordered({1}), ordered({2}))) + shown(Intersection(ordered({1}), ordered({1}))) +
                shown(Difference(ordered({1, 2}), ordered({2})));
       },
       "mutable <1 2><1><1>"},
      {"combined dictionaries",
       [] {
         return shown(Defaults(letters(), dictionary({{"a", 9}}))) + shown(Extend(letters(), dictionary({{"a", 9}})));
       },
       "mutable {a=1 b=2 c=4}mutable {a=9 b=2 c=4}"},
      {"without",
       [] {
         return shown(Without(list({1, 2}), box(1))) + shown(Without(setOf({1, 2}), box(1))) +
                shown(Without(ordered({1, 2}), box(1)));
       },
       "[2](2)<2>"},
      {"picked", [] { return shown(Pick(letters(), setOf({"a"}))); }, "{a=1}"},
      {"plucked",
       [] { return shown(Pluck(list({"ab"}), "length"_ns)) + shown(Pluck(dictionary({{"k", "ab"}}), "length"_ns)); },
       "mutable [2]mutable {k=2}"},
  });
}

TEST(ToolkitOverloads, EachPicksByKindAndByTheNumberOfArguments) {
  Record record;
  Each(list({7}), noting<NSObject*>(record));
  Each(list({7}), noting<NSNumber*, uint64_t>(record));
  Each(letters(), noting<NSNumber*>(record));
  Each(letters(), noting<NSString*, NSNumber*>(record));
  Each(ordered({8}), noting<NSObject*>(record));
  Each(ordered({8}), noting<NSObject*, uint64_t>(record));
  Each(setOf({9}), noting<NSObject*>(record));
  Each(setOf({9}), noting<NSObject*, uint64_t>(record));
  Each(list({5})->objectEnumerator(), noting<NSNumber*>(record));
  Each(list({5})->objectEnumerator(), noting<NSNumber*, uint64_t>(record));
  EXPECT_EQ(record.text(), "7 7/0 1 2 4 a/1 b/2 c/4 8 8/0 9 9/0 5 5/0");
}

TEST(ToolkitOverloads, PickByTheCallbacksShape) {
  static const Block<bool(NSObject*)> block = [](NSNumber* n) { return n->integerValue() > 2; };
  static const Block<bool(NSObject*, uint64_t)> indexBlock = [](NSObject*, uint64_t index) { return index > 0; };
  expectRows({
      {"typed lambda", [] { return shown(Filter(list({1, 2}), [](NSNumber* n) { return n->intValue() > 1; })); },
       "[2]"},
      {"generic lambda", [] { return shown(Filter(list({1, 2}), [](auto* each) { return isEven(each); })); }, "[2]"},
      {"function", [] { return shown(Filter(list({1, 2}), isEven)); }, "[2]"},
      {"function with an index", [] { return shown(Filter(list({7, 8}), isAtEvenIndex)); }, "[7]"},
      {"pointer to a function", [] { return shown(Filter(list({1, 2}), &isEven)); }, "[2]"},
      {"pointer to a function of a typed element", [] { return shown(Filter(list({1, 2}), &isTypedEven)); }, "[2]"},
      {"pointer to a function with an index", [] { return shown(Filter(ordered({7, 8}), &isAtEvenIndex)); }, "<7>"},
      {"block", [] { return shown(Filter(list({1, 2, 3}), block)); }, "[3]"},
      {"block with an index", [] { return shown(Filter(list({7, 8}), indexBlock)); }, "[8]"},
      {"block over a set", [] { return shown(Reject(setOf({1, 3}), block)); }, "(1)"},
      {"typed lambda with an index",
       [] { return shown(Reject(list({7, 8}), [](NSNumber*, uint64_t index) { return index == 0; })); }, "[8]"},
      {"generic lambda of two, over an array: element and index",
       [] { return shown(Map(list({7, 8}), [](auto each, auto at) { return box(shown(each) + "@" + shown(at)); })); },
       "mutable [7@0 8@1]"},
      {"generic lambda of two, over a dictionary: key and value",
       [] {
         return shown(
             Map(dictionary({{"k", 1}}), [](auto key, auto value) -> Ref<NSObject> { return joined(key, value); }));
       },
       "mutable {k=k1}"},
      {"entries to an array", [] { return shown(MapToArray(letters(), joined)); }, "mutable [a1 b2 c4]"},
      {"found by index", [] { return shown(Find(list({7, 8}), [](NSObject*, uint64_t i) { return i == 1; })); }, "8"},
      {"found by entry",
       [] { return shown(Find(letters(), [](NSString* key, NSObject*) { return key->isEqualToString("b"_ns); })); },
       "2"},
      {"grouped by a function or a path",
       [] { return shown(GroupBy(list({1, 1}), tenfold)) + shown(GroupBy(list({"a", "b"}), "length"_ns)); },
       "mutable {10=[1 1]}mutable {1=[a b]}"},
      {"values grouped by a function or a path",
       [] {
         return shown(GroupBy(dictionary({{"k", 1}}), tenfold)) + shown(GroupBy(dictionary({{"k", "a"}}), "length"_ns));
       },
       "mutable {10=[1]}mutable {1=[a]}"},
      {"indexed by a function or a path",
       [] { return shown(IndexBy(list({1, 1}), tenfold)) + shown(IndexBy(list({"a", "b"}), "length"_ns)); },
       "mutable {10=1}mutable {1=b}"},
      {"values indexed by a function or a path",
       [] {
         return shown(IndexBy(dictionary({{"k", 1}}), tenfold)) + shown(IndexBy(dictionary({{"k", "a"}}), "length"_ns));
       },
       "mutable {10=1}mutable {1=a}"},
      {"reduced without a memo",
       [] { return shown(Reduce(list({1, 2, 3}), joined)) + shown(Reduce(letters(), joined)); }, "123124"},
      {"reduced from a memo",
       [] { return shown(Reduce(list({1, 2}), "m"_ns, joined)) + shown(Reduce(letters(), "m"_ns, joined)); },
       "m12m124"},
      {"reduced by entries",
       [] {
         return shown(Reduce(letters(), "m"_ns, [](NSObject* memo, NSString* key, NSNumber* value) -> Ref<NSObject> {
           return joined(joined(memo, key), value);
         }));
       },
       "ma1b2c4"},
      {"compared by a lambda",
       [] {
         const auto byLength = [](NSString* l, NSString* r) {
           return l->length() < r->length() ? NSOrderedAscending : NSOrderedDescending;
         };
         return shown(Min(list({"ccc", "a"}), byLength)) +
                shown(Max(dictionary({{"k", "ccc"}, {"l", "a"}}), byLength)) +
                shown(Sort(list({"ccc", "a"}), byLength)) + shown(Sort(ordered({"ccc", "a"}), byLength));
       },
       "accc[a ccc]<a ccc>"},
  });
}

TEST(ToolkitOverloads, TakesATemplateWhoseBodyFitsEntriesOnly) {
  const Ref<NSDictionary> ages = NSDictionary::dictionaryWithEntries({{"a"_ns, 1}});
  const auto joined = Map(ages, [](auto* key, auto* value) {
    return NSString::stringWithFormat("%@=%@"_ns, key->description(), value->description());
  });
  EXPECT_THAT(joined->objectForKey("a"_ns), equals("a=1"));
}

TEST(ToolkitOverloads, NegatePicksByItsPredicatesShape) {
  const auto one = Negate([](NSNumber* n) { return n->integerValue() == 1; });
  EXPECT_EQ(shown(Filter(list({1, 2}), one)), "[2]");
  const auto entry = Negate([](NSString* key, NSNumber*) { return key->isEqualToString("a"_ns); });
  EXPECT_EQ(shown(Filter(letters(), entry)), "{b=2 c=4}");
  const auto index = Negate([](NSObject*, uint64_t at) { return at == 0; });
  EXPECT_EQ(shown(Filter(list({7, 8}), index)), "[8]");
  EXPECT_FALSE(Negate(&isFirst)(nullptr, 0));
  const auto function = Negate(isEven);
  EXPECT_EQ(shown(Filter(list({1, 2}), function)), "[1]");
  const auto twice = Negate(Negate(isEven));
  EXPECT_EQ(shown(Filter(list({1, 2}), twice)), "[2]");
  const Block<bool(NSObject*, uint64_t)> block = [](NSObject*, uint64_t at) { return at == 0; };
  EXPECT_EQ(shown(Filter(list({7, 8}), Negate(block))), "[8]");
}

TEST(ToolkitOverloads, StandBesideMembersOfTheSameCollectionWithoutAmbiguity) {
  const Ref<NSMutableOrderedSet> set = mutableOrdered({1, 2});
  EXPECT_EQ(shown(Find(set, isEven)), "2");
  EXPECT_EQ(IndexOf(set, box(2)), 1u);
  EXPECT_FALSE(Empty(set));
  EXPECT_EQ(Size(set), 2u);
}
