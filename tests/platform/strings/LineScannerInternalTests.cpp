// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/LineScannerInternal.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "tests/platform/strings/ExactSpan.h"
#include "tests/platform/strings/InstructionSets.h"

namespace quoll::inline v1::detail {

static void PrintTo(const LineBounds& line, std::ostream* out) {
  *out << '(' << line.start << ", " << line.contentsEnd << ", " << line.end << ')';
}

namespace {

using quoll::testing::ExactSpan;
using Lines = std::vector<LineBounds>;

class LineScanner : public quoll::testing::EachInstructionSet {};

const std::u16string_view terminators[] = {u"\n", u"\r", u"\r\n", u"\u0085", u"\u2028", u"\u2029"};

bool endsLine(std::u16string_view text, size_t i) {
  if (text[i] == '\r') return i + 1 == text.size() || text[i + 1] != '\n';
  return text[i] == '\n' || text[i] == 0x85 || text[i] == 0x2028 || text[i] == 0x2029;
}

/// The lines of a text, found one unit at a time.
Lines modelLines(std::u16string_view text) {
  Lines lines;
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (!endsLine(text, i)) continue;
    const bool pair = text[i] == '\n' && i > start && text[i - 1] == '\r';
    lines.push_back({start, pair ? i - 1 : i, i + 1});
    start = i + 1;
  }
  if (start < text.size()) lines.push_back({start, text.size(), text.size()});
  return lines;
}

LineBounds modelLineAt(const Lines& lines, size_t length, size_t index) {
  for (const LineBounds& line : lines) {
    const bool lastAndOpen = line.end == length && line.contentsEnd == length;
    if (index < line.end || (index == length && lastAndOpen)) return line;
  }
  return {length, length, length};
}

template <class Unit>
Lines linesOf(std::basic_string_view<Unit> text, size_t index = 0) {
  LineCursor<Unit> cursor(text, index);
  Lines lines;
  for (LineBounds line; cursor.next(line);) lines.push_back(line);
  return lines;
}

/// Calls `body` with the text as UTF-16, and as ASCII where it is ASCII.
template <class Body>
void inEachStorage(std::u16string_view text, Body body) {
  body(ExactSpan<char16_t>(text).view());
  if (std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit > 0x7F; })) return;
  body(ExactSpan<char>(std::string(text.begin(), text.end())).view());
}

std::u16string filler(size_t length) {
  std::u16string text(length, u'a');
  for (size_t i = 0; i < length; ++i) text[i] = static_cast<char16_t>('a' + i % 26);
  return text;
}

std::u16string randomText(std::mt19937_64& random, size_t length, std::u16string_view alphabet) {
  std::u16string text(length, 0);
  for (char16_t& unit : text) unit = alphabet[random() % alphabet.size()];
  return text;
}

/// Holds every question about one text against the model.
void expectAgreesWithModel(std::u16string_view units) {
  const Lines expected = modelLines(units);
  inEachStorage(units, [&](auto text) {
    ASSERT_EQ(linesOf(text), expected);
    ASSERT_EQ(countLines(text, 0, text.size()), expected.size());
    for (size_t i = 0; i <= text.size(); ++i) {
      const LineBounds line = modelLineAt(expected, text.size(), i);
      ASSERT_EQ(findLineStart(text, i), line.start) << "at " << i;
      ASSERT_EQ(findLineBounds(text, i), line) << "at " << i;
    }
  });
}

TEST_F(LineScanner, GivesTheLinesOfATextOneAfterTheOther) {
  std::u16string_view text = u"one\r\ntwo\nthree";
  std::vector<std::u16string> found;
  quoll::detail::LineCursor lines(text);
  for (quoll::detail::LineBounds line; lines.next(line);) {
    found.emplace_back(text.substr(line.start, line.contentsEnd - line.start));
  }
  EXPECT_EQ(found, (std::vector<std::u16string>{u"one", u"two", u"three"}));
}

