// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/whittaker.h"

#include <algorithm>
#include <vector>

namespace Filter {

void whittaker(std::span<const double> x, double lambda, double* y) {
  const std::size_t n = x.size();
  if (lambda < 0.0 || n < 4) {
    if (y != x.data()) std::ranges::copy(x, y);
    return;
  }
  // L D L' of the pentadiagonal matrix: d the pivots, e and f the first and second diagonal of L.
  std::vector<double> d(n), e(n), f(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t edge = std::min(i, n - 1 - i);
    const double diagonal = 1.0 + lambda * (edge == 0 ? 1.0 : edge == 1 ? 5.0 : 6.0);
    const double beside = lambda * (i == 0 || i == n - 2 ? -2.0 : -4.0);
    const double e1 = i > 0 ? e[i - 1] : 0.0, d1 = i > 0 ? d[i - 1] : 0.0, f1 = i > 0 ? f[i - 1] : 0.0;
    const double f2 = i > 1 ? f[i - 2] : 0.0, d2 = i > 1 ? d[i - 2] : 0.0;
    d[i] = diagonal - e1 * e1 * d1 - f2 * f2 * d2;
    e[i] = (beside - d1 * e1 * f1) / d[i];
    f[i] = lambda / d[i];
    y[i] = x[i] - e1 * (i > 0 ? y[i - 1] : 0.0) - f2 * (i > 1 ? y[i - 2] : 0.0);
  }
  for (std::size_t i = n; i-- > 0;) {
    y[i] /= d[i];
    if (i + 1 < n) y[i] -= e[i] * y[i + 1];
    if (i + 2 < n) y[i] -= f[i] * y[i + 2];
  }
}

void whittaker2D(std::span<const double* const> rows, std::size_t cols, double down, double along, double* out) {
  for (std::size_t r = 0; r < rows.size(); ++r) whittaker({rows[r], cols}, along, out + r * cols);
  std::vector<double> column(rows.size());
  for (std::size_t c = 0; c < cols; ++c) {
    for (std::size_t r = 0; r < rows.size(); ++r) column[r] = out[r * cols + c];
    whittaker(column, down, column.data());
    for (std::size_t r = 0; r < rows.size(); ++r) out[r * cols + c] = column[r];
  }
}

}  // namespace Filter
