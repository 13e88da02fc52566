// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSMethodSignature.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(NSMethodSignature, TellsTheTypesOfAText) {
  const Ref<NSMethodSignature> signature = NSMethodSignature::signatureWithObjCTypes("{_NSRange=QQ}@:@qr*^v@?");
  EXPECT_EQ(signature->numberOfArguments(), 7U);
  EXPECT_STREQ(signature->methodReturnType(), "{_NSRange=QQ}");
  EXPECT_EQ(signature->methodReturnLength(), 16U);
  const char* types[] = {"@", ":", "@", "q", "r*", "^v", "@?"};
  for (uint64_t i = 0; i < 7; ++i) EXPECT_STREQ(signature->getArgumentTypeAtIndex(i), types[i]);
}

TEST(NSMethodSignature, LeavesOutTheFrameOffsetsOfOtherCompilers) {
  const Ref<NSMethodSignature> signature = NSMethodSignature::signatureWithObjCTypes("v24@0:8q16");
  EXPECT_EQ(signature->encoding(), "v@:q");
  EXPECT_EQ(signature->methodReturnLength(), 0U);
}

TEST(NSMethodSignature, EqualsAnotherOfTheSameEncoding) {
  const Ref<NSMethodSignature> ofMethod = make<Kinds>()->methodSignatureForSelector("echo:"_sel);
  const Ref<NSMethodSignature> ofText = NSMethodSignature::signatureWithObjCTypes("@@:@");
  EXPECT_TRUE(*ofMethod == *ofText && ofMethod->hash() == ofText->hash() && ofMethod != ofText);
  EXPECT_FALSE(*ofMethod == *NSMethodSignature::signatureWithObjCTypes("v@:@"));
  EXPECT_FALSE(ofMethod->isEqual("@@:@"_ns) || ofMethod->isEqual(nullptr));
}

TEST(NSMethodSignature, OfATextServesAMethodOfThatEncoding) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<NSInvocation> invocation =
      NSInvocation::invocationWithMethodSignature(NSMethodSignature::signatureWithObjCTypes("{Span=QQ}@:{Span=QQ}"));
  invocation->setSelector("span:"_sel);
  const Span span{4, 5};
  invocation->setArgument_atIndex(&span, 2);
  invocation->invokeWithTarget(kinds);
  EXPECT_EQ(invocation->result<Span>().location, 5U);
  invocation->setSelector("range:"_sel);
  EXPECT_THAT(raised([&] { invocation->invokeWithTarget(kinds); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("{_NSRange=QQ}")));
}

TEST(NSMethodSignature, OfATextServesPointersAndOutParameters) {
  const Ref<Kinds> kinds = make<Kinds>();
  const Ref<NSInvocation> invocation =
      NSInvocation::invocationWithMethodSignature(NSMethodSignature::signatureWithObjCTypes("v@:^@"));
  Ref<NSString> out;
  Ref<NSString>* place = &out;
  invocation->setSelector("out:"_sel);
  invocation->setArgument_atIndex(&place, 2);
  invocation->invokeWithTarget(kinds);
  EXPECT_TRUE(out == "out"_ns);
}

TEST(NSMethodSignature, OfNullIsNull) { EXPECT_TRUE(NSMethodSignature::signatureWithObjCTypes(nullptr) == nullptr); }

TEST(NSMethodSignature, RaisesForAMalformedText) {
  const char* malformed[] = {"",
                             "v",
                             "v@",
                             "q:@",
                             "vv:",
                             "v@:{",
                             "v@:{a=q",
                             "v@:}",
                             "v@:x",
                             "v@:^",
                             "v@:r",
                             "v@:{a}",
                             "v@:{a=x}",
                             "v@:[4",
                             "v@:[q]",
                             "v@:[4qq]",
                             "v@:(u=",
                             "v@: q",
                             "v@:?",
                             "?@:",
                             "v@:[99999999999999999999c]",
                             "v@:[4294967296[4294967296q]]"};
  for (const char* text : malformed) {
    EXPECT_THAT(raised([&] { NSMethodSignature::signatureWithObjCTypes(text); }),
                StartsWith("NSInvalidArgumentException: "))
        << text;
  }
}

TEST(NSMethodSignature, NestingWithoutEndIsRefusedAndNoDeepStack) {
  const std::string manyPointers = "v@:" + std::string(1'000'000, '^') + "v";
  EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes(manyPointers.c_str())->numberOfArguments(), 3U);
  std::string nested = "v@:";
  for (int i = 0; i < 100'000; ++i) nested += "{a=";
  nested += "q" + std::string(100'000, '}');
  EXPECT_THAT(raised([&] { NSMethodSignature::signatureWithObjCTypes(nested.c_str()); }), HasSubstr("malformed"));
}

TEST(NSMethodSignature, RaisesForAnIndexOutOfBounds) {
  const Ref<NSMethodSignature> signature = NSMethodSignature::signatureWithObjCTypes("v@:");
  EXPECT_THAT(raised([&] { signature->getArgumentTypeAtIndex(2); }),
              AllOf(StartsWith("NSRangeException"), HasSubstr("getArgumentTypeAtIndex:"), HasSubstr("[0 .. 1]")));
  EXPECT_THAT(raised([&] { signature->getArgumentTypeAtIndex(UINT64_MAX); }), StartsWith("NSRangeException"));
}

TEST(NSMethodSignature, KnowsWhetherTheCallersVariableIsWritten) {
  struct Row {
    const char* types;
    bool writes;
  };
  for (const Row& row : {Row{"v@:^@", true}, Row{"v@:^q", true}, Row{"v@:*", true}, Row{"v@:^{_NSRange=QQ}", true},
                         Row{"v@:^v", false}, Row{"v@:^?", false}, Row{"v@:r^q", false}, Row{"v@:r*", false},
                         Row{"^q@:@", false}, Row{"v@:@?", false}, Row{"v@:q^^v", true}}) {
    EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes(row.types)->hasWritablePointer(), row.writes) << row.types;
  }
}

TEST(NSMethodSignature, OfAMethodIsMadeOnce) {
  const Ref<Kinds> kinds = make<Kinds>();
  std::vector<std::thread> threads;
  std::atomic<NSMethodSignature*> seen{nullptr};
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i) {
        const Ref<NSMethodSignature> signature = kinds->methodSignatureForSelector("matrix:"_sel);
        NSMethodSignature* expected = nullptr;
        EXPECT_TRUE(seen.compare_exchange_strong(expected, signature.get()) || expected == signature);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(NSMethodSignature, AnswersByName) {
  const auto signature =
      send<Ref<NSMethodSignature>>(NSMethodSignature::classObject(), "signatureWithObjCTypes:"_sel, "q@:");
  EXPECT_EQ(send<uint64_t>(signature, "numberOfArguments"_sel), 2U);
  EXPECT_EQ(send<uint64_t>(signature, "methodReturnLength"_sel), 8U);
  EXPECT_STREQ(send<const char*>(signature, "methodReturnType"_sel), "q");
}
