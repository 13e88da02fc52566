// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Tokens.h"

#include <algorithm>
#include <string>

#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {

namespace {

/// With NSNotFound for a negative location, and 0 for a negative length.
NSRange shownRange(CFRange range) {
  return {range.location < 0 ? NSNotFound : static_cast<uint64_t>(range.location),
          range.length < 0 ? 0 : static_cast<uint64_t>(range.length)};
}

void checkRange(const char* what, CFRange range, const NSString* string) {
  const NSRange wanted{static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length)};
  if (range.location >= 0 && range.length >= 0 && rangeFits(wanted, string->length())) return;
  const Ref<NSString> reason = NSString::stringWithFormat(
      "%s %@ lies out of bounds of string %p with length %ld"_ns, what, NSStringFromRange(shownRange(range)),
      static_cast<const void*>(string), static_cast<long>(string->length()));
  raise(NSRangeException, reason->utf8());
}

Ref<CFStringTokenizer> tokenizerOf(const NSString* string, CFStringTokenizerUnit unit) {
  if (!string) return nullptr;
  return CFStringTokenizerCreate(nullptr, string, CFRangeMake(0, static_cast<int64_t>(string->length())), unit,
                                 CFLocaleCopyCurrent());
}

/// One enumeration: what is asked for, and how often it has called.
class Enumeration {
 public:
  Enumeration(const NSString* string, int64_t end, uint64_t options, QFLineEnumerationFunction function, void* context,
              bool flag)
      : string_(string), end_(end), options_(options), function_(function), context_(context), flag_(flag) {}

  void run(CFStringTokenizerRef tokenizer, int64_t start) {
    if (!CFStringTokenizerGoToTokenAtIndex(tokenizer, start)) return skip(start, end_ - start);
    int64_t cursor = start;
    do {
      const CFRange token = CFStringTokenizerGetCurrentTokenRange(tokenizer);
      if (token.location == kCFNotFound) return;
      if (token.location > cursor) {
        skip(cursor, std::min(end_, token.location) - cursor);
        if (token.location + token.length >= end_) return;
        cursor = std::min(end_, token.location);
      }
      const int64_t behind = token.location + token.length;
      const int64_t first = std::max(token.location, cursor);
      const int64_t length = std::max<int64_t>(behind - first, 0);
      if (call(first, length) || first + length >= end_) return;
      cursor = first + length;
    } while (CFStringTokenizerAdvanceToNextToken(tokenizer));
    if (cursor < end_) skip(cursor, end_ - cursor);
  }

 private:
  bool wantsSubstrings() const { return !(options_ & QFTokenEnumerationNoSubstrings); }
  Ref<NSString> substring(int64_t location, int64_t length) const {
    return string_->substringWithRange({static_cast<uint64_t>(location), static_cast<uint64_t>(length)});
  }

  /// Whether the callback set the stop flag.
  bool call(int64_t location, int64_t length) {
    const Ref<NSString> text = wantsSubstrings() ? substring(location, length) : nullptr;
    bool stop = false;
    function_(text.get(), static_cast<uint64_t>(location), static_cast<uint64_t>(length), flag_, index_++, &stop,
              context_);
    return stop;
  }

  /// A stop set in here ends only what is skipped.
  void skip(int64_t location, int64_t length) {
    checkRange("Skipped range", CFRangeMake(location, length), string_);
    const CFCharacterSetRef newlines = CFCharacterSetGetPredefined(kCFCharacterSetNewline);
    if (!CFStringFindCharacterFromSet(string_, newlines, CFRangeMake(location, length), {}, nullptr)) {
      call(location, length);
      return;
    }
    uint64_t lineOptions = QFLineEnumerationExcludeTerminators;
    if (!wantsSubstrings()) lineOptions |= QFLineEnumerationNoLineSubstrings | QFLineEnumerationNoSeparatorSubstrings;
    enumerateLines(substring(location, length), lineOptions, [&](const QFLine& line, bool* stop) {
      function_(line.substring, static_cast<uint64_t>(location) + line.range.location, line.range.length, line.isBlank,
                index_++, stop, context_);
    });
  }

