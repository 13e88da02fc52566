// SPDX-License-Identifier: MIT
// Against ICU itself, which only programs with the library's objects link.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/uregex.h>

#include <string>
#include <vector>

#include "QuollFoundation/platform/texts/NSRegularExpression.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

/// What ICU makes of it, with its own loop.
std::u16string replacedByICU(const std::u16string& pattern, const std::u16string& string, const std::u16string& with) {
  UErrorCode status = U_ZERO_ERROR;
  URegularExpression* regex = uregex_open(pattern.data(), static_cast<int32_t>(pattern.size()), 0, nullptr, &status);
  uregex_setText(regex, string.data(), static_cast<int32_t>(string.size()), &status);
  std::u16string result(64 + (string.size() + 1) * (with.size() + 4 * string.size() + 4), u'\0');
  const int32_t length = uregex_replaceAll(regex, with.data(), static_cast<int32_t>(with.size()), result.data(),
                                           static_cast<int32_t>(result.size()), &status);
  uregex_close(regex);
  RC_ASSERT(U_SUCCESS(status));
  result.resize(static_cast<size_t>(length));
  return result;
}

RC_GTEST_PROP(NSRegularExpression, ReplacesAsICUDoes, ()) {
  const auto string = *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(u"aab c1é")));
  const auto pattern = *rc::gen::elementOf(std::vector<std::u16string>{
      u"(a)", u"(a+)", u"(a*)", u"(a)|b", u"(\\w)(\\d)?", u"(^.)", u"(.$)", u"\\b()", u"(é)?c*"});
  auto with = *rc::gen::container<std::vector<std::u16string>>(
      rc::gen::elementOf(std::vector<std::u16string>{u"$0", u"$1", u"x", u"\\$", u"\\\\", u"é"}));
  std::u16string whole;
  for (const std::u16string& each : with) whole += each;
  if (whole.size() > 8) whole = u"$1";
  const std::u16string expected = replacedByICU(pattern, string, whole);
  const auto regex =
      NSRegularExpression::initWithPattern_options_error(NSString::stringWithCharacters(pattern), {}, nullptr);
  for (const Ref<NSString>& stored : {NSString::stringWithCharacters(string),
                                      NSString::stringWithCharacters(string + u"é")->substringToIndex(string.size())}) {
    const auto result = regex->stringByReplacingMatchesInString_options_range_withTemplate(
        stored, {}, {0, stored->length()}, NSString::stringWithCharacters(whole));
    RC_ASSERT(result->utf16() == expected);
  }
}

}  // namespace
