// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSException.h"

#include <gmock/gmock.h>

#include <exception>
#include <type_traits>

#include "QuollFoundation/platform/object/Casting.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

static_assert(std::is_base_of_v<std::exception, quoll::NSException>);
static_assert(std::is_nothrow_copy_constructible_v<quoll::NSException>);
static_assert(sizeof(quoll::NSException) == 2 * sizeof(void*), "small and cheap to copy");

TEST(NSException, IsCaughtAndToldApartByItsName) {
  try {
    quoll::raise(quoll::NSRangeException, "index 7 beyond bounds");
  } catch (const quoll::NSException& e) {
    EXPECT_TRUE(isEqual(e.name(), quoll::NSRangeException));
    EXPECT_STREQ(e.what(), "NSRangeException: index 7 beyond bounds");
    return;
  }
  FAIL() << "nothing was raised";
}

using namespace quoll;
using namespace quoll::testsupport;
using testing::HasSubstr;
using testing::StartsWith;

TEST(NSException, IsAStandardException) {
  try {
    raise(NSGenericException,
          "Gr\xC3\xBC\xC3\x9F"
          "e");
  } catch (const std::exception& e) {
    EXPECT_STREQ(e.what(),
                 "NSGenericException: Gr\xC3\xBC\xC3\x9F"
                 "e");
  }
}

TEST(NSException, CopiesShareOneObjectThatGoesIntoACollection) {
  std::exception_ptr kept;
  Ref<NSObject> object;
  try {
    raise(NSGenericException, "once");
  } catch (const NSException& e) {
    const NSException copy = e;
    EXPECT_TRUE(copy.object() == e.object());
    object = e.object();
    kept = std::current_exception();
  }
  try {
    std::rethrow_exception(kept);
  } catch (const NSException& e) {
    EXPECT_TRUE(e.object() == object);
  }
  kept = nullptr;
  EXPECT_EQ(text(send<Ref<NSString>>(object, "reason"_sel)), "once") << "it outlives the C++ exception";
}

TEST(NSException, MayLackAReason) {
  const NSException bare(NSGenericException, nullptr);
  EXPECT_TRUE(bare.reason() == nullptr && bare.userInfo() == nullptr);
  EXPECT_STREQ(bare.what(), "NSGenericException");
}

TEST(NSException, TextsNameTheMethodTheValueAndTheBound) {
  const Ref<Counter> counter = Counter::initWithValue(1);
  EXPECT_EQ(raised([&] { detail::raiseIndex(counter, "at:", 7, 3); }),
            "NSRangeException: -[Counter at:]: index 7 beyond bounds [0 .. 2]");
  EXPECT_THAT(raised([&] { detail::raiseIndex(counter, "at:", 7, 0); }), HasSubstr("beyond bounds for empty"));
  EXPECT_EQ(raised([&] { detail::raiseRange(counter, "in:", {4, 9}, 5); }),
            "NSRangeException: -[Counter in:]: Range {4, 9} out of bounds; length 5");
  EXPECT_EQ(raised([&] { detail::raiseNilArgument(Counter::classObject(), "with:"); }),
            "NSInvalidArgumentException: +[Counter with:]: nil argument");
  EXPECT_THAT(raised([&] { detail::raiseUnrecognized(counter, "nothing"_sel); }),
              StartsWith("NSInvalidArgumentException: -[Counter nothing]: unrecognized selector sent to instance 0x"));
}

TEST(NSException, TextsNeverMessageAProxy) {
  const Ref<Forwarder> proxy = make<Forwarder>(Counter::initWithValue(1));
  EXPECT_THAT(raised([&] { detail::raiseNilArgument(proxy, "with:"); }), HasSubstr("-[Forwarder with:]"));
  EXPECT_THAT(detail::plainDescription(proxy), StartsWith("<Forwarder: 0x"));
}
