// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/BoxedGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string_view>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll::literals;
using quoll::CGPoint;
using quoll::CGRect;
using quoll::CGSize;
using quoll::Class;
using quoll::compareRangeValueLocation;
using quoll::NSMakeRange;
using quoll::NSRange;
using quoll::NSValue;
using quoll::Ref;

constexpr CGRect rect{{1, 2.5}, {3, -4}};
constexpr CGPoint point{-1, 7};
constexpr CGSize size{8, 0.25};
constexpr NSRange range{3, UINT64_MAX};

/// The value is what the platform itself boxes: type, bytes, equality, hash and text.
void expectSame(const NSValue* value, const NSValue* platforms, std::string_view encoding) {
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(std::string_view(value->objCType()), encoding);
  EXPECT_EQ(std::string_view(platforms->objCType()), encoding);
  EXPECT_TRUE(quoll::isEqual(value, platforms));
  EXPECT_TRUE(quoll::isEqual(platforms, value));
  EXPECT_EQ(value->hash(), platforms->hash());
  EXPECT_EQ(value->isa(), platforms->isa());
  EXPECT_EQ(value->description()->utf8(), platforms->description()->utf8());
}

constexpr const char* rectEncoding = "{CGRect={CGPoint=dd}{CGSize=dd}}";

TEST(BoxedGeometry, AreThePlatformsOwnBoxes) {
  expectSame(quoll::initWithRect(rect), NSValue::valueWithRect(rect), rectEncoding);
  expectSame(quoll::initWithRange(range), NSValue::valueWithRange(range), "{_NSRange=QQ}");
  expectSame(quoll::initWithSize(size), NSValue::valueWithSize(size), "{CGSize=dd}");
  expectSame(quoll::initWithPoint(point), NSValue::valueWithPoint(point), "{CGPoint=dd}");
}

TEST(BoxedGeometry, AreThePlatformsOwnBoxesByName) {
  Class* const cls = NSValue::classObject();
  const auto boxed = [cls](quoll::Selector selector, const auto& plain) {
    return quoll::send<Ref<NSValue>>(quoll::alloc(cls), selector, plain);
  };
  expectSame(boxed("initWithRect:"_sel, rect), NSValue::valueWithRect(rect), rectEncoding);
  expectSame(boxed("initWithRange:"_sel, range), NSValue::valueWithRange(range), "{_NSRange=QQ}");
  expectSame(boxed("initWithSize:"_sel, size), NSValue::valueWithSize(size), "{CGSize=dd}");
  expectSame(boxed("initWithPoint:"_sel, point), NSValue::valueWithPoint(point), "{CGPoint=dd}");
}

TEST(BoxedGeometry, GiveTheirContentsBack) {
  EXPECT_EQ(quoll::initWithRect(rect)->rectValue(), rect);
  EXPECT_EQ(quoll::initWithRange(range)->rangeValue(), range);
  EXPECT_EQ(quoll::initWithSize(size)->sizeValue(), size);
  EXPECT_EQ(quoll::initWithPoint(point)->pointValue(), point);
}

TEST(BoxedGeometry, APointIsNoSize) {
  EXPECT_FALSE(quoll::isEqual(quoll::initWithPoint({1, 2}), quoll::initWithSize({1, 2})));
  EXPECT_THAT([] { static_cast<void>(quoll::initWithPoint({1, 2})->sizeValue()); },
              quoll::raises(quoll::NSInvalidArgumentException));
}

TEST(BoxedGeometry, AFinishedObjectIsNotInitialisedAgain) {
  EXPECT_THAT([] { quoll::send<Ref<NSValue>>(quoll::initWithRange(range), "initWithRange:"_sel, range); },
              quoll::raises(quoll::NSInvalidArgumentException));
}

/// Counts what its own initialiser made.
class CountedValue : public NSValue {
  QF_CLASS(CountedValue, NSValue)
 public:
  static Ref<NSValue> initWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls) {
    ++count;
    return NSValue::initWithBytes_objCType_ofClass(bytes, type, cls);
  }
  static inline int count = 0;
};
Class* CountedValue::classObject() {
  static Class* const cls =
      quoll::ClassBuilder<CountedValue>("CountedValue")
          .initializer<&CountedValue::initWithBytes_objCType_ofClass>("initWithBytes:objCType:"_sel)
          .build();
  return cls;
}

