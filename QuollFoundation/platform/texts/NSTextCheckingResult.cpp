// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSTextCheckingResult.h"

#include <algorithm>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSTextCheckingResult::classObject() {
  static Class* const cls = ClassBuilder<NSTextCheckingResult>("NSTextCheckingResult")
                                .property<&NSTextCheckingResult::range>("range")
                                .property<&NSTextCheckingResult::numberOfRanges>("numberOfRanges")
                                .method<&NSTextCheckingResult::rangeAtIndex>("rangeAtIndex:"_sel)
                                .build();
  return cls;
}

Ref<NSTextCheckingResult> NSTextCheckingResult::resultWithRanges(std::span<const NSRange> ranges) {
  static_assert(sizeof(detail::Made<NSTextCheckingResult>) == sizeof(NSTextCheckingResult));
  if (ranges.empty()) raise(NSInvalidArgumentException, "+[NSTextCheckingResult resultWithRanges:]: no ranges");
  return makeSized<NSTextCheckingResult>(ranges.size_bytes(), ranges);
}

NSTextCheckingResult::NSTextCheckingResult(std::span<const NSRange> ranges) : count_(ranges.size()) {
  std::copy(ranges.begin(), ranges.end(), reinterpret_cast<NSRange*>(this + 1));
}

NSRange NSTextCheckingResult::rangeAtIndex(uint64_t index) const {
  if (index >= count_) detail::raiseIndex(this, "rangeAtIndex:", index, count_);
  return ranges()[index];
}

bool NSTextCheckingResult::isEqual(const NSObject* other) const {
  auto* result = as<const NSTextCheckingResult>(other);
  return result && std::equal(ranges(), ranges() + count_, result->ranges(), result->ranges() + result->count_);
}
uint64_t NSTextCheckingResult::hash() const { return (range().location * 31 + range().length) * 31 + count_; }

Ref<NSString> NSTextCheckingResult::description() const {
  return NSString::stringWithUTF8(detail::plainDescription(this) + "{" + std::to_string(range().location) + ", " +
                                  std::to_string(range().length) + "}");
}

Ref<NSObject> NSTextCheckingResult::copyWithZone(NSZone*) const { return const_cast<NSTextCheckingResult*>(this); }

}  // namespace quoll::inline v1
