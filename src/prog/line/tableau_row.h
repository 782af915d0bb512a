// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace LineProg {

inline constexpr double kSmallCoefficient = 1e-15;  ///< erased from the tableau
/// A sum of opposite terms that leaves less than this part of them is what rounding left of 0. Without it a column that
/// has no gain would look as if it had one, and an optimum like an unbounded problem.
inline constexpr double kCancelled = 1e-12;

/// a + b, 0 where the two cancel.
template <class Real>
Real cancellingSum(Real a, Real b) {
  const Real s = a + b;
  return std::abs(s) < kCancelled * std::abs(b) ? 0 : s;
}

/// The same for coefficients, of which the small ones are dropped, too.
template <class Real>
Real coefficientSum(Real a, Real b) {
  const Real s = a + b, part = static_cast<Real>(kCancelled) * std::abs(b), least = kSmallCoefficient;
  return std::abs(s) < (part > least ? part : least) ? 0 : s;
}

/// A row of the tableau: basic = value + sum of coefficients * nonbasic, the nonbasic ones named by their columns
/// ("slots"). It holds its coefficients as sorted pairs while they are few and as a plain array beyond that, so that
/// sparse problems stay cheap and filled rows run at the speed of a dense update.
template <class Real>
class TableauRow {
 public:
  static constexpr int kNone = -1;
  /// Room for the merging of sparse rows, lent by the tableau.
  struct Spare {
    std::vector<int> at;
    std::vector<Real> coef;
  };

  TableauRow() = default;
  /// Takes terms (slot, coefficient) in any order; those on one slot add up.
  TableauRow(int basic, Real constant, const std::vector<std::pair<int, Real>>& terms);

  int var = kNone;  ///< the basic variable
  Real value = 0;

  Real coefficient(int slot) const;
  void set(int slot, Real coefficient);
  void erase(int slot);
  /// A further column, of coefficient 0.
  void widen() {
    if (dense) coef.push_back(0);
  }
  void makeDense(std::size_t columns);
  /// Turns dense when a quarter of the columns is filled, or when they are few.
  void trim(std::size_t columns);
  /// Adds to one coefficient of a dense row.
  void add(int slot, Real term) { coef[slot] = coefficientSum(coef[slot], term); }
  /// row += factor * other, where column `slot` of the row counts as 0 before.
  void addScaled(Real factor, const TableauRow& other, int slot, std::size_t columns, Spare& spare);
  /// Solves for the variable of a slot, whose coefficient is 1/inverse: the basic one takes the slot.
  void solveFor(int slot, Real inverse);

  /// Calls f(slot, coefficient) for every coefficient but 0, by ascending slot.
  template <class F>
  void each(F&& f) const {
    for (std::size_t k = 0; k < coef.size(); ++k)
      if (coef[k] != 0) f(dense ? static_cast<int>(k) : at[k], coef[k]);
  }

 private:
  std::size_t find(int slot) const;  ///< place in `at`, or where the slot would be entered
  bool holds(std::size_t place, int slot) const { return place < at.size() && at[place] == slot; }
  void addToDense(Real factor, const TableauRow& other);

  bool dense = false;
  std::vector<int> at;  ///< slots of coef while sparse, ascending
  std::vector<Real> coef;
};

extern template class TableauRow<double>;
extern template class TableauRow<long double>;

}  // namespace LineProg
