// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Send.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "QuollFoundation/platform/object/AutoreleaseScope.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const auto isArgumentError = StartsWith("NSInvalidArgumentException: ");

/// The sender sees them by name only, so that each test is one message.
struct Send : testing::Test {
  const Ref<Kinds> kinds = make<Kinds>();
};

/// Answers with a new Node each time: what a sender ignores must still be let go.
class Giver : public NSObject {
  QF_CLASS(Giver, NSObject)
 public:
  Ref<NSObject> give() { return make<Node>(); }
  double real() { return ++asked; }
  float single() { return static_cast<float>(++asked); }
  int64_t integer() { return ++asked; }
  Span span() { return {static_cast<uint64_t>(++asked), 0}; }
  const char* word() {
    ++asked;
    return "word";
  }
  void nothing() { ++asked; }
  int asked = 0;
};
Class* Giver::classObject() {
  static Class* const cls = ClassBuilder<Giver>("Giver")
                                .method<&Giver::give>("give"_sel)
                                .method<&Giver::real>("real"_sel)
                                .method<&Giver::single>("single"_sel)
                                .method<&Giver::integer>("integer"_sel)
                                .method<&Giver::span>("span"_sel)
                                .method<&Giver::word>("word"_sel)
                                .method<&Giver::nothing>("nothing"_sel)
                                .build();
  return cls;
}

/// Answers one selector from a class of its own.
template <int n> class Numbered : public Counter {
 public:
  int64_t plus(int64_t) override { return n; }
};

class Mute : public NSObject {
  QF_CLASS(Mute, NSObject)
 public:
  void doesNotRecognizeSelector(Selector selector) const override { refused.emplace_back(selector.name()); }
  mutable std::vector<std::string> refused;
};
Class* Mute::classObject() {
  static Class* const cls = ClassBuilder<Mute>("Mute").build();
  return cls;
}

}  // namespace

TEST_F(Send, CallsTheMethodOfItsName) {
  const Ref<Counter> counter = Counter::initWithValue(10);
  EXPECT_EQ(send<int64_t>(counter, "plus:"_sel, 2), 12);
  send(counter, "setValue:"_sel, 5);
  EXPECT_EQ(send<int64_t>(counter, "value"_sel), 5);
  EXPECT_EQ(send<int64_t>(make<SubCounter>(), "plus:"_sel, 2), -2) << "an override is called";
}

TEST_F(Send, ToNullAnswersZero) {
  EXPECT_EQ(send<int>(nullptr, "plus:"_sel, 1), 0);
  EXPECT_EQ(send<double>(Ref<Counter>(), "half:"_sel, 1.0), 0);
  EXPECT_TRUE(send<Ref<NSString>>(nullptr, "echo:"_sel, "x"_ns) == nullptr);
  EXPECT_EQ(send<NSRange>(nullptr, "range:"_sel, NSRange{1, 2}).length, 0U);
  EXPECT_EQ(send<Class*>(nullptr, "class"_sel), nullptr);
  send(nullptr, "nothing"_sel);
  send(nullptr, Selector());
}

TEST_F(Send, ConvertsIntegersOfAnyWidth) {
  EXPECT_EQ(send<int>(kinds, "small:"_sel, uint16_t{12}), 12);
  EXPECT_EQ(send<uint64_t>(kinds, "small:"_sel, int64_t{-1}), std::numeric_limits<uint64_t>::max());
  EXPECT_EQ(send<uint64_t>(kinds, "natural:"_sel, std::numeric_limits<uint64_t>::max()),
            std::numeric_limits<uint64_t>::max());
  EXPECT_TRUE(send<bool>(kinds, "flag:"_sel, 256));
  EXPECT_FALSE(send<bool>(kinds, "flag:"_sel, 0));
  EXPECT_EQ(send<char16_t>(kinds, "unit:"_sel, u'\xFFFF'), u'\xFFFF');
  EXPECT_EQ(send<Colour>(kinds, "colour:"_sel, Colour::Green), Colour::Green);
  EXPECT_EQ(send<int>(kinds, "colour:"_sel, 200), 200);
}

