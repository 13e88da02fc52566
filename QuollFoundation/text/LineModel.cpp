// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/LineModel.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>

#include "QuollFoundation/core/PlainArrays.h"
#include "QuollFoundation/core/Ranges.h"
#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/LineBounds.h"
#include "QuollFoundation/platform/strings/LineScannerInternal.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {

using detail::LineBounds;

namespace {

NSRange wholeOf(const NSString* string) { return {0, string->length()}; }

/// The end of a range; one that would wrap reaches past everything.
uint64_t endOf(NSRange range) {
  const uint64_t end = NSMaxRange(range);
  return end < range.location ? std::numeric_limits<uint64_t>::max() : end;
}

/// What is left of a line's text, and how much white space stood before it.
struct Content {
  size_t start;
  size_t length;
  size_t leadingSpace = 0;
};

template <class Text> Content trimmed(Text text, size_t start, size_t end) {
  size_t first = start;
  while (first < end && detail::isWhitespaceUnit(static_cast<char16_t>(text[first]))) ++first;
  if (first == end) return {start, 0, end - start};
  size_t last = end;
  while (detail::isWhitespaceUnit(static_cast<char16_t>(text[last - 1]))) --last;
  return {first, last - first, first - start};
}

/// One enumeration: what it was asked for, and how often it has called.
template <class Visit> class LineVisits {
 public:
  LineVisits(const NSString* string, uint64_t options, Visit& visit)
      : string_(string), options_(options), visit_(visit) {}

  /// False when the callback ended the walk.
  template <class Text> bool line(Text text, LineBounds bounds) {
    const bool excludes = options_ & QFLineEnumerationExcludeTerminators;
    const bool trims = excludes && (options_ & QFLineEnumerationTrimWhitespace);
    const size_t contentsEnd = excludes ? bounds.contentsEnd : bounds.end;
    const Content content =
        trims ? trimmed(text, bounds.start, contentsEnd) : Content{bounds.start, contentsEnd - bounds.start};
    const NSRange wholeLine{bounds.start, bounds.end - bounds.start};
    if (content.length > 0) {
      const bool wanted = !(options_ & QFLineEnumerationNoLineSubstrings);
      return call(wanted, {content.start, content.length}, {nullptr, wholeLine, false, index_});
    }
    const NSRange terminator{bounds.contentsEnd, bounds.end - bounds.contentsEnd};
    if (!excludes || terminator.length == 0) return true;
    const bool wanted = !(options_ & QFLineEnumerationNoSeparatorSubstrings);
    return call(wanted, terminator, {nullptr, content.leadingSpace > 0 ? wholeLine : terminator, true, index_});
  }

 private:
  bool call(bool wantsSubstring, NSRange part, QFLine line) {
    const Ref<NSString> substring = wantsSubstring ? string_->substringWithRange(part) : nullptr;
    line.substring = substring;
    bool stop = false;
    visit_(line, &stop);
    ++index_;
    return !stop;
  }

  const NSString* string_;
  uint64_t options_;
  Visit& visit_;
  uint64_t index_ = 0;
};

/// A text that nobody changes is looked at in blocks.
template <class Visit> void walkImmutable(const NSString* string, NSRange range, LineVisits<Visit> visits) {
  const uint64_t end = endOf(range);
  string->visit([&](auto text) {
    detail::LineCursor lines(text, range.location);
    for (LineBounds line; lines.next(line);) {
      if (!visits.line(text, line) || line.end >= end) return;
    }
  });
}

/// A callback may change a mutable text: each line is found in the text as it is then.
template <class Visit> void walkMutable(const NSString* string, NSRange range, LineVisits<Visit> visits) {
  const uint64_t end = endOf(range);
  uint64_t position = range.location;
  bool isFirst = true;
  const auto visitNext = [&](auto text) {
    if (position > text.size() || (position == text.size() && !isFirst)) return false;
    isFirst = false;
    const LineBounds line = detail::findLineBounds(text, position);
    position = line.end;
    return line.end > line.start && visits.line(text, line) && position < end;
  };
  while (string->visit(visitNext)) {}
}

template <class Visit> void walkLines(const NSString* string, NSRange range, uint64_t options, Visit& visit) {
  if (range.location > string->length()) return;
  const Ref<const NSString> pinned = string;  // a callback may drop the last other reference
  const LineVisits<Visit> visits(string, options, visit);
  if (as<NSMutableString>(string)) walkMutable(string, range, visits);
  else walkImmutable(string, range, visits);
}

[[noreturn]] void raiseNullFunction(std::string_view selector) {
  raise(NSInvalidArgumentException, std::string(selector) + " callback function cannot be nil");
}

}  // namespace

void enumerateLinesInRange_options_function_context(const NSString* string, NSRange range, uint64_t options,
                                                    QFLineEnumerationFunction function, void* context) {
  if (!string) return;
  if (!function) raiseNullFunction("enumerateLinesInRange:options:function:context:");
  auto visit = [=](const QFLine& line, bool* stop) {
    function(line.substring, line.range.location, line.range.length, line.isBlank, line.index, stop, context);
  };
  walkLines(string, range, options, visit);
}

void enumerateLinesWithOptions_function_context(const NSString* string, uint64_t options,
                                                QFLineEnumerationFunction function, void* context) {
  if (string) enumerateLinesInRange_options_function_context(string, wholeOf(string), options, function, context);
}

