// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <sstream>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/testing.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

class Plain : public NSObject {
  QF_CLASS(Plain, NSObject)
};
Class* Plain::classObject() {
  static Class* const cls = ClassBuilder<Plain>("Plain").build();
  return cls;
}

class Named : public NSObject {
  QF_CLASS(Named, NSObject)
 public:
  Ref<NSString> description() const override { return "näme"_ns; }
};
Class* Named::classObject() {
  static Class* const cls = ClassBuilder<Named>("Named").build();
  return cls;
}

class Silent : public NSObject {
  QF_CLASS(Silent, NSObject)
 public:
  Ref<NSString> description() const override { return nullptr; }
};
Class* Silent::classObject() {
  static Class* const cls = ClassBuilder<Silent>("Silent").build();
  return cls;
}

/// Counts what it forwards.
class Forwarder : public NSProxy {
  QF_CLASS(Forwarder, NSProxy)
 public:
  explicit Forwarder(NSObject* target) : target_(target) {}
  Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const override {
    return target_->methodSignatureForSelector(selector);
  }
  void forwardInvocation(NSInvocation* invocation) override {
    ++forwarded;
    invocation->invokeWithTarget(target_);
  }
  int forwarded = 0;

 private:
  Ref<NSObject> target_;
};
Class* Forwarder::classObject() {
  static Class* const cls = ClassBuilder<Forwarder>("Forwarder").build();
  return cls;
}

std::string address(const void* object) {
  std::ostringstream out;
  out << object;
  return out.str();
}

std::string printed(const NSObject* object) {
  std::ostringstream out;
  out << object;
  return out.str();
}

// Descriptions

TEST(ObjectTexts, DescribeAnObjectByItsClassAndAddress) {
  const Ref<Plain> object = make<Plain>();
  const std::string expected = "<Plain: " + address(object.get()) + ">";
  EXPECT_THAT(object->description(), equals(expected));
  EXPECT_THAT(object->debugDescription(), equals(expected));
  EXPECT_EQ(detail::plainDescription(object), expected);
  EXPECT_EQ(printed(object), expected);
}

TEST(ObjectTexts, AskAnOverriddenDescriptionForDebuggingToo) {
  const Ref<Named> object = make<Named>();
  EXPECT_THAT(object->debugDescription(), equals("näme"));
  EXPECT_THAT(send<Ref<NSString>>(object, "description"_sel), equals("näme"));
  EXPECT_THAT(send<Ref<NSString>>(object, "debugDescription"_sel), equals("näme"));
}

TEST(ObjectTexts, DescribeAClassByItsName) {
  EXPECT_THAT(Plain::classObject()->description(), equals("Plain"));
  EXPECT_THAT(send<Ref<NSString>>(Plain::classObject(), "description"_sel), equals("Plain"));
}

constexpr ProtocolRecord speaking{"Speaking", {required<void()>("speak"_sel)}};

TEST(ObjectTexts, DescribeAProtocolByItsName) {
  const RegisterProtocol registered(speaking);
  EXPECT_THAT(protocolNamed("Speaking")->description(), equals("Speaking"));
}

TEST(ObjectTexts, LetAProxySendItsDescriptionOn) {
  const Ref<Forwarder> proxy = make<Forwarder>(make<Named>());
  EXPECT_THAT(proxy->description(), equals("näme"));
  EXPECT_THAT(proxy->debugDescription(), equals("näme"));
  EXPECT_EQ(proxy->forwarded, 2);
}

TEST(ObjectTexts, PrintAProxyWithoutAMessageToIt) {
  const Ref<Forwarder> proxy = make<Forwarder>(make<Named>());
  EXPECT_EQ(printed(proxy), "<Forwarder: " + address(proxy.get()) + ">");
  detail::methodName(proxy, "f");
  EXPECT_THAT([&] { detail::raiseNilArgument(proxy, "f:"); }, raises(NSInvalidArgumentException, "-[Forwarder f:]"));
  EXPECT_EQ(proxy->forwarded, 0);
}

TEST(ObjectTexts, PrintNothingAsNull) {
  EXPECT_EQ(printed(nullptr), "(null)");
  EXPECT_EQ(printed(make<Silent>()), "(null)");
  std::ostringstream out;
  out << Ref<NSString>();
  EXPECT_EQ(out.str(), "(null)");
}

// Exceptions

TEST(ObjectTexts, CarryAnExceptionAsItsHeaderSays) {
  std::string said;
  try {
    quoll::raise(quoll::NSRangeException, "index 7");
  } catch (const quoll::NSException& e) {
    if (quoll::isEqual(e.name(), quoll::NSRangeException)) said = e.what();
  }
  EXPECT_EQ(said, "NSRangeException: index 7");
}

