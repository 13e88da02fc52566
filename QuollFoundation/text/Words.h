// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/text/Tokens.h"

/// The words of whole lines: visited, as ranges, counted. Additions to NSString.
///
///     uint64_t count = 0;
///     NSRange* words = getWordRangesForRange_includeWhitespace_count(text, range, false, &count);
///     ...
///     free(words);
///
/// THE STRETCHES BETWEEN WORDS ARE VISITED AND COUNTED TOO; see `QFStringTokenizerEnumerateTokensInRange` for what the
/// calls are. Whoever wants the words alone asks `QFTokenizerTokenRangesForRange`.
///
/// Indices and lengths count UTF-16 units. A null string has no words. Threads: as the string's.
namespace quoll::inline v1 {

/// What an enumeration of words is told, beside the bits of tokens and the two of lines about terminators and trimming.
enum QFWordEnumerationOptions : uint64_t {
  QFWordEnumerationWordBoundaries = 0x40000000,  ///< Blanks and signs are tokens too, each for itself.
};

/// Visits the tokens of the lines that the range touches, whole lines even where it starts or ends inside one. With
/// QFLineEnumerationExcludeTerminators the terminator of the last line is a run of its own: its calls have the flag set
/// and count from 0 again. With QFLineEnumerationTrimWhitespace too, white space at both ends is left out.
///
/// A range past the end raises NSRangeException; a null function, where there is something to visit,
/// NSInvalidArgumentException.
QF_EXPORT void enumerateWordsInRange_options_function_context(const NSString* receiver, NSRange range, uint64_t options,
                                                              QFLineEnumerationFunction function, void* context);

/// The range of each call as a plain array, which the caller frees with `free`, and their number; null for none. A
/// range past the end raises NSRangeException.
[[nodiscard]] QF_EXPORT NSRange* getWordRangesForRange_includeWhitespace_count(const NSString* receiver, NSRange range,
                                                                               bool includeWhitespace, uint64_t* count);
/// The same without white space as an array of ranges. The tokenizer is not used.
QF_EXPORT Ref<NSPointerArray> wordRangesForRange_tokenizer(const NSString* receiver, NSRange range,
                                                           CFStringTokenizerRef tokenizer);

/// How many calls that makes.
QF_EXPORT uint64_t numberOfWordsInRange_includeWhitespace(const NSString* receiver, NSRange range,
                                                          bool includeWhitespace);
QF_EXPORT uint64_t numberOfWordsInRange(const NSString* receiver, NSRange range);

}  // namespace quoll::inline v1
