// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QuollFoundation/platform/basics/Export.h"
#include "QuollFoundation/platform/object/ClassName.h"

namespace quoll::inline v1 {

namespace detail {

using AnyFunction = void (*)();

/// A text literal as a template argument.
template <class C, size_t N> struct FixedText {
  C units[N]{};
  static constexpr size_t length = N - 1;
  consteval FixedText(const C (&text)[N]) {
    for (size_t i = 0; i < N; ++i) units[i] = text[i];
  }
};

/// A method found once for one vtable. Never changed after publication but for `vtable`, which goes null when a
/// group makes the line stale; so a reader needs no lock and no epoch.
struct CacheLine {
  CacheLine(const void* v, uint64_t k, AnyFunction d) : vtable(v), key(k), direct(d) {}
  std::atomic<const void*> vtable;
  uint64_t key;
  AnyFunction direct;
};

/// The one record of a selector in a module: its name, and where its methods were found before.
struct SelectorName {
  static constexpr size_t lineCount = 16;
  constexpr explicit SelectorName(std::string_view t) : text(t), hash(hashOf(t)) {}
  std::string_view text;
  uint64_t hash;
  mutable std::atomic<const CacheLine*> lines[lineCount]{};

  static size_t firstLine(const void* vtable) {
    return (reinterpret_cast<uintptr_t>(vtable) * 0x9e3779b97f4a7c15) >> 60;
  }
  const CacheLine* find(const void* vtable) const {
    const CacheLine* line = lines[firstLine(vtable)].load(std::memory_order_acquire);
    if (line && line->vtable.load(std::memory_order_relaxed) == vtable) [[likely]]
      return line;
    return line ? findFurther(vtable) : nullptr;
  }
  [[gnu::noinline]] const CacheLine* findFurther(const void* vtable) const {
    for (size_t i = firstLine(vtable), left = lineCount; --left;) {
      const CacheLine* line = lines[i = (i + 1) % lineCount].load(std::memory_order_acquire);
      if (!line) return nullptr;
      if (line->vtable.load(std::memory_order_relaxed) == vtable) return line;
    }
    return nullptr;
  }
};

// constexpr, so that compile-time checks may read the name; the mutable lines put it into writable memory.
template <FixedText text> inline constexpr SelectorName selectorName{std::string_view(text.units, text.length)};

}  // namespace detail

/// The name of a method, equal by name: `"setTitle:"_sel` is a constant. A null selector names nothing.
/// Threads: immutable.
class Selector {
 public:
  constexpr Selector() = default;
  constexpr explicit Selector(const detail::SelectorName* name) : name_(name) {}

  constexpr std::string_view name() const { return name_ ? name_->text : std::string_view(); }
  constexpr uint64_t hash() const { return name_ ? name_->hash : 0; }
  constexpr explicit operator bool() const { return name_ != nullptr; }
  /// How many arguments a method of this name takes: its colons.
  constexpr size_t argumentCount() const {
    size_t colons = 0;
    for (const char c : name()) colons += c == ':';
    return colons;
  }
  constexpr const detail::SelectorName* record() const { return name_; }

  friend constexpr bool operator==(Selector a, Selector b) {
    return a.name_ == b.name_ || (a.name_ && b.name_ && a.hash() == b.hash() && a.name() == b.name());
  }

 private:
  const detail::SelectorName* name_ = nullptr;
};

inline namespace literals {
template <detail::FixedText text> constexpr Selector operator""_sel() { return Selector(&detail::selectorName<text>); }
}  // namespace literals

/// Interns the name for ever. Not for text from outside: see `selectorIfRegistered`.
QF_EXPORT Selector registerSelector(std::string_view name);
/// Null when nobody registered or declared a method of this name; adds nothing.
QF_EXPORT Selector selectorIfRegistered(std::string_view name);

}  // namespace quoll::inline v1
