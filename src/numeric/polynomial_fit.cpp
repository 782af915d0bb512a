// SPDX-License-Identifier: Apache-2.0
#include "numeric/polynomial_fit.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "numeric/line_equation.h"

namespace solver {

bool RPolyFit::solve() {
  result.clear();
  if (x.empty() || exponents.empty()) return false;
  double size = 0;
  for (const double at : x) size = std::max(size, std::abs(at));
  if (!std::isfinite(size)) return false;
  std::vector<int32_t> sorted(exponents.begin(), exponents.end());
  std::sort(sorted.begin(), sorted.end());
  if (sorted.front() < 0 || std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) return false;
  if (size == 0) size = 1;
  const auto rows = static_cast<int>(x.size()), cols = static_cast<int>(exponents.size());
  std::vector<double> a(x.size() * exponents.size()), b(x.size()), c;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double root = weights.empty() ? 1.0 : std::sqrt(weights[i]);
    for (std::size_t j = 0; j < exponents.size(); ++j)
      a[i * exponents.size() + j] = root * std::pow(x[i] / size, exponents[j]);
    b[i] = root * y[i];
  }
  if (!LineEqu::solveLineEqu(a, rows, cols, b, rows, 1, c)) return false;
  for (std::size_t j = 0; j < exponents.size(); ++j) {
    const double coefficient = c[j] / std::pow(size, exponents[j]);
    if (!std::isfinite(coefficient)) return false;
    result[exponents[j]] += coefficient;
  }
  return true;
}

}  // namespace solver
