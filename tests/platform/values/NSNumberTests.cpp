// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSNumber.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

TEST(NSNumber, EqualsANumberOfAnotherTypeByValue) {
  quoll::Ref<quoll::NSNumber> count = quoll::NSNumber::numberWithInt(5);
  EXPECT_TRUE(count->isEqualToNumber(quoll::NSNumber::numberWithDouble(5)));
}

using namespace quoll;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

Ref<NSNumber> number(int64_t value) { return NSNumber::numberWithLongLong(value); }
Ref<NSNumber> number(uint64_t value) { return NSNumber::numberWithUnsignedLongLong(value); }
Ref<NSNumber> number(double value) { return NSNumber::numberWithDouble(value); }
Ref<NSNumber> number(int value) { return NSNumber::numberWithInt(value); }

/// A number that a user derives.
class Percentage : public NSNumber {
  QF_CLASS(Percentage, NSNumber)
 public:
  static Ref<NSNumber> initWithInt_ofClass(int32_t value, Class* cls) {
    return NSNumber::initWithInt_ofClass(value > 100 ? 100 : value, cls);
  }
};

Class* Percentage::classObject() {
  static Class* const cls =
      ClassBuilder<Percentage>("Percentage").initializer<&Percentage::initWithInt_ofClass>("initWithInt:").build();
  return cls;
}

}  // namespace

TEST(NSNumber, KeepsTheTypeItWasMadeFrom) {
  struct Row {
    Ref<NSNumber> number;
    const char* encoding;
  } const rows[] = {
      {NSNumber::numberWithChar(1), "c"},
      {NSNumber::numberWithUnsignedChar(1), "C"},
      {NSNumber::numberWithShort(1), "s"},
      {NSNumber::numberWithUnsignedShort(1), "S"},
      {NSNumber::numberWithInt(1), "i"},
      {NSNumber::numberWithUnsignedInt(1), "I"},
      {NSNumber::numberWithLong(1), "q"},
      {NSNumber::numberWithUnsignedLong(1), "Q"},
      {NSNumber::numberWithLongLong(1), "q"},
      {NSNumber::numberWithUnsignedLongLong(1), "Q"},
      {NSNumber::numberWithFloat(1), "f"},
      {NSNumber::numberWithDouble(1), "d"},
      {NSNumber::numberWithBool(true), "c"},
      {NSNumber::numberWithInteger(1), "q"},
      {NSNumber::numberWithUnsignedInteger(1), "Q"},
      {NSNumber::initWithChar(1), "c"},
      {NSNumber::initWithUnsignedChar(1), "C"},
      {NSNumber::initWithShort(1), "s"},
      {NSNumber::initWithUnsignedShort(1), "S"},
      {NSNumber::initWithInt(1), "i"},
      {NSNumber::initWithUnsignedInt(1), "I"},
      {NSNumber::initWithLong(1), "q"},
      {NSNumber::initWithUnsignedLong(1), "Q"},
      {NSNumber::initWithLongLong(1), "q"},
      {NSNumber::initWithUnsignedLongLong(1), "Q"},
      {NSNumber::initWithFloat(1), "f"},
      {NSNumber::initWithDouble(1), "d"},
      {NSNumber::initWithBool(true), "c"},
      {NSNumber::initWithInteger(1), "q"},
      {NSNumber::initWithUnsignedInteger(1), "Q"},
  };
  for (const Row& row : rows) {
    EXPECT_STREQ(row.number->objCType(), row.encoding);
    EXPECT_EQ(row.number->intValue(), 1);
    EXPECT_THAT(row.number, equals(number(1)));
  }
}

TEST(NSNumber, FromBytesKeepsTheTypeThatTheCallerGave) {
  const uint64_t large = UINT64_MAX;
  const auto fromL = NSNumber::initWithBytes_objCType<NSNumber>(&large, "L");
  EXPECT_STREQ(fromL->objCType(), "L");
  EXPECT_THAT(fromL, equals(number(large)));
  EXPECT_STREQ(NSNumber::valueWithBytes_objCType<NSNumber>(&large, "l")->objCType(), "l");
  EXPECT_THAT(NSNumber::valueWithBytes_objCType<NSNumber>(&large, "l"), equals(number(-1)));
  const float single = 1.5F;
  EXPECT_EQ(NSNumber::valueWithBytes_objCType<NSNumber>(&single, "f")->doubleValue(), 1.5);
  const int16_t negative = -2;
  EXPECT_EQ(NSNumber::valueWithBytes_objCType<NSNumber>(&negative, "s")->intValue(), -2);
}

