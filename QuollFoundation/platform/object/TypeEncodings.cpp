// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/TypeEncodings.h"

#include <algorithm>
#include <string>

#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1::detail {

namespace {

[[noreturn]] void raiseMalformed(std::string_view encodings) {
  raise(NSInvalidArgumentException, "malformed type encoding \"" + std::string(encodings) + "\"");
}

size_t lengthOfBracketed(std::string_view text, char open, char close) {
  size_t depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == open) ++depth;
    if (text[i] == close && --depth == 0) return i + 1;
  }
  raiseMalformed(text);
}

size_t lengthOfType(std::string_view text) {
  size_t at = 0;
  while (at < text.size() && std::string_view("rnNoORV").find(text[at]) != text.npos) ++at;
  if (at == text.size()) raiseMalformed(text);
  const std::string_view rest = text.substr(at);
  switch (rest[0]) {
    case '{': return at + lengthOfBracketed(rest, '{', '}');
    case '(': return at + lengthOfBracketed(rest, '(', ')');
    case '[': return at + lengthOfBracketed(rest, '[', ']');
    case '^': return at + 1 + lengthOfType(rest.substr(1));
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

Extent extentOf(std::string_view type);

Extent extentOfStruct(std::string_view type) {
  const size_t equals = type.find('=');
  if (equals == type.npos) raiseMalformed(type);
  Extent whole;
  std::string_view members = type.substr(equals + 1, type.size() - equals - 2);
  while (!members.empty()) {
    const EncodedType member = firstType(members);
    const Extent part = extentOf(member.type);
    whole.size = (whole.size + part.alignment - 1) / part.alignment * part.alignment + part.size;
    whole.alignment = std::max(whole.alignment, part.alignment);
    members = member.rest;
  }
  whole.size = (whole.size + whole.alignment - 1) / whole.alignment * whole.alignment;
  return whole;
}

Extent extentOf(std::string_view type) {
  while (type.size() > 1 && std::string_view("rnNoORV").find(type[0]) != type.npos) type.remove_prefix(1);
  switch (type.empty() ? 'v' : type[0]) {
    case 'v': return {0, 1};
    case 'c':
    case 'C':
    case 'B': return {1, 1};
    case 's':
    case 'S': return {2, 2};
    case 'i':
    case 'I':
    case 'f': return {4, 4};
    case '{': return extentOfStruct(type);
    case '@': return type == "@?" ? Extent{16, 8} : Extent{8, 8};
    case '(':
    case '[':
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

size_t sizeOfType(std::string_view encoding) { return extentOf(encoding).size; }

}  // namespace quoll::inline v1::detail
