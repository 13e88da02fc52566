// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSValue.h"

#include <gtest/gtest.h>

#include <cstring>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "QuollFoundation/testing.h"

namespace {

struct Span {
  uint32_t first;
  uint32_t last;
  friend bool operator==(const Span&, const Span&) = default;
};

}  // namespace

template <> struct quoll::StructEncoding<Span> {
  static constexpr const char* text = "{Span=II}";
};

TEST(NSValue, KeepsARangeAndAStructOfOnesOwn) {
  quoll::Ref<quoll::NSValue> boxed = quoll::NSValue::valueWithRange(quoll::NSMakeRange(2, 5));
  quoll::NSRange range = boxed->rangeValue();
  EXPECT_EQ(range, quoll::NSMakeRange(2, 5));
  auto span = quoll::NSValue::valueOf(Span{1, 2});
  EXPECT_EQ(span->valueAs<Span>(), (Span{1, 2}));
}

using namespace quoll;

namespace {

/// A value that a user derives: how often was it filled?
class CountingValue : public NSValue {
  QF_CLASS(CountingValue, NSValue)
 public:
  static Ref<NSValue> initWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls) {
    Ref<NSValue> value = NSValue::initWithBytes_objCType_ofClass(bytes, type, cls);
    ++cast<CountingValue>(value.get())->filled_;
    return value;
  }
  int filled() const { return filled_; }

 private:
  int filled_ = 0;
};

Class* CountingValue::classObject() {
  static Class* const cls = ClassBuilder<CountingValue>("CountingValue")
                                .initializer<&CountingValue::initWithBytes_objCType_ofClass>("initWithBytes:objCType:")
                                .build();
  return cls;
}

constexpr CGRect someRect{{1, 2}, {3, 4.5}};

}  // namespace

TEST(NSValue, HasTheEncodingOfWhatItHolds) {
  int pointee = 0;
  struct Row {
    Ref<NSValue> value;
    const char* encoding;
  } const rows[] = {
      {NSValue::valueWithRange({1, 2}), "{_NSRange=QQ}"},
      {NSValue::valueWithRect(someRect), "{CGRect={CGPoint=dd}{CGSize=dd}}"},
      {NSValue::valueWithPoint({1, 2}), "{CGPoint=dd}"},
      {NSValue::valueWithSize({1, 2}), "{CGSize=dd}"},
      {NSValue::valueWithPointer(&pointee), "^v"},
      {NSValue::valueWithNonretainedObject("x"_ns), "@"},
      {NSValue::valueOf(Span{1, 2}), "{Span=II}"},
  };
  for (const Row& row : rows) EXPECT_STREQ(row.value->objCType(), row.encoding);
}

TEST(NSValue, GivesBackWhatItWasMadeOf) {
  int pointee = 0;
  EXPECT_EQ(NSValue::valueWithRect(someRect)->rectValue(), someRect);
  EXPECT_EQ(NSValue::valueWithPoint({1, 2})->pointValue(), (CGPoint{1, 2}));
  EXPECT_EQ(NSValue::valueWithSize({1, 2})->sizeValue(), (CGSize{1, 2}));
  EXPECT_EQ(NSValue::valueWithPointer(&pointee)->pointerValue(), &pointee);
  EXPECT_EQ(NSValue::valueWithPointer(nullptr)->pointerValue(), nullptr);
  NSString* const text = "x"_ns;
  EXPECT_EQ(NSValue::valueWithNonretainedObject(text)->nonretainedObjectValue(), text);
}

TEST(NSValue, CopiesBytesAndEncoding) {
  char type[] = "{Span=II}";
  Span span{7, 8};
  const Ref<NSValue> value = NSValue::valueWithBytes_objCType(&span, type);
  span = {};
  std::memset(type, '?', 3);
  EXPECT_STREQ(value->objCType(), "{Span=II}");
  Span out{};
  value->getValue(&out);
  EXPECT_EQ(out, (Span{7, 8}));
}

TEST(NSValue, DoesNotKeepANonretainedObjectAlive) {
  Weak<NSObject> weak;
  Ref<NSValue> value;
  {
    const Ref<NSValue> object = NSValue::valueWithRange({1, 2});
    weak = object.get();
    value = NSValue::valueWithNonretainedObject(object);
  }
  EXPECT_EQ(weak.lock(), nullptr);
}

TEST(NSValue, ReadAsAnotherTypeRaisesNamingBoth) {
  const Ref<NSValue> point = NSValue::valueWithPoint({1, 2});
  EXPECT_THAT([&] { point->sizeValue(); }, raises(NSInvalidArgumentException, "{CGPoint=dd}"));
  EXPECT_THAT([&] { point->sizeValue(); }, raises(NSInvalidArgumentException, "{CGSize=dd}"));
  EXPECT_THAT([&] { point->pointerValue(); }, raises(NSInvalidArgumentException, "^v"));
  EXPECT_THAT([&] { point->nonretainedObjectValue(); }, raises(NSInvalidArgumentException, "@"));
  EXPECT_THAT([&] { point->valueAs<Span>(); }, raises(NSInvalidArgumentException, "{Span=II}"));
}

