// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AdditionGroup.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

namespace {

quoll::Ref<quoll::NSString> stringByShouting(const quoll::NSString* receiver) {
  return receiver ? receiver->stringByAppendingString(quoll::operator""_ns < "!">()) : nullptr;
}
constinit const quoll::AdditionGroup<quoll::NSString> shouting{
    "Shouting", {quoll::method<&stringByShouting>(quoll::operator""_sel < "stringByShouting">())}};

}  // namespace

TEST(AdditionGroup, AddsAnOperationToAClassOfThePlatform) {
  using namespace quoll::literals;
  const quoll::RegisterGroup registered{shouting};
  const auto shout = quoll::send<quoll::Ref<quoll::NSString>>("hey"_ns, "stringByShouting"_sel);
  EXPECT_TRUE(quoll::isEqual(shout, "hey!"_ns));
}

using namespace quoll;
using namespace quoll::testsupport;
using testing::HasSubstr;

namespace {

// Classes of one test each: what a group adds stays.
class Pet : public Counter {
  QF_CLASS(Pet, Counter)
 public:
  int64_t plus(int64_t n) override { return value_ - n; }
};
class Cat : public Pet {
  QF_CLASS(Cat, Pet)
};
Class* Pet::classObject() {
  static Class* const cls = ClassBuilder<Pet>("Pet").build();
  return cls;
}
Class* Cat::classObject() {
  static Class* const cls = ClassBuilder<Cat>("Cat").build();
  return cls;
}

Ref<NSString> greet(Counter*) { return "hello"_ns; }
Ref<NSString> greetBetter(Counter*) { return "good morning"_ns; }
Ref<NSString> greetAsCat(Cat*) { return "meow"_ns; }
Ref<NSString> answer(Counter*) { return "42"_ns; }
Ref<NSString> betterAnswer(Counter*) { return "43"_ns; }
int64_t plusFromGroup(Counter*, int64_t) { return 99; }
Ref<NSString> kindOf(NSObject* receiver) { return NSString::stringWithUTF8(receiver->isa()->name()); }
Ref<NSString> nameOfClass(Class* cls) { return NSString::stringWithUTF8(cls->name()); }
Ref<Counter> initWithDouble(double v, Class* cls) {
  return Counter::initWithValue_ofClass(static_cast<int64_t>(v), cls);
}

constinit const AdditionGroup<Counter> greeting{
    "Greeting",
    {method<&greet>("greet"_sel), method<&plusFromGroup>("plus:"_sel),
     initializer<&initWithDouble>("initWithDouble:"_sel), classMethod<&nameOfClass>("nameOfClass"_sel)}};
constinit const AdditionGroup<Counter> betterGreeting{"Better", {method<&greetBetter>("greet"_sel)}};
constinit const AdditionGroup<Cat> catGreeting{"CatGreeting", {method<&greetAsCat>("greet"_sel)}};
constinit const AdditionGroup<Pet> petPlus{"PetPlus", {method<&plusFromGroup>("plus:"_sel)}};
constinit const AdditionGroup<Counter> answers{"Answers", {method<&answer>("answer"_sel)}};
constinit const AdditionGroup<Counter> betterAnswers{"BetterAnswers", {method<&betterAnswer>("answer"_sel)}};
constinit const AdditionGroup<NSObject> naming{"Naming", {method<&kindOf>("kindOf"_sel)}};
constinit const AdditionGroup<Counter> late{"Late", {method<&greet>("comeLate"_sel)}};
constinit const AdditionGroup<Counter> empty{"Empty", {}};

std::string answerOf(NSObject* receiver) { return text(send<Ref<NSString>>(receiver, "answer"_sel)); }
std::string greetingOf(NSObject* receiver) { return text(send<Ref<NSString>>(receiver, "greet"_sel)); }

}  // namespace

TEST(AdditionGroup, RegisteredLateIsSeenByASubclassInUse) {
  const Ref<SubCounter> sub = make<SubCounter>();
  EXPECT_EQ(send<int64_t>(sub, "plus:"_sel, 1), -1);
  EXPECT_THAT(raised([&] { send(sub, "comeLate"_sel); }), HasSubstr("-[SubCounter comeLate]: unrecognized selector"));
  EXPECT_FALSE(sub->respondsToSelector("comeLate"_sel));
  const RegisterGroup registered{late};
  EXPECT_EQ(text(send<Ref<NSString>>(sub, "comeLate"_sel)), "hello");
  EXPECT_TRUE(sub->respondsToSelector("comeLate"_sel));
}

TEST(AdditionGroup, OfTheRootReachesLiteralsAndClasses) {
  const RegisterGroup registered{naming};
  EXPECT_EQ(text(send<Ref<NSString>>("x"_ns, "kindOf"_sel)), "x"_ns->isa()->name());
  EXPECT_EQ(text(send<Ref<NSString>>(Counter::classObject(), "kindOf"_sel)), "Class") << "and needs no twin";
}

