// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace std::string_view_literals;

constexpr NSStringEncoding all[] = {NSASCIIStringEncoding,          NSUTF8StringEncoding,
                                    NSISOLatin1StringEncoding,      NSUTF16StringEncoding,
                                    NSUTF16BigEndianStringEncoding, NSUTF16LittleEndianStringEncoding};
constexpr auto unknown = static_cast<NSStringEncoding>(77);

Ref<NSData> dataOf(std::string_view bytes) { return NSData::dataWithSpan(std::as_bytes(std::span(bytes))); }
std::string bytesOf(const NSData* data) { return {static_cast<const char*>(data->bytes()), data->length()}; }

struct Row {
  const char* claim;
  NSStringEncoding encoding;
  std::string_view bytes;
  std::optional<std::u16string_view> text;
};

TEST(StringEncodings, DecodeWhatIsWellFormed) {
  const Row rows[] = {
      {"ASCII", NSASCIIStringEncoding, "a\0\x7F"sv, u"a\0\x7F"sv},
      {"ASCII ends at 0x7F", NSASCIIStringEncoding, "a\x80", std::nullopt},
      {"UTF-8 of all lengths", NSUTF8StringEncoding, "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80", u"aü€😀"},
      {"UTF-8 without its last byte", NSUTF8StringEncoding, "\xE2\x82", std::nullopt},
      {"an overlong form", NSUTF8StringEncoding, "\xC0\x80", std::nullopt},
      {"a surrogate in UTF-8", NSUTF8StringEncoding, "\xED\xA0\x80", std::nullopt},
      {"beyond Unicode", NSUTF8StringEncoding, "\xF4\x90\x80\x80", std::nullopt},
      {"a byte that UTF-8 lacks", NSUTF8StringEncoding, "a\xFFz", std::nullopt},
      {"each byte of Latin-1 is its character", NSISOLatin1StringEncoding, "a\x80\xFF", u"a\u0080ÿ"},
      {"UTF-16 with a little-endian mark", NSUTF16StringEncoding, "\xFF\xFE\xAC\x20", u"€"},
      {"UTF-16 with a big-endian mark", NSUTF16StringEncoding, "\xFE\xFF\x20\xAC", u"€"},
      {"UTF-16 without a mark is big-endian", NSUTF16StringEncoding, "\x20\xAC", u"€"},
      {"only the first mark is one", NSUTF16StringEncoding, "\xFF\xFE\xFF\xFE"sv, u"\uFEFF"},
      {"a mark alone", NSUTF16StringEncoding, "\xFF\xFE", u""},
      {"half a mark", NSUTF16StringEncoding, "\xFF", std::nullopt},
      {"a mark and a half unit", NSUTF16StringEncoding, "\xFF\xFE\x61", std::nullopt},
      {"UTF-16BE", NSUTF16BigEndianStringEncoding, "\xD8\x3D\xDE\x00"sv, u"😀"},
      {"UTF-16LE", NSUTF16LittleEndianStringEncoding, "\x3D\xD8\x00\xDE"sv, u"😀"},
      {"a mark is text where the order is said", NSUTF16LittleEndianStringEncoding, "\xFF\xFE"sv, u"\uFEFF"},
      {"UTF-16LE of odd length", NSUTF16LittleEndianStringEncoding, "abc", std::nullopt},
      {"UTF-16BE of odd length", NSUTF16BigEndianStringEncoding, "a", std::nullopt},
      {"an unpaired lead in UTF-16", NSUTF16BigEndianStringEncoding, "\xD8\x00\x00\x61"sv, std::nullopt},
      {"an unpaired trail in UTF-16", NSUTF16LittleEndianStringEncoding, "\x00\xDC"sv, std::nullopt},
      {"an encoding that isn't there", unknown, "a", std::nullopt},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSString> fromBytes = NSString::stringWithBytes_encoding(row.bytes, row.encoding);
    const Ref<NSString> fromData = NSString::initWithData_encoding(dataOf(row.bytes), row.encoding);
    EXPECT_THAT(fromBytes, equals(fromData));
    if (row.text) EXPECT_THAT(fromBytes, equals(*row.text));
    else EXPECT_EQ(fromBytes, nullptr);
  }
}

