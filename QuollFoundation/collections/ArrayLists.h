// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/ObjectList.h"

/// Arrays made from several arrays, or from lists of objects. Additions to NSArray and NSMutableArray.
///
///     auto all = arrayWithObjectsFromArrays({monday, tuesday});
///     addObjects(basket, {apple, "pear"_ns, 3});                       // plain values are boxed
///     auto given = qf_nilSafeArrayWithMaxCount_objects(3, {first, middle, last});      // those that are there
///
/// A list ends at its first null, but for the last of these operations. Sent by name it travels as
/// `objects(apple, pear)`. Threads: as the arrays'.
namespace quoll::inline v1 {

/// The elements of all arrays, one array after the other; of class T, by default immutable.
template <class T = NSArray> Ref<T> arrayWithObjectsFromArrays(std::initializer_list<const NSArray*> arrays);
/// The same as an initialiser of NSMutableArray.
template <class T = NSMutableArray> Ref<T> initWithObjectsFromArrays(std::initializer_list<const NSArray*> arrays);

/// A new immutable array with the objects behind the receiver's; the receiver itself when the first object is null.
inline Ref<NSArray> arrayByAddingObjects(const NSArray* receiver, std::initializer_list<Element> objects);

inline void addObjects(NSMutableArray* receiver, std::initializer_list<Element> objects);

/// An immutable array of those of the first `count` objects that are not null. A list of fewer raises
/// NSInvalidArgumentException; what is beyond the count is not read.
template <class T = NSArray> Ref<T> qf_nilSafeArrayWithMaxCount_objects(uint32_t count,
                                                                        std::initializer_list<Element> objects);

/// The same for lists that were made already, and for classes known at run time. An object among `arrays` that is no
/// array raises NSInvalidArgumentException.
QF_EXPORT Ref<NSArray> arrayWithObjectsFromArrays_ofClass(const ObjectList* arrays, Class* cls);
QF_EXPORT Ref<NSMutableArray> initWithObjectsFromArrays_ofClass(const ObjectList* arrays, Class* cls);
QF_EXPORT Ref<NSArray> arrayByAddingObjects(const NSArray* receiver, const ObjectList* objects);
QF_EXPORT void addObjects(NSMutableArray* receiver, const ObjectList* objects);
QF_EXPORT Ref<NSArray> qf_nilSafeArrayWithMaxCount_objects_ofClass(uint32_t count, const ObjectList* objects,
                                                                   Class* cls);

/// What the operations above are made of: with the first of the list apart from the others. When the first is null, the
/// others are not read.
QF_EXPORT Ref<NSMutableArray> _arrayWithObjectsFromArray_variableArguments_ofClass(const NSArray* first,
                                                                                   const ObjectList* others,
                                                                                   Class* cls);
QF_EXPORT Ref<NSMutableArray> _initWithObjectsFromArray_variableArguments_ofClass(const NSArray* first,
                                                                                  const ObjectList* others, Class* cls);
QF_EXPORT void _addObject_variableArguments(NSMutableArray* receiver, const NSObject* first, const ObjectList* others);

template <class T> Ref<T> arrayWithObjectsFromArrays(std::initializer_list<const NSArray*> arrays) {
  return cast<T>(arrayWithObjectsFromArrays_ofClass(detail::listOf(arrays), T::classObject()));
}
template <class T> Ref<T> initWithObjectsFromArrays(std::initializer_list<const NSArray*> arrays) {
  return cast<T>(initWithObjectsFromArrays_ofClass(detail::listOf(arrays), T::classObject()));
}
inline Ref<NSArray> arrayByAddingObjects(const NSArray* receiver, std::initializer_list<Element> objects) {
  return arrayByAddingObjects(receiver, detail::listOf(objects));
}
inline void addObjects(NSMutableArray* receiver, std::initializer_list<Element> objects) {
  addObjects(receiver, detail::listOf(objects));
}
template <class T> Ref<T> qf_nilSafeArrayWithMaxCount_objects(uint32_t count, std::initializer_list<Element> objects) {
  return cast<T>(qf_nilSafeArrayWithMaxCount_objects_ofClass(count, detail::listOf(objects), T::classObject()));
}

}  // namespace quoll::inline v1
