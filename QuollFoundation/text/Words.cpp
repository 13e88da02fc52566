// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/Words.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include "QuollFoundation/core/PlainArrays.h"
#include "QuollFoundation/core/ValuePointerArrays.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/LineBounds.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {

namespace {

/// Without white space at both ends.
CFRange trimmed(const NSString* string, CFRange range) {
  return string->visit([&](auto text) {
    const auto isBlank = [&](int64_t i) {
      return detail::isWhitespaceUnit(static_cast<char16_t>(text[static_cast<size_t>(i)]));
    };
    int64_t start = range.location, end = range.location + range.length;
    while (start < end && isBlank(start)) ++start;
    while (end > start && isBlank(end - 1)) --end;
    return CFRangeMake(start, end - start);
  });
}

uint64_t countingOptions(bool includeWhitespace) {
  return QFTokenEnumerationNoSubstrings | (includeWhitespace ? uint64_t{QFWordEnumerationWordBoundaries} : 0);
}

struct Ranges {
  ~Ranges() { std::free(ranges); }
  NSRange* ranges = nullptr;
  uint64_t capacity = 0;
  uint64_t count = 0;
};
void appendRange(NSString*, uint64_t location, uint64_t length, bool, uint64_t index, bool*, void* context) {
  auto* const found = static_cast<Ranges*>(context);
  void* const room = QFReallocateIfNeeded(found->ranges, index, &found->capacity, sizeof(NSRange));
  if (!room) raise(NSMallocException, "no memory for the ranges of words");
  found->ranges = static_cast<NSRange*>(room);
  found->ranges[index] = {location, length};
  found->count = index + 1;
}
void countCall(NSString*, uint64_t, uint64_t, bool, uint64_t, bool*, void* context) {
  ++*static_cast<uint64_t*>(context);
}

}  // namespace

void enumerateWordsInRange_options_function_context(const NSString* receiver, NSRange range, uint64_t options,
                                                    QFLineEnumerationFunction function, void* context) {
  if (!receiver) return;
  const Ref<const NSString> pinned = receiver;
  const Ref<CFStringTokenizer> tokenizer = options & QFWordEnumerationWordBoundaries
                                               ? QFStringCreateWordBoundaryTokenizer(receiver)
                                               : QFStringCreateWordTokenizer(receiver);
  CFIndex start = 0, lineEnd = 0, contentsEnd = 0;
  CFStringGetLineBounds(receiver, {static_cast<int64_t>(range.location), static_cast<int64_t>(range.length)}, &start,
                        &lineEnd, &contentsEnd);
  const bool excludes = options & QFLineEnumerationExcludeTerminators;
  const bool trims = excludes && (options & QFLineEnumerationTrimWhitespace);
  CFRange content = CFRangeMake(start, (excludes ? contentsEnd : lineEnd) - start);
  if (trims) content = trimmed(receiver, content);
  const uint64_t tokenOptions = options & QFTokenEnumerationNoSubstrings;
  if (content.length > 0) {
    QFStringTokenizerEnumerateTokensInRange(tokenizer, receiver, content, tokenOptions, function, context, false);
  }
  if (excludes && lineEnd > contentsEnd) {
    QFStringTokenizerEnumerateTokensInRange(tokenizer, receiver, CFRangeMake(contentsEnd, lineEnd - contentsEnd),
                                            tokenOptions, function, context, true);
  }
}

NSRange* getWordRangesForRange_includeWhitespace_count(const NSString* receiver, NSRange range, bool includeWhitespace,
                                                       uint64_t* count) {
  if (count) *count = 0;
  if (!receiver) return nullptr;
  if (!rangeFits(range, receiver->length())) {
    const Ref<NSString> reason = NSString::stringWithFormat(
        "Range %@ lies out of bounds of string %p with length %ld"_ns, NSStringFromRange(range),
        static_cast<const void*>(receiver), static_cast<long>(receiver->length()));
    raise(NSRangeException, reason->utf8());
  }
  if (!receiver->length()) return nullptr;
  Ranges found;
  enumerateWordsInRange_options_function_context(receiver, range, countingOptions(includeWhitespace), &appendRange,
                                                 &found);
  if (count) *count = found.count;
  return std::exchange(found.ranges, nullptr);
}

Ref<NSPointerArray> wordRangesForRange_tokenizer(const NSString* receiver, NSRange range, CFStringTokenizerRef) {
  if (!receiver) return nullptr;
  uint64_t count = 0;
  const std::unique_ptr<NSRange, decltype(&std::free)> ranges(
      getWordRangesForRange_includeWhitespace_count(receiver, range, false, &count), &std::free);
  Ref<NSPointerArray> words = rangePointerArray();
  for (uint64_t i = 0; i < count; ++i) addRange(words, ranges.get()[i]);
  return words;
}

uint64_t numberOfWordsInRange_includeWhitespace(const NSString* receiver, NSRange range, bool includeWhitespace) {
  uint64_t calls = 0;
  enumerateWordsInRange_options_function_context(receiver, range, countingOptions(includeWhitespace), &countCall,
                                                 &calls);
  return calls;
}
uint64_t numberOfWordsInRange(const NSString* receiver, NSRange range) {
  return numberOfWordsInRange_includeWhitespace(receiver, range, false);
}

namespace detail {

extern constinit const AdditionGroup<NSString> wordAdditions{
    "QFAdditions",
    {method<&enumerateWordsInRange_options_function_context>("enumerateWordsInRange:options:function:context:"_sel),
     method<&getWordRangesForRange_includeWhitespace_count>("getWordRangesForRange:includeWhitespace:count:"_sel),
     method<&wordRangesForRange_tokenizer>("wordRangesForRange:tokenizer:"_sel),
     method<&numberOfWordsInRange_includeWhitespace>("numberOfWordsInRange:includeWhitespace:"_sel),
     method<&numberOfWordsInRange>("numberOfWordsInRange:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
