// SPDX-License-Identifier: MIT
// Collections in one line, and as text: what they hold and whether they can be changed.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "QuollFoundation/collections/Toolkit.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

namespace quoll::testsupport {

using Elements = std::initializer_list<Element>;
using Entries = NSDictionary::EntryList;

inline Ref<NSArray> list(Elements objects) { return NSArray::arrayWithObjects(objects); }
inline Ref<NSMutableArray> mutableList(Elements objects) { return NSMutableArray::arrayWithObjects(objects); }
inline Ref<NSSet> setOf(Elements objects) { return NSSet::setWithObjects(objects); }
inline Ref<NSMutableSet> mutableSetOf(Elements objects) { return NSMutableSet::setWithObjects(objects); }
inline Ref<NSOrderedSet> ordered(Elements objects) { return NSOrderedSet::orderedSetWithObjects(objects); }
inline Ref<NSMutableOrderedSet> mutableOrdered(Elements objects) {
  return NSMutableOrderedSet::orderedSetWithObjects(objects);
}
inline Ref<NSDictionary> dictionary(Entries entries) { return NSDictionary::dictionaryWithEntries(entries); }
inline Ref<NSMutableDictionary> mutableDictionary(Entries entries) {
  return NSMutableDictionary::dictionaryWithEntries(entries);
}
/// The numbers from 1 to `count`.
inline Ref<NSMutableArray> numbersTo(int count) {
  Ref<NSMutableArray> numbers = NSMutableArray::array();
  for (int i = 1; i <= count; ++i) numbers->addObject(box(i));
  return numbers;
}

inline std::string shown(const NSObject* object);

template <class Range> std::string shownElements(const Range& range) {
  std::string all;
  for (const NSObject* each : range) all += (all.empty() ? "" : " ") + shown(each);
  return all;
}

/// `[1 2]` is an array, `(1 2)` a set, `<1 2>` an ordered set, `{a=1 b=2}` a dictionary; one that can be changed has
/// `mutable ` before it.
inline std::string shown(const NSObject* object) {
  const auto can = [object](Class* change) { return object->isKindOfClass(change) ? "mutable " : ""; };
  if (auto* array = as<const NSArray>(object)) {
    return can(NSMutableArray::classObject()) + ("[" + shownElements(*array) + "]");
  }
  if (auto* set = as<const NSSet>(object)) {
    return can(NSMutableSet::classObject()) + ("(" + shownElements(*set) + ")");
  }
  if (auto* set = as<const NSOrderedSet>(object)) {
    return can(NSMutableOrderedSet::classObject()) + ("<" + shownElements(*set) + ">");
  }
  if (auto* entries = as<const NSDictionary>(object)) {
    std::string all;
    for (auto [key, value] : *entries) all += (all.empty() ? "" : " ") + shown(key) + "=" + shown(value);
    return can(NSMutableDictionary::classObject()) + ("{" + all + "}");
  }
  return described(object);
}
template <class T> std::string shown(const Ref<T>& object) { return shown(static_cast<const NSObject*>(object.get())); }
inline std::string shown(bool answer) { return answer ? "YES" : "NO"; }
inline std::string shown(uint64_t number) { return number == NSNotFound ? "NSNotFound" : std::to_string(number); }

/// A claim, what is done to test it, and what is then shown.
struct Row {
  const char* claim;
  std::function<std::string()> outcome;
  const char* expected;
};
inline void expectRows(std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    try {
      EXPECT_EQ(row.outcome(), row.expected);
    } catch (const NSException& e) {
      ADD_FAILURE() << "raises " << e.what();
    }
  }
}

/// Keeps what a callback is given, as text.
class Record {
 public:
  void add(const std::string& call) { text_ += (text_.empty() ? "" : " ") + call; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// A collection of one's own that keeps how it is walked: how many objects each batch may hold.
class Batches : public NSObject {
  QF_CLASS(Batches, NSObject)
 public:
  explicit Batches(NSArray* elements) : elements_(elements) {}
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override {
    requests.push_back(objects ? count : 0);
    state->mutationsPtr = &mutations;
    state->itemsPtr = objects;
    uint64_t given = 0;
    for (; given < count && state->state < elements_->count(); ++given) {
      objects[given] = elements_->objectAtIndex(state->state++).get();
    }
    return given;
  }

  std::vector<uint64_t> requests;
  uint64_t mutations = 0;

 private:
  Ref<NSArray> elements_;
};
inline Class* Batches::classObject() {
  static Class* const cls = ClassBuilder<Batches>("Batches").build();
  return cls;
}

/// An element that does something whenever it is asked: for its key, to compare, whether it is equal.
class Meddler : public NSObject {
  QF_CLASS(Meddler, NSObject)
 public:
  explicit Meddler(const std::function<void()>* onAsked) : onAsked_(onAsked) {}
  NSString* key() const { return ask(), "key"_ns; }
  NSComparisonResult compare(NSObject*) { return ask(), NSOrderedSame; }
  bool isEqual(const NSObject* other) const override { return ask(), this == other; }

 private:
  void ask() const {
    (*onAsked_)();
    ++asked_;  // shows a sanitizer whether the object still lives
  }
  const std::function<void()>* onAsked_;
  mutable int asked_ = 0;
};
inline Class* Meddler::classObject() {
  static Class* const cls =
      ClassBuilder<Meddler>("Meddler").property<&Meddler::key>("key").method<&Meddler::compare>("compare:"_sel).build();
  return cls;
}

inline constexpr auto even = [](NSNumber* n) { return n->integerValue() % 2 == 0; };
inline constexpr auto never = [](auto...) { return false; };

}  // namespace quoll::testsupport
