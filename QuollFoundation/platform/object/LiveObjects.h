// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "QuollFoundation/platform/basics/Export.h"

namespace quoll::inline v1 {

/// Counts living objects by class while it stands: what a map still holds is no leak to a leak checker, but it shows
/// here. Objects made before the first recording began are not counted. Recordings nest. Threads: thread-safe.
class QF_EXPORT LiveObjectRecording {
 public:
  LiveObjectRecording();
  ~LiveObjectRecording();
  LiveObjectRecording(const LiveObjectRecording&) = delete;
  LiveObjectRecording& operator=(const LiveObjectRecording&) = delete;
};

/// How many recorded objects of each class live now; classes without any are left out.
QF_EXPORT std::map<std::string, size_t> liveObjectCounts();

}  // namespace quoll::inline v1
