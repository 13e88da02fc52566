// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Findings.h"

/// One surveyed file.
struct Row {
  std::string name;
  Findings findings;
};

/// Prints a line a file, in columns, and a total.
void printTable(const std::vector<Row>& rows);
