// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Class.h"

#include <dlfcn.h>

#include <algorithm>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/RegistryInternal.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

using detail::Registry;
using detail::registry;
using detail::Table;

namespace detail {

Table::Table(uint64_t when, const std::vector<Line>& lines) : epoch(when) {
  size_t size = 4;
  while (size < lines.size() * 2) size *= 2;
  mask_ = size - 1;
  entries_ = std::make_unique<Entry[]>(size);
  for (const Line& line : lines) {
    const Selector selector = line.method.selector;
    size_t i = selector.hash() & mask_;
    while (entries_[i].method.selector && entries_[i].method.selector != selector) i = (i + 1) & mask_;
    entries_[i].method = line.method;
    entries_[i].direct = line.method.implementation->direct();
    entries_[i].key = line.method.implementation->key;
    entries_[i].group = line.group;
  }
  for (size_t i = 0; i < size; ++i) {
    if (const Selector setter = entries_[i].method.setter) entries_[i].setter = find(setter);
  }
}

const Entry* Table::find(uint64_t hash, std::string_view name) const {
  for (size_t i = hash & mask_;; i = (i + 1) & mask_) {
    const Entry& entry = entries_[i];
    if (!entry.method.selector) return nullptr;
    if (entry.method.selector.hash() == hash && entry.method.selector.name() == name) return &entry;
  }
}

bool isOfClass(const NSObject* object, const Class* cls) { return object->isa()->isSubclassOfClass(cls); }

void raiseWrongClass(const NSObject* object, std::string_view wanted) {
  raise(NSInvalidArgumentException, std::string(object->isa()->name()) + " is no " + std::string(wanted));
}

void raiseWrongColons(std::string_view selector, size_t arguments) {
  raise(NSInvalidArgumentException, "the selector \"" + std::string(selector) +
                                        "\" is given to a function that takes " + std::to_string(arguments) +
                                        " arguments");
}

Selector selectorOfFunction(const Class* cls, uint64_t function, std::string_view name) {
  for (const Class* c = cls; c; c = c->superclass()) {
    for (const Method& method : c->ownMethods()) {
      if (method.implementation->function == function) return method.selector;
    }
  }
  raise(NSInvalidArgumentException,
        std::string(name) + " is not registered as a method of " + std::string(cls->name()));
}

namespace {

/// A name of the library's own is taken, also while nobody has touched its class.
void claimOwnName(std::string_view name, Class* (*source)()) {
  for (const FolderRecord* folder : folders()) {
    for (const ClassRecord& record : folder->classes) {
      if (record.name == name && record.classObject != source) record.classObject();
    }
  }
}

std::string pathOfModule(Class* (*source)()) {
  Dl_info info;
  const bool known = source && dladdr(reinterpret_cast<void*>(source), &info) && info.dli_fname;
  return known ? info.dli_fname : "an unknown module";
}

}  // namespace
}  // namespace detail

Class* Class::classObject() {
  static Class* const cls = ClassBuilder<Class>("Class").build();
  return cls;
}

Class::Class(Plan plan)
    : name_(std::move(plan.name)),
      superclass_(plan.superclass),
      creator_(plan.creator),
      source_(plan.source),
      isCodable_(plan.isCodable && (!plan.superclass || plan.superclass->isCodable_)),
      methods_(std::move(plan.methods)),
      protocols_(std::move(plan.protocols)) {
  if (superclass_) ancestors_ = superclass_->ancestors_;
  ancestors_.push_back(this);
}

/// Immortal from the start. Not by `make`, which asks an object for its class where live objects are recorded: the
/// class of classes may be the one that is being built.
Class* Class::makeOne(Plan plan) {
  using Object = detail::Made<Class>;
  auto* header = static_cast<detail::Header*>(detail::allocateObject(sizeof(Object))) - 1;
  header->counts.fetch_or(detail::Header::immortal, std::memory_order_relaxed);
  return ::new (static_cast<void*>(header + 1)) Object(std::move(plan));
}

