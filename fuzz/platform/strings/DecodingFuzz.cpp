// SPDX-License-Identifier: MIT
// Any bytes are text in every encoding, or null; what was decoded encodes to the same bytes again.
#include <cstdlib>
#include <string_view>

#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSString.h"

using namespace quoll;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void roundTrip(std::string_view bytes, NSStringEncoding encoding) {
  const Ref<NSString> text = NSString::stringWithBytes_encoding(bytes, encoding);
  if (!text) return;
  const Ref<NSData> again = text->dataUsingEncoding(encoding);
  if (!again) return;  // an unpaired surrogate may be read but not written
  require(std::string_view(static_cast<const char*>(again->bytes()), again->length()) == bytes);
  require(text->canBeConvertedToEncoding(encoding));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const NSStringEncoding encoding : {NSASCIIStringEncoding, NSUTF8StringEncoding, NSISOLatin1StringEncoding,
                                          NSUTF16BigEndianStringEncoding, NSUTF16LittleEndianStringEncoding}) {
    roundTrip(bytes, encoding);
  }
  if (const Ref<NSString> marked = NSString::stringWithBytes_encoding(bytes, NSUTF16StringEncoding)) {
    require(marked->length() <= size / 2);
  }
  if (const Ref<NSString> utf8 = NSString::stringWithUTF8(bytes)) {
    require(utf8->utf8() == bytes);
    require(isEqual(utf8, NSString::stringWithCharacters(utf8->utf16())));
    require(utf8->hash() == NSString::stringWithCharacters(utf8->utf16())->hash());
    static_cast<void>(utf8->doubleValue());
    static_cast<void>(utf8->integerValue());
    static_cast<void>(utf8->boolValue());
  }
  return 0;
}