  const NSString* const string_;
  const int64_t end_;
  const uint64_t options_;
  const QFLineEnumerationFunction function_;
  void* const context_;
  const bool flag_;
  uint64_t index_ = 0;
};

}  // namespace

Ref<CFStringTokenizer> QFStringCreateWordTokenizer(const NSString* string) {
  return tokenizerOf(string, kCFStringTokenizerUnitWord);
}
Ref<CFStringTokenizer> QFStringCreateWordBoundaryTokenizer(const NSString* string) {
  return tokenizerOf(string, kCFStringTokenizerUnitWordBoundary);
}
Ref<CFStringTokenizer> createWordTokenizer(const NSString* receiver) { return QFStringCreateWordTokenizer(receiver); }
Ref<CFStringTokenizer> createWordBoundaryTokenizer(const NSString* receiver) {
  return QFStringCreateWordBoundaryTokenizer(receiver);
}

void QFStringTokenizerEnumerateTokensInRange(CFStringTokenizerRef tokenizer, const NSString* string, CFRange range,
                                             uint64_t options, QFLineEnumerationFunction function, void* context,
                                             bool flag) {
  if (!string || range.length == 0) return;
  if (!function) {
    raise(NSInvalidArgumentException, "QFStringTokenizerEnumerateTokensInRange: callback function cannot be nil");
  }
  checkRange("Range", range, string);
  // A callback may drop the last other reference to either.
  const Ref<const NSString> pinned = string;
  const Ref<CFStringTokenizer> pinnedTokenizer = tokenizer;
  Enumeration(string, range.location + range.length, options, function, context, flag).run(tokenizer, range.location);
}

void QFStringTokenizerEnumerateTokens(CFStringTokenizerRef tokenizer, const NSString* string,
                                      QFLineEnumerationFunction function, void* context) {
  if (!string) return;
  const CFRange whole = CFRangeMake(0, static_cast<int64_t>(string->length()));
  QFStringTokenizerEnumerateTokensInRange(tokenizer, string, whole, 0, function, context, false);
}

Ref<NSPointerArray> QFTokenizerTokenRangesForRange(CFStringTokenizerRef tokenizer, int64_t location, int64_t length) {
  Ref<NSPointerArray> ranges = rangePointerArray();
  if (!CFStringTokenizerGoToTokenAtIndex(tokenizer, location)) return ranges;
  do {
    const CFRange token = CFStringTokenizerGetCurrentTokenRange(tokenizer);
    // Without the sum of location and length, which may not be a number.
    if (token.location == kCFNotFound || token.location - location >= length) return ranges;
    addRange(ranges, shownRange(token));
  } while (CFStringTokenizerAdvanceToNextToken(tokenizer));
  return ranges;
}

Ref<NSPointerArray> QFStringWordRangesForCharacterRange(const NSString* string, int64_t location, int64_t length,
                                                        CFStringTokenizerRef tokenizer) {
  Ref<NSPointerArray> ranges = rangePointerArray();
  const auto add = [](NSString*, uint64_t start, uint64_t count, bool, uint64_t, bool*, void* array) {
    addRange(static_cast<NSPointerArray*>(array),
             shownRange({static_cast<int64_t>(start), static_cast<int64_t>(count)}));
  };
  QFStringTokenizerEnumerateTokensInRange(tokenizer, string, CFRangeMake(location, length),
                                          QFTokenEnumerationNoSubstrings, add, ranges.get(), false);
  return ranges;
}

namespace detail {

extern constinit const AdditionGroup<NSString> tokenizerAdditions{
    "QFAdditions",
    {method<&createWordTokenizer>("createWordTokenizer"_sel),
     method<&createWordBoundaryTokenizer>("createWordBoundaryTokenizer"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
