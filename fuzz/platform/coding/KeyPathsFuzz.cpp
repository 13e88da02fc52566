// SPDX-License-Identifier: MIT
// A key path from outside gives a value or raises, and teaches the runtime no name.
#include <cstdlib>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Selector.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/Boxing.h"

using namespace quoll;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const Ref<NSString> path = NSString::stringWithUTF8(bytes);
  if (!path) return 0;
  const bool wasKnown = static_cast<bool>(selectorIfRegistered(bytes));
  for (const Ref<NSObject>& object : {Ref<NSObject>("a string"_ns), Ref<NSObject>(box(5))}) {
    try {
      static_cast<void>(object->valueForKeyPath(path));
    } catch (const NSException&) {}
    try {
      object->setValue_forKeyPath(object, path);
    } catch (const NSException&) {}
  }
  if (wasKnown != static_cast<bool>(selectorIfRegistered(bytes))) std::abort();
  return 0;
}
