// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Class.h"

#include <gmock/gmock.h>

#include <errno.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Two classes that mention each other, and one that is built only when a test asks.
class Parent : public NSObject {
  QF_CLASS(Parent, NSObject)
 public:
  Ref<class Child> child();
};
class Child : public NSObject {
  QF_CLASS(Child, NSObject)
 public:
  Ref<Parent> parent() { return make<Parent>(); }
};
Ref<Child> Parent::child() { return make<Child>(); }
Class* Parent::classObject() {
  static Class* const cls = ClassBuilder<Parent>("Parent").method<&Parent::child>("child"_sel).build();
  return cls;
}
Class* Child::classObject() {
  static Class* const cls = ClassBuilder<Child>("Child").method<&Child::parent>("parent"_sel).build();
  return cls;
}

/// Must be told what it is made of.
class Picky : public NSObject {
  QF_CLASS(Picky, NSObject)
 protected:
  explicit Picky(int) {}
};
Class* Picky::classObject() {
  static Class* const cls = ClassBuilder<Picky>("Picky").build();
  return cls;
}

class Latecomer : public NSObject {
  QF_CLASS(Latecomer, NSObject)
};
Class* Latecomer::classObject() {
  static Class* const cls = ClassBuilder<Latecomer>("Latecomer").build();
  return cls;
}

class Racer : public NSObject {
  QF_CLASS(Racer, NSObject)
};
Class* Racer::classObject() {
  static Class* const cls = ClassBuilder<Racer>("Racer").build();
  return cls;
}

}  // namespace

TEST(Class, IsListedAndFoundByNameThoughNobodyTouchedIt) {
  const std::vector<Class*> all = allClasses();
  const auto isThere = [&](std::string_view name) {
    return std::any_of(all.begin(), all.end(), [&](Class* cls) { return cls->name() == name; });
  };
  for (const char* name :
       {"NSObject", "NSProxy", "Class", "Protocol", "NSInvocation", "NSMethodSignature", "NSString"}) {
    EXPECT_TRUE(isThere(name)) << name;
    EXPECT_TRUE(classNamed(name) != nullptr) << name;
  }
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [](Class* a, Class* b) { return a->name() < b->name(); }));
}

TEST(Class, IsFoundByNameAndNothingIsFoundByAnother) {
  EXPECT_EQ(classNamed("NSString"), NSString::classObject());
  EXPECT_EQ(classNamed("Latecomer"), nullptr) << "a client's class is known from its first use";
  Class* latecomer = Latecomer::classObject();
  EXPECT_EQ(classNamed("Latecomer"), latecomer);
  EXPECT_EQ(classNamed("NSNothing"), nullptr);
  EXPECT_EQ(classNamed(""), nullptr);
}

TEST(Class, KnowsItsNameItsSuperclassAndItsSubclasses) {
  EXPECT_EQ(SubCounter::classObject()->name(), "SubCounter");
  EXPECT_EQ(SubCounter::classObject()->superclass(), Counter::classObject());
  EXPECT_EQ(NSObject::classObject()->superclass(), nullptr);
  EXPECT_TRUE(SubCounter::classObject()->isSubclassOfClass(Counter::classObject()));
  EXPECT_TRUE(Counter::classObject()->isSubclassOfClass(Counter::classObject()));
  EXPECT_FALSE(Counter::classObject()->isSubclassOfClass(SubCounter::classObject()));
  EXPECT_FALSE(Counter::classObject()->isSubclassOfClass(NSString::classObject()));
  EXPECT_FALSE(Counter::classObject()->isSubclassOfClass(nullptr));
}

