// SPDX-License-Identifier: MIT
// What the compilers refuse of literals. Read by scripts/check-refusals.
#include "QuollFoundation/platform/strings/NSString.h"

using namespace quoll::literals;

#if CASE == 0
quoll::NSString* wellFormed() {
  return "Gr\xC3\xBC\xC3\x9F"
         "e"_ns;
}
#elif CASE == 1  // refused: must be well-formed UTF-8
quoll::NSString* strayByte() { return "a\x80"_ns; }
#elif CASE == 2  // refused: must be well-formed UTF-8
quoll::NSString* missingByte() { return "a\xC3"_ns; }
#elif CASE == 3  // refused: must be well-formed UTF-8
quoll::NSString* overlongForm() { return "\xE0\x80\xAF"_ns; }
#elif CASE == 4  // refused: must be well-formed UTF-8
quoll::NSString* surrogate() { return "\xED\xA0\x80"_ns; }
#elif CASE == 5  // refused: must be well-formed UTF-8
quoll::NSString* beyondUnicode() { return "\xF4\x90\x80\x80"_ns; }
#elif CASE == 6  // refused: abstract | pure virtual
quoll::detail::LiteralString onTheStack(std::array<char, 1>{});
#endif
