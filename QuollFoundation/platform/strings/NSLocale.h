// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

namespace detail {
class Collations;
}

/// The language and the region that texts are compared, cut into words and written for.
///
///     Ref<NSLocale> german = NSLocale::localeWithLocaleIdentifier("de_DE"_ns);
///     names->sortedArrayUsingComparator([&](NSString* a, NSString* b) {
///       return a->compare_options_range_locale(b, {}, {0, a->length()}, german);
///     });
///
/// Threads: immutable.
class QF_EXPORT NSLocale : public NSObject {
  QF_CLASS(NSLocale, NSObject)
 public:
  /// That of the environment: of LC_ALL, LC_MESSAGES and LANG the first that is set and not empty, looked at in each
  /// call. C, POSIX and none mean en_US_POSIX. The C library's `setlocale` plays no part.
  static Ref<NSLocale> currentLocale();
  template <class T = NSLocale> static Ref<T> localeWithLocaleIdentifier(const NSString* identifier) {
    return cast<T>(localeWithLocaleIdentifier_ofClass(identifier, T::classObject()));
  }
  template <class T = NSLocale> static Ref<T> initWithLocaleIdentifier(const NSString* identifier) {
    return cast<T>(initWithLocaleIdentifier_ofClass(identifier, T::classObject()));
  }
  static Ref<NSLocale> localeWithLocaleIdentifier_ofClass(const NSString* identifier, Class* cls);
  static Ref<NSLocale> initWithLocaleIdentifier_ofClass(const NSString* identifier, Class* cls);

  Ref<NSString> localeIdentifier() const;  ///< As "de_DE".
  const std::string& name() const QF_LIFETIME { return name_; }

  bool isEqual(const NSObject* other) const override;  ///< By identifier.
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

  ~NSLocale() override;

 protected:
  NSLocale() = default;
  explicit NSLocale(std::string_view name) : name_(name) {}

 private:
  friend class detail::Collations;
  std::string name_;
  mutable std::atomic<detail::Collations*> collations_{nullptr};  // made when first needed, then kept
};

using CFLocaleRef = const NSLocale*;
/// The current locale.
[[nodiscard]] QF_EXPORT Ref<NSLocale> CFLocaleCopyCurrent();

namespace detail {
/// For tests: gives `currentLocale` from now on, in place of the environment; null gives the environment again.
QF_EXPORT void replaceCurrentLocale(NSLocale* locale);
}  // namespace detail

}  // namespace quoll::inline v1