TEST_F(LineScanner, EndsLinesAtTheSixTerminatorsOnly) {
  struct Row {
    const char* claim;
    std::u16string_view text;
    Lines lines;
  };
  const Row rows[] = {
      {"no text has no line", u"", {}},
      {"text without terminator is one line", u"ab", {{0, 2, 2}}},
      {"a terminator at the end starts no further line", u"a\n", {{0, 1, 2}}},
      {"a terminator alone is a line", u"\n", {{0, 0, 1}}},
      {"line feed", u"a\nb", {{0, 1, 2}, {2, 3, 3}}},
      {"carriage return", u"a\rb", {{0, 1, 2}, {2, 3, 3}}},
      {"the pair is one terminator", u"a\r\nb", {{0, 1, 3}, {3, 4, 4}}},
      {"the pair turned around is two", u"a\n\rb", {{0, 1, 2}, {2, 2, 3}, {3, 4, 4}}},
      {"two carriage returns and a line feed are two", u"\r\r\n", {{0, 0, 1}, {1, 1, 3}}},
      {"a pair and a line feed are two", u"\r\n\n", {{0, 0, 2}, {2, 2, 3}}},
      {"next line", u"a\u0085b", {{0, 1, 2}, {2, 3, 3}}},
      {"a carriage return and a next line are two", u"\r\u0085", {{0, 0, 1}, {1, 1, 2}}},
      {"line separator", u"a\u2028b", {{0, 1, 2}, {2, 3, 3}}},
      {"paragraph separator", u"a\u2029b", {{0, 1, 2}, {2, 3, 3}}},
      {"vertical tab and form feed end no line", u"a\vb\fc", {{0, 5, 5}}},
      {"a carriage return at the end", u"a\r", {{0, 1, 2}}},
      {"a zero is text", std::u16string_view(u"\0\n\0", 3), {{0, 1, 2}, {2, 3, 3}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(modelLines(row.text), row.lines);
    expectAgreesWithModel(row.text);
  }
}

TEST_F(LineScanner, TellsATerminatorFromEveryOtherUnit) {
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const std::u16string text(40, static_cast<char16_t>(unit));
    const bool expected = unit == 0xA || unit == 0xD || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
    ASSERT_EQ(findLineTerminator(text.data(), 0, 40), expected ? 0u : 40u) << unit;
    ASSERT_EQ(findLineTerminator(text.data(), 39, 40), expected ? 39u : 40u) << unit;
  }
}

/// Asks everything about a text whose only terminator is `size` units at `at`.
template <class View>
bool findsTheOnlyTerminator(View text, size_t at, size_t size) {
  const size_t length = text.size();
  const bool open = at + size < length;
  LineCursor lines(text);
  LineBounds first, second, third;
  return findLineTerminator(text.data(), 0, length) == at && findLineTerminator(text.data(), at, length) == at &&
         findLineTerminator(text.data(), at + size, length) == length && findLineStart(text, at) == 0 &&
         findLineStart(text, length) == at + size && countLines(text, 0, length) == (open ? 2 : 1) &&
         lines.next(first) && first == LineBounds{0, at, at + size} && lines.next(second) == open &&
         (!open || second == LineBounds{at + size, length, length}) && !lines.next(third);
}

TEST_F(LineScanner, FindsTerminatorsAtEveryOffsetOfEveryLength) {
  for (size_t length = 1; length <= 200; ++length) {
    for (size_t at = 0; at < length; ++at) {
      const std::u16string_view terminator = terminators[(at + length) % std::size(terminators)];
      if (at + terminator.size() > length) continue;
      inEachStorage(filler(length).replace(at, terminator.size(), terminator), [&](auto text) {
        ASSERT_TRUE(findsTheOnlyTerminator(text, at, terminator.size())) << "at " << at << " of " << length;
      });
    }
  }
}

TEST_F(LineScanner, FindsTheTerminatorWithinTheGivenBoundsOnly) {
  const std::u16string units = u"\n" + filler(100) + u"\n";
  inEachStorage(units, [&](auto text) {
    for (size_t from = 1; from <= 101; ++from) {
      for (size_t end = from; end <= 101; ++end) ASSERT_EQ(findLineTerminator(text.data(), from, end), end);
      ASSERT_EQ(findLineTerminator(text.data(), from, 102), 101u);
    }
  });
}

TEST_F(LineScanner, KeepsAPairTogetherAcrossTheEdgesOfItsBlocks) {
  const size_t length = 10000;
  for (size_t edge : {64u, 256u, 768u, 1792u, 3840u, 7936u, 8192u}) {
    for (size_t at = edge - 3; at <= edge + 3; ++at) {
      const std::u16string units = filler(length).replace(at, 2, u"\r\n");
      inEachStorage(units, [&](auto text) {
        ASSERT_EQ(linesOf(text), (Lines{{0, at, at + 2}, {at + 2, length, length}}));
        ASSERT_EQ(countLines(text, 0, length), 2u);
      });
    }
  }
}

TEST_F(LineScanner, EndsTheLineAtTheEndOfTheTextWhereverABlockEnds) {
  for (size_t length : {255u, 256u, 257u, 767u, 768u, 769u, 4095u, 4096u, 7936u, 7937u, 12032u}) {
    const std::u16string open = filler(length);
    inEachStorage(open, [&](auto text) { ASSERT_EQ(linesOf(text), (Lines{{0, length, length}})); });
    const std::u16string closed = filler(length - 1) + u"\r";
    inEachStorage(closed, [&](auto text) { ASSERT_EQ(linesOf(text), (Lines{{0, length - 1, length}})); });
  }
}

TEST_F(LineScanner, AgreesWithAModelOnRandomTexts) {
  std::mt19937_64 random(20);
  for (std::u16string_view alphabet : {u"\n", u"\r\n", u"a\r\n", u"\r\n\u0085\u2028\u2029ab",
                                       u"\r\naaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\v\f\u000E\u2027\u202A"}) {
    for (int round = 0; round < 30; ++round) expectAgreesWithModel(randomText(random, random() % 300, alphabet));
    const std::u16string longText = randomText(random, 9000 + random() % 9000, alphabet);
    inEachStorage(longText, [&](auto text) { ASSERT_EQ(linesOf(text), modelLines(longText)); });
  }
}

TEST_F(LineScanner, StartsWithTheLineThatHoldsTheIndex) {
  std::mt19937_64 random(21);
  const std::u16string units = randomText(random, 400, u"\r\nabcdefgh");
  const Lines all = modelLines(units);
  inEachStorage(units, [&](auto text) {
    for (size_t i = 0; i < text.size(); ++i) {
      const Lines lines = linesOf(text, i);
      ASSERT_FALSE(lines.empty());
      ASSERT_LE(lines.front().start, i);
      ASSERT_GT(lines.front().end, i);
      ASSERT_TRUE(std::equal(lines.rbegin(), lines.rend(), all.rbegin()));
    }
  });
}

TEST_F(LineScanner, HasNoLineBehindATerminatorAtTheEnd) {
  EXPECT_EQ(linesOf(std::u16string_view(u"a\n"), 2), Lines{});
  EXPECT_EQ(linesOf(std::u16string_view(u"a"), 1), (Lines{{0, 1, 1}}));
  EXPECT_EQ(linesOf(std::u16string_view(), 0), Lines{});
  EXPECT_EQ(linesOf(std::string_view(), 0), Lines{});
}

TEST_F(LineScanner, CountsTheLinesThatARangeTouches) {
  std::mt19937_64 random(22);
  const std::u16string units = randomText(random, 260, u"\r\nabc\u2028");
  const Lines lines = modelLines(units);
  const ExactSpan<char16_t> text(units);
  for (size_t from = 0; from <= units.size(); ++from) {
    for (size_t end = from; end <= units.size(); ++end) {
      const auto touched = std::count_if(lines.begin(), lines.end(), [&](const LineBounds& line) {
        return from < end && line.start < end && line.end > from;
      });
      ASSERT_EQ(countLines(text.view(), from, end), static_cast<size_t>(touched)) << from << ' ' << end;
    }
  }
}

TEST_F(LineScanner, BoundsARangeByTheLinesOfItsFirstAndLastUnit) {
  struct Row {
    const char* claim;
    size_t location, length;
    LineBounds bounds;
  };
  const Row rows[] = {
      {"no units: the line at the place", 4, 0, {4, 6, 7}},
      {"no units at the end behind an open line", 9, 0, {7, 9, 9}},
      {"a whole line stays alone", 0, 4, {0, 2, 4}},
      {"the first unit of the next line takes it in", 0, 5, {0, 6, 7}},
      {"between the halves of a pair", 3, 0, {0, 2, 4}},
      {"up to the first half of a pair", 1, 2, {0, 2, 4}},
      {"all", 0, 9, {0, 9, 9}},
  };
  inEachStorage(u"ab\r\ncd\nef", [&](auto text) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.claim);
      EXPECT_EQ(findLineBounds(text, row.location, row.length), row.bounds);
    }
  });
}

