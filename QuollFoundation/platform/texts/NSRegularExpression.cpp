// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/NSRegularExpression.h"

#include <unicode/uregex.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"

namespace quoll::inline v1 {

using detail::Text;

Class* NSRegularExpression::classObject() {
  static Class* const cls =
      ClassBuilder<NSRegularExpression>("NSRegularExpression")
          .classMethod<&NSRegularExpression::regularExpressionWithPattern_options_error_ofClass>(
              "regularExpressionWithPattern:options:error:"_sel)
          .classMethod<&NSRegularExpression::escapedPatternForString>("escapedPatternForString:"_sel)
          .classMethod<&NSRegularExpression::escapedTemplateForString>("escapedTemplateForString:"_sel)
          .initializer<&NSRegularExpression::initWithPattern_options_error_ofClass>(
              "initWithPattern:options:error:"_sel)
          .property<&NSRegularExpression::pattern>("pattern")
          .property<&NSRegularExpression::options>("options")
          .property<&NSRegularExpression::numberOfCaptureGroups>("numberOfCaptureGroups")
          .method<&NSRegularExpression::numberOfMatchesInString_options_range>(
              "numberOfMatchesInString:options:range:"_sel)
          .method<&NSRegularExpression::rangeOfFirstMatchInString_options_range>(
              "rangeOfFirstMatchInString:options:range:"_sel)
          .method<&NSRegularExpression::firstMatchInString_options_range>("firstMatchInString:options:range:"_sel)
          .method<&NSRegularExpression::matchesInString_options_range>("matchesInString:options:range:"_sel)
          .method<&NSRegularExpression::enumerateMatchesInString_options_range_usingBlock>(
              "enumerateMatchesInString:options:range:usingBlock:"_sel)
          .method<&NSRegularExpression::stringByReplacingMatchesInString_options_range_withTemplate>(
              "stringByReplacingMatchesInString:options:range:withTemplate:"_sel)
          .method<&NSRegularExpression::replaceMatchesInString_options_range_withTemplate>(
              "replaceMatchesInString:options:range:withTemplate:"_sel)
          .build();
  return cls;
}

// Making expressions

namespace {

constexpr int64_t invalidPatternCode = 2048;
constexpr uint64_t longestText = std::numeric_limits<int32_t>::max();

void checkLength(const NSObject* receiver, std::string_view selector, const NSString* text) {
  if (text->length() <= longestText) return;
  raise(NSInvalidArgumentException, detail::methodName(receiver, selector) + ": a text of " +
                                        std::to_string(text->length()) + " units is longer than " +
                                        std::to_string(longestText));
}

uint32_t flagsOf(NSRegularExpressionOptions options) {
  constexpr struct {
    NSRegularExpressionOptions option;
    uint32_t flag;
  } flags[] = {
      {NSRegularExpressionCaseInsensitive, UREGEX_CASE_INSENSITIVE},
      {NSRegularExpressionAllowCommentsAndWhitespace, UREGEX_COMMENTS},
      {NSRegularExpressionIgnoreMetacharacters, UREGEX_LITERAL},
      {NSRegularExpressionDotMatchesLineSeparators, UREGEX_DOTALL},
      {NSRegularExpressionAnchorsMatchLines, UREGEX_MULTILINE},
      {NSRegularExpressionUseUnixLineSeparators, UREGEX_UNIX_LINES},
      {NSRegularExpressionUseUnicodeWordBoundaries, UREGEX_UWORD},
  };
  uint32_t result = 0;
  for (const auto& each : flags) result |= options & each.option ? each.flag : 0;
  return result;
}

Ref<NSError> errorOf(const NSString* pattern, UErrorCode status, const UParseError& place) {
  std::string text = "The pattern \"" + pattern->utf8() + "\" is not valid: " + u_errorName(status);
  if (place.line > 0) text += " in line " + std::to_string(place.line);
  if (place.offset >= 0) text += " at " + std::to_string(place.offset);
  return NSError::errorWithDomain_code_userInfo(
      NSCocoaErrorDomain, invalidPatternCode,
      NSDictionary::dictionaryWithEntries(
          {{NSLocalizedDescriptionKey, NSString::stringWithUTF8(text)}, {"NSInvalidValue"_ns, pattern->copy()}}));
}

}  // namespace

void NSRegularExpression::Close::operator()(URegularExpression* expression) const noexcept { uregex_close(expression); }
NSRegularExpression::NSRegularExpression() : pattern_(""_ns) {}
NSRegularExpression::~NSRegularExpression() = default;

Ref<NSRegularExpression> NSRegularExpression::regularExpressionWithPattern_options_error_ofClass(
    const NSString* pattern, NSRegularExpressionOptions options, Ref<NSError>* error, Class* cls) {
  if (cls == classObject()) return initWithPattern_options_error_ofClass(pattern, options, error, cls);
  return made<NSRegularExpression>(cls, "initWithPattern:options:error:"_sel, pattern, options, error);
}

Ref<NSRegularExpression> NSRegularExpression::initWithPattern_options_error_ofClass(const NSString* pattern,
                                                                                    NSRegularExpressionOptions options,
                                                                                    Ref<NSError>* error, Class* cls) {
  constexpr std::string_view selector = "initWithPattern:options:error:";
  Ref<NSRegularExpression> expression = create<NSRegularExpression>(cls);
  if (!pattern) detail::raiseNilArgument(expression, selector);
  checkLength(expression, selector, pattern);
  const std::u16string units = pattern->utf16();
  UErrorCode status = U_ZERO_ERROR;
  UParseError place{0, -1, {}, {}};
  expression->compiled_.reset(
      uregex_open(units.data(), static_cast<int32_t>(units.size()), flagsOf(options), &place, &status));
  if (U_FAILURE(status)) {
    if (error) *error = errorOf(pattern, status, place);
    return nullptr;
  }
  expression->pattern_ = pattern->copy();
  expression->options_ = options;
  expression->groups_ = static_cast<uint64_t>(uregex_groupCount(expression->compiled_.get(), &status));
  return expression;
}

// Matching

/// ICU's expression for one search: the compiled one where it is idle, else a clone.
class NSRegularExpression::Lease {
 public:
  explicit Lease(const NSRegularExpression* expression) : expression_(expression) {
    if (!expression->isBusy_.exchange(true, std::memory_order_acquire)) return;
    UErrorCode status = U_ZERO_ERROR;
    clone_.reset(uregex_clone(expression->compiled_.get(), &status));
    if (U_FAILURE(status)) throw std::bad_alloc();
  }
  ~Lease() {
    if (clone_) return;
    UErrorCode status = U_ZERO_ERROR;
    uregex_setText(get(), u"", 0, &status);  // the text dies before the expression
    expression_->isBusy_.store(false, std::memory_order_release);
  }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;
  URegularExpression* get() const { return clone_ ? clone_.get() : expression_->compiled_.get(); }

