// SPDX-License-Identifier: Apache-2.0
#include "support/csv.h"

#include <fstream>
#include <stdexcept>

Cells cellsOf(const std::string& line) {
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

std::vector<std::string> readLines(const std::string& path) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/" + path);
  if (!file) throw std::runtime_error("no reference table " + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  if (lines.empty()) throw std::runtime_error(path + " has no rows");
  return lines;
}

std::vector<Cells> readCsv(const std::string& path) {
  std::vector<Cells> rows;
  for (const std::string& line : readLines(path)) rows.push_back(cellsOf(line));
  return rows;
}
