// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

class NSMutableString;

/// Which UTF-16 units belong together.
///
///     const NSCharacterSet* blanks = CFCharacterSetGetPredefined(kCFCharacterSetWhitespace);
///     while (i < length && blanks->characterIsMember(text->characterAtIndex(i))) ++i;
///
/// Threads: immutable.
class QF_EXPORT NSCharacterSet : public NSObject {
  QF_CLASS(NSCharacterSet, NSObject)
 public:
  static Ref<NSCharacterSet> whitespaceCharacterSet();            ///< Unicode's space separators and the tab.
  static Ref<NSCharacterSet> newlineCharacterSet();               ///< U+000A to U+000D, U+0085, U+2028, U+2029.
  static Ref<NSCharacterSet> whitespaceAndNewlineCharacterSet();  ///< Both.

  /// The units of a text, each of them.
  static Ref<NSCharacterSet> characterSetWithCharactersInString(const NSString* characters);
  Ref<NSCharacterSet> invertedSet() const;  ///< All units but these.

  virtual bool characterIsMember(char16_t unit) const = 0;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  constexpr NSCharacterSet() = default;
};

using CFCharacterSetRef = const NSCharacterSet*;

enum CFCharacterSetPredefinedSet : int64_t {
  kCFCharacterSetWhitespace = 2,
  kCFCharacterSetWhitespaceAndNewline = 3,
  kCFCharacterSetNewline = 15,
};

/// One of the sets above, which live for ever. Any other value raises NSInvalidArgumentException.
QF_EXPORT CFCharacterSetRef CFCharacterSetGetPredefined(CFCharacterSetPredefinedSet set);
/// False for a null set.
QF_EXPORT bool CFCharacterSetIsCharacterMember(CFCharacterSetRef set, char16_t unit);

/// Whether a part of the text has a unit of the set, and where: the first, or the last with NSBackwardsSearch. `found`
/// may be null, and stays as it is where there is none. A range past the end raises NSRangeException.
QF_EXPORT bool CFStringFindCharacterFromSet(const NSString* text, CFCharacterSetRef set, CFRange range,
                                            NSStringCompareOptions options, CFRange* found);
/// Takes the white space and the newlines off both ends. Null does nothing.
QF_EXPORT void CFStringTrimWhitespace(NSMutableString* text);

namespace detail {
/// What is left of a text without white space and newlines at both ends.
QF_EXPORT NSRange rangeWithoutWhitespace(const NSString* text);
}  // namespace detail

namespace detail {

/// What the predefined sets hold, without a call.
constexpr bool isWhitespaceUnit(char16_t unit) {
  if (unit < 0x80) return unit == u' ' || unit == u'\t';
  if (unit < 0x1680) return unit == 0xA0;
  return unit == 0x1680 || (unit >= 0x2000 && unit <= 0x200A) || unit == 0x202F || unit == 0x205F || unit == 0x3000;
}
constexpr bool isNewlineUnit(char16_t unit) {
  return (unit >= 0xA && unit <= 0xD) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

}  // namespace detail
}  // namespace quoll::inline v1