TEST(AdditionGroup, OfTheRootIsForwardedByAProxy) {
  const RegisterGroup registered{naming};
  const Ref<Forwarder> proxy = make<Forwarder>(Counter::initWithValue(1));
  EXPECT_EQ(text(send<Ref<NSString>>(proxy, "kindOf"_sel)), "Counter");
}

TEST(AdditionGroup, LosesAgainstAnOwnMethod) {
  const RegisterGroup registered{greeting};
  EXPECT_EQ(send<int64_t>(Counter::initWithValue(2), "plus:"_sel, 1), 3);
}

TEST(AdditionGroup, OfASubclassWinsOverAnInheritedMethod) {
  const Ref<Pet> pet = make<Pet>();
  EXPECT_EQ(send<int64_t>(pet, "plus:"_sel, 1), -1);
  const RegisterGroup registered{petPlus};
  EXPECT_EQ(send<int64_t>(pet, "plus:"_sel, 1), 99);
  EXPECT_EQ(send<int64_t>(Counter::initWithValue(2), "plus:"_sel, 1), 3);
}

TEST(AdditionGroup, LaterOneWinsAlsoForASenderThatKnewTheEarlier) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  const auto ask = [&] { return greetingOf(counter); };
  const RegisterGroup first{greeting};
  EXPECT_EQ(ask(), "hello");
  const RegisterGroup second{betterGreeting};
  EXPECT_EQ(ask(), "good morning");
  const RegisterGroup again{greeting};
  EXPECT_EQ(ask(), "hello");
}

TEST(AdditionGroup, OfASubclassWinsOverALaterOneOfItsBase) {
  const RegisterGroup first{catGreeting};
  const RegisterGroup second{greeting};
  EXPECT_EQ(greetingOf(make<Cat>()), "meow");
  EXPECT_EQ(greetingOf(Counter::initWithValue(1)), "hello");
}

TEST(AdditionGroup, ClassMethodGetsTheClassThatWasAsked) {
  const RegisterGroup registered{greeting};
  EXPECT_EQ(text(send<Ref<NSString>>(Counter::classObject(), "nameOfClass"_sel)), "Counter");
  EXPECT_EQ(text(send<Ref<NSString>>(SubCounter::classObject(), "nameOfClass"_sel)), "SubCounter");
  EXPECT_THAT(raised([] { send(Counter::initWithValue(1), "nameOfClass"_sel); }), HasSubstr("unrecognized selector"));
}

TEST(AdditionGroup, InitializerMakesTheClassThatWasAllocated) {
  const RegisterGroup registered{greeting};
  const auto made = send<Ref<Counter>>(alloc(SubCounter::classObject()), "initWithDouble:"_sel, 7.5);
  EXPECT_TRUE(made->isa() == SubCounter::classObject() && made->value() == 7);
}

TEST(AdditionGroup, WithoutMethodsChangesNothing) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  const RegisterGroup registered{empty};
  EXPECT_EQ(send<int64_t>(counter, "plus:"_sel, 1), 2);
}

TEST(AdditionGroup, SentToNullAnswersNothing) {
  EXPECT_TRUE(stringByShouting(nullptr) == nullptr);
  EXPECT_TRUE(send<Ref<NSString>>(nullptr, "stringByShouting"_sel) == nullptr);
}

TEST(AdditionGroup, RegisteredAgainAndAgainStaysRightAndSmall) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  for (int i = 0; i < 200; ++i) {
    const RegisterGroup registered{i % 2 ? GroupRecord(greeting) : GroupRecord(betterGreeting)};
    ASSERT_EQ(greetingOf(counter), i % 2 ? "hello" : "good morning");
  }
}

TEST(AdditionGroup, TwoThreadsSendWhileAThirdRegisters) {
  const RegisterGroup first{answers};
  const Ref<Counter> counter = Counter::initWithValue(1);
  const Ref<SubCounter> sub = make<SubCounter>();
  std::atomic<bool> stop{false};
  std::atomic<int> wrong{0}, sent{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&, t] {
      NSObject* mine = t ? static_cast<NSObject*>(counter) : sub;
      while (!stop) {
        wrong += send<int64_t>(counter, "plus:"_sel, 1) != 2 || send<int64_t>(sub, "plus:"_sel, 1) != -1;
        const std::string answered = answerOf(mine);
        wrong += answered != "42" && answered != "43";
        wrong += !mine->methodSignatureForSelector("answer"_sel);
        wrong += send<Class*>(mine, "class"_sel) != mine->isa();
        ++sent;
      }
    });
  }
  for (int i = 0; i < 100 || sent < 100; ++i) {
    const RegisterGroup registered{i % 2 ? GroupRecord(answers) : GroupRecord(betterAnswers)};
    std::this_thread::yield();
  }
  stop = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  const RegisterGroup last{betterAnswers};
  EXPECT_EQ(answerOf(sub), "43");
}
