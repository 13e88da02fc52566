// SPDX-License-Identifier: MIT
// Surveys text files: how many lines they have, how long, how many of them blank, and how they end; by file, by
// extension, and the lengths that most lines have.
//
//     survey [--sort=COLUMN] [--words] FILE...
//
// COLUMN is lines, blank, longest, which, ends or name. With --words it counts the words too, of any language that is
// written with blanks or that has a dictionary.
//
// Exit status: 0; 1 when a file could not be read or decoded (the others are surveyed all the same); 2 for bad usage.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>

#include "Decoding.h"
#include "Table.h"

using namespace quoll;

namespace {

void complain(const char* file, const char* problem) { std::cerr << "survey: " << file << ": " << problem << '\n'; }

/// Nothing where the file can't be read; errno says why.
std::optional<std::string> readFile(const char* name) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name, "rb"), &std::fclose);
  if (!file) return std::nullopt;
  std::string bytes;
  char part[1 << 16];
  while (const size_t count = std::fread(part, 1, sizeof part, file.get())) bytes.append(part, count);
  if (std::ferror(file.get())) return std::nullopt;
  return bytes;
}

Ref<SurveyedFile> survey(const char* name, bool words) {
  const std::optional<std::string> bytes = readFile(name);
  if (!bytes) {
    complain(name, std::strerror(errno));
    return nullptr;
  }
  const Ref<NSString> text = decodeText(*bytes);
  if (!text) {
    complain(name, "is no text that can be decoded");
    return nullptr;
  }
  Findings found = surveyText(text);
  if (words) countWords(text, found);
  return make<SurveyedFile>(name, std::move(found));
}

}  // namespace

int main(int count, char** arguments) {
  constexpr std::string_view sortOption = "--sort=";
  std::string column = "name";
  bool words = false;
  int first = 1;
  for (; first < count && std::string_view(arguments[first]).starts_with("--"); ++first) {
    const std::string_view option = arguments[first];
    if (option == "--words") words = true;
    else if (option.starts_with(sortOption)) column = option.substr(sortOption.size());
    else column.clear();  // no column: shown how to use it
  }
  if (first >= count || std::find(std::begin(columns), std::end(columns), column) == std::end(columns)) {
    std::cerr << "usage: survey [--sort=lines|blank|longest|which|ends|name] [--words] FILE...\n";
    return 2;
  }
  const Ref<NSMutableArray> files = NSMutableArray::array();
  for (int i = first; i < count; ++i) push(files, survey(arguments[i], words));
  printFiles(files, NSString::stringWithUTF8(column));
  printExtensions(files);
  printLineLengths(files);
  if (words) printWords(files);
  return files->count() == static_cast<uint64_t>(count - first) ? 0 : 1;
}
