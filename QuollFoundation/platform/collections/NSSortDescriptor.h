// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "QuollFoundation/platform/collections/NSArray.h"

namespace quoll::inline v1 {

/// How to order objects: by the values of a key path, which are asked by a selector, `compare:` unless another is
/// given.
///
///     auto byName = NSSortDescriptor::initWithKey_ascending("name"_ns, true);
///     people->sortUsingDescriptors(NSArray::arrayWithObjects({byName}));
///
/// A null value comes before every other. Threads: immutable.
class QF_EXPORT NSSortDescriptor : public NSObject {
  QF_CLASS(NSSortDescriptor, NSObject)
 public:
  /// Without a key, the objects themselves are compared.
  template <class T = NSSortDescriptor> static Ref<T> initWithKey_ascending(const NSString* key, bool ascending) {
    return cast<T>(initWithKey_ascending_ofClass(key, ascending, T::classObject()));
  }
  /// The selector is sent to one value with the other, and gives an NSComparisonResult.
  template <class T = NSSortDescriptor> static Ref<T> initWithKey_ascending_selector(const NSString* key,
                                                                                     bool ascending,
                                                                                     Selector selector) {
    return cast<T>(initWithKey_ascending_selector_ofClass(key, ascending, selector, T::classObject()));
  }
  template <class T = NSSortDescriptor> static Ref<T> initWithKey_ascending_comparator(const NSString* key,
                                                                                       bool ascending,
                                                                                       NSComparator comparator) {
    return cast<T>(initWithKey_ascending_comparator_ofClass(key, ascending, comparator, T::classObject()));
  }
  static Ref<NSSortDescriptor> initWithKey_ascending_ofClass(const NSString* key, bool ascending, Class* cls);
  static Ref<NSSortDescriptor> initWithKey_ascending_selector_ofClass(const NSString* key, bool ascending,
                                                                      Selector selector, Class* cls);
  static Ref<NSSortDescriptor> initWithKey_ascending_comparator_ofClass(const NSString* key, bool ascending,
                                                                        NSComparator comparator, Class* cls);

  Ref<NSString> key() const { return key_; }
  bool ascending() const { return ascending_; }
  Selector selector() const { return selector_; }  ///< Null for one with a comparator.
  virtual NSComparisonResult compareObject_toObject(NSObject* first, NSObject* second) const;
  Ref<NSSortDescriptor> reversedSortDescriptor() const;

  bool isEqual(const NSObject* other) const override;  ///< Never with a comparator, but for itself.
  uint64_t hash() const override;
  Ref<NSString> description() const override;               ///< "(key, ascending, compare:)"
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  NSSortDescriptor() = default;

 private:
  Ref<NSString> key_;
  Selector selector_ = "compare:"_sel;
  std::optional<Block<NSComparisonResult(NSObject*, NSObject*)>> comparator_;
  bool ascending_ = true;
};

}  // namespace quoll::inline v1