void enumerateLines(const NSString* string, NSRange range, uint64_t options,
                    BlockRef<void(const QFLine&, bool*)> visit) {
  if (string) walkLines(string, range, options, visit);
}

void enumerateLines(const NSString* string, uint64_t options, BlockRef<void(const QFLine&, bool*)> visit) {
  if (string) walkLines(string, wholeOf(string), options, visit);
}

NSRange* getLineRangesInRange_count(const NSString* string, NSRange range, uint64_t* count) {
  uint64_t found = 0;
  uint64_t capacity = 0;
  std::unique_ptr<NSRange[], decltype(&std::free)> ranges(nullptr, &std::free);
  if (string) {
    if (!rangeFits(range, string->length())) {
      raise(NSRangeException, NSString::stringWithFormat("Range %@ lies out of bounds of string %p with length %ld"_ns,
                                                         NSStringFromRange(range), string, string->length())
                                  ->utf8());
    }
    auto append = [&](const QFLine& line, bool*) {
      void* grown = QFReallocateIfNeeded(ranges.get(), line.index, &capacity, sizeof(NSRange));
      if (!grown) raise(NSMallocException, "-[NSString(QFAdditions) getLineRangesInRange:count:]: out of memory");
      static_cast<void>(ranges.release());
      ranges.reset(static_cast<NSRange*>(grown));
      ranges[line.index] = line.range;
      found = line.index + 1;
    };
    walkLines(string, range, QFLineEnumerationNoLineSubstrings | QFLineEnumerationNoSeparatorSubstrings, append);
  }
  if (count) *count = found;
  return ranges.release();
}

NSRange* getLineRanges(const NSString* string, uint64_t* count) {
  return getLineRangesInRange_count(string, string ? wholeOf(string) : NSRange{}, count);
}

Ref<NSPointerArray> _10_6_lineRangesInRange(const NSString* string, NSRange range) {
  if (!string) return nullptr;
  Ref<NSPointerArray> ranges = rangePointerArray();
  enumerateSubstringsInRange_options_usingBlock(
      string, range, NSStringEnumerationByLines | NSStringEnumerationSubstringNotRequired,
      [&](NSString*, NSRange, NSRange enclosing, bool*) { addRange(ranges, enclosing); });
  return ranges;
}

Ref<NSPointerArray> lineRangesInRange(const NSString* string, NSRange range) {
  if (!string) return nullptr;
  if (string->length() == 0) return rangePointerArray();
  if (range.length > 0) return _10_6_lineRangesInRange(string, range);
  Ref<NSPointerArray> only = rangePointerArray();
  addRange(only, lineRangeForRange(string, range));
  return only;
}

Ref<NSPointerArray> lineRanges(const NSString* string) {
  return string ? lineRangesInRange(string, wholeOf(string)) : nullptr;
}

NSRange _10_6_rangeOfLine(const NSString* string, uint64_t n) {
  if (!string) return {};
  return string->visit([&](auto text) -> NSRange {
    detail::LineCursor lines(text);
    LineBounds line;
    for (uint64_t passed = 0; lines.next(line); ++passed) {
      if (passed == n) return {line.start, line.end - line.start};
    }
    return QFNotFoundRange;
  });
}

NSRange rangeOfLine(const NSString* string, uint64_t n) { return _10_6_rangeOfLine(string, n); }

uint64_t _10_6_numberOfLinesInRange(const NSString* string, NSRange range) {
  if (!string) return 0;
  return string->visit([&](auto text) -> uint64_t {
    if (range.location >= text.size()) return 0;
    return detail::countLines(text, range.location, std::min<uint64_t>(endOf(range), text.size()));
  });
}

uint64_t numberOfLinesInRange(const NSString* string, NSRange range) {
  return _10_6_numberOfLinesInRange(string, range);
}

uint64_t numberOfLines(const NSString* string) { return string ? numberOfLinesInRange(string, wholeOf(string)) : 0; }

NSRange lineNumberRangeInRange(const NSString* string, NSRange range) {
  if (!string || string->length() == 0) return QFZeroRange;
  const uint64_t before = numberOfLinesInRange(string, {0, range.location});
  return {before, range.length == 0 ? 1 : numberOfLinesInRange(string, range)};
}

namespace detail {

extern constinit const AdditionGroup<NSString> lineModelAdditions{
    "QFAdditions",
    {method<&enumerateLinesInRange_options_function_context>("enumerateLinesInRange:options:function:context:"_sel),
     method<&enumerateLinesWithOptions_function_context>("enumerateLinesWithOptions:function:context:"_sel),
     method<&getLineRangesInRange_count>("getLineRangesInRange:count:"_sel),
     method<&getLineRanges>("getLineRanges:"_sel), method<&lineRangesInRange>("lineRangesInRange:"_sel),
     method<&lineRanges>("lineRanges"_sel), method<&_10_6_lineRangesInRange>("_10_6_lineRangesInRange:"_sel),
     method<&rangeOfLine>("rangeOfLine:"_sel), method<&_10_6_rangeOfLine>("_10_6_rangeOfLine:"_sel),
     method<&numberOfLinesInRange>("numberOfLinesInRange:"_sel),
     method<&_10_6_numberOfLinesInRange>("_10_6_numberOfLinesInRange:"_sel),
     method<&numberOfLines>("numberOfLines"_sel), method<&lineNumberRangeInRange>("lineNumberRangeInRange:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
