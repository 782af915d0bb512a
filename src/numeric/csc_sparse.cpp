// SPDX-License-Identifier: Apache-2.0
#include "numeric/csc_sparse.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

#include "numeric/svd.h"

namespace Sparse {

CSCSparse CSCSparse::fromDense(std::span<const double> a, int64_t rows, int64_t cols) {
  std::vector<Triplet> entries;
  for (int64_t i = 0; i < rows; ++i)
    for (int64_t j = 0; j < cols; ++j)
      if (a[i * cols + j] != 0) entries.push_back({i, j, a[i * cols + j]});
  return fromTriplets(entries, rows, cols);
}

CSCSparse CSCSparse::fromTriplets(std::span<const Triplet> entries, int64_t rows, int64_t cols) {
  std::vector<Triplet> sorted(entries.begin(), entries.end());
  // Stable, so that entries at one place are added in the order they came.
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const Triplet& p, const Triplet& q) { return std::tie(p.col, p.row) < std::tie(q.col, q.row); });
  CSCSparse m;
  m.rows = rows;
  m.cols = cols;
  m.colStart.assign(static_cast<std::size_t>(cols) + 1, 0);
  const Triplet* last = nullptr;
  for (const Triplet& entry : sorted) {
    if (entry.row < 0 || entry.row >= rows || entry.col < 0 || entry.col >= cols)
      throw std::out_of_range("sparse matrix entry outside the matrix");
    if (last != nullptr && last->row == entry.row && last->col == entry.col) {
      m.values.back() += entry.value;
    } else {
      m.rowIndex.push_back(entry.row);
      m.values.push_back(entry.value);
      ++m.colStart[entry.col + 1];
    }
    last = &entry;
  }
  for (int64_t j = 0; j < cols; ++j) m.colStart[j + 1] += m.colStart[j];
  return m;
}

void CSCSparse::set(double value, int64_t row, int64_t col) {
  const int64_t last = static_cast<int64_t>(colStart.size()) - 1;  // the column under way
  const bool follows =
      col > last || (col == last && (colStart[last] == static_cast<int64_t>(values.size()) || rowIndex.back() < row));
  if (row < 0 || row >= rows || col >= cols || !follows)
    throw std::out_of_range("sparse matrix entry outside the matrix or out of order");
  colStart.resize(static_cast<std::size_t>(col) + 1, static_cast<int64_t>(values.size()));
  values.push_back(value);
  rowIndex.push_back(row);
}

std::vector<double> CSCSparse::toDense() const {
  std::vector<double> a(Dense::area(rows, cols), 0.0);
  for (int64_t j = 0; j < cols; ++j)
    for (int64_t k = colStart[j]; k < colStart[j + 1]; ++k) a[rowIndex[k] * cols + j] = values[k];
  return a;
}

CSCSparse CSCSparse::upperTriangle() const {
  CSCSparse upper;
  upper.rows = rows;
  upper.cols = cols;
  for (int64_t j = 0; j < cols; ++j) {
    for (int64_t k = colStart[j]; k < colStart[j + 1] && rowIndex[k] <= j; ++k) {
      upper.rowIndex.push_back(rowIndex[k]);
      upper.values.push_back(values[k]);
    }
    upper.colStart.push_back(static_cast<int64_t>(upper.values.size()));
  }
  return upper;
}

}  // namespace Sparse