TEST_F(Send, ConvertsBetweenIntegersAndReals) {
  EXPECT_EQ(send<double>(kinds, "half:"_sel, 5), 2.5);
  EXPECT_EQ(send<double>(kinds, "half:"_sel, 5.F), 2.5);
  EXPECT_EQ(send<int>(kinds, "half:"_sel, 9.0), 4) << "towards zero, as in C++";
  EXPECT_EQ(send<float>(kinds, "single:"_sel, 3), 3.F);
  EXPECT_EQ(send<double>(kinds, "single:"_sel, 0.5), 0.5);
  EXPECT_EQ(send<int>(kinds, "small:"_sel, 7.9), 7);
  EXPECT_TRUE(send<bool>(kinds, "flag:"_sel, 0.25));
  EXPECT_EQ(send<double>(kinds, "half:"_sel, uint64_t{1} << 63), 0x1p62) << "an unsigned number stays positive";
  EXPECT_EQ(send<uint64_t>(kinds, "natural:"_sel, 0x1p63), uint64_t{1} << 63);
}

TEST_F(Send, RaisesForANumberThatDoesNotFit) {
  EXPECT_THAT(raised([&] { send<int8_t>(kinds, "small:"_sel, 200); }),
              AllOf(isArgumentError, HasSubstr("argument 1 of"), HasSubstr("Kinds::small"), HasSubstr("200"),
                    HasSubstr("type c")));
  EXPECT_THAT(raised([&] { send(kinds, "small:"_sel, -129); }), HasSubstr("-129"));
  EXPECT_THAT(raised([&] { send(kinds, "unit:"_sel, 0x10000); }), HasSubstr("65536"));
  EXPECT_THAT(raised([&] { send(kinds, "colour:"_sel, 256); }), HasSubstr("256"));
  EXPECT_THAT(raised([&] { send(kinds, "small:"_sel, 1e300); }), isArgumentError);
  EXPECT_THAT(raised([&] { send(kinds, "natural:"_sel, std::numeric_limits<double>::quiet_NaN()); }), isArgumentError);
  EXPECT_THAT(raised([&] { send(kinds, "natural:"_sel, 0x1p64); }), isArgumentError);
}

TEST_F(Send, RaisesForAResultThatDoesNotFitNamingTheMethod) {
  const Ref<Counter> counter = Counter::initWithValue(0);
  EXPECT_THAT(raised([&] { send<int8_t>(counter, "plus:"_sel, 210); }),
              AllOf(isArgumentError, HasSubstr("the result of plus: is 210"), HasSubstr("type c")));
  EXPECT_THAT(raised([&] { send<float>(counter, "class"_sel); }), AllOf(isArgumentError, HasSubstr("class")));
  EXPECT_THAT(raised([&] { send<Ref<NSString>>(kinds, "hiddenCounter"_sel); }),
              AllOf(isArgumentError, HasSubstr("the result of hiddenCounter is Counter where NSString belongs")));
  EXPECT_THAT(raised([&] { send<Ref<NSString>>(counter, "plus:"_sel, 1); }), HasSubstr("NSString"));
}

TEST_F(Send, PassesObjectsAndNull) {
  EXPECT_TRUE(send<Ref<NSString>>(kinds, "echo:"_sel, "text"_ns) == "text"_ns);
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "take:"_sel, Ref<NSString>("text"_ns)) == "text"_ns);
  EXPECT_TRUE(send<Ref<NSString>>(kinds, "echo:"_sel, nullptr) == nullptr);
  EXPECT_TRUE(send<Ref<NSString>>(kinds, "take:"_sel, Ref<NSString>()) == nullptr);
  EXPECT_TRUE(send<Ref<NSString>>(kinds, "borrowed"_sel) == "borrowed"_ns);
  const NSObject* constant = "constant"_ns;
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "anything:"_sel, constant) == constant);
  const Ref<Node> node = make<Node>();
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "anything:"_sel, node) == node);
}

