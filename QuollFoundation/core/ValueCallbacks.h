// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/collections/CFArray.h"
#include "QuollFoundation/platform/collections/CFDictionary.h"
#include "QuollFoundation/platform/object/Ref.h"

/// Callback sets that make an array or a dictionary hold plain values in place of objects.
///
///     auto counts = CFArrayCreateMutable(nullptr, 0, &kQFNSIntegerArrayCallbacks);
///     const int64_t count = 5;
///     CFArrayAppendValue(counts, &count);      // copies it: the variable may go
///     auto* first = static_cast<const int64_t*>(CFArrayGetValueAtIndex(counts, 0));
///
/// The container is given the address of a value, and keeps a copy of its own: a cell from the system's allocator,
/// which it frees. What it gives back is the cell's address, good while the value is in the container. Values are equal
/// when they are the same number, and hash to themselves. Beware of the names: some sets end in Callbacks, others in
/// CallBacks.
///
/// Threads: immutable.
namespace quoll::inline v1 {

class NSString;

/// Units of UTF-16 (`char16_t`), described as an unsigned number.
QF_EXPORT extern const CFDictionaryKeyCallBacks kQFUniCharDictionaryKeyCallbacks;
QF_EXPORT extern const CFDictionaryValueCallBacks kQFUniCharDictionaryValueCallbacks;

/// Signed integers of 64 bits.
QF_EXPORT extern const CFArrayCallBacks kQFNSIntegerArrayCallbacks;
QF_EXPORT extern const CFDictionaryKeyCallBacks kQFNSIntegerDictionaryKeyCallbacks;
QF_EXPORT extern const CFDictionaryValueCallBacks kQFNSIntegerDictionaryValueCallbacks;

/// Unsigned integers of 64 bits; described as if they were signed.
QF_EXPORT extern const CFArrayCallBacks kQFNSUIntegerArrayCallBacks;
QF_EXPORT extern const CFDictionaryKeyCallBacks kQFNSUIntegerDictionaryKeyCallBacks;
QF_EXPORT extern const CFDictionaryValueCallBacks kQFNSUIntegerDictionaryValueCallBacks;

/// Signed indices of 64 bits.
QF_EXPORT extern const CFArrayCallBacks kQFCFIndexArrayCallbacks;
QF_EXPORT extern const CFDictionaryKeyCallBacks kQFCFIndexDictionaryKeyCallbacks;
QF_EXPORT extern const CFDictionaryValueCallBacks kQFCFIndexDictionaryValueCallbacks;

/// Ranges, described as "(location, length)". For arrays only.
QF_EXPORT extern const CFArrayCallBacks kQFNSRangeArrayCallbacks;

/// Booleans of one byte, 0 or 1, described as "YES" and "NO". Store no other byte: bytes are equal when their exclusive
/// or, with 1, leaves any bit, so that 2 and 0 would be equal.
QF_EXPORT extern const CFArrayCallBacks kQFBOOLArrayCallBacks;
QF_EXPORT extern const CFDictionaryKeyCallBacks kQFBOOLDictionaryKeyCallBacks;
QF_EXPORT extern const CFDictionaryValueCallBacks kQFBOOLDictionaryValueCallBacks;

// What the sets are made of. Null is a value to none of them: retaining it raises NSInvalidArgumentException.
/// A unit of UTF-16.
QF_EXPORT const void* _QFCollectionUniCharRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionUniCharRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionUniCharCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionUniCharEqual(const void* a, const void* b);
QF_EXPORT CFHashCode _QFCollectionUniCharHash(const void* value);

/// A signed integer.
QF_EXPORT const void* _QFCollectionNSIntegerRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionNSIntegerRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionNSIntegerCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionNSIntegerEqual(const void* a, const void* b);
QF_EXPORT CFHashCode _QFCollectionNSIntegerHash(const void* value);

/// An unsigned integer.
QF_EXPORT const void* _QFCollectionNSUIntegerRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionNSUIntegerRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionNSUIntegerCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionNSUIntegerEqual(const void* a, const void* b);
QF_EXPORT CFHashCode _QFCollectionNSUIntegerHash(const void* value);

/// A signed index.
QF_EXPORT const void* _QFCollectionCFIndexRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionCFIndexRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionCFIndexCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionCFIndexEqual(const void* a, const void* b);
QF_EXPORT CFHashCode _QFCollectionCFIndexHash(const void* value);

/// A Boolean.
QF_EXPORT const void* _QFCollectionBOOLRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionBOOLRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionBOOLCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionBOOLEqual(const void* a, const void* b);
QF_EXPORT CFHashCode _QFCollectionBOOLHash(const void* value);

/// A range.
QF_EXPORT const void* _QFCollectionNSRangeRetain(CFAllocatorRef allocator, const void* value);
QF_EXPORT void _QFCollectionNSRangeRelease(CFAllocatorRef allocator, const void* value);
QF_EXPORT Ref<NSString> _QFCollectionNSRangeCopyDescription(const void* value);
QF_EXPORT bool _QFCollectionNSRangeIsEqual(const void* a, const void* b);

}  // namespace quoll::inline v1
