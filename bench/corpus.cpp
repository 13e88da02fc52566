// SPDX-License-Identifier: MIT
#include "bench/corpus.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace {

using bench::Rng;
using Words = std::vector<std::string>;

constexpr std::string_view kWords =
    "the of and to a in that is was he for it with as his on be at by had not are but from or have an they "
    "which one you were her all she there would their we him been has when who will more no if out so said "
    "what up its about into than them can only other new some could time these two may then do first any my "
    "now such like our over man me even most made after also did many before must through back years where "
    "much your way well down should because each just those people how too little state good very make world "
    "still own see men work long get here between both life being under never day same another know while "
    "last might us great old year off come since against go came right used take three house without around "
    "small however found thought went part once general high upon school every don't does got united left "
    "number course war until always away something fact though water less public put think almost hand enough "
    "far took head yet government system better set told nothing night end why called didn't eyes find going "
    "look asked later knew point next program city business give group toward young days let room word "
    "president side social given present several order national possible rather second face per among form "
    "important often things looked early white case large need four within felt children along saw best "
    "church ever least power development light thing seemed family interest want members mind country area "
    "others experience administration understanding international responsibility circumstances";
constexpr std::string_view kForeign = "café naïve résumé — façade Zürich it’s “quoted” €25 Ångström";

template <const std::string_view& text>
const Words& words() {
  static const Words all = [] {
    std::istringstream in{std::string(text)};
    return Words(std::istream_iterator<std::string>(in), {});
  }();
  return all;
}
template <const std::string_view& text>
const std::string& word(std::uint64_t dice) {
  return words<text>()[dice % words<text>().size()];
}

std::size_t g_lf, g_all;

std::string make_text() {
  std::string t;
  t.reserve(bench::kTextBytes + 256);
  Rng r{2026};
  std::size_t column = 0, sentence = 0;
  const Words& common = words<kWords>();
  while (t.size() < bench::kTextBytes) {
    std::uint64_t dice = r();
    double u = double(dice >> 40) / double(1 << 24);
    const std::string& w =
        dice % 101 == 0 ? word<kForeign>(dice >> 8) : common[std::size_t(double(common.size()) * u * u)];
    std::size_t at = t.size();
    if (dice % 97 == 1) t += std::to_string(1 + (dice >> 16) % 2050);
    else t += w;
    if (sentence == 0 && t[at] >= 'a' && t[at] <= 'z') t[at] -= 32;
    ++sentence;
    column += t.size() - at + 1;
    if (sentence > 6 && (dice >> 24) % 9 == 0) {
      t += (dice >> 28) % 12 ? '.' : '?';
      sentence = 0;
    } else if ((dice >> 24) % 13 == 0) t += ',';
    if (column < 68) {
      t += ' ';
      continue;
    }
    column = 0;
    std::uint64_t kind = (dice >> 32) % 200;
    ++g_all;
    if (kind < 4) {
      t += "\r\n";
      ++g_lf;
    } else if (kind == 4) t += '\r';
    else if (kind == 5) t += "\xC2\x85";
    else if (kind == 6) t += "\xE2\x80\xA8";
    else if (kind == 7) t += "\xE2\x80\xA9";
    else {
      t += '\n';
      ++g_lf;
    }
  }
  t += "\nend";
  ++g_all;
  ++g_lf;
  return t;  // ends without a terminator: one more line
}

// Lines of 79 units and a line feed; every `foreign`th word isn't ASCII. A block of lines is repeated, which makes a
// long text quickly and lines no more regular to a scan.
template <class Text>
Text make_lines80(std::size_t lines, unsigned foreign) {
  constexpr std::size_t kBlock = 8192;
  Rng r{80};
  Text t;
  t.reserve(lines * 80);
  for (std::size_t n = 0; n < lines && n < kBlock; ++n) {
    Text line;
    while (line.size() < 79) {
      const std::uint64_t dice = r();
      const std::string& w = foreign && dice % foreign == 0 ? word<kForeign>(dice >> 8) : word<kWords>(dice >> 8);
      if constexpr (std::is_same_v<Text, std::string>) line += w;
      else line += bench::to16(w);
      line += ' ';
    }
    line.resize(79);
    t += line;
    t += '\n';
  }
  while (t.size() < lines * 80) t.append(t, 0, std::min(t.size(), lines * 80 - t.size()));
  t.back() = '.';  // the last line has no terminator: every way of counting agrees
  return t;
}

