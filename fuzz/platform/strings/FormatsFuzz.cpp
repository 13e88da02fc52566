// SPDX-License-Identifier: MIT
// Any format with any arguments gives a text or raises; it never reads what is not there.
#include <string>
#include <string_view>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSString.h"

using namespace quoll;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Ref<NSString> format = NSString::stringWithUTF8({reinterpret_cast<const char*>(data), size});
  if (!format) return 0;
  int digits = 0;  // a width or precision of millions only fills memory
  for (size_t i = 0; i < size; ++i) {
    digits = data[i] >= '0' && data[i] <= '9' ? digits + 1 : 0;
    if (digits > 4) return 0;
  }
  const auto attempt = [&](auto... arguments) {
    try {
      NSString::stringWithFormat(format, arguments...);
    } catch (const NSException&) {}
  };
  attempt();
  attempt(1);
  attempt("text"_ns, 2.5);
  attempt("C string", -3, 7ull, "object"_ns);
  attempt(1, 2, 3, 4.0, "five", "six"_ns, static_cast<void*>(nullptr));
  return 0;
}
