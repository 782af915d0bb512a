// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "prog/line/problem.h"

namespace LineProg {

/// Entries of a sparse matrix, grouped by one of their two indices; `at` holds the other.
template <class Real>
struct Grouped {
  struct Entry {
    int at;
    Real value;
  };

  std::span<const Entry> operator[](int group) const {
    return {entries.data() + start[group], static_cast<std::size_t>(start[group + 1] - start[group])};
  }

  std::vector<int> start{0};
  std::vector<Entry> entries;
};

/// An entry of a sparse matrix on its own.
template <class Real>
struct Triple {
  int row, column;
  Real value;
};

template <class Real>
void groupByRow(std::span<const Triple<Real>> triples, int rows, Grouped<Real>& grouped);
template <class Real>
void groupByColumn(std::span<const Triple<Real>> triples, int columns, Grouped<Real>& grouped);

/// A linear programme in the form of a bounded simplex:
///
///     minimise  cost.x   under   A x + s = 0,   lower <= (x, s) <= upper
///
/// Variable rows x come first, the logical variable of row i has the number columns + i. The data are scaled by powers
/// of two, which costs no bit.
struct BoundedProblem {
  explicit BoundedProblem(const LineProblem& problem);

  int total() const { return columns + rows; }

  int rows, columns;
  Grouped<double> byRow, byColumn;
  std::vector<double> cost, lower, upper;
  /// By variable x: its value is scale times that of the scaled problem; 1 for integer ones.
  std::vector<double> scale;
  double costScale = 1;  ///< the scaled objective is costScale times the true one
};

}  // namespace LineProg
