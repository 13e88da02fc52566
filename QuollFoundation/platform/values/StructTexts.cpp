// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/StructTexts.h"

#include <string>

#include "QuollFoundation/platform/values/DecimalsInternal.h"

namespace quoll::inline v1 {

namespace {

std::string pair(const std::string& first, const std::string& second) { return "{" + first + ", " + second + "}"; }
std::string pair(double first, double second) {
  return pair(std::string(detail::Decimals(first).text()), std::string(detail::Decimals(second).text()));
}

}  // namespace

Ref<NSString> NSStringFromRange(NSRange range) {
  return NSString::stringWithUTF8(pair(std::to_string(range.location), std::to_string(range.length)));
}
Ref<NSString> NSStringFromPoint(CGPoint point) { return NSString::stringWithUTF8(pair(point.x, point.y)); }
Ref<NSString> NSStringFromSize(CGSize size) { return NSString::stringWithUTF8(pair(size.width, size.height)); }
Ref<NSString> NSStringFromRect(CGRect rect) {
  return NSString::stringWithUTF8(pair(pair(rect.origin.x, rect.origin.y), pair(rect.size.width, rect.size.height)));
}

}  // namespace quoll::inline v1
