// SPDX-License-Identifier: MIT
// Any text is a method's types or raises; an invocation of it never touches memory beyond its arguments.
#include <string>
#include <vector>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSInvocation.h"

using namespace quoll;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string types(reinterpret_cast<const char*>(data), size);
  try {
    const Ref<NSMethodSignature> signature = NSMethodSignature::signatureWithObjCTypes(types.c_str());
    const Ref<NSInvocation> invocation = NSInvocation::invocationWithMethodSignature(signature);
    for (uint64_t i = 2; i < signature->numberOfArguments(); ++i) {
      const size_t length = detail::sizeOfType(signature->getArgumentTypeAtIndex(i));
      if (length > 4096) continue;
      std::vector<unsigned char> value(length);
      invocation->setArgument_atIndex(value.data(), static_cast<int64_t>(i));
      invocation->getArgument_atIndex(value.data(), static_cast<int64_t>(i));
    }
  } catch (const NSException&) {}
  return 0;
}
