// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Protocol.h"

#include <algorithm>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/RegistryInternal.h"

namespace quoll::inline v1 {

using detail::Registry;
using detail::registry;

Class* Protocol::classObject() {
  static Class* const cls = ClassBuilder<Protocol>("Protocol").build();
  return cls;
}

const ProtocolMethod* Protocol::methodNamed(Selector selector) const {
  const auto* found =
      std::find_if(methods().begin(), methods().end(), [&](const ProtocolMethod& m) { return m.selector == selector; });
  return found == methods().end() ? nullptr : found;
}

Protocol* protocolNamed(std::string_view name) {
  Registry& r = registry();
  {
    const std::lock_guard lock(r.mutex);
    if (const auto known = r.protocols.find(name); known != r.protocols.end()) return known->second;
  }
  for (const detail::FolderRecord* folder : detail::folders()) {
    for (const ProtocolRecord& record : folder->protocols) {
      if (record.name != name) continue;
      const RegisterProtocol registered(record);
      return protocolNamed(name);
    }
  }
  return nullptr;
}

std::vector<Protocol*> allProtocols() {
  for (const detail::FolderRecord* folder : detail::folders()) {
    for (const ProtocolRecord& record : folder->protocols) protocolNamed(record.name);
  }
  std::vector<Protocol*> result;
  {
    Registry& r = registry();
    const std::lock_guard lock(r.mutex);
    for (const auto& [name, protocol] : r.protocols) result.push_back(protocol);
  }
  std::sort(result.begin(), result.end(), [](Protocol* a, Protocol* b) { return a->name() < b->name(); });
  return result;
}

RegisterProtocol::RegisterProtocol(const ProtocolRecord& record) {
  Ref<Protocol> made = make<Protocol>(&record);
  Registry& r = registry();
  const std::lock_guard lock(r.mutex);
  if (!r.protocols.emplace(record.name, made.get()).second) return;  // the first of a name stays
  detail::makeImmortal(made.get());
  static_cast<void>(made.detach());
}

}  // namespace quoll::inline v1
