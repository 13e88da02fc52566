// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSString.h"

struct UCollator;

/// The order of texts in a language.
namespace quoll::inline v1::detail {

struct CloseCollator {
  void operator()(UCollator* collator) const noexcept;
};
using CollatorHandle = std::unique_ptr<UCollator, CloseCollator>;

/// What `localizedStandardCompare:` compares by.
inline constexpr uint64_t standardOptions =
    NSCaseInsensitiveSearch | NSNumericSearch | NSWidthInsensitiveSearch | NSForcedOrderingSearch;

/// The standard order of texts that are all printable ASCII, as weights of single characters. It holds for languages
/// that give no ASCII character or sequence a place of its own; elsewhere `isUsable` is false.
class ASCIIOrder {
 public:
  ASCIIOrder(const UCollator* primary, const UCollator* tertiary);
  bool isUsable() const { return isUsable_; }
  /// False where a text has something else, or a number of more digits than ICU takes together: then `result` is not
  /// set.
  bool compare(std::string_view a, std::string_view b, NSComparisonResult& result) const;
  /// Appends the key of a text, of bytes that are not 0: keys have the order of their texts, but those of texts that
  /// differ in nothing but case and zeros before numbers are the same. False where the text is not for us; then it may
  /// have appended a part.
  bool appendKey(std::string_view text, std::string& keys) const;

 private:
  std::array<uint8_t, 128> primary_{};   // 0: not for us
  std::array<uint8_t, 128> tertiary_{};  // tells characters of one primary weight apart: a and A
  bool isUsable_ = false;
};

/// The current locale, for as long as a comparison takes; where no thread can keep it, `room` does.
const NSLocale* currentLocaleForComparing(Ref<NSLocale>& room);

/// What one locale needs to compare texts; made for a locale when first needed. Threads: thread-safe.
class Collations {
 public:
  static const Collations& of(const NSLocale* locale);
  static void drop(Collations* collations);

  /// Of all comparison options those about case, diacritics, width and numbers play a part, and the forced ordering:
  /// what is the same then differs by case or width first, and by units last.
  NSComparisonResult compare(const NSString* a, const NSString* b, uint64_t options) const;
  const ASCIIOrder& asciiOrder() const;
  /// Appends a key of any text for `standardOptions`, the same for texts that differ in nothing but case and width.
  /// These keys and those of ASCIIOrder don't mix.
  void appendKey(const NSString* text, std::string& keys) const;

 private:
  explicit Collations(std::string locale) : locale_(std::move(locale)) {}
  /// By the kinds of differences that `kind` does not overlook, of the texts folded by `folding`.
  NSComparisonResult ordered(const NSString* a, const NSString* b, uint64_t kind, uint64_t folding) const;
  const UCollator* collator(uint64_t options) const;
  CollatorHandle open(uint64_t options) const;

  static constexpr size_t kinds = 8;  // case, diacritics, numbers: each of them on or off
  const std::string locale_;
  mutable std::array<std::atomic<UCollator*>, kinds> collators_{};
  mutable std::atomic<const ASCIIOrder*> asciiOrder_{nullptr};
};

}  // namespace quoll::inline v1::detail
