// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Casting.h"

namespace quoll::inline v1 {

template <class T> class ClassBuilder;

namespace detail {

struct Entry {
  Method method;
  AnyFunction direct = nullptr;
  uint64_t key = 0;
  const char* group = nullptr;                                 ///< Null: the class's own.
  const Entry* setter = nullptr;                               ///< Of a property that can be written.
  mutable std::atomic<NSMethodSignature*> signature{nullptr};  ///< Made when first asked for; immortal.
};

/// From selector to entry, inherited ones included. Immutable once published.
class Table {
 public:
  struct Line {
    Method method;
    const char* group;
  };
  Table(uint64_t epoch, const std::vector<Line>& lines);
  const Entry* find(Selector selector) const { return find(selector.hash(), selector.name()); }
  QF_EXPORT const Entry* find(uint64_t hash, std::string_view name) const;
  const uint64_t epoch;

 private:
  size_t mask_;
  std::unique_ptr<Entry[]> entries_;
};

/// Where a receiver's methods are.
struct Dispatch {
  const Table* table;
  bool oneTableForVtable;  ///< So that a line may be remembered by vtable.
  bool initializersOnly = false;
  static Dispatch of(const NSObject* receiver) { return receiver->dispatch(); }
  const Entry* find(Selector selector) const {
    const Entry* entry = table->find(selector);
    return entry && initializersOnly && entry->method.kind != MethodKind::Initializer ? nullptr : entry;
  }
};

/// Null: unknown. Remembers what it found in the selector's lines.
QF_EXPORT const Entry* findEntry(NSObject* receiver, Selector selector);

}  // namespace detail

/// A class, as an object: what it is called, what it inherits, and its two tables of methods, one for its instances
/// and one for itself. A message to a class is looked up among the class methods, then among the root's instance
/// methods. Immortal.
///
/// Threads: thread-safe.
class QF_EXPORT Class : public NSObject {
  QF_CLASS(Class, NSObject)
 public:
  std::string_view name() const { return name_; }
  Class* superclass() const { return superclass_; }   ///< Null for a root.
  bool isSubclassOfClass(const Class* other) const {  ///< Also true of the class itself; false for null.
    const size_t depth = other ? other->ancestors_.size() : 0;
    return depth && ancestors_.size() >= depth && ancestors_[depth - 1] == other;
  }
  bool instancesRespondToSelector(Selector selector) const;
  Ref<NSMethodSignature> instanceMethodSignatureForSelector(Selector selector) const;  ///< Null: unknown.
  bool adoptsProtocolNamed(std::string_view protocol) const;                           ///< Itself or by inheritance.
  bool isCodable() const { return isCodable_; }  ///< Whether key-value coding uses methods, not properties only.
  const std::vector<Method>& ownMethods() const { return methods_; }

  /// A plain instance; raises when the class has no default constructor.
  Ref<NSObject> create() const;

  Ref<NSString> description() const override;
  bool conformsToProtocol(const Protocol* protocol) const override;  ///< What its instances conform to.
  Ref<NSObject> copyWithZone(NSZone*) const override;                ///< Itself.

  const detail::Table* instanceTable() const { return table(instanceTable_, Side::Instance); }
  const detail::Table* classTable() const { return table(classTable_, Side::Class); }

 protected:
  struct Plan {
    std::string name;
    Class* superclass = nullptr;
    Ref<NSObject> (*creator)() = nullptr;
    Class* (*source)() = nullptr;
    bool isCodable = true;
    std::vector<Method> methods;
    std::vector<std::string> protocols;
  };
  explicit Class(Plan plan);

 private:
  template <class T> friend class ClassBuilder;
  enum class Side : uint8_t { Instance, Class };
  static Class* build(Plan plan);
  static Class* makeOne(Plan plan);
  const detail::Table* table(std::atomic<const detail::Table*>& slot, Side side) const {
    const detail::Table* table = slot.load(std::memory_order_acquire);
    if (table && table->epoch == detail::epoch.load(std::memory_order_acquire)) [[likely]]
      return table;
    return flatten(slot, side);
  }
  const detail::Table* flatten(std::atomic<const detail::Table*>& slot, Side side) const;
  void collect(std::vector<detail::Table::Line>& out, Side side, std::span<const GroupRecord> groups) const;
  detail::Dispatch dispatch() const override;

  const std::string name_;
  Class* const superclass_;
  Ref<NSObject> (*const creator_)();
  Class* (*const source_)();  // for the module's path
  const bool isCodable_;
  const std::vector<Method> methods_;
  const std::vector<std::string> protocols_;
  std::vector<const Class*> ancestors_;  // the root first, itself last
  mutable std::atomic<const detail::Table*> instanceTable_{nullptr}, classTable_{nullptr};
};

/// The class of this name, built if nobody has touched it; null when there is none.
QF_EXPORT Class* classNamed(std::string_view name);
/// Every class, sorted by name, also those that nobody has touched.
QF_EXPORT std::vector<Class*> allClasses();

/// A plain instance of `cls`, which is T or a subclass; what initialisers start from. Null for null.
template <class T> Ref<T> create(const Class* cls) { return cls ? cast<T>(cls->create()) : nullptr; }

}  // namespace quoll::inline v1
