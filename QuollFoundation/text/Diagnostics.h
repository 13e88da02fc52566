// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Texts shown to the one who looks for a mistake. Additions to NSString.
///
///     QF_debugStringToShowRange("let x = 1\nlet y == 2\n"_ns, {16, 2})
///     // 2: let y == 2
///     //          ^^
///
/// Threads: as the string's.
namespace quoll::inline v1 {

/// The number, from 1, of the line where the range starts, the lines that it touches, and carets under it. Raises
/// NSRangeException for a range past the end, and for one that starts there.
QF_EXPORT Ref<NSString> QF_debugStringToShowRange(const NSString* receiver, NSRange range);
/// "UTF-8: 61 C3 A9": the text's bytes; an unpaired surrogate as those of U+FFFD.
QF_EXPORT Ref<NSString> QF_UTF8Name(const NSString* receiver);

}  // namespace quoll::inline v1
