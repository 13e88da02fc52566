// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/UTF8Internal.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::ExactSpan;

class UTF8 : public quoll::testing::EachInstructionSet {};

// ---- the model: by the definition of the format, one character at a time

void appendUTF8(std::string& bytes, char32_t character) {
  const auto put = [&](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 + character / 64);
  } else {
    if (character < 0x10000) {
      put(0xE0 + character / 4096);
    } else {
      put(0xF0 + character / 262144);
      put(0x80 + character / 4096 % 64);
    }
    put(0x80 + character / 64 % 64);
  }
  put(0x80 + character % 64);
}

void appendUTF16(std::u16string& units, char32_t character) {
  if (character < 0x10000) {
    units.push_back(static_cast<char16_t>(character));
  } else {
    units.push_back(static_cast<char16_t>(0xD800 + (character - 0x10000) / 1024));
    units.push_back(static_cast<char16_t>(0xDC00 + (character - 0x10000) % 1024));
  }
}

bool isSurrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

/// The characters of the bytes; nothing where any is ill-formed.
std::optional<std::u32string> modelDecoded(std::string_view bytes) {
  std::u32string characters;
  for (size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const size_t size = lead < 0x80 ? 1 : lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
    if (size == 0 || i + size > bytes.size()) return std::nullopt;
    char32_t character = size == 1 ? lead : lead % (128u >> size);
    for (size_t k = 1; k < size; ++k) {
      const auto byte = static_cast<unsigned char>(bytes[i + k]);
      if (byte / 64 != 2) return std::nullopt;
      character = character * 64 + byte % 64;
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[size] || character > 0x10FFFF || isSurrogate(character)) return std::nullopt;
    characters.push_back(character);
    i += size;
  }
  return characters;
}

std::string utf8Of(std::u32string_view characters) {
  std::string bytes;
  for (char32_t character : characters) appendUTF8(bytes, character);
  return bytes;
}

std::u16string utf16Of(std::u32string_view characters) {
  std::u16string units;
  for (char32_t character : characters) appendUTF16(units, character);
  return units;
}

/// The characters of the units, and U+FFFD for each unpaired surrogate.
std::u32string modelCharacters(std::u16string_view units) {
  std::u32string characters;
  for (size_t i = 0; i < units.size(); ++i) {
    const bool high = units[i] >= 0xD800 && units[i] < 0xDC00;
    if (high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
      characters.push_back(0x10000u + (units[i] - 0xD800u) * 1024 + (units[i + 1] - 0xDC00u));
      ++i;
    } else {
      characters.push_back(isSurrogate(units[i]) ? 0xFFFD : units[i]);
    }
  }
  return characters;
}

// ---- what is under test, into destinations of exactly the size that was measured

std::u16string decoded(std::string_view bytes) {
  const ExactSpan<char> source(bytes);
  ExactSpan<char16_t> units(measureUTF8(source.view()).units);
  decodeUTF8(source.view(), units.data());
  return std::u16string(units.view());
}

std::string encoded(std::u16string_view units) {
  const ExactSpan<char16_t> source(units);
  ExactSpan<char> bytes(measureUTF16(source.view()).bytes);
  encodeUTF8(source.view(), bytes.data());
  return std::string(bytes.view());
}

bool isValid(std::string_view bytes) { return measureUTF8(ExactSpan<char>(bytes).view()).valid; }

void expectAgreesWithModel(std::string_view bytes) {
  const auto characters = modelDecoded(bytes);
  ASSERT_EQ(isValid(bytes), characters.has_value());
  if (!characters) return;
  const std::u16string units = utf16Of(*characters);
  ASSERT_EQ(measureUTF8(bytes).units, units.size());
  ASSERT_EQ(measureUTF8(bytes).ascii, units.size() == bytes.size());
  ASSERT_EQ(decoded(bytes), units);
  ASSERT_EQ(encoded(units), bytes);
  ASSERT_TRUE(measureUTF16(units).valid);
}

void expectAgreesWithModel(std::u16string_view units) {
  const std::u32string characters = modelCharacters(units);
  ASSERT_EQ(encoded(units), utf8Of(characters));
  ASSERT_EQ(measureUTF16(units).valid, utf16Of(characters) == units);
  ASSERT_EQ(measureUTF16(units).ascii, encoded(units).size() == units.size());
}

