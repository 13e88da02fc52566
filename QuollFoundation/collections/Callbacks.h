// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstdint>
#include <type_traits>

#include "QuollFoundation/platform/object/Block.h"

/// The kinds of callbacks that the functions over collections take. All are borrowed for the length of a call and
/// allocate nothing. A callback may take an element, a key or a value as its own class, `[](NSNumber* n) {...}`: an
/// object of another class raises NSInvalidArgumentException, naming both.
namespace quoll::inline v1 {

using ElementAction = BlockRef<void(NSObject* element)>;
using IndexedAction = BlockRef<void(NSObject* element, uint64_t index)>;
using EntryAction = BlockRef<void(NSObject* key, NSObject* value)>;

using ElementPredicate = BlockRef<bool(NSObject* element)>;
using IndexedPredicate = BlockRef<bool(NSObject* element, uint64_t index)>;
using EntryPredicate = BlockRef<bool(NSObject* key, NSObject* value)>;

// The result may be null.
using ElementTransform = BlockRef<Ref<NSObject>(NSObject* element)>;
using IndexedTransform = BlockRef<Ref<NSObject>(NSObject* element, uint64_t index)>;
using EntryTransform = BlockRef<Ref<NSObject>(NSObject* key, NSObject* value)>;

// The result, which may be null, is the memo of the next call.
using Reducer = BlockRef<Ref<NSObject>(NSObject* memo, NSObject* element)>;
using EntryReducer = BlockRef<Ref<NSObject>(NSObject* memo, NSObject* key, NSObject* value)>;

namespace detail {

/// What a callable declares, as void(...); void for one that is a template.
template <class F> constexpr auto declaredShape() {
  if constexpr (PlainCall<F>) return static_cast<typename CallShape<decltype(&F::operator())>::Type*>(nullptr);
  else if constexpr (requires { typename CallShape<F>::Type; })
    return static_cast<typename CallShape<F>::Type*>(nullptr);
  else return nullptr;
}
template <class... A> constexpr int countArguments(void (*)(A...)) { return sizeof...(A); }
template <class A, class B> constexpr bool hasIndex(void (*)(A, B)) { return std::integral<B>; }
constexpr bool hasIndex(...) { return false; }

// One question after the other: each makes a template of the callback come to life.
template <class F> constexpr int argumentCount() {
  if constexpr (!std::is_null_pointer_v<decltype(declaredShape<F>())>) return countArguments(declaredShape<F>());
  else if constexpr (std::is_invocable_v<F&, NSObject*>) return 1;
  else if constexpr (std::is_invocable_v<F&, NSObject*, NSObject*>) return 2;
  else if constexpr (std::is_invocable_v<F&, NSObject*, uint64_t>) return 2;
  else if constexpr (std::is_invocable_v<F&, NSObject*, NSObject*, NSObject*>) return 3;
  else return 0;
}

}  // namespace detail

/// A callable of so many arguments: what tells the overloads of one name apart.
template <class F, int count> concept CallbackOf = detail::argumentCount<std::decay_t<F>>() == count;

/// One of two arguments, the second of which is declared as an index.
template <class F>
concept IndexedCallback = CallbackOf<F, 2> && detail::hasIndex(detail::declaredShape<std::decay_t<F>>());

}  // namespace quoll::inline v1
