// SPDX-License-Identifier: Apache-2.0
#include "network/train/row_set.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <fstream>
#include <utility>

namespace NetWork {

void appendRows(RowSet& set, const double* data, int32_t rows, int32_t cols, std::size_t stride) {
  if (data == nullptr || rows <= 0) return;
  const auto length = static_cast<std::size_t>(std::max(cols, 0));
  set.reserve(set.size() + static_cast<std::size_t>(rows));
  for (int32_t i = 0; i < rows; ++i, data += stride) set.emplace_back(data, data + length);
}

void appendRows(RowSet& set, const double* data, int32_t rows, int32_t cols) {
  appendRows(set, data, rows, cols, static_cast<std::size_t>(std::max(cols, 0)));
}

bool readRecords(const char* path, int32_t rows, int32_t inCols, int32_t outCols, RowSet& x, RowSet& y) {
  static_assert(std::endian::native == std::endian::little);
  if (path == nullptr || rows < 0 || inCols < 0 || outCols < 0) return false;
  const int64_t width = int64_t{inCols} + outCols, most = INT64_MAX / static_cast<int64_t>(sizeof(double));
  if (width > 0 && rows > most / width) return false;
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  // The size is looked at first: a wrong count must not ask for memory that no file fills.
  const int64_t bytes = rows * width * static_cast<int64_t>(sizeof(double));
  if (!file || static_cast<int64_t>(file.tellg()) < bytes) return false;
  file.seekg(0);
  std::vector<double> record(static_cast<std::size_t>(width));
  RowSet newX, newY;
  for (int32_t i = 0; i < rows && width > 0; ++i) {
    file.read(reinterpret_cast<char*>(record.data()), width * static_cast<int64_t>(sizeof(double)));
    if (!file) return false;
    newX.emplace_back(record.begin(), record.begin() + inCols);
    newY.emplace_back(record.begin() + inCols, record.end());
  }
  x = std::move(newX);
  y = std::move(newY);
  return true;
}

bool allOfLength(const RowSet& set, std::size_t length) {
  return std::ranges::all_of(set, [length](const auto& row) { return row.size() == length; });
}

namespace {

/// One scale a column, made of the column's values by `of`.
template <class Of>
ColumnScales scalesOf(const RowSet& set, Of of) {
  ColumnScales scales(set.empty() ? 0 : set[0].size());
  std::vector<double> column(set.size());
  for (std::size_t k = 0; k < scales.size(); ++k) {
    for (std::size_t i = 0; i < set.size(); ++i) column[i] = set[i][k];
    scales[k] = of(column);
  }
  return scales;
}

double inverseOr0(double size) { return size > 0.0 ? 1.0 / size : 0.0; }

}  // namespace

ColumnScales unitRange(const RowSet& set) {
  return scalesOf(set, [](const std::vector<double>& column) {
    const auto [least, most] = std::ranges::minmax(column);
    return ColumnScale{least, inverseOr0(most - least)};
  });
}

ColumnScales standardize(const RowSet& set) {
  return scalesOf(set, [](const std::vector<double>& column) {
    const auto n = static_cast<double>(column.size());
    double mean = 0.0, squares = 0.0;
    for (const double x : column) mean += x / n;
    for (const double x : column) squares += (x - mean) * (x - mean);
    return ColumnScale{mean, inverseOr0(std::sqrt(squares / n))};
  });
}

void rescale(RowSet& set, const ColumnScales& scales) {
  for (auto& row : set)
    for (std::size_t k = 0; k < std::min(row.size(), scales.size()); ++k)
      row[k] = (row[k] - scales[k].offset) * scales[k].factor;
}

}  // namespace NetWork
