// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"

/// Attributed strings in one call, and plain text put before, behind and into them. Additions to NSAttributedString and
/// NSMutableAttributedString.
///
///     auto title = attributedStringWithString_withAttributes<NSMutableAttributedString>("Hello"_ns, bold);
///     appendString(title, ", world"_ns);
///
/// Made by the class's own initialisers, so that a subclass's overrides run. Threads: as the strings'.
namespace quoll::inline v1 {

/// Of the empty text.
template <class T = NSAttributedString> Ref<T> attributedString();
/// Without attributes.
template <class T = NSAttributedString> Ref<T> attributedStringWithString(const NSString* text);
/// With the same attributes over all of it.
template <class T = NSAttributedString> Ref<T> attributedStringWithString_withAttributes(
    const NSString* text, const NSDictionary* attributes);

/// A new one of the receiver's class: of the plain texts, WITHOUT ANY ATTRIBUTES, the receiver's included. A null text
/// raises NSInvalidArgumentException.
QF_EXPORT Ref<NSAttributedString> attributedStringByPrependString(const NSAttributedString* receiver,
                                                                  const NSString* text);
QF_EXPORT Ref<NSAttributedString> attributedStringByAppendingString(const NSAttributedString* receiver,
                                                                    const NSString* text);

/// In place; without attributes, unless they are given. Null attributes are none; a null text raises
/// NSInvalidArgumentException, an index past the end NSRangeException.
QF_EXPORT void appendString(NSMutableAttributedString* receiver, const NSString* text);
QF_EXPORT void appendString_withAttributes(NSMutableAttributedString* receiver, const NSString* text,
                                           const NSDictionary* attributes);
QF_EXPORT void prependString(NSMutableAttributedString* receiver, const NSString* text);
QF_EXPORT void prependString_withAttributes(NSMutableAttributedString* receiver, const NSString* text,
                                            const NSDictionary* attributes);
QF_EXPORT void insertString_withAttributes_atIndex(NSMutableAttributedString* receiver, const NSString* text,
                                                   const NSDictionary* attributes, uint64_t index);

/// The same for a class that is known at run time.
QF_EXPORT Ref<NSAttributedString> attributedString_ofClass(Class* cls);
QF_EXPORT Ref<NSAttributedString> attributedStringWithString_ofClass(const NSString* text, Class* cls);
QF_EXPORT Ref<NSAttributedString> attributedStringWithString_withAttributes_ofClass(const NSString* text,
                                                                                    const NSDictionary* attributes,
                                                                                    Class* cls);

template <class T> Ref<T> attributedString() { return cast<T>(attributedString_ofClass(T::classObject())); }
template <class T> Ref<T> attributedStringWithString(const NSString* text) {
  return cast<T>(attributedStringWithString_ofClass(text, T::classObject()));
}
template <class T> Ref<T> attributedStringWithString_withAttributes(const NSString* text,
                                                                    const NSDictionary* attributes) {
  return cast<T>(attributedStringWithString_withAttributes_ofClass(text, attributes, T::classObject()));
}

}  // namespace quoll::inline v1
