// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Base64.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"
#include "QuollFoundation/text/Base64Internal.h"

namespace quoll::inline v1 {

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
using Buffer = std::unique_ptr<uint8_t, Free>;

/// Null without memory.
Buffer bufferFor(size_t textLength) {
  const size_t room = detail::base64Room(textLength);
  if (room > PTRDIFF_MAX) return nullptr;
  Buffer buffer(static_cast<uint8_t*>(std::malloc(room)));
  if (buffer) detail::prepareToFill(buffer.get(), room);
  return buffer;
}

// Each of these gives the number of bytes.

size_t decode(std::string_view ascii, uint8_t* out) {
  return detail::base64Bytes(detail::decodeBase64Text(ascii.data(), ascii.size(), out));
}

/// Moves the last characters of the alphabet to the front of the text.
void keepLast(size_t count, char* text, size_t length) {
  char kept[4];
  for (size_t i = count; i > 0;) {
    const char c = text[--length];
    if (detail::base64Values[static_cast<uint8_t>(c)] != detail::notBase64) kept[--i] = c;
  }
  std::copy_n(kept, count, text);
}

/// Goes by pieces that stay in the processor's cache while they are looked at, narrowed and decoded. What is not ASCII
/// gives nothing.
size_t decode(std::u16string_view units, uint8_t* out) {
  constexpr size_t pieceLength = 8192;
  char text[3 + pieceLength];
  const uint8_t* const first = out;
  size_t kept = 0;
  for (; !units.empty(); units.remove_prefix(std::min(pieceLength, units.size()))) {
    const std::u16string_view piece = units.substr(0, pieceLength);
    if (!detail::isASCII(piece)) return 0;
    detail::narrow(piece, text + kept);
    const size_t length = kept + piece.size();
    const size_t characters = detail::decodeBase64Text(text, length, out);
    out += characters / 4 * 3;
    kept = characters % 4;
    keepLast(kept, text, length);
  }
  return static_cast<size_t>(out - first) + detail::base64Bytes(kept);
}

/// For texts so short that a second allocation would cost more than a copy.
constexpr size_t shortText = 512;

template <class Text> Ref<NSData> decodedShort(Text text) {
  std::byte bytes[detail::base64Room(shortText)];
  const size_t length = decode(text, reinterpret_cast<uint8_t*>(bytes));
  return NSData::dataWithSpan({bytes, length});
}

template <class Text> Ref<NSData> decodedLong(Text text) {
  Buffer bytes = bufferFor(text.size());
  if (!bytes) throw std::bad_alloc();
  const size_t length = decode(text, bytes.get());
  if (length < text.size() / 2) {  // much was skipped: don't keep memory for it
    if (void* shrunk = std::realloc(bytes.get(), length + 1)) {
      static_cast<void>(bytes.release());
      bytes.reset(static_cast<uint8_t*>(shrunk));
    }
  }
  Ref<NSData> data = NSData::dataWithBytesNoCopy_length(bytes.get(), length);
  static_cast<void>(bytes.release());
  return data;
}

}  // namespace

void* NewBase64Decode(const void* text, size_t length, size_t* outputLength) {
  const char* const ascii = static_cast<const char*>(text);
  if (length == SIZE_MAX) length = std::strlen(ascii);
  Buffer bytes = bufferFor(length);
  const size_t decoded = bytes ? decode(std::string_view(ascii, length), bytes.get()) : 0;
  if (outputLength) *outputLength = decoded;
  return bytes.release();
}

Ref<NSData> decodeBase64WithNewlines(const NSString* string, bool) {
  if (!string) return nullptr;
  return string->visit([](auto text) { return text.size() <= shortText ? decodedShort(text) : decodedLong(text); });
}

Ref<NSData> decodeBase64(const NSString* string) { return decodeBase64WithNewlines(string, false); }

namespace detail {

extern constinit const AdditionGroup<NSString> base64Additions{
    "Base64Additions",
    {method<&decodeBase64WithNewlines>("decodeBase64WithNewlines:"_sel), method<&decodeBase64>("decodeBase64"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