TEST(StringEncodings, EncodeWhatTheEncodingHas) {
  struct ToBytes {
    const char* claim;
    NSStringEncoding encoding;
    std::u16string_view text;
    std::optional<std::string_view> bytes;
  };
  const ToBytes rows[] = {
      {"ASCII", NSASCIIStringEncoding, u"a\0\x7F"sv, "a\0\x7F"sv},
      {"ASCII lacks what is beyond", NSASCIIStringEncoding, u"a\u0080", std::nullopt},
      {"UTF-8 of all lengths", NSUTF8StringEncoding, u"aü€😀", "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"UTF-8 of ASCII", NSUTF8StringEncoding, u"abc", "abc"},
      {"UTF-8 has no unpaired lead", NSUTF8StringEncoding, u"a\xD800z"sv, std::nullopt},
      {"UTF-8 has no unpaired trail", NSUTF8StringEncoding, u"\xDC00", std::nullopt},
      {"Latin-1", NSISOLatin1StringEncoding, u"aÿ", "a\xFF"},
      {"Latin-1 of ASCII", NSISOLatin1StringEncoding, u"abc", "abc"},
      {"Latin-1 ends at U+00FF", NSISOLatin1StringEncoding, u"\u0100", std::nullopt},
      {"UTF-16 with a mark", NSUTF16StringEncoding, u"€", "\xFF\xFE\xAC\x20"},
      {"UTF-16 of ASCII with a mark", NSUTF16StringEncoding, u"a", "\xFF\xFE\x61\0"sv},
      {"UTF-16 of nothing is a mark", NSUTF16StringEncoding, u"", "\xFF\xFE"},
      {"UTF-16BE has no mark", NSUTF16BigEndianStringEncoding, u"€", "\x20\xAC"},
      {"UTF-16BE of ASCII", NSUTF16BigEndianStringEncoding, u"ab", "\0a\0b"sv},
      {"UTF-16LE has no mark", NSUTF16LittleEndianStringEncoding, u"😀", "\x3D\xD8\x00\xDE"sv},
      {"UTF-16LE of ASCII", NSUTF16LittleEndianStringEncoding, u"ab", "a\0b\0"sv},
      {"UTF-16 has no unpaired surrogate", NSUTF16StringEncoding, u"\xDC00\xD800"sv, std::nullopt},
      {"UTF-16BE neither", NSUTF16BigEndianStringEncoding, u"\xDC00", std::nullopt},
      {"UTF-16LE neither", NSUTF16LittleEndianStringEncoding, u"\xD800", std::nullopt},
      {"an encoding that isn't there, ASCII", unknown, u"a", std::nullopt},
      {"an encoding that isn't there, UTF-16", unknown, u"€", std::nullopt},
  };
  for (const ToBytes& row : rows) {
    SCOPED_TRACE(row.claim);
    const Ref<NSString> text = NSString::stringWithCharacters(row.text);
    const Ref<NSData> data = text->dataUsingEncoding(row.encoding);
    EXPECT_EQ(text->canBeConvertedToEncoding(row.encoding), row.bytes.has_value());
    if (!row.bytes) EXPECT_EQ(data, nullptr);
    else if (data) EXPECT_EQ(bytesOf(data), *row.bytes);
    else ADD_FAILURE() << "no data";
  }
}

TEST(StringEncodings, TextThatIsASCIIButStoredInUTF16EncodesAlike) {
  const Ref<NSString> ascii = "abc"_ns;
  const Ref<NSString> wide = NSString::stringWithCharacters(u"πabc")->substringFromIndex(1);
  ASSERT_NE(wide->utf16Characters(), nullptr);
  for (const NSStringEncoding encoding : all) {
    EXPECT_THAT(wide->dataUsingEncoding(encoding), equals(ascii->dataUsingEncoding(encoding)));
  }
}

TEST(StringEncodings, NothingDecodesToNothing) {
  for (const NSStringEncoding encoding : all) {
    SCOPED_TRACE(encoding);
    EXPECT_THAT(NSString::initWithData_encoding(NSData::data(), encoding), equals(""));
    EXPECT_TRUE(""_ns->canBeConvertedToEncoding(encoding));
  }
}

TEST(StringEncodings, DecodedASCIIIsStoredAsASCII) {
  EXPECT_NE(NSString::stringWithBytes_encoding("a\0b\0"sv, NSUTF16LittleEndianStringEncoding)->asciiCharacters(),
            nullptr);
}

TEST(StringEncodings, NullDataRaises) {
  EXPECT_THAT([] { NSString::initWithData_encoding(nullptr, NSUTF8StringEncoding); },
              raises(NSInvalidArgumentException, "+[NSString initWithData:encoding:]: nil argument"));
}

TEST(StringEncodings, DataOfRegionsDecodesAsAWhole) {
  const Ref<NSData> data = NSData::dataWithRegions({dataOf("\xE2"), dataOf("\x82\xAC")});
  EXPECT_THAT(NSString::initWithData_encoding(data, NSUTF8StringEncoding), equals("€"));
}

TEST(StringEncodings, AMutableStringIsDecodedToo) {
  const Ref<NSMutableString> text =
      NSString::initWithData_encoding<NSMutableString>(dataOf("\xC3\xBC"), NSUTF8StringEncoding);
  text->appendString("!"_ns);
  EXPECT_THAT(text, equals("ü!"));
  EXPECT_EQ(NSString::initWithData_encoding<NSMutableString>(dataOf("\xFF"), NSUTF8StringEncoding), nullptr);
}

TEST(StringEncodings, AnswerByName) {
  const auto data = send<Ref<NSData>>("ü"_ns, "dataUsingEncoding:"_sel, NSUTF8StringEncoding);
  EXPECT_EQ(bytesOf(data), "\xC3\xBC");
  EXPECT_FALSE(send<bool>("ü"_ns, "canBeConvertedToEncoding:"_sel, NSASCIIStringEncoding));
  EXPECT_THAT(
      send<Ref<NSString>>(alloc(NSString::classObject()), "initWithData:encoding:"_sel, data, NSUTF8StringEncoding),
      equals("ü"));
}

RC_GTEST_PROP(StringEncodings, DecodingWhatWasEncodedGivesTheText, (const std::vector<uint16_t>& values)) {
  const std::u16string units(values.begin(), values.end());
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  for (const NSStringEncoding encoding : all) {
    const Ref<NSData> data = text->dataUsingEncoding(encoding);
    RC_ASSERT((data != nullptr) == text->canBeConvertedToEncoding(encoding));
    if (data) RC_ASSERT(*NSString::initWithData_encoding(data, encoding) == *text);
  }
}

RC_GTEST_PROP(StringEncodings, AnyBytesDecodeOrGiveNull, (const std::string& bytes)) {
  for (const NSStringEncoding encoding : all) {
    const Ref<NSString> text = NSString::stringWithBytes_encoding(bytes, encoding);
    if (!text || encoding == NSUTF16StringEncoding) continue;
    const Ref<NSData> again = text->dataUsingEncoding(encoding);
    RC_ASSERT(again);
    RC_ASSERT(bytesOf(again) == bytes);
  }
}

}  // namespace
