// SPDX-License-Identifier: MIT
// Base64 decodes to what its characters spell, one at a time, however the text is stored; noise changes nothing.
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/Base64.h"

using namespace quoll;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

std::string spelled(std::string_view text) {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned bits = 0, count = 0;
  for (const char c : text) {
    const size_t value = alphabet.find(c);
    if (value == alphabet.npos) continue;
    bits = (bits << 6 | static_cast<unsigned>(value)) & 0xFFFF;
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes.push_back(static_cast<char>(bits >> count & 0xFF));
  }
  return bytes;
}

std::string decoded(const std::string& text) {
  size_t length = 0;
  void* buffer = NewBase64Decode(text.data(), text.size(), &length);
  require(buffer != nullptr);
  std::string bytes(static_cast<char*>(buffer), length);
  std::free(buffer);
  return bytes;
}

std::string bytesOf(const NSData* data) { return {static_cast<const char*>(data->bytes()), data->length()}; }

}  // namespace

/// The first two bytes say how often the text is repeated and how wide its lines are.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const std::string_view given(reinterpret_cast<const char*>(data) + 2, size - 2);
  std::string text;
  for (int i = 0; i <= data[0] % 16; ++i) text += given;
  const std::string expected = spelled(text);
  require(decoded(text) == expected);

  std::string lines;
  for (size_t i = 0; i < text.size(); i += data[1] + 1u) lines.append(text, i, data[1] + 1u).append("\r\n");
  require(decoded(lines) == expected);

  const Ref<NSString> narrow = NSString::stringWithBytes_encoding(text, NSASCIIStringEncoding);
  if (narrow) {
    const Ref<NSString> wide = NSString::stringWithUTF8("\xC3\xBC" + text)->substringFromIndex(1);
    require(bytesOf(decodeBase64(narrow)) == expected);
    require(bytesOf(decodeBase64(wide)) == expected);
  } else {
    const Ref<NSString> latin = NSString::stringWithLatin1(text);
    require(decodeBase64(latin)->length() == 0);
  }
  return 0;
}
