// SPDX-License-Identifier: MIT
#include <bit>
#include <cstring>
#include <optional>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"

namespace quoll::inline v1 {

using detail::Text;

static_assert(std::endian::native == std::endian::little);

namespace {

enum class ByteOrder : uint8_t { Little, Big };

constexpr std::string_view littleMark = "\xFF\xFE", bigMark = "\xFE\xFF";

std::string_view viewOf(const NSData* data) {
  return {static_cast<const char*>(data->bytes()), static_cast<size_t>(data->length())};
}

// Decoding

void loadUnits(std::string_view bytes, ByteOrder order, char16_t* units) {
  if (order == ByteOrder::Big) return detail::loadSwappedUnits(bytes.data(), bytes.size() / 2, units);
  if (!bytes.empty()) std::memcpy(units, bytes.data(), bytes.size());
}

Ref<NSString> decodedUTF16(std::string_view bytes, ByteOrder order) {
  if (bytes.size() % 2 != 0) return nullptr;
  const size_t length = bytes.size() / 2;
  detail::UTF16Shape shape;
  Ref<NSString> text = Text::made<char16_t>(length, [&](char16_t* units) {
    loadUnits(bytes, order, units);
    shape = detail::measureUTF16({units, length});
  });
  if (length == 0) return text;
  if (!shape.valid) return nullptr;
  return shape.ascii ? Text::fromUnits({text->utf16Characters(), length}) : text;
}

Ref<NSString> decodedMarkedUTF16(std::string_view bytes) {
  if (bytes.starts_with(littleMark)) return decodedUTF16(bytes.substr(littleMark.size()), ByteOrder::Little);
  if (bytes.starts_with(bigMark)) bytes.remove_prefix(bigMark.size());
  return decodedUTF16(bytes, ByteOrder::Big);
}

// Encoding. A text is encoded where `canBe...` said that it can be.

uint8_t* storeUnits(std::string_view ascii, ByteOrder order, uint8_t* bytes) {
  for (const char c : ascii) {
    *bytes++ = order == ByteOrder::Little ? static_cast<uint8_t>(c) : 0;
    *bytes++ = order == ByteOrder::Little ? 0 : static_cast<uint8_t>(c);
  }
  return bytes;
}
uint8_t* storeUnits(std::u16string_view units, ByteOrder order, uint8_t* bytes) {
  if (order == ByteOrder::Little) {
    if (!units.empty()) std::memcpy(bytes, units.data(), 2 * units.size());
    return bytes + 2 * units.size();
  }
  for (const char16_t unit : units) {
    *bytes++ = static_cast<uint8_t>(unit >> 8);
    *bytes++ = static_cast<uint8_t>(unit & 0xFF);
  }
  return bytes;
}

Ref<NSData> encodedUTF16(const NSString* text, ByteOrder order, std::string_view mark) {
  return NSData::dataOfLength_filledBy(mark.size() + 2 * text->length(), [&](uint8_t* bytes) {
    if (!mark.empty()) std::memcpy(bytes, mark.data(), mark.size());
    text->visit([&](auto units) { storeUnits(units, order, bytes + mark.size()); });
  });
}

Ref<NSData> copied(std::string_view bytes) { return NSData::dataWithSpan(std::as_bytes(std::span(bytes))); }

Ref<NSData> encodedUTF8(std::u16string_view units, size_t size) {
  return NSData::dataOfLength_filledBy(
      size, [&](uint8_t* bytes) { detail::encodeUTF8(units, reinterpret_cast<char*>(bytes)); });
}

Ref<NSData> narrowed(std::u16string_view units) {
  return NSData::dataOfLength_filledBy(units.size(),
                                       [&](uint8_t* bytes) { detail::narrow(units, reinterpret_cast<char*>(bytes)); });
}

bool canBeEncoded(std::u16string_view units, NSStringEncoding encoding) {
  switch (encoding) {
    case NSASCIIStringEncoding: return detail::isASCII(units);
    case NSISOLatin1StringEncoding: return detail::isLatin1(units);
    case NSUTF8StringEncoding:
    case NSUTF16StringEncoding:
    case NSUTF16BigEndianStringEncoding:
    case NSUTF16LittleEndianStringEncoding: return detail::measureUTF16(units).valid;
  }
  return false;
}

bool isKnown(NSStringEncoding encoding) { return canBeEncoded({}, encoding); }

}  // namespace

Ref<NSString> NSString::stringWithBytes_encoding(std::string_view bytes, NSStringEncoding encoding) {
  switch (encoding) {
    case NSASCIIStringEncoding: return detail::isASCII(bytes) ? Text::copied(bytes) : nullptr;
    case NSUTF8StringEncoding: return stringWithUTF8(bytes);
    case NSISOLatin1StringEncoding: return stringWithLatin1(bytes);
    case NSUTF16StringEncoding: return decodedMarkedUTF16(bytes);
    case NSUTF16BigEndianStringEncoding: return decodedUTF16(bytes, ByteOrder::Big);
    case NSUTF16LittleEndianStringEncoding: return decodedUTF16(bytes, ByteOrder::Little);
  }
  return nullptr;
}

Ref<NSString> NSString::initWithData_encoding_ofClass(const NSData* data, NSStringEncoding encoding, Class* cls) {
  if (!data) detail::raiseNilArgument(cls, "initWithData:encoding:");
  const Ref<NSString> decoded = stringWithBytes_encoding(viewOf(data), encoding);
  return decoded ? initWithString_ofClass(decoded, cls) : nullptr;
}

bool NSString::canBeConvertedToEncoding(NSStringEncoding encoding) const {
  if (ascii_) return isKnown(encoding);
  return canBeEncoded({utf16Characters(), length()}, encoding);
}

Ref<NSData> NSString::dataUsingEncoding(NSStringEncoding encoding) const {
  switch (encoding) {
    case NSUTF16StringEncoding:
      return canBeConvertedToEncoding(encoding) ? encodedUTF16(this, ByteOrder::Little, littleMark) : nullptr;
    case NSUTF16LittleEndianStringEncoding:
      return canBeConvertedToEncoding(encoding) ? encodedUTF16(this, ByteOrder::Little, {}) : nullptr;
    case NSUTF16BigEndianStringEncoding:
      return canBeConvertedToEncoding(encoding) ? encodedUTF16(this, ByteOrder::Big, {}) : nullptr;
    default: break;
  }
  if (ascii_) return isKnown(encoding) ? copied({asciiCharacters(), length()}) : nullptr;
  const std::u16string_view units(utf16Characters(), length());
  if (encoding == NSUTF8StringEncoding) {
    const detail::UTF16Shape shape = detail::measureUTF16(units);
    return shape.valid ? encodedUTF8(units, shape.bytes) : nullptr;
  }
  return canBeEncoded(units, encoding) ? narrowed(units) : nullptr;
}

}  // namespace quoll::inline v1