TEST(Class, IsAnObjectThatAnswersWhatObjectsAnswer) {
  Class* cls = SubCounter::classObject();
  EXPECT_EQ(cls->isa(), Class::classObject());
  EXPECT_EQ(Class::classObject()->isa(), Class::classObject());
  EXPECT_EQ(text(cls->description()), "SubCounter");
  EXPECT_EQ(text(send<Ref<NSString>>(cls, "description"_sel)), "SubCounter");
  EXPECT_EQ(send<Class*>(cls, "class"_sel), cls);
  EXPECT_EQ(send<Class*>(cls, "superclass"_sel), Counter::classObject());
  EXPECT_TRUE(send<bool>(cls, "isEqual:"_sel, cls) && !send<bool>(cls, "isProxy"_sel));
  EXPECT_TRUE(send<Ref<NSObject>>(cls, "copy"_sel) == cls);
  EXPECT_TRUE(send<bool>(cls, "isSubclassOfClass:"_sel, Counter::classObject()));
  EXPECT_TRUE(send<bool>(cls, "respondsToSelector:"_sel, "alloc"_sel));
  EXPECT_FALSE(send<bool>(cls, "respondsToSelector:"_sel, "plus:"_sel));
}

TEST(Class, TellsWhatItsInstancesAnswer) {
  Class* cls = SubCounter::classObject();
  EXPECT_TRUE(cls->instancesRespondToSelector("plus:"_sel) && !cls->instancesRespondToSelector("alloc"_sel));
  EXPECT_FALSE(cls->instancesRespondToSelector(Selector()));
  EXPECT_TRUE(send<bool>(cls, "instancesRespondToSelector:"_sel, "value"_sel));
  EXPECT_EQ(cls->instanceMethodSignatureForSelector("plus:"_sel)->encoding(), "q@:q");
  EXPECT_TRUE(cls->instanceMethodSignatureForSelector("nothingOfTheKind"_sel) == nullptr);
  EXPECT_TRUE(send<Ref<NSMethodSignature>>(cls, "instanceMethodSignatureForSelector:"_sel, "value"_sel) != nullptr);
}

TEST(Class, ClassMethodsComeBeforeTheRootsInstanceMethods) {
  EXPECT_EQ(send<int64_t>(SubCounter::classObject(), "value"_sel), -1) << "its own, inherited";
  EXPECT_EQ(send<Class*>(Counter::classObject(), "self"_sel), Counter::classObject()) << "the root's, of any object";
  EXPECT_THAT(raised([] { send(Counter::classObject(), "plus:"_sel, 1); }),
              HasSubstr("+[Counter plus:]: unrecognized selector"))
      << "an instance method of its own is out of reach";
  EXPECT_THAT(raised([] { send(Counter::initWithValue(1), "alloc"_sel); }), HasSubstr("-[Counter alloc]"));
}

TEST(Class, RefusesASecondOneOfANameNamingBothModules) {
  Class* counter = Counter::classObject();
  const std::string text = raised([] { ClassBuilder<Counter>("Counter").build(); });
  EXPECT_THAT(text, StartsWith("NSInternalInconsistencyException"));
  EXPECT_THAT(text, HasSubstr("two classes named Counter"));
  const std::string module = program_invocation_short_name;
  const size_t first = text.find(module);
  EXPECT_TRUE(first != text.npos && text.find(module, first + 1) != text.npos) << text;
  EXPECT_EQ(classNamed("Counter"), counter) << "the first one stays";
  EXPECT_THAT(raised([] { ClassBuilder<Child>("NSString").build(); }), HasSubstr("libQuollFoundation"));
}

TEST(Class, MayMentionOneThatMentionsIt) {
  const auto child = send<Ref<Child>>(make<Parent>(), "child"_sel);
  EXPECT_TRUE(as<Parent>(send<Ref<NSObject>>(child, "parent"_sel)) != nullptr);
}

TEST(Class, CreatesPlainInstancesWhereItCan) {
  EXPECT_TRUE(create<Counter>(SubCounter::classObject())->isa() == SubCounter::classObject());
  EXPECT_THAT(raised([] { create<Picky>(Picky::classObject()); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("Picky")));
  EXPECT_THAT(raised([] { create<SubCounter>(Counter::classObject()); }), HasSubstr("Counter is no SubCounter"));
  EXPECT_TRUE(create<Counter>(nullptr) == nullptr);
}

TEST(Class, IsBuiltOnceByManyThreads) {
  std::vector<std::thread> threads;
  std::atomic<Class*> seen{nullptr};
  std::atomic<int> wrong{0};
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      Class* cls = send<Class*>(make<Racer>(), "class"_sel);
      Class* expected = nullptr;
      if (!seen.compare_exchange_strong(expected, cls) && expected != cls) ++wrong;
      allClasses();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}
