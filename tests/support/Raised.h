// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::testsupport {

/// What `body` raises, as "name: reason"; empty when it raises nothing. An exception of another kind passes.
template <class Body> std::string raised(Body body) {
  try {
    body();
  } catch (const NSException& e) {
    return e.what();
  }
  return {};
}

/// The text of a string, to compare; "(null)" for null.
inline std::string text(const NSString* string) { return string ? string->utf8() : "(null)"; }

}  // namespace quoll::testsupport
