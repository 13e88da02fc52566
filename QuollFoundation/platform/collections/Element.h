// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <type_traits>
#include <utility>
#include <vector>

#include "QuollFoundation/platform/object/ObjectList.h"
#include "QuollFoundation/platform/values/Boxing.h"

namespace quoll::inline v1 {

class Element;
namespace detail {
template <class T> concept Boxable = !std::is_same_v<std::decay_t<T>, Element> && requires(const T& value) {
  { box(value) } -> std::convertible_to<Ref<NSObject>>;
};
}  // namespace detail

/// One element of a list that a collection is made from: an object, null, or a plain value, which is boxed.
///
///     auto list = NSArray::arrayWithObjects({1, 2.5, "three", NSMakeRange(4, 5), object});
///
/// Such a list ends at its first null.
class Element {
 public:
  template <detail::Boxable T> Element(const T& value) : object_(box(value)) {}

  NSObject* get() const QF_LIFETIME { return object_.get(); }
  explicit operator bool() const { return static_cast<bool>(object_); }

 private:
  Ref<NSObject> object_;
};

namespace detail {
/// A list in braces as it travels in a message.
template <class T> Ref<ObjectList> listOf(std::initializer_list<T> items) {
  std::vector<const NSObject*> pointers;
  pointers.reserve(items.size());
  for (const T& each : items) {
    if constexpr (std::is_pointer_v<T>) pointers.push_back(each);
    else pointers.push_back(each.get());
  }
  return ObjectList::of(pointers);
}
}  // namespace detail

}  // namespace quoll::inline v1