/// Runs of characters that take one, two, three and four bytes.
std::u32string randomCharacters(std::mt19937_64& random, size_t runs, size_t longestRun) {
  std::u32string characters;
  for (size_t run = 0; run < runs; ++run) {
    constexpr char32_t first[] = {0, 0x80, 0x800, 0x10000}, behind[] = {0x80, 0x800, 0xD800, 0x110000};
    const size_t kind = random() % 4;
    for (size_t i = random() % longestRun + 1; i > 0; --i) {
      characters.push_back(first[kind] + static_cast<char32_t>(random() % (behind[kind] - first[kind])));
    }
  }
  return characters;
}

std::string repeated(std::string_view piece, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += piece;
  return text;
}

// ---- UTF-8 to UTF-16

TEST_F(UTF8, DecodesIntoAnExactlyMeasuredDestination) {
  const std::string_view bytes =
      "Gr\xC3\xBC\xC3\x9F"
      "e, \xE4\xB8\x96\xE7\x95\x8C \xF0\x9F\x98\x80";
  const quoll::detail::UTF8Shape shape = quoll::detail::measureUTF8(bytes);
  ASSERT_TRUE(shape.valid);
  std::u16string text(shape.units, 0);
  quoll::detail::decodeUTF8(bytes, text.data());
  EXPECT_EQ(text, u"Gr\u00FC\u00DFe, \u4E16\u754C \U0001F600");
}

TEST_F(UTF8, HasAShape) {
  struct Row {
    const char* claim;
    std::string_view bytes;
    size_t units;
    bool ascii;
  };
  const Row rows[] = {
      {"nothing is ASCII", "", 0, true},
      {"no memory at all", std::string_view(), 0, true},
      {"a zero is a character", std::string_view("a\0b", 3), 3, true},
      {"the last ASCII character", "\x7F", 1, true},
      {"two bytes make one unit", "\xC2\x80", 1, false},
      {"three bytes make one unit", "\xE2\x82\xAC", 1, false},
      {"four bytes make two units", "\xF0\x90\x80\x80", 2, false},
      {"a byte-order mark is a character", "\xEF\xBB\xBF", 1, false},
      {"so is a noncharacter", "\xEF\xBF\xBF", 1, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_TRUE(measureUTF8(row.bytes).valid);
    EXPECT_EQ(measureUTF8(row.bytes).units, row.units);
    EXPECT_EQ(measureUTF8(row.bytes).ascii, row.ascii);
  }
}

TEST_F(UTF8, IsRefusedWhereverAnIllFormedSequenceStands) {
  struct Row {
    const char* claim;
    std::string_view bytes;
  };
  const Row rows[] = {
      {"a stray continuation byte", "\x80"},
      {"the last continuation byte", "\xBF"},
      {"two bytes without the second", "\xC3"},
      {"three bytes without the third", "\xE2\x82"},
      {"three bytes without the second and third", "\xE2"},
      {"four bytes without the fourth", "\xF0\x9F\x98"},
      {"four bytes without the third and fourth", "\xF0\x9F"},
      {"four bytes without the rest", "\xF0"},
      {"one continuation byte too many behind two bytes", "\xC3\xA9\x80"},
      {"one continuation byte too many behind three bytes", "\xE2\x82\xAC\x80"},
      {"one continuation byte too many behind four bytes", "\xF0\x9F\x98\x80\x80"},
      {"a zero in two overlong bytes", std::string_view("\xC0\x80", 2)},
      {"ASCII in two overlong bytes", "\xC1\xBF"},
      {"a zero in three overlong bytes", "\xE0\x80\x80"},
      {"U+07FF in three overlong bytes", "\xE0\x9F\xBF"},
      {"a zero in four overlong bytes", "\xF0\x80\x80\x80"},
      {"U+FFFF in four overlong bytes", "\xF0\x8F\xBF\xBF"},
      {"the first surrogate", "\xED\xA0\x80"},
      {"the last surrogate", "\xED\xBF\xBF"},
      {"a pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80"},
      {"the first character that is too large", "\xF4\x90\x80\x80"},
      {"a larger one", "\xF4\xBF\xBF\xBF"},
      {"the smallest lead that is too large", "\xF5\x80\x80\x80"},
      {"five bytes", "\xF8\x88\x80\x80\x80"},
      {"six bytes", "\xFC\x84\x80\x80\x80\x80"},
      {"FE", "\xFE"},
      {"FF", "\xFF"},
      {"a lead in the place of a continuation byte", "\xE2\xE2\x82\xAC"},
      {"ASCII in the place of a continuation byte", "\xE2\x41\xAC"},
      {"Latin-1", "caf\xE9 "},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    ASSERT_FALSE(modelDecoded(row.bytes).has_value());
    for (size_t offset = 0; offset <= 200; ++offset) {
      const std::string before(offset, 'a');
      const std::string behind = before + std::string(row.bytes);
      ASSERT_FALSE(isValid(behind)) << "at the end, at " << offset;
      ASSERT_FALSE(isValid(behind + "b")) << "at " << offset;
      ASSERT_FALSE(isValid(std::string(row.bytes) + before)) << "before " << offset;
      ASSERT_FALSE(isValid(behind + std::string(130, 'b'))) << "at " << offset;
      ASSERT_FALSE(isValid(repeated("\xE3\x81\x82", offset) + std::string(row.bytes) + repeated("\xE3\x81\x82", 40)));
    }
  }
}

TEST_F(UTF8, IsAcceptedWhereverAnOutermostCharacterStands) {
  for (char32_t character : {0x0u, 0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xFFFu, 0x1000u, 0xCFFFu, 0xD000u, 0xD7FFu, 0xE000u,
                             0xFFFFu, 0x10000u, 0x3FFFFu, 0x40000u, 0xFFFFFu, 0x100000u, 0x10FFFFu}) {
    for (size_t offset = 0; offset <= 140; ++offset) {
      const std::u32string one(1, character);
      expectAgreesWithModel(utf8Of(std::u32string(offset, U'a') + one));
      expectAgreesWithModel(utf8Of(std::u32string(offset, U'a') + one + std::u32string(140 - offset, U'\u3042')));
    }
  }
}

TEST_F(UTF8, IsJudgedAsByAModelForEveryPairOfBytes) {
  char bytes[4];
  for (unsigned pair = 0; pair < 0x10000; ++pair) {
    bytes[0] = static_cast<char>(pair >> 8);
    bytes[1] = static_cast<char>(pair & 0xFF);
    for (unsigned third : {0x41u, 0x80u, 0xBFu}) {
      for (unsigned fourth : {0x41u, 0x80u, 0xC3u}) {
        bytes[2] = static_cast<char>(third);
        bytes[3] = static_cast<char>(fourth);
        const std::string_view text(bytes, 4);
        ASSERT_EQ(measureUTF8(text).valid, modelDecoded(text).has_value()) << pair << ' ' << third << ' ' << fourth;
      }
    }
  }
}

TEST_F(UTF8, HoldsEveryCharacter) {
  static const std::u32string characters = [] {
    std::u32string all;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
      if (!isSurrogate(character)) all.push_back(character);
    }
    return all;
  }();
  static const std::string bytes = utf8Of(characters);
  static const std::u16string units = utf16Of(characters);
  EXPECT_TRUE(measureUTF8(bytes).valid);
  EXPECT_TRUE(decoded(bytes) == units);
  EXPECT_TRUE(encoded(units) == bytes);
}

