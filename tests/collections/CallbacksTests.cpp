// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/Callbacks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/collections/CollectionFixtures.h"
#include "tests/support/AllocationCount.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

struct Functor {
  bool operator()(NSObject*, uint64_t) { return true; }
};
struct Overloaded {
  bool operator()(NSObject*) const { return true; }
  bool operator()(NSString*) const { return true; }
};
constexpr auto zero = [] {};
constexpr auto typed = [](NSString*) { return true; };
constexpr auto untyped = [](NSObject*) { return true; };
constexpr auto generic = [](auto) { return true; };
constexpr auto indexed = [](NSObject*, uint64_t) { return true; };
constexpr auto indexedByInt = [](NSString*, int) { return true; };
constexpr auto entry = [](NSString*, NSNumber*) { return true; };
constexpr auto genericPair = [](auto, auto) { return true; };
constexpr auto triple = [](NSObject*, NSObject*, NSObject*) { return Ref<NSObject>(); };
constexpr auto genericTriple = [](auto, auto, auto) { return Ref<NSObject>(); };
constexpr auto silent = [](NSObject*) noexcept {};
[[maybe_unused]] auto counting = [n = 0](NSObject*) mutable { ++n; };
[[maybe_unused]] bool function(NSString*, uint64_t) { return true; }
[[maybe_unused]] bool quiet(NSObject*) noexcept { return true; }

template <class F> constexpr int countOf = CallbackOf<F, 1> ? 1 : CallbackOf<F, 2> ? 2 : CallbackOf<F, 3> ? 3 : 0;

static_assert(countOf<decltype(zero)> == 0);
static_assert(countOf<decltype(typed)> == 1);
static_assert(countOf<decltype(untyped)> == 1);
static_assert(countOf<decltype(generic)> == 1);
static_assert(countOf<decltype(silent)> == 1);
static_assert(countOf<decltype(counting)> == 1);
static_assert(countOf<decltype(counting)&> == 1, "also as a forwarding reference sees it");
static_assert(countOf<Overloaded> == 1);
static_assert(countOf<Block<bool(NSObject*)>> == 1);
static_assert(countOf<ElementPredicate> == 1);
static_assert(countOf<decltype(indexed)> == 2);
static_assert(countOf<decltype(entry)> == 2);
static_assert(countOf<decltype(genericPair)> == 2);
static_assert(countOf<Functor> == 2);
static_assert(countOf<decltype(&function)> == 2);
static_assert(countOf<decltype(function)&> == 2);
static_assert(countOf<decltype(&quiet)> == 1);
static_assert(countOf<Block<bool(NSObject*, NSObject*)>> == 2);
static_assert(countOf<IndexedPredicate> == 2);
static_assert(countOf<decltype(triple)> == 3);
static_assert(countOf<decltype(genericTriple)> == 3);
static_assert(countOf<EntryReducer> == 3);
static_assert(countOf<int> == 0 && countOf<std::nullptr_t> == 0 && countOf<NSString*> == 0);

static_assert(IndexedCallback<decltype(indexed)> && IndexedCallback<decltype(indexedByInt)>);
static_assert(IndexedCallback<Functor> && IndexedCallback<Block<bool(NSObject*, uint64_t)>>);
static_assert(!IndexedCallback<decltype(entry)> && !IndexedCallback<decltype(untyped)>);
static_assert(!IndexedCallback<Block<bool(NSObject*, NSObject*)>>);

// There is always something to call, and nothing of it can be kept.
static_assert(!std::is_constructible_v<ElementPredicate, std::nullptr_t>);
static_assert(!std::is_default_constructible_v<ElementAction> && !std::is_copy_assignable_v<ElementAction>);

const auto names = [] { return list({"Ann", "Bo"}); };

}  // namespace

TEST(Callbacks, TakeAnElementAsItsOwnClass) {
  std::string all;
  Each(names(), [&](NSString* name) { all += name->utf8() + " "; });
  Each(names(), [&](const NSString* name, uint64_t index) { all += name->utf8() + std::to_string(index) + " "; });
  Each(dictionary({{"k", 1}}), [&](NSString* key, NSNumber* n) { all += key->utf8() + std::to_string(n->intValue()); });
  EXPECT_EQ(all, "Ann Bo Ann0 Bo1 k1");
}

TEST(Callbacks, TakeAnElementOfASubclass) {
  int visited = 0;
  Each(list({mutableList({1}), list({2})}), [&](NSArray* each) { visited += unbox<int>(each->firstObject()); });
  EXPECT_EQ(visited, 3);
}

