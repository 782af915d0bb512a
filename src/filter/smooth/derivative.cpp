// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/derivative.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "filter/smooth/local_polynomial.h"

namespace Filter {

namespace {

constexpr std::size_t kPoints = 5;

/// First of `size` points around i that all lie inside 0..n-1.
std::size_t windowStart(std::size_t i, std::size_t size, std::size_t n) {
  return std::min(i - std::min(i, size / 2), n - size);
}

/// Derivative at point i of the polynomial through the points, by barycentric weights (Berrut & Trefethen 2004).
double slopeAt(std::size_t i, std::span<const double> x, const double* y) {
  std::array<double, kPoints> weight{};
  for (std::size_t j = 0; j < x.size(); ++j) {
    double product = 1.0;
    for (std::size_t k = 0; k < x.size(); ++k)
      if (k != j) product *= x[j] - x[k];
    weight[j] = 1.0 / product;
  }
  double slope = 0.0;
  for (std::size_t j = 0; j < x.size(); ++j)
    if (j != i) slope += weight[j] / weight[i] / (x[i] - x[j]) * (y[j] - y[i]);
  return slope;
}

}  // namespace

void derivative(std::span<const double> x, const double* y, double* dy) {
  const std::size_t n = x.size(), size = std::min(kPoints, n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t start = windowStart(i, size, n);
    dy[i] = slopeAt(i - start, x.subspan(start, size), y + start);
  }
}

void derivativeEven(std::span<const double> y, double dh, double* dy) {
  derivative(integers(0.0, y.size()), y.data(), dy);
  for (std::size_t i = 0; i < y.size(); ++i) dy[i] /= dh;
}

int32_t firstDifferences(std::span<const double> x, double* out) {
  if (x.empty()) return 0;
  for (std::size_t i = 0; i + 1 < x.size(); ++i) out[i] = x[i + 1] - x[i];
  return static_cast<int32_t>(x.size() - 1);
}

void derivativeByPieces(std::span<const double> x, const double* y, std::size_t degree, std::size_t width, double* dy) {
  const std::size_t n = x.size(), size = std::clamp<std::size_t>(width, 1, std::max<std::size_t>(n, 1));
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t start = windowStart(i, size, n);
    const OrthogonalPolynomials polynomials(x.subspan(start, size), degree);
    const std::vector<double> fit = polynomials.fit(y + start), slopes = polynomials.slopes(x[i]);
    dy[i] = std::inner_product(fit.begin(), fit.end(), slopes.begin(), 0.0);
  }
}

}  // namespace Filter