constexpr std::string_view kJapanese =
    "日本 東京 言葉 世界 時間 人間 会社 学校 先生 電車 天気 今日 明日 昨日 新聞 写真 音楽 料理 友達 "
    "家族 仕事 問題 研究 文化 歴史 経済 政治 社会 国際 関係 の は が を に で と も から まで "
    "より など です ます した いる ある する なる こと もの ため よう ところ これ それ あれ この "
    "その あの とても すこし もっと コンピュータ テレビ ニュース ホテル レストラン データ システム "
    "インターネット プログラム メール";

// Clauses of three to eight words, three clauses a sentence, about every sixth sentence ends a line; a number in Latin
// digits now and then.
std::string make_japanese() {
  std::string t;
  t.reserve(bench::kTextBytes + 256);
  Rng r{31};
  while (t.size() < bench::kTextBytes) {
    for (int clause = 0; clause < 3; ++clause) {
      for (std::uint64_t left = 3 + r.below(6); left > 0; --left) t += word<kJapanese>(r());
      if (r.below(12) == 0) t += std::to_string(1 + r.below(2050));
      t += clause < 2 ? "、" : "。";
    }
    if (r.below(6) == 0) t += '\n';
  }
  return t;
}

}  // namespace

namespace bench {

const std::string& japanese8() {
  static const std::string t = make_japanese();
  return t;
}
std::string lines80_ascii(std::size_t bytes) { return make_lines80<std::string>(bytes / 80, 0); }
std::u16string lines80_utf16(std::size_t bytes) { return make_lines80<std::u16string>(bytes / 160, 101); }

std::u16string to16(const std::string& s) {
  std::u16string o;
  o.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    unsigned char c = s[i];
    char32_t v;
    if (c < 0x80) {
      v = c;
      i += 1;
    } else if (c < 0xE0) {
      v = (c & 31u) << 6 | (s[i + 1] & 63u);
      i += 2;
    } else {
      v = (c & 15u) << 12 | (s[i + 1] & 63u) << 6 | (s[i + 2] & 63u);
      i += 3;
    }  // no word needs more
    o += char16_t(v);
  }
  return o;
}

const std::string& text8() {
  static const std::string t = make_text();
  return t;
}
const std::u16string& text16() {
  static const std::u16string t = to16(text8());
  return t;
}
std::size_t lines_lf() {
  text8();
  return g_lf + 1;
}
std::size_t lines_all() {
  text8();
  return g_all + 1;
}
const std::u16string& words16() {
  static const std::u16string t = text16().substr(0, kWordUnits);
  return t;
}

const std::vector<std::u16string>& phrases16() {
  static const std::vector<std::u16string> v = [] {
    std::vector<std::u16string> o;
    Rng r{7};
    for (int i = 0; i < 1000; ++i) {
      std::u16string p;
      while (p.size() < 36) {
        if (!p.empty()) p += u' ';
        for (char c : word<kWords>(r())) p += char16_t(c);
      }
      o.push_back(p);
    }
    return o;
  }();
  return v;
}

const std::vector<std::string>& file_names() {
  static const std::vector<std::string> v = [] {
    std::vector<std::string> o;
    Rng r{11};
    char b[96];
    for (int i = 0; i < 100000; ++i) {
      unsigned a = unsigned(r.below(20000)), c = unsigned(r.below(300));
      switch (r.below(8)) {
        case 0: std::snprintf(b, sizeof b, "IMG_%04u.JPG", a); break;
        case 1: std::snprintf(b, sizeof b, "img%u.jpg", a); break;
        case 2:
          std::snprintf(b, sizeof b, "Screenshot %u-%02u-%02u at %u.%02u.png", 2000 + c % 26, 1 + a % 12, 1 + a % 28,
                        a % 24, a % 60);
          break;
        case 3: std::snprintf(b, sizeof b, "Chapter %u - Part %u.txt", c, a); break;
        case 4: std::snprintf(b, sizeof b, "report-final-v%u.%u.pdf", c, a); break;
        case 5: std::snprintf(b, sizeof b, "track %02u (%u).flac", c, a); break;
        case 6: std::snprintf(b, sizeof b, "R\xC3\xA9sum\xC3\xA9 %u.doc", a); break;
        default: std::snprintf(b, sizeof b, "a%ub%uc%u", c, a, c % 7); break;
      }
      o.emplace_back(b);
    }
    return o;
  }();
  return v;
}

}  // namespace bench
