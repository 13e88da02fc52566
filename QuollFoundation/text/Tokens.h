// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/texts/CFStringTokenizer.h"
#include "QuollFoundation/text/LineModel.h"

/// The tokens of a text, and what lies between them.
///
///     Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer(text);
///     Ref<NSPointerArray> ranges = QFTokenizerTokenRangesForRange(words, 0, text->length());
///
/// Tokenizers use the current locale. Locations and lengths count UTF-16 units. Threads: a tokenizer is caller-locked.
namespace quoll::inline v1 {

/// Of words alone; what lies between them is skipped. Null for a null string.
[[nodiscard]] QF_EXPORT Ref<CFStringTokenizer> QFStringCreateWordTokenizer(const NSString* string);
/// Of all that lies between word boundaries, blanks and signs included.
[[nodiscard]] QF_EXPORT Ref<CFStringTokenizer> QFStringCreateWordBoundaryTokenizer(const NSString* string);
/// The same as additions to NSString.
[[nodiscard]] QF_EXPORT Ref<CFStringTokenizer> createWordTokenizer(const NSString* receiver);
[[nodiscard]] QF_EXPORT Ref<CFStringTokenizer> createWordBoundaryTokenizer(const NSString* receiver);

/// What an enumeration of tokens gives. Bits; others are ignored.
enum QFTokenEnumerationOptions : uint64_t {
  QFTokenEnumerationNoSubstrings = 0x200,  ///< Null in place of substrings.
};

/// Calls for each token of a range, and for each range that lies between tokens: with its substring or null (borrowed
/// for the call), location, length, `flag`, the number of calls before this one, the stop flag, and the context.
///
/// A range between tokens that holds a line end is given line by line, without the terminators, and a line that is only
/// its terminator as that; the line enumeration's blank-line flag then stands in the flag's place. Setting the stop
/// flag for such a line, or for any range between tokens, ends that range only; for a token it ends the enumeration.
///
/// It goes by tokens, not by the range: a range that starts between two tokens is one such range as a whole. A token
/// that begins inside the range is given to its own end, unless a range between tokens was given just before it and it
/// reaches the end of the range: then it is left out, so that "hello world" gives a word and a gap. Whoever wants every
/// token asks `QFTokenizerTokenRangesForRange`.
///
/// A null string or an empty range gives no call. A range past the end raises NSRangeException; a null function
/// NSInvalidArgumentException.
QF_EXPORT void QFStringTokenizerEnumerateTokensInRange(CFStringTokenizerRef tokenizer, const NSString* string,
                                                       CFRange range, uint64_t options,
                                                       QFLineEnumerationFunction function, void* context, bool flag);
/// The whole string, with substrings and without the flag.
QF_EXPORT void QFStringTokenizerEnumerateTokens(CFStringTokenizerRef tokenizer, const NSString* string,
                                                QFLineEnumerationFunction function, void* context);

/// The ranges of the tokens from the one that holds the location up to the last that begins before the end of the
/// range, each of them whole. None when no token holds the location.
QF_EXPORT Ref<NSPointerArray> QFTokenizerTokenRangesForRange(CFStringTokenizerRef tokenizer, int64_t location,
                                                             int64_t length);
/// The range of every call of the enumeration above.
QF_EXPORT Ref<NSPointerArray> QFStringWordRangesForCharacterRange(const NSString* string, int64_t location,
                                                                  int64_t length, CFStringTokenizerRef tokenizer);

}  // namespace quoll::inline v1
