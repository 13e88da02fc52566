// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <span>
#include <vector>

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// The list of arguments of an operation that takes any number of objects, as it travels in a message. Owns them; nulls
/// are kept, and it is the operation that says whether one ends the list.
///
///     send(basket, "addObjects:"_sel, objects(apple, pear));
///
/// In a typed call write the list in braces: `addObjects(basket, {apple, pear})`. Threads: immutable.
class QF_EXPORT ObjectList : public NSObject {
  QF_CLASS(ObjectList, NSObject)
 public:
  static Ref<ObjectList> of(std::span<const NSObject* const> objects);

  uint64_t count() const { return objects_.size(); }
  NSObject* first() const QF_LIFETIME { return objects_.empty() ? nullptr : objects_.front().get(); }
  Ref<ObjectList> rest() const;  ///< Without the first; of an empty list an empty one.
  auto begin() const { return objects_.begin(); }
  auto end() const { return objects_.end(); }

 protected:
  ObjectList() = default;

 private:
  std::vector<Ref<NSObject>> objects_;
};

template <std::convertible_to<const NSObject*>... T> Ref<ObjectList> objects(const T&... each) {
  const std::initializer_list<const NSObject*> list{static_cast<const NSObject*>(each)...};
  return ObjectList::of({list.begin(), list.size()});
}

}  // namespace quoll::inline v1
