// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <span>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Casting.h"

namespace quoll::inline v1 {

/// A list of indices that leads into nested arrays: 1.4.0 is the first element of the fifth of the second.
///
///     auto path = NSIndexPath::indexPathWithIndexes({1, 4, 0});
///     uint64_t middle = path->indexAtPosition(1);               // 4
///
/// Threads: immutable.
class QF_EXPORT NSIndexPath : public NSObject {
  QF_CLASS(NSIndexPath, NSObject)
 public:
  template <class T = NSIndexPath> static Ref<T> indexPathWithIndex(uint64_t index) {
    return cast<T>(indexPathWithIndex_ofClass(index, T::classObject()));
  }
  template <class T = NSIndexPath> static Ref<T> indexPathWithIndexes(std::initializer_list<uint64_t> indexes) {
    return cast<T>(indexPathWithIndexes_length_ofClass(indexes.begin(), indexes.size(), T::classObject()));
  }
  template <class T = NSIndexPath> static Ref<T> indexPathWithIndexes_length(const uint64_t* indexes, uint64_t length) {
    return cast<T>(indexPathWithIndexes_length_ofClass(indexes, length, T::classObject()));
  }
  template <class T = NSIndexPath> static Ref<T> initWithIndex(uint64_t index) {
    return cast<T>(initWithIndex_ofClass(index, T::classObject()));
  }
  template <class T = NSIndexPath> static Ref<T> initWithIndexes_length(const uint64_t* indexes, uint64_t length) {
    return cast<T>(initWithIndexes_length_ofClass(indexes, length, T::classObject()));
  }
  static Ref<NSIndexPath> indexPathWithIndex_ofClass(uint64_t index, Class* cls);
  static Ref<NSIndexPath> indexPathWithIndexes_length_ofClass(const uint64_t* indexes, uint64_t length, Class* cls);
  static Ref<NSIndexPath> initWithIndex_ofClass(uint64_t index, Class* cls);
  static Ref<NSIndexPath> initWithIndexes_length_ofClass(const uint64_t* indexes, uint64_t length, Class* cls);

  uint64_t length() const { return length_; }
  uint64_t indexAtPosition(uint64_t position) const;  ///< NSNotFound past the end.
  void getIndexes(uint64_t* indexes) const;           ///< All of them.
  void getIndexes_range(uint64_t* indexes, NSRange range) const;
  std::span<const uint64_t> indexes() const { return {indexes_, length_}; }
  Ref<NSIndexPath> indexPathByAddingIndex(uint64_t index) const;
  Ref<NSIndexPath> indexPathByRemovingLastIndex() const;  ///< Of an empty path, an empty one.

  NSComparisonResult compare(
      const NSIndexPath* other) const;  ///< Index by index; a path comes before what it leads to.
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;               ///< "<NSIndexPath: 0x...> {length = 2, path = 1 - 4}"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

  ~NSIndexPath() override;

 protected:
  NSIndexPath() = default;

 private:
  uint64_t* indexes_ = nullptr;  // behind the object, or from malloc
  uint64_t length_ = 0;
};

}  // namespace quoll::inline v1
