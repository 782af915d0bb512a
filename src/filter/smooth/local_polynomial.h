// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Filter {

/// Polynomials of degree 0, 1, ... that are orthonormal on a set of abscissae, by Arnoldi's process on the
/// multiplication by the abscissa (Brubeck, Nakatsukasa & Trefethen 2021), orthogonalised twice: a least-squares fit on
/// any abscissae without the condition of a Vandermonde matrix.
class OrthogonalPolynomials {
 public:
  /// Up to the degree asked for or one less than there are distinct abscissae.
  OrthogonalPolynomials(std::span<const double> abscissae, std::size_t degree);

  std::size_t count() const { return basis.size(); }
  /// Polynomial j at the abscissae.
  std::span<const double> at(std::size_t j) const { return basis[j]; }
  /// All of them at x.
  std::vector<double> values(double x) const { return evaluate(x, false); }
  std::vector<double> slopes(double x) const { return evaluate(x, true); }
  /// Coefficients of the fit to y.
  std::vector<double> fit(const double* y) const;
  /// A fit at the abscissae.
  void fitted(std::span<const double> coefficients, double* out) const;

 private:
  std::vector<double> evaluate(double x, bool slope) const;

  double middle = 0.0, scale = 1.0;
  std::vector<std::vector<double>> basis;
  std::vector<std::vector<double>> steps;  ///< x p[j] = sum of steps[j][i] p[i], i <= j + 1
};

/// The abscissae first, first + 1, ...
std::vector<double> integers(double first, std::size_t count);

/// The least-squares polynomial of a degree through evenly spaced samples, at the samples.
void fitPolynomial(std::span<const double> y, std::size_t degree, std::span<double> out);

}  // namespace Filter