TEST(ObjectTexts, NameTheExceptions) {
  EXPECT_THAT(NSGenericException, equals("NSGenericException"));
  EXPECT_THAT(NSInternalInconsistencyException, equals("NSInternalInconsistencyException"));
  EXPECT_THAT(NSInvalidArgumentException, equals("NSInvalidArgumentException"));
  EXPECT_THAT(NSMallocException, equals("NSMallocException"));
  EXPECT_THAT(NSObjectNotAvailableException, equals("NSObjectNotAvailableException"));
  EXPECT_THAT(NSRangeException, equals("NSRangeException"));
  EXPECT_THAT(NSUndefinedKeyException, equals("NSUnknownKeyException"));
}

TEST(ObjectTexts, ShareOneObjectAmongCopiesOfAnException) {
  const NSException first("Name"_ns, "réason"_ns);
  const NSException second = first;
  EXPECT_THAT(second.name(), equals("Name"));
  EXPECT_THAT(second.reason(), equals("réason"));
  EXPECT_EQ(second.userInfo().get(), nullptr);
  EXPECT_STREQ(second.what(), "Name: réason");
  EXPECT_TRUE(first.object() == second.object());
  EXPECT_EQ(first.what(), second.what());
}

TEST(ObjectTexts, AnswerForAnExceptionByName) {
  const Ref<NSObject> object = NSException("Name"_ns, "reason"_ns).object();
  EXPECT_EQ(object->isa(), classNamed("NSException"));
  EXPECT_THAT(send<Ref<NSString>>(object, "name"_sel), equals("Name"));
  EXPECT_THAT(send<Ref<NSString>>(object, "reason"_sel), equals("reason"));
  EXPECT_EQ(send<Ref<NSObject>>(object, "userInfo"_sel), nullptr);
  EXPECT_THAT(object->description(), equals("reason"));
}

TEST(ObjectTexts, BearAnExceptionWithoutNameOrReason) {
  const NSException nothing(nullptr, nullptr);
  EXPECT_EQ(nothing.name(), nullptr);
  EXPECT_STREQ(nothing.what(), "(null)");
  EXPECT_THAT([] { raise(NSGenericException, "broken \xC3"); }, raises(NSGenericException, "broken Ã"));
  EXPECT_STREQ(NSException("N"_ns, u"a\xD800"_ns).what(), "N: a\uFFFD");
}

TEST(ObjectTexts, NameTheMethodThatRaised) {
  const Ref<Plain> object = make<Plain>();
  EXPECT_EQ(detail::methodName(object, "f:"), "-[Plain f:]");
  EXPECT_EQ(detail::methodName(Plain::classObject(), "f:"), "+[Plain f:]");
  EXPECT_EQ(detail::methodName(nullptr, "f:"), "-[(null) f:]");
  EXPECT_THAT([&] { detail::raiseIndex(object, "at:", 7, 3); },
              raises(NSRangeException, "-[Plain at:]: index 7 beyond bounds [0 .. 2]"));
  EXPECT_THAT([&] { detail::raiseIndex(object, "at:", 0, 0); },
              raises(NSRangeException, "-[Plain at:]: index 0 beyond bounds for empty Plain"));
  EXPECT_THAT([&] { detail::raiseRange(object, "in:", {4, 9}, 5); },
              raises(NSRangeException, "-[Plain in:]: Range {4, 9} out of bounds; length 5"));
  EXPECT_THAT([&] { detail::raiseNilArgument(object, "take:"); },
              raises(NSInvalidArgumentException, "-[Plain take:]: nil argument"));
}

TEST(ObjectTexts, TellWhoDoesNotKnowASelector) {
  const Ref<Plain> object = make<Plain>();
  EXPECT_THAT([&] { send(object, "speakUp"_sel); },
              raises(NSInvalidArgumentException,
                     "-[Plain speakUp]: unrecognized selector sent to instance " + address(object.get())));
  EXPECT_THAT([&] { send(Plain::classObject(), "speakUp"_sel); },
              raises(NSInvalidArgumentException,
                     "+[Plain speakUp]: unrecognized selector sent to class " + address(Plain::classObject())));
  EXPECT_THAT([&] { send(object, Selector()); }, raises(NSInvalidArgumentException, "-[Plain (null)]"));
}

TEST(ObjectTexts, NameTheClassOfANullReferenceThatIsFollowed) {
  const Ref<NSString> none;
  EXPECT_THAT([&] { static_cast<void>(none->length()); }, raises(NSInvalidArgumentException, "NSString"));
}

}  // namespace
