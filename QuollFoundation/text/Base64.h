/* SPDX-License-Identifier: MIT */
#ifndef QUOLL_TEXT_BASE64_H
#define QUOLL_TEXT_BASE64_H

#include <stddef.h>

#include "QuollFoundation/platform/basics/Export.h"

QF_C_BEGIN

/// Reading base64, the text form of bytes in mail, certificates and URLs of data. Compiles as C and as C++.
///
///     size_t length;
///     char* bytes = NewBase64Decode("TWFu\nTQ==", 9, &length);  /* "ManM", 4 */
///     free(bytes);
///
/// The alphabet is the standard one: `A` to `Z`, `a` to `z`, `0` to `9`, `+`, `/`. Every other byte is skipped wherever
/// it stands: white space and line breaks, `=`, stray characters, bytes from 0x80 on. So there is no malformed text,
/// and padding is neither needed nor checked; texts padded one after the other decode as one. A last character that is
/// alone in its group of four holds no whole byte and gives none. Not for the alphabet with `-` and `_`, whose
/// characters would be skipped, nor where malformed text must be told from sound.

/// The bytes that `length` bytes of text stand for, in a buffer that the caller frees with `free`; their number goes to
/// `outputLength`, which may be null. A length with all bits set (`SIZE_MAX`) means that the text ends at its first
/// zero byte.
///
/// The buffer is never null while there is memory, also when nothing was decoded. It may be larger than what it holds.
QF_EXPORT void* NewBase64Decode(const void* text, size_t length, size_t* outputLength);

QF_C_END

#ifdef __cplusplus
#include "QuollFoundation/platform/strings/NSData.h"

namespace quoll::inline v1 {

/// The bytes that a string stands for in base64, by the rules above. Additions to NSString.
///
///     Ref<NSData> data = decodeBase64("TWFu"_ns);  // "Man"
///
/// Empty for a string that is not all ASCII, null for null.
QF_EXPORT Ref<NSData> decodeBase64(const NSString* string);

/// The same. Line breaks are always skipped, whatever `lineBreaks` says.
QF_EXPORT Ref<NSData> decodeBase64WithNewlines(const NSString* string, bool lineBreaks);

}  // namespace quoll::inline v1
#endif

#endif
