// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSProxy.h"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Writes down what it is asked to forward.
class Recorder : public Forwarder {
  QF_CLASS(Recorder, Forwarder)
 public:
  using Forwarder::Forwarder;
  void forwardInvocation(NSInvocation* invocation) override {
    seen.emplace_back(invocation->selector().name());
    Forwarder::forwardInvocation(invocation);
  }
  std::vector<std::string> seen;
};
Class* Recorder::classObject() {
  static Class* const cls = ClassBuilder<Recorder>("Recorder").build();
  return cls;
}

/// Overrides nothing.
class BareProxy : public NSProxy {
  QF_CLASS(BareProxy, NSProxy)
};
Class* BareProxy::classObject() {
  static Class* const cls = ClassBuilder<BareProxy>("BareProxy").build();
  return cls;
}

std::string textOfHeader(const std::string& name) {
  const std::string here = __FILE__;
  std::ifstream file(here.substr(0, here.rfind("tests/")) + "QuollFoundation/platform/object/" + name);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

/// The names before the parameter lists of what `line` finds.
std::set<std::string> namesIn(const std::string& text, const std::string& line) {
  std::set<std::string> names;
  const std::regex form(line);
  for (std::sregex_iterator at(text.begin(), text.end(), form), end; at != end; ++at) names.insert((*at)[1]);
  return names;
}

}  // namespace

TEST(NSProxy, OverridesEveryVirtualOfNSObjectButTheFewThatItKnowsItself) {
  std::set<std::string> virtuals = namesIn(textOfHeader("NSObject.h"), "virtual [^;{}]*?([A-Za-z_]+\\d?)\\(");
  ASSERT_GT(virtuals.size(), 25U);
  for (const char* own : {"forwardInvocation", "madeByMake", "dispatch"}) EXPECT_EQ(virtuals.erase(own), 1U) << own;
  for (int i = 1; i <= 8; ++i) virtuals.erase("reserved" + std::to_string(i));
  virtuals.erase("NSObject");  // the destructor
  const std::set<std::string> overridden =
      namesIn(textOfHeader("NSProxy.h"), "([A-Za-z_]+)\\([^;{}]*\\)(?: const)?\\s+override");
  EXPECT_EQ(virtuals, overridden);
}

TEST(NSProxy, SendsEveryVirtualOn) {
  const Ref<NSString> target = NSString::stringWithUTF8("target");
  const Ref<Recorder> proxy = make<Recorder>(target);
  const auto asks = [&](auto ask) {
    proxy->seen.clear();
    static_cast<void>(raised([&] { ask(*proxy); }));
    return proxy->seen;
  };
  EXPECT_THAT(asks([](NSObject& p) { p.class_(); }), ElementsAre("class"));
  EXPECT_THAT(asks([](NSObject& p) { p.isEqual(nullptr); }), ElementsAre("isEqual:"));
  EXPECT_THAT(asks([](NSObject& p) { p.hash(); }), ElementsAre("hash"));
  EXPECT_THAT(asks([](NSObject& p) { p.description(); }), ElementsAre("description"));
  EXPECT_THAT(asks([](NSObject& p) { p.debugDescription(); }), ElementsAre("debugDescription"));
  EXPECT_THAT(asks([](NSObject& p) { p.isKindOfClass(nullptr); }), ElementsAre("isKindOfClass:"));
  EXPECT_THAT(asks([](NSObject& p) { p.isMemberOfClass(nullptr); }), ElementsAre("isMemberOfClass:"));
  EXPECT_THAT(asks([](NSObject& p) { p.conformsToProtocol(nullptr); }), ElementsAre("conformsToProtocol:"));
  EXPECT_THAT(asks([](NSObject& p) { p.copy(); }), ElementsAre("copyWithZone:"));
  EXPECT_THAT(asks([](NSObject& p) { p.mutableCopy(); }), ElementsAre("mutableCopyWithZone:"));
  EXPECT_THAT(asks([](NSObject& p) { p.respondsToSelector("x"_sel); }), ElementsAre("respondsToSelector:"));
  EXPECT_THAT(asks([](NSObject& p) { p.valueForKey("length"_ns); }), ElementsAre("valueForKey:"));
  EXPECT_THAT(asks([](NSObject& p) { p.setValue_forKey(nullptr, "x"_ns); }), ElementsAre("setValue:forKey:"));
  EXPECT_THAT(asks([](NSObject& p) { p.valueForKeyPath("length"_ns); }), ElementsAre("valueForKeyPath:"));
  EXPECT_THAT(asks([](NSObject& p) { p.setValue_forKeyPath(nullptr, "x"_ns); }), ElementsAre("setValue:forKeyPath:"));
  EXPECT_THAT(asks([](NSObject& p) { p.valueForUndefinedKey("x"_ns); }), ElementsAre("valueForUndefinedKey:"));
  EXPECT_THAT(asks([](NSObject& p) { p.setValue_forUndefinedKey(nullptr, "x"_ns); }),
              ElementsAre("setValue:forUndefinedKey:"));
  EXPECT_THAT(asks([](NSObject& p) { p.setNilValueForKey("x"_ns); }), ElementsAre("setNilValueForKey:"));
  EXPECT_THAT(asks([](NSObject& p) { p.dictionaryWithValuesForKeys(nullptr); }),
              ElementsAre("dictionaryWithValuesForKeys:"));
  EXPECT_THAT(asks([](NSObject& p) { p.setValuesForKeysWithDictionary(nullptr); }),
              ElementsAre("setValuesForKeysWithDictionary:"));
  EXPECT_THAT(asks([](NSObject& p) {
                NSFastEnumerationState state{};
                p.countByEnumeratingWithState_objects_count(&state, nullptr, 0);
              }),
              ElementsAre("countByEnumeratingWithState:objects:count:"));
  EXPECT_THAT(asks([](NSObject& p) { p.superclass(); }), ElementsAre("class")) << "asked of the class it gives itself";
  EXPECT_THAT(asks([](NSObject& p) { p.performSelector("length"_sel); }), ElementsAre("length"));
}

