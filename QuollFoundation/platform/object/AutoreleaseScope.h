// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Ref.h"

namespace quoll::inline v1 {

class NSObject;

/// Keeps what was autoreleased on this thread since it began, until it ends. Scopes nest.
///
/// Run-loop turns, operations and commands open one each; with none open, an autoreleased object lives until its
/// thread ends. Threads: thread-bound; a scope lives on the stack of one thread.
class QF_EXPORT AutoreleaseScope {
 public:
  AutoreleaseScope();
  ~AutoreleaseScope();
  AutoreleaseScope(const AutoreleaseScope&) = delete;
  AutoreleaseScope& operator=(const AutoreleaseScope&) = delete;

 private:
  size_t begin_;
};

namespace detail {
/// What `autorelease` calls.
QF_EXPORT void keepUntilScopeEnds(Ref<NSObject> object);
}  // namespace detail

/// Hands a reference to the innermost scope and gives the object borrowed, for interfaces that return plain pointers.
template <class T> T* autorelease(Ref<T> object) {
  T* borrowed = object.get();
  if (borrowed) detail::keepUntilScopeEnds(std::move(object));
  return borrowed;
}

}  // namespace quoll::inline v1
