// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/linear_fit.h"

#include <cmath>

#include "expresssearch/kernels.h"
#include "expresssearch/small_solve.h"

namespace Search {

std::vector<double> linearFit(const Vectors& rows, std::span<const double> target) {
  const std::size_t n = rows.size(), stride = n + 1;
  std::vector<double> scale(n), equations(n * stride), coef(n);
  for (std::size_t k = 0; k < n; ++k) {
    const double square = dot(rows[k], rows[k]);
    scale[k] = square > 0.0 ? 1.0 / std::sqrt(square) : 1.0;
  }
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j <= i; ++j)
      equations[i * stride + j] = equations[j * stride + i] = dot(rows[i], rows[j]) * scale[i] * scale[j];
    equations[i * stride + n] = dot(rows[i], target) * scale[i];
  }
  smallSolve(equations, coef);
  for (std::size_t k = 0; k < n; ++k) coef[k] *= scale[k];
  return coef;
}

}  // namespace Search
