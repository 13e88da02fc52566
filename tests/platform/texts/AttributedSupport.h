// SPDX-License-Identifier: MIT
// Attributes to try, and a text that shows its runs.
#pragma once

#include <string>

#include "QuollFoundation/platform/collections/NSDictionary.h"
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"
#include "QuollFoundation/testing.h"

namespace quoll::testsupport {

using namespace quoll::literals;

inline Ref<NSDictionary> colour(const char* name) { return NSDictionary::dictionaryWithEntries({{"colour"_ns, name}}); }

inline std::string shortText(const NSDictionary* attributes) {
  std::string all;
  for (const auto [key, value] : *attributes) {
    all += (all.empty() ? "" : ",") + key->description()->utf8() + "=" + value->description()->utf8();
  }
  return all;
}

/// `ab[colour=red]c[]`: each run with its attributes, as `attributesAtIndex:effectiveRange:` tells them.
inline std::string runsOf(const NSAttributedString* text) {
  std::string all;
  for (uint64_t at = 0; at < text->length();) {
    NSRange run{};
    const Ref<NSDictionary> attributes = text->attributesAtIndex_effectiveRange(at, &run);
    EXPECT_EQ(run.location, at) << "the runs leave a gap or overlap";
    if (run.location != at || run.length == 0) return all + "?";
    all += text->string()->substringWithRange(run)->utf8() + "[" + shortText(attributes) + "]";
    at = NSMaxRange(run);
  }
  return all;
}

}  // namespace quoll::testsupport