TEST(NSNumber, FromBytesOfNoNumberRaises) {
  const NSRange range{};
  for (const char* bad : {"{_NSRange=QQ}", "@", "", "ii", "v", "*"}) {
    SCOPED_TRACE(bad);
    EXPECT_THAT([&] { NSNumber::initWithBytes_objCType<NSNumber>(&range, bad); },
                raises(NSInvalidArgumentException, "is not the type of a number"));
  }
  EXPECT_THAT([] { NSNumber::initWithBytes_objCType<NSNumber>(nullptr, "i"); }, raises(NSInvalidArgumentException, ""));
  EXPECT_THAT([&] { NSNumber::initWithBytes_objCType<NSNumber>(&range, nullptr); },
              raises(NSInvalidArgumentException, "(null)"));
}

TEST(NSNumber, GivesItsBytesInItsOwnType) {
  int16_t narrow = 0;
  NSNumber::numberWithShort(-2)->getValue(&narrow);
  EXPECT_EQ(narrow, -2);
  float single = 0;
  NSNumber::numberWithFloat(1.5F)->getValue(&single);
  EXPECT_EQ(single, 1.5F);
  double real = 0;
  number(2.5)->getValue_size(&real, sizeof real);
  EXPECT_EQ(real, 2.5);
  EXPECT_THAT([&] { number(2.5)->getValue_size(&single, sizeof single); }, raises(NSInvalidArgumentException, ""));
  EXPECT_THAT([] { number(1)->getValue(nullptr); }, raises(NSInvalidArgumentException, "getValue:"));
}

TEST(NSNumber, IntegerAsNarrowerTypeLosesItsUpperBits) {
  EXPECT_EQ(number(300)->charValue(), 44);
  EXPECT_EQ(number(300)->unsignedCharValue(), 44);
  EXPECT_EQ(number(70000)->shortValue(), 4464);
  EXPECT_EQ(number(-1)->unsignedShortValue(), 65535);
  EXPECT_EQ(number(-1)->unsignedIntValue(), UINT32_MAX);
  EXPECT_EQ(number(int64_t{1} << 32)->intValue(), 0);
  EXPECT_EQ(number(-1)->unsignedIntegerValue(), UINT64_MAX);
  EXPECT_EQ(number(UINT64_MAX)->integerValue(), -1);
  EXPECT_EQ(number(UINT64_MAX)->unsignedLongValue(), UINT64_MAX);
  EXPECT_EQ(number(UINT64_MAX)->longValue(), -1);
}

TEST(NSNumber, RealAsIntegerLosesItsFractionAndStopsAtTheLimits) {
  EXPECT_EQ(number(2.9)->intValue(), 2);
  EXPECT_EQ(number(-2.9)->intValue(), -2);
  EXPECT_EQ(number(1e10)->intValue(), INT32_MAX);
  EXPECT_EQ(number(-1e10)->intValue(), INT32_MIN);
  EXPECT_EQ(number(1e30)->longLongValue(), INT64_MAX);
  EXPECT_EQ(number(0x1p63)->longLongValue(), INT64_MAX);
  EXPECT_EQ(number(0x1p63)->unsignedLongLongValue(), uint64_t{1} << 63);
  EXPECT_EQ(number(-infinity)->integerValue(), INT64_MIN);
  EXPECT_EQ(number(1e30)->unsignedLongLongValue(), UINT64_MAX);
  EXPECT_EQ(number(-1.0)->unsignedIntegerValue(), 0U);
  EXPECT_EQ(number(notANumber)->intValue(), 0);
}

TEST(NSNumber, AsRealIsTheNearest) {
  EXPECT_EQ(number(UINT64_MAX)->doubleValue(), 0x1p64);
  EXPECT_EQ(number(UINT64_MAX)->floatValue(), 0x1p64F);
  EXPECT_EQ(number(-3)->doubleValue(), -3);
  EXPECT_EQ(number(0.1)->floatValue(), 0.1F);
  EXPECT_EQ(NSNumber::numberWithFloat(0.1F)->doubleValue(), static_cast<double>(0.1F));
}

