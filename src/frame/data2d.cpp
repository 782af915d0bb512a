// SPDX-License-Identifier: Apache-2.0
#include "frame/data2d.h"

#include <algorithm>
#include <limits>

void Data2D_c::setRow(std::size_t row, const double* source) {
  if (row < rowCount()) std::copy_n(source, rows[row].size(), rows[row].begin());
}

void Data2D_c::getRow(std::size_t row, double* destination) const {
  if (row < rowCount()) std::ranges::copy(rows[row], destination);
}

void Data2D_c::setCol(std::size_t col, const double* source) {
  if (col >= colCount()) return;
  for (auto& row : rows) row[col] = *source++;
}

void Data2D_c::getCol(std::size_t col, double* destination) const {
  if (col >= colCount()) return;
  for (const auto& row : rows) *destination++ = row[col];
}

void Data2D_c::setAll(const double* source) {
  for (auto& row : rows) {
    std::copy_n(source, row.size(), row.begin());
    source += row.size();
  }
}

void Data2D_c::getAll(double* destination) const {
  for (const auto& row : rows) destination = std::ranges::copy(row, destination).out;
}

double Data2D_c::at(std::size_t row, std::size_t col) const {
  if (row >= rowCount() || col >= colCount()) return std::numeric_limits<double>::quiet_NaN();
  return rows[row][col];
}

void Data2D_c::minMax(double& minimum, double& maximum) const {
  minimum = 1e300;
  maximum = -1e300;
  for (const auto& row : rows)
    for (const double value : row) {
      if (value < minimum) minimum = value;
      if (value > maximum) maximum = value;
    }
}
