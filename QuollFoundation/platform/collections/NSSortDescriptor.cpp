// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSSortDescriptor.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSSortDescriptor::classObject() {
  static Class* const cls =
      ClassBuilder<NSSortDescriptor>("NSSortDescriptor")
          .initializer<&NSSortDescriptor::initWithKey_ascending_ofClass>("initWithKey:ascending:"_sel)
          .initializer<&NSSortDescriptor::initWithKey_ascending_selector_ofClass>("initWithKey:ascending:selector:"_sel)
          .initializer<&NSSortDescriptor::initWithKey_ascending_comparator_ofClass>(
              "initWithKey:ascending:comparator:"_sel)
          .property<&NSSortDescriptor::key>("key")
          .property<&NSSortDescriptor::ascending>("ascending")
          .method<&NSSortDescriptor::selector>("selector"_sel)
          .method<&NSSortDescriptor::compareObject_toObject>("compareObject:toObject:"_sel)
          .method<&NSSortDescriptor::reversedSortDescriptor>("reversedSortDescriptor"_sel)
          .build();
  return cls;
}

Ref<NSSortDescriptor> NSSortDescriptor::initWithKey_ascending_ofClass(const NSString* key, bool ascending, Class* cls) {
  return initWithKey_ascending_selector_ofClass(key, ascending, "compare:"_sel, cls);
}

Ref<NSSortDescriptor> NSSortDescriptor::initWithKey_ascending_selector_ofClass(const NSString* key, bool ascending,
                                                                               Selector selector, Class* cls) {
  Ref<NSSortDescriptor> descriptor = create<NSSortDescriptor>(cls);
  descriptor->key_ = key ? key->copy() : nullptr;
  descriptor->ascending_ = ascending;
  if (selector) descriptor->selector_ = selector;
  return descriptor;
}

Ref<NSSortDescriptor> NSSortDescriptor::initWithKey_ascending_comparator_ofClass(const NSString* key, bool ascending,
                                                                                 NSComparator comparator, Class* cls) {
  Ref<NSSortDescriptor> descriptor = create<NSSortDescriptor>(cls);
  descriptor->key_ = key ? key->copy() : nullptr;
  descriptor->ascending_ = ascending;
  descriptor->selector_ = Selector();
  descriptor->comparator_.emplace(comparator);
  return descriptor;
}

NSComparisonResult NSSortDescriptor::compareObject_toObject(NSObject* first, NSObject* second) const {
  const bool byPath = key_ && key_->length();
  const Ref<NSObject> a = byPath && first ? first->valueForKeyPath(key_) : Ref(first);
  const Ref<NSObject> b = byPath && second ? second->valueForKeyPath(key_) : Ref(second);
  NSComparisonResult result = NSOrderedSame;
  if (!a || !b) result = compareValues(static_cast<bool>(a), static_cast<bool>(b));
  else if (comparator_) result = (*comparator_)(a, b);
  else result = send<NSComparisonResult>(a, selector_, b);
  return ascending_ ? result : compareValues<int64_t>(0, result);
}

Ref<NSSortDescriptor> NSSortDescriptor::reversedSortDescriptor() const {
  Ref<NSSortDescriptor> reversed = make<NSSortDescriptor>();
  reversed->key_ = key_;
  reversed->selector_ = selector_;
  if (comparator_) reversed->comparator_.emplace(*comparator_);
  reversed->ascending_ = !ascending_;
  return reversed;
}

bool NSSortDescriptor::isEqual(const NSObject* other) const {
  if (this == other) return true;
  auto* descriptor = as<const NSSortDescriptor>(other);
  return descriptor && !comparator_ && !descriptor->comparator_ && quoll::isEqual(key_, descriptor->key_) &&
         selector_ == descriptor->selector_ && ascending_ == descriptor->ascending_;
}
uint64_t NSSortDescriptor::hash() const { return (key_ ? key_->hash() : 0) * 2 + ascending_; }

Ref<NSString> NSSortDescriptor::description() const {
  return NSString::stringWithUTF8("(" + (key_ ? key_->utf8() : "(null)") + ", " +
                                  (ascending_ ? "ascending" : "descending") + ", " +
                                  (comparator_ ? "comparator" : std::string(selector_.name())) + ")");
}

Ref<NSObject> NSSortDescriptor::copyWithZone(NSZone*) const { return const_cast<NSSortDescriptor*>(this); }

}  // namespace quoll::inline v1
