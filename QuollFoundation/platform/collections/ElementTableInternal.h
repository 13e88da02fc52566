// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "QuollFoundation/platform/collections/EntryTable.h"
#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"

/// What sets and ordered sets do alike: a table of elements that holds them.
namespace quoll::inline v1::detail {

using ElementTable = EntryTable<ElementEntry>;

/// False when an equal element is there; it stays.
inline bool addElement(ElementTable& table, const NSObject* object) {
  uint64_t hash = 0;
  if (table.find(object, ObjectKeys(), &hash)) return false;
  table.append({const_cast<NSObject*>(object), hash});
  static_cast<void>(retained(object));
  return true;
}

/// The same for an element of another table, whose hash is known.
inline void addEntry(ElementTable& table, const ElementEntry& entry) {
  if (table.find(entry.key, entry.hash, ObjectKeys())) return;
  table.append(entry);
  static_cast<void>(retained(entry.key));
}

inline void addElements(ElementTable& table, NSObject* const* objects, uint64_t count, const NSObject* receiver,
                        std::string_view selector) {
  for (uint64_t i = 0; i < count; ++i) {
    if (!objects[i]) raiseNilArgument(receiver, selector);
    addElement(table, objects[i]);
  }
}

inline void addElements(ElementTable& table, const NSArray* array) {
  if (!array) return;
  const Ref<NSArray> given = array->copy();
  for (NSObject* each : *given) addElement(table, each);
}

/// All of them; of the table itself, none.
inline void addEntries(ElementTable& table, const ElementTable& other) {
  if (&table == &other) return;
  if (other.count() > table.count()) table.reserve(uint64_t{table.count()} + other.count());
  for (const ElementEntry& entry : other) {
    if (entry.key) addEntry(table, entry);
  }
}

inline void copyElements(ElementTable& table, const ElementTable& other) {
  table.copyFrom(other);
  for (const ElementEntry& entry : table) static_cast<void>(retained(entry.key));
}

/// What the table held dies when it is empty already.
inline void dropAll(ElementTable& table) {
  ElementTable old;
  old.swap(table);
  for (const ElementEntry& entry : old) {
    if (entry.key) drop(entry.key);
  }
}

/// Removes the elements for which `removes(entry)` holds; they die when the table is whole again.
template <class Removes> void removeElements(ElementTable& table, const NSObject* owner, Removes removes) {
  for (const ElementEntry& entry : table.removeWhere(owner, removes)) drop(entry.key);
}

inline bool contains(const ElementTable& table, const ElementEntry& entry) {
  return table.find(entry.key, entry.hash, ObjectKeys());
}

inline bool isSubset(const ElementTable& table, const ElementTable& other) {
  if (table.count() > other.count()) return false;
  for (const ElementEntry& entry : table) {
    if (entry.key && !contains(other, entry)) return false;
  }
  return true;
}

inline bool intersects(const ElementTable& table, const ElementTable& other) {
  for (const ElementEntry& entry : table) {
    if (entry.key && contains(other, entry)) return true;
  }
  return false;
}

inline Ref<NSArray> arrayOf(const ElementTable& table) {
  std::vector<NSObject*> objects;
  objects.reserve(table.count());
  for (const ElementEntry& entry : table) {
    if (entry.key) objects.push_back(entry.key);
  }
  return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

/// The same in any order.
inline uint64_t hashOf(const ElementTable& table) {
  uint64_t hash = table.count();
  for (const ElementEntry& entry : table) {
    if (entry.key) hash += entry.hash;
  }
  return hash;
}

}  // namespace quoll::inline v1::detail
