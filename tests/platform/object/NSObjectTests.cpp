// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSObject.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Equal by its number, and copied by it.
class Point : public NSObject {
  QF_CLASS(Point, NSObject)
 public:
  explicit Point(int n) : number(n) {}
  bool isEqual(const NSObject* other) const override {
    const auto* point = as<Point>(other);
    return point && point->number == number;
  }
  uint64_t hash() const override { return static_cast<uint64_t>(number); }
  Ref<NSObject> copyWithZone(NSZone*) const override { return make<Point>(number); }
  Ref<NSString> description() const override { return "a point"_ns; }
  const int number;
};
Class* Point::classObject() {
  static Class* const cls = ClassBuilder<Point>("Point").build();
  return cls;
}

/// Its contents stand behind it.
class Bytes : public NSObject {
 public:
  explicit Bytes(size_t n) : count(n) {
    for (size_t i = 0; i < n; ++i) data()[i] = static_cast<unsigned char>(i);
  }
  unsigned char* data() { return reinterpret_cast<unsigned char*>(this) + sizeof(detail::Made<Bytes>); }
  const size_t count;
};

/// Takes every message and counts it.
class CatchAll : public NSObject {
  QF_CLASS(CatchAll, NSObject)
 public:
  Ref<NSMethodSignature> methodSignatureForSelector(Selector s) const override {
    if (Ref<NSMethodSignature> known = NSObject::methodSignatureForSelector(s)) return known;
    return NSMethodSignature::signatureWithObjCTypes("@@:@");
  }
  void forwardInvocation(NSInvocation* invocation) override {
    ++caught;
    NSObject* argument = nullptr;
    invocation->getArgument_atIndex(&argument, 2);
    invocation->setReturnValue(&argument);
  }
  int caught = 0;
};
Class* CatchAll::classObject() {
  static Class* const cls = ClassBuilder<CatchAll>("CatchAll").build();
  return cls;
}

}  // namespace

static_assert(std::is_abstract_v<NSObject> && std::has_virtual_destructor_v<NSObject>);
static_assert(!std::is_default_constructible_v<Counter> && !std::is_destructible_v<NSObject>);

TEST(NSObject, IsMadeByMakeAndHeldByRef) {
  const Ref<Counter> counter = make<Counter>();
  EXPECT_EQ(counter->value(), 0);
  EXPECT_EQ(make<Point>(3)->number, 3);
}

TEST(NSObject, ItsContentsMayStandBehindIt) {
  const Ref<Bytes> bytes = makeSized<Bytes>(1000, size_t{1000});
  EXPECT_EQ(bytes->data()[999], 999 % 256);
}

TEST(NSObject, KnowsItsClassAndItsSuperclasses) {
  const Ref<SubCounter> sub = make<SubCounter>();
  EXPECT_TRUE(sub->isa() == SubCounter::classObject() && sub->class_() == sub->isa());
  EXPECT_EQ(sub->superclass(), Counter::classObject());
  EXPECT_TRUE(sub->isKindOfClass(Counter::classObject()) && sub->isKindOfClass(NSObject::classObject()));
  EXPECT_FALSE(sub->isKindOfClass(NSString::classObject()) || sub->isKindOfClass(nullptr));
  EXPECT_TRUE(sub->isMemberOfClass(SubCounter::classObject()) && !sub->isMemberOfClass(Counter::classObject()));
  EXPECT_FALSE(sub->isMemberOfClass(nullptr) || sub->isProxy());
}

TEST(NSObject, IsItselfUnlessItSaysOtherwise) {
  const Ref<Counter> a = Counter::initWithValue(1), b = Counter::initWithValue(1);
  EXPECT_TRUE(a->isEqual(a) && !a->isEqual(b) && !a->isEqual(nullptr));
  EXPECT_EQ(a->hash(), a->hash());
  const Ref<Point> p = make<Point>(1), q = make<Point>(1);
  EXPECT_TRUE(*p == *q && p != q && p->hash() == q->hash());
  EXPECT_TRUE(send<bool>(p, "isEqual:"_sel, q)) << "an override is called by name as well";
}

TEST(NSObject, RefusesToBeCopiedUnlessItSaysHow) {
  const Ref<Point> point = make<Point>(4);
  const Ref<NSObject> copy = point->copy();
  EXPECT_TRUE(copy != point && *copy == *point);
  EXPECT_TRUE(send<bool>(send<Ref<NSObject>>(point, "copy"_sel), "isEqual:"_sel, point));
  EXPECT_TRUE(send<bool>(send<Ref<NSObject>>(point, "copyWithZone:"_sel, nullptr), "isEqual:"_sel, point));
  EXPECT_THAT(raised([&] { point->mutableCopy(); }), HasSubstr("-[Point mutableCopyWithZone:]: unrecognized selector"));
  EXPECT_THAT(raised([] { Counter::initWithValue(1)->copy(); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("-[Counter copyWithZone:]")));
}

TEST(NSObject, PerformsASelectorThatItIsGiven) {
  const Ref<Kinds> kinds = make<Kinds>();
  EXPECT_TRUE(kinds->performSelector("borrowed"_sel) == "borrowed"_ns);
  EXPECT_TRUE(kinds->performSelector_withObject("echo:"_sel, "text"_ns) == "text"_ns);
  EXPECT_TRUE(kinds->performSelector_withObject("echo:"_sel, nullptr) == nullptr);
  EXPECT_TRUE(kinds->performSelector("nothing"_sel) == nullptr);
  EXPECT_EQ(kinds->calls, 1);
  EXPECT_TRUE(Counter::initWithValue(1)->performSelector("value"_sel) == nullptr) << "a number is no object";
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "performSelector:withObject:"_sel, "echo:"_sel, "text"_ns) == "text"_ns);
}

