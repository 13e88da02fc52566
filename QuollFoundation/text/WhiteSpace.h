// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"

/// White space and line ends, tested and taken off. Additions to NSString, NSMutableString and NSCharacterSet.
///
///     Ref<NSString> title = stringByStrippingWhitespace(line);
///     if (title->length() == 0) continue;
///
/// White space is Unicode's space separators and the tab; line ends are U+000A to U+000D, U+0085, U+2028 and U+2029.
/// Threads: as the string's.

QF_C_BEGIN

/// Whether the unit is one of the line ends above.
QF_EXPORT bool QFCharacterIsNewline(char16_t unit);

QF_C_END

namespace quoll::inline v1 {

/// Whether the text has nothing but white space and line ends. An EMPTY text raises NSInvalidArgumentException.
QF_EXPORT bool isWhitespace(const NSString* receiver);
/// Without white space and line ends at both ends.
QF_EXPORT Ref<NSString> stringByStrippingWhitespace(const NSString* receiver);
/// The same in place.
QF_EXPORT void stripWhitespace(NSMutableString* receiver);
/// With a blank for each unit of a line end: two for a carriage return with its line feed.
QF_EXPORT Ref<NSString> stringByReplacingNewlinesWithSpaces(const NSString* receiver);
/// The set of the tab, U+0009, alone.
QF_EXPORT Ref<NSCharacterSet> tabCharacterSet();

}  // namespace quoll::inline v1