TEST_F(Send, RaisesForAnObjectOfAnotherClassNamingBothAndTheMethod) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  const auto error = AllOf(isArgumentError, HasSubstr("argument 1 of"), HasSubstr("Kinds::echo"),
                           HasSubstr("is Counter where NSString belongs"));
  EXPECT_THAT(raised([&] { send<Ref<NSString>>(kinds, "echo:"_sel, counter); }), error);
  EXPECT_THAT(raised([&] { send<int>(kinds, "echo:"_sel, counter); }), error) << "also where the result is no object";
  EXPECT_THAT(raised([&] { send<Ref<NSString>>(kinds, "take:"_sel, counter); }), HasSubstr("Counter"));
  EXPECT_THAT(raised([&] { send<Class*>(kinds, "classOf:"_sel, counter); }), HasSubstr("where Class belongs"));
  const Ref<Forwarder> proxy = make<Forwarder>("text"_ns);
  EXPECT_THAT(raised([&] { send<Ref<NSString>>(kinds, "echo:"_sel, proxy); }), HasSubstr("is Forwarder"))
      << "a proxy is of no class";
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "anything:"_sel, proxy) == proxy);
}

TEST_F(Send, RaisesForAnArgumentOfAnotherKind) {
  EXPECT_THAT(raised([&] { send(kinds, "span:"_sel, 3); }),
              AllOf(isArgumentError, HasSubstr("argument 1 of"), HasSubstr("an integer where {Span=QQ}")));
  EXPECT_THAT(raised([&] { send(kinds, "small:"_sel, "text"_ns); }), AllOf(HasSubstr("NSString"), HasSubstr("c ")));
  EXPECT_THAT(raised([&] { send(kinds, "small:"_sel, nullptr); }), isArgumentError);
  EXPECT_THAT(raised([&] { send(kinds, "echo:"_sel, "a C string"); }), HasSubstr("a C string where NSString"));
  EXPECT_THAT(raised([&] { send(kinds, "echo:"_sel, 5); }), HasSubstr("an integer where NSString"));
  EXPECT_THAT(raised([&] { send(kinds, "word:"_sel, "text"_ns); }), HasSubstr("NSString where a C string"));
  EXPECT_THAT(raised([&] { send(kinds, "span:"_sel, NSRange{1, 2}); }), isArgumentError) << "another struct";
  EXPECT_THAT(raised([&] { send(kinds, "selector:"_sel, "plus:"); }), isArgumentError);
  EXPECT_THAT(raised([&] { send(kinds, "context:"_sel, 5); }), isArgumentError);
}

TEST_F(Send, RaisesForAnotherNumberOfArguments) {
  EXPECT_THAT(raised([&] { send(kinds, "small:"_sel); }),
              AllOf(isArgumentError, HasSubstr("Kinds::small"), HasSubstr("takes 1 arguments, but 0 were given")));
  EXPECT_THAT(raised([&] { send(kinds, "nothing"_sel, 1); }), HasSubstr("takes 0 arguments, but 1 were given"));
  EXPECT_THAT(raised([&] { send<int>(kinds, "sum:count:"_sel, nullptr); }), HasSubstr("takes 2 arguments"));
  EXPECT_EQ(kinds->calls, 0);
}

TEST_F(Send, PassesStructsByValue) {
  EXPECT_EQ(send<Span>(kinds, "span:"_sel, Span{1, 5}).location, 2U);
  EXPECT_EQ(send<NSRange>(kinds, "range:"_sel, NSRange{1, 5}).length, 5U) << "also to a parameter by reference";
  const Matrix doubled = send<Matrix>(kinds, "matrix:"_sel, Matrix{{1, 2, 3, 4, 5, 6}});
  EXPECT_EQ(doubled.cells[5], 12);
}

TEST_F(Send, FillsOutParametersAndTellsTheirTypesApart) {
  Ref<NSString> out;
  send(kinds, "out:"_sel, &out);
  EXPECT_TRUE(out == "out"_ns);
  Ref<Counter> other;
  EXPECT_THAT(raised([&] { send(kinds, "out:"_sel, &other); }), isArgumentError);
  NSString* plain = nullptr;
  EXPECT_THAT(raised([&] { send(kinds, "out:"_sel, &plain); }), isArgumentError) << "a plain pointer owns nothing";
  EXPECT_TRUE(other == nullptr && plain == nullptr);
}

