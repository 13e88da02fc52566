// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/TypeEncodings.h"

#include <gmock/gmock.h>

#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using namespace quoll::detail;
using testing::HasSubstr;

namespace {

template <class T> constexpr std::string_view encoded() { return encodingOf<T>.text; }

static_assert(encoded<void>() == "v" && encoded<bool>() == "c" && encoded<char>() == "c");
static_assert(encoded<int8_t>() == "c" && encoded<uint8_t>() == "C" && encoded<int16_t>() == "s");
static_assert(encoded<uint16_t>() == "S" && encoded<int>() == "i" && encoded<unsigned>() == "I");
static_assert(encoded<long>() == "q" && encoded<long long>() == "q" && encoded<int64_t>() == "q");
static_assert(encoded<unsigned long>() == "Q" && encoded<unsigned long long>() == "Q" && encoded<size_t>() == "Q");
static_assert(encoded<float>() == "f" && encoded<double>() == "d" && encoded<Colour>() == "C");
static_assert(encoded<NSComparisonResult>() == "q");
static_assert(encoded<NSObject*>() == "@" && encoded<const NSString*>() == "@" && encoded<Ref<Counter>>() == "@");
static_assert(encoded<Class*>() == "#" && encoded<const Class*>() == "#" && encoded<Protocol*>() == "@");
static_assert(encoded<Selector>() == ":" && encoded<const char*>() == "r*" && encoded<char*>() == "*");
static_assert(encoded<void*>() == "^v" && encoded<const void*>() == "r^v" && encoded<int*>() == "^i");
static_assert(encoded<Ref<NSString>*>() == "^@" && encoded<NSObject**>() == "^@" && encoded<void (*)(int)>() == "^?");
static_assert(encoded<NSRange*>() == "^{_NSRange=QQ}" && encoded<const NSRange*>() == "r^{_NSRange=QQ}");
static_assert(encoded<NSFastEnumerationState*>() == "^v", "an opaque struct");
static_assert(encoded<NSRange>() == "{_NSRange=QQ}" && encoded<CFRange>() == "{?=qq}");
static_assert(encoded<CGRect>() == "{CGRect={CGPoint=dd}{CGSize=dd}}" && encoded<Span>() == "{Span=QQ}");
static_assert(encoded<BlockRef<void()>>() == "@?" && encoded<Block<void()>>() == "@?");
static_assert(encoded<OptionalBlockRef<int(int)>>() == "@?");

// Integers and objects share a letter each; what can't be converted is told apart.
static_assert(signatureKey<void, int>() == signatureKey<void, uint64_t>());
static_assert(signatureKey<void, NSString*>() == signatureKey<void, Ref<NSObject>>());
static_assert(signatureKey<void, int>() != signatureKey<void, double>());
static_assert(signatureKey<void, float>() != signatureKey<void, double>());
static_assert(signatureKey<void, int>() != signatureKey<void, int, int>());
static_assert(signatureKey<int, int>() != signatureKey<void, int>());
static_assert(sameArguments(signatureKey<int, int>(), signatureKey<void, int>()));
static_assert(!sameArguments(signatureKey<Span>(), signatureKey<void>()), "a struct is not ignored in a register");
static_assert(signatureKey<void, NSRange>() != signatureKey<void, Span>());
static_assert(signatureKey<void, int*>() != signatureKey<void, const int*>());
static_assert(signatureKey<void, Ref<NSString>*>() != signatureKey<void, Ref<Counter>*>());
static_assert(signatureKey<void, Ref<NSString>*>() != signatureKey<void, NSString**>());
static_assert(signatureKey<void, bool*>() != signatureKey<void, int8_t*>());
static_assert(signatureKey<void, BlockRef<void(bool)>>() != signatureKey<void, BlockRef<void(int8_t)>>());
static_assert(signatureKey<void, BlockRef<void(NSObject*)>>() != signatureKey<void, BlockRef<void(Ref<NSObject>)>>());
static_assert(signatureKey<void, BlockRef<void()>>() == signatureKey<void, Block<void()>>());
static_assert(signatureKey<void, BlockRef<void()>>() == signatureKey<void, OptionalBlockRef<void()>>());
static_assert(signatureKey<void, void (*)(int)>() != signatureKey<void, void (*)(double)>());
static_assert(signatureKey<void, void (*)(int)>() == signatureKey<void, void (*)(int) noexcept>());
static_assert(signatureKey<void, const char*>() == signatureKey<void, char*>());

}  // namespace

TEST(TypeEncodings, KeysAreTheSameFromBothCompilers) {
  // Fixed numbers: a method in one module is called by a sender that another compiler made.
  EXPECT_EQ((signatureKey<bool, Ref<NSString>*, BlockRef<bool(NSString*, char, bool)>>()), 0xb8d8b983e1947a01);
  EXPECT_EQ((signatureKey<Ref<NSObject>, int64_t, double, NSRange, const char*>()), 0x638df437c54a6402);
  EXPECT_EQ((signatureKey<void, void (*)(Ref<NSString>, bool), const NSFastEnumerationState*>()), 0x46c0da8eaef74400);
}

TEST(TypeEncodings, FirstTypeIsCutOffAtItsEnd) {
  EXPECT_EQ(firstType("q@").type, "q");
  EXPECT_EQ(firstType("q@").rest, "@");
  EXPECT_EQ(firstType("{a={b=q}d}@").type, "{a={b=q}d}");
  EXPECT_EQ(firstType("r^{a=q}16:").type, "r^{a=q}");
  EXPECT_EQ(firstType("r^{a=q}16:").rest, ":");
  EXPECT_EQ(firstType("@?@").type, "@?");
  EXPECT_EQ(firstType("^^vq").type, "^^v");
}

TEST(TypeEncodings, SizesAreThoseOfTheCompiler) {
  struct Mixed {
    char c;
    double d;
    short s;
  };
  struct Row {
    const char* encoding;
    size_t size;
  };
  for (const Row& row : {Row{"v", 0},
                         Row{"c", 1},
                         Row{"B", 1},
                         Row{"S", 2},
                         Row{"i", 4},
                         Row{"f", 4},
                         Row{"d", 8},
                         Row{"q", 8},
                         Row{"@", 8},
                         Row{"#", 8},
                         Row{":", sizeof(Selector)},
                         Row{"r*", 8},
                         Row{"@?", sizeof(BlockRef<void()>)},
                         Row{"^{unknown}", 8},
                         Row{"{Mixed=cds}", sizeof(Mixed)},
                         Row{"{_NSRange=QQ}", sizeof(NSRange)},
                         Row{"{CGRect={CGPoint=dd}{CGSize=dd}}", sizeof(CGRect)},
                         Row{"{a=ci}", 8},
                         Row{"{a=}", 0},
                         Row{"[3s]", 6},
                         Row{"{Matrix=[6d]}", sizeof(Matrix)},
                         Row{"(u=cq)", 8},
                         Row{"{a=c(u=si)}", 8}}) {
    EXPECT_EQ(sizeOfType(row.encoding), row.size) << row.encoding;
  }
}

TEST(TypeEncodings, MalformedTextRaises) {
  for (const char* text : {"", "x", "{", "{a", "{a=", "r", "^", "[", "(u", "%"}) {
    EXPECT_THAT(raised([&] { firstType(text); }), HasSubstr("malformed type encoding")) << text;
  }
  for (const char* text : {"", "{a}", "?", "[q]", "[2]", "(u)", "{a={b}}"}) {
    EXPECT_THAT(raised([&] { sizeOfType(text); }), HasSubstr("malformed type encoding")) << text;
  }
}
