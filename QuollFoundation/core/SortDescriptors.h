// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSSortDescriptor.h"

/// Sort descriptors in one call. Additions to NSSortDescriptor.
///
///     auto byName = sortDescriptorWithKey_ascending("name"_ns, true);
///     Ref<NSArray> sorted = people->sortedArrayUsingDescriptors(NSArray::arrayWithObject(byName));
///
/// Made by the class's own initialisers `initWithKey:ascending:` and `initWithKey:ascending:selector:`, so that a
/// subclass's override runs. Threads: immutable.
namespace quoll::inline v1 {

template <class T = NSSortDescriptor> Ref<T> sortDescriptorWithKey_ascending(const NSString* key, bool ascending);
/// Compares by sending `selector` to one value with the other, in place of `compare:`.
template <class T = NSSortDescriptor> Ref<T> sortDescriptorWithKey_ascending_selector(const NSString* key,
                                                                                      bool ascending,
                                                                                      Selector selector);

/// The same for a class that is known at run time.
QF_EXPORT Ref<NSSortDescriptor> sortDescriptorWithKey_ascending_ofClass(const NSString* key, bool ascending,
                                                                        Class* cls);
QF_EXPORT Ref<NSSortDescriptor> sortDescriptorWithKey_ascending_selector_ofClass(const NSString* key, bool ascending,
                                                                                 Selector selector, Class* cls);

template <class T> Ref<T> sortDescriptorWithKey_ascending(const NSString* key, bool ascending) {
  return cast<T>(sortDescriptorWithKey_ascending_ofClass(key, ascending, T::classObject()));
}
template <class T> Ref<T> sortDescriptorWithKey_ascending_selector(const NSString* key, bool ascending,
                                                                   Selector selector) {
  return cast<T>(sortDescriptorWithKey_ascending_selector_ofClass(key, ascending, selector, T::classObject()));
}

}  // namespace quoll::inline v1
