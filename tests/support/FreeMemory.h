// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

/// Whether the machine has so many bytes to spare, for tests of huge texts: where memory is promised generously, asking
/// for it doesn't fail, using it ends the process.
inline bool hasFreeMemory(uint64_t bytes) {
  std::ifstream info("/proc/meminfo");
  std::string name;
  for (uint64_t kibibytes = 0; info >> name >> kibibytes; info.ignore(256, '\n')) {
    if (name == "MemAvailable:") return kibibytes >= bytes / 1024;
  }
  return false;
}