Class* Class::build(Plan plan) {
  detail::claimOwnName(plan.name, plan.source);
  Class* cls = makeOne(std::move(plan));
  Registry& r = registry();
  std::unique_lock lock(r.mutex);
  const auto [known, isNew] = r.classes.emplace(cls->name_, cls);
  if (!isNew) {
    const Class* other = known->second;
    lock.unlock();
    detail::headerOf(cls).counts.fetch_and(~detail::Header::immortal, std::memory_order_relaxed);
    const Ref<Class> refused = Ref<Class>::adopt(cls);
    raise(NSInternalInconsistencyException, "there are two classes named " + cls->name_ + ", in " +
                                                detail::pathOfModule(other->source_) + " and " +
                                                detail::pathOfModule(cls->source_));
  }
  detail::adoptSelectors(r, cls->methods_);
  return cls;
}

void Class::collect(std::vector<Table::Line>& out, Side side, std::span<const GroupRecord> groups) const {
  if (superclass_) superclass_->collect(out, side, groups);
  else if (side == Side::Class) NSObject::classObject()->collect(out, Side::Instance, groups);
  const auto belongs = [&](const Method& m) { return (m.kind == detail::MethodKind::Class) == (side == Side::Class); };
  for (const GroupRecord& group : groups) {
    if (group.target() != this) continue;
    for (const Method& method : group.methods()) {
      if (belongs(method)) out.push_back({method, group.name()});
    }
  }
  for (const Method& method : methods_) {
    if (belongs(method)) out.push_back({method, nullptr});
  }
}

const Table* Class::flatten(std::atomic<const Table*>& slot, Side side) const {
  Registry& r = registry();
  for (;;) {
    std::unique_lock lock(r.mutex);
    const uint64_t now = detail::epoch.load(std::memory_order_relaxed);
    const std::vector<GroupRecord> groups = r.groups;
    lock.unlock();  // a group's target may be a class that another thread is building
    std::vector<Table::Line> lines;
    collect(lines, side, groups);
    auto made = std::make_unique<const Table>(now, lines);
    lock.lock();
    if (detail::epoch.load(std::memory_order_relaxed) != now) continue;
    const Table* current = slot.load(std::memory_order_relaxed);
    if (current && current->epoch == now) return current;
    slot.store(made.get(), std::memory_order_release);
    return r.tables.emplace_back(std::move(made)).get();
  }
}

detail::Dispatch Class::dispatch() const { return {classTable(), false}; }

bool Class::instancesRespondToSelector(Selector selector) const { return instanceTable()->find(selector) != nullptr; }

bool Class::adoptsProtocolNamed(std::string_view protocol) const {
  for (const Class* c = this; c; c = c->superclass_) {
    if (std::find(c->protocols_.begin(), c->protocols_.end(), protocol) != c->protocols_.end()) return true;
  }
  return false;
}

bool Class::conformsToProtocol(const Protocol* protocol) const {
  return protocol && adoptsProtocolNamed(protocol->name());
}

Ref<NSObject> Class::copyWithZone(NSZone*) const { return const_cast<Class*>(this); }

Ref<NSObject> Class::create() const {
  if (!creator_) raise(NSInvalidArgumentException, "no plain instance of " + name_ + " can be made");
  return creator_();
}

Class* classNamed(std::string_view name) {
  {
    Registry& r = registry();
    const std::lock_guard lock(r.mutex);
    if (const auto known = r.classes.find(name); known != r.classes.end()) return known->second;
  }
  for (const detail::FolderRecord* folder : detail::folders()) {
    for (const detail::ClassRecord& record : folder->classes) {
      if (record.name == name) return record.classObject();
    }
  }
  return nullptr;
}

std::vector<Class*> allClasses() {
  for (const detail::FolderRecord* folder : detail::folders()) {
    for (const detail::ClassRecord& record : folder->classes) record.classObject();
  }
  std::vector<Class*> result;
  {
    Registry& r = registry();
    const std::lock_guard lock(r.mutex);
    for (const auto& [name, cls] : r.classes) result.push_back(cls);
  }
  std::sort(result.begin(), result.end(), [](Class* a, Class* b) { return a->name() < b->name(); });
  return result;
}

}  // namespace quoll::inline v1
