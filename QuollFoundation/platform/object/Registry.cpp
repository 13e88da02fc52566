// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RegistryInternal.h"

#include "QuollFoundation/platform/object/LiveObjectsInternal.h"

namespace quoll::inline v1 {

namespace detail {

std::atomic<uint64_t> epoch{1};

Registry& registry() {
  static auto* const all = [] {
    auto* made = new Registry;
    for (const FolderRecord* folder : folders()) {
      made->groups.insert(made->groups.end(), folder->groups.begin(), folder->groups.end());
      for (const GroupRecord& group : folder->groups) adoptSelectors(*made, group.methods());
    }
    return made;
  }();
  return *all;
}

void adoptSelectors(Registry& registry, std::span<const Method> methods) {
  for (const Method& method : methods) registry.selectors.emplace(method.selector.name(), method.selector.record());
}

void makeImmortal(const NSObject* object) {
  if (headerOf(object).counts.load(std::memory_order_relaxed) & Header::recorded) forgetLiveObject(object);
  headerOf(object).counts.store(Header::oneWeak | Header::immortal, std::memory_order_relaxed);
}

namespace {

bool isFree(const std::atomic<const CacheLine*>& line) {
  const CacheLine* held = line.load(std::memory_order_acquire);
  return !held || !held->vtable.load(std::memory_order_relaxed);
}

/// Remembers a found method in its selector's lines, unless they are full.
void remember(Selector selector, const void* vtable, const Entry& entry, uint64_t tableEpoch) {
  auto& lines = selector.record()->lines;
  constexpr size_t count = SelectorName::lineCount;
  bool anyFree = false;
  for (const auto& line : lines) anyFree = anyFree || isFree(line);
  if (!anyFree) return;
  Registry& r = registry();
  const std::lock_guard lock(r.mutex);
  if (tableEpoch != epoch.load(std::memory_order_relaxed) || selector.record()->find(vtable)) return;
  for (size_t i = SelectorName::firstLine(vtable), n = 0; n < count; ++n, i = (i + 1) % count) {
    if (!isFree(lines[i])) continue;
    CacheLine& line = r.everyLine.emplace_back(vtable, entry.key, entry.direct);
    r.lines.push_back(&line);
    lines[i].store(&line, std::memory_order_release);
    return;
  }
}

}  // namespace

const Entry* findEntry(NSObject* receiver, Selector selector) {
  const Dispatch dispatch = Dispatch::of(receiver);
  const Entry* entry = dispatch.find(selector);
  if (!entry) return nullptr;
  if (dispatch.oneTableForVtable) remember(selector, vtableOf(receiver), *entry, dispatch.table->epoch);
  return entry;
}

}  // namespace detail

using detail::registry;
using detail::Registry;

Selector registerSelector(std::string_view name) {
  Registry& r = registry();
  const std::lock_guard lock(r.mutex);
  if (auto known = r.selectors.find(name); known != r.selectors.end()) return Selector(known->second);
  const std::string& kept = r.names.emplace_back(name);
  return Selector(r.selectors.emplace(kept, new detail::SelectorName(kept)).first->second);
}

Selector selectorIfRegistered(std::string_view name) {
  Registry& r = registry();
  static std::atomic<bool> everyClassIsBuilt{false};
  if (!everyClassIsBuilt.load(std::memory_order_acquire)) {
    allClasses();  // their selectors are known once they are built
    everyClassIsBuilt.store(true, std::memory_order_release);
  }
  const std::lock_guard lock(r.mutex);
  const auto known = r.selectors.find(name);
  return known == r.selectors.end() ? Selector() : Selector(known->second);
}

RegisterGroup::RegisterGroup(GroupRecord group) {
  Registry& r = registry();
  const std::lock_guard lock(r.mutex);
  r.groups.push_back(group);
  detail::adoptSelectors(r, group.methods());
  detail::epoch.fetch_add(1, std::memory_order_release);
  for (detail::CacheLine* line : r.lines) line->vtable.store(nullptr, std::memory_order_relaxed);
  r.lines.clear();
}

}  // namespace quoll::inline v1
