// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "prog/exact/bounded_problem.h"
#include "prog/exact/elimination.h"

namespace LineProg {

/// The basis matrix B = L U of a simplex, its exchanged columns kept as elementary matrices (the product form of
/// Dantzig and Orchard-Hays 1954). Zeros of a right side are passed over: L and U are held by rows and by columns.
template <class Real>
class BasisFactor {
 public:
  /// Factors the columns of the basic variables and orders these so that basic[i] is the one pivoted in row i. Where
  /// the columns depend on each other, logical variables take the place of those that are left over.
  void factor(const BoundedProblem& problem, std::vector<int>& basic);
  /// v = B^-1 v.
  void forward(std::vector<Real>& v) const;
  /// v = B^-T v.
  void backward(std::vector<Real>& v) const;
  /// The column of place `row` becomes the one of which `column` is B^-1 times.
  void replace(int row, const std::vector<Real>& column);

  /// No column was exchanged since the factors were made.
  bool fresh() const { return exchanges.empty(); }
  /// The exchanges cost more than factors made anew.
  bool worn() const;

 private:
  struct Exchange {
    int row;
    Real pivot;
    std::size_t end;  ///< of its other entries
  };

  void peel(const BoundedProblem& problem, const std::vector<int>& basic);
  void settle(int row, int column, Real pivot);
  void eliminate();

  Grouped<Real> lowerByRow, lowerByColumn, upperByRow, upperByColumn;
  std::vector<int> order;    ///< rows in the order of their pivots
  std::vector<Real> pivots;  ///< by row
  std::vector<Exchange> exchanges;
  std::vector<typename Grouped<Real>::Entry> exchanged;

  // Room of factor().
  Elimination<Real> kernel;
  std::vector<Triple<Real>> lower, upper;  ///< (row, row of the column's pivot, value); columns by place until the end
  Grouped<Real> columns, rows;             ///< of the basis matrix
  std::vector<int> rowOf, placeOf;         ///< by place of a basic variable: its pivot's row; the reverse
};

extern template class BasisFactor<double>;
extern template class BasisFactor<long double>;

}  // namespace LineProg
