// SPDX-License-Identifier: MIT
#include "bench/strings.h"

#include "QuollFoundation/platform/strings/NSString.h"
#include "bench/dispatch.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

void decode(State& s, const Encoded& t) {
  from_utf8(
      s, t, [](const std::string& utf8) { return NSString::stringWithUTF8(utf8); },
      [](const Ref<NSString>& text) { return text->utf16(); });
}
PEER_ENCODED(decode, "quoll");

/// The same text in another object must have the same hash, and another text another.
void hashes(State& s, const NSString* text) {
  const Ref<NSString> same = NSString::stringWithCharacters(text->utf16());
  const Ref<NSString> other = text->substringFromIndex(1);
  if (!expect(s, text->hash() == same->hash() && text->hash() != other->hash())) return;
  repeats(s, [text] { return text->hash(); });
}
void hash_utf16(State& s) { hashes(s, NSString::stringWithCharacters(kilobyte16())); }
void hash_ascii(State& s) { hashes(s, NSString::stringWithUTF8(kilobyte8())); }
OURS(hash_utf16, "string_hash_utf16");
OURS(hash_ascii, "string_hash_ascii");

void literal(State& s) {
  for (auto _ : s)
    for (int i = 0; i < kCalls; ++i) use("text"_ns);
  items(s, kCalls);
}
OURS(literal, "literal");

}  // namespace
