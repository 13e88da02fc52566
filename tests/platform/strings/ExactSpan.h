// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace quoll::testing {

/// A copy of a text in a block of exactly its size, so that the address sanitizer sees a read of one unit too many.
template <class Unit>
class ExactSpan {
 public:
  explicit ExactSpan(std::basic_string_view<Unit> text) : units_(new Unit[text.size()]), size_(text.size()) {
    std::copy(text.begin(), text.end(), units_.get());
  }
  /// `size` units, each of them zero.
  explicit ExactSpan(size_t size) : units_(new Unit[size]()), size_(size) {}

  Unit* data() { return units_.get(); }
  std::basic_string_view<Unit> view() const { return {units_.get(), size_}; }

 private:
  std::unique_ptr<Unit[]> units_;
  size_t size_;
};

}  // namespace quoll::testing
