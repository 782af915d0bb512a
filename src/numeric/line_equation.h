// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

/// Systems of linear equations. Matrices are row-major.
namespace LineEqu {

/// Solves A X = B, A rows x cols, B rowsB x colsB, by the singular value decomposition of A: least squares, and of the
/// least-squares solutions the one of least norm. Fills x with X, cols x colsB. False, with x untouched, when
/// rows != rowsB. A non-finite entry of A or B gives NaN: in A everywhere, in B in its column.
bool solveLineEqu(std::span<const double> a, int rows, int cols, std::span<const double> b, int rowsB, int colsB,
                  std::vector<double>& x);

}  // namespace LineEqu
