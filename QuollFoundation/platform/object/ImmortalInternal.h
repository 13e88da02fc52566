// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1::detail {

/// An object that the compiler makes, with a header that is never counted. Declare it `constexpr`: g++ registers a
/// destructor for anything less, and the mutable header puts it into writable memory all the same.
template <class T> class Immortal {
 public:
  template <class... A> constexpr explicit Immortal(const A&... arguments) : object_(arguments...) {}
  constexpr ~Immortal() {}  // nothing destroys it
  constexpr T* get() const { return const_cast<Made<T>*>(&object_); }

 private:
  mutable Header header_{Header::immortal};
  union {
    Made<T> object_;
  };
};

}  // namespace quoll::inline v1::detail
