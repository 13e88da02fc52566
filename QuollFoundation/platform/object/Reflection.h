// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/Protocol.h"

namespace quoll::inline v1 {

/// One method that a class or one of its addition groups offers.
struct MethodDescription {
  char sign;          ///< '-' for instances and initialisers, '+' for the class.
  std::string group;  ///< Empty: the class's own.
  std::string selector;
  std::string encoding;
};

/// What the class itself declares, inherited methods left out: its own first, then group by group.
/// Nothing for null.
QF_EXPORT std::vector<MethodDescription> methodsOf(const Class* cls);

/// The keys that key-value coding can read from instances, sorted; inherited ones included.
QF_EXPORT std::vector<std::string> keysOf(const Class* cls);

}  // namespace quoll::inline v1
