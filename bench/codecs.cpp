// SPDX-License-Identifier: MIT
#include "bench/codecs.h"

#include <span>

#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/Base64.h"
#include "QuollFoundation/text/HexText.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

/// Decoded bytes as the loop of the family wants them.
struct Decoded {
  Ref<NSData> bytes;
  const char* data() const { return static_cast<const char*>(bytes->bytes()); }
  std::size_t size() const { return bytes->length(); }
};

void decodes(State& s, const std::string& text) {
  const Ref<NSString> string = NSString::stringWithUTF8(text);
  run_decode(s, text, [&](auto&) { return Decoded{decodeBase64(string)}; });
}
void clean_text(State& s) { decodes(s, base64_clean()); }
void wrapped_text(State& s) { decodes(s, base64_wrapped()); }
OURS(clean_text, "base64_decode_clean");
OURS(wrapped_text, "base64_decode_wrapped");

/// The text in units of 16 bits, as the rest of a text that is not ASCII.
void decodes_wide(State& s, const std::string& text) {
  const Ref<NSString> string = NSString::stringWithUTF8("ü" + text)->substringFromIndex(1);
  run_decode(s, text, [&](auto&) { return Decoded{decodeBase64(string)}; });
}
void clean_wide(State& s) { decodes_wide(s, base64_clean()); }
PEER(clean_wide, "base64_decode_clean/quoll-utf16");

/// A dump as the loop of the family wants it.
struct Dump {
  Ref<NSString> text;
  const char* data() const { return text->asciiCharacters(); }
  std::size_t size() const { return text->length(); }
};
/// Texts of this size are mapped anew each time: most of what small pages cost the others, we save by asking for large
/// ones.
void hex(State& s) {
  const Ref<NSData> data = NSData::dataWithSpan(std::as_bytes(std::span(hex_bytes())));
  run_hex_dump(s, [&](auto&) { return Dump{QF_niceHexString(data)}; });
}
OURS(hex, "hex_dump");

}  // namespace
