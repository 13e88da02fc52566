// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Method.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

int64_t freeFunction(Counter* receiver, int64_t n) { return receiver->value() + n; }
bool constFunction(const Counter*) noexcept { return true; }
Ref<Counter> initializerFunction(double, Class*) { return nullptr; }
int64_t classFunction(Class* cls) { return static_cast<int64_t>(cls->name().size()); }
int64_t staticFunction(const Class*, int) { return 0; }
Ref<NSString> overloaded(NSString* receiver) { return receiver; }
Ref<NSString> overloaded(NSString* receiver, int64_t) { return receiver; }

constexpr Method ofFree = method<&freeFunction>("free:"_sel);
constexpr Method ofConst = method<&constFunction>("constant"_sel);
constexpr Method ofMember = method<&Counter::plus>("plus:"_sel);
constexpr Method ofConstMember = method<&Kinds::single>("single:"_sel);
constexpr Method ofInitializer = initializer<&initializerFunction>("initWithDouble:"_sel);
constexpr Method ofClass = classMethod<&classFunction>("length"_sel);
constexpr Method ofStatic = classMethod<&staticFunction>("class:number:"_sel);

static_assert(ofFree.implementation->argumentCount == 1 && !ofFree.implementation->constReceiver);
static_assert(ofConst.implementation->argumentCount == 0 && ofConst.implementation->constReceiver);
static_assert(ofConstMember.implementation->constReceiver && !ofMember.implementation->constReceiver);
static_assert(ofInitializer.kind == detail::MethodKind::Initializer &&
              ofInitializer.implementation->argumentCount == 1);
static_assert(ofClass.kind == detail::MethodKind::Class && ofClass.implementation->argumentCount == 0);
static_assert(ofStatic.implementation->argumentCount == 2, "only a last Class* is the receiver");
static_assert(ofMember.isKey && !ofMember.notAKey().isKey && !ofMember.isProperty);
static_assert(std::string_view(ofMember.implementation->encoding) == "q@:q");
static_assert(method<overload<Ref<NSString>(NSString*)>(&overloaded)>("x"_sel).implementation->argumentCount == 0);
static_assert(
    method<overload<Ref<NSString>(NSString*, int64_t)>(&overloaded)>("x:"_sel).implementation->argumentCount == 1);

struct Row {
  const char* selector;
  const char* encoding;
};
constexpr Row rows[] = {
    {"nothing", "v@:"},
    {"small:", "c@:c"},
    {"natural:", "Q@:Q"},
    {"flag:", "c@:c"},
    {"unit:", "S@:S"},
    {"colour:", "C@:C"},
    {"single:", "f@:f"},
    {"half:", "d@:d"},
    {"span:", "{Span=QQ}@:{Span=QQ}"},
    {"range:", "{_NSRange=QQ}@:{_NSRange=QQ}"},
    {"echo:", "@@:@"},
    {"take:", "@@:@"},
    {"anything:", "@@:@"},
    {"classOf:", "#@:#"},
    {"protocol:", "@@:@"},
    {"selector:", ":@::"},
    {"word:", "r*@:r*"},
    {"lengthOf:", "Q@:r*"},
    {"context:", "^v@:^v"},
    {"sum:count:", "Q@:r^QQ"},
    {"out:", "v@:^@"},
    {"call:with:", "q@:^?q"},
    {"each:block:", "q@:q@?"},
    {"hasBlock:", "c@:@?"},
};

}  // namespace

TEST(Method, EncodesItsTypes) {
  const Ref<Kinds> kinds = make<Kinds>();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.selector);
    const Ref<NSMethodSignature> signature = kinds->methodSignatureForSelector(registerSelector(row.selector));
    ASSERT_TRUE(signature != nullptr);
    EXPECT_EQ(signature->encoding(), row.encoding);
  }
}

TEST(Method, AnInitializerAnswersAnObjectAndTakesNoClass) {
  const Ref<NSMethodSignature> signature =
      Counter::classObject()->instanceMethodSignatureForSelector("initWithValue:"_sel);
  EXPECT_EQ(signature->encoding(), "@@:q");
}
