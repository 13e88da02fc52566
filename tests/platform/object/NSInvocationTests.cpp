// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSInvocation.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// An invocation of a method of Kinds.
Ref<NSInvocation> invocationOf(NSObject* target, Selector selector) {
  Ref<NSInvocation> invocation =
      NSInvocation::invocationWithMethodSignature(target->methodSignatureForSelector(selector));
  invocation->setTarget(target);
  invocation->setSelector(selector);
  return invocation;
}

/// Changes and drops the invocation that calls it.
class Saboteur : public NSObject {
  QF_CLASS(Saboteur, NSObject)
 public:
  Ref<NSString> swallow(NSString* given) {
    NSString* other = "other"_ns;
    invocation->setArgument_atIndex(&other, 2);
    invocation->setTarget(nullptr);
    invocation = nullptr;
    return given->stringByAppendingString("!"_ns);
  }
  int64_t lengthOf(const char* word) {
    const char* other = "x";
    invocation->setArgument_atIndex(&other, 2);
    return static_cast<int64_t>(std::strlen(word));
  }
  Ref<NSInvocation> invocation;
};
Class* Saboteur::classObject() {
  static Class* const cls = ClassBuilder<Saboteur>("Saboteur")
                                .method<&Saboteur::swallow>("swallow:"_sel)
                                .method<&Saboteur::lengthOf>("lengthOf:"_sel)
                                .build();
  return cls;
}

/// Answers a struct of its own making, with a signature that it makes anew each time.
class StructProxy : public NSProxy {
  QF_CLASS(StructProxy, NSProxy)
 public:
  Ref<NSMethodSignature> methodSignatureForSelector(Selector) const override {
    return NSMethodSignature::signatureWithObjCTypes("{_NSRange=QQ}@:");
  }
  void forwardInvocation(NSInvocation* invocation) override {
    const NSRange range{3, 4};
    invocation->setReturnValue(&range);
  }
};
Class* StructProxy::classObject() {
  static Class* const cls = ClassBuilder<StructProxy>("StructProxy").build();
  return cls;
}

}  // namespace

TEST(NSInvocation, CarriesAMessageAndItsResult) {
  const Ref<Counter> counter = Counter::initWithValue(10);
  const Ref<NSInvocation> invocation = invocationOf(counter, "plus:"_sel);
  const int64_t two = 2;
  invocation->setArgument_atIndex(&two, 2);
  invocation->invoke();
  int64_t result = 0;
  invocation->getReturnValue(&result);
  EXPECT_EQ(result, 12);
  EXPECT_EQ(invocation->result<int>(), 12);
  EXPECT_TRUE(invocation->target() == counter && invocation->selector() == "plus:"_sel);
}

TEST(NSInvocation, ArgumentsAreCountedFromTheTarget) {
  const Ref<Counter> counter = Counter::initWithValue(10), other = Counter::initWithValue(20);
  const Ref<NSInvocation> invocation = invocationOf(counter, "plus:"_sel);
  NSObject* target = nullptr;
  Selector selector;
  invocation->getArgument_atIndex(&target, 0);
  invocation->getArgument_atIndex(&selector, 1);
  EXPECT_TRUE(target == counter && selector == "plus:"_sel);
  invocation->setArgument_atIndex(&other, 0);  // a Ref lies in memory as a pointer does
  selector = "value"_sel;
  invocation->setArgument_atIndex(&selector, 1);
  EXPECT_TRUE(invocation->target() == other && invocation->selector() == "value"_sel);
}

TEST(NSInvocation, WhatWasNotSetIsZero) {
  const Ref<Kinds> kinds = make<Kinds>();
  int64_t number = 7;
  invocationOf(Counter::initWithValue(1), "plus:"_sel)->getArgument_atIndex(&number, 2);
  EXPECT_EQ(number, 0);
  NSString* string = "x"_ns;
  invocationOf(kinds, "echo:"_sel)->getArgument_atIndex(&string, 2);
  EXPECT_EQ(string, nullptr);
  const Ref<NSInvocation> invocation = invocationOf(kinds, "span:"_sel);
  EXPECT_EQ(invocation->result<Span>().location, 0U) << "before it was invoked";
  invocation->invoke();
  EXPECT_EQ(invocation->result<Span>().location, 1U);
  const Ref<NSInvocation> withBlock = invocationOf(kinds, "each:block:"_sel);
  EXPECT_THAT(raised([&] { withBlock->invoke(); }), HasSubstr("null"));
}