TEST_F(Send, PassesPointersSelectorsClassesAndProtocols) {
  int place = 0;
  EXPECT_EQ(send<void*>(kinds, "context:"_sel, static_cast<void*>(&place)), &place);
  EXPECT_EQ(send<void*>(kinds, "context:"_sel, nullptr), nullptr);
  const uint64_t constant[] = {1, 2, 3};
  uint64_t writable[] = {4, 5, 6};
  EXPECT_EQ(send<uint64_t>(kinds, "sum:count:"_sel, &constant[0], 3), 6U);
  EXPECT_EQ(send<uint64_t>(kinds, "sum:count:"_sel, &writable[0], 3), 15U) << "what may be written may be read";
  EXPECT_THAT(raised([&] { send(kinds, "sum:count:"_sel, &place, 1); }), isArgumentError);
  EXPECT_TRUE(send<Selector>(kinds, "selector:"_sel, "plus:"_sel) == "plus:"_sel);
  EXPECT_EQ(send<Class*>(kinds, "classOf:"_sel, Counter::classObject()), Counter::classObject());
  EXPECT_EQ(send<Protocol*>(kinds, "protocol:"_sel, nullptr), nullptr);
}

TEST_F(Send, PassesCStrings) {
  EXPECT_EQ(send<int>(kinds, "lengthOf:"_sel, "four"), 4);
  char writable[] = "five5";
  EXPECT_EQ(send<int>(kinds, "lengthOf:"_sel, writable), 5);
  EXPECT_EQ(send<int>(kinds, "lengthOf:"_sel, nullptr), 99);
  const char* word = "word";
  EXPECT_EQ(send<const char*>(kinds, "word:"_sel, word), word) << "a direct call passes the pointer itself";
}

TEST_F(Send, ACStringOutOfAnInvocationLivesWithTheScope) {
  const AutoreleaseScope scope;
  const Ref<Forwarder> proxy = make<Forwarder>(kinds);
  const char* word = send<const char*>(proxy, "word:"_sel, std::string(100, 'x').c_str());
  EXPECT_EQ(std::string(word), std::string(100, 'x'));
  EXPECT_EQ(send<const char*>(proxy, "word:"_sel, nullptr), nullptr);
}

TEST_F(Send, PassesBlocksByTheirSignature) {
  int64_t last = -1;
  const auto untilThree = [&](int64_t i) {
    last = i;
    return i < 3;
  };
  EXPECT_EQ(send<int64_t>(kinds, "each:block:"_sel, 9, BlockRef<bool(int64_t)>(untilThree)), 4);
  EXPECT_EQ(last, 3);
  EXPECT_EQ(send<int64_t>(kinds, "each:block:"_sel, 9, Block<bool(int64_t)>(untilThree)), 4);
  EXPECT_EQ(send<int64_t>(kinds, "each:block:"_sel, 9.0, BlockRef<bool(int64_t)>(untilThree)), 4)
      << "also where numbers are converted on the way";
}

TEST_F(Send, RaisesForABlockOfAnotherSignature) {
  const auto onReals = [](double) { return true; };
  EXPECT_THAT(raised([&] { send(kinds, "each:block:"_sel, 9, BlockRef<bool(double)>(onReals)); }),
              AllOf(isArgumentError, HasSubstr("argument 2"), HasSubstr("a block of another signature")));
  const auto character = [](int64_t) { return int8_t{1}; };
  EXPECT_THAT(raised([&] { send(kinds, "each:block:"_sel, 9, BlockRef<int8_t(int64_t)>(character)); }),
              HasSubstr("another signature"))
      << "a bool is no char";
  const auto owned = [](Ref<NSObject>) { return Ref<NSString>("owned"_ns); };
  EXPECT_THAT(
      raised([&] { send(kinds, "describe:object:"_sel, BlockRef<Ref<NSString>(Ref<NSObject>)>(owned), nullptr); }),
      HasSubstr("another signature"))
      << "a reference and a pointer travel differently";
  const auto borrowed = [](NSObject* object) { return Ref<NSString>(as<NSString>(object)); };
  EXPECT_TRUE(send<Ref<NSString>>(kinds, "describe:object:"_sel, BlockRef<Ref<NSString>(NSObject*)>(borrowed),
                                  "text"_ns) == "text"_ns);
}

