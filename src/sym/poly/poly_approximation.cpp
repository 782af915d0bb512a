// SPDX-License-Identifier: Apache-2.0
#include "sym/poly/poly_approximation.h"

#include <gmpxx.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "numeric/line_equation.h"

namespace Sym {

std::optional<PolyTerms> chebyshevApproximation(FunctionRef<double(double)> f, double a, double b, int32_t degree) {
  const int32_t n = degree + 1;
  const double half = (b - a) / 2, centre = (b + a) / 2;
  std::vector<double> samples(static_cast<size_t>(n));
  for (int32_t k = 0; k < n; ++k) samples[k] = f(centre + half * std::cos(std::numbers::pi * (k + 0.5) / n));
  double largest = 0;
  for (const double sample : samples) {
    if (!std::isfinite(sample)) return {};
    largest = std::max(largest, std::abs(sample));
  }
  const double noise = std::max(1e-30, 2 * std::numeric_limits<double>::epsilon() * largest);
  std::vector<double> series(static_cast<size_t>(n));
  for (int32_t j = 0; j < n; ++j) {
    double sum = 0;
    // The angle is reduced as an integer, so that high orders keep their digits.
    for (int32_t k = 0; k < n; ++k)
      sum +=
          samples[k] * std::cos(std::numbers::pi * static_cast<double>(int64_t{j} * (2 * k + 1) % (4 * n)) / (2 * n));
    series[j] = (j == 0 ? 1.0 : 2.0) / n * sum;
    if (std::abs(series[j]) < noise) series[j] = 0;
  }

  // T_j(u) with u = (x - centre) / half by its recurrence; coefficients grow as 2^j (1 + |centre/half|)^j.
  const bool identity = std::abs(half - 1) < 1e-15 && std::abs(centre) < 1e-15;
  const double growth = 2 + std::log2(2 + (std::abs(centre) + 1) / std::abs(half));
  const auto bits = static_cast<mp_bitcnt_t>(128 + std::min(growth, 4000.0) * n);
  const mpf_class zero(0, bits);
  mpf_class shift(identity ? 0 : centre, bits), scale(identity ? 1 : half, bits);
  std::vector<mpf_class> before(samples.size(), zero), now(samples.size(), zero), sum(samples.size(), zero);
  now[0] = 1;
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t i = 0; i <= j; ++i) sum[i] += now[i] * series[j];
    std::vector<mpf_class> next(samples.size(), zero);
    const int factor = j == 0 ? 1 : 2;
    for (int32_t i = 0; i <= j && j + 1 < n; ++i) {
      next[i + 1] += factor * now[i] / scale;
      next[i] -= factor * now[i] * shift / scale;
    }
    for (int32_t i = 0; i < n; ++i) next[i] -= before[i];
    if (j == 0) std::fill(before.begin(), before.end(), zero);
    before = std::move(now);
    now = std::move(next);
  }
  PolyTerms terms;
  for (int32_t i = 0; i < n; ++i)
    if (const double c = sum[i].get_d(); c != 0) terms[i] = c;
  return terms;
}

}  // namespace Sym

namespace solver {

void RPolyFit::setPoints(std::span<const double> xs, std::span<const double> ys) {
  x = xs;
  y = ys;
}

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
  for (int i = 0; i < rows; ++i) {
    const double root = weights.empty() ? 1.0 : std::sqrt(weights[i]);
    for (int j = 0; j < cols; ++j) a[i * cols + j] = root * std::pow(x[i] / size, exponents[j]);
    b[i] = root * y[i];
  }
  if (!LineEqu::solveLineEqu(a, rows, cols, b, rows, 1, c)) return false;
  for (int j = 0; j < cols; ++j) {
    const double coefficient = c[j] / std::pow(size, exponents[j]);
    if (!std::isfinite(coefficient)) return false;
    result[exponents[j]] += coefficient;
  }
  return true;
}

}  // namespace solver
