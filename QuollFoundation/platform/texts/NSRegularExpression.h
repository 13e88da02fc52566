// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/collections/NSError.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/texts/NSTextCheckingResult.h"

struct URegularExpression;

namespace quoll::inline v1 {

/// How a pattern is read. Bits.
enum NSRegularExpressionOptions : uint64_t {
  NSRegularExpressionCaseInsensitive = 1,
  NSRegularExpressionAllowCommentsAndWhitespace = 2,  ///< Blanks and what follows a # mean nothing.
  NSRegularExpressionIgnoreMetacharacters = 4,        ///< The pattern is the text to look for.
  NSRegularExpressionDotMatchesLineSeparators = 8,
  NSRegularExpressionAnchorsMatchLines = 16,      ///< ^ and $ match at each line, not at the ends of the text only.
  NSRegularExpressionUseUnixLineSeparators = 32,  ///< Only the line feed ends lines.
  NSRegularExpressionUseUnicodeWordBoundaries = 64,
};
constexpr NSRegularExpressionOptions operator|(NSRegularExpressionOptions a, NSRegularExpressionOptions b) {
  return static_cast<NSRegularExpressionOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

/// How a text is searched. Bits.
enum NSMatchingOptions : uint64_t {
  NSMatchingReportProgress = 1,           ///< Allowed, and without effect.
  NSMatchingReportCompletion = 2,         ///< One more call of the block at the end, without a result.
  NSMatchingAnchored = 4,                 ///< Only a match at the start of the range.
  NSMatchingWithTransparentBounds = 8,    ///< Looking ahead and behind, and word boundaries, see past the range.
  NSMatchingWithoutAnchoringBounds = 16,  ///< ^ and $ don't match at the ends of the range.
};
constexpr NSMatchingOptions operator|(NSMatchingOptions a, NSMatchingOptions b) {
  return static_cast<NSMatchingOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

/// What a block is told about a match. Bits.
enum NSMatchingFlags : uint64_t {
  NSMatchingProgress = 1,        ///< Never set.
  NSMatchingCompleted = 2,       ///< There is no further match, and no result.
  NSMatchingHitEnd = 4,          ///< The search came to the end of the range: more text might change the match.
  NSMatchingRequiredEnd = 8,     ///< More text might undo the match.
  NSMatchingInternalError = 16,  ///< Never set: an error raises.
};

/// A pattern, compiled, that finds and replaces in texts. Patterns are those of ICU.
///
///     Ref<NSError> error;
///     auto digits = NSRegularExpression::regularExpressionWithPattern_options_error("([0-9]+)"_ns, {}, &error);
///     if (!digits) return report(error);
///     auto marked = digits->stringByReplacingMatchesInString_options_range_withTemplate(text, {}, all, "<$1>"_ns);
///
/// Matches don't overlap and come in the order of their places. In a template `$0` is the match and `$1` to `$n` are
/// its groups, empty where there is none or it had no part; of several digits as many count as make the number of a
/// group. A backslash takes the next character as it is; a `$` without a digit is itself.
///
/// Each call copies the range of a text that is stored as ASCII, to widen it: whoever goes through a long text asks for
/// all matches at once rather than for the first of what is left.
///
/// A null text, pattern or template raises NSInvalidArgumentException, as does a text of more than 2^31 - 1 units; a
/// range past the end NSRangeException. A search that needs more memory than ICU grants it raises NSGenericException.
///
/// Threads: immutable.
class QF_EXPORT NSRegularExpression : public NSObject {
  QF_CLASS(NSRegularExpression, NSObject)
 public:
  using MatchAction = BlockRef<void(NSTextCheckingResult* match, NSMatchingFlags flags, bool* stop)>;

  /// Null where the pattern is none, with an error of NSCocoaErrorDomain and code 2048 unless `error` is null.
  template <class T = NSRegularExpression> static Ref<T> regularExpressionWithPattern_options_error(
      const NSString* pattern, NSRegularExpressionOptions options, Ref<NSError>* error) {
    return cast<T>(regularExpressionWithPattern_options_error_ofClass(pattern, options, error, T::classObject()));
  }
  template <class T = NSRegularExpression> static Ref<T> initWithPattern_options_error(
      const NSString* pattern, NSRegularExpressionOptions options, Ref<NSError>* error) {
    return cast<T>(initWithPattern_options_error_ofClass(pattern, options, error, T::classObject()));
  }
  static Ref<NSRegularExpression> regularExpressionWithPattern_options_error_ofClass(const NSString* pattern,
                                                                                     NSRegularExpressionOptions options,
                                                                                     Ref<NSError>* error, Class* cls);
  static Ref<NSRegularExpression> initWithPattern_options_error_ofClass(const NSString* pattern,
                                                                        NSRegularExpressionOptions options,
                                                                        Ref<NSError>* error, Class* cls);

  Ref<NSString> pattern() const { return pattern_; }
  NSRegularExpressionOptions options() const { return options_; }
  uint64_t numberOfCaptureGroups() const { return groups_; }

  // Finding
  uint64_t numberOfMatchesInString_options_range(const NSString* text, NSMatchingOptions options, NSRange range) const;
  /// (NSNotFound, 0) where there is none.
  NSRange rangeOfFirstMatchInString_options_range(const NSString* text, NSMatchingOptions options, NSRange range) const;
  /// Null where there is none.
  Ref<NSTextCheckingResult> firstMatchInString_options_range(const NSString* text, NSMatchingOptions options,
                                                             NSRange range) const;
  Ref<NSArray> matchesInString_options_range(const NSString* text, NSMatchingOptions options, NSRange range) const;
  /// The text is searched as it was at the start, whatever the callback does to it.
  void enumerateMatchesInString_options_range_usingBlock(const NSString* text, NSMatchingOptions options, NSRange range,
                                                         MatchAction action) const;

  // Replacing. What is outside of the range stays.
  Ref<NSString> stringByReplacingMatchesInString_options_range_withTemplate(const NSString* text,
                                                                            NSMatchingOptions options, NSRange range,
                                                                            const NSString* with) const;
  /// Gives the number of replacements.
  uint64_t replaceMatchesInString_options_range_withTemplate(NSMutableString* text, NSMatchingOptions options,
                                                             NSRange range, const NSString* with) const;

  /// A pattern that matches just this text, and a template that stands for just this text.
  static Ref<NSString> escapedPatternForString(const NSString* text);
  static Ref<NSString> escapedTemplateForString(const NSString* text);

  bool isEqual(const NSObject* other) const override;  ///< Pattern and options.
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

  ~NSRegularExpression() override;

 protected:
  NSRegularExpression();

 private:
  class Lease;
  class Matching;
  struct Close {
    void operator()(URegularExpression* expression) const noexcept;
  };
  using Handle = std::unique_ptr<URegularExpression, Close>;

  Ref<NSString> pattern_;
  NSRegularExpressionOptions options_{};
  uint64_t groups_ = 0;
  Handle compiled_;                     // null where no initialiser ran
  mutable std::atomic<bool> isBusy_{};  // `compiled_` is searching; who comes meanwhile searches with a clone
};

}  // namespace quoll::inline v1
