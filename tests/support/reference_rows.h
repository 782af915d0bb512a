// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/csv.h"

/// One row of a reference table: a case name, its arguments, the expected value and the tolerance in ulps.
struct ReferenceRow {
  std::string name;
  std::vector<double> arguments;
  double expected;
  double ulps;
  std::string text;
};

/// Reads tests/reference/<path>. A row is `name,arg...,expected,ulps` with the arguments as hexadecimal floats and the
/// expected value in decimal digits (inf, -inf and nan as such).
inline std::vector<ReferenceRow> readReference(const std::string& path) {
  std::vector<ReferenceRow> rows;
  for (const std::string& line : readLines(path)) {
    const Cells cells = cellsOf(line);
    if (cells.size() < 3) throw std::runtime_error(path + ": short row: " + line);
    const auto number = [&](std::size_t i) { return std::strtod(cells[i].c_str(), nullptr); };
    ReferenceRow row{cells[0], {}, number(cells.size() - 2), number(cells.size() - 1), line};
    for (std::size_t i = 1; i + 2 < cells.size(); ++i) row.arguments.push_back(number(i));
    rows.push_back(row);
  }
  return rows;
}

/// Distance in units in the last place of the expected value; 0 for equal infinities and for two NaNs.
inline double ulpError(double value, double expected) {
  if (std::isnan(value) || std::isnan(expected))
    return std::isnan(value) && std::isnan(expected) ? 0 : std::numeric_limits<double>::infinity();
  if (value == expected) return 0;
  if (std::isinf(value) || std::isinf(expected)) return std::numeric_limits<double>::infinity();
  const double size = std::max(std::abs(expected), std::numeric_limits<double>::min());
  return std::abs(value - expected) / (std::nextafter(size, std::numeric_limits<double>::infinity()) - size);
}
