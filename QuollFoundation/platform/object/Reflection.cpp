// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Reflection.h"

#include <set>

#include "QuollFoundation/platform/object/RegistryInternal.h"

namespace quoll::inline v1 {

bool detail::mayReadAsKey(const Method& method) {
  const Implementation& implementation = *method.implementation;
  if (method.kind != MethodKind::Instance || implementation.argumentCount != 0) return false;
  if (implementation.encoding[0] == 'v') return false;
  if (method.isProperty) return true;
  if (!implementation.constReceiver || !method.isKey) return false;
  const std::string_view name = method.selector.name();
  static constexpr std::string_view families[] = {"init", "copy", "mutableCopy", "new", "create"};
  for (const std::string_view family : families) {
    if (name.starts_with(family)) return false;
  }
  return true;
}

namespace {

MethodDescription describe(const Method& method, const char* group) {
  return {method.kind == detail::MethodKind::Class ? '+' : '-', group ? group : "", std::string(method.selector.name()),
          method.implementation->encoding};
}

std::vector<GroupRecord> knownGroups() {
  detail::Registry& r = detail::registry();
  const std::lock_guard lock(r.mutex);
  return r.groups;
}

}  // namespace

std::vector<MethodDescription> methodsOf(const Class* cls) {
  std::vector<MethodDescription> result;
  if (!cls) return result;
  for (const Method& method : cls->ownMethods()) result.push_back(describe(method, nullptr));
  for (const GroupRecord& group : knownGroups()) {
    if (group.target() != cls) continue;
    for (const Method& method : group.methods()) result.push_back(describe(method, group.name()));
  }
  return result;
}

std::vector<std::string> keysOf(const Class* cls) {
  std::set<std::string> keys;
  for (const Class* c = cls; c; c = c->superclass()) {
    for (const MethodDescription& method : methodsOf(c)) {
      const detail::Entry* entry = cls->instanceTable()->find(detail::hashOf(method.selector), method.selector);
      const bool isReadable = method.sign == '-' && entry && detail::mayReadAsKey(entry->method);
      if (isReadable && (cls->isCodable() || entry->method.isProperty)) keys.insert(method.selector);
    }
  }
  return {keys.begin(), keys.end()};
}

}  // namespace quoll::inline v1
