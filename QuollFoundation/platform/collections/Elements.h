// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstddef>
#include <iterator>
#include <ranges>

#include "QuollFoundation/platform/collections/EntryTable.h"
#include "QuollFoundation/platform/collections/Enumeration.h"
#include "QuollFoundation/platform/object/Casting.h"

/// How collections are C++ ranges: iterators over their objects, and views of them as their own class.
namespace quoll::inline v1 {

namespace detail {

/// Watches a collection for changes.
class Watch {
 public:
  Watch() = default;
  Watch(const NSObject* collection, const uint64_t* mutations)
      : collection_(collection), mutations_(mutations), expected_(*mutations) {}
  void check() const {
    if (*mutations_ != expected_) [[unlikely]]
      objc_enumerationMutation(const_cast<NSObject*>(collection_));
  }

 private:
  const NSObject* collection_ = nullptr;
  const uint64_t* mutations_ = nullptr;
  uint64_t expected_ = 0;
};

}  // namespace detail

/// Walks the objects of an array. Reading an element after the array has changed raises NSGenericException.
class ArrayIterator {
 public:
  using iterator_concept = std::random_access_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = NSObject*;
  using difference_type = std::ptrdiff_t;
  using reference = NSObject*;
  using pointer = void;

  ArrayIterator() = default;
  ArrayIterator(void* const* at, detail::Watch watch) : at_(at), watch_(watch) {}
  NSObject* operator*() const {
    watch_.check();
    return static_cast<NSObject*>(*at_);
  }
  NSObject* operator[](difference_type n) const { return *(*this + n); }
  ArrayIterator& operator++() { return *this += 1; }
  ArrayIterator& operator--() { return *this -= 1; }
  ArrayIterator operator++(int) {
    ArrayIterator old = *this;
    ++at_;
    return old;
  }
  ArrayIterator operator--(int) {
    ArrayIterator old = *this;
    --at_;
    return old;
  }
  ArrayIterator& operator+=(difference_type n) {
    at_ += n;
    return *this;
  }
  ArrayIterator& operator-=(difference_type n) {
    at_ -= n;
    return *this;
  }
  friend ArrayIterator operator+(ArrayIterator i, difference_type n) { return i += n; }
  friend ArrayIterator operator+(difference_type n, ArrayIterator i) { return i += n; }
  friend ArrayIterator operator-(ArrayIterator i, difference_type n) { return i -= n; }
  friend difference_type operator-(const ArrayIterator& a, const ArrayIterator& b) { return a.at_ - b.at_; }
  friend bool operator==(const ArrayIterator& a, const ArrayIterator& b) { return a.at_ == b.at_; }
  friend auto operator<=>(const ArrayIterator& a, const ArrayIterator& b) { return a.at_ <=> b.at_; }

