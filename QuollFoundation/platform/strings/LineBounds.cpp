// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/LineBounds.h"

#include <algorithm>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/LineScannerInternal.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

namespace quoll::inline v1 {

using detail::LineBounds;

namespace {

LineBounds boundsOf(const NSString* string, NSRange range, std::string_view selector) {
  if (!rangeFits(range, string->length())) detail::raiseRange(string, selector, range, string->length());
  return string->visit([&](auto text) { return detail::findLineBounds(text, range.location, range.length); });
}

template <class Index> void give(LineBounds line, Index* start, Index* lineEnd, Index* contentsEnd) {
  if (start) *start = static_cast<Index>(line.start);
  if (lineEnd) *lineEnd = static_cast<Index>(line.end);
  if (contentsEnd) *contentsEnd = static_cast<Index>(line.contentsEnd);
}

using LineBlock = BlockRef<void(NSString*, NSRange, NSRange, bool*)>;

/// A walk over the lines of one stretch of a string.
class LineWalk {
 public:
  LineWalk(const NSString* string, NSRange range, uint64_t options, LineBlock block)
      : pinned_(const_cast<NSString*>(string)), options_(options), block_(block) {
    const uint64_t length = string->length();
    start_ = std::min(range.location, length);
    end_ = start_ + std::min(range.length, length - start_);
  }

  void run() {
    if (options_ & NSStringEnumerationReverse) return runBackwards();
    if (as<NSMutableString>(pinned_.get())) return runOverChanges();
    pinned_->visit([&](auto text) {
      if (start_ == end_) return;
      detail::LineCursor lines(text, start_);
      for (LineBounds line; lines.next(line) && call(line) && line.end < end_;) continue;
    });
  }

 private:
  LineBounds lineAt(size_t index) const {
    return pinned_->visit([&](auto text) { return detail::findLineBounds(text, index); });
  }

  /// A callback may change a mutable text: each line is looked for in the text as it is then.
  void runOverChanges() {
    for (size_t position = start_; position < end_;) {
      const LineBounds line = lineAt(position);
      const size_t before = pinned_->length();
      if (!call(line)) return;
      const size_t after = pinned_->length();  // what changed lies within the line
      position = line.end + after - before;
      end_ = std::min(end_ + after - before, after);
    }
  }

  void runBackwards() {
    for (size_t position = end_; position > start_;) {
      const LineBounds line = lineAt(std::min(position, pinned_->length()) - 1);
      if (!call(line)) return;
      position = std::min(line.start, pinned_->length());
    }
  }

  /// False when the callback ended the walk.
  bool call(LineBounds line) {
    const size_t end = std::min(line.contentsEnd, end_);
    const size_t start = std::min(std::max(line.start, start_), end);
    const NSRange contents{start, end - start};
    const bool wantsText = !(options_ & NSStringEnumerationSubstringNotRequired);
    const Ref<NSString> text = wantsText ? pinned_->substringWithRange(contents) : nullptr;
    bool stop = false;
    block_(text, contents, {line.start, line.end - line.start}, &stop);
    return !stop;
  }

  const Ref<NSString> pinned_;  // a callback may drop the last other reference
  const uint64_t options_;
  const LineBlock block_;
  size_t start_;
  size_t end_;
};

}  // namespace

void CFStringGetLineBounds(const NSString* string, CFRange range, CFIndex* lineBegin, CFIndex* lineEnd,
                           CFIndex* contentsEnd) {
  LineBounds line;
  const NSRange same{static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length)};
  if (string) line = boundsOf(string, same, "CFStringGetLineBounds");
  give(line, lineBegin, lineEnd, contentsEnd);
}

void getLineStart_end_contentsEnd_forRange(const NSString* string, uint64_t* start, uint64_t* lineEnd,
                                           uint64_t* contentsEnd, NSRange range) {
  if (string) give(boundsOf(string, range, "getLineStart:end:contentsEnd:forRange:"), start, lineEnd, contentsEnd);
}

NSRange lineRangeForRange(const NSString* string, NSRange range) {
  if (!string) return {};
  const LineBounds line = boundsOf(string, range, "lineRangeForRange:");
  return {line.start, line.end - line.start};
}

void enumerateSubstringsInRange_options_usingBlock(const NSString* string, NSRange range,
                                                   NSStringEnumerationOptions options, LineBlock block) {
  constexpr uint64_t known = NSStringEnumerationReverse | NSStringEnumerationSubstringNotRequired;
  if (!string) return;
  if (options & ~known) {
    raise(NSInvalidArgumentException, detail::methodName(string, "enumerateSubstringsInRange:options:usingBlock:") +
                                          ": unknown options " + std::to_string(static_cast<uint64_t>(options)));
  }
  LineWalk(string, range, options, block).run();
}

namespace detail {

extern constinit const AdditionGroup<NSString> lineBoundsAdditions{
    "LineBounds",
    {method<&getLineStart_end_contentsEnd_forRange>("getLineStart:end:contentsEnd:forRange:"_sel),
     method<&lineRangeForRange>("lineRangeForRange:"_sel),
     method<&enumerateSubstringsInRange_options_usingBlock>("enumerateSubstringsInRange:options:usingBlock:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
