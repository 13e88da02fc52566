// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Ref.h"

#include <gmock/gmock.h>

#include <array>
#include <concepts>
#include <type_traits>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

template <class T> concept Indexable = requires(T t) { t[3]; };
template <class A, class B> concept Addable = requires(A a, B b) { a + b; } || requires(A a, B b) { b + a; };
template <class A, class B> concept Subtractable = requires(A a, B b) { a - b; } || requires(A a, B b) { b - a; };
template <class T> concept Steppable =
    requires(T t) { ++t; } || requires(T t) { t--; } || requires(T t) { t += 1; } || requires(T t) { +t; };
template <class A, class B> concept Ordered =
    requires(A a, B b) { a < b; } || requires(A a, B b) { b >= a; } || requires(A a, B b) { a <=> b; };
template <class A, class B> concept Comparable = requires(A a, B b) {
  { a == b } -> std::same_as<bool>;
  { b != a } -> std::same_as<bool>;
};
template <class T> concept Newable = requires { new T; } || requires { new T(); };

using Handle = Ref<Counter>;
static_assert(sizeof(Handle) == sizeof(void*));
static_assert(!Indexable<Handle> && !Steppable<Handle>);
static_assert(!Addable<Handle, int> && !Addable<Handle, Handle>);
static_assert(!Subtractable<Handle, Handle> && !Subtractable<Handle, int> && !Subtractable<Handle, Counter*>);
static_assert(!Ordered<Handle, Handle> && !Ordered<Handle, Ref<NSObject>> && !Ordered<Handle, Counter*>);
static_assert(Comparable<Handle, Handle> && Comparable<Handle, Ref<NSObject>> && Comparable<Handle, NSObject*>);
static_assert(Comparable<Ref<NSObject>, Counter*> && Comparable<Handle, const NSObject*>);
static_assert(Comparable<Handle, std::nullptr_t> && Comparable<Ref<const Counter>, Handle>);
static_assert(!Comparable<Handle, Ref<NSString>>, "they can't be the same object");
static_assert(!Newable<Counter> && !Newable<Node> && std::is_abstract_v<Node>, "no new, no stack, no member");
static_assert(!std::is_copy_constructible_v<Counter> && !std::is_copy_assignable_v<Counter>);
static_assert(std::is_convertible_v<Handle, Counter*> && std::is_convertible_v<Counter*, Ref<NSObject>>);
static_assert(std::is_convertible_v<Ref<SubCounter>, Handle> && !std::is_convertible_v<Ref<NSObject>, Handle>);
static_assert(!std::is_convertible_v<Handle, bool> && std::is_constructible_v<bool, Handle>);
static_assert(std::is_nothrow_move_constructible_v<Handle> && std::is_nothrow_move_assignable_v<Handle>);
#ifdef __clang__  // g++ takes `delete` in a requires-expression for a hard error: see RefDoesNotCompile.cpp
template <class T> concept Deletable = requires(T t) { delete t; };
static_assert(!Deletable<Handle> && !Deletable<Ref<class NeverDefined>> && !Deletable<Counter*>);
#endif

constinit Ref<Counter> atNamespaceScope;

}  // namespace

TEST(Ref, KeepsADerivedObjectThroughABaseReference) {
  Ref<Node> node = make<Node>();
  Ref<NSObject> base = node;
  node = nullptr;
  EXPECT_EQ(Node::alive, 1);
  base = nullptr;
  EXPECT_EQ(Node::alive, 0) << "the derived destructor runs";
}

TEST(Ref, ComparesIdentityInEveryMix) {
  const Ref<Counter> a = Counter::initWithValue(1), b = Counter::initWithValue(1);
  const Ref<NSObject> base = a;
  NSObject* raw = a;
  const NSObject* constant = a;
  EXPECT_TRUE(a == base && base == a && a == raw && raw == a && a == constant && constant == a);
  EXPECT_TRUE(a != b && b != raw && base != b);
  EXPECT_TRUE(a != nullptr && nullptr != a && Ref<Counter>() == nullptr && nullptr == Ref<NSObject>());
}

TEST(Ref, TwoEqualStringsAreTwoObjects) {
  const Ref<NSString> made = NSString::stringWithUTF8("x");
  EXPECT_TRUE("x"_ns != made);
  EXPECT_TRUE(*made == *"x"_ns) << "a star compares values";
}

TEST(Ref, ArrowOnNullRaisesNamingTheClass) {
  Ref<Counter> none;
  EXPECT_THAT(raised([&] { none->value(); }), AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("Counter")));
  EXPECT_THAT(raised([&] { static_cast<void>(*none == *none); }), HasSubstr("Counter"));
  const Ref<NSString> string;
  EXPECT_THAT(raised([&] { string->length(); }), HasSubstr("NSString"));
}

TEST(Ref, StandsConstantInitialisedAndNull) { EXPECT_TRUE(atNamespaceScope == nullptr); }

TEST(Ref, AssigningToItselfKeepsTheObject) {
  Ref<Node> node = make<Node>();
  Ref<Node>& same = node;
  node = same;
  EXPECT_EQ(Node::alive, 1);
  node = std::move(same);
  EXPECT_TRUE(node && Node::alive == 1);
  node = node.get();
  EXPECT_TRUE(node && Node::alive == 1);
}

TEST(Ref, AssigningTheNextOfAnObjectThatGoesKeepsTheNext) {
  Ref<Node> node = make<Node>();
  node->next = make<Node>();
  node = node->next;
  EXPECT_TRUE(node && node->next == nullptr && Node::alive == 1);
}

TEST(Ref, MovingLeavesNull) {
  Ref<Node> a = make<Node>();
  Ref<NSObject> b = std::move(a);
  EXPECT_TRUE(a == nullptr && b && Node::alive == 1);
}

TEST(Ref, AdoptTakesWhatDetachGave) {
  Ref<Node> a = make<Node>();
  Node* owned = a.detach();
  EXPECT_EQ(Node::alive, 1);
  Ref<Node>::adopt(owned) = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(Ref, IsDroppedWithTheContainerThatHoldsIt) {
  {
    std::vector<Ref<Node>> nodes;
    for (int i = 0; i < 100; ++i) nodes.push_back(make<Node>());
    std::array<Ref<Node>, 3> copies{nodes[0], nodes[1], nodes[1]};
    nodes.resize(50);
    EXPECT_EQ(Node::alive, 50);
  }
  EXPECT_EQ(Node::alive, 0);
}

TEST(Ref, ChoosesBetweenAReferenceAndAPointerWhenSpelledOut) {
  const Ref<Counter> a = Counter::initWithValue(1), b = Counter::initWithValue(2);
  Counter* raw = b;
  EXPECT_TRUE((a->value() == 2 ? a : Ref(raw)) == b);
}

TEST(Ref, OfAConstObjectCountsToo) {
  Ref<const Node> constant = make<Node>();
  EXPECT_EQ(Node::alive, 1);
  const Ref<const NSObject> base = constant;
  constant = nullptr;
  EXPECT_TRUE(Node::alive == 1 && base);
}
