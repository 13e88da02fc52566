// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// How many times this thread has allocated with `new`, in the test program or in the library, since it was made; under
/// a sanitizer, also with `malloc`.
class AllocationCount {
 public:
  AllocationCount();
  size_t made() const;

 private:
  size_t before_;
};