TEST(BoxedGeometry, ASubclassIsMadeByItsOwnInitialiser) {
  const Ref<CountedValue> boxedRange = quoll::initWithRange<CountedValue>(range);
  EXPECT_EQ(boxedRange->rangeValue(), range);
  EXPECT_EQ(quoll::initWithRect<CountedValue>(rect)->rectValue(), rect);
  EXPECT_EQ(quoll::initWithSize<CountedValue>(size)->sizeValue(), size);
  EXPECT_EQ(quoll::initWithPoint<CountedValue>(point)->pointValue(), point);
  EXPECT_EQ(CountedValue::count, 4);
  const auto byName = quoll::send<Ref<NSValue>>(quoll::alloc(CountedValue::classObject()), "initWithRange:"_sel, range);
  EXPECT_NE(quoll::as<CountedValue>(byName), nullptr);
  EXPECT_EQ(CountedValue::count, 5);
  EXPECT_NE(quoll::as<CountedValue>(quoll::initWithRange_ofClass(range, CountedValue::classObject())), nullptr);
}

TEST(BoxedGeometry, RangesCompareByLocationAlone) {
  struct Row {
    const char* claim;
    NSRange a;
    NSRange b;
    quoll::NSComparisonResult order;
  };
  const Row rows[] = {
      {"smaller location", {1, 9}, {2, 0}, quoll::NSOrderedAscending},
      {"larger location", {2, 0}, {1, 9}, quoll::NSOrderedDescending},
      {"equal ranges", {4, 4}, {4, 4}, quoll::NSOrderedSame},
      {"lengths do not count", {4, 1}, {4, 100}, quoll::NSOrderedSame},
      {"locations are unsigned", {quoll::NSNotFound, 0}, {quoll::NSNotFound + 1, 0}, quoll::NSOrderedAscending},
      {"the largest location is last", {UINT64_MAX, 0}, {0, 0}, quoll::NSOrderedDescending},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSValue> a = NSValue::valueWithRange(row.a), b = NSValue::valueWithRange(row.b);
    EXPECT_EQ(compareRangeValueLocation(a, b), row.order);
    EXPECT_EQ(quoll::send<quoll::NSComparisonResult>(a, "compareRangeValueLocation:"_sel, b), row.order);
    EXPECT_EQ(static_cast<int>(compareRangeValueLocation(a, b)), static_cast<int>(row.order));
  }
  EXPECT_EQ(static_cast<int>(quoll::NSOrderedAscending), -1);
  EXPECT_EQ(static_cast<int>(quoll::NSOrderedDescending), 1);
}

TEST(BoxedGeometry, OnlyRangesAreCompared) {
  const auto comparing = [](Ref<NSValue> receiver, Ref<NSValue> other) {
    return [=] { static_cast<void>(compareRangeValueLocation(receiver, other)); };
  };
  const Ref<NSValue> boxed = NSValue::valueWithRange(range), other = NSValue::valueWithPoint(point);
  const auto refused = quoll::raises(quoll::NSInvalidArgumentException, "{_NSRange=QQ}");
  EXPECT_THAT(comparing(boxed, nullptr),
              quoll::raises(quoll::NSInvalidArgumentException, "-[NSValue compareRangeValueLocation:]: nil argument"));
  EXPECT_THAT(comparing(boxed, other), refused);
  EXPECT_THAT(comparing(other, boxed), refused);
  EXPECT_THAT(comparing(boxed, quoll::NSNumber::numberWithInt(3)), refused);
}

TEST(BoxedGeometry, ANullReceiverComparesTheSame) {
  EXPECT_EQ(compareRangeValueLocation(nullptr, NSValue::valueWithRange(range)), quoll::NSOrderedSame);
}

RC_GTEST_PROP(BoxedGeometry, EveryRangeComesBackAndOrdersAsItsLocation, (uint64_t a, uint64_t b, uint64_t length)) {
  const Ref<NSValue> first = quoll::initWithRange(NSMakeRange(a, length));
  const Ref<NSValue> second = quoll::initWithRange(NSMakeRange(b, length));
  RC_ASSERT(first->rangeValue() == NSMakeRange(a, length));
  RC_ASSERT((compareRangeValueLocation(first, second) == quoll::NSOrderedAscending) == (a < b));
  RC_ASSERT(static_cast<int>(compareRangeValueLocation(first, second)) ==
            -static_cast<int>(compareRangeValueLocation(second, first)));
}

}  // namespace