TEST(NSObject, PerformsWithTwoObjects) {
  const Ref<CatchAll> all = make<CatchAll>();
  EXPECT_THAT(raised([&] { all->performSelector_withObject_withObject("one:two:"_sel, all, all); }),
              HasSubstr("takes 1 arguments, but 2"));
  EXPECT_TRUE(all->performSelector_withObject("one:"_sel, "text"_ns) == "text"_ns);
}

TEST(NSObject, RaisesWhereItCannotPerform) {
  const Ref<Kinds> kinds = make<Kinds>();
  EXPECT_THAT(raised([&] { kinds->performSelector("nobodyKnowsThis"_sel); }), HasSubstr("unrecognized selector"));
  EXPECT_THAT(raised([&] { kinds->performSelector(Selector()); }), HasSubstr("unrecognized selector"));
  EXPECT_THAT(raised([&] { kinds->performSelector("echo:"_sel); }), HasSubstr("takes 1 arguments, but 0"));
  EXPECT_THAT(raised([&] { kinds->performSelector_withObject("small:"_sel, "text"_ns); }), HasSubstr("NSString"));
  EXPECT_THAT(raised([&] { kinds->performSelector_withObject("echo:"_sel, kinds); }), HasSubstr("is Kinds"));
}

TEST(NSObject, TellsWhatItRespondsTo) {
  const Ref<SubCounter> sub = make<SubCounter>();
  EXPECT_TRUE(sub->respondsToSelector("plus:"_sel) && sub->respondsToSelector("hash"_sel));
  EXPECT_FALSE(sub->respondsToSelector("plus"_sel) || sub->respondsToSelector(Selector()));
  EXPECT_TRUE(sub->methodSignatureForSelector("plus"_sel) == nullptr);
  EXPECT_TRUE(send<bool>(sub, "respondsToSelector:"_sel, "plus:"_sel));
}

TEST(NSObject, ForwardsWhatItDoesNotKnow) {
  const Ref<CatchAll> all = make<CatchAll>();
  EXPECT_TRUE(send<Ref<NSString>>(all, "whatever:"_sel, "text"_ns) == "text"_ns);
  EXPECT_TRUE(send<Ref<NSString>>(all, "whatever:"_sel, "text"_ns) == "text"_ns) << "and so each time";
  EXPECT_EQ(all->caught, 2);
  EXPECT_TRUE(send<Class*>(all, "class"_sel) == CatchAll::classObject()) << "what it knows it answers itself";
}

TEST(NSObject, CanNotBeWalkedUnlessItIsACollection) {
  NSFastEnumerationState state{};
  NSObject* room[4];
  EXPECT_THAT(raised([&] { make<Counter>()->countByEnumeratingWithState_objects_count(&state, room, 4); }),
              HasSubstr("-[Counter countByEnumeratingWithState:objects:count:]: unrecognized selector"));
}

TEST(NSObject, AnswersEachOfItsOperationsByName) {
  for (const char* name : {"self",
                           "class",
                           "superclass",
                           "isEqual:",
                           "hash",
                           "description",
                           "debugDescription",
                           "isKindOfClass:",
                           "isMemberOfClass:",
                           "conformsToProtocol:",
                           "isProxy",
                           "copy",
                           "mutableCopy",
                           "copyWithZone:",
                           "mutableCopyWithZone:",
                           "respondsToSelector:",
                           "methodSignatureForSelector:",
                           "forwardInvocation:",
                           "doesNotRecognizeSelector:",
                           "performSelector:",
                           "performSelector:withObject:",
                           "performSelector:withObject:withObject:",
                           "countByEnumeratingWithState:objects:count:"}) {
    EXPECT_TRUE(NSObject::classObject()->instancesRespondToSelector(registerSelector(name))) << name;
  }
  const Ref<Counter> counter = Counter::initWithValue(1);
  EXPECT_TRUE(send<Ref<NSObject>>(counter, "self"_sel) == counter);
  EXPECT_EQ(send<Class*>(counter, "superclass"_sel), NSObject::classObject());
  EXPECT_TRUE(send<bool>(counter, "isKindOfClass:"_sel, Counter::classObject()));
}
