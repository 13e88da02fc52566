// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/Element.h"
#include "QuollFoundation/platform/object/ObjectList.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// Parts of a text by index, texts put together, bytes read as text. Additions to NSString.
///
///     Ref<NSString> host = substringBetweenIndex_andIndex(url, start, end);
///     Ref<NSString> path = keyPathWithComponents({"document", "title"});              // document.title
///
/// Indices count UTF-16 units, from 0. Threads: as the string's.
namespace quoll::inline v1 {

/// An empty string raises NSRangeException; null gives 0.
QF_EXPORT char16_t QFStringGetLastCharacter(const NSString* string);
/// From `i`, inclusive, to `j`, exclusive. Raises NSRangeException past the end, and when `j` is the smaller.
QF_EXPORT Ref<NSString> substringBetweenIndex_andIndex(const NSString* receiver, uint64_t i, uint64_t j);
/// Where `wanted` stands at or behind an index, unit by unit; (NSNotFound, 0) where it does not. Raises
/// NSRangeException for an index past the end.
QF_EXPORT NSRange rangeOfString_startingIndex(const NSString* receiver, const NSString* wanted, uint64_t index);
/// `prefix` and the receiver behind it. A null prefix raises NSInvalidArgumentException.
QF_EXPORT Ref<NSString> stringByPrependingString(const NSString* receiver, const NSString* prefix);

/// The descriptions of the components, joined by dots, up to the first null; null when that is the first.
QF_EXPORT Ref<NSString> keyPathWithComponents(const ObjectList* components);
inline Ref<NSString> keyPathWithComponents(std::initializer_list<Element> components);

/// What the bytes say in an encoding; null where they say nothing in it.
template <class T = NSString> Ref<T> stringWithData_encoding(const NSData* data, NSStringEncoding encoding);
/// The same for a class that is known at run time.
QF_EXPORT Ref<NSString> stringWithData_encoding_ofClass(const NSData* data, NSStringEncoding encoding, Class* cls);

inline Ref<NSString> keyPathWithComponents(std::initializer_list<Element> components) {
  return keyPathWithComponents(detail::listOf(components));
}
template <class T> Ref<T> stringWithData_encoding(const NSData* data, NSStringEncoding encoding) {
  return cast<T>(stringWithData_encoding_ofClass(data, encoding, T::classObject()));
}

}  // namespace quoll::inline v1
