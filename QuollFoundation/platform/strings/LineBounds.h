// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Where the lines of a string are.
///
///     enumerateSubstringsInRange_options_usingBlock(text, NSMakeRange(0, text->length()), NSStringEnumerationByLines,
///                                                   [](NSString* line, NSRange, NSRange, bool*) { print(line); });
///
/// A line ends at U+000A, U+000D, the pair of both (one terminator of two units), U+0085, U+2028 or U+2029. It holds
/// its terminator; the last one may have none. A position between a carriage return and its line feed belongs to the
/// line that the pair ends. A range past the end raises NSRangeException, unless said otherwise; a null string answers
/// zero.
namespace quoll::inline v1 {

/// The start of the line that holds the range's location; where the line that holds its last unit ends; and where that
/// line's terminator starts. Pointers may be null.
QF_EXPORT void CFStringGetLineBounds(const NSString* string, CFRange range, CFIndex* lineBegin, CFIndex* lineEnd,
                                     CFIndex* contentsEnd);
QF_EXPORT void getLineStart_end_contentsEnd_forRange(const NSString* string, uint64_t* start, uint64_t* lineEnd,
                                                     uint64_t* contentsEnd, NSRange range);
/// The whole lines that the range touches, terminators included.
QF_EXPORT NSRange lineRangeForRange(const NSString* string, NSRange range);

/// What to enumerate, and how. Bits; combine with `|`.
enum NSStringEnumerationOptions : uint64_t {
  NSStringEnumerationByLines = 0,
  NSStringEnumerationReverse = 256,
  NSStringEnumerationSubstringNotRequired = 512,  ///< The callback is given null, and nothing is allocated.
};
constexpr NSStringEnumerationOptions operator|(NSStringEnumerationOptions a, NSStringEnumerationOptions b) {
  return static_cast<NSStringEnumerationOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

/// Calls for each line that has a unit in the range: with its contents as far as they lie in the range, the range of
/// these, the range of the whole line with its terminator (also where the given range is only part of it), and a flag
/// to set where the walk should end. The end of the range is cut to the string's.
///
/// The callback may change a mutable string within the enclosing range; the walk goes on behind what that has become.
/// Options that are not listed raise NSInvalidArgumentException.
QF_EXPORT void enumerateSubstringsInRange_options_usingBlock(
    const NSString* string, NSRange range, NSStringEnumerationOptions options,
    BlockRef<void(NSString* substring, NSRange substringRange, NSRange enclosingRange, bool* stop)> block);

}  // namespace quoll::inline v1
