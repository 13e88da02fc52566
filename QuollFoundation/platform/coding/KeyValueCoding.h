// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/values/Boxing.h"

/// Reading and writing objects by the names of their properties. The operations are NSObject's own:
///
///     person->setValue_forKey(box(42), "age"_ns);
///     Ref<NSObject> street = person->valueForKeyPath("address.street"_ns);
///
/// `valueForKey` reads, in this order: a property of that name; a property `isKey`, or without the `is` of a key
/// `isKey`; a method `key` or `isKey` that takes nothing, gives a result and only reads (a const receiver; not
/// `init...`, `copy...`, `mutableCopy...`, `new...`, `create...`; not marked `notAKey`). Additions count. Numbers and
/// structs are boxed. Any other key goes to `valueForUndefinedKey`, which raises NSUndefinedKeyException.
///
/// `setValue_forKey` calls the property's setter, under whatever name it has, else a method `setKey:`; a key `isKey`
/// of something readable under that name is written by `setKey:` too. What the setter takes is unboxed: null for a
/// number or struct goes to `setNilValueForKey`; an object of another class, or a number that doesn't fit, raises
/// NSInvalidArgumentException. Any other key goes to `setValue_forUndefinedKey`.
///
/// A class that is `notCodable` offers its properties only. Null keys raise NSInvalidArgumentException. A key path is
/// followed key by key; a null on the way gives null, and setting does nothing.
///
/// Threads: as the methods that are called.
namespace quoll::inline v1 {

/// Whether reading the key calls a method or property, and not the hook for undefined keys.
QF_EXPORT bool answersKey(const NSObject* object, const NSString* key);

}  // namespace quoll::inline v1