TEST_F(UTF8, GoesBothWaysInRunsOfAnyLength) {
  std::mt19937_64 random(40);
  for (size_t longestRun : {1u, 3u, 20u, 90u}) {
    for (int round = 0; round < 150; ++round) {
      expectAgreesWithModel(utf8Of(randomCharacters(random, 1 + random() % 12, longestRun)));
    }
  }
}

TEST_F(UTF8, IsJudgedAsByAModelWithOneByteChanged) {
  std::mt19937_64 random(41);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = utf8Of(randomCharacters(random, 8, 20));
    bytes[random() % bytes.size()] = static_cast<char>(random());
    expectAgreesWithModel(bytes);
  }
}

TEST_F(UTF8, IsJudgedAsByAModelWhereverItIsCut) {
  std::mt19937_64 random(42);
  const std::string bytes = utf8Of(randomCharacters(random, 60, 3));
  for (size_t length = 0; length <= bytes.size(); ++length)
    expectAgreesWithModel(std::string_view(bytes).substr(0, length));
}

// ---- UTF-16 to UTF-8

TEST_F(UTF8, IsWrittenWithAReplacementForEachUnpairedSurrogate) {
  struct Row {
    const char* claim;
    std::u16string units;
    std::string_view bytes;
    bool valid;
  };
  const Row rows[] = {
      {"nothing", u"", "", true},
      {"a pair", u"\xD83D\xDE00", "\xF0\x9F\x98\x80", true},
      {"the first of a pair alone", u"\xD83D", "\xEF\xBF\xBD", false},
      {"the second of a pair alone", u"\xDE00", "\xEF\xBF\xBD", false},
      {"a pair turned around", u"\xDE00\xD83D", "\xEF\xBF\xBD\xEF\xBF\xBD", false},
      {"two first ones, then a second", u"\xD83D\xD83D\xDE00", "\xEF\xBF\xBD\xF0\x9F\x98\x80", false},
      {"a first one, then two second", u"\xD83D\xDE00\xDE00", "\xF0\x9F\x98\x80\xEF\xBF\xBD", false},
      {"text between the halves", u"\xD83D-\xDE00", "\xEF\xBF\xBD-\xEF\xBF\xBD", false},
      {"a replacement that was there", u"\uFFFD", "\xEF\xBF\xBD", true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(encoded(row.units), row.bytes);
    EXPECT_EQ(measureUTF16(row.units).valid, row.valid);
  }
}

TEST_F(UTF8, IsWrittenForPairsAndHalvesAtEveryOffsetOfEveryLength) {
  for (size_t length = 2; length <= 150; length += length < 40 ? 1 : 11) {
    for (size_t i = 0; i + 2 <= length; ++i) {
      std::u16string units(length, length % 2 == 0 ? u'a' : u'\u3042');
      units[i] = 0xD83D;
      expectAgreesWithModel(units);
      units[i + 1] = 0xDE00;
      expectAgreesWithModel(units);
    }
  }
}

TEST_F(UTF8, IsWrittenAsByAModelForRandomUnits) {
  std::mt19937_64 random(43);
  for (std::u16string_view alphabet :
       {u"a\xD83D\xDE00", u"ab\u00E9\u07FF\u0800\uFFFF", u"aaaaaaaaaaaaaaaaaaaaaaaa\u0080"}) {
    for (int round = 0; round < 300; ++round) {
      std::u16string units(random() % 300, 0);
      for (char16_t& unit : units) unit = alphabet[random() % alphabet.size()];
      expectAgreesWithModel(units);
    }
  }
}

// ---- units of one byte, and units the other way round

TEST_F(UTF8, IsASCIIUnlessAByteOrUnitIsAbove) {
  for (size_t length = 0; length <= 200; ++length) {
    std::string bytes(length, '\x7F');
    std::u16string units(length, u'\x7F');
    ASSERT_TRUE(isASCII(ExactSpan<char>(bytes).view()));
    ASSERT_TRUE(isASCII(ExactSpan<char16_t>(units).view()));
    for (size_t i = 0; i < length; ++i) {
      bytes[i] = '\x80';
      units[i] = i % 2 == 0 ? u'\x80' : u'\u4100';
      ASSERT_FALSE(isASCII(std::string_view(bytes))) << i << " of " << length;
      ASSERT_FALSE(isASCII(std::u16string_view(units))) << i << " of " << length;
      ASSERT_EQ(isLatin1(units), i % 2 == 0) << i << " of " << length;
      bytes[i] = '\x7F';
      units[i] = u'\x7F';
    }
  }
}

TEST_F(UTF8, TellsLatin1FromEveryOtherUnit) {
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const std::u16string units(1 + unit % 40, static_cast<char16_t>(unit));
    ASSERT_EQ(isLatin1(units), unit < 0x100) << unit;
    ASSERT_EQ(isASCII(std::u16string_view(units)), unit < 0x80) << unit;
  }
}