 private:
  const NSRegularExpression* const expression_;
  Handle clone_;
};

/// One search of one text, which outlives it unchanged.
class NSRegularExpression::Matching {
 public:
  Matching(const NSRegularExpression* expression, const NSString* text, NSMatchingOptions options, NSRange range,
           std::string_view selector);

  bool next();  ///< To the next match; false behind the last.
  NSRange range(uint64_t group = 0) const;
  Ref<NSTextCheckingResult> result();
  NSMatchingFlags flags() const;

 private:
  static const NSRegularExpression* checked(const NSRegularExpression* expression, const NSString* text, NSRange range,
                                            std::string_view selector);
  void setText(const NSString* text, NSRange part);
  void check(UErrorCode status) const;

  const NSRegularExpression* const expression_;
  const NSMatchingOptions options_;
  const std::string_view selector_;
  std::unique_ptr<char16_t[]> widened_;  // outlives the lease
  const Lease lease_;
  URegularExpression* const regex_;
  uint64_t start_ = 0;  // of what ICU sees, in the text
  bool hasBegun_ = false;
  std::vector<NSRange> ranges_;
};

const NSRegularExpression* NSRegularExpression::Matching::checked(const NSRegularExpression* expression,
                                                                  const NSString* text, NSRange range,
                                                                  std::string_view selector) {
  if (!text) detail::raiseNilArgument(expression, selector);
  if (!rangeFits(range, text->length())) detail::raiseRange(expression, selector, range, text->length());
  checkLength(expression, selector, text);
  if (expression->compiled_) return expression;
  raise(NSInternalInconsistencyException, detail::methodName(expression, selector) + ": there is no pattern");
}

NSRegularExpression::Matching::Matching(const NSRegularExpression* expression, const NSString* text,
                                        NSMatchingOptions options, NSRange range, std::string_view selector)
    : expression_(checked(expression, text, range, selector)),
      options_(options),
      selector_(selector),
      lease_(expression),
      regex_(lease_.get()) {
  const bool seesAll = options & (NSMatchingWithTransparentBounds | NSMatchingWithoutAnchoringBounds);
  setText(text, seesAll ? NSRange{0, text->length()} : range);
  UErrorCode status = U_ZERO_ERROR;
  uregex_useTransparentBounds(regex_, (options & NSMatchingWithTransparentBounds) != 0, &status);
  uregex_useAnchoringBounds(regex_, (options & NSMatchingWithoutAnchoringBounds) == 0, &status);
  if (seesAll) {
    uregex_setRegion(regex_, static_cast<int32_t>(range.location), static_cast<int32_t>(NSMaxRange(range)), &status);
  }
  check(status);
}

/// ICU sees the part alone: only that is widened.
void NSRegularExpression::Matching::setText(const NSString* text, NSRange part) {
  start_ = part.location;
  const char16_t* units = u"";
  if (part.length > 0 && text->utf16Characters()) {
    units = text->utf16Characters() + part.location;
  } else if (part.length > 0) {
    widened_.reset(new char16_t[part.length]);  // not zeroed
    detail::widen({text->asciiCharacters() + part.location, part.length}, widened_.get());
    units = widened_.get();
  }
  UErrorCode status = U_ZERO_ERROR;
  uregex_setText(regex_, units, static_cast<int32_t>(part.length), &status);
  check(status);
}

void NSRegularExpression::Matching::check(UErrorCode status) const {
  if (U_SUCCESS(status)) return;
  raise(NSGenericException, detail::methodName(expression_, selector_) + ": the search for \"" +
                                expression_->pattern_->utf8() + "\" failed: " + u_errorName(status));
}

bool NSRegularExpression::Matching::next() {
  UErrorCode status = U_ZERO_ERROR;
  const bool isFirst = !std::exchange(hasBegun_, true);
  bool found = false;
  if (!(options_ & NSMatchingAnchored)) found = uregex_findNext(regex_, &status);
  else if (isFirst) found = uregex_lookingAt(regex_, -1, &status);
  check(status);
  return found;
}

NSRange NSRegularExpression::Matching::range(uint64_t group) const {
  UErrorCode status = U_ZERO_ERROR;
  const int64_t start = uregex_start64(regex_, static_cast<int32_t>(group), &status);
  const int64_t end = uregex_end64(regex_, static_cast<int32_t>(group), &status);
  if (start < 0) return {NSNotFound, 0};
  return {start_ + static_cast<uint64_t>(start), static_cast<uint64_t>(end - start)};
}

Ref<NSTextCheckingResult> NSRegularExpression::Matching::result() {
  ranges_.clear();
  for (uint64_t group = 0; group <= expression_->groups_; ++group) ranges_.push_back(range(group));
  return NSTextCheckingResult::resultWithRanges(ranges_);
}

NSMatchingFlags NSRegularExpression::Matching::flags() const {
  UErrorCode status = U_ZERO_ERROR;
  uint64_t flags = 0;
  if (uregex_hitEnd(regex_, &status)) flags |= NSMatchingHitEnd;
  if (uregex_requireEnd(regex_, &status)) flags |= NSMatchingRequiredEnd;
  return static_cast<NSMatchingFlags>(flags);
}

// Finding

uint64_t NSRegularExpression::numberOfMatchesInString_options_range(const NSString* text, NSMatchingOptions options,
                                                                    NSRange range) const {
  Matching matching(this, text, options, range, "numberOfMatchesInString:options:range:");
  uint64_t count = 0;
  while (matching.next()) ++count;
  return count;
}

NSRange NSRegularExpression::rangeOfFirstMatchInString_options_range(const NSString* text, NSMatchingOptions options,
                                                                     NSRange range) const {
  Matching matching(this, text, options, range, "rangeOfFirstMatchInString:options:range:");
  return matching.next() ? matching.range() : NSRange{NSNotFound, 0};
}

Ref<NSTextCheckingResult> NSRegularExpression::firstMatchInString_options_range(const NSString* text,
                                                                                NSMatchingOptions options,
                                                                                NSRange range) const {
  Matching matching(this, text, options, range, "firstMatchInString:options:range:");
  return matching.next() ? matching.result() : nullptr;
}

Ref<NSArray> NSRegularExpression::matchesInString_options_range(const NSString* text, NSMatchingOptions options,
                                                                NSRange range) const {
  Matching matching(this, text, options, range, "matchesInString:options:range:");
  Ref<NSMutableArray> matches = NSMutableArray::array();
  while (matching.next()) matches->addObject(matching.result());
  return matches->copy();
}

void NSRegularExpression::enumerateMatchesInString_options_range_usingBlock(const NSString* text,
                                                                            NSMatchingOptions options, NSRange range,
                                                                            MatchAction action) const {
  const Ref<NSRegularExpression> pinned = const_cast<NSRegularExpression*>(this);
  const Ref<NSString> kept = text ? text->copy() : nullptr;
  Matching matching(this, kept, options, range, "enumerateMatchesInString:options:range:usingBlock:");
  bool stop = false;
  while (!stop && matching.next()) {
    const Ref<NSTextCheckingResult> match = matching.result();
    action(match.get(), matching.flags(), &stop);
  }
  if (!stop && options & NSMatchingReportCompletion) action(nullptr, NSMatchingCompleted, &stop);
}

// Replacing

namespace {

/// What a match gives way to: texts and groups in turn. Of ASCII units only where the text of the template is ASCII.
template <class Unit> class Template {
 public:
  struct Piece {
    size_t start, end;  // of a text, which comes first; it may be empty
    uint64_t group;     // or `noGroup`
  };
  static constexpr uint64_t noGroup = UINT64_MAX;

  Template(const NSString* text, uint64_t groups) : groupCount_(groups) {
    text->visit([&](auto units) { read(units); });
    endPiece(noGroup);
  }
  const std::vector<Piece>& pieces() const { return pieces_; }
  std::basic_string_view<Unit> textOf(const Piece& piece) const {
    return {text_.data() + piece.start, piece.end - piece.start};
  }

 private:
  template <class Units> void read(Units units) {
    for (size_t i = 0; i < units.size();) {
      const auto unit = units[i++];
      const bool hasNext = i < units.size();
      if (unit == '\\' && hasNext) text_ += static_cast<Unit>(units[i++]);
      else if (unit == '$' && hasNext && isDigit(units[i])) i = readGroup(units, i);
      else text_ += static_cast<Unit>(unit);
    }
  }
  template <class Units> size_t readGroup(Units units, size_t i) {
    uint64_t group = static_cast<uint64_t>(units[i++] - '0');
    for (; i < units.size() && isDigit(units[i]); ++i) {
      const uint64_t longer = group * 10 + static_cast<uint64_t>(units[i] - '0');
      if (longer > groupCount_) break;
      group = longer;
    }
    if (group <= groupCount_) endPiece(group);
    return i;
  }
  void endPiece(uint64_t group) { pieces_.push_back({pieces_.empty() ? 0 : pieces_.back().end, text_.size(), group}); }
  static bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

  const uint64_t groupCount_;
  std::basic_string<Unit> text_;  // of all pieces
  std::vector<Piece> pieces_;
};

/// A text that grows at its end. Matches are many and what lies between them is short: a call for each would cost as
/// much as the search.
template <class Unit> class Output {
 public:
  /// Makes room for so many at first, once it has to.
  explicit Output(size_t expected) : expected_(expected) {}
  ~Output() { std::free(units_); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  template <class Units> void append(Units units) {
    if (capacity_ - length_ < units.size()) grow(units.size());
    constexpr size_t isShort = 16;
    Unit* const to = units_ + length_;
    length_ += units.size();
    if (units.size() > isShort) {
      Text::write(to, units);
      return;
    }
    for (size_t i = 0; i < units.size(); ++i) to[i] = static_cast<Unit>(units[i]);
  }
  Ref<NSString> text() const { return Text::copied(std::basic_string_view<Unit>(units_, length_)); }

 private:
  void grow(size_t more) {
    const size_t capacity = std::max({expected_, length_ + more, capacity_ + capacity_ / 2});
    auto* units = static_cast<Unit*>(std::realloc(units_, capacity * sizeof(Unit)));
    if (!units) throw std::bad_alloc();
    units_ = units;
    capacity_ = capacity;
  }

  const size_t expected_;
  Unit* units_ = nullptr;
  size_t length_ = 0, capacity_ = 0;
};

struct Replaced {
  Ref<NSString> text;  // null where nothing was
  uint64_t count = 0;
};

template <class Unit, class Units, class Matching>
Replaced replaceAll(Matching& matching, Units units, const Template<Unit>& with) {
  Output<Unit> out(units.size());
  Replaced replaced;
  size_t done = 0;
  for (; matching.next(); ++replaced.count) {
    const NSRange match = matching.range();
    out.append(units.substr(done, match.location - done));
    done = NSMaxRange(match);
    for (const auto& piece : with.pieces()) {
      out.append(with.textOf(piece));
      if (piece.group == Template<Unit>::noGroup) continue;
      const NSRange part = piece.group == 0 ? match : matching.range(piece.group);
      if (part.length > 0) out.append(units.substr(part.location, part.length));
    }
  }
  if (replaced.count == 0) return replaced;
  out.append(units.substr(done));
  replaced.text = out.text();
  return replaced;
}

bool isASCII(const NSString* text) {
  return text->asciiCharacters() || detail::isASCII(std::u16string_view(text->utf16Characters(), text->length()));
}

template <class Matching>
Replaced replaceAll(Matching& matching, const NSString* text, const NSString* with, uint64_t groups) {
  return text->visit([&](auto units) {
    if constexpr (sizeof(units[0]) == 1) {
      if (isASCII(with)) return replaceAll(matching, units, Template<char>(with, groups));
    }
    return replaceAll(matching, units, Template<char16_t>(with, groups));
  });
}

}  // namespace

Ref<NSString> NSRegularExpression::stringByReplacingMatchesInString_options_range_withTemplate(
    const NSString* text, NSMatchingOptions options, NSRange range, const NSString* with) const {
  constexpr std::string_view selector = "stringByReplacingMatchesInString:options:range:withTemplate:";
  if (!with) detail::raiseNilArgument(this, selector);
  Matching matching(this, text, options, range, selector);
  const Replaced replaced = replaceAll(matching, text, with, groups_);
  return replaced.text ? replaced.text : text->copy();
}

uint64_t NSRegularExpression::replaceMatchesInString_options_range_withTemplate(NSMutableString* text,
                                                                                NSMatchingOptions options,
                                                                                NSRange range,
                                                                                const NSString* with) const {
  constexpr std::string_view selector = "replaceMatchesInString:options:range:withTemplate:";
  if (!with) detail::raiseNilArgument(this, selector);
  const auto replace = [&] {  // the search leans on the text, so it ends before the text changes
    Matching matching(this, text, options, range, selector);
    return replaceAll(matching, text, with, groups_);
  };
  const Replaced replaced = replace();
  if (replaced.text) text->setString(replaced.text);
  return replaced.count;
}

// Escaping

namespace {

Ref<NSString> escaped(const NSString* text, std::u16string_view special) {
  std::u16string out;
  text->visit([&](auto units) {
    for (const auto each : units) {
      const auto unit = static_cast<char16_t>(each);
      if (special.find(unit) != special.npos) out += u'\\';
      out += unit;
    }
  });
  return Text::fromUnits(out);
}

}  // namespace

Ref<NSString> NSRegularExpression::escapedPatternForString(const NSString* text) {
  if (!text) detail::raiseNilArgument(classObject(), "escapedPatternForString:");
  return escaped(text, u"*?+[(){}^$|\\./");
}

Ref<NSString> NSRegularExpression::escapedTemplateForString(const NSString* text) {
  if (!text) detail::raiseNilArgument(classObject(), "escapedTemplateForString:");
  return escaped(text, u"\\$");
}

// As an object

bool NSRegularExpression::isEqual(const NSObject* other) const {
  auto* expression = as<const NSRegularExpression>(other);
  return expression && options_ == expression->options_ && pattern_->isEqualToString(expression->pattern_);
}
uint64_t NSRegularExpression::hash() const { return pattern_->hash() * 31 + options_; }

Ref<NSString> NSRegularExpression::description() const {
  return NSString::stringWithFormat("%@ %@ 0x%llx"_ns, NSString::stringWithUTF8(detail::plainDescription(this)),
                                    pattern_, static_cast<uint64_t>(options_));
}

Ref<NSObject> NSRegularExpression::copyWithZone(NSZone*) const { return const_cast<NSRegularExpression*>(this); }

}  // namespace quoll::inline v1
