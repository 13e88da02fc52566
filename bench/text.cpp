// SPDX-License-Identifier: MIT
#include "bench/text.h"

#include <algorithm>
#include <numeric>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/text/Text.h"

namespace {

using namespace bench;
using namespace quoll;
using benchmark::State;

/// All members compare and cut in American English, whatever the environment says.
void speakEnglish() {
  static const bool done = [] {
    detail::replaceCurrentLocale(NSLocale::localeWithLocaleIdentifier("en_US"_ns));
    return true;
  }();
  keep(done);
}

Ref<NSString> wide(const std::u16string& text) {  // stays UTF-16, whatever its units are
  const std::u16string behind = u"\u00e4" + text;
  return NSString::stringWithCharacters(behind)->substringFromIndex(1);
}

// ---- words

void count_words(State& s, const NSString* text) {
  speakEnglish();
  for (auto _ : s) {
    const Ref<CFStringTokenizer> tokens = QFStringCreateWordTokenizer(text);
    size_t n = 0;
    while (CFStringTokenizerAdvanceToNextToken(tokens)) ++n;
    keep(n);
  }
  bytes(s, std::int64_t(text->length() * 2));
}
void words(State& s) { count_words(s, NSString::stringWithCharacters(words16())); }
void words_english(State& s) { count_words(s, NSString::stringWithCharacters(english16())); }
void words_mixed(State& s) { count_words(s, NSString::stringWithCharacters(mixed16())); }
OURS(words, "words");
OURS(words_english, "words_english");
OURS(words_mixed, "words_mixed");

void words_short(State& s) {
  speakEnglish();
  std::vector<Ref<NSString>> phrases;
  for (const std::u16string& phrase : phrases16()) phrases.push_back(NSString::stringWithCharacters(phrase));
  for (auto _ : s) {
    size_t n = 0;
    for (const Ref<NSString>& phrase : phrases) {
      const Ref<CFStringTokenizer> tokens = QFStringCreateWordTokenizer(phrase);
      while (CFStringTokenizerAdvanceToNextToken(tokens)) ++n;
    }
    keep(n);
  }
  items(s, std::int64_t(phrases.size()));
}
OURS(words_short, "words_short");

void tokenizer_open(State& s) {
  speakEnglish();
  for (auto _ : s) keep(QFStringCreateWordTokenizer("a short text"_ns));
  items(s, 1);
}
OURS(tokenizer_open, "tokenizer_open");

// ---- orders

void finder_compare(State& s) {
  speakEnglish();
  std::vector<Ref<NSString>> names;
  for (const std::string& name : numbered_names()) names.push_back(NSString::stringWithUTF8(name));
  for (auto _ : s) {
    std::int64_t sum = 0;
    for (size_t i = 1; i < names.size(); ++i) sum += finderCompare(names[i - 1], names[i]);
    keep(sum);
  }
  items(s, std::int64_t(names.size() - 1));
}
OURS(finder_compare, "finder_compare");

std::vector<Ref<NSString>> names() {
  std::vector<Ref<NSString>> all;
  for (const std::string& name : file_names()) all.push_back(NSString::stringWithUTF8(name));
  return all;
}
void natural_sort(State& s) {
  speakEnglish();
  const Ref<NSMutableArray> array = NSMutableArray::array();
  for (const Ref<NSString>& name : names()) array->addObject(name);
  for (auto _ : s) keep(array->sortedArrayUsingSelector("finderCompare:"_sel)->firstObject());
  items(s, std::int64_t(array->count()));
}
/// Where the sort doesn't know the order, as in an algorithm of C++ or a comparator, each comparison is one of texts.
void natural_sort_by_comparisons(State& s) {
  speakEnglish();
  const std::vector<Ref<NSString>> all = names();
  for (auto _ : s) {
    std::vector<std::uint32_t> order(all.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(),
              [&](auto a, auto b) { return finderCompare(all[a], all[b]) == NSOrderedAscending; });
    keep(order.front());
  }
  items(s, std::int64_t(all.size()));
}
OURS(natural_sort, "natural_sort");
PEER(natural_sort_by_comparisons, "natural_sort/quoll-finderCompare");

// ---- common affixes

void common_prefix(State& s) {
  std::u16string b = text16().substr(0, kPrefixUnits);
  const Ref<NSString> left = wide(b);
  b.back() = u'#';
  const Ref<NSString> right = wide(b);
  for (auto _ : s) {
    if (!expect(s, lengthOfCommonPrefixWithString(left, right), kPrefixUnits - 1)) return;
  }
  bytes(s, std::int64_t(kPrefixUnits * 2));
}
void common_suffix(State& s) {
  std::u16string b = text16().substr(0, kPrefixUnits);
  const Ref<NSString> left = wide(b);
  b.front() = u'#';
  const Ref<NSString> right = wide(b);
  for (auto _ : s) {
    if (!expect(s, lengthOfCommonSuffixWithString(left, right), kPrefixUnits - 1)) return;
  }
  bytes(s, std::int64_t(kPrefixUnits * 2));
}
OURS(common_prefix, "common_prefix");
OURS(common_suffix, "common_suffix");

// ---- trimming, escaping, replacing

void transform(State& s, const std::string& text, Ref<NSString> (*change)(const NSString*), size_t length) {
  const Ref<NSString> page = NSString::stringWithUTF8(text);
  for (auto _ : s) {
    if (!expect(s, change(page)->length(), length)) return;
  }
  bytes(s, std::int64_t(text.size()));
}
void escape(State& s) {
  const std::string& text = page8();
  const auto special = std::count_if(text.begin(), text.end(), [](char c) {
    return c == '"' || c == '\t' || c == '\n' || c == '\r' || c == '\\' || c == '\'';
  });
  transform(
      s, text, [](const NSString* t) -> Ref<NSString> { return stringByAddingBackslashes(t); },
      text.size() + size_t(special));
}
void replace_newlines(State& s) { transform(s, page8(), &stringByReplacingNewlinesWithSpaces, page8().size()); }
void trim(State& s) {
  const std::string blanks(512u << 10, ' ');
  transform(s, blanks + "x" + blanks, &stringByStrippingWhitespace, 1);
}
OURS(escape, "escape");
OURS(replace_newlines, "replace_newlines");
OURS(trim, "trim");

void hash_references(State& s) {
  const Ref<NSString> text = NSString::stringWithUTF8(log8());
  for (auto _ : s) keep(stringByShorteningHashRefsToLength(text, 7)->length());
  bytes(s, std::int64_t(log8().size()));
}
OURS(hash_references, "hash_references");

}  // namespace
