// SPDX-License-Identifier: MIT
// Any text is a path: its components make it again, and what tidies it leaves nothing to tidy.
#include <cstdlib>
#include <string>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/texts/PathComponents.h"

using namespace quoll;
using namespace quoll::literals;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

std::string reduced(std::string path) {
  std::string result;
  for (const char c : path) {
    if (c != '/' || result.empty() || result.back() != '/') result += c;
  }
  return result;
}

void tryPath(const NSString* path) {
  require(pathWithComponents(pathComponents(path))->utf8() == reduced(path->utf8()));
  const Ref<NSString> tidy = stringByAppendingPathComponent(path, ""_ns);
  require(
      isEqual(tidy, stringByAppendingPathComponent(stringByDeletingLastPathComponent(path), lastPathComponent(path))));
  if (const Ref<NSString> longer = stringByAppendingPathExtension(path, "xy"_ns)) {
    require(isEqual(pathExtension(longer), "xy"_ns));
    require(isEqual(stringByDeletingPathExtension(longer), tidy));
  }
  require(isAbsolutePath(path) == (path->hasPrefix("/"_ns) || path->hasPrefix("~"_ns)));
  const Ref<NSString> standard = stringByStandardizingPath(path);
  if (standard->hasPrefix("/"_ns)) require(isEqual(standard, stringByStandardizingPath(standard)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Ref<NSString> path = NSString::stringWithUTF8({reinterpret_cast<const char*>(data), size});
  if (!path) return 0;
  tryPath(path);
  tryPath(stringByAppendingPathComponent("/"_ns, path));
  tryPath(NSString::stringWithCharacters(path->utf16())->stringByAppendingString(u"é"_ns));
  return 0;
}
