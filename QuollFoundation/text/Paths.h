// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/NSString.h"

/// Paths of several components joined. Additions to NSString.
///
///     pathByAppendingPath("/usr"_ns, "share/doc"_ns)                                     // /usr/share/doc
///     absolutePathByAppendingRelativePath("/usr/share"_ns, "../lib"_ns)                  // /usr/lib
///
/// Threads: as the strings'.
namespace quoll::inline v1 {

/// With each component of `path` behind the receiver; a path without any gives a copy.
QF_EXPORT Ref<NSString> pathByAppendingPath(const NSString* receiver, const NSString* path);
/// The same, standardised. An absolute path raises NSInvalidArgumentException.
QF_EXPORT Ref<NSString> absolutePathByAppendingRelativePath(const NSString* receiver, const NSString* path);

}  // namespace quoll::inline v1
