// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace Search {

/// The equation c + sum of a*X_i^p + sum of b*X_i^q*X_j^r = 0 between positive columns, solved for the last of them.
/// The parameters stand term after term, a coefficient and then its one or two exponents; c is the last.
class ImplicitPowers {
 public:
  /// Terms of kind 61: each column, then each pair i < j. Terms of kind 62: single columns by turns, the last one first.
  static std::optional<ImplicitPowers> ofKind(int kind, std::size_t columns, std::size_t params);

  std::size_t size() const { return count; }  ///< number of parameters

  /// The solution for the last column near its value in `point`.
  double solve(std::span<const double> params, std::span<const double> point) const;
  /// Its derivatives by the parameters, where it is `last`.
  void gradient(std::span<const double> params, std::span<const double> point, double last,
                std::span<double> row) const;
  /// Products of powers at a point, in the order of the terms.
  void bases(std::span<const double> params, std::span<const double> point, std::span<double> out) const;

  struct Term {
    std::size_t coef;  ///< its exponents follow it
    std::size_t columns[2];
    std::size_t factors;  ///< 1 or 2
  };
  std::span<const Term> all() const { return terms; }

 private:
  explicit ImplicitPowers(std::size_t m) : last(m - 1) {}
  void add(std::initializer_list<std::size_t> columns);
  double basis(const Term& term, std::span<const double> params, std::span<const double> point) const;

  std::vector<Term> terms;
  std::size_t last, count = 0;
};

}  // namespace Search
