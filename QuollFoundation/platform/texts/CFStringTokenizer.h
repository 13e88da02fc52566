// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/collections/CFAllocator.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

namespace detail {
class WordSegments;
}

/// Into what a text is cut.
enum CFStringTokenizerUnit : uint64_t {
  kCFStringTokenizerUnitWord = 0,          ///< Words; what lies between them is in no token.
  kCFStringTokenizerUnitWordBoundary = 4,  ///< Whatever lies between two word boundaries, blanks and signs included.
};
enum CFStringTokenizerTokenType : uint64_t { kCFStringTokenizerTokenNone = 0, kCFStringTokenizerTokenNormal = 1 };

/// Cuts a text into words, by the rules of Unicode and the dictionaries of languages that put no blanks between words.
///
///     auto tokenizer =
///         CFStringTokenizerCreate(nullptr, text, CFRangeMake(0, length), kCFStringTokenizerUnitWord, nullptr);
///     while (CFStringTokenizerAdvanceToNextToken(tokenizer)) use(CFStringTokenizerGetCurrentTokenRange(tokenizer));
///
/// It holds a copy of the text. The tokens depend on the text in its range and the locale, and on nothing that was
/// asked before. Threads: caller-locked.
class QF_EXPORT CFStringTokenizer : public NSObject {
  QF_CLASS(CFStringTokenizer, NSObject)
 public:
  /// Whether there is a token that holds the unit at `index`. It becomes the current one; otherwise there is none, and
  /// `advance` goes on behind the index.
  bool goToTokenAtIndex(int64_t index);
  /// To the token behind the current one, at first to the first. False when there is none; then there is no current
  /// one.
  bool advance();
  CFRange currentRange() const { return current_; }  ///< (kCFNotFound, 0) when there is none.

  ~CFStringTokenizer() override;

 protected:
  CFStringTokenizer(const NSString* text, NSRange range, CFStringTokenizerUnit unit, const NSLocale* locale);

 private:
  bool take(uint64_t from);

  const std::unique_ptr<detail::WordSegments> segments_;
  const CFStringTokenizerUnit unit_;
  const uint64_t start_;  // of the range in the text
  uint64_t next_ = 0;     // where the next segment starts, in the range
  CFRange current_ = {kCFNotFound, 0};
};

using CFStringTokenizerRef = CFStringTokenizer*;

/// Over a part of a text; a null locale is the current one. A null text, a unit that is not listed, or a text of more
/// than 2^31 - 1 units raises NSInvalidArgumentException; a range past the end NSRangeException.
[[nodiscard]] QF_EXPORT Ref<CFStringTokenizer> CFStringTokenizerCreate(CFAllocatorRef allocator, const NSString* text,
                                                                       CFRange range, CFOptionFlags unit,
                                                                       CFLocaleRef locale);

// The same as the members. A null tokenizer has no tokens.
/// See `goToTokenAtIndex`.
QF_EXPORT CFStringTokenizerTokenType CFStringTokenizerGoToTokenAtIndex(CFStringTokenizerRef tokenizer, CFIndex index);
/// See `advance`.
QF_EXPORT CFStringTokenizerTokenType CFStringTokenizerAdvanceToNextToken(CFStringTokenizerRef tokenizer);
/// See `currentRange`.
QF_EXPORT CFRange CFStringTokenizerGetCurrentTokenRange(const CFStringTokenizer* tokenizer);

}  // namespace quoll::inline v1