TEST_F(Send, PassesANullBlockOnlyWhereNullHasAMeaning) {
  const auto block = [] {};
  EXPECT_TRUE(send<bool>(kinds, "hasBlock:"_sel, BlockRef<void()>(block)));
  EXPECT_FALSE(send<bool>(kinds, "hasBlock:"_sel, OptionalBlockRef<void()>()));
  EXPECT_FALSE(send<bool>(kinds, "hasBlock:"_sel, nullptr));
  EXPECT_THAT(raised([&] { send(kinds, "each:block:"_sel, 1, OptionalBlockRef<bool(int64_t)>()); }),
              AllOf(isArgumentError, HasSubstr("null")));
  EXPECT_THAT(raised([&] { send(kinds, "each:block:"_sel, 1, nullptr); }), AllOf(isArgumentError, HasSubstr("null")));
}

TEST_F(Send, TellsFunctionPointersApart) {
  int64_t (*twice)(int64_t) = [](int64_t n) { return 2 * n; };
  EXPECT_EQ(send<int>(kinds, "call:with:"_sel, twice, 21), 42);
  double (*other)(double) = [](double n) { return n; };
  EXPECT_THAT(raised([&] { send(kinds, "call:with:"_sel, other, 21); }), isArgumentError);
}

TEST_F(Send, AnIgnoredResultOfEachKindDoesNoHarm) {
  const Ref<Giver> giver = make<Giver>();
  for (int round = 0; round < 3; ++round) {  // the first is looked up, the others are remembered
    send(giver, "give"_sel);
    send(giver, "real"_sel);
    send(giver, "single"_sel);
    send(giver, "integer"_sel);
    send(giver, "span"_sel);
    send(giver, "word"_sel);
    send(giver, "nothing"_sel);
  }
  EXPECT_EQ(giver->asked, 18);
  EXPECT_EQ(Node::alive, 0);
}

TEST_F(Send, AResultOfAVoidMethodIsZero) {
  EXPECT_EQ(send<int>(kinds, "nothing"_sel), 0);
  EXPECT_TRUE(send<Ref<NSObject>>(kinds, "nothing"_sel) == nullptr);
  EXPECT_EQ(kinds->calls, 2);
}

TEST_F(Send, AnObjectResultIsOwnedByTheSenderAlone) {
  const Ref<Giver> giver = make<Giver>();
  for (int round = 0; round < 3; ++round) {
    Ref<NSObject> given = send<Ref<NSObject>>(giver, "give"_sel);
    EXPECT_EQ(Node::alive, 1);
    given = nullptr;
    EXPECT_EQ(Node::alive, 0);
  }
}

TEST_F(Send, AllocatesNothingAndLeavesCountsAloneForAKnownMethod) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  const auto ask = [&] { return send<int64_t>(counter, "plus:"_sel, 1) + send<int>(kinds, "half:"_sel, 4.F); };
  static_cast<void>(ask());
  const AllocationCount allocations;
  for (int i = 0; i < 10; ++i) EXPECT_EQ(ask(), 4);
  EXPECT_EQ(allocations.made(), 0U);
}

TEST_F(Send, ServesMoreClassesThanASelectorRemembers) {
  std::vector<Ref<Counter>> counters;
  [&]<int... n>(std::integer_sequence<int, n...>) {
    (counters.push_back(make<Numbered<n>>()), ...);
  }(std::make_integer_sequence<int, 40>());
  for (int round = 0; round < 3; ++round) {
    for (size_t i = 0; i < counters.size(); ++i) {
      EXPECT_EQ(send<size_t>(counters[i], "plus:"_sel, 0), i);
    }
  }
}

