// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>
#include <utility>

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

}  // namespace quoll::inline v1
