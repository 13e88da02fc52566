// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

/// What is known at run time. Never destroyed. No function of a client is called with the lock held.
struct Registry {
  std::mutex mutex;
  std::vector<GroupRecord> groups;
  std::unordered_map<std::string_view, Class*> classes;
  std::unordered_map<std::string_view, Protocol*> protocols;
  std::unordered_map<std::string_view, const SelectorName*> selectors;
  std::deque<std::string> names;                     // of the selectors registered by text
  std::vector<CacheLine*> lines;                     // those that are not stale
  std::deque<CacheLine> everyLine;                   // a stale line may still be read: none is freed
  std::vector<std::unique_ptr<const Table>> tables;  // nor is a table
};
Registry& registry();

/// So that the selectors of the methods are found by name. With the registry's lock held.
void adoptSelectors(Registry& registry, std::span<const Method> methods);

/// The object will never be counted again, nor is it a live object in the books. Not yet shared with another thread.
void makeImmortal(const NSObject* object);

}  // namespace quoll::inline v1::detail
