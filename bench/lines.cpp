// SPDX-License-Identifier: MIT
#include "bench/lines.h"

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/LineModel.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

/// Texts in lines of 80 as our strings keep them: ASCII in bytes, the others in units.
struct Ascii {
  static Ref<NSString> text(std::size_t bytes) { return NSString::stringWithUTF8(lines80_ascii(bytes)); }
};
struct UTF16 {
  static Ref<NSString> text(std::size_t bytes) { return NSString::stringWithCharacters(lines80_utf16(bytes)); }
};
template <class Storage, std::size_t MiB = (kTextBytes >> 20)>
const NSString* lines80() {
  static const Ref<NSString> text = Storage::text(MiB << 20);
  return text;
}

/// `body(text, acc)` as in run_lines; every line is counted.
template <class Body>
void walks(State& s, const NSString* text, Body body) {
  text->visit([&](auto units) {
    run_lines(s, units, lines_of_80(units), [&](auto, std::uint64_t& acc) { return body(text, acc); });
  });
}

struct Visited {
  std::size_t lines = 0;
  std::uint64_t units = 0;
};
void visit(NSString*, std::uint64_t, std::uint64_t length, bool, std::uint64_t, bool*, void* context) {
  auto& visited = *static_cast<Visited*>(context);
  ++visited.lines;
  visited.units += length;
}
std::size_t enumerate(const NSString* text, std::uint64_t& acc) {
  Visited visited;
  enumerateLinesInRange_options_function_context(text, {0, text->length()}, QFLineEnumerationNoLineSubstrings, visit,
                                                 &visited);
  acc = visited.units;
  return visited.lines;
}

template <class Storage, std::size_t MiB>
void no_substrings(State& s) {
  walks(s, lines80<Storage, MiB>(), enumerate);
}
OURS((no_substrings<Ascii, 64>), "lines80_ascii");
OURS((no_substrings<UTF16, 64>), "lines80_utf16");
OURS((no_substrings<Ascii, 256>), "lines_scaling_ascii");
OURS((no_substrings<UTF16, 256>), "lines_scaling_utf16");
PEER((no_substrings<Ascii, 16>), "lines_scaling_ascii/quoll-16-MiB");
PEER((no_substrings<UTF16, 16>), "lines_scaling_utf16/quoll-16-MiB");

/// The form for C++, over all six terminators.
void closure(State& s) {
  const Ref<NSString> text = NSString::stringWithCharacters(text16());
  run_lines(s, text16(), lines_all(), [&](auto&, std::uint64_t& acc) {
    std::size_t n = 0;
    enumerateLines(text, QFLineEnumerationNoLineSubstrings, [&](const QFLine& line, bool*) {
      acc += line.range.length;
      ++n;
    });
    return n;
  });
}
OURS(closure, "lines_utf16");

template <class Storage>
void substrings(State& s) {
  walks(s, lines80<Storage>(), [](const NSString* text, std::uint64_t& acc) {
    std::size_t n = 0;
    enumerateLines(text, QFLineEnumerationExcludeTerminators, [&](const QFLine& line, bool*) {
      acc += line.substring->length();
      ++n;
    });
    return n;
  });
}
OURS(substrings<Ascii>, "line_substrings_ascii");
OURS(substrings<UTF16>, "line_substrings_utf16");

void last_line(State& s) {
  walks(s, lines80<UTF16>(), [](const NSString* text, std::uint64_t& acc) {
    const std::size_t lines = text->length() / 80;
    const NSRange last = rangeOfLine(text, lines - 1);
    acc = last.location;
    return NSMaxRange(last) == text->length() ? lines : 0;
  });
}
OURS(last_line, "last_line_range");
PEER((no_substrings<UTF16, 64>), "last_line_range/quoll-one-scan");

}  // namespace
