// SPDX-License-Identifier: MIT
#pragma once

/// The texts and loops that the members of the families of text share.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "bench/corpus.h"

namespace bench {

/// The English text without its few words beyond ASCII.
inline const std::u16string& english16() {
  static const std::u16string text = [] {
    std::u16string all = words16();
    std::erase_if(all, [](char16_t unit) { return unit >= 0x80; });
    return all;
  }();
  return text;
}
/// English, Japanese and signs in turn.
inline const std::u16string& mixed16() {
  static const std::u16string text = [] {
    const std::u16string japanese = to16(japanese8().substr(0, 1200 * 1024));
    const std::u16string& english = words16();
    std::u16string all;
    for (size_t i = 0; i + 120 < japanese.size() && all.size() < kWordUnits / 4; i += 120) {
      all.append(english, i, 120).append(japanese, i, 120);
    }
    return all;
  }();
  return text;
}

/// Names of 19 units that differ in a number.
inline const std::vector<std::string>& numbered_names() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (int i = 0; i < 1024; ++i) {
      std::string number = std::to_string(i * 7919 % 100000);
      all.push_back("Photo " + std::string(8 - number.size(), 'x') + number + ".jpeg");
      all.back().resize(19, 'g');
    }
    return all;
  }();
  return names;
}

/// Log lines of 16 MiB, each with a commit's name.
inline const std::string& log8() {
  static const std::string text = [] {
    std::string all;
    Rng r{11};
    while (all.size() < (16u << 20)) {
      char line[128];
      const int length =
          std::snprintf(line, sizeof line, "2024-01-%02d merge %016llx%016llx%08x into branch, ok %d\n",
                        int(r.below(28)) + 1, static_cast<unsigned long long>(r()),
                        static_cast<unsigned long long>(r()), unsigned(r.below(1u << 31)), int(r.below(100)));
      all.append(line, size_t(length));
    }
    return all;
  }();
  return text;
}

/// 1 MiB of English text with line ends, tabs and quotes.
inline const std::string& page8() {
  static const std::string text = [] {
    std::string all(english16().begin(), english16().begin() + (1 << 20));
    for (size_t i = 500; i < all.size(); i += 997) all[i] = i % 3 ? '"' : '\t';
    return all;
  }();
  return text;
}

}  // namespace bench
