// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

/// Tables of tests/reference. Needs no test framework: the benchmarks read them too.
using Cells = std::vector<std::string>;

/// The cells of one line; in quotes a comma stands for itself and "" for a quote.
inline Cells cellsOf(const std::string& line) {
  Cells cells(1);
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"')
      cells.back() += line[++i];
    else if (c == '"')
      quoted = !quoted;
    else if (c == ',' && !quoted)
      cells.emplace_back();
    else
      cells.back() += c;
  }
  return cells;
}

/// The lines of tests/reference/<path> but for empty ones and those that begin with '#'.
inline std::vector<std::string> readLines(const std::string& path) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/" + path);
  if (!file) throw std::runtime_error("no reference table " + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  if (lines.empty()) throw std::runtime_error(path + " has no rows");
  return lines;
}

inline std::vector<Cells> readCsv(const std::string& path) {
  std::vector<Cells> rows;
  for (const std::string& line : readLines(path)) rows.push_back(cellsOf(line));
  return rows;
}
