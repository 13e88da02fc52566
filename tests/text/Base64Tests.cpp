// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Base64.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"
#include "tests/text/Base64Model.h"

namespace {

using namespace quoll;
using quoll::testing::base64Alphabet;
using quoll::testing::modelDecodedBase64;
using quoll::testing::modelEncodedBase64;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
using Buffer = std::unique_ptr<void, Free>;

std::string decoded(std::string_view text) {
  size_t length = SIZE_MAX;
  const Buffer bytes(NewBase64Decode(text.data(), text.size(), &length));
  EXPECT_NE(bytes, nullptr);
  return std::string(static_cast<const char*>(bytes.get()), length);
}

std::string bytesOf(const NSData* data) { return {static_cast<const char*>(data->bytes()), data->length()}; }
Ref<NSString> asciiOf(std::string_view text) { return NSString::stringWithUTF8(text); }
/// The same text stored in units of 16 bits, as the rest of one that is not ASCII.
Ref<NSString> wideOf(std::string_view text) {
  const Ref<NSString> wide = NSString::stringWithUTF8("ü" + std::string(text))->substringFromIndex(1);
  EXPECT_TRUE(text.empty() || wide->utf16Characters());
  return wide;
}

TEST(Base64, HeaderExample) {
  size_t length;
  char* bytes = static_cast<char*>(quoll::NewBase64Decode("TWFu\nTQ==", 9, &length));
  EXPECT_EQ(std::string(bytes, length), "ManM");
  free(bytes);

  using namespace quoll::literals;
  quoll::Ref<quoll::NSData> data = quoll::decodeBase64("TWFu"_ns);
  EXPECT_EQ(bytesOf(data), "Man");
}

struct Row {
  const char* claim;
  std::string_view text;
  std::string_view bytes;
};
constexpr Row rows[] = {
    {"no text", "", ""},
    {"one byte", "Zg==", "f"},
    {"two bytes", "Zm8=", "fo"},
    {"three bytes", "Zm9v", "foo"},
    {"four bytes", "Zm9vYg==", "foob"},
    {"five bytes", "Zm9vYmE=", "fooba"},
    {"six bytes", "Zm9vYmFy", "foobar"},
    {"one byte without padding", "TQ", "M"},
    {"two bytes without padding", "TWE", "Ma"},
    {"a last character alone gives nothing", "TWFuT", "Man"},
    {"one character gives nothing", "T", ""},
    {"bits that no byte needs are dropped", "TR==", "M"},
    {"a line feed inside of a group", "TW\nFu", "Man"},
    {"a blank inside of a group", "TW Fu", "Man"},
    {"line breaks between groups", "TWFu\r\nTWFu\r\n", "ManMan"},
    {"noise in front, between and behind", "*TW-_Fu!", "Man"},
    {"padding in the middle is skipped, not an end", "TQ==TWFu", "M\x04\xD6\x16"},
    {"too much padding", "TWFu====", "Man"},
    {"padding alone", "====", ""},
    {"the alphabet with - and _ is another one", "-_-_", ""},
    {"all ones", "////", "\xFF\xFF\xFF"},
    {"a plus sign", "++++", "\xFB\xEF\xBE"},
    {"bytes from 0x80 on",
     "\x80TW\xC3\xBC"
     "Fu\xFF",
     "Man"},
};

TEST(Base64, Decodes) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(decoded(row.text), row.bytes);
  }
}

TEST(Base64, TakesTheAlphabetAndSkipsEveryOtherByte) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const std::string text = std::string("AAA") + c;
    const size_t value = base64Alphabet.find(c);
    if (value == base64Alphabet.npos) EXPECT_EQ(decoded(text), std::string(2, '\0')) << byte;
    else EXPECT_EQ(decoded(text), std::string(2, '\0') + static_cast<char>(value)) << byte;
  }
}

TEST(Base64, GivesABufferAlsoForNoText) {
  for (const char* text : {"", static_cast<const char*>(nullptr)}) {
    size_t length = 7;
    const Buffer bytes(NewBase64Decode(text, 0, &length));
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(length, 0u);
  }
}

TEST(Base64, TheLengthNeedNotBeAskedFor) {
  const Buffer bytes(NewBase64Decode("TWFu", 4, nullptr));
  EXPECT_EQ(std::memcmp(bytes.get(), "Man", 3), 0);
}

TEST(Base64, ALengthOfAllOnesMeansTheTextEndsAtItsZeroByte) {
  size_t length = 0;
  const Buffer bytes(NewBase64Decode("TWFu\0TWFu", SIZE_MAX, &length));
  EXPECT_EQ(std::string(static_cast<char*>(bytes.get()), length), "Man");
}

TEST(Base64, AnotherLengthCountsZeroBytesAsText) { EXPECT_EQ(decoded(std::string_view("TWFu\0TWFu", 9)), "ManMan"); }

TEST(Base64, WithoutMemoryGivesNothing) {
  size_t length = 7;
  const size_t tooLong = SIZE_MAX - 1;
  EXPECT_EQ(NewBase64Decode("", tooLong, &length), nullptr);
  EXPECT_EQ(length, 0u);
}

RC_GTEST_PROP(Base64, IsTheInverseOfEncoding, (const std::string& bytes)) {
  RC_ASSERT(decoded(modelEncodedBase64(bytes)) == bytes);
}

RC_GTEST_PROP(Base64, NoiseAnywhereChangesNothing, (const std::string& bytes)) {
  std::string text = modelEncodedBase64(bytes);
  for (int i = *rc::gen::inRange(0, 20); i > 0; --i) {
    const char noise = *rc::gen::suchThat<char>([](char c) { return base64Alphabet.find(c) == std::string::npos; });
    text.insert(*rc::gen::inRange<size_t>(0, text.size() + 1), 1, noise);
  }
  RC_ASSERT(decoded(text) == bytes);
}

