// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Protocol.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

constinit const ProtocolRecord drawable{
    "Drawable",
    {required<void(CGRect)>("drawInRect:"_sel), required<Ref<NSString>()>("name"_sel),
     optional<bool(NSObject*, int64_t)>("hits:count:"_sel)}};
constinit const ProtocolRecord secondDrawable{"Drawable", {required<void()>("other"_sel)}};
constinit const ProtocolRecord empty{"EmptyProtocol", {}};

class Shape : public NSObject {
  QF_CLASS(Shape, NSObject)
};
Class* Shape::classObject() {
  static Class* const cls = ClassBuilder<Shape>("Shape").conformsTo("Drawable").build();
  return cls;
}
class Square : public Shape {
  QF_CLASS(Square, Shape)
};
Class* Square::classObject() {
  static Class* const cls = ClassBuilder<Square>("Square").build();
  return cls;
}

struct ProtocolTest : testing::Test {
  const RegisterProtocol registered{drawable};
  Protocol* const protocol = protocolNamed("Drawable");
};

}  // namespace

TEST_F(ProtocolTest, IsFoundByNameAndListed) {
  ASSERT_NE(protocol, nullptr);
  EXPECT_EQ(protocol->name(), "Drawable");
  EXPECT_EQ(text(protocol->description()), "Drawable");
  EXPECT_EQ(protocolNamed("NoSuchProtocol"), nullptr);
  EXPECT_EQ(protocolNamed(""), nullptr);
  const std::vector<Protocol*> all = allProtocols();
  EXPECT_TRUE(std::find(all.begin(), all.end(), protocol) != all.end());
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [](Protocol* a, Protocol* b) { return a->name() < b->name(); }));
}

TEST_F(ProtocolTest, DescribesItsMethods) {
  EXPECT_EQ(protocol->methods().size(), 3U);
  const ProtocolMethod* draw = protocol->methodNamed("drawInRect:"_sel);
  ASSERT_NE(draw, nullptr);
  EXPECT_TRUE(draw->isRequired);
  EXPECT_STREQ(draw->encoding, "v@:{CGRect={CGPoint=dd}{CGSize=dd}}");
  EXPECT_STREQ(protocol->methodNamed("name"_sel)->encoding, "@@:");
  const ProtocolMethod* hits = protocol->methodNamed(registerSelector("hits:count:"));
  EXPECT_TRUE(hits && !hits->isRequired && std::string_view(hits->encoding) == "c@:@q");
  EXPECT_EQ(protocol->methodNamed("absent"_sel), nullptr);
  EXPECT_EQ(protocol->methodNamed(Selector()), nullptr);
}

TEST_F(ProtocolTest, IsAdoptedByAClassAndItsSubclasses) {
  EXPECT_TRUE(make<Shape>()->conformsToProtocol(protocol) && make<Square>()->conformsToProtocol(protocol));
  EXPECT_FALSE(make<Counter>()->conformsToProtocol(protocol) || make<Shape>()->conformsToProtocol(nullptr));
  EXPECT_TRUE(Square::classObject()->conformsToProtocol(protocol)) << "of a class: what its instances conform to";
  EXPECT_FALSE(Counter::classObject()->conformsToProtocol(protocol));
  EXPECT_TRUE(send<bool>(make<Square>(), "conformsToProtocol:"_sel, protocol));
  EXPECT_TRUE(send<bool>(make<Forwarder>(make<Square>()), "conformsToProtocol:"_sel, protocol));
}

TEST_F(ProtocolTest, TheFirstOfANameStays) {
  const RegisterProtocol second{secondDrawable};
  EXPECT_EQ(protocolNamed("Drawable"), protocol);
  EXPECT_EQ(protocol->methodNamed("other"_sel), nullptr);
}

TEST_F(ProtocolTest, MayBeEmpty) {
  const RegisterProtocol also{empty};
  EXPECT_EQ(protocolNamed("EmptyProtocol")->methods().size(), 0U);
}

TEST_F(ProtocolTest, IsRegisteredByManyThreadsOnce) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 50; ++i) {
        const RegisterProtocol again{drawable};
        EXPECT_EQ(protocolNamed("Drawable"), protocol);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}
