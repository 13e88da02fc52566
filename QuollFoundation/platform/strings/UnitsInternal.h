// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Hashing, comparing and searching plain spans of units.
///
/// Text is ASCII bytes (every byte below 0x80) or UTF-16 units, in any mixture: a text stored one way and the same text
/// stored the other way are equal, hash alike and are found in each other. All of it is literal, unit by unit, without
/// regard to case, canonical equivalence or pairs of surrogates. Indices and lengths count units. Nothing allocates.
namespace quoll::inline v1::detail {

template <class Unit> concept TextUnit = std::same_as<Unit, char> || std::same_as<Unit, char16_t>;

/// What a search gives that finds nothing.
inline constexpr size_t noIndex = static_cast<size_t>(-1);

/// A hash of all units, well mixed in all of its bits. The same in every process and on every machine of one version;
/// not meant to be stored.
uint64_t hashUnits(const char* ascii, size_t length);
uint64_t hashUnits(const char16_t* units, size_t length);

/// How many units are the same at the start, and at the end, of both texts.
template <TextUnit A, TextUnit B>
size_t commonPrefixLength(std::basic_string_view<A> a, std::basic_string_view<B> b);
template <TextUnit A, TextUnit B>
size_t commonSuffixLength(std::basic_string_view<A> a, std::basic_string_view<B> b);

template <TextUnit A, TextUnit B>
bool equalUnits(std::basic_string_view<A> a, std::basic_string_view<B> b) {
  if (a.size() != b.size()) return false;
  if constexpr (std::same_as<A, B>) {
    return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(A)) == 0;
  } else {
    return commonPrefixLength(a, b) == a.size();
  }
}

/// Orders by the first unit that differs, then by length.
template <TextUnit A, TextUnit B>
std::strong_ordering compareUnits(std::basic_string_view<A> a, std::basic_string_view<B> b) {
  const size_t same = commonPrefixLength(a, b);
  if (same == a.size() || same == b.size()) return a.size() <=> b.size();
  return static_cast<char16_t>(a[same]) <=> static_cast<char16_t>(b[same]);
}

/// The index of the first, and of the last, such unit, else `noIndex`.
template <TextUnit Unit>
size_t findUnit(std::basic_string_view<Unit> text, char16_t unit);
template <TextUnit Unit>
size_t findLastUnit(std::basic_string_view<Unit> text, char16_t unit);

/// The index where the first, and the last, occurrence starts, else `noIndex`. Nothing is found of an empty `wanted`.
/// The time grows linearly with the lengths, whatever the texts are.
template <TextUnit A, TextUnit B>
size_t findUnits(std::basic_string_view<A> text, std::basic_string_view<B> wanted);
template <TextUnit A, TextUnit B>
size_t findLastUnits(std::basic_string_view<A> text, std::basic_string_view<B> wanted);

}  // namespace quoll::inline v1::detail