TEST(NSInvocation, RaisesForAnIndexOutOfBounds) {
  const Ref<NSInvocation> invocation = invocationOf(Counter::initWithValue(1), "plus:"_sel);
  int64_t place = 0;
  for (const int64_t index : {int64_t{3}, int64_t{-1}, INT64_MAX, INT64_MIN}) {
    EXPECT_THAT(raised([&] { invocation->getArgument_atIndex(&place, index); }),
                AllOf(StartsWith("NSRangeException"), HasSubstr("-[NSInvocation getArgument:atIndex:]"),
                      HasSubstr("[0 .. 2]")));
    EXPECT_THAT(raised([&] { invocation->setArgument_atIndex(&place, index); }),
                AllOf(StartsWith("NSRangeException"), HasSubstr("setArgument:atIndex:")));
  }
}

TEST(NSInvocation, RaisesForANullAddressSignatureOrSelector) {
  const Ref<NSInvocation> invocation = invocationOf(Counter::initWithValue(1), "plus:"_sel);
  for (const int64_t index : {0, 1, 2}) {
    EXPECT_THAT(raised([&] { invocation->getArgument_atIndex(nullptr, index); }), HasSubstr("nil argument"));
    EXPECT_THAT(raised([&] { invocation->setArgument_atIndex(nullptr, index); }), HasSubstr("nil argument"));
  }
  EXPECT_THAT(raised([&] { invocation->getReturnValue(nullptr); }), HasSubstr("getReturnValue:"));
  EXPECT_THAT(raised([&] { invocation->setReturnValue(nullptr); }), HasSubstr("setReturnValue:"));
  EXPECT_THAT(raised([] { NSInvocation::invocationWithMethodSignature(nullptr); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("signature")));
  invocation->setSelector(Selector());
  EXPECT_THAT(raised([&] { invocation->invoke(); }), HasSubstr("unrecognized selector"));
}

TEST(NSInvocation, ToNoTargetDoesNothing) {
  const Ref<NSInvocation> invocation = invocationOf(Counter::initWithValue(1), "pop"_sel);
  invocation->setTarget(nullptr);
  invocation->invoke();
  invocation->invokeWithTarget(nullptr);
  EXPECT_EQ(invocation->result<int>(), 0);
}

TEST(NSInvocation, InvokedWithAnotherTargetKeepsItsOwn) {
  const Ref<Counter> own = Counter::initWithValue(1), other = Counter::initWithValue(2);
  const Ref<NSInvocation> invocation = invocationOf(own, "pop"_sel);
  invocation->invokeWithTarget(other);
  EXPECT_EQ(invocation->result<int>(), 2);
  EXPECT_TRUE(invocation->target() == own && own->value() == 1 && other->value() == 1);
}

TEST(NSInvocation, OwnsTargetAndObjects) {
  Ref<NSInvocation> invocation;
  {
    const Ref<Kinds> kinds = make<Kinds>();
    const Ref<Capturer> capturer = make<Capturer>(kinds);
    EXPECT_TRUE(send<Ref<NSObject>>(capturer, "anything:"_sel, make<Node>()) == nullptr);
    invocation = capturer->captured();
    invocation->setTarget(kinds);
  }
  EXPECT_EQ(Node::alive, 1);
  invocation->invoke();
  EXPECT_TRUE(invocation->result<Ref<NSObject>>() != nullptr);
  invocation = nullptr;
  EXPECT_EQ(Node::alive, 0);
}

TEST(NSInvocation, OwnsCStrings) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Capturer> capturer = make<Capturer>(kinds);
  {
    std::string soonGone = "gone soon";
    send(capturer, "lengthOf:"_sel, soonGone.c_str());
    soonGone.assign(9, '\0');
  }
  const Ref<NSInvocation> captured = capturer->captured();
  captured->invokeWithTarget(kinds);
  EXPECT_EQ(captured->result<int>(), 9);
  const char* word = nullptr;
  captured->getArgument_atIndex(&word, 2);
  EXPECT_STREQ(word, "gone soon");
}

