// SPDX-License-Identifier: MIT
#include "Decoding.h"

using namespace quoll;

namespace {

/// Surrogates without a partner can't be written as UTF-8: that is the test.
Ref<NSString> whereWellFormed(Ref<NSString> text) {
  return text && text->canBeConvertedToEncoding(NSUTF8StringEncoding) ? text : nullptr;
}

}  // namespace

Ref<NSString> decodeText(const std::string& bytes) {
  const std::string_view all = bytes;
  if (all.starts_with("\xFE\xFF")) {
    return whereWellFormed(NSString::stringWithBytes_encoding(all.substr(2), NSUTF16BigEndianStringEncoding));
  }
  if (all.starts_with("\xFF\xFE")) {
    return whereWellFormed(NSString::stringWithBytes_encoding(all.substr(2), NSUTF16LittleEndianStringEncoding));
  }
  if (all.find('\0') != all.npos) return nullptr;
  const std::string_view text = all.starts_with("\xEF\xBB\xBF") ? all.substr(3) : all;
  if (Ref<NSString> utf8 = NSString::stringWithUTF8(text)) return utf8;
  return NSString::stringWithBytes_encoding(all, NSISOLatin1StringEncoding);
}
