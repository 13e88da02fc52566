// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSEnumerator.h"

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1 {

namespace detail {

class ArrayEnumerator : public NSEnumerator {
 public:
  ArrayEnumerator(const NSArray* array, bool reverse)
      : array_(const_cast<NSArray*>(array)), first_(array->begin()), left_(array->count()), reverse_(reverse) {}

  Ref<NSObject> nextObject() override {
    if (!left_) {
      array_ = nullptr;
      return nullptr;
    }
    const uint64_t index = reverse_ ? left_ - 1 : given_++;
    Ref<NSObject> next = first_[static_cast<std::ptrdiff_t>(index)];
    --left_;
    return next;
  }

 private:
  Ref<NSArray> array_;
  const ArrayIterator first_;
  uint64_t given_ = 0;
  uint64_t left_;
  const bool reverse_;
};

template <class Entry> class TableEnumerator : public NSEnumerator {
 public:
  enum class What : uint8_t { Keys, Values, KeysBackwards };
  TableEnumerator(const NSObject* collection, const EntryTable<Entry>& table, What what)
      : collection_(const_cast<NSObject*>(collection)),
        watch_(collection, &table.mutations()),
        next_(table.begin()),
        end_(table.end()),
        what_(what) {}

  Ref<NSObject> nextObject() override {
    if (collection_) watch_.check();
    while (next_ != end_) {
      const Entry& entry = what_ == What::KeysBackwards ? *--end_ : *next_++;
      if (entry.key) return shown(entry);
    }
    collection_ = nullptr;
    return nullptr;
  }

 private:
  NSObject* shown(const Entry& entry) const {
    if constexpr (std::is_same_v<Entry, PairEntry>) {
      if (what_ == What::Values) return object(entry.value);
    }
    return object(entry.key);
  }

  Ref<NSObject> collection_;
  const Watch watch_;
  const Entry* next_;
  const Entry* end_;
  const What what_;
};

Ref<NSEnumerator> enumeratorOf(const NSArray* array, NSEnumerationOptions options) {
  return make<ArrayEnumerator>(array, (options & NSEnumerationReverse) != 0);
}

Ref<NSEnumerator> enumeratorOf(const NSObject* collection, const EntryTable<PairEntry>& table, bool values) {
  using Enumerator = TableEnumerator<PairEntry>;
  return make<Enumerator>(collection, table, values ? Enumerator::What::Values : Enumerator::What::Keys);
}

Ref<NSEnumerator> enumeratorOf(const NSObject* collection, const EntryTable<ElementEntry>& table, bool reverse) {
  using Enumerator = TableEnumerator<ElementEntry>;
  return make<Enumerator>(collection, table, reverse ? Enumerator::What::KeysBackwards : Enumerator::What::Keys);
}

}  // namespace detail

Class* NSEnumerator::classObject() {
  static Class* const cls = ClassBuilder<NSEnumerator>("NSEnumerator")
                                .method<&NSEnumerator::nextObject>("nextObject"_sel)
                                .method<&NSEnumerator::allObjects>("allObjects"_sel)
                                .notAKey()
                                .build();
  return cls;
}

Ref<NSObject> NSEnumerator::nextObject() { detail::refuseSelector(this, "nextObject"_sel); }

Ref<NSArray> NSEnumerator::allObjects() {
  Ref<NSMutableArray> all = NSMutableArray::array();
  while (const Ref<NSObject> next = nextObject()) all->addObject(next);
  return all->copy();
}

uint64_t NSEnumerator::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                 uint64_t count) {
  state->state = 1;
  state->itemsPtr = objects;
  state->mutationsPtr = &state->extra[0];  // the collection is watched by the enumerator itself
  if (!count) return 0;
  given_ = nextObject();
  objects[0] = given_.get();
  return given_ ? 1 : 0;
}

}  // namespace quoll::inline v1
