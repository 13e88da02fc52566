// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Value.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using quoll::detail::Value;
using testing::AllOf;
using testing::HasSubstr;

namespace {

template <class T> T as(const Value& value) { return value.as<T>("place", 1); }

}  // namespace

TEST(Value, HoldsOneOfEachKind) {
  EXPECT_EQ(as<int>(Value::of(5)), 5);
  EXPECT_EQ(as<double>(Value::of(2.5F)), 2.5);
  EXPECT_TRUE(as<Ref<NSString>>(Value::of("text"_ns)) == "text"_ns);
  EXPECT_STREQ(as<const char*>(Value::of("word")), "word");
  EXPECT_EQ(as<Span>(Value::of(Span{1, 2})).length, 2U);
  EXPECT_EQ(as<Matrix>(Value::of(Matrix{{1, 2, 3, 4, 5, 6}})).cells[4], 5);
  EXPECT_TRUE(as<Selector>(Value::of("plus:"_sel)) == "plus:"_sel);
  EXPECT_EQ(as<int>(Value()), 0);
  EXPECT_TRUE(as<Ref<NSString>>(Value()) == nullptr && as<Span>(Value()).length == 0);
}

TEST(Value, CopiesOwnTheirParts) {
  const auto total = std::make_shared<int>(0);
  const auto adding = [total](int x) { return *total += x; };
  std::vector<Value> values;
  values.push_back(Value::of("a word that was copied"));
  values.push_back(Value::of(Matrix{{1, 2, 3, 4, 5, 6}}));
  values.push_back(Value::of(make<Node>()));
  const Span span{7, 8};
  values.push_back(Value::fromMemory("{Span=QQ}", &span));
  values.push_back(Value::of(BlockRef<int(int)>(adding)));
  for (Value& value : values) value.keep();
  EXPECT_EQ(total.use_count(), 3);
  std::vector<Value> copies = values;
  values.clear();
  EXPECT_STREQ(as<const char*>(copies[0]), "a word that was copied");
  EXPECT_EQ(as<Matrix>(copies[1]).cells[5], 6);
  EXPECT_EQ(Node::alive, 1);
  EXPECT_EQ(as<Span>(copies[3]).length, 8U);
  EXPECT_EQ(as<BlockRef<int(int)>>(copies[4])(2), 2);
  const Value assigned = copies[0];
  copies[0] = copies[1];
  copies[1] = assigned;
  Value& same = copies[1];
  copies[1] = same;
  EXPECT_STREQ(as<const char*>(copies[1]), "a word that was copied");
  copies.clear();
  EXPECT_EQ(Node::alive, 0);
  EXPECT_EQ(total.use_count(), 2);
}

TEST(Value, KeepsTheEncodingOfMemoryThatIsGone) {
  Value value;
  {
    const std::string encoding = "{Span=QQ}and what follows it is no part of it";
    const Span span{1, 2};
    value = Value::fromMemory(std::string(encoding, 0, 9), &span);
  }
  EXPECT_STREQ(value.encoding(), "{Span=QQ}");
  EXPECT_EQ(as<Span>(value).length, 2U);
  const Value moved = std::move(value);
  EXPECT_STREQ(moved.encoding(), "{Span=QQ}");
  const int number = 3;
  EXPECT_STREQ(Value::fromMemory(std::string("i"), &number).encoding(), "i");
}

TEST(Value, GoesToMemoryAndBackInEachType) {
  const auto there = [](const char* encoding, const auto& given) {
    std::remove_cvref_t<decltype(given)> place{};
    Value::fromMemory(encoding, &given).toMemory(encoding, &place);
    return place;
  };
  EXPECT_EQ(there("c", int8_t{-5}), -5);
  EXPECT_EQ(there("C", uint8_t{200}), 200);
  EXPECT_EQ(there("s", int16_t{-500}), -500);
  EXPECT_EQ(there("S", uint16_t{60000}), 60000);
  EXPECT_EQ(there("i", -70000), -70000);
  EXPECT_EQ(there("I", 4000000000U), 4000000000U);
  EXPECT_EQ(there("q", INT64_MIN), INT64_MIN);
  EXPECT_EQ(there("Q", UINT64_MAX), UINT64_MAX);
  EXPECT_EQ(there("B", true), true);
  EXPECT_EQ(there("f", 1.5F), 1.5F);
  EXPECT_EQ(there("d", -1e300), -1e300);
  EXPECT_EQ(there("r^v", static_cast<const void*>(this)), this);
  EXPECT_TRUE(there(":", "plus:"_sel) == "plus:"_sel);
}

TEST(Value, PassesBetweenNumbersOnlyWhereTheyFit) {
  int8_t small = 77;
  EXPECT_THAT(raised([&] { Value::of(300).toMemory("c", &small, "place:", 1); }),
              AllOf(HasSubstr("argument 1 of place:"), HasSubstr("300")));
  EXPECT_THAT(raised([&] { Value::of("text"_ns).toMemory("c", &small, "place:", 1); }), HasSubstr("NSString"));
  EXPECT_EQ(small, 77);
  double real = 0;
  Value::of(UINT64_MAX).toMemory("d", &real);
  EXPECT_EQ(real, 0x1p64);
  uint64_t natural = 0;
  Value::of(0x1p63).toMemory("Q", &natural);
  EXPECT_EQ(natural, uint64_t{1} << 63);
}

TEST(Value, ABorrowedBlockIsKeptOnce) {
  const auto counted = std::make_shared<int>(0);
  const auto block = [counted] {};
  Value value = Value::of(BlockRef<void()>(block));
  EXPECT_EQ(counted.use_count(), 2) << "borrowed";
  value.keep();
  value.keep();
  EXPECT_EQ(counted.use_count(), 3) << "copied once";
  Value none = Value::of(OptionalBlockRef<void()>());
  none.keep();
  EXPECT_FALSE(as<OptionalBlockRef<void()>>(none));
}

TEST(Value, NamesWhatItIsWhereItDoesNotFit) {
  EXPECT_THAT(raised([] { as<int>(Value::of("word")); }),
              HasSubstr("argument 1 of place is a C string where i belongs"));
  EXPECT_THAT(raised([] { as<Ref<NSString>>(Value::of(1.5)); }), HasSubstr("a real number where NSString"));
  EXPECT_THAT(raised([] { as<Span>(Value::of(NSRange{})); }), HasSubstr("a value of another type where {Span=QQ}"));
  EXPECT_THAT(raised([] { as<void*>(Value::of("x"_ns)); }), HasSubstr("NSString where ^v"));
}
