// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>

#include "frame/function_ref.h"
#include "sym/poly/poly_terms.h"

namespace Sym {

/// Chebyshev interpolation of f at degree + 1 nodes on [a, b], written in powers of x. Coefficients of the series below
/// 1e-30, or lost in the rounding of the samples, are dropped. The change of basis cancels heavily: it runs in so many
/// bits that it loses no digit of the series. Nothing when f is not finite at a node.
std::optional<PolyTerms> chebyshevApproximation(FunctionRef<double(double)> f, double a, double b, int32_t degree);

}  // namespace Sym

namespace solver {

/// Base of the local least-squares fits of a table of points.
class BaseLocalSolver {
 public:
  virtual ~BaseLocalSolver() = default;
  virtual void setPoints(std::span<const double> x, std::span<const double> y) = 0;
  virtual void setWeights(std::span<const double> weights) = 0;  ///< of the squared residuals; none: all 1
  virtual bool solve() = 0;                                      ///< false when the table allows no fit
  virtual Sym::PolyTerms terms() const = 0;
};

/// Least squares by powers of x with given exponents: the coefficients of least norm among the best, in a basis scaled
/// to the size of the points.
class RPolyFit final : public BaseLocalSolver {
 public:
  explicit RPolyFit(std::span<const int32_t> exponents) : exponents(exponents) {}

  void setPoints(std::span<const double> x, std::span<const double> y) override;
  void setWeights(std::span<const double> weights) override { this->weights = weights; }
  bool solve() override;
  Sym::PolyTerms terms() const override { return result; }

 private:
  std::span<const int32_t> exponents;
  std::span<const double> x, y, weights;
  Sym::PolyTerms result;
};

}  // namespace solver
