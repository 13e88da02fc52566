// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/Boxing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "QuollFoundation/testing.h"

TEST(Boxing, GoesThereAndBack) {
  quoll::Ref<quoll::NSNumber> count = quoll::box(5);
  quoll::Ref<quoll::NSValue> range = quoll::box(quoll::NSMakeRange(2, 5));
  quoll::Ref<quoll::NSString> name = quoll::box(std::string_view("x"));
  int back = quoll::unbox<int>(count);
  EXPECT_EQ(back, 5);
  EXPECT_EQ(quoll::unbox<quoll::NSRange>(range), quoll::NSMakeRange(2, 5));
  EXPECT_EQ(quoll::unbox<std::string>(name), "x");
}

using namespace quoll;

namespace {

enum class Level : uint8_t { Low = 1, High = 200 };

/// What is raised when a T is asked for.
template <class T> auto unboxing(NSObject* object) {
  return [object] { unbox<T>(object); };
}

}  // namespace

TEST(Boxing, NumbersKeepTheirType) {
  EXPECT_STREQ(box(true)->objCType(), "c");
  EXPECT_STREQ(box('a')->objCType(), "c");
  EXPECT_STREQ(box(1)->objCType(), "i");
  EXPECT_STREQ(box(1U)->objCType(), "I");
  EXPECT_STREQ(box(1L)->objCType(), "q");
  EXPECT_STREQ(box(1UL)->objCType(), "Q");
  EXPECT_STREQ(box(1ULL)->objCType(), "Q");
  EXPECT_STREQ(box(1.0F)->objCType(), "f");
  EXPECT_STREQ(box(1.0)->objCType(), "d");
  EXPECT_STREQ(box(Level::High)->objCType(), "C");
}

TEST(Boxing, NumbersComeBackInAnyTypeThatHoldsThem) {
  EXPECT_EQ(unbox<uint8_t>(box(255)), 255);
  EXPECT_EQ(unbox<double>(box(3)), 3);
  EXPECT_EQ(unbox<int>(box(3.9)), 3);
  EXPECT_EQ(unbox<uint64_t>(box(UINT64_MAX)), UINT64_MAX);
  EXPECT_EQ(unbox<uint64_t>(box(0x1p63)), uint64_t{1} << 63);
  EXPECT_EQ(unbox<unsigned>(box(-0.5)), 0U);
  EXPECT_EQ(unbox<Level>(box(200)), Level::High);
  EXPECT_TRUE(unbox<bool>(box(256)));
  EXPECT_TRUE(std::isinf(unbox<float>(box(INFINITY))));
  EXPECT_TRUE(std::isnan(unbox<float>(box(std::nan("")))));
}

TEST(Boxing, ANumberThatDoesNotFitRaisesNamingItAndTheType) {
  EXPECT_THAT(unboxing<int8_t>(box(128)), raises(NSInvalidArgumentException, "NSNumber 128 doesn't fit"));
  EXPECT_THAT(unboxing<uint8_t>(box(-1)), raises(NSInvalidArgumentException, "-1"));
  EXPECT_THAT(unboxing<int>(box(UINT64_MAX)), raises(NSInvalidArgumentException, "of type int"));
  EXPECT_THAT(unboxing<int64_t>(box(UINT64_MAX)), raises(NSInvalidArgumentException, "18446744073709551615"));
  EXPECT_THAT(unboxing<uint64_t>(box(-1)), raises(NSInvalidArgumentException, "-1"));
  EXPECT_THAT(unboxing<uint64_t>(box(0x1p64)), raises(NSInvalidArgumentException, ""));
  EXPECT_THAT(unboxing<uint64_t>(box(-1.0)), raises(NSInvalidArgumentException, ""));
  EXPECT_THAT(unboxing<int64_t>(box(0x1p63)), raises(NSInvalidArgumentException, ""));
  EXPECT_THAT(unboxing<int>(box(std::nan(""))), raises(NSInvalidArgumentException, "nan"));
  EXPECT_THAT(unboxing<float>(box(1e300)), raises(NSInvalidArgumentException, "1e+300"));
  EXPECT_THAT(unboxing<Level>(box(256)), raises(NSInvalidArgumentException, "256"));
}

TEST(Boxing, AnObjectOfAnotherClassRaisesNamingBoth) {
  EXPECT_THAT(unboxing<int>("5"_ns), raises(NSInvalidArgumentException, "can't be unboxed as int"));
  EXPECT_THAT(unboxing<int>(nullptr), raises(NSInvalidArgumentException, "null can't be unboxed as int"));
  EXPECT_THAT(unboxing<double>(box(NSMakeRange(1, 2))), raises(NSInvalidArgumentException, "NSValue"));
  EXPECT_THAT(unboxing<bool>("YES"_ns), raises(NSInvalidArgumentException, "bool"));
  EXPECT_THAT(unboxing<NSRange>(box(5)), raises(NSInvalidArgumentException, "{_NSRange=QQ}"));
  EXPECT_THAT(unboxing<CGSize>(box(CGPoint{1, 2})), raises(NSInvalidArgumentException, "{CGPoint=dd}"));
  EXPECT_THAT(unboxing<NSRange>(nullptr), raises(NSInvalidArgumentException, "null"));
  EXPECT_THAT(unboxing<std::string>(box(5)), raises(NSInvalidArgumentException, "NSNumber"));
}

TEST(Boxing, TextsAreStrings) {
  EXPECT_THAT(box("Grüße"), equals(u"Grüße"_ns));
  EXPECT_THAT(box(std::string("a")), equals("a"));
  EXPECT_THAT(box(u"ü"), equals(u"ü"_ns));
  EXPECT_EQ(unbox<std::u16string>(u"ü"_ns), u"ü");
  EXPECT_THAT([] { box("\xFF"); }, raises(NSInvalidArgumentException, "UTF-8"));
}

TEST(Boxing, NullAndObjectsStayWhatTheyAre) {
  EXPECT_EQ(box(nullptr), nullptr);
  EXPECT_EQ(box(static_cast<const char*>(nullptr)), nullptr);
  NSString* const text = "x"_ns;
  EXPECT_EQ(box(text), text);
  EXPECT_EQ(box(Ref<NSString>(text)), text);
}

RC_GTEST_PROP(Boxing, AnyIntegerAndDoubleComesBack, (int64_t integer, double real)) {
  RC_ASSERT(unbox<int64_t>(box(integer)) == integer);
  RC_ASSERT(unbox<uint64_t>(box(static_cast<uint64_t>(integer))) == static_cast<uint64_t>(integer));
  RC_ASSERT(unbox<double>(box(real)) == real);
}