TEST(NSInvocation, OwnsBlocksAndLetsThemGo) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Capturer> capturer = make<Capturer>(kinds);
  const auto calls = std::make_shared<int>(0);
  {
    const auto block = [calls](int64_t) { return ++*calls > 0; };
    send(capturer, "each:block:"_sel, 5, BlockRef<bool(int64_t)>(block));
  }
  Ref<NSInvocation> captured = capturer->captured();
  EXPECT_EQ(calls.use_count(), 2);
  captured->invokeWithTarget(kinds);
  EXPECT_EQ(*calls, 5);
  captured = nullptr;
  EXPECT_EQ(calls.use_count(), 1);
}

TEST(NSInvocation, RaisesForABlockThatCannotBeKept) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Capturer> capturer = make<Capturer>(kinds);
  const auto single = [only = std::make_unique<int>(1)](int64_t) { return *only == 1; };
  const BlockRef<bool(int64_t)> block(single);
  EXPECT_EQ(send<int>(kinds, "each:block:"_sel, 2, block), 2) << "borrowed it is no matter";
  EXPECT_THAT(raised([&] { send(capturer, "each:block:"_sel, 2, block); }), HasSubstr("can't be copied"));
  EXPECT_TRUE(capturer->captured() == nullptr);
}

TEST(NSInvocation, TakesAndGivesABlockAsABlockRef) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<NSInvocation> invocation = invocationOf(kinds, "each:block:"_sel);
  const int64_t count = 3;
  invocation->setArgument_atIndex(&count, 2);
  int64_t sum = 0;
  {
    const auto adding = [&sum](int64_t i) { return (sum += i) >= 0; };
    const BlockRef<bool(int64_t)> block(adding);
    invocation->setArgument_atIndex(&block, 3);
  }
  invocation->invoke();
  EXPECT_EQ(sum, 3);
  OptionalBlockRef<bool(int64_t)> read;
  invocation->getArgument_atIndex(&read, 3);
  EXPECT_TRUE(read && read(10));
  EXPECT_EQ(sum, 13);
}

TEST(NSInvocation, GivesArgumentsInTheParametersOwnType) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Capturer> capturer = make<Capturer>(kinds);
  send(capturer, "small:"_sel, 5.0);
  struct {
    int8_t small = 0;
    int8_t guard = 77;
  } place;
  capturer->captured()->getArgument_atIndex(&place.small, 2);
  EXPECT_TRUE(place.small == 5 && place.guard == 77);
  send(capturer, "single:"_sel, 2);
  float single = 0;
  capturer->captured()->getArgument_atIndex(&single, 2);
  EXPECT_EQ(single, 2.F);
  send(capturer, "span:"_sel, Span{8, 9});
  Span span{};
  capturer->captured()->getArgument_atIndex(&span, 2);
  EXPECT_EQ(span.length, 9U);
}

TEST(NSInvocation, RaisesWhereAnArgumentIsOfAnotherTypeThanItsParameter) {
  const Ref<Capturer> capturer = make<Capturer>(make<Kinds>());
  int64_t place = 77;
  const auto reading = [&](auto argument, Selector selector) {
    send(capturer, selector, argument);
    return raised([&, captured = capturer->captured()] { captured->getArgument_atIndex(&place, 2); });
  };
  EXPECT_THAT(reading("text"_ns, "small:"_sel), AllOf(StartsWith("NSInvalidArgumentException"),
                                                      HasSubstr("argument 1 of small:"), HasSubstr("NSString")));
  EXPECT_THAT(reading(200, "small:"_sel), HasSubstr("200"));
  EXPECT_THAT(reading(1e300, "small:"_sel), HasSubstr("type c"));
  EXPECT_THAT(reading(5, "echo:"_sel), HasSubstr("an integer where @"));
  EXPECT_THAT(reading(Span{}, "echo:"_sel), HasSubstr("where @"));
  EXPECT_THAT(reading("text"_ns, "classOf:"_sel), HasSubstr("where #"));
  EXPECT_THAT(reading("text"_ns, "lengthOf:"_sel), HasSubstr("where r*"));
  EXPECT_THAT(reading(5, "span:"_sel), HasSubstr("{Span=QQ}"));
  EXPECT_THAT(reading("C string", "hasBlock:"_sel), HasSubstr("@?"));
  EXPECT_EQ(place, 77) << "nothing was written";
}