RC_GTEST_PROP(Base64, AnyBytesDecodeToWhatTheirCharactersSpell, (const std::string& text)) {
  RC_ASSERT(decoded(text) == modelDecodedBase64(text));
}

// Strings

TEST(Base64Additions, DecodeHoweverTheStringIsStored) {
  for (const Row& row : rows) {
    if (row.text.find('\x80') != row.text.npos) continue;
    SCOPED_TRACE(row.claim);
    for (const Ref<NSString>& text :
         {asciiOf(row.text), wideOf(row.text), Ref<NSString>(wideOf(row.text)->mutableCopy())}) {
      EXPECT_EQ(bytesOf(decodeBase64(text)), row.bytes);
    }
  }
}

TEST(Base64Additions, SkipLineBreaksWhateverTheyAreTold) {
  for (const bool lineBreaks : {false, true}) {
    EXPECT_EQ(bytesOf(decodeBase64WithNewlines("TW\nFu\r\nTQ=="_ns, lineBreaks)), "ManM");
  }
}

TEST(Base64Additions, DecodeWhatIsNotASCIIAsEmptyData) {
  for (const Ref<NSString>& text :
       {asciiOf("TWFuü"), asciiOf("TWFu\xE2\x82\xAC"), asciiOf(std::string(5000, 'A') + "ß")}) {
    EXPECT_THAT(decodeBase64(text), equals(NSData::data()));
    EXPECT_THAT(decodeBase64WithNewlines(text, true), equals(NSData::data()));
  }
}

TEST(Base64Additions, OfNullAreNull) {
  EXPECT_EQ(decodeBase64(nullptr), nullptr);
  EXPECT_EQ(decodeBase64WithNewlines(nullptr, true), nullptr);
}

TEST(Base64Additions, DecodeTextsOfAllLengths) {
  std::string bytes;
  for (unsigned i = 0; i < 5000; ++i) bytes.push_back(static_cast<char>(i * 37 + i / 256));
  for (size_t length = 0; length <= bytes.size(); length += length < 800 ? 1 : 301) {
    const std::string text = modelEncodedBase64(std::string_view(bytes).substr(0, length));
    ASSERT_EQ(bytesOf(decodeBase64(asciiOf(text))), bytes.substr(0, length));
    ASSERT_EQ(bytesOf(decodeBase64(wideOf(text))), bytes.substr(0, length));
  }
}

TEST(Base64Additions, DecodeGroupsThatAreFarApart) {
  std::string bytes(40'000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 37 + i / 256);
  for (const size_t width : {1, 3, 75, 76, 1000, 8191}) {
    for (const size_t gap : {1, 2, 3, 70}) {
      std::string text;
      for (size_t i = 0; const char c : modelEncodedBase64(bytes)) {
        text += c;
        if (++i % width == 0) text.append(gap, ' ');
      }
      ASSERT_EQ(bytesOf(decodeBase64(wideOf(text))), bytes) << width << ", " << gap;
      ASSERT_EQ(bytesOf(decodeBase64(asciiOf(text))), bytes) << width << ", " << gap;
      text.pop_back();
      ASSERT_EQ(bytesOf(decodeBase64(asciiOf(text + "ä"))), "");
    }
  }
}

RC_GTEST_PROP(Base64Additions, StorageMakesNoDifference, ()) {
  const auto length = *rc::gen::inRange<size_t>(0, 30'000);
  const auto seed = *rc::gen::arbitrary<uint32_t>();
  const auto noise = *rc::gen::inRange(0, 100);
  std::minstd_rand random(seed);
  std::string text(length, '\0');
  for (char& c : text) c = static_cast<int>(random() % 100) < noise ? ' ' : base64Alphabet[random() / 7 % 64];
  const std::string expected = modelDecodedBase64(text);
  RC_ASSERT(bytesOf(decodeBase64(wideOf(text))) == expected);
  RC_ASSERT(bytesOf(decodeBase64(asciiOf(text))) == expected);
}

TEST(Base64Additions, DecodeALongTextOfNoiseToFewBytes) {
  const std::string noise(100'000, ' ');
  EXPECT_THAT(decodeBase64(asciiOf(noise)), equals(NSData::data()));
  EXPECT_EQ(bytesOf(decodeBase64(asciiOf("TW" + noise + "Fu"))), "Man");
}

TEST(Base64Additions, MakeTheDataAndNothingElseForShortTexts) {
  const Ref<NSString> text = asciiOf(modelEncodedBase64(std::string(300, 'x')));
  decodeBase64(text);
  const AllocationCount allocations;
  decodeBase64(text);
  EXPECT_EQ(allocations.made(), 1u);
}

TEST(Base64Additions, AnswerByName) {
  EXPECT_EQ(bytesOf(send<Ref<NSData>>("TWFu"_ns, "decodeBase64"_sel)), "Man");
  EXPECT_EQ(bytesOf(send<Ref<NSData>>("TW\nFu"_ns, "decodeBase64WithNewlines:"_sel, true)), "Man");
  EXPECT_EQ(send<Ref<NSData>>(static_cast<NSString*>(nullptr), "decodeBase64"_sel), nullptr);
}

TEST(Base64Additions, LeakNothing) {
  const Ref<NSString> text = asciiOf(std::string(5000, 'A'));
  const LeakGuard guard;
  decodeBase64(text);
  decodeBase64("TWFu"_ns);
}

}  // namespace
