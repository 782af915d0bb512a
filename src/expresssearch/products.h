// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Search {

/// Inner products of the columns that rational candidates are made of: ones, the terms, the terms times y, and y. Each
/// is formed once, when it is first asked for, and kept in a table of about 16 bytes a pair of terms. Above kMostBytes
/// there is no table and every product is summed anew: the same sums, hence the same doubles.
class Products {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

  /// Position k stands for terms[order[k]].
  Products(const std::vector<std::vector<double>>& terms, std::span<const uint32_t> order, std::span<const double> y);

  static constexpr std::size_t kOnes = 0;
  std::size_t term(std::size_t position) const { return 1 + position; }
  std::size_t termTimesY(std::size_t position) const { return 1 + positions + position; }
  std::size_t y() const { return 1 + 2 * positions; }

  const double* column(std::size_t i) const { return columns[i]; }

  /// Product of columns i >= j.
  double operator()(std::size_t i, std::size_t j) {
    if (table.empty()) return summed(i, j);
    double& cell = table[i * (i + 1) / 2 + j];
    if (cell != cell) cell = summed(i, j);  // NaN: not formed yet
    return cell;
  }

 private:
  double summed(std::size_t i, std::size_t j) const;

  std::size_t rows, positions;
  std::vector<double> ones;
  std::vector<std::vector<double>> timesY;
  std::vector<const double*> columns;
  std::vector<double> table;  ///< lower triangle, row by row
};

}  // namespace Search
