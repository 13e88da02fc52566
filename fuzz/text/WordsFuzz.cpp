// SPDX-License-Identifier: MIT
// Tokens and gaps are in order, disjoint and inside of any text; the tokens of word boundaries tile it.
#include <cstdlib>
#include <cstring>
#include <string>

#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/text/Words.h"

using namespace quoll;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

struct Visit {
  uint64_t end = 0;
  uint64_t calls = 0;
  uint64_t length;
};

void visit(NSString* text, uint64_t location, uint64_t length, bool, uint64_t index, bool*, void* context) {
  auto* const seen = static_cast<Visit*>(context);
  require(index == seen->calls++ || index == 0);  // 0 again for the terminator's run
  seen->calls = index + 1;
  require(location >= seen->end && length > 0);
  seen->end = location + length;
  require(seen->end <= seen->length);
  require(!text || text->length() <= length);
}

void check(const NSString* text, NSRange range, uint64_t options) {
  Visit words{0, 0, text->length()};
  enumerateWordsInRange_options_function_context(text, range, options, &visit, &words);
  const CFRange part = CFRangeMake(static_cast<int64_t>(range.location), static_cast<int64_t>(range.length));
  for (const auto& tokenizer : {QFStringCreateWordTokenizer(text), QFStringCreateWordBoundaryTokenizer(text)}) {
    Visit tokens{range.location, 0, text->length()};
    QFStringTokenizerEnumerateTokensInRange(tokenizer, text, part, options & QFTokenEnumerationNoSubstrings, &visit,
                                            &tokens, true);
  }
  const auto boundaries = QFStringCreateWordBoundaryTokenizer(text);
  int64_t behind = 0;
  while (CFStringTokenizerAdvanceToNextToken(boundaries)) {
    const CFRange token = CFStringTokenizerGetCurrentTokenRange(boundaries);
    require(token.location == behind && token.length > 0);
    behind += token.length;
  }
  require(static_cast<uint64_t>(behind) == text->length());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const uint64_t options = uint64_t{data[2]} << 6 | uint64_t{data[3]} << 24;
  std::u16string units((size - 4) / 2, u'\0');
  std::memcpy(units.data(), data + 4, units.size() * 2);
  const Ref<NSString> wide = NSString::stringWithCharacters(units);
  const Ref<NSString> narrow =
      NSString::stringWithBytes_encoding({reinterpret_cast<const char*>(data) + 4, size - 4}, NSASCIIStringEncoding);
  for (const Ref<NSString>& text : {wide, narrow}) {
    if (!text) continue;
    const uint64_t location = data[0] % (text->length() + 1);
    check(text, {location, data[1] % (text->length() - location + 1)}, options);
  }
  return 0;
}