 private:
  void* const* at_ = nullptr;
  detail::Watch watch_;
};

/// What a walk over a dictionary gives: `for (auto [key, value] : *dictionary)`.
struct DictionaryEntry {
  NSObject* key;
  NSObject* value;
};

namespace detail {
inline NSObject* shown(const ElementEntry& entry) { return entry.key; }
inline DictionaryEntry shown(const PairEntry& entry) {
  return {static_cast<NSObject*>(entry.key), static_cast<NSObject*>(entry.value)};
}

/// Walks the entries of a table. Reading one after the collection has changed raises NSGenericException.
template <class Entry> class TableIterator {
 public:
  using iterator_concept = std::forward_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = decltype(shown(std::declval<Entry>()));
  using difference_type = std::ptrdiff_t;
  using reference = value_type;
  using pointer = void;

  TableIterator() = default;
  TableIterator(const Entry* at, const Entry* end, Watch watch) : at_(at), end_(end), watch_(watch) {}
  value_type operator*() const {
    watch_.check();
    return shown(*at_);
  }
  TableIterator& operator++() {
    watch_.check();
    do ++at_;
    while (at_ != end_ && !at_->key);
    return *this;
  }
  TableIterator operator++(int) {
    TableIterator old = *this;
    ++*this;
    return old;
  }
  friend bool operator==(const TableIterator& a, const TableIterator& b) { return a.at_ == b.at_; }

 private:
  const Entry* at_ = nullptr;
  const Entry* end_ = nullptr;
  Watch watch_;
};

/// Walks another iterator's objects as Ts.
template <class T, class Objects> class CastIterator {
 public:
  using iterator_concept = std::conditional_t<std::random_access_iterator<Objects>, std::random_access_iterator_tag,
                                              std::forward_iterator_tag>;
  using iterator_category = std::input_iterator_tag;
  using value_type = T*;
  using difference_type = std::ptrdiff_t;
  using reference = T*;
  using pointer = void;

  CastIterator() = default;
  explicit CastIterator(Objects at) : at_(at) {}
  T* operator*() const { return cast<T>(*at_); }
  CastIterator& operator++() {
    ++at_;
    return *this;
  }
  CastIterator operator++(int) { return CastIterator(at_++); }
  friend bool operator==(const CastIterator& a, const CastIterator& b) { return a.at_ == b.at_; }

  // Over an array only.
  T* operator[](difference_type n) const requires std::random_access_iterator<Objects>
  {
    return cast<T>(at_[n]);
  }
  CastIterator& operator--() requires std::random_access_iterator<Objects>
  {
    --at_;
    return *this;
  }
  CastIterator operator--(int) requires std::random_access_iterator<Objects>
  {
    return CastIterator(at_--);
  }
  CastIterator& operator+=(difference_type n) requires std::random_access_iterator<Objects>
  {
    at_ += n;
    return *this;
  }
  CastIterator& operator-=(difference_type n) requires std::random_access_iterator<Objects>
  {
    at_ -= n;
    return *this;
  }
  friend CastIterator operator+(CastIterator i, difference_type n) requires std::random_access_iterator<Objects>
  {
    return i += n;
  }
  friend CastIterator operator+(difference_type n, CastIterator i) requires std::random_access_iterator<Objects>
  {
    return i += n;
  }
  friend CastIterator operator-(CastIterator i, difference_type n) requires std::random_access_iterator<Objects>
  {
    return i -= n;
  }
  friend difference_type operator-(const CastIterator& a, const CastIterator& b)
      requires std::random_access_iterator<Objects>
  {
    return a.at_ - b.at_;
  }
  friend auto operator<=>(const CastIterator& a, const CastIterator& b) requires std::random_access_iterator<Objects>
  {
    return a.at_ <=> b.at_;
  }

 private:
  Objects at_;
};

}  // namespace detail

/// The elements of a collection as Ts, see `elements`.
template <class T, class Collection> class ElementsView : public std::ranges::view_base {
 public:
  using Iterator = detail::CastIterator<T, decltype(std::declval<const Collection&>().begin())>;

  ElementsView() = default;
  explicit ElementsView(Ref<Collection> collection) : collection_(std::move(collection)) {}
  Iterator begin() const { return collection_ ? Iterator(collection_->begin()) : Iterator(); }
  Iterator end() const { return collection_ ? Iterator(collection_->end()) : Iterator(); }
  size_t size() const { return collection_ ? collection_->count() : 0; }
  bool empty() const { return size() == 0; }

 private:
  Ref<Collection> collection_;
};

/// A view of an array, a set or an ordered set whose elements are Ts. It keeps the collection alive, allocates nothing,
/// and raises NSInvalidArgumentException at an element of another class. Null gives an empty view.
///
///     for (NSString* name : elements<NSString>(names)) ...
template <class T, class Collection> requires std::derived_from<Collection, NSObject>
ElementsView<T, Collection> elements(Collection* collection) {
  return ElementsView<T, Collection>(collection);
}
template <class T, class Collection> requires std::derived_from<Collection, NSObject>
ElementsView<T, Collection> elements(const Collection* collection) {
  return ElementsView<T, Collection>(const_cast<Collection*>(collection));
}
template <class T, class Collection> ElementsView<T, Collection> elements(const Ref<Collection>& collection) {
  return ElementsView<T, Collection>(collection);
}

}  // namespace quoll::inline v1
