// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <concepts>
#include <exception>
#include <map>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/AutoreleaseScope.h"
#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/LiveObjects.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// For tests with GoogleTest and GoogleMock: objects, ranges and rectangles are printed as what they say, and
///
///     EXPECT_THAT(document->title(), equals("Untitled"));                       // by value; `==` is identity
///     EXPECT_THAT([&] { text->substringFromIndex(9); }, raises(NSRangeException, "index 9"));
///     const LeakGuard guard;                                                    // in a test or in its fixture
///
/// Header-only; link GTest::gmock.
namespace quoll::inline v1 {

namespace detail {

/// `"text" (NSString)`, `<Counter: 0x...>`; never messages a proxy.
inline std::string printed(const NSObject* object) {
  std::ostringstream out;
  const bool isText = as<NSString>(object) != nullptr;
  if (isText) out << '"';
  out << object;
  if (isText) out << '"';
  if (object && !object->isProxy()) out << " (" << object->isa()->name() << ')';
  return out.str();
}

/// Not just a pointer to something that is only declared.
template <class T> concept KnownObject = requires { sizeof(T); } && std::derived_from<T, NSObject>;

inline std::string printedIndex(uint64_t index) { return index == NSNotFound ? "NSNotFound" : std::to_string(index); }

}  // namespace detail

// How GoogleTest shows values.
template <detail::KnownObject T> void PrintTo(T* object, std::ostream* out) { *out << detail::printed(object); }
template <class T> void PrintTo(const Ref<T>& object, std::ostream* out) { *out << detail::printed(object.get()); }
inline void PrintTo(const NSException& exception, std::ostream* out) { *out << exception.what(); }
inline void PrintTo(Selector selector, std::ostream* out) { *out << (selector ? selector.name() : "(no selector)"); }
inline void PrintTo(NSRange range, std::ostream* out) {
  *out << '{' << detail::printedIndex(range.location) << ", " << range.length << '}';
}
inline void PrintTo(CFRange range, std::ostream* out) { *out << '{' << range.location << ", " << range.length << '}'; }
inline void PrintTo(const CGPoint& point, std::ostream* out) { *out << '{' << point.x << ", " << point.y << '}'; }
inline void PrintTo(const CGSize& size, std::ostream* out) { *out << '{' << size.width << ", " << size.height << '}'; }
inline void PrintTo(const CGRect& rect, std::ostream* out) {
  *out << '{';
  PrintTo(rect.origin, out);
  *out << ", ";
  PrintTo(rect.size, out);
  *out << '}';
}
inline void PrintTo(const QFPadding& padding, std::ostream* out) {
  *out << "{top " << padding.top << ", left " << padding.left << ", bottom " << padding.bottom << ", right "
       << padding.right << '}';
}
inline void PrintTo(NSComparisonResult result, std::ostream* out) {
  *out << (result == NSOrderedAscending    ? "NSOrderedAscending"
           : result == NSOrderedSame       ? "NSOrderedSame"
           : result == NSOrderedDescending ? "NSOrderedDescending"
                                           : "no comparison result");
}

namespace detail {

class EqualsMatcher {
 public:
  using is_gtest_matcher = void;
  explicit EqualsMatcher(const NSObject* expected) : expected_(const_cast<NSObject*>(expected)) {}
  template <class Actual> bool MatchAndExplain(const Actual& actual, ::testing::MatchResultListener*) const {
    const NSObject* object = nullptr;
    if constexpr (!std::is_null_pointer_v<Actual>) object = static_cast<const NSObject*>(actual);
    return isEqual(object, expected_.get());
  }
  void DescribeTo(std::ostream* out) const { *out << "equals " << printed(expected_); }
  void DescribeNegationTo(std::ostream* out) const { *out << "does not equal " << printed(expected_); }