TEST(NSProxy, ForwardsMessagesOfEachKind) {
  const Ref<Counter> counter = Counter::initWithValue(3);
  const Ref<Forwarder> proxy = make<Forwarder>(counter);
  EXPECT_EQ(send<int>(proxy, "plus:"_sel, 4), 7);
  EXPECT_EQ(send<double>(proxy, "plus:"_sel, 4.0F), 7) << "numbers are converted on the way";
  EXPECT_TRUE(send<Ref<NSObject>>(proxy, "self"_sel) == counter);
  EXPECT_TRUE(send<bool>(proxy, "isEqual:"_sel, counter) && proxy->isEqual(counter));
  EXPECT_EQ(proxy->hash(), counter->hash());
  EXPECT_EQ(send<Class*>(proxy, "class"_sel), Counter::classObject());
  EXPECT_TRUE(proxy->isKindOfClass(Counter::classObject()));
  EXPECT_TRUE(send<bool>(proxy, "respondsToSelector:"_sel, "plus:"_sel));
  EXPECT_TRUE(send<Ref<NSObject>>(proxy, "performSelector:"_sel, "self"_sel) == counter);
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<Forwarder> toKinds = make<Forwarder>(kinds);
  Ref<NSString> out;
  send(toKinds, "out:"_sel, &out);
  EXPECT_TRUE(out == "out"_ns);
  int64_t calls = 0;
  const auto block = [&](int64_t) { return ++calls < 3; };
  EXPECT_EQ(send<int>(toKinds, "each:block:"_sel, 9, BlockRef<bool(int64_t)>(block)), 3);
  EXPECT_EQ(send<Matrix>(toKinds, "matrix:"_sel, Matrix{{1}}).cells[0], 2);
}

TEST(NSProxy, KnowsOnlyFourThingsItself) {
  const Ref<Recorder> proxy = make<Recorder>("target"_ns);
  EXPECT_TRUE(send<bool>(proxy, "isProxy"_sel) && proxy->isProxy());
  EXPECT_TRUE(send<Ref<NSMethodSignature>>(proxy, "methodSignatureForSelector:"_sel, "length"_sel) != nullptr);
  EXPECT_EQ(proxy->isa(), Recorder::classObject());
  EXPECT_TRUE(proxy->seen.empty());
  Class* cls = NSProxy::classObject();
  for (const char* name : {"isEqual:", "hash", "description", "class", "self", "copy", "performSelector:"}) {
    EXPECT_FALSE(cls->instancesRespondToSelector(registerSelector(name))) << name;
  }
}

TEST(NSProxy, ItsClassHasNoSuperclass) {
  EXPECT_EQ(NSProxy::classObject()->superclass(), nullptr);
  EXPECT_EQ(send<Class*>(NSProxy::classObject(), "superclass"_sel), nullptr);
  EXPECT_EQ(send<Class*>(Forwarder::classObject(), "superclass"_sel), NSProxy::classObject());
  EXPECT_EQ(send<Class*>(Forwarder::classObject(), "class"_sel), Forwarder::classObject());
  EXPECT_FALSE(Forwarder::classObject()->isSubclassOfClass(NSObject::classObject()));
  EXPECT_TRUE(send<bool>(Forwarder::classObject(), "isSubclassOfClass:"_sel, NSProxy::classObject()));
  EXPECT_EQ(text(send<Ref<NSString>>(Forwarder::classObject(), "description"_sel)), "Forwarder")
      << "a class is an object for all that";
}

TEST(NSProxy, AnExceptionOfItsTargetPasses) {
  const Ref<Forwarder> proxy = make<Forwarder>(make<Kinds>());
  EXPECT_THAT(raised([&] { send(proxy, "small:"_sel, 200); }), HasSubstr("200"));
  EXPECT_THAT(raised([&] { send(proxy, "echo:"_sel, make<Counter>()); }), HasSubstr("is Counter where NSString"));
  EXPECT_THAT(raised([&] { send(proxy, "nobodyKnowsThis"_sel); }),
              HasSubstr("-[Forwarder nobodyKnowsThis]: unrecognized selector"));
}

TEST(NSProxy, ThatOverridesNothingRaisesForEachMessage) {
  const Ref<BareProxy> proxy = make<BareProxy>();
  EXPECT_THAT(raised([&] { send(proxy, "length"_sel); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("-[BareProxy length]: unrecognized selector")));
  EXPECT_THAT(raised([&] { proxy->hash(); }), HasSubstr("-[BareProxy hash]"));
  EXPECT_TRUE(proxy->isProxy());
}

TEST(NSProxy, AProxyOfAProxyForwardsTwice) {
  const Ref<Counter> counter = Counter::initWithValue(3);
  const Ref<Forwarder> outer = make<Forwarder>(make<Forwarder>(counter));
  EXPECT_EQ(send<int>(outer, "plus:"_sel, 4), 7);
}

TEST(NSProxy, IgnoresTheResultOfWhatItKeeps) {
  const Ref<Capturer> capturer = make<Capturer>(make<Kinds>());
  EXPECT_TRUE(send<Ref<NSString>>(capturer, "echo:"_sel, "text"_ns) == nullptr);
  EXPECT_EQ(send<int>(capturer, "small:"_sel, 5), 0);
  EXPECT_EQ(send<Span>(capturer, "span:"_sel, Span{1, 2}).length, 0U);
  EXPECT_EQ(send<const char*>(capturer, "word:"_sel, "word"), nullptr);
  capturer->captured();
}
