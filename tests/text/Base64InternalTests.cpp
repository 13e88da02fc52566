// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Base64Internal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"
#include "tests/text/Base64Model.h"

namespace quoll::inline v1::detail {
namespace {

using quoll::testing::base64Alphabet;
using quoll::testing::ExactSpan;
using quoll::testing::modelDecodedBase64;

class Base64Kernel : public quoll::testing::EachInstructionSet {
 protected:
  std::mt19937 random{20};

  size_t below(size_t count) { return random() % count; }
  std::string cleanText(size_t length) {
    std::string text(length, '\0');
    for (char& c : text) c = base64Alphabet[below(64)];
    return text;
  }
  std::string anyBytes(size_t length) {
    std::string bytes(length, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    return bytes;
  }
  /// One that is no character of the alphabet.
  char noise() {
    char c;
    do c = static_cast<char>(random());
    while (base64Alphabet.find(c) != base64Alphabet.npos);
    return c;
  }
};

/// In blocks of exactly the sizes that are promised, so that the address sanitizer sees whatever goes beyond.
std::string decoded(std::string_view text) {
  const ExactSpan<char> in(text);
  ExactSpan<char> out(base64Room(text.size()));
  const size_t characters = decodeBase64Text(in.view().data(), text.size(), reinterpret_cast<uint8_t*>(out.data()));
  EXPECT_EQ(static_cast<std::ptrdiff_t>(characters),
            std::ranges::count_if(text, [](char c) { return base64Alphabet.find(c) != base64Alphabet.npos; }));
  return std::string(out.data(), base64Bytes(characters));
}

static_assert(base64Values['A'] == 0 && base64Values['z'] == 51 && base64Values['9'] == 61);
static_assert(base64Values['+'] == 62 && base64Values['/'] == 63);
static_assert(base64Values['='] == notBase64 && base64Values['-'] == notBase64 && base64Values['_'] == notBase64);
static_assert(base64Values[0] == notBase64 && base64Values[255] == notBase64);

TEST_F(Base64Kernel, KnowsTheMeaningOfEachByteAtEachPlaceOfAVector) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    for (size_t place = 0; place < 68; ++place) {
      std::string text(260, 'Q');
      text[64 + place] = static_cast<char>(byte);
      ASSERT_EQ(decoded(text), modelDecodedBase64(text)) << byte << " at " << place;
    }
  }
}

TEST_F(Base64Kernel, DecodesCleanTextOfEachLengthFromEachAddress) {
  for (size_t length = 0; length <= 300; ++length) {
    const std::string text = cleanText(length);
    const std::string expected = modelDecodedBase64(text);
    ASSERT_EQ(decoded(text), expected) << length;
    std::string out(base64Room(length), '\0');
    for (size_t start = 0; start < 64; start += 7) {
      const std::string moved = std::string(start, '!') + text;
      const size_t count = decodeBase64Text(moved.data() + start, length, reinterpret_cast<uint8_t*>(out.data()));
      ASSERT_EQ(out.substr(0, base64Bytes(count)), expected) << length << " from " << start;
    }
  }
}

TEST_F(Base64Kernel, SkipsOneByteOfNoiseAnywhere) {
  for (size_t length = 0; length <= 200; length += 3) {
    const std::string text = cleanText(length);
    const std::string expected = modelDecodedBase64(text);
    for (size_t place = 0; place <= length; ++place) {
      std::string noisy = text;
      noisy.insert(place, 1, noise());
      ASSERT_EQ(decoded(noisy), expected) << length << ", noise at " << place;
    }
  }
}

TEST_F(Base64Kernel, SkipsRunsOfNoise) {
  for (size_t run = 1; run <= 400; run += run < 10 ? 1 : 37) {
    for (size_t place = 60; place < 72; ++place) {
      std::string text = cleanText(500);
      const std::string expected = modelDecodedBase64(text);
      std::string skipped(run, '\0');
      for (char& c : skipped) c = noise();
      text.insert(place, skipped);
      ASSERT_EQ(decoded(text), expected) << run << " at " << place;
    }
  }
}

TEST_F(Base64Kernel, SkipsNoiseOfAnyDensity) {
  for (size_t percent = 0; percent <= 100; percent += 5) {
    for (int i = 0; i < 60; ++i) {
      std::string text = cleanText(below(1000));
      for (char& c : text) {
        if (below(100) < percent) c = noise();
      }
      ASSERT_EQ(decoded(text), modelDecodedBase64(text)) << percent;
    }
  }
}

TEST_F(Base64Kernel, DecodesAnyBytes) {
  for (int i = 0; i < 2000; ++i) {
    const std::string bytes = anyBytes(below(301));
    ASSERT_EQ(decoded(bytes), modelDecodedBase64(bytes));
  }
}

TEST_F(Base64Kernel, DecodesLinesOfEachLength) {
  const std::string text = cleanText(2000);
  const std::string expected = modelDecodedBase64(text);
  for (const std::string_view lineBreak : {"\n", "\r\n"}) {
    for (size_t width = 1; width <= 140; ++width) {
      std::string lines;
      for (size_t i = 0; i < text.size(); i += width) lines.append(text, i, width).append(lineBreak);
      ASSERT_EQ(decoded(lines), expected) << width;
    }
  }
}

}  // namespace
}  // namespace quoll::inline v1::detail
