// SPDX-License-Identifier: MIT
// Lines tile any text, whatever range and options they are visited with.
#include <cstdlib>
#include <cstring>
#include <string>

#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/text/LineModel.h"

using namespace quoll;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void visit(const NSString* text, NSRange range, uint64_t options) {
  uint64_t calls = 0;
  uint64_t end = 0;
  enumerateLines(text, range, options, [&](const QFLine& line, bool*) {
    require(line.index == calls++);
    require(line.range.location >= end);
    end = NSMaxRange(line.range);
    require(end <= text->length());
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const NSRange range{data[0], data[1]};
  const uint64_t options = uint64_t{data[2]} << 6 | data[3];
  std::u16string units((size - 4) / 2, u'\0');
  std::memcpy(units.data(), data + 4, units.size() * 2);
  const Ref<NSString> wide = NSString::stringWithCharacters(units);
  const Ref<NSString> narrow =
      NSString::stringWithBytes_encoding({reinterpret_cast<const char*>(data) + 4, size - 4}, NSASCIIStringEncoding);
  for (const Ref<NSString>& text : {wide, narrow}) {
    if (!text) continue;
    visit(text, range, options);
    visit(text->mutableCopy(), range, options);
    uint64_t covered = 0, lines = 0;
    enumerateLines(text, 0, [&](const QFLine& line, bool*) {
      require(line.range.location == covered);
      require(line.substring->length() == line.range.length);
      covered += line.range.length;
      ++lines;
    });
    require(covered == text->length());
    require(lines == numberOfLines(text));
    if (lines) require(NSMaxRange(rangeOfLine(text, lines - 1)) == text->length());
  }
  return 0;
}
