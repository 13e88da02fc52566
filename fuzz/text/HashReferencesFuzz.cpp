// SPDX-License-Identifier: MIT
// Runs of hexadecimal digits are cut as a plain walk cuts them, whatever stands around them.
#include <cstdlib>
#include <cstring>
#include <string>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/HashReferences.h"

using namespace quoll;

namespace {

bool isDigit(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

std::u16string walked(const std::u16string& text, size_t length) {
  std::u16string result;
  for (size_t i = 0; i < text.size();) {
    size_t end = i;
    while (end < text.size() && isDigit(text[end])) ++end;
    if (end == i) {
      result += text[i++];
    } else {
      result += text.substr(i, end - i < length ? end - i : length);
      i = end;
    }
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const int64_t length = data[0];
  std::u16string units;
  if (data[1] & 1) {
    units.resize((size - 2) / 2);
    std::memcpy(units.data(), data + 2, units.size() * 2);
  } else {
    units.assign(data + 2, data + size);
  }
  const Ref<NSString> text = NSString::stringWithCharacters(units);
  const Ref<NSString> shortened = stringByShorteningHashRefsToLength(text, length);
  if (!shortened || shortened->utf16() != walked(units, static_cast<size_t>(length))) std::abort();
  return 0;
}
