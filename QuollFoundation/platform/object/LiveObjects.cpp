// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/LiveObjects.h"

#include <mutex>
#include <unordered_map>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/LiveObjectsInternal.h"

namespace quoll::inline v1 {

namespace detail {

std::atomic<bool> recordsLiveObjects{false};

namespace {

struct Recordings {
  std::mutex mutex;
  int open = 0;
  std::unordered_map<const Class*, size_t> counts;
};

Recordings& recordings() {
  static auto* const all = new Recordings;
  return *all;
}

}  // namespace

void recordLiveObject(const NSObject* object) {
  const Class* cls = object->isa();
  headerOf(object).counts.fetch_or(Header::recorded, std::memory_order_relaxed);
  Recordings& all = recordings();
  const std::lock_guard lock(all.mutex);
  ++all.counts[cls];
}

void forgetLiveObject(const NSObject* object) {
  const Class* cls = object->isa();
  Recordings& all = recordings();
  const std::lock_guard lock(all.mutex);
  --all.counts[cls];
}

}  // namespace detail

LiveObjectRecording::LiveObjectRecording() {
  detail::Recordings& all = detail::recordings();
  const std::lock_guard lock(all.mutex);
  ++all.open;
  detail::recordsLiveObjects.store(true, std::memory_order_relaxed);
}

LiveObjectRecording::~LiveObjectRecording() {
  detail::Recordings& all = detail::recordings();
  const std::lock_guard lock(all.mutex);
  if (--all.open == 0) detail::recordsLiveObjects.store(false, std::memory_order_relaxed);
}

std::map<std::string, size_t> liveObjectCounts() {
  detail::Recordings& all = detail::recordings();
  const std::lock_guard lock(all.mutex);
  std::map<std::string, size_t> result;
  for (const auto& [cls, count] : all.counts) {
    if (count) result.emplace(cls->name(), count);
  }
  return result;
}

}  // namespace quoll::inline v1
