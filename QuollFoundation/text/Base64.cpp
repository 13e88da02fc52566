// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Base64.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/Base64Internal.h"
#include "QuollFoundation/text/LargeMemoryInternal.h"

namespace quoll::inline v1 {

void* NewBase64Decode(const void* text, size_t length, size_t* outputLength) {
  if (length == SIZE_MAX) length = std::strlen(static_cast<const char*>(text));
  const size_t room = detail::base64Room(length);
  auto* bytes = static_cast<uint8_t*>(std::malloc(room));
  size_t decoded = 0;
  if (bytes) {
    detail::prepareToFill(bytes, room);
    decoded = detail::decodeBase64Text(static_cast<const uint8_t*>(text), length, bytes);
  }
  if (outputLength) *outputLength = decoded;
  return bytes;
}

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

/// For texts so short that a second allocation would cost more than a copy.
constexpr size_t shortText = 512;

Ref<NSData> decodedShort(std::string_view text) {
  std::byte bytes[detail::base64Room(shortText)];
  const size_t length = detail::decodeBase64Text(reinterpret_cast<const uint8_t*>(text.data()), text.size(),
                                                 reinterpret_cast<uint8_t*>(bytes));
  return NSData::dataWithSpan({bytes, length});
}

Ref<NSData> decoded(std::string_view text) {
  if (text.size() <= shortText) return decodedShort(text);
  size_t length = 0;
  std::unique_ptr<void, Free> bytes(NewBase64Decode(text.data(), text.size(), &length));
  if (!bytes) throw std::bad_alloc();
  if (length < text.size() / 2) {  // much was skipped: don't keep memory for it
    if (void* shrunk = std::realloc(bytes.get(), length + 1)) {
      static_cast<void>(bytes.release());
      bytes.reset(shrunk);
    }
  }
  Ref<NSData> data = NSData::dataWithBytesNoCopy_length(bytes.get(), length);
  static_cast<void>(bytes.release());
  return data;
}

std::string_view viewOf(const NSData* data) {
  return {static_cast<const char*>(data->bytes()), static_cast<size_t>(data->length())};
}

}  // namespace

Ref<NSData> decodeBase64WithNewlines(const NSString* string, bool) {
  if (!string) return nullptr;
  if (const char* ascii = string->asciiCharacters()) return decoded({ascii, string->length()});
  const Ref<NSData> ascii = string->dataUsingEncoding(NSASCIIStringEncoding);
  return ascii ? decoded(viewOf(ascii)) : NSData::data();
}

Ref<NSData> decodeBase64(const NSString* string) { return decodeBase64WithNewlines(string, false); }

namespace detail {

extern constinit const AdditionGroup<NSString> base64Additions{
    "Base64Additions",
    {method<&decodeBase64WithNewlines>("decodeBase64WithNewlines:"_sel), method<&decodeBase64>("decodeBase64"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
