// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/CommonRuns.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "QuollFoundation/testing.h"

namespace {

using quoll::QFArrayLengthOfCommonPrefix;
using quoll::QFArrayLengthOfCommonSuffix;

using Pairs = std::vector<std::pair<uint64_t, uint64_t>>;

/// Compares the characters of two strings; notes the indices where it is given a list.
bool sameCharacter(const void* a, uint64_t i, const void* b, uint64_t j, void* context) {
  if (context) static_cast<Pairs*>(context)->emplace_back(i, j);
  return static_cast<const std::string*>(a)->at(i) == static_cast<const std::string*>(b)->at(j);
}

bool recordOnly(const void*, uint64_t i, const void*, uint64_t j, void* context) {
  static_cast<Pairs*>(context)->emplace_back(i, j);
  return true;
}

uint64_t prefix(const std::string& a, const std::string& b, Pairs* calls = nullptr) {
  return QFArrayLengthOfCommonPrefix(&a, 0, a.size(), &b, 0, b.size(), &sameCharacter, calls);
}
uint64_t suffix(const std::string& a, const std::string& b, Pairs* calls = nullptr) {
  return QFArrayLengthOfCommonSuffix(&a, 0, a.size(), &b, 0, b.size(), &sameCharacter, calls);
}

TEST(CommonRuns, CountEqualElementsUpToTheFirstDifference) {
  struct Row {
    const char* claim;
    const char* a;
    const char* b;
    uint64_t prefix;
    uint64_t suffix;
  };
  const Row rows[] = {
      {"different at once", "abc", "xyz", 0, 0},
      {"equal", "abc", "abc", 3, 3},
      {"one begins with the other", "abc", "abcdef", 3, 0},
      {"one ends with the other", "abcdef", "def", 0, 3},
      {"different inside", "abXcd", "abYYcd", 2, 2},
      {"runs may overlap", "aa", "aaa", 2, 2},
      {"what comes after a difference does not count", "abcab", "xbcax", 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(prefix(row.a, row.b), row.prefix);
    EXPECT_EQ(suffix(row.a, row.b), row.suffix);
  }
}

TEST(CommonRuns, AnEmptyPartIsNotCompared) {
  Pairs calls;
  EXPECT_EQ(prefix("", "abc", &calls), 0u);
  EXPECT_EQ(prefix("abc", "", &calls), 0u);
  EXPECT_EQ(prefix("", "", &calls), 0u);
  EXPECT_EQ(suffix("", "abc", &calls), 0u);
  EXPECT_EQ(suffix("abc", "", &calls), 0u);
  EXPECT_EQ(suffix("", "", &calls), 0u);
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(QFArrayLengthOfCommonPrefix(nullptr, 0, 0, nullptr, 0, 9, nullptr, nullptr), 0u);
  EXPECT_EQ(QFArrayLengthOfCommonSuffix(nullptr, 0, 9, nullptr, 0, 0, nullptr, nullptr), 0u);
}

TEST(CommonRuns, CompareForwardsFromTheStartsAndBackwardsFromTheEnds) {
  const std::string a = "..abcd";
  const std::string b = "....abce.";
  Pairs calls;
  EXPECT_EQ(QFArrayLengthOfCommonPrefix(&a, 2, 4, &b, 4, 5, &sameCharacter, &calls), 3u);
  EXPECT_EQ(calls, (Pairs{{2, 4}, {3, 5}, {4, 6}, {5, 7}}));
  calls.clear();
  EXPECT_EQ(QFArrayLengthOfCommonSuffix(&a, 2, 3, &b, 4, 3, &sameCharacter, &calls), 3u);
  EXPECT_EQ(calls, (Pairs{{4, 6}, {3, 5}, {2, 4}}));
}

TEST(CommonRuns, TheFirstDifferenceIsTheLastCall) {
  Pairs calls;
  EXPECT_EQ(prefix("abXd", "abYd", &calls), 2u);
  EXPECT_EQ(calls.size(), 3u);
  calls.clear();
  EXPECT_EQ(suffix("aXcd", "aYcd", &calls), 2u);
  EXPECT_EQ(calls.size(), 3u);
}

TEST(CommonRuns, SequencesAndContextReachTheComparatorUntouched) {
  struct Seen {
    const void* a;
    const void* b;
  } seen{};
  const auto note = [](const void* a, uint64_t, const void* b, uint64_t, void* context) {
    *static_cast<Seen*>(context) = {a, b};
    return false;
  };
  int first = 0, second = 0;
  EXPECT_EQ(QFArrayLengthOfCommonPrefix(&first, 0, 1, &second, 0, 1, note, &seen), 0u);
  EXPECT_EQ(seen.a, &first);
  EXPECT_EQ(seen.b, &second);
  EXPECT_EQ(QFArrayLengthOfCommonSuffix(&second, 0, 1, nullptr, 0, 1, note, &seen), 0u);
  EXPECT_EQ(seen.a, &second);
  EXPECT_EQ(seen.b, nullptr);
}

TEST(CommonRuns, IndicesWrapAroundTheLargest) {
  Pairs calls;
  EXPECT_EQ(QFArrayLengthOfCommonPrefix(nullptr, UINT64_MAX, 2, nullptr, 7, 2, &recordOnly, &calls), 2u);
  EXPECT_EQ(calls, (Pairs{{UINT64_MAX, 7}, {0, 8}}));
  calls.clear();
  EXPECT_EQ(QFArrayLengthOfCommonSuffix(nullptr, UINT64_MAX, 2, nullptr, 7, 2, &recordOnly, &calls), 2u);
  EXPECT_EQ(calls, (Pairs{{0, 8}, {UINT64_MAX, 7}}));
}

TEST(CommonRuns, ANullComparatorRaises) {
  const auto message = [](const char* name) { return std::string(name) + ": the comparator cannot be null"; };
  EXPECT_THAT([] { QFArrayLengthOfCommonPrefix(nullptr, 0, 1, nullptr, 0, 1, nullptr, nullptr); },
              quoll::raises(quoll::NSInvalidArgumentException, message("QFArrayLengthOfCommonPrefix")));
  EXPECT_THAT([] { QFArrayLengthOfCommonSuffix(nullptr, 0, 1, nullptr, 0, 1, nullptr, nullptr); },
              quoll::raises(quoll::NSInvalidArgumentException, message("QFArrayLengthOfCommonSuffix")));
}

TEST(CommonRuns, AnExceptionOfTheComparatorReachesTheCaller) {
  const auto refuse = [](const void*, uint64_t, const void*, uint64_t, void*) -> bool { throw 5; };
  EXPECT_THROW(QFArrayLengthOfCommonPrefix(nullptr, 0, 1, nullptr, 0, 1, refuse, nullptr), int);
  EXPECT_THROW(QFArrayLengthOfCommonSuffix(nullptr, 0, 1, nullptr, 0, 1, refuse, nullptr), int);
}

std::string letters() { return *rc::gen::container<std::string>(rc::gen::inRange('a', 'c')); }

RC_GTEST_PROP(CommonRuns, PrefixAgreesWithTheFirstMismatch, ()) {
  const std::string a = letters(), b = letters();
  const auto found = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  RC_ASSERT(prefix(a, b) == static_cast<uint64_t>(found.first - a.begin()));
}

RC_GTEST_PROP(CommonRuns, SuffixIsThePrefixOfTheReversedSequences, ()) {
  const std::string a = letters(), b = letters();
  RC_ASSERT(suffix(a, b) == prefix({a.rbegin(), a.rend()}, {b.rbegin(), b.rend()}));
}

RC_GTEST_PROP(CommonRuns, AreSymmetric, ()) {
  const std::string a = letters(), b = letters();
  RC_ASSERT(prefix(a, b) == prefix(b, a));
  RC_ASSERT(suffix(a, b) == suffix(b, a));
}

}  // namespace