TEST(NSValue, GetWithAnotherSizeRaisesAndWritesNothing) {
  const Ref<NSValue> span = NSValue::valueOf(Span{1, 2});
  Span out{9, 9};
  EXPECT_THAT([&] { span->getValue_size(&out, 4); }, raises(NSInvalidArgumentException, "8 bytes with size 4"));
  EXPECT_EQ(out, (Span{9, 9}));
  span->getValue_size(&out, sizeof out);
  EXPECT_EQ(out, (Span{1, 2}));
  EXPECT_THAT([&] { span->getValue(nullptr); }, raises(NSInvalidArgumentException, "getValue:"));
}

TEST(NSValue, BadEncodingsAndNullBytesRaise) {
  const int number = 1;
  for (const char* bad : {"", "{Span=II", "ii", "?", "$", "{Span}"}) {
    SCOPED_TRACE(bad);
    EXPECT_THAT([&] { NSValue::valueWithBytes_objCType(&number, bad); }, raises(NSInvalidArgumentException, ""));
  }
  EXPECT_THAT([&] { NSValue::valueWithBytes_objCType(&number, nullptr); }, raises(NSInvalidArgumentException, ""));
  EXPECT_THAT([&] { NSValue::valueWithBytes_objCType(nullptr, "i"); }, raises(NSInvalidArgumentException, ""));
}

TEST(NSValue, IsEqualByEncodingAndBytes) {
  const Ref<NSValue> range = NSValue::valueWithRange({1, 2});
  const Ref<NSValue> same = NSValue::initWithBytes_objCType("\1\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0", "{_NSRange=QQ}");
  EXPECT_THAT(range, equals(same));
  EXPECT_TRUE(range->isEqualToValue(same));
  EXPECT_EQ(range->hash(), same->hash());
  EXPECT_FALSE(isEqual(range.get(), NSValue::valueWithRange({1, 3}).get()));
  EXPECT_FALSE(isEqual(NSValue::valueWithPoint({1, 2}).get(), NSValue::valueWithSize({1, 2}).get()));
  EXPECT_FALSE(range->isEqual(nullptr));
  EXPECT_FALSE(range->isEqual("x"_ns));
}

TEST(NSValue, OfANumbersBytesIsNoNumber) {
  const int32_t five = 5;
  const Ref<NSValue> value = NSValue::valueWithBytes_objCType(&five, "i");
  const Ref<NSNumber> number = NSNumber::numberWithInt(5);
  EXPECT_EQ(as<NSNumber>(value), nullptr);
  EXPECT_FALSE(value->isEqual(number));
  EXPECT_FALSE(number->isEqual(value));
}

TEST(NSValue, DescribesWhatItHolds) {
  EXPECT_THAT(NSValue::valueWithRange({1, 2})->description(), equals("NSRange: {1, 2}"));
  EXPECT_THAT(NSValue::valueWithRect(someRect)->description(), equals("NSRect: {{1, 2}, {3, 4.5}}"));
  EXPECT_THAT(NSValue::valueWithPoint({1, 2})->description(), equals("NSPoint: {1, 2}"));
  EXPECT_THAT(NSValue::valueWithSize({1, 2})->description(), equals("NSSize: {1, 2}"));
  EXPECT_THAT(NSValue::valueOf(Span{1, 0xAB})->description(), equals("{length = 8, bytes = 0x01000000ab000000}"));
}

TEST(NSValue, CopiesToItself) {
  const Ref<NSValue> range = NSValue::valueWithRange({1, 2});
  EXPECT_EQ(range->copy(), range);
}

TEST(NSValue, PlainOneHoldsNothing) {
  const Ref<NSValue> nothing = made<NSValue>(NSValue::classObject(), "init"_sel);
  EXPECT_STREQ(nothing->objCType(), "v");
  nothing->getValue(nullptr);
  EXPECT_THAT(nothing, equals(made<NSValue>(NSValue::classObject(), "init"_sel)));
}

TEST(NSValue, MakesASubclassThroughItsOwnInitialiser) {
  const LeakGuard guard;
  const Ref<CountingValue> value = NSValue::valueWithRect<CountingValue>(someRect);
  EXPECT_EQ(value->filled(), 1);
  EXPECT_EQ(value->rectValue(), someRect);
  EXPECT_THAT(value, equals(NSValue::valueWithRect(someRect)));
  const auto byName = send<Ref<CountingValue>>(CountingValue::classObject(), "valueWithRange:"_sel, NSRange{1, 2});
  EXPECT_EQ(byName->rangeValue(), NSMakeRange(1, 2));
  EXPECT_EQ(byName->filled(), 1);
}

TEST(NSValue, AnswersByName) {
  const auto value = send<Ref<NSValue>>(NSValue::classObject(), "valueWithRange:"_sel, NSMakeRange(1, 2));
  EXPECT_EQ(send<NSRange>(value, "rangeValue"_sel), NSMakeRange(1, 2));
  EXPECT_STREQ(send<const char*>(value, "objCType"_sel), "{_NSRange=QQ}");
  NSRange out{};
  send(value, "getValue:"_sel, static_cast<void*>(&out));
  EXPECT_EQ(out, NSMakeRange(1, 2));
  const CGPoint point{1, 2};
  const auto made = quoll::made<NSValue>(NSValue::classObject(), "initWithBytes:objCType:"_sel,
                                         static_cast<const void*>(&point), static_cast<const char*>("{CGPoint=dd}"));
  EXPECT_THAT(made, equals(NSValue::valueWithPoint(point)));
}
