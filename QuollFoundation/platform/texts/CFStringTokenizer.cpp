// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/CFStringTokenizer.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/texts/WordSegmentsInternal.h"

namespace quoll::inline v1 {

Class* CFStringTokenizer::classObject() {
  static Class* const cls = ClassBuilder<CFStringTokenizer>("CFStringTokenizer").build();
  return cls;
}

CFStringTokenizer::CFStringTokenizer(const NSString* text, NSRange range, CFStringTokenizerUnit unit,
                                     const NSLocale* locale)
    : segments_(std::make_unique<detail::WordSegments>(text, range, locale)), unit_(unit), start_(range.location) {}
CFStringTokenizer::~CFStringTokenizer() = default;

bool CFStringTokenizer::take(uint64_t from) {
  const bool takesAll = unit_ == kCFStringTokenizerUnitWordBoundary && from < segments_->length();
  const detail::WordSegment segment = takesAll ? segments_->startingAt(from) : segments_->nextWord(from);
  next_ = segment.end;
  if (segment.start == segment.end) {
    current_ = {kCFNotFound, 0};
    return false;
  }
  current_ =
      CFRangeMake(static_cast<int64_t>(start_ + segment.start), static_cast<int64_t>(segment.end - segment.start));
  return true;
}

bool CFStringTokenizer::advance() { return take(next_); }

bool CFStringTokenizer::goToTokenAtIndex(int64_t index) {
  current_ = {kCFNotFound, 0};
  const uint64_t place = static_cast<uint64_t>(index) - start_;
  if (index < 0 || static_cast<uint64_t>(index) < start_ || place >= segments_->length()) {
    next_ = segments_->length();
    return false;
  }
  const detail::WordSegment segment = segments_->holding(place);
  if (segment.isWord || unit_ == kCFStringTokenizerUnitWordBoundary) return take(segment.start);
  next_ = segment.end;
  return false;
}

Ref<CFStringTokenizer> CFStringTokenizerCreate(CFAllocatorRef, const NSString* text, CFRange range, CFOptionFlags unit,
                                               CFLocaleRef locale) {
  if (!text) raise(NSInvalidArgumentException, "CFStringTokenizerCreate: the string is null");
  if (unit != kCFStringTokenizerUnitWord && unit != kCFStringTokenizerUnitWordBoundary) {
    raise(NSInvalidArgumentException, "CFStringTokenizerCreate: there is no unit " + std::to_string(unit));
  }
  const NSRange part = NSMakeRange(static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length));
  if (!rangeFits(part, text->length())) {
    raise(NSRangeException, "CFStringTokenizerCreate: range {" + std::to_string(range.location) + ", " +
                                std::to_string(range.length) + "} out of bounds; string length " +
                                std::to_string(text->length()));
  }
  const Ref<NSLocale> own = locale ? nullptr : NSLocale::currentLocale();
  return make<CFStringTokenizer>(text, part, static_cast<CFStringTokenizerUnit>(unit), locale ? locale : own.get());
}

CFStringTokenizerTokenType CFStringTokenizerGoToTokenAtIndex(CFStringTokenizerRef tokenizer, CFIndex index) {
  return tokenizer && tokenizer->goToTokenAtIndex(index) ? kCFStringTokenizerTokenNormal : kCFStringTokenizerTokenNone;
}
CFStringTokenizerTokenType CFStringTokenizerAdvanceToNextToken(CFStringTokenizerRef tokenizer) {
  return tokenizer && tokenizer->advance() ? kCFStringTokenizerTokenNormal : kCFStringTokenizerTokenNone;
}
CFRange CFStringTokenizerGetCurrentTokenRange(const CFStringTokenizer* tokenizer) {
  return tokenizer ? tokenizer->currentRange() : CFRangeMake(kCFNotFound, 0);
}

}  // namespace quoll::inline v1
