// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/Numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string_view>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"

namespace {

using namespace quoll::literals;
using quoll::CGFloatValue;
using quoll::Class;
using quoll::isUnsigned;
using quoll::NSNumber;
using quoll::Ref;

constexpr double samples[] = {0.0, -0.0, 1.5, -2.25, 1e300, std::numeric_limits<double>::infinity()};

TEST(Numbers, ACoordinateIsANumberOfADouble) {
  for (const double value : samples) {
    SCOPED_TRACE(value);
    for (const Ref<NSNumber>& number : {quoll::numberWithCGFloat(value), quoll::initWithCGFloat(value)}) {
      EXPECT_TRUE(quoll::isEqual(number, NSNumber::numberWithDouble(value)));
      EXPECT_EQ(std::string_view(number->objCType()), "d");
      EXPECT_EQ(number->isa(), NSNumber::numberWithDouble(value)->isa());
      EXPECT_EQ(CGFloatValue(number), value);
      EXPECT_EQ(std::signbit(CGFloatValue(number)), std::signbit(value));
    }
  }
}

TEST(Numbers, ACoordinateIsANumberOfADoubleByName) {
  Class* const cls = NSNumber::classObject();
  for (const double value : samples) {
    SCOPED_TRACE(value);
    const auto number = quoll::send<Ref<NSNumber>>(cls, "numberWithCGFloat:"_sel, value);
    const auto other = quoll::send<Ref<NSNumber>>(quoll::alloc(cls), "initWithCGFloat:"_sel, value);
    EXPECT_TRUE(quoll::isEqual(number, NSNumber::numberWithDouble(value)));
    EXPECT_TRUE(quoll::isEqual(other, NSNumber::numberWithDouble(value)));
    EXPECT_EQ(quoll::send<double>(number, "CGFloatValue"_sel), value);
  }
}

TEST(Numbers, NotANumberStaysOne) {
  EXPECT_TRUE(std::isnan(CGFloatValue(quoll::numberWithCGFloat(std::numeric_limits<double>::quiet_NaN()))));
}

TEST(Numbers, EveryNumberHasACoordinate) {
  EXPECT_EQ(CGFloatValue(NSNumber::numberWithInt(-7)), -7.0);
  EXPECT_EQ(CGFloatValue(NSNumber::numberWithUnsignedLongLong(UINT64_MAX)), 0x1p64);
  EXPECT_EQ(CGFloatValue(NSNumber::numberWithFloat(0.1F)), static_cast<double>(0.1F));
  EXPECT_EQ(CGFloatValue(NSNumber::numberWithBool(true)), 1.0);
}

TEST(Numbers, UnsignedAreExactlyFourTypes) {
  const uint64_t bytes = 1;
  const auto ofType = [&bytes](const char* type) { return NSNumber::initWithBytes_objCType<NSNumber>(&bytes, type); };
  struct Row {
    const char* claim;
    Ref<NSNumber> number;
    const char* type;
    bool isUnsigned;
  };
  const Row rows[] = {
      {"unsigned char", NSNumber::numberWithUnsignedChar(1), "C", true},
      {"unsigned short", NSNumber::numberWithUnsignedShort(1), "S", true},
      {"unsigned int", NSNumber::numberWithUnsignedInt(1), "I", true},
      {"unsigned long long", NSNumber::numberWithUnsignedLongLong(1), "Q", true},
      {"unsigned long by its own code", ofType("L"), "L", false},
      {"char", NSNumber::numberWithChar(1), "c", false},
      {"a Boolean, which is a char", NSNumber::numberWithBool(true), "c", false},
      {"short", NSNumber::numberWithShort(1), "s", false},
      {"int", NSNumber::numberWithInt(1), "i", false},
      {"long long", NSNumber::numberWithLongLong(1), "q", false},
      {"long by its own code", ofType("l"), "l", false},
      {"float", NSNumber::numberWithFloat(1), "f", false},
      {"double", NSNumber::numberWithDouble(1), "d", false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(std::string_view(row.number->objCType()), row.type);
    EXPECT_EQ(isUnsigned(row.number), row.isUnsigned);
    EXPECT_EQ(quoll::send<bool>(row.number, "isUnsigned"_sel), row.isUnsigned);
  }
}

TEST(Numbers, ANullReceiverAnswersZero) {
  EXPECT_EQ(CGFloatValue(nullptr), 0.0);
  EXPECT_FALSE(isUnsigned(nullptr));
}

/// Tells by which of its own methods it was made.
class CountedNumber : public NSNumber {
  QF_CLASS(CountedNumber, NSNumber)
 public:
  static Ref<NSNumber> numberWithDouble_ofClass(double value, Class* cls) {
    ++constructed;
    return NSNumber::numberWithDouble_ofClass(value, cls);
  }
  static Ref<NSNumber> initWithDouble_ofClass(double value, Class* cls) {
    ++initialised;
    return NSNumber::initWithDouble_ofClass(value, cls);
  }
  static inline int constructed = 0;
  static inline int initialised = 0;
};
Class* CountedNumber::classObject() {
  static Class* const cls = quoll::ClassBuilder<CountedNumber>("CountedNumber")
                                .classMethod<&CountedNumber::numberWithDouble_ofClass>("numberWithDouble:"_sel)
                                .initializer<&CountedNumber::initWithDouble_ofClass>("initWithDouble:"_sel)
                                .build();
  return cls;
}

TEST(Numbers, ASubclassIsMadeByItsOwnMethods) {
  const Ref<CountedNumber> number = quoll::initWithCGFloat<CountedNumber>(2.5);
  EXPECT_EQ(CGFloatValue(number), 2.5);
  EXPECT_EQ(CountedNumber::initialised, 1);
  EXPECT_EQ(CountedNumber::constructed, 0);
  EXPECT_EQ(CGFloatValue(quoll::numberWithCGFloat<CountedNumber>(-3)), -3.0);
  EXPECT_EQ(CountedNumber::constructed, 1);
  const auto byName = quoll::send<Ref<NSNumber>>(CountedNumber::classObject(), "numberWithCGFloat:"_sel, 1.0);
  EXPECT_NE(quoll::as<CountedNumber>(byName), nullptr);
  EXPECT_EQ(CountedNumber::constructed, 2);
}

}  // namespace
