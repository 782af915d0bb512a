// SPDX-License-Identifier: Apache-2.0
#include "numeric/line_equation.h"

#include <algorithm>
#include <limits>

#include "numeric/svd.h"

namespace LineEqu {

bool solveLineEqu(std::span<const double> a, int rows, int cols, std::span<const double> b, int rowsB, int colsB,
                  std::vector<double>& x) {
  if (rows != rowsB) return false;
  x = Dense::leastSquares(a, std::max(rows, 0), std::max(cols, 0), b, std::max(colsB, 0));
  return true;
}

}  // namespace LineEqu
