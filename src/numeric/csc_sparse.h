// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Sparse {

struct Triplet {
  int64_t row, col;
  double value;
};

/// Compressed sparse columns: the entries of column j are those from colStart[j] to colStart[j+1], by ascending
/// row, each row once.
struct CSCSparse {
  int64_t rows = 0, cols = 0;
  std::vector<int64_t> colStart{0};
  std::vector<int64_t> rowIndex;
  std::vector<double> values;

  /// From a row-major array; zeros are left out.
  static CSCSparse fromDense(std::span<const double> a, int64_t rows, int64_t cols);

  /// From entries in any order; those at one place are added up. Throws std::out_of_range for a place outside.
  static CSCSparse fromTriplets(std::span<const Triplet> entries, int64_t rows, int64_t cols);

  /// Appends an entry; those of a column follow each other, columns ascend, rows within a column too. finalize() ends
  /// the building. Throws std::out_of_range for a place outside or out of order.
  void set(double value, int64_t row, int64_t col);
  /// Closes the columns up to `cols`: values, rowIndex and colStart are then complete.
  void finalize() { colStart.resize(static_cast<std::size_t>(cols) + 1, static_cast<int64_t>(values.size())); }

  std::vector<double> toDense() const;  ///< row-major
  CSCSparse upperTriangle() const;      ///< with the diagonal: how a solver takes a symmetric matrix
};

}  // namespace Sparse