TEST(NSInvocation, TheResultCanBeSetAndReadBack) {
  const Ref<NSInvocation> invocation = invocationOf(make<Kinds>(), "anything:"_sel);
  {
    const Ref<Node> node = make<Node>();
    invocation->setReturnValue(&node);
  }
  EXPECT_EQ(Node::alive, 1) << "it is owned";
  NSObject* result = nullptr;
  invocation->getReturnValue(&result);
  EXPECT_TRUE(result && result == invocation->result<Ref<NSObject>>());
  EXPECT_THAT(raised([&] { invocation->result<Ref<NSString>>(); }), HasSubstr("the result of anything:"));
  EXPECT_THAT(raised([&] { invocation->result<int>(); }), HasSubstr("anything:"));
}

TEST(NSInvocation, AResultOutlivesTheSignatureThatItWasMadeWith) {
  const Ref<StructProxy> proxy = make<StructProxy>();
  EXPECT_EQ(send<NSRange>(proxy, "anyRange"_sel).length, 4U);
  EXPECT_THAT(raised([&] { send<Span>(proxy, "anyRange"_sel); }), HasSubstr("{Span=QQ}"));
}

TEST(NSInvocation, InvokingAgainForgetsTheLastResult) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<NSInvocation> invocation = invocationOf(kinds, "borrowed"_sel);
  invocation->invoke();
  EXPECT_TRUE(invocation->result<Ref<NSString>>() == "borrowed"_ns);
  invocation->setSelector("nothing"_sel);
  invocation->invoke();
  EXPECT_TRUE(invocation->result<Ref<NSString>>() == nullptr);
}

TEST(NSInvocation, SurvivesAMethodThatChangesAndDropsIt) {
  const Ref<Saboteur> saboteur = make<Saboteur>();
  saboteur->invocation = invocationOf(saboteur, "swallow:"_sel);
  {
    const Ref<NSString> argument = NSString::stringWithUTF8("an argument of some length");
    saboteur->invocation->setArgument_atIndex(&argument, 2);
  }
  saboteur->invocation->invoke();
  EXPECT_TRUE(saboteur->invocation == nullptr);
  const Ref<NSInvocation> second = invocationOf(saboteur, "lengthOf:"_sel);
  const std::string word(50, 'w');
  const char* chars = word.c_str();
  second->setArgument_atIndex(&chars, 2);
  saboteur->invocation = second;
  second->invoke();
  EXPECT_EQ(second->result<int>(), 50);
  second->invoke();
  EXPECT_EQ(second->result<int>(), 1);
  saboteur->invocation = nullptr;
}

TEST(NSInvocation, PassesThroughAProxyWithAllItsArguments) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Forwarder> proxy = make<Forwarder>(kinds);
  const Ref<NSInvocation> invocation = invocationOf(kinds, "matrix:"_sel);
  const Matrix matrix{{1, 2, 3, 4, 5, 6}};
  invocation->setArgument_atIndex(&matrix, 2);
  for (int round = 0; round < 2; ++round) {
    invocation->invokeWithTarget(proxy);
    EXPECT_EQ(invocation->result<Matrix>().cells[5], 12);
  }
}

TEST(NSInvocation, AWrongNumberOfArgumentsIsRefusedWhenItIsMade) {
  const Ref<Capturer> capturer = make<Capturer>(make<Kinds>());
  EXPECT_THAT(raised([&] { send(capturer, "small:"_sel); }), HasSubstr("small: takes 1 arguments, but 0 were given"));
  EXPECT_THAT(raised([&] { send(capturer, "nothing"_sel, 1, 2); }), HasSubstr("takes 0 arguments, but 2"));
}

TEST(NSInvocation, AnswersByName) {
  const Ref<Counter> counter = Counter::initWithValue(3);
  const Ref<NSMethodSignature> signature = counter->methodSignatureForSelector("pop"_sel);
  const auto invocation =
      send<Ref<NSInvocation>>(NSInvocation::classObject(), "invocationWithMethodSignature:"_sel, signature);
  send(invocation, "setTarget:"_sel, counter);
  send(invocation, "setSelector:"_sel, "pop"_sel);
  send(invocation, "invoke"_sel);
  int64_t result = 0;
  send(invocation, "getReturnValue:"_sel, static_cast<void*>(&result));
  EXPECT_EQ(result, 3);
  EXPECT_TRUE(send<bool>(invocation, "argumentsRetained"_sel));
}