TEST_F(Send, OneSelectorServesMethodsOfDifferentTypes) {
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(send<int64_t>("four"_ns, "length"_sel), 4);
    EXPECT_EQ(send<int64_t>(Counter::initWithValue(3), "value"_sel), 3);
    EXPECT_EQ(send<int64_t>(Counter::classObject(), "value"_sel), -1);
  }
}

TEST_F(Send, RaisesForAnUnknownSelectorNamingClassAndInstance) {
  const std::string text = raised([&] { send(kinds, "nobodyKnowsThis:"_sel, 1); });
  EXPECT_THAT(text, AllOf(isArgumentError, HasSubstr("-[Kinds nobodyKnowsThis:]: unrecognized selector")));
  EXPECT_THAT(raised([] { send(Kinds::classObject(), "nobodyKnowsThis"_sel); }),
              HasSubstr("+[Kinds nobodyKnowsThis]: unrecognized selector"));
  EXPECT_THAT(raised([&] { send(kinds, Selector()); }), isArgumentError);
}

TEST_F(Send, AnOverrideThatDoesNotRecogniseIsAskedAndMayNotReturn) {
  const Ref<Mute> mute = make<Mute>();
  EXPECT_THAT(raised([&] { send(mute, "nobodyKnowsThis"_sel); }), HasSubstr("unrecognized selector"));
  EXPECT_THAT(mute->refused, testing::ElementsAre("nobodyKnowsThis"));
}

TEST_F(Send, APlaceholderKnowsInitializersOnly) {
  const Ref<NSObject> placeholder = alloc(SubCounter::classObject());
  EXPECT_THAT(raised([&] { send<int64_t>(placeholder, "value"_sel); }),
              HasSubstr("-[SubCounter value]: unrecognized selector"));
  EXPECT_FALSE(placeholder->respondsToSelector("value"_sel));
  EXPECT_TRUE(placeholder->respondsToSelector("initWithValue:"_sel));
  EXPECT_TRUE(placeholder->methodSignatureForSelector("value"_sel) == nullptr);
  EXPECT_TRUE(placeholder->methodSignatureForSelector("initWithValue:"_sel) != nullptr);
  EXPECT_TRUE(send<Ref<Counter>>(placeholder, "initWithValue:"_sel, 6)->isa() == SubCounter::classObject());
  EXPECT_TRUE(alloc(nullptr) == nullptr && made<Counter>(nullptr, "init"_sel) == nullptr);
}

TEST_F(Send, NewIsAllocAndInit) {
  EXPECT_TRUE(send<Ref<Counter>>(SubCounter::classObject(), "new"_sel)->isa() == SubCounter::classObject());
  const auto allocated = send<Ref<NSObject>>(SubCounter::classObject(), "alloc"_sel);
  EXPECT_TRUE(send<Ref<Counter>>(allocated, "init"_sel)->isa() == SubCounter::classObject());
}

TEST_F(Send, OnAProxyATypedCallGoesByName) {
  const Ref<Forwarder> proxy = make<Forwarder>(Counter::initWithValue(5));
  EXPECT_EQ(on(proxy).call<&Counter::plus>(2), 7);
  on(proxy).call<&Counter::setValue>(9);
  EXPECT_EQ(on(proxy).call<&Counter::value>(), 9);
  EXPECT_EQ(on(Ref<Counter>()).call<&Counter::value>(), 0);
  const Ref<Forwarder> toKinds = make<Forwarder>(kinds);
  EXPECT_TRUE(on(toKinds).call<&Kinds::borrowed>() == "borrowed"_ns) << "an object comes owned";
}

TEST_F(Send, AReceiverThatIsReleasedByItsOwnMethodIsTheSendersAffair) {
  Ref<Counter> counter = Counter::initWithValue(1);
  const Ref<Counter> pinned = counter;
  counter = nullptr;
  EXPECT_EQ(send<int64_t>(pinned, "plus:"_sel, 1), 2);
}
