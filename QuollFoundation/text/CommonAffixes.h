// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// What two texts have in common at their starts and at their ends. Additions to NSString.
///
///     rangeOfCommonPrefixWithString("abc"_ns, "abd"_ns)            // (0, 2)
///
/// By UTF-16 units: no case folding, no normalisation, and a result may end inside a surrogate pair. Null and empty
/// texts have nothing in common with any. Nothing is allocated. Threads: as the strings'.
namespace quoll::inline v1 {

/// In units.
QF_EXPORT uint64_t QFStringLengthOfCommonPrefixWithString(const NSString* a, const NSString* b);
QF_EXPORT uint64_t QFStringLengthOfCommonSuffixWithString(const NSString* a, const NSString* b);
QF_EXPORT uint64_t lengthOfCommonPrefixWithString(const NSString* receiver, const NSString* other);
QF_EXPORT uint64_t lengthOfCommonSuffixWithString(const NSString* receiver, const NSString* other);

/// Of the receiver. Nothing in common gives (0, 0) for the prefix, but (NSNotFound, 0) FOR THE SUFFIX.
QF_EXPORT NSRange rangeOfCommonPrefixWithString(const NSString* receiver, const NSString* other);
QF_EXPORT NSRange rangeOfCommonSuffixWithString(const NSString* receiver, const NSString* other);

}  // namespace quoll::inline v1
