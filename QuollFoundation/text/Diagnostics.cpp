// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Diagnostics.h"

#include <string>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/LineBounds.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/text/HexText.h"
#include "QuollFoundation/text/LineModel.h"

namespace quoll::inline v1 {

Ref<NSString> QF_debugStringToShowRange(const NSString* receiver, NSRange range) {
  if (!receiver) return nullptr;
  const uint64_t length = receiver->length();
  if (range.location >= length || !rangeFits(range, length)) {
    detail::raiseRange(receiver, "QF_debugStringToShowRange:", range, length);
  }
  const std::string prefix = std::to_string(numberOfLinesInRange(receiver, {0, range.location + 1})) + ": ";
  const NSRange lines = lineRangeForRange(receiver, range);
  const uint64_t column = prefix.size() + range.location - lines.location;
  const std::u16string marker = std::u16string(column, u' ') + std::u16string(range.length, u'^') + u'\n';
  return NSString::stringWithFormat("%s%@%@"_ns, prefix.c_str(), receiver->substringWithRange(lines),
                                    NSString::stringWithCharacters(marker));
}

Ref<NSString> QF_UTF8Name(const NSString* receiver) {
  if (!receiver) return nullptr;
  const std::string bytes = receiver->utf8();
  return NSString::stringWithFormat("UTF-8: %@"_ns,
                                    QF_niceHexString(NSData::dataWithBytes_length(bytes.data(), bytes.size())));
}

namespace detail {

extern constinit const AdditionGroup<NSString> diagnosticAdditions{
    "QFAdditions",
    {method<&QF_debugStringToShowRange>("QF_debugStringToShowRange:"_sel), method<&QF_UTF8Name>("QF_UTF8Name"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
