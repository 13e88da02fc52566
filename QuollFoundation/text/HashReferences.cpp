// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/HashReferences.h"

#include <array>

#include "QuollFoundation/platform/collections/NSError.h"
#include "QuollFoundation/platform/logging/NSLog.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/texts/NSRegularExpression.h"

namespace quoll::inline v1 {

namespace {

constexpr auto isHexDigit = [] {
  std::array<bool, 128> table{};
  for (const char digit : "0123456789abcdefABCDEF") table[static_cast<size_t>(digit)] = digit != '\0';
  return table;
}();

/// Of each run of hexadecimal digits no more than the first `most`. Without a branch on what the units are, as runs of
/// any length come from anywhere.
class Shortening {
 public:
  explicit Shortening(uint64_t most) : most_(most) {}
  template <class Unit> bool keeps(Unit unit) {
    const auto value = static_cast<char16_t>(unit);
    const bool isDigit = value < isHexDigit.size() && isHexDigit[value];
    run_ = (run_ + 1) & (uint64_t{0} - isDigit);
    return run_ <= most_;
  }

 private:
  const uint64_t most_;
  uint64_t run_ = 0;
};

Ref<NSString> shortened(const NSString* text, uint64_t most) {
  return text->visit([&]<class Unit>(std::basic_string_view<Unit> units) {
    size_t length = 0;
    Shortening counted(most);
    for (const Unit unit : units) length += counted.keeps(unit);
    return detail::Text::made<Unit>(length, [&](Unit* to) {
      Shortening written(most);
      for (size_t i = 0, place = 0; place < length; ++i) {
        to[place] = units[i];
        place += written.keeps(units[i]);
      }
    });
  });
}

/// The same as a replacement by "$1".
Ref<NSRegularExpression> expressionOf(int64_t length, Ref<NSError>* error) {
  constexpr NSString* digit = "[0123456789abcdef]"_ns;
  const Ref<NSString> pattern =
      NSString::stringWithFormat("(%@{%@})%@*"_ns, digit, NSString::stringWithFormat("%lld"_ns, length), digit);
  return NSRegularExpression::regularExpressionWithPattern_options_error(pattern, NSRegularExpressionCaseInsensitive,
                                                                         error);
}

}  // namespace

Ref<NSString> stringByShorteningHashRefsToLength(const NSString* receiver, int64_t length) {
  if (!receiver) return nullptr;
  constexpr int64_t surelyValid = 1000;  // as a count in an expression
  Ref<NSError> error;
  if ((length < 0 || length > surelyValid) && !expressionOf(length, &error)) {
    NSLog("%s, %@"_ns, "-[NSString(QFAdditions) stringByShorteningHashRefsToLength:]", error);
    return nullptr;
  }
  return shortened(receiver, static_cast<uint64_t>(length));
}

namespace detail {

extern constinit const AdditionGroup<NSString> hashReferenceAdditions{
    "QFAdditions", {method<&stringByShorteningHashRefsToLength>("stringByShorteningHashRefsToLength:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
