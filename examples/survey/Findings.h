// SPDX-License-Identifier: MIT
#pragma once

#include <QuollFoundation/QuollFoundation.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>

/// How a line can end.
enum class Terminator { LineFeed, CarriageReturn, Pair, NextLine, LineSeparator, ParagraphSeparator };
inline constexpr std::array terminatorNames{"LF", "CR", "CRLF", "NEL", "LS", "PS"};

/// What a survey finds in one text, or in several together.
struct Findings {
  uint64_t lines = 0;
  uint64_t blankLines = 0;     ///< Lines of nothing but white space.
  uint64_t longestLine = 0;    ///< Its number, from 1; 0 without any line.
  uint64_t longestLength = 0;  ///< In UTF-16 units, without the terminator.
  std::array<uint64_t, terminatorNames.size()> terminators{};
  std::map<uint64_t, uint64_t> lineLengths;  ///< How many lines there are of each length.
  quoll::Ref<quoll::NSMutableDictionary> words = quoll::NSMutableDictionary::dictionary();  ///< From word to number.

  /// "LF" or "LF+CRLF"; "-" where no line ends.
  std::string terminatorMix() const;
  /// Lets these findings join others; the number of a longest line means nothing there.
  Findings& operator+=(const Findings& other);
};

Findings surveyText(const quoll::NSString* text);
/// Counts the words, in lower case.
void countWords(const quoll::NSString* text, Findings& found);