 private:
  Ref<NSObject> expected_;
};

class RaisesMatcher {
 public:
  using is_gtest_matcher = void;
  RaisesMatcher(const NSString* name, std::string reason)
      : name_(const_cast<NSString*>(name)), reason_(std::move(reason)) {}
  template <class F> bool MatchAndExplain(const F& callable, ::testing::MatchResultListener* listener) const {
    try {
      callable();
    } catch (const NSException& e) {
      *listener << "which raises " << e.what();
      const Ref<NSString> reason = e.reason();
      return isEqual(e.name().get(), name_.get()) &&
             (reason ? reason->utf8() : std::string()).find(reason_) != std::string::npos;
    } catch (const std::exception& e) {
      *listener << "which throws a std::exception: " << e.what();
      return false;
    } catch (...) {
      *listener << "which throws something else";
      return false;
    }
    *listener << "which raises nothing";
    return false;
  }
  void DescribeTo(std::ostream* out) const { *out << "raises " << wanted(); }
  void DescribeNegationTo(std::ostream* out) const { *out << "does not raise " << wanted(); }

 private:
  std::string wanted() const {
    return (name_ ? name_->utf8() : "(null)") + (reason_.empty() ? "" : " with a reason that has \"" + reason_ + "\"");
  }
  Ref<NSString> name_;
  std::string reason_;
};

}  // namespace detail

/// Matches what is equal by value, `isEqual:`; null equals null only.
inline detail::EqualsMatcher equals(const NSObject* expected) { return detail::EqualsMatcher(expected); }
inline detail::EqualsMatcher equals(std::nullptr_t) { return detail::EqualsMatcher(nullptr); }
template <class T> detail::EqualsMatcher equals(const Ref<T>& expected) {
  return detail::EqualsMatcher(expected.get());
}
/// The same, of a text. Ill-formed UTF-8 raises.
inline detail::EqualsMatcher equals(std::string_view expected) {
  const Ref<NSString> text = NSString::stringWithUTF8(expected);
  if (!text) raise(NSInvalidArgumentException, "equals: the expected text is ill-formed UTF-8");
  return detail::EqualsMatcher(text.get());
}
inline detail::EqualsMatcher equals(const char* expected) { return equals(std::string_view(expected)); }
inline detail::EqualsMatcher equals(std::u16string_view expected) {
  return detail::EqualsMatcher(NSString::stringWithCharacters(expected).get());
}
inline detail::EqualsMatcher equals(const char16_t* expected) { return equals(std::u16string_view(expected)); }

/// Matches a callable that raises an NSException of this name, with a reason that has this part.
inline detail::RaisesMatcher raises(const NSString* name, std::string_view partOfReason = {}) {
  return {name, std::string(partOfReason)};
}

/// Fails the test where more objects of a class live at its end than at its beginning, and names them. It counts what
/// is made while it stands, by all threads; an object that is not to be told is made before. It opens an
/// AutoreleaseScope: what is autoreleased meanwhile is not leaked. Threads: thread-bound.
class LeakGuard {
 public:
  explicit LeakGuard(const char* file = __builtin_FILE(), int line = __builtin_LINE())
      : file_(file), line_(line), before_(liveObjectCounts()), scope_(std::in_place) {}
  LeakGuard(const LeakGuard&) = delete;
  LeakGuard& operator=(const LeakGuard&) = delete;
  ~LeakGuard() {
    scope_.reset();
    const std::string leaked = leaks();
    if (!leaked.empty()) ADD_FAILURE_AT(file_, line_) << "objects outlive this guard: " << leaked;
  }

  /// `2 Counter, 1 NSString`: what lives now and didn't at the beginning; empty for nothing.
  std::string leaks() const {
    std::string result;
    for (const auto& [name, count] : liveObjectCounts()) {
      const auto old = before_.find(name);
      const size_t known = old == before_.end() ? 0 : old->second;
      if (count > known) result += (result.empty() ? "" : ", ") + std::to_string(count - known) + " " + name;
    }
    return result;
  }

 private:
  const char* file_;
  int line_;
  LiveObjectRecording recording_;
  std::map<std::string, size_t> before_;
  std::optional<AutoreleaseScope> scope_;
};

/// Makes a locale the current one, in place of that of the environment, until the scope ends. Scopes don't nest.
class LocaleScope {
 public:
  explicit LocaleScope(const NSString* identifier) {
    detail::replaceCurrentLocale(NSLocale::localeWithLocaleIdentifier(identifier));
  }
  ~LocaleScope() { detail::replaceCurrentLocale(nullptr); }
  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;
};

}  // namespace quoll::inline v1
