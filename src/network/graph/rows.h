// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace NetWork {

/// Rows of doubles of one length, one after another in one block. The shape is fixed once and for all.
class Rows {
 public:
  Rows(std::size_t rows, std::size_t cols) : rowTotal(rows), colTotal(cols), cells(rows * cols) {}

  std::size_t rowCount() const { return rowTotal; }
  std::size_t colCount() const { return rowTotal == 0 ? 0 : colTotal; }  ///< length of row 0
  std::size_t size() const { return cells.size(); }

  double* data() { return cells.data(); }
  const double* data() const { return cells.data(); }
  double* row(std::size_t i) { return cells.data() + i * colTotal; }
  const double* row(std::size_t i) const { return cells.data() + i * colTotal; }
  std::span<double> all() { return cells; }
  std::span<const double> all() const { return cells; }

 private:
  std::size_t rowTotal, colTotal;
  std::vector<double> cells;
};

}  // namespace NetWork
