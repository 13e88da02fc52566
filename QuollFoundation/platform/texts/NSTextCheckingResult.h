// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// Where a pattern matched: the range of the whole, and of each of its groups.
///
///     for (NSTextCheckingResult* match : elements<NSTextCheckingResult>(matches)) use(match->rangeAtIndex(1));
///
/// Threads: immutable.
class QF_EXPORT NSTextCheckingResult : public NSObject {
  QF_CLASS(NSTextCheckingResult, NSObject)
 public:
  /// The whole first. An empty list raises NSInvalidArgumentException.
  static Ref<NSTextCheckingResult> resultWithRanges(std::span<const NSRange> ranges);

  NSRange range() const { return ranges()[0]; }
  uint64_t numberOfRanges() const { return count_; }  ///< The groups and one more.
  /// 0 is the whole. (NSNotFound, 0) for a group that had no part in the match; an index past the end raises
  /// NSRangeException.
  NSRange rangeAtIndex(uint64_t index) const;

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  explicit NSTextCheckingResult(std::span<const NSRange> ranges);

 private:
  const NSRange* ranges() const { return reinterpret_cast<const NSRange*>(this + 1); }
  const uint64_t count_;
};

}  // namespace quoll::inline v1