TEST(Callbacks, RaiseForAnElementOfAnotherClassNamingBoth) {
  const Ref<NSArray> mixed = list({"text", 1});
  const auto wrong = [&](auto call) {
    EXPECT_THAT(call, raises(NSInvalidArgumentException, "NSNumber"));
    EXPECT_THAT(call, raises(NSInvalidArgumentException, "NSString"));
  };
  wrong([&] { Each(mixed, [](NSNumber*) {}); });
  wrong([&] { Each(mixed, [](NSNumber*, uint64_t) {}); });
  wrong([&] { Filter(mixed, [](NSNumber*) { return true; }); });
  wrong([&] { Map(mixed, [](NSNumber* n) -> Ref<NSObject> { return n; }); });
  wrong([&] { Max(mixed, [](NSNumber*, NSNumber*) { return NSOrderedSame; }); });
  wrong([&] { Reduce(mixed, [](NSNumber* memo, NSObject*) -> Ref<NSObject> { return memo; }); });
  wrong([&] { Each(dictionary({{"k", 1}}), [](NSNumber*, NSNumber*) {}); });
  wrong([&] { Each(dictionary({{"k", 1}}), [](NSString*, NSString*) {}); });
}

TEST(Callbacks, AreNotCalledForAnElementOfAnotherClass) {
  int called = 0;
  EXPECT_THAT([&] { Each(list({1, "text", 2}), [&](NSNumber*) { ++called; }); }, raises(NSInvalidArgumentException));
  EXPECT_EQ(called, 1);
}

TEST(Callbacks, TakeANullMemoAsAnyClass) {
  const Ref<NSObject> sum = Reduce(list({1, 2}), nullptr, [](NSNumber* memo, NSNumber* n) -> Ref<NSObject> {
    return box((memo ? memo->intValue() : 0) + n->intValue());
  });
  EXPECT_EQ(unbox<int>(sum), 3);
}

TEST(Callbacks, MayIgnoreTheirResult) {
  int called = 0;
  Each(names(), [&](NSObject*) { return ++called; });
  EXPECT_EQ(called, 2);
}

TEST(Callbacks, GiveAnyObjectAsTheResultOfATransform) {
  const auto lengths = Map(names(), [](NSString* name) { return box(name->length()); });  // a Ref<NSNumber>
  EXPECT_EQ(shown(lengths), "mutable [3 2]");
  const auto itself = Map(names(), [](NSString* name) { return name; });
  EXPECT_EQ(shown(itself), "mutable [Ann Bo]");
}

TEST(Callbacks, KeepTheirState) {
  auto called = [n = 0](NSObject*) mutable { return ++n > 1; };
  EXPECT_EQ(shown(Filter(names(), called)), "[Bo]");
  EXPECT_TRUE(called(nullptr)) << "the caller's own was called, not a copy";
}

namespace {
/// What one call of `body` allocates, once all that it needs is made.
template <class Body> size_t allocations(Body body) {
  body();
  const AllocationCount count;
  body();
  return count.made();
}
}  // namespace

TEST(Callbacks, AllocateNothing) {
  const Ref<NSArray> frozen = NSArray::arrayWithArray(numbersTo(100));
  const Ref<NSMutableArray> array = numbersTo(100);
  int64_t sum = 0;
  std::string large(100, 'x');
  EXPECT_EQ(allocations([&] { Each(frozen, [&](NSNumber* n) { sum += n->integerValue(); }); }), 0u);
  EXPECT_EQ(allocations([&] { Each(array, [&](NSNumber* n) { sum += n->integerValue(); }); }), 0u);
  EXPECT_EQ(allocations([&] { Each(array, [&](NSObject*, uint64_t index) { sum += static_cast<int64_t>(index); }); }),
            0u);
  EXPECT_EQ(allocations([&] { sum += Any(array, [&](NSNumber* n) { return n->integerValue() < 0; }); }), 0u);
  EXPECT_EQ(allocations([&] { sum += All(array, [&](NSNumber* n) { return n->integerValue() > 0; }); }), 0u);
  EXPECT_EQ(allocations([&] { Reduce(array, [](NSObject* memo, NSObject*) -> Ref<NSObject> { return memo; }); }), 0u);
  EXPECT_EQ(
      allocations([&] { Reduce(array, array, [](NSObject*, NSObject* element) -> Ref<NSObject> { return element; }); }),
      0u);
  EXPECT_EQ(allocations([&] { Find(array, [&](NSNumber* n) { return n->integerValue() == 100; }); }), 0u);
  EXPECT_EQ(allocations([&] { Max(array, [](NSNumber* a, NSNumber* b) { return a->compare(b); }); }), 0u);
  EXPECT_EQ(allocations([&] {
              Each(array,
                   [&sum, held = std::string_view(large)](NSObject*) { sum += static_cast<int64_t>(held.size()); });
            }),
            0u);
  // What allocates is counted: plain memory always, objects where a sanitizer tells of `malloc`.
  EXPECT_GE(allocations([&] { Each(array, [&](NSObject*) { sum += std::ssize(std::vector<int>(50)); }); }), 100u);
  EXPECT_NE(sum, 0);
}
