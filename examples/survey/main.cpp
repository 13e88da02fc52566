// SPDX-License-Identifier: MIT
// Surveys text files: how many lines they have, how long, how many of them blank, and how they end.
//
//     survey FILE...
//
// Exit status: 0; 1 when a file could not be read or decoded (the others are surveyed all the same); 2 for bad usage.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>

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

std::optional<Row> survey(const char* name) {
  const std::optional<std::string> bytes = readFile(name);
  if (!bytes) {
    complain(name, std::strerror(errno));
    return std::nullopt;
  }
  const Ref<NSString> text = decodeText(*bytes);
  if (!text) {
    complain(name, "is no text that can be decoded");
    return std::nullopt;
  }
  return Row{name, surveyText(text)};
}

}  // namespace

int main(int count, char** files) {
  if (count < 2) {
    std::cerr << "usage: survey FILE...\n";
    return 2;
  }
  std::vector<Row> rows;
  int status = 0;
  for (int i = 1; i < count; ++i) {
    if (std::optional<Row> row = survey(files[i])) rows.push_back(std::move(*row));
    else status = 1;
  }
  printTable(rows);
  return status;
}
