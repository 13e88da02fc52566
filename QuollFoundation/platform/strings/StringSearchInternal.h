// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/strings/TextFoldingInternal.h"

namespace quoll::inline v1::detail {

inline constexpr NSRange notFound{NSNotFound, 0};

/// Looks for one text in one stretch of another, again and again. The texts outlive it and stay as they are.
class StringSearch {
 public:
  /// `range` fits. Raises for options that are not about plain text.
  StringSearch(const NSString* text, const NSString* wanted, uint64_t options, NSRange range);
  /// The first occurrence in the stretch, backwards the last.
  NSRange first() const;
  /// All that don't overlap, in the order of their places; backwards they are picked from the end. Anchored: the one.
  std::vector<NSRange> all() const;

 private:
  NSRange within(size_t start, size_t end) const;
  template <class A, class B> NSRange literal(A text, B wanted, size_t start, size_t end) const;
  NSRange folded(size_t start, size_t end) const;

  const NSString* text_;
  const NSString* wanted_;
  const uint64_t options_;
  const NSRange range_;
  std::optional<FoldedText> foldedText_;  // of the stretch
  std::optional<FoldedText> foldedWanted_;
};

/// The text with each of the places, in order, given way to the other text.
Ref<NSString> replaced(const NSString* text, const std::vector<NSRange>& places, const NSString* with);

}  // namespace quoll::inline v1::detail
