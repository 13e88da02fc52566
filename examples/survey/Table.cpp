// SPDX-License-Identifier: MIT
#include "Table.h"

#include <iostream>

using namespace quoll;

namespace {

void printRow(const Findings& found, const std::string& name, bool isTotal) {
  const auto longest = isTotal ? NSString::string() : NSString::stringWithFormat("line %llu"_ns, found.longestLine);
  std::cout << NSString::stringWithFormat("%9llu %9llu %9llu  %-12s  %-10s  %s\n"_ns, found.lines, found.blankLines,
                                          found.longestLength, longest->utf8().c_str(), found.terminatorMix().c_str(),
                                          name.c_str());
}

}  // namespace

void printTable(const std::vector<Row>& rows) {
  std::cout << "    lines     blank   longest  which         ends        file\n";
  Findings total;
  for (const Row& row : rows) {
    printRow(row.findings, row.name, false);
    total += row.findings;
  }
  const auto files = NSString::stringWithFormat("total of %lu %s"_ns, rows.size(), rows.size() == 1 ? "file" : "files");
  printRow(total, files->utf8(), true);
}
