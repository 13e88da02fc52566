// SPDX-License-Identifier: MIT
#include "Findings.h"

#include <algorithm>

using namespace quoll;

namespace {

Terminator kindOf(const NSString* text, NSRange line, uint64_t length) {
  const char16_t last = text->characterAtIndex(NSMaxRange(line) - 1);
  if (length == 2) return Terminator::Pair;
  switch (last) {
    case u'\n': return Terminator::LineFeed;
    case u'\r': return Terminator::CarriageReturn;
    case u'\x85': return Terminator::NextLine;
    case u'\x2028': return Terminator::LineSeparator;
    default: return Terminator::ParagraphSeparator;
  }
}

/// How many units at the end of the line are its terminator.
uint64_t terminatorLength(const NSString* text, NSRange line) {
  CFIndex start = 0, end = 0, contentsEnd = 0;
  CFStringGetLineBounds(text, CFRangeMake(static_cast<CFIndex>(line.location), 0), &start, &end, &contentsEnd);
  return static_cast<uint64_t>(end - contentsEnd);
}

void add(NSMutableDictionary* words, const NSString* word, uint64_t count) {
  const Ref<NSNumber> before = cast<NSNumber>(words->objectForKey(word));
  words->setObject_forKey(box((before ? before->unsignedLongLongValue() : 0) + count), word);
}

}  // namespace

void countWords(const NSString* text, Findings& found) {
  const Ref<CFStringTokenizer> words = QFStringCreateWordTokenizer(text);
  while (CFStringTokenizerAdvanceToNextToken(words)) {
    const CFRange range = CFStringTokenizerGetCurrentTokenRange(words);
    const NSRange word{static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length)};
    add(found.words, text->substringWithRange(word)->lowercaseString(), 1);
  }
}

Findings surveyText(const NSString* text) {
  Findings found;
  enumerateLines(text, QFLineEnumerationNoLineSubstrings, [&](const QFLine& line, bool*) {
    const uint64_t terminator = terminatorLength(text, line.range);
    const uint64_t length = line.range.length - terminator;
    ++found.lines;
    ++found.lineLengths[length];
    if (terminator > 0) ++found.terminators[static_cast<size_t>(kindOf(text, line.range, terminator))];
    if (found.longestLine == 0 || length > found.longestLength) {
      found.longestLine = found.lines;
      found.longestLength = length;
    }
  });
  uint64_t linesWithText = 0;
  enumerateLines(text,
                 QFLineEnumerationNoLineSubstrings | QFLineEnumerationNoSeparatorSubstrings |
                     QFLineEnumerationExcludeTerminators | QFLineEnumerationTrimWhitespace,
                 [&](const QFLine& line, bool*) { linesWithText += line.isBlank ? 0 : 1; });
  found.blankLines = found.lines - linesWithText;
  return found;
}

std::string Findings::terminatorMix() const {
  std::string mix;
  for (size_t i = 0; i < terminators.size(); ++i) {
    if (terminators[i] > 0) mix += (mix.empty() ? "" : "+") + std::string(terminatorNames[i]);
  }
  return mix.empty() ? "-" : mix;
}

Findings& Findings::operator+=(const Findings& other) {
  lines += other.lines;
  blankLines += other.blankLines;
  if (other.longestLength > longestLength) longestLine = other.longestLine;
  longestLength = std::max(longestLength, other.longestLength);
  for (size_t i = 0; i < terminators.size(); ++i) terminators[i] += other.terminators[i];
  for (const auto& [length, count] : other.lineLengths) lineLengths[length] += count;
  Each(other.words, [&](NSString* word, NSNumber* count) { add(words, word, count->unsignedLongLongValue()); });
  return *this;
}
