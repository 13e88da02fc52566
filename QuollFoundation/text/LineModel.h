// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Block.h"

/// Lines of a string: visited one by one, as ranges, counted, and found by number. Additions to NSString.
///
///     enumerateLines(text, QFLineEnumerationExcludeTerminators, [](const QFLine& line, bool*) {
///       if (!line.isBlank) std::cout << line.index << ": " << Ref(line.substring) << '\n';
///     });
///     NSRange third = rangeOfLine(text, 2);
///
/// A line ends at a line feed, a carriage return, both in that order (one terminator of two units), U+0085, U+2028 or
/// U+2029. The range of a line is always the whole line with its terminator, also where the text is visited in part.
/// Indices and lengths count UTF-16 units, line numbers start at 0. A null string has no lines.
///
/// Cost is one scan of the visited text; without substrings nothing is allocated. Threads: as the string's.
namespace quoll::inline v1 {

class NSPointerArray;
class NSString;

/// What an enumeration of lines gives. Bits; others are ignored.
enum QFLineEnumerationOptions : uint64_t {
  QFLineEnumerationNoLineSubstrings = 0x4,        ///< Null in place of a line's substring.
  QFLineEnumerationNoSeparatorSubstrings = 0x10,  ///< Null in place of a blank line's terminator.
  QFLineEnumerationExcludeTerminators = 0x400,    ///< Substrings end before the terminator; blank lines are told apart.
  QFLineEnumerationTrimWhitespace = 0x1000,       ///< Substrings without white space around them. Only with 0x400.
};
constexpr QFLineEnumerationOptions operator|(QFLineEnumerationOptions a, QFLineEnumerationOptions b) {
  return static_cast<QFLineEnumerationOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

/// Called for each line: its substring or null (borrowed for the call), its range, whether it is the terminator run of
/// a blank line, the number of calls before this one, the flag that ends the walk when set, and the caller's context.
using QFLineEnumerationFunction = void (*)(NSString* substring, uint64_t location, uint64_t length, bool isBlank,
                                           uint64_t index, bool* stop, void* context);

/// Visits the lines that begin before the range's end, from the one that holds its location on; that one also for an
/// empty range. Past the string's end it stops there.
///
/// A blank line, one without content after excluding and trimming, is visited with QFLineEnumerationExcludeTerminators
/// only, and only if it has a terminator: its substring and range are the terminator's, or, where white space was
/// trimmed, its range is the whole line's. Raises NSInvalidArgumentException for a null function.
QF_EXPORT void enumerateLinesInRange_options_function_context(const NSString* string, NSRange range, uint64_t options,
                                                              QFLineEnumerationFunction function, void* context);
QF_EXPORT void enumerateLinesWithOptions_function_context(const NSString* string, uint64_t options,
                                                          QFLineEnumerationFunction function, void* context);

/// One visit of the enumeration, for callbacks in C++.
struct QFLine {
  NSString* substring;  ///< Borrowed for the call, or null.
  NSRange range;
  bool isBlank;
  uint64_t index;
};
QF_EXPORT void enumerateLines(const NSString* string, NSRange range, uint64_t options,
                              BlockRef<void(const QFLine& line, bool* stop)> visit);
QF_EXPORT void enumerateLines(const NSString* string, uint64_t options,
                              BlockRef<void(const QFLine& line, bool* stop)> visit);

/// The ranges of the lines as a plain array, which the caller frees with `free`, and their number. Null for none.
/// Raises NSRangeException for a range past the end.
[[nodiscard]] QF_EXPORT NSRange* getLineRangesInRange_count(const NSString* string, NSRange range, uint64_t* count);
[[nodiscard]] QF_EXPORT NSRange* getLineRanges(const NSString* string, uint64_t* count);

/// The ranges of the lines that the range touches, as an array of ranges; for an empty range, of the line there.
QF_EXPORT Ref<NSPointerArray> lineRangesInRange(const NSString* string, NSRange range);
QF_EXPORT Ref<NSPointerArray> lineRanges(const NSString* string);
/// The same, but none for an empty range.
QF_EXPORT Ref<NSPointerArray> _10_6_lineRangesInRange(const NSString* string, NSRange range);

/// The range of line `n`; QFNotFoundRange when there is none.
QF_EXPORT NSRange rangeOfLine(const NSString* string, uint64_t n);
QF_EXPORT NSRange _10_6_rangeOfLine(const NSString* string, uint64_t n);

/// How many lines the range touches: none for an empty one.
QF_EXPORT uint64_t numberOfLinesInRange(const NSString* string, NSRange range);
QF_EXPORT uint64_t _10_6_numberOfLinesInRange(const NSString* string, NSRange range);
QF_EXPORT uint64_t numberOfLines(const NSString* string);

/// The lines before the range, and how many it touches, at least one; (0, 0) for an empty string.
QF_EXPORT NSRange lineNumberRangeInRange(const NSString* string, NSRange range);

}  // namespace quoll::inline v1
