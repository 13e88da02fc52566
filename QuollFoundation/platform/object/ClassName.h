// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Names of C++ classes and functions at compile time, the same from g++ and clang.
namespace quoll::inline v1::detail {

constexpr uint64_t mix(uint64_t hash, uint64_t value) { return (hash ^ value) * 0x100000001b3; }

constexpr uint64_t hashStart = 0xcbf29ce484222325;

/// FNV-1a, continued from `hash`.
constexpr uint64_t hashOf(std::string_view text, uint64_t hash = hashStart) {
  for (const char c : text) hash = mix(hash, static_cast<unsigned char>(c));
  return hash;
}

/// One compiler writes the version namespace and the other doesn't: it never counts.
constexpr uint64_t hashOfName(std::string_view name) {
  constexpr std::string_view own = "quoll::", version = "v1::";
  uint64_t hash = hashStart;
  for (size_t at = name.find(own); at != name.npos; at = name.find(own)) {
    at += own.size();
    hash = hashOf(name.substr(0, at), hash);
    name.remove_prefix(at);
    if (name.starts_with(version)) name.remove_prefix(version.size());
  }
  return hashOf(name, hash);
}

template <class T> constexpr std::string_view spelledClassName() {
  std::string_view text = __PRETTY_FUNCTION__;
  text.remove_prefix(text.find("T = ") + 4);
  return text.substr(0, text.find_first_of(";]"));
}
template <auto f> constexpr std::string_view spelledFunctionName() {
  std::string_view text = __PRETTY_FUNCTION__;
  text.remove_prefix(text.find("f = ") + 4);
  text = text.substr(0, text.find_first_of(";]"));
  return text.substr(text.find_last_of('&') + 1);
}

constexpr std::string_view lastPart(std::string_view name) {
  const size_t last = name.rfind("::");
  return last == name.npos ? name : name.substr(last + 2);
}

/// `NSString`: the class's own name, for messages. A constant, so that what raises one stays short.
template <class T> inline constexpr std::string_view className = lastPart(spelledClassName<T>());

/// One word for a class, the same in every module. For plain classes: of templates the spelling differs.
template <class T> constexpr uint64_t classKey() { return hashOfName(spelledClassName<T>()); }

/// One word for a function or member, the same in every module.
template <auto f> constexpr uint64_t functionKey() { return hashOfName(spelledFunctionName<f>()); }

}  // namespace quoll::inline v1::detail