/// Address space whose first page is text and whose rest must not be touched.
class MostlyForbiddenText {
 public:
  MostlyForbiddenText() {
    EXPECT_NE(start_, MAP_FAILED);
    EXPECT_EQ(mprotect(start_, pageSize(), PROT_READ | PROT_WRITE), 0);
    std::fill_n(units(), allowed(), u'a');
  }
  ~MostlyForbiddenText() { munmap(start_, bytes); }

  char16_t* units() { return static_cast<char16_t*>(start_); }
  std::u16string_view view() { return {units(), bytes / sizeof(char16_t)}; }
  static size_t allowed() { return pageSize() / sizeof(char16_t); }

 private:
  static size_t pageSize() { return static_cast<size_t>(sysconf(_SC_PAGESIZE)); }
  static constexpr size_t bytes = size_t{1} << 30;
  void* start_ = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
};

TEST_F(LineScanner, LooksAtLittleMoreThanTheFirstLineOfAHugeText) {
  MostlyForbiddenText text;
  text.units()[100] = '\n';
  LineCursor cursor(text.view());
  LineBounds line;
  ASSERT_TRUE(cursor.next(line));
  EXPECT_EQ(line, (LineBounds{0, 100, 101}));
  EXPECT_EQ(cursor.position(), 101u);
  EXPECT_EQ(findLineBounds(text.view(), 7), line);
}

TEST_F(LineScanner, LooksNoFurtherBackThanTheStartOfTheLine) {
  const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  void* start = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(start, MAP_FAILED);
  const std::string_view text(static_cast<char*>(start), 2 * page);
  static_cast<char*>(start)[2 * page - 20] = '\n';
  ASSERT_EQ(mprotect(start, page, PROT_NONE), 0);
  EXPECT_EQ(findLineStart(text, 2 * page - 1), 2 * page - 19);
  munmap(start, 2 * page);
}

}  // namespace
}  // namespace quoll::inline v1::detail
