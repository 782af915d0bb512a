// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>

namespace solver {

/// Base of the local least-squares fits of a table of points.
class BaseLocalSolver {
 public:
  virtual ~BaseLocalSolver() = default;
  virtual void setPoints(std::span<const double> x, std::span<const double> y) = 0;
  virtual void setWeights(std::span<const double> weights) = 0;  ///< of the squared residuals; none: all 1
  virtual bool solve() = 0;                                      ///< false when the table allows no fit
  virtual const std::map<int64_t, double>& terms() const = 0;    ///< exponent to coefficient
};

/// Least squares by powers of x with given exponents: the coefficients of least norm among the best, in a basis scaled
/// to the size of the points.
class RPolyFit final : public BaseLocalSolver {
 public:
  explicit RPolyFit(std::span<const int32_t> exponents) : exponents(exponents) {}

  void setPoints(std::span<const double> xs, std::span<const double> ys) override {
    x = xs;
    y = ys;
  }
  void setWeights(std::span<const double> all) override { weights = all; }
  bool solve() override;
  const std::map<int64_t, double>& terms() const override { return result; }

 private:
  std::span<const int32_t> exponents;
  std::span<const double> x, y, weights;
  std::map<int64_t, double> result;
};

}  // namespace solver
