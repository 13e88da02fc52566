// SPDX-License-Identifier: MIT
// Elements that behave, and elements that don't.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/testing.h"

namespace quoll::testsupport {

/// An object with a number of its own: equal and hashed by it, and told apart by address.
class Item : public NSObject {
  QF_CLASS(Item, NSObject)
 public:
  explicit Item(int64_t value, uint64_t hash) : value_(value), hash_(hash) {}
  explicit Item(int64_t value) : Item(value, static_cast<uint64_t>(value)) {}
  Item() : Item(0) {}
  int64_t value() const { return value_; }
  void setValue(int64_t value) { value_ = value; }
  void add(NSObject*) { ++value_; }
  void bump() { ++value_; }
  bool isEqual(const NSObject* other) const override {
    if (onEqual) onEqual();
    auto* item = as<const Item>(other);
    return item && item->value_ == value_;
  }
  uint64_t hash() const override { return hash_; }
  Ref<NSObject> copyWithZone(NSZone*) const override {
    ++copies;
    return make<Item>(value_, hash_);
  }

  std::function<void()> onEqual;  ///< Runs in each comparison.
  mutable int copies = 0;

 private:
  int64_t value_;
  uint64_t hash_;
};

inline Class* Item::classObject() {
  static Class* const cls = ClassBuilder<Item>("Item")
                                .property<&Item::value, &Item::setValue>("value")
                                .method<&Item::bump>("bump")
                                .method<&Item::add>("add:")
                                .build();
  return cls;
}

/// The elements of an enumerable as the walk in batches gives them.
inline std::vector<NSObject*> walked(NSObject* enumerable) {
  std::vector<NSObject*> elements;
  forEachIn(enumerable, [&](NSObject* each) { elements.push_back(each); });
  return elements;
}

inline std::string described(const NSObject* object) { return object ? object->description()->utf8() : "null"; }

/// The descriptions, joined by blanks.
template <class Range> std::string texts(const Range& range) {
  std::string all;
  for (NSObject* each : range) all += (all.empty() ? "" : " ") + described(each);
  return all;
}

}  // namespace quoll::testsupport