TEST_F(UTF8, WidensAndNarrowsEveryByteAtEveryLength) {
  for (size_t length = 0; length <= 600; length += length < 200 ? 1 : 77) {
    ExactSpan<char> bytes(length);
    for (size_t i = 0; i < length; ++i) bytes.data()[i] = static_cast<char>(255 - i % 256);
    ExactSpan<char16_t> units(length);
    widen(bytes.view(), units.data());
    for (size_t i = 0; i < length; ++i) ASSERT_EQ(units.data()[i], 255 - i % 256);
    ExactSpan<char> back(length);
    narrow(units.view(), back.data());
    ASSERT_EQ(back.view(), bytes.view());
  }
}

TEST_F(UTF8, LoadsUnitsOfTheOtherByteOrderFromAnyAddress) {
  for (size_t count = 0; count <= 150; ++count) {
    ExactSpan<char> bytes(2 * count + 1);
    for (size_t i = 0; i <= 2 * count; ++i) bytes.data()[i] = static_cast<char>(i * 7 + 200);
    ExactSpan<char16_t> units(count);
    loadSwappedUnits(bytes.data() + 1, count, units.data());
    for (size_t i = 0; i < count; ++i) {
      const auto upper = static_cast<unsigned char>(bytes.data()[1 + 2 * i]);
      const auto lower = static_cast<unsigned char>(bytes.data()[2 + 2 * i]);
      ASSERT_EQ(units.data()[i], upper * 256 + lower) << i << " of " << count;
    }
  }
}

}  // namespace
}  // namespace quoll::inline v1::detail
