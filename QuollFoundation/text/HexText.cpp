// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HexText.h"

#include <algorithm>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/LargeMemoryInternal.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/text/HexTextInternal.h"

namespace quoll::inline v1 {

Ref<NSString> QF_niceHexString(const NSData* data) {
  if (!data) return nullptr;
  const uint64_t length = data->length();
  if (length == 0) return detail::Text::empty();
  return detail::Text::made<char>(3 * length - 1, [&](char* text) {
    detail::prepareToFill(text, 3 * length - 1);
    data->enumerateByteRangesUsingBlock([&](const void* region, NSRange range, bool*) {
      const auto* bytes = static_cast<const uint8_t*>(region);
      const bool isLast = NSMaxRange(range) == length;
      detail::writeHexText(bytes, range.length - isLast, text + 3 * range.location);
      if (!isLast) return;
      char lastByte[3];  // whose blank has no place in the text
      detail::writeHexText(bytes + range.length - 1, 1, lastByte);
      std::copy_n(lastByte, 2, text + 3 * (length - 1));
    });
  });
}

namespace detail {

extern constinit const AdditionGroup<NSData> hexTextAdditions{"NSData_QFAdditions",
                                                              {method<&QF_niceHexString>("QF_niceHexString"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
