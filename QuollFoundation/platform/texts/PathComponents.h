// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Paths as texts: taken apart, put together and tidied. Additions to NSString.
///
///     Ref<NSString> log = stringByAppendingPathComponent("/var/log/"_ns, "app.log"_ns);   // "/var/log/app.log"
///     pathExtension(log);                                                                  // "log"
///
/// "/" separates; a run of separators counts as one, and is one in every result. Only the expansion of a tilde asks the
/// system for something, and nothing asks what is on the disk. A null argument raises NSInvalidArgumentException.
namespace quoll::inline v1 {

/// The names between the separators. A separator at the start, or at the end behind a name, is a component "/" of its
/// own: "/", "usr", "lib", "/" for "/usr//lib/". The empty path has none.
QF_EXPORT Ref<NSArray> pathComponents(const NSString* receiver);
/// The components joined, the opposite of `pathComponents`: an empty component, or "/", at the end leaves a separator
/// there; empty ones elsewhere are left out. Whatever is no text raises NSInvalidArgumentException.
QF_EXPORT Ref<NSString> pathWithComponents(const NSArray* components);

/// Whether it starts with "/" or "~".
QF_EXPORT bool isAbsolutePath(const NSString* receiver);

/// Both with one separator between them and none at the end: "/a" for "/" and "/a/". An empty part adds nothing.
QF_EXPORT Ref<NSString> stringByAppendingPathComponent(const NSString* receiver, const NSString* component);
/// What is before the last name: "/a" for "/a/b/", "/" for "/a", and "" where there is one name only.
QF_EXPORT Ref<NSString> stringByDeletingLastPathComponent(const NSString* receiver);
/// The last name, "/" for the root.
QF_EXPORT Ref<NSString> lastPathComponent(const NSString* receiver);

/// What follows the last dot of the last name, unless the dot starts the name: "gz" for "a.tar.gz", "" for ".hidden".
QF_EXPORT Ref<NSString> pathExtension(const NSString* receiver);
/// With a dot and the extension behind the last name. Null where there is no name, or where the extension has a
/// separator; an empty extension adds nothing.
QF_EXPORT Ref<NSString> stringByAppendingPathExtension(const NSString* receiver, const NSString* extension);
/// Without the last extension and its dot.
QF_EXPORT Ref<NSString> stringByDeletingPathExtension(const NSString* receiver);

/// "~" and "~/..." with the home directory of the user, HOME or else that of the system's list; "~name" with that of
/// another. Whatever can't be expanded comes back as it is.
QF_EXPORT Ref<NSString> stringByExpandingTildeInPath(const NSString* receiver);
/// Expands a leading "~", leaves out "." and separators that are not needed, and in an absolute path takes away ".."
/// and the name before it; above the root there is the root. Links on the disk are not followed.
QF_EXPORT Ref<NSString> stringByStandardizingPath(const NSString* receiver);

}  // namespace quoll::inline v1
