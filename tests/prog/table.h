// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// The cells of tests/reference/prog/<name>, row by row, without comments.
inline std::vector<std::vector<std::string>> table(const std::string& name) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/prog/" + name);
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    rows.emplace_back();
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) rows.back().push_back(cell);
  }
  EXPECT_FALSE(rows.empty()) << name;
  return rows;
}
