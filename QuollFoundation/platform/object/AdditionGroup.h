// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <span>

#include "QuollFoundation/platform/object/Method.h"

namespace quoll::inline v1 {

namespace detail {
/// One more with each group registered at run time.
QF_EXPORT extern std::atomic<uint64_t> epoch;
}  // namespace detail

/// Operations added to an existing class, under a name of their own.
///
///     constinit const AdditionGroup<NSString> shouting{"Shouting", {
///         method<&stringByShouting>("stringByShouting"_sel)}};
///     const RegisterGroup registered{shouting};
///
/// The class's own methods win over groups, and a later group over an earlier one. An aggregate, so that its list has
/// static storage: keep it at namespace scope.
template <class T> struct AdditionGroup {
  const char* name;
  std::initializer_list<Method> methods;
};

/// An addition group of any class.
class GroupRecord {
 public:
  template <class T>
  constexpr GroupRecord(const AdditionGroup<T>& group)
      : name_(&group.name), methods_(&group.methods), target_(&T::classObject) {}
  const char* name() const { return *name_; }
  std::span<const Method> methods() const { return *methods_; }
  Class* target() const { return target_(); }

 private:
  const char* const* name_;  // addresses, so that a record of a group in another file is a constant
  const std::initializer_list<Method>* methods_;
  Class* (*target_)();
};

/// Makes a client's group known for ever, from then on, also to classes and objects in use. Threads: thread-safe.
class QF_EXPORT RegisterGroup {
 public:
  explicit RegisterGroup(GroupRecord group);
};

}  // namespace quoll::inline v1
