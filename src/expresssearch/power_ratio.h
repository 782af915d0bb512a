// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Search {

/// (c0 + sum a_i x_i^p_i) / (d0 + sum b_j x_j^q_j), with or without the powers p. The parameters are c0, each numerator
/// term (a, p or a alone), d0, each denominator term (b, q). Columns are not negative.
class PowerRatio {
 public:
  using Columns = std::vector<const double*>;
  PowerRatio(const Columns& numerator, bool numeratorPowers, const Columns& denominator, std::size_t rows);

  std::size_t size() const { return count; }  ///< number of parameters
  std::size_t bottomAt() const { return bottom; }

  void values(std::span<const double> params, std::span<double> out) const;
  /// Derivatives of the values, a row of size() a data point.
  void jacobian(std::span<const double> params, std::span<double> rows) const;

  /// Numerator and denominator may be multiplied by one factor without a change of value. This residual, zero where the
  /// squares of all coefficients have the mean 1, takes that freedom away from a least-squares fit.
  double gauge(std::span<const double> params) const;
  void gaugeGradient(std::span<const double> params, std::span<double> row) const;

 private:
  struct Term {
    const double* column;
    std::size_t coef, power;  ///< places of the parameters; power is kNoPower for a plain term
    bool under;
  };
  static constexpr std::size_t kNoPower = static_cast<std::size_t>(-1);
  double basis(const Term& term, std::span<const double> params, std::size_t row) const;

  std::vector<Term> terms;
  std::vector<std::size_t> linear;  ///< places of c0, d0 and all coefficients
  std::size_t rows, bottom = 0, count = 0;
};

}  // namespace Search
