// SPDX-License-Identifier: Apache-2.0
#include "support/reference_rows.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

#include "support/csv.h"

std::vector<ReferenceRow> readReference(const std::string& path) {
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

double ulpError(double value, double expected) {
  if (std::isnan(value) || std::isnan(expected))
    return std::isnan(value) && std::isnan(expected) ? 0 : std::numeric_limits<double>::infinity();
  if (value == expected) return 0;
  if (std::isinf(value) || std::isinf(expected)) return std::numeric_limits<double>::infinity();
  const double size = std::max(std::abs(expected), std::numeric_limits<double>::min());
  return std::abs(value - expected) / (std::nextafter(size, std::numeric_limits<double>::infinity()) - size);
}
