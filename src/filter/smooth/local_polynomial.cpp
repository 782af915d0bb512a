// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/local_polynomial.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Filter {

namespace {
double dot(const double* x, const double* y, std::size_t n) { return std::inner_product(x, x + n, y, 0.0); }
}  // namespace

OrthogonalPolynomials::OrthogonalPolynomials(std::span<const double> abscissae, std::size_t degree) {
  const std::size_t n = abscissae.size();
  if (n == 0) return;
  const auto [least, greatest] = std::ranges::minmax(abscissae);
  middle = least / 2.0 + greatest / 2.0;
  if (greatest > least) scale = 2.0 / (greatest - least);
  basis.emplace_back(n, 1.0 / std::sqrt(static_cast<double>(n)));
  while (basis.size() <= degree && basis.size() < n) {
    const std::vector<double>& last = basis.back();
    std::vector<double> next(n), step(basis.size() + 1, 0.0);
    for (std::size_t i = 0; i < n; ++i) next[i] = (abscissae[i] - middle) * scale * last[i];
    const double before = std::sqrt(dot(next.data(), next.data(), n));
    for (int round = 0; round < 2; ++round)
      for (std::size_t j = 0; j < basis.size(); ++j) {
        const double share = dot(basis[j].data(), next.data(), n);
        step[j] += share;
        for (std::size_t i = 0; i < n; ++i) next[i] -= share * basis[j][i];
      }
    const double norm = std::sqrt(dot(next.data(), next.data(), n));
    if (norm <= 1e-13 * before) break;  // nothing is left: no more distinct abscissae
    for (double& value : next) value /= norm;
    step.back() = norm;
    basis.push_back(std::move(next));
    steps.push_back(std::move(step));
  }
}

std::vector<double> OrthogonalPolynomials::evaluate(double x, bool slope) const {
  if (basis.empty()) return {};
  const double u = (x - middle) * scale;
  std::vector<double> p{basis[0][0]}, d{0.0};
  for (const std::vector<double>& step : steps) {
    double value = u * p.back(), rate = p.back() + u * d.back();
    for (std::size_t i = 0; i < p.size(); ++i) {
      value -= step[i] * p[i];
      rate -= step[i] * d[i];
    }
    p.push_back(value / step.back());
    d.push_back(rate / step.back());
  }
  if (!slope) return p;
  for (double& rate : d) rate *= scale;
  return d;
}

std::vector<double> OrthogonalPolynomials::fit(const double* y) const {
  std::vector<double> coefficients;
  for (const std::vector<double>& p : basis) coefficients.push_back(dot(p.data(), y, p.size()));
  return coefficients;
}

void OrthogonalPolynomials::fitted(std::span<const double> coefficients, double* out) const {
  for (std::size_t i = 0; !basis.empty() && i < basis[0].size(); ++i) {
    double sum = 0.0;
    for (std::size_t j = 0; j < basis.size(); ++j) sum += coefficients[j] * basis[j][i];
    out[i] = sum;
  }
}

std::vector<double> integers(double first, std::size_t count) {
  std::vector<double> all(count);
  std::iota(all.begin(), all.end(), first);
  return all;
}

void fitPolynomial(std::span<const double> y, std::size_t degree, std::span<double> out) {
  const OrthogonalPolynomials polynomials(integers(0.0, y.size()), degree);
  polynomials.fitted(polynomials.fit(y.data()), out.data());
}

}  // namespace Filter
