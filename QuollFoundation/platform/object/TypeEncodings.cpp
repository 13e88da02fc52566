// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/TypeEncodings.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1::detail {

namespace {

[[noreturn]] void raiseMalformed(std::string_view encodings) {
  raise(NSInvalidArgumentException, "malformed type encoding \"" + std::string(encodings) + "\"");
}

constexpr std::string_view qualifiers = "rnNoORV";
constexpr int deepestNesting = 32;

size_t lengthOfBracketed(std::string_view text, char open, char close) {
  size_t depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == open) ++depth;
    if (text[i] == close && --depth == 0) return i + 1;
  }
  raiseMalformed(text);
}

size_t lengthOfType(std::string_view text) {
  const size_t at = text.find_first_not_of("rnNoORV^");  // pointers nest, and each level may be qualified
  if (at == text.npos) raiseMalformed(text);
  const std::string_view rest = text.substr(at);
  switch (rest[0]) {
    case '{': return at + lengthOfBracketed(rest, '{', '}');
    case '(': return at + lengthOfBracketed(rest, '(', ')');
    case '[': return at + lengthOfBracketed(rest, '[', ']');
    case '@': return at + (rest.starts_with("@?") ? 2 : 1);
    default:
      if (std::string_view("cCsSiIlLqQfdBv*#:?").find(rest[0]) == std::string_view::npos) raiseMalformed(text);
      return at + 1;
  }
}

struct Extent {
  size_t size = 0;
  size_t alignment = 1;
};

Extent extentOf(std::string_view type, int depth);

constexpr size_t roundedUp(size_t size, size_t alignment) { return (size + alignment - 1) / alignment * alignment; }

/// `{name=members}` or `(name=members)`.
Extent extentOfMembers(std::string_view type, int depth) {
  const bool isUnion = type[0] == '(';
  const size_t equals = type.find('=');
  if (equals == type.npos) raiseMalformed(type);
  Extent whole;
  std::string_view members = type.substr(equals + 1, type.size() - equals - 2);
  while (!members.empty()) {
    const EncodedType member = firstType(members);
    const Extent part = extentOf(member.type, depth);
    whole.size = isUnion ? std::max(whole.size, part.size) : roundedUp(whole.size, part.alignment) + part.size;
    whole.alignment = std::max(whole.alignment, part.alignment);
    members = member.rest;
  }
  whole.size = roundedUp(whole.size, whole.alignment);
  return whole;
}

/// `[12i]`
Extent extentOfArray(std::string_view type, int depth) {
  std::string_view inner = type.substr(1, type.size() - 2);
  size_t count = 0;
  const auto [end, error] = std::from_chars(inner.data(), inner.data() + inner.size(), count);
  if (error != std::errc()) raiseMalformed(type);
  inner.remove_prefix(static_cast<size_t>(end - inner.data()));
  const EncodedType element = firstType(inner);
  if (!element.rest.empty()) raiseMalformed(type);
  Extent extent = extentOf(element.type, depth);
  if (__builtin_mul_overflow(extent.size, count, &extent.size) || extent.size > UINT32_MAX) raiseMalformed(type);
  return extent;
}

Extent extentOf(std::string_view type, int depth) {
  type.remove_prefix(std::min(type.find_first_not_of(qualifiers), type.size() - 1));
  if (depth > deepestNesting) raiseMalformed(type);
  switch (type[0]) {
    case 'v': return {0, 1};
    case 'c':
    case 'C':
    case 'B': return {1, 1};
    case 's':
    case 'S': return {2, 2};
    case 'i':
    case 'I':
    case 'f': return {4, 4};
    case '{':
    case '(': return extentOfMembers(type, depth + 1);
    case '[': return extentOfArray(type, depth + 1);
    case '@': return type == "@?" ? Extent{16, 8} : Extent{8, 8};
    case '?': raiseMalformed(type);
    default: return {8, 8};
  }
}

}  // namespace

EncodedType firstType(std::string_view encodings) {
  const size_t length = lengthOfType(encodings);
  size_t next = length;
  while (next < encodings.size() && encodings[next] >= '0' && encodings[next] <= '9') ++next;  // a frame offset
  return {encodings.substr(0, length), encodings.substr(next)};
}

size_t sizeOfType(std::string_view encoding) {
  if (encoding.empty()) raiseMalformed(encoding);
  return extentOf(encoding, 0).size;
}

}  // namespace quoll::inline v1::detail
