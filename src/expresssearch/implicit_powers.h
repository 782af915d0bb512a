// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

namespace Search {

/// The equation c + sum of a*X_i^p + sum of b*X_i^q*X_j^r = 0 between positive columns, solved for the last of them.
/// Points are given by the logarithms of the columns. The parameters stand term after term, a coefficient and then its
/// one or two exponents; c is the last.
class ImplicitPowers {
 public:
  /// Terms of kind 61: each column, then each pair i < j. Terms of kind 62: single columns by turns, the last one
  /// first.
  static std::optional<ImplicitPowers> ofKind(int kind, std::size_t columns, std::size_t params);

  struct Term {
    std::size_t coef;  ///< its exponents follow it
    std::size_t columns[2];
    std::size_t factors;  ///< 1 or 2
  };
  std::span<const Term> all() const { return terms; }
  std::size_t size() const { return count; }  ///< number of parameters

  static constexpr int kMostRounds = 16;
  /// The logarithm of the last column's solution near its value in `logs`, or, with one round, the first approximation
  /// to it. NaN where the equation does not depend on that column.
  double solve(std::span<const double> params, std::span<const double> logs, int rounds = kMostRounds) const;
  /// Derivatives of the last column itself by the parameters, at its solution or near to it.
  void gradient(std::span<const double> params, std::span<const double> logs, std::span<double> row) const;
  /// The product of powers of a term.
  static double basis(const Term& term, std::span<const double> params, std::span<const double> logs);

 private:
  explicit ImplicitPowers(std::size_t m) : last(m - 1) {}
  void add(std::initializer_list<std::size_t> columns);
  double lastExponent(const Term& term, std::span<const double> params) const;

  std::vector<Term> terms;
  std::size_t last, count = 0;
};

}  // namespace Search