TEST(NSNumber, AnythingButZeroIsTrue) {
  EXPECT_TRUE(number(256)->boolValue());
  EXPECT_TRUE(number(-1)->boolValue());
  EXPECT_TRUE(number(0.5)->boolValue());
  EXPECT_FALSE(number(0)->boolValue());
  EXPECT_FALSE(number(-0.0)->boolValue());
}

TEST(NSNumber, EqualityGoesByExactValueAcrossTypes) {
  struct Row {
    const char* claim;
    Ref<NSNumber> a, b;
    bool equal;
  } const rows[] = {
      {"integer and double", number(2), number(2.0), true},
      {"bool and integer", NSNumber::numberWithBool(true), number(1), true},
      {"char and unsigned", NSNumber::numberWithChar(-1), number(UINT64_MAX), false},
      {"2^63 unsigned and -2^63", number(uint64_t{1} << 63), number(INT64_MIN), false},
      {"2^63 unsigned and as double", number(uint64_t{1} << 63), number(0x1p63), true},
      {"-2^63 and as double", number(INT64_MIN), number(-0x1p63), true},
      {"2^53 + 1 and the double beside", number(int64_t{9007199254740993}), number(9007199254740992.0), false},
      {"2^63 - 1 and 2^63 as double", number(INT64_MAX), number(0x1p63), false},
      {"2^64 - 1 and 2^64 as double", number(UINT64_MAX), number(0x1p64), false},
      {"fraction", number(2), number(2.5), false},
      {"both zeros", number(0.0), number(-0.0), true},
      {"integer zero and minus zero", number(0), number(-0.0), true},
      {"float and double of one decimal", NSNumber::numberWithFloat(0.1F), number(0.1), false},
      {"NaN", number(notANumber), number(notANumber), false},
      {"NaN and integer", number(0), number(notANumber), false},
      {"infinity and integer", number(INT64_MAX), number(infinity), false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(row.a->isEqual(row.b), row.equal);
    EXPECT_EQ(row.b->isEqual(row.a), row.equal);
    EXPECT_EQ(row.a->isEqualToNumber(row.b), row.equal);
    EXPECT_TRUE(!row.equal || row.a->hash() == row.b->hash());
  }
  EXPECT_FALSE(number(1)->isEqualToNumber(nullptr));
  EXPECT_FALSE(number(1)->isEqual("1"_ns));
}

TEST(NSNumber, ComparesExactlyAcrossTypes) {
  struct Row {
    const char* claim;
    Ref<NSNumber> small, large;
  } const rows[] = {
      {"integers", number(-1), number(1)},
      {"negative and huge unsigned", number(-1), number(UINT64_MAX)},
      {"two huge unsigned", number(uint64_t{1} << 63), number(UINT64_MAX)},
      {"integer and fraction above", number(2), number(2.5)},
      {"fraction below and integer", number(1.5), number(2)},
      {"negative fraction", number(-2.5), number(-2)},
      {"below zero", number(-0.5), number(0)},
      {"2^53 and 2^53 + 1", number(9007199254740992.0), number(int64_t{9007199254740993})},
      {"2^64 - 1 and 2^64", number(UINT64_MAX), number(0x1p64)},
      {"largest signed and 2^63", number(INT64_MAX), number(0x1p63)},
      {"beyond all integers", number(INT64_MIN), number(1e300)},
      {"below all integers", number(-1e300), number(INT64_MIN)},
      {"negative real and huge unsigned", number(-1.0), number(UINT64_MAX)},
      {"infinity", number(UINT64_MAX), number(infinity)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(row.small->compare(row.large), NSOrderedAscending);
    EXPECT_EQ(row.large->compare(row.small), NSOrderedDescending);
  }
  EXPECT_EQ(number(2)->compare(number(2.0)), NSOrderedSame);
  EXPECT_EQ(number(2)->compare(nullptr), NSOrderedDescending);
}

TEST(NSNumber, NotANumberIsNeitherBeforeNorBehind) {
  EXPECT_EQ(number(notANumber)->compare(number(1)), NSOrderedSame);
  EXPECT_EQ(number(1)->compare(number(notANumber)), NSOrderedSame);
  EXPECT_EQ(number(1.5)->compare(number(notANumber)), NSOrderedSame);
}

RC_GTEST_PROP(NSNumber, IntegersCompareAsIntegers, (int64_t a, int64_t b)) {
  RC_ASSERT(number(a)->compare(number(b)) == compareValues(a, b));
  RC_ASSERT(number(static_cast<uint64_t>(a))->compare(number(static_cast<uint64_t>(b))) ==
            compareValues(static_cast<uint64_t>(a), static_cast<uint64_t>(b)));
}

RC_GTEST_PROP(NSNumber, IntegerAndDoubleCompareAsWithMoreDigits, (int64_t a, double b)) {
  const auto wide = static_cast<long double>(a);  // 64 bits of precision hold both exactly
  RC_ASSERT(number(a)->compare(number(b)) == compareValues(wide, static_cast<long double>(b)));
  const auto unsignedA = static_cast<uint64_t>(a);
  const double near = static_cast<double>(unsignedA);
  RC_ASSERT(number(unsignedA)->compare(number(near)) ==
            compareValues(static_cast<long double>(unsignedA), static_cast<long double>(near)));
}

TEST(NSNumber, IsWrittenInItsShortestDecimals) {
  EXPECT_THAT(number(0.1)->stringValue(), equals("0.1"));
  EXPECT_THAT(number(1.0)->description(), equals("1"));
  EXPECT_THAT(number(1e20)->stringValue(), equals("1e+20"));
  EXPECT_THAT(NSNumber::numberWithFloat(0.1F)->stringValue(), equals("0.1"));
  EXPECT_THAT(NSNumber::numberWithBool(true)->stringValue(), equals("1"));
  EXPECT_THAT(NSNumber::numberWithBool(false)->description(), equals("0"));
  EXPECT_THAT(number(INT64_MIN)->stringValue(), equals("-9223372036854775808"));
  EXPECT_THAT(number(UINT64_MAX)->stringValue(), equals("18446744073709551615"));
  EXPECT_THAT(NSNumber::numberWithChar('a')->stringValue(), equals("97"));
}

TEST(NSNumber, SmallOnesAndBooleansAreReadyMade) {
  NSNumber::classObject();
  const AllocationCount allocations;
  for (int i = 0; i < 16; ++i) EXPECT_EQ(number(i)->intValue(), i);
  EXPECT_EQ(NSNumber::numberWithBool(true), NSNumber::numberWithBool(true));
  EXPECT_EQ(allocations.made(), 0U);
}

TEST(NSNumber, OthersTakeOneAllocationAtMost) {
  const LeakGuard guard;
  const Ref<NSNumber> first = number(123455);  // the class is built, and counted as its objects are
  const AllocationCount allocations;
  const Ref<NSNumber> one = number(123456);
  EXPECT_LE(allocations.made(), 1U);
}

TEST(NSNumber, MakesASubclassThroughItsOwnInitialiser) {
  const LeakGuard guard;
  EXPECT_EQ(NSNumber::numberWithInt<Percentage>(120)->intValue(), 100);
  EXPECT_EQ(Percentage::classObject(), NSNumber::numberWithInt<Percentage>(5)->isa());
  EXPECT_EQ(send<Ref<Percentage>>(Percentage::classObject(), "numberWithInt:"_sel, 120)->intValue(), 100);
  EXPECT_EQ(NSNumber::numberWithDouble<Percentage>(0.5)->doubleValue(), 0.5);
  EXPECT_THAT(NSNumber::numberWithInt<Percentage>(50), equals(number(50)));
}

TEST(NSNumber, AnswersByName) {
  Class* const cls = NSNumber::classObject();
  EXPECT_EQ(send<int>(send<Ref<NSNumber>>(cls, "numberWithInt:"_sel, 7), "intValue"_sel), 7);
  EXPECT_EQ(send<bool>(send<Ref<NSNumber>>(cls, "numberWithBool:"_sel, true), "boolValue"_sel), true);
  EXPECT_EQ(made<NSNumber>(cls, "initWithDouble:"_sel, 2.5)->doubleValue(), 2.5);
  EXPECT_EQ(send<NSComparisonResult>(number(1), "compare:"_sel, number(2)), NSOrderedAscending);
  EXPECT_THAT([] { send(number(1), "compare:"_sel, "2"_ns); }, raises(NSInvalidArgumentException, "NSNumber"));
}

TEST(NSNumber, CopiesToItself) {
  const Ref<NSNumber> one = number(123456);
  EXPECT_EQ(one->copy(), one);
}
